// The sample inventory shipped in examples/ is valid and shows every case
// the providers distinguish.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "InventoryJson.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

using namespace zeda::pelka;
using namespace zeda::pelka::platform;

class ExampleInventory : public ::testing::Test {
 protected:
  const Inventory inventory_ = LoadInventoryFile(SampleInventoryPath());

  template <typename Predicate>
  bool AnyDisk(Predicate predicate) const {
    for (const NasRecord& nas : inventory_.nas) {
      for (const DiskRecord& record : nas.disks) {
        if (predicate(nas, record)) return true;
      }
    }
    return false;
  }

  static bool Grouped(const NasRecord& nas, const std::string& id) {
    for (const auto& group : nas.groups) {
      const auto& data = group.dataDisks;
      const auto& spare = group.spareDisks;
      if (std::find(data.begin(), data.end(), id) != data.end()) return true;
      if (std::find(spare.begin(), spare.end(), id) != spare.end()) return true;
    }
    return false;
  }
};

TEST_F(ExampleInventory, HasNasDevicesWithAndWithoutDisks) {
  int withDisks = 0;
  int withoutDisks = 0;
  for (const NasRecord& nas : inventory_.nas) {
    (nas.disks.empty() ? withoutDisks : withDisks) += 1;
  }
  EXPECT_GE(withDisks, 2);
  EXPECT_GE(withoutDisks, 1);
}

TEST_F(ExampleInventory, HasGroupsWithDataAndSpareDisks) {
  bool found = false;
  for (const NasRecord& nas : inventory_.nas) {
    for (const auto& group : nas.groups) {
      found = found || (!group.dataDisks.empty() && !group.spareDisks.empty());
    }
  }
  EXPECT_TRUE(found);
}

TEST_F(ExampleInventory, HasEveryKindOfDisk) {
  EXPECT_TRUE(AnyDisk([](const NasRecord&, const DiskRecord& r) { return r.disk.isFree; }));
  EXPECT_TRUE(AnyDisk([](const NasRecord&, const DiskRecord& r) { return r.disk.isSpare; }));
  EXPECT_TRUE(AnyDisk([](const NasRecord&, const DiskRecord& r) { return r.disk.isSsd; }));
  EXPECT_TRUE(
      AnyDisk([](const NasRecord&, const DiskRecord& r) { return r.health.healthStatus != 0; }));
  EXPECT_TRUE(AnyDisk([](const NasRecord& nas, const DiskRecord& r) {
    return !r.disk.isFree && !Grouped(nas, r.disk.id);
  }));
  EXPECT_TRUE(AnyDisk([](const NasRecord&, const DiskRecord& r) {
    return r.disk.id.find(':') == std::string::npos;
  }));
  EXPECT_TRUE(AnyDisk([](const NasRecord&, const DiskRecord& r) {
    return r.disk.id.find(':') != std::string::npos;
  }));
  EXPECT_TRUE(AnyDisk([](const NasRecord&, const DiskRecord& r) { return r.disk.id == "0:1"; }));
  EXPECT_TRUE(AnyDisk([](const NasRecord&, const DiskRecord& r) { return r.disk.id == "0:10"; }));
}

TEST_F(ExampleInventory, HasSataSasAndNearlineSas) {
  std::set<std::string> interfaces;
  for (const NasRecord& nas : inventory_.nas) {
    for (const DiskRecord& record : nas.disks) interfaces.insert(record.disk.interfaceType);
  }
  EXPECT_EQ(interfaces, (std::set<std::string>{"SATA", "SAS", "NL-SAS"}));
}

TEST_F(ExampleInventory, EveryDiskIsDescribed) {
  for (const NasRecord& nas : inventory_.nas) {
    for (const DiskRecord& record : nas.disks) {
      EXPECT_GT(record.disk.capacity, 0u) << record.disk.id;
      EXPECT_FALSE(record.disk.firmwareVersion.empty()) << record.disk.id;
      EXPECT_FALSE(record.identity.product.empty()) << record.disk.id;
      EXPECT_FALSE(record.identity.serial.empty()) << record.disk.id;
      EXPECT_EQ(record.disk.rpm == 0, record.disk.isSsd) << record.disk.id;
    }
  }
}

}  // namespace
}  // namespace zeda::test
