#include "InventoryJson.h"

#include <utility>

namespace zeda::test {
namespace {

nlohmann::json Flagged(nlohmann::json disk, const char* flag) {
  disk[flag] = true;
  return disk;
}

}  // namespace

nlohmann::json DiskJson(const std::string& id, std::uint64_t capacity) {
  return {{"id", id},
          {"status", "ok"},
          {"interfaceType", "SATA"},
          {"firmwareVersion", "FW1"},
          {"capacity", capacity},
          {"rpm", 7200},
          {"health", {{"status", 0}, {"message", "Good"}}},
          {"identity", {{"product", "ACME AX100"}, {"model", "AX100"}, {"serial", "SN-" + id}}}};
}

nlohmann::json Free(nlohmann::json disk) { return Flagged(std::move(disk), "isFree"); }
nlohmann::json Spare(nlohmann::json disk) { return Flagged(std::move(disk), "isSpare"); }
nlohmann::json Ssd(nlohmann::json disk) { return Flagged(std::move(disk), "isSsd"); }

nlohmann::json Unhealthy(nlohmann::json disk, std::uint32_t healthStatus) {
  disk["health"]["status"] = healthStatus;
  return disk;
}

nlohmann::json GroupJson(std::vector<std::string> dataDisks, std::vector<std::string> spareDisks) {
  return {{"dataDisks", std::move(dataDisks)}, {"spareDisks", std::move(spareDisks)}};
}

nlohmann::json NasJson(const std::string& name, std::vector<nlohmann::json> disks,
                       std::vector<nlohmann::json> groups) {
  return {{"name", name},
          {"disks", nlohmann::json(std::move(disks))},
          {"groups", nlohmann::json(std::move(groups))}};
}

std::string InventoryJson(std::vector<nlohmann::json> nas) {
  return nlohmann::json{{"nas", std::move(nas)}}.dump();
}

ScopedInventory::ScopedInventory(const std::string& json)
    : file_(dir_.file("inventory.json")), env_("PELKA_INVENTORY", file_) {
  WriteFile(file_, json);
}

void ScopedInventory::rewrite(const std::string& json) const { WriteFile(file_, json); }

const char* SampleInventoryPath() { return ZEDA_SAMPLE_INVENTORY; }

}  // namespace zeda::test
