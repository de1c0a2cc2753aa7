// JSON text of the resources: objects keep the order their members are set
// in, text that is not UTF-8 is written with U+FFFD in its place, and long
// lists of links are streamed.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "Reply.h"

namespace zeda::redfish::model {

using Json = nlohmann::ordered_json;

// Compact text of `value`.
std::string Dumped(const Json& value);

// {"@odata.id": path}
Json Link(std::string path);

// The path of the link at a position of a list.
using LinkAt = std::function<std::string(std::size_t)>;

// Lists of at most this many links are answered in one body; longer ones
// are streamed in pieces of this many links.
inline constexpr std::size_t kLinksPerPiece = 1000;

// A reply with the object `head` followed by two more members:
// "<name>@odata.count": count and "<name>": [the `count` links of linkAt].
// `linkAt` must own (or share) whatever it reads: a streamed reply calls it
// after the request's inventory hold has ended.
Reply LinkListReply(const Json& head, std::string_view name, std::size_t count, LinkAt linkAt);

}  // namespace zeda::redfish::model
