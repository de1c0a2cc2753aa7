#include "providers/elements/DiskDriveBuilder.h"

#include <cmpi/CmpiObjectPath.h>

#include "providers/common/ClassNames.h"

namespace zeda::pelka {

CmpiInstance MakeDiskDriveInstance(const DiskDriveFields& fields) {
  constexpr CMPIUint16 kEnabled = 2;  // EnabledState "Enabled"
  // Keys are set as properties; the path carries only namespace and class.
  CmpiInstance inst(CmpiObjectPath(fields.nameSpace.c_str(), fields.className.c_str()));
  inst.setProperty("SystemCreationClassName", CmpiData(fields.keys.systemCreationClassName));
  inst.setProperty("SystemName", CmpiData(fields.keys.systemName));
  inst.setProperty("CreationClassName", CmpiData(fields.keys.creationClassName));
  inst.setProperty("DeviceID", CmpiData(fields.keys.deviceId));
  inst.setProperty("Name", CmpiData(fields.name));
  inst.setProperty("EnabledState", CmpiData(kEnabled));
  inst.setProperty("HealthState", CmpiData(fields.healthState));
  inst.setProperty("OperationalStatus", CmpiData(Uint16Array(fields.operationalStatus)));
  inst.setProperty("InterconnectType", CmpiData(fields.interconnectType));
  inst.setProperty("DiskType", CmpiData(fields.diskType));
  inst.setProperty("RPM", CmpiData(fields.rpm));
  inst.setProperty("Description", CmpiData(className::kDiskDrive));
  return inst;
}

DiskDriveFields PlaceholderDiskDriveFields(const std::string& nameSpace,
                                           const std::string& className, const std::string& name) {
  DiskDriveFields fields;
  fields.nameSpace = nameSpace;
  fields.className = className;
  fields.keys = PlaceholderDeviceKeys();
  fields.name = name;
  return fields;
}

}  // namespace zeda::pelka
