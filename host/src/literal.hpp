// Text forms of scalar values shared by the output formats.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "zeda/host/value.hpp"

namespace zeda::host::detail {

// Shortest text that reads back to the same real32 / real64.
std::string realText(const Value& v);
// The unquoted text every format writes for a boolean (TRUE / FALSE), an
// integer or a real; nullopt for any other type (strings, references, ...).
std::optional<std::string> bareScalarText(const Value& v);
// "abc" with " \ and control characters escaped the MOF way.
std::string mofQuote(const std::string& s);
// & < > " ' as XML entities, tab, line feed and carriage return as
// character references; control characters that XML 1.0 cannot carry and bytes
// that are not UTF-8 as U+FFFD.
std::string xmlEscape(const std::string& s);

// U+FFFD in UTF-8: stands for bytes that are not well-formed UTF-8.
inline constexpr char kReplacementCharacter[] = "\xEF\xBF\xBD";
// Length of the well-formed UTF-8 sequence of two or more bytes at s[i], or 0.
// On 0, *bad is the length of its longest valid start (at least 1): the bytes
// one U+FFFD stands for.
std::size_t utf8SequenceLength(std::string_view s, std::size_t i, std::size_t* bad);

}  // namespace zeda::host::detail
