#include "providers/pools/PoolExtentInstance.h"

#include "providers/common/ClassNames.h"

namespace zeda::pelka {

DeviceKeys PoolExtentKeys(const std::string& systemName, const std::string& deviceId) {
  DeviceKeys keys;
  keys.systemCreationClassName = "ZEDA_SystemCreationClassName";
  keys.systemName = systemName;
  keys.creationClassName = className::kStorageExtentDisk;
  keys.deviceId = deviceId;
  return keys;
}

}  // namespace zeda::pelka
