// The linux source in process on the recorded machine: interface names,
// health messages, groups, the SMART cache, its time limit and a missing
// smartctl.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>

#include "ErrorLines.h"
#include "Fixtures.h"
#include "LinuxSource.h"
#include "MachineCopy.h"
#include "Smart.h"

namespace zeda::test {
namespace {

namespace fs = std::filesystem;
using pelka::platform::DiskRecord;
using pelka::platform::LinuxSource;
using pelka::platform::LinuxSourceConfig;
using pelka::platform::NasRecord;
using pelka::platform::SmartReport;

const std::string kFixture = ZEDA_LINUX_FIXTURE;

LinuxSourceConfig FixtureConfig() { return RecordedMachineConfig(kFixture, "fx"); }

std::map<std::string, DiskRecord> ById(const NasRecord& nas) {
  std::map<std::string, DiskRecord> disks;
  for (const DiskRecord& disk : nas.disks) disks[disk.disk.id] = disk;
  return disks;
}

TEST(LinuxSource, InterfacesHealthAndFlags) {
  LinuxSource source(FixtureConfig());
  const NasRecord nas = source.Read();
  EXPECT_EQ(nas.name, "fx");
  const auto disks = ById(nas);
  ASSERT_EQ(disks.size(), 9u);
  const auto& nvme = disks.at("eui-0025388b91b28888");
  EXPECT_EQ(nvme.disk.interfaceType, "NVMe");
  EXPECT_EQ(nvme.disk.capacity, 1000215216ull * 512);
  EXPECT_TRUE(nvme.disk.isSsd);
  EXPECT_FALSE(nvme.disk.isFree);  // its partition holds the root filesystem
  EXPECT_EQ(nvme.health.message, "PASSED");
  EXPECT_EQ(nvme.health.healthStatus, 0u);
  EXPECT_EQ(nvme.disk.status, zeda::orvi::Ok);
  EXPECT_EQ(disks.at("wwn-0x50014ee2b1111111").disk.interfaceType, "SATA");
  EXPECT_EQ(disks.at("wwn-0x5000c500a2222222").disk.interfaceType, "SAS");
  EXPECT_EQ(disks.at("wwn-0x5000c500a2222222").identity.product, "SEAGATE ST4000NM0025");
  const auto& usb = disks.at("usb-Elements_25A2_575836314136363636");
  EXPECT_EQ(usb.disk.interfaceType, "USB");
  EXPECT_EQ(usb.disk.status, zeda::orvi::Unknown);
  EXPECT_EQ(usb.health.healthStatus, pelka::platform::kHealthUnknown);
  EXPECT_EQ(usb.health.message,
            "/dev/sdf: Unknown USB bridge [0x1058:0x25a2 (0x1021)]; Please specify device type "
            "with the -d option.");
  const auto& virtio = disks.at("path-pci0000:00-0000:00:04.0-virtio2");
  EXPECT_EQ(virtio.disk.interfaceType, "VIRTIO");
  EXPECT_FALSE(virtio.disk.isFree);  // a filesystem on the whole disk
  const auto& failing = disks.at("wwn-0x5000c500c3333333");
  EXPECT_EQ(failing.disk.status, zeda::orvi::PredictiveFailure);
  EXPECT_EQ(failing.health.healthStatus, pelka::platform::kHealthFailed);
  EXPECT_EQ(failing.health.message, "FAILED: overall health self-assessment failed");
  const auto& noSmart = disks.at("sata-OLDDISK_160_OD7777777");
  EXPECT_EQ(noSmart.health.message,
            "SMART support is: Unavailable - device lacks SMART capability.");
  EXPECT_TRUE(noSmart.disk.isFree);
  EXPECT_TRUE(disks.at("wwn-0x50014ee2b4444444").disk.isSpare);
  EXPECT_FALSE(disks.at("wwn-0x50014ee2b1111111").disk.isSpare);

  ASSERT_EQ(nas.groups.size(), 1u);
  EXPECT_EQ(nas.groups[0].dataDisks,
            (std::vector<std::string>{"wwn-0x50014ee2b1111111", "wwn-0x5000c500a2222222",
                                      "wwn-0x5000c500c3333333"}));
  EXPECT_EQ(nas.groups[0].spareDisks, std::vector<std::string>{"wwn-0x50014ee2b4444444"});
}

TEST(LinuxSource, SmartAnswersAreCachedForTheirTimeToLive) {
  LinuxSource cached(FixtureConfig());
  cached.Read();
  cached.Read();
  EXPECT_EQ(cached.SmartRuns(), 9u);  // one per disk, once

  LinuxSourceConfig config = FixtureConfig();
  config.smartTtl = std::chrono::seconds(0);
  LinuxSource uncached(config);
  uncached.Read();
  uncached.Read();
  EXPECT_EQ(uncached.SmartRuns(), 18u);
}

TEST(LinuxSource, DisksThatAppearOrVanishShowAtTheNextRead) {
  TempDir dir;
  fs::copy(kFixture + "/root", dir.path() + "/root",
           fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  LinuxSourceConfig config = FixtureConfig();
  config.root = dir.path() + "/root";
  LinuxSource source(config);
  EXPECT_EQ(source.Read().disks.size(), 9u);
  fs::remove(dir.path() + "/root/sys/block/sde");
  const auto disks = ById(source.Read());
  EXPECT_EQ(disks.size(), 8u);
  EXPECT_EQ(disks.count("wwn-0x5002538e45555555"), 0u);
}

TEST(LinuxSource, UnreadableSysfsIsOneClearError) {
  LinuxSourceConfig config = FixtureConfig();
  config.root = "/nonexistent-root";
  LinuxSource source(config);
  try {
    source.Read();
    FAIL() << "no error";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string(error.what()),
              "Cannot read /nonexistent-root/sys/block: No such file or directory");
  }
}

TEST(LinuxSource, ADiskThatDoesNotAnswerInTimeDoesNotHoldTheRequest) {
  TempDir records;
  fs::copy(kFixture + "/smart", records.path(), fs::copy_options::recursive);
  std::ofstream(records.path() + "/sda.sleep") << "10\n";
  const ScopedEnv env("ZEDA_SMART_RECORDS", records.path());
  LinuxSourceConfig config = FixtureConfig();
  // Time enough for the other disks' stand-ins to answer on a loaded
  // machine under the sanitizers, far less than sda's sleep.
  config.smartTimeout = std::chrono::milliseconds(1500);
  config.smartTtl = std::chrono::seconds(0);
  LinuxSource source(config);
  const ErrorLines errors;
  const auto start = std::chrono::steady_clock::now();
  const auto disks = ById(source.Read());
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  EXPECT_EQ(disks.at("wwn-0x50014ee2b1111111").health.healthStatus,
            pelka::platform::kHealthUnknown);
  EXPECT_EQ(disks.at("wwn-0x50014ee2b4444444").health.message, "PASSED");  // the others answered
  source.Read();  // still hanging: no second line
  ASSERT_EQ(errors.Lines().size(), 1u);
  EXPECT_EQ(errors.Lines()[0],
            "smartctl /dev/sda: no answer within 1500 ms (the last known health stays in service)");

  // Once known, a health survives a disk that stops answering.
  fs::remove(records.path() + "/sda.sleep");
  EXPECT_EQ(ById(source.Read()).at("wwn-0x50014ee2b1111111").health.message, "PASSED");
  std::ofstream(records.path() + "/sda.sleep") << "10\n";
  EXPECT_EQ(ById(source.Read()).at("wwn-0x50014ee2b1111111").health.message, "PASSED");
}

TEST(LinuxSource, ASleepingDiskKeepsItsLastAnswer) {
  TempDir records;
  fs::copy(kFixture + "/smart", records.path(), fs::copy_options::recursive);
  const ScopedEnv env("ZEDA_SMART_RECORDS", records.path());
  LinuxSourceConfig config = FixtureConfig();
  config.smartTtl = std::chrono::seconds(0);
  LinuxSource source(config);
  EXPECT_EQ(ById(source.Read()).at("wwn-0x50014ee2b1111111").health.message, "PASSED");
  std::ofstream(records.path() + "/sda.json")
      << "{\"smartctl\": {\"messages\": [{\"string\": \"Device is in STANDBY mode, exit(2)\", "
         "\"severity\": \"information\"}], \"exit_status\": 2}}\n";
  std::ofstream(records.path() + "/sda.exit") << "2\n";
  EXPECT_EQ(ById(source.Read()).at("wwn-0x50014ee2b1111111").health.message, "PASSED");
}

TEST(LinuxSource, UnparsableSmartctlOutputIsOneErrorLine) {
  TempDir records;
  fs::copy(kFixture + "/smart", records.path(), fs::copy_options::recursive);
  std::ofstream(records.path() + "/sda.json") << "Segmentation fault\n";
  const ScopedEnv env("ZEDA_SMART_RECORDS", records.path());
  LinuxSourceConfig config = FixtureConfig();
  config.smartTtl = std::chrono::seconds(0);
  LinuxSource source(config);
  const ErrorLines errors;
  const auto sda = ById(source.Read()).at("wwn-0x50014ee2b1111111");
  source.Read();
  EXPECT_EQ(sda.health.healthStatus, pelka::platform::kHealthUnknown);
  EXPECT_EQ(sda.disk.status, zeda::orvi::Unknown);
  EXPECT_EQ(errors.Lines(), std::vector<std::string>{
                                "smartctl /dev/sda: unparsable smartctl output (exit status 0)"});
}

TEST(LinuxSource, MissingSmartctlIsOneErrorLine) {
  LinuxSourceConfig config = FixtureConfig();
  config.smartctl = "/nonexistent/smartctl";
  config.smartTtl = std::chrono::seconds(0);
  LinuxSource source(config);
  const ErrorLines errors;
  const auto disks = ById(source.Read());
  source.Read();
  ASSERT_EQ(errors.Lines().size(), 1u);
  EXPECT_EQ(errors.Lines()[0],
            "Cannot run /nonexistent/smartctl: No such file or directory (SMART health stays "
            "unknown; install "
            "smartmontools)");
  for (const auto& [id, disk] : disks) {
    EXPECT_EQ(disk.health.healthStatus, pelka::platform::kHealthUnknown) << id;
    EXPECT_EQ(disk.disk.status, zeda::orvi::Unknown) << id;
  }
  // Identity and size come from sysfs and udev without smartctl.
  EXPECT_EQ(disks.at("wwn-0x50014ee2b1111111").identity.serial, "WD-WCC7K1111111");
}

TEST(SmartctlOutput, UnparsableOutputIsRefused) {
  EXPECT_THROW(pelka::platform::ParseSmartctlOutput("not json", 0), std::runtime_error);
  EXPECT_THROW(pelka::platform::ParseSmartctlOutput("{\"a\": 1}", 0), std::runtime_error);
}

TEST(SmartctlOutput, MembersOfTheWrongTypeAreRefused) {
  const auto refusal = [](const std::string& body) {
    try {
      pelka::platform::ParseSmartctlOutput("{\"smartctl\": {}" + body + "}", 0);
    } catch (const std::runtime_error& error) {
      return std::string(error.what());
    }
    return std::string("accepted");
  };
  EXPECT_EQ(refusal(", \"model_name\": 5"),
            "smartctl output with a wrong type: model_name is not a string");
  EXPECT_EQ(refusal(", \"rotation_rate\": -1"),
            "smartctl output with a wrong type: rotation_rate is not a number of 0 or more");
  EXPECT_EQ(refusal(", \"smart_status\": {\"passed\": \"yes\"}"),
            "smartctl output with a wrong type: smart_status.passed is not true or false");
  EXPECT_EQ(refusal(", \"smart_support\": []"),
            "smartctl output with a wrong type: smart_support is not an object");
  EXPECT_EQ(refusal(", \"smart_status\": {\"passed\": true}, \"serial_number\": \"S1\""),
            "accepted");
  EXPECT_THROW(pelka::platform::ParseSmartctlOutput("{\"smartctl\": 3}", 0), std::runtime_error);
}

TEST(SmartctlOutput, VerdictsFromStatusAndExitBits) {
  const auto parse = [](const std::string& body, int exit) {
    return pelka::platform::ParseSmartctlOutput(
        "{\"smartctl\": {\"exit_status\": " + std::to_string(exit) + "}" + body + "}", exit);
  };
  EXPECT_EQ(parse(", \"smart_status\": {\"passed\": true}", 0).verdict,
            SmartReport::Verdict::Passed);
  EXPECT_TRUE(parse(", \"smart_status\": {\"passed\": true}", 16).attributesAtThreshold);
  EXPECT_EQ(parse(", \"smart_status\": {\"passed\": false}", 8).verdict,
            SmartReport::Verdict::Failed);
  EXPECT_EQ(parse("", 4).verdict, SmartReport::Verdict::CommandFailed);
  EXPECT_EQ(parse("", 2).verdict, SmartReport::Verdict::NoSmart);
  EXPECT_EQ(parse(", \"smart_support\": {\"available\": false}", 4).verdict,
            SmartReport::Verdict::NoSmart);
  EXPECT_EQ(parse(", \"rotation_rate\": 7200", 0).rotationRate, 7200u);
}

}  // namespace
}  // namespace zeda::test
