#include "ServiceResources.h"

#include <nlohmann/json.hpp>

#include "Router.h"

namespace zeda::redfish {

namespace {

using Json = nlohmann::ordered_json;

Json Link(const std::string& path) { return Json{{"@odata.id", path}}; }

std::string Text(const Json& body) {
  return body.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json Collection(const char* path, const char* type, const char* name,
                const std::vector<std::string>& ids) {
  Json members = Json::array();
  for (const std::string& id : ids) members.push_back(Link(std::string(path) + "/" + id));
  return Json{{"@odata.id", path},
              {"@odata.type", type},
              {"Name", name},
              {"Members@odata.count", ids.size()},
              {"Members", members}};
}

}  // namespace

std::string VersionsBody() { return Text(Json{{"v1", "/redfish/v1/"}}); }

std::string SessionServiceBody() {
  return Text(Json{{"@odata.id", "/redfish/v1/SessionService"},
                   {"@odata.type", kSessionServiceType},
                   {"Id", "SessionService"},
                   {"Name", "Session Service"},
                   {"Description", "Sessions of the read-only disk inventory service"},
                   {"ServiceEnabled", true},
                   {"SessionTimeout", kSessionIdleTimeout.count()},
                   {"Status", {{"State", "Enabled"}, {"Health", "OK"}}},
                   {"Sessions", Link(kSessionsPath)}});
}

std::string SessionsBody(const std::vector<SessionInfo>& sessions) {
  std::vector<std::string> ids;
  for (const SessionInfo& session : sessions) ids.push_back(session.id);
  return Text(
      Collection(kSessionsPath, "#SessionCollection.SessionCollection", "Session Collection", ids));
}

std::string SessionBody(const SessionInfo& session) {
  return Text(Json{{"@odata.id", std::string(kSessionsPath) + "/" + session.id},
                   {"@odata.type", kSessionType},
                   {"Id", session.id},
                   {"Name", "User Session"},
                   {"UserName", session.user},
                   {"SessionType", "Redfish"},
                   {"ClientOriginIPAddress", session.clientAddress}});
}

std::string AccountServiceBody() {
  return Text(Json{{"@odata.id", "/redfish/v1/AccountService"},
                   {"@odata.type", kAccountServiceType},
                   {"Id", "AccountService"},
                   {"Name", "Account Service"},
                   {"Description", "Accounts of the service, kept with zeda-redfish-user"},
                   {"ServiceEnabled", true},
                   {"LocalAccountAuth", "Enabled"},
                   {"Status", {{"State", "Enabled"}, {"Health", "OK"}}},
                   {"Accounts", Link(kAccountsPath)}});
}

std::string AccountsBody(const std::vector<std::string>& names) {
  return Text(Collection(kAccountsPath, "#ManagerAccountCollection.ManagerAccountCollection",
                         "Accounts Collection", names));
}

std::string AccountBody(const std::string& name) {
  return Text(Json{{"@odata.id", std::string(kAccountsPath) + "/" + name},
                   {"@odata.type", kManagerAccountType},
                   {"Id", name},
                   {"Name", "User Account"},
                   {"UserName", name},
                   {"RoleId", "ReadOnly"},
                   {"Enabled", true},
                   {"Locked", false},
                   {"AccountTypes", Json::array({"Redfish"})},
                   {"Password", nullptr}});
}

}  // namespace zeda::redfish
