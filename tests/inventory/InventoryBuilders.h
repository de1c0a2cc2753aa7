// Small in-memory inventories for the tests.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/Inventory.h"

namespace zeda::pelka::testing {

inline platform::DiskRecord Disk(const std::string& id, std::uint32_t healthStatus = 0,
                                 const std::string& serial = "") {
  platform::DiskRecord record;
  record.disk.id = id;
  record.disk.status = zeda::orvi::Ok;
  record.health.healthStatus = healthStatus;
  record.health.message = "health of " + id;
  record.identity.product = "product of " + id;
  record.identity.model = "model of " + id;
  record.identity.serial = serial.empty() ? "serial of " + id : serial;
  return record;
}

inline platform::NasRecord NasWith(const std::string& name,
                                   std::vector<platform::DiskRecord> disks = {}) {
  platform::NasRecord nas;
  nas.name = name;
  nas.disks = std::move(disks);
  return nas;
}

inline platform::Inventory InventoryOf(std::vector<platform::NasRecord> nas) {
  platform::Inventory inventory;
  inventory.nas = std::move(nas);
  return inventory;
}

}  // namespace zeda::pelka::testing
