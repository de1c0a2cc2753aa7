#include "providers/pools/PoolToExtents.h"

#include <cstddef>
#include <string>
#include <vector>

#include "CmpiKeys.h"
#include "inventory/Library.h"
#include "providers/common/CimValues.h"
#include "providers/common/DiskProperties.h"
#include "providers/common/Health.h"
#include "providers/common/Keys.h"
#include "providers/elements/StorageExtentBuilder.h"
#include "providers/pools/PoolExtentInstance.h"
#include "providers/pools/PoolInstanceId.h"
#include "providers/pools/PoolRules.h"

namespace zeda::pelka {

namespace {

CMPIUint16 PoolExtentStatus(const zeda::orvi::OrviDisk& disk, ExtentStatusRule rule) {
  return ExtentStatusOf(rule == ExtentStatusRule::AlwaysFree || disk.isFree);
}

}  // namespace

void ReturnPoolExtents(CmpiResult& rslt, const CmpiObjectPath& poolPath,
                       ExtentStatusRule extentStatusRule) {
  const std::string nameSpace = NameSpaceOf(poolPath);
  const PoolInstanceIdParts pool = ParsePoolInstanceId(cmpi::GetString(poolPath, "InstanceID"));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get(pool.nasName));
  const zeda::orvi::OrviDiskList diskList = orvi.GetDiskList();
  // One pass over the groups for every disk at once; the walk below then
  // asks the NAS API per disk exactly as before.
  const std::vector<std::size_t> membership = PoolMembershipCounts(diskList, pool.poolNumber);
  for (std::size_t d = 0; d < diskList.disks.size(); ++d) {
    const zeda::orvi::OrviDisk& disk = diskList.disks[d];
    const std::uint32_t healthStatus = orvi.GetDiskHealth(StripFirstColon(disk.id)).healthStatus;
    const std::size_t returns = membership[d];
    if (returns == 0) {
      continue;
    }
    const DeviceKeys keys =
        PoolExtentKeys(pool.systemName, ExtentDeviceId(pool.systemName, disk.id));
    StorageExtentFields fields = DiskExtentFields(nameSpace, keys, disk, healthStatus);
    fields.extentStatus = PoolExtentStatus(disk, extentStatusRule);
    const CmpiInstance extent = MakeStorageExtentInstance(fields);
    for (std::size_t i = 0; i < returns; ++i) {
      rslt.returnData(extent);
    }
  }
  rslt.returnDone();
}

}  // namespace zeda::pelka
