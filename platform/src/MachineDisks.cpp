#include "MachineDisks.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "DiskIdentifiers.h"

namespace zeda::pelka::platform {

namespace {

std::string Property(const UdevProperties& properties, const char* key) {
  const auto it = properties.find(key);
  return it == properties.end() ? "" : it->second;
}

// Disjoint sets of path indexes.
class PathSets {
 public:
  explicit PathSets(std::size_t size) : parent_(size) {
    std::iota(parent_.begin(), parent_.end(), 0);
  }
  std::size_t Find(std::size_t i) {
    while (parent_[i] != i) i = parent_[i] = parent_[parent_[i]];
    return i;
  }
  // The set with the smaller first index absorbs the other.
  void Join(std::size_t a, std::size_t b) {
    a = Find(a);
    b = Find(b);
    if (a != b) parent_[std::max(a, b)] = std::min(a, b);
  }

 private:
  std::vector<std::size_t> parent_;
};

// Whether two paths with one world-wide name can be one disk: equal size and
// serial where both show them.
bool Agree(const MachineView& machine, std::size_t a, std::size_t b) {
  const BlockDisk& x = machine.paths[a];
  const BlockDisk& y = machine.paths[b];
  if (x.sizeBytes && y.sizeBytes && *x.sizeBytes != *y.sizeBytes) return false;
  const auto serial = [&machine](std::size_t i) {
    const std::string udev = Property(machine.udev[i].properties, "ID_SERIAL_SHORT");
    return udev.empty() ? machine.paths[i].serial : udev;
  };
  const std::string sx = serial(a);
  const std::string sy = serial(b);
  return sx.empty() || sy.empty() || sx == sy;
}

void JoinMultipathMaps(const MachineView& machine, const std::map<std::string, std::size_t>& byName,
                       PathSets& sets) {
  for (const MultipathMap& map : machine.maps) {
    std::optional<std::size_t> first;
    for (const std::string& path : map.paths) {
      const auto it = byName.find(path);
      if (it == byName.end()) continue;
      if (first) sets.Join(*first, it->second);
      if (!first) first = it->second;
    }
  }
}

// Each path joins the first earlier path of its world-wide name it agrees with.
void JoinWorldWideNames(const MachineView& machine, PathSets& sets) {
  std::map<std::string, std::vector<std::size_t>> byWwn;  // first path of each disk so far
  for (std::size_t i = 0; i < machine.paths.size(); ++i) {
    const std::string wwn = WorldWideNameId(machine.paths[i], machine.udev[i].properties);
    if (wwn.empty()) continue;
    std::vector<std::size_t>& seen = byWwn[wwn];
    bool joined = false;
    for (const std::size_t earlier : seen) {
      if (Agree(machine, earlier, i)) {
        sets.Join(earlier, i);
        joined = true;
        break;
      }
    }
    if (!joined) seen.push_back(i);
  }
}

std::vector<PhysicalDisk> Disks(const MachineView& machine, PathSets& sets) {
  std::map<std::size_t, PhysicalDisk> byFirst;
  for (std::size_t i = 0; i < machine.paths.size(); ++i) byFirst[sets.Find(i)].paths.push_back(i);
  std::map<std::string, std::size_t> mapOfPath;
  for (std::size_t m = 0; m < machine.maps.size(); ++m) {
    for (const std::string& path : machine.maps[m].paths) mapOfPath.emplace(path, m);
  }
  std::vector<PhysicalDisk> disks;
  for (auto& [first, disk] : byFirst) {
    disk.serving = disk.paths.front();
    for (const std::size_t path : disk.paths) {
      if (!IsGoneState(machine.paths[path].state)) {
        disk.serving = path;
        break;
      }
    }
    for (const std::size_t path : disk.paths) {
      const auto map = mapOfPath.find(machine.paths[path].name);
      if (map != mapOfPath.end()) {
        disk.map = map->second;
        break;
      }
    }
    disks.push_back(std::move(disk));
  }
  return disks;
}

}  // namespace

bool IsGoneState(const std::string& state) {
  for (const char* gone :
       {"offline", "transport-offline", "cancel", "deleted", "deleting", "dead"}) {
    if (state == gone) return true;
  }
  return false;
}

MachineView LookAtMachine(const std::string& root) {
  BlockScan scan = ScanBlockDevices(root);
  MachineView machine;
  machine.paths = std::move(scan.disks);
  machine.maps = std::move(scan.maps);
  machine.problems = std::move(scan.problems);
  machine.arrays = ScanMdArrays(root, machine.problems);
  machine.inUse = DevicesInUse(root, machine.problems);
  for (const BlockDisk& path : machine.paths) {
    machine.udev.push_back(ReadUdevEntry(root, path.devNumbers, path.name, machine.problems));
  }
  for (const MultipathMap& map : machine.maps) {
    machine.mapUdev.push_back(ReadUdevEntry(root, map.devNumbers, map.name, machine.problems));
  }
  MergePaths(machine);
  return machine;
}

void MergePaths(MachineView& machine) {
  std::map<std::string, std::size_t> byName;
  for (std::size_t i = 0; i < machine.paths.size(); ++i) byName[machine.paths[i].name] = i;
  PathSets sets(machine.paths.size());
  JoinMultipathMaps(machine, byName, sets);
  JoinWorldWideNames(machine, sets);
  machine.disks = Disks(machine, sets);
}

std::vector<std::string> SmartNodes(const MachineView& machine) {
  std::vector<std::string> nodes;
  for (const PhysicalDisk& disk : machine.disks) {
    nodes.push_back("/dev/" + machine.paths[disk.serving].name);
  }
  return nodes;
}

}  // namespace zeda::pelka::platform
