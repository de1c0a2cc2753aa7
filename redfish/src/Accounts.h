// The accounts file of the Redfish service: one line "NAME:HASH" per account,
// HASH a salted yescrypt hash made by libxcrypt ("$y$..."). zeda-redfish-user
// writes it, zeda-redfishd reads it (AccountStore).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zeda::redfish {

struct Account {
  std::string name;
  std::string hash;
};

// Names are 1 to 64 characters of A-Z, a-z, 0-9, '.', '_' and '-'.
bool IsValidAccountName(std::string_view name);

// A new salted yescrypt hash of `password`; throws std::runtime_error when
// libxcrypt cannot make one.
std::string HashPassword(const std::string& password);

// Whether `password` hashes to `hash`; the hashes are compared in constant time.
bool PasswordMatches(const std::string& password, const std::string& hash);

// The accounts of `path` in file order; a missing file has none. Throws
// std::runtime_error "Bad accounts file <path>: line <n>: <problem>" or
// "Cannot read accounts file <path>: <reason>".
std::vector<Account> ReadAccounts(const std::string& path);

// Replaces `path` atomically (a temporary file in the same folder, written,
// synced and renamed over it) with mode 0600. Throws std::runtime_error
// "Cannot write accounts file <path>: <reason>".
void WriteAccounts(const std::string& path, const std::vector<Account>& accounts);

}  // namespace zeda::redfish
