#include "Accounts.h"

#include <crypt.h>
#include <fcntl.h>
#include <openssl/crypto.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <utility>

#include "platform/FileDescriptor.h"

namespace zeda::redfish {

using zeda::pelka::platform::FileDescriptor;

namespace {

constexpr std::size_t kMaxNameLength = 64;

bool IsNameCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' ||
         c == '_' || c == '-';
}

[[noreturn]] void CannotWrite(const std::string& path, int error) {
  throw std::runtime_error("Cannot write accounts file " + path + ": " + std::strerror(error));
}

void WriteAll(int fd, const std::string& text, const std::string& path) {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t written = ::write(fd, text.data() + done, text.size() - done);
    if (written < 0) {
      if (errno == EINTR) continue;
      CannotWrite(path, errno);
    }
    done += static_cast<std::size_t>(written);
  }
}

}  // namespace

bool IsValidAccountName(std::string_view name) {
  if (name.empty() || name.size() > kMaxNameLength) return false;
  for (const char c : name) {
    if (!IsNameCharacter(c)) return false;
  }
  return true;
}

std::string HashPassword(const std::string& password) {
  const std::unique_ptr<char, decltype(&std::free)> salt(crypt_gensalt_ra("$y$", 0, nullptr, 0),
                                                         &std::free);
  if (!salt) throw std::runtime_error(std::string("cannot make a salt: ") + std::strerror(errno));
  const auto data = std::make_unique<crypt_data>();
  const char* hash = crypt_r(password.c_str(), salt.get(), data.get());
  if (hash == nullptr || hash[0] == '*') {
    throw std::runtime_error("cannot hash the password with yescrypt");
  }
  return hash;
}

bool PasswordMatches(const std::string& password, const std::string& hash) {
  if (hash.empty() || hash[0] != '$') return false;
  const auto data = std::make_unique<crypt_data>();
  const char* computed = crypt_r(password.c_str(), hash.c_str(), data.get());
  if (computed == nullptr || computed[0] == '*') return false;
  const std::size_t length = std::strlen(computed);
  return length == hash.size() && CRYPTO_memcmp(computed, hash.data(), length) == 0;
}

std::vector<Account> ReadAccounts(const std::string& path) {
  std::ifstream file(path);
  if (!file) {
    if (errno == ENOENT) return {};
    throw std::runtime_error("Cannot read accounts file " + path + ": " + std::strerror(errno));
  }
  std::vector<Account> accounts;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.empty()) continue;
    const std::string where =
        "Bad accounts file " + path + ": line " + std::to_string(number) + ": ";
    const auto colon = line.find(':');
    if (colon == std::string::npos) throw std::runtime_error(where + "expected NAME:HASH");
    Account account{line.substr(0, colon), line.substr(colon + 1)};
    if (!IsValidAccountName(account.name)) throw std::runtime_error(where + "bad account name");
    if (account.hash.rfind("$y$", 0) != 0) {
      throw std::runtime_error(where + "not a yescrypt hash");
    }
    accounts.push_back(std::move(account));
  }
  return accounts;
}

void WriteAccounts(const std::string& path, const std::vector<Account>& accounts) {
  std::string text;
  for (const Account& account : accounts) text += account.name + ":" + account.hash + "\n";
  std::string temporary = path + ".XXXXXX";
  FileDescriptor fd(::mkstemp(temporary.data()));
  if (fd.get() < 0) CannotWrite(path, errno);
  try {
    if (::fchmod(fd.get(), S_IRUSR | S_IWUSR) != 0) CannotWrite(path, errno);
    WriteAll(fd.get(), text, path);
    if (::fsync(fd.get()) != 0) CannotWrite(path, errno);
    if (::close(fd.release()) != 0) CannotWrite(path, errno);
    if (::rename(temporary.c_str(), path.c_str()) != 0) CannotWrite(path, errno);
  } catch (...) {
    ::unlink(temporary.c_str());
    throw;
  }
}

}  // namespace zeda::redfish
