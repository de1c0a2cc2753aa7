// CmpiMethodMI: the method interface of a provider object.
#ifndef ZEDA_CMPI_CMPIMETHODMI_H
#define ZEDA_CMPI_CMPIMETHODMI_H

#include "CmpiArgs.h"
#include "CmpiBaseMI.h"
#include "CmpiResult.h"

class CmpiMethodMI : virtual public CmpiBaseMI {
 public:
  CmpiMethodMI(const CmpiBroker& broker, const CmpiContext& ctx);

  // The default answers CMPI_RC_ERR_NOT_SUPPORTED.
  virtual CmpiStatus invokeMethod(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& ref, const char* methodName,
                                  const CmpiArgs& in, CmpiArgs& out);

  static CMPIStatus driveInvokeMethod(CMPIMethodMI* mi, const CMPIContext* ctx,
                                      const CMPIResult* rslt, const CMPIObjectPath* ref,
                                      const char* methodName, const CMPIArgs* in, CMPIArgs* out);
};

#endif
