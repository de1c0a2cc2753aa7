// Provider of the CIM class ZEDA_ElementSoftwareIdentity_Disk: each disk's
// firmware identity (Antecedent) with its disk drive (Dependent). Only
// EnumInstances reads the inventory; the other operations answer placeholders.
#ifndef ZEDA_PELKA_ZEDA_ELEMENTSOFTWAREIDENTITY_DISK_H
#define ZEDA_PELKA_ZEDA_ELEMENTSOFTWAREIDENTITY_DISK_H

#include <string>

#include "PelkaProvider.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

class ZEDA_ElementSoftwareIdentity_Disk : public PelkaProvider {
 public:
  // The CIM class this provider serves; every place it names itself uses this.
  static constexpr const char* kClassName = className::kElementSoftwareIdentityDisk;

  ZEDA_ElementSoftwareIdentity_Disk(const CmpiBroker& broker, const CmpiContext& ctx);

  class EnumInstances : public InstanceMI::EnumInstancesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };

  // Answers a drive-shaped placeholder of this association's own class.
  class GetInstance : public InstanceMI::GetInstanceDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };

  // Looks at the source path's class only: no association class or result
  // class check.
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
