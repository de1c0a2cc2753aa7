// Provider of the CIM class ZEDA_ConcreteComponent_Primordial: a primordial
// pool (GroupComponent) and a disk extent in it (PartComponent). Its
// enumeration and its extent-to-pool walk know only the free and the data
// pool; its pool-to-extent walk knows all four.
#ifndef ZEDA_PELKA_ZEDA_CONCRETECOMPONENT_PRIMORDIAL_H
#define ZEDA_PELKA_ZEDA_CONCRETECOMPONENT_PRIMORDIAL_H

#include "AssociatorsDelegate.h"
#include "PelkaProvider.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

class ZEDA_ConcreteComponent_Primordial : public PelkaProvider {
 public:
  // The CIM class this provider serves; every place it names itself uses this.
  static constexpr const char* kClassName = className::kConcreteComponentPrimordial;

  ZEDA_ConcreteComponent_Primordial(const CmpiBroker& broker, const CmpiContext& ctx);

  // One association per disk of every NAS: free disks with pool 1, disks
  // without any flag with pool 2 (RAID groups are not consulted), spare and
  // cache disks not at all.
  class EnumInstances : public InstanceMI::EnumInstancesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };

  // Source is a disk extent: its pool instance when that is pool 1 or 2.
  class AssociatorsHandler1 : public AssociatorsDelegate::ClassHandler {
   public:
    using ClassHandler::ClassHandler;
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const std::string& assocClass, const std::string& resultClass,
                          const std::string& role, const std::string& resultRole,
                          const char** properties) override;
  };

  // Source is a pool: the extents in it, ExtentStatus {13} if free else {2}.
  class AssociatorsHandler2 : public AssociatorsDelegate::ClassHandler {
   public:
    using ClassHandler::ClassHandler;
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const std::string& assocClass, const std::string& resultClass,
                          const std::string& role, const std::string& resultRole,
                          const char** properties) override;
  };

  // One placeholder reference, whatever the source.
  class References : public AssociationMI::ReferencesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const std::string& resultClass, const std::string& role,
                          const char** properties) override;
  };
};

}  // namespace zeda::pelka

#endif
