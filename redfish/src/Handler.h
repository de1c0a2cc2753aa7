// One request in, one reply out: target checks, routing, authentication,
// methods, login and logout, and the service's own resources. The inventory's
// resources are answered by the functions in Services (GetResource and
// ServiceRootBody of Resources.h in the daemon). No network here: the server
// (Server.h) reads requests and writes replies.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "AccountStore.h"
#include "Reply.h"
#include "Sessions.h"

namespace zeda::redfish {

struct Request {
  std::string method;  // "GET", "HEAD", "POST", ...
  std::string target;  // as sent
  std::string authorization;
  std::string authToken;  // X-Auth-Token
  std::string body;
  std::string clientAddress;
};

struct Services {
  AccountStore& accounts;
  SessionStore& sessions;
  std::function<Reply(std::string_view path)> inventory;
  std::function<std::string()> serviceRoot;
};

// The reply to `request`. HEAD is answered as GET; the server leaves the body
// out. Never throws: a failure of a handler becomes a 500 with a log line.
Reply HandleRequest(const Request& request, Services& services);

// `text` with every byte outside printable ASCII written as \xHH, for log
// lines that quote what a client sent.
std::string Printable(std::string_view text);

}  // namespace zeda::redfish
