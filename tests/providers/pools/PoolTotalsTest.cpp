// ComputePoolTotals on in-memory records: flags count once, RAID groups count
// per group and list, matched in the lists joined with ",".
#include <gtest/gtest.h>

#include "PoolRecords.h"
#include "providers/pools/PoolRules.h"

namespace zeda::test {
namespace {

using zeda::orvi::OrviDiskList;
using zeda::pelka::ComputePoolTotals;
using zeda::pelka::PoolTotals;

TEST(ComputePoolTotals, ANasWithoutDisksHasFourZeros) {
  EXPECT_EQ(ComputePoolTotals(List({})), (PoolTotals{0, 0, 0, 0}));
  EXPECT_EQ(ComputePoolTotals(List({}, {Group({"0:1"}, {"0:2"})})), (PoolTotals{0, 0, 0, 0}));
}

TEST(ComputePoolTotals, AFreeSsdCountsOnlyInTheFreePool) {
  EXPECT_EQ(ComputePoolTotals(List({Disk("0:1", 500, kFree | kSsd)})), (PoolTotals{500, 0, 0, 0}));
}

TEST(ComputePoolTotals, FlaggedDisksCountOnceWhateverTheGroupsSay) {
  const OrviDiskList list = List(
      {Disk("0:1", 100, kSsd | kSpare), Disk("0:2", 20, kSpare), Disk("0:3", 3, kFree | kSpare)},
      {Group({"0:1", "0:2", "0:3"}, {"0:1", "0:2", "0:3"})});
  EXPECT_EQ(ComputePoolTotals(list), (PoolTotals{3, 0, 20, 100}));
}

TEST(ComputePoolTotals, ASpareInTheSpareListsOfTwoGroupsCountsTwice) {
  const OrviDiskList list =
      List({Disk("0:9", 7000)}, {Group({"0:1"}, {"0:9"}), Group({"0:2"}, {"0:9"})});
  EXPECT_EQ(ComputePoolTotals(list), (PoolTotals{0, 0, 14000, 0}));
}

TEST(ComputePoolTotals, ADiskInBothListsCountsInDataAndSpare) {
  const OrviDiskList list = List({Disk("0:1", 10)}, {Group({"0:1"}, {"0:1"})});
  EXPECT_EQ(ComputePoolTotals(list), (PoolTotals{0, 10, 10, 0}));
}

TEST(ComputePoolTotals, ADiskListedInTwoDataListsCountsTwice) {
  const OrviDiskList list = List({Disk("0:1", 10)}, {Group({"0:1"}, {}), Group({"0:1"}, {})});
  EXPECT_EQ(ComputePoolTotals(list), (PoolTotals{0, 20, 0, 0}));
}

TEST(ComputePoolTotals, AnIdentifierInsideAnotherDisksEntryCounts) {
  // Only 0:10 is listed; 0:1 occurs inside "0:10" and counts as data too.
  const OrviDiskList list = List({Disk("0:1", 1), Disk("0:10", 10)}, {Group({"0:10"}, {})});
  EXPECT_EQ(ComputePoolTotals(list), (PoolTotals{0, 11, 0, 0}));
}

TEST(ComputePoolTotals, AMatchMaySpanTheCommaBetweenTwoEntries) {
  // Joined, the data list reads "0:1,0:2"; "1,0" occurs across the ",".
  const OrviDiskList list = List({Disk("1,0", 40)}, {Group({"0:1", "0:2"}, {})});
  EXPECT_EQ(ComputePoolTotals(list), (PoolTotals{0, 40, 0, 0}));
}

TEST(ComputePoolTotals, AnUnlistedDiskWithoutFlagsCountsNowhere) {
  const OrviDiskList list = List({Disk("0:5", 77)}, {Group({"0:1"}, {"0:2"})});
  EXPECT_EQ(ComputePoolTotals(list), (PoolTotals{0, 0, 0, 0}));
}

TEST(ComputePoolTotals, AnEmptyIdentifierOccursInEveryJoinedList) {
  // The empty text occurs in every text, the empty joined list included.
  const OrviDiskList list = List({Disk("", 5)}, {Group({}, {}), Group({"0:1"}, {})});
  EXPECT_EQ(ComputePoolTotals(list), (PoolTotals{0, 10, 10, 0}));
}

TEST(ComputePoolTotals, BytesAddUpAcrossAWholeNas) {
  // Hand computation, in bytes:
  //   pool 1: 0:5 (free)                               8001563222016
  //   pool 2: 0:1, 0:2 in group 1 data; 0:1 again in
  //           group 2 data (inside "0:10")             2 * 4000787030016 + 4000787030016
  //           = 12002361090048
  //   pool 3: 0:4 (spare flag) + 0:9 (in the spare lists of both groups, no flag)
  //           4000787030016 + 2 * 2000398934016       = 8001584898048
  //   pool 4: 0:6 (SSD, also listed as data: ignored)   500107862016
  //   0:7 has no flag and no entry: nowhere.
  const std::uint64_t tb4 = 4000787030016ULL;
  const OrviDiskList list =
      List({Disk("0:1", tb4), Disk("0:2", tb4), Disk("0:4", tb4, kSpare),
            Disk("0:5", 8001563222016ULL, kFree), Disk("0:6", 500107862016ULL, kSsd),
            Disk("0:7", 123), Disk("0:9", 2000398934016ULL)},
           {Group({"0:1", "0:2", "0:6"}, {"0:4", "0:9"}), Group({"0:10"}, {"0:9"})});
  EXPECT_EQ(ComputePoolTotals(list),
            (PoolTotals{8001563222016ULL, 12002361090048ULL, 8001584898048ULL, 500107862016ULL}));
}

}  // namespace
}  // namespace zeda::test
