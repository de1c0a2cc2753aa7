// PoolMembershipCounts of one disk: how often the pool-to-extent walk answers a disk.
#include <gtest/gtest.h>

#include "PoolRecords.h"
#include "providers/pools/PoolRules.h"

namespace zeda::test {
namespace {

using zeda::orvi::OrviDiskGroup;

std::vector<std::size_t> CountsForPools1To4(const zeda::orvi::OrviDisk& disk,
                                            const std::vector<OrviDiskGroup>& groups) {
  return {PoolMembershipCount(disk, groups, 1), PoolMembershipCount(disk, groups, 2),
          PoolMembershipCount(disk, groups, 3), PoolMembershipCount(disk, groups, 4)};
}

using Counts = std::vector<std::size_t>;

TEST(PoolMembershipCount, AFlagNamingThePoolGivesOneReturn) {
  EXPECT_EQ(CountsForPools1To4(Disk("0:1", 1, kFree), {}), (Counts{1, 0, 0, 0}));
  EXPECT_EQ(CountsForPools1To4(Disk("0:1", 1, kSpare), {}), (Counts{0, 0, 1, 0}));
  EXPECT_EQ(CountsForPools1To4(Disk("0:1", 1, kSsd), {}), (Counts{0, 0, 0, 1}));
  // Unlike the classification, every flag is tested for its own pool.
  EXPECT_EQ(CountsForPools1To4(Disk("0:1", 1, kFree | kSpare | kSsd), {}), (Counts{1, 0, 1, 1}));
}

TEST(PoolMembershipCount, ADataDiskNoGroupListsIsInNoPool) {
  EXPECT_EQ(CountsForPools1To4(Disk("0:5"), {Group({"0:1"}, {"0:2"})}), (Counts{0, 0, 0, 0}));
}

TEST(PoolMembershipCount, EveryMatchingEntryGivesOneReturn) {
  const std::vector<OrviDiskGroup> groups = {Group({"0:1", "0:10", "0:11"}, {"0:1"}),
                                             Group({"0:1"}, {"0:12"})};
  EXPECT_EQ(CountsForPools1To4(Disk("0:1"), groups), (Counts{0, 4, 2, 0}));
}

TEST(PoolMembershipCount, ASpareInTwoSpareListsIsReturnedTwiceUnlessFlagged) {
  const std::vector<OrviDiskGroup> groups = {Group({}, {"0:9"}), Group({}, {"0:9"})};
  EXPECT_EQ(PoolMembershipCount(Disk("0:9"), groups, 3), 2u);
  EXPECT_EQ(PoolMembershipCount(Disk("0:9", 1, kSpare), groups, 3), 1u);
}

TEST(PoolMembershipCount, FlaggedDisksAreStillFoundInTheGroupsForOtherPools) {
  const std::vector<OrviDiskGroup> groups = {Group({"0:6"}, {"0:6"})};
  EXPECT_EQ(CountsForPools1To4(Disk("0:6", 1, kSsd), groups), (Counts{0, 1, 1, 1}));
  EXPECT_EQ(CountsForPools1To4(Disk("0:6", 1, kFree), groups), (Counts{1, 1, 1, 0}));
}

TEST(PoolMembershipCount, TheGroupsOnlyEverYieldPoolsTwoAndThree) {
  const std::vector<OrviDiskGroup> groups = {Group({"0:1"}, {"0:1"})};
  EXPECT_EQ(PoolMembershipCount(Disk("0:1"), groups, 1), 0u);
  EXPECT_EQ(PoolMembershipCount(Disk("0:1"), groups, 4), 0u);
  EXPECT_EQ(PoolMembershipCount(Disk("0:1"), groups, 0), 0u);
  EXPECT_EQ(PoolMembershipCount(Disk("0:1"), groups, 5), 0u);
}

TEST(PoolMembershipCount, EntriesAreMatchedOneByOne) {
  EXPECT_EQ(PoolMembershipCount(Disk("1,0"), {Group({"0:1", "0:2"}, {})}, 2), 0u);
}

}  // namespace
}  // namespace zeda::test
