#include "providers/pools/PoolExtentInstance.h"

#include "providers/elements/StorageExtentBuilder.h"

namespace zeda::pelka {

CmpiInstance MakeExtentInstance(const std::string& nameSpace, const std::string& systemName,
                                const std::string& deviceId, CMPIUint16 extentStatus,
                                CMPIUint64 blocks, CMPIUint16 healthState,
                                CMPIUint16 operationalStatus) {
  CmpiInstance instance;
  MakeExtentShapedInstance(instance, nameSpace.c_str(), "ZEDA_SystemCreationClassName",
                           systemName.c_str(), "ZEDA_StorageExtent_Disk", deviceId.c_str(),
                           extentStatus, blocks, blocks, healthState, operationalStatus);
  return instance;
}

}  // namespace zeda::pelka
