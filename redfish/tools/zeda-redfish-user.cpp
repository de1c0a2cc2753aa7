// zeda-redfish-user --accounts FILE add|remove NAME
//
// Keeps the accounts of the Redfish service. `add` reads the password, one
// line, from standard input (no echo on a terminal) and stores a salted
// yescrypt hash of it (an existing account gets the new password); `remove`
// deletes the account.
// The file is replaced atomically and has mode 0600.
// Exit status: 0 done, 1 the file could not be read or written, 2 bad usage.
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Accounts.h"

namespace {

constexpr int kFailed = 1;
constexpr int kBadUsage = 2;
constexpr std::size_t kMaxPasswordLength = 1024;

constexpr char kUsage[] = "usage: zeda-redfish-user --accounts FILE add|remove NAME";

int BadUsage(const std::string& problem) {
  std::cerr << "zeda-redfish-user: " << problem << " (" << kUsage << ")\n";
  return kBadUsage;
}

int Failed(const std::string& problem) {
  std::cerr << "zeda-redfish-user: " << problem << "\n";
  return kFailed;
}

struct Arguments {
  std::string accounts;
  std::string command;
  std::string name;
};

// Reads the arguments; returns the one-line problem, empty when they are good.
std::string ParseArguments(const std::vector<std::string>& args, Arguments& parsed) {
  std::vector<std::string> positional;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--accounts") {
      if (i + 1 >= args.size()) return "--accounts needs a FILE";
      parsed.accounts = args[++i];
      if (parsed.accounts.empty()) return "--accounts needs a FILE";
    } else if (args[i].rfind("--accounts=", 0) == 0) {
      parsed.accounts = args[i].substr(11);
      if (parsed.accounts.empty()) return "--accounts needs a FILE";
    } else if (args[i].size() > 1 && args[i][0] == '-') {
      return "unknown option " + args[i];
    } else {
      positional.push_back(args[i]);
    }
  }
  if (parsed.accounts.empty()) return "--accounts FILE is missing";
  if (positional.empty()) return "a command (add or remove) is missing";
  parsed.command = positional[0];
  if (parsed.command != "add" && parsed.command != "remove") {
    return "unknown command \"" + parsed.command + "\" (known: add, remove)";
  }
  if (positional.size() < 2) return "the account NAME is missing";
  if (positional.size() > 2) return "unexpected argument \"" + positional[2] + "\"";
  parsed.name = positional[1];
  if (!zeda::redfish::IsValidAccountName(parsed.name)) {
    return "bad account name \"" + parsed.name + "\": 1 to 64 characters of A-Z a-z 0-9 . _ -";
  }
  return {};
}

// Turns the terminal's echo off while it lives, when standard input is one.
class NoEcho {
 public:
  NoEcho() {
    if (::isatty(STDIN_FILENO) == 1 && ::tcgetattr(STDIN_FILENO, &saved_) == 0) {
      termios quiet = saved_;
      quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
      active_ = ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet) == 0;
      if (active_) std::cerr << "Password: " << std::flush;
    }
  }
  ~NoEcho() {
    if (active_) {
      ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &saved_);
      std::cerr << "\n";
    }
  }
  NoEcho(const NoEcho&) = delete;
  NoEcho& operator=(const NoEcho&) = delete;

 private:
  termios saved_{};
  bool active_ = false;
};

int Add(const Arguments& args, std::vector<zeda::redfish::Account>& accounts) {
  std::string password;
  bool read = false;
  {
    const NoEcho quiet;
    read = static_cast<bool>(std::getline(std::cin, password));
  }
  if (!read) {
    return BadUsage("no password on standard input (one line)");
  }
  if (!password.empty() && password.back() == '\r') password.pop_back();
  if (password.empty()) return BadUsage("the password is empty");
  if (password.size() > kMaxPasswordLength) {
    return BadUsage("the password is longer than " + std::to_string(kMaxPasswordLength) +
                    " characters");
  }
  const std::string hash = zeda::redfish::HashPassword(password);
  const auto existing = std::find_if(accounts.begin(), accounts.end(), [&](const auto& account) {
    return account.name == args.name;
  });
  if (existing != accounts.end()) {
    existing->hash = hash;
  } else {
    accounts.push_back({args.name, hash});
  }
  zeda::redfish::WriteAccounts(args.accounts, accounts);
  return 0;
}

int Remove(const Arguments& args, std::vector<zeda::redfish::Account>& accounts) {
  const auto before = accounts.size();
  accounts.erase(std::remove_if(accounts.begin(), accounts.end(),
                                [&](const auto& account) { return account.name == args.name; }),
                 accounts.end());
  if (accounts.size() == before) {
    return Failed("no account \"" + args.name + "\" in " + args.accounts);
  }
  zeda::redfish::WriteAccounts(args.accounts, accounts);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  Arguments args;
  const std::string problem = ParseArguments(std::vector<std::string>(argv + 1, argv + argc), args);
  if (!problem.empty()) return BadUsage(problem);
  try {
    std::vector<zeda::redfish::Account> accounts = zeda::redfish::ReadAccounts(args.accounts);
    return args.command == "add" ? Add(args, accounts) : Remove(args, accounts);
  } catch (const std::exception& error) {
    return Failed(error.what());
  }
}
