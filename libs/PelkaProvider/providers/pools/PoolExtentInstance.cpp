#include "providers/pools/PoolExtentInstance.h"

#include "providers/common/ClassNames.h"
#include "providers/elements/StorageExtentBuilder.h"

namespace zeda::pelka {

DeviceKeys PoolExtentKeys(const std::string& systemName, const std::string& deviceId) {
  DeviceKeys keys;
  keys.systemCreationClassName = "ZEDA_SystemCreationClassName";
  keys.systemName = systemName;
  keys.creationClassName = className::kStorageExtentDisk;
  keys.deviceId = deviceId;
  return keys;
}

CmpiInstance MakeExtentInstance(const std::string& nameSpace, const std::string& systemName,
                                const std::string& deviceId, CMPIUint16 extentStatus,
                                CMPIUint64 blocks, CMPIUint16 healthState,
                                CMPIUint16 operationalStatus) {
  StorageExtentFields fields;
  fields.nameSpace = nameSpace;
  fields.keys = PoolExtentKeys(systemName, deviceId);
  fields.extentStatus = extentStatus;
  fields.numberOfBlocks = blocks;
  fields.consumableBlocks = blocks;
  fields.healthState = healthState;
  fields.operationalStatus = operationalStatus;
  return MakeStorageExtentInstance(fields);
}

}  // namespace zeda::pelka
