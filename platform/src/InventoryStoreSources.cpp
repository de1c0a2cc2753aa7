// The store fed by the sources of the configuration file, when there is one.
#include <stdexcept>

#include "ConfiguredSources.h"
#include "InventoryStore.h"

namespace zeda::pelka::platform {

bool InventoryStore::RefreshFromConfiguration() {
  ConfiguredRead read = ConfiguredSources::Instance().Read();
  if (!read.configured) return false;
  // Leaving the configuration later must read the inventory file afresh.
  fileStamp_.reset();
  if (read.inventory && (current_ == nullptr || current_->Records() != *read.inventory)) {
    Install(std::move(*read.inventory));
  }
  if (current_ == nullptr) throw std::runtime_error(read.error);
  return true;
}

}  // namespace zeda::pelka::platform
