// The value model: typed values, checked accessors, ordered keys and
// properties.
#include <gtest/gtest.h>

#include "Names.h"
#include "zeda/host/instance.hpp"
#include "zeda/host/object_path.hpp"
#include "zeda/host/value.hpp"

namespace zeda::test {

using namespace zeda::host;

TEST(Value, TypeCodesAreThoseOfTheCmpiStandard) {
  EXPECT_EQ(type::uint16, 144);
  EXPECT_EQ(type::uint64, 176);
  EXPECT_EQ(type::sint64, 240);
  EXPECT_EQ(type::real64, 12);
  EXPECT_EQ(type::string, 5632);
  EXPECT_EQ(type::ref, 4352);
  EXPECT_EQ(type::dateTime, 6144);
  EXPECT_EQ(type::array, 8192);
}

TEST(Value, TypeNames) {
  EXPECT_EQ(typeName(type::uint16), "uint16");
  EXPECT_EQ(typeName(type::array | type::uint16), "uint16[]");
  EXPECT_EQ(typeName(type::chars), "string");
  EXPECT_EQ(typeName(type::ref), "reference");
  EXPECT_EQ(typeName(type::dateTime), "datetime");
  EXPECT_EQ(typeName(type::array | type::string), "string[]");
  EXPECT_EQ(typeName(4), "unknown(4)");
}

TEST(Value, AccessorsReturnWhatWasStored) {
  EXPECT_EQ(Value::uint64(18446744073709551615ull).u(), 18446744073709551615ull);
  EXPECT_EQ(Value::uint8(200).u(), 200u);
  EXPECT_EQ(Value::sint64(INT64_MIN).s(), INT64_MIN);
  EXPECT_EQ(Value::sint8(-5).s(), -5);
  EXPECT_TRUE(Value::boolean(true).b());
  EXPECT_DOUBLE_EQ(Value::real32(1.5f).r(), 1.5);
  EXPECT_EQ(Value::string("x").str(), "x");
  EXPECT_EQ(Value::dateTime("20240229123456.789012+000").dateTimeText(),
            "20240229123456.789012+000");
  EXPECT_EQ(Value::uint16s({1, 2, 3}).uints(), (std::vector<std::uint64_t>{1, 2, 3}));
  EXPECT_EQ(Value::strings({"a", "b"}).strings(), (std::vector<std::string>{"a", "b"}));
  const ObjectPath p(kNamespace, "ZEDA_X", {{"K", Value::string("v")}});
  EXPECT_EQ(Value::reference(p).ref(), p);
}

TEST(Value, MismatchNamesBothTypes) {
  try {
    (void)Value::uint16(1).str();
    FAIL() << "no exception";
  } catch (const TypeMismatch& e) {
    EXPECT_STREQ(e.what(), "value is uint16, not string");
  }
  EXPECT_THROW((void)Value::string("1").u(), TypeMismatch);
  EXPECT_THROW((void)Value::uint16(1).s(), TypeMismatch);
  EXPECT_THROW((void)Value::uint16(1).uints(), TypeMismatch);
  EXPECT_THROW((void)Value::strings({"a"}).uints(), TypeMismatch);
  EXPECT_THROW((void)Value::null(type::string).str(), TypeMismatch);
  EXPECT_THROW(Value::array(type::uint16, {Value::string("x")}), TypeMismatch);
}

TEST(Value, NullsKeepTheirType) {
  const Value n = Value::null(type::uint32);
  EXPECT_TRUE(n.isNull());
  EXPECT_EQ(n.typeName(), "uint32");
  EXPECT_NE(n, Value::null(type::uint16));
  EXPECT_EQ(n, Value::null(type::uint32));
  EXPECT_TRUE(Value().isNull());
  EXPECT_EQ(Value().type(), type::null);
}

TEST(Value, EqualityIsDeep) {
  EXPECT_EQ(Value::uint16s({1, 2}), Value::uint16s({1, 2}));
  EXPECT_NE(Value::uint16s({1, 2}), Value::uint32s({1, 2}));
  EXPECT_NE(Value::string("a"), Value::string("b"));
}

TEST(ObjectPath, KeysKeepTheirOrderAndAddKeyReplacesInPlace) {
  ObjectPath p(kNamespace, "ZEDA_X");
  p.addKey("B", "1").addKey("A", Value::uint16(2)).addKey("b", "3");
  ASSERT_EQ(p.keyNames(), (std::vector<std::string>{"B", "A"}));
  EXPECT_EQ(p.key("B").str(), "3");
  EXPECT_EQ(p.key("a").u(), 2u);
  EXPECT_TRUE(p.hasKey("A"));
  EXPECT_FALSE(p.hasKey("C"));
  EXPECT_THROW((void)p.key("C"), NotFound);
}

TEST(Instance, PropertiesInFirstSetOrder) {
  Instance i(ObjectPath(kNamespace, "ZEDA_X"));
  i.set("Z", Value::uint16(1)).set("A", Value::string("a")).set("z", Value::uint16(2));
  EXPECT_EQ(i.names(), (std::vector<std::string>{"Z", "A"}));
  EXPECT_EQ(i.property("Z").u(), 2u);
  EXPECT_TRUE(i.has("a"));
  try {
    (void)i.property("Missing");
    FAIL();
  } catch (const NotFound& e) {
    EXPECT_STREQ(e.what(), "instance of ZEDA_X has no property Missing");
  }
}

}  // namespace zeda::test
