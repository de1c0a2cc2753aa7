// Loading a module, calling its factories like an object manager, clean-up
// at unload.
#include <gtest/gtest.h>

#include "host_fixture.hpp"

namespace zeda::test {

using namespace zeda::host;

TEST(Loader, MissingModuleIsAClearError) {
  try {
    Host host("/nonexistent/libnothing.so");
    FAIL();
  } catch (const LoadError& e) {
    EXPECT_NE(std::string(e.what()).find("cannot load module /nonexistent/libnothing.so"),
              std::string::npos)
        << e.what();
  }
}

TEST(Loader, FactorySymbolNames) {
  EXPECT_EQ(factorySymbol("ZEDA_DiskDriveProvider", MIKind::Instance),
            "ZEDA_DiskDriveProvider_Create_InstanceMI");
  EXPECT_EQ(factorySymbol("P", MIKind::Association), "P_Create_AssociationMI");
  EXPECT_EQ(factorySymbol("P", MIKind::Method), "P_Create_MethodMI");
  EXPECT_EQ(factorySymbol("P", MIKind::Indication), "P_Create_IndicationMI");
}

TEST(Loader, ExportedFactoriesComeFromTheDynamicSymbolTable) {
  Host host(testProvider());
  EXPECT_EQ(
      host.exportedFactories(),
      (std::vector<std::string>{
          "ZEDA_HostHalfProvider_Create_InstanceMI", "ZEDA_HostRefuseProvider_Create_InstanceMI",
          "ZEDA_HostTestProvider_Create_AssociationMI", "ZEDA_HostTestProvider_Create_IndicationMI",
          "ZEDA_HostTestProvider_Create_InstanceMI", "ZEDA_HostTestProvider_Create_MethodMI"}));
  EXPECT_TRUE(host.hasFactory(kTestProvider, MIKind::Instance));
  EXPECT_FALSE(host.hasFactory("ZEDA_HostRefuseProvider", MIKind::Association));
}

TEST(Loader, SameFactoryTwiceGivesTheSameRecord) {
  Host host(testProvider());
  const CreatedMI a = host.createMI(kTestProvider, MIKind::Instance);
  const CreatedMI b = host.createMI(kTestProvider, MIKind::Instance);
  ASSERT_TRUE(a.ok());
  ASSERT_TRUE(b.ok());
  EXPECT_EQ(a.mi, b.mi);
  EXPECT_STREQ(a.instanceMI()->ft->miName, "instanceZEDA_HostTestProvider");
  const CreatedMI c = host.createMI(kTestProvider, MIKind::Association);
  ASSERT_TRUE(c.ok());
  EXPECT_NE(c.mi, a.mi);
  EXPECT_EQ(c.associationMI()->hdl, a.instanceMI()->hdl);
  EXPECT_THROW(c.instanceMI(), TypeMismatch);
}

TEST(Loader, RefusingFactoryReportsCodeAndMessage) {
  Host host(testProvider());
  const CreatedMI r = host.createMI("ZEDA_HostRefuseProvider", MIKind::Instance);
  EXPECT_FALSE(r.ok());
  EXPECT_EQ(r.mi, nullptr);
  EXPECT_EQ(r.status.code, CMPI_RC_ERR_ACCESS_DENIED);
  EXPECT_EQ(r.status.message, std::optional<std::string>("refused"));
  const Outcome out =
      host.enumerateInstances("ZEDA_HostRefuseProvider", ObjectPath(kNamespace, "ZEDA_HostRefuse"));
  EXPECT_EQ(out.code(), CMPI_RC_ERR_ACCESS_DENIED);
  EXPECT_EQ(out.status.message, std::optional<std::string>("refused"));
  EXPECT_FALSE(out.done);
}

TEST(Loader, RecordWithFailureStatusIsNotAccepted) {
  Host host(testProvider());
  const CreatedMI r = host.createMI("ZEDA_HostHalfProvider", MIKind::Instance);
  EXPECT_NE(r.mi, nullptr);
  EXPECT_FALSE(r.ok());
  EXPECT_EQ(r.status.code, CMPI_RC_ERR_FAILED);
  EXPECT_FALSE(r.status.message);
  // Not accepted: no clean-up call for it at unload.
  EXPECT_TRUE(host.unload().empty());
  EXPECT_TRUE(host.traces().empty());
}

TEST(Loader, MissingFactoryThrows) {
  Host host(testProvider());
  try {
    host.createMI("ZEDA_NobodyProvider", MIKind::Instance);
    FAIL();
  } catch (const FactoryMissing& e) {
    EXPECT_NE(std::string(e.what()).find("ZEDA_NobodyProvider_Create_InstanceMI"),
              std::string::npos);
  }
  EXPECT_THROW(
      host.enumerateInstances("ZEDA_NobodyProvider", ObjectPath(kNamespace, "ZEDA_Nobody")),
      FactoryMissing);
}

TEST(Loader, UnloadCallsEveryCleanupTerminatingNewestFirst) {
  Host host(testProvider());
  ASSERT_TRUE(host.createMI(kTestProvider, MIKind::Instance).ok());
  ASSERT_TRUE(host.createMI(kTestProvider, MIKind::Association).ok());
  ASSERT_TRUE(host.createMI(kTestProvider, MIKind::Instance).ok());
  const std::vector<Status> st = host.unload();
  ASSERT_EQ(st.size(), 3u);
  for (const auto& s : st) EXPECT_EQ(s.code, 0);
  std::vector<std::string> seen;
  for (const auto& t : host.traces()) seen.push_back(t.text);
  EXPECT_EQ(seen, (std::vector<std::string>{"instance terminating", "association terminating",
                                            "instance terminating"}));
  EXPECT_FALSE(host.loaded());
  EXPECT_THROW(host.enumerateInstances(kTestProvider, ObjectPath(kNamespace, kTestClass)),
               LoadError);
}

TEST(Loader, FactoryContextCarriesTheInitialNamespace) {
  Host host(testProvider());
  const CMPIContext* ctx = host.context();
  CMPIStatus rc{};
  const CMPIData d = ctx->ft->getEntry(ctx, CMPIInitNameSpace, &rc);
  ASSERT_EQ(rc.rc, CMPI_RC_OK);
  EXPECT_EQ(readData(d), Value::string("root/cimv2"));
  // The test provider refuses a context without it; it accepts the host's.
  EXPECT_TRUE(host.createMI(kTestProvider, MIKind::Method).ok());
}

}  // namespace zeda::test
