#include "providers/pools/PoolInstance.h"

#include "providers/common/CimValues.h"
#include "providers/pools/PoolTable.h"

namespace zeda::pelka {

CmpiInstance MakePoolInstance(const std::string& nameSpace, const char** properties,
                              const std::string& instanceId, const char* elementName,
                              const char* poolId, CMPIUint64 totalManagedSpace,
                              CMPIUint64 remainingManagedSpace, CMPIUint16 usage) {
  CmpiInstance instance(CmpiObjectPath(nameSpace.c_str(), kStoragePoolClass));
  if (properties != nullptr) {
    // Properties the filter keeps whatever the request names.
    const char* keys[] = {"InstanceID", "PoolID", "Primordial", "TotalManagedSpace",
                          "RemainingManagedSpace", nullptr};
    instance.setPropertyFilter(properties, keys);
  }
  instance.setProperty("Usage", CmpiData(usage));
  instance.setProperty("InstanceID", CmpiData(instanceId));
  instance.setProperty("Primordial", CmpiBooleanData(true));
  instance.setProperty("ElementName", CmpiData(elementName));
  instance.setProperty("PoolID", CmpiData(poolId));
  instance.setProperty("TotalManagedSpace", CmpiData(totalManagedSpace));
  instance.setProperty("RemainingManagedSpace", CmpiData(remainingManagedSpace));
  instance.setProperty("OperationalStatus", CmpiData(Uint16Array(2)));
  return instance;
}

}  // namespace zeda::pelka
