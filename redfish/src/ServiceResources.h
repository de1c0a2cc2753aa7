// The service's own resources: SessionService with its sessions and
// AccountService with a read-only view of the accounts. Their versions are
// those $metadata declares (model/Schemas.h: DMTF bundle 2023.3).
#pragma once

#include <string>
#include <vector>

#include "Sessions.h"

namespace zeda::redfish {

inline constexpr char kSessionType[] = "#Session.v1_7_0.Session";
inline constexpr char kSessionServiceType[] = "#SessionService.v1_1_9.SessionService";
inline constexpr char kAccountServiceType[] = "#AccountService.v1_15_0.AccountService";
inline constexpr char kManagerAccountType[] = "#ManagerAccount.v1_12_0.ManagerAccount";

// {"v1": "/redfish/v1/"}
std::string VersionsBody();
std::string SessionServiceBody();
std::string SessionsBody(const std::vector<SessionInfo>& sessions);
std::string SessionBody(const SessionInfo& session);
std::string AccountServiceBody();
std::string AccountsBody(const std::vector<std::string>& names);
std::string AccountBody(const std::string& name);

}  // namespace zeda::redfish
