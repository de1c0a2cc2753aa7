// Test providers and the list of every static driver, for the driver tests.
#ifndef ZEDA_TESTS_CMPI_BINDING_DRIVERHARNESS_H
#define ZEDA_TESTS_CMPI_BINDING_DRIVERHARNESS_H

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "CmpiCpp.h"

namespace zeda::test {

namespace harness {

enum class Behaviour { ReturnOk, ReturnStatus, ThrowStatus, ThrowStd, ThrowInt };

// A provider with all four interfaces; every operation does what `behaviour` says.
class AllInterfaces : public CmpiInstanceMI,
                      public CmpiAssociationMI,
                      public CmpiMethodMI,
                      public CmpiIndicationMI {
 public:
  AllInterfaces(const CmpiBroker& broker, const CmpiContext& ctx)
      : CmpiBaseMI(broker, ctx),
        CmpiInstanceMI(broker, ctx),
        CmpiAssociationMI(broker, ctx),
        CmpiMethodMI(broker, ctx),
        CmpiIndicationMI(broker, ctx) {}

  Behaviour behaviour = Behaviour::ReturnOk;
  std::vector<std::string> seen;
  const CMPIBroker* brokerDuringCall = nullptr;
  // Arguments as the last operation received them.
  const CMPIObjectPath* path = nullptr;
  const char* text = nullptr;
  const char** properties = nullptr;
  bool flag = false;

  CmpiStatus act(const char* operation) {
    seen.emplace_back(operation);
    brokerDuringCall = CmpiBroker::current();
    switch (behaviour) {
      case Behaviour::ReturnOk:
        return CmpiStatus(CMPI_RC_OK);
      case Behaviour::ReturnStatus:
        return CmpiStatus(CMPI_RC_ERR_NOT_FOUND, "nf");
      case Behaviour::ThrowStatus:
        throw CmpiStatus(CMPI_RC_ERR_INVALID_PARAMETER, "bad");
      case Behaviour::ThrowStd:
        throw std::runtime_error("boom");
      case Behaviour::ThrowInt:
        throw 42;
    }
    return CmpiStatus(CMPI_RC_ERROR);
  }

  CmpiStatus enumInstanceNames(const CmpiContext&, CmpiResult& rslt,
                               const CmpiObjectPath& cop) override {
    path = cop.getEnc();
    if (behaviour == Behaviour::ReturnOk) {
      rslt.returnData(cop);
      rslt.returnDone();
    }
    return act("enumInstanceNames");
  }
  CmpiStatus enumInstances(const CmpiContext&, CmpiResult&, const CmpiObjectPath& cop,
                           const char** props) override {
    path = cop.getEnc();
    properties = props;
    return act("enumInstances");
  }
  CmpiStatus getInstance(const CmpiContext&, CmpiResult&, const CmpiObjectPath& cop,
                         const char** props) override {
    path = cop.getEnc();
    properties = props;
    return act("getInstance");
  }
  CmpiStatus createInstance(const CmpiContext&, CmpiResult&, const CmpiObjectPath&,
                            const CmpiInstance&) override {
    return act("createInstance");
  }
  CmpiStatus setInstance(const CmpiContext&, CmpiResult&, const CmpiObjectPath&,
                         const CmpiInstance&, const char**) override {
    return act("setInstance");
  }
  CmpiStatus deleteInstance(const CmpiContext&, CmpiResult&, const CmpiObjectPath&) override {
    return act("deleteInstance");
  }
  CmpiStatus execQuery(const CmpiContext&, CmpiResult&, const CmpiObjectPath&, const char* query,
                       const char*) override {
    text = query;
    return act("execQuery");
  }
  CmpiStatus associators(const CmpiContext&, CmpiResult&, const CmpiObjectPath& cop,
                         const char* assocClass, const char*, const char*, const char*,
                         const char** props) override {
    path = cop.getEnc();
    text = assocClass;
    properties = props;
    return act("associators");
  }
  CmpiStatus associatorNames(const CmpiContext&, CmpiResult&, const CmpiObjectPath&,
                             const char* assocClass, const char*, const char*,
                             const char*) override {
    text = assocClass;
    return act("associatorNames");
  }
  CmpiStatus references(const CmpiContext&, CmpiResult&, const CmpiObjectPath&,
                        const char* resultClass, const char*, const char**) override {
    text = resultClass;
    return act("references");
  }
  CmpiStatus referenceNames(const CmpiContext&, CmpiResult&, const CmpiObjectPath&,
                            const char* resultClass, const char*) override {
    text = resultClass;
    return act("referenceNames");
  }
  CmpiStatus invokeMethod(const CmpiContext&, CmpiResult&, const CmpiObjectPath&,
                          const char* methodName, const CmpiArgs&, CmpiArgs& out) override {
    text = methodName;
    if (behaviour == Behaviour::ReturnOk) {
      out.setArg("Result", CmpiData(CMPIUint32{1}));
    }
    return act("invokeMethod");
  }
  CmpiStatus authorizeFilter(const CmpiContext&, const CmpiSelectExp&, const char* className,
                             const CmpiObjectPath&, const char*) override {
    text = className;
    return act("authorizeFilter");
  }
  CmpiStatus mustPoll(const CmpiContext&, const CmpiSelectExp&, const char*,
                      const CmpiObjectPath&) override {
    return act("mustPoll");
  }
  CmpiStatus activateFilter(const CmpiContext&, const CmpiSelectExp&, const char*,
                            const CmpiObjectPath&, bool firstActivation) override {
    flag = firstActivation;
    return act("activateFilter");
  }
  CmpiStatus deActivateFilter(const CmpiContext&, const CmpiSelectExp&, const char*,
                              const CmpiObjectPath&, bool lastActivation) override {
    flag = lastActivation;
    return act("deActivateFilter");
  }
  CmpiStatus enableIndications(const CmpiContext&) override { return act("enableIndications"); }
  CmpiStatus disableIndications(const CmpiContext&) override { return act("disableIndications"); }
};

// Only the instance interface, all defaults.
class InstanceOnly : public CmpiInstanceMI {
 public:
  InstanceOnly(const CmpiBroker& broker, const CmpiContext& ctx)
      : CmpiBaseMI(broker, ctx), CmpiInstanceMI(broker, ctx) {}
};

// The C side of one call: MI records for a provider object and the usual arguments.
struct Call {
  CMPIInstanceMI instanceMI{nullptr, nullptr};
  CMPIAssociationMI associationMI{nullptr, nullptr};
  CMPIMethodMI methodMI{nullptr, nullptr};
  CMPIIndicationMI indicationMI{nullptr, nullptr};
  const CMPIContext* ctx = nullptr;
  const CMPIResult* rslt = nullptr;
  const CMPIObjectPath* cop = nullptr;
  const CMPIInstance* inst = nullptr;
  const CMPISelectExp* filter = nullptr;
  CMPIArgs* in = nullptr;
  CMPIArgs* out = nullptr;

  void point(CmpiBaseMI* provider) {
    void* hdl = CmpiBaseMI::toHandle(provider);
    instanceMI.hdl = hdl;
    associationMI.hdl = hdl;
    methodMI.hdl = hdl;
    indicationMI.hdl = hdl;
  }
};

using Driver = std::function<CMPIStatus(Call&)>;

// Every driver of the four interfaces, named after its operation, called
// with the arguments of a Call.
std::vector<std::pair<std::string, Driver>> allDrivers();

}  // namespace harness

}  // namespace zeda::test

#endif
