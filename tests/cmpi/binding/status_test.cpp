// CmpiStatus: messages, the C form for the object manager, and the broker of
// the current call.
#include <gtest/gtest.h>

#include <thread>

#include "CmpiCpp.h"
#include "FakeBroker.h"
#include "Names.h"

namespace zeda::test {

TEST(CmpiStatusTest, DefaultIsOkWithoutMessage) {
  const CmpiStatus status;
  EXPECT_EQ(status.rc(), CMPI_RC_OK);
  EXPECT_FALSE(status.hasMessage());
  EXPECT_EQ(status.msg(), nullptr);
}

TEST(CmpiStatusTest, NullMessageIsNoMessageButEmptyIsOne) {
  const CmpiStatus none(CMPI_RC_ERR_FAILED, static_cast<const char*>(nullptr));
  EXPECT_FALSE(none.hasMessage());
  const CmpiStatus empty(CMPI_RC_ERR_FAILED, "");
  EXPECT_TRUE(empty.hasMessage());
  EXPECT_STREQ(empty.msg(), "");
}

TEST(CmpiStatusTest, IsThrowableByValue) {
  try {
    throw CmpiStatus(CMPI_RC_ERR_NOT_FOUND, std::string("gone"));
  } catch (const CmpiStatus& s) {
    EXPECT_EQ(s.rc(), CMPI_RC_ERR_NOT_FOUND);
    EXPECT_STREQ(s.msg(), "gone");
    return;
  }
  FAIL() << "not caught as CmpiStatus";
}

TEST(CmpiStatusTest, ReadsCodeAndTextOfACStatus) {
  fake::Broker mb;
  const CmpiStatus withText(CMPIStatus{CMPI_RC_ERR_ACCESS_DENIED, mb.string("denied")});
  EXPECT_EQ(withText.rc(), CMPI_RC_ERR_ACCESS_DENIED);
  EXPECT_STREQ(withText.msg(), "denied");
  const CmpiStatus without(CMPIStatus{CMPI_RC_ERR_FAILED, nullptr});
  EXPECT_FALSE(without.hasMessage());
}

TEST(CmpiStatusTest, CStatusWhoseStringCannotBeReadHasNoMessage) {
  fake::Broker mb;
  mb.stringFT.getCharPtr = nullptr;
  const CmpiStatus status(CMPIStatus{CMPI_RC_ERR_FAILED, mb.string("unreadable")});
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_FAILED);
  EXPECT_FALSE(status.hasMessage());
}

TEST(CmpiStatusTest, ToCMPIStatusMakesTheMessageThroughTheBroker) {
  fake::Broker mb;
  const CMPIStatus c = CmpiStatus(CMPI_RC_ERR_INVALID_PARAMETER, "abc").toCMPIStatus(mb.enc());
  EXPECT_EQ(c.rc, CMPI_RC_ERR_INVALID_PARAMETER);
  ASSERT_NE(c.msg, nullptr);
  EXPECT_EQ(fake::Broker::text(c.msg), "abc");
}

TEST(CmpiStatusTest, ToCMPIStatusWithoutMessageLeavesMsgNull) {
  fake::Broker mb;
  const CMPIStatus c = CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED).toCMPIStatus(mb.enc());
  EXPECT_EQ(c.rc, CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(c.msg, nullptr);
  EXPECT_TRUE(mb.strings.empty());
}

TEST(CmpiStatusTest, ToCMPIStatusNeverFailsForLackOfStrings) {
  const CmpiStatus status(CMPI_RC_ERROR, "lost");
  const CMPIStatus noBroker = status.toCMPIStatus(nullptr);
  EXPECT_EQ(noBroker.rc, CMPI_RC_ERROR);
  EXPECT_EQ(noBroker.msg, nullptr);

  fake::Broker failing;
  failing.newStringFails = true;
  const CMPIStatus refused = status.toCMPIStatus(failing.enc());
  EXPECT_EQ(refused.rc, CMPI_RC_ERROR);
  EXPECT_EQ(refused.msg, nullptr);

  fake::Broker missing;
  missing.eft.newString = nullptr;
  const CMPIStatus absent = status.toCMPIStatus(missing.enc());
  EXPECT_EQ(absent.rc, CMPI_RC_ERROR);
  EXPECT_EQ(absent.msg, nullptr);

  fake::Broker noTable;
  noTable.enc_.eft = nullptr;
  EXPECT_EQ(status.toCMPIStatus(noTable.enc()).msg, nullptr);
}

TEST(CmpiBrokerScopeTest, InstallsAndRestoresTheCurrentBroker) {
  fake::Broker outer;
  fake::Broker inner;
  EXPECT_EQ(CmpiBroker::current(), nullptr);
  {
    const CmpiBrokerScope a(outer.enc());
    EXPECT_EQ(CmpiBroker::current(), outer.enc());
    {
      const CmpiBrokerScope b(inner.enc());
      EXPECT_EQ(CmpiBroker::current(), inner.enc());
    }
    EXPECT_EQ(CmpiBroker::current(), outer.enc());
  }
  EXPECT_EQ(CmpiBroker::current(), nullptr);
}

TEST(CmpiBrokerScopeTest, IsPerThread) {
  fake::Broker mb;
  const CmpiBrokerScope scope(mb.enc());
  const CMPIBroker* seen = mb.enc();
  std::thread other([&seen] { seen = CmpiBroker::current(); });
  other.join();
  EXPECT_EQ(seen, nullptr);
  EXPECT_EQ(CmpiBroker::current(), mb.enc());
}

TEST(CmpiBrokerScopeTest, ValueConstructorsNeedACurrentBroker) {
  ASSERT_EQ(CmpiBroker::current(), nullptr);
  const auto expectNoBroker = [](auto make) {
    try {
      make();
      ADD_FAILURE() << "made an object without a broker";
    } catch (const CmpiStatus& s) {
      EXPECT_EQ(s.rc(), CMPI_RC_ERR_FAILED);
      ASSERT_TRUE(s.hasMessage());
      EXPECT_NE(std::string(s.msg()).find("no broker"), std::string::npos) << s.msg();
    }
  };
  expectNoBroker([] { CmpiString s("x"); });
  expectNoBroker([] { CmpiData d("x"); });
  expectNoBroker([] { CmpiData d(std::string("x")); });
  expectNoBroker([] { CmpiObjectPath p(kNamespace, "C"); });
  expectNoBroker([] { CmpiArray a(2, CMPI_uint16); });
  expectNoBroker([] { CmpiArgs::create(); });
  expectNoBroker([] { CmpiDateTime::now(); });
  expectNoBroker([] { CmpiDateTime d(5, true); });
  expectNoBroker([] { CmpiDateTime d("00000001000000.000000:000"); });
  expectNoBroker([] { CmpiInstance i{CmpiObjectPath()}; });
}

TEST(CmpiBrokerScopeTest, ValueConstructorsUseTheCurrentBroker) {
  fake::Broker first;
  fake::Broker second;
  {
    const CmpiBrokerScope scope(first.enc());
    const CmpiString s("one");
    EXPECT_STREQ(s.charPtr(), "one");
  }
  {
    const CmpiBrokerScope scope(second.enc());
    const CmpiString s("two");
    EXPECT_STREQ(s.charPtr(), "two");
  }
  EXPECT_EQ(first.strings.size(), 1u);
  EXPECT_EQ(second.strings.size(), 1u);
}

}  // namespace zeda::test
