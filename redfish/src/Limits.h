// The limits the service puts on clients (docs/REDFISH.md lists them).
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>

namespace zeda::redfish {

inline constexpr std::size_t kMaxHeaderBytes = 8 * 1024;      // request line + fields: else 431
inline constexpr std::size_t kMaxBodyBytes = 64 * 1024;       // else 413
inline constexpr std::chrono::seconds kHandshakeTimeout{10};  // TCP accept to TLS done
inline constexpr std::chrono::seconds kIdleTimeout{30};       // waiting for a request's first byte
inline constexpr std::chrono::seconds kHeaderTimeout{10};     // first byte to end of header
inline constexpr std::chrono::seconds kBodyTimeout{10};       // end of header to end of body
inline constexpr std::chrono::seconds kWriteTimeout{30};      // each piece of a reply
inline constexpr std::chrono::seconds kStopGrace{5};  // SIGTERM: requests in flight may finish
inline constexpr std::size_t kMaxConnections = 256;
inline constexpr std::size_t kMaxConnectionsPerAddress = 32;

// Counts open connections, in all and per client address.
class ConnectionCounter {
 public:
  // Takes a place for a connection of `address`; false when it is full.
  bool Take(const std::string& address);
  void Give(const std::string& address);
  std::size_t Open() const;

 private:
  mutable std::mutex mutex_;
  std::size_t open_ = 0;
  std::map<std::string, std::size_t> byAddress_;
};

}  // namespace zeda::redfish
