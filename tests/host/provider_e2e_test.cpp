// The C test provider driven end to end through dlopen: every operation,
// property lists, filter arguments, and the provider's own self-checks of
// every broker and encapsulated-type function.
#include <gtest/gtest.h>

#include "host_fixture.hpp"

namespace zeda::test {

using namespace zeda::host;

namespace {

class ProviderE2E : public ::testing::Test {
 protected:
  Host host{testProvider()};
  const ObjectPath classPath{kNamespace, kTestClass};
};

TEST_F(ProviderE2E, EnumerateInstancesAllPropertiesInSetOrder) {
  const Outcome out = host.enumerateInstances(kTestProvider, classPath);
  ASSERT_EQ(out.code(), 0);
  EXPECT_TRUE(out.done);
  const auto inst = out.instances();
  ASSERT_EQ(inst.size(), 2u);
  EXPECT_EQ(inst[0].path(), testPath("1"));
  EXPECT_EQ(
      inst[0].names(),
      (std::vector<std::string>{"InstanceID", "Name", "Flag", "U8",   "U16",  "U32",   "U64",
                                "S8",         "S16",  "S32",  "S64",  "R32",  "R64",   "Stamp",
                                "Span",       "Ref",  "U16A", "StrA", "U64A", "BoolA", "NullStr"}));
  EXPECT_EQ(inst[0].property("U64").u(), UINT64_MAX);
  EXPECT_EQ(inst[0].property("S64").s(), INT64_MIN);
  EXPECT_EQ(inst[0].property("Name").str(), "Disk \"one\" <&> \\ end");
  EXPECT_EQ(inst[0].property("Stamp").dateTimeText(), "20240229123456.789012+000");
  EXPECT_EQ(inst[0].property("Ref").ref(), testPath("2"));
  EXPECT_EQ(inst[0].property("StrA").strings(), (std::vector<std::string>{"a", "b\"c"}));
  EXPECT_EQ(inst[0].property("BoolA").bools(), (std::vector<bool>{true, false}));
  EXPECT_TRUE(inst[0].property("NullStr").isNull());
  EXPECT_EQ(inst[1].names(), (std::vector<std::string>{"InstanceID", "U16"}));
}

TEST_F(ProviderE2E, PropertyListFiltersButKeepsKeys) {
  const Outcome out =
      host.enumerateInstances(kTestProvider, classPath, std::vector<std::string>{"u64", "Flag"});
  const auto inst = out.instances();
  ASSERT_EQ(inst.size(), 2u);
  EXPECT_EQ(inst[0].names(), (std::vector<std::string>{"InstanceID", "Flag", "U64"}));
  EXPECT_EQ(inst[1].names(), (std::vector<std::string>{"InstanceID"}));
  const Outcome none =
      host.enumerateInstances(kTestProvider, classPath, std::vector<std::string>{});
  EXPECT_EQ(none.instances()[0].names(), (std::vector<std::string>{"InstanceID"}));
}

TEST_F(ProviderE2E, EnumerateInstanceNames) {
  const Outcome out = host.enumerateInstanceNames(kTestProvider, classPath);
  ASSERT_EQ(out.code(), 0);
  EXPECT_EQ(out.paths(), (std::vector<ObjectPath>{testPath("1"), testPath("2")}));
}

TEST_F(ProviderE2E, GetInstanceFoundAndNotFound) {
  const Outcome found =
      host.getInstance(kTestProvider, testPath("2"), std::vector<std::string>{"U16"});
  ASSERT_EQ(found.code(), 0);
  EXPECT_EQ(found.instances().at(0).property("U16").u(), 2u);
  const Outcome missing = host.getInstance(kTestProvider, testPath("7"));
  EXPECT_EQ(missing.code(), CMPI_RC_ERR_NOT_FOUND);
  EXPECT_EQ(missing.status.message, std::optional<std::string>("no such instance"));
  EXPECT_FALSE(missing.done);
  EXPECT_TRUE(missing.results.empty());
}

TEST_F(ProviderE2E, CreateModifyDeleteExecQuery) {
  const Instance fresh(testPath("5"),
                       {{"InstanceID", Value::string("5")}, {"U16", Value::uint16(9)}});
  const Outcome created = host.createInstance(kTestProvider, testPath("5"), fresh);
  EXPECT_EQ(created.paths(), (std::vector<ObjectPath>{testPath("5")}));
  const Outcome modified =
      host.modifyInstance(kTestProvider, testPath("5"), fresh, std::vector<std::string>{"Nothing"});
  ASSERT_EQ(modified.instances().size(), 1u);
  EXPECT_EQ(modified.instances()[0].names(), (std::vector<std::string>{"InstanceID"}));
  EXPECT_FALSE(modified.done);
  EXPECT_EQ(host.deleteInstance(kTestProvider, testPath("1")).code(), 0);
  const Outcome gone = host.deleteInstance(kTestProvider, testPath("3"));
  EXPECT_EQ(gone.code(), CMPI_RC_ERR_NOT_FOUND);
  EXPECT_FALSE(gone.status.message);
  const Outcome q = host.execQuery(kTestProvider, classPath, "SELECT * FROM ZEDA_HostTest", "WQL");
  EXPECT_EQ(q.values(), (std::vector<Value>{Value::string("SELECT * FROM ZEDA_HostTest"),
                                            Value::string("WQL")}));
}

TEST_F(ProviderE2E, AssociatorsPassNullsAndStringsAsGiven) {
  const Outcome nulls = host.associators(kTestProvider, testPath("1"), std::nullopt, std::nullopt,
                                         std::nullopt, std::nullopt, std::nullopt);
  ASSERT_EQ(nulls.code(), 0);
  const Instance e = nulls.instances().at(0);
  EXPECT_EQ(e.className(), "ZEDA_HostTestEcho");
  EXPECT_EQ(e.property("Source").ref(), testPath("1"));
  for (const char* n : {"AssocClass", "ResultClass", "Role", "ResultRole", "Properties"}) {
    EXPECT_TRUE(e.property(n).isNull()) << n;
  }
  const Outcome given = host.associators(kTestProvider, testPath("1"), "zeda_hosttest", "R", "",
                                         "RR", std::vector<std::string>{"P1", "P2"});
  const Instance g = given.instances().at(0);
  EXPECT_EQ(g.property("AssocClass").str(), "zeda_hosttest");
  EXPECT_EQ(g.property("ResultClass").str(), "R");
  EXPECT_EQ(g.property("Role").str(), "");
  EXPECT_EQ(g.property("ResultRole").str(), "RR");
  EXPECT_EQ(g.property("Properties").strings(), (std::vector<std::string>{"P1", "P2"}));
}

TEST_F(ProviderE2E, AssociatorNamesReferencesReferenceNames) {
  EXPECT_EQ(host.associatorNames(kTestProvider, testPath("1"), std::nullopt, std::nullopt,
                                 std::nullopt, std::nullopt)
                .paths(),
            (std::vector<ObjectPath>{testPath("2")}));
  const Outcome refs = host.references(kTestProvider, testPath("1"), "C", std::nullopt);
  EXPECT_EQ(refs.instances().at(0).property("ResultClass").str(), "C");
  EXPECT_TRUE(refs.instances().at(0).property("Role").isNull());
  const Outcome names =
      host.referenceNames(kTestProvider, testPath("1"), std::nullopt, std::nullopt);
  EXPECT_EQ(names.code(), CMPI_RC_ERR_NOT_FOUND);
  EXPECT_EQ(names.status.message, std::optional<std::string>("reference names: nothing more"));
  EXPECT_FALSE(names.done);
  EXPECT_EQ(names.paths(), (std::vector<ObjectPath>{testPath("1")}));
}

TEST_F(ProviderE2E, InvokeMethodEchoesArguments) {
  const Outcome out =
      host.invokeMethod(kTestProvider, testPath("1"), "Echo",
                        {{"Value", Value::uint32(41)}, {"Text", Value::strings({"x"})}});
  ASSERT_EQ(out.code(), 0);
  EXPECT_EQ(out.values(), (std::vector<Value>{Value::uint32(41)}));
  EXPECT_EQ(out.outArgs, (std::vector<NamedValue>{{"Value", Value::uint32(41)},
                                                  {"Text", Value::strings({"x"})}}));
  const Outcome unknown = host.invokeMethod(kTestProvider, testPath("1"), "Nope");
  EXPECT_EQ(unknown.code(), CMPI_RC_ERR_METHOD_NOT_FOUND);
}

TEST_F(ProviderE2E, IndicationOperationsReceiveFilterClassAndPath) {
  const ObjectPath cp(kNamespace, "ZEDA_Alert");
  const std::string q = "SELECT * FROM ZEDA_Alert";
  EXPECT_EQ(host.authorizeFilter(kTestProvider, q, "ZEDA_Alert", cp, "admin").status.message,
            "authorize ZEDA_Alert ZEDA_Alert admin " + q);
  EXPECT_EQ(host.mustPoll(kTestProvider, q, "ZEDA_Alert", cp).status.message,
            "mustPoll ZEDA_Alert ZEDA_Alert - " + q);
  EXPECT_EQ(host.activateFilter(kTestProvider, q, "ZEDA_Alert", cp, true).status.message,
            "activate ZEDA_Alert ZEDA_Alert first " + q);
  EXPECT_EQ(host.deActivateFilter(kTestProvider, q, "ZEDA_Alert", cp, false).status.message,
            "deactivate ZEDA_Alert ZEDA_Alert more " + q);
  EXPECT_EQ(host.enableIndications(kTestProvider).status.message,
            std::optional<std::string>("enabled"));
  EXPECT_EQ(host.disableIndications(kTestProvider).status.message,
            std::optional<std::string>("disabled"));
}

// ---- the provider's self-checks ------------------------------------------

struct SelfCheck {
  const char* method;
  unsigned minimumChecks;
};

class ProviderSelfCheck : public ::testing::TestWithParam<SelfCheck> {};

Outcome runCheck(Host& host, const char* method) {
  return host.invokeMethod(kTestProvider, testPath("1"), method);
}

std::string outArg(const Outcome& out, const char* name) {
  for (const auto& a : out.outArgs) {
    if (a.name == name) return a.value.isNull() ? "<null>" : a.value.debugString();
  }
  return "<absent>";
}

TEST_P(ProviderSelfCheck, NoFailures) {
  Host host(testProvider());
  const SelfCheck c = GetParam();
  const Outcome out = runCheck(host, c.method);
  ASSERT_EQ(out.code(), 0) << out.status.message.value_or("");
  ASSERT_FALSE(out.results.empty());
  EXPECT_EQ(out.results.back().value(), Value::uint32(0)) << outArg(out, "Failures");
  EXPECT_TRUE(out.done);
  std::uint64_t checks = 0;
  for (const auto& a : out.outArgs) {
    if (a.name == "Checks") checks = a.value.u();
  }
  EXPECT_GE(checks, c.minimumChecks);
  EXPECT_EQ(host.liveClones(), 0u) << "the checks release every clone they make";
}

INSTANTIATE_TEST_SUITE_P(
    EveryTable, ProviderSelfCheck,
    ::testing::Values(SelfCheck{"CheckStrings", 9}, SelfCheck{"CheckArrays", 15},
                      SelfCheck{"CheckDateTimes", 15}, SelfCheck{"CheckObjectPaths", 25},
                      SelfCheck{"CheckInstances", 30}, SelfCheck{"CheckArgs", 12},
                      SelfCheck{"CheckContexts", 10}, SelfCheck{"CheckErrors", 30},
                      SelfCheck{"CheckSelectExps", 9}, SelfCheck{"CheckResults", 7},
                      SelfCheck{"CheckUpcalls", 35}, SelfCheck{"CheckEncServices", 18},
                      SelfCheck{"CheckThreads", 15}, SelfCheck{"CheckMemory", 11}),
    [](const ::testing::TestParamInfo<SelfCheck>& info) { return std::string(info.param.method); });

TEST(ProviderContext, CarriesNamespaceFlagsAndExtraEntries) {
  Host host(testProvider());
  host.setInvocationFlags(CMPI_FLAG_DeepInheritance);
  host.setContextEntry(CMPIPrincipal, Value::string("admin"));
  const Outcome out =
      host.invokeMethod(kTestProvider, ObjectPath("root/zeda", kTestClass), "CheckContexts");
  ASSERT_EQ(out.values().back(), Value::uint32(0)) << outArg(out, "Failures");
  std::vector<NamedValue> seen;
  for (const auto& a : out.outArgs) {
    if (a.name == "NameSpace" || a.name == "Flags" || a.name == "Principal") seen.push_back(a);
  }
  EXPECT_EQ(seen, (std::vector<NamedValue>{{"NameSpace", Value::string("root/zeda")},
                                           {"Flags", Value::uint32(CMPI_FLAG_DeepInheritance)},
                                           {"Principal", Value::string("admin")}}));
}

TEST(ProviderResults, EverythingReturnedInOrderWithErrors) {
  Host host(testProvider());
  const Outcome out = runCheck(host, "CheckResults");
  ASSERT_EQ(out.results.size(), 4u);
  EXPECT_EQ(out.results[0].value(), Value::uint16(7));
  EXPECT_EQ(out.results[1].instance().path(), testPath("2"));
  EXPECT_EQ(out.results[2].path(), testPath("1"));
  EXPECT_EQ(out.results[3].value(), Value::uint32(0)) << outArg(out, "Failures");
  ASSERT_EQ(out.errors.size(), 1u);
  EXPECT_EQ(out.errors[0].message, std::optional<std::string>("partial"));
  EXPECT_EQ(out.errors[0].messageId, std::optional<std::string>("ZEDA0002"));
  EXPECT_EQ(out.errors[0].owningEntity, std::optional<std::string>("ZEDA"));
  EXPECT_EQ(out.errors[0].cimStatusCode, CMPI_RC_ERR_FAILED);
}

TEST(ProviderBrokerInfo, DefaultBroker) {
  Host host(testProvider());
  const Outcome out = runCheck(host, "CheckEncServices");
  ASSERT_EQ(out.values().back(), Value::uint32(0)) << outArg(out, "Failures");
  EXPECT_EQ(outArg(out, "BrokerVersion"), "sint32 200");
  EXPECT_EQ(outArg(out, "EncVersion"), "sint32 200");
  EXPECT_EQ(outArg(out, "HasMemFT"), "boolean true");
  EXPECT_EQ(outArg(out, "LogRc"), "uint32 0");
  ASSERT_EQ(host.logMessages().size(), 1u);
  EXPECT_EQ(host.logMessages()[0].text, "logged text");
}

TEST(ProviderBrokerInfo, SfcbLikeBroker) {
  Host host(testProvider(), BrokerSettings::sfcbLike());
  const Outcome out = runCheck(host, "CheckEncServices");
  ASSERT_EQ(out.values().back(), Value::uint32(0)) << outArg(out, "Failures");
  EXPECT_EQ(outArg(out, "BrokerVersion"), "sint32 0");
  EXPECT_EQ(outArg(out, "EncVersion"), "sint32 1");
  EXPECT_EQ(outArg(out, "HasMemFT"), "boolean false");
  EXPECT_EQ(outArg(out, "LogRc"), "uint32 7");
  const Outcome mem = runCheck(host, "CheckMemory");
  EXPECT_EQ(mem.values().back(), Value::uint32(0));
  EXPECT_EQ(outArg(mem, "MemFT"), "boolean false");
}

}  // namespace
}  // namespace zeda::test
