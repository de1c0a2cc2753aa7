#include "CliRun.h"

#include <sys/wait.h>
#include <unistd.h>
#include <fstream>
#include <sstream>

#include "ChildProcess.h"

namespace zeda::test {

CliAnswer RunCli(const std::string& config, const std::vector<std::string>& args) {
  // Standard error is discarded by RunAll; the answer's status carries the
  // message in JSON form.
  // The program data, and with it the log directory, is the configuration's
  // directory also when the configuration is refused: no run writes into the
  // machine's /var/lib/pelka.
  const std::string programData = config.substr(0, config.rfind('/'));
  std::vector<std::string> command = {ZEDA_CIM,    "--config", config, "--program-data",
                                      programData, "--format", "json"};
  command.insert(command.end(), args.begin(), args.end());
  const auto outcomes = pelka::platform::RunAll({command}, std::chrono::seconds(60));
  CliAnswer answer;
  const auto& outcome = outcomes.front();
  answer.exitStatus =
      outcome.end == pelka::platform::ChildOutcome::End::Exited ? outcome.exitStatus : -1;
  answer.document = nlohmann::json::parse(outcome.output, nullptr, false);
  if (answer.document.is_discarded()) answer.document = nullptr;
  return answer;
}

std::map<std::string, nlohmann::json> Properties(const nlohmann::json& instance) {
  std::map<std::string, nlohmann::json> properties;
  for (const auto& property : instance.at("properties")) {
    properties[property.at("name").get<std::string>()] = property.at("value");
  }
  return properties;
}

std::map<std::string, std::map<std::string, nlohmann::json>> ByKey(const CliAnswer& answer,
                                                                   const std::string& key) {
  std::map<std::string, std::map<std::string, nlohmann::json>> instances;
  if (!answer.document.is_object() || !answer.document.contains("results")) return instances;
  for (const auto& instance : answer.document.at("results")) {
    auto properties = Properties(instance);
    instances[properties.at(key).get<std::string>()] = properties;
  }
  return instances;
}

std::string WriteConfig(const std::string& directory, const std::string& sourcesJson) {
  const std::string path = directory + "/pelka.json";
  std::ofstream(path) << "{\"programData\": \"" << directory << "\", \"sources\": " << sourcesJson
                      << "}\n";
  return path;
}

std::string FixtureSource(const std::string& nas, const std::string& extraMembers) {
  const std::string fixture = ZEDA_LINUX_FIXTURE;
  return "{\"type\": \"linux\", \"nas\": \"" + nas + "\", \"root\": \"" + fixture +
         "/root\", \"smartctl\": \"" + fixture + "/smartctl\"" + extraMembers + "}";
}

}  // namespace zeda::test
