#include "Holds.h"

#include <mutex>
#include <thread>
#include <unordered_map>
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

// The holds of every thread that has one open. Kept in a map rather than in
// thread-local storage: the library is loaded with dlopen by object managers,
// and LeakSanitizer cannot walk the dynamic thread-local storage of a library
// loaded that way once the module that loaded it has been unloaded.
class HoldRegistry {
 public:
  // Never destroyed: holds may end in destructors of static duration.
  static HoldRegistry& Instance() {
    static HoldRegistry* const registry = new HoldRegistry;
    return *registry;
  }

  void Open() {
    const std::lock_guard<std::mutex> lock(mutex_);
    ++byThread_[std::this_thread::get_id()].depth;
  }

  // The snapshots the outermost hold kept, for the caller to let go of
  // without the lock.
  std::vector<std::shared_ptr<const platform::Snapshot>> Close() {
    std::vector<std::shared_ptr<const platform::Snapshot>> released;
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto it = byThread_.find(std::this_thread::get_id());
    if (it == byThread_.end() || --it->second.depth > 0) return released;
    released.swap(it->second.pinned);
    byThread_.erase(it);
    return released;
  }

  bool IsOpen() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return byThread_.count(std::this_thread::get_id()) != 0;
  }

  void Pin(const std::shared_ptr<const platform::Snapshot>& snapshot) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto it = byThread_.find(std::this_thread::get_id());
    if (it == byThread_.end()) return;
    for (const auto& pinned : it->second.pinned) {
      if (pinned == snapshot) return;
    }
    it->second.pinned.push_back(snapshot);
  }

 private:
  std::mutex mutex_;
  std::unordered_map<std::thread::id, ThreadHolds> byThread_;
};

}  // namespace

InventoryHold::InventoryHold() noexcept {
  try {
    HoldRegistry::Instance().Open();
  } catch (...) {
    // Without memory for the entry the look-ups of this thread count as
    // made outside a hold: their snapshots get the grace period.
    opened_ = false;
  }
}

InventoryHold::~InventoryHold() {
  if (!opened_) return;
  // The last holder of a replaced snapshot frees it here, outside the lock.
  const auto released = HoldRegistry::Instance().Close();
}

namespace platform {

bool HoldsOpen() noexcept {
  try {
    return HoldRegistry::Instance().IsOpen();
  } catch (...) {
    return false;
  }
}

void PinToHold(const std::shared_ptr<const Snapshot>& snapshot) {
  HoldRegistry::Instance().Pin(snapshot);
}

}  // namespace platform

}  // namespace zeda::pelka
