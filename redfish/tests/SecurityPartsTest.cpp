// Accounts, password hashes, sessions, Basic credentials and the rate limit.
#include <sys/stat.h>

#include <set>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AccountStore.h"
#include "Accounts.h"
#include "Auth.h"
#include "RateLimiter.h"
#include "Sessions.h"
#include "TestFiles.h"

namespace zeda::test {
namespace {

using ::testing::StartsWith;

TEST(RedfishAccounts, NamesAreShortAndPlain) {
  EXPECT_TRUE(redfish::IsValidAccountName("admin"));
  EXPECT_TRUE(redfish::IsValidAccountName("a.b_c-D9"));
  EXPECT_TRUE(redfish::IsValidAccountName(std::string(64, 'x')));
  EXPECT_FALSE(redfish::IsValidAccountName(std::string(65, 'x')));
  for (const char* bad : {"", "a b", "a:b", "a/b", "\xc3\xa9", "a\n"}) {
    EXPECT_FALSE(redfish::IsValidAccountName(bad)) << bad;
  }
}

TEST(RedfishAccounts, HashesAreSaltedYescrypt) {
  const std::string first = redfish::HashPassword("s3cret");
  const std::string second = redfish::HashPassword("s3cret");
  EXPECT_THAT(first, StartsWith("$y$"));
  EXPECT_NE(first, second);  // a new salt each time
  EXPECT_TRUE(redfish::PasswordMatches("s3cret", first));
  EXPECT_TRUE(redfish::PasswordMatches("s3cret", second));
  EXPECT_FALSE(redfish::PasswordMatches("s3cret ", first));
  EXPECT_FALSE(redfish::PasswordMatches("", first));
  EXPECT_FALSE(redfish::PasswordMatches("s3cret", ""));
  EXPECT_FALSE(redfish::PasswordMatches("s3cret", "*0"));
}

TEST(RedfishAccounts, FileIsWrittenWholeWithMode0600) {
  const ScratchFolder folder;
  const std::string path = folder.File("accounts");
  EXPECT_TRUE(redfish::ReadAccounts(path).empty());  // no file: no accounts
  redfish::WriteAccounts(path, {{"alice", "$y$j9T$a$b"}, {"bob", "$y$j9T$c$d"}});
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  const auto accounts = redfish::ReadAccounts(path);
  ASSERT_EQ(accounts.size(), 2u);
  EXPECT_EQ(accounts[1].name, "bob");
  EXPECT_EQ(accounts[1].hash, "$y$j9T$c$d");
  EXPECT_THROW(redfish::WriteAccounts(folder.File("no/such/folder"), {}), std::runtime_error);
}

TEST(RedfishAccounts, BadLinesAreNamed) {
  const ScratchFolder folder;
  const std::string path = folder.Write("accounts", "alice:$y$x\nnocolon\n");
  try {
    redfish::ReadAccounts(path);
    FAIL() << "no refusal";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string(error.what()),
              "Bad accounts file " + path + ": line 2: expected NAME:HASH");
  }
  folder.Write("accounts", "alice:plain\n");
  EXPECT_THROW(redfish::ReadAccounts(path), std::runtime_error);
  folder.Write("accounts", "a b:$y$x\n");
  EXPECT_THROW(redfish::ReadAccounts(path), std::runtime_error);
}

TEST(RedfishAccounts, StoreVerifiesAndFollowsTheFile) {
  const ScratchFolder folder;
  const std::string path = folder.File("accounts");
  redfish::WriteAccounts(path, {{"alice", redfish::HashPassword("pw-a")}});
  redfish::AccountStore store(path);
  EXPECT_TRUE(store.Verify("alice", "pw-a"));
  EXPECT_TRUE(store.Verify("alice", "pw-a"));  // remembered
  EXPECT_FALSE(store.Verify("alice", "pw-b"));
  EXPECT_FALSE(store.Verify("bob", "pw-a"));
  EXPECT_EQ(store.Names(), std::vector<std::string>{"alice"});
  // A changed file is read again; a remembered login of a removed account ends.
  redfish::WriteAccounts(path, {{"bob", redfish::HashPassword("pw-b")}});
  EXPECT_FALSE(store.Verify("alice", "pw-a"));
  EXPECT_TRUE(store.Verify("bob", "pw-b"));
  // A broken file keeps the last good accounts.
  folder.Write("accounts", "garbage\n");
  EXPECT_TRUE(store.Verify("bob", "pw-b"));
  // Another file named (a reload of the configuration) is read from then on.
  redfish::WriteAccounts(folder.File("other"), {{"carol", redfish::HashPassword("pw-c")}});
  store.UsePath(folder.File("other"));
  EXPECT_FALSE(store.Verify("bob", "pw-b"));
  EXPECT_TRUE(store.Verify("carol", "pw-c"));
  EXPECT_EQ(store.Names(), std::vector<std::string>{"carol"});
}

TEST(RedfishSessions, TokensAreLongRandomAndFindTheirSession) {
  redfish::SessionStore store;
  const auto first = store.Create("alice", "127.0.0.1");
  const auto second = store.Create("alice", "127.0.0.1");
  ASSERT_TRUE(first && second);
  EXPECT_EQ(first->token.size(), 48u);  // 192 bits
  EXPECT_NE(first->token, second->token);
  EXPECT_NE(first->session.id, second->session.id);
  EXPECT_EQ(store.Find(first->token)->id, first->session.id);
  EXPECT_FALSE(store.Find(first->session.id));  // the id is no token
  EXPECT_FALSE(store.Find(""));
  EXPECT_FALSE(store.Find(first->token.substr(1)));
  EXPECT_EQ(store.List().size(), 2u);
  EXPECT_TRUE(store.Remove(first->session.id));
  EXPECT_FALSE(store.Remove(first->session.id));
  EXPECT_FALSE(store.Find(first->token));
  EXPECT_TRUE(store.Find(second->token));
}

TEST(RedfishSessions, IdleSessionsExpireAndTheirNumberIsLimited) {
  redfish::SessionStore store(std::chrono::seconds(60), 2);
  const auto kept = store.Create("a", "x");
  const auto idle = store.Create("b", "x");
  EXPECT_FALSE(store.Create("c", "x"));  // full
  store.Advance(std::chrono::seconds(40));
  EXPECT_TRUE(store.Find(kept->token));  // used: its idle time starts again
  store.Advance(std::chrono::seconds(40));
  EXPECT_TRUE(store.Find(kept->token));
  EXPECT_FALSE(store.Find(idle->token));  // 80 s idle
  EXPECT_TRUE(store.Create("c", "x"));    // its place is free again
}

TEST(RedfishAuth, ParsesBasicCredentials) {
  const auto credentials = redfish::ParseBasic("Basic YWxpY2U6cHc6d2l0aDpjb2xvbnM=");
  ASSERT_TRUE(credentials);
  EXPECT_EQ(credentials->user, "alice");
  EXPECT_EQ(credentials->password, "pw:with:colons");
  EXPECT_EQ(redfish::ParseBasic("basic  YTpi ")->password, "b");
  for (const char* bad : {"", "Basic", "Basic ", "Bearer YTpi", "Basic YTpi=", "Basic ####",
                          "Basic YWJj" /* no colon */, "BasicYTpi"}) {
    EXPECT_FALSE(redfish::ParseBasic(bad)) << bad;
  }
  EXPECT_FALSE(redfish::ParseBasic("Basic " + std::string(2000, 'A')));
}

TEST(RedfishAuth, TokenFirstThenBasic) {
  const ScratchFolder folder;
  redfish::WriteAccounts(folder.File("accounts"), {{"alice", redfish::HashPassword("pw")}});
  redfish::AccountStore accounts(folder.File("accounts"));
  redfish::SessionStore sessions;
  const auto created = sessions.Create("alice", "::1");
  using Result = redfish::AuthResult;
  EXPECT_EQ(redfish::Authenticate("", "", accounts, sessions).outcome, Result::kNoCredentials);
  const Result byToken = redfish::Authenticate("", created->token, accounts, sessions);
  EXPECT_EQ(byToken.outcome, Result::kAccepted);
  EXPECT_EQ(byToken.sessionId, created->session.id);
  EXPECT_EQ(redfish::Authenticate("Basic YWxpY2U6cHc=", "", accounts, sessions).outcome,
            Result::kAccepted);
  const Result wrong = redfish::Authenticate("Basic YWxpY2U6cHd4", "", accounts, sessions);
  EXPECT_EQ(wrong.outcome, Result::kRefused);
  EXPECT_EQ(wrong.user, "alice");
  // A bad token is refused even with good Basic credentials beside it.
  EXPECT_EQ(redfish::Authenticate("Basic YWxpY2U6cHc=", "nope", accounts, sessions).outcome,
            Result::kRefused);
}

TEST(RedfishRateLimiter, RefusesPastTheBurstAndRefills) {
  redfish::RateLimiter limiter(5);  // burst of 10
  const auto start = redfish::RateLimiter::Clock::now();
  for (int i = 0; i < 10; ++i) EXPECT_EQ(limiter.Admit("a", start), 0) << i;
  EXPECT_EQ(limiter.Admit("a", start), 1);
  EXPECT_EQ(limiter.Admit("b", start), 0);  // per address
  EXPECT_EQ(limiter.Admit("a", start + std::chrono::milliseconds(250)), 0);
  EXPECT_GE(limiter.Admit("a", start + std::chrono::milliseconds(250)), 1);
  redfish::RateLimiter slow(0.1);
  EXPECT_EQ(slow.Admit("a", start), 0);
  EXPECT_EQ(slow.Admit("a", start), 10);  // Retry-After in whole seconds
  redfish::RateLimiter none(0);
  for (int i = 0; i < 1000; ++i) EXPECT_EQ(none.Admit("a", start), 0);
}

TEST(RedfishRateLimiter, ANewRateAppliesAtOnceWithFreshBuckets) {
  redfish::RateLimiter limiter(1);  // burst of 2
  const auto start = redfish::RateLimiter::Clock::now();
  EXPECT_EQ(limiter.Admit("a", start), 0);
  EXPECT_EQ(limiter.Admit("a", start), 0);
  EXPECT_EQ(limiter.Admit("a", start), 1);
  limiter.SetRate(0);
  for (int i = 0; i < 100; ++i) EXPECT_EQ(limiter.Admit("a", start), 0);
  limiter.SetRate(2);  // burst of 4, for "a" too
  for (int i = 0; i < 4; ++i) EXPECT_EQ(limiter.Admit("a", start), 0) << i;
  EXPECT_EQ(limiter.Admit("a", start), 1);
}

}  // namespace
}  // namespace zeda::test
