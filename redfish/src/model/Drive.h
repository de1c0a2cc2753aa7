// One Drive: the values of DriveMapping for a disk of a NAS, with links to
// the pools it is in.
#pragma once

#include <cstddef>

#include "Reply.h"
#include "inventory/Orvi.h"
#include "model/InventoryIndex.h"

namespace zeda::redfish::model {

// The Drive of nas.disks[position]; asks `orvi` (the NAS's API object of
// the same inventory) for the disk's health and identity, as the CIM
// classes do: health by the health key, identity by the identifier; and the
// library for the disk's media life left, by the identifier.
Reply DriveReply(const NasIndex& nas, std::size_t position, zeda::orvi::Orvi& orvi);

}  // namespace zeda::redfish::model
