// Inventory documents and expectations shared by the element class tests.
#ifndef ZEDA_TESTS_ELEMENTS_ELEMENTFIXTURES_H
#define ZEDA_TESTS_ELEMENTS_ELEMENTFIXTURES_H

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "Fixtures.h"

namespace zeda::testing::elements {

// Namespace of every request in these tests; the answers must carry it.
inline constexpr const char kNameSpace[] = "root/zeda";

// One disk record of the inventory file with plain, healthy values; tests
// change the members they are about.
inline nlohmann::json DiskJson(const std::string& id) {
  return {{"id", id},
          {"status", "ok"},
          {"interfaceType", "SATA"},
          {"firmwareVersion", "FW1"},
          {"capacity", 1000000},
          {"rpm", 7200},
          {"health", {{"status", 0}, {"message", "Good"}}},
          {"identity", {{"product", "ACME AX100"}, {"model", "AX100"}, {"serial", "SN-" + id}}}};
}

inline nlohmann::json NasJson(const std::string& name, std::vector<nlohmann::json> disks) {
  return {{"name", name}, {"disks", disks}, {"groups", nlohmann::json::array()}};
}

inline std::string InventoryJson(std::vector<nlohmann::json> nas) {
  return nlohmann::json{{"nas", nas}}.dump();
}

// The class path an enumeration is asked for.
inline zeda::host::ObjectPath ClassPath(const std::string& className) {
  return zeda::host::ObjectPath(kNameSpace, className);
}

// The provider name behind a class's factories.
inline std::string Provider(const std::string& className) { return className + "Provider"; }

// A path holding only namespace and class name, as every element instance
// of this module has.
inline zeda::host::ObjectPath BarePath(const std::string& className) {
  return zeda::host::ObjectPath(kNameSpace, className);
}

// Whether the module's ERROR log holds a line from source line `line` of
// pelka_provider whose text is exactly `text`.
inline bool HasErrorLogLine(int line, const std::string& text) {
  const std::string tail = "pelka_provider:" + std::to_string(line) + "] " + text;
  for (const std::string& logged : ErrorLogLines()) {
    if (logged.size() >= tail.size() &&
        logged.compare(logged.size() - tail.size(), tail.size(), tail) == 0 &&
        logged.rfind('E', 0) == 0) {
      return true;
    }
  }
  return false;
}

}  // namespace zeda::testing::elements

#endif
