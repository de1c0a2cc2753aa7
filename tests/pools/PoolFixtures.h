// Inventory documents, paths and requests of the end-to-end tests of the two
// pool associations.
#ifndef ZEDA_TESTS_POOLS_POOLFIXTURES_H
#define ZEDA_TESTS_POOLS_POOLFIXTURES_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "Fixtures.h"

namespace zeda::testing::pools {

// Namespace of every request in these tests; the answers must carry it.
inline constexpr char kNameSpace[] = "root/zeda";
inline constexpr char kConcrete[] = "ZEDA_ConcreteComponent_Primordial";
inline constexpr char kAssociated[] = "ZEDA_AssociatedComponentExtent_Primordial";
inline constexpr char kPoolClass[] = "ZEDA_StoragePool_Primordial";
inline constexpr char kExtentClass[] = "ZEDA_StorageExtent_Disk";

// A healthy disk record of the inventory file without usage flags.
inline nlohmann::json DiskJson(const std::string& id, std::uint64_t capacity = 1000000) {
  return {{"id", id},
          {"status", "ok"},
          {"interfaceType", "SATA"},
          {"firmwareVersion", "FW1"},
          {"capacity", capacity},
          {"rpm", 7200},
          {"health", {{"status", 0}, {"message", "Good"}}},
          {"identity", {{"product", "ACME AX100"}, {"model", "AX100"}, {"serial", "SN-" + id}}}};
}

inline nlohmann::json With(nlohmann::json disk, const char* flag) {
  disk[flag] = true;
  return disk;
}
inline nlohmann::json Free(nlohmann::json disk) { return With(std::move(disk), "isFree"); }
inline nlohmann::json Spare(nlohmann::json disk) { return With(std::move(disk), "isSpare"); }
inline nlohmann::json Ssd(nlohmann::json disk) { return With(std::move(disk), "isSsd"); }
inline nlohmann::json Unhealthy(nlohmann::json disk, std::uint32_t healthStatus) {
  disk["health"]["status"] = healthStatus;
  return disk;
}

inline nlohmann::json GroupJson(std::vector<std::string> dataDisks,
                                std::vector<std::string> spareDisks) {
  return {{"dataDisks", dataDisks}, {"spareDisks", spareDisks}};
}

inline nlohmann::json NasJson(const std::string& name, std::vector<nlohmann::json> disks,
                              std::vector<nlohmann::json> groups = {}) {
  return {{"name", name},
          {"disks", nlohmann::json(disks)},
          {"groups", nlohmann::json(groups)}};
}

inline std::string InventoryJson(std::vector<nlohmann::json> nas) {
  return nlohmann::json{{"nas", nas}}.dump();
}

inline std::string Provider(const std::string& className) { return className + "Provider"; }

inline zeda::host::ObjectPath PoolPath(const std::string& instanceId) {
  return zeda::host::ObjectPath(kNameSpace, kPoolClass).addKey("InstanceID", instanceId);
}

inline zeda::host::ObjectPath ExtentPath(const std::string& systemName,
                                         const std::string& deviceId) {
  return zeda::host::ObjectPath(kNameSpace, kExtentClass)
      .addKey("SystemCreationClassName", "ZEDA_ComputerSystem")
      .addKey("SystemName", systemName)
      .addKey("CreationClassName", kExtentClass)
      .addKey("DeviceID", deviceId);
}

// An associators request to `associationClass`, addressed to that class.
inline zeda::host::Outcome Associators(const std::string& associationClass,
                                       const zeda::host::ObjectPath& source,
                                       const zeda::host::PropertyList& properties = std::nullopt) {
  return ModuleHost().associators(Provider(associationClass), source, associationClass,
                                  std::nullopt, std::nullopt, std::nullopt, properties);
}

inline zeda::host::Outcome References(const std::string& associationClass,
                                      const zeda::host::ObjectPath& source) {
  return ModuleHost().references(Provider(associationClass), source, std::nullopt, std::nullopt);
}

// DeviceID of each instance, in answer order.
inline std::vector<std::string> DeviceIds(const zeda::host::Outcome& outcome) {
  std::vector<std::string> ids;
  for (const zeda::host::Instance& instance : outcome.instances()) {
    ids.push_back(instance.property("DeviceID").str());
  }
  return ids;
}

// The argument of every call of one kind in the trace, in order.
inline std::vector<std::string> TraceArgs(const ScopedTrace& trace, const std::string& call) {
  std::vector<std::string> args;
  for (const TraceCall& c : trace.calls(call)) {
    args.push_back(c.arg);
  }
  return args;
}

// Whether the module's ERROR log holds a line ending in `text`.
inline bool ErrorLogEndsWith(const std::string& text) {
  for (const std::string& line : ErrorLogLines()) {
    if (line.size() >= text.size() &&
        line.compare(line.size() - text.size(), text.size(), text) == 0) {
      return true;
    }
  }
  return false;
}

}  // namespace zeda::testing::pools

#endif
