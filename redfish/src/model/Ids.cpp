#include "model/Ids.h"

namespace zeda::redfish::model {

namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

bool IsPlainCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '.' || c == '_' || c == ':' || c == '~';
}

bool IsPlain(std::string_view name) {
  // A leading "~" marks the hexadecimal form.
  if (name.empty() || name[0] == '~' || name == "." || name == "..") return false;
  for (const char c : name) {
    if (!IsPlainCharacter(c)) return false;
  }
  return true;
}

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;  // upper-case digits are another spelling: refused
}

}  // namespace

std::string SegmentOf(std::string_view name) {
  if (IsPlain(name)) return std::string(name);
  std::string segment = "~";
  segment.reserve(1 + 2 * name.size());
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    segment += kHexDigits[byte >> 4];
    segment += kHexDigits[byte & 0x0f];
  }
  return segment;
}

std::optional<std::string> NameOfSegment(std::string_view segment) {
  if (segment.empty() || segment[0] != '~') {
    if (!IsPlain(segment)) return std::nullopt;
    return std::string(segment);
  }
  const std::string_view hex = segment.substr(1);
  if (hex.size() % 2 != 0) return std::nullopt;
  std::string name;
  name.reserve(hex.size() / 2);
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    const int high = HexValue(hex[i]);
    const int low = HexValue(hex[i + 1]);
    if (high < 0 || low < 0) return std::nullopt;
    name += static_cast<char>(high * 16 + low);
  }
  // One segment per name: a plain name is only reached by its plain form.
  if (IsPlain(name)) return std::nullopt;
  return name;
}

}  // namespace zeda::redfish::model
