#include "providers/elements/DiskDriveBuilder.h"

#include <cmpi/CmpiObjectPath.h>

#include "providers/common/CimValues.h"

namespace zeda::pelka {

void MakeDiskDriveInstance(CmpiInstance& inst, const char* className, const char* nameSpace,
                           const char* systemCreationClassName, const char* systemName,
                           const char* creationClassName, const char* deviceId,
                           const char* name, CMPIUint16 healthState,
                           CMPIUint16 operationalStatus, CMPIUint16 interconnectType,
                           CMPIUint16 diskType, CMPIUint32 rpm) {
  // Keys are set as properties; the path carries only namespace and class.
  inst = CmpiInstance(CmpiObjectPath(nameSpace, className));
  inst.setProperty("SystemCreationClassName", CmpiData(systemCreationClassName));
  inst.setProperty("SystemName", CmpiData(systemName));
  inst.setProperty("CreationClassName", CmpiData(creationClassName));
  inst.setProperty("DeviceID", CmpiData(deviceId));
  inst.setProperty("Name", CmpiData(name));
  inst.setProperty("EnabledState", CmpiData(static_cast<CMPIUint16>(2)));  // Enabled
  inst.setProperty("HealthState", CmpiData(healthState));
  inst.setProperty("OperationalStatus", CmpiData(Uint16Array(operationalStatus)));
  inst.setProperty("InterconnectType", CmpiData(interconnectType));
  inst.setProperty("DiskType", CmpiData(diskType));
  inst.setProperty("RPM", CmpiData(rpm));
  inst.setProperty("Description", CmpiData("ZEDA_DiskDrive"));
}

void MakePlaceholderDiskDriveInstance(CmpiInstance& inst, const char* className,
                                      const char* nameSpace, const char* name) {
  MakeDiskDriveInstance(inst, className, nameSpace, "ZEDA_SystemCreationClassName",
                        "ZEDA_SystemName", "ZEDA_CreationClassName", "ZEDA_DeviceID", name,
                        CMPIUint16{0}, CMPIUint16{0}, CMPIUint16{0}, CMPIUint16{0},
                        CMPIUint32{0});
}

void MakeFixedDiskDriveInstance(CmpiInstance& inst, const char* nameSpace) {
  MakePlaceholderDiskDriveInstance(inst, "ZEDA_DiskDrive", nameSpace, "Name");
}

}  // namespace zeda::pelka
