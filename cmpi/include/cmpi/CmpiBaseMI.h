// CmpiBaseMI: root of every provider object of the C++ binding. The MI records
// an object manager receives hold the provider as a CmpiBaseMI* in their
// handle; the static drivers below and in the four MI classes turn the C calls
// into virtual calls and every C++ exception into a failure status.
#ifndef ZEDA_CMPI_CMPIBASEMI_H
#define ZEDA_CMPI_CMPIBASEMI_H

#include "CmpiBroker.h"
#include "CmpiContext.h"
#include "CmpiStatus.h"

class CmpiProviderBase;

class CmpiBaseMI {
 public:
  CmpiBaseMI(const CmpiBroker& broker, const CmpiContext& ctx);
  virtual ~CmpiBaseMI();
  CmpiBaseMI(const CmpiBaseMI&) = delete;
  CmpiBaseMI& operator=(const CmpiBaseMI&) = delete;

  virtual CmpiStatus initialize(const CmpiContext& ctx);
  virtual CmpiStatus cleanup(CmpiContext& ctx);
  virtual bool isUnloadable() const;

  void setProviderBase(CmpiProviderBase* base) { providerBase_ = base; }
  CmpiProviderBase* getProviderBase() const { return providerBase_; }
  const CmpiBroker& getBroker() const { return broker_; }

  // The provider object an MI handle refers to (null for a null handle).
  static CmpiBaseMI* fromHandle(void* hdl) { return static_cast<CmpiBaseMI*>(hdl); }
  static void* toHandle(CmpiBaseMI* mi) { return mi; }

  // Clean-up entry of every MI function table: drops one use of the provider
  // base; the last one calls cleanup() and destroys the provider object.
  static CMPIStatus driveBaseCleanup(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                     CMPIBoolean terminating);
  static CMPIStatus driveBaseCleanup(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                     CMPIBoolean terminating);
  static CMPIStatus driveBaseCleanup(CMPIMethodMI* mi, const CMPIContext* ctx,
                                     CMPIBoolean terminating);
  static CMPIStatus driveBaseCleanup(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                     CMPIBoolean terminating);

 private:
  static CMPIStatus cleanupHandle(void* hdl, const CMPIContext* ctx, CMPIBoolean terminating);

  CmpiBroker broker_;
  CmpiProviderBase* providerBase_ = nullptr;
};

#endif
