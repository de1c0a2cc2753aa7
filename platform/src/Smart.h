// SMART answers of the disks of this machine, read with `smartctl --json`
// and kept for a time to live.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ChildProcess.h"

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
  // Percentage of its rated media life the drive has left: 100 less the
  // "percentage used" it reports in a vendor-neutral wear indicator (NVMe
  // health log, ATA device statistics, SCSI solid state media log page), 0
  // once that reaches 100. Nothing when the answer has no such indicator.
  std::optional<std::uint32_t> mediaLifeLeftPercent;
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
//
// smartctl runs are asynchronous: a stale disk is asked once (one smartctl
// per disk, never two at a time for one disk), and its answer is taken in
// whenever it arrives; a run still going at the timeout is killed with what
// it started and given up (ChildProcess.h), never waited for.
class SmartCache {
 public:
  using Clock = std::chrono::steady_clock;

  explicit SmartCache(SmartSettings settings);
  ~SmartCache();
  SmartCache(const SmartCache&) = delete;
  SmartCache& operator=(const SmartCache&) = delete;

  // Reports for device nodes such as /dev/sda (nodes the caller found
  // itself). Takes in the answers that have arrived, asks again for stale or
  // missing ones, and waits for the answers under way at most `wait` (never
  // longer than the timeout). A disk that does not answer in time keeps its
  // last report, or has none. No entry for a node means its health is
  // unknown.
  // `askAgain` false: only takes in what has arrived, starts no run.
  std::map<std::string, SmartReport> Reports(const std::vector<std::string>& deviceNodes,
                                             std::chrono::milliseconds wait, bool askAgain = true);
  // The same, waiting up to the timeout.
  std::map<std::string, SmartReport> Reports(const std::vector<std::string>& deviceNodes);

  // Whether runs are under way whose answers have not been taken in.
  bool Asking() const;
  // Waits until an answer under way arrives or ends, at most until
  // `deadline`, and takes it in; true when an answer changed a report or
  // a run ended.
  bool AwaitAnswers(Clock::time_point deadline);

  // How many smartctl runs were started (for tests and measurements).
  std::uint64_t Runs() const;

 private:
  struct Entry {
    std::optional<SmartReport> report;  // the last good answer
    Clock::time_point asked;
    bool everAsked = false;
  };
  struct Asked;  // one run under way

  // All below expect mutex_ to be held.
  void Ask(const std::string& node);
  // Takes in the runs that have ended and gives up those past the timeout;
  // returns how many ended.
  std::size_t Collect();
  void TakeAnswer(const std::string& node, const ChildOutcome& outcome);
  void AwaitLocked(Clock::time_point deadline);
  // One ERROR line per distinct problem of a node, until the node answers.
  void LogOnce(const std::string& node, const std::string& problem);

  const SmartSettings settings_;
  const std::string program_;
  mutable std::mutex mutex_;
  std::map<std::string, Entry> entries_;
  std::map<std::string, std::unique_ptr<Asked>> asking_;
  std::map<std::string, std::string> lastProblem_;
  bool missingLogged_ = false;
  std::uint64_t runs_ = 0;
};

}  // namespace zeda::pelka::platform
