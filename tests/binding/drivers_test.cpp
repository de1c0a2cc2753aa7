// The static drive… functions: every one turns the provider's answer, and
// every exception it throws, into a C status; none lets an exception out.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "CmpiCpp.h"
#include "FakeBroker.h"

namespace {

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
      case Behaviour::ReturnOk: return CmpiStatus(CMPI_RC_OK);
      case Behaviour::ReturnStatus: return CmpiStatus(CMPI_RC_ERR_NOT_FOUND, "nf");
      case Behaviour::ThrowStatus: throw CmpiStatus(CMPI_RC_ERR_INVALID_PARAMETER, "bad");
      case Behaviour::ThrowStd: throw std::runtime_error("boom");
      case Behaviour::ThrowInt: throw 42;
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
  CmpiStatus disableIndications(const CmpiContext&) override {
    return act("disableIndications");
  }
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

// Every driver of the four interfaces with the arguments of `c`.
std::vector<std::pair<std::string, Driver>> allDrivers() {
  return {
      {"enumInstanceNames",
       [](Call& c) {
         return CmpiInstanceMI::driveEnumInstanceNames(&c.instanceMI, c.ctx, c.rslt, c.cop);
       }},
      {"enumInstances",
       [](Call& c) {
         return CmpiInstanceMI::driveEnumInstances(&c.instanceMI, c.ctx, c.rslt, c.cop, nullptr);
       }},
      {"getInstance",
       [](Call& c) {
         return CmpiInstanceMI::driveGetInstance(&c.instanceMI, c.ctx, c.rslt, c.cop, nullptr);
       }},
      {"createInstance",
       [](Call& c) {
         return CmpiInstanceMI::driveCreateInstance(&c.instanceMI, c.ctx, c.rslt, c.cop, c.inst);
       }},
      {"setInstance",
       [](Call& c) {
         return CmpiInstanceMI::driveSetInstance(&c.instanceMI, c.ctx, c.rslt, c.cop, c.inst,
                                                 nullptr);
       }},
      {"deleteInstance",
       [](Call& c) {
         return CmpiInstanceMI::driveDeleteInstance(&c.instanceMI, c.ctx, c.rslt, c.cop);
       }},
      {"execQuery",
       [](Call& c) {
         return CmpiInstanceMI::driveExecQuery(&c.instanceMI, c.ctx, c.rslt, c.cop, "SELECT",
                                               "WQL");
       }},
      {"associators",
       [](Call& c) {
         return CmpiAssociationMI::driveAssociators(&c.associationMI, c.ctx, c.rslt, c.cop,
                                                    nullptr, nullptr, nullptr, nullptr, nullptr);
       }},
      {"associatorNames",
       [](Call& c) {
         return CmpiAssociationMI::driveAssociatorNames(&c.associationMI, c.ctx, c.rslt, c.cop,
                                                        nullptr, nullptr, nullptr, nullptr);
       }},
      {"references",
       [](Call& c) {
         return CmpiAssociationMI::driveReferences(&c.associationMI, c.ctx, c.rslt, c.cop,
                                                   nullptr, nullptr, nullptr);
       }},
      {"referenceNames",
       [](Call& c) {
         return CmpiAssociationMI::driveReferenceNames(&c.associationMI, c.ctx, c.rslt, c.cop,
                                                       nullptr, nullptr);
       }},
      {"invokeMethod",
       [](Call& c) {
         return CmpiMethodMI::driveInvokeMethod(&c.methodMI, c.ctx, c.rslt, c.cop, "Reset", c.in,
                                                c.out);
       }},
      {"authorizeFilter",
       [](Call& c) {
         return CmpiIndicationMI::driveAuthorizeFilter(&c.indicationMI, c.ctx, c.filter, "C",
                                                       c.cop, "owner");
       }},
      {"mustPoll",
       [](Call& c) {
         return CmpiIndicationMI::driveMustPoll(&c.indicationMI, c.ctx, c.filter, "C", c.cop);
       }},
      {"activateFilter",
       [](Call& c) {
         return CmpiIndicationMI::driveActivateFilter(&c.indicationMI, c.ctx, c.filter, "C",
                                                      c.cop, 1);
       }},
      {"deActivateFilter",
       [](Call& c) {
         return CmpiIndicationMI::driveDeActivateFilter(&c.indicationMI, c.ctx, c.filter, "C",
                                                        c.cop, 0);
       }},
      {"enableIndications",
       [](Call& c) {
         return CmpiIndicationMI::driveEnableIndications(&c.indicationMI, c.ctx);
       }},
      {"disableIndications",
       [](Call& c) {
         return CmpiIndicationMI::driveDisableIndications(&c.indicationMI, c.ctx);
       }},
  };
}

class DriversTest : public ::testing::Test {
 protected:
  DriversTest() {
    call.ctx = &mb.context()->enc;
    result = mb.result();
    call.rslt = &result->enc;
    call.cop = &mb.path("root/cimv2", "C")->enc;
    call.inst = &mb.instance(mb.path("root/cimv2", "C"))->enc;
    call.filter = &mb.selectExp("SELECT * FROM C")->enc;
    call.in = &mb.args()->enc;
    outArgs = mb.args();
    call.out = &outArgs->enc;
    call.point(&provider);
  }

  fake::Broker mb;
  AllInterfaces provider{CmpiBroker(mb.enc()), CmpiContext(&mb.context()->enc)};
  fake::Result* result = nullptr;
  fake::Args* outArgs = nullptr;
  Call call;
};

}  // namespace

TEST_F(DriversTest, EveryDriverCallsItsOperationWithTheProvidersBroker) {
  for (const auto& [name, driver] : allDrivers()) {
    SCOPED_TRACE(name);
    provider.seen.clear();
    provider.brokerDuringCall = nullptr;
    const CMPIStatus status = driver(call);
    EXPECT_EQ(status.rc, CMPI_RC_OK);
    EXPECT_EQ(status.msg, nullptr);
    EXPECT_EQ(provider.seen, std::vector<std::string>{name});
    EXPECT_EQ(provider.brokerDuringCall, mb.enc());
    EXPECT_EQ(CmpiBroker::current(), nullptr);
  }
}

TEST_F(DriversTest, EveryDriverReturnsTheProvidersStatus) {
  provider.behaviour = Behaviour::ReturnStatus;
  for (const auto& [name, driver] : allDrivers()) {
    SCOPED_TRACE(name);
    const CMPIStatus status = driver(call);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(fake::Broker::text(status.msg), "nf");
  }
}

TEST_F(DriversTest, EveryDriverTurnsAThrownCmpiStatusIntoThatStatus) {
  provider.behaviour = Behaviour::ThrowStatus;
  for (const auto& [name, driver] : allDrivers()) {
    SCOPED_TRACE(name);
    const CMPIStatus status = driver(call);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(fake::Broker::text(status.msg), "bad");
    EXPECT_EQ(CmpiBroker::current(), nullptr);
  }
}

TEST_F(DriversTest, EveryDriverTurnsAStdExceptionIntoAFailure) {
  provider.behaviour = Behaviour::ThrowStd;
  for (const auto& [name, driver] : allDrivers()) {
    SCOPED_TRACE(name);
    const CMPIStatus status = driver(call);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
    EXPECT_EQ(fake::Broker::text(status.msg), "boom");
  }
}

TEST_F(DriversTest, EveryDriverTurnsAnythingElseIntoAFailure) {
  provider.behaviour = Behaviour::ThrowInt;
  for (const auto& [name, driver] : allDrivers()) {
    SCOPED_TRACE(name);
    const CMPIStatus status = driver(call);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
    EXPECT_EQ(fake::Broker::text(status.msg), "unknown exception");
    EXPECT_EQ(CmpiBroker::current(), nullptr);
  }
}

TEST_F(DriversTest, FailureWithoutStringsStillReachesTheObjectManager) {
  provider.behaviour = Behaviour::ThrowStd;
  mb.newStringFails = true;
  for (const auto& [name, driver] : allDrivers()) {
    SCOPED_TRACE(name);
    const CMPIStatus status = driver(call);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
    EXPECT_EQ(status.msg, nullptr);
  }
}

TEST_F(DriversTest, EveryDriverAnswersInvalidHandleForANullRecordOrHandle) {
  call.point(nullptr);
  for (const auto& [name, driver] : allDrivers()) {
    SCOPED_TRACE(name);
    EXPECT_EQ(driver(call).rc, CMPI_RC_ERR_INVALID_HANDLE);
  }
  EXPECT_EQ(CmpiInstanceMI::driveGetInstance(nullptr, call.ctx, call.rslt, call.cop, nullptr).rc,
            CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(CmpiAssociationMI::driveReferences(nullptr, call.ctx, call.rslt, call.cop, nullptr,
                                               nullptr, nullptr)
                .rc,
            CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(CmpiMethodMI::driveInvokeMethod(nullptr, call.ctx, call.rslt, call.cop, "m", call.in,
                                            call.out)
                .rc,
            CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(CmpiIndicationMI::driveEnableIndications(nullptr, call.ctx).rc,
            CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_TRUE(provider.seen.empty());
}

TEST_F(DriversTest, DefaultOperationsAreNotSupported) {
  InstanceOnly plain{CmpiBroker(mb.enc()), CmpiContext(call.ctx)};
  call.point(&plain);
  for (const auto& [name, driver] : allDrivers()) {
    SCOPED_TRACE(name);
    const CMPIStatus status = driver(call);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_SUPPORTED);
  }
  // The instance defaults carry no message; other interfaces are missing altogether.
  EXPECT_EQ(CmpiInstanceMI::driveEnumInstanceNames(&call.instanceMI, call.ctx, call.rslt, call.cop)
                .msg,
            nullptr);
  const CMPIStatus noAssociation = CmpiAssociationMI::driveAssociators(
      &call.associationMI, call.ctx, call.rslt, call.cop, nullptr, nullptr, nullptr, nullptr,
      nullptr);
  EXPECT_NE(fake::Broker::text(noAssociation.msg).find("association"), std::string::npos);
  EXPECT_TRUE(result->data.empty());
  EXPECT_FALSE(result->done);
}

TEST_F(DriversTest, ArgumentsArriveAsTheObjectManagerPassedThem) {
  const char* props[] = {"Name", nullptr};
  CmpiAssociationMI::driveAssociators(&call.associationMI, call.ctx, call.rslt, call.cop,
                                      nullptr, "R", "Role", "RR", props);
  EXPECT_EQ(provider.path, call.cop);
  EXPECT_EQ(provider.text, nullptr);
  EXPECT_EQ(provider.properties, props);
  CmpiAssociationMI::driveAssociators(&call.associationMI, call.ctx, call.rslt, call.cop,
                                      "zeda_realizes_disk", nullptr, nullptr, nullptr, nullptr);
  EXPECT_STREQ(provider.text, "zeda_realizes_disk");
  EXPECT_EQ(provider.properties, nullptr);

  CmpiInstanceMI::driveGetInstance(&call.instanceMI, call.ctx, call.rslt, call.cop, props);
  EXPECT_EQ(provider.properties, props);
  CmpiInstanceMI::driveExecQuery(&call.instanceMI, call.ctx, call.rslt, call.cop, "SELECT x",
                                 "WQL");
  EXPECT_STREQ(provider.text, "SELECT x");
  CmpiIndicationMI::driveActivateFilter(&call.indicationMI, call.ctx, call.filter, "C", call.cop,
                                        1);
  EXPECT_TRUE(provider.flag);
  CmpiIndicationMI::driveDeActivateFilter(&call.indicationMI, call.ctx, call.filter, "C",
                                          call.cop, 0);
  EXPECT_FALSE(provider.flag);
}

TEST_F(DriversTest, ResultsAndOutArgumentsReachTheObjectManager) {
  CmpiInstanceMI::driveEnumInstanceNames(&call.instanceMI, call.ctx, call.rslt, call.cop);
  ASSERT_EQ(result->data.size(), 1u);
  EXPECT_EQ(result->data[0].type, CMPI_ref);
  EXPECT_EQ(result->data[0].value.ref, call.cop);
  EXPECT_TRUE(result->done);

  CmpiMethodMI::driveInvokeMethod(&call.methodMI, call.ctx, call.rslt, call.cop, "Reset", call.in,
                                  call.out);
  EXPECT_STREQ(provider.text, "Reset");
  ASSERT_EQ(outArgs->args.size(), 1u);
  EXPECT_EQ(outArgs->args[0].first, "Result");
  EXPECT_EQ(outArgs->args[0].second.value.uint32, 1u);
}

TEST_F(DriversTest, ValueConstructorsWorkInsideACall) {
  // A provider that builds an instance through the installed broker.
  class Builder : public CmpiInstanceMI {
   public:
    Builder(const CmpiBroker& b, const CmpiContext& c) : CmpiBaseMI(b, c), CmpiInstanceMI(b, c) {}
    CmpiStatus enumInstances(const CmpiContext&, CmpiResult& rslt, const CmpiObjectPath& cop,
                             const char**) override {
      CmpiObjectPath path(cop.getNameSpace(), "ZEDA_DiskDrive");
      path.setKey("DeviceID", "nas1:DISK1");
      CmpiInstance inst(path);
      inst.setProperty("Name", std::string("disk"));
      rslt.returnData(inst);
      rslt.returnDone();
      return CmpiStatus(CMPI_RC_OK);
    }
  };
  Builder builder{CmpiBroker(mb.enc()), CmpiContext(call.ctx)};
  call.point(&builder);
  const CMPIStatus status =
      CmpiInstanceMI::driveEnumInstances(&call.instanceMI, call.ctx, call.rslt, call.cop, nullptr);
  EXPECT_EQ(status.rc, CMPI_RC_OK);
  ASSERT_EQ(result->data.size(), 1u);
  const fake::Instance* made = fake::of<fake::Instance>(result->data[0].value.inst);
  EXPECT_EQ(made->path->className, "ZEDA_DiskDrive");
  EXPECT_EQ(made->path->nameSpace, "root/cimv2");
  ASSERT_EQ(made->properties.size(), 1u);
  EXPECT_EQ(fake::Broker::text(made->properties[0].second.value.string), "disk");
}
