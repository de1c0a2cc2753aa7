// The inventory in service and the snapshots served before it that a request
// may still be using.
//
// Where the inventory comes from:
//   - configuration mode (a configuration file applies, Config.h): the
//     Refresher reads the sources on its own thread and hands each outcome to
//     Publish; a look-up only takes the snapshot in service (after Sync);
//   - file mode: each look-up compares the inventory file's stamp with the
//     one last read and parses the file only when it changed;
//   - in memory: what UseInMemory was given (tests, benchmarks).
// A source that cannot be read leaves the inventory in service untouched and
// is logged once; with no good inventory yet, the look-up throws its message.
//
// Snapshot lifetime: a snapshot is shared by the store (while in service) and
// by every InventoryHold that took references from it (inventory/Library.h);
// it is freed when the last of them lets go. A look-up made outside any hold
// cannot say when it is done, so a snapshot handed out that way is kept for a
// grace period after it left service (SnapshotGracePeriod) and freed at the
// first look-up after that. Identical re-reads reuse the snapshot in service.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "ConfiguredSources.h"
#include "InventoryFile.h"
#include "Refresher.h"
#include "Snapshot.h"

namespace zeda::pelka::platform {

using SnapshotRef = std::shared_ptr<const Snapshot>;

class InventoryStore {
 public:
  static InventoryStore& Instance();

  // The inventory in service, refreshed from the file first in file mode.
  const Snapshot& Current();

  // Nas::Get: throws std::runtime_error "NAS not found: <name>".
  const Nas& Find(const std::string& name);

  // The NAS API object of a Nas of any snapshot still in memory; for a Nas
  // the library did not hand out, that of the NAS of the same name in service.
  zeda::orvi::Orvi& OrviOf(const Nas& nas);

  void UseInMemory(Inventory inventory);
  void UseFile();
  std::uint64_t ParseCount();
  void ForgetFileState();
  std::size_t SnapshotCount();

  // The refresher's way in: one round's outcome, read under reset count
  // `resets` (an outcome of a round older than the last UseFile is dropped).
  void Publish(ConfiguredRead read, std::uint64_t resets);

 private:
  using Clock = std::chrono::steady_clock;
  using Expired = std::vector<SnapshotRef>;

  InventoryStore();
  ~InventoryStore();

  // The snapshot in service, pinned to the thread's hold (or, without one,
  // marked as handed out unheld).
  SnapshotRef Serve();
  // All private members below expect mutex_ to be held.
  SnapshotRef CurrentLocked();
  void RefreshFromFile();
  // Puts `snapshot` in service; the one in service before is retired.
  void Install(SnapshotRef snapshot);
  // Takes the inventory in service out of service: kept for the grace
  // period when it was handed out outside a hold, else left to its holders.
  void Retire();
  // Takes out the retired snapshots whose grace period is over, and those
  // left to their holders, for the caller to let go of once the mutex is
  // released.
  Expired TakeExpired();
  SnapshotRef Make(Inventory inventory);
  // The NAS API objects of every snapshot in memory, kept by the snapshots'
  // deleter.
  void AddOrvis(const Snapshot& snapshot);
  void RemoveOrvis(const Snapshot& snapshot);

  // First members: every snapshot below is let go of before them.
  std::mutex orviMutex_;
  std::map<const Nas*, zeda::orvi::Orvi*> orviByNas_;  // of every snapshot in memory
  std::atomic<std::size_t> live_{0};

  std::mutex mutex_;
  SnapshotRef current_;
  bool currentHandedOutUnheld_ = false;
  // Snapshots handed out outside a hold, out of service, by the time they
  // may be let go of; grace periods may differ (read at each retirement).
  std::multimap<Clock::time_point, SnapshotRef> retired_;
  Expired leaving_;  // let go of once the mutex is released
  bool inMemory_ = false;
  std::optional<FileStamp> fileStamp_;  // of the last read attempt
  std::string fileError_;               // its failure, empty when it succeeded
  std::uint64_t parseCount_ = 0;
  // Configuration mode: the last round's outcome.
  bool configured_ = false;
  std::string configuredError_;
  std::uint64_t resets_ = 0;

  // Last member: its thread stops before anything above goes.
  Refresher refresher_;
};

}  // namespace zeda::pelka::platform
