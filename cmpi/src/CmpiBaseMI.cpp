// CmpiBaseMI: defaults of every provider object and the clean-up driver.
#include "CmpiBaseMI.h"

#include <memory>

#include "CmpiDrive.h"
#include "CmpiProviderBase.h"

CmpiBaseMI::CmpiBaseMI(const CmpiBroker& broker, const CmpiContext& ctx) : broker_(broker) {}

CmpiBaseMI::~CmpiBaseMI() = default;

CmpiStatus CmpiBaseMI::initialize(const CmpiContext& ctx) { return CmpiStatus(CMPI_RC_OK); }

CmpiStatus CmpiBaseMI::cleanup(CmpiContext& ctx) { return CmpiStatus(CMPI_RC_OK); }

bool CmpiBaseMI::isUnloadable() const { return true; }

CMPIStatus CmpiBaseMI::driveBaseCleanup(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                        CMPIBoolean terminating) {
  return cleanupHandle(mi == nullptr ? nullptr : const_cast<void*>(mi->hdl), ctx, terminating);
}

CMPIStatus CmpiBaseMI::driveBaseCleanup(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                        CMPIBoolean terminating) {
  return cleanupHandle(mi == nullptr ? nullptr : mi->hdl, ctx, terminating);
}

CMPIStatus CmpiBaseMI::driveBaseCleanup(CMPIMethodMI* mi, const CMPIContext* ctx,
                                        CMPIBoolean terminating) {
  return cleanupHandle(mi == nullptr ? nullptr : mi->hdl, ctx, terminating);
}

CMPIStatus CmpiBaseMI::driveBaseCleanup(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                        CMPIBoolean terminating) {
  return cleanupHandle(mi == nullptr ? nullptr : mi->hdl, ctx, terminating);
}

namespace {

// Whether the provider agrees to be unloaded. A provider that cannot answer
// (throws) stays loaded: ending an object in an unknown state is the riskier
// choice.
bool agreesToUnload(const CmpiBaseMI& provider) noexcept {
  try {
    const CmpiBrokerScope scope(provider.getBroker().getEnc());
    return provider.isUnloadable();
  } catch (...) {
    return false;
  }
}

}  // namespace

// Every MI record handed out for a provider object counts one use of its
// provider base. Only the clean-up of the last record ends the object, and
// only when the provider agrees to be unloaded or the object manager is
// shutting down.
CMPIStatus CmpiBaseMI::cleanupHandle(void* hdl, const CMPIContext* ctx, CMPIBoolean terminating) {
  CmpiBaseMI* base = fromHandle(hdl);
  if (base == nullptr) {
    return cmpi_detail::makeCStatus(nullptr, CMPI_RC_ERR_INVALID_HANDLE, nullptr);
  }
  CmpiProviderBase* providerBase = base->getProviderBase();
  if (providerBase != nullptr) {
    if (providerBase->decUseCount() > 0) {
      return CMPIStatus{CMPI_RC_OK, nullptr};
    }
    if (!terminating && !agreesToUnload(*base)) {
      providerBase->incUseCount();
      return CMPIStatus{CMPI_RC_DO_NOT_UNLOAD, nullptr};
    }
  }
  // The object ends whatever cleanup() answers or throws: the object manager
  // treats the record as gone after this call.
  cmpi_detail::driveProvider(base, [ctx](CmpiBaseMI& provider) {
    CmpiContext context(ctx);
    return provider.cleanup(context);
  });
  // Destructors may still use value constructors, so the broker stays installed.
  const CmpiBrokerScope scope(base->getBroker().getEnc());
  if (providerBase != nullptr && providerBase->getBaseMI() == base) {
    providerBase->setBaseMI(nullptr);
  } else {
    const std::unique_ptr<CmpiBaseMI> owned(base);
  }
  return CMPIStatus{CMPI_RC_OK, nullptr};
}
