// The JSON text writer: every value gives valid JSON that reads back to it.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "zeda/host/format.hpp"

namespace zeda::test {

using namespace zeda::host;
using nlohmann::json;

TEST(JsonText, RealsReadBackAsRealsAndNonNumbersAsNull) {
  EXPECT_EQ(valueToJson(Value::real64(3.0)), "3.0");
  EXPECT_TRUE(json::parse(valueToJson(Value::real64(3.0))).is_number_float());
  EXPECT_EQ(valueToJson(Value::real64(-0.25)), "-0.25");
  EXPECT_EQ(valueToJson(Value::real32(1.1f)), "1.1");
  EXPECT_EQ(json::parse(valueToJson(Value::real64(1e300))).get<double>(), 1e300);
  EXPECT_EQ(valueToJson(Value::real64(std::numeric_limits<double>::quiet_NaN())), "null");
  EXPECT_EQ(valueToJson(Value::real64(-std::numeric_limits<double>::infinity())), "null");
}

TEST(JsonText, StringsEscapeQuotesBackslashesAndControlCharacters) {
  const std::string text =
      std::string("a\"b\\c\nd\te\x01\x1f", 11) + std::string(1, '\0') + "\xc3\xa9";
  const std::string written = valueToJson(Value::string(text));
  EXPECT_EQ(written, "\"a\\\"b\\\\c\\nd\\te\\u0001\\u001f\\u0000\xc3\xa9\"");
  EXPECT_EQ(json::parse(written).get<std::string>(), text);
  EXPECT_EQ(jsonQuote("x\xe2\x82"), "\"x\xEF\xBF\xBD\"");  // a cut-off sequence
}

TEST(JsonText, TypedValuesAndStatus) {
  EXPECT_EQ(json::parse(typedValueToJson(Value::uint16s({1, 2}))),
            json::parse(R"({"type": "uint16[]", "value": [1, 2]})"));
  EXPECT_EQ(json::parse(typedValueToJson(Value::null(type::dateTime))),
            json::parse(R"({"type": "datetime", "value": null})"));
  EXPECT_EQ(json::parse(typedValueToJson(Value())),
            json::parse(R"({"type": "null", "value": null})"));
  Status st;
  st.code = 6;
  st.message = "no \"such\" thing";
  EXPECT_EQ(json::parse(statusToJson(st)),
            json::parse(R"({"code": 6, "message": "no \"such\" thing"})"));
}

TEST(JsonText, Utf8LengthTellsWellFormedSequencesFromOtherBytes) {
  EXPECT_EQ(utf8Length("a", 0), 1u);
  EXPECT_EQ(utf8Length("\xc3\xa9", 0), 2u);
  EXPECT_EQ(utf8Length("\xe2\x82\xac", 0), 3u);
  EXPECT_EQ(utf8Length("\xf0\x9f\x98\x80", 0), 4u);
  EXPECT_EQ(utf8Length("\xff", 0), 0u);
  EXPECT_EQ(utf8Length("\xc0\xaf", 0), 0u);      // overlong
  EXPECT_EQ(utf8Length("\xed\xa0\x80", 0), 0u);  // surrogate
  EXPECT_EQ(utf8Length("\xe2\x82", 0), 0u);      // cut off
}

}  // namespace zeda::test
