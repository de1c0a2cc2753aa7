#include "model/Drive.h"

#include "model/DriveMapping.h"
#include "model/Json.h"
#include "model/Paths.h"
#include "model/Schemas.h"
#include "platform/MediaLife.h"

namespace zeda::redfish::model {

Reply DriveReply(const NasIndex& nas, std::size_t position, zeda::orvi::Orvi& orvi) {
  const zeda::orvi::OrviDisk& disk = nas.disks[position];
  const DriveValues values =
      DriveValuesOf(disk, orvi.GetDiskHealth(HealthKeyOf(disk.id)), orvi.GetDiskIdentity(disk.id),
                    zeda::pelka::platform::MediaLifeLeftPercent(orvi, disk.id));

  Json drive = Json::object();
  drive["@odata.id"] = DrivePath(nas.segment, nas.diskSegments[position]);
  drive["@odata.type"] = type::kDrive;
  drive["Id"] = nas.diskSegments[position];
  drive["Name"] = values.name;
  drive["Model"] = values.model;
  drive["Manufacturer"] = values.manufacturer;
  drive["SerialNumber"] = values.serialNumber;
  drive["Revision"] = values.revision;
  drive["CapacityBytes"] = values.capacityBytes;
  drive["MediaType"] = values.mediaType;
  if (values.protocol) drive["Protocol"] = *values.protocol;
  drive["RotationSpeedRPM"] = values.rotationSpeedRpm;
  if (values.durableName) {
    Json identifier = Json::object();
    identifier["DurableName"] = values.durableName->name;
    identifier["DurableNameFormat"] = values.durableName->format;
    drive["Identifiers"] = Json::array({identifier});
  }
  Json status = Json::object();
  if (values.condition.state) status["State"] = *values.condition.state;
  if (values.condition.health) status["Health"] = *values.condition.health;
  drive["Status"] = status;
  drive["FailurePredicted"] = values.condition.failurePredicted;
  if (values.mediaLifeLeftPercent) {
    drive["PredictedMediaLifeLeftPercent"] = *values.mediaLifeLeftPercent;
  }

  Json pools = Json::array();
  for (int pool = 1; pool <= 4; ++pool) {
    if ((nas.poolsOfDisk[position] & (1U << (pool - 1))) != 0) {
      pools.push_back(Link(PoolPath(nas.segment, PoolValuesOf(pool, 0).id)));
    }
  }
  drive["Links"]["StoragePools@odata.count"] = pools.size();
  drive["Links"]["StoragePools"] = std::move(pools);

  Reply reply;
  reply.body = Dumped(drive);
  return reply;
}

}  // namespace zeda::redfish::model
