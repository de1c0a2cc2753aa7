// The NAS API object of one NAS. The utility library owns it (GetOrvi);
// replies are values owned by the caller.
#pragma once

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
};

}  // namespace zeda::orvi
