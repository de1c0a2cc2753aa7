// The accounts of the running service: the accounts file, read again when it
// changes (so zeda-redfish-user needs no restart), and the check of a user
// name and password against it.
#pragma once

#include <sys/stat.h>

#include <array>
#include <chrono>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "Accounts.h"

namespace zeda::redfish {

// A name and password once found good are known good for this long without
// hashing them again (a yescrypt check costs tens of milliseconds), unless
// the file changes first.
inline constexpr std::chrono::seconds kVerifiedCacheTime{300};

class AccountStore {
 public:
  explicit AccountStore(std::string path);

  // Whether `user` has an account whose password is `password`. Takes as
  // long for an unknown user as for a known one.
  bool Verify(const std::string& user, const std::string& password);

  // The account names, in file order.
  std::vector<std::string> Names();

  // Reads the accounts from another file from now on (a reload of the
  // configuration); until it is read, the accounts read before stay.
  void UsePath(std::string path);

 private:
  using Clock = std::chrono::steady_clock;
  using Digest = std::array<unsigned char, 32>;
  void Refresh();  // under mutex_
  Digest KeyOf(const std::string& user, const std::string& password) const;

  std::string path_;                          // under mutex_
  std::array<unsigned char, 32> cacheKey_{};  // random, for this process only
  std::string decoyHash_;                     // checked for unknown users
  std::mutex mutex_;
  std::vector<Account> accounts_;
  struct stat seen_ {};
  bool read_ = false;
  std::map<Digest, Clock::time_point> verified_;
};

}  // namespace zeda::redfish
