#include "providers/associations/ZEDA_ElementSoftwareIdentity_Disk.h"

#include <memory>

#include "CmpiKeys.h"
#include "Exception.h"
#include "providers/common/CimValues.h"
#include "providers/common/ClassNames.h"
#include "providers/common/InventoryWalk.h"
#include "providers/common/Keys.h"
#include "providers/common/PlaceholderReference.h"
#include "providers/elements/DiskDriveBuilder.h"
#include "providers/elements/SoftwareIdentityBuilder.h"

namespace zeda::pelka {

namespace {

constexpr const char* kDriveClass = className::kDiskDrive;
constexpr const char* kSoftwareClass = className::kSoftwareIdentityDisk;

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
  setClassName(kClassName);
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
    AssociationFields association;
    association.nameSpace = visit.nameSpace;
    association.className = kClassName;
    association.first = {"Antecedent", SoftwareIdentityPath(visit.nameSpace, instanceId)};
    association.second = {"Dependent",
                          DevicePath(visit.nameSpace, kDriveClass,
                                     NasDeviceKeys(visit.systemName, kDriveClass, deviceId))};
    rslt.returnData(MakeAssociationInstance(association));
  });
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_ElementSoftwareIdentity_Disk::GetInstance::operator()(const CmpiContext& ctx,
                                                                      CmpiResult& rslt,
                                                                      const CmpiObjectPath& cop,
                                                                      const char** properties) {
  // A drive-shaped placeholder of this association's own class.
  rslt.returnData(
      MakeDiskDriveInstance(PlaceholderDiskDriveFields(NameSpaceOf(cop), kClassName, "ZEDA_Name")));
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
    associated =
        MakeSoftwareIdentityInstance(PlaceholderSoftwareIdentityFields(nameSpace, kSoftwareClass));
  } else if (sourceClass == kSoftwareClass) {
    associated = MakeDiskDriveInstance(PlaceholderDiskDriveFields(nameSpace, kDriveClass, "Name"));
  } else {
    // Exception: answered as 200 (CMPI_RC_ERROR).
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
  ReturnPlaceholderReference(rslt, cop, kClassName, software, drive);
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
