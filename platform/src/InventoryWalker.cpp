// The parts of the inventory walk that do not depend on the JSON library:
// places and the wording of every refusal. Nothing here runs unless a
// document is refused, except the status words.
#include "InventoryWalker.h"

#include <cstdio>

namespace zeda::pelka::platform {

namespace {

// `text` as a JSON string literal: quotes, backslashes and control characters
// escaped, everything else as it stands.
std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    switch (c) {
      case '"':
        quoted += "\\\"";
        break;
      case '\\':
        quoted += "\\\\";
        break;
      case '\b':
        quoted += "\\b";
        break;
      case '\f':
        quoted += "\\f";
        break;
      case '\n':
        quoted += "\\n";
        break;
      case '\r':
        quoted += "\\r";
        break;
      case '\t':
        quoted += "\\t";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20) {
          char escape[7];
          std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
          quoted += escape;
        } else {
          quoted += c;
        }
    }
  }
  return quoted + "\"";
}

// A member name inside a place: as it stands, except that a NUL, which would
// cut the message short wherever it is passed on as a C string, is written
// as its JSON escape.
void AppendName(std::string& text, std::string_view name) {
  for (const char c : name) {
    if (c == '\0') {
      text += "\\u0000";
    } else {
      text += c;
    }
  }
}

}  // namespace

const char* KindText(Kind kind) {
  switch (kind) {
    case Kind::Object:
      return "an object";
    case Kind::Array:
      return "an array";
    case Kind::String:
      return "a string";
    case Kind::Boolean:
      return "a boolean";
    case Kind::Unsigned:
      return "an unsigned integer";
    case Kind::Negative:
      return "a negative integer";
    case Kind::Real:
      return "a floating-point number";
    case Kind::Null:
      return "null";
  }
  return "an unsupported value";
}

std::string Place::Text() const {
  if (parent_ == nullptr) return std::string();
  std::string text = parent_->Text();
  if (isElement_) {
    text += "[" + std::to_string(index_) + "]";
  } else {
    if (!text.empty()) text += ".";
    AppendName(text, name_);
  }
  return text;
}

void Refuse(const Place& place, std::string text) { throw Problem{place.Text(), std::move(text)}; }

void WrongType(Kind found, const Place& place, const char* expected) {
  Refuse(place, std::string("expected ") + expected + ", found " + KindText(found));
}

void DuplicateNas(const Place& place, const std::string& name, std::size_t firstIndex) {
  Refuse(place, "duplicate NAS name " + Quoted(name) + " (also at nas[" +
                    std::to_string(firstIndex) + "])");
}

void UnknownStatus(const Place& place, std::string_view word) {
  Refuse(place, "unknown status " + Quoted(word) +
                    " (expected unknown, ok, degraded, predictive-failure, error, stopped or "
                    "no-contact)");
}

std::optional<zeda::orvi::DiskStatus> StatusOfWord(std::string_view word) {
  struct Entry {
    std::string_view word;
    zeda::orvi::DiskStatus status;
  };
  static constexpr Entry kWords[] = {
      {"unknown", zeda::orvi::Unknown},      {"ok", zeda::orvi::Ok},
      {"degraded", zeda::orvi::Degraded},    {"predictive-failure", zeda::orvi::PredictiveFailure},
      {"error", zeda::orvi::Error},          {"stopped", zeda::orvi::Stopped},
      {"no-contact", zeda::orvi::NoContact},
  };
  for (const Entry& entry : kWords) {
    if (entry.word == word) return entry.status;
  }
  return std::nullopt;
}

}  // namespace zeda::pelka::platform
