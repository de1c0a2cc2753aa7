#include "providers/elements/ZEDA_PhysicalPackage_Disk.h"

#include <memory>
#include <string>

#include "providers/common/CimValues.h"
#include "providers/common/InventoryWalk.h"
#include "providers/common/Keys.h"
#include "providers/elements/PackageBuilder.h"

namespace zeda::pelka {

ZEDA_PhysicalPackage_Disk::ZEDA_PhysicalPackage_Disk(const CmpiBroker& broker,
                                                     const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName(kClassName);
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

    PhysicalPackageFields package;
    package.nameSpace = visit.nameSpace;
    package.className = kClassName;
    package.creationClassName = kClassName;
    package.tag = tag;
    package.manufacturer = ManufacturerFromProduct(identity.product, identity.model);
    package.model = identity.model;
    package.serialNumber = identity.serial;
    rslt.returnData(MakePhysicalPackageInstance(package));
  });
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_PhysicalPackage_Disk::GetInstance::operator()(const CmpiContext& ctx,
                                                              CmpiResult& rslt,
                                                              const CmpiObjectPath& cop,
                                                              const char** properties) {
  // The requested keys are not read: every request gets the placeholder.
  rslt.returnData(
      MakePhysicalPackageInstance(PlaceholderPhysicalPackageFields(NameSpaceOf(cop), kClassName)));
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
