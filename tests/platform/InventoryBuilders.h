// Small in-memory inventories (the records the utility library serves) for
// the tests of the utility library.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/Inventory.h"

namespace zeda::test {

inline zeda::pelka::platform::DiskRecord Disk(const std::string& id, std::uint32_t healthStatus = 0,
                                              const std::string& serial = "") {
  zeda::pelka::platform::DiskRecord record;
  record.disk.id = id;
  record.disk.status = zeda::orvi::Ok;
  record.health.healthStatus = healthStatus;
  record.health.message = "health of " + id;
  record.identity.product = "product of " + id;
  record.identity.model = "model of " + id;
  record.identity.serial = serial.empty() ? "serial of " + id : serial;
  return record;
}

inline zeda::pelka::platform::NasRecord NasWith(
    const std::string& name, std::vector<zeda::pelka::platform::DiskRecord> disks = {}) {
  zeda::pelka::platform::NasRecord nas;
  nas.name = name;
  nas.disks = std::move(disks);
  return nas;
}

inline zeda::pelka::platform::Inventory InventoryOf(
    std::vector<zeda::pelka::platform::NasRecord> nas) {
  zeda::pelka::platform::Inventory inventory;
  inventory.nas = std::move(nas);
  return inventory;
}

}  // namespace zeda::test
