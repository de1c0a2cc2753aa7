// Parsing and printing of the untyped WBEM URI form of object paths.
#include <gtest/gtest.h>

#include "zeda/host/wbem_uri.hpp"

namespace zeda::test {

using namespace zeda::host;

TEST(WbemUri, BareClassGetsTheDefaultNamespace) {
  const ObjectPath p = parseObjectPath("ZEDA_DiskDrive");
  EXPECT_EQ(p.nameSpace(), "root/cimv2");
  EXPECT_EQ(p.className(), "ZEDA_DiskDrive");
  EXPECT_TRUE(p.keys().empty());
  EXPECT_EQ(parseObjectPath("ZEDA_X", "root/zeda").nameSpace(), "root/zeda");
}

TEST(WbemUri, NamespaceAndKeysInOrder) {
  const ObjectPath p = parseObjectPath(
      R"(root/interop:ZEDA_DiskDrive.SystemName="ZEDA:nas1",DeviceID="nas1:DISK1")");
  EXPECT_EQ(p.nameSpace(), "root/interop");
  EXPECT_EQ(p.className(), "ZEDA_DiskDrive");
  ASSERT_EQ(p.keyNames(), (std::vector<std::string>{"SystemName", "DeviceID"}));
  EXPECT_EQ(p.key("SystemName").str(), "ZEDA:nas1");
  EXPECT_EQ(p.key("DeviceID").str(), "nas1:DISK1");
}

TEST(WbemUri, EscapesInsideValues) {
  const ObjectPath p = parseObjectPath(R"(ZEDA_X.K="a\"b\\c")");
  EXPECT_EQ(p.key("K").str(), R"(a"b\c)");
  EXPECT_EQ(formatObjectPath(p), R"(root/cimv2:ZEDA_X.K="a\"b\\c")");
}

TEST(WbemUri, UnquotedNumbersAndBooleans) {
  const ObjectPath p = parseObjectPath("ZEDA_X.A=12,B=-3,C=true");
  EXPECT_EQ(p.key("A"), Value::uint64(12));
  EXPECT_EQ(p.key("B"), Value::sint64(-3));
  EXPECT_EQ(p.key("C"), Value::boolean(true));
  EXPECT_EQ(formatObjectPath(p), "root/cimv2:ZEDA_X.A=12,B=-3,C=TRUE");
}

TEST(WbemUri, QuotedPathWithKeysIsAReference) {
  const ObjectPath p =
      parseObjectPath(R"(ZEDA_A.Dependent="root/cimv2:ZEDA_D.ID=\"1\"",Name="x.y")");
  ASSERT_EQ(p.key("Dependent").type(), type::ref);
  EXPECT_EQ(p.key("Dependent").ref().className(), "ZEDA_D");
  EXPECT_EQ(p.key("Dependent").ref().key("ID").str(), "1");
  EXPECT_EQ(p.key("Name").type(), type::string);
  EXPECT_EQ(formatObjectPath(p),
            R"(root/cimv2:ZEDA_A.Dependent="root/cimv2:ZEDA_D.ID=\"1\"",Name="x.y")");
}

TEST(WbemUri, RoundTrip) {
  const std::string text =
      R"(root/cimv2:ZEDA_DiskDrive.SystemName="ZEDA:nas1",DeviceID="nas1:DISK1")";
  EXPECT_EQ(formatObjectPath(parseObjectPath(text)), text);
}

struct Malformed {
  const char* text;
  std::size_t column;
  const char* why;
};

class WbemUriMalformed : public ::testing::TestWithParam<Malformed> {};

TEST_P(WbemUriMalformed, NamesTheColumn) {
  const Malformed m = GetParam();
  try {
    parseObjectPath(m.text);
    FAIL() << "accepted " << m.text;
  } catch (const UriError& e) {
    EXPECT_EQ(e.column(), m.column) << e.what();
    EXPECT_EQ(std::string(e.what()),
              "malformed object path at column " + std::to_string(m.column) + ": " + m.why);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, WbemUriMalformed,
    ::testing::Values(
        Malformed{"", 1, "expected class name"}, Malformed{"1ZEDA", 1, "expected class name"},
        Malformed{"root/cimv2:", 12, "expected class name"},
        Malformed{":ZEDA_X", 1, "empty namespace before ':'"},
        Malformed{"ZEDA_X.", 8, "expected key name"},
        Malformed{"ZEDA_X.K", 9, "expected '=' after key name K"},
        Malformed{"ZEDA_X.K=", 10, "expected a key value"},
        Malformed{R"(ZEDA_X.K="abc)", 10, "unterminated quoted value"},
        Malformed{R"(ZEDA_X.K="a\nb")", 12, "invalid escape \\n"},
        Malformed{R"(ZEDA_X.K="a"x)", 13, "expected ',' or end of path after a key value"},
        Malformed{R"(ZEDA_X.K="a",K="b")", 14, "duplicate key K"},
        Malformed{"ZEDA_X.K=abc", 10, "unquoted key value must be an integer, TRUE or FALSE"},
        Malformed{"ZEDA X", 5, "expected '.' or end of path after the class name"}),
    [](const ::testing::TestParamInfo<Malformed>& info) {
      return "Case" + std::to_string(info.index);
    });

}  // namespace zeda::test
