#include <gtest/gtest.h>

#include "ModelInventories.h"
#include "model/InventoryIndex.h"

namespace zeda::test {
namespace {

using zeda::redfish::model::IndexNas;
using zeda::redfish::model::NasIndex;

zeda::orvi::OrviDiskList DiskListOf(const zeda::pelka::platform::NasRecord& nas) {
  zeda::orvi::OrviDiskList list;
  for (const auto& record : nas.disks) list.disks.push_back(record.disk);
  list.groups = nas.groups;
  return list;
}

std::vector<std::string> IdsAt(const NasIndex& index, const std::vector<std::size_t>& positions) {
  std::vector<std::string> ids;
  for (const std::size_t d : positions) ids.push_back(index.disks[d].id);
  return ids;
}

TEST(RedfishInventoryIndex, PoolsOfTheExampleNas) {
  const NasIndex index = IndexNas(nullptr, "nas1", DiskListOf(ExampleNas1()));
  EXPECT_EQ(index.segment, "nas1");
  ASSERT_EQ(index.disks.size(), 8u);
  using Ids = std::vector<std::string>;
  // The pool-to-extent walks of the CIM model: flags, and every group entry
  // holding the identifier (so the SSDs of a data group are data disks too).
  EXPECT_EQ(IdsAt(index, index.poolMembers[0]), Ids({"0:5"}));
  EXPECT_EQ(IdsAt(index, index.poolMembers[1]), Ids({"0:1", "0:2", "0:3", "0:6", "0:7"}));
  EXPECT_EQ(IdsAt(index, index.poolMembers[2]), Ids({"0:4"}));
  EXPECT_EQ(IdsAt(index, index.poolMembers[3]), Ids({"0:6", "0:7"}));
  EXPECT_EQ(index.poolsOfDisk[5], 0b1010);  // 0:6 in Data and Cache
  EXPECT_EQ(index.poolsOfDisk[7], 0);       // 0:10 is in no group and has no flag
  // TotalManagedSpace: flagged disks count in their flag's pool only.
  EXPECT_EQ(index.totals[0], 8001563222016u);
  EXPECT_EQ(index.totals[1], 3 * 4000787030016u);
  EXPECT_EQ(index.totals[2], 4000787030016u);
  EXPECT_EQ(index.totals[3], 2 * 500107862016u);
}

TEST(RedfishInventoryIndex, OneDrivePerIdentifierFirstRecordWins) {
  zeda::pelka::platform::NasRecord nas;
  nas.name = "shelf 2/b";
  nas.disks = {RedfishDisk("a", 1000), RedfishDisk("b"), RedfishDisk("a", 2000),
               RedfishDisk("disk 9")};
  const NasIndex index = IndexNas(nullptr, nas.name, DiskListOf(nas));
  EXPECT_EQ(index.segment, "~7368656c6620322f62");
  ASSERT_EQ(index.disks.size(), 3u);
  EXPECT_EQ(index.disks[0].capacity, 1000u);
  EXPECT_EQ(index.FindDisk("a"), 0u);
  EXPECT_EQ(index.FindDisk("b"), 1u);
  EXPECT_EQ(index.diskSegments[2], "~6469736b2039");
  EXPECT_EQ(index.FindDisk("~6469736b2039"), 2u);
  for (const char* odd : {"", ".", "..", "A", "disk 9", "~61", "c"}) {
    EXPECT_EQ(index.FindDisk(odd), index.disks.size()) << odd;
  }
}

TEST(RedfishInventoryIndex, EmptyNas) {
  const NasIndex index = IndexNas(nullptr, "empty", {});
  EXPECT_TRUE(index.disks.empty());
  for (const auto& members : index.poolMembers) EXPECT_TRUE(members.empty());
  EXPECT_EQ(index.totals, (zeda::pelka::PoolTotals{0, 0, 0, 0}));
}

}  // namespace
}  // namespace zeda::test
