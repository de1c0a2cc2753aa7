// The request target (RFC 9112 origin form "/path?query") as the handlers
// see it: the path percent-decoded and checked, the query apart.
#pragma once

#include <string>
#include <string_view>

namespace zeda::redfish {

inline constexpr std::size_t kMaxTargetLength = 2048;

struct RequestTarget {
  std::string path;   // decoded; no trailing '/', except the path "/" itself
  std::string query;  // as sent, without '?'
};

enum class TargetProblem {
  kNone,
  kMalformed,  // not an origin-form target, or a broken %-escape: 400
  kTooLong,    // longer than kMaxTargetLength: 414
  kNoSuchPath  // names nothing this service can have ("..", "//", NUL, %2F, bad UTF-8): 404
};

// Splits and decodes `target` into `out`.
TargetProblem ParseTarget(std::string_view target, RequestTarget& out);

// Whether `text` is well-formed UTF-8 (no overlong forms, no surrogates).
bool IsValidUtf8(std::string_view text);

}  // namespace zeda::redfish
