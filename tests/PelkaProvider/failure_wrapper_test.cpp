// The failure wrapper seen through PelkaProvider's operations: each kind of
// exception becomes its status and exactly one glog ERROR line attributed to
// "pelka_provider" and the operation's fixed line.
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <boost/format.hpp>

#include "Exception.h"
#include "LogCapture.h"
#include "LogDirectory.h"
#include "Operations.h"
#include "TestHost.h"

namespace zeda::test {

using namespace zeda::pelka;  // the framework under test
namespace {

class FailureWrapper : public ::testing::Test {
 protected:
  CmpiStatus getInstanceThat(const Script& script) {
    TestProvider::install(&provider, provider.instanceDelegates().GetInstance,
                          std::make_unique<TestGetInstance>(script, seen));
    return provider.getInstance(args.ctx, args.rslt, args.cop, args.properties);
  }

  Seen seen;
  TestProvider provider{Broker(), Context(), "ZEDA_DiskDrive"};
  CallArgs args;
  LogCapture capture;
};

TEST_F(FailureWrapper, ProviderExceptionGivesItsOwnStatusAndLogsTheCode) {
  const CmpiStatus status = getInstanceThat(Throws(ProviderException("abc")));
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  ASSERT_TRUE(status.hasMessage());
  EXPECT_STREQ(status.msg(), "abc");

  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].severity, google::GLOG_ERROR);
  EXPECT_EQ(lines[0].line, 84);
  EXPECT_EQ(lines[0].text, "ZEDA_DiskDrive: abc (RC=4)");
  EXPECT_NE(lines[0].rendered.find("pelka_provider:84] ZEDA_DiskDrive: abc (RC=4)"),
            std::string::npos)
      << lines[0].rendered;
  EXPECT_EQ(lines[0].rendered.front(), 'E') << lines[0].rendered;
}

TEST_F(FailureWrapper, ThrownCmpiStatusIsReturnedUnchanged) {
  const CmpiStatus status =
      getInstanceThat(Throws(CmpiStatus(CMPI_RC_ERR_NOT_FOUND, "no such disk")));
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_NOT_FOUND);
  ASSERT_TRUE(status.hasMessage());
  EXPECT_STREQ(status.msg(), "no such disk");

  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].severity, google::GLOG_ERROR);
  EXPECT_EQ(lines[0].line, 84);
  EXPECT_EQ(lines[0].text, "ZEDA_DiskDrive: CmpiStatus.rc() = 6");
}

TEST_F(FailureWrapper, ThrownCmpiStatusWithoutMessageKeepsHavingNone) {
  const CmpiStatus status = getInstanceThat(Throws(CmpiStatus(CMPI_RC_ERR_NOT_FOUND)));
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_NOT_FOUND);
  EXPECT_FALSE(status.hasMessage());
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].text, "ZEDA_DiskDrive: CmpiStatus.rc() = 6");
}

TEST_F(FailureWrapper, StatusCodesAreLoggedAsDecimalNumbers) {
  getInstanceThat(Throws(CmpiStatus(CMPI_RC_ERROR)));
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].text, "ZEDA_DiskDrive: CmpiStatus.rc() = 200");
}

TEST_F(FailureWrapper, PlainExceptionBecomesCode200WithItsText) {
  const CmpiStatus status = getInstanceThat(Throws(Exception("Null handler")));
  EXPECT_EQ(status.rc(), CMPI_RC_ERROR);
  EXPECT_EQ(static_cast<int>(status.rc()), 200);
  ASSERT_TRUE(status.hasMessage());
  EXPECT_STREQ(status.msg(), "Null handler");
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].line, 84);
  EXPECT_EQ(lines[0].text, "ZEDA_DiskDrive: Null handler");
}

TEST_F(FailureWrapper, LibraryExceptionBecomesCode200WithItsText) {
  const CmpiStatus status = getInstanceThat(Throws(std::out_of_range("invalid string position")));
  EXPECT_EQ(status.rc(), CMPI_RC_ERROR);
  EXPECT_STREQ(status.msg(), "invalid string position");
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].text, "ZEDA_DiskDrive: invalid string position");
}

TEST_F(FailureWrapper, FormatErrorBecomesCode200WithItsText) {
  const boost::io::too_few_args error(1, 2);
  const std::string what = error.what();
  const CmpiStatus status = getInstanceThat(Throws(error));
  EXPECT_EQ(status.rc(), CMPI_RC_ERROR);
  EXPECT_EQ(status.msg(), what);
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].text, "ZEDA_DiskDrive: " + what);
}

// A library exception that has no text to give.
struct Textless : std::exception {
  const char* what() const noexcept override { return nullptr; }
};

TEST_F(FailureWrapper, LibraryExceptionWithoutTextBecomesCode200WithoutMessage) {
  const CmpiStatus status = getInstanceThat(Throws(Textless()));
  EXPECT_EQ(status.rc(), CMPI_RC_ERROR);
  EXPECT_FALSE(status.hasMessage());
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].line, 84);
  EXPECT_EQ(lines[0].text, "ZEDA_DiskDrive: ");
}

TEST_F(FailureWrapper, AnythingElseIsAnUnknownError) {
  const CmpiStatus status = getInstanceThat(Throws(42));
  EXPECT_EQ(status.rc(), CMPI_RC_ERROR);
  ASSERT_TRUE(status.hasMessage());
  EXPECT_STREQ(status.msg(), "Unknown error");
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].severity, google::GLOG_ERROR);
  EXPECT_EQ(lines[0].line, 84);
  EXPECT_EQ(lines[0].text, "ZEDA_DiskDrive: Unknown error");
}

TEST_F(FailureWrapper, FailureStatusReturnedWithoutThrowingIsNotLogged) {
  const CmpiStatus status = getInstanceThat(Returns(CmpiStatus(CMPI_RC_ERR_NOT_FOUND, "gone")));
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_NOT_FOUND);
  EXPECT_STREQ(status.msg(), "gone");
  EXPECT_TRUE(FrameworkLines(capture).empty());
}

TEST_F(FailureWrapper, SuccessIsNotLogged) {
  const CmpiStatus status = getInstanceThat(Returns(CmpiStatus(CMPI_RC_OK)));
  EXPECT_EQ(status.rc(), CMPI_RC_OK);
  EXPECT_FALSE(status.hasMessage());
  EXPECT_TRUE(capture.lines().empty());
}

TEST_F(FailureWrapper, LineGoesToTheErrorLogFileInTheLogDirectory) {
  getInstanceThat(Throws(ProviderException("abc")));
  google::FlushLogFiles(google::GLOG_ERROR);
  const std::string link = LogDirectory() + "/PELKA.ERROR";
  ASSERT_TRUE(std::filesystem::exists(link)) << link;
  std::ifstream in(link);
  std::string last;
  for (std::string line; std::getline(in, line);) last = line;
  const std::string tail = "pelka_provider:84] ZEDA_DiskDrive: abc (RC=4)";
  ASSERT_GE(last.size(), tail.size()) << last;
  EXPECT_EQ(last.substr(last.size() - tail.size()), tail);
  EXPECT_EQ(last.front(), 'E') << last;
}

TEST(FailureWrapperClassName, ProviderWithoutClassNameLogsUnknown) {
  TestProvider provider(Broker(), Context());
  EXPECT_EQ(provider.className(), "Unknown");
  Seen seen;
  TestProvider::install(&provider, provider.instanceDelegates().EnumInstances,
                        std::make_unique<TestEnumInstances>(Throws(Exception("broken")), seen));
  CallArgs args;
  const LogCapture capture;
  const CmpiStatus status = provider.enumInstances(args.ctx, args.rslt, args.cop, nullptr);
  EXPECT_EQ(status.rc(), CMPI_RC_ERROR);
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].line, 77);
  EXPECT_EQ(lines[0].text, "Unknown: broken");
}

// Every operation runs inside the wrapper and logs with its own line.
class WrappedOperation : public ::testing::TestWithParam<Operation> {};

TEST_P(WrappedOperation, ProviderExceptionIsLoggedWithTheOperationsLine) {
  const Operation& op = GetParam();
  TestProvider provider(Broker(), Context(), "TEST_Lines");
  Seen seen;
  op.install(provider, Throws(ProviderException("boom in " + op.name)), seen);
  CallArgs args;
  const LogCapture capture;
  const CmpiStatus status = op.call(provider, args);
  EXPECT_EQ(seen.calls, 1);
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  EXPECT_EQ(status.msg(), "boom in " + op.name);
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].severity, google::GLOG_ERROR);
  EXPECT_EQ(lines[0].line, op.line);
  EXPECT_EQ(lines[0].text, "TEST_Lines: boom in " + op.name + " (RC=4)");
}

TEST_P(WrappedOperation, UnknownThrowIsConvertedToo) {
  const Operation& op = GetParam();
  TestProvider provider(Broker(), Context(), "TEST_Lines");
  Seen seen;
  op.install(provider, Throws(3.5), seen);
  CallArgs args;
  const LogCapture capture;
  const CmpiStatus status = op.call(provider, args);
  EXPECT_EQ(status.rc(), CMPI_RC_ERROR);
  EXPECT_STREQ(status.msg(), "Unknown error");
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].line, op.line);
  EXPECT_EQ(lines[0].text, "TEST_Lines: Unknown error");
}

TEST_P(WrappedOperation, ReturnedStatusPassesThroughUnlogged) {
  const Operation& op = GetParam();
  TestProvider provider(Broker(), Context(), "TEST_Lines");
  Seen seen;
  op.install(provider, Returns(CmpiStatus(CMPI_RC_ERR_ACCESS_DENIED, "no")), seen);
  CallArgs args;
  const LogCapture capture;
  const CmpiStatus status = op.call(provider, args);
  EXPECT_EQ(seen.calls, 1);
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_ACCESS_DENIED);
  EXPECT_STREQ(status.msg(), "no");
  EXPECT_TRUE(FrameworkLines(capture).empty());
}

INSTANTIATE_TEST_SUITE_P(AllOperations, WrappedOperation, ::testing::ValuesIn(AllOperations()),
                         [](const ::testing::TestParamInfo<Operation>& info) {
                           return info.param.name;
                         });

}  // namespace
}  // namespace zeda::test
