// What a handler answers to one request: the server adds the transport
// headers (Content-Type, OData-Version, Cache-Control and the security
// headers) and writes it out, in one piece or streamed.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zeda::redfish {

struct Reply {
  int status = 200;
  std::vector<std::pair<std::string, std::string>> headers;  // besides Content-Type/OData-Version
  std::string body;                                          // JSON text, when `chunks` is empty
  // For large collections: called repeatedly; appends the next piece to `out`
  // and returns false once the body is complete. The server streams the pieces
  // (chunked transfer) without holding the whole answer.
  std::function<bool(std::string& out)> chunks;
};

// The Redfish error body with one message of the Base registry, e.g.
// ErrorReply(404, "ResourceNotFound", {"Drive", "x"}) or ErrorReply(405, "OperationNotAllowed",
// {}).
Reply ErrorReply(int status, std::string_view messageId, std::vector<std::string> args);

}  // namespace zeda::redfish
