#include "providers/pools/ExtentToPool.h"

#include <cstddef>
#include <string>

#include "CmpiKeys.h"
#include "Exception.h"
#include "inventory/Library.h"
#include "providers/common/CimValues.h"
#include "providers/pools/ExtentKey.h"
#include "providers/pools/PoolInstance.h"
#include "providers/pools/PoolRules.h"
#include "providers/pools/PoolTable.h"

namespace zeda::pelka {

void ReturnExtentPool(CmpiResult& rslt, const CmpiObjectPath& extentPath, const char** properties,
                      ExtentPoolRule rule) {
  const std::string nameSpace = NameSpaceOf(extentPath);
  const std::string systemName = cmpi::GetString(extentPath, "SystemName");
  const std::string deviceId = cmpi::GetString(extentPath, "DeviceID");
  const ExtentKeyParts key = ParseExtentKey(systemName, deviceId);
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get(key.nasName));
  const zeda::orvi::OrviDiskList diskList = orvi.GetDiskList();
  const int number = PoolOfDisk(diskList, key.diskId);
  const PoolKind* pool = number <= rule.highestPool ? FindPool(number) : nullptr;
  if (pool == nullptr) {
    // Exception: answered as 200 (CMPI_RC_ERROR).
    throw Exception("Incorrect association class");
  }
  // The totals read nothing but the disk list: a refused request skips them.
  const PoolTotals totals = ComputePoolTotals(diskList);
  const CMPIUint64 total = totals[static_cast<std::size_t>(pool->number - 1)];
  PoolFields fields;
  fields.nameSpace = nameSpace;
  fields.propertyFilter = properties;
  fields.instanceId = PoolInstanceId(systemName, *pool);
  fields.elementName = pool->elementName;
  fields.poolId = pool->poolId;
  fields.totalManagedSpace = total;
  fields.remainingManagedSpace = RemainingManagedSpace(*pool, total);
  fields.usage = pool->usage;
  const CmpiInstance instance = MakePoolInstance(fields);
  if (rule.deliver) {
    rslt.returnData(instance);
  }
  rslt.returnDone();
}

}  // namespace zeda::pelka
