#include "providers/elements/ZEDA_StorageExtent_Disk.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "CmpiKeys.h"
#include "inventory/Library.h"
#include "providers/common/CimValues.h"
#include "providers/common/InventoryWalk.h"
#include "providers/common/Keys.h"
#include "providers/common/TextOps.h"
#include "providers/elements/StorageExtentBuilder.h"

namespace zeda::pelka {

namespace {

// Returns the extent of `disk` on the NAS of `systemName`.
void ReturnExtent(CmpiResult& rslt, const std::string& nameSpace, const std::string& systemName,
                  const zeda::orvi::OrviDisk& disk, std::uint32_t healthStatus) {
  const DeviceKeys keys = NasDeviceKeys(systemName, ZEDA_StorageExtent_Disk::kClassName,
                                        ExtentDeviceId(systemName, disk.id));
  rslt.returnData(MakeStorageExtentInstance(DiskExtentFields(nameSpace, keys, disk, healthStatus)));
}

}  // namespace

ZEDA_StorageExtent_Disk::ZEDA_StorageExtent_Disk(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName(kClassName);
  install(this, instanceDelegates().EnumInstances, std::make_unique<EnumInstances>());
  install(this, instanceDelegates().GetInstance, std::make_unique<GetInstance>());
}

CmpiStatus ZEDA_StorageExtent_Disk::EnumInstances::operator()(const CmpiContext& ctx,
                                                              CmpiResult& rslt,
                                                              const CmpiObjectPath& cop,
                                                              const char** properties) {
  WalkInventory(rslt, cop, [&rslt](const DiskVisit& visit) {
    const std::string id = visit.disk.id;
    const std::string healthKey = StripFirstColon(id);
    // The NAS API is asked twice per disk; the first reply is held until the
    // disk is finished but only the second one is used.
    const zeda::orvi::OrviDiskHealth firstReply = visit.orvi.GetDiskHealth(healthKey);
    const zeda::orvi::OrviDiskHealth health = visit.orvi.GetDiskHealth(healthKey);
    static_cast<void>(firstReply);
    ReturnExtent(rslt, visit.nameSpace, visit.systemName, visit.disk, health.healthStatus);
  });
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_StorageExtent_Disk::GetInstance::operator()(const CmpiContext& ctx,
                                                            CmpiResult& rslt,
                                                            const CmpiObjectPath& cop,
                                                            const char** properties) {
  const std::string nameSpace = NameSpaceOf(cop);
  const std::string systemName = cmpi::GetString(cop, "SystemName");
  const Nas& nas = Nas::Get(NasNameFromSystemName(systemName));
  zeda::orvi::Orvi& orvi = GetOrvi(nas);

  // Without "DiskExtent" the not-found position plus its length wraps around
  // to 9: the identifier is then the value less its first nine characters,
  // and a shorter value fails with "invalid string position".
  const std::string id = text::TextAfterLast(cmpi::GetString(cop, "DeviceID"), "DiskExtent");

  // The first disk of the list with exactly that identifier.
  const std::optional<zeda::orvi::OrviDisk> disk = orvi.FindListedDisk(id);
  if (disk) {
    const zeda::orvi::OrviDiskHealth health = orvi.GetDiskHealth(StripFirstColon(id));
    ReturnExtent(rslt, nameSpace, systemName, *disk, health.healthStatus);
  }
  // An unknown disk is no error: the answer is simply empty.
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
