#include "providers/associations/ZEDA_SystemDevice_StorageExtent_Disk.h"

#include <memory>

#include "providers/associations/SystemDeviceAssociation.h"
#include "providers/common/ClassNames.h"
#include "providers/common/Keys.h"
#include "providers/elements/StorageExtentBuilder.h"

namespace zeda::pelka {

namespace {

CmpiInstance MakePlaceholderExtent(const std::string& nameSpace) {
  return MakeStorageExtentInstance(PlaceholderStorageExtentFields(nameSpace));
}

// Clients of this class ask for the extent's system with the result class
// CIM_StoragePool; that is the name answered, with a ZEDA_ComputerSystem.
constexpr SystemDeviceKind kExtentInSystem{
    ZEDA_SystemDevice_StorageExtent_Disk::kClassName,
    className::kStorageExtentDisk,
    ExtentDeviceId,
    className::kCimStoragePool,
    true,
    className::kCimStorageExtent,
    MakePlaceholderExtent,
};

}  // namespace

ZEDA_SystemDevice_StorageExtent_Disk::ZEDA_SystemDevice_StorageExtent_Disk(const CmpiBroker& broker,
                                                                           const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName(kClassName);
  install(this, instanceDelegates().EnumInstances, std::make_unique<EnumInstances>());
  install(this, associationDelegates().Associators, std::make_unique<Associators>());
  install(this, associationDelegates().References, std::make_unique<References>());
}

CmpiStatus ZEDA_SystemDevice_StorageExtent_Disk::EnumInstances::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop, const char** properties) {
  return EnumSystemDevices(kExtentInSystem, rslt, cop);
}

CmpiStatus ZEDA_SystemDevice_StorageExtent_Disk::Associators::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& assocClass, const std::string& resultClass, const std::string& role,
    const std::string& resultRole, const char** properties) {
  return SystemDeviceAssociators(kExtentInSystem, rslt, cop, assocClass, resultClass, properties);
}

CmpiStatus ZEDA_SystemDevice_StorageExtent_Disk::References::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& resultClass, const std::string& role, const char** properties) {
  return SystemDeviceReferences(kExtentInSystem, rslt, cop);
}

}  // namespace zeda::pelka
