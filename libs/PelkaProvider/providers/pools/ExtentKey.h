// The disk behind a ZEDA_StorageExtent_Disk path (its pool: PoolOfDisk in
// PoolRules.h).
#ifndef ZEDA_PELKA_EXTENTKEY_H
#define ZEDA_PELKA_EXTENTKEY_H

#include <string>

namespace zeda::pelka {

struct ExtentKeyParts {
  std::string nasName;  // "nas1"
  std::string diskId;   // "0:3"
};

// NAS name: the text after the last ":" of `systemName` (all of it without
// ":"). Disk identifier: the text of `deviceId` after the last "DiskExtent";
// without "DiskExtent" the text from position 9 on, and a `deviceId` shorter
// than 9 characters throws std::out_of_range "invalid string position".
ExtentKeyParts ParseExtentKey(const std::string& systemName, const std::string& deviceId);

}  // namespace zeda::pelka

#endif
