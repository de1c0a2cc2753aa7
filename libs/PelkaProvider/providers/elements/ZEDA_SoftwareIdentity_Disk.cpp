#include "providers/elements/ZEDA_SoftwareIdentity_Disk.h"

#include <memory>
#include <string>

#include "providers/common/CimValues.h"
#include "providers/common/InventoryWalk.h"
#include "providers/common/Keys.h"
#include "providers/elements/SoftwareIdentityBuilder.h"

namespace zeda::pelka {

ZEDA_SoftwareIdentity_Disk::ZEDA_SoftwareIdentity_Disk(const CmpiBroker& broker,
                                                       const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName(kClassName);
  install(this, instanceDelegates().EnumInstances, std::make_unique<EnumInstances>());
  install(this, instanceDelegates().GetInstance, std::make_unique<GetInstance>());
}

CmpiStatus ZEDA_SoftwareIdentity_Disk::EnumInstances::operator()(const CmpiContext& ctx,
                                                                 CmpiResult& rslt,
                                                                 const CmpiObjectPath& cop,
                                                                 const char** properties) {
  // Keyed by the NAS name, not the system name; no NAS API query beyond the
  // disk list, so disks sharing a firmware version still get one instance each.
  WalkInventory(
      rslt, cop,
      [&rslt](const DiskVisit& visit) {
        SoftwareIdentityFields software;
        software.nameSpace = visit.nameSpace;
        software.className = kClassName;
        software.instanceId = SoftwareInstanceId(visit.nas.name, visit.disk.id);
        software.versionString = visit.disk.firmwareVersion;
        rslt.returnData(MakeSoftwareIdentityInstance(software));
      },
      SystemNameUse::Skip);
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_SoftwareIdentity_Disk::GetInstance::operator()(const CmpiContext& ctx,
                                                               CmpiResult& rslt,
                                                               const CmpiObjectPath& cop,
                                                               const char** properties) {
  // The requested key is not read: every request gets the placeholder.
  const std::string nameSpace = NameSpaceOf(cop);
  rslt.returnData(
      MakeSoftwareIdentityInstance(PlaceholderSoftwareIdentityFields(nameSpace, kClassName)));
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
