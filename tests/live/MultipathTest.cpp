// The recorded storage server of tests/fixtures/linux-multipath: dual-ported
// SAS disks under dm-multipath and without it, disks whose firmware gives them
// another disk's identifier, one disk per world-wide name, hot-plugged paths.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "CliRun.h"
#include "ErrorLines.h"
#include "Fixtures.h"
#include "LinuxSource.h"
#include "MachineCopy.h"

namespace zeda::test {
namespace {

namespace fs = std::filesystem;
using pelka::platform::DiskRecord;
using pelka::platform::LinuxSource;
using pelka::platform::NasRecord;
using Paths = std::vector<std::string>;

const std::string kMultipath = ZEDA_MULTIPATH_FIXTURE;

pelka::platform::LinuxSourceConfig MultipathConfig() {
  return RecordedMachineConfig(kMultipath, "mp");
}

struct DiskPaths {
  std::string id;
  Paths paths;
};

// In the name order of each disk's first path.
const std::vector<DiskPaths>& ExpectedDisks() {
  static const std::vector<DiskPaths> disks = {
      {"wwn-0x5000000000000a01", {"sda"}},
      {"wwn-0x5000c500d0000001", {"sdb", "sdk"}},  // mpatha
      {"wwn-0x5000c500d0000002", {"sdc", "sdl"}},  // one WWN, no map
      {"wwn-0x5000c500d0000003", {"sdd", "sdm"}},  // mpathb
      {"sata-BUGGY_DISK_0000000000~2", {"sde"}},   // on ata6: after sdf's ata5
      {"sata-BUGGY_DISK_0000000000", {"sdf"}},
      {"sata-ACME_DISK_SN_1", {"sdg"}},    // serial "SN#1"
      {"sata-ACME_DISK_SN_1~2", {"sdh"}},  // serial "SN?1"
      {"wwn-0x5000000000000bad", {"sdi"}},
      {"wwn-0x5000000000000bad~2", {"sdj"}},   // same WWN, half the size: another disk
      {"sas-ST8000NM0075_ZA100005", {"sdn"}},  // its WWN is all zeros
      {"path-pci0000:00-0000:00:17.0-ata9-host9-target9:0:0-9:0:0:0", {"sdo"}},
      {"wwn-0x5000c500d0000004", {"sdp", "sdq"}},  // mpathc, md0's member
  };
  return disks;
}

std::vector<DiskPaths> Answered(const NasRecord& nas) {
  std::vector<DiskPaths> disks;
  for (const DiskRecord& disk : nas.disks) disks.push_back({disk.disk.id, disk.paths});
  return disks;
}

std::string Describe(const std::vector<DiskPaths>& disks) {
  std::ostringstream text;
  for (const DiskPaths& disk : disks) {
    text << disk.id << " [";
    for (const std::string& path : disk.paths) text << " " << path;
    text << " ]\n";
  }
  return text.str();
}

void ExpectDisks(const NasRecord& nas, const std::vector<DiskPaths>& expected) {
  EXPECT_EQ(Describe(Answered(nas)), Describe(expected));
}

TEST(MultipathMachine, OneRecordPerWorldWideNameWithItsPaths) {
  LinuxSource source(MultipathConfig());
  ExpectDisks(source.Read(), ExpectedDisks());
}

TEST(MultipathMachine, SmartIsAskedOncePerDiskOfItsServingPath) {
  TempDir dir;
  const ScopedEnv log("ZEDA_SMART_LOG", dir.file("smart.log"));
  LinuxSource source(MultipathConfig());
  const auto disks = DisksById(source.Read());
  std::ifstream in(dir.file("smart.log"));
  std::set<std::string> asked;
  std::size_t runs = 0;
  for (std::string line; std::getline(in, line); ++runs)
    asked.insert(line.substr(line.rfind(' ') + 1));
  EXPECT_EQ(runs, ExpectedDisks().size());
  // sdc is offline: its disk is served by sdl (sdc's record says FAILED).
  EXPECT_EQ(asked,
            (std::set<std::string>{"/dev/sda", "/dev/sdb", "/dev/sdl", "/dev/sdd", "/dev/sde",
                                   "/dev/sdf", "/dev/sdg", "/dev/sdh", "/dev/sdi", "/dev/sdj",
                                   "/dev/sdn", "/dev/sdo", "/dev/sdp"}));
  const DiskRecord& served = disks.at("wwn-0x5000c500d0000002");
  EXPECT_EQ(served.health.message, "PASSED");
  EXPECT_EQ(served.disk.status, zeda::orvi::Ok);
  EXPECT_EQ(served.disk.interfaceType, "SAS");
  EXPECT_EQ(served.disk.capacity, 15628053168ull * 512);
}

TEST(MultipathMachine, WhatIsFree) {
  LinuxSource source(MultipathConfig());
  std::set<std::string> free;
  for (const DiskRecord& disk : source.Read().disks) {
    if (disk.disk.isFree) free.insert(disk.disk.id);
  }
  // Not free: sda (its partition is mounted), mpathb (a partition map on it,
  // mounted), mpathc (md0's member), sdn (md0's spare), sdo (no udev entry).
  EXPECT_EQ(free,
            (std::set<std::string>{"wwn-0x5000c500d0000001", "wwn-0x5000c500d0000002",
                                   "sata-BUGGY_DISK_0000000000~2", "sata-BUGGY_DISK_0000000000",
                                   "sata-ACME_DISK_SN_1", "sata-ACME_DISK_SN_1~2",
                                   "wwn-0x5000000000000bad", "wwn-0x5000000000000bad~2"}));
}

TEST(MultipathMachine, ArraysOverAMultipathMapListTheDisk) {
  LinuxSource source(MultipathConfig());
  const NasRecord nas = source.Read();
  ASSERT_EQ(nas.groups.size(), 1u);
  EXPECT_EQ(nas.groups[0].dataDisks, Paths{"wwn-0x5000c500d0000004"});
  EXPECT_EQ(nas.groups[0].spareDisks, Paths{"sas-ST8000NM0075_ZA100005"});
  EXPECT_TRUE(DisksById(nas).at("sas-ST8000NM0075_ZA100005").disk.isSpare);
}

// Moves a disk to another kernel name, as a reboot may.
void Rename(const MachineCopy& machine, const std::string& from, const std::string& to) {
  const fs::path link = machine.Path("sys/block/" + from);
  const fs::path target = fs::read_symlink(link);
  const fs::path directory = link.parent_path() / target;
  const fs::path moved = directory.parent_path() / to;
  fs::rename(directory, moved);
  fs::remove(link);
  fs::create_directory_symlink(target.parent_path() / to, machine.Path("sys/block/" + to));
}

TEST(MultipathMachine, SuffixesFollowWhereDisksArePluggedNotTheirNames) {
  const MachineCopy machine(kMultipath);
  Rename(machine, "sdf", "sdz");  // the BUGGY DISK on ata5 now comes after sde (ata6) by name
  LinuxSource source(machine.Config());
  const auto disks = DisksById(source.Read());
  EXPECT_EQ(disks.at("sata-BUGGY_DISK_0000000000").paths, Paths{"sdz"});
  EXPECT_EQ(disks.at("sata-BUGGY_DISK_0000000000~2").paths, Paths{"sde"});
}

TEST(MultipathMachine, PathsThatVanishLeaveTheDiskUntilTheLastGoes) {
  const MachineCopy machine(kMultipath);
  LinuxSource source(machine.Config());
  ASSERT_EQ(source.Read().disks.size(), ExpectedDisks().size());

  fs::remove(machine.Path("sys/block/sdk"));
  auto disks = DisksById(source.Read());
  EXPECT_EQ(disks.size(), ExpectedDisks().size());
  EXPECT_EQ(disks.at("wwn-0x5000c500d0000001").paths, Paths{"sdb"});
  EXPECT_TRUE(disks.at("wwn-0x5000c500d0000001").disk.isFree);

  // sdl served the disk whose other path is offline: now sdc serves it.
  fs::remove(machine.Path("sys/block/sdl"));
  disks = DisksById(source.Read());
  EXPECT_EQ(disks.at("wwn-0x5000c500d0000002").paths, Paths{"sdc"});
  EXPECT_EQ(disks.at("wwn-0x5000c500d0000002").disk.status, zeda::orvi::NoContact);
  EXPECT_EQ(disks.at("wwn-0x5000c500d0000002").health.message, "device offline");

  fs::remove(machine.Path("sys/block/sdb"));
  disks = DisksById(source.Read());
  EXPECT_EQ(disks.size(), ExpectedDisks().size() - 1);
  EXPECT_EQ(disks.count("wwn-0x5000c500d0000001"), 0u);
}

TEST(MultipathMachine, APathThatVanishesMakesAnotherInventory) {
  const MachineCopy machine(kMultipath);
  LinuxSource source(machine.Config());
  const pelka::platform::Inventory before{{source.Read()}};
  EXPECT_EQ(before, pelka::platform::Inventory{{source.Read()}});
  fs::remove(machine.Path("sys/block/sdk"));  // only the paths change
  EXPECT_NE(before, pelka::platform::Inventory{{source.Read()}});
}

TEST(MultipathMachine, DisksAndPathsThatAppearShowAtTheNextRead) {
  const MachineCopy machine(kMultipath);
  const fs::path sdk = machine.Path("sys/block/sdk");
  const fs::path sdo = machine.Path("sys/block/sdo");
  const fs::path sdkTarget = fs::read_symlink(sdk);
  const fs::path sdoTarget = fs::read_symlink(sdo);
  fs::remove(sdk);
  fs::remove(sdo);
  LinuxSource source(machine.Config());
  auto disks = DisksById(source.Read());
  EXPECT_EQ(disks.size(), ExpectedDisks().size() - 1);
  EXPECT_EQ(disks.at("wwn-0x5000c500d0000001").paths, Paths{"sdb"});

  fs::create_directory_symlink(sdkTarget, sdk);
  fs::create_directory_symlink(sdoTarget, sdo);
  ExpectDisks(source.Read(), ExpectedDisks());
}

TEST(MultipathMachine, TheRecordedNasMachineGetsADiskBack) {
  const MachineCopy machine(ZEDA_LINUX_FIXTURE);
  const fs::path sde = machine.Path("sys/block/sde");
  const fs::path target = fs::read_symlink(sde);
  LinuxSource source(machine.Config());
  const DiskRecord before = DisksById(source.Read()).at("wwn-0x5002538e45555555");
  fs::remove(sde);
  EXPECT_EQ(DisksById(source.Read()).count("wwn-0x5002538e45555555"), 0u);
  fs::create_directory_symlink(target, sde);
  const auto disks = DisksById(source.Read());
  ASSERT_EQ(disks.size(), 9u);
  const DiskRecord& back = disks.at("wwn-0x5002538e45555555");
  EXPECT_TRUE(back.disk.isFree);
  EXPECT_EQ(back.paths, Paths{"sde"});
  EXPECT_EQ(back.health.message, before.health.message);
}

TEST(MultipathMachine, ThereIsNothingToLogOnAHealthyMachine) {
  const ErrorLines errors;
  LinuxSource source(MultipathConfig());
  source.Read();
  EXPECT_EQ(errors.Lines(), std::vector<std::string>{});
}

TEST(MultipathMachine, EveryExtentHasItsOwnKeysThroughTheModule) {
  TempDir dir;
  const std::string source = "{\"type\": \"linux\", \"nas\": \"mp\", \"root\": \"" + kMultipath +
                             "/root\", \"smartctl\": \"" + kMultipath + "/smartctl\"}";
  const std::string config = WriteConfig(dir.path(), "[" + source + "]");
  const CliAnswer answer = RunCli(config, {"ei", "ZEDA_StorageExtent_Disk"});
  ASSERT_EQ(answer.exitStatus, 0);
  std::set<std::string> deviceIds;
  for (const auto& instance : answer.document.at("results")) {
    deviceIds.insert(Properties(instance).at("DeviceID").get<std::string>());
  }
  EXPECT_EQ(deviceIds.size(), ExpectedDisks().size());
  EXPECT_EQ(answer.document.at("results").size(), ExpectedDisks().size());

  // A suffixed identifier is found again by its key.
  const CliAnswer one =
      RunCli(config, {"gi",
                      "ZEDA_StorageExtent_Disk.SystemName=\"ZEDA:mp\",DeviceID=\"ZEDA:mp:"
                      "DiskExtentsata-BUGGY_DISK_0000000000~2\""});
  ASSERT_EQ(one.exitStatus, 0);
  ASSERT_EQ(one.document.at("results").size(), 1u);
  EXPECT_EQ(Properties(one.document.at("results")[0]).at("NumberOfBlocks"), 312581808);
}

}  // namespace
}  // namespace zeda::test
