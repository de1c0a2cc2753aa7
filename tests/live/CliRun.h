// zeda-cim run as a program with a configuration file, answers read as JSON.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace zeda::test {

struct CliAnswer {
  int exitStatus = -1;
  nlohmann::json document;  // the --format json answer, null when unparsable
  std::string error;        // standard error
};

// Runs zeda-cim --config <config> --format json <args...> without a shell.
CliAnswer RunCli(const std::string& config, const std::vector<std::string>& args);

// The properties of one answered instance by name.
std::map<std::string, nlohmann::json> Properties(const nlohmann::json& instance);

// Every answered instance's properties, keyed by the value of `key`.
std::map<std::string, std::map<std::string, nlohmann::json>> ByKey(const CliAnswer& answer,
                                                                   const std::string& key);

// Writes a configuration file naming the given sources (JSON array text).
std::string WriteConfig(const std::string& directory, const std::string& sourcesJson);

// A linux source on the recorded machine, as JSON text.
std::string FixtureSource(const std::string& nas, const std::string& extraMembers = "");

}  // namespace zeda::test
