// CIM values as the in-process object manager hands them to tests and tools.
//
// A Value is an immutable CIM value: a CMPI type code (arrays carry the
// CMPI_ARRAY bit), a null flag and the payload. Accessors check the type and
// throw TypeMismatch naming what was asked for and what the value holds.
#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zeda::host {

class ObjectPath;
class Instance;

// A CMPI type code (CMPIType): CMPI_uint16, CMPI_string, CMPI_ref,
// CMPI_ARRAY | CMPI_uint16 ... The numbers are those of the CMPI standard.
using TypeCode = std::uint16_t;

namespace type {
inline constexpr TypeCode null = 0;
inline constexpr TypeCode boolean = 2;
inline constexpr TypeCode char16 = 3;
inline constexpr TypeCode real32 = 2 << 2;
inline constexpr TypeCode real64 = 3 << 2;
inline constexpr TypeCode uint8 = 8 << 4;
inline constexpr TypeCode uint16 = 9 << 4;
inline constexpr TypeCode uint32 = 10 << 4;
inline constexpr TypeCode uint64 = 11 << 4;
inline constexpr TypeCode sint8 = 12 << 4;
inline constexpr TypeCode sint16 = 13 << 4;
inline constexpr TypeCode sint32 = 14 << 4;
inline constexpr TypeCode sint64 = 15 << 4;
inline constexpr TypeCode instance = 16 << 8;
inline constexpr TypeCode ref = 17 << 8;
inline constexpr TypeCode string = 22 << 8;
inline constexpr TypeCode chars = 23 << 8;
inline constexpr TypeCode dateTime = 24 << 8;
inline constexpr TypeCode array = 1 << 13;  // bit set on every array type code
}  // namespace type

// "uint16", "string", "reference", "datetime", "uint16[]" ... (CMPI_chars is
// "string" too). Unknown codes give "unknown(<code>)".
std::string typeName(TypeCode code);

class TypeMismatch : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

class Value {
 public:
  // A null value without a type (CMPI_null).
  Value();
  Value(const Value& other);
  Value(Value&& other) noexcept;
  Value& operator=(const Value& other);
  Value& operator=(Value&& other) noexcept;
  ~Value();

  // Factories; the type code follows from the factory.
  static Value null(TypeCode type);  // typed null, e.g. null(type::uint16)
  static Value boolean(bool v);
  static Value char16(std::uint16_t v);
  static Value uint8(std::uint8_t v);
  static Value uint16(std::uint16_t v);
  static Value uint32(std::uint32_t v);
  static Value uint64(std::uint64_t v);
  static Value sint8(std::int8_t v);
  static Value sint16(std::int16_t v);
  static Value sint32(std::int32_t v);
  static Value sint64(std::int64_t v);
  static Value real32(float v);
  static Value real64(double v);
  static Value string(std::string v);
  static Value dateTime(std::string text);  // CIM datetime text, 25 characters
  static Value reference(ObjectPath path);
  static Value instance(Instance inst);
  // elementType is a scalar code; every element must be of that type (or null).
  static Value array(TypeCode elementType, std::vector<Value> elements);
  static Value uint16s(const std::vector<std::uint16_t>& v);
  static Value uint32s(const std::vector<std::uint32_t>& v);
  static Value uint64s(const std::vector<std::uint64_t>& v);
  static Value strings(const std::vector<std::string>& v);

  TypeCode type() const { return type_; }
  bool isNull() const { return null_; }
  bool isArray() const { return (type_ & type::array) != 0; }
  TypeCode elementType() const { return static_cast<TypeCode>(type_ & ~type::array); }
  std::string typeName() const { return zeda::host::typeName(type_); }

  // Scalar accessors. Each throws TypeMismatch when the value is null or of
  // another type; u() accepts every unsigned type (and char16), s() every
  // signed type, r() both reals, str() string and chars.
  bool b() const;
  std::uint64_t u() const;
  std::int64_t s() const;
  double r() const;
  const std::string& str() const;
  const std::string& dateTimeText() const;
  const ObjectPath& ref() const;
  const Instance& inst() const;

  // Array accessors; they throw TypeMismatch for a non-array, a null array or
  // (for the typed ones) elements of the wrong kind or null elements.
  const std::vector<Value>& elements() const;
  std::vector<bool> bools() const;
  std::vector<std::uint64_t> uints() const;
  std::vector<std::int64_t> sints() const;
  std::vector<std::string> strings() const;
  std::vector<ObjectPath> refs() const;

  // Deep equality: type, null flag and payload.
  bool operator==(const Value& other) const;
  bool operator!=(const Value& other) const { return !(*this == other); }

  // Short human-readable form for test diagnostics, e.g. uint16 7, "abc".
  std::string debugString() const;

  struct Payload;  // opaque, defined by the implementation

 private:
  // Booleans, integers and reals are held in the value itself; strings,
  // paths, instances and arrays in a shared immutable payload, counted by
  // the values that share it (a value is 16 bytes: many live per request).
  union Scalar {
    bool b;
    std::uint64_t u;
    std::int64_t s;
    double r;
    const Payload* payload;
  };
  Value(TypeCode type, const Payload* payload);  // takes over one count
  Value(TypeCode type, Scalar scalar);
  bool holdsPayload() const;
  void swap(Value& other) noexcept;
  static Scalar unsignedScalar(std::uint64_t v);
  static Scalar signedScalar(std::int64_t v);
  static Scalar realScalar(double v);
  const Payload& expect(bool ok, std::string_view wanted) const;
  const Scalar& expectScalar(bool ok, std::string_view wanted) const;

  TypeCode type_ = type::null;
  bool null_ = true;
  Scalar scalar_{};
};

// A named value: a property, a key binding or a method argument.
struct NamedValue {
  std::string name;
  Value value;
  bool operator==(const NamedValue& o) const { return name == o.name && value == o.value; }
};

// CIM names compare without regard to ASCII case.
bool namesEqual(std::string_view a, std::string_view b);

}  // namespace zeda::host
