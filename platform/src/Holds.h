// The holds of this thread (InventoryHold, inventory/Library.h): the
// snapshots its look-ups handed out while a hold was open.
#pragma once

#include <memory>

namespace zeda::pelka::platform {

class Snapshot;

// Whether a hold is open on this thread.
bool HoldsOpen() noexcept;

// Keeps `snapshot` until the outermost hold of this thread ends; nothing
// without an open hold.
void PinToHold(const std::shared_ptr<const Snapshot>& snapshot);

}  // namespace zeda::pelka::platform
