// The two pool associations on the shipped sample inventory: the extents
// each of the four pools of every NAS answers, and the pool totals.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "PoolFixtures.h"

namespace zeda::test {
namespace {

using zeda::host::Instance;
using zeda::host::Outcome;
using zeda::host::Value;
using Strings = std::vector<std::string>;

struct PoolCase {
  std::string nas;
  int pool;
  Strings diskIds;  // in answer order
};

// From the sample's flags and RAID groups:
// nas1: 0:5 free; 0:1, 0:2, 0:3 data of group 1; 0:4 flagged spare; 0:6 and
//       0:7 SSDs, also listed as data of group 2; 0:10 unflagged and listed
//       nowhere (no entry contains "0:10").
// nas2: 1, 2 data of group 1; 3, 4, 6 data of group 2; 5 flagged spare.
// nas-edge: no disks.
const std::vector<PoolCase> kCases = {
    {"nas1", 1, {"0:5"}}, {"nas1", 2, {"0:1", "0:2", "0:3", "0:6", "0:7"}},
    {"nas1", 3, {"0:4"}}, {"nas1", 4, {"0:6", "0:7"}},
    {"nas2", 1, {}},      {"nas2", 2, {"1", "2", "3", "4", "6"}},
    {"nas2", 3, {"5"}},   {"nas2", 4, {}},
    {"nas-edge", 1, {}},  {"nas-edge", 2, {}},
    {"nas-edge", 3, {}},  {"nas-edge", 4, {}},
};

Strings ExpectedDeviceIds(const PoolCase& c) {
  Strings ids;
  for (const std::string& id : c.diskIds) {
    ids.push_back("ZEDA:" + c.nas + ":DiskExtent" + id);
  }
  return ids;
}

std::string PoolId(const PoolCase& c) {
  return "ZEDA:" + c.nas + ":PrimordialPool" + std::to_string(c.pool);
}

class SampleInventory : public ::testing::Test {
 protected:
  ScopedEnv inventory_{"PELKA_INVENTORY", SampleInventoryPath()};
};

TEST_F(SampleInventory, EachPoolAnswersItsExtentsThroughBothAssociations) {
  for (const char* association : {kConcrete, kAssociated}) {
    for (const PoolCase& c : kCases) {
      const Outcome outcome = Associators(association, PoolPath(PoolId(c)));
      ASSERT_EQ(outcome.code(), CMPI_RC_OK) << association << " " << PoolId(c);
      EXPECT_TRUE(outcome.done);
      EXPECT_EQ(DeviceIds(outcome), ExpectedDeviceIds(c)) << association << " " << PoolId(c);
      for (const Instance& extent : outcome.instances()) {
        const bool free = extent.property("DeviceID").str() == "ZEDA:nas1:DiskExtent0:5";
        const std::uint16_t status = association == std::string(kAssociated) || free ? 13 : 2;
        EXPECT_EQ(extent.property("ExtentStatus"), Value::uint16s({status}))
            << association << " " << extent.property("DeviceID").str();
      }
    }
  }
}

TEST_F(SampleInventory, PoolTotalsInBytes) {
  struct TotalCase {
    std::string systemName, diskId, poolId;
    std::uint64_t total, remaining;
  };
  // Hand computation, in bytes:
  //   nas1 data: 0:1 + 0:2 + 0:3 = 3 * 4000787030016 = 12002361090048 (the
  //              SSDs count as cache only, 0:10 nowhere)
  //   nas1 free: 0:5 = 8001563222016, all of it remaining
  //   nas2 data: 1 + 2 = 2 * 1200243695616 = 2400487391232, plus
  //              3 + 4 + 6 = 3 * 12000138625024 = 36000415875072;
  //              together 38400903266304
  const std::vector<TotalCase> cases = {
      {"ZEDA:nas1", "0:1", "PrimordialPool2", 12002361090048ULL, 0},
      {"ZEDA:nas1", "0:5", "PrimordialPool1", 8001563222016ULL, 8001563222016ULL},
      {"ZEDA:nas2", "6", "PrimordialPool2", 38400903266304ULL, 0},
  };
  for (const TotalCase& c : cases) {
    const Outcome outcome =
        Associators(kConcrete, ExtentPath(c.systemName, c.systemName + ":DiskExtent" + c.diskId));
    ASSERT_EQ(outcome.code(), CMPI_RC_OK) << c.diskId;
    const std::vector<Instance> pools = outcome.instances();
    ASSERT_EQ(pools.size(), 1u) << c.diskId;
    EXPECT_EQ(pools[0].property("PoolID"), Value::string(c.poolId));
    EXPECT_EQ(pools[0].property("TotalManagedSpace"), Value::uint64(c.total)) << c.diskId;
    EXPECT_EQ(pools[0].property("RemainingManagedSpace"), Value::uint64(c.remaining)) << c.diskId;
  }
}

TEST_F(SampleInventory, EnumerationPairsFreeAndUnflaggedDisksOnly) {
  const Outcome outcome = ModuleHost().enumerateInstances(
      Provider(kConcrete), zeda::host::ObjectPath(kNamespace, kConcrete));
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  Strings pairs;
  for (const Instance& link : outcome.instances()) {
    pairs.push_back(link.property("GroupComponent").ref().key("InstanceID").str() + " " +
                    link.property("PartComponent").ref().key("DeviceID").str());
  }
  EXPECT_EQ(pairs, (Strings{"ZEDA:nas1:PrimordialPool2 ZEDA:nas1:DiskExtent0:1",
                            "ZEDA:nas1:PrimordialPool2 ZEDA:nas1:DiskExtent0:2",
                            "ZEDA:nas1:PrimordialPool2 ZEDA:nas1:DiskExtent0:3",
                            "ZEDA:nas1:PrimordialPool1 ZEDA:nas1:DiskExtent0:5",
                            "ZEDA:nas1:PrimordialPool2 ZEDA:nas1:DiskExtent0:10",
                            "ZEDA:nas2:PrimordialPool2 ZEDA:nas2:DiskExtent1",
                            "ZEDA:nas2:PrimordialPool2 ZEDA:nas2:DiskExtent2",
                            "ZEDA:nas2:PrimordialPool2 ZEDA:nas2:DiskExtent3",
                            "ZEDA:nas2:PrimordialPool2 ZEDA:nas2:DiskExtent4",
                            "ZEDA:nas2:PrimordialPool2 ZEDA:nas2:DiskExtent6"}));
}

}  // namespace
}  // namespace zeda::test
