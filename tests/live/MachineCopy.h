// A recorded machine of tests/fixtures copied to a scratch directory, so that
// a test can plug disks in, pull them out or spoil what sysfs and udev show.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "Fixtures.h"
#include "LinuxSource.h"

namespace zeda::test {

// A linux source over a recorded machine as it stands (it is only read).
inline pelka::platform::LinuxSourceConfig RecordedMachineConfig(const std::string& fixture,
                                                                const std::string& nas) {
  pelka::platform::LinuxSourceConfig config;
  config.nas = nas;
  config.root = fixture + "/root";
  config.smartctl = fixture + "/smartctl";
  return config;
}

class MachineCopy {
 public:
  // `fixture`: a directory with root/ and smartctl, e.g. ZEDA_MULTIPATH_FIXTURE.
  explicit MachineCopy(const std::string& fixture) : fixture_(fixture) {
    std::filesystem::copy(
        fixture + "/root", Root(),
        std::filesystem::copy_options::recursive | std::filesystem::copy_options::copy_symlinks);
  }

  std::string Root() const { return dir_.path() + "/root"; }
  // A path inside the copied root, e.g. Path("sys/block/sdb").
  std::string Path(const std::string& inside) const { return Root() + "/" + inside; }

  pelka::platform::LinuxSourceConfig Config(const std::string& nas = "fx") const {
    pelka::platform::LinuxSourceConfig config;
    config.nas = nas;
    config.root = Root();
    config.smartctl = fixture_ + "/smartctl";
    return config;
  }

 private:
  const std::string fixture_;
  TempDir dir_;
};

inline std::map<std::string, pelka::platform::DiskRecord> DisksById(
    const pelka::platform::NasRecord& nas) {
  std::map<std::string, pelka::platform::DiskRecord> disks;
  for (const pelka::platform::DiskRecord& disk : nas.disks) disks[disk.disk.id] = disk;
  return disks;
}

}  // namespace zeda::test
