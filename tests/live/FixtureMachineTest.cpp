// The recorded machine of tests/fixtures/linux served by a linux source,
// every field of every disk checked through zeda-cim and the module.
#include <gtest/gtest.h>

#include <set>

#include "CliRun.h"
#include "Fixtures.h"

namespace zeda::test {
namespace {

using nlohmann::json;

struct ExpectedDisk {
  std::string id;
  std::uint64_t blocks;  // capacity / 512
  int interconnect;      // InterconnectType: 4 for "SATA", 5 for "SAS", else 1
  int diskType;          // 2 HDD, 3 SSD
  int rpm;
  int health;                // HealthState: 5 healthy, 0 not
  int operational;           // OperationalStatus of the drive
  int extentStatus;          // 2, or 13 for a free disk
  std::string manufacturer;  // as the module answers it: the product without its model
  std::string model;
  std::string serial;
  std::string firmware;
};

// sda-sdd: md0 RAID 5 (sda1 sdb1 sdc1 active, sdd1 spare); sde, sdg blank.
const std::vector<ExpectedDisk>& Expected() {
  static const std::vector<ExpectedDisk> disks = {
      {"eui-0025388b91b28888", 1000215216, 1, 3, 0, 5, 2, 2, "Samsung SSD 970 EVO Plus 1TB",
       "Samsung SSD 970 EVO Plus 1TB", "S4EWNX0R888888", "2B2QEXM7"},
      {"wwn-0x50014ee2b1111111", 7814037168, 4, 2, 5400, 5, 2, 2, "WDC WD40EFRX-68N32N0",
       "WDC WD40EFRX-68N32N0", "WD-WCC7K1111111", "82.00A82"},
      {"wwn-0x5000c500a2222222", 7814037168, 5, 2, 7200, 5, 2, 2, "SEAGATE", "ST4000NM0025",
       "ZC12B222", "E002"},
      {"wwn-0x5000c500c3333333", 7814037168, 4, 2, 5980, 0, 5, 2, "ST4000VN008-2DR166",
       "ST4000VN008-2DR166", "ZGY3C333", "SC60"},
      {"wwn-0x50014ee2b4444444", 7814037168, 4, 2, 5400, 5, 2, 2, "WDC WD40EFRX-68N32N0",
       "WDC WD40EFRX-68N32N0", "WD-WCC7K4444444", "82.00A82"},
      {"wwn-0x5002538e45555555", 976773168, 4, 3, 0, 5, 2, 13, "Samsung SSD 860 EVO 500GB",
       "Samsung SSD 860 EVO 500GB", "S3Z2NB0K555555A", "RVT04B6Q"},
      {"usb-Elements_25A2_575836314136363636", 1953525168, 1, 2, 0, 0, 0, 2, "WD", "Elements 25A2",
       "575836314136363636", "1021"},
      {"sata-OLDDISK_160_OD7777777", 312581808, 4, 2, 0, 0, 0, 13, "OLDDISK 160", "OLDDISK 160",
       "OD7777777", "1.00"},
      {"path-pci0000:00-0000:00:04.0-virtio2", 67108864, 1, 2, 0, 0, 0, 2, "", "", "", ""},
  };
  return disks;
}

class FixtureMachine : public ::testing::Test {
 protected:
  void SetUp() override { config_ = WriteConfig(dir_.path(), "[" + FixtureSource("fx") + "]"); }

  CliAnswer Enumerate(const std::string& className) {
    CliAnswer answer = RunCli(config_, {"ei", className});
    EXPECT_EQ(answer.exitStatus, 0) << className;
    return answer;
  }

  std::set<std::string> PoolMembers(int pool) {
    const CliAnswer answer =
        RunCli(config_, {"ai",
                         "ZEDA_StoragePool_Primordial.InstanceID=\"ZEDA:fx:PrimordialPool" +
                             std::to_string(pool) + "\"",
                         "--assoc-class", "ZEDA_AssociatedComponentExtent_Primordial"});
    EXPECT_EQ(answer.exitStatus, 0);
    std::set<std::string> ids;
    for (const auto& [deviceId, properties] : ByKey(answer, "DeviceID")) {
      ids.insert(deviceId.substr(std::string("ZEDA:fx:DiskExtent").size()));
    }
    return ids;
  }

  TempDir dir_;
  std::string config_;
};

TEST_F(FixtureMachine, DrivesAreTheWholeDisksInNameOrder) {
  const CliAnswer answer = Enumerate("ZEDA_DiskDrive");
  std::vector<std::string> names;
  for (const auto& instance : answer.document.at("results")) {
    names.push_back(Properties(instance).at("Name").get<std::string>());
  }
  std::vector<std::string> expected;
  for (const ExpectedDisk& disk : Expected()) expected.push_back(disk.id);
  // nvme0n1, sda..sdg, vda; not loop0, dm-0, md0, sr0, zram0 nor the hidden nvme0c0n1.
  EXPECT_EQ(names, expected);
}

TEST_F(FixtureMachine, EveryDriveField) {
  const auto drives = ByKey(Enumerate("ZEDA_DiskDrive"), "Name");
  ASSERT_EQ(drives.size(), Expected().size());
  for (const ExpectedDisk& disk : Expected()) {
    SCOPED_TRACE(disk.id);
    const auto& drive = drives.at(disk.id);
    EXPECT_EQ(drive.at("DeviceID"), "ZEDA:fx:DISK" + disk.id);
    EXPECT_EQ(drive.at("SystemName"), "ZEDA:fx");
    EXPECT_EQ(drive.at("InterconnectType"), disk.interconnect);
    EXPECT_EQ(drive.at("DiskType"), disk.diskType);
    EXPECT_EQ(drive.at("RPM"), disk.rpm);
    EXPECT_EQ(drive.at("HealthState"), disk.health);
    EXPECT_EQ(drive.at("OperationalStatus"), json::array({disk.operational}));
  }
}

TEST_F(FixtureMachine, EveryExtentField) {
  const auto extents = ByKey(Enumerate("ZEDA_StorageExtent_Disk"), "DeviceID");
  ASSERT_EQ(extents.size(), Expected().size());
  for (const ExpectedDisk& disk : Expected()) {
    SCOPED_TRACE(disk.id);
    const auto& extent = extents.at("ZEDA:fx:DiskExtent" + disk.id);
    EXPECT_EQ(extent.at("NumberOfBlocks"), disk.blocks);
    EXPECT_EQ(extent.at("ExtentStatus"), json::array({disk.extentStatus}));
    EXPECT_EQ(extent.at("HealthState"), disk.health);
  }
}

TEST_F(FixtureMachine, IdentityAndFirmware) {
  const auto packages = ByKey(Enumerate("ZEDA_PhysicalPackage_Disk"), "Tag");
  const auto software = ByKey(Enumerate("ZEDA_SoftwareIdentity_Disk"), "InstanceID");
  for (const ExpectedDisk& disk : Expected()) {
    SCOPED_TRACE(disk.id);
    const auto& package = packages.at("ZEDA:fx:DISK" + disk.id);
    EXPECT_EQ(package.at("Manufacturer"), disk.manufacturer);
    EXPECT_EQ(package.at("Model"), disk.model);
    EXPECT_EQ(package.at("SerialNumber"), disk.serial);
    EXPECT_EQ(software.at("ZEDA:fx:Software(DISK" + disk.id + ")").at("VersionString"),
              disk.firmware);
  }
}

TEST_F(FixtureMachine, Pools) {
  // Free: the blank SATA SSD and the blank disk without SMART.
  EXPECT_EQ(PoolMembers(1),
            (std::set<std::string>{"wwn-0x5002538e45555555", "sata-OLDDISK_160_OD7777777"}));
  // Data: the active members of md0 (the failing one included).
  EXPECT_EQ(PoolMembers(2),
            (std::set<std::string>{"wwn-0x50014ee2b1111111", "wwn-0x5000c500a2222222",
                                   "wwn-0x5000c500c3333333"}));
  // Spare: the md0 spare.
  EXPECT_EQ(PoolMembers(3), (std::set<std::string>{"wwn-0x50014ee2b4444444"}));
  // Cache: the solid-state disks (the free one is walked here too).
  EXPECT_EQ(PoolMembers(4),
            (std::set<std::string>{"eui-0025388b91b28888", "wwn-0x5002538e45555555"}));
}

TEST_F(FixtureMachine, FileAndLinuxSourcesInSourceOrder) {
  const std::string config =
      WriteConfig(dir_.path(), "[{\"type\": \"file\", \"path\": \"" ZEDA_EXAMPLE_INVENTORY "\"}, " +
                                   FixtureSource("fx") + "]");
  const CliAnswer answer = RunCli(config, {"ei", "ZEDA_DiskDrive"});
  ASSERT_EQ(answer.exitStatus, 0);
  std::vector<std::string> systems;
  for (const auto& instance : answer.document.at("results")) {
    const std::string system = Properties(instance).at("SystemName").get<std::string>();
    if (systems.empty() || systems.back() != system) systems.push_back(system);
  }
  ASSERT_GE(systems.size(), 2u);
  EXPECT_EQ(systems.back(), "ZEDA:fx");
}

TEST_F(FixtureMachine, BadConfigurationNamesFilePlaceAndProblem) {
  const std::string config = WriteConfig(dir_.path(), "[{\"type\": \"nfs\"}]");
  const CliAnswer answer = RunCli(config, {"ei", "ZEDA_DiskDrive"});
  EXPECT_NE(answer.exitStatus, 0);
  EXPECT_EQ(answer.document.at("status").at("message"),
            "Bad configuration file " + config +
                ": sources[0].type: unknown source type \"nfs\" (known: file, linux)");
}

TEST_F(FixtureMachine, DuplicateNasNameAcrossSources) {
  const std::string config =
      WriteConfig(dir_.path(), "[" + FixtureSource("fx") + ", " + FixtureSource("fx") + "]");
  const CliAnswer answer = RunCli(config, {"ei", "ZEDA_DiskDrive"});
  EXPECT_NE(answer.exitStatus, 0);
  EXPECT_EQ(answer.document.at("status").at("message"),
            "Bad configuration file " + config + ": sources[1].nas: duplicate NAS name \"fx\"");
}

TEST_F(FixtureMachine, DuplicateNasNameAcrossAFileAndALinuxSource) {
  // The sample inventory names its first NAS nas1.
  const std::string config =
      WriteConfig(dir_.path(), "[{\"type\": \"file\", \"path\": \"" ZEDA_EXAMPLE_INVENTORY "\"}, " +
                                   FixtureSource("nas1") + "]");
  const CliAnswer answer = RunCli(config, {"ei", "ZEDA_DiskDrive"});
  EXPECT_NE(answer.exitStatus, 0);
  EXPECT_EQ(answer.document.at("status").at("message"),
            "Bad configuration file " + config + ": sources[1]: duplicate NAS name \"nas1\"");
}

}  // namespace
}  // namespace zeda::test
