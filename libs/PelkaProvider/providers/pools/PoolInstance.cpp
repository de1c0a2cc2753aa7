#include "providers/pools/PoolInstance.h"

#include "providers/common/CimValues.h"
#include "providers/pools/PoolTable.h"

namespace zeda::pelka {

CmpiInstance MakePoolInstance(const PoolFields& fields) {
  constexpr CMPIUint16 kOk = 2;  // OperationalStatus "OK"
  CmpiInstance instance(CmpiObjectPath(fields.nameSpace.c_str(), kStoragePoolClass));
  if (fields.propertyFilter != nullptr) {
    // Properties the filter keeps whatever the request names.
    const char* keys[] = {
        "InstanceID", "PoolID", "Primordial", "TotalManagedSpace", "RemainingManagedSpace",
        nullptr};
    instance.setPropertyFilter(fields.propertyFilter, keys);
  }
  instance.setProperty("Usage", CmpiData(fields.usage));
  instance.setProperty("InstanceID", CmpiData(fields.instanceId));
  instance.setProperty("Primordial", CmpiBooleanData(true));
  instance.setProperty("ElementName", CmpiData(fields.elementName));
  instance.setProperty("PoolID", CmpiData(fields.poolId));
  instance.setProperty("TotalManagedSpace", CmpiData(fields.totalManagedSpace));
  instance.setProperty("RemainingManagedSpace", CmpiData(fields.remainingManagedSpace));
  instance.setProperty("OperationalStatus", CmpiData(Uint16Array(kOk)));
  return instance;
}

}  // namespace zeda::pelka
