#include "providers/pools/PoolTotals.h"

#include <string>
#include <vector>

#include <boost/algorithm/string/join.hpp>

namespace zeda::pelka {

namespace {

constexpr std::size_t kFree = 0;
constexpr std::size_t kData = 1;
constexpr std::size_t kSpare = 2;
constexpr std::size_t kCache = 3;

// A group's two lists, each joined with "," between entries. The texts are
// the same for every disk, so they are joined once per call.
struct JoinedGroup {
  std::string spareDisks;
  std::string dataDisks;
};

bool Holds(const std::string& joined, const std::string& id) {
  return joined.find(id) != std::string::npos;
}

}  // namespace

PoolTotals ComputePoolTotals(const zeda::orvi::OrviDiskList& diskList) {
  std::vector<JoinedGroup> groups;
  groups.reserve(diskList.groups.size());
  for (const zeda::orvi::OrviDiskGroup& group : diskList.groups) {
    groups.push_back({boost::algorithm::join(group.spareDisks, ","),
                      boost::algorithm::join(group.dataDisks, ",")});
  }
  PoolTotals totals{};
  for (const zeda::orvi::OrviDisk& disk : diskList.disks) {
    if (disk.isFree) {
      totals[kFree] += disk.capacity;
    } else if (disk.isSsd) {
      totals[kCache] += disk.capacity;
    } else if (disk.isSpare) {
      totals[kSpare] += disk.capacity;
    } else {
      for (const JoinedGroup& group : groups) {
        if (Holds(group.spareDisks, disk.id)) {
          totals[kSpare] += disk.capacity;
        }
        if (Holds(group.dataDisks, disk.id)) {
          totals[kData] += disk.capacity;
        }
      }
    }
  }
  return totals;
}

}  // namespace zeda::pelka
