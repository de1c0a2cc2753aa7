// zeda-cim run as a program against the test provider module.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>

#include "ZedaCim.h"
#include "host_fixture.hpp"

namespace zeda::test {

using nlohmann::json;

namespace {

std::vector<std::string> withModule(std::vector<std::string> args) {
  args.insert(args.begin(), {"--module", testProvider()});
  return args;
}

int lines(const std::string& s) { return static_cast<int>(std::count(s.begin(), s.end(), '\n')); }

TEST(ZedaCim, JsonEnumerateInstancesIsTheExactDocument) {
  const CliRun r = RunZedaCim(withModule(
      {"--format", "json", "--property", "U16", "--property", "R64", "ei", "ZEDA_HostTest"}));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "");
  const json path1 = {
      {"namespace", "root/cimv2"},
      {"classname", "ZEDA_HostTest"},
      {"keys", json::array({{{"name", "InstanceID"}, {"type", "string"}, {"value", "1"}}})}};
  const json path2 = {
      {"namespace", "root/cimv2"},
      {"classname", "ZEDA_HostTest"},
      {"keys", json::array({{{"name", "InstanceID"}, {"type", "string"}, {"value", "2"}}})}};
  const json expected = {
      {"operation", "ei"},
      {"status", {{"code", 0}, {"message", nullptr}}},
      {"done", true},
      {"results",
       json::array({{{"path", path1},
                     {"properties",
                      json::array({{{"name", "InstanceID"}, {"type", "string"}, {"value", "1"}},
                                   {{"name", "U16"}, {"type", "uint16"}, {"value", 65535}},
                                   {{"name", "R64"}, {"type", "real64"}, {"value", -0.25}}})}},
                    {{"path", path2},
                     {"properties",
                      json::array({{{"name", "InstanceID"}, {"type", "string"}, {"value", "2"}},
                                   {{"name", "U16"}, {"type", "uint16"}, {"value", 2}}})}}})}};
  EXPECT_EQ(json::parse(r.out), expected);
}

TEST(ZedaCim, JsonCarriesEveryTypeWithExactIntegers) {
  const CliRun r =
      RunZedaCim(withModule({"--format", "json", "gi", "ZEDA_HostTest.InstanceID=\"1\""}));
  ASSERT_EQ(r.status, 0) << r.err;
  const json doc = json::parse(r.out);
  const json& props = doc["results"][0]["properties"];
  std::map<std::string, json> byName;
  for (const auto& p : props) byName[p["name"]] = p;
  EXPECT_EQ(byName["U64"]["value"].get<std::uint64_t>(), UINT64_MAX);
  EXPECT_EQ(byName["S64"]["value"].get<std::int64_t>(), INT64_MIN);
  EXPECT_NE(r.out.find("18446744073709551615"), std::string::npos);
  EXPECT_EQ(byName["Span"]["type"], "datetime");
  EXPECT_EQ(byName["Span"]["value"], "00000001020304.000005:000");
  EXPECT_EQ(byName["Ref"]["type"], "reference");
  EXPECT_EQ(byName["Ref"]["value"]["keys"][0]["value"], "2");
  EXPECT_EQ(byName["BoolA"]["type"], "boolean[]");
  EXPECT_EQ(byName["BoolA"]["value"], json::array({true, false}));
  EXPECT_EQ(byName["U64A"]["type"], "uint64[]");
  EXPECT_EQ(byName["NullStr"]["value"], nullptr);
  EXPECT_EQ(props.size(), 21u);
}

TEST(ZedaCim, MofIsTheDefault) {
  const CliRun r = RunZedaCim(withModule({"--property", "U16", "ei", "ZEDA_HostTest"}));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out,
            "instance of ZEDA_HostTest {\n    InstanceID = \"1\";\n    U16 = 65535;\n};\n"
            "\ninstance of ZEDA_HostTest {\n    InstanceID = \"2\";\n    U16 = 2;\n};\n");
  const CliRun names = RunZedaCim(withModule({"ein", "ZEDA_HostTest"}));
  EXPECT_EQ(
      names.out,
      "root/cimv2:ZEDA_HostTest.InstanceID=\"1\"\nroot/cimv2:ZEDA_HostTest.InstanceID=\"2\"\n");
}

TEST(ZedaCim, XmlOutput) {
  const CliRun r = RunZedaCim(withModule(
      {"--format", "xml", "--property", "Name", "gi", "ZEDA_HostTest.InstanceID=\"1\""}));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"ZEDA_HostTest\">"),
            std::string::npos);
  EXPECT_NE(
      r.out.find(
          "<PROPERTY NAME=\"Name\" TYPE=\"string\"><VALUE>Disk &quot;one&quot; &lt;&amp;&gt; \\ end"
          "</VALUE></PROPERTY>"),
      std::string::npos)
      << r.out;
}

TEST(ZedaCim, NamespaceOption) {
  const CliRun r = RunZedaCim(withModule({"--namespace", "root/zeda", "ein", "ZEDA_HostTest"}));
  EXPECT_EQ(r.out,
            "root/zeda:ZEDA_HostTest.InstanceID=\"1\"\nroot/zeda:ZEDA_HostTest.InstanceID=\"2\"\n");
}

TEST(ZedaCim, AssociationClassHandedOverAsGivenOrNull) {
  const CliRun nullAssoc = RunZedaCim(withModule(
      {"--format", "json", "ai", "ZEDA_HostTest.InstanceID=\"1\"", "--provider", "ZEDA_HostTest"}));
  ASSERT_EQ(nullAssoc.status, 0) << nullAssoc.err;
  json doc = json::parse(nullAssoc.out);
  EXPECT_EQ(doc["operation"], "ai");
  EXPECT_EQ(doc["results"][0]["properties"][1],
            json::parse(R"({"name": "AssocClass", "type": "string", "value": null})"));

  const CliRun cased =
      RunZedaCim(withModule({"--format", "json", "associators", "ZEDA_HostTest.InstanceID=\"1\"",
                             "--assoc-class", "zeda_hosttest", "--provider", "ZEDA_HostTest",
                             "--role", "R", "--result-role", "RR", "--result-class", "C"}));
  ASSERT_EQ(cased.status, 0) << cased.err;
  doc = json::parse(cased.out);
  const json& p = doc["results"][0]["properties"];
  EXPECT_EQ(p[1]["value"], "zeda_hosttest");
  EXPECT_EQ(p[2]["value"], "C");
  EXPECT_EQ(p[3]["value"], "R");
  EXPECT_EQ(p[4]["value"], "RR");
  EXPECT_EQ(p[5]["value"], nullptr);  // no --property: a null list
}

TEST(ZedaCim, ProviderFollowsTheAssociationClass) {
  const CliRun r = RunZedaCim(
      withModule({"ain", "ZEDA_HostTest.InstanceID=\"1\"", "--assoc-class", "ZEDA_HostTest"}));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "root/cimv2:ZEDA_HostTest.InstanceID=\"2\"\n");
}

TEST(ZedaCim, NonZeroStatusExitsOne) {
  const CliRun r =
      RunZedaCim(withModule({"--format", "json", "rin", "ZEDA_HostTest.InstanceID=\"1\"",
                             "--provider", "ZEDA_HostTest"}));
  EXPECT_EQ(r.status, 1);
  const json doc = json::parse(r.out);
  EXPECT_EQ(doc["status"],
            json::parse(R"({"code": 6, "message": "reference names: nothing more"})"));
  EXPECT_EQ(doc["done"], false);
  EXPECT_EQ(doc["results"].size(), 1u);

  const CliRun mof = RunZedaCim(withModule({"gi", "ZEDA_HostTest.InstanceID=\"9\""}));
  EXPECT_EQ(mof.status, 1);
  EXPECT_EQ(mof.out, "");
  EXPECT_EQ(mof.err, "zeda-cim: CMPI_RC_ERR_NOT_FOUND (6): no such instance\n");
}

TEST(ZedaCim, ClassesListsTheFactoriesOfTheModule) {
  const CliRun r = RunZedaCim(withModule({"classes"}));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out,
            "ZEDA_HostHalf: ZEDA_HostHalfProvider_Create_InstanceMI\n"
            "ZEDA_HostRefuse: ZEDA_HostRefuseProvider_Create_InstanceMI\n"
            "ZEDA_HostTest: ZEDA_HostTestProvider_Create_AssociationMI "
            "ZEDA_HostTestProvider_Create_IndicationMI "
            "ZEDA_HostTestProvider_Create_InstanceMI ZEDA_HostTestProvider_Create_MethodMI\n");
  const CliRun j = RunZedaCim(withModule({"--format", "json", "classes"}));
  const json doc = json::parse(j.out);
  EXPECT_EQ(doc["results"].size(), 3u);
  EXPECT_EQ(doc["results"][2]["classname"], "ZEDA_HostTest");
  EXPECT_EQ(doc["results"][2]["provider"], "ZEDA_HostTestProvider");
}

TEST(ZedaCim, EnvironmentIsSetBeforeLoading) {
  // The refusing factory is reached through the provider of its class; the
  // exit status follows the factory's code.
  const CliRun r =
      RunZedaCim(withModule({"--inventory", "/tmp/inv.json", "--program-data", "/tmp/pd",
                             "--nas-trace", "/tmp/trace", "ei", "ZEDA_HostRefuse"}));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, "zeda-cim: CMPI_RC_ERR_ACCESS_DENIED (2): refused\n");
}

struct UsageCase {
  std::string label;
  std::vector<std::string> args;
  std::string message;
};

class ZedaCimUsage : public ::testing::TestWithParam<UsageCase> {};

TEST_P(ZedaCimUsage, ExitsTwoWithOneLine) {
  const UsageCase c = GetParam();
  const CliRun r = RunZedaCim(c.args);
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.out, "");
  EXPECT_EQ(lines(r.err), 1) << r.err;
  EXPECT_EQ(r.err, "zeda-cim: " + c.message + "\n");
}

std::vector<UsageCase> usageCases() {
  const std::string m = testProvider();
  return {
      {"UnknownLongOption", {"--module", m, "--bogus", "ei", "X"}, "unknown option --bogus"},
      {"UnknownShortOption", {"--module", m, "-x", "ei", "X"}, "unknown option -x"},
      {"NoOperation", {"--module", m}, "no operation given"},
      {"UnknownOperation", {"--module", m, "frobnicate", "X"}, "unknown operation frobnicate"},
      // Control characters of the user's text are shown escaped: the message stays one line.
      {"UnknownOperationWithLineBreak",
       {"--module", m, "a\nb\tc\x01", "X"},
       "unknown operation a\\nb\\tc\\x01"},
      {"MalformedPathWithLineBreak",
       {"--module", m, "ei", "ZEDA_HostTest.K=\"1\n"},
       "malformed object path at column 17: unterminated quoted value"},
      {"ClassWithKeysAndLineBreak",
       {"--module", m, "ei", "X.A=\"1\n2\""},
       "CLASS X.A=\"1\\n2\" must be a class name without keys"},
      {"MissingClass", {"--module", m, "ei"}, "ei needs a CLASS"},
      {"MissingPath", {"--module", m, "gi"}, "gi needs a PATH"},
      {"ExtraArgument", {"--module", m, "ei", "A", "B"}, "unexpected argument B"},
      {"UnknownFormat",
       {"--module", m, "--format", "yaml", "ei", "X"},
       "unknown format yaml (mof, json, xml or table)"},
      {"OptionWithoutValue",
       {"--module", m, "ei", "X", "--module"},
       "option --module needs a value"},
      {"AssociationWithoutProvider",
       {"--module", m, "ai", "ZEDA_HostTest"},
       "ai needs --assoc-class or --provider"},
      {"AssociationOptionElsewhere",
       {"--module", m, "ei", "X", "--role", "R"},
       "option --role applies to association operations only"},
      {"ResultRoleOnReferences",
       {"--module", m, "ri", "X", "--provider", "P", "--result-role", "R"},
       "option --result-role does not apply to ri"},
      {"UnterminatedQuote",
       {"--module", m, "gi", "ZEDA_HostTest.InstanceID=\"1"},
       "malformed object path at column 26: unterminated quoted value"},
      {"MissingKeyName",
       {"--module", m, "gi", "ZEDA_HostTest.=1"},
       "malformed object path at column 15: expected key name"},
      {"ClassWithKeys",
       {"--module", m, "ei", "ZEDA_HostTest.A=\"1\""},
       "CLASS ZEDA_HostTest.A=\"1\" must be a class name without keys"},
      {"ModuleNotFound",
       {"--module", "/nonexistent/module.so", "ei", "X"},
       "module not found: /nonexistent/module.so"},
      {"FactoryMissing",
       {"--module", m, "ei", "ZEDA_Nobody"},
       "factory missing: module " + m + " exports no ZEDA_NobodyProvider_Create_InstanceMI"},
      // The module prints on stderr when loaded: only zeda-cim's own line shows.
      {"ModuleWithoutFactories",
       {"--module", ZEDA_TEST_EMPTY_MODULE, "classes"},
       std::string("module ") + ZEDA_TEST_EMPTY_MODULE +
           " exports no provider factory (*_Create_*MI)"},
      {"ModuleWithoutFactoriesAnyOperation",
       {"--module", ZEDA_TEST_EMPTY_MODULE, "ei", "X"},
       std::string("module ") + ZEDA_TEST_EMPTY_MODULE +
           " exports no provider factory (*_Create_*MI)"},
      // Bytes that are not UTF-8 are shown as escapes; UTF-8 text stays as it is.
      {"BytesThatAreNotUtf8",
       {"--module", m, "--format", "y\xff\xc3(\xc3\xa9\x7f", "ei", "X"},
       "unknown format y\\xff\\xc3(\xc3\xa9\\x7f (mof, json, xml or table)"},
  };
}

INSTANTIATE_TEST_SUITE_P(Cases, ZedaCimUsage, ::testing::ValuesIn(usageCases()),
                         [](const ::testing::TestParamInfo<UsageCase>& info) {
                           return info.param.label;
                         });

// ---- results printed as they come ---------------------------------------

std::vector<std::string> withManyModule(std::vector<std::string> args) {
  args.insert(args.begin(), {"--module", ZEDA_TEST_CONCURRENT_PROVIDER});
  return args;
}

TEST(ZedaCimStreaming, JsonOfManyResultsIsOneDocumentWithEveryMember) {
  const CliRun r = RunZedaCim(withManyModule({"--format", "json", "ei", "ZEDA_HostMany"}));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "");
  const json doc = json::parse(r.out);
  EXPECT_EQ(doc.size(), 4u);
  EXPECT_EQ(doc["operation"], "ei");
  EXPECT_EQ(doc["status"], json::parse(R"({"code": 0, "message": null})"));
  EXPECT_EQ(doc["done"], true);
  ASSERT_EQ(doc["results"].size(), 500u);
  for (unsigned i = 0; i < 500; ++i) {
    const json& props = doc["results"][i]["properties"];
    EXPECT_EQ(props[0], json::parse(R"({"name": "Index", "type": "uint32", "value": )" +
                                    std::to_string(i) + "}"));
    EXPECT_EQ(props[1]["value"], "item-" + std::to_string(i));
  }
  // One result a line: printed as it comes, not as one block at the end.
  EXPECT_GE(lines(r.out), 500 + 5);
}

TEST(ZedaCimStreaming, MofAndXmlOfManyResultsAreTheWholeOutcomesText) {
  const CliRun mof = RunZedaCim(withManyModule({"ei", "ZEDA_HostMany"}));
  ASSERT_EQ(mof.status, 0) << mof.err;
  std::string expected;
  for (unsigned i = 0; i < 500; ++i) {
    if (i > 0) expected += "\n";
    expected += "instance of ZEDA_HostMany {\n    Index = " + std::to_string(i) +
                ";\n    Name = \"item-" + std::to_string(i) + "\";\n    Tag = \"\";\n};\n";
  }
  EXPECT_EQ(mof.out, expected);

  const CliRun xml = RunZedaCim(withManyModule({"--format", "xml", "ein", "ZEDA_HostMany"}));
  // The module has no enumerateInstanceNames: an empty document and the status line.
  EXPECT_EQ(xml.status, 1);
  EXPECT_EQ(xml.out,
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<IRETURNVALUE>\n</IRETURNVALUE>\n");
  EXPECT_EQ(xml.err, "zeda-cim: CMPI_RC_ERR_NOT_SUPPORTED (7)\n");

  const CliRun full = RunZedaCim(withManyModule({"--format", "xml", "ei", "ZEDA_HostMany"}));
  ASSERT_EQ(full.status, 0);
  EXPECT_EQ(
      full.out.rfind(
          "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<IRETURNVALUE>\n<VALUE.NAMEDINSTANCE>", 0),
      0u);
  EXPECT_EQ(std::count(full.out.begin(), full.out.end(), '\n'), 500 + 3);
  EXPECT_EQ(full.out.substr(full.out.size() - 17), "\n</IRETURNVALUE>\n");
}

TEST(ZedaCimStreaming, JsonWithoutResultsStaysOneDocument) {
  const CliRun r = RunZedaCim(withManyModule({"--format", "json", "ein", "ZEDA_HostMany"}));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, "");
  const json doc = json::parse(r.out);
  EXPECT_EQ(doc, json::parse(
                     R"({"operation": "ein", "status": {"code": 7, "message": null}, "done": false,
                                 "results": []})"));
}

TEST(ZedaCim, HelpGoesToStdout) {
  const CliRun r = RunZedaCim({"--help"});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out.rfind("usage: zeda-cim", 0), 0u);
}

}  // namespace
}  // namespace zeda::test
