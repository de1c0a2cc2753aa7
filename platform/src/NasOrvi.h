// The NAS API object of one NAS of a snapshot. It answers from the snapshot's
// immutable records, so it needs no lock. Look-ups go through an index built
// once per snapshot (DiskKeyIndex.h), so a query costs the same on a NAS of
// ten disks and one of ten thousand.
#pragma once

#include <optional>
#include <string>

#include "DiskKeyIndex.h"
#include "inventory/Orvi.h"
#include "platform/Inventory.h"

namespace zeda::pelka::platform {

class NasOrvi final : public zeda::orvi::Orvi {
 public:
  // `nas` must outlive this object (both belong to one snapshot).
  explicit NasOrvi(const NasRecord& nas);

  // The first disk, in list order, whose health key or whose identifier
  // equals `key` without regard to ASCII letter case.
  zeda::orvi::OrviDiskHealth GetDiskHealth(const std::string& key) override;
  // The first disk whose identifier equals `id` without regard to ASCII case.
  zeda::orvi::OrviDiskIdentity GetDiskIdentity(const std::string& id) override;
  zeda::orvi::OrviDiskList GetDiskList() override;
  // Through the index: the same cost on a NAS of any size.
  std::optional<zeda::orvi::OrviDisk> FindListedDisk(const std::string& id) override;
  // Unknown disks throw std::runtime_error "Disk not found: <key>".

  // The record of the disk FindListedDisk finds, or nullptr; no NAS API
  // call, so not traced.
  const DiskRecord* FindListedRecord(const std::string& id) const;

 private:
  const NasRecord& nas_;
  const DiskKeyIndex index_;  // of nas_.disks
};

}  // namespace zeda::pelka::platform
