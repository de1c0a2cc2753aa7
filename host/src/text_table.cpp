// The bordered text grid of the table format: every cell one line, columns
// as wide as their widest cell, counted in terminal columns.
#include <algorithm>
#include <cstdint>

#include "literal.hpp"
#include "zeda/host/format.hpp"

namespace zeda::host {

namespace {

// The code point of the well-formed sequence of `length` bytes at s[i].
std::uint32_t codePoint(const std::string& s, std::size_t i, std::size_t length) {
  static constexpr unsigned char kLeadMask[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  std::uint32_t cp = static_cast<unsigned char>(s[i]) & kLeadMask[length];
  for (std::size_t n = 1; n < length; ++n) {
    cp = (cp << 6) | (static_cast<unsigned char>(s[i + n]) & 0x3Fu);
  }
  return cp;
}

// East Asian wide and full-width characters take two terminal columns.
bool isWide(std::uint32_t cp) {
  return (cp >= 0x1100 && cp <= 0x115F) || (cp >= 0x2E80 && cp <= 0xA4CF && cp != 0x303F) ||
         (cp >= 0xAC00 && cp <= 0xD7A3) || (cp >= 0xF900 && cp <= 0xFAFF) ||
         (cp >= 0xFE30 && cp <= 0xFE4F) || (cp >= 0xFF00 && cp <= 0xFF60) ||
         (cp >= 0xFFE0 && cp <= 0xFFE6) || (cp >= 0x1F300 && cp <= 0x1F64F) ||
         (cp >= 0x1F900 && cp <= 0x1F9FF) || (cp >= 0x20000 && cp <= 0x3FFFD);
}

// A cell as it is printed, with its width: bytes that are not UTF-8 become
// U+FFFD and control characters \xNN, so that a cell is one line of valid
// UTF-8 whatever a provider answered.
struct Cell {
  std::string text;
  std::size_t width = 0;
};

Cell printable(const std::string& s) {
  static const char kHex[] = "0123456789ABCDEF";
  Cell c;
  c.text.reserve(s.size());
  for (std::size_t i = 0; i < s.size();) {
    const auto byte = static_cast<unsigned char>(s[i]);
    if (byte >= 0x80) {
      std::size_t bad = 0;
      const std::size_t length = detail::utf8SequenceLength(s, i, &bad);
      if (length == 0) {
        c.text += detail::kReplacementCharacter;
        c.width += 1;
        i += bad;
      } else {
        c.text.append(s, i, length);
        c.width += isWide(codePoint(s, i, length)) ? 2 : 1;
        i += length;
      }
      continue;
    }
    if (byte < 0x20 || byte == 0x7F) {
      c.text += "\\x";
      c.text += kHex[byte >> 4];
      c.text += kHex[byte & 0xF];
      c.width += 4;
    } else {
      c.text += static_cast<char>(byte);
      c.width += 1;
    }
    ++i;
  }
  return c;
}

std::string rule(const std::vector<std::size_t>& widths) {
  std::string out = "+";
  for (const std::size_t w : widths) out += std::string(w + 2, '-') + "+";
  return out + "\n";
}

std::string line(const std::vector<Cell>& cells, const std::vector<std::size_t>& widths) {
  std::string out = "|";
  for (std::size_t n = 0; n < widths.size(); ++n) {
    const Cell empty;
    const Cell& c = n < cells.size() ? cells[n] : empty;
    out += " " + c.text + std::string(widths[n] - c.width, ' ') + " |";
  }
  return out + "\n";
}

}  // namespace

std::string textTable(const std::vector<std::string>& headers,
                      const std::vector<std::vector<std::string>>& rows) {
  std::vector<Cell> head;
  std::vector<std::size_t> widths;
  for (const auto& h : headers) {
    head.push_back(printable(h));
    widths.push_back(head.back().width);
  }
  std::vector<std::vector<Cell>> body;
  body.reserve(rows.size());
  for (const auto& row : rows) {
    std::vector<Cell>& cells = body.emplace_back();
    for (std::size_t n = 0; n < row.size() && n < widths.size(); ++n) {
      cells.push_back(printable(row[n]));
      widths[n] = std::max(widths[n], cells.back().width);
    }
  }
  const std::string border = rule(widths);
  std::string out = border + line(head, widths) + border;
  if (body.empty()) return out;
  for (const auto& cells : body) out += line(cells, widths);
  return out + border;
}

}  // namespace zeda::host
