// The static drive… functions: every one turns the provider's answer, and
// every exception it throws, into a C status; none lets an exception out.
#include <gtest/gtest.h>

#include "CmpiCpp.h"
#include "DriverHarness.h"
#include "FakeBroker.h"
#include "Names.h"

namespace zeda::test {
namespace {

using harness::allDrivers;
using harness::AllInterfaces;
using harness::Behaviour;
using harness::Call;
using harness::InstanceOnly;

class DriversTest : public ::testing::Test {
 protected:
  DriversTest() {
    call.ctx = &mb.context()->enc;
    result = mb.result();
    call.rslt = &result->enc;
    call.cop = &mb.path(kNamespace, "C")->enc;
    call.inst = &mb.instance(mb.path(kNamespace, "C"))->enc;
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
  EXPECT_EQ(
      CmpiInstanceMI::driveEnumInstanceNames(&call.instanceMI, call.ctx, call.rslt, call.cop).msg,
      nullptr);
  const CMPIStatus noAssociation =
      CmpiAssociationMI::driveAssociators(&call.associationMI, call.ctx, call.rslt, call.cop,
                                          nullptr, nullptr, nullptr, nullptr, nullptr);
  EXPECT_NE(fake::Broker::text(noAssociation.msg).find("association"), std::string::npos);
  EXPECT_TRUE(result->data.empty());
  EXPECT_FALSE(result->done);
}

TEST_F(DriversTest, ArgumentsArriveAsTheObjectManagerPassedThem) {
  const char* props[] = {"Name", nullptr};
  CmpiAssociationMI::driveAssociators(&call.associationMI, call.ctx, call.rslt, call.cop, nullptr,
                                      "R", "Role", "RR", props);
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
  CmpiIndicationMI::driveDeActivateFilter(&call.indicationMI, call.ctx, call.filter, "C", call.cop,
                                          0);
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
  EXPECT_EQ(made->path->nameSpace, kNamespace);
  ASSERT_EQ(made->properties.size(), 1u);
  EXPECT_EQ(fake::Broker::text(made->properties[0].second.value.string), "disk");
}

}  // namespace zeda::test
