// The NAS API object of one NAS. The utility library owns it (GetOrvi);
// replies are values owned by the caller.
#pragma once

#include <optional>
#include <string>

#include "inventory/Records.h"

namespace zeda::orvi {

class Orvi {
 public:
  virtual ~Orvi() = default;

  // `key` names the disk either by its health key (StripFirstColon of its
  // identifier) or by its identifier as it stands; callers use both forms.
  virtual OrviDiskHealth GetDiskHealth(const std::string& key) = 0;
  // id is the disk identifier verbatim, colon kept.
  virtual OrviDiskIdentity GetDiskIdentity(const std::string& id) = 0;
  virtual OrviDiskList GetDiskList() = 0;

  // The first disk of GetDiskList()'s reply whose identifier equals `id`
  // exactly, or nothing: what scanning that reply finds, without copying the
  // whole list. Counts as one GetDiskList call.
  virtual std::optional<OrviDisk> FindListedDisk(const std::string& id) {
    const OrviDiskList list = GetDiskList();
    for (const OrviDisk& disk : list.disks) {
      if (disk.id == id) return disk;
    }
    return std::nullopt;
  }
};

}  // namespace zeda::orvi
