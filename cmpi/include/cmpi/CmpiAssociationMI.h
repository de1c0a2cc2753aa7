// CmpiAssociationMI: the association interface of a provider object. Filter
// strings arrive as the object manager passed them, null included.
#ifndef ZEDA_CMPI_CMPIASSOCIATIONMI_H
#define ZEDA_CMPI_CMPIASSOCIATIONMI_H

#include "CmpiBaseMI.h"
#include "CmpiResult.h"

class CmpiAssociationMI : virtual public CmpiBaseMI {
 public:
  CmpiAssociationMI(const CmpiBroker& broker, const CmpiContext& ctx);

  // Each default answers CMPI_RC_ERR_NOT_SUPPORTED.
  virtual CmpiStatus associators(const CmpiContext& ctx, CmpiResult& rslt,
                                 const CmpiObjectPath& cop, const char* assocClass,
                                 const char* resultClass, const char* role, const char* resultRole,
                                 const char** properties);
  virtual CmpiStatus associatorNames(const CmpiContext& ctx, CmpiResult& rslt,
                                     const CmpiObjectPath& cop, const char* assocClass,
                                     const char* resultClass, const char* role,
                                     const char* resultRole);
  virtual CmpiStatus references(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                                const char* resultClass, const char* role, const char** properties);
  virtual CmpiStatus referenceNames(const CmpiContext& ctx, CmpiResult& rslt,
                                    const CmpiObjectPath& cop, const char* resultClass,
                                    const char* role);

  // Entry points of CMPIAssociationMIFT, in table order.
  static CMPIStatus driveAssociators(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                     const CMPIResult* rslt, const CMPIObjectPath* cop,
                                     const char* assocClass, const char* resultClass,
                                     const char* role, const char* resultRole,
                                     const char** properties);
  static CMPIStatus driveAssociatorNames(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                         const CMPIResult* rslt, const CMPIObjectPath* cop,
                                         const char* assocClass, const char* resultClass,
                                         const char* role, const char* resultRole);
  static CMPIStatus driveReferences(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                    const CMPIResult* rslt, const CMPIObjectPath* cop,
                                    const char* resultClass, const char* role,
                                    const char** properties);
  static CMPIStatus driveReferenceNames(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                        const CMPIResult* rslt, const CMPIObjectPath* cop,
                                        const char* resultClass, const char* role);
};

#endif
