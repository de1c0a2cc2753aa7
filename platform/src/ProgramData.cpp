// Where the product keeps its data: PELKA_PROGRAM_DATA, else "programData" of
// the configuration file, else /var/lib/pelka.
#include <cstdlib>

#include "ConfiguredSources.h"
#include "inventory/Library.h"
#include "platform/Inventory.h"

namespace zeda::pelka {

namespace {

// The value of an environment variable that is set and not empty.
const char* Setting(const char* name) {
  const char* value = std::getenv(name);
  return (value != nullptr && *value != '\0') ? value : nullptr;
}

}  // namespace

std::string util::GetProgramDataPath() {
  const char* configured = Setting("PELKA_PROGRAM_DATA");
  if (configured != nullptr) return configured;
  return platform::ConfiguredSources::Instance().ProgramData().value_or("/var/lib/pelka");
}

std::string platform::InventoryFilePath() {
  const char* configured = Setting("PELKA_INVENTORY");
  return configured != nullptr ? configured : util::GetProgramDataPath() + "/inventory.json";
}

}  // namespace zeda::pelka
