// In-memory inventories for the tests of the Redfish resources.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "inventory/Records.h"
#include "platform/Inventory.h"

namespace zeda::test {

inline zeda::pelka::platform::DiskRecord RedfishDisk(const std::string& id,
                                                     std::uint64_t capacity = 4000787030016) {
  zeda::pelka::platform::DiskRecord record;
  record.disk.id = id;
  record.disk.status = zeda::orvi::Ok;
  record.disk.interfaceType = "SATA";
  record.disk.firmwareVersion = "FW-" + id;
  record.disk.capacity = capacity;
  record.disk.rpm = 7200;
  record.health.message = "Good";
  record.identity.product = "ACME Disk-" + id;
  record.identity.model = "Disk-" + id;
  record.identity.serial = "SN-" + id;
  return record;
}

// The first NAS of examples/inventory.json, as records.
inline zeda::pelka::platform::NasRecord ExampleNas1() {
  using zeda::pelka::platform::DiskRecord;
  zeda::pelka::platform::NasRecord nas;
  nas.name = "nas1";
  for (const char* id : {"0:1", "0:2", "0:3", "0:4", "0:5", "0:6", "0:7", "0:10"}) {
    nas.disks.push_back(RedfishDisk(id));
  }
  nas.disks[2].disk.status = zeda::orvi::Degraded;
  nas.disks[2].health.healthStatus = 2;
  nas.disks[3].disk.isSpare = true;
  nas.disks[4].disk.isFree = true;
  nas.disks[4].disk.capacity = 8001563222016;
  for (std::size_t d : {5, 6}) {
    nas.disks[d].disk.isSsd = true;
    nas.disks[d].disk.capacity = 500107862016;
    nas.disks[d].disk.rpm = 0;
  }
  nas.disks[7].disk.status = zeda::orvi::PredictiveFailure;
  nas.disks[7].disk.capacity = 6001175126016;
  nas.groups = {{{"0:1", "0:2", "0:3"}, {"0:4"}}, {{"0:6", "0:7"}, {}}};
  return nas;
}

// A NAS of `count` disks "d000000" ... in RAID groups of ten.
inline zeda::pelka::platform::NasRecord LargeNas(const std::string& name, std::size_t count) {
  zeda::pelka::platform::NasRecord nas;
  nas.name = name;
  nas.disks.reserve(count);
  for (std::size_t d = 0; d < count; ++d) {
    std::string id = std::to_string(d);
    id = "d" + std::string(6 - std::min<std::size_t>(6, id.size()), '0') + id;
    nas.disks.push_back(RedfishDisk(id, 1000000000000 + d));
    if (d % 10 == 0) nas.groups.emplace_back();
    nas.groups.back().dataDisks.push_back(id);
  }
  return nas;
}

}  // namespace zeda::test
