#include "providers/pools/ClassifyDisk.h"

#include <algorithm>
#include <string>

namespace zeda::pelka {

namespace {

bool AnyEntryContains(const std::vector<std::string>& entries, const std::string& id) {
  return std::any_of(entries.begin(), entries.end(), [&id](const std::string& entry) {
    return entry.find(id) != std::string::npos;
  });
}

}  // namespace

int ClassifyDisk(const zeda::orvi::OrviDisk& disk,
                 const std::vector<zeda::orvi::OrviDiskGroup>& groups) {
  if (disk.isFree) {
    return 1;
  }
  if (disk.isSsd) {
    return 4;
  }
  if (disk.isSpare) {
    return 3;
  }
  int pool = 0;
  for (const zeda::orvi::OrviDiskGroup& group : groups) {
    if (AnyEntryContains(group.spareDisks, disk.id)) {
      pool = 3;
    }
    if (AnyEntryContains(group.dataDisks, disk.id)) {
      pool = 2;
    }
  }
  return pool;
}

}  // namespace zeda::pelka
