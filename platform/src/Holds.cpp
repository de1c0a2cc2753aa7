#include "Holds.h"

#include <vector>

#include "Snapshot.h"
#include "inventory/Library.h"

namespace zeda::pelka {

namespace {

struct ThreadHolds {
  int depth = 0;
  // Usually one; more when the inventory changed during the request.
  std::vector<std::shared_ptr<const platform::Snapshot>> pinned;
};

ThreadHolds& Holds() {
  thread_local ThreadHolds holds;
  return holds;
}

}  // namespace

InventoryHold::InventoryHold() noexcept { ++Holds().depth; }

InventoryHold::~InventoryHold() {
  ThreadHolds& holds = Holds();
  if (--holds.depth > 0) return;
  // The last holder of a replaced snapshot frees it here.
  std::vector<std::shared_ptr<const platform::Snapshot>> released;
  released.swap(holds.pinned);
}

namespace platform {

bool HoldsOpen() noexcept { return Holds().depth > 0; }

void PinToHold(const std::shared_ptr<const Snapshot>& snapshot) {
  ThreadHolds& holds = Holds();
  if (holds.depth == 0) return;
  for (const auto& pinned : holds.pinned) {
    if (pinned == snapshot) return;
  }
  holds.pinned.push_back(snapshot);
}

}  // namespace platform

}  // namespace zeda::pelka
