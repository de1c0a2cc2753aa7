// In-memory inventory records for the unit tests of the pool routines.
#ifndef ZEDA_TESTS_PROVIDERS_POOLS_POOLRECORDS_H
#define ZEDA_TESTS_PROVIDERS_POOLS_POOLRECORDS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "inventory/Records.h"
#include "providers/pools/PoolRules.h"

namespace zeda::test {

enum DiskFlag : unsigned { kNoFlag = 0, kFree = 1, kSpare = 2, kSsd = 4 };

inline zeda::orvi::OrviDisk Disk(const std::string& id, std::uint64_t capacity = 1000,
                                 unsigned flags = kNoFlag) {
  zeda::orvi::OrviDisk disk;
  disk.id = id;
  disk.capacity = capacity;
  disk.isFree = (flags & kFree) != 0;
  disk.isSpare = (flags & kSpare) != 0;
  disk.isSsd = (flags & kSsd) != 0;
  return disk;
}

inline zeda::orvi::OrviDiskGroup Group(std::vector<std::string> dataDisks,
                                       std::vector<std::string> spareDisks) {
  zeda::orvi::OrviDiskGroup group;
  group.dataDisks = std::move(dataDisks);
  group.spareDisks = std::move(spareDisks);
  return group;
}

// The disk list of one NAS: `disks` and its RAID `groups`.
inline zeda::orvi::OrviDiskList List(std::vector<zeda::orvi::OrviDisk> disks,
                                     std::vector<zeda::orvi::OrviDiskGroup> groups = {}) {
  zeda::orvi::OrviDiskList list;
  list.disks = std::move(disks);
  list.groups = std::move(groups);
  return list;
}

// The pool the extent-to-pool rule gives `disk` on a NAS of that one disk and
// `groups`: PoolOfDisk asked for the disk's own identifier.
inline int ClassifyDisk(const zeda::orvi::OrviDisk& disk,
                        const std::vector<zeda::orvi::OrviDiskGroup>& groups) {
  return zeda::pelka::PoolOfDisk(List({disk}, groups), disk.id);
}

// How often the pool-to-extent walk of `pool` answers `disk` on a NAS of that
// one disk and `groups`: PoolMembershipCounts of the one-disk list.
inline std::size_t PoolMembershipCount(const zeda::orvi::OrviDisk& disk,
                                       const std::vector<zeda::orvi::OrviDiskGroup>& groups,
                                       int pool) {
  return zeda::pelka::PoolMembershipCounts(List({disk}, groups), pool).front();
}

}  // namespace zeda::test

#endif
