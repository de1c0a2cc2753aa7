// The pool table, pool InstanceID parsing, extent key parsing and the look-up
// of an extent's pool, on in-memory values.
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "PoolRecords.h"
#include "providers/pools/ExtentKey.h"
#include "providers/pools/PoolInstanceId.h"
#include "providers/pools/PoolRules.h"
#include "providers/pools/PoolTable.h"

namespace zeda::test {
namespace {

using zeda::pelka::FindPool;
using zeda::pelka::ParseExtentKey;
using zeda::pelka::ParsePoolInstanceId;
using zeda::pelka::PoolInstanceIdParts;
using zeda::pelka::PoolKind;
using zeda::pelka::PoolOfDisk;

// The message of the exception of type E that `call` throws; fails the test
// when it throws nothing or something else.
template <class E, class Call>
std::string MessageOf(Call call) {
  try {
    call();
  } catch (const E& e) {
    return e.what();
  } catch (const std::exception& e) {
    return std::string("other exception: ") + e.what();
  }
  return "no exception";
}

TEST(PoolTable, FourPoolsWithTheirWordsUsageAndRemainingSpace) {
  struct Row {
    int number;
    std::string poolId, suffix, elementName;
    std::uint16_t usage;
    std::uint64_t remainingOf1000;
  };
  const std::vector<Row> rows = {{1, "PrimordialPool1", ":PrimordialPool1", "Free", 2, 1000},
                                 {2, "PrimordialPool2", ":PrimordialPool2", "Data", 1, 0},
                                 {3, "PrimordialPool3", ":PrimordialPool3", "Spare", 1, 0},
                                 {4, "PrimordialPool4", ":PrimordialPool4", "Cache", 1, 0}};
  for (const Row& row : rows) {
    const PoolKind* pool = FindPool(row.number);
    ASSERT_NE(pool, nullptr) << row.number;
    EXPECT_EQ(pool->number, row.number);
    EXPECT_EQ(pool->poolId, row.poolId);
    EXPECT_EQ(pool->instanceIdSuffix, row.suffix);
    EXPECT_EQ(pool->elementName, row.elementName);
    EXPECT_EQ(pool->usage, row.usage);
    EXPECT_EQ(zeda::pelka::RemainingManagedSpace(*pool, 1000), row.remainingOf1000);
    EXPECT_EQ(zeda::pelka::PoolInstanceId("ZEDA:nas1", *pool), "ZEDA:nas1" + row.suffix);
  }
  EXPECT_EQ(FindPool(0), nullptr);
  EXPECT_EQ(FindPool(5), nullptr);
  EXPECT_EQ(FindPool(-1), nullptr);
}

void ExpectParts(const std::string& instanceId, const std::string& systemName,
                 const std::string& nasName, int poolNumber) {
  const PoolInstanceIdParts parts = ParsePoolInstanceId(instanceId);
  EXPECT_EQ(parts.systemName, systemName) << instanceId;
  EXPECT_EQ(parts.nasName, nasName) << instanceId;
  EXPECT_EQ(parts.poolNumber, poolNumber) << instanceId;
}

TEST(ParsePoolInstanceId, SystemNameNasNameAndPoolNumber) {
  ExpectParts("ZEDA:nas1:PrimordialPool2", "ZEDA:nas1", "nas1", 2);
  ExpectParts("ZEDA:nas-edge:PrimordialPool4", "ZEDA:nas-edge", "nas-edge", 4);
}

TEST(ParsePoolInstanceId, ANumberOutsideOneToFourIsNotRejected) {
  ExpectParts("ZEDA:nas1:PrimordialPool7", "ZEDA:nas1", "nas1", 7);
  ExpectParts("ZEDA:nas1:PrimordialPool0", "ZEDA:nas1", "nas1", 0);
  ExpectParts("ZEDA:nas1:PrimordialPool-3", "ZEDA:nas1", "nas1", -3);
}

TEST(ParsePoolInstanceId, TheNumberIsTheLeadingIntegerFifteenCharactersAfterTheLastColon) {
  ExpectParts("ZEDA:nas1:PrimordialPool2x", "ZEDA:nas1", "nas1", 2);
  ExpectParts("ZEDA:nas1:PrimordialPool 3", "ZEDA:nas1", "nas1", 3);
  ExpectParts("ZEDA:nas1:PrimordialPool0012", "ZEDA:nas1", "nas1", 12);
  // The 14 characters in between are not read.
  ExpectParts("ZEDA:nas1:abcdefghijklmn3", "ZEDA:nas1", "nas1", 3);
}

TEST(ParsePoolInstanceId, TheNasNameLiesBetweenTheFirstAndTheLastColon) {
  ExpectParts("ZEDA:a:b:PrimordialPool3", "ZEDA:a:b", "a:b", 3);
  ExpectParts("X:nas1:PrimordialPool1", "X:nas1", "nas1", 1);
}

TEST(ParsePoolInstanceId, WithOneColonTheNasNameIsTheRestOfTheText) {
  // First and last ":" coincide; the length L - F - 1 wraps around to "all".
  ExpectParts("ZEDA:PrimordialPool1", "ZEDA", "PrimordialPool1", 1);
  ExpectParts(":PrimordialPool4", "", "PrimordialPool4", 4);
}

TEST(ParsePoolInstanceId, WithoutColonTheNumberIsReadFromPosition14) {
  // npos + 15 wraps around to 14; the NAS name and system name are the whole
  // text.
  ExpectParts("InstanceID_SPP5", "InstanceID_SPP5", "InstanceID_SPP5", 5);
}

TEST(ParsePoolInstanceId, ThePlaceholderInstanceIdHasAnEmptyNumberText) {
  EXPECT_EQ(MessageOf<std::invalid_argument>([] { ParsePoolInstanceId("InstanceID_SPP"); }),
            "invalid stoi argument");
}

TEST(ParsePoolInstanceId, ANumberTextWithoutDigitsIsAnInvalidStoiArgument) {
  EXPECT_EQ(
      MessageOf<std::invalid_argument>([] { ParsePoolInstanceId("ZEDA:nas1:PrimordialPool"); }),
      "invalid stoi argument");
  EXPECT_EQ(
      MessageOf<std::invalid_argument>([] { ParsePoolInstanceId("ZEDA:nas1:PrimordialPoolX"); }),
      "invalid stoi argument");
}

TEST(ParsePoolInstanceId, ATextEndingBeforeTheNumberIsAnInvalidStringPosition) {
  for (const char* id :
       {"ZEDA:nas1:PrimordialPoo", "ZEDA:nas1", "ZEDA:nas1:", "InstanceID_SP", ""}) {
    EXPECT_EQ(MessageOf<std::out_of_range>([id] { ParsePoolInstanceId(id); }),
              "invalid string position")
        << id;
  }
}

TEST(ParsePoolInstanceId, ANumberBeyondIntIsOutOfRange) {
  EXPECT_EQ(MessageOf<std::out_of_range>(
                [] { ParsePoolInstanceId("ZEDA:nas1:PrimordialPool99999999999"); }),
            "stoi argument out of range");
}

TEST(ParseExtentKey, NasNameAndDiskIdentifier) {
  const auto parts = ParseExtentKey("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:3");
  EXPECT_EQ(parts.nasName, "nas1");
  EXPECT_EQ(parts.diskId, "0:3");
}

TEST(ParseExtentKey, TheNasNameFollowsTheLastColonOrIsTheWholeSystemName) {
  EXPECT_EQ(ParseExtentKey("A:B:nas2", "DiskExtent7").nasName, "nas2");
  EXPECT_EQ(ParseExtentKey("nas3", "DiskExtent7").nasName, "nas3");
}

TEST(ParseExtentKey, TheIdentifierFollowsTheLastDiskExtent) {
  EXPECT_EQ(ParseExtentKey("ZEDA:n", "ZEDA:DiskExtentX:DiskExtent0:10").diskId, "0:10");
  EXPECT_EQ(ParseExtentKey("ZEDA:n", "ZEDA:n:DiskExtent").diskId, "");
}

TEST(ParseExtentKey, WithoutDiskExtentTheIdentifierStartsAtPosition9) {
  EXPECT_EQ(ParseExtentKey("ZEDA:nas1", "ZEDA:nas1:DISK0:3").diskId, ":DISK0:3");
  EXPECT_EQ(ParseExtentKey("ZEDA:nas1", "123456789").diskId, "");
  EXPECT_EQ(MessageOf<std::out_of_range>([] { ParseExtentKey("ZEDA:nas1", "12345678"); }),
            "invalid string position");
}

TEST(PoolOfDisk, TheRecordWithTheIdentifierIsClassified) {
  const auto list =
      List({Disk("0:1", 1, kFree), Disk("0:2"), Disk("0:3", 1, kSsd)}, {Group({"0:2"}, {})});
  EXPECT_EQ(PoolOfDisk(list, "0:1"), 1);
  EXPECT_EQ(PoolOfDisk(list, "0:2"), 2);
  EXPECT_EQ(PoolOfDisk(list, "0:3"), 4);
  EXPECT_EQ(PoolOfDisk(list, "0:4"), 0);
  EXPECT_EQ(PoolOfDisk(List({}), "0:1"), 0);
}

TEST(PoolOfDisk, IdentifiersCompareWithoutRegardToCase) {
  const auto list = List({Disk("ab:1", 1, kSpare)});
  EXPECT_EQ(PoolOfDisk(list, "AB:1"), 3);
  EXPECT_EQ(PoolOfDisk(list, "aB:1"), 3);
  // Whole identifiers only: no prefix or substring match here.
  EXPECT_EQ(PoolOfDisk(list, "ab:"), 0);
  EXPECT_EQ(PoolOfDisk(list, "ab:10"), 0);
}

TEST(PoolOfDisk, TheLastEqualRecordWithAPoolDecides) {
  EXPECT_EQ(PoolOfDisk(List({Disk("d", 1, kFree), Disk("D", 1, kSpare)}), "d"), 3);
  // A later equal record in no pool leaves the earlier pool in place.
  EXPECT_EQ(PoolOfDisk(List({Disk("d", 1, kSsd), Disk("D")}), "d"), 4);
}

}  // namespace
}  // namespace zeda::test
