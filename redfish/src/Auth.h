// Who sends a request: HTTP Basic credentials checked against the accounts,
// or an X-Auth-Token naming an open session.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "AccountStore.h"
#include "Sessions.h"

namespace zeda::redfish {

inline constexpr char kRealm[] = "zeda-redfishd";
inline constexpr std::size_t kMaxCredentialLength = 1024;

struct Credentials {
  std::string user;
  std::string password;
};

// The user and password of an "Authorization: Basic ..." value; none when it
// is not one or is longer than kMaxCredentialLength.
std::optional<Credentials> ParseBasic(std::string_view authorization);

struct AuthResult {
  enum Outcome { kNoCredentials, kRefused, kAccepted };
  Outcome outcome = kNoCredentials;
  std::string user;       // accepted: the account; refused: the claimed name, if any
  std::string sessionId;  // accepted through a session
  const char* how = "";   // "Basic", "session token"
};

// A token takes precedence over Basic credentials when both are sent.
AuthResult Authenticate(std::string_view authorization, std::string_view token,
                        AccountStore& accounts, SessionStore& sessions);

}  // namespace zeda::redfish
