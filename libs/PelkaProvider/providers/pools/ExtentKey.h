// The disk behind a ZEDA_StorageExtent_Disk path, and the pool it lies in.
#ifndef ZEDA_PELKA_EXTENTKEY_H
#define ZEDA_PELKA_EXTENTKEY_H

#include <string>

#include "inventory/Records.h"

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

// Pool of the disk `diskId` of a NAS: every disk record whose id equals
// `diskId` without regard to case (each character upper-cased in the global
// locale) is classified with ClassifyDisk, in NAS order; the last one with a
// pool decides. 0 when no equal record has a pool.
int PoolOfDisk(const zeda::orvi::OrviDiskList& diskList, const std::string& diskId);

}  // namespace zeda::pelka

#endif
