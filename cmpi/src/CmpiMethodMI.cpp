// CmpiMethodMI: method invocation and its driver.
#include "CmpiMethodMI.h"

#include "CmpiDrive.h"

CmpiMethodMI::CmpiMethodMI(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx) {}

CmpiStatus CmpiMethodMI::invokeMethod(const CmpiContext& ctx, CmpiResult& rslt,
                                      const CmpiObjectPath& ref, const char* methodName,
                                      const CmpiArgs& in, CmpiArgs& out) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIStatus CmpiMethodMI::driveInvokeMethod(CMPIMethodMI* mi, const CMPIContext* ctx,
                                           const CMPIResult* rslt, const CMPIObjectPath* ref,
                                           const char* methodName, const CMPIArgs* in,
                                           CMPIArgs* out) {
  return cmpi_detail::drive<CmpiMethodMI>(mi, "method", [&](CmpiMethodMI& provider) {
    CmpiResult result(rslt);
    CmpiArgs outArgs(out);
    return provider.invokeMethod(CmpiContext(ctx), result, CmpiObjectPath(ref), methodName,
                                 CmpiArgs(in), outArgs);
  });
}
