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

std::string mofQuote(const std::string& s) {
  std::string out = "\"";
  for (const char c : s) {
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      case '\b': out += "\\b"; break;
      case '\f': out += "\\f"; break;
      default:
        if (static_cast<unsigned char>(c) < 0x20) {
          char buf[8];
          std::snprintf(buf, sizeof buf, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
          out += buf;
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
}

std::string xmlEscape(const std::string& s) {
  std::string out;
  out.reserve(s.size());
  for (const char c : s) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      case '\'': out += "&apos;"; break;
      default: out += c;
    }
  }
  return out;
}

}  // namespace zeda::host::detail
