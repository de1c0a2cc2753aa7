// CmpiAssociationMI: association operations and their drivers.
#include "CmpiAssociationMI.h"

#include "CmpiDrive.h"

using cmpi_detail::drive;

namespace {
constexpr const char* kInterface = "association";
}

CmpiAssociationMI::CmpiAssociationMI(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx) {}

CmpiStatus CmpiAssociationMI::associators(const CmpiContext& ctx, CmpiResult& rslt,
                                          const CmpiObjectPath& cop, const char* assocClass,
                                          const char* resultClass, const char* role,
                                          const char* resultRole, const char** properties) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiAssociationMI::associatorNames(const CmpiContext& ctx, CmpiResult& rslt,
                                              const CmpiObjectPath& cop, const char* assocClass,
                                              const char* resultClass, const char* role,
                                              const char* resultRole) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiAssociationMI::references(const CmpiContext& ctx, CmpiResult& rslt,
                                         const CmpiObjectPath& cop, const char* resultClass,
                                         const char* role, const char** properties) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CmpiStatus CmpiAssociationMI::referenceNames(const CmpiContext& ctx, CmpiResult& rslt,
                                             const CmpiObjectPath& cop, const char* resultClass,
                                             const char* role) {
  return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
}

CMPIStatus CmpiAssociationMI::driveAssociators(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                               const CMPIResult* rslt, const CMPIObjectPath* cop,
                                               const char* assocClass, const char* resultClass,
                                               const char* role, const char* resultRole,
                                               const char** properties) {
  return drive<CmpiAssociationMI>(mi, kInterface, [&](CmpiAssociationMI& provider) {
    CmpiResult result(rslt);
    return provider.associators(CmpiContext(ctx), result, CmpiObjectPath(cop), assocClass,
                                resultClass, role, resultRole, properties);
  });
}

CMPIStatus CmpiAssociationMI::driveAssociatorNames(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                                   const CMPIResult* rslt,
                                                   const CMPIObjectPath* cop,
                                                   const char* assocClass, const char* resultClass,
                                                   const char* role, const char* resultRole) {
  return drive<CmpiAssociationMI>(mi, kInterface, [&](CmpiAssociationMI& provider) {
    CmpiResult result(rslt);
    return provider.associatorNames(CmpiContext(ctx), result, CmpiObjectPath(cop), assocClass,
                                    resultClass, role, resultRole);
  });
}

CMPIStatus CmpiAssociationMI::driveReferences(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                              const CMPIResult* rslt, const CMPIObjectPath* cop,
                                              const char* resultClass, const char* role,
                                              const char** properties) {
  return drive<CmpiAssociationMI>(mi, kInterface, [&](CmpiAssociationMI& provider) {
    CmpiResult result(rslt);
    return provider.references(CmpiContext(ctx), result, CmpiObjectPath(cop), resultClass, role,
                               properties);
  });
}

CMPIStatus CmpiAssociationMI::driveReferenceNames(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                                  const CMPIResult* rslt, const CMPIObjectPath* cop,
                                                  const char* resultClass, const char* role) {
  return drive<CmpiAssociationMI>(mi, kInterface, [&](CmpiAssociationMI& provider) {
    CmpiResult result(rslt);
    return provider.referenceNames(CmpiContext(ctx), result, CmpiObjectPath(cop), resultClass,
                                   role);
  });
}
