#include "literal.hpp"

#include <charconv>
#include <cstdio>

namespace zeda::host::detail {

std::string realText(const Value& v) {
  char buf[64];
  std::to_chars_result res{};
  if (v.type() == type::real32) {
    res = std::to_chars(buf, buf + sizeof buf, static_cast<float>(v.r()));
  } else {
    res = std::to_chars(buf, buf + sizeof buf, v.r());
  }
  return std::string(buf, res.ptr);
}

std::optional<std::string> bareScalarText(const Value& v) {
  switch (v.type()) {
    case type::boolean:
      return v.b() ? "TRUE" : "FALSE";
    case type::char16:
    case type::uint8:
    case type::uint16:
    case type::uint32:
    case type::uint64:
      return std::to_string(v.u());
    case type::sint8:
    case type::sint16:
    case type::sint32:
    case type::sint64:
      return std::to_string(v.s());
    case type::real32:
    case type::real64:
      return realText(v);
    default:
      return std::nullopt;
  }
}

std::string mofQuote(const std::string& s) {
  std::string out = "\"";
  for (const char c : s) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
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
      case '\b':
        out += "\\b";
        break;
      case '\f':
        out += "\\f";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20) {
          char buf[8];
          std::snprintf(buf, sizeof buf, "\\x%02X",
                        static_cast<unsigned>(static_cast<unsigned char>(c)));
          out += buf;
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
}

namespace {
bool inRange(unsigned char c, unsigned char low, unsigned char high) {
  return c >= low && c <= high;
}
}  // namespace

std::size_t utf8SequenceLength(std::string_view s, std::size_t i, std::size_t* bad) {
  const auto at = [&s](std::size_t n) { return static_cast<unsigned char>(s[n]); };
  const unsigned char lead = at(i);
  std::size_t length = 0;
  unsigned char low = 0x80;
  unsigned char high = 0xBF;  // range of the second byte; later bytes 80..BF
  if (inRange(lead, 0xC2, 0xDF)) {
    length = 2;
  } else if (inRange(lead, 0xE0, 0xEF)) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;   // no overlong forms
    if (lead == 0xED) high = 0x9F;  // no surrogates
  } else if (inRange(lead, 0xF0, 0xF4)) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;  // nothing above U+10FFFF
  }
  std::size_t n = 1;
  for (; n < length && i + n < s.size(); ++n) {
    const bool ok = n == 1 ? inRange(at(i + n), low, high) : inRange(at(i + n), 0x80, 0xBF);
    if (!ok) break;
  }
  if (length == 0 || n < length) {
    *bad = n;
    return 0;
  }
  return length;
}

namespace {

// A well-formed sequence that is also an XML character (U+FFFE and U+FFFF
// are not), or 0 as utf8SequenceLength.
std::size_t xmlSequenceLength(const std::string& s, std::size_t i, std::size_t* bad) {
  const std::size_t length = utf8SequenceLength(s, i, bad);
  if (length == 3 && static_cast<unsigned char>(s[i]) == 0xEF &&
      static_cast<unsigned char>(s[i + 1]) == 0xBF &&
      static_cast<unsigned char>(s[i + 2]) >= 0xBE) {
    *bad = length;
    return 0;
  }
  return length;
}

}  // namespace

std::string xmlEscape(const std::string& s) {
  std::string out;
  out.reserve(s.size());
  for (std::size_t i = 0; i < s.size();) {
    const char c = s[i];
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x80) {
      std::size_t bad = 0;
      const std::size_t length = xmlSequenceLength(s, i, &bad);
      if (length == 0) {
        out += kReplacementCharacter;
        i += bad;
      } else {
        out.append(s, i, length);
        i += length;
      }
      continue;
    }
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&apos;";
        break;
      // References keep these three through end-of-line and attribute-value
      // normalisation.
      case '\t':
        out += "&#9;";
        break;
      case '\n':
        out += "&#10;";
        break;
      case '\r':
        out += "&#13;";
        break;
      default:
        // Other control characters are no XML 1.0 characters at all.
        if (byte < 0x20) {
          out += kReplacementCharacter;
        } else {
          out += c;
        }
    }
    ++i;
  }
  return out;
}

}  // namespace zeda::host::detail
