#include "providers/associations/ZEDA_ElementSoftwareIdentity_Disk.h"

#include <memory>

#include "Exception.h"
#include "inventory/Keys.h"
#include "inventory/Library.h"
#include "providers/associations/PlaceholderInstances.h"
#include "providers/common/CimValues.h"
#include "providers/common/PlaceholderReference.h"
#include "providers/common/InventoryWalk.h"
#include "providers/elements/DiskDriveBuilder.h"

namespace zeda::pelka {

namespace {

constexpr char kAssociationClass[] = "ZEDA_ElementSoftwareIdentity_Disk";
constexpr char kDriveClass[] = "ZEDA_DiskDrive";
constexpr char kSoftwareClass[] = "ZEDA_SoftwareIdentity_Disk";

// ZEDA_SoftwareIdentity_Disk path with its one key, InstanceID.
CmpiObjectPath SoftwareIdentityPath(const std::string& nameSpace, const std::string& instanceId) {
  CmpiObjectPath path(nameSpace.c_str(), kSoftwareClass);
  path.setKey("InstanceID", CmpiData(instanceId));
  return path;
}

}  // namespace

ZEDA_ElementSoftwareIdentity_Disk::ZEDA_ElementSoftwareIdentity_Disk(const CmpiBroker& broker,
                                                                     const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName(kAssociationClass);
  install(this, instanceDelegates().EnumInstances, std::make_unique<EnumInstances>());
  install(this, instanceDelegates().GetInstance, std::make_unique<GetInstance>());
  install(this, associationDelegates().Associators, std::make_unique<Associators>());
  install(this, associationDelegates().References, std::make_unique<References>());
}

CmpiStatus ZEDA_ElementSoftwareIdentity_Disk::EnumInstances::operator()(const CmpiContext& ctx,
                                                                        CmpiResult& rslt,
                                                                        const CmpiObjectPath& cop,
                                                                        const char** properties) {
  WalkInventory(rslt, cop, [&rslt](const DiskVisit& visit) {
    const std::string deviceId = DiskDeviceId(visit.systemName, visit.disk.id);
    const std::string instanceId = SystemSoftwareInstanceId(visit.systemName, visit.disk.id);
    const CmpiObjectPath software = SoftwareIdentityPath(visit.nameSpace, instanceId);
    const CmpiObjectPath drive = DevicePath(visit.nameSpace, kDriveClass, "ZEDA_ComputerSystem",
                                            visit.systemName, kDriveClass, deviceId);
    rslt.returnData(AssociationInstance(visit.nameSpace, kAssociationClass, "Antecedent", software,
                                        "Dependent", drive));
  });
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_ElementSoftwareIdentity_Disk::GetInstance::operator()(const CmpiContext& ctx,
                                                                      CmpiResult& rslt,
                                                                      const CmpiObjectPath& cop,
                                                                      const char** properties) {
  const std::string nameSpace = NameSpaceOf(cop);
  CmpiInstance placeholder;
  MakePlaceholderDiskDriveInstance(placeholder, owner()->className().c_str(), nameSpace.c_str(),
                                   "ZEDA_Name");
  rslt.returnData(placeholder);
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_ElementSoftwareIdentity_Disk::Associators::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& assocClass, const std::string& resultClass, const std::string& role,
    const std::string& resultRole, const char** properties) {
  const std::string nameSpace = NameSpaceOf(cop);
  const std::string sourceClass = cmpi::GetClassName(cop);
  CmpiInstance associated;
  if (sourceClass == kDriveClass) {
    MakePlaceholderSoftwareIdentityInstance(associated, nameSpace.c_str());
  } else if (sourceClass == kSoftwareClass) {
    MakePlaceholderDiskDriveInstance(associated, kDriveClass, nameSpace.c_str(), "Name");
  } else {
    throw Exception("Unknown class name: " + sourceClass);
  }
  rslt.returnData(associated);
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_ElementSoftwareIdentity_Disk::References::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& resultClass, const std::string& role, const char** properties) {
  const AssociationEnd software{"Antecedent", kSoftwareClass, [](const std::string& nameSpace) {
                                  return SoftwareIdentityPath(nameSpace, "ZEDA_InstanceID");
                                }};
  const AssociationEnd drive{"Dependent", kDriveClass, [](const std::string& nameSpace) {
                               return PlaceholderDevicePath(nameSpace, kDriveClass);
                             }};
  ReturnPlaceholderReference(rslt, cop, kAssociationClass, software, drive);
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
