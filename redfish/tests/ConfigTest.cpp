// The "redfish" section of pelka.json as the service reads it, and as the
// library's configuration reader accepts it.
#include <gtest/gtest.h>

#include "Config.h"
#include "RedfishConfig.h"

namespace zeda::test {
namespace {

std::string Problem(const std::string& text) {
  try {
    redfish::ParseRedfishConfig(text, "/x/pelka.json");
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "(accepted)";
}

std::string LibraryProblem(const std::string& text) {
  try {
    pelka::platform::ParseConfig(text, "/x/pelka.json");
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "(accepted)";
}

TEST(RedfishConfig, DefaultsAndValues) {
  const auto plain = redfish::ParseRedfishConfig(R"({"sources": []})", "f");
  EXPECT_EQ(plain.address, "0.0.0.0");
  EXPECT_EQ(plain.port, 8443);
  EXPECT_TRUE(plain.certificate.empty());
  EXPECT_TRUE(plain.accounts.empty());
  EXPECT_EQ(plain.requestsPerSecond, redfish::kDefaultRequestsPerSecond);
  const auto full = redfish::ParseRedfishConfig(
      R"({"programData": "/pd", "sources": [], "redfish": {"listen": "[::1]:9443",
          "certificate": "/c.pem", "key": "/k.pem", "accounts": "/a", "requestsPerSecond": 0}})",
      "f");
  EXPECT_EQ(full.address, "::1");
  EXPECT_EQ(full.port, 9443);
  EXPECT_EQ(full.certificate, "/c.pem");
  EXPECT_EQ(full.key, "/k.pem");
  EXPECT_EQ(full.accounts, "/a");
  EXPECT_EQ(full.programData, "/pd");
  EXPECT_EQ(full.requestsPerSecond, 0);
}

TEST(RedfishConfig, BadSectionsGetOneLineNamingFilePlaceAndProblem) {
  const std::string prefix = "Bad configuration file /x/pelka.json: ";
  EXPECT_EQ(Problem(R"({"redfish": 1})"), prefix + "redfish: expected an object");
  EXPECT_EQ(Problem(R"({"redfish": {"port": 1}})"), prefix + "redfish.port: unknown member");
  EXPECT_EQ(Problem(R"({"redfish": {"listen": 8443}})"),
            prefix + "redfish.listen: expected a string");
  EXPECT_EQ(Problem(R"({"redfish": {"accounts": ""}})"),
            prefix + "redfish.accounts: must not be empty");
  for (const char* listen : {"8443", "host:8443", "1.2.3.4:0", "1.2.3.4:65536", "::1:8443",
                             "1.2.3.4:", "1.2.3.4:84x3", ":8443"}) {
    EXPECT_EQ(Problem(std::string(R"({"redfish": {"listen": ")") + listen + "\"}}"),
              prefix +
                  "redfish.listen: expected \"ADDRESS:PORT\" with a numeric address and a port "
                  "1-65535, not \"" +
                  listen + "\"")
        << listen;
  }
  EXPECT_EQ(Problem(R"({"redfish": {"key": "/k"}})"),
            prefix + "redfish.key: \"certificate\" and \"key\" go together");
  EXPECT_EQ(Problem(R"({"redfish": {"requestsPerSecond": -1}})"),
            prefix + "redfish.requestsPerSecond: must be between 0 (no limit) and 1000000");
  EXPECT_EQ(Problem(R"({"redfish": {"requestsPerSecond": "5"}})"),
            prefix + "redfish.requestsPerSecond: expected a number");
}

TEST(RedfishConfig, TheLibraryAcceptsTheSectionAndChecksItsShape) {
  const std::string prefix = "Bad configuration file /x/pelka.json: ";
  EXPECT_EQ(LibraryProblem(R"({"sources": [], "redfish": {"listen": "127.0.0.1:8443",
      "certificate": "/c", "key": "/k", "accounts": "/a", "requestsPerSecond": 5}})"),
            "(accepted)");
  EXPECT_EQ(LibraryProblem(R"({"sources": [], "redfish": {}})"), "(accepted)");
  EXPECT_EQ(LibraryProblem(R"({"sources": [], "redfish": []})"),
            prefix + "redfish: expected an object");
  EXPECT_EQ(LibraryProblem(R"({"sources": [], "redfish": {"port": 1}})"),
            prefix + "redfish.port: unknown member");
  // The form of "listen" is the service's to check (RedfishConfig).
  EXPECT_EQ(LibraryProblem(R"({"sources": [], "redfish": {"listen": "x"}})"), "(accepted)");
  EXPECT_EQ(LibraryProblem(R"({"sources": [], "redfish": {"listen": ""}})"),
            prefix + "redfish.listen: must not be empty");
  EXPECT_EQ(LibraryProblem(R"({"sources": [], "redfish": {"key": 3}})"),
            prefix + "redfish.key: expected a string");
  // Other unknown members are refused as before.
  EXPECT_EQ(LibraryProblem(R"({"sources": [], "redfsh": {}})"),
            prefix + "(document).redfsh: unknown member");
}

}  // namespace
}  // namespace zeda::test
