// The zeda-cim command line.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace zeda::cim {

// A usage error: what() is the one line zeda-cim prints (exit status 2).
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class Format { Mof, Json, Xml, Table };

struct Options {
  std::optional<std::string> module;
  std::optional<std::string> config;  // the library's configuration file (PELKA_CONFIG)
  std::optional<std::string> inventory;
  std::optional<std::string> programData;
  std::optional<std::string> nasTrace;
  std::optional<std::string> nameSpace;
  Format format = Format::Mof;
  std::optional<std::vector<std::string>> properties;  // nullopt: no --property
  std::string operation;  // short form: ei, ein, gi, ai, ain, ri, rin, classes
  std::string target;     // CLASS or PATH
  std::optional<std::string> assocClass;
  std::optional<std::string> provider;
  std::optional<std::string> resultClass;
  std::optional<std::string> role;
  std::optional<std::string> resultRole;
  bool help = false;
};

// Parses argv (options and operands in any order, "--opt value" or
// "--opt=value"). Throws UsageError naming the problem.
Options parseOptions(const std::vector<std::string>& args);

std::string usageText();

}  // namespace zeda::cim
