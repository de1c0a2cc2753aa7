// Small routines shared by the sources and the log start-up of platform/.
#pragma once

#include <unistd.h>

#include <string>

namespace zeda::pelka::platform {

// Whitespace sets for Trimmed, by where the text comes from.
// A udev database value (one line, read without its newline).
inline constexpr char kBlanks[] = " \t";
// A string of smartctl's JSON output.
inline constexpr char kBlanksAndNewlines[] = " \t\n";
// A sysfs attribute line, which may end with "\r\n".
inline constexpr char kAllLineWhitespace[] = " \t\r\n";

// `text` without the leading and trailing characters of `whitespace`; empty
// when it holds nothing else.
inline std::string Trimmed(const std::string& text, const char* whitespace) {
  const auto first = text.find_first_not_of(whitespace);
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(whitespace) - first + 1);
}

// The name of this machine, or `fallback` when it has none or it cannot be
// read.
inline std::string HostName(const char* fallback) {
  char name[256] = {};
  if (::gethostname(name, sizeof name - 1) != 0 || name[0] == '\0') return fallback;
  return name;
}

}  // namespace zeda::pelka::platform
