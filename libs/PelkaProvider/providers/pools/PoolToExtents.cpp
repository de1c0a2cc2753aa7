#include "providers/pools/PoolToExtents.h"

#include <cstddef>
#include <string>

#include "inventory/Keys.h"
#include "inventory/Library.h"
#include "providers/common/CimValues.h"
#include "providers/common/Health.h"
#include "providers/pools/PoolExtentInstance.h"
#include "providers/pools/PoolInstanceId.h"
#include "providers/pools/PoolMembership.h"

namespace zeda::pelka {

namespace {

// CIM ExtentStatus values.
constexpr CMPIUint16 kExtentInUse = 2;
constexpr CMPIUint16 kExtentUnused = 13;

CMPIUint16 ExtentStatusOf(const zeda::orvi::OrviDisk& disk, ExtentStatusRule rule) {
  if (rule == ExtentStatusRule::AlwaysFree || disk.isFree) {
    return kExtentUnused;
  }
  return kExtentInUse;
}

}  // namespace

void ReturnPoolExtents(CmpiResult& rslt, const CmpiObjectPath& poolPath,
                       ExtentStatusRule extentStatusRule) {
  const std::string nameSpace = NameSpaceOf(poolPath);
  const PoolInstanceIdParts pool = ParsePoolInstanceId(cmpi::GetString(poolPath, "InstanceID"));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get(pool.nasName));
  const zeda::orvi::OrviDiskList diskList = orvi.GetDiskList();
  for (const zeda::orvi::OrviDisk& disk : diskList.disks) {
    const CMPIUint64 blocks = disk.capacity >> 9;
    const std::uint32_t healthStatus = orvi.GetDiskHealth(StripFirstColon(disk.id)).healthStatus;
    const std::size_t returns = PoolMembershipCount(disk, diskList.groups, pool.poolNumber);
    if (returns == 0) {
      continue;
    }
    const CmpiInstance extent = MakeExtentInstance(
        nameSpace, pool.systemName, ExtentDeviceId(pool.systemName, disk.id),
        ExtentStatusOf(disk, extentStatusRule), blocks, HealthStateOf(healthStatus),
        OperationalStatusOf(healthStatus));
    for (std::size_t i = 0; i < returns; ++i) {
      rslt.returnData(extent);
    }
  }
  rslt.returnDone();
}

}  // namespace zeda::pelka
