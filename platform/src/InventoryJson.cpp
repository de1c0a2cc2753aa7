// Parsing and checking of the inventory JSON format:
//
// {"nas": [{"name": "nas1",
//           "disks": [{"id": "0:1", "status": "ok", "isFree": false,
//                      "isSpare": false, "isSsd": false,
//                      "interfaceType": "SATA", "firmwareVersion": "82.00A82",
//                      "capacity": 4000787030016, "rpm": 5400,
//                      "health": {"status": 0, "message": "Good"},
//                      "identity": {"product": "...", "model": "...",
//                                   "serial": "..."}}],
//           "groups": [{"dataDisks": ["0:1"], "spareDisks": []}]}]}
//
// "name" and "id" are required, every other member is optional (false, "",
// 0, status "ok"). Anything else is refused: the first problem found is
// reported with its place in the document, e.g. nas[0].disks[2].capacity.
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <stdexcept>
#include <string>

#include <nlohmann/json.hpp>

#include "platform/Inventory.h"

namespace zeda::pelka::platform {

namespace {

using nlohmann::json;
using zeda::orvi::DiskStatus;

// Thrown while walking the document; turned into the one message by
// ParseInventory, which knows the file name.
struct Problem {
  std::string place;
  std::string text;
};

std::string Quoted(const std::string& text) { return json(text).dump(); }

std::string Member(const std::string& place, const char* name) {
  return place.empty() ? name : place + "." + name;
}

std::string Element(const std::string& place, std::size_t index) {
  return place + "[" + std::to_string(index) + "]";
}

const char* KindOf(const json& value) {
  switch (value.type()) {
    case json::value_t::object: return "an object";
    case json::value_t::array: return "an array";
    case json::value_t::string: return "a string";
    case json::value_t::boolean: return "a boolean";
    case json::value_t::number_unsigned: return "an unsigned integer";
    case json::value_t::number_integer: return "a negative integer";
    case json::value_t::number_float: return "a floating-point number";
    case json::value_t::null: return "null";
    default: return "an unsupported value";
  }
}

[[noreturn]] void WrongType(const json& value, const std::string& place, const char* expected) {
  throw Problem{place, std::string("expected ") + expected + ", found " + KindOf(value)};
}

// Refuses members of `object` outside `allowed`.
void CheckMembers(const json& object, const std::string& place,
                  std::initializer_list<const char*> allowed) {
  for (const auto& item : object.items()) {
    bool known = false;
    for (const char* name : allowed) {
      known = known || item.key() == name;
    }
    if (!known) {
      throw Problem{Member(place, item.key().c_str()), "unknown member"};
    }
  }
}

const json* Find(const json& object, const char* name) {
  const auto it = object.find(name);
  return it == object.end() ? nullptr : &*it;
}

const json& Required(const json& object, const std::string& place, const char* name) {
  const json* value = Find(object, name);
  if (value == nullptr) {
    throw Problem{Member(place, name), "missing required member"};
  }
  return *value;
}

const json& ObjectAt(const json& value, const std::string& place) {
  if (!value.is_object()) WrongType(value, place, "an object");
  return value;
}

const json& ArrayAt(const json& value, const std::string& place) {
  if (!value.is_array()) WrongType(value, place, "an array");
  return value;
}

std::string StringAt(const json& value, const std::string& place) {
  if (!value.is_string()) WrongType(value, place, "a string");
  return value.get<std::string>();
}

std::string OptionalString(const json& object, const std::string& place, const char* name) {
  const json* value = Find(object, name);
  return value == nullptr ? std::string() : StringAt(*value, Member(place, name));
}

bool OptionalBool(const json& object, const std::string& place, const char* name) {
  const json* value = Find(object, name);
  if (value == nullptr) return false;
  if (!value->is_boolean()) WrongType(*value, Member(place, name), "a boolean");
  return value->get<bool>();
}

// An unsigned integer no larger than `max`. Integers beyond the 64-bit range
// arrive from the parser as floating-point numbers; they are reported as too
// large or negative rather than as a wrong type.
std::uint64_t OptionalUnsigned(const json& object, const std::string& place, const char* name,
                               std::uint64_t max, const char* range) {
  const json* value = Find(object, name);
  if (value == nullptr) return 0;
  const std::string where = Member(place, name);
  const auto tooLarge = [&] {
    return Problem{where, std::string("number too large for ") + range};
  };
  if (value->is_number_integer() && !value->is_number_unsigned()) {
    throw Problem{where, "number is negative"};
  }
  if (value->is_number_float()) {
    const double number = value->get<double>();
    if (number < 0) throw Problem{where, "number is negative"};
    if (number >= 18446744073709551616.0) throw tooLarge();
    WrongType(*value, where, "an unsigned integer");
  }
  if (!value->is_number_unsigned()) WrongType(*value, where, "an unsigned integer");
  const auto number = value->get<std::uint64_t>();
  if (number > max) throw tooLarge();
  return number;
}

DiskStatus StatusAt(const json& object, const std::string& place) {
  static const std::map<std::string, DiskStatus> kWords = {
      {"unknown", zeda::orvi::Unknown},
      {"ok", zeda::orvi::Ok},
      {"degraded", zeda::orvi::Degraded},
      {"predictive-failure", zeda::orvi::PredictiveFailure},
      {"error", zeda::orvi::Error},
      {"stopped", zeda::orvi::Stopped},
      {"no-contact", zeda::orvi::NoContact},
  };
  const json* value = Find(object, "status");
  if (value == nullptr) return zeda::orvi::Ok;
  const std::string where = Member(place, "status");
  const std::string word = StringAt(*value, where);
  const auto it = kWords.find(word);
  if (it == kWords.end()) {
    throw Problem{where,
                  "unknown status " + Quoted(word) +
                      " (expected unknown, ok, degraded, predictive-failure, error, stopped or "
                      "no-contact)"};
  }
  return it->second;
}

constexpr std::uint64_t kMax32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t kMax64 = std::numeric_limits<std::uint64_t>::max();

zeda::orvi::OrviDiskHealth HealthAt(const json& value, const std::string& place) {
  ObjectAt(value, place);
  CheckMembers(value, place, {"status", "message"});
  zeda::orvi::OrviDiskHealth health;
  health.healthStatus =
      static_cast<std::uint32_t>(OptionalUnsigned(value, place, "status", kMax32, "unsigned 32-bit"));
  health.message = OptionalString(value, place, "message");
  return health;
}

zeda::orvi::OrviDiskIdentity IdentityAt(const json& value, const std::string& place) {
  ObjectAt(value, place);
  CheckMembers(value, place, {"product", "model", "serial"});
  zeda::orvi::OrviDiskIdentity identity;
  identity.product = OptionalString(value, place, "product");
  identity.model = OptionalString(value, place, "model");
  identity.serial = OptionalString(value, place, "serial");
  return identity;
}

DiskRecord DiskAt(const json& value, const std::string& place) {
  ObjectAt(value, place);
  CheckMembers(value, place,
               {"id", "status", "isFree", "isSpare", "isSsd", "interfaceType", "firmwareVersion",
                "capacity", "rpm", "health", "identity"});
  DiskRecord record;
  zeda::orvi::OrviDisk& disk = record.disk;
  disk.id = StringAt(Required(value, place, "id"), Member(place, "id"));
  disk.status = StatusAt(value, place);
  disk.isFree = OptionalBool(value, place, "isFree");
  disk.isSpare = OptionalBool(value, place, "isSpare");
  disk.isSsd = OptionalBool(value, place, "isSsd");
  disk.interfaceType = OptionalString(value, place, "interfaceType");
  disk.firmwareVersion = OptionalString(value, place, "firmwareVersion");
  disk.capacity = OptionalUnsigned(value, place, "capacity", kMax64, "unsigned 64-bit");
  disk.rpm = static_cast<std::uint32_t>(
      OptionalUnsigned(value, place, "rpm", kMax32, "unsigned 32-bit"));
  if (const json* health = Find(value, "health")) {
    record.health = HealthAt(*health, Member(place, "health"));
  }
  if (const json* identity = Find(value, "identity")) {
    record.identity = IdentityAt(*identity, Member(place, "identity"));
  }
  return record;
}

std::vector<std::string> IdListAt(const json& object, const std::string& place, const char* name) {
  std::vector<std::string> ids;
  const json* value = Find(object, name);
  if (value == nullptr) return ids;
  const std::string where = Member(place, name);
  const json& array = ArrayAt(*value, where);
  for (std::size_t i = 0; i < array.size(); ++i) {
    ids.push_back(StringAt(array[i], Element(where, i)));
  }
  return ids;
}

zeda::orvi::OrviDiskGroup GroupAt(const json& value, const std::string& place) {
  ObjectAt(value, place);
  CheckMembers(value, place, {"dataDisks", "spareDisks"});
  zeda::orvi::OrviDiskGroup group;
  group.dataDisks = IdListAt(value, place, "dataDisks");
  group.spareDisks = IdListAt(value, place, "spareDisks");
  return group;
}

NasRecord NasAt(const json& value, const std::string& place) {
  ObjectAt(value, place);
  CheckMembers(value, place, {"name", "disks", "groups"});
  NasRecord nas;
  nas.name = StringAt(Required(value, place, "name"), Member(place, "name"));
  if (const json* disks = Find(value, "disks")) {
    const std::string where = Member(place, "disks");
    const json& array = ArrayAt(*disks, where);
    for (std::size_t i = 0; i < array.size(); ++i) {
      nas.disks.push_back(DiskAt(array[i], Element(where, i)));
    }
  }
  if (const json* groups = Find(value, "groups")) {
    const std::string where = Member(place, "groups");
    const json& array = ArrayAt(*groups, where);
    for (std::size_t i = 0; i < array.size(); ++i) {
      nas.groups.push_back(GroupAt(array[i], Element(where, i)));
    }
  }
  return nas;
}

Inventory DocumentAt(const json& document) {
  if (!document.is_object()) WrongType(document, "top level", "an object");
  CheckMembers(document, "", {"nas"});
  Inventory inventory;
  const json* list = Find(document, "nas");
  if (list == nullptr) return inventory;
  const json& array = ArrayAt(*list, "nas");
  std::map<std::string, std::size_t> firstIndex;
  for (std::size_t i = 0; i < array.size(); ++i) {
    const std::string place = Element("nas", i);
    NasRecord nas = NasAt(array[i], place);
    const auto [it, inserted] = firstIndex.emplace(nas.name, i);
    if (!inserted) {
      throw Problem{Member(place, "name"), "duplicate NAS name " + Quoted(nas.name) +
                                               " (also at " + Element("nas", it->second) + ")"};
    }
    inventory.nas.push_back(std::move(nas));
  }
  return inventory;
}

// The parser's own text after "parse error at ", e.g.
// "line 3, column 5: syntax error while parsing object - unexpected '}'; ..."
std::string SyntaxProblem(const nlohmann::json::parse_error& error) {
  const std::string text = error.what();
  const std::string marker = "parse error at ";
  const auto at = text.find(marker);
  return at == std::string::npos ? text : text.substr(at + marker.size());
}

}  // namespace

Inventory ParseInventory(const std::string& jsonText, const std::string& fileName) {
  const std::string prefix = "Bad inventory file " + fileName + ": ";
  try {
    return DocumentAt(json::parse(jsonText));
  } catch (const Problem& problem) {
    throw std::runtime_error(prefix + problem.place + ": " + problem.text);
  } catch (const json::parse_error& error) {
    throw std::runtime_error(prefix + SyntaxProblem(error));
  }
}

}  // namespace zeda::pelka::platform
