// The machine the library runs on, served as one NAS.
//
// Every whole disk of <root>/sys/block (see LinuxBlockDevices.h) becomes one
// disk record; md RAID arrays become disk groups; SMART answers come from
// smartctl through a cache (Smart.h). Each Read() looks at the machine again,
// so disks that appear or vanish show up or disappear at the next request.
//
// Disk identifier, stable across reboots and the hot-plugging of other disks
// (the kernel name sdX is not), the first that applies:
//   1. the world-wide name the disk reports:   wwn-0x5000c500a1b2c3d4 (NAA),
//                                              eui-0025388b91b2e5a1 (NVMe EUI-64)
//   2. its bus with its model and serial:      sata-WDC_WD40EFRX-68N32N0_WD-WCC7K1234567
//   3. the physical path it is attached by:    path-pci0000:00-0000:00:02.0-virtio1
//   4. the kernel name, when sysfs shows none of these: name-vda
// Characters other than letters, digits and ".-_:" become "_".
#pragma once

#include <memory>
#include <string>

#include "Config.h"
#include "Smart.h"
#include "platform/Inventory.h"

namespace zeda::pelka::platform {

// healthStatus values of the linux source.
constexpr std::uint32_t kHealthPassed = 0;
constexpr std::uint32_t kHealthFailed = 1;
constexpr std::uint32_t kHealthUnknown = 2;

class LinuxSource {
 public:
  explicit LinuxSource(LinuxSourceConfig config);

  const LinuxSourceConfig& Settings() const { return config_; }

  // The NAS as the machine shows it now, with the SMART answers known after
  // waiting at most `smartWait` for those under way (Smart.h). Throws
  // std::runtime_error when the block devices cannot be listed at all.
  NasRecord Read(std::chrono::milliseconds smartWait);
  // The same, waiting for SMART answers up to the SMART timeout.
  NasRecord Read() { return Read(config_.smartTimeout); }

  // SMART answers under way, for a refresher that reads again once they are in.
  bool SmartAsking() const { return smart_.Asking(); }
  bool AwaitSmartAnswers(std::chrono::steady_clock::time_point deadline) {
    return smart_.AwaitAnswers(deadline);
  }

  std::uint64_t SmartRuns() const { return smart_.Runs(); }

 private:
  const LinuxSourceConfig config_;
  SmartCache smart_;
};

}  // namespace zeda::pelka::platform
