#include "providers/associations/ZEDA_SystemDevice_DiskDrive.h"

#include <memory>

#include "providers/associations/SystemDeviceAssociation.h"
#include "providers/common/ClassNames.h"
#include "providers/common/Keys.h"
#include "providers/elements/DiskDriveBuilder.h"

namespace zeda::pelka {

namespace {

CmpiInstance MakePlaceholderDrive(const std::string& nameSpace) {
  return MakeDiskDriveInstance(
      PlaceholderDiskDriveFields(nameSpace, className::kDiskDrive, "Name"));
}

constexpr SystemDeviceKind kDriveInSystem{
    ZEDA_SystemDevice_DiskDrive::kClassName,
    className::kDiskDrive,
    DiskDeviceId,
    className::kCimComputerSystem,
    false,  // the placeholder system is built, never returned
    className::kCimDiskDrive,
    MakePlaceholderDrive,
};

}  // namespace

ZEDA_SystemDevice_DiskDrive::ZEDA_SystemDevice_DiskDrive(const CmpiBroker& broker,
                                                         const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName(kClassName);
  install(this, instanceDelegates().EnumInstances, std::make_unique<EnumInstances>());
  install(this, associationDelegates().Associators, std::make_unique<Associators>());
  install(this, associationDelegates().References, std::make_unique<References>());
}

CmpiStatus ZEDA_SystemDevice_DiskDrive::EnumInstances::operator()(const CmpiContext& ctx,
                                                                  CmpiResult& rslt,
                                                                  const CmpiObjectPath& cop,
                                                                  const char** properties) {
  return EnumSystemDevices(kDriveInSystem, rslt, cop);
}

CmpiStatus ZEDA_SystemDevice_DiskDrive::Associators::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& assocClass, const std::string& resultClass, const std::string& role,
    const std::string& resultRole, const char** properties) {
  return SystemDeviceAssociators(kDriveInSystem, rslt, cop, assocClass, resultClass, properties);
}

CmpiStatus ZEDA_SystemDevice_DiskDrive::References::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& resultClass, const std::string& role, const char** properties) {
  return SystemDeviceReferences(kDriveInSystem, rslt, cop);
}

}  // namespace zeda::pelka
