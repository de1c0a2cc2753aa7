#include "providers/pools/ZEDA_AssociatedComponentExtent_Primordial.h"

#include <memory>
#include <string>

#include "providers/pools/ExtentToPool.h"
#include "providers/pools/PoolReferences.h"
#include "providers/pools/PoolTable.h"
#include "providers/pools/PoolToExtents.h"

namespace zeda::pelka {

namespace {

constexpr const char* kExtentClass = className::kStorageExtentDisk;

}  // namespace

ZEDA_AssociatedComponentExtent_Primordial::ZEDA_AssociatedComponentExtent_Primordial(
    const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName(kClassName);
  auto& associators =
      install(this, associationDelegates().Associators, std::make_unique<AssociatorsDelegate>());
  auto second = std::make_unique<AssociatorsHandler2>(kStoragePoolClass);
  auto first = std::make_unique<AssociatorsHandler1>(kExtentClass);
  associators.setHandlers(std::move(first), std::move(second));
  install(this, associationDelegates().References, std::make_unique<References>());
}

CmpiStatus ZEDA_AssociatedComponentExtent_Primordial::AssociatorsHandler1::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& assocClass, const std::string& resultClass, const std::string& role,
    const std::string& resultRole, const char** properties) {
  ReturnExtentPool(rslt, cop, properties, ExtentPoolRule{4, false});
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_AssociatedComponentExtent_Primordial::AssociatorsHandler2::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& assocClass, const std::string& resultClass, const std::string& role,
    const std::string& resultRole, const char** properties) {
  ReturnPoolExtents(rslt, cop, ExtentStatusRule::AlwaysFree);
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_AssociatedComponentExtent_Primordial::References::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& resultClass, const std::string& role, const char** properties) {
  ReturnPoolPlaceholderReference(rslt, cop, kClassName);
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
