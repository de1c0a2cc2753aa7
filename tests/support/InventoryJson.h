// The inventory file the module reads, built in the tests: disk, group and
// NAS records as JSON, and a file PELKA_INVENTORY points at.
#ifndef ZEDA_TESTS_SUPPORT_INVENTORYJSON_H
#define ZEDA_TESTS_SUPPORT_INVENTORYJSON_H

#include <cstdint>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "TempDir.h"

namespace zeda::test {

// A healthy SATA disk record with plain values and no usage flags; tests
// change the members they are about.
nlohmann::json DiskJson(const std::string& id, std::uint64_t capacity = 1000000);

// The disk with one usage flag set.
nlohmann::json Free(nlohmann::json disk);
nlohmann::json Spare(nlohmann::json disk);
nlohmann::json Ssd(nlohmann::json disk);
// The disk with the NAS API's health status `healthStatus` (0 is healthy).
nlohmann::json Unhealthy(nlohmann::json disk, std::uint32_t healthStatus);

// A disk group: its data disks and its spare disks.
nlohmann::json GroupJson(std::vector<std::string> dataDisks, std::vector<std::string> spareDisks);

nlohmann::json NasJson(const std::string& name, std::vector<nlohmann::json> disks = {},
                       std::vector<nlohmann::json> groups = {});

// The whole inventory document.
std::string InventoryJson(std::vector<nlohmann::json> nas);

// Writes `json` to a new file and points PELKA_INVENTORY at it.
class ScopedInventory {
 public:
  explicit ScopedInventory(const std::string& json);
  const std::string& path() const { return file_; }
  // Replaces the file's content (the inventory is live: the next call sees it).
  void rewrite(const std::string& json) const;

 private:
  TempDir dir_;
  std::string file_;
  ScopedEnv env_;
};

// The example inventory of the source tree (examples/inventory.json).
const char* SampleInventoryPath();

}  // namespace zeda::test

#endif
