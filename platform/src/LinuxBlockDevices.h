// The block devices of a Linux machine as sysfs shows them under a root
// directory ("/" on the machine itself, a recorded tree in tests): the whole
// disks, the dm-multipath maps over them, md RAID arrays and what is mounted.
//
// sysfs is read without trusting it: every attribute is read with a bound
// (BoundedFile.h), and what sysfs should never show is a MachineProblem, with
// the rest of the machine still read:
//   - a disk directory that cannot be read: the disk is left out;
//   - an attribute that exists but cannot be read, is larger than a page
//     (4096 bytes) or holds a NUL byte: it counts as absent;
//   - `dev` missing or not "major:minor": the disk is served without its udev
//     properties; `size` missing or not a number of sectors: capacity 0.
// A disk whose /sys/block entry is gone by the time it was read has been
// unplugged meanwhile: it is left out without a problem.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "MachineProblems.h"

namespace zeda::pelka::platform {

struct BlockDisk {
  std::string name;        // kernel name: sda, nvme0n1, vda
  std::string devNumbers;  // "major:minor"; empty when sysfs does not show it
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
  std::vector<std::string> holders;     // kernel names of the devices on the disk (dm, md)
};

// One dm-multipath map (a dm device whose dm/uuid starts with "mpath-"):
// one disk reached through several paths.
struct MultipathMap {
  std::string name;                  // kernel name: dm-2
  std::string mapName;               // dm/name: mpatha, or the WWID when multipathd names maps so
  std::string devNumbers;            // "major:minor"
  std::vector<std::string> paths;    // slaves: kernel names of its paths, in name order
  std::vector<std::string> holders;  // kernel names of the devices on the map
  // Names the map's partitions go by (kpartx's dm devices, uuid "partN-mpath-..."):
  // kernel names and map names, e.g. dm-3, mpatha-part1.
  std::vector<std::string> partitionNames;
};

struct BlockScan {
  std::vector<BlockDisk> disks;  // whole disks, in name order
  std::vector<MultipathMap> maps;
  std::vector<MachineProblem> problems;
};

// Kernel names of devices that are not physical whole disks: loop, ram,
// zram, device-mapper, md, optical (sr), network block devices, floppies.
bool IsVirtualKind(const std::string& name);

// The whole disks under <root>/sys/block, in name order (byte order of the
// kernel names), without the virtual kinds and without hidden devices (NVMe
// multipath paths), and the dm-multipath maps. Throws std::runtime_error when
// <root>/sys/block cannot be read.
BlockScan ScanBlockDevices(const std::string& root);

// One md RAID array and the kernel names of its member devices by role.
struct MdArray {
  std::string name;                 // md0
  std::vector<std::string> active;  // members in use (in_sync or being rebuilt)
  std::vector<std::string> spares;
};

// The arrays of <root>/sys/block/md*/md, in name order, members in name order.
// A member state that cannot be read is a problem; the member counts as active.
std::vector<MdArray> ScanMdArrays(const std::string& root, std::vector<MachineProblem>& problems);

// Names of block devices in use as a mounted filesystem or as swap (the file
// name of each /dev/ source: sda1, dm-3, mpatha-part1), from
// <root>/proc/self/mounts (else <root>/proc/mounts) and <root>/proc/swaps; a
// table that is absent lists nothing. Empty, with a problem, when a table
// exists but cannot be read or is larger than 64 MiB: what is in use is then
// unknown.
std::optional<std::set<std::string>> DevicesInUse(const std::string& root,
                                                  std::vector<MachineProblem>& problems);

}  // namespace zeda::pelka::platform
