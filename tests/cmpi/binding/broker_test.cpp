// CmpiBroker: up-calls through the broker's tables.
#include <gtest/gtest.h>

#include "CmpiCpp.h"
#include "FakeBroker.h"
#include "Names.h"
#include "ThrownStatus.h"

namespace zeda::test {
namespace {

class BrokerTest : public ::testing::Test {
 protected:
  fake::Broker mb;
  CmpiBrokerScope scope{mb.enc()};
  CmpiBroker broker{mb.enc()};
  CmpiContext ctx{&mb.context()->enc};
};

}  // namespace

TEST_F(BrokerTest, GetInstanceAnswersOrThrowsTheObjectManagersStatus) {
  CmpiObjectPath path(kNamespace, "ZEDA_DiskDrive");
  const CmpiStatus missing = thrownBy([&] { broker.getInstance(ctx, path, nullptr); });
  EXPECT_EQ(missing.rc(), CMPI_RC_ERR_NOT_FOUND);
  EXPECT_STREQ(missing.msg(), "no such instance");

  path.setKey("DeviceID", "d1");
  const CmpiInstance inst = broker.getInstance(ctx, path, nullptr);
  EXPECT_EQ(inst.getObjectPath().getKey("DeviceID").getString(), "d1");
  EXPECT_EQ(mb.calls, (std::vector<std::string>{"getInstance", "getInstance"}));
}

TEST_F(BrokerTest, EnumerationsAndFailingModify) {
  const CmpiObjectPath path(kNamespace, "C");
  CmpiEnumeration names = broker.enumInstanceNames(ctx, path);
  int count = 0;
  while (names.hasNext()) {
    const CmpiObjectPath p = names.getNext();
    EXPECT_EQ(p.getEnc(), path.getEnc());
    ++count;
  }
  EXPECT_EQ(count, 2);

  const CmpiInstance inst(path);
  const CmpiStatus denied = thrownBy([&] { broker.setInstance(ctx, path, inst, nullptr); });
  EXPECT_EQ(denied.rc(), CMPI_RC_ERR_ACCESS_DENIED);
  EXPECT_STREQ(denied.msg(), "read-only");

  broker.associators(ctx, path, nullptr, nullptr, nullptr, nullptr, nullptr);
  broker.associators(ctx, path, "ZEDA_Realizes_Disk", nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(mb.calls[2], "associators (null)");
  EXPECT_EQ(mb.calls[3], "associators ZEDA_Realizes_Disk");
}

TEST_F(BrokerTest, UpCallsTheObjectManagerLacksAreNotSupported) {
  const CmpiObjectPath path(kNamespace, "C");
  const CmpiInstance inst(path);
  CmpiArgs out = CmpiArgs::create();
  const auto rcOf = [](auto call) { return thrownBy(call).rc(); };
  EXPECT_EQ(rcOf([&] { broker.enumInstances(ctx, path, nullptr); }), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.createInstance(ctx, path, inst); }), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.deleteInstance(ctx, path); }), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.execQuery(ctx, path, "q", "WQL"); }), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.associatorNames(ctx, path, nullptr, nullptr, nullptr, nullptr); }),
            CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.references(ctx, path, nullptr, nullptr, nullptr); }),
            CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.referenceNames(ctx, path, nullptr, nullptr); }),
            CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.invokeMethod(ctx, path, "m", CmpiArgs::create(), out); }),
            CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.setProperty(ctx, path, "p", CmpiData(CMPIUint16{1})); }),
            CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.getProperty(ctx, path, "p"); }), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.deliverIndication(ctx, kNamespace, inst); }),
            CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.prepareAttachThread(ctx); }), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.attachThread(ctx); }), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.detachThread(ctx); }), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.isOfType(inst.getEnc(), "CMPIInstance"); }),
            CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(rcOf([&] { broker.getType(inst.getEnc()); }), CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(BrokerTest, EncapsulatedServices) {
  CmpiObjectPath path(kNamespace, "ZEDA_DiskDrive");
  path.setKey("DeviceID", "d1");
  EXPECT_TRUE(broker.classPathIsA(path, "zeda_diskdrive"));
  EXPECT_FALSE(broker.classPathIsA(path, "ZEDA_StorageExtent_Disk"));
  EXPECT_STREQ(broker.toString(path.getEnc()).charPtr(),
               "root/cimv2:ZEDA_DiskDrive.DeviceID=\"d1\"");
}

TEST_F(BrokerTest, LoggingReportsItsStatusInsteadOfThrowing) {
  const CmpiStatus logged = broker.logMessage(CMPI_SEV_ERROR, "zeda", "disk gone");
  EXPECT_EQ(logged.rc(), CMPI_RC_ERR_NOT_SUPPORTED);
  const CmpiStatus traced = broker.trace(CMPI_LEV_INFO, "zeda", "step");
  EXPECT_EQ(traced.rc(), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(mb.logged, (std::vector<std::string>{"disk gone", "step"}));

  mb.logAnswer = CMPI_RC_OK;
  EXPECT_EQ(broker.logMessage(CMPI_SEV_INFO, "zeda", "ok").rc(), CMPI_RC_OK);

  mb.eft.logMessage = nullptr;
  mb.eft.trace = nullptr;
  EXPECT_EQ(broker.logMessage(CMPI_SEV_INFO, "zeda", "x").rc(), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(broker.trace(CMPI_LEV_VERBOSE, "zeda", "x").rc(), CMPI_RC_ERR_NOT_SUPPORTED);

  const CmpiBroker none;
  EXPECT_EQ(none.logMessage(CMPI_SEV_INFO, "zeda", "x").rc(), CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(none.trace(CMPI_LEV_INFO, "zeda", "x").rc(), CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(BrokerTest, NullBrokerThrowsInvalidHandle) {
  const CmpiBroker none;
  const CmpiObjectPath path(kNamespace, "C");
  EXPECT_EQ(thrownBy([&] { none.getInstance(ctx, path, nullptr); }).rc(),
            CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(thrownBy([&] { none.classPathIsA(path, "C"); }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
  mb.enc_.bft = nullptr;
  EXPECT_EQ(thrownBy([&] { broker.getInstance(ctx, path, nullptr); }).rc(),
            CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(BrokerTest, DoesNotDependOnVersionsOrMemoryTable) {
  mb.bft.brokerVersion = 0;
  mb.eft.ftVersion = 0;
  mb.enc_.mft = nullptr;
  CmpiObjectPath path(kNamespace, "C");
  path.setKey("K", "v");
  EXPECT_EQ(broker.getInstance(ctx, path, nullptr).getPropertyCount(), 0u);
  EXPECT_STREQ(CmpiString("still").charPtr(), "still");
}

}  // namespace zeda::test
