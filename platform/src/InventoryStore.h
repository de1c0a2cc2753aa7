// The inventory in service and the snapshots served before it that a request
// may still be using.
//
// In file mode each look-up compares the inventory file's stamp with the one
// last read and parses the file only when it changed. A changed file that
// cannot be read or parsed leaves the inventory in service untouched and is
// logged once; with no good inventory yet, the look-up throws its message.
//
// Snapshot lifetime: callers hold Nas&, std::list<Nas>& and Orvi& without
// telling the library when they are done, so a snapshot cannot be counted
// free; instead a request is bounded in time. A snapshot taken out of service
// is kept for a grace period (SnapshotGracePeriod) and freed at the first
// look-up after it: every request that took references from it took them
// before it left service, so a request shorter than the grace period never
// sees it freed. Memory stays bounded by the snapshots superseded within one
// grace period; identical re-reads reuse the snapshot in service.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "InventoryFile.h"
#include "Snapshot.h"

namespace zeda::pelka::platform {

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

 private:
  using Clock = std::chrono::steady_clock;
  using Expired = std::vector<std::unique_ptr<const Snapshot>>;

  InventoryStore() = default;

  // All private members below expect mutex_ to be held.
  const Snapshot& CurrentLocked();
  void RefreshFromFile();
  bool RefreshFromConfiguration();  // false when there is no configuration file
  // Puts `inventory` in service; the one in service before is retired.
  void Install(Inventory inventory);
  // Takes the inventory in service out of service, to be freed after the
  // grace period.
  void Retire();
  // Records (or forgets) the NAS API object of every Nas of `snapshot`;
  // AddOrvis adds all or nothing.
  void AddOrvis(const Snapshot& snapshot);
  void RemoveOrvis(const Snapshot& snapshot);
  // Takes out the retired snapshots whose grace period is over, for the
  // caller to destroy once the mutex is released.
  Expired TakeExpired();

  std::mutex mutex_;
  std::unique_ptr<const Snapshot> current_;
  // Snapshots out of service by the time they may be freed; grace periods
  // may differ (the setting is read at each retirement).
  std::multimap<Clock::time_point, std::unique_ptr<const Snapshot>> retired_;
  std::map<const Nas*, zeda::orvi::Orvi*> orviByNas_;  // of current_ and retired_
  bool inMemory_ = false;
  std::optional<FileStamp> fileStamp_;  // of the last read attempt
  std::string fileError_;               // its failure, empty when it succeeded
  std::uint64_t parseCount_ = 0;
};

}  // namespace zeda::pelka::platform
