#include "model/Systems.h"

#include "model/Json.h"
#include "model/Paths.h"
#include "model/Schemas.h"

namespace zeda::redfish::model {

namespace {

// Enabled, with the worst health of the NAS's drives as HealthRollup.
Json EnabledStatus(const NasIndex& nas) {
  Json status = Json::object();
  status["State"] = "Enabled";
  if (nas.healthRollup) status["HealthRollup"] = *nas.healthRollup;
  return status;
}

}  // namespace

Reply SystemCollectionReply(const std::shared_ptr<const InventoryIndex>& index) {
  Json head = Json::object();
  head["@odata.id"] = kSystemsPath;
  head["@odata.type"] = type::kSystemCollection;
  head["Name"] = "Computer System Collection";
  return LinkListReply(head, "Members", index->nas.size(),
                       [index](std::size_t n) { return SystemPath(index->nas[n].segment); });
}

Reply SystemReply(const NasIndex& nas) {
  Json system = Json::object();
  system["@odata.id"] = SystemPath(nas.segment);
  system["@odata.type"] = type::kSystem;
  system["Id"] = nas.segment;
  system["Name"] = nas.name;
  system["SystemType"] = "Physical";
  system["Status"] = EnabledStatus(nas);
  system["Storage"] = Link(StorageCollectionPath(nas.segment));
  // A NAS is neither booted nor reset through this service; the two objects
  // stay empty, present because clients such as sushy (OpenStack Ironic)
  // refuse a system without them.
  system["Boot"] = Json::object();
  system["Actions"] = Json::object();
  Reply reply;
  reply.body = Dumped(system);
  return reply;
}

Reply StorageCollectionReply(const NasIndex& nas) {
  Json head = Json::object();
  head["@odata.id"] = StorageCollectionPath(nas.segment);
  head["@odata.type"] = type::kStorageCollection;
  head["Name"] = "Storage Collection";
  std::string storage = StoragePath(nas.segment);
  return LinkListReply(head, "Members", 1, [storage](std::size_t) { return storage; });
}

Reply StorageReply(const std::shared_ptr<const InventoryIndex>& index, const NasIndex& nas) {
  Json head = Json::object();
  head["@odata.id"] = StoragePath(nas.segment);
  head["@odata.type"] = type::kStorage;
  head["Id"] = kStorageId;
  head["Name"] = "Disks of " + nas.name;
  head["Status"] = EnabledStatus(nas);
  head["StoragePools"] = Link(PoolCollectionPath(nas.segment));
  // The aliasing pointer keeps the whole index alive while streaming.
  const std::shared_ptr<const NasIndex> disks(index, &nas);
  return LinkListReply(head, "Drives", nas.disks.size(), [disks](std::size_t d) {
    return DrivePath(disks->segment, disks->diskSegments[d]);
  });
}

}  // namespace zeda::redfish::model
