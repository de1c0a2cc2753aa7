#include "InventoryPlain.h"

#include <cstdint>
#include <cstring>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include <simdjson.h>

#include "InventoryWalker.h"

namespace zeda::pelka::platform {

namespace {

namespace od = simdjson::ondemand;

// Every reader below returns false when what it reads is not in the plain
// form; the caller then gives up the whole document.

// Calls read(position in `names`, value) for each member of `value`, an
// object; refuses unknown members (also those whose name is written with
// escapes) and members named twice. `seen` receives one bit per member read.
// Members are mostly listed in the order of `names`: the name after the last
// one found is tried first.
template <std::size_t N, typename Read>
bool ForEachMember(od::value& value, const MemberNames<N>& names, std::uint32_t& seen,
                   Read&& read) {
  static_assert(N <= 32, "one bit per member");
  od::object object;
  if (value.get_object().get(object) != simdjson::SUCCESS) return false;
  std::size_t expected = 0;
  for (auto member : object) {
    od::field field;
    if (std::move(member).get(field) != simdjson::SUCCESS) return false;
    const od::raw_json_string key = field.key();
    std::size_t found = N;
    if (expected < N && key == names[expected]) {
      found = expected;
    } else {
      for (std::size_t i = 0; i < N; ++i) {
        if (key == names[i]) {
          found = i;
          break;
        }
      }
    }
    if (found == N || (seen & (1U << found)) != 0) return false;
    seen |= 1U << found;
    expected = found + 1;
    if (!read(found, field.value())) return false;
  }
  return true;
}

// Calls read(element) for each element of `value`, an array, after
// reserve(count of elements).
template <typename Reserve, typename Read>
bool ForEachElement(od::value& value, Reserve&& reserve, Read&& read) {
  od::array array;
  if (value.get_array().get(array) != simdjson::SUCCESS) return false;
  std::size_t count = 0;
  if (array.count_elements().get(count) != simdjson::SUCCESS) return false;
  reserve(count);
  for (auto element : array) {
    od::value item;
    if (std::move(element).get(item) != simdjson::SUCCESS || !read(item)) return false;
  }
  return true;
}

bool ReadText(od::value& value, std::string& into) {
  std::string_view text;
  if (value.get_string().get(text) != simdjson::SUCCESS) return false;
  if (std::memchr(text.data(), '\0', text.size()) != nullptr) return false;
  into.assign(text);
  return true;
}

bool ReadBool(od::value& value, bool& into) {
  return value.get_bool().get(into) == simdjson::SUCCESS;
}

template <typename Number>
bool ReadUnsigned(od::value& value, std::uint64_t max, Number& into) {
  std::uint64_t number = 0;
  if (value.get_uint64().get(number) != simdjson::SUCCESS || number > max) return false;
  into = static_cast<Number>(number);
  return true;
}

bool ReadStatus(od::value& value, zeda::orvi::DiskStatus& into) {
  std::string_view word;
  if (value.get_string().get(word) != simdjson::SUCCESS) return false;
  const auto status = StatusOfWord(word);
  if (!status) return false;
  into = *status;
  return true;
}

bool ReadHealth(od::value& value, zeda::orvi::OrviDiskHealth& health) {
  std::uint32_t seen = 0;
  return ForEachMember(value, kHealthMembers, seen, [&](std::size_t member, od::value& item) {
    return member == 0 ? ReadUnsigned(item, kMax32, health.healthStatus)
                       : ReadText(item, health.message);
  });
}

bool ReadIdentity(od::value& value, zeda::orvi::OrviDiskIdentity& identity) {
  std::uint32_t seen = 0;
  return ForEachMember(value, kIdentityMembers, seen, [&](std::size_t member, od::value& item) {
    switch (member) {
      case 0:
        return ReadText(item, identity.product);
      case 1:
        return ReadText(item, identity.model);
      default:
        return ReadText(item, identity.serial);
    }
  });
}

bool ReadDisk(od::value& value, DiskRecord& record) {
  zeda::orvi::OrviDisk& disk = record.disk;
  disk.status = zeda::orvi::Ok;  // when the member is left out
  std::uint32_t seen = 0;
  const bool read =
      ForEachMember(value, kDiskMembers, seen, [&](std::size_t member, od::value& item) {
        switch (member) {
          case 0:
            return ReadText(item, disk.id);
          case 1:
            return ReadStatus(item, disk.status);
          case 2:
            return ReadBool(item, disk.isFree);
          case 3:
            return ReadBool(item, disk.isSpare);
          case 4:
            return ReadBool(item, disk.isSsd);
          case 5:
            return ReadText(item, disk.interfaceType);
          case 6:
            return ReadText(item, disk.firmwareVersion);
          case 7:
            return ReadUnsigned(item, kMax64, disk.capacity);
          case 8:
            return ReadUnsigned(item, kMax32, disk.rpm);
          case 9:
            return ReadHealth(item, record.health);
          default:
            return ReadIdentity(item, record.identity);
        }
      });
  return read && (seen & 1U) != 0;  // the identifier is required
}

bool ReadIdList(od::value& value, std::vector<std::string>& ids) {
  return ForEachElement(
      value, [&](std::size_t count) { ids.reserve(count); },
      [&](od::value& item) { return ReadText(item, ids.emplace_back()); });
}

bool ReadGroup(od::value& value, zeda::orvi::OrviDiskGroup& group) {
  std::uint32_t seen = 0;
  return ForEachMember(value, kGroupMembers, seen, [&](std::size_t member, od::value& item) {
    return ReadIdList(item, member == 0 ? group.dataDisks : group.spareDisks);
  });
}

bool ReadNas(od::value& value, NasRecord& nas) {
  std::uint32_t seen = 0;
  const bool read =
      ForEachMember(value, kNasMembers, seen, [&](std::size_t member, od::value& item) {
        switch (member) {
          case 0:
            return ReadText(item, nas.name);
          case 1:
            return ForEachElement(
                item, [&](std::size_t count) { nas.disks.reserve(count); },
                [&](od::value& disk) { return ReadDisk(disk, nas.disks.emplace_back()); });
          default:
            return ForEachElement(
                item, [&](std::size_t count) { nas.groups.reserve(count); },
                [&](od::value& group) { return ReadGroup(group, nas.groups.emplace_back()); });
        }
      });
  return read && (seen & 1U) != 0;  // the name is required
}

bool ReadNasList(od::value& value, std::vector<NasRecord>& list) {
  std::unordered_set<std::string> names;
  return ForEachElement(
      value, [&](std::size_t count) { list.reserve(count); },
      [&](od::value& item) {
        NasRecord& nas = list.emplace_back();
        return ReadNas(item, nas) && names.insert(nas.name).second;
      });
}

std::optional<Inventory> ReadPadded(simdjson::padded_string_view text) {
  od::parser parser;
  od::document document;
  if (parser.iterate(text).get(document) != simdjson::SUCCESS) return std::nullopt;
  // The top level is read as a value so that the readers above apply; the
  // document must be an object.
  od::value top;
  if (document.get_value().get(top) != simdjson::SUCCESS) return std::nullopt;
  Inventory inventory;
  std::uint32_t seen = 0;
  if (!ForEachMember(top, kDocumentMembers, seen, [&](std::size_t, od::value& item) {
        return ReadNasList(item, inventory.nas);
      })) {
    return std::nullopt;
  }
  // Nothing may follow the top-level object.
  const char* after = nullptr;
  if (document.current_location().get(after) != simdjson::OUT_OF_BOUNDS) return std::nullopt;
  return inventory;
}

}  // namespace

std::optional<Inventory> ReadPlainInventory(const std::string& jsonText) {
  if (jsonText.capacity() - jsonText.size() >= simdjson::SIMDJSON_PADDING) {
    return ReadPadded(simdjson::padded_string_view(jsonText));
  }
  const simdjson::padded_string copy(jsonText);
  return ReadPadded(copy);
}

}  // namespace zeda::pelka::platform
