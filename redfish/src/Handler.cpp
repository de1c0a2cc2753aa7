#include "Handler.h"

#include <glog/logging.h>
#include <nlohmann/json.hpp>

#include "Auth.h"
#include "Router.h"
#include "ServiceResources.h"
#include "Target.h"

namespace zeda::redfish {

namespace {

Reply Json(std::string body, int status = 200) {
  Reply reply;
  reply.status = status;
  reply.body = std::move(body);
  return reply;
}

// A 401 names the scheme and realm the client may use (RFC 9110).
Reply Unauthorized(Reply reply) {
  reply.headers.emplace_back("WWW-Authenticate", std::string("Basic realm=\"") + kRealm + "\"");
  return reply;
}

Reply NotAllowed(Route route) {
  Reply reply = ErrorReply(405, "OperationNotAllowed", {});
  reply.headers.emplace_back("Allow", AllowedMethods(route));
  return reply;
}

bool IsRead(const std::string& method) { return method == "GET" || method == "HEAD"; }

// POST to the sessions collection: {"UserName": ..., "Password": ...}.
Reply Login(const Request& request, Services& services) {
  const nlohmann::json body = nlohmann::json::parse(request.body, nullptr, false);
  if (body.is_discarded() || !body.is_object()) return ErrorReply(400, "MalformedJSON", {});
  for (const char* member : {"UserName", "Password"}) {
    if (!body.contains(member)) return ErrorReply(400, "PropertyMissing", {member});
    if (!body.at(member).is_string()) {
      return ErrorReply(
          400, "PropertyValueTypeError",
          {body.at(member).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace), member});
    }
  }
  const std::string user = body.at("UserName").get<std::string>();
  std::string password = body.at("Password").get<std::string>();
  const bool good = IsValidAccountName(user) && password.size() <= kMaxCredentialLength &&
                    services.accounts.Verify(user, password);
  std::fill(password.begin(), password.end(), '\0');
  if (!good) {
    LOG(WARNING) << "Failed login of user \"" << Printable(user) << "\" from "
                 << request.clientAddress << " (session login)";
    return Unauthorized(
        ErrorReply(401, "ResourceAtUriUnauthorized", {kSessionsPath, "Unauthorized"}));
  }
  const auto created = services.sessions.Create(user, request.clientAddress);
  if (!created) {
    LOG(WARNING) << "Session of user \"" << user << "\" from " << request.clientAddress
                 << " refused: " << kMaxSessions << " sessions are open";
    return ErrorReply(503, "SessionLimitExceeded", {});
  }
  Reply reply = Json(SessionBody(created->session), 201);
  reply.headers.emplace_back("X-Auth-Token", created->token);
  reply.headers.emplace_back("Location", std::string(kSessionsPath) + "/" + created->session.id);
  return reply;
}

Reply Logout(const std::string& id, const std::string& user, Services& services) {
  const auto session = services.sessions.FindById(id);
  if (!session) return ErrorReply(404, "ResourceNotFound", {"Session", id});
  if (session->user != user) return ErrorReply(403, "InsufficientPrivilege", {});
  services.sessions.Remove(id);
  Reply reply;
  reply.status = 204;
  return reply;
}

Reply Read(const RouteMatch& match, const std::string& path, Services& services) {
  switch (match.route) {
    case Route::kVersions:
      return Json(VersionsBody());
    case Route::kServiceRoot:
      return Json(services.serviceRoot());
    case Route::kSessionService:
      return Json(SessionServiceBody());
    case Route::kSessions:
      return Json(SessionsBody(services.sessions.List()));
    case Route::kSession: {
      const auto session = services.sessions.FindById(match.id);
      if (!session) return ErrorReply(404, "ResourceNotFound", {"Session", match.id});
      return Json(SessionBody(*session));
    }
    case Route::kAccountService:
      return Json(AccountServiceBody());
    case Route::kAccounts:
      return Json(AccountsBody(services.accounts.Names()));
    case Route::kAccount: {
      for (const std::string& name : services.accounts.Names()) {
        if (name == match.id) return Json(AccountBody(name));
      }
      return ErrorReply(404, "ResourceNotFound", {"ManagerAccount", match.id});
    }
    case Route::kOpenDocument:
    case Route::kInventory:
      return services.inventory(path);
    case Route::kOutside:
      break;
  }
  return ErrorReply(404, "ResourceNotFound", {"Resource", path});
}

Reply Handle(const Request& request, Services& services) {
  RequestTarget target;
  switch (ParseTarget(request.target, target)) {
    case TargetProblem::kMalformed:
      return ErrorReply(400, "GeneralError", {});
    case TargetProblem::kTooLong:
      return ErrorReply(414, "GeneralError", {});
    case TargetProblem::kNoSuchPath:
      return ErrorReply(404, "ResourceNotFound", {"Resource", request.target});
    case TargetProblem::kNone:
      break;
  }
  const RouteMatch match = MatchRoute(target.path);
  if (match.route == Route::kSessions && request.method == "POST") {
    return Login(request, services);
  }
  std::string user;
  if (!IsOpen(match.route)) {
    const AuthResult auth = Authenticate(request.authorization, request.authToken,
                                         services.accounts, services.sessions);
    if (auth.outcome == AuthResult::kRefused && auth.sessionId.empty() && !auth.user.empty()) {
      LOG(WARNING) << "Failed login of user \"" << Printable(auth.user) << "\" from "
                   << request.clientAddress << " (" << auth.how << ")";
    } else if (auth.outcome == AuthResult::kRefused) {
      LOG(WARNING) << "Refused " << auth.how << " from " << request.clientAddress
                   << ": unknown, expired or malformed";
    }
    if (auth.outcome != AuthResult::kAccepted)
      return Unauthorized(ErrorReply(401, "NoValidSession", {}));
    user = auth.user;
  }
  if (IsRead(request.method)) return Read(match, target.path, services);
  if (match.route == Route::kSession && request.method == "DELETE") {
    return Logout(match.id, user, services);
  }
  return NotAllowed(match.route);
}

}  // namespace

std::string Printable(std::string_view text) {
  static constexpr char kHex[] = "0123456789abcdef";
  std::string out;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte < 0x7f && byte != '\\' && byte != '"') {
      out += c;
    } else {
      out += "\\x";
      out += kHex[byte >> 4];
      out += kHex[byte & 0xf];
    }
  }
  return out;
}

Reply HandleRequest(const Request& request, Services& services) {
  try {
    return Handle(request, services);
  } catch (const std::exception& error) {
    LOG(ERROR) << request.method << " " << Printable(request.target) << " from "
               << request.clientAddress << " failed: " << error.what();
  } catch (...) {
    LOG(ERROR) << request.method << " " << Printable(request.target) << " from "
               << request.clientAddress << " failed: unknown exception";
  }
  return ErrorReply(500, "InternalError", {});
}

}  // namespace zeda::redfish
