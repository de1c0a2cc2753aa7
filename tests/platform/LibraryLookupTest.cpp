// Look-ups of the library and answers of the NAS API on an in-memory
// inventory: unknown names and disks, letter case, match order.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <string>

#include "InventoryBuilders.h"
#include "InventoryRefusal.h"
#include "TempDir.h"
#include "inventory/Library.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

using namespace zeda::pelka;

class InMemory : public ::testing::Test {
 protected:
  ~InMemory() override { platform::UseFileInventory(); }
};

TEST_F(InMemory, EmptyNasList) {
  platform::UseInMemoryInventory(InventoryOf({}));
  EXPECT_TRUE(GetNasList().empty());
}

TEST_F(InMemory, NasListKeepsOrderAndNames) {
  platform::UseInMemoryInventory(InventoryOf({NasWith("nas2"), NasWith("nas1"), NasWith("Nas3")}));
  std::vector<std::string> names;
  for (const Nas& nas : GetNasList()) names.push_back(nas.name);
  EXPECT_EQ(names, (std::vector<std::string>{"nas2", "nas1", "Nas3"}));
}

TEST_F(InMemory, LookupsReturnTheListedNas) {
  platform::UseInMemoryInventory(InventoryOf({NasWith("nas1"), NasWith("nas2")}));
  const std::list<Nas>& list = GetNasList();
  EXPECT_EQ(&Nas::Get("nas2"), &list.back());
  EXPECT_EQ(&util::GetNas("nas1"), &list.front());
}

TEST_F(InMemory, UnknownNasIsRefused) {
  platform::UseInMemoryInventory(InventoryOf({NasWith("nas1")}));
  EXPECT_EQ(Thrown([] { Nas::Get("nas9"); }), "NAS not found: nas9");
  EXPECT_EQ(Thrown([] { util::GetNas("nas9"); }), "NAS not found: nas9");
  // NAS names are matched exactly.
  EXPECT_EQ(Thrown([] { Nas::Get("NAS1"); }), "NAS not found: NAS1");
  EXPECT_EQ(Thrown([] { util::GetNas(""); }), "NAS not found: ");
}

// FindListedDisk finds what a scan of GetDiskList's reply for an exact
// identifier finds, also among identifiers that differ in letter case alone.
TEST_F(InMemory, FindListedDiskIsTheScanOfTheListWithoutTheCopy) {
  const auto sized = [](const std::string& id, std::uint64_t capacity) {
    platform::DiskRecord record = Disk(id);
    record.disk.capacity = capacity;
    return record;
  };
  platform::UseInMemoryInventory(
      InventoryOf({NasWith("nas1", {sized("A:1", 1), sized("b:2", 2), sized("a:1", 3),
                                    sized("a:1", 4), sized("B:2", 5)})}));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get("nas1"));
  const zeda::orvi::OrviDiskList list = orvi.GetDiskList();
  for (const std::string id : {"A:1", "a:1", "b:2", "B:2", "c:3", "", "A:"}) {
    std::optional<zeda::orvi::OrviDisk> scanned;
    for (const auto& disk : list.disks) {
      if (disk.id == id) {
        scanned = disk;
        break;
      }
    }
    const std::optional<zeda::orvi::OrviDisk> found = orvi.FindListedDisk(id);
    ASSERT_EQ(found.has_value(), scanned.has_value()) << id;
    if (found) {
      EXPECT_EQ(found->id, scanned->id);
      EXPECT_EQ(found->capacity, scanned->capacity) << id;
    }
  }
  // The first of the two "a:1" disks, not the one after it nor "A:1".
  EXPECT_EQ(orvi.FindListedDisk("a:1")->capacity, 3u);
  EXPECT_EQ(orvi.FindListedDisk("B:2")->capacity, 5u);
}

TEST_F(InMemory, OneOrviPerNas) {
  platform::UseInMemoryInventory(InventoryOf({NasWith("nas1", {Disk("1")}), NasWith("nas2")}));
  const Nas& nas1 = Nas::Get("nas1");
  const Nas& nas2 = Nas::Get("nas2");
  EXPECT_EQ(&GetOrvi(nas1), &GetOrvi(nas1));
  EXPECT_EQ(&GetOrvi(nas1), &GetOrvi(GetNasList().front()));
  EXPECT_NE(&GetOrvi(nas1), &GetOrvi(nas2));
  EXPECT_EQ(GetOrvi(nas1).GetDiskList().disks.size(), 1u);
  EXPECT_TRUE(GetOrvi(nas2).GetDiskList().disks.empty());
}

TEST_F(InMemory, OrviOfANasRecordMadeByTheCallerIsFoundByName) {
  platform::UseInMemoryInventory(InventoryOf({NasWith("nas1", {Disk("1")})}));
  const Nas own{"nas1"};
  EXPECT_EQ(&GetOrvi(own), &GetOrvi(Nas::Get("nas1")));
  const Nas stranger{"nas7"};
  EXPECT_EQ(Thrown([&] { GetOrvi(stranger); }), "NAS not found: nas7");
}

TEST_F(InMemory, DiskListHoldsDisksAndGroupsInOrder) {
  auto nas = NasWith("nas1", {Disk("0:2"), Disk("0:1"), Disk("0:10")});
  nas.disks[1].disk.isSsd = true;
  nas.disks[2].disk.capacity = 4000787030016u;
  zeda::orvi::OrviDiskGroup group;
  group.dataDisks = {"0:1", "0:2"};
  group.spareDisks = {"0:10"};
  nas.groups.push_back(group);
  platform::UseInMemoryInventory(InventoryOf({nas}));
  const zeda::orvi::OrviDiskList list = GetOrvi(Nas::Get("nas1")).GetDiskList();
  ASSERT_EQ(list.disks.size(), 3u);
  EXPECT_EQ(list.disks[0].id, "0:2");
  EXPECT_EQ(list.disks[1].id, "0:1");
  EXPECT_TRUE(list.disks[1].isSsd);
  EXPECT_EQ(list.disks[2].id, "0:10");
  EXPECT_EQ(list.disks[2].capacity, 4000787030016u);
  ASSERT_EQ(list.groups.size(), 1u);
  EXPECT_EQ(list.groups[0].dataDisks, group.dataDisks);
  EXPECT_EQ(list.groups[0].spareDisks, group.spareDisks);
}

TEST_F(InMemory, NasWithoutDisks) {
  platform::UseInMemoryInventory(InventoryOf({NasWith("empty"), NasWith("nas1", {Disk("0:1")})}));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get("empty"));
  const zeda::orvi::OrviDiskList list = orvi.GetDiskList();
  EXPECT_TRUE(list.disks.empty());
  EXPECT_TRUE(list.groups.empty());
  EXPECT_EQ(Thrown([&] { orvi.GetDiskHealth("01"); }), "Disk not found: 01");
  EXPECT_EQ(GetOrvi(Nas::Get("nas1")).GetDiskList().disks.size(), 1u);
}

TEST_F(InMemory, HealthIsFoundByHealthKey) {
  platform::UseInMemoryInventory(
      InventoryOf({NasWith("nas1", {Disk("0:1", 0), Disk("0:10", 4), Disk("7", 9)})}));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get("nas1"));
  EXPECT_EQ(orvi.GetDiskHealth("01").message, "health of 0:1");
  EXPECT_EQ(orvi.GetDiskHealth("010").healthStatus, 4u);
  EXPECT_EQ(orvi.GetDiskHealth("010").message, "health of 0:10");
  // An identifier without ":" has itself twice as health key.
  EXPECT_EQ(orvi.GetDiskHealth("77").healthStatus, 9u);
}

TEST_F(InMemory, HealthIsAlsoFoundByIdentifierVerbatim) {
  platform::UseInMemoryInventory(InventoryOf({NasWith("nas1", {Disk("0:1", 0), Disk("7", 9)})}));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get("nas1"));
  EXPECT_EQ(orvi.GetDiskHealth("0:1").message, "health of 0:1");
  EXPECT_EQ(orvi.GetDiskHealth("7").healthStatus, 9u);
}

TEST_F(InMemory, DiskMatchingIgnoresAsciiCase) {
  platform::UseInMemoryInventory(InventoryOf({NasWith("nas1", {Disk("Enc:Bay3", 2)})}));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get("nas1"));
  EXPECT_EQ(orvi.GetDiskHealth("encbay3").healthStatus, 2u);
  EXPECT_EQ(orvi.GetDiskHealth("ENCBAY3").healthStatus, 2u);
  EXPECT_EQ(orvi.GetDiskHealth("enc:BAY3").healthStatus, 2u);
  EXPECT_EQ(orvi.GetDiskIdentity("enc:bay3").serial, "serial of Enc:Bay3");
  EXPECT_EQ(orvi.GetDiskIdentity("ENC:BAY3").product, "product of Enc:Bay3");
}

TEST_F(InMemory, FirstMatchingDiskInListOrderAnswers) {
  // "01" equals the identifier of the first disk and the health key of the
  // second; whichever stands first answers.
  platform::UseInMemoryInventory(InventoryOf({NasWith("a", {Disk("01", 1), Disk("0:1", 2)}),
                                              NasWith("b", {Disk("0:1", 2), Disk("01", 1)})}));
  EXPECT_EQ(GetOrvi(Nas::Get("a")).GetDiskHealth("01").healthStatus, 1u);
  EXPECT_EQ(GetOrvi(Nas::Get("b")).GetDiskHealth("01").healthStatus, 2u);
  // Same identifier twice, differing in case: the first one answers.
  platform::UseInMemoryInventory(
      InventoryOf({NasWith("c", {Disk("x:1", 5, "first"), Disk("X:1", 6, "second")})}));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get("c"));
  EXPECT_EQ(orvi.GetDiskHealth("X1").healthStatus, 5u);
  EXPECT_EQ(orvi.GetDiskIdentity("X:1").serial, "first");
}

TEST_F(InMemory, LookupsInListOrderStillAnswerTheFirstMatchingDisk) {
  // Providers ask for the disks of a NAS in list order. Here the disk after
  // the one asked last often carries the key asked next but is not the first
  // with it: the first disk still answers, whatever was asked before.
  platform::UseInMemoryInventory(InventoryOf(
      {NasWith("nas1", {Disk("a:1", 1, "s1"), Disk("b:1", 2, "s2"), Disk("A:1", 3, "s3"),
                        Disk("01", 4, "s4"), Disk("0:1", 5, "s5"), Disk("c:1", 6, "s6")})}));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get("nas1"));
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(orvi.GetDiskHealth("a1").healthStatus, 1u);
    EXPECT_EQ(orvi.GetDiskHealth("b1").healthStatus, 2u);
    EXPECT_EQ(orvi.GetDiskHealth("A1").healthStatus, 1u);
    EXPECT_EQ(orvi.GetDiskIdentity("A:1").serial, "s1");
    EXPECT_EQ(orvi.GetDiskHealth("01").healthStatus, 4u);
    // "0:1" has the health key "01", which the disk before it answers.
    EXPECT_EQ(orvi.GetDiskHealth("01").healthStatus, 4u);
    EXPECT_EQ(orvi.GetDiskHealth("0:1").healthStatus, 5u);
    EXPECT_EQ(orvi.GetDiskIdentity("0:1").serial, "s5");
    EXPECT_EQ(orvi.GetDiskHealth("C1").healthStatus, 6u);
    EXPECT_EQ(orvi.GetDiskIdentity("c:1").serial, "s6");
  }
  // Backwards and after a miss, too.
  EXPECT_EQ(orvi.GetDiskIdentity("b:1").serial, "s2");
  EXPECT_EQ(Thrown([&] { orvi.GetDiskHealth("d1"); }), "Disk not found: d1");
  EXPECT_EQ(orvi.GetDiskIdentity("a:1").serial, "s1");
  EXPECT_EQ(orvi.GetDiskHealth("b1").healthStatus, 2u);
}

TEST_F(InMemory, IdentityIsFoundByIdentifierOnly) {
  platform::UseInMemoryInventory(InventoryOf({NasWith("nas1", {Disk("0:1"), Disk("0:10")})}));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get("nas1"));
  const zeda::orvi::OrviDiskIdentity identity = orvi.GetDiskIdentity("0:1");
  EXPECT_EQ(identity.product, "product of 0:1");
  EXPECT_EQ(identity.model, "model of 0:1");
  EXPECT_EQ(identity.serial, "serial of 0:1");
  EXPECT_EQ(orvi.GetDiskIdentity("0:10").serial, "serial of 0:10");
  // The health key is not an identifier.
  EXPECT_EQ(Thrown([&] { orvi.GetDiskIdentity("01"); }), "Disk not found: 01");
}

TEST_F(InMemory, UnknownDiskIsRefused) {
  platform::UseInMemoryInventory(InventoryOf({NasWith("nas1", {Disk("0:1"), Disk("0:10")})}));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get("nas1"));
  EXPECT_EQ(Thrown([&] { orvi.GetDiskHealth("0"); }), "Disk not found: 0");
  EXPECT_EQ(Thrown([&] { orvi.GetDiskHealth("0101"); }), "Disk not found: 0101");
  EXPECT_EQ(Thrown([&] { orvi.GetDiskIdentity("0:2"); }), "Disk not found: 0:2");
  EXPECT_EQ(Thrown([&] { orvi.GetDiskIdentity("0:1 "); }), "Disk not found: 0:1 ");
}

TEST_F(InMemory, EveryDiskOfALargeNasIsFound) {
  // Enough disks that keys share home slots and probe past one another; the
  // second half repeats the first in upper case, so every key of the first
  // half has a later disk with the same folded key, which must never answer;
  // "d<i>" health keys of "d:<i>" identifiers equal the identifiers "d<i>"
  // of the disks in the other list.
  constexpr int kDisks = 3000;
  std::vector<platform::DiskRecord> disks;
  for (int i = 0; i < kDisks; ++i) disks.push_back(Disk("d:" + std::to_string(i), 1));
  for (int i = 0; i < kDisks; ++i) disks.push_back(Disk("D:" + std::to_string(i), 2));
  std::vector<platform::DiskRecord> plain;
  for (int i = 0; i < kDisks; ++i) plain.push_back(Disk("d" + std::to_string(i), 3));
  for (int i = 0; i < kDisks; ++i) plain.push_back(Disk("d:" + std::to_string(i), 4));
  platform::UseInMemoryInventory(
      InventoryOf({NasWith("nas1", std::move(disks)), NasWith("nas2", std::move(plain))}));
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get("nas1"));
  zeda::orvi::Orvi& other = GetOrvi(Nas::Get("nas2"));
  int wrong = 0;
  for (int i = 0; i < kDisks; ++i) {
    const std::string n = std::to_string(i);
    wrong += orvi.GetDiskHealth("d" + n).healthStatus != 1;
    wrong += orvi.GetDiskHealth("D:" + n).healthStatus != 1;
    wrong += orvi.GetDiskIdentity("D:" + n).serial != "serial of d:" + n;
    wrong += other.GetDiskHealth("D" + n).healthStatus != 3;
    wrong += other.GetDiskIdentity("d:" + n).serial != "serial of d:" + n;
    wrong += other.GetDiskHealth("d:" + n).healthStatus != 4;
    wrong += other.GetDiskHealth("d" + n + "d" + n).healthStatus != 3;
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(Thrown([&] { orvi.GetDiskHealth("d" + std::to_string(kDisks)); }),
            "Disk not found: d3000");
  EXPECT_EQ(Thrown([&] { other.GetDiskIdentity("d:"); }), "Disk not found: d:");
  // A health key is not an identifier.
  EXPECT_EQ(Thrown([&] { orvi.GetDiskIdentity("D1"); }), "Disk not found: D1");
}

// Without PELKA_CONFIG and PELKA_INVENTORY the machine's configuration file
// is read (here one of the test's own, named in place of /etc/pelka/pelka.json).
TEST(ProgramData, TheMachinesConfigurationFileIsReadWhenNothingElseIsNamed) {
  const TempDir dir;
  const std::string machineFile = dir.file("pelka.json");
  {
    std::ofstream(machineFile) << R"({"programData": ")" << dir.file("data")
                               << R"(", "sources": [{"type": "file", "path": ")"
                               << dir.file("inv.json") << R"("}]})";
  }
  const ScopedEnv noConfig("PELKA_CONFIG", "");
  const ScopedEnv noData("PELKA_PROGRAM_DATA", "");
  const ScopedEnv noFile("PELKA_INVENTORY", "");
  platform::UseMachineConfigFile(machineFile);
  EXPECT_EQ(util::GetProgramDataPath(), dir.file("data"));
  platform::UseMachineConfigFile(dir.file("absent.json"));
  EXPECT_EQ(util::GetProgramDataPath(), "/var/lib/pelka");
}

TEST(ProgramData, PathComesFromTheEnvironment) {
  {
    const ScopedEnv data("PELKA_PROGRAM_DATA", "/srv/pelka");
    EXPECT_EQ(util::GetProgramDataPath(), "/srv/pelka");
    {
      const ScopedEnv file("PELKA_INVENTORY", "/tmp/other.json");
      EXPECT_EQ(platform::InventoryFilePath(), "/tmp/other.json");
    }
    const ScopedEnv noFile("PELKA_INVENTORY", "");
    EXPECT_EQ(platform::InventoryFilePath(), "/srv/pelka/inventory.json");
  }
  const ScopedEnv noData("PELKA_PROGRAM_DATA", "");
  const ScopedEnv noFile("PELKA_INVENTORY", "");
  EXPECT_EQ(util::GetProgramDataPath(), "/var/lib/pelka");
  EXPECT_EQ(platform::InventoryFilePath(), "/var/lib/pelka/inventory.json");
}

}  // namespace
}  // namespace zeda::test
