#include "LinuxNasRecord.h"

#include <algorithm>
#include <cctype>
#include <set>

#include "Basics.h"
#include "DiskIdentifiers.h"
#include "LinuxSource.h"
#include "PrintableText.h"

namespace zeda::pelka::platform {

namespace {

std::string Property(const UdevProperties& properties, const char* key) {
  const auto it = properties.find(key);
  return it == properties.end() ? "" : it->second;
}

bool Contains(const std::string& text, const char* part) {
  return text.find(part) != std::string::npos;
}

// udev writes unsafe characters of ID_MODEL_ENC and friends as \xNN.
std::string UdevDecoded(const std::string& text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 3 < text.size() && text[i + 1] == 'x' &&
        std::isxdigit(static_cast<unsigned char>(text[i + 2])) &&
        std::isxdigit(static_cast<unsigned char>(text[i + 3]))) {
      decoded += static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16));
      i += 3;
    } else {
      decoded += text[i];
    }
  }
  return Trimmed(decoded, kBlanks);
}

std::string FirstOf(std::initializer_list<std::string> candidates) {
  for (const std::string& candidate : candidates) {
    if (!candidate.empty()) return candidate;
  }
  return "";
}

// The interface a disk is attached by, from its physical path (USB first:
// a USB enclosure shows an ATA or SCSI disk behind it), else udev's bus.
std::string InterfaceType(const BlockDisk& disk, const UdevProperties& udev) {
  const std::string& path = disk.devicePath;
  if (Contains(path, "/usb")) return "USB";
  if (Contains(path, "/nvme")) return "NVMe";
  if (Contains(path, "/virtio")) return "VIRTIO";
  if (Contains(path, "/ata")) return "SATA";
  if (Contains(path, "/end_device-")) return "SAS";
  if (Contains(path, "/host")) return "SCSI";
  const std::string bus = Property(udev, "ID_BUS");
  if (bus == "ata") return "SATA";
  if (bus == "usb") return "USB";
  if (bus == "scsi") return "SCSI";
  if (bus == "nvme") return "NVMe";
  return "";
}

// Health and state from the device state and the SMART answer.
void ApplyHealth(const BlockDisk& disk, const SmartReport* smart, DiskRecord& record) {
  if (IsGoneState(disk.state)) {
    record.disk.status = zeda::orvi::NoContact;
    record.health = {"device " + disk.state, kHealthUnknown};
    return;
  }
  if (smart == nullptr) {
    record.disk.status = zeda::orvi::Unknown;
    record.health = {"no SMART answer", kHealthUnknown};
    return;
  }
  switch (smart->verdict) {
    case SmartReport::Verdict::Passed:
      record.disk.status =
          smart->attributesAtThreshold ? zeda::orvi::PredictiveFailure : zeda::orvi::Ok;
      record.health = {"PASSED", kHealthPassed};
      return;
    case SmartReport::Verdict::Failed:
      record.disk.status = zeda::orvi::PredictiveFailure;
      record.health = {"FAILED: " + smart->reason, kHealthFailed};
      return;
    case SmartReport::Verdict::CommandFailed:
      record.disk.status = zeda::orvi::Error;
      record.health = {smart->reason, kHealthUnknown};
      return;
    case SmartReport::Verdict::NoSmart:
      break;
  }
  record.disk.status = zeda::orvi::Unknown;
  record.health = {smart->reason, kHealthUnknown};
}

// Identity, interface, identifier (not yet unique), firmware, capacity,
// speed and media life left of one disk, from the sysfs and udev data of the
// path that serves it and its smartctl report (may be null).
DiskRecord DescribeDisk(const BlockDisk& disk, const UdevProperties& udev,
                        const SmartReport* report, const std::string& worldWideName) {
  DiskRecord record;
  const std::string model = FirstOf({UdevDecoded(Property(udev, "ID_MODEL_ENC")), disk.model,
                                     Property(udev, "ID_MODEL"), report ? report->model : ""});
  const std::string serial =
      FirstOf({Property(udev, "ID_SERIAL_SHORT"), disk.serial, report ? report->serial : ""});
  std::string vendor = FirstOf({disk.vendor, UdevDecoded(Property(udev, "ID_VENDOR_ENC"))});
  if (vendor == "ATA") vendor.clear();  // the SCSI layer's word for any ATA disk, not a maker
  record.identity.model = PrintableText(model);
  record.identity.serial = PrintableText(serial);
  record.identity.product = PrintableText((vendor.empty() || model.rfind(vendor, 0) == 0) ? model
                                          : model.empty()                                 ? vendor
                                                          : vendor + " " + model);
  record.disk.interfaceType = InterfaceType(disk, udev);
  record.disk.id = worldWideName.empty()
                       ? StableId(disk, udev, record.disk.interfaceType, model, serial)
                       : worldWideName;
  // The SCSI "rev" of an ATA disk is cut to four characters; udev and
  // smartctl have the whole version.
  record.disk.firmwareVersion = PrintableText(
      FirstOf({Property(udev, "ID_REVISION"), report ? report->firmware : "", disk.firmware}));
  record.disk.capacity = disk.sizeBytes.value_or(0);
  record.disk.isSsd = disk.rotational.has_value() && !*disk.rotational;
  if (report != nullptr) record.mediaLifeLeftPercent = report->mediaLifeLeftPercent;
  if (!record.disk.isSsd) {
    const std::string udevRate = Property(udev, "ID_ATA_ROTATION_RATE_RPM");
    if (report != nullptr && report->rotationRate) {
      record.disk.rpm = *report->rotationRate;
    } else if (!udevRate.empty() && udevRate.find_first_not_of("0123456789") == std::string::npos &&
               udevRate.size() < 7) {
      record.disk.rpm = static_cast<std::uint32_t>(std::stoul(udevRate));
    }
  }
  return record;
}

// Every name a disk's storage goes by, for md membership and the mount
// tables: its paths and their partitions, its multipath map by kernel and map
// name, and the map's partitions.
std::vector<std::string> NamesOf(const MachineView& machine, const PhysicalDisk& disk) {
  std::vector<std::string> names;
  for (const std::size_t path : disk.paths) {
    names.push_back(machine.paths[path].name);
    for (const std::string& partition : machine.paths[path].partitions) names.push_back(partition);
  }
  if (disk.map) {
    const MultipathMap& map = machine.maps[*disk.map];
    names.push_back(map.name);
    if (!map.mapName.empty()) names.push_back(map.mapName);
    names.insert(names.end(), map.partitionNames.begin(), map.partitionNames.end());
  }
  return names;
}

using DiskOfDevice = std::map<std::string, std::size_t>;

DiskOfDevice DisksOfDevices(const MachineView& machine) {
  DiskOfDevice diskOfDevice;
  for (std::size_t i = 0; i < machine.disks.size(); ++i) {
    for (const std::string& name : NamesOf(machine, machine.disks[i]))
      diskOfDevice.emplace(name, i);
  }
  return diskOfDevice;
}

// The disks behind the `members` list (active or spares) of every array.
std::set<std::size_t> DisksOfMembers(const std::vector<MdArray>& arrays,
                                     const DiskOfDevice& diskOfDevice,
                                     std::vector<std::string> MdArray::*members) {
  std::set<std::size_t> found;
  for (const MdArray& array : arrays) {
    for (const std::string& member : array.*members) {
      if (const auto it = diskOfDevice.find(member); it != diskOfDevice.end())
        found.insert(it->second);
    }
  }
  return found;
}

bool HasSignature(const UdevEntry& entry) {
  return !Property(entry.properties, "ID_FS_TYPE").empty() ||
         !Property(entry.properties, "ID_PART_TABLE_TYPE").empty();
}

// The free rule of LinuxSource.h, but for md membership.
bool LooksFree(const MachineView& machine, const PhysicalDisk& disk) {
  const MultipathMap* map = disk.map ? &machine.maps[*disk.map] : nullptr;
  for (const std::size_t path : disk.paths) {
    const BlockDisk& block = machine.paths[path];
    if (!block.partitions.empty()) return false;
    for (const std::string& holder : block.holders) {
      if (map == nullptr || holder != map->name) return false;
    }
  }
  if (!machine.inUse) return false;  // what is mounted is unknown
  for (const std::string& name : NamesOf(machine, disk)) {
    if (machine.inUse->count(name) != 0) return false;
  }
  if (map != nullptr) {
    const UdevEntry& entry = machine.mapUdev[*disk.map];
    return map->holders.empty() && entry.found && !HasSignature(entry);
  }
  return std::all_of(disk.paths.begin(), disk.paths.end(), [&machine](std::size_t path) {
    const UdevEntry& entry = machine.udev[path];
    return entry.found && !HasSignature(entry);
  });
}

// The attachment path a disk's identifier suffix is ordered by: the smallest
// of its paths'.
std::string AttachmentPath(const MachineView& machine, const PhysicalDisk& disk) {
  std::string smallest = machine.paths[disk.paths.front()].devicePath;
  for (const std::size_t path : disk.paths) {
    smallest = std::min(smallest, machine.paths[path].devicePath);
  }
  return smallest;
}

std::string WorldWideNameOfPaths(const MachineView& machine, const PhysicalDisk& disk) {
  for (const std::size_t path : disk.paths) {
    std::string wwn = WorldWideNameId(machine.paths[path], machine.udev[path].properties);
    if (!wwn.empty()) return wwn;
  }
  return "";
}

// One disk group per array that has a known disk: its active members, then
// its spares, each disk listed once.
std::vector<zeda::orvi::OrviDiskGroup> ArrayGroups(const std::vector<MdArray>& arrays,
                                                   const DiskOfDevice& diskOfDevice,
                                                   const std::vector<DiskRecord>& records) {
  std::vector<zeda::orvi::OrviDiskGroup> groups;
  for (const MdArray& array : arrays) {
    zeda::orvi::OrviDiskGroup group;
    std::set<std::size_t> listed;
    const auto add = [&](const std::vector<std::string>& members, std::vector<std::string>& ids) {
      for (const std::string& member : members) {
        const auto it = diskOfDevice.find(member);
        if (it != diskOfDevice.end() && listed.insert(it->second).second) {
          ids.push_back(records[it->second].disk.id);
        }
      }
    };
    add(array.active, group.dataDisks);
    add(array.spares, group.spareDisks);
    if (!group.dataDisks.empty() || !group.spareDisks.empty()) groups.push_back(std::move(group));
  }
  return groups;
}

}  // namespace

NasRecord BuildNasRecord(const std::string& nasName, const MachineView& machine,
                         const std::map<std::string, SmartReport>& smart) {
  const DiskOfDevice diskOfDevice = DisksOfDevices(machine);
  const std::set<std::size_t> spareDisks =
      DisksOfMembers(machine.arrays, diskOfDevice, &MdArray::spares);
  const std::set<std::size_t> memberDisks =
      DisksOfMembers(machine.arrays, diskOfDevice, &MdArray::active);

  NasRecord nas;
  nas.name = nasName;
  std::vector<IdCandidate> candidates;
  for (std::size_t i = 0; i < machine.disks.size(); ++i) {
    const PhysicalDisk& disk = machine.disks[i];
    const BlockDisk& serving = machine.paths[disk.serving];
    const auto found = smart.find("/dev/" + serving.name);
    const SmartReport* report = found == smart.end() ? nullptr : &found->second;

    DiskRecord record = DescribeDisk(serving, machine.udev[disk.serving].properties, report,
                                     WorldWideNameOfPaths(machine, disk));
    record.disk.isSpare = spareDisks.count(i) != 0;
    record.disk.isFree =
        LooksFree(machine, disk) && memberDisks.count(i) == 0 && spareDisks.count(i) == 0;
    ApplyHealth(serving, report, record);
    record.health.message = PrintableText(record.health.message);
    for (const std::size_t path : disk.paths) record.paths.push_back(machine.paths[path].name);
    candidates.push_back(
        {record.disk.id, AttachmentPath(machine, disk), machine.paths[disk.paths.front()].name});
    nas.disks.push_back(std::move(record));
  }
  const std::vector<std::string> ids = UniqueIds(candidates);
  for (std::size_t i = 0; i < ids.size(); ++i) nas.disks[i].disk.id = ids[i];
  nas.groups = ArrayGroups(machine.arrays, diskOfDevice, nas.disks);
  return nas;
}

}  // namespace zeda::pelka::platform
