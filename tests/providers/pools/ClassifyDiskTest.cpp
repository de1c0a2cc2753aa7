// The extent-to-pool rule (PoolOfDisk) for one disk on in-memory records: flags first, then the
// per-entry walk over the RAID groups where the last match wins.
#include <gtest/gtest.h>

#include "PoolRecords.h"
#include "providers/pools/PoolRules.h"

namespace zeda::test {
namespace {

using zeda::orvi::OrviDiskGroup;

const std::vector<OrviDiskGroup> kNoGroups;

TEST(ClassifyDisk, FreeFlagWinsOverEveryOtherFlag) {
  EXPECT_EQ(ClassifyDisk(Disk("0:1", 1, kFree | kSsd | kSpare), kNoGroups), 1);
  EXPECT_EQ(ClassifyDisk(Disk("0:1", 1, kFree | kSsd), kNoGroups), 1);
  EXPECT_EQ(ClassifyDisk(Disk("0:1", 1, kFree | kSpare), kNoGroups), 1);
}

TEST(ClassifyDisk, SsdFlagComesBeforeSpareFlag) {
  EXPECT_EQ(ClassifyDisk(Disk("0:1", 1, kSsd | kSpare), kNoGroups), 4);
  EXPECT_EQ(ClassifyDisk(Disk("0:1", 1, kSsd), kNoGroups), 4);
  EXPECT_EQ(ClassifyDisk(Disk("0:1", 1, kSpare), kNoGroups), 3);
}

TEST(ClassifyDisk, FlagsDecideWithoutLookingAtTheGroups) {
  const std::vector<OrviDiskGroup> groups = {Group({"0:1"}, {})};
  EXPECT_EQ(ClassifyDisk(Disk("0:1", 1, kSpare), groups), 3);
  EXPECT_EQ(ClassifyDisk(Disk("0:1", 1, kSsd), groups), 4);
}

TEST(ClassifyDisk, DiskInNoGroupAndWithoutFlagsIsInNoPool) {
  EXPECT_EQ(ClassifyDisk(Disk("0:5"), kNoGroups), 0);
  EXPECT_EQ(ClassifyDisk(Disk("0:5"), {Group({"0:1", "0:2"}, {"0:3"}), Group({}, {})}), 0);
}

TEST(ClassifyDisk, DataAndSpareEntriesOfTheGroups) {
  EXPECT_EQ(ClassifyDisk(Disk("0:2"), {Group({"0:1", "0:2"}, {"0:3"})}), 2);
  EXPECT_EQ(ClassifyDisk(Disk("0:3"), {Group({"0:1", "0:2"}, {"0:3"})}), 3);
}

TEST(ClassifyDisk, WithinAGroupTheDataListIsTestedAfterTheSpareList) {
  EXPECT_EQ(ClassifyDisk(Disk("0:1"), {Group({"0:1"}, {"0:1"})}), 2);
}

TEST(ClassifyDisk, TheLastMatchingGroupWins) {
  EXPECT_EQ(ClassifyDisk(Disk("0:1"), {Group({}, {"0:1"}), Group({"0:1"}, {})}), 2);
  EXPECT_EQ(ClassifyDisk(Disk("0:1"), {Group({"0:1"}, {}), Group({}, {"0:1"})}), 3);
  EXPECT_EQ(ClassifyDisk(Disk("0:1"), {Group({"0:1"}, {}), Group({"0:9"}, {"0:8"})}), 2);
}

TEST(ClassifyDisk, AnIdentifierMatchesEveryEntryThatContainsIt) {
  // 0:1 is not listed, but 0:10 is: the substring test finds it there.
  EXPECT_EQ(ClassifyDisk(Disk("0:1"), {Group({"0:10"}, {})}), 2);
  EXPECT_EQ(ClassifyDisk(Disk("0:1"), {Group({}, {"0:10"})}), 3);
  // The converse does not hold.
  EXPECT_EQ(ClassifyDisk(Disk("0:10"), {Group({"0:1"}, {})}), 0);
}

TEST(ClassifyDisk, EntriesAreMatchedOneByOneNeverAcrossTheirBoundary) {
  // "1,0" occurs in the joined text "0:1,0:2" but in no single entry.
  EXPECT_EQ(ClassifyDisk(Disk("1,0"), {Group({"0:1", "0:2"}, {})}), 0);
}

TEST(ClassifyDisk, AnEmptyIdentifierMatchesEveryEntryButNoEmptyList) {
  EXPECT_EQ(ClassifyDisk(Disk(""), {Group({"x"}, {}), Group({}, {"y"})}), 3);
  EXPECT_EQ(ClassifyDisk(Disk(""), {Group({}, {"y"}), Group({"x"}, {})}), 2);
  EXPECT_EQ(ClassifyDisk(Disk(""), {Group({}, {})}), 0);
}

}  // namespace
}  // namespace zeda::test
