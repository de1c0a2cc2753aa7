// The media life left of a disk: the vendor-neutral wear indicators of
// smartctl's answer, and the linux source carrying them into the disk records
// of the recorded machine.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <optional>
#include <string>

#include "MachineCopy.h"
#include "Smart.h"
#include "WearRecords.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

using pelka::platform::LinuxSource;
using pelka::platform::ParseSmartctlOutput;
using pelka::platform::SmartReport;

const std::string kWearMachine = ZEDA_LINUX_FIXTURE;
constexpr char kNvmeId[] = "eui-0025388b91b28888";
constexpr char kSataSsdId[] = "wwn-0x5002538e45555555";
constexpr char kSataHddId[] = "wwn-0x50014ee2b1111111";

// The recorded machine as it stands (it is only read).
pelka::platform::LinuxSourceConfig WearMachineConfig() {
  return RecordedMachineConfig(kWearMachine, "fx");
}

SmartReport ParseWear(const std::string& members) {
  return ParseSmartctlOutput(
      R"({"smartctl": {"exit_status": 0}, "smart_status": {"passed": true})" + members + "}", 0);
}

std::optional<std::uint32_t> LifeLeft(const std::string& members) {
  return ParseWear(members).mediaLifeLeftPercent;
}

std::string NvmeLog(const std::string& percentageUsed) {
  return R"(, "nvme_smart_health_information_log": {"critical_warning": 0, "percentage_used": )" +
         percentageUsed + "}";
}

// Device statistics with the endurance entry on page 7, after page 1.
std::string AtaStatistics(const std::string& entryValue) {
  return R"(, "ata_device_statistics": {"pages": [)"
         R"({"number": 1, "name": "General Statistics", "table": [)"
         R"({"offset": 8, "name": "Lifetime Power-On Resets", "size": 4, "value": 57}]},)"
         R"({"number": 7, "name": "Solid State Device Statistics", "table": [)"
         R"({"offset": 8, "name": "Percentage Used Endurance Indicator", "size": 1)" +
         entryValue + R"(, "flags": {"value": 192, "valid": true}}]}]})";
}

std::string ScsiPage(const std::string& percentageUsed) {
  return R"(, "scsi_percentage_used_endurance_indicator": )" + percentageUsed;
}

TEST(SmartctlWear, NvmeHealthLog) {
  EXPECT_EQ(LifeLeft(NvmeLog("3")), 97u);
  EXPECT_EQ(LifeLeft(NvmeLog("0")), 100u);
  EXPECT_EQ(LifeLeft(NvmeLog("99")), 1u);
}

TEST(SmartctlWear, AtaDeviceStatistics) {
  EXPECT_EQ(LifeLeft(AtaStatistics(R"(, "value": 12)")), 88u);
  // A value the drive marks not valid is left out by smartctl: unknown.
  EXPECT_EQ(LifeLeft(AtaStatistics("")), std::nullopt);
}

TEST(SmartctlWear, ScsiSolidStateMediaPage) { EXPECT_EQ(LifeLeft(ScsiPage("40")), 60u); }

TEST(SmartctlWear, UsedBeyondTheRatedEnduranceLeavesNone) {
  EXPECT_EQ(LifeLeft(NvmeLog("100")), 0u);
  EXPECT_EQ(LifeLeft(NvmeLog("255")), 0u);
  EXPECT_EQ(LifeLeft(AtaStatistics(R"(, "value": 150)")), 0u);
  EXPECT_EQ(LifeLeft(ScsiPage("101")), 0u);
}

TEST(SmartctlWear, NoIndicatorIsUnknown) {
  EXPECT_EQ(LifeLeft(""), std::nullopt);
  EXPECT_EQ(LifeLeft(R"(, "nvme_smart_health_information_log": {"available_spare": 100})"),
            std::nullopt);
  EXPECT_EQ(LifeLeft(R"(, "ata_device_statistics": {"pages": []})"), std::nullopt);
  // Vendor-specific attributes are not read, whatever their names say.
  EXPECT_EQ(LifeLeft(R"(, "ata_smart_attributes": {"table": [)"
                     R"({"id": 177, "name": "Wear_Leveling_Count", "value": 90},)"
                     R"({"id": 202, "name": "Percent_Lifetime_Remain", "value": 80}]})"),
            std::nullopt);
}

TEST(SmartctlWear, TheFirstKnownIndicatorCounts) {
  EXPECT_EQ(LifeLeft(NvmeLog("10") + ScsiPage("40")), 90u);
  EXPECT_EQ(LifeLeft(AtaStatistics(R"(, "value": 20)") + ScsiPage("40")), 80u);
  EXPECT_EQ(LifeLeft(NvmeLog(R"("10")") + ScsiPage("40")), 60u);
}

TEST(SmartctlWear, AWearIndicatorOfTheWrongTypeIsUnknownNotARefusal) {
  for (const std::string& members :
       {NvmeLog(R"("3")"), NvmeLog("-3"), NvmeLog("3.5"), NvmeLog("null"),
        std::string(R"(, "nvme_smart_health_information_log": [3])"),
        AtaStatistics(R"(, "value": "12")"), AtaStatistics(R"(, "value": -1)"),
        std::string(R"(, "ata_device_statistics": {"pages": "7"})"),
        std::string(R"(, "ata_device_statistics": {"pages": [{"table": {"name": 1}}, 7]})"),
        std::string(R"(, "ata_device_statistics": "x")"), ScsiPage("true"), ScsiPage("[40]")}) {
    const SmartReport report = ParseWear(R"(, "model_name": "M")" + members);
    EXPECT_EQ(report.mediaLifeLeftPercent, std::nullopt) << members;
    // The rest of the answer stands.
    EXPECT_EQ(report.verdict, SmartReport::Verdict::Passed) << members;
    EXPECT_EQ(report.model, "M") << members;
  }
}

TEST(SmartctlWear, TheRecordedMachineShowsNone) {
  LinuxSource source(WearMachineConfig());
  for (const auto& [id, disk] : DisksById(source.Read())) {
    EXPECT_EQ(disk.mediaLifeLeftPercent, std::nullopt) << id;
  }
}

TEST(SmartctlWear, TheLinuxSourceCarriesItIntoTheDiskRecords) {
  const WearRecords records(kWearMachine);
  const ScopedEnv env("ZEDA_SMART_RECORDS", records.path());
  LinuxSource source(WearMachineConfig());
  const auto disks = DisksById(source.Read());
  EXPECT_EQ(disks.at(kNvmeId).mediaLifeLeftPercent, 97u);
  EXPECT_EQ(disks.at(kSataSsdId).mediaLifeLeftPercent, 0u);
  EXPECT_EQ(disks.at(kSataHddId).mediaLifeLeftPercent, std::nullopt);
  // The health read beside it is unchanged.
  EXPECT_EQ(disks.at(kNvmeId).health.message, "PASSED");
  EXPECT_EQ(disks.at(kNvmeId).disk.status, zeda::orvi::Ok);
}

TEST(SmartctlWear, ASleepingDiskKeepsItsLastKnownValue) {
  const WearRecords records(kWearMachine);
  const ScopedEnv env("ZEDA_SMART_RECORDS", records.path());
  pelka::platform::LinuxSourceConfig config = WearMachineConfig();
  config.smartTtl = std::chrono::seconds(0);
  LinuxSource source(config);
  EXPECT_EQ(DisksById(source.Read()).at(kNvmeId).mediaLifeLeftPercent, 97u);

  std::ofstream(records.path() + "/nvme0n1.json")
      << R"j({"smartctl": {"messages": [{"string": "Device is in STANDBY mode, exit(2)", )j"
         R"j("severity": "information"}], "exit_status": 2}})j"
      << "\n";
  std::ofstream(records.path() + "/nvme0n1.exit") << "2\n";
  EXPECT_EQ(DisksById(source.Read()).at(kNvmeId).mediaLifeLeftPercent, 97u);

  // An answer without the indicator is the last known one.
  std::filesystem::copy_file(kWearMachine + "/smart/nvme0n1.json", records.path() + "/nvme0n1.json",
                             std::filesystem::copy_options::overwrite_existing);
  std::filesystem::remove(records.path() + "/nvme0n1.exit");
  EXPECT_EQ(DisksById(source.Read()).at(kNvmeId).mediaLifeLeftPercent, std::nullopt);
}

TEST(SmartctlWear, InventoriesDifferingOnlyInMediaLifeDiffer) {
  pelka::platform::Inventory a;
  a.nas.resize(1);
  a.nas[0].disks.resize(1);
  pelka::platform::Inventory b = a;
  EXPECT_EQ(a, b);
  b.nas[0].disks[0].mediaLifeLeftPercent = 50;
  EXPECT_NE(a, b);
  a.nas[0].disks[0].mediaLifeLeftPercent = 49;
  EXPECT_NE(a, b);
  a.nas[0].disks[0].mediaLifeLeftPercent = 50;
  EXPECT_EQ(a, b);
}

}  // namespace
}  // namespace zeda::test
