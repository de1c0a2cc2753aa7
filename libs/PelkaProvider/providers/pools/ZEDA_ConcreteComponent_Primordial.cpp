#include "providers/pools/ZEDA_ConcreteComponent_Primordial.h"

#include <memory>
#include <string>

#include "providers/common/CimValues.h"
#include "providers/common/InventoryWalk.h"
#include "providers/common/Keys.h"
#include "providers/pools/ExtentToPool.h"
#include "providers/pools/PoolReferences.h"
#include "providers/pools/PoolRules.h"
#include "providers/pools/PoolTable.h"
#include "providers/pools/PoolToExtents.h"

namespace zeda::pelka {

namespace {

constexpr const char* kExtentClass = className::kStorageExtentDisk;

}  // namespace

ZEDA_ConcreteComponent_Primordial::ZEDA_ConcreteComponent_Primordial(const CmpiBroker& broker,
                                                                     const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName(kClassName);
  install(this, instanceDelegates().EnumInstances, std::make_unique<EnumInstances>());
  auto& associators =
      install(this, associationDelegates().Associators, std::make_unique<AssociatorsDelegate>());
  auto second = std::make_unique<AssociatorsHandler2>(kStoragePoolClass);
  auto first = std::make_unique<AssociatorsHandler1>(kExtentClass);
  associators.setHandlers(std::move(first), std::move(second));
  install(this, associationDelegates().References, std::make_unique<References>());
}

CmpiStatus ZEDA_ConcreteComponent_Primordial::EnumInstances::operator()(const CmpiContext& ctx,
                                                                        CmpiResult& rslt,
                                                                        const CmpiObjectPath& cop,
                                                                        const char** properties) {
  WalkInventory(rslt, cop, [&rslt](const DiskVisit& visit) {
    const PoolKind* pool = FindPool(EnumeratedPool(visit.disk));
    if (pool == nullptr) {
      return;
    }
    CmpiObjectPath poolPath(visit.nameSpace.c_str(), kStoragePoolClass);
    poolPath.setKey("InstanceID", CmpiData(PoolInstanceId(visit.systemName, *pool)));
    const DeviceKeys extentKeys = NasDeviceKeys(visit.systemName, kExtentClass,
                                                ExtentDeviceId(visit.systemName, visit.disk.id));
    AssociationFields association;
    association.nameSpace = visit.nameSpace;
    association.className = kClassName;
    association.first = {"GroupComponent", poolPath};
    association.second = {"PartComponent", DevicePath(visit.nameSpace, kExtentClass, extentKeys)};
    rslt.returnData(MakeAssociationInstance(association));
  });
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_ConcreteComponent_Primordial::AssociatorsHandler1::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& assocClass, const std::string& resultClass, const std::string& role,
    const std::string& resultRole, const char** properties) {
  ReturnExtentPool(rslt, cop, properties, ExtentPoolRule{2, true});
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_ConcreteComponent_Primordial::AssociatorsHandler2::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& assocClass, const std::string& resultClass, const std::string& role,
    const std::string& resultRole, const char** properties) {
  ReturnPoolExtents(rslt, cop, ExtentStatusRule::FromFreeFlag);
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_ConcreteComponent_Primordial::References::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& resultClass, const std::string& role, const char** properties) {
  ReturnPoolPlaceholderReference(rslt, cop, kClassName);
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
