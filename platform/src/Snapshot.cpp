#include "Snapshot.h"

namespace zeda::pelka::platform {

Snapshot::Snapshot(Inventory inventory) : records_(std::move(inventory)) {
  for (const NasRecord& record : records_.nas) {
    const Nas& nas = nasList_.emplace_back(Nas{record.name});
    orvis_.emplace(&nas, std::make_unique<NasOrvi>(record));
  }
}

const Nas* Snapshot::Find(const std::string& name) const {
  for (const Nas& nas : nasList_) {
    if (nas.name == name) return &nas;
  }
  return nullptr;
}

}  // namespace zeda::pelka::platform
