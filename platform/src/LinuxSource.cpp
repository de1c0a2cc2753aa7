#include "LinuxSource.h"

#include <cctype>
#include <map>
#include <set>

#include "Basics.h"
#include "LinuxBlockDevices.h"

namespace zeda::pelka::platform {

namespace {

using zeda::orvi::DiskStatus;

using Properties = std::map<std::string, std::string>;

std::string Property(const Properties& properties, const char* key) {
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

std::string Sanitized(const std::string& text) {
  std::string out;
  for (const char c : text) {
    const bool kept =
        std::isalnum(static_cast<unsigned char>(c)) || c == '.' || c == '-' || c == '_' || c == ':';
    out += kept ? c : '_';
  }
  return out;
}

// The interface a disk is attached by, from its physical path (USB first:
// a USB enclosure shows an ATA or SCSI disk behind it), else udev's bus.
std::string InterfaceType(const BlockDisk& disk, const Properties& udev) {
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

std::string StableId(const BlockDisk& disk, const Properties& udev,
                     const std::string& interfaceType, const std::string& model,
                     const std::string& serial) {
  const std::string& wwid = disk.wwid;
  if (wwid.rfind("naa.", 0) == 0) return Sanitized("wwn-0x" + wwid.substr(4));
  if (wwid.rfind("eui.", 0) == 0) return Sanitized("eui-" + wwid.substr(4));
  const std::string wwn =
      FirstOf({Property(udev, "ID_WWN_WITH_EXTENSION"), Property(udev, "ID_WWN")});
  if (!wwn.empty()) return Sanitized("wwn-" + wwn);
  if (!serial.empty()) {
    std::string bus;
    for (const char c : interfaceType.empty() ? std::string("disk") : interfaceType) {
      bus += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return Sanitized(bus + "-" + (model.empty() ? serial : model + "_" + serial));
  }
  if (!disk.devicePath.empty()) {
    std::string path = disk.devicePath;
    for (char& c : path) {
      if (c == '/') c = '-';
    }
    return Sanitized("path-" + path);
  }
  return Sanitized("name-" + disk.name);
}

// Health and state from the device state and the SMART answer.
void ApplyHealth(const BlockDisk& disk, const SmartReport* smart, DiskRecord& record) {
  static const std::set<std::string> kGone = {"offline", "transport-offline", "cancel",
                                              "deleted", "deleting",          "dead"};
  if (kGone.count(disk.state) != 0) {
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

// The disk of each device name: a disk's own name and its partitions' names.
// Members of arrays are partitions or whole disks; both lead to the disk.
using DiskOfDevice = std::map<std::string, std::size_t>;

DiskOfDevice DisksOfDevices(const std::vector<BlockDisk>& disks) {
  DiskOfDevice diskOfDevice;
  for (std::size_t i = 0; i < disks.size(); ++i) {
    diskOfDevice[disks[i].name] = i;
    for (const std::string& partition : disks[i].partitions) diskOfDevice[partition] = i;
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

// Identity, interface, identifier, firmware, capacity and speed of one disk,
// from sysfs, its udev properties and its smartctl report (may be null).
DiskRecord DescribeDisk(const BlockDisk& disk, const Properties& udev, const SmartReport* report) {
  DiskRecord record;
  const std::string model = FirstOf({UdevDecoded(Property(udev, "ID_MODEL_ENC")), disk.model,
                                     Property(udev, "ID_MODEL"), report ? report->model : ""});
  const std::string serial =
      FirstOf({Property(udev, "ID_SERIAL_SHORT"), disk.serial, report ? report->serial : ""});
  std::string vendor = FirstOf({disk.vendor, UdevDecoded(Property(udev, "ID_VENDOR_ENC"))});
  if (vendor == "ATA") vendor.clear();  // the SCSI layer's word for any ATA disk, not a maker
  record.identity.model = model;
  record.identity.serial = serial;
  record.identity.product = (vendor.empty() || model.rfind(vendor, 0) == 0) ? model
                            : model.empty()                                 ? vendor
                                                                            : vendor + " " + model;
  record.disk.interfaceType = InterfaceType(disk, udev);
  record.disk.id = StableId(disk, udev, record.disk.interfaceType, model, serial);
  // The SCSI "rev" of an ATA disk is cut to four characters; udev and
  // smartctl have the whole version.
  record.disk.firmwareVersion =
      FirstOf({Property(udev, "ID_REVISION"), report ? report->firmware : "", disk.firmware});
  record.disk.capacity = disk.sizeBytes.value_or(0);
  record.disk.isSsd = disk.rotational.has_value() && !*disk.rotational;
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

LinuxSource::LinuxSource(LinuxSourceConfig config)
    : config_(std::move(config)),
      smart_(SmartSettings{config_.smartctl, config_.smartTtl, config_.smartTimeout}) {}

NasRecord LinuxSource::Read(std::chrono::milliseconds smartWait) {
  const std::vector<BlockDisk> disks = ScanBlockDisks(config_.root);
  const std::vector<MdArray> arrays = ScanMdArrays(config_.root);
  const std::set<std::string> inUse = DevicesInUse(config_.root);

  std::vector<std::string> nodes;
  for (const BlockDisk& disk : disks) nodes.push_back("/dev/" + disk.name);
  const std::map<std::string, SmartReport> smart = smart_.Reports(nodes, smartWait);

  const DiskOfDevice diskOfDevice = DisksOfDevices(disks);
  const std::set<std::size_t> spareDisks = DisksOfMembers(arrays, diskOfDevice, &MdArray::spares);
  const std::set<std::size_t> memberDisks = DisksOfMembers(arrays, diskOfDevice, &MdArray::active);

  NasRecord nas;
  nas.name = config_.nas;
  for (std::size_t i = 0; i < disks.size(); ++i) {
    const BlockDisk& disk = disks[i];
    const Properties udev = UdevProperties(config_.root, disk.devNumbers);
    const auto found = smart.find(nodes[i]);
    const SmartReport* report = found == smart.end() ? nullptr : &found->second;

    DiskRecord record = DescribeDisk(disk, udev, report);
    record.disk.isSpare = spareDisks.count(i) != 0;
    const bool signature =
        !Property(udev, "ID_FS_TYPE").empty() || !Property(udev, "ID_PART_TABLE_TYPE").empty();
    record.disk.isFree = disk.partitions.empty() && !disk.hasHolders && !signature &&
                         inUse.count(disk.name) == 0 && memberDisks.count(i) == 0 &&
                         spareDisks.count(i) == 0;
    ApplyHealth(disk, report, record);
    nas.disks.push_back(std::move(record));
  }
  nas.groups = ArrayGroups(arrays, diskOfDevice, nas.disks);
  return nas;
}

}  // namespace zeda::pelka::platform
