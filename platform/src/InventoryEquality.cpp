// Equality of parsed inventories: a re-read that yields the inventory already
// in service keeps that snapshot instead of adding one.
#include <tuple>

#include "platform/Inventory.h"

namespace zeda::pelka::platform {

namespace {

auto Fields(const zeda::orvi::OrviDisk& d) {
  return std::tie(d.status, d.isFree, d.isSpare, d.isSsd, d.interfaceType, d.id, d.firmwareVersion,
                  d.capacity, d.rpm);
}

bool Same(const DiskRecord& a, const DiskRecord& b) {
  return Fields(a.disk) == Fields(b.disk) && a.health.message == b.health.message &&
         a.health.healthStatus == b.health.healthStatus &&
         a.identity.product == b.identity.product && a.identity.model == b.identity.model &&
         a.identity.serial == b.identity.serial && a.paths == b.paths &&
         a.mediaLifeLeftPercent == b.mediaLifeLeftPercent;
}

bool Same(const zeda::orvi::OrviDiskGroup& a, const zeda::orvi::OrviDiskGroup& b) {
  return a.dataDisks == b.dataDisks && a.spareDisks == b.spareDisks;
}

bool Same(const NasRecord& a, const NasRecord& b);

template <typename T>
bool SameList(const std::vector<T>& a, const std::vector<T>& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!Same(a[i], b[i])) return false;
  }
  return true;
}

bool Same(const NasRecord& a, const NasRecord& b) {
  return a.name == b.name && SameList(a.disks, b.disks) && SameList(a.groups, b.groups);
}

}  // namespace

bool operator==(const Inventory& a, const Inventory& b) { return SameList(a.nas, b.nas); }

bool operator!=(const Inventory& a, const Inventory& b) { return !(a == b); }

}  // namespace zeda::pelka::platform
