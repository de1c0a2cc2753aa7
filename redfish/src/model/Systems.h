// The Systems collection, one ComputerSystem per NAS, its Storage collection
// and its one Storage with the links to all its drives.
#pragma once

#include <memory>

#include "Reply.h"
#include "model/InventoryIndex.h"

namespace zeda::redfish::model {

Reply SystemCollectionReply(const std::shared_ptr<const InventoryIndex>& index);
Reply SystemReply(const NasIndex& nas);
Reply StorageCollectionReply(const NasIndex& nas);
// Streams the Drives links when they are many; `nas` must be one of `index`.
Reply StorageReply(const std::shared_ptr<const InventoryIndex>& index, const NasIndex& nas);

}  // namespace zeda::redfish::model
