#include "providers/associations/ZEDA_Realizes_Disk.h"

#include <memory>

#include "CmpiKeys.h"
#include "Exception.h"
#include "inventory/Library.h"
#include "providers/common/CimValues.h"
#include "providers/common/ClassNames.h"
#include "providers/common/InventoryWalk.h"
#include "providers/common/Keys.h"
#include "providers/common/PlaceholderReference.h"
#include "providers/common/TextOps.h"
#include "providers/elements/DiskDriveBuilder.h"
#include "providers/elements/PackageBuilder.h"

namespace zeda::pelka {

namespace {

constexpr const char* kDriveClass = className::kDiskDrive;
constexpr const char* kPackageClass = className::kPhysicalPackageDisk;

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
  setClassName(kClassName);
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
    AssociationFields association;
    association.nameSpace = visit.nameSpace;
    association.className = kClassName;
    association.first = {"Antecedent", PackagePath(visit.nameSpace, kPackageClass, tag)};
    association.second = {"Dependent",
                          DevicePath(visit.nameSpace, kDriveClass,
                                     NasDeviceKeys(visit.systemName, kDriveClass, tag))};
    rslt.returnData(MakeAssociationInstance(association));
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
  PhysicalPackageFields package;
  package.nameSpace = nameSpace;
  package.className = kPackageClass;
  package.creationClassName = kPackageClass;
  package.tag = deviceId;  // the drive's DeviceID as the client sent it
  package.manufacturer = ManufacturerFromProduct(identity.product, identity.model);
  package.model = identity.model;
  package.serialNumber = identity.serial;
  rslt.returnData(MakePhysicalPackageInstance(package));
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_Realizes_Disk::AssociatorsHandler2::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& assocClass, const std::string& resultClass, const std::string& role,
    const std::string& resultRole, const char** properties) {
  rslt.returnData(
      MakeDiskDriveInstance(PlaceholderDiskDriveFields(NameSpaceOf(cop), kDriveClass, "Name")));
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
  ReturnPlaceholderReference(rslt, cop, kClassName, package, drive);
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
