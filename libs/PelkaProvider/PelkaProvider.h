// PelkaProvider: base class of every provider class of the module. It serves
// all four CMPI interfaces and routes each operation to the delegate in the
// operation's slot, inside the failure wrapper, so no exception leaves it.
#ifndef ZEDA_PELKA_PELKAPROVIDER_H
#define ZEDA_PELKA_PELKAPROVIDER_H

#include <memory>
#include <string>
#include <utility>

#include <cmpi/CmpiAssociationMI.h>
#include <cmpi/CmpiIndicationMI.h>
#include <cmpi/CmpiInstanceMI.h>
#include <cmpi/CmpiMethodMI.h>

#include "DelegateTables.h"

namespace zeda::pelka {

class PelkaProvider : public CmpiAssociationMI,
                      public CmpiIndicationMI,
                      public CmpiInstanceMI,
                      public CmpiMethodMI {
 public:
  // Starts logging (program "PELKA", the module's log directory).
  PelkaProvider(const CmpiBroker& broker, const CmpiContext& ctx);
  ~PelkaProvider() override;

  // CmpiBaseMI
  CmpiStatus initialize(const CmpiContext& ctx) override;
  CmpiStatus cleanup(CmpiContext& ctx) override;
  bool isUnloadable() const override;

  // CmpiAssociationMI
  CmpiStatus associators(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                         const char* assocClass, const char* resultClass, const char* role,
                         const char* resultRole, const char** properties) override;
  CmpiStatus associatorNames(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                             const char* assocClass, const char* resultClass, const char* role,
                             const char* resultRole) override;
  CmpiStatus references(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                        const char* resultClass, const char* role,
                        const char** properties) override;
  CmpiStatus referenceNames(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                            const char* resultClass, const char* role) override;

  // CmpiIndicationMI
  CmpiStatus authorizeFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                             const char* className, const CmpiObjectPath& cop,
                             const char* owner) override;
  CmpiStatus mustPoll(const CmpiContext& ctx, const CmpiSelectExp& filter, const char* className,
                      const CmpiObjectPath& cop) override;
  CmpiStatus activateFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                            const char* className, const CmpiObjectPath& cop,
                            bool firstActivation) override;
  CmpiStatus deActivateFilter(const CmpiContext& ctx, const CmpiSelectExp& filter,
                              const char* className, const CmpiObjectPath& cop,
                              bool lastActivation) override;
  CmpiStatus enableIndications(const CmpiContext& ctx) override;
  CmpiStatus disableIndications(const CmpiContext& ctx) override;

  // CmpiInstanceMI
  CmpiStatus enumInstanceNames(const CmpiContext& ctx, CmpiResult& rslt,
                               const CmpiObjectPath& cop) override;
  CmpiStatus enumInstances(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                           const char** properties) override;
  CmpiStatus getInstance(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                         const char** properties) override;
  CmpiStatus createInstance(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                            const CmpiInstance& inst) override;
  CmpiStatus setInstance(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                         const CmpiInstance& inst, const char** properties) override;
  CmpiStatus deleteInstance(const CmpiContext& ctx, CmpiResult& rslt,
                            const CmpiObjectPath& cop) override;
  CmpiStatus execQuery(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                       const char* query, const char* language) override;

  // CmpiMethodMI
  CmpiStatus invokeMethod(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& ref,
                          const char* methodName, const CmpiArgs& in, CmpiArgs& out) override;

  // The CIM class this provider serves; "Unknown" until the class sets it.
  const std::string& className() const { return className_; }
  const CmpiBroker& broker() const { return broker_; }

  InstanceMI& instanceDelegates() { return *instanceMI_; }
  AssociationMI& associationDelegates() { return *associationMI_; }
  MethodMI& methodDelegates() { return *methodMI_; }
  IndicationMI& indicationDelegates() { return *indicationMI_; }

 protected:
  void setClassName(const std::string& name) { className_ = name; }

  // Stores `delegate` in `slot` of a table whose back-pointer is `provider`,
  // destroying the delegate held before, and makes the provider its owner.
  template <class Slot, class Delegate>
  static Delegate& install(PelkaProvider* provider, std::unique_ptr<Slot>& slot,
                           std::unique_ptr<Delegate> delegate) {
    Delegate& installed = *delegate;
    installed.setOwner(provider);
    slot = std::move(delegate);
    return installed;
  }

 private:
  std::unique_ptr<InstanceMI> instanceMI_;
  std::unique_ptr<AssociationMI> associationMI_;
  std::unique_ptr<MethodMI> methodMI_;
  std::unique_ptr<IndicationMI> indicationMI_;
  CmpiBroker broker_;
  std::string className_;
};

}  // namespace zeda::pelka

#endif
