// CmpiInstanceMI: the instance interface of a provider object.
#ifndef ZEDA_CMPI_CMPIINSTANCEMI_H
#define ZEDA_CMPI_CMPIINSTANCEMI_H

#include "CmpiBaseMI.h"
#include "CmpiInstance.h"
#include "CmpiResult.h"

class CmpiInstanceMI : virtual public CmpiBaseMI {
 public:
  CmpiInstanceMI(const CmpiBroker& broker, const CmpiContext& ctx);

  // Each default answers CMPI_RC_ERR_NOT_SUPPORTED.
  virtual CmpiStatus enumInstanceNames(const CmpiContext& ctx, CmpiResult& rslt,
                                       const CmpiObjectPath& cop);
  virtual CmpiStatus enumInstances(const CmpiContext& ctx, CmpiResult& rslt,
                                   const CmpiObjectPath& cop, const char** properties);
  virtual CmpiStatus getInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                 const CmpiObjectPath& cop, const char** properties);
  virtual CmpiStatus createInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                    const CmpiObjectPath& cop, const CmpiInstance& inst);
  virtual CmpiStatus setInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                 const CmpiObjectPath& cop, const CmpiInstance& inst,
                                 const char** properties);
  virtual CmpiStatus deleteInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                    const CmpiObjectPath& cop);
  virtual CmpiStatus execQuery(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                               const char* query, const char* language);

  // Entry points of CMPIInstanceMIFT, in table order.
  static CMPIStatus driveEnumInstanceNames(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                           const CMPIResult* rslt, const CMPIObjectPath* cop);
  static CMPIStatus driveEnumInstances(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                       const CMPIResult* rslt, const CMPIObjectPath* cop,
                                       const char** properties);
  static CMPIStatus driveGetInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                     const CMPIResult* rslt, const CMPIObjectPath* cop,
                                     const char** properties);
  static CMPIStatus driveCreateInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                        const CMPIResult* rslt, const CMPIObjectPath* cop,
                                        const CMPIInstance* inst);
  static CMPIStatus driveSetInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                     const CMPIResult* rslt, const CMPIObjectPath* cop,
                                     const CMPIInstance* inst, const char** properties);
  static CMPIStatus driveDeleteInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                        const CMPIResult* rslt, const CMPIObjectPath* cop);
  static CMPIStatus driveExecQuery(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                   const CMPIResult* rslt, const CMPIObjectPath* cop,
                                   const char* query, const char* language);
};

#endif
