// One inventory as the library serves it: the NAS list handed to callers and
// one NAS API object per NAS. Immutable once built; callers keep references
// into it, so a snapshot is never moved or copied, and freed only when its
// last holder lets go or, when handed out outside a hold, a grace period after
// it left service (InventoryStore.h).
#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>

#include "NasOrvi.h"
#include "inventory/Nas.h"
#include "platform/Inventory.h"

namespace zeda::pelka::platform {

class Snapshot {
 public:
  explicit Snapshot(Inventory inventory);
  Snapshot(const Snapshot&) = delete;
  Snapshot& operator=(const Snapshot&) = delete;

  const Inventory& Records() const { return records_; }
  const std::list<Nas>& NasList() const { return nasList_; }

  // The NAS named exactly `name`, or nullptr.
  const Nas* Find(const std::string& name) const;

  // Every Nas of this snapshot with its NAS API object.
  const std::map<const Nas*, std::unique_ptr<NasOrvi>>& Orvis() const { return orvis_; }

 private:
  const Inventory records_;
  std::list<Nas> nasList_;
  std::map<const Nas*, std::unique_ptr<NasOrvi>> orvis_;
};

}  // namespace zeda::pelka::platform
