// JSON text writer: appends to the caller's buffer, one pass per value.
#include "json_text.hpp"

#include <charconv>
#include <cmath>

#include "literal.hpp"

namespace zeda::host::detail {

namespace {

constexpr char kHex[] = "0123456789abcdef";

// Bytes a JSON string cannot carry as they are: ", \\, control characters,
// and every byte of a multi-byte sequence (checked for UTF-8).
struct Special {
  bool table[256] = {};
  constexpr Special() {
    for (int c = 0; c < 0x20; ++c) table[c] = true;
    for (int c = 0x80; c < 0x100; ++c) table[c] = true;
    table[static_cast<unsigned char>('"')] = true;
    table[static_cast<unsigned char>('\\')] = true;
  }
};
constexpr Special kSpecial;

// The CIM type name of a value's code, quoted; type names are plain ASCII.
void appendTypeName(std::string& out, TypeCode code) {
  const char* name = nullptr;
  switch (static_cast<TypeCode>(code & ~type::array)) {
    case type::boolean:
      name = "boolean";
      break;
    case type::char16:
      name = "char16";
      break;
    case type::real32:
      name = "real32";
      break;
    case type::real64:
      name = "real64";
      break;
    case type::uint8:
      name = "uint8";
      break;
    case type::uint16:
      name = "uint16";
      break;
    case type::uint32:
      name = "uint32";
      break;
    case type::uint64:
      name = "uint64";
      break;
    case type::sint8:
      name = "sint8";
      break;
    case type::sint16:
      name = "sint16";
      break;
    case type::sint32:
      name = "sint32";
      break;
    case type::sint64:
      name = "sint64";
      break;
    case type::instance:
      name = "instance";
      break;
    case type::ref:
      name = "reference";
      break;
    case type::string:
    case type::chars:
      name = "string";
      break;
    case type::dateTime:
      name = "datetime";
      break;
    default:
      break;
  }
  if (name == nullptr) {
    appendJsonString(out, typeName(code));  // null and unknown codes
    return;
  }
  out += '"';
  out += name;
  if ((code & type::array) != 0) out += "[]";
  out += '"';
}

void appendUnsigned(std::string& out, std::uint64_t v) {
  char buf[24];
  const auto res = std::to_chars(buf, buf + sizeof buf, v);
  out.append(buf, res.ptr);
}

void appendSigned(std::string& out, std::int64_t v) {
  char buf[24];
  const auto res = std::to_chars(buf, buf + sizeof buf, v);
  out.append(buf, res.ptr);
}

// Shortest text that reads back to the same number; an integral real keeps a
// ".0" so that it reads back as a real. Not-a-number and infinities have no
// JSON form: null, as the JSON library this replaces wrote them.
template <typename Real>
void appendReal(std::string& out, Real r) {
  if (!std::isfinite(r)) {
    out += "null";
    return;
  }
  char buf[64];
  const auto res = std::to_chars(buf, buf + sizeof buf, r);
  const std::string_view text(buf, static_cast<std::size_t>(res.ptr - buf));
  out += text;
  if (text.find_first_of(".e") == std::string_view::npos) out += ".0";
}

void appendNamed(std::string& out, const NamedValue& nv) {
  out += "{\"name\":";
  appendJsonString(out, nv.name);
  out += ",\"type\":";
  appendTypeName(out, nv.value.type());
  out += ",\"value\":";
  appendJsonValue(out, nv.value);
  out += '}';
}

void appendNamedList(std::string& out, const std::vector<NamedValue>& list) {
  out += '[';
  bool first = true;
  for (const auto& nv : list) {
    if (!first) out += ',';
    first = false;
    appendNamed(out, nv);
  }
  out += ']';
}

}  // namespace

void appendJsonString(std::string& out, std::string_view s) {
  out += '"';
  std::size_t plain = 0;  // start of the bytes not yet copied
  const auto flush = [&](std::size_t upTo) { out.append(s.data() + plain, upTo - plain); };
  for (std::size_t i = 0; i < s.size();) {
    const auto byte = static_cast<unsigned char>(s[i]);
    if (!kSpecial.table[byte]) {
      ++i;
      continue;
    }
    if (byte >= 0x80) {
      std::size_t bad = 0;
      const std::size_t length = utf8SequenceLength(s, i, &bad);
      if (length != 0) {
        i += length;
        continue;
      }
      flush(i);
      out += kReplacementCharacter;
      i += bad;
      plain = i;
      continue;
    }
    flush(i);
    switch (byte) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\b':
        out += "\\b";
        break;
      case '\f':
        out += "\\f";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        out += "\\u00";
        out += kHex[byte >> 4];
        out += kHex[byte & 0xf];
    }
    ++i;
    plain = i;
  }
  flush(s.size());
  out += '"';
}

void appendJsonValue(std::string& out, const Value& v) {
  if (v.isNull()) {
    out += "null";
    return;
  }
  if (v.isArray()) {
    out += '[';
    bool first = true;
    for (const auto& e : v.elements()) {
      if (!first) out += ',';
      first = false;
      appendJsonValue(out, e);
    }
    out += ']';
    return;
  }
  switch (v.type()) {
    case type::boolean:
      out += v.b() ? "true" : "false";
      return;
    case type::char16:
    case type::uint8:
    case type::uint16:
    case type::uint32:
    case type::uint64:
      appendUnsigned(out, v.u());
      return;
    case type::sint8:
    case type::sint16:
    case type::sint32:
    case type::sint64:
      appendSigned(out, v.s());
      return;
    case type::real32:
      appendReal(out, static_cast<float>(v.r()));
      return;
    case type::real64:
      appendReal(out, v.r());
      return;
    case type::string:
    case type::chars:
      appendJsonString(out, v.str());
      return;
    case type::dateTime:
      appendJsonString(out, v.dateTimeText());
      return;
    case type::ref:
      appendJsonPath(out, v.ref());
      return;
    case type::instance:
      appendJsonInstance(out, v.inst());
      return;
    default:
      appendJsonString(out, v.debugString());
      return;
  }
}

void appendJsonPath(std::string& out, const ObjectPath& p) {
  out += "{\"namespace\":";
  appendJsonString(out, p.nameSpace());
  out += ",\"classname\":";
  appendJsonString(out, p.className());
  out += ",\"keys\":";
  appendNamedList(out, p.keys());
  out += '}';
}

void appendJsonInstance(std::string& out, const Instance& i) {
  out += "{\"path\":";
  appendJsonPath(out, i.path());
  out += ",\"properties\":";
  appendNamedList(out, i.properties());
  out += '}';
}

void appendJsonTypedValue(std::string& out, const Value& v) {
  out += "{\"type\":";
  appendTypeName(out, v.type());
  out += ",\"value\":";
  appendJsonValue(out, v);
  out += '}';
}

}  // namespace zeda::host::detail
