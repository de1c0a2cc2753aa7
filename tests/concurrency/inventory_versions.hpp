// Versions of an inventory file that each carry their number in every disk,
// and a writer that keeps replacing the file with newer versions.
//
// Version v gives every disk rpm kBaseRpm + v, model "model-v<v>" and
// firmware "FW<v>"; the rest (names, identifiers, capacities, groups) stays as
// in the base inventory, so object paths and pool totals are the same in
// every version. (A model is cut out of the product text to give the
// manufacturer: "model-v..." occurs in no product.)
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

#include <nlohmann/json.hpp>

namespace zeda::concurrency_test {

// Above every rotation rate of the recorded machine, whose disks serve beside
// the versions in configuration mode.
inline constexpr std::uint64_t kBaseRpm = 10000;
inline constexpr char kModelPrefix[] = "model-v";
inline constexpr char kFirmwarePrefix[] = "FW";

// The text of version v of base (an inventory document).
std::string inventoryVersion(const nlohmann::json& base, long v);

// Writes text to path: through a temporary file renamed over it (atomic), or
// by truncating and rewriting the file in place (a reader may see it torn).
void replaceAtomically(const std::string& path, const std::string& text);
void rewriteInPlace(const std::string& path, const std::string& text);

// A thread writing versions 1, 2, 3 ... to path every periodMicros,
// alternating the two ways, until stop() or destruction.
class VersionWriter {
 public:
  VersionWriter(nlohmann::json base, std::string path, long periodMicros);
  ~VersionWriter();
  VersionWriter(const VersionWriter&) = delete;
  VersionWriter& operator=(const VersionWriter&) = delete;

  void stop();
  // The newest version completely written so far.
  long written() const { return written_.load(); }
  // Why writing failed (the thread then stops); empty while all is well.
  std::string error() const;

 private:
  void run();

  nlohmann::json base_;
  std::string path_;
  long periodMicros_;
  std::atomic<bool> stop_{false};
  std::atomic<long> written_{0};
  mutable std::mutex errorMutex_;
  std::string error_;
  std::thread thread_;  // last: starts once everything above is ready
};

}  // namespace zeda::concurrency_test
