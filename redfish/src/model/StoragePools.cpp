#include "model/StoragePools.h"

#include "model/DriveMapping.h"
#include "model/Json.h"
#include "model/Paths.h"
#include "model/Schemas.h"

namespace zeda::redfish::model {

namespace {

PoolValues ValuesOf(const NasIndex& nas, int pool) {
  return PoolValuesOf(pool, nas.totals[static_cast<std::size_t>(pool - 1)]);
}

Json DataCapacity(const PoolValues& values) {
  Json capacity = Json::object();
  capacity["Data"]["AllocatedBytes"] = values.allocatedBytes;
  capacity["Data"]["ConsumedBytes"] = values.consumedBytes;
  return capacity;
}

// The capacity source of a pool: the disks the CIM pool-to-extent walk
// answers for it, with the pool's whole capacity.
Json CapacitySource(const NasIndex& nas, const PoolValues& values) {
  Json source = Json::object();
  source["@odata.id"] = CapacitySourcePath(nas.segment, values.id);
  source["@odata.type"] = type::kCapacitySource;
  source["Id"] = "1";
  source["Name"] = "Disks of pool " + values.name;
  source["ProvidedCapacity"] = DataCapacity(values);
  source["ProvidingDrives"] = Link(ProvidingDrivesPath(nas.segment, values.id));
  return source;
}

}  // namespace

Reply PoolCollectionReply(const NasIndex& nas) {
  Json head = Json::object();
  head["@odata.id"] = PoolCollectionPath(nas.segment);
  head["@odata.type"] = type::kPoolCollection;
  head["Name"] = "Storage Pool Collection";
  const std::string segment = nas.segment;
  return LinkListReply(head, "Members", 4, [segment](std::size_t p) {
    return PoolPath(segment, PoolValuesOf(static_cast<int>(p) + 1, 0).id);
  });
}

Reply PoolReply(const NasIndex& nas, int pool) {
  const PoolValues values = ValuesOf(nas, pool);
  Json body = Json::object();
  body["@odata.id"] = PoolPath(nas.segment, values.id);
  body["@odata.type"] = type::kPool;
  body["Id"] = values.id;
  body["Name"] = values.name;
  body["Description"] = "Primordial pool";
  body["Capacity"] = DataCapacity(values);
  body["CapacitySources@odata.count"] = 1;
  body["CapacitySources"] = Json::array({CapacitySource(nas, values)});
  body["Status"]["State"] = "Enabled";
  body["Status"]["Health"] = "OK";  // the CIM OperationalStatus of every pool: {2}
  Reply reply;
  reply.body = Dumped(body);
  return reply;
}

Reply CapacitySourceReply(const NasIndex& nas, int pool) {
  Reply reply;
  reply.body = Dumped(CapacitySource(nas, ValuesOf(nas, pool)));
  return reply;
}

Reply ProvidingDrivesReply(const std::shared_ptr<const InventoryIndex>& index, const NasIndex& nas,
                           int pool) {
  const PoolValues values = ValuesOf(nas, pool);
  Json head = Json::object();
  head["@odata.id"] = ProvidingDrivesPath(nas.segment, values.id);
  head["@odata.type"] = type::kDriveCollection;
  head["Name"] = "Drives of pool " + values.name;
  const std::shared_ptr<const NasIndex> disks(index, &nas);
  const std::size_t slot = static_cast<std::size_t>(pool - 1);
  return LinkListReply(head, "Members", nas.poolMembers[slot].size(), [disks, slot](std::size_t m) {
    const std::size_t d = disks->poolMembers[slot][m];
    return DrivePath(disks->segment, disks->diskSegments[d]);
  });
}

}  // namespace zeda::redfish::model
