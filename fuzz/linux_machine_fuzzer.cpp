// libFuzzer harness of the linux source's record building: a machine made of
// up to eight disks whose world-wide names, models, serials, attachment paths,
// sizes, states and udev entries come from the input (drawn from small sets,
// so that they collide often), with multipath maps and an md array over
// them. Whatever the machine shows:
//   - every identifier is non-empty and unique, and every kernel name is the
//     path of exactly one disk, its paths in name order;
//   - groups name only disks that exist, each at most once;
//   - no identity text, firmware or health message holds a control character;
//   - a udev entry is used whole or refused with a problem, never half.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "LinuxNasRecord.h"
#include "MachineDisks.h"
#include "UdevDatabase.h"

namespace {

using namespace zeda::pelka::platform;

void Require(bool condition) {
  if (!condition) std::abort();
}

std::string Pick(FuzzedDataProvider& input, const std::vector<std::string>& choices) {
  const std::size_t which = input.ConsumeIntegralInRange<std::size_t>(0, choices.size());
  return which < choices.size() ? choices[which] : input.ConsumeRandomLengthString(24);
}

bool Printable(const std::string& text) {
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7f) return false;
  }
  return true;
}

BlockDisk Disk(FuzzedDataProvider& input, const std::string& name) {
  BlockDisk disk;
  disk.name = name;
  disk.devNumbers = "8:" + std::to_string(name.back() - 'a');
  disk.wwid = Pick(input, {"", "naa.5000c500d0000001", "naa.0000000000000000", "eui.00253888",
                           "naa.", "t10.ATA  DISK"});
  disk.model = Pick(input, {"", "DISK", "DISK A", "DISK\x01", "D/ISK"});
  disk.serial = Pick(input, {"", "0000", "SN#1", "SN?1", "DiskExtent"});
  disk.vendor = Pick(input, {"", "ATA", "SEAGATE"});
  disk.devicePath = Pick(input, {"", "pci0000:00/ata1/host0", "pci0000:00/ata2/host1",
                                 "pci0000:00/usb1/host2", "pci0000:00/virtio1"});
  if (input.ConsumeBool()) disk.sizeBytes = input.ConsumeIntegralInRange<std::uint64_t>(0, 3);
  disk.state = Pick(input, {"running", "offline", "dead", "live"});
  if (input.ConsumeBool()) disk.partitions.push_back(name + "1");
  return disk;
}

std::vector<std::string> Subset(FuzzedDataProvider& input, const std::vector<std::string>& names) {
  std::vector<std::string> chosen;
  for (const std::string& name : names) {
    if (input.ConsumeBool()) chosen.push_back(name);
  }
  return chosen;
}

MachineView Machine(FuzzedDataProvider& input) {
  MachineView machine;
  const std::size_t count = input.ConsumeIntegralInRange<std::size_t>(1, 8);
  std::vector<std::string> names;
  for (std::size_t i = 0; i < count; ++i) names.push_back(std::string("sd") + char('a' + i));
  for (const std::string& name : names) {
    machine.paths.push_back(Disk(input, name));
    std::string problem;
    const UdevEntry entry = ParseUdevEntry(input.ConsumeRandomLengthString(256), problem);
    Require(entry.found == problem.empty());
    Require(entry.found || entry.properties.empty());
    machine.udev.push_back(entry);
  }
  const std::size_t maps = input.ConsumeIntegralInRange<std::size_t>(0, 2);
  for (std::size_t m = 0; m < maps; ++m) {
    MultipathMap map;
    map.name = "dm-" + std::to_string(m);
    map.mapName = "mpath" + std::string(1, char('a' + m));
    map.paths = Subset(input, names);
    if (input.ConsumeBool()) map.holders.push_back("dm-9");
    for (const std::string& path : map.paths) {
      for (BlockDisk& disk : machine.paths) {
        if (disk.name == path) disk.holders.push_back(map.name);
      }
    }
    machine.maps.push_back(map);
    std::string problem;
    machine.mapUdev.push_back(ParseUdevEntry(input.ConsumeRandomLengthString(64), problem));
  }
  MdArray array;
  array.name = "md0";
  for (const std::string& name : Subset(input, names)) {
    (input.ConsumeBool() ? array.active : array.spares)
        .push_back(input.ConsumeBool() ? name : name + "1");
  }
  array.active.push_back("dm-0");
  machine.arrays.push_back(array);
  if (input.ConsumeBool()) machine.inUse = std::set<std::string>{"sda1", "mpatha"};
  MergePaths(machine);
  return machine;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const MachineView machine = Machine(input);
  const NasRecord nas = BuildNasRecord("fz", machine, {});

  std::set<std::string> ids;
  std::map<std::string, int> pathCount;
  for (const DiskRecord& record : nas.disks) {
    Require(!record.disk.id.empty());
    Require(ids.insert(record.disk.id).second);
    Require(!record.paths.empty());
    for (std::size_t i = 0; i < record.paths.size(); ++i) {
      Require(i == 0 || record.paths[i - 1] < record.paths[i]);
      ++pathCount[record.paths[i]];
    }
    Require(Printable(record.identity.model) && Printable(record.identity.serial) &&
            Printable(record.identity.product) && Printable(record.disk.firmwareVersion) &&
            Printable(record.health.message));
    Require(record.disk.id.find("DiskExtent") == std::string::npos);
  }
  Require(pathCount.size() == machine.paths.size());
  for (const auto& [path, count] : pathCount) Require(count == 1);
  for (const auto& group : nas.groups) {
    std::set<std::string> listed;
    for (const auto* list : {&group.dataDisks, &group.spareDisks}) {
      for (const std::string& id : *list) {
        Require(ids.count(id) == 1);
        Require(listed.insert(id).second);
      }
    }
  }
  return 0;
}
