#include "PrintableText.h"

namespace zeda::pelka::platform {

namespace {

// The length of the well-formed UTF-8 sequence starting at `at`, or 0.
std::size_t SequenceLength(const std::string& text, std::size_t at) {
  const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(at);
  std::size_t length = 0;
  unsigned char low = 0x80;   // the range of the second byte (excludes overlong
  unsigned char high = 0xbf;  // forms, surrogates and code points past U+10FFFF)
  if (lead >= 0xc2 && lead <= 0xdf) {
    length = 2;
  } else if (lead >= 0xe0 && lead <= 0xef) {
    length = 3;
    if (lead == 0xe0) low = 0xa0;
    if (lead == 0xed) high = 0x9f;
  } else if (lead >= 0xf0 && lead <= 0xf4) {
    length = 4;
    if (lead == 0xf0) low = 0x90;
    if (lead == 0xf4) high = 0x8f;
  } else {
    return 0;
  }
  if (at + length > text.size()) return 0;
  if (byte(at + 1) < low || byte(at + 1) > high) return 0;
  for (std::size_t i = at + 2; i < at + length; ++i) {
    if (byte(i) < 0x80 || byte(i) > 0xbf) return 0;
  }
  return length;
}

}  // namespace

std::string PrintableText(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x80) {
      out += (byte < 0x20 || byte == 0x7f) ? '?' : text[i];
      ++i;
    } else if (const std::size_t length = SequenceLength(text, i); length != 0) {
      out.append(text, i, length);
      i += length;
    } else {
      out += '?';
      ++i;
    }
  }
  return out;
}

}  // namespace zeda::pelka::platform
