#include "providers/elements/StorageExtentBuilder.h"

#include <cmpi/CmpiObjectPath.h>

#include "providers/common/ClassNames.h"
#include "providers/common/DiskProperties.h"
#include "providers/common/Health.h"

namespace zeda::pelka {

CmpiInstance MakeStorageExtentInstance(const StorageExtentFields& fields) {
  constexpr CMPIUint64 kBlockSize = 512;  // bytes
  CmpiInstance inst(CmpiObjectPath(fields.nameSpace.c_str(), className::kStorageExtentDisk));
  inst.setProperty("SystemCreationClassName", CmpiData(fields.keys.systemCreationClassName));
  inst.setProperty("SystemName", CmpiData(fields.keys.systemName));
  inst.setProperty("CreationClassName", CmpiData(fields.keys.creationClassName));
  inst.setProperty("DeviceID", CmpiData(fields.keys.deviceId));
  inst.setProperty("ExtentStatus", CmpiData(Uint16Array(fields.extentStatus)));
  inst.setProperty("NumberOfBlocks", CmpiData(fields.numberOfBlocks));
  inst.setProperty("ConsumableBlocks", CmpiData(fields.consumableBlocks));
  inst.setProperty("BlockSize", CmpiData(kBlockSize));
  inst.setProperty("HealthState", CmpiData(fields.healthState));
  inst.setProperty("OperationalStatus", CmpiData(Uint16Array(fields.operationalStatus)));
  inst.setProperty("ExtentDiscriminator", CmpiData(StringArray("SNIA:Pool Component")));
  return inst;
}

StorageExtentFields DiskExtentFields(const std::string& nameSpace, const DeviceKeys& keys,
                                     const zeda::orvi::OrviDisk& disk, std::uint32_t healthStatus) {
  StorageExtentFields fields;
  fields.nameSpace = nameSpace;
  fields.keys = keys;
  fields.extentStatus = ExtentStatusOf(disk.isFree);
  fields.numberOfBlocks = BlocksOf(disk.capacity);
  fields.consumableBlocks = fields.numberOfBlocks;
  fields.healthState = HealthStateOf(healthStatus);
  fields.operationalStatus = OperationalStatusOf(healthStatus);
  return fields;
}

StorageExtentFields PlaceholderStorageExtentFields(const std::string& nameSpace) {
  StorageExtentFields fields;
  fields.nameSpace = nameSpace;
  fields.keys = PlaceholderDeviceKeys();
  fields.extentStatus = 2;
  fields.numberOfBlocks = 1000;
  fields.consumableBlocks = 100;
  fields.healthState = 5;
  fields.operationalStatus = 2;
  return fields;
}

}  // namespace zeda::pelka
