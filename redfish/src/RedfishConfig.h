// The "redfish" section of the product's configuration file (pelka.json):
//
// {"programData": "/var/lib/pelka", "sources": [...],
//  "redfish": {"listen": "0.0.0.0:8443",
//              "certificate": "/etc/pelka/redfish.crt", "key": "/etc/pelka/redfish.key",
//              "accounts": "/var/lib/pelka/redfish-accounts",
//              "requestsPerSecond": 50}}
//
// Every member is optional: the service listens on kDefaultListen, makes a
// self-signed certificate under <programData>/redfish/ at first start, keeps
// its accounts in <programData>/redfish-accounts and lets every client
// address make kDefaultRequestsPerSecond requests per second (0: no limit).
#pragma once

#include <cstdint>
#include <string>

namespace zeda::redfish {

inline constexpr char kDefaultListen[] = "0.0.0.0:8443";
inline constexpr double kDefaultRequestsPerSecond = 50;

struct RedfishConfig {
  std::string address;  // numeric IPv4 or IPv6 address, e.g. "0.0.0.0", "::1"
  std::uint16_t port = 0;
  std::string certificate;  // both empty, or both set
  std::string key;
  std::string accounts;
  std::string programData;
  double requestsPerSecond = kDefaultRequestsPerSecond;
};

// Reads the configuration file `path` and returns its redfish section with
// every default filled in. Throws std::runtime_error with one line naming the
// file, the place and the problem, e.g.
//   Bad configuration file /etc/pelka/pelka.json: redfish.listen: expected "ADDRESS:PORT"
RedfishConfig LoadRedfishConfig(const std::string& path);

// The same from configuration text (`fileName` only goes into messages).
RedfishConfig ParseRedfishConfig(const std::string& jsonText, const std::string& fileName);

// Splits "ADDRESS:PORT" ("[::1]:8443" for IPv6); false when it is not one.
bool SplitListen(const std::string& listen, std::string& address, std::uint16_t& port);

}  // namespace zeda::redfish
