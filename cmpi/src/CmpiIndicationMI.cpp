// CmpiIndicationMI: indication operations and their drivers.
#include "CmpiIndicationMI.h"

#include "CmpiDrive.h"

using cmpi_detail::drive;

namespace {
constexpr const char* kInterface = "indication";
}

CmpiIndicationMI::CmpiIndicationMI(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx) {}

CmpiStatus CmpiIndicationMI::authorizeFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                             const char* className, const CmpiObjectPath& cop,
                                             const char* owner) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiIndicationMI::mustPoll(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                      const char* className, const CmpiObjectPath& cop) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiIndicationMI::activateFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                            const char* className, const CmpiObjectPath& cop,
                                            bool firstActivation) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiIndicationMI::deActivateFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                              const char* className, const CmpiObjectPath& cop,
                                              bool lastActivation) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiIndicationMI::enableIndications(const CmpiContext& ctx) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiIndicationMI::disableIndications(const CmpiContext& ctx) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIStatus CmpiIndicationMI::driveAuthorizeFilter(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                                  const CMPISelectExp* filter,
                                                  const char* className, const CMPIObjectPath* cop,
                                                  const char* owner) {
  return drive<CmpiIndicationMI>(mi, kInterface, [&](CmpiIndicationMI& provider) {
    return provider.authorizeFilter(CmpiContext(ctx), CmpiSelectExp(filter), className,
                                    CmpiObjectPath(cop), owner);
  });
}

CMPIStatus CmpiIndicationMI::driveMustPoll(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                           const CMPISelectExp* filter, const char* className,
                                           const CMPIObjectPath* cop) {
  return drive<CmpiIndicationMI>(mi, kInterface, [&](CmpiIndicationMI& provider) {
    return provider.mustPoll(CmpiContext(ctx), CmpiSelectExp(filter), className,
                             CmpiObjectPath(cop));
  });
}

CMPIStatus CmpiIndicationMI::driveActivateFilter(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                                 const CMPISelectExp* filter, const char* className,
                                                 const CMPIObjectPath* cop,
                                                 CMPIBoolean firstActivation) {
  return drive<CmpiIndicationMI>(mi, kInterface, [&](CmpiIndicationMI& provider) {
    return provider.activateFilter(CmpiContext(ctx), CmpiSelectExp(filter), className,
                                   CmpiObjectPath(cop), firstActivation != 0);
  });
}

CMPIStatus CmpiIndicationMI::driveDeActivateFilter(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                                   const CMPISelectExp* filter,
                                                   const char* className, const CMPIObjectPath* cop,
                                                   CMPIBoolean lastActivation) {
  return drive<CmpiIndicationMI>(mi, kInterface, [&](CmpiIndicationMI& provider) {
    return provider.deActivateFilter(CmpiContext(ctx), CmpiSelectExp(filter), className,
                                     CmpiObjectPath(cop), lastActivation != 0);
  });
}

CMPIStatus CmpiIndicationMI::driveEnableIndications(CMPIIndicationMI* mi, const CMPIContext* ctx) {
  return drive<CmpiIndicationMI>(mi, kInterface, [&](CmpiIndicationMI& provider) {
    return provider.enableIndications(CmpiContext(ctx));
  });
}

CMPIStatus CmpiIndicationMI::driveDisableIndications(CMPIIndicationMI* mi, const CMPIContext* ctx) {
  return drive<CmpiIndicationMI>(mi, kInterface, [&](CmpiIndicationMI& provider) {
    return provider.disableIndications(CmpiContext(ctx));
  });
}
