// The table format: one bordered table per class, a column per property or
// key, the cells' text, and what a table does with awkward content.
#include <gtest/gtest.h>

#include "sample_values.hpp"
#include "zeda/host/format.hpp"

namespace zeda::test {

using namespace zeda::host;

namespace {

std::vector<ResultItem> items(std::vector<Instance> instances) {
  std::vector<ResultItem> out;
  for (auto& i : instances) out.emplace_back(std::move(i));
  return out;
}

ObjectPath diskPath(const std::string& id) {
  return ObjectPath(kNamespace, "ZEDA_Disk", {{"DeviceID", Value::string(id)}});
}

}  // namespace

TEST(FormatTable, CellsOfEveryType) {
  EXPECT_EQ(tableCell(Value::string("Disk \"one\"")), "\"Disk \\\"one\\\"\"");
  EXPECT_EQ(tableCell(Value::boolean(true)), "TRUE");
  EXPECT_EQ(tableCell(Value::uint64(UINT64_MAX)), "18446744073709551615");
  EXPECT_EQ(tableCell(Value::sint8(-128)), "-128");
  EXPECT_EQ(tableCell(Value::real64(-0.25)), "-0.25");
  EXPECT_EQ(tableCell(Value::dateTime("20240229123456.789012+000")),
            "\"20240229123456.789012+000\"");
  EXPECT_EQ(tableCell(Value::null(type::string)), "NULL");
  EXPECT_EQ(tableCell(Value::null(static_cast<TypeCode>(type::array | type::uint16))), "NULL");
  EXPECT_EQ(tableCell(Value::uint16s({1, 2})), "{1, 2}");
  EXPECT_EQ(tableCell(Value::uint16s({})), "{}");
  EXPECT_EQ(tableCell(Value::strings({"a", "b,c"})), "{\"a\", \"b,c\"}");
  // A reference is its path as the MOF output of paths prints it, unquoted.
  EXPECT_EQ(tableCell(Value::reference(diskPath("d\"1"))),
            "root/cimv2:ZEDA_Disk.DeviceID=\"d\\\"1\"");
  EXPECT_EQ(tableCell(Value::array(
                type::ref, {Value::reference(diskPath("1")), Value::reference(diskPath("2"))})),
            "{root/cimv2:ZEDA_Disk.DeviceID=\"1\", root/cimv2:ZEDA_Disk.DeviceID=\"2\"}");
  // An embedded instance: its MOF on one line.
  EXPECT_EQ(tableCell(Value::instance(
                Instance(diskPath("1"), {{"A", Value::uint8(1)}, {"B", Value::string("x")}}))),
            "instance of ZEDA_Disk { A = 1; B = \"x\"; }");
}

TEST(FormatTable, StringsWithLineBreaksStayOnOneLine) {
  EXPECT_EQ(tableCell(Value::string("two\nlines\tand\r\x01")), "\"two\\nlines\\tand\\r\\x01\"");
  const std::string t =
      toTable(items({Instance(diskPath("1"), {{"Note", Value::string("a\nb")}})}));
  EXPECT_EQ(t,
            "Instances of root/cimv2:ZEDA_Disk\n"
            "+--------+\n"
            "| Note   |\n"
            "+--------+\n"
            "| \"a\\nb\" |\n"
            "+--------+\n");
}

TEST(FormatTable, OneRowPerInstanceOneColumnPerProperty) {
  const std::string t = toTable(
      items({Instance(diskPath("ZEDA:nas1:DISK1"), {{"DeviceID", Value::string("ZEDA:nas1:DISK1")},
                                                    {"OperationalStatus", Value::uint16s({2})},
                                                    {"Capacity", Value::uint64(1000000)}}),
             Instance(diskPath("ZEDA:nas1:DISK2"), {{"DeviceID", Value::string("ZEDA:nas1:DISK2")},
                                                    {"OperationalStatus", Value::uint16s({6, 2})},
                                                    {"Capacity", Value::null(type::uint64)}})}));
  EXPECT_EQ(t,
            "Instances of root/cimv2:ZEDA_Disk\n"
            "+-------------------+-------------------+----------+\n"
            "| DeviceID          | OperationalStatus | Capacity |\n"
            "+-------------------+-------------------+----------+\n"
            "| \"ZEDA:nas1:DISK1\" | {2}               | 1000000  |\n"
            "| \"ZEDA:nas1:DISK2\" | {6, 2}            | NULL     |\n"
            "+-------------------+-------------------+----------+\n");
}

TEST(FormatTable, DifferentPropertySetsMakeTheUnionOfColumnsInFirstSeenOrder) {
  const std::string t =
      toTable(items({Instance(diskPath("1"), {{"A", Value::uint8(1)}, {"B", Value::uint8(2)}}),
                     Instance(diskPath("2"), {{"C", Value::uint8(3)}, {"b", Value::uint8(4)}}),
                     Instance(diskPath("3"), {})}));
  // B and b are one column: CIM names do not depend on case.
  EXPECT_EQ(t,
            "Instances of root/cimv2:ZEDA_Disk\n"
            "+---+---+---+\n"
            "| A | B | C |\n"
            "+---+---+---+\n"
            "| 1 | 2 |   |\n"
            "|   | 4 | 3 |\n"
            "|   |   |   |\n"
            "+---+---+---+\n");
}

TEST(FormatTable, OneTablePerClassInTheOrderOfTheirFirstInstance) {
  const std::string t =
      toTable(items({Instance(diskPath("1"), {{"A", Value::uint8(1)}}),
                     Instance(ObjectPath("root/zeda", "ZEDA_Pool"), {{"P", Value::boolean(true)}}),
                     Instance(ObjectPath(kNamespace, "zeda_disk"), {{"A", Value::uint8(2)}})}));
  EXPECT_EQ(t,
            "Instances of root/cimv2:ZEDA_Disk\n"
            "+---+\n"
            "| A |\n"
            "+---+\n"
            "| 1 |\n"
            "| 2 |\n"
            "+---+\n"
            "\n"
            "Instances of root/zeda:ZEDA_Pool\n"
            "+------+\n"
            "| P    |\n"
            "+------+\n"
            "| TRUE |\n"
            "+------+\n");
}

TEST(FormatTable, InstancesWithoutPropertiesStillShowTheirRows) {
  EXPECT_EQ(toTable(items({Instance(diskPath("1")), Instance(diskPath("2"))})),
            "Instances of root/cimv2:ZEDA_Disk\n"
            "+-----------------+\n"
            "| (no properties) |\n"
            "+-----------------+\n"
            "|                 |\n"
            "|                 |\n"
            "+-----------------+\n");
}

TEST(FormatTable, InstanceNamesHaveAColumnPerKey) {
  std::vector<ResultItem> r;
  r.emplace_back(ObjectPath(kNamespace, "ZEDA_Ext",
                            {{"SystemName", Value::string("ZEDA:nas1")},
                             {"DeviceID", Value::string("ZEDA:nas1:DiskExtent0:1")}}));
  r.emplace_back(ObjectPath(kNamespace, "ZEDA_Ext", {{"DeviceID", Value::string("x")}}));
  r.emplace_back(ObjectPath(kNamespace, "ZEDA_Single"));
  EXPECT_EQ(toTable(r),
            "Instance names of root/cimv2:ZEDA_Ext\n"
            "+-------------+---------------------------+\n"
            "| SystemName  | DeviceID                  |\n"
            "+-------------+---------------------------+\n"
            "| \"ZEDA:nas1\" | \"ZEDA:nas1:DiskExtent0:1\" |\n"
            "|             | \"x\"                       |\n"
            "+-------------+---------------------------+\n"
            "\n"
            "Instance names of root/cimv2:ZEDA_Single\n"
            "+-----------+\n"
            "| (no keys) |\n"
            "+-----------+\n"
            "|           |\n"
            "+-----------+\n");
}

TEST(FormatTable, PlainValuesHaveTheirType) {
  std::vector<ResultItem> r;
  r.emplace_back(Value::uint32(7));
  r.emplace_back(Value::strings({"a"}));
  EXPECT_EQ(toTable(r),
            "Values\n"
            "+----------+-------+\n"
            "| Type     | Value |\n"
            "+----------+-------+\n"
            "| uint32   | 7     |\n"
            "| string[] | {\"a\"} |\n"
            "+----------+-------+\n");
}

TEST(FormatTable, AnEmptyAnswerIsNoText) { EXPECT_EQ(toTable({}), ""); }

TEST(FormatTable, EveryTypeOfTheSampleInstanceIsOneCell) {
  const std::string t = toTable(items({sampleInstance()}));
  EXPECT_EQ(t.substr(0, t.find('\n', t.find('\n') + 1) + 1),
            "Instances of root/cimv2:ZEDA_Sample\n"
            "+------------+------------------------+------+-----+-------+------------+"
            "----------------------+------+--------+-------------+----------------------+-----+"
            "-------+-----------------------------+---------------------------------+"
            "-----------+---------------+---------------------------+---------+\n");
  EXPECT_NE(t.find("| \"s<1>\"     | \"Disk \\\"one\\\" & <two>\" | TRUE | 200 | 65535 |"),
            std::string::npos)
      << t;
  EXPECT_NE(t.find("| root/cimv2:ZEDA_Other.ID=\"o\\\"1\" | {1, 2, 3} | {\"a\", \"b\\\"c\"} | "
                   "{18446744073709551615, 0} | NULL    |\n"),
            std::string::npos)
      << t;
}

TEST(FormatTable, WideCharactersTakeTwoColumnsAndCellsAreNeverCut) {
  const std::string longText(120, 'x');
  EXPECT_EQ(textTable({"N", "Long"}, {{"\xE7\xA3\x81\xE7\x9B\xA4", longText}, {"\xC3\xA9", "y"}}),
            "+------+" + std::string(122, '-') + "+\n" + "| N    | Long" + std::string(116, ' ') +
                " |\n" + "+------+" + std::string(122, '-') + "+\n" +
                "| \xE7\xA3\x81\xE7\x9B\xA4 | " + longText + " |\n" + "| \xC3\xA9    | y" +
                std::string(119, ' ') + " |\n" + "+------+" + std::string(122, '-') + "+\n");
}

TEST(FormatTable, BytesThatAreNotUtf8AndControlCharactersAreReplaced) {
  // U+FFFD is in the wide range: two columns, so the header is as wide as the
  // seven columns of \x1B[1m with five spaces.
  EXPECT_EQ(textTable({"a\xFF"}, {{"\x1b[1m"}}),
            "+---------+\n"
            "| a\xEF\xBF\xBD      |\n"
            "+---------+\n"
            "| \\x1B[1m |\n"
            "+---------+\n");
}

TEST(FormatTable, AHeaderWithoutRowsHasNoClosingRule) {
  EXPECT_EQ(textTable({"A", "BB"}, {}), "+---+----+\n| A | BB |\n+---+----+\n");
}

}  // namespace zeda::test
