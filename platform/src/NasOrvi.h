// The NAS API object of one NAS of a snapshot. It answers from the snapshot's
// immutable records, so it needs no lock.
#pragma once

#include <string>

#include "inventory/Orvi.h"
#include "platform/Inventory.h"

namespace zeda::pelka::platform {

class NasOrvi final : public zeda::orvi::Orvi {
 public:
  // `nas` must outlive this object (both belong to one snapshot).
  explicit NasOrvi(const NasRecord& nas) : nas_(nas) {}

  // The first disk, in list order, whose health key or whose identifier
  // equals `key` without regard to ASCII letter case.
  zeda::orvi::OrviDiskHealth GetDiskHealth(const std::string& key) override;
  // The first disk whose identifier equals `id` without regard to ASCII case.
  zeda::orvi::OrviDiskIdentity GetDiskIdentity(const std::string& id) override;
  zeda::orvi::OrviDiskList GetDiskList() override;
  // Unknown disks throw std::runtime_error "Disk not found: <key>".

 private:
  const NasRecord& nas_;
};

}  // namespace zeda::pelka::platform
