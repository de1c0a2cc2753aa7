#include "Smart.h"

#include <sys/stat.h>
#include <algorithm>
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

// Members this reader takes, with the type smartctl gives them; another type
// means the output is not smartctl's (or not of a version this reader knows),
// and nothing of it is believed.
void CheckTypes(const json& document) {
  struct Expected {
    const char* member;
    const char* inside;  // nullptr: at the top
    bool (json::*is)() const noexcept;
    const char* what;
  };
  static const Expected kExpected[] = {
      {"smartctl", nullptr, &json::is_object, "an object"},
      {"model_name", nullptr, &json::is_string, "a string"},
      {"serial_number", nullptr, &json::is_string, "a string"},
      {"firmware_version", nullptr, &json::is_string, "a string"},
      {"rotation_rate", nullptr, &json::is_number_unsigned, "a number of 0 or more"},
      {"smart_status", nullptr, &json::is_object, "an object"},
      {"smart_support", nullptr, &json::is_object, "an object"},
      {"passed", "smart_status", &json::is_boolean, "true or false"},
      {"available", "smart_support", &json::is_boolean, "true or false"},
  };
  for (const Expected& expected : kExpected) {
    const json* object = &document;
    if (expected.inside != nullptr) {
      const auto outer = document.find(expected.inside);
      if (outer == document.end() || !outer->is_object()) continue;
      object = &*outer;
    }
    const auto member = object->find(expected.member);
    if (member == object->end() || ((*member).*expected.is)()) continue;
    throw std::runtime_error(
        std::string("smartctl output with a wrong type: ") +
        (expected.inside != nullptr ? std::string(expected.inside) + "." : std::string()) +
        expected.member + " is not " + expected.what);
  }
}

// The member `name` of `object`, or nullptr when `object` is not an object
// or lacks it.
const json* Member(const json* object, const char* name) {
  if (object == nullptr || !object->is_object()) return nullptr;
  const auto it = object->find(name);
  return it == object->end() ? nullptr : &*it;
}

std::optional<std::uint64_t> WholeNumber(const json* value) {
  if (value == nullptr || !value->is_number_unsigned()) return std::nullopt;
  return value->get<std::uint64_t>();
}

// Device statistics of an ATA drive, which smartctl lists only when asked
// for them (-l devstat, -l ssd, -x): the entry of the Solid State Device
// Statistics page, in whichever page smartctl lists it. An entry whose value
// the drive marks not valid has no "value".
std::optional<std::uint64_t> AtaPercentageUsed(const json& document) {
  const json* pages = Member(Member(&document, "ata_device_statistics"), "pages");
  if (pages == nullptr || !pages->is_array()) return std::nullopt;
  for (const json& page : *pages) {
    const json* table = Member(&page, "table");
    if (table == nullptr || !table->is_array()) continue;
    for (const json& entry : *table) {
      const json* name = Member(&entry, "name");
      if (name != nullptr && name->is_string() &&
          name->get_ref<const std::string&>() == "Percentage Used Endurance Indicator") {
        return WholeNumber(Member(&entry, "value"));
      }
    }
  }
  return std::nullopt;
}

// The drive's own estimate of the share of its rated endurance it has used,
// which may exceed 100: the first of the vendor-neutral indicators the
// answer has. A member of another type than a whole number of 0 or more
// counts as no indicator (the rest of the answer is still believed);
// vendor-specific ATA attributes are never read.
std::optional<std::uint64_t> PercentageUsed(const json& document) {
  if (const auto used = WholeNumber(
          Member(Member(&document, "nvme_smart_health_information_log"), "percentage_used"))) {
    return used;
  }
  if (const auto used = AtaPercentageUsed(document)) return used;
  return WholeNumber(Member(&document, "scsi_percentage_used_endurance_indicator"));
}

std::optional<std::uint32_t> MediaLifeLeft(const json& document) {
  const auto used = PercentageUsed(document);
  if (!used) return std::nullopt;
  return *used >= 100 ? 0U : static_cast<std::uint32_t>(100 - *used);
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
  CheckTypes(document);
  SmartReport report;
  report.model = StringMember(document, "model_name");
  report.serial = StringMember(document, "serial_number");
  report.firmware = StringMember(document, "firmware_version");
  const auto rotation = document.find("rotation_rate");
  if (rotation != document.end() && rotation->is_number_unsigned()) {
    report.rotationRate = rotation->get<std::uint32_t>();
  }
  report.mediaLifeLeftPercent = MediaLifeLeft(document);
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

struct SmartCache::Asked {
  explicit Asked(const std::vector<std::string>& command) : child(command) {}
  RunningChild child;
  Clock::time_point deadline;
};

SmartCache::SmartCache(SmartSettings settings)
    : settings_(std::move(settings)), program_(ResolveProgram(settings_.smartctl)) {}

// Runs still under way are given up with the cache.
SmartCache::~SmartCache() = default;

std::uint64_t SmartCache::Runs() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return runs_;
}

bool SmartCache::Asking() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return !asking_.empty();
}

std::map<std::string, SmartReport> SmartCache::Reports(
    const std::vector<std::string>& deviceNodes) {
  return Reports(deviceNodes, settings_.timeout);
}

std::map<std::string, SmartReport> SmartCache::Reports(const std::vector<std::string>& deviceNodes,
                                                       std::chrono::milliseconds wait,
                                                       bool askAgain) {
  const std::lock_guard<std::mutex> lock(mutex_);
  ReapAbandoned();
  Collect();
  const auto now = Clock::now();
  for (const std::string& node : deviceNodes) {
    const Entry& entry = entries_[node];
    const bool stale = !entry.everAsked || now - entry.asked >= settings_.ttl;
    if (askAgain && stale && asking_.count(node) == 0) Ask(node);
  }
  // Measured from after the asks, so that a wait as long as the timeout
  // outlasts the deadlines of the children just started: one that hangs is
  // given up within this call, and the next asks afresh.
  AwaitLocked(Clock::now() + std::min(wait, settings_.timeout));
  std::map<std::string, SmartReport> reports;
  for (const std::string& node : deviceNodes) {
    const Entry& entry = entries_.at(node);
    if (entry.report) reports.emplace(node, *entry.report);
  }
  return reports;
}

bool SmartCache::AwaitAnswers(Clock::time_point deadline) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (Collect() != 0) return true;
  std::vector<RunningChild*> children;
  for (const auto& [node, asked] : asking_) {
    children.push_back(&asked->child);
    deadline = std::min(deadline, asked->deadline);
  }
  AwaitAny(children, deadline);
  return Collect() != 0;
}

void SmartCache::AwaitLocked(Clock::time_point deadline) {
  while (!asking_.empty()) {
    Collect();
    if (asking_.empty() || Clock::now() >= deadline) return;
    std::vector<RunningChild*> children;
    for (const auto& [node, asked] : asking_) children.push_back(&asked->child);
    AwaitAny(children, deadline);
  }
}

void SmartCache::Ask(const std::string& node) {
  // -n standby: a sleeping disk is not spun up; it keeps its last answer.
  auto asked = std::make_unique<Asked>(
      std::vector<std::string>{program_, "--json=c", "-H", "-i", "-A", "-n", "standby", node});
  const auto now = Clock::now();
  asked->deadline = now + settings_.timeout;
  Entry& entry = entries_[node];
  entry.asked = now;
  entry.everAsked = true;
  ++runs_;
  asking_.emplace(node, std::move(asked));
}

std::size_t SmartCache::Collect() {
  std::size_t ended = 0;
  const auto now = Clock::now();
  for (auto it = asking_.begin(); it != asking_.end();) {
    RunningChild& child = it->second->child;
    if (!child.Poll() && now >= it->second->deadline) child.Abandon();
    if (!child.Done()) {
      ++it;
      continue;
    }
    TakeAnswer(it->first, child.Outcome());
    it = asking_.erase(it);
    ++ended;
  }
  return ended;
}

void SmartCache::TakeAnswer(const std::string& node, const ChildOutcome& outcome) {
  Entry& entry = entries_[node];
  switch (outcome.end) {
    case ChildOutcome::End::NotStarted:
      if (!missingLogged_) {
        LOG(ERROR) << "Cannot run " << program_ << ": " << std::strerror(outcome.startError)
                   << " (SMART health stays unknown; install smartmontools)";
        missingLogged_ = true;
      }
      return;
    case ChildOutcome::End::TimedOut:
      LogOnce(node, "no answer within " + std::to_string(settings_.timeout.count()) +
                        " ms (the last known health stays in service)");
      return;
    case ChildOutcome::End::Signalled:
      LogOnce(node, "ended by signal " + std::to_string(outcome.exitStatus));
      return;
    case ChildOutcome::End::Lost:
      LogOnce(node,
              "its exit status was taken by another part of this process (health unknown; "
              "the last known health stays in service)");
      return;
    case ChildOutcome::End::Exited:
      break;
  }
  missingLogged_ = false;
  if (outcome.outputCut) {
    LogOnce(node, "output longer than " + std::to_string(kChildOutputLimit >> 20) +
                      " MiB (the last known health stays in service)");
    return;
  }
  try {
    SmartReport report = ParseSmartctlOutput(outcome.output, outcome.exitStatus);
    // With -n standby smartctl leaves a sleeping disk alone and says so.
    const bool standby = report.verdict == SmartReport::Verdict::NoSmart &&
                         outcome.output.find("STANDBY") != std::string::npos;
    if (standby && entry.report) return;  // asleep: the last answer stands
    entry.report = std::move(report);
    lastProblem_.erase(node);
  } catch (const std::runtime_error& error) {
    LogOnce(node, error.what());
  } catch (const std::exception& error) {
    LogOnce(node, std::string("unreadable smartctl output: ") + error.what());
  }
}

void SmartCache::LogOnce(const std::string& node, const std::string& problem) {
  std::string& last = lastProblem_[node];
  if (last == problem) return;
  last = problem;
  LOG(ERROR) << "smartctl " << node << ": " << problem;
}

}  // namespace zeda::pelka::platform
