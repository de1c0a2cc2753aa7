// The physical disks of the machine: the whole disks of sysfs
// (LinuxBlockDevices.h) with their udev entries (UdevDatabase.h), the paths
// of one disk merged into one.
//
// Paths of one disk: the paths (slaves) of one dm-multipath map, and the
// whole disks that report the same world-wide name (DiskIdentifiers.h) and
// agree on size and serial where both show them. Disks sharing a world-wide
// name but differing in size or serial are different disks with a faulty
// firmware: they stay apart (and LinuxSource.h makes their identifiers
// unique). An NVMe namespace's own multipath paths are hidden by the kernel
// and never listed.
//
// The path that serves a disk's data (identity, size, state, SMART) is the
// first of its paths in name order whose device state is not offline or dead,
// else the first.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "LinuxBlockDevices.h"
#include "MachineProblems.h"
#include "UdevDatabase.h"

namespace zeda::pelka::platform {

struct PhysicalDisk {
  std::vector<std::size_t> paths;  // indexes into MachineView::paths, in name order
  std::size_t serving = 0;         // the index (into MachineView::paths) that serves
  std::optional<std::size_t> map;  // index into MachineView::maps
};

struct MachineView {
  std::vector<BlockDisk> paths;  // every whole disk of sysfs, in name order
  std::vector<UdevEntry> udev;   // of each path
  std::vector<MultipathMap> maps;
  std::vector<UdevEntry> mapUdev;  // of each map
  std::vector<MdArray> arrays;
  // Mounted or swap (DevicesInUse); none when the tables cannot be read.
  std::optional<std::set<std::string>> inUse;
  std::vector<PhysicalDisk> disks;  // in the name order of their first path
  std::vector<MachineProblem> problems;
};

// Device states in which the kernel no longer reaches a device.
bool IsGoneState(const std::string& state);

// Reads sysfs, the udev database and the mount tables under `root` and
// merges the paths. Throws std::runtime_error when <root>/sys/block cannot be
// read; every other fault is a problem of the view.
MachineView LookAtMachine(const std::string& root);

// Fills machine.disks from its paths, their udev entries and the maps.
void MergePaths(MachineView& machine);

// The device node smartctl is asked about for each disk: /dev/<serving path>,
// in disk order.
std::vector<std::string> SmartNodes(const MachineView& machine);

}  // namespace zeda::pelka::platform
