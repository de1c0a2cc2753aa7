#include "providers/pools/PoolTotals.h"

#include <string>

#include <boost/algorithm/string/join.hpp>

namespace zeda::pelka {

namespace {

constexpr std::size_t kFree = 0;
constexpr std::size_t kData = 1;
constexpr std::size_t kSpare = 2;
constexpr std::size_t kCache = 3;

bool JoinedListHolds(const std::vector<std::string>& entries, const std::string& id) {
  return boost::algorithm::join(entries, ",").find(id) != std::string::npos;
}

}  // namespace

PoolTotals ComputePoolTotals(const zeda::orvi::OrviDiskList& diskList) {
  PoolTotals totals{};
  for (const zeda::orvi::OrviDisk& disk : diskList.disks) {
    if (disk.isFree) {
      totals[kFree] += disk.capacity;
    } else if (disk.isSsd) {
      totals[kCache] += disk.capacity;
    } else if (disk.isSpare) {
      totals[kSpare] += disk.capacity;
    } else {
      for (const zeda::orvi::OrviDiskGroup& group : diskList.groups) {
        if (JoinedListHolds(group.spareDisks, disk.id)) {
          totals[kSpare] += disk.capacity;
        }
        if (JoinedListHolds(group.dataDisks, disk.id)) {
          totals[kData] += disk.capacity;
        }
      }
    }
  }
  return totals;
}

}  // namespace zeda::pelka
