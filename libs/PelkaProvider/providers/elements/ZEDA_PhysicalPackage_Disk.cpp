#include "providers/elements/ZEDA_PhysicalPackage_Disk.h"

#include <memory>
#include <string>

#include "inventory/Keys.h"
#include "providers/common/CimValues.h"
#include "providers/common/InventoryWalk.h"
#include "providers/elements/PackageBuilder.h"

namespace zeda::pelka {

ZEDA_PhysicalPackage_Disk::ZEDA_PhysicalPackage_Disk(const CmpiBroker& broker,
                                                     const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_PhysicalPackage_Disk");
  install(this, instanceDelegates().EnumInstances, std::make_unique<EnumInstances>());
  install(this, instanceDelegates().GetInstance, std::make_unique<GetInstance>());
}

CmpiStatus ZEDA_PhysicalPackage_Disk::EnumInstances::operator()(const CmpiContext& ctx,
                                                                CmpiResult& rslt,
                                                                const CmpiObjectPath& cop,
                                                                const char** properties) {
  WalkInventory(rslt, cop, [&rslt](const DiskVisit& visit) {
    const std::string id = visit.disk.id;
    const std::string tag = PackageTag(visit.systemName, id);
    // The identity query takes the identifier verbatim, colon kept.
    const zeda::orvi::OrviDiskIdentity identity = visit.orvi.GetDiskIdentity(id);
    const std::string manufacturer = ManufacturerFromProduct(identity.product, identity.model);

    CmpiInstance inst;
    MakePhysicalPackageInstance(inst, "ZEDA_PhysicalPackage_Disk", visit.nameSpace.c_str(),
                                "ZEDA_PhysicalPackage_Disk", tag.c_str(), manufacturer.c_str(),
                                identity.model.c_str(), identity.serial.c_str());
    rslt.returnData(inst);
  });
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_PhysicalPackage_Disk::GetInstance::operator()(const CmpiContext& ctx,
                                                              CmpiResult& rslt,
                                                              const CmpiObjectPath& cop,
                                                              const char** properties) {
  // The requested keys are not read: every request gets the placeholder.
  const std::string nameSpace = NameSpaceOf(cop);
  CmpiInstance inst;
  MakePhysicalPackageInstance(inst, owner()->className().c_str(), nameSpace.c_str(),
                              "ZEDA_CreationClassName", "ZEDA_Tag", "ZEDA_Manufacturer",
                              "ZEDA_Model", "ZEDA_SerialNumber");
  rslt.returnData(inst);
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
