// Provider of the CIM class ZEDA_MediaPresent: each disk drive (Antecedent)
// with the storage extent of its medium (Dependent). Associators looks the
// disk up on its NAS in either direction and answers real instances.
#ifndef ZEDA_PELKA_ZEDA_MEDIAPRESENT_H
#define ZEDA_PELKA_ZEDA_MEDIAPRESENT_H

#include "PelkaProvider.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

class ZEDA_MediaPresent : public PelkaProvider {
 public:
  // The CIM class this provider serves; every place it names itself uses this.
  static constexpr const char* kClassName = className::kMediaPresent;

  ZEDA_MediaPresent(const CmpiBroker& broker, const CmpiContext& ctx);

  class EnumInstances : public InstanceMI::EnumInstancesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };

  // Examines only the source path: no association class, result class, role
  // or property list check.
  class Associators : public AssociationMI::AssociatorsDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const std::string& assocClass, const std::string& resultClass,
                          const std::string& role, const std::string& resultRole,
                          const char** properties) override;
  };

  class References : public AssociationMI::ReferencesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const std::string& resultClass, const std::string& role,
                          const char** properties) override;
  };
};

}  // namespace zeda::pelka

#endif
