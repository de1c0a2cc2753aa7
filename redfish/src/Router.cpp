#include "Router.h"

namespace zeda::redfish {

namespace {

// `path` is `prefix` + "/" + one segment: that segment, else empty.
std::string_view MemberOf(std::string_view path, std::string_view prefix) {
  if (path.size() <= prefix.size() + 1 || path.substr(0, prefix.size()) != prefix ||
      path[prefix.size()] != '/') {
    return {};
  }
  const std::string_view rest = path.substr(prefix.size() + 1);
  return rest.find('/') == std::string_view::npos ? rest : std::string_view();
}

}  // namespace

RouteMatch MatchRoute(std::string_view path) {
  if (path == "/redfish") return {Route::kVersions, {}};
  if (path == "/redfish/v1") return {Route::kServiceRoot, {}};
  if (path == "/redfish/v1/$metadata" || path == "/redfish/v1/odata") {
    return {Route::kOpenDocument, {}};
  }
  if (path == "/redfish/v1/SessionService") return {Route::kSessionService, {}};
  if (path == kSessionsPath) return {Route::kSessions, {}};
  if (path == "/redfish/v1/AccountService") return {Route::kAccountService, {}};
  if (path == kAccountsPath) return {Route::kAccounts, {}};
  if (const auto id = MemberOf(path, kSessionsPath); !id.empty()) {
    return {Route::kSession, std::string(id)};
  }
  if (const auto name = MemberOf(path, kAccountsPath); !name.empty()) {
    return {Route::kAccount, std::string(name)};
  }
  constexpr std::string_view kV1 = "/redfish/v1/";
  if (path.substr(0, kV1.size()) == kV1) return {Route::kInventory, {}};
  return {Route::kOutside, {}};
}

bool IsOpen(Route route) {
  return route == Route::kVersions || route == Route::kServiceRoot ||
         route == Route::kOpenDocument || route == Route::kOutside;
}

const char* AllowedMethods(Route route) {
  switch (route) {
    case Route::kSessions:
      return "GET, HEAD, POST";
    case Route::kSession:
      return "GET, HEAD, DELETE";
    default:
      return "GET, HEAD";
  }
}

}  // namespace zeda::redfish
