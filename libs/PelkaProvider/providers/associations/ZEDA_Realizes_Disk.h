// Provider of the CIM class ZEDA_Realizes_Disk: each disk's physical package
// (Antecedent) realizing its disk drive (Dependent). Associators goes through
// the framework's AssociatorsDelegate, one handler per source class.
#ifndef ZEDA_PELKA_ZEDA_REALIZES_DISK_H
#define ZEDA_PELKA_ZEDA_REALIZES_DISK_H

#include <string>

#include "AssociatorsDelegate.h"
#include "PelkaProvider.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

class ZEDA_Realizes_Disk : public PelkaProvider {
 public:
  // The CIM class this provider serves; every place it names itself uses this.
  static constexpr const char* kClassName = className::kRealizesDisk;

  ZEDA_Realizes_Disk(const CmpiBroker& broker, const CmpiContext& ctx);

  class EnumInstances : public InstanceMI::EnumInstancesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };

  // From a drive: the package of that disk, read from the NAS.
  class AssociatorsHandler1 : public AssociatorsDelegate::ClassHandler {
   public:
    using ClassHandler::ClassHandler;
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const std::string& assocClass, const std::string& resultClass,
                          const std::string& role, const std::string& resultRole,
                          const char** properties) override;
  };

  // From a package: the placeholder drive, whatever the package.
  class AssociatorsHandler2 : public AssociatorsDelegate::ClassHandler {
   public:
    using ClassHandler::ClassHandler;
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
