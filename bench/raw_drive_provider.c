/* The raw disk drive provider (see raw_drive_provider.h). Per disk it makes,
 * in this order, the calls the module's drive enumeration makes through its
 * C++ binding: newObjectPath(namespace, "ZEDA_DiskDrive"); newInstance on it;
 * for each of the twelve properties the value (newString for a text; for
 * OperationalStatus newArray(1, uint16), setElementAt and getSimpleType) and
 * setProperty; returnInstance. Each object is released where the binding's
 * wrapper of it goes: the path once the instance is made, a string or the
 * array once its property is set, the instance once it is returned. Per
 * request: getNameSpace and getCharPtr of the class path before the walk,
 * returnDone after it. */
#include "raw_drive_provider.h"

#include <stdlib.h>
#include <string.h>

#include "cmpidt.h"
#include "cmpift.h"

static const CMPIBroker* rawBroker;
static const struct ZedaRawNas* rawNas;
static size_t rawNasCount;

void ZedaRawDrive_UseInventory(const struct ZedaRawNas* nas, size_t nasCount) {
  rawNas = nas;
  rawNasCount = nasCount;
}

static CMPIStatus statusOf(CMPIrc rc) {
  CMPIStatus status = {rc, NULL};
  return status;
}

/* CIM InterconnectType of the NAS interface name: exactly "SATA" 4, any
 * text holding "SAS" 5, else 1. */
static CMPIUint16 interconnectTypeOf(const char* interfaceType) {
  if (strcmp(interfaceType, "SATA") == 0) return 4;
  if (strstr(interfaceType, "SAS") != NULL) return 5;
  return 1;
}

/* CIM OperationalStatus of a NAS disk state code. */
static CMPIUint16 operationalStatusOf(int status) {
  static const CMPIUint16 byCode[] = {0, 2, 3, 5, 6, 10, 12};
  return status >= 0 && status <= 6 ? byCode[status] : 0;
}

static CMPIStatus setUint16(CMPIInstance* inst, const char* name, CMPIUint16 number) {
  CMPIValue value;
  value.uint16 = number;
  return inst->ft->setProperty(inst, name, &value, CMPI_uint16);
}

static CMPIStatus setText(CMPIInstance* inst, const char* name, const char* text) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIValue value;
  value.string = rawBroker->eft->newString(rawBroker, text, &rc);
  if (rc.rc != CMPI_RC_OK) return rc;
  rc = inst->ft->setProperty(inst, name, &value, CMPI_string);
  value.string->ft->release(value.string);
  return rc;
}

static CMPIStatus setUint16Array(CMPIInstance* inst, const char* name, CMPIUint16 number) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIValue element;
  CMPIValue value;
  CMPIType elementType;
  CMPIArray* array = rawBroker->eft->newArray(rawBroker, 1, CMPI_uint16, &rc);
  if (rc.rc != CMPI_RC_OK) return rc;
  element.uint16 = number;
  rc = array->ft->setElementAt(array, 0, &element, CMPI_uint16);
  if (rc.rc != CMPI_RC_OK) return rc;
  elementType = array->ft->getSimpleType(array, &rc);
  if (rc.rc != CMPI_RC_OK) return rc;
  value.array = array;
  rc = inst->ft->setProperty(inst, name, &value, (CMPIType)(CMPI_ARRAY | elementType));
  array->ft->release(array);
  return rc;
}

#define RETURN_ON_ERROR(call)                     \
  do {                                            \
    const CMPIStatus status_ = (call);            \
    if (status_.rc != CMPI_RC_OK) return status_; \
  } while (0)

/* The twelve drive properties of one disk on a new instance, returned. */
static CMPIStatus returnDrive(const CMPIResult* rslt, const char* nameSpace, const char* systemName,
                              const char* deviceId, const struct ZedaRawDisk* disk) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIValue rpm;
  CMPIInstance* inst;
  CMPIObjectPath* path = rawBroker->eft->newObjectPath(rawBroker, nameSpace, "ZEDA_DiskDrive", &rc);
  if (rc.rc != CMPI_RC_OK) return rc;
  inst = rawBroker->eft->newInstance(rawBroker, path, &rc);
  path->ft->release(path);
  if (rc.rc != CMPI_RC_OK) return rc;
  RETURN_ON_ERROR(setText(inst, "SystemCreationClassName", "ZEDA_ComputerSystem"));
  RETURN_ON_ERROR(setText(inst, "SystemName", systemName));
  RETURN_ON_ERROR(setText(inst, "CreationClassName", "ZEDA_DiskDrive"));
  RETURN_ON_ERROR(setText(inst, "DeviceID", deviceId));
  RETURN_ON_ERROR(setText(inst, "Name", disk->id));
  RETURN_ON_ERROR(setUint16(inst, "EnabledState", 2));
  RETURN_ON_ERROR(setUint16(inst, "HealthState", disk->healthStatus == 0 ? 5 : 0));
  RETURN_ON_ERROR(setUint16Array(inst, "OperationalStatus", operationalStatusOf(disk->status)));
  RETURN_ON_ERROR(setUint16(inst, "InterconnectType", interconnectTypeOf(disk->interfaceType)));
  RETURN_ON_ERROR(setUint16(inst, "DiskType", disk->isSsd ? 3 : 2));
  rpm.uint32 = disk->rpm;
  RETURN_ON_ERROR(inst->ft->setProperty(inst, "RPM", &rpm, CMPI_uint32));
  RETURN_ON_ERROR(setText(inst, "Description", "ZEDA_DiskDrive"));
  rc = rslt->ft->returnInstance(rslt, inst);
  inst->ft->release(inst);
  return rc;
}

/* DeviceID "<system name>:DISK<disk identifier>" into `buffer` of `size`
 * bytes, or into memory of its own when it does not fit (the caller frees
 * what differs from `buffer`); NULL when out of memory. */
static char* deviceIdOf(const char* systemName, size_t systemLength, const char* id, char* buffer,
                        size_t size) {
  static const char infix[] = ":DISK";
  const size_t idLength = strlen(id);
  const size_t length = systemLength + (sizeof infix - 1) + idLength;
  char* text = length < size ? buffer : malloc(length + 1);
  if (text == NULL) return NULL;
  memcpy(text, systemName, systemLength);
  memcpy(text + systemLength, infix, sizeof infix - 1);
  memcpy(text + systemLength + sizeof infix - 1, id, idLength + 1);
  return text;
}

static CMPIStatus rawDriveEnumInstances(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                        const CMPIResult* rslt, const CMPIObjectPath* cop,
                                        const char** properties) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  const char* nameSpace;
  size_t n;
  CMPIString* nameSpaceString = cop->ft->getNameSpace(cop, &rc);
  if (rc.rc != CMPI_RC_OK) return rc;
  nameSpace = NULL;
  if (nameSpaceString != NULL) {
    nameSpace = nameSpaceString->ft->getCharPtr(nameSpaceString, &rc);
    if (rc.rc != CMPI_RC_OK) return rc;
  }
  if (nameSpace == NULL) nameSpace = ""; /* as the module: no namespace is "" */
  (void)mi;
  (void)ctx;
  (void)properties;
  for (n = 0; n < rawNasCount; ++n) {
    const struct ZedaRawNas* nas = &rawNas[n];
    const size_t systemLength = strlen(nas->systemName);
    size_t d;
    for (d = 0; d < nas->diskCount; ++d) {
      char buffer[256];
      char* deviceId =
          deviceIdOf(nas->systemName, systemLength, nas->disks[d].id, buffer, sizeof buffer);
      if (deviceId == NULL) return statusOf(CMPI_RC_ERR_FAILED);
      rc = returnDrive(rslt, nameSpace, nas->systemName, deviceId, &nas->disks[d]);
      if (deviceId != buffer) free(deviceId);
      if (rc.rc != CMPI_RC_OK) return rc;
    }
  }
  return rslt->ft->returnDone(rslt);
}

static CMPIStatus cleanup(CMPIInstanceMI* mi, const CMPIContext* ctx, CMPIBoolean terminating) {
  (void)mi;
  (void)ctx;
  (void)terminating;
  return statusOf(CMPI_RC_OK);
}

static CMPIStatus enumInstanceNames(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                    const CMPIResult* rslt, const CMPIObjectPath* op) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  return statusOf(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus getInstance(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                              const CMPIObjectPath* op, const char** properties) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  (void)properties;
  return statusOf(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus createInstance(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                 const CMPIObjectPath* op, const CMPIInstance* inst) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  (void)inst;
  return statusOf(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus modifyInstance(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                 const CMPIObjectPath* op, const CMPIInstance* inst,
                                 const char** properties) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  (void)inst;
  (void)properties;
  return statusOf(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus deleteInstance(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                 const CMPIObjectPath* op) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  return statusOf(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus execQuery(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                            const CMPIObjectPath* op, const char* query, const char* lang) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  (void)query;
  (void)lang;
  return statusOf(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIInstanceMIFT rawDriveMIFT = {CMPICurrentVersion,
                                        CMPICurrentVersion,
                                        "instanceZEDA_RawDiskDriveProvider",
                                        cleanup,
                                        enumInstanceNames,
                                        rawDriveEnumInstances,
                                        getInstance,
                                        createInstance,
                                        modifyInstance,
                                        deleteInstance,
                                        execQuery};

CMPIInstanceMI* ZEDA_RawDiskDriveProvider_Create_InstanceMI(const CMPIBroker* broker,
                                                            const CMPIContext* ctx,
                                                            CMPIStatus* rc) {
  static CMPIInstanceMI mi = {NULL, &rawDriveMIFT};
  (void)ctx;
  rawBroker = broker;
  if (rc != NULL) *rc = statusOf(CMPI_RC_OK);
  return &mi;
}
