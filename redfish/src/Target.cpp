#include "Target.h"

#include <algorithm>
#include <cstdint>

namespace zeda::redfish {

namespace {

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool IsControl(unsigned char c) { return c < 0x20 || c == 0x7f; }

// Decodes %XX escapes of `raw`; false on a broken escape. `hidden` is set
// when an escape stands for a character that may not be escaped here (a
// path separator or a control character).
bool PercentDecode(std::string_view raw, std::string& out, bool& hidden) {
  out.clear();
  for (std::size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] != '%') {
      out += raw[i];
      continue;
    }
    if (i + 2 >= raw.size()) return false;
    const int high = HexValue(raw[i + 1]);
    const int low = HexValue(raw[i + 2]);
    if (high < 0 || low < 0) return false;
    const auto byte = static_cast<unsigned char>(high * 16 + low);
    if (byte == '/' || byte == '\\' || IsControl(byte)) hidden = true;
    out += static_cast<char>(byte);
    i += 2;
  }
  return true;
}

}  // namespace

bool IsValidUtf8(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    const auto c = static_cast<unsigned char>(text[i]);
    std::size_t length = 0;
    std::uint32_t code = 0;
    if (c < 0x80) {
      ++i;
      continue;
    } else if ((c & 0xe0) == 0xc0) {
      length = 2;
      code = c & 0x1f;
    } else if ((c & 0xf0) == 0xe0) {
      length = 3;
      code = c & 0x0f;
    } else if ((c & 0xf8) == 0xf0) {
      length = 4;
      code = c & 0x07;
    } else {
      return false;
    }
    if (i + length > text.size()) return false;
    for (std::size_t k = 1; k < length; ++k) {
      const auto next = static_cast<unsigned char>(text[i + k]);
      if ((next & 0xc0) != 0x80) return false;
      code = (code << 6) | (next & 0x3f);
    }
    static constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < kSmallest[length] || code > 0x10ffff || (code >= 0xd800 && code <= 0xdfff)) {
      return false;
    }
    i += length;
  }
  return true;
}

TargetProblem ParseTarget(std::string_view target, RequestTarget& out) {
  if (target.size() > kMaxTargetLength) return TargetProblem::kTooLong;
  if (target.empty() || target[0] != '/') return TargetProblem::kMalformed;
  for (const char c : target) {
    if (IsControl(static_cast<unsigned char>(c)) || c == ' ' || c == '#') {
      return TargetProblem::kMalformed;
    }
  }
  const auto question = target.find('?');
  const std::string_view rawPath = target.substr(0, question);
  out.query =
      question == std::string_view::npos ? std::string() : std::string(target.substr(question + 1));
  bool hidden = false;
  if (!PercentDecode(rawPath, out.path, hidden)) return TargetProblem::kMalformed;
  if (hidden || !IsValidUtf8(out.path)) return TargetProblem::kNoSuchPath;
  // Every segment between two '/' must be a name: no empty ones, no "." or "..".
  if (out.path.size() > 1 && out.path.back() == '/') out.path.pop_back();
  std::size_t start = 1;
  while (out.path.size() > 1 && start <= out.path.size()) {
    const std::size_t end = std::min(out.path.find('/', start), out.path.size());
    const std::string_view segment = std::string_view(out.path).substr(start, end - start);
    if (segment.empty() || segment == "." || segment == "..") return TargetProblem::kNoSuchPath;
    start = end + 1;
  }
  return TargetProblem::kNone;
}

}  // namespace zeda::redfish
