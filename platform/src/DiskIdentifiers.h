// The identifiers the linux source gives its disks (the rule is stated in
// LinuxSource.h): stable across reboots, unique within the machine.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "LinuxBlockDevices.h"

namespace zeda::pelka::platform {

using UdevProperties = std::map<std::string, std::string>;

// Letters, digits and ".-_:" stay, any other byte becomes "_"; "DiskExtent"
// becomes "Disk_Extent", so that the text after the last "DiskExtent" of an
// extent's DeviceID is always the whole identifier.
std::string SanitizedId(const std::string& text);

// The world-wide name of a disk as an identifier ("wwn-0x5000c500a2222222",
// "eui-0025388b91b28888"): the kernel's wwid (NAA or EUI-64), else udev's
// ID_WWN_WITH_EXTENSION or ID_WWN. Empty when the disk reports none, or only
// one whose digits are all zero (which names no disk).
std::string WorldWideNameId(const BlockDisk& disk, const UdevProperties& udev);

// The identifier of one disk by the rule of LinuxSource.h, before it is made
// unique.
std::string StableId(const BlockDisk& disk, const UdevProperties& udev,
                     const std::string& interfaceType, const std::string& model,
                     const std::string& serial);

// One disk's identifier and what orders disks that share it.
struct IdCandidate {
  std::string id;
  std::string devicePath;  // physical attachment path (the smallest of its paths)
  std::string name;        // kernel name (of its first path)
};

// The identifiers made unique: among disks sharing one, ordered by physical
// attachment path, then kernel name, the first keeps it and the others get
// "~2", "~3", ... appended ("~" is never part of an identifier otherwise).
std::vector<std::string> UniqueIds(const std::vector<IdCandidate>& candidates);

}  // namespace zeda::pelka::platform
