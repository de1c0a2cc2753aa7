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

// The place and the problem of one of nlohmann::json's parse errors, whose
// what() reads "[json.exception.parse_error.101] parse error at line 3,
// column 5: syntax error while parsing object - unexpected '}'; ...": the
// text after "parse error at ", or all of it when that is missing.
inline std::string SyntaxProblem(const std::string& what) {
  const std::string marker = "parse error at ";
  const std::string::size_type at = what.find(marker);
  return at == std::string::npos ? what : what.substr(at + marker.size());
}

// The name of this machine, or `fallback` when it has none or it cannot be
// read.
inline std::string HostName(const char* fallback) {
  char name[256] = {};
  if (::gethostname(name, sizeof name - 1) != 0 || name[0] == '\0') return fallback;
  return name;
}

}  // namespace zeda::pelka::platform
