#include "providers/associations/ZEDA_Realizes_Disk.h"

#include <memory>


#include "Exception.h"
#include "inventory/Keys.h"
#include "inventory/Library.h"
#include "providers/common/CimValues.h"
#include "providers/common/PlaceholderReference.h"
#include "providers/common/InventoryWalk.h"
#include "providers/common/TextOps.h"
#include "providers/elements/DiskDriveBuilder.h"
#include "providers/elements/PackageBuilder.h"

namespace zeda::pelka {

namespace {

constexpr char kAssociationClass[] = "ZEDA_Realizes_Disk";
constexpr char kDriveClass[] = "ZEDA_DiskDrive";
constexpr char kPackageClass[] = "ZEDA_PhysicalPackage_Disk";

// ZEDA_PhysicalPackage_Disk path: CreationClassName, then Tag.
CmpiObjectPath PackagePath(const std::string& nameSpace, const std::string& creationClassName,
                           const std::string& tag) {
  CmpiObjectPath path(nameSpace.c_str(), kPackageClass);
  path.setKey("CreationClassName", CmpiData(creationClassName));
  path.setKey("Tag", CmpiData(tag));
  return path;
}

}  // namespace

ZEDA_Realizes_Disk::ZEDA_Realizes_Disk(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName(kAssociationClass);
  install(this, instanceDelegates().EnumInstances, std::make_unique<EnumInstances>());
  auto& associators =
      install(this, associationDelegates().Associators, std::make_unique<AssociatorsDelegate>());
  auto second = std::make_unique<AssociatorsHandler2>(kPackageClass);
  auto first = std::make_unique<AssociatorsHandler1>(kDriveClass);
  associators.setHandlers(std::move(first), std::move(second));
  install(this, associationDelegates().References, std::make_unique<References>());
}

CmpiStatus ZEDA_Realizes_Disk::EnumInstances::operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                                         const CmpiObjectPath& cop,
                                                         const char** properties) {
  WalkInventory(rslt, cop, [&rslt](const DiskVisit& visit) {
    // The package's Tag and the drive's DeviceID are one and the same text.
    const std::string tag = DiskDeviceId(visit.systemName, visit.disk.id);
    const CmpiObjectPath package = PackagePath(visit.nameSpace, kPackageClass, tag);
    const CmpiObjectPath drive = DevicePath(visit.nameSpace, kDriveClass, "ZEDA_ComputerSystem",
                                            visit.systemName, kDriveClass, tag);
    rslt.returnData(AssociationInstance(visit.nameSpace, kAssociationClass, "Antecedent", package,
                                        "Dependent", drive));
  });
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_Realizes_Disk::AssociatorsHandler1::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& assocClass, const std::string& resultClass, const std::string& role,
    const std::string& resultRole, const char** properties) {
  const std::string nameSpace = NameSpaceOf(cop);
  const std::string systemName = cmpi::GetString(cop, "SystemName");
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get(NasNameFromSystemName(systemName)));
  const std::string deviceId = cmpi::GetString(cop, "DeviceID");
  const std::string id = text::TextAfterLast(deviceId, "DISK");
  const zeda::orvi::OrviDiskIdentity identity = orvi.GetDiskIdentity(id);
  const std::string manufacturer = ManufacturerFromProduct(identity.product, identity.model);
  CmpiInstance package;
  MakePhysicalPackageInstance(package, kPackageClass, nameSpace.c_str(), kPackageClass,
                              deviceId.c_str(), manufacturer.c_str(), identity.model.c_str(),
                              identity.serial.c_str());
  rslt.returnData(package);
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_Realizes_Disk::AssociatorsHandler2::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& assocClass, const std::string& resultClass, const std::string& role,
    const std::string& resultRole, const char** properties) {
  const std::string nameSpace = NameSpaceOf(cop);
  CmpiInstance drive;
  MakeFixedDiskDriveInstance(drive, nameSpace.c_str());
  rslt.returnData(drive);
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_Realizes_Disk::References::operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                                      const CmpiObjectPath& cop,
                                                      const std::string& resultClass,
                                                      const std::string& role,
                                                      const char** properties) {
  const AssociationEnd package{"Antecedent", kPackageClass, [](const std::string& nameSpace) {
                                 return PackagePath(nameSpace, "ZEDA_CreationClassName",
                                                    "ZEDA_Tag");
                               }};
  const AssociationEnd drive{"Dependent", kDriveClass, [](const std::string& nameSpace) {
                               return PlaceholderDevicePath(nameSpace, kDriveClass);
                             }};
  ReturnPlaceholderReference(rslt, cop, kAssociationClass, package, drive);
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
