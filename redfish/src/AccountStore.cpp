#include "AccountStore.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

#include <cerrno>
#include <stdexcept>

#include <glog/logging.h>

namespace zeda::redfish {

namespace {

constexpr std::size_t kMaxCachedLogins = 1024;

bool SameFile(const struct stat& a, const struct stat& b) {
  return a.st_ino == b.st_ino && a.st_dev == b.st_dev && a.st_size == b.st_size &&
         a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec &&
         a.st_ctim.tv_sec == b.st_ctim.tv_sec && a.st_ctim.tv_nsec == b.st_ctim.tv_nsec;
}

}  // namespace

AccountStore::AccountStore(std::string path) : path_(std::move(path)) {
  if (RAND_bytes(cacheKey_.data(), static_cast<int>(cacheKey_.size())) != 1) {
    throw std::runtime_error("the random generator failed");
  }
  decoyHash_ = HashPassword("decoy");
}

void AccountStore::UsePath(std::string path) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (path == path_) return;
  path_ = std::move(path);
  read_ = false;
  seen_ = {};
}

void AccountStore::Refresh() {
  struct stat now {};
  if (::stat(path_.c_str(), &now) != 0) {
    if (errno == ENOENT && (!read_ || !accounts_.empty())) {
      LOG(WARNING) << "No accounts file " << path_ << ": no one can log in";
      accounts_.clear();
      verified_.clear();
    }
    read_ = true;
    seen_ = {};
    return;
  }
  if (read_ && SameFile(now, seen_)) return;
  seen_ = now;
  read_ = true;
  verified_.clear();
  try {
    accounts_ = ReadAccounts(path_);
  } catch (const std::exception& error) {
    // The last good accounts stay in effect.
    LOG(ERROR) << error.what();
  }
}

AccountStore::Digest AccountStore::KeyOf(const std::string& user,
                                         const std::string& password) const {
  std::string text = user;
  text += '\0';
  text += password;
  Digest digest{};
  unsigned int length = 0;
  HMAC(EVP_sha256(), cacheKey_.data(), static_cast<int>(cacheKey_.size()),
       reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest.data(), &length);
  OPENSSL_cleanse(text.data(), text.size());
  return digest;
}

bool AccountStore::Verify(const std::string& user, const std::string& password) {
  const Digest key = KeyOf(user, password);
  std::string hash;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    Refresh();
    const auto cached = verified_.find(key);
    if (cached != verified_.end()) {
      if (Clock::now() < cached->second) return true;
      verified_.erase(cached);
    }
    for (const Account& account : accounts_) {
      if (account.name == user) hash = account.hash;
    }
  }
  // The slow check runs outside the lock: logins of others go on meanwhile.
  const bool known = !hash.empty();
  const bool good = PasswordMatches(password, known ? hash : decoyHash_) && known;
  if (good) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (verified_.size() >= kMaxCachedLogins) verified_.clear();
    verified_[key] = Clock::now() + kVerifiedCacheTime;
  }
  return good;
}

std::vector<std::string> AccountStore::Names() {
  const std::lock_guard<std::mutex> lock(mutex_);
  Refresh();
  std::vector<std::string> names;
  for (const Account& account : accounts_) names.push_back(account.name);
  return names;
}

}  // namespace zeda::redfish
