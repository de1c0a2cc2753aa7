// The four primordial pools of a NAS as Swordfish StoragePools: their
// collection, each pool with its capacity and its one capacity source, and
// the drives that source is made of.
#pragma once

#include <memory>

#include "Reply.h"
#include "model/InventoryIndex.h"

namespace zeda::redfish::model {

Reply PoolCollectionReply(const NasIndex& nas);
// `pool` is 1 to 4.
Reply PoolReply(const NasIndex& nas, int pool);
Reply CapacitySourceReply(const NasIndex& nas, int pool);
// Streams the links when they are many; `nas` must be one of `index`.
Reply ProvidingDrivesReply(const std::shared_ptr<const InventoryIndex>& index, const NasIndex& nas,
                           int pool);

}  // namespace zeda::redfish::model
