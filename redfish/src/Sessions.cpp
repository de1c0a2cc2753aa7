#include "Sessions.h"

#include <openssl/evp.h>
#include <openssl/rand.h>

#include <stdexcept>

namespace zeda::redfish {

namespace {

constexpr std::size_t kTokenBytes = 24;
constexpr std::size_t kIdBytes = 8;

}  // namespace

std::string RandomHex(std::size_t bytes) {
  std::vector<unsigned char> random(bytes);
  if (RAND_bytes(random.data(), static_cast<int>(random.size())) != 1) {
    throw std::runtime_error("the random generator failed");
  }
  static constexpr char kHex[] = "0123456789abcdef";
  std::string hex;
  hex.reserve(2 * bytes);
  for (const unsigned char byte : random) {
    hex += kHex[byte >> 4];
    hex += kHex[byte & 0xf];
  }
  return hex;
}

SessionStore::SessionStore(std::chrono::seconds idleTimeout, std::size_t limit)
    : idleTimeout_(idleTimeout), limit_(limit) {}

SessionStore::Digest SessionStore::DigestOf(const std::string& token) {
  Digest digest{};
  unsigned int length = 0;
  if (EVP_Digest(token.data(), token.size(), digest.data(), &length, EVP_sha256(), nullptr) != 1) {
    throw std::runtime_error("SHA-256 failed");
  }
  return digest;
}

SessionStore::Clock::time_point SessionStore::Now() const { return Clock::now() + skew_; }

void SessionStore::DropExpired() {
  const auto now = Now();
  for (auto it = byToken_.begin(); it != byToken_.end();) {
    it = now - it->second.lastUsed > idleTimeout_ ? byToken_.erase(it) : std::next(it);
  }
}

std::optional<SessionStore::Created> SessionStore::Create(const std::string& user,
                                                          const std::string& clientAddress) {
  Created created{{RandomHex(kIdBytes), user, clientAddress}, RandomHex(kTokenBytes)};
  const Digest digest = DigestOf(created.token);
  const std::lock_guard<std::mutex> lock(mutex_);
  DropExpired();
  if (byToken_.size() >= limit_) return std::nullopt;
  byToken_[digest] = Entry{created.session, Now()};
  return created;
}

std::optional<SessionInfo> SessionStore::Find(const std::string& token) {
  const Digest digest = DigestOf(token);
  const std::lock_guard<std::mutex> lock(mutex_);
  DropExpired();
  const auto found = byToken_.find(digest);
  if (found == byToken_.end()) return std::nullopt;
  found->second.lastUsed = Now();
  return found->second.info;
}

std::optional<SessionInfo> SessionStore::FindById(const std::string& id) {
  const std::lock_guard<std::mutex> lock(mutex_);
  DropExpired();
  for (const auto& [digest, entry] : byToken_) {
    if (entry.info.id == id) return entry.info;
  }
  return std::nullopt;
}

bool SessionStore::Remove(const std::string& id) {
  const std::lock_guard<std::mutex> lock(mutex_);
  for (auto it = byToken_.begin(); it != byToken_.end(); ++it) {
    if (it->second.info.id == id) {
      byToken_.erase(it);
      return true;
    }
  }
  return false;
}

std::vector<SessionInfo> SessionStore::List() {
  const std::lock_guard<std::mutex> lock(mutex_);
  DropExpired();
  std::map<std::string, SessionInfo> byId;
  for (const auto& [digest, entry] : byToken_) byId[entry.info.id] = entry.info;
  std::vector<SessionInfo> sessions;
  for (auto& [id, info] : byId) sessions.push_back(std::move(info));
  return sessions;
}

void SessionStore::Advance(std::chrono::seconds elapsed) {
  const std::lock_guard<std::mutex> lock(mutex_);
  skew_ += elapsed;
}

}  // namespace zeda::redfish
