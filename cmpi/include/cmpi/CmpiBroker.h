// CmpiBroker: the object manager's broker as the provider sees it, with the
// up-calls a provider may make. Calls the broker refuses throw CmpiStatus,
// except the logging calls, which report their status: object managers may
// answer them with CMPI_RC_ERR_NOT_SUPPORTED and that is no failure.
#ifndef ZEDA_CMPI_CMPIBROKER_H
#define ZEDA_CMPI_CMPIBROKER_H

#include "CmpiArgs.h"
#include "CmpiContext.h"
#include "CmpiEnumeration.h"
#include "CmpiInstance.h"
#include "CmpiObjectPath.h"
#include "CmpiStatus.h"

class CmpiBroker {
 public:
  CmpiBroker() = default;
  explicit CmpiBroker(const CMPIBroker* enc) : enc_(enc) {}

  CmpiEnumeration enumInstanceNames(const CmpiContext& ctx, const CmpiObjectPath& cop) const;
  CmpiEnumeration enumInstances(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                const char** properties) const;
  CmpiInstance getInstance(const CmpiContext& ctx, const CmpiObjectPath& cop,
                           const char** properties) const;
  CmpiObjectPath createInstance(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                const CmpiInstance& inst) const;
  void setInstance(const CmpiContext& ctx, const CmpiObjectPath& cop, const CmpiInstance& inst,
                   const char** properties) const;
  void deleteInstance(const CmpiContext& ctx, const CmpiObjectPath& cop) const;
  CmpiEnumeration execQuery(const CmpiContext& ctx, const CmpiObjectPath& cop, const char* query,
                            const char* language) const;
  CmpiEnumeration associators(const CmpiContext& ctx, const CmpiObjectPath& cop,
                              const char* assocClass, const char* resultClass, const char* role,
                              const char* resultRole, const char** properties) const;
  CmpiEnumeration associatorNames(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                  const char* assocClass, const char* resultClass, const char* role,
                                  const char* resultRole) const;
  CmpiEnumeration references(const CmpiContext& ctx, const CmpiObjectPath& cop,
                             const char* resultClass, const char* role,
                             const char** properties) const;
  CmpiEnumeration referenceNames(const CmpiContext& ctx, const CmpiObjectPath& cop,
                                 const char* resultClass, const char* role) const;
  CmpiData invokeMethod(const CmpiContext& ctx, const CmpiObjectPath& cop, const char* method,
                        const CmpiArgs& in, CmpiArgs& out) const;
  void setProperty(const CmpiContext& ctx, const CmpiObjectPath& cop, const char* name,
                   const CmpiData& value) const;
  CmpiData getProperty(const CmpiContext& ctx, const CmpiObjectPath& cop, const char* name) const;
  void deliverIndication(const CmpiContext& ctx, const char* nameSpace,
                         const CmpiInstance& indication) const;

  CmpiContext prepareAttachThread(const CmpiContext& ctx) const;
  void attachThread(const CmpiContext& ctx) const;
  void detachThread(const CmpiContext& ctx) const;

  bool classPathIsA(const CmpiObjectPath& cop, const char* className) const;
  CmpiString toString(const void* object) const;
  bool isOfType(const void* object, const char* type) const;
  CmpiString getType(const void* object) const;
  CmpiStatus logMessage(int severity, const char* id, const char* text) const;
  CmpiStatus trace(CMPILevel level, const char* component, const char* text) const;

  const CMPIBroker* getEnc() const { return enc_; }

  // The broker of the call in progress on this thread: the binding's drivers
  // install the provider's broker for the duration of every call they make
  // into a provider, so that value constructors (CmpiString, CmpiObjectPath,
  // CmpiInstance, CmpiArray, ...) can create objects. Null outside a call.
  static const CMPIBroker* current();

 private:
  const CMPIBroker* enc_ = nullptr;
};

// Installs a broker as the current one for its lifetime; scopes nest.
class CmpiBrokerScope {
 public:
  explicit CmpiBrokerScope(const CMPIBroker* broker);
  ~CmpiBrokerScope();
  CmpiBrokerScope(const CmpiBrokerScope&) = delete;
  CmpiBrokerScope& operator=(const CmpiBrokerScope&) = delete;

 private:
  const CMPIBroker* previous_;
};

#endif
