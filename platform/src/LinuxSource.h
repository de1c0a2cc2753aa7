// The machine the library runs on, served as one NAS.
//
// Every physical disk of <root>/sys/block becomes one disk record; md RAID
// arrays become disk groups; SMART answers come from smartctl through a cache
// (Smart.h). Each Read() looks at the machine again, so disks that appear or
// vanish (hot-plug) show up or disappear at the next read, without a restart.
//
// One disk per world-wide name (MachineDisks.h): the paths of a multipath disk
// (the slaves of a dm-multipath map, or whole disks reporting the same WWN with
// the same size and serial) are one record; its `paths` lists their kernel
// names in name order ("sdb", "sdk"). The disk's data (identity, size, state,
// SMART) comes from the first of its paths in name order that the kernel does
// not report offline or dead, else from the first; a path that vanishes leaves
// the disk served by the others.
//
// Disk identifier, stable across reboots and the hot-plugging of other disks
// (the kernel name sdX is not), the first that applies:
//   1. the world-wide name the disk reports:   wwn-0x5000c500a1b2c3d4 (NAA),
//                                              eui-0025388b91b2e5a1 (NVMe EUI-64)
//      (of any of its paths; one whose digits are all zero does not count)
//   2. its bus with its model and serial:      sata-WDC_WD40EFRX-68N32N0_WD-WCC7K1234567
//   3. the physical path it is attached by:    path-pci0000:00-0000:00:02.0-virtio1
//   4. the kernel name, when sysfs shows none of these: name-vda
// Characters other than letters, digits and ".-_:" become "_", and
// "DiskExtent" becomes "Disk_Extent" (the module reads a disk's identifier
// as the text after the last "DiskExtent" of an extent's DeviceID).
// Identifiers are unique: when disks would share one (two disks with one
// model and serial from a faulty firmware, names that differ only in
// characters that become "_", one WWN on disks that differ in size or
// serial), they are ordered by their physical attachment
// path, then kernel name; the first keeps the identifier and the others get
// "~2", "~3", ... appended ("~" appears in no identifier otherwise). The
// order does not depend on the sdX names, so the suffixes survive a reboot
// as long as the disks stay where they are plugged in.
//
// A disk is free when none of its paths has a partition or a device on it
// (md, LVM, dm; a multipath disk's own map does not count), nothing of it is
// mounted or swap, it is not an md member or spare, and udev's entry for it
// (the map's entry for a multipath disk with a map, else that of every path)
// shows no filesystem or partition table (ID_FS_TYPE, ID_PART_TABLE_TYPE).
// A disk udev has no usable entry for (no udev database, as in containers;
// an entry not yet written; an entry refused as garbage, UdevDatabase.h) is
// not free: without udev the source does not look at what the disk holds, and
// a disk holding data must never be offered as free. Likewise, no disk is
// free while a mount or swap table exists but cannot be read.
//
// What sysfs or udev should never show (an unreadable disk directory or
// attribute, a udev entry that is not udev's format; LinuxBlockDevices.h,
// UdevDatabase.h) is logged once at ERROR, each problem when it appears or
// changes, not at every read; the rest of the machine is served. In the
// identity texts, firmware and health message, control characters and bytes
// that are not well-formed UTF-8 become "?" (PrintableText.h).
#pragma once

#include <memory>
#include <string>

#include "Config.h"
#include "MachineProblems.h"
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
  // `askSmartAgain` false: takes in the SMART answers that have arrived
  // without asking again (a round run because answers arrived).
  NasRecord Read(std::chrono::milliseconds smartWait, bool askSmartAgain = true);
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
  ProblemLog problems_;
};

}  // namespace zeda::pelka::platform
