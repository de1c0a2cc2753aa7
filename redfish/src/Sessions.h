// Redfish sessions: made by a login, named by a random token the client sends
// back in X-Auth-Token, ended by a logout (DELETE of the session) or after
// kSessionIdleTimeout without a request.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace zeda::redfish {

inline constexpr std::chrono::seconds kSessionIdleTimeout{1800};
inline constexpr std::size_t kMaxSessions = 64;

struct SessionInfo {
  std::string id;  // the session's resource id, not a secret
  std::string user;
  std::string clientAddress;
};

class SessionStore {
 public:
  using Clock = std::chrono::steady_clock;

  explicit SessionStore(std::chrono::seconds idleTimeout = kSessionIdleTimeout,
                        std::size_t limit = kMaxSessions);

  struct Created {
    SessionInfo session;
    std::string token;  // 192 random bits, hex
  };
  // A new session of `user`; none when kMaxSessions are open.
  std::optional<Created> Create(const std::string& user, const std::string& clientAddress);

  // The session of `token`, which counts as used now; none when the token is
  // unknown or its session has expired.
  std::optional<SessionInfo> Find(const std::string& token);
  std::optional<SessionInfo> FindById(const std::string& id);

  // Ends the session `id`; false when there is none.
  bool Remove(const std::string& id);

  // The open sessions, by id.
  std::vector<SessionInfo> List();

  // For tests: pretends `elapsed` has gone by.
  void Advance(std::chrono::seconds elapsed);

 private:
  // Tokens are kept as their SHA-256 digests: a lookup compares digests, never
  // the secret itself, and a memory dump shows no usable token.
  using Digest = std::array<unsigned char, 32>;
  struct Entry {
    SessionInfo info;
    Clock::time_point lastUsed;
  };
  static Digest DigestOf(const std::string& token);
  Clock::time_point Now() const;
  void DropExpired();

  const std::chrono::seconds idleTimeout_;
  const std::size_t limit_;
  std::mutex mutex_;
  std::map<Digest, Entry> byToken_;
  Clock::duration skew_{0};
};

// `bytes` random bytes from OpenSSL's generator as lower-case hex; throws
// std::runtime_error when the generator fails.
std::string RandomHex(std::size_t bytes);

}  // namespace zeda::redfish
