// JSON output: the document shape, every CIM type, exact integers.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "sample_values.hpp"
#include "zeda/host/format.hpp"

namespace zeda::test {

using namespace zeda::host;
using nlohmann::json;

namespace {
json prop(const char* name, const char* type, json value) {
  return json{{"name", name}, {"type", type}, {"value", std::move(value)}};
}
}  // namespace

TEST(FormatJson, DocumentShapeAndOrder) {
  Outcome out;
  out.status.code = 0;
  out.done = true;
  const std::string text = toJson("ei", out);
  EXPECT_EQ(
      json::parse(text),
      json::parse(
          R"({"operation": "ei", "status": {"code": 0, "message": null}, "done": true, "results": []})"));
  // Keys in the documented order.
  EXPECT_LT(text.find("\"operation\""), text.find("\"status\""));
  EXPECT_LT(text.find("\"status\""), text.find("\"done\""));
  EXPECT_LT(text.find("\"done\""), text.find("\"results\""));
}

TEST(FormatJson, StatusMessageAndDoneFalse) {
  Outcome out;
  out.status.code = 7;
  out.status.message = "not here";
  const json doc = json::parse(toJson("ain", out));
  EXPECT_EQ(doc["status"], json::parse(R"({"code": 7, "message": "not here"})"));
  EXPECT_EQ(doc["done"], false);
}

TEST(FormatJson, EveryType) {
  const json got = json::parse(instanceToJson(sampleInstance()));
  const json otherPath = {{"namespace", "root/cimv2"},
                          {"classname", "ZEDA_Other"},
                          {"keys", json::array({prop("ID", "string", "o\"1")})}};
  const json expected = {
      {"path",
       {{"namespace", "root/cimv2"},
        {"classname", "ZEDA_Sample"},
        {"keys", json::array({prop("InstanceID", "string", "s<1>")})}}},
      {"properties",
       json::array(
           {prop("InstanceID", "string", "s<1>"), prop("Name", "string", "Disk \"one\" & <two>"),
            prop("Flag", "boolean", true), prop("U8", "uint8", 200), prop("U16", "uint16", 65535),
            prop("U32", "uint32", 4294967295u), prop("U64", "uint64", UINT64_MAX),
            prop("S8", "sint8", -128), prop("S16", "sint16", -32768),
            prop("S32", "sint32", INT32_MIN), prop("S64", "sint64", INT64_MIN),
            prop("R32", "real32", 1.5), prop("R64", "real64", -0.25),
            prop("Stamp", "datetime", "20240229123456.789012+000"),
            prop("Ref", "reference", otherPath), prop("U16A", "uint16[]", json::array({1, 2, 3})),
            prop("StrA", "string[]", json::array({"a", "b\"c"})),
            prop("U64A", "uint64[]", json::array({UINT64_MAX, 0})),
            prop("NullStr", "string", nullptr)})}};
  EXPECT_EQ(got, expected);
}

TEST(FormatJson, Uint64IsAnExactInteger) {
  const std::string text = valueToJson(Value::uint64(UINT64_MAX));
  EXPECT_EQ(text, "18446744073709551615");
  EXPECT_EQ(valueToJson(Value::sint64(INT64_MIN)), "-9223372036854775808");
}

TEST(FormatJson, ResultsInOrderOfEveryKind) {
  Outcome out;
  out.done = true;
  out.results.emplace_back(ObjectPath(kNamespace, "ZEDA_A", {{"K", Value::string("1")}}));
  out.results.emplace_back(Instance(ObjectPath(kNamespace, "ZEDA_B")));
  out.results.emplace_back(Value::uint32(5));
  const json doc = json::parse(toJson("ein", out));
  ASSERT_EQ(doc["results"].size(), 3u);
  EXPECT_EQ(doc["results"][0], json::parse(R"({"namespace": "root/cimv2", "classname": "ZEDA_A",
      "keys": [{"name": "K", "type": "string", "value": "1"}]})"));
  EXPECT_EQ(doc["results"][1],
            json::parse(R"({"path": {"namespace": "root/cimv2", "classname": "ZEDA_B",
      "keys": []}, "properties": []})"));
  EXPECT_EQ(doc["results"][2], json::parse(R"({"type": "uint32", "value": 5})"));
}

TEST(FormatJson, BytesThatAreNotUtf8StillGiveOneDocument) {
  // A key value the client typed, handed back unchanged by a provider, can
  // hold any bytes; each byte that is not UTF-8 becomes U+FFFD.
  Outcome out;
  out.done = true;
  out.results.emplace_back(ObjectPath(kNamespace, "ZEDA_A",
                                      {{"K", Value::string("a\xff"
                                                           "b\xc3")}}));
  std::string text;
  ASSERT_NO_THROW(text = toJson("rin", out));
  const json doc = json::parse(text);
  EXPECT_EQ(doc["results"][0]["keys"][0]["value"],
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD");
  EXPECT_EQ(valueToJson(Value::string("\xfe")), "\"\xEF\xBF\xBD\"");
}

}  // namespace zeda::test
