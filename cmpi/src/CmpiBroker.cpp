// CmpiBroker: up-calls into the object manager, and the broker of the call
// in progress on this thread.
#include "CmpiBroker.h"

#include "CmpiCall.h"

using cmpi_detail::callRc;
using cmpi_detail::callStatus;
using cmpi_detail::factories;
using cmpi_detail::upcalls;

namespace {

// The broker of the provider call running on this thread. Set only by
// CmpiBrokerScope, which the binding's drivers install around every call.
thread_local const CMPIBroker* currentBroker = nullptr;

const CMPIBroker* requireBroker(const CMPIBroker* broker) {
  if (broker == nullptr) {
    throw CmpiStatus(CMPI_RC_ERR_INVALID_HANDLE, "null CMPIBroker handle");
  }
  return broker;
}

}  // namespace

namespace cmpi_detail {

const CMPIBrokerEncFT* factories(const CMPIBroker* broker) {
  if (requireBroker(broker)->eft == nullptr) {
    throw CmpiStatus(CMPI_RC_ERR_INVALID_HANDLE, "CMPIBroker handle without factory table");
  }
  return broker->eft;
}

const CMPIBrokerFT* upcalls(const CMPIBroker* broker) {
  if (requireBroker(broker)->bft == nullptr) {
    throw CmpiStatus(CMPI_RC_ERR_INVALID_HANDLE, "CMPIBroker handle without up-call table");
  }
  return broker->bft;
}

}  // namespace cmpi_detail

const CMPIBroker* CmpiBroker::current() { return currentBroker; }

CmpiBrokerScope::CmpiBrokerScope(const CMPIBroker* broker) : previous_(currentBroker) {
  currentBroker = broker;
}

CmpiBrokerScope::~CmpiBrokerScope() { currentBroker = previous_; }

CmpiEnumeration CmpiBroker::enumInstanceNames(const CmpiContext& ctx,
                                              const CmpiObjectPath& cop) const {
  return CmpiEnumeration(callRc(upcalls(enc_)->enumerateInstanceNames,
                                "CMPIBrokerFT.enumerateInstanceNames", enc_, ctx.getEnc(),
                                cop.getEnc()));
}

CmpiEnumeration CmpiBroker::enumInstances(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                          const char** properties) const {
  return CmpiEnumeration(callRc(upcalls(enc_)->enumerateInstances,
                                "CMPIBrokerFT.enumerateInstances", enc_, ctx.getEnc(), cop.getEnc(),
                                properties));
}

CmpiInstance CmpiBroker::getInstance(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                     const char** properties) const {
  return CmpiInstance(callRc(upcalls(enc_)->getInstance, "CMPIBrokerFT.getInstance", enc_,
                             ctx.getEnc(), cop.getEnc(), properties));
}

CmpiObjectPath CmpiBroker::createInstance(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                          const CmpiInstance& inst) const {
  return CmpiObjectPath(callRc(upcalls(enc_)->createInstance, "CMPIBrokerFT.createInstance", enc_,
                               ctx.getEnc(), cop.getEnc(), inst.getEnc()));
}

void CmpiBroker::setInstance(const CmpiContext& ctx, const CmpiObjectPath& cop,
                             const CmpiInstance& inst, const char** properties) const {
  callStatus(upcalls(enc_)->modifyInstance, "CMPIBrokerFT.modifyInstance", enc_, ctx.getEnc(),
             cop.getEnc(), inst.getEnc(), properties);
}

void CmpiBroker::deleteInstance(const CmpiContext& ctx, const CmpiObjectPath& cop) const {
  callStatus(upcalls(enc_)->deleteInstance, "CMPIBrokerFT.deleteInstance", enc_, ctx.getEnc(),
             cop.getEnc());
}

CmpiEnumeration CmpiBroker::execQuery(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                      const char* query, const char* language) const {
  return CmpiEnumeration(callRc(upcalls(enc_)->execQuery, "CMPIBrokerFT.execQuery", enc_,
                                ctx.getEnc(), cop.getEnc(), query, language));
}

CmpiEnumeration CmpiBroker::associators(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                        const char* assocClass, const char* resultClass,
                                        const char* role, const char* resultRole,
                                        const char** properties) const {
  return CmpiEnumeration(callRc(upcalls(enc_)->associators, "CMPIBrokerFT.associators", enc_,
                                ctx.getEnc(), cop.getEnc(), assocClass, resultClass, role,
                                resultRole, properties));
}

CmpiEnumeration CmpiBroker::associatorNames(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                            const char* assocClass, const char* resultClass,
                                            const char* role, const char* resultRole) const {
  return CmpiEnumeration(callRc(upcalls(enc_)->associatorNames, "CMPIBrokerFT.associatorNames",
                                enc_, ctx.getEnc(), cop.getEnc(), assocClass, resultClass, role,
                                resultRole));
}

CmpiEnumeration CmpiBroker::references(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                       const char* resultClass, const char* role,
                                       const char** properties) const {
  return CmpiEnumeration(callRc(upcalls(enc_)->references, "CMPIBrokerFT.references", enc_,
                                ctx.getEnc(), cop.getEnc(), resultClass, role, properties));
}

CmpiEnumeration CmpiBroker::referenceNames(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                           const char* resultClass, const char* role) const {
  return CmpiEnumeration(callRc(upcalls(enc_)->referenceNames, "CMPIBrokerFT.referenceNames", enc_,
                                ctx.getEnc(), cop.getEnc(), resultClass, role));
}

CmpiData CmpiBroker::invokeMethod(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                  const char* method, const CmpiArgs& in, CmpiArgs& out) const {
  return CmpiData(callRc(upcalls(enc_)->invokeMethod, "CMPIBrokerFT.invokeMethod", enc_,
                         ctx.getEnc(), cop.getEnc(), method, in.getEnc(), out.getEnc()));
}

void CmpiBroker::setProperty(const CmpiContext& ctx, const CmpiObjectPath& cop, const char* name,
                             const CmpiData& value) const {
  callStatus(upcalls(enc_)->setProperty, "CMPIBrokerFT.setProperty", enc_, ctx.getEnc(),
             cop.getEnc(), name, cmpi_detail::setterValue(value), value.getType());
}

CmpiData CmpiBroker::getProperty(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                 const char* name) const {
  return CmpiData(callRc(upcalls(enc_)->getProperty, "CMPIBrokerFT.getProperty", enc_, ctx.getEnc(),
                         cop.getEnc(), name));
}

void CmpiBroker::deliverIndication(const CmpiContext& ctx, const char* nameSpace,
                                   const CmpiInstance& indication) const {
  callStatus(upcalls(enc_)->deliverIndication, "CMPIBrokerFT.deliverIndication", enc_, ctx.getEnc(),
             nameSpace, indication.getEnc());
}

CmpiContext CmpiBroker::prepareAttachThread(const CmpiContext& ctx) const {
  const CMPIContext* prepared = cmpi_detail::entry(
      upcalls(enc_)->prepareAttachThread, "CMPIBrokerFT.prepareAttachThread")(enc_, ctx.getEnc());
  if (prepared == nullptr) {
    throw CmpiStatus(CMPI_RC_ERR_FAILED, "the object manager prepared no context for a thread");
  }
  return CmpiContext(prepared);
}

void CmpiBroker::attachThread(const CmpiContext& ctx) const {
  callStatus(upcalls(enc_)->attachThread, "CMPIBrokerFT.attachThread", enc_, ctx.getEnc());
}

void CmpiBroker::detachThread(const CmpiContext& ctx) const {
  callStatus(upcalls(enc_)->detachThread, "CMPIBrokerFT.detachThread", enc_, ctx.getEnc());
}

bool CmpiBroker::classPathIsA(const CmpiObjectPath& cop, const char* className) const {
  return callRc(factories(enc_)->classPathIsA, "CMPIBrokerEncFT.classPathIsA", enc_,
                static_cast<const CMPIObjectPath*>(cop.getEnc()), className) != 0;
}

CmpiString CmpiBroker::toString(const void* object) const {
  return CmpiString(callRc(factories(enc_)->toString, "CMPIBrokerEncFT.toString", enc_, object));
}

bool CmpiBroker::isOfType(const void* object, const char* type) const {
  return callRc(factories(enc_)->isOfType, "CMPIBrokerEncFT.isOfType", enc_, object, type) != 0;
}

CmpiString CmpiBroker::getType(const void* object) const {
  return CmpiString(callRc(factories(enc_)->getType, "CMPIBrokerEncFT.getType", enc_, object));
}

CmpiStatus CmpiBroker::logMessage(int severity, const char* id, const char* text) const {
  if (enc_ == nullptr || enc_->eft == nullptr) {
    return CmpiStatus(CMPI_RC_ERR_INVALID_HANDLE, "null CMPIBroker handle");
  }
  if (enc_->eft->logMessage == nullptr) {
    return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED, "CMPIBrokerEncFT.logMessage is not supported");
  }
  return CmpiStatus(enc_->eft->logMessage(enc_, severity, id, text, nullptr));
}

CmpiStatus CmpiBroker::trace(CMPILevel level, const char* component, const char* text) const {
  if (enc_ == nullptr || enc_->eft == nullptr) {
    return CmpiStatus(CMPI_RC_ERR_INVALID_HANDLE, "null CMPIBroker handle");
  }
  if (enc_->eft->trace == nullptr) {
    return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED, "CMPIBrokerEncFT.trace is not supported");
  }
  return CmpiStatus(enc_->eft->trace(enc_, static_cast<int>(level), component, text, nullptr));
}
