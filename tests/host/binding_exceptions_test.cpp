// Exceptions thrown inside provider operations written with the C++ binding
// never escape into the object manager: each becomes a status.
#include <gtest/gtest.h>

#include "host_fixture.hpp"

namespace zeda::test {

using namespace zeda::host;

namespace {

const char* kThrow = "ZEDA_HostThrowProvider";

class BindingExceptions : public ::testing::Test {
 protected:
  Host host{throwingProvider()};
  const ObjectPath cls{kNamespace, "ZEDA_HostThrow"};
};

TEST_F(BindingExceptions, WorkingOperationThroughTheBinding) {
  const Outcome out = host.enumerateInstances(kThrow, cls);
  ASSERT_EQ(out.code(), 0);
  EXPECT_TRUE(out.done);
  const Instance i = out.instances().at(0);
  EXPECT_EQ(i.path(), ObjectPath(kNamespace, "ZEDA_HostThrow", {{"Name", Value::string("built")}}));
  EXPECT_EQ(i.properties(), (std::vector<NamedValue>{{"Name", Value::string("built")},
                                                     {"Count", Value::uint16(3)},
                                                     {"Ok", Value::boolean(true)}}));
}

TEST_F(BindingExceptions, StdExceptionBecomesFailedWithItsText) {
  Outcome out;
  EXPECT_NO_THROW(out = host.getInstance(kThrow, cls));
  EXPECT_EQ(out.code(), CMPI_RC_ERR_FAILED);
  EXPECT_EQ(out.status.message, std::optional<std::string>("getInstance failed"));
}

TEST_F(BindingExceptions, ThrownStatusIsAnsweredAsIs) {
  Outcome out;
  EXPECT_NO_THROW(out = host.enumerateInstanceNames(kThrow, cls));
  EXPECT_EQ(out.code(), CMPI_RC_ERR_NOT_FOUND);
  EXPECT_EQ(out.status.message, std::optional<std::string>("thrown status"));
}

TEST_F(BindingExceptions, NonStandardExceptionBecomesAFailure) {
  Outcome out;
  EXPECT_NO_THROW(out = host.execQuery(kThrow, cls, "SELECT", "WQL"));
  EXPECT_NE(out.code(), 0);
}

TEST_F(BindingExceptions, BadAllocBecomesAFailure) {
  Outcome out;
  EXPECT_NO_THROW(
      out = host.associators(kThrow, cls, std::nullopt, std::nullopt, std::nullopt, std::nullopt));
  EXPECT_NE(out.code(), 0);
  EXPECT_FALSE(out.done);
}

TEST_F(BindingExceptions, RefusedUpCallSurfacesAsTheBrokersStatus) {
  Outcome out;
  EXPECT_NO_THROW(out = host.references(kThrow, cls, std::nullopt, std::nullopt));
  EXPECT_EQ(out.code(), CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(BindingExceptions, UnimplementedOperationsAnswerNotSupported) {
  EXPECT_EQ(host.deleteInstance(kThrow, cls).code(), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(host.referenceNames(kThrow, cls, std::nullopt, std::nullopt).code(),
            CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST(BindingLifetime, CleanupAtUnloadDestroysTheSharedProvider) {
  Host host(throwingProvider());
  const CreatedMI a = host.createMI(kThrow, MIKind::Instance);
  const CreatedMI b = host.createMI(kThrow, MIKind::Association);
  ASSERT_TRUE(a.ok());
  ASSERT_TRUE(b.ok());
  EXPECT_EQ(a.instanceMI()->hdl, b.associationMI()->hdl);
  const std::vector<Status> st = host.unload();
  ASSERT_EQ(st.size(), 2u);
  EXPECT_EQ(st[0].code, 0);
  EXPECT_EQ(st[1].code, 0);
}

}  // namespace
}  // namespace zeda::test
