// SMART answers of the disks of this machine, read with `smartctl --json`
// and kept for a time to live.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace zeda::pelka::platform {

// What one smartctl answer tells about a disk.
struct SmartReport {
  enum class Verdict {
    Passed,         // the overall health self-assessment passed
    Failed,         // it failed: the drive predicts its own failure
    CommandFailed,  // the drive has SMART but a SMART command failed
    NoSmart,        // no SMART answer for this device (unsupported or unreadable)
  };
  Verdict verdict = Verdict::NoSmart;
  bool attributesAtThreshold = false;  // a pre-failure attribute is at or below its threshold
  std::string reason;                  // why, for anything but Passed
  std::optional<std::uint32_t> rotationRate;  // rpm; 0 for solid state
  std::string model;
  std::string serial;
  std::string firmware;
};

// Reads one `smartctl --json` output with the exit status smartctl ended
// with. Throws std::runtime_error when the output is not smartctl's JSON.
SmartReport ParseSmartctlOutput(const std::string& output, int exitStatus);

struct SmartSettings {
  std::string smartctl;
  std::chrono::seconds ttl{300};
  std::chrono::milliseconds timeout{5000};
};

// The last answer of every disk asked about, refreshed when older than the
// time to live. Thread safe.
class SmartCache {
 public:
  explicit SmartCache(SmartSettings settings);

  // Reports for device nodes such as /dev/sda (nodes the caller found
  // itself). Stale or missing ones are asked for with one smartctl per disk,
  // all at once, waiting no longer than the timeout; a disk that does not
  // answer in time keeps its last report, or has none. No entry for a node
  // means its health is unknown.
  std::map<std::string, SmartReport> Reports(const std::vector<std::string>& deviceNodes);

  // How many smartctl runs were started (for tests and measurements).
  std::uint64_t Runs() const;

 private:
  struct Entry {
    std::optional<SmartReport> report;  // the last good answer
    std::chrono::steady_clock::time_point asked;
    bool everAsked = false;
  };

  void Ask(const std::vector<std::string>& nodes);
  // One ERROR line per distinct problem of a node, until the node answers.
  void LogOnce(const std::string& node, const std::string& problem);

  const SmartSettings settings_;
  const std::string program_;
  mutable std::mutex mutex_;
  std::map<std::string, Entry> entries_;
  std::map<std::string, std::string> lastProblem_;
  bool missingLogged_ = false;
  std::uint64_t runs_ = 0;
};

}  // namespace zeda::pelka::platform
