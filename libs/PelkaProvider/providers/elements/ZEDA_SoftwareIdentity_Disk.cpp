#include "providers/elements/ZEDA_SoftwareIdentity_Disk.h"

#include <memory>
#include <string>

#include "inventory/Keys.h"
#include "providers/common/CimValues.h"
#include "providers/common/InventoryWalk.h"
#include "providers/elements/SoftwareIdentityBuilder.h"

namespace zeda::pelka {

ZEDA_SoftwareIdentity_Disk::ZEDA_SoftwareIdentity_Disk(const CmpiBroker& broker,
                                                       const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_SoftwareIdentity_Disk");
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
        const std::string instanceId = SoftwareInstanceId(visit.nas.name, visit.disk.id);
        CmpiInstance inst;
        MakeSoftwareIdentityInstance(inst, "ZEDA_SoftwareIdentity_Disk", visit.nameSpace.c_str(),
                                     instanceId.c_str(), visit.disk.firmwareVersion.c_str());
        rslt.returnData(inst);
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
  CmpiInstance inst;
  MakeSoftwareIdentityInstance(inst, owner()->className().c_str(), nameSpace.c_str(),
                               "ZEDA_InstanceID", "ZEDA_VersionString");
  rslt.returnData(inst);
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
