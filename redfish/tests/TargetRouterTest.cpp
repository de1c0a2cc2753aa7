// Request targets and routes: what the handlers can be asked for.
#include <gtest/gtest.h>

#include "Router.h"
#include "Target.h"

namespace zeda::test {
namespace {

using redfish::ParseTarget;
using redfish::RequestTarget;
using redfish::Route;
using redfish::TargetProblem;

TargetProblem Problem(const std::string& target) {
  RequestTarget parsed;
  return ParseTarget(target, parsed);
}

std::string PathOf(const std::string& target) {
  RequestTarget parsed;
  EXPECT_EQ(ParseTarget(target, parsed), TargetProblem::kNone) << target;
  return parsed.path;
}

TEST(RedfishTarget, SplitsTheQueryAndDropsOneTrailingSlash) {
  RequestTarget parsed;
  ASSERT_EQ(ParseTarget("/redfish/v1/Systems/?$expand=.", parsed), TargetProblem::kNone);
  EXPECT_EQ(parsed.path, "/redfish/v1/Systems");
  EXPECT_EQ(parsed.query, "$expand=.");
  EXPECT_EQ(PathOf("/redfish/v1/"), "/redfish/v1");
  EXPECT_EQ(PathOf("/"), "/");
  EXPECT_EQ(PathOf("/redfish/v1/%24metadata"), "/redfish/v1/$metadata");
  EXPECT_EQ(PathOf("/redfish/v1/Systems/caf%C3%A9"), "/redfish/v1/Systems/caf\xc3\xa9");
}

TEST(RedfishTarget, RefusesTraversalAndHiddenCharacters) {
  for (const char* target :
       {"/redfish/v1/../../etc/passwd", "/redfish/v1/%2e%2e/%2e%2e/etc/passwd", "/redfish/v1/./x",
        "/redfish/v1/Systems/a%2Fb", "/redfish/v1/Systems/a%5Cb", "/redfish/v1/Systems/a%00b",
        "/redfish/v1/Systems/%0d%0aSet-Cookie:x", "/redfish//v1", "/redfish/v1//",
        "/redfish/v1/Systems/%ff", "/redfish/v1/Systems/%C0%AF", "/redfish/v1/%ED%A0%80",
        "/redfish/v1/%F4%90%80%80", "/redfish/v1/%E2%82"}) {
    EXPECT_EQ(Problem(target), TargetProblem::kNoSuchPath) << target;
  }
}

TEST(RedfishTarget, RefusesWhatIsNoOriginFormTarget) {
  for (const char* target : {"", "redfish/v1", "*", "http://host/redfish/v1", "/redfish/v1/%",
                             "/redfish/v1/%4", "/redfish/v1/%zz", "/a b", "/a#b", "/a\tb"}) {
    EXPECT_EQ(Problem(target), TargetProblem::kMalformed) << target;
  }
  EXPECT_EQ(Problem("/" + std::string(redfish::kMaxTargetLength, 'a')), TargetProblem::kTooLong);
  EXPECT_EQ(Problem("/" + std::string(redfish::kMaxTargetLength - 1, 'a')), TargetProblem::kNone);
}

TEST(RedfishTarget, Utf8Checks) {
  EXPECT_TRUE(redfish::IsValidUtf8("plain \xc3\xa9 \xe2\x82\xac \xf0\x9f\x98\x80"));
  EXPECT_FALSE(redfish::IsValidUtf8("\x80"));
  EXPECT_FALSE(redfish::IsValidUtf8("\xc1\xbf"));      // overlong
  EXPECT_FALSE(redfish::IsValidUtf8("\xe0\x80\xaf"));  // overlong
  EXPECT_FALSE(redfish::IsValidUtf8("\xf8\x88\x80\x80\x80"));
}

TEST(RedfishRouter, MatchesTheServiceResources) {
  using redfish::MatchRoute;
  EXPECT_EQ(MatchRoute("/redfish").route, Route::kVersions);
  EXPECT_EQ(MatchRoute("/redfish/v1").route, Route::kServiceRoot);
  EXPECT_EQ(MatchRoute("/redfish/v1/$metadata").route, Route::kOpenDocument);
  EXPECT_EQ(MatchRoute("/redfish/v1/odata").route, Route::kOpenDocument);
  EXPECT_EQ(MatchRoute("/redfish/v1/SessionService").route, Route::kSessionService);
  EXPECT_EQ(MatchRoute("/redfish/v1/SessionService/Sessions").route, Route::kSessions);
  const auto session = MatchRoute("/redfish/v1/SessionService/Sessions/abc");
  EXPECT_EQ(session.route, Route::kSession);
  EXPECT_EQ(session.id, "abc");
  EXPECT_EQ(MatchRoute("/redfish/v1/SessionService/Sessions/abc/x").route, Route::kInventory);
  EXPECT_EQ(MatchRoute("/redfish/v1/AccountService").route, Route::kAccountService);
  EXPECT_EQ(MatchRoute("/redfish/v1/AccountService/Accounts").route, Route::kAccounts);
  EXPECT_EQ(MatchRoute("/redfish/v1/AccountService/Accounts/admin").id, "admin");
  EXPECT_EQ(MatchRoute("/redfish/v1/Systems").route, Route::kInventory);
  EXPECT_EQ(MatchRoute("/redfish/v2").route, Route::kOutside);
  EXPECT_EQ(MatchRoute("/etc/passwd").route, Route::kOutside);
}

TEST(RedfishRouter, OnlyTheRootsAndODataDocumentsAreOpen) {
  EXPECT_TRUE(redfish::IsOpen(Route::kVersions));
  EXPECT_TRUE(redfish::IsOpen(Route::kServiceRoot));
  EXPECT_TRUE(redfish::IsOpen(Route::kOpenDocument));
  for (const Route route :
       {Route::kSessionService, Route::kSessions, Route::kSession, Route::kAccountService,
        Route::kAccounts, Route::kAccount, Route::kInventory}) {
    EXPECT_FALSE(redfish::IsOpen(route));
  }
  EXPECT_STREQ(redfish::AllowedMethods(Route::kInventory), "GET, HEAD");
  EXPECT_STREQ(redfish::AllowedMethods(Route::kSessions), "GET, HEAD, POST");
  EXPECT_STREQ(redfish::AllowedMethods(Route::kSession), "GET, HEAD, DELETE");
}

}  // namespace
}  // namespace zeda::test
