// The media life left of a disk: known to the library for some disks (the
// linux source reads it from SMART), but carried by no NAS API reply, so it
// is asked for beside them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "inventory/Orvi.h"

namespace zeda::pelka::platform {

// The percentage of its rated media life (0 to 100) left to the disk whose
// identifier equals `id` exactly (the first such record, as
// Orvi::FindListedDisk finds it), of the NAS whose API object the library
// handed out as `orvi`. Nothing when it is unknown, when no disk has that
// identifier, or when `orvi` is not the library's. Not a NAS API call: it is
// not traced.
std::optional<std::uint32_t> MediaLifeLeftPercent(const zeda::orvi::Orvi& orvi,
                                                  const std::string& id);

}  // namespace zeda::pelka::platform
