// How NAS names and disk identifiers are put into system names and keys.
// Every provider forms its keys with these helpers so that they agree.
#pragma once

#include <string>

namespace zeda::pelka {

// Positional Boost.Format strings of the disk keys. Every argument is a
// string inserted as is: no number formatting, no padding.
// %1% system name, %2% disk identifier: DeviceID of a drive, Tag of a package.
inline constexpr char kDiskKeyFormat[] = "%1%:DISK%2%";
// %1% system name, %2% disk identifier: DeviceID of a disk extent.
inline constexpr char kExtentKeyFormat[] = "%1%:DiskExtent%2%";
// %1% NAS name (without "ZEDA:"), %2% disk identifier: InstanceID of a
// firmware identity.
inline constexpr char kSoftwareKeyFormat[] = "ZEDA:%1%:Software(DISK%2%)";
// %1% system name, %2% disk identifier: the same InstanceID, formed from the
// system name.
inline constexpr char kSystemSoftwareKeyFormat[] = "%1%:Software(DISK%2%)";

// "ZEDA:" followed by the NAS name.
std::string SystemName(const std::string& nasName);

// The NAS name inside a system name: the text after its last ":", or the
// whole text when it holds none.
std::string NasNameFromSystemName(const std::string& systemName);

// The health key of a disk: the text before the first ":" of `id` followed
// by the text after it ("0:3" gives "03"). An identifier without ":" gives
// itself twice ("7" gives "77"); the NAS API is queried with exactly that.
std::string StripFirstColon(const std::string& id);

// kDiskKeyFormat of system name and disk identifier ("ZEDA:nas1:DISK0:3").
std::string DiskDeviceId(const std::string& systemName, const std::string& id);

// Same text as DiskDeviceId; the Tag of a disk's physical package.
std::string PackageTag(const std::string& systemName, const std::string& id);

// kExtentKeyFormat ("ZEDA:nas1:DiskExtent0:3").
std::string ExtentDeviceId(const std::string& systemName, const std::string& id);

// kSoftwareKeyFormat of NAS name and identifier ("ZEDA:nas1:Software(DISK0:3)").
std::string SoftwareInstanceId(const std::string& nasName, const std::string& id);

// kSystemSoftwareKeyFormat of system name and identifier; for a system name
// made by SystemName it equals SoftwareInstanceId of the NAS name.
std::string SystemSoftwareInstanceId(const std::string& systemName, const std::string& id);

}  // namespace zeda::pelka
