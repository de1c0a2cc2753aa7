#include "providers/pools/PoolMembership.h"

#include <algorithm>
#include <string>

namespace zeda::pelka {

namespace {

std::size_t EntriesContaining(const std::vector<std::string>& entries, const std::string& id) {
  return static_cast<std::size_t>(
      std::count_if(entries.begin(), entries.end(), [&id](const std::string& entry) {
        return entry.find(id) != std::string::npos;
      }));
}

}  // namespace

std::size_t PoolMembershipCount(const zeda::orvi::OrviDisk& disk,
                                const std::vector<zeda::orvi::OrviDiskGroup>& groups, int pool) {
  if ((disk.isFree && pool == 1) || (disk.isSsd && pool == 4) || (disk.isSpare && pool == 3)) {
    return 1;
  }
  std::size_t count = 0;
  for (const zeda::orvi::OrviDiskGroup& group : groups) {
    if (pool == 3) {
      count += EntriesContaining(group.spareDisks, disk.id);
    }
    if (pool == 2) {
      count += EntriesContaining(group.dataDisks, disk.id);
    }
  }
  return count;
}

}  // namespace zeda::pelka
