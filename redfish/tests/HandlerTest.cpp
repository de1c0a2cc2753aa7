// One request at a time through HandleRequest, with a stand-in inventory:
// open and closed resources, methods, logins and logouts, hostile targets.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "Accounts.h"
#include "Handler.h"
#include "TestFiles.h"

namespace zeda::test {
namespace {

using ::testing::HasSubstr;
using Json = nlohmann::json;

constexpr char kAlice[] = "Basic YWxpY2U6cHctYQ==";  // alice:pw-a
constexpr char kBob[] = "Basic Ym9iOnB3LWI=";        // bob:pw-b

std::string Header(const redfish::Reply& reply, const std::string& name) {
  for (const auto& [key, value] : reply.headers) {
    if (key == name) return value;
  }
  return {};
}

std::string MessageId(const redfish::Reply& reply) {
  return Json::parse(reply.body)["error"]["@Message.ExtendedInfo"][0]["MessageId"];
}

class RedfishHandler : public ::testing::Test {
 protected:
  RedfishHandler() {
    redfish::WriteAccounts(folder_.File("accounts"), {{"alice", redfish::HashPassword("pw-a")},
                                                      {"bob", redfish::HashPassword("pw-b")}});
  }

  redfish::Reply Send(const std::string& method, const std::string& target,
                      const std::string& authorization = "", const std::string& body = "",
                      const std::string& token = "") {
    redfish::Request request{method, target, authorization, token, body, "192.0.2.7"};
    return redfish::HandleRequest(request, services_);
  }

  // Logs `user` in; returns {token, session path}.
  std::pair<std::string, std::string> Login(const std::string& user, const std::string& password) {
    const redfish::Reply reply = Send("POST", "/redfish/v1/SessionService/Sessions", "",
                                      Json{{"UserName", user}, {"Password", password}}.dump());
    EXPECT_EQ(reply.status, 201) << reply.body;
    return {Header(reply, "X-Auth-Token"), Header(reply, "Location")};
  }

  ScratchFolder folder_;
  redfish::AccountStore accounts_{folder_.File("accounts")};
  redfish::SessionStore sessions_;
  std::vector<std::string> asked_;  // paths the inventory was asked for
  bool inventoryFails_ = false;
  redfish::Services services_{accounts_, sessions_,
                              [this](std::string_view path) {
                                if (inventoryFails_) throw std::runtime_error("NAS API down");
                                asked_.emplace_back(path);
                                redfish::Reply reply;
                                reply.body = R"({"asked":true})";
                                return reply;
                              },
                              [] { return std::string(R"({"Id":"RootService"})"); }};
};

TEST_F(RedfishHandler, RootsAreOpenTheRestNeedsCredentials) {
  EXPECT_EQ(Send("GET", "/redfish").body, R"({"v1":"/redfish/v1/"})");
  EXPECT_EQ(Send("GET", "/redfish/v1").body, R"({"Id":"RootService"})");
  EXPECT_EQ(Send("GET", "/redfish/v1/").body, R"({"Id":"RootService"})");
  EXPECT_EQ(Send("GET", "/redfish/v1/$metadata").status, 200);
  EXPECT_EQ(Send("GET", "/redfish/v1/odata").status, 200);
  for (const char* path : {"/redfish/v1/Systems", "/redfish/v1/SessionService",
                           "/redfish/v1/AccountService/Accounts", "/redfish/v1/nothing"}) {
    const redfish::Reply reply = Send("GET", path);
    EXPECT_EQ(reply.status, 401) << path;
    EXPECT_EQ(Header(reply, "WWW-Authenticate"), "Basic realm=\"zeda-redfishd\"");
    EXPECT_EQ(MessageId(reply), "Base.1.19.0.NoValidSession");
  }
  EXPECT_EQ(Send("GET", "/redfish/v1/Systems", "Basic YWxpY2U6d3Jvbmc=").status, 401);
  EXPECT_EQ(asked_, (std::vector<std::string>{"/redfish/v1/$metadata", "/redfish/v1/odata"}));
  const redfish::Reply good = Send("GET", "/redfish/v1/Systems/", kAlice);
  EXPECT_EQ(good.status, 200);
  EXPECT_EQ(asked_.back(), "/redfish/v1/Systems");
}

TEST_F(RedfishHandler, WritesAnswer405WithAllow) {
  for (const char* method : {"POST", "PUT", "PATCH", "DELETE", "OPTIONS", "TRACE", "FOO"}) {
    const redfish::Reply reply = Send(method, "/redfish/v1/Systems", kAlice, "{}");
    EXPECT_EQ(reply.status, 405) << method;
    EXPECT_EQ(Header(reply, "Allow"), "GET, HEAD");
    EXPECT_EQ(MessageId(reply), "Base.1.19.0.OperationNotAllowed");
  }
  EXPECT_EQ(Send("POST", "/redfish/v1").status, 405);  // open resources too
  EXPECT_EQ(Header(Send("PUT", "/redfish/v1/SessionService/Sessions", kAlice), "Allow"),
            "GET, HEAD, POST");
  EXPECT_EQ(Send("HEAD", "/redfish/v1/Systems", kAlice).status, 200);
}

TEST_F(RedfishHandler, SessionLoginUseAndLogout) {
  const auto [token, location] = Login("alice", "pw-a");
  EXPECT_EQ(token.size(), 48u);
  EXPECT_THAT(location, HasSubstr("/redfish/v1/SessionService/Sessions/"));
  EXPECT_EQ(Send("GET", "/redfish/v1/Systems", "", "", token).status, 200);
  const Json session = Json::parse(Send("GET", location, "", "", token).body);
  EXPECT_EQ(session["UserName"], "alice");
  EXPECT_EQ(session["@odata.id"], location);
  EXPECT_EQ(session.count("Password"), 0u);
  const Json list = Json::parse(Send("GET", "/redfish/v1/SessionService/Sessions", kBob).body);
  EXPECT_EQ(list["Members@odata.count"], 1);
  // Only its owner ends a session.
  EXPECT_EQ(Send("DELETE", location, kBob).status, 403);
  EXPECT_EQ(Send("DELETE", location, "", "", token).status, 204);
  EXPECT_EQ(Send("GET", "/redfish/v1/Systems", "", "", token).status, 401);
  EXPECT_EQ(Send("DELETE", location, kAlice).status, 404);
}

TEST_F(RedfishHandler, BadLoginsAreRefusedWithTheirReason) {
  const std::string sessions = "/redfish/v1/SessionService/Sessions";
  const redfish::Reply wrong =
      Send("POST", sessions, "", R"({"UserName":"alice","Password":"no"})");
  EXPECT_EQ(wrong.status, 401);
  EXPECT_EQ(MessageId(wrong), "Base.1.19.0.ResourceAtUriUnauthorized");
  EXPECT_EQ(Header(wrong, "WWW-Authenticate"), "Basic realm=\"zeda-redfishd\"");
  EXPECT_EQ(Send("POST", sessions, "", R"({"UserName":"eve","Password":"pw-a"})").status, 401);
  EXPECT_EQ(Send("POST", sessions, "", R"({"UserName":"a:b","Password":"x"})").status, 401);
  const redfish::Reply broken = Send("POST", sessions, "", "{\"UserName\":");
  EXPECT_EQ(broken.status, 400);
  EXPECT_EQ(MessageId(broken), "Base.1.19.0.MalformedJSON");
  const redfish::Reply missing = Send("POST", sessions, "", R"({"UserName":"alice"})");
  EXPECT_EQ(missing.status, 400);
  EXPECT_EQ(MessageId(missing), "Base.1.19.0.PropertyMissing");
  EXPECT_EQ(Json::parse(missing.body)["error"]["@Message.ExtendedInfo"][0]["MessageArgs"][0],
            "Password");
  const redfish::Reply typed = Send("POST", sessions, "", R"({"UserName":1,"Password":"x"})");
  EXPECT_EQ(MessageId(typed), "Base.1.19.0.PropertyValueTypeError");
  EXPECT_EQ(Send("POST", sessions, "", "[]").status, 400);
  EXPECT_EQ(Send("GET", "/redfish/v1/Systems", "", "", "0123456789abcdef").status, 401);
  EXPECT_TRUE(sessions_.List().empty());
}

TEST_F(RedfishHandler, HostileTargetsGetA4xxWithoutReachingTheInventory) {
  EXPECT_EQ(Send("GET", "/redfish/v1/../../etc/passwd", kAlice).status, 404);
  EXPECT_EQ(Send("GET", "/redfish/v1/%2e%2e/%2e%2e/etc/passwd", kAlice).status, 404);
  EXPECT_EQ(Send("GET", "/redfish/v1/Systems/%00", kAlice).status, 404);
  EXPECT_EQ(Send("GET", "/redfish/v1/Systems/%ff%fe", kAlice).status, 404);
  EXPECT_EQ(Send("GET", "/redfish/v1/Systems/\xff", kAlice).status, 404);
  EXPECT_EQ(Send("GET", "/redfish/v1/Systems/%zz", kAlice).status, 400);
  EXPECT_EQ(Send("GET", "http://x/redfish/v1", kAlice).status, 400);
  EXPECT_EQ(Send("GET", "/" + std::string(5000, 'a'), kAlice).status, 414);
  EXPECT_EQ(Send("GET", "/etc/passwd", kAlice).status, 404);
  EXPECT_TRUE(asked_.empty());
  // The error body stays valid JSON whatever the target held.
  const redfish::Reply reply = Send("GET", "/redfish/v1/\xff\"%2F", kAlice);
  EXPECT_EQ(reply.status, 404);
  EXPECT_TRUE(Json::accept(reply.body));
}

TEST_F(RedfishHandler, AccountsAreAReadOnlyView) {
  const Json accounts =
      Json::parse(Send("GET", "/redfish/v1/AccountService/Accounts", kAlice).body);
  EXPECT_EQ(accounts["Members@odata.count"], 2);
  EXPECT_EQ(accounts["Members"][1]["@odata.id"], "/redfish/v1/AccountService/Accounts/bob");
  const Json bob = Json::parse(Send("GET", "/redfish/v1/AccountService/Accounts/bob", kAlice).body);
  EXPECT_EQ(bob["UserName"], "bob");
  EXPECT_TRUE(bob["Password"].is_null());
  EXPECT_EQ(Send("GET", "/redfish/v1/AccountService/Accounts/eve", kAlice).status, 404);
  EXPECT_EQ(Send("PATCH", "/redfish/v1/AccountService/Accounts/bob", kAlice).status, 405);
  EXPECT_EQ(
      Json::parse(Send("GET", "/redfish/v1/AccountService", kAlice).body)["Accounts"]["@odata.id"],
      "/redfish/v1/AccountService/Accounts");
}

TEST_F(RedfishHandler, AFailingInventoryAnswers500) {
  inventoryFails_ = true;
  const redfish::Reply reply = Send("GET", "/redfish/v1/Systems", kAlice);
  EXPECT_EQ(reply.status, 500);
  EXPECT_EQ(MessageId(reply), "Base.1.19.0.InternalError");
}

TEST(RedfishErrors, BodiesCarryOneBaseMessage) {
  const redfish::Reply reply = redfish::ErrorReply(404, "ResourceNotFound", {"Drive", "x"});
  EXPECT_EQ(reply.status, 404);
  const Json body = Json::parse(reply.body);
  EXPECT_EQ(body["error"]["code"], "Base.1.19.0.ResourceNotFound");
  EXPECT_EQ(body["error"]["message"],
            "The requested resource of type Drive named 'x' was not found.");
  const Json& info = body["error"]["@Message.ExtendedInfo"][0];
  EXPECT_EQ(info["MessageArgs"], Json::array({"Drive", "x"}));
  EXPECT_EQ(info["MessageSeverity"], "Critical");
  EXPECT_EQ(info["@odata.type"], "#Message.v1_1_2.Message");
  // An id the registry table does not have becomes GeneralError.
  EXPECT_EQ(Json::parse(redfish::ErrorReply(500, "NoSuchId", {}).body)["error"]["code"],
            "Base.1.19.0.GeneralError");
  EXPECT_EQ(Json::parse(redfish::ErrorReply(429, "ServiceTemporarilyUnavailable", {"3"})
                            .body)["error"]["message"],
            "The service is temporarily unavailable.  Retry in 3 seconds.");
}

}  // namespace
}  // namespace zeda::test
