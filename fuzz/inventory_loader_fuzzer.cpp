// libFuzzer harness of the inventory loader. Any text either loads or is
// refused with one std::runtime_error whose message names the file; nothing
// else may escape (no JSON library exception), and a loaded inventory holds
// no string with a NUL character (it would cut CMPI strings short). Where the
// quick reading of plain documents accepts a text, the full reading must
// accept it too and give the same records.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "InventoryPlain.h"
#include "platform/Inventory.h"

namespace {

constexpr char kFileName[] = "fuzz/inventory.json";

bool HasNul(const std::string& text) { return text.find('\0') != std::string::npos; }

bool AnyNul(const zeda::pelka::platform::Inventory& inventory) {
  for (const auto& nas : inventory.nas) {
    if (HasNul(nas.name)) return true;
    for (const auto& record : nas.disks) {
      const auto& d = record.disk;
      if (HasNul(d.id) || HasNul(d.interfaceType) || HasNul(d.firmwareVersion) ||
          HasNul(record.health.message) || HasNul(record.identity.product) ||
          HasNul(record.identity.model) || HasNul(record.identity.serial)) {
        return true;
      }
    }
    for (const auto& group : nas.groups) {
      for (const auto& id : group.dataDisks)
        if (HasNul(id)) return true;
      for (const auto& id : group.spareDisks)
        if (HasNul(id)) return true;
    }
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    const auto inventory = zeda::pelka::platform::ParseInventory(text, kFileName);
    if (AnyNul(inventory)) std::abort();
  } catch (const std::runtime_error& e) {
    if (std::string(e.what()).find(kFileName) == std::string::npos) std::abort();
  }
  if (const auto plain = zeda::pelka::platform::ReadPlainInventory(text)) {
    try {
      if (!(*plain == zeda::pelka::platform::ReadWholeInventory(text))) std::abort();
    } catch (...) {
      std::abort();  // the full reading refused what the quick one accepted
    }
  }
  return 0;
}
