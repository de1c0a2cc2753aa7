// Provider of the CIM class ZEDA_AssociatedComponentExtent_Primordial: a
// primordial pool (GroupComponent) and the disk extents that make it up
// (PartComponent). Association provider only: it is walked, never
// enumerated or fetched.
#ifndef ZEDA_PELKA_ZEDA_ASSOCIATEDCOMPONENTEXTENT_PRIMORDIAL_H
#define ZEDA_PELKA_ZEDA_ASSOCIATEDCOMPONENTEXTENT_PRIMORDIAL_H

#include "AssociatorsDelegate.h"
#include "PelkaProvider.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

class ZEDA_AssociatedComponentExtent_Primordial : public PelkaProvider {
 public:
  // The CIM class this provider serves; every place it names itself uses this.
  static constexpr const char* kClassName = className::kAssociatedComponentExtentPrimordial;

  ZEDA_AssociatedComponentExtent_Primordial(const CmpiBroker& broker, const CmpiContext& ctx);

  // Source is a disk extent: the pool (1 to 4) is built but not answered,
  // the pool of an extent is reached through ZEDA_ConcreteComponent_Primordial.
  // An extent in no pool fails.
  class AssociatorsHandler1 : public AssociatorsDelegate::ClassHandler {
   public:
    using ClassHandler::ClassHandler;
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const std::string& assocClass, const std::string& resultClass,
                          const std::string& role, const std::string& resultRole,
                          const char** properties) override;
  };

  // Source is a pool: the extents in it, ExtentStatus always {13}.
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
