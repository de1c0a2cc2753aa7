// This machine's own disks through a linux source and zeda-cim, compared with
// what lsblk lists: every whole disk that is not of a virtual kind, with the
// same size, rotational flag, and model and serial where lsblk has them.
#include <gtest/gtest.h>

#include "ChildProcess.h"
#include "CliRun.h"
#include "Fixtures.h"

namespace zeda::test {
namespace {

using nlohmann::json;

struct Disk {
  std::string name;  // lsblk's kernel name, or our identifier
  std::uint64_t size = 0;
  bool rotational = false;
  std::optional<std::string> model;
  std::optional<std::string> serial;
};

std::optional<std::string> Text(const json& value) {
  if (!value.is_string()) return std::nullopt;
  std::string text = value.get<std::string>();
  const auto first = text.find_first_not_of(' ');
  if (first == std::string::npos) return std::nullopt;
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// lsblk names of the kinds the source leaves out.
bool IsVirtual(const std::string& name) {
  for (const char* prefix : {"loop", "ram", "zram", "dm-", "md", "sr", "nbd", "fd"}) {
    if (name.rfind(prefix, 0) == 0) return true;
  }
  return false;
}

bool Flag(const json& value) {
  return value.is_boolean() ? value.get<bool>() : value == "1" || value == 1;
}

std::optional<std::vector<Disk>> LsblkDisks() {
  const auto outcomes = pelka::platform::RunAll(
      {{"lsblk", "--json", "--bytes", "-d", "-o", "NAME,TYPE,SIZE,ROTA,MODEL,SERIAL"}},
      std::chrono::seconds(30));
  if (outcomes[0].end != pelka::platform::ChildOutcome::End::Exited ||
      outcomes[0].exitStatus != 0) {
    return std::nullopt;
  }
  const json listing = json::parse(outcomes[0].output);
  std::vector<Disk> disks;
  for (const json& device : listing.at("blockdevices")) {
    const std::string name = device.at("name").get<std::string>();
    if (device.at("type").get<std::string>() != "disk" || IsVirtual(name)) continue;
    const json& size = device.at("size");
    disks.push_back(Disk{
        name, size.is_string() ? std::stoull(size.get<std::string>()) : size.get<std::uint64_t>(),
        Flag(device.at("rota")), Text(device.at("model")), Text(device.at("serial"))});
  }
  return disks;
}

TEST(ThisMachine, EveryWholeDiskLsblkListsAppears) {
  const auto expected = LsblkDisks();
  if (!expected) GTEST_SKIP() << "lsblk is not available";
  TempDir dir;
  const std::string config = WriteConfig(dir.path(), "[{\"type\": \"linux\", \"nas\": \"live\"}]");
  const auto drives = ByKey(RunCli(config, {"ei", "ZEDA_DiskDrive"}), "Name");
  const auto extents = ByKey(RunCli(config, {"ei", "ZEDA_StorageExtent_Disk"}), "DeviceID");
  const auto packages = ByKey(RunCli(config, {"ei", "ZEDA_PhysicalPackage_Disk"}), "Tag");
  std::vector<Disk> answered;
  for (const auto& [id, drive] : drives) {
    Disk disk;
    disk.name = id;
    disk.rotational = drive.at("DiskType") == 2;
    disk.size =
        extents.at("ZEDA:live:DiskExtent" + id).at("NumberOfBlocks").get<std::uint64_t>() * 512;
    const auto& package = packages.at("ZEDA:live:DISK" + id);
    disk.model = Text(package.at("Model"));
    disk.serial = Text(package.at("SerialNumber"));
    answered.push_back(disk);
  }
  ASSERT_EQ(answered.size(), expected->size());
  // Each lsblk disk takes one answered disk that agrees with it.
  std::vector<bool> taken(answered.size(), false);
  for (const Disk& want : *expected) {
    bool found = false;
    for (std::size_t i = 0; i < answered.size() && !found; ++i) {
      const Disk& got = answered[i];
      if (taken[i] || got.size != want.size || got.rotational != want.rotational) continue;
      if (want.model && got.model != want.model) continue;
      if (want.serial && got.serial != want.serial) continue;
      taken[i] = found = true;
    }
    EXPECT_TRUE(found) << want.name << ": " << want.size << " bytes, rotational " << want.rotational
                       << ", model " << want.model.value_or("-") << ", serial "
                       << want.serial.value_or("-");
  }
}

}  // namespace
}  // namespace zeda::test
