#include "Config.h"

#include <cmath>
#include <cstdlib>
#include <mutex>
#include <set>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "Basics.h"
#include "platform/Inventory.h"

namespace zeda::pelka::platform {

namespace {

using nlohmann::json;

// Thrown while walking the document; ParseConfig adds the file name.
struct Problem {
  std::string place;
  std::string text;
};

[[noreturn]] void Fail(const std::string& place, const std::string& text) {
  throw Problem{place, text};
}

const json& Object(const json& value, const std::string& place) {
  if (!value.is_object()) Fail(place, "expected an object");
  return value;
}

std::string Text(const json& value, const std::string& place) {
  if (!value.is_string()) Fail(place, "expected a string");
  std::string text = value.get<std::string>();
  if (text.empty()) Fail(place, "must not be empty");
  return text;
}

// A number of seconds within [minimum, one day], possibly fractional.
double Seconds(const json& value, const std::string& place, double minimum) {
  if (!value.is_number()) Fail(place, "expected a number of seconds");
  const double seconds = value.get<double>();
  if (!std::isfinite(seconds) || seconds < minimum) {
    Fail(place, minimum > 0 ? "must be greater than 0" : "must not be negative");
  }
  if (seconds > 86400) Fail(place, "must be at most 86400 (one day)");
  return seconds;
}

void RefuseUnknownMembers(const json& object, const std::string& place,
                          const std::set<std::string>& known) {
  for (const auto& member : object.items()) {
    if (known.count(member.key()) == 0) Fail(place + "." + member.key(), "unknown member");
  }
}

FileSourceConfig ParseFileSource(const json& source, const std::string& place) {
  RefuseUnknownMembers(source, place, {"type", "path"});
  if (!source.contains("path")) Fail(place, "a file source needs \"path\"");
  return FileSourceConfig{Text(source.at("path"), place + ".path")};
}

LinuxSourceConfig ParseLinuxSource(const json& source, const std::string& place) {
  RefuseUnknownMembers(source, place,
                       {"type", "nas", "root", "smartctl", "smartTtlSeconds", "smartTimeoutSeconds",
                        "rescanSeconds"});
  LinuxSourceConfig machine;
  machine.nas =
      source.contains("nas") ? Text(source.at("nas"), place + ".nas") : HostName(kUnnamedMachine);
  if (source.contains("root")) machine.root = Text(source.at("root"), place + ".root");
  if (source.contains("smartctl"))
    machine.smartctl = Text(source.at("smartctl"), place + ".smartctl");
  if (source.contains("smartTtlSeconds")) {
    machine.smartTtl = std::chrono::seconds(static_cast<long long>(
        std::llround(Seconds(source.at("smartTtlSeconds"), place + ".smartTtlSeconds", 0))));
  }
  if (source.contains("smartTimeoutSeconds")) {
    machine.smartTimeout = std::chrono::milliseconds(static_cast<long long>(std::llround(
        1000 * Seconds(source.at("smartTimeoutSeconds"), place + ".smartTimeoutSeconds", 0.001))));
  }
  if (source.contains("rescanSeconds")) {
    machine.rescan = std::chrono::milliseconds(static_cast<long long>(
        std::llround(1000 * Seconds(source.at("rescanSeconds"), place + ".rescanSeconds", 0.1))));
  }
  return machine;
}

// The Redfish service's section (zeda-redfishd reads it; redfish/src/RedfishConfig.h
// has its meaning): the library checks its shape so that one file serves both.
void CheckRedfishSection(const json& section) {
  Object(section, "redfish");
  RefuseUnknownMembers(section, "redfish",
                       {"listen", "certificate", "key", "accounts", "requestsPerSecond"});
  for (const char* member : {"listen", "certificate", "key", "accounts"}) {
    if (section.contains(member)) Text(section.at(member), std::string("redfish.") + member);
  }
  if (section.contains("requestsPerSecond") && !section.at("requestsPerSecond").is_number()) {
    Fail("redfish.requestsPerSecond", "expected a number");
  }
}

LogsConfig ParseLogs(const json& section) {
  Object(section, "logs");
  RefuseUnknownMembers(section, "logs", {"keepDays"});
  LogsConfig logs;
  if (section.contains("keepDays")) {
    const json& days = section.at("keepDays");
    const std::string place = "logs.keepDays";
    if (!days.is_number_integer()) Fail(place, "expected a whole number of days");
    // Negative numbers are read as signed, all others as unsigned.
    if (!days.is_number_unsigned() || days.get<unsigned long long>() < 1) {
      Fail(place, "must be at least 1");
    }
    if (days.get<unsigned long long>() > static_cast<unsigned long long>(kMaxKeepDays)) {
      Fail(place, "must be at most " + std::to_string(kMaxKeepDays) + " (ten years)");
    }
    logs.keepDays = days.get<int>();
  }
  return logs;
}

Config ParseDocument(const json& document) {
  Object(document, "(document)");
  RefuseUnknownMembers(document, "(document)", {"programData", "sources", "redfish", "logs"});
  if (document.contains("redfish")) CheckRedfishSection(document.at("redfish"));
  Config config;
  if (document.contains("programData")) {
    config.programData = Text(document.at("programData"), "programData");
  }
  if (document.contains("logs")) config.logs = ParseLogs(document.at("logs"));
  if (!document.contains("sources")) Fail("(document)", "\"sources\" is missing");
  const json& sources = document.at("sources");
  if (!sources.is_array()) Fail("sources", "expected an array");
  // Names of the NAS devices of linux sources; file sources name theirs only
  // when read, and duplicates among those are found then.
  std::set<std::string> names;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    const std::string place = "sources[" + std::to_string(i) + "]";
    const json& source = Object(sources[i], place);
    if (!source.contains("type")) Fail(place, "\"type\" is missing (known: file, linux)");
    const std::string type = Text(source.at("type"), place + ".type");
    SourceConfig entry;
    entry.place = place;
    if (type == "file") {
      entry.fileSource = ParseFileSource(source, place);
    } else if (type == "linux") {
      entry.linuxSource = ParseLinuxSource(source, place);
      if (!names.insert(entry.linuxSource->nas).second) {
        Fail(place + ".nas", "duplicate NAS name \"" + entry.linuxSource->nas + "\"");
      }
    } else {
      Fail(place + ".type", "unknown source type \"" + type + "\" (known: file, linux)");
    }
    config.sources.push_back(std::move(entry));
  }
  return config;
}

}  // namespace

bool LinuxSourceConfig::operator==(const LinuxSourceConfig& other) const {
  return nas == other.nas && root == other.root && smartctl == other.smartctl &&
         smartTtl == other.smartTtl && smartTimeout == other.smartTimeout && rescan == other.rescan;
}

namespace {

std::mutex machineConfigMutex;
std::string machineConfigPath = "/etc/pelka/pelka.json";

std::string MachineConfigPath() {
  const std::lock_guard<std::mutex> lock(machineConfigMutex);
  return machineConfigPath;
}

}  // namespace

void UseMachineConfigFile(std::string path) {
  const std::lock_guard<std::mutex> lock(machineConfigMutex);
  machineConfigPath = std::move(path);
}

ConfigFileName ConfigFilePath() {
  const char* named = std::getenv("PELKA_CONFIG");
  if (named != nullptr && *named != '\0') return ConfigFileName{named, true};
  // An inventory file named for this process outranks the machine's
  // configuration: tests and `zeda-cim --inventory` keep serving their file.
  const char* inventory = std::getenv("PELKA_INVENTORY");
  if (inventory != nullptr && *inventory != '\0') return ConfigFileName{"", false};
  return ConfigFileName{MachineConfigPath(), false};
}

Config ParseConfig(const std::string& jsonText, const std::string& fileName) {
  const std::string prefix = "Bad configuration file " + fileName + ": ";
  json document;
  try {
    document = json::parse(jsonText);
  } catch (const json::parse_error& error) {
    throw std::runtime_error(prefix + SyntaxProblem(error.what()));
  }
  try {
    return ParseDocument(document);
  } catch (const Problem& problem) {
    throw std::runtime_error(prefix + problem.place + ": " + problem.text);
  }
}

}  // namespace zeda::pelka::platform
