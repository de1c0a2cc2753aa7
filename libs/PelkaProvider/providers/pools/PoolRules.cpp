#include "providers/pools/PoolRules.h"

#include <locale>
#include <string_view>

#include <boost/algorithm/string/predicate.hpp>

#include "providers/pools/SubstringIndex.h"

namespace zeda::pelka {

namespace {

using zeda::orvi::OrviDisk;
using zeda::orvi::OrviDiskGroup;
using zeda::orvi::OrviDiskList;

constexpr std::size_t kFree = 0;
constexpr std::size_t kData = 1;
constexpr std::size_t kSpare = 2;
constexpr std::size_t kCache = 3;

bool HasPoolFlag(const OrviDisk& disk) { return disk.isFree || disk.isSsd || disk.isSpare; }

// Pool of a flagged disk in PoolOfDisk and ComputePoolTotals: the first
// flag in the order isFree, isSsd, isSpare decides.
int FlagPool(const OrviDisk& disk) {
  if (disk.isFree) {
    return 1;
  }
  if (disk.isSsd) {
    return 4;
  }
  return disk.isSpare ? 3 : 0;
}

// The identifiers a rule looks for in the groups, indexed once, with the
// pattern number of every disk that takes part (kSkipped for the others).
constexpr std::size_t kSkipped = static_cast<std::size_t>(-1);

struct IndexedDisks {
  SubstringIndex index;
  std::vector<std::size_t> patternOfDisk;
};

template <class Takes>
IndexedDisks IndexDisks(const std::vector<OrviDisk>& disks, Takes takes) {
  std::vector<std::string_view> ids;
  std::vector<std::size_t> idOfDisk(disks.size(), kSkipped);
  for (std::size_t d = 0; d < disks.size(); ++d) {
    if (takes(disks[d])) {
      idOfDisk[d] = ids.size();
      ids.emplace_back(disks[d].id);
    }
  }
  IndexedDisks indexed{SubstringIndex(ids), std::move(idOfDisk)};
  for (std::size_t& pattern : indexed.patternOfDisk) {
    if (pattern != kSkipped) {
      pattern = indexed.index.PatternOf(pattern);
    }
  }
  return indexed;
}

// Per pattern, the number of entries of the chosen lists of all groups that
// contain it.
std::vector<std::size_t> CountEntries(SubstringIndex& index,
                                      const std::vector<OrviDiskGroup>& groups,
                                      std::vector<std::string> OrviDiskGroup::*list) {
  std::vector<std::size_t> counts(index.PatternCount(), 0);
  for (const OrviDiskGroup& group : groups) {
    for (const std::string& entry : group.*list) {
      index.ForEachOccurring(entry, [&counts](std::size_t pattern) { ++counts[pattern]; });
    }
  }
  return counts;
}

// Per pattern, the pool the group walk of PoolOfDisk gives: per group
// first the spare entries (3), then the data entries (2); the last group
// that lists the identifier decides. 0 when no entry contains it.
std::vector<int> GroupPools(SubstringIndex& index, const std::vector<OrviDiskGroup>& groups) {
  std::vector<int> pools(index.PatternCount(), 0);
  for (const OrviDiskGroup& group : groups) {
    for (const std::string& entry : group.spareDisks) {
      index.ForEachOccurring(entry, [&pools](std::size_t pattern) { pools[pattern] = 3; });
    }
    for (const std::string& entry : group.dataDisks) {
      index.ForEachOccurring(entry, [&pools](std::size_t pattern) { pools[pattern] = 2; });
    }
  }
  return pools;
}

int ClassifyIndexed(const OrviDisk& disk, const std::vector<int>& groupPools, std::size_t pattern) {
  return HasPoolFlag(disk) ? FlagPool(disk) : groupPools[pattern];
}

void JoinInto(std::string& joined, const std::vector<std::string>& entries) {
  joined.clear();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (i != 0) {
      joined += ',';
    }
    joined += entries[i];
  }
}

}  // namespace

int EnumeratedPool(const OrviDisk& disk) {
  if (disk.isFree) {
    return 1;
  }
  if (disk.isSsd || disk.isSpare) {
    return 0;
  }
  return 2;
}

int PoolOfDisk(const OrviDiskList& diskList, const std::string& diskId) {
  const std::locale locale;  // the global locale
  IndexedDisks equal = IndexDisks(diskList.disks, [&](const OrviDisk& disk) {
    return boost::algorithm::iequals(disk.id, diskId, locale);
  });
  // Records that differ only in case are different identifiers for the
  // groups; they share one automaton run over the entries.
  const std::vector<int> groupPools = equal.index.PatternCount() == 0
                                          ? std::vector<int>()
                                          : GroupPools(equal.index, diskList.groups);
  int pool = 0;
  for (std::size_t d = 0; d < diskList.disks.size(); ++d) {
    if (equal.patternOfDisk[d] == kSkipped) {
      continue;
    }
    const int found = ClassifyIndexed(diskList.disks[d], groupPools, equal.patternOfDisk[d]);
    if (found != 0) {
      pool = found;
    }
  }
  return pool;
}

std::vector<std::size_t> PoolMembershipCounts(const OrviDiskList& diskList, int pool) {
  const std::vector<OrviDisk>& disks = diskList.disks;
  std::vector<std::size_t> counts(disks.size(), 0);
  if (pool == 1 || pool == 4) {
    for (std::size_t d = 0; d < disks.size(); ++d) {
      counts[d] = (pool == 1 ? disks[d].isFree : disks[d].isSsd) ? 1 : 0;
    }
    return counts;
  }
  if (pool != 2 && pool != 3) {
    return counts;
  }
  // Only disks whose answer depends on the groups are indexed, so every
  // (entry, identifier) pair the index finds is at least one result.
  const bool spare = pool == 3;
  IndexedDisks indexed =
      IndexDisks(disks, [spare](const OrviDisk& disk) { return !(spare && disk.isSpare); });
  const std::vector<std::size_t> entries =
      CountEntries(indexed.index, diskList.groups,
                   spare ? &OrviDiskGroup::spareDisks : &OrviDiskGroup::dataDisks);
  for (std::size_t d = 0; d < disks.size(); ++d) {
    counts[d] = indexed.patternOfDisk[d] == kSkipped ? 1 : entries[indexed.patternOfDisk[d]];
  }
  return counts;
}

PoolTotals ComputePoolTotals(const OrviDiskList& diskList) {
  const std::vector<OrviDisk>& disks = diskList.disks;
  IndexedDisks indexed = IndexDisks(disks, [](const OrviDisk& disk) { return !HasPoolFlag(disk); });
  // Per pattern, the number of groups whose joined spare list (and joined
  // data list) holds it. Each list is joined once per call.
  std::vector<std::uint64_t> spareLists(indexed.index.PatternCount(), 0);
  std::vector<std::uint64_t> dataLists(indexed.index.PatternCount(), 0);
  if (indexed.index.PatternCount() != 0) {
    std::string joined;
    for (const OrviDiskGroup& group : diskList.groups) {
      JoinInto(joined, group.spareDisks);
      indexed.index.ForEachOccurring(joined, [&](std::size_t pattern) { ++spareLists[pattern]; });
      JoinInto(joined, group.dataDisks);
      indexed.index.ForEachOccurring(joined, [&](std::size_t pattern) { ++dataLists[pattern]; });
    }
  }
  PoolTotals totals{};
  for (std::size_t d = 0; d < disks.size(); ++d) {
    const OrviDisk& disk = disks[d];
    switch (FlagPool(disk)) {
      case 1:
        totals[kFree] += disk.capacity;
        break;
      case 4:
        totals[kCache] += disk.capacity;
        break;
      case 3:
        totals[kSpare] += disk.capacity;
        break;
      default: {
        // Unsigned arithmetic wraps exactly as adding the capacity once per
        // group and list would.
        const std::size_t pattern = indexed.patternOfDisk[d];
        totals[kSpare] += disk.capacity * spareLists[pattern];
        totals[kData] += disk.capacity * dataLists[pattern];
        break;
      }
    }
  }
  return totals;
}

}  // namespace zeda::pelka
