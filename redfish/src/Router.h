// Which part of the service answers a (decoded) path, whether it is open
// without credentials, and which methods it allows.
#pragma once

#include <string>
#include <string_view>

namespace zeda::redfish {

enum class Route {
  kVersions,        // /redfish
  kServiceRoot,     // /redfish/v1
  kOpenDocument,    // /redfish/v1/$metadata, /redfish/v1/odata (inventory handler, no credentials)
  kSessionService,  // /redfish/v1/SessionService
  kSessions,        // /redfish/v1/SessionService/Sessions
  kSession,         // /redfish/v1/SessionService/Sessions/{id}
  kAccountService,  // /redfish/v1/AccountService
  kAccounts,        // /redfish/v1/AccountService/Accounts
  kAccount,         // /redfish/v1/AccountService/Accounts/{name}
  kInventory,       // anything else below /redfish/v1/ (inventory handler)
  kOutside,         // not below /redfish: nothing here
};

struct RouteMatch {
  Route route = Route::kOutside;
  std::string id;  // the {id} or {name} of kSession, kAccount
};

inline constexpr char kSessionsPath[] = "/redfish/v1/SessionService/Sessions";
inline constexpr char kAccountsPath[] = "/redfish/v1/AccountService/Accounts";

RouteMatch MatchRoute(std::string_view path);

// Readable without credentials: the service root, /redfish and the OData
// documents, as the Redfish standard requires.
bool IsOpen(Route route);

// The methods a route allows, for the Allow header of a 405.
const char* AllowedMethods(Route route);

}  // namespace zeda::redfish
