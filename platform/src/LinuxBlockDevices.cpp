#include "LinuxBlockDevices.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "Basics.h"

namespace zeda::pelka::platform {

namespace fs = std::filesystem;

namespace {

// The first line of a sysfs attribute, trimmed; empty when unreadable.
std::string Attribute(const fs::path& path) {
  std::ifstream in(path);
  std::string line;
  if (!in || !std::getline(in, line)) return "";
  return Trimmed(line, kAllLineWhitespace);
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

std::vector<std::string> SortedEntries(const fs::path& directory) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator it(directory, error), end; !error && it != end; it.increment(error)) {
    names.push_back(it->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool StartsWith(const std::string& text, const std::string& prefix) {
  return text.compare(0, prefix.size(), prefix) == 0;
}

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

// The first readable, non-empty attribute of the list.
std::string FirstAttribute(const std::vector<fs::path>& candidates) {
  for (const fs::path& candidate : candidates) {
    std::string value = Attribute(candidate);
    if (!value.empty()) return value;
  }
  return "";
}

BlockDisk ReadDisk(const fs::path& root, const std::string& name) {
  const fs::path block = root / "sys/block" / name;
  const fs::path device = block / "device";
  BlockDisk disk;
  disk.name = name;
  disk.devNumbers = Attribute(block / "dev");
  disk.devicePath = DevicePath(root, name);
  // "size" counts 512-byte sectors whatever the logical block size.
  if (const auto sectors = Number(Attribute(block / "size"))) disk.sizeBytes = *sectors * 512;
  const std::string rotational = Attribute(block / "queue/rotational");
  if (rotational == "0" || rotational == "1") disk.rotational = rotational == "1";
  const std::string vendor = Attribute(device / "vendor");
  // ATA disks behind the SCSI layer report the vendor "ATA"; virtio reports
  // a PCI vendor number. Neither names the maker.
  if (vendor != "ATA" && !StartsWith(vendor, "0x")) disk.vendor = vendor;
  disk.model = Attribute(device / "model");
  disk.serial = FirstAttribute({device / "serial", block / "serial"});
  disk.firmware = FirstAttribute({device / "rev", device / "firmware_rev"});
  disk.wwid = FirstAttribute({block / "wwid", device / "wwid"});
  disk.state = Attribute(device / "state");
  for (const std::string& entry : SortedEntries(block)) {
    if (StartsWith(entry, name) && fs::exists(block / entry / "partition")) {
      disk.partitions.push_back(entry);
    }
  }
  disk.hasHolders = !SortedEntries(block / "holders").empty();
  return disk;
}

}  // namespace

bool IsVirtualKind(const std::string& name) {
  for (const char* prefix : {"loop", "ram", "zram", "dm-", "md", "sr", "nbd", "fd"}) {
    if (StartsWith(name, prefix)) return true;
  }
  return false;
}

std::vector<BlockDisk> ScanBlockDisks(const std::string& root) {
  const fs::path base = fs::path(root) / "sys/block";
  std::error_code error;
  fs::directory_iterator probe(base, error);
  if (error) {
    throw std::runtime_error("Cannot read " + base.string() + ": " + error.message());
  }
  std::vector<BlockDisk> disks;
  for (const std::string& name : SortedEntries(base)) {
    if (IsVirtualKind(name) || Attribute(base / name / "hidden") == "1") continue;
    // A disk that vanished while being read is left out whole.
    if (!fs::exists(base / name / "dev")) continue;
    disks.push_back(ReadDisk(root, name));
  }
  return disks;
}

std::vector<MdArray> ScanMdArrays(const std::string& root) {
  const fs::path base = fs::path(root) / "sys/block";
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
      const std::string state = "," + Attribute(md / entry / "state") + ",";
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

std::set<std::string> DevicesInUse(const std::string& root) {
  std::set<std::string> names;
  const auto addDevice = [&names](const std::string& source) {
    if (StartsWith(source, "/dev/")) names.insert(fs::path(source).filename().string());
  };
  const fs::path mounts = fs::exists(fs::path(root) / "proc/self/mounts")
                              ? fs::path(root) / "proc/self/mounts"
                              : fs::path(root) / "proc/mounts";
  std::ifstream mountTable(mounts);
  for (std::string line; std::getline(mountTable, line);) {
    std::istringstream fields(line);
    std::string source;
    fields >> source;
    addDevice(source);
  }
  std::ifstream swaps(fs::path(root) / "proc/swaps");
  for (std::string line; std::getline(swaps, line);) {
    std::istringstream fields(line);
    std::string source;
    fields >> source;
    addDevice(source);
  }
  return names;
}

std::map<std::string, std::string> UdevProperties(const std::string& root,
                                                  const std::string& devNumbers) {
  std::map<std::string, std::string> properties;
  if (devNumbers.empty()) return properties;
  std::ifstream in(fs::path(root) / "run/udev/data" / ("b" + devNumbers));
  for (std::string line; std::getline(in, line);) {
    if (!StartsWith(line, "E:")) continue;
    const std::string::size_type equals = line.find('=');
    if (equals == std::string::npos) continue;
    properties[line.substr(2, equals - 2)] = line.substr(equals + 1);
  }
  return properties;
}

}  // namespace zeda::pelka::platform
