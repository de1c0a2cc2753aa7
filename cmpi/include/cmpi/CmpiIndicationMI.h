// CmpiIndicationMI: the indication interface of a provider object, with the
// CMPI 2.0 signatures (no result object; every operation returns a status).
#ifndef ZEDA_CMPI_CMPIINDICATIONMI_H
#define ZEDA_CMPI_CMPIINDICATIONMI_H

#include "CmpiBaseMI.h"
#include "CmpiSelectExp.h"

class CmpiIndicationMI : virtual public CmpiBaseMI {
 public:
  CmpiIndicationMI(const CmpiBroker& broker, const CmpiContext& ctx);

  // Each default answers CMPI_RC_ERR_NOT_SUPPORTED.
  virtual CmpiStatus authorizeFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                     const char* className, const CmpiObjectPath& cop,
                                     const char* owner);
  virtual CmpiStatus mustPoll(const CmpiContext& ctx, const CmpiSelectExp& filter,
                              const char* className, const CmpiObjectPath& cop);
  virtual CmpiStatus activateFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                    const char* className, const CmpiObjectPath& cop,
                                    bool firstActivation);
  virtual CmpiStatus deActivateFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                                      const char* className, const CmpiObjectPath& cop,
                                      bool lastActivation);
  virtual CmpiStatus enableIndications(const CmpiContext& ctx);
  virtual CmpiStatus disableIndications(const CmpiContext& ctx);

  static CMPIStatus driveAuthorizeFilter(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                         const CMPISelectExp* filter, const char* className,
                                         const CMPIObjectPath* cop, const char* owner);
  static CMPIStatus driveMustPoll(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                  const CMPISelectExp* filter, const char* className,
                                  const CMPIObjectPath* cop);
  static CMPIStatus driveActivateFilter(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                        const CMPISelectExp* filter, const char* className,
                                        const CMPIObjectPath* cop, CMPIBoolean firstActivation);
  static CMPIStatus driveDeActivateFilter(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                          const CMPISelectExp* filter, const char* className,
                                          const CMPIObjectPath* cop, CMPIBoolean lastActivation);
  static CMPIStatus driveEnableIndications(CMPIIndicationMI* mi, const CMPIContext* ctx);
  static CMPIStatus driveDisableIndications(CMPIIndicationMI* mi, const CMPIContext* ctx);
};

#endif
