// The CIM value model: immutable values with checked accessors.
#include "zeda/host/value.hpp"

#include <atomic>
#include <sstream>
#include <utility>
#include <variant>

#include "zeda/host/instance.hpp"
#include "zeda/host/object_path.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace zeda::host {

// Paths and instances are held by pointer: a string payload stays small.
// refs counts the values sharing the payload; the last one deletes it.
struct Value::Payload {
  mutable std::atomic<long> refs{1};
  std::variant<std::string, std::unique_ptr<const ObjectPath>, std::unique_ptr<const Instance>,
               std::vector<Value>>
      data;
};

namespace {

bool isUnsignedCode(TypeCode t) {
  return t == type::uint8 || t == type::uint16 || t == type::uint32 || t == type::uint64 ||
         t == type::char16;
}
bool isSignedCode(TypeCode t) {
  return t == type::sint8 || t == type::sint16 || t == type::sint32 || t == type::sint64;
}
bool isRealCode(TypeCode t) { return t == type::real32 || t == type::real64; }
bool isStringCode(TypeCode t) { return t == type::string || t == type::chars; }

std::string scalarName(TypeCode t) {
  switch (t) {
    case type::null:
      return "null";
    case type::boolean:
      return "boolean";
    case type::char16:
      return "char16";
    case type::real32:
      return "real32";
    case type::real64:
      return "real64";
    case type::uint8:
      return "uint8";
    case type::uint16:
      return "uint16";
    case type::uint32:
      return "uint32";
    case type::uint64:
      return "uint64";
    case type::sint8:
      return "sint8";
    case type::sint16:
      return "sint16";
    case type::sint32:
      return "sint32";
    case type::sint64:
      return "sint64";
    case type::instance:
      return "instance";
    case type::ref:
      return "reference";
    case type::string:
      return "string";
    case type::chars:
      return "string";
    case type::dateTime:
      return "datetime";
    default:
      return "unknown(" + std::to_string(t) + ")";
  }
}

// A payload with one count, which the Value made from it takes over.
template <typename T>
const Value::Payload* makePayload(T v) {
  auto p = std::make_unique<Value::Payload>();
  p->data = std::move(v);
  return p.release();
}

bool payloadsEqual(const Value::Payload& a, const Value::Payload& b) {
  if (a.data.index() != b.data.index()) return false;
  return std::visit(
      [&b](const auto& x) {
        using D = std::decay_t<decltype(x)>;
        const D& y = std::get<D>(b.data);
        if constexpr (std::is_same_v<D, std::string> || std::is_same_v<D, std::vector<Value>>) {
          return x == y;
        } else {
          return *x == *y;
        }
      },
      a.data);
}

}  // namespace

std::string typeName(TypeCode code) {
  if ((code & type::array) != 0) {
    return scalarName(static_cast<TypeCode>(code & ~type::array)) + "[]";
  }
  return scalarName(code);
}

namespace {
// ASCII case folding: CIM names are ASCII, and the locale plays no part.
constexpr unsigned char foldCase(unsigned char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c + 32) : c;
}
}  // namespace

bool namesEqual(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] &&
        foldCase(static_cast<unsigned char>(a[i])) != foldCase(static_cast<unsigned char>(b[i]))) {
      return false;
    }
  }
  return true;
}

Value::Value() = default;

Value::Value(TypeCode type, const Payload* payload) : type_(type), null_(false) {
  scalar_.payload = payload;
}

bool Value::holdsPayload() const {
  return !null_ && (isArray() || isStringCode(type_) || type_ == type::dateTime ||
                    type_ == type::ref || type_ == type::instance);
}

Value::Value(const Value& other) : type_(other.type_), null_(other.null_), scalar_(other.scalar_) {
  if (holdsPayload()) scalar_.payload->refs.fetch_add(1, std::memory_order_relaxed);
}

Value::Value(Value&& other) noexcept
    : type_(other.type_), null_(other.null_), scalar_(other.scalar_) {
  other.type_ = type::null;
  other.null_ = true;
  other.scalar_ = Scalar{};
}

Value& Value::operator=(const Value& other) {
  Value copy(other);
  swap(copy);
  return *this;
}

Value& Value::operator=(Value&& other) noexcept {
  Value taken(std::move(other));
  swap(taken);
  return *this;
}

Value::~Value() {
  if (holdsPayload() && scalar_.payload->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    delete scalar_.payload;
  }
}

void Value::swap(Value& other) noexcept {
  std::swap(type_, other.type_);
  std::swap(null_, other.null_);
  std::swap(scalar_, other.scalar_);
}

Value::Value(TypeCode type, Scalar scalar) : type_(type), null_(false), scalar_(scalar) {}

Value::Scalar Value::unsignedScalar(std::uint64_t v) {
  Scalar s{};
  s.u = v;
  return s;
}
Value::Scalar Value::signedScalar(std::int64_t v) {
  Scalar s{};
  s.s = v;
  return s;
}
Value::Scalar Value::realScalar(double v) {
  Scalar s{};
  s.r = v;
  return s;
}

Value Value::null(TypeCode t) {
  Value v;
  v.type_ = t;
  return v;
}
Value Value::boolean(bool v) {
  Scalar s{};
  s.b = v;
  return Value(type::boolean, s);
}
Value Value::char16(std::uint16_t v) { return Value(type::char16, unsignedScalar(v)); }
Value Value::uint8(std::uint8_t v) { return Value(type::uint8, unsignedScalar(v)); }
Value Value::uint16(std::uint16_t v) { return Value(type::uint16, unsignedScalar(v)); }
Value Value::uint32(std::uint32_t v) { return Value(type::uint32, unsignedScalar(v)); }
Value Value::uint64(std::uint64_t v) { return Value(type::uint64, unsignedScalar(v)); }
Value Value::sint8(std::int8_t v) { return Value(type::sint8, signedScalar(v)); }
Value Value::sint16(std::int16_t v) { return Value(type::sint16, signedScalar(v)); }
Value Value::sint32(std::int32_t v) { return Value(type::sint32, signedScalar(v)); }
Value Value::sint64(std::int64_t v) { return Value(type::sint64, signedScalar(v)); }
Value Value::real32(float v) { return Value(type::real32, realScalar(v)); }
Value Value::real64(double v) { return Value(type::real64, realScalar(v)); }
Value Value::string(std::string v) { return Value(type::string, makePayload(std::move(v))); }
Value Value::dateTime(std::string text) {
  return Value(type::dateTime, makePayload(std::move(text)));
}
Value Value::reference(ObjectPath path) {
  return Value(type::ref, makePayload(std::make_unique<const ObjectPath>(std::move(path))));
}
Value Value::instance(Instance inst) {
  return Value(type::instance, makePayload(std::make_unique<const Instance>(std::move(inst))));
}

Value Value::array(TypeCode elementType, std::vector<Value> elements) {
  const auto scalar = static_cast<TypeCode>(elementType & ~type::array);
  for (const auto& e : elements) {
    const bool sameKind = e.type() == scalar || (isStringCode(e.type()) && isStringCode(scalar));
    if (!(e.isNull() && e.type() == type::null) && !sameKind) {
      throw TypeMismatch("array of " + zeda::host::typeName(scalar) +
                         " cannot hold an element of type " + e.typeName());
    }
  }
  return Value(static_cast<TypeCode>(scalar | type::array), makePayload(std::move(elements)));
}

namespace {
template <typename T, typename F>
std::vector<Value> mapAll(const std::vector<T>& in, F f) {
  std::vector<Value> out;
  out.reserve(in.size());
  for (const auto& x : in) out.push_back(f(x));
  return out;
}
}  // namespace

Value Value::uint16s(const std::vector<std::uint16_t>& v) {
  return array(type::uint16, mapAll(v, [](std::uint16_t x) { return uint16(x); }));
}
Value Value::uint32s(const std::vector<std::uint32_t>& v) {
  return array(type::uint32, mapAll(v, [](std::uint32_t x) { return uint32(x); }));
}
Value Value::uint64s(const std::vector<std::uint64_t>& v) {
  return array(type::uint64, mapAll(v, [](std::uint64_t x) { return uint64(x); }));
}
Value Value::strings(const std::vector<std::string>& v) {
  return array(type::string, mapAll(v, [](const std::string& x) { return string(x); }));
}

const Value::Payload& Value::expect(bool ok, std::string_view wanted) const {
  if (!ok) {
    throw TypeMismatch("value is " + typeName() + ", not " + std::string(wanted));
  }
  if (!holdsPayload()) {
    throw TypeMismatch("value is a null " + typeName() + ", not a " + std::string(wanted) +
                       " value");
  }
  return *scalar_.payload;
}

const Value::Scalar& Value::expectScalar(bool ok, std::string_view wanted) const {
  if (!ok) {
    throw TypeMismatch("value is " + typeName() + ", not " + std::string(wanted));
  }
  if (null_) {
    throw TypeMismatch("value is a null " + typeName() + ", not a " + std::string(wanted) +
                       " value");
  }
  return scalar_;
}

bool Value::b() const { return expectScalar(type_ == type::boolean, "boolean").b; }
std::uint64_t Value::u() const {
  return expectScalar(isUnsignedCode(type_), "an unsigned integer").u;
}
std::int64_t Value::s() const { return expectScalar(isSignedCode(type_), "a signed integer").s; }
double Value::r() const { return expectScalar(isRealCode(type_), "a real").r; }
const std::string& Value::str() const {
  return std::get<std::string>(expect(isStringCode(type_), "string").data);
}
const std::string& Value::dateTimeText() const {
  return std::get<std::string>(expect(type_ == type::dateTime, "datetime").data);
}
const ObjectPath& Value::ref() const {
  return *std::get<std::unique_ptr<const ObjectPath>>(expect(type_ == type::ref, "reference").data);
}
const Instance& Value::inst() const {
  return *std::get<std::unique_ptr<const Instance>>(
      expect(type_ == type::instance, "instance").data);
}
const std::vector<Value>& Value::elements() const {
  return std::get<std::vector<Value>>(expect(isArray(), "an array").data);
}

namespace {
template <typename T, typename F>
std::vector<T> collect(const Value& v, std::string_view what, F get) {
  std::vector<T> out;
  const auto& elems = v.elements();
  out.reserve(elems.size());
  for (std::size_t i = 0; i < elems.size(); ++i) {
    try {
      out.push_back(get(elems[i]));
    } catch (const TypeMismatch& e) {
      throw TypeMismatch(std::string(what) + ": element " + std::to_string(i) + ": " + e.what());
    }
  }
  return out;
}
}  // namespace

std::vector<bool> Value::bools() const {
  return collect<bool>(*this, "bools()", [](const Value& e) { return e.b(); });
}
std::vector<std::uint64_t> Value::uints() const {
  return collect<std::uint64_t>(*this, "uints()", [](const Value& e) { return e.u(); });
}
std::vector<std::int64_t> Value::sints() const {
  return collect<std::int64_t>(*this, "sints()", [](const Value& e) { return e.s(); });
}
std::vector<std::string> Value::strings() const {
  return collect<std::string>(*this, "strings()", [](const Value& e) { return e.str(); });
}
std::vector<ObjectPath> Value::refs() const {
  return collect<ObjectPath>(*this, "refs()", [](const Value& e) { return e.ref(); });
}

bool Value::operator==(const Value& other) const {
  if (type_ != other.type_ || null_ != other.null_) return false;
  if (null_) return true;
  if (type_ == type::boolean) return scalar_.b == other.scalar_.b;
  if (isUnsignedCode(type_)) return scalar_.u == other.scalar_.u;
  if (isSignedCode(type_)) return scalar_.s == other.scalar_.s;
  if (isRealCode(type_)) return scalar_.r == other.scalar_.r;
  if (!holdsPayload() || !other.holdsPayload()) return holdsPayload() == other.holdsPayload();
  if (scalar_.payload == other.scalar_.payload) return true;
  return payloadsEqual(*scalar_.payload, *other.scalar_.payload);
}

std::string Value::debugString() const {
  std::ostringstream out;
  out << typeName() << ' ';
  if (null_ || type_ == type::null) {
    out << "NULL";
    return out.str();
  }
  if (type_ == type::boolean) {
    out << (scalar_.b ? "true" : "false");
    return out.str();
  }
  if (isUnsignedCode(type_)) {
    out << scalar_.u;
    return out.str();
  }
  if (isSignedCode(type_)) {
    out << scalar_.s;
    return out.str();
  }
  if (isRealCode(type_)) {
    out << scalar_.r;
    return out.str();
  }
  if (!holdsPayload()) {
    out << "NULL";
    return out.str();
  }
  std::visit(
      [&out](const auto& d) {
        using D = std::decay_t<decltype(d)>;
        if constexpr (std::is_same_v<D, std::string>) {
          out << '"' << d << '"';
        } else if constexpr (std::is_same_v<D, std::unique_ptr<const ObjectPath>>) {
          out << formatObjectPath(*d);
        } else if constexpr (std::is_same_v<D, std::unique_ptr<const Instance>>) {
          out << "instance of " << d->className();
        } else {
          out << '{';
          for (std::size_t i = 0; i < d.size(); ++i) out << (i ? ", " : "") << d[i].debugString();
          out << '}';
        }
      },
      scalar_.payload->data);
  return out.str();
}

}  // namespace zeda::host
