#include "InventoryStore.h"

#include <stdexcept>
#include <utility>

#include <glog/logging.h>

#include "ChildProcess.h"
#include "Config.h"
#include "Holds.h"
#include "SnapshotGrace.h"

namespace zeda::pelka::platform {

// Every public member declares the list of snapshots to let go of before it
// takes the mutex and moves leaving_ into it before releasing the mutex, so
// that freeing a large snapshot never holds up other look-ups.

namespace {

// Moves what is leaving into `expired` when the lock scope ends.
class LeavingGuard {
 public:
  LeavingGuard(std::vector<SnapshotRef>& leaving, std::vector<SnapshotRef>& expired)
      : leaving_(leaving), expired_(expired) {}
  ~LeavingGuard() {
    for (SnapshotRef& snapshot : leaving_) expired_.push_back(std::move(snapshot));
    leaving_.clear();
  }
  LeavingGuard(const LeavingGuard&) = delete;
  LeavingGuard& operator=(const LeavingGuard&) = delete;

 private:
  std::vector<SnapshotRef>& leaving_;
  std::vector<SnapshotRef>& expired_;
};

}  // namespace

InventoryStore& InventoryStore::Instance() {
  static InventoryStore store;
  return store;
}

InventoryStore::InventoryStore()
    : refresher_(
          [this](ConfiguredRead read, std::uint64_t resets) { Publish(std::move(read), resets); }) {
  // What the refresher thread uses is made first, so that at the end of the
  // process it goes after the store, whose destruction stops that thread.
  ConfiguredSources::Instance();
}

// The refresher stops before any snapshot goes.
InventoryStore::~InventoryStore() { refresher_.Stop(); }

SnapshotRef InventoryStore::Make(Inventory inventory) {
  // The deleter forgets the snapshot's NAS API objects first; the store
  // outlives every snapshot (its refresher stops first, holds end with
  // their threads).
  SnapshotRef snapshot(new Snapshot(std::move(inventory)), [this](const Snapshot* gone) {
    RemoveOrvis(*gone);
    delete gone;
    --live_;
  });
  ++live_;
  AddOrvis(*snapshot);
  return snapshot;
}

SnapshotRef InventoryStore::Serve() {
  const bool configured = !inMemory_ && !ConfigFilePath().path.empty();
  if (configured) refresher_.Sync();
  SnapshotRef snapshot;
  {
    Expired expired;
    const std::lock_guard<std::mutex> lock(mutex_);
    const LeavingGuard leaving(leaving_, expired);
    expired = TakeExpired();
    snapshot = CurrentLocked();
    if (!HoldsOpen()) currentHandedOutUnheld_ = true;
  }
  PinToHold(snapshot);
  return snapshot;
}

const Snapshot& InventoryStore::Current() { return *Serve(); }

const Nas& InventoryStore::Find(const std::string& name) {
  const SnapshotRef snapshot = Serve();
  const Nas* nas = snapshot->Find(name);
  if (nas == nullptr) {
    throw std::runtime_error("NAS not found: " + name);
  }
  return *nas;
}

zeda::orvi::Orvi& InventoryStore::OrviOf(const Nas& nas) {
  {
    const std::lock_guard<std::mutex> lock(orviMutex_);
    const auto it = orviByNas_.find(&nas);
    if (it != orviByNas_.end()) return *it->second;
  }
  const SnapshotRef snapshot = Serve();
  const Nas* same = snapshot->Find(nas.name);
  if (same == nullptr) {
    throw std::runtime_error("NAS not found: " + nas.name);
  }
  return *snapshot->Orvis().at(same);
}

void InventoryStore::UseInMemory(Inventory inventory) {
  SnapshotRef snapshot = Make(std::move(inventory));
  {
    Expired expired;
    const std::lock_guard<std::mutex> lock(mutex_);
    const LeavingGuard leaving(leaving_, expired);
    expired = TakeExpired();
    inMemory_ = true;
    Install(std::move(snapshot));
    resets_ = refresher_.Reset();
  }
  // Nothing the refresher reads is served now: it rests.
  refresher_.AwaitRest();
}

void InventoryStore::UseFile() {
  {
    Expired expired;
    const std::lock_guard<std::mutex> lock(mutex_);
    const LeavingGuard leaving(leaving_, expired);
    expired = TakeExpired();
    inMemory_ = false;
    Retire();
    fileStamp_.reset();
    fileError_.clear();
    configured_ = false;
    configuredError_.clear();
    resets_ = refresher_.Reset();
  }
  // A round under way publishes under the old reset count, which is now
  // dropped; past this point the refresher rests until the next look-up.
  refresher_.AwaitRest();
}

std::uint64_t InventoryStore::ParseCount() {
  const std::lock_guard<std::mutex> lock(mutex_);
  return parseCount_;
}

void InventoryStore::ForgetFileState() {
  const std::lock_guard<std::mutex> lock(mutex_);
  fileStamp_.reset();
}

std::size_t InventoryStore::SnapshotCount() {
  {
    Expired expired;
    const std::lock_guard<std::mutex> lock(mutex_);
    const LeavingGuard leaving(leaving_, expired);
    expired = TakeExpired();
  }
  return live_.load();
}

void InventoryStore::Publish(ConfiguredRead read, std::uint64_t resets) {
  SnapshotRef current;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (resets != resets_ || inMemory_) return;  // read before the store was reset
    current = current_;
  }
  // Building the snapshot (and comparing) happens outside the lock.
  SnapshotRef fresh;
  if (read.configured && read.inventory &&
      (current == nullptr || current->Records() != *read.inventory)) {
    fresh = Make(std::move(*read.inventory));
  }
  Expired expired;
  const std::lock_guard<std::mutex> lock(mutex_);
  const LeavingGuard leaving(leaving_, expired);
  if (resets != resets_ || inMemory_) return;
  configured_ = read.configured;
  configuredError_ = read.error;
  // Leaving the configuration later must read the inventory file afresh.
  if (configured_) fileStamp_.reset();
  if (fresh && current_ == current) Install(std::move(fresh));
}

SnapshotRef InventoryStore::CurrentLocked() {
  if (!inMemory_) {
    if (ConfigFilePath().path.empty() || !configured_) {
      RefreshFromFile();
    } else if (current_ == nullptr) {
      throw std::runtime_error(configuredError_);
    }
  }
  if (!current_) {
    // Only reachable in file mode: the file has never been read successfully.
    throw std::runtime_error(fileError_);
  }
  return current_;
}

void InventoryStore::RefreshFromFile() {
  const std::string path = InventoryFilePath();
  FileRead read = ReadFileIfChanged(path, fileStamp_);
  if (fileStamp_ && read.stamp == *fileStamp_) {
    return;  // same file as last time: its outcome stands
  }
  fileStamp_ = read.stamp;
  fileError_.clear();
  if (!read.error.empty()) {
    fileError_ = "Cannot read inventory file " + path + ": " + read.error;
  } else {
    ++parseCount_;
    try {
      Inventory inventory = ParseInventory(read.text, path);
      if (!current_ || current_->Records() != inventory) {
        Install(Make(std::move(inventory)));
      }
    } catch (const std::exception& error) {
      // ParseInventory words every refusal as one message; any other
      // exception is still a refused file, never a failed request.
      fileError_ = error.what();
    }
  }
  if (!fileError_.empty() && current_) {
    LOG(ERROR) << fileError_ << " (the inventory read before stays in service)";
  }
}

void InventoryStore::Install(SnapshotRef snapshot) {
  Retire();
  current_ = std::move(snapshot);
  currentHandedOutUnheld_ = false;
}

void InventoryStore::Retire() {
  if (!current_) return;
  if (currentHandedOutUnheld_) {
    retired_.emplace(Clock::now() + SnapshotGracePeriod(), std::move(current_));
  } else {
    leaving_.push_back(std::move(current_));
  }
  current_.reset();
  currentHandedOutUnheld_ = false;
}

void InventoryStore::AddOrvis(const Snapshot& snapshot) {
  const std::lock_guard<std::mutex> lock(orviMutex_);
  for (const auto& [nas, orvi] : snapshot.Orvis()) {
    orviByNas_.emplace(nas, orvi.get());
  }
}

void InventoryStore::RemoveOrvis(const Snapshot& snapshot) {
  const std::lock_guard<std::mutex> lock(orviMutex_);
  for (const auto& [nas, orvi] : snapshot.Orvis()) {
    orviByNas_.erase(nas);
  }
}

InventoryStore::Expired InventoryStore::TakeExpired() {
  Expired expired;
  if (retired_.empty()) return expired;
  const Clock::time_point now = Clock::now();
  while (!retired_.empty() && retired_.begin()->first <= now) {
    expired.push_back(std::move(retired_.begin()->second));
    retired_.erase(retired_.begin());
  }
  return expired;
}

}  // namespace zeda::pelka::platform
