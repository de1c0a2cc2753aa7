#include "LinuxBlockDevices.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <map>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "Basics.h"
#include "BoundedFile.h"

namespace zeda::pelka::platform {

namespace fs = std::filesystem;

namespace {

// The kernel writes no attribute longer than a page.
constexpr std::size_t kAttributeLimit = 4096;

bool StartsWith(const std::string& text, const std::string& prefix) {
  return text.compare(0, prefix.size(), prefix) == 0;
}

bool Exists(const fs::path& path) {
  std::error_code error;
  return fs::exists(path, error);
}

// Whether the entry itself (a link, in /sys/block) is there.
bool EntryExists(const fs::path& path) {
  std::error_code error;
  return fs::exists(fs::symlink_status(path, error));
}

std::optional<std::uint64_t> Number(const std::string& text) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos)
    return std::nullopt;
  try {
    return std::stoull(text);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

// "major:minor", both decimal.
bool IsDevNumbers(const std::string& text) {
  const std::string::size_type colon = text.find(':');
  return colon != std::string::npos && Number(text.substr(0, colon)) &&
         Number(text.substr(colon + 1));
}

std::vector<std::string> SortedEntries(const fs::path& directory, std::error_code& error) {
  std::vector<std::string> names;
  for (fs::directory_iterator it(directory, error), end; !error && it != end; it.increment(error)) {
    names.push_back(it->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<std::string> SortedEntries(const fs::path& directory) {
  std::error_code error;
  return SortedEntries(directory, error);
}

// Reads attributes, noting what sysfs should never show. `consequence`
// words what the source does about a problem with one attribute.
class AttributeReader {
 public:
  explicit AttributeReader(std::vector<MachineProblem>& problems) : problems_(problems) {}

  // The first line of the attribute, trimmed; empty when absent or at fault.
  std::string Read(const fs::path& path, const std::string& consequence = "ignored") {
    const BoundedRead read = ReadBounded(path.string(), kAttributeLimit);
    switch (read.outcome) {
      case BoundedRead::Outcome::Missing:
        return "";
      case BoundedRead::Outcome::Unreadable:
        Note(path, "cannot be read: " + read.problem, consequence);
        return "";
      case BoundedRead::Outcome::TooLarge:
        Note(path, read.problem, consequence);
        return "";
      case BoundedRead::Outcome::Read:
        break;
    }
    if (read.text.find('\0') != std::string::npos) {
      Note(path, "holds a NUL byte", consequence);
      return "";
    }
    return Trimmed(read.text.substr(0, read.text.find('\n')), kAllLineWhitespace);
  }

  // An attribute every disk has: absent or empty is a problem too.
  std::optional<std::string> Required(const fs::path& path, const std::string& consequence) {
    const std::size_t before = problems_.size();
    std::string value = Read(path, consequence);
    if (problems_.size() != before) return std::nullopt;
    if (value.empty()) {
      Note(path, Exists(path) ? "empty" : "missing", consequence);
      return std::nullopt;
    }
    return value;
  }

  // The first readable, non-empty attribute of the list.
  std::string First(const std::vector<fs::path>& candidates) {
    for (const fs::path& candidate : candidates) {
      std::string value = Read(candidate);
      if (!value.empty()) return value;
    }
    return "";
  }

  void Note(const fs::path& path, const std::string& problem, const std::string& consequence) {
    problems_.push_back({path.string(), "Bad sysfs attribute " + path.string() + ": " + problem +
                                            " (" + consequence + ")"});
  }

 private:
  std::vector<MachineProblem>& problems_;
};

// The physical device path of a disk, relative to <root>/sys/devices, from
// the /sys/block/<name> link: ../devices/pci0000:00/.../block/sda gives
// pci0000:00/... (the part before /block/<name>).
std::string DevicePath(const fs::path& root, const std::string& name) {
  std::error_code error;
  const fs::path resolved = fs::canonical(root / "sys/block" / name, error);
  if (error) return "";
  const fs::path devices = fs::canonical(root / "sys/devices", error);
  if (error) return "";
  std::string path = resolved.lexically_relative(devices).generic_string();
  if (path.empty() || StartsWith(path, "..")) return "";
  const std::string tail = "/block/" + name;
  if (path.size() >= tail.size() &&
      path.compare(path.size() - tail.size(), tail.size(), tail) == 0) {
    path.erase(path.size() - tail.size());
  }
  return path;
}

void ReadRequired(const fs::path& block, BlockDisk& disk, AttributeReader& attributes) {
  const fs::path dev = block / "dev";
  const std::string noUdev = disk.name + " is served without its udev properties";
  if (const auto text = attributes.Required(dev, noUdev)) {
    if (IsDevNumbers(*text)) {
      disk.devNumbers = *text;
    } else {
      attributes.Note(dev, "\"" + *text + "\" is not major:minor", noUdev);
    }
  }
  // "size" counts 512-byte sectors whatever the logical block size.
  const fs::path size = block / "size";
  const std::string noSize = "capacity of " + disk.name + " unknown";
  if (const auto text = attributes.Required(size, noSize)) {
    const std::optional<std::uint64_t> sectors = Number(*text);
    if (sectors && *sectors <= std::numeric_limits<std::uint64_t>::max() / 512) {
      disk.sizeBytes = *sectors * 512;
    } else {
      attributes.Note(size, "\"" + *text + "\" is not a number of sectors", noSize);
    }
  }
}

BlockDisk ReadDisk(const fs::path& root, const std::string& name, AttributeReader& attributes) {
  const fs::path block = root / "sys/block" / name;
  const fs::path device = block / "device";
  BlockDisk disk;
  disk.name = name;
  ReadRequired(block, disk, attributes);
  disk.devicePath = DevicePath(root, name);
  const std::string rotational = attributes.Read(block / "queue/rotational");
  if (rotational == "0" || rotational == "1") disk.rotational = rotational == "1";
  const std::string vendor = attributes.Read(device / "vendor");
  // ATA disks behind the SCSI layer report the vendor "ATA"; virtio reports
  // a PCI vendor number. Neither names the maker.
  if (vendor != "ATA" && !StartsWith(vendor, "0x")) disk.vendor = vendor;
  disk.model = attributes.Read(device / "model");
  disk.serial = attributes.First({device / "serial", block / "serial"});
  disk.firmware = attributes.First({device / "rev", device / "firmware_rev"});
  disk.wwid = attributes.First({block / "wwid", device / "wwid"});
  disk.state = attributes.Read(device / "state");
  for (const std::string& entry : SortedEntries(block)) {
    if (StartsWith(entry, name) && Exists(block / entry / "partition")) {
      disk.partitions.push_back(entry);
    }
  }
  disk.holders = SortedEntries(block / "holders");
  return disk;
}

// A device-mapper device as far as multipath needs it.
struct DmDevice {
  std::string uuid;
  std::string mapName;
  std::string devNumbers;
  std::vector<std::string> slaves;
  std::vector<std::string> holders;
};

std::vector<MultipathMap> MultipathMaps(const std::map<std::string, DmDevice>& dm) {
  std::vector<MultipathMap> maps;
  for (const auto& [name, device] : dm) {
    if (!StartsWith(device.uuid, "mpath-")) continue;
    MultipathMap map;
    map.name = name;
    map.mapName = device.mapName;
    map.devNumbers = device.devNumbers;
    map.paths = device.slaves;
    map.holders = device.holders;
    for (const std::string& holder : device.holders) {
      const auto part = dm.find(holder);
      if (part == dm.end() || !StartsWith(part->second.uuid, "part")) continue;
      map.partitionNames.push_back(holder);
      if (!part->second.mapName.empty()) map.partitionNames.push_back(part->second.mapName);
    }
    maps.push_back(std::move(map));
  }
  return maps;
}

}  // namespace

bool IsVirtualKind(const std::string& name) {
  for (const char* prefix : {"loop", "ram", "zram", "dm-", "md", "sr", "nbd", "fd"}) {
    if (StartsWith(name, prefix)) return true;
  }
  return false;
}

BlockScan ScanBlockDevices(const std::string& root) {
  const fs::path base = fs::path(root) / "sys/block";
  std::error_code error;
  const std::vector<std::string> names = SortedEntries(base, error);
  if (error) {
    throw std::runtime_error("Cannot read " + base.string() + ": " + error.message());
  }
  BlockScan scan;
  AttributeReader attributes(scan.problems);
  std::map<std::string, DmDevice> dm;
  for (const std::string& name : names) {
    const fs::path block = base / name;
    if (StartsWith(name, "dm-")) {
      DmDevice& device = dm[name];
      device.uuid = attributes.Read(block / "dm/uuid");
      device.mapName = attributes.Read(block / "dm/name");
      if (std::string dev = attributes.Read(block / "dev"); IsDevNumbers(dev)) {
        device.devNumbers = std::move(dev);
      } else if (!dev.empty()) {
        attributes.Note(block / "dev", "\"" + dev + "\" is not major:minor",
                        name + " is served without its udev properties");
      }
      device.slaves = SortedEntries(block / "slaves");
      device.holders = SortedEntries(block / "holders");
      continue;
    }
    if (IsVirtualKind(name)) continue;
    std::error_code unreadable;
    SortedEntries(block, unreadable);
    if (unreadable) {
      // Gone meanwhile (unplugged), or there but not readable.
      if (EntryExists(block)) {
        scan.problems.push_back({block.string(), "Cannot read " + block.string() + ": " +
                                                     unreadable.message() + " (" + name +
                                                     " is left out)"});
      }
      continue;
    }
    std::vector<MachineProblem> diskProblems;
    AttributeReader diskAttributes(diskProblems);
    if (diskAttributes.Read(block / "hidden") == "1") continue;
    BlockDisk disk = ReadDisk(root, name, diskAttributes);
    // A disk unplugged while being read is left out whole, its problems too.
    if (!EntryExists(block)) continue;
    scan.problems.insert(scan.problems.end(), diskProblems.begin(), diskProblems.end());
    scan.disks.push_back(std::move(disk));
  }
  scan.maps = MultipathMaps(dm);
  return scan;
}

std::vector<MdArray> ScanMdArrays(const std::string& root, std::vector<MachineProblem>& problems) {
  const fs::path base = fs::path(root) / "sys/block";
  AttributeReader attributes(problems);
  std::vector<MdArray> arrays;
  for (const std::string& name : SortedEntries(base)) {
    if (!StartsWith(name, "md")) continue;
    MdArray array;
    array.name = name;
    const fs::path md = base / name / "md";
    for (const std::string& entry : SortedEntries(md)) {
      if (!StartsWith(entry, "dev-")) continue;
      const std::string member = entry.substr(4);
      // state is a comma-separated list: in_sync, spare, faulty, writemostly, ...
      const std::string state =
          "," + attributes.Read(md / entry / "state", member + " counted as active") + ",";
      if (state.find(",faulty,") != std::string::npos) continue;
      if (state.find(",spare,") != std::string::npos) {
        array.spares.push_back(member);
      } else {
        array.active.push_back(member);
      }
    }
    if (!array.active.empty() || !array.spares.empty()) arrays.push_back(std::move(array));
  }
  return arrays;
}

std::optional<std::set<std::string>> DevicesInUse(const std::string& root,
                                                  std::vector<MachineProblem>& problems) {
  constexpr std::size_t kTableLimit = 64 * 1024 * 1024;
  std::set<std::string> names;
  const fs::path mounts = Exists(fs::path(root) / "proc/self/mounts")
                              ? fs::path(root) / "proc/self/mounts"
                              : fs::path(root) / "proc/mounts";
  for (const fs::path& table : {mounts, fs::path(root) / "proc/swaps"}) {
    const BoundedRead read = ReadBounded(table.string(), kTableLimit);
    if (read.outcome == BoundedRead::Outcome::Missing) continue;
    if (read.outcome != BoundedRead::Outcome::Read) {
      problems.push_back({table.string(), "Cannot read " + table.string() + ": " + read.problem +
                                              " (no disk counts as free)"});
      return std::nullopt;
    }
    std::istringstream in(read.text);
    for (std::string line; std::getline(in, line);) {
      std::istringstream fields(line);
      std::string source;
      fields >> source;
      if (StartsWith(source, "/dev/")) names.insert(fs::path(source).filename().string());
    }
  }
  return names;
}

}  // namespace zeda::pelka::platform
