// Checking and reading of a parsed inventory document, whatever JSON library
// parsed it. The format:
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
// Within one object, an unknown member is reported before anything else (the
// first unknown name in byte order), then the members in the order read
// below; of a member named twice, the last value counts.
//
// `Json` adapts one library's document (see InventoryJson.cpp); it provides
//   Value                        a cheap handle of one value
//   Kind KindOf(Value)
//   ForEachMember(Value, f)      f(std::string_view name, Value), document order
//   ForEachElement(Value, f)     f(Value), document order
//   std::size_t Size(Value)      elements of an array
//   std::string_view Text(Value), bool Boolean(Value),
//   std::uint64_t Unsigned(Value), double Real(Value)
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/Inventory.h"

namespace zeda::pelka::platform {

// What a JSON value is, as the messages name it. Integers are told apart by
// sign: a non-negative integer is Unsigned, a negative one Negative.
enum class Kind { Object, Array, String, Boolean, Unsigned, Negative, Real, Null };

const char* KindText(Kind kind);

// Where a value stands in the document, as a chain of frames on the stack of
// the walk; the text ("nas[0].disks[2].capacity") is built only for a message.
class Place {
 public:
  static Place Root() { return Place(nullptr, {}, 0, false); }
  Place Member(std::string_view name) const { return Place(this, name, 0, false); }
  Place Element(std::size_t index) const { return Place(this, {}, index, true); }
  std::string Text() const;

 private:
  Place(const Place* parent, std::string_view name, std::size_t index, bool isElement)
      : parent_(parent), name_(name), index_(index), isElement_(isElement) {}

  const Place* parent_;
  std::string_view name_;
  std::size_t index_;
  bool isElement_;
};

// The first problem of a document; ParseInventory turns it into the one
// message naming the file.
struct Problem {
  std::string place;
  std::string text;
};

[[noreturn]] void Refuse(const Place& place, std::string text);
[[noreturn]] void WrongType(Kind found, const Place& place, const char* expected);
// "duplicate NAS name ..." of the NAS at `place`, first seen at nas[firstIndex].
[[noreturn]] void DuplicateNas(const Place& place, const std::string& name, std::size_t firstIndex);
// A status word outside the known ones.
[[noreturn]] void UnknownStatus(const Place& place, std::string_view word);
// The disk state of a status word, or nothing for an unknown word.
std::optional<zeda::orvi::DiskStatus> StatusOfWord(std::string_view word);

// The members of each object of the format. Both readers (this walk and the
// quick one of InventoryPlain.cpp) number a member by its position here.
template <std::size_t N>
using MemberNames = std::array<std::string_view, N>;

inline constexpr MemberNames<1> kDocumentMembers = {"nas"};
inline constexpr MemberNames<3> kNasMembers = {"name", "disks", "groups"};
inline constexpr MemberNames<11> kDiskMembers = {
    "id",       "status", "isFree", "isSpare", "isSsd", "interfaceType", "firmwareVersion",
    "capacity", "rpm",    "health", "identity"};
inline constexpr MemberNames<2> kHealthMembers = {"status", "message"};
inline constexpr MemberNames<3> kIdentityMembers = {"product", "model", "serial"};
inline constexpr MemberNames<2> kGroupMembers = {"dataDisks", "spareDisks"};

// Largest values of the unsigned members: rpm and health status are 32-bit,
// capacity 64-bit.
inline constexpr std::uint64_t kMax32 = std::numeric_limits<std::uint32_t>::max();
inline constexpr std::uint64_t kMax64 = std::numeric_limits<std::uint64_t>::max();

template <typename Json>
class InventoryWalker {
 public:
  using Value = typename Json::Value;

  static Inventory Document(const Value& document) {
    const Place top = Place::Root();
    if (Json::KindOf(document) != Kind::Object) {
      WrongType(Json::KindOf(document), top.Member("top level"), "an object");
    }
    const auto members = MembersOf(document, top, kDocumentMembers);
    Inventory inventory;
    if (!members[0]) return inventory;
    const Place list = top.Member("nas");
    ExpectArray(*members[0], list);
    inventory.nas.reserve(Json::Size(*members[0]));
    std::unordered_map<std::string, std::size_t> firstIndex;
    std::size_t index = 0;
    Json::ForEachElement(*members[0], [&](const Value& value) {
      const Place place = list.Element(index);
      NasRecord nas = Nas(value, place);
      const auto [it, inserted] = firstIndex.emplace(nas.name, index);
      if (!inserted) DuplicateNas(place.Member("name"), nas.name, it->second);
      inventory.nas.push_back(std::move(nas));
      ++index;
    });
    return inventory;
  }

 private:
  template <std::size_t N>
  using Members = std::array<std::optional<Value>, N>;

  // The members of `object` named in `names`, by position in `names`; refuses
  // the first unknown member in byte order of the names.
  template <std::size_t N>
  static Members<N> MembersOf(const Value& object, const Place& place,
                              const MemberNames<N>& names) {
    Members<N> members;
    std::optional<std::string_view> unknown;
    // Files mostly list the members in the order of `names`: the name after
    // the last one found is tried first, the others only when it differs.
    std::size_t expected = 0;
    Json::ForEachMember(object, [&](std::string_view name, const Value& value) {
      if (expected < N && name == names[expected]) {
        members[expected++] = value;
        return;
      }
      for (std::size_t i = 0; i < N; ++i) {
        if (name == names[i]) {
          members[i] = value;
          expected = i + 1;
          return;
        }
      }
      if (!unknown || name < *unknown) unknown = name;
    });
    if (unknown) Refuse(place.Member(*unknown), "unknown member");
    return members;
  }

  static void ExpectObject(const Value& value, const Place& place) {
    if (Json::KindOf(value) != Kind::Object) WrongType(Json::KindOf(value), place, "an object");
  }

  static void ExpectArray(const Value& value, const Place& place) {
    if (Json::KindOf(value) != Kind::Array) WrongType(Json::KindOf(value), place, "an array");
  }

  // A string value. NUL cannot travel through the C strings of the CMPI
  // standard: a name cut short there would give two disks the same keys.
  static std::string_view TextAt(const Value& value, const Place& place) {
    if (Json::KindOf(value) != Kind::String) WrongType(Json::KindOf(value), place, "a string");
    const std::string_view text = Json::Text(value);
    if (std::memchr(text.data(), '\0', text.size()) != nullptr) {
      Refuse(place, "string holds a NUL character (\\u0000)");
    }
    return text;
  }

  // Records are filled in place: each string is copied once, from the
  // document into the record that keeps it.
  static void ReadString(const Value& value, const Place& place, std::string& into) {
    into.assign(TextAt(value, place));
  }

  static void OptionalString(const std::optional<Value>& value, const Place& place,
                             std::string& into) {
    if (value) ReadString(*value, place, into);
  }

  static bool OptionalBool(const std::optional<Value>& value, const Place& place) {
    if (!value) return false;
    if (Json::KindOf(*value) != Kind::Boolean) WrongType(Json::KindOf(*value), place, "a boolean");
    return Json::Boolean(*value);
  }

  // An unsigned integer no larger than `max`. Integers beyond the 64-bit range
  // and numbers written with a fraction or exponent are reals: a negative or
  // too large one is reported as such rather than as a wrong type.
  static std::uint64_t OptionalUnsigned(const std::optional<Value>& value, const Place& place,
                                        std::uint64_t max, const char* range) {
    if (!value) return 0;
    const Kind kind = Json::KindOf(*value);
    if (kind == Kind::Negative) Refuse(place, "number is negative");
    if (kind == Kind::Real) {
      const double number = Json::Real(*value);
      if (number < 0) Refuse(place, "number is negative");
      if (number >= 18446744073709551616.0) TooLarge(place, range);
      WrongType(kind, place, "an unsigned integer");
    }
    if (kind != Kind::Unsigned) WrongType(kind, place, "an unsigned integer");
    const std::uint64_t number = Json::Unsigned(*value);
    if (number > max) TooLarge(place, range);
    return number;
  }

  [[noreturn]] static void TooLarge(const Place& place, const char* range) {
    Refuse(place, std::string("number too large for ") + range);
  }

  static zeda::orvi::DiskStatus Status(const std::optional<Value>& value, const Place& place) {
    if (!value) return zeda::orvi::Ok;
    const std::string_view word = TextAt(*value, place);
    const auto status = StatusOfWord(word);
    if (!status) UnknownStatus(place, word);
    return *status;
  }

  static void Health(const Value& value, const Place& place, zeda::orvi::OrviDiskHealth& health) {
    ExpectObject(value, place);
    const auto members = MembersOf(value, place, kHealthMembers);
    health.healthStatus = static_cast<std::uint32_t>(
        OptionalUnsigned(members[0], place.Member("status"), kMax32, "unsigned 32-bit"));
    OptionalString(members[1], place.Member("message"), health.message);
  }

  static void Identity(const Value& value, const Place& place,
                       zeda::orvi::OrviDiskIdentity& identity) {
    ExpectObject(value, place);
    const auto members = MembersOf(value, place, kIdentityMembers);
    OptionalString(members[0], place.Member("product"), identity.product);
    OptionalString(members[1], place.Member("model"), identity.model);
    OptionalString(members[2], place.Member("serial"), identity.serial);
  }

  // Fills `record`, which holds the defaults of every optional member.
  static void Disk(const Value& value, const Place& place, DiskRecord& record) {
    ExpectObject(value, place);
    const auto m = MembersOf(value, place, kDiskMembers);
    zeda::orvi::OrviDisk& disk = record.disk;
    if (!m[0]) Refuse(place.Member("id"), "missing required member");
    ReadString(*m[0], place.Member("id"), disk.id);
    disk.status = Status(m[1], place.Member("status"));
    disk.isFree = OptionalBool(m[2], place.Member("isFree"));
    disk.isSpare = OptionalBool(m[3], place.Member("isSpare"));
    disk.isSsd = OptionalBool(m[4], place.Member("isSsd"));
    OptionalString(m[5], place.Member("interfaceType"), disk.interfaceType);
    OptionalString(m[6], place.Member("firmwareVersion"), disk.firmwareVersion);
    disk.capacity = OptionalUnsigned(m[7], place.Member("capacity"), kMax64, "unsigned 64-bit");
    disk.rpm = static_cast<std::uint32_t>(
        OptionalUnsigned(m[8], place.Member("rpm"), kMax32, "unsigned 32-bit"));
    if (m[9]) Health(*m[9], place.Member("health"), record.health);
    if (m[10]) Identity(*m[10], place.Member("identity"), record.identity);
  }

  static void IdList(const std::optional<Value>& value, const Place& place,
                     std::vector<std::string>& ids) {
    if (!value) return;
    ExpectArray(*value, place);
    ids.reserve(Json::Size(*value));
    Json::ForEachElement(
        *value, [&](const Value& id) { ids.emplace_back(TextAt(id, place.Element(ids.size()))); });
  }

  static void Group(const Value& value, const Place& place, zeda::orvi::OrviDiskGroup& group) {
    ExpectObject(value, place);
    const auto members = MembersOf(value, place, kGroupMembers);
    IdList(members[0], place.Member("dataDisks"), group.dataDisks);
    IdList(members[1], place.Member("spareDisks"), group.spareDisks);
  }

  static NasRecord Nas(const Value& value, const Place& place) {
    ExpectObject(value, place);
    const auto members = MembersOf(value, place, kNasMembers);
    NasRecord nas;
    if (!members[0]) Refuse(place.Member("name"), "missing required member");
    ReadString(*members[0], place.Member("name"), nas.name);
    if (members[1]) {
      const Place where = place.Member("disks");
      ExpectArray(*members[1], where);
      nas.disks.reserve(Json::Size(*members[1]));
      Json::ForEachElement(*members[1], [&](const Value& disk) {
        const std::size_t index = nas.disks.size();
        Disk(disk, where.Element(index), nas.disks.emplace_back());
      });
    }
    if (members[2]) {
      const Place where = place.Member("groups");
      ExpectArray(*members[2], where);
      nas.groups.reserve(Json::Size(*members[2]));
      Json::ForEachElement(*members[2], [&](const Value& group) {
        const std::size_t index = nas.groups.size();
        Group(group, where.Element(index), nas.groups.emplace_back());
      });
    }
    return nas;
  }
};

}  // namespace zeda::pelka::platform
