#include "model/Json.h"

#include <algorithm>
#include <memory>

namespace zeda::redfish::model {

namespace {

// Whether `text` can stand between JSON quotes as it is: printable ASCII
// without quote or backslash, as every path made of segments (Ids.h) is.
bool NeedsNoEscape(std::string_view text) {
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte >= 0x7f || c == '"' || c == '\\') return false;
  }
  return true;
}

// Appends the links [from, to) of a list, comma-separated, with a comma in
// front unless `from` is 0.
void AppendLinks(std::string& out, const LinkAt& linkAt, std::size_t from, std::size_t to) {
  for (std::size_t i = from; i < to; ++i) {
    if (i != 0) out += ',';
    out += R"({"@odata.id":)";
    const std::string path = linkAt(i);
    if (NeedsNoEscape(path)) {
      out += '"';
      out += path;
      out += '"';
    } else {
      out += Dumped(Json(path));
    }
    out += '}';
  }
}

}  // namespace

std::string Dumped(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json Link(std::string path) {
  Json link = Json::object();
  link["@odata.id"] = std::move(path);
  return link;
}

Reply LinkListReply(const Json& head, std::string_view name, std::size_t count, LinkAt linkAt) {
  // The head without its closing brace, then the count and the list.
  std::string opening = Dumped(head);
  opening.pop_back();
  if (opening.size() > 1) opening += ',';
  opening += Dumped(Json(std::string(name) + "@odata.count"));
  opening += ':' + std::to_string(count) + ',';
  opening += Dumped(Json(std::string(name)));
  opening += ":[";

  Reply reply;
  if (count <= kLinksPerPiece) {
    reply.body = std::move(opening);
    AppendLinks(reply.body, linkAt, 0, count);
    reply.body += "]}";
    return reply;
  }
  // Streamed: the opening, then one piece of links per call, the last one
  // with the closing brackets.
  auto next = std::make_shared<std::size_t>(0);
  auto first = std::make_shared<std::string>(std::move(opening));
  reply.chunks = [first, next, count, linkAt = std::move(linkAt)](std::string& out) {
    if (*next > count) return false;  // complete already
    if (!first->empty()) {
      out += *first;
      first->clear();
    }
    const std::size_t to = std::min(count, *next + kLinksPerPiece);
    AppendLinks(out, linkAt, *next, to);
    *next = to;
    if (to < count) return true;
    out += "]}";
    *next = count + 1;
    return false;
  };
  return reply;
}

}  // namespace zeda::redfish::model
