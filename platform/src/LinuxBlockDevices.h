// The whole disks of a Linux machine as sysfs shows them under a root
// directory ("/" on the machine itself, a recorded tree in tests).
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace zeda::pelka::platform {

struct BlockDisk {
  std::string name;        // kernel name: sda, nvme0n1, vda
  std::string devNumbers;  // "major:minor"
  std::string devicePath;  // physical path below /sys/devices, e.g.
                           // pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0
  std::optional<std::uint64_t> sizeBytes;
  std::optional<bool> rotational;
  std::string vendor;  // SCSI vendor; empty for ATA, NVMe and virtio
  std::string model;
  std::string serial;
  std::string firmware;
  std::string wwid;   // the kernel's world-wide identifier (naa., eui., t10., ...)
  std::string state;  // device state: running, offline, live, dead, ...
  std::vector<std::string> partitions;  // kernel names, in name order
  bool hasHolders = false;              // a device-mapper or md device sits on the disk
};

// Kernel names of devices that are not physical whole disks: loop, ram,
// zram, device-mapper, md, optical (sr), network block devices, floppies.
bool IsVirtualKind(const std::string& name);

// The whole disks under <root>/sys/block, in name order, without the virtual
// kinds and without hidden devices (NVMe multipath paths). Throws
// std::runtime_error when <root>/sys/block cannot be read; an attribute that
// cannot be read stays empty.
std::vector<BlockDisk> ScanBlockDisks(const std::string& root);

// One md RAID array and the kernel names of its member devices by role.
struct MdArray {
  std::string name;                 // md0
  std::vector<std::string> active;  // members in use (in_sync or being rebuilt)
  std::vector<std::string> spares;
};

// The arrays of <root>/sys/block/md*/md, in name order, members in name order.
std::vector<MdArray> ScanMdArrays(const std::string& root);

// Kernel names of block devices in use as a mounted filesystem or as swap,
// from <root>/proc/self/mounts (else <root>/proc/mounts) and <root>/proc/swaps.
std::set<std::string> DevicesInUse(const std::string& root);

// Properties of the udev database entry of a block device, read from the
// file libudev itself reads (libudev cannot be pointed at another root, and
// the tests give one),
// <root>/run/udev/data/b<major>:<minor> (lines "E:KEY=value"); empty when
// udev has none.
std::map<std::string, std::string> UdevProperties(const std::string& root,
                                                  const std::string& devNumbers);

}  // namespace zeda::pelka::platform
