// Controls of the inventory source, used by tests and benchmarks.
#include "InventoryStore.h"
#include "platform/Inventory.h"

namespace zeda::pelka::platform {

void UseInMemoryInventory(Inventory inventory) {
  InventoryStore::Instance().UseInMemory(std::move(inventory));
}

void UseFileInventory() { InventoryStore::Instance().UseFile(); }

std::uint64_t InventoryParseCount() { return InventoryStore::Instance().ParseCount(); }

void ForgetInventoryFileState() { InventoryStore::Instance().ForgetFileState(); }

std::size_t SnapshotsInMemory() { return InventoryStore::Instance().SnapshotCount(); }

}  // namespace zeda::pelka::platform
