// libFuzzer harness of the Redfish service's request handling without the
// network: target parsing, routing, Basic credentials and HandleRequest with
// a stand-in inventory. The input is split at '\n' into method, target,
// Authorization, X-Auth-Token and body ("T" as token stands for a valid one).
// Whatever comes in, the answer is a 2xx-5xx with a JSON body, a 401 names
// the realm, a 405 says what is allowed, and an accepted target is a clean
// path (no "..", no empty segment, no NUL, valid UTF-8).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <glog/logging.h>
#include <nlohmann/json.hpp>

#include "Auth.h"
#include "Handler.h"
#include "Router.h"
#include "Target.h"

namespace {

using namespace zeda::redfish;

void Require(bool condition) {
  if (!condition) std::abort();
}

bool HasHeader(const Reply& reply, const std::string& name) {
  for (const auto& header : reply.headers) {
    if (header.first == name && !header.second.empty()) return true;
  }
  return false;
}

void CheckTarget(std::string_view text) {
  RequestTarget target;
  if (ParseTarget(text, target) != TargetProblem::kNone) return;
  const std::string& path = target.path;
  Require(!path.empty() && path[0] == '/');
  Require(path.find("//") == std::string::npos && path.find('\0') == std::string::npos);
  Require(IsValidUtf8(path));
  const std::string framed = path + "/";
  Require(framed.find("/../") == std::string::npos && framed.find("/./") == std::string::npos);
  const RouteMatch match = MatchRoute(path);
  if (match.route == Route::kSession || match.route == Route::kAccount) {
    Require(!match.id.empty() && match.id.find('/') == std::string::npos);
  }
}

struct World {
  World() {
    FLAGS_minloglevel = google::GLOG_FATAL;  // the handler's log lines are not under test
    token = sessions.Create("fuzz", "198.51.100.1")->token;
  }
  AccountStore accounts{"/nonexistent/redfish-fuzz-accounts"};
  SessionStore sessions;
  std::string token;
  Services services{accounts, sessions,
                    [](std::string_view path) {
                      if (path.size() % 3 == 0) throw std::runtime_error("inventory failure");
                      if (path.size() % 3 == 1) {
                        return ErrorReply(404, "ResourceNotFound", {"Thing", std::string(path)});
                      }
                      Reply reply;
                      reply.body = "{}";
                      return reply;
                    },
                    [] { return std::string("{}"); }};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static World world;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  std::vector<std::string> parts;
  std::size_t start = 0;
  while (parts.size() < 4) {
    const std::size_t end = input.find('\n', start);
    if (end == std::string_view::npos) break;
    parts.emplace_back(input.substr(start, end - start));
    start = end + 1;
  }
  const std::string rest(input.substr(std::min(start, input.size())));
  parts.resize(4);
  Request request;
  request.method = parts[0].empty() ? "GET" : parts[0];
  request.target = parts[1].empty() ? rest : parts[1];
  // Good-looking Basic credentials would cost a yescrypt check per input; the
  // parser gets them directly, the handler only what it refuses unparsed.
  const bool parsed = ParseBasic(parts[2]).has_value();
  request.authorization = parsed ? std::string() : parts[2];
  request.authToken = parts[3] == "T" ? world.token : parts[3];
  request.body = parts[1].empty() ? std::string() : rest;
  request.clientAddress = "198.51.100.1";

  CheckTarget(request.target);
  const Reply reply = HandleRequest(request, world.services);
  Require(reply.status >= 200 && reply.status <= 599);
  Require(reply.status == 204 || nlohmann::json::accept(reply.body));
  if (reply.status == 401) Require(HasHeader(reply, "WWW-Authenticate"));
  if (reply.status == 405) Require(HasHeader(reply, "Allow"));
  return 0;
}
