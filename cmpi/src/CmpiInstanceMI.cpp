// CmpiInstanceMI: instance operations and their drivers.
#include "CmpiInstanceMI.h"

#include "CmpiDrive.h"

using cmpi_detail::drive;

namespace {
constexpr const char* kInterface = "instance";
}

CmpiInstanceMI::CmpiInstanceMI(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx) {}

CmpiStatus CmpiInstanceMI::enumInstanceNames(const CmpiContext& ctx, CmpiResult& rslt,
                                             const CmpiObjectPath& cop) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiInstanceMI::enumInstances(const CmpiContext& ctx, CmpiResult& rslt,
                                         const CmpiObjectPath& cop, const char** properties) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiInstanceMI::getInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                       const CmpiObjectPath& cop, const char** properties) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiInstanceMI::createInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                          const CmpiObjectPath& cop, const CmpiInstance& inst) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiInstanceMI::setInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                       const CmpiObjectPath& cop, const CmpiInstance& inst,
                                       const char** properties) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiInstanceMI::deleteInstance(const CmpiContext& ctx, CmpiResult& rslt,
                                          const CmpiObjectPath& cop) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiInstanceMI::execQuery(const CmpiContext& ctx, CmpiResult& rslt,
                                     const CmpiObjectPath& cop, const char* query,
                                     const char* language) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIStatus CmpiInstanceMI::driveEnumInstanceNames(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                                  const CMPIResult* rslt,
                                                  const CMPIObjectPath* cop) {
  return drive<CmpiInstanceMI>(mi, kInterface, [&](CmpiInstanceMI& provider) {
    CmpiResult result(rslt);
    return provider.enumInstanceNames(CmpiContext(ctx), result, CmpiObjectPath(cop));
  });
}

CMPIStatus CmpiInstanceMI::driveEnumInstances(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                              const CMPIResult* rslt, const CMPIObjectPath* cop,
                                              const char** properties) {
  return drive<CmpiInstanceMI>(mi, kInterface, [&](CmpiInstanceMI& provider) {
    CmpiResult result(rslt);
    return provider.enumInstances(CmpiContext(ctx), result, CmpiObjectPath(cop), properties);
  });
}

CMPIStatus CmpiInstanceMI::driveGetInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                            const CMPIResult* rslt, const CMPIObjectPath* cop,
                                            const char** properties) {
  return drive<CmpiInstanceMI>(mi, kInterface, [&](CmpiInstanceMI& provider) {
    CmpiResult result(rslt);
    return provider.getInstance(CmpiContext(ctx), result, CmpiObjectPath(cop), properties);
  });
}

CMPIStatus CmpiInstanceMI::driveCreateInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                               const CMPIResult* rslt, const CMPIObjectPath* cop,
                                               const CMPIInstance* inst) {
  return drive<CmpiInstanceMI>(mi, kInterface, [&](CmpiInstanceMI& provider) {
    CmpiResult result = CmpiResult::ofCreateInstance(rslt);
    return provider.createInstance(CmpiContext(ctx), result, CmpiObjectPath(cop),
                                   CmpiInstance(inst));
  });
}

CMPIStatus CmpiInstanceMI::driveSetInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                            const CMPIResult* rslt, const CMPIObjectPath* cop,
                                            const CMPIInstance* inst, const char** properties) {
  return drive<CmpiInstanceMI>(mi, kInterface, [&](CmpiInstanceMI& provider) {
    CmpiResult result(rslt);
    return provider.setInstance(CmpiContext(ctx), result, CmpiObjectPath(cop), CmpiInstance(inst),
                                properties);
  });
}

CMPIStatus CmpiInstanceMI::driveDeleteInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                               const CMPIResult* rslt, const CMPIObjectPath* cop) {
  return drive<CmpiInstanceMI>(mi, kInterface, [&](CmpiInstanceMI& provider) {
    CmpiResult result(rslt);
    return provider.deleteInstance(CmpiContext(ctx), result, CmpiObjectPath(cop));
  });
}

CMPIStatus CmpiInstanceMI::driveExecQuery(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                          const CMPIResult* rslt, const CMPIObjectPath* cop,
                                          const char* query, const char* language) {
  return drive<CmpiInstanceMI>(mi, kInterface, [&](CmpiInstanceMI& provider) {
    CmpiResult result(rslt);
    return provider.execQuery(CmpiContext(ctx), result, CmpiObjectPath(cop), query, language);
  });
}
