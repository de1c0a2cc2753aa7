#include "Smart.h"

#include <sys/stat.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include <glog/logging.h>
#include <nlohmann/json.hpp>

#include "Basics.h"
#include "ChildProcess.h"

namespace zeda::pelka::platform {

namespace {

using nlohmann::json;

// smartctl's exit status is a bit mask.
constexpr int kCommandLineError = 1 << 0;
constexpr int kDeviceOpenFailed = 1 << 1;
constexpr int kSmartCommandFailed = 1 << 2;
constexpr int kPrefailAtThreshold = 1 << 4;

std::string StringMember(const json& object, const char* name) {
  const auto it = object.find(name);
  return (it != object.end() && it->is_string())
             ? Trimmed(it->get<std::string>(), kBlanksAndNewlines)
             : "";
}

// The messages smartctl printed with severity error, joined.
std::string ErrorMessages(const json& document) {
  std::string joined;
  const auto smartctl = document.find("smartctl");
  if (smartctl == document.end() || !smartctl->is_object()) return joined;
  const auto messages = smartctl->find("messages");
  if (messages == smartctl->end() || !messages->is_array()) return joined;
  for (const json& message : *messages) {
    if (!message.is_object() || StringMember(message, "severity") != "error") continue;
    const std::string text = StringMember(message, "string");
    if (text.empty()) continue;
    joined += (joined.empty() ? "" : "; ") + text;
  }
  return joined;
}

// A program name without "/" is looked up in PATH, then in the directories
// smartmontools installs to, which a non-root PATH often lacks.
std::string ResolveProgram(const std::string& program) {
  if (program.find('/') != std::string::npos) return program;
  std::string directories = "/usr/sbin:/sbin";
  if (const char* path = std::getenv("PATH"); path != nullptr && *path != '\0') {
    directories = std::string(path) + ":" + directories;
  }
  std::string::size_type start = 0;
  while (start <= directories.size()) {
    const std::string::size_type end = directories.find(':', start);
    const std::string directory =
        directories.substr(start, end == std::string::npos ? std::string::npos : end - start);
    if (!directory.empty()) {
      const std::string candidate = directory + "/" + program;
      struct stat status {};
      if (::stat(candidate.c_str(), &status) == 0 && S_ISREG(status.st_mode)) return candidate;
    }
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return program;  // not found: starting it reports the error
}

}  // namespace

SmartReport ParseSmartctlOutput(const std::string& output, int exitStatus) {
  json document;
  try {
    document = json::parse(output);
  } catch (const json::parse_error&) {
    throw std::runtime_error("unparsable smartctl output (exit status " +
                             std::to_string(exitStatus) + ")");
  }
  if (!document.is_object() || !document.contains("smartctl")) {
    throw std::runtime_error("smartctl output without its \"smartctl\" member");
  }
  SmartReport report;
  report.model = StringMember(document, "model_name");
  report.serial = StringMember(document, "serial_number");
  report.firmware = StringMember(document, "firmware_version");
  const auto rotation = document.find("rotation_rate");
  if (rotation != document.end() && rotation->is_number_unsigned()) {
    report.rotationRate = rotation->get<std::uint32_t>();
  }
  report.attributesAtThreshold = (exitStatus & kPrefailAtThreshold) != 0;
  const auto status = document.find("smart_status");
  const std::string errors = ErrorMessages(document);
  if (status != document.end() && status->is_object() && status->contains("passed") &&
      status->at("passed").is_boolean()) {
    if (status->at("passed").get<bool>()) {
      report.verdict = SmartReport::Verdict::Passed;
      if (report.attributesAtThreshold)
        report.reason = "pre-failure attribute at or below threshold";
    } else {
      report.verdict = SmartReport::Verdict::Failed;
      report.reason = errors.empty() ? "overall health self-assessment failed" : errors;
    }
    return report;
  }
  const auto support = document.find("smart_support");
  const bool unsupported = support != document.end() && support->is_object() &&
                           support->contains("available") && support->at("available") == false;
  if (!unsupported && (exitStatus & (kCommandLineError | kDeviceOpenFailed)) == 0 &&
      (exitStatus & kSmartCommandFailed) != 0) {
    report.verdict = SmartReport::Verdict::CommandFailed;
    report.reason = errors.empty() ? "a SMART command failed" : errors;
  } else {
    report.verdict = SmartReport::Verdict::NoSmart;
    report.reason = !errors.empty() ? errors
                    : unsupported   ? "SMART unsupported"
                                    : "no SMART status";
  }
  return report;
}

SmartCache::SmartCache(SmartSettings settings)
    : settings_(std::move(settings)), program_(ResolveProgram(settings_.smartctl)) {}

std::uint64_t SmartCache::Runs() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return runs_;
}

std::map<std::string, SmartReport> SmartCache::Reports(
    const std::vector<std::string>& deviceNodes) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto now = std::chrono::steady_clock::now();
  std::vector<std::string> stale;
  for (const std::string& node : deviceNodes) {
    const Entry& entry = entries_[node];
    if (!entry.everAsked || now - entry.asked >= settings_.ttl) stale.push_back(node);
  }
  if (!stale.empty()) Ask(stale);
  std::map<std::string, SmartReport> reports;
  for (const std::string& node : deviceNodes) {
    const Entry& entry = entries_.at(node);
    if (entry.report) reports.emplace(node, *entry.report);
  }
  return reports;
}

void SmartCache::Ask(const std::vector<std::string>& nodes) {
  std::vector<std::vector<std::string>> commands;
  for (const std::string& node : nodes) {
    // -n standby: a sleeping disk is not spun up; it keeps its last answer.
    commands.push_back({program_, "--json=c", "-H", "-i", "-A", "-n", "standby", node});
  }
  const auto asked = std::chrono::steady_clock::now();
  const std::vector<ChildOutcome> outcomes = RunAll(commands, settings_.timeout);
  runs_ += nodes.size();
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const std::string& node = nodes[i];
    Entry& entry = entries_[node];
    entry.asked = asked;
    entry.everAsked = true;
    const ChildOutcome& outcome = outcomes[i];
    switch (outcome.end) {
      case ChildOutcome::End::NotStarted:
        if (!missingLogged_) {
          LOG(ERROR) << "Cannot run " << program_ << ": " << std::strerror(outcome.startError)
                     << " (SMART health stays unknown; install smartmontools)";
          missingLogged_ = true;
        }
        continue;
      case ChildOutcome::End::TimedOut:
        LogOnce(node, "no answer within " + std::to_string(settings_.timeout.count()) +
                          " ms (the last known health stays in service)");
        continue;
      case ChildOutcome::End::Signalled:
        LogOnce(node, "ended by signal " + std::to_string(outcome.exitStatus));
        continue;
      case ChildOutcome::End::Exited:
        break;
    }
    missingLogged_ = false;
    try {
      SmartReport report = ParseSmartctlOutput(outcome.output, outcome.exitStatus);
      // With -n standby smartctl leaves a sleeping disk alone and says so.
      const bool standby = report.verdict == SmartReport::Verdict::NoSmart &&
                           outcome.output.find("STANDBY") != std::string::npos;
      if (standby && entry.report) continue;  // asleep: the last answer stands
      entry.report = std::move(report);
      lastProblem_.erase(node);
    } catch (const std::runtime_error& error) {
      LogOnce(node, error.what());
    }
  }
}

void SmartCache::LogOnce(const std::string& node, const std::string& problem) {
  std::string& last = lastProblem_[node];
  if (last == problem) return;
  last = problem;
  LOG(ERROR) << "smartctl " << node << ": " << problem;
}

}  // namespace zeda::pelka::platform
