#include "InventoryStore.h"

#include <stdexcept>

#include <glog/logging.h>

#include "SnapshotGrace.h"

namespace zeda::pelka::platform {

// Every public member takes the mutex and, first, declares the list of
// expired snapshots that TakeExpired fills: declared before the lock, it is
// destroyed after the lock is released, so freeing a large snapshot never
// holds up other look-ups.

InventoryStore& InventoryStore::Instance() {
  static InventoryStore store;
  return store;
}

const Snapshot& InventoryStore::Current() {
  Expired expired;
  const std::lock_guard<std::mutex> lock(mutex_);
  expired = TakeExpired();
  return CurrentLocked();
}

const Nas& InventoryStore::Find(const std::string& name) {
  Expired expired;
  const std::lock_guard<std::mutex> lock(mutex_);
  expired = TakeExpired();
  const Nas* nas = CurrentLocked().Find(name);
  if (nas == nullptr) {
    throw std::runtime_error("NAS not found: " + name);
  }
  return *nas;
}

zeda::orvi::Orvi& InventoryStore::OrviOf(const Nas& nas) {
  Expired expired;
  const std::lock_guard<std::mutex> lock(mutex_);
  expired = TakeExpired();
  const auto it = orviByNas_.find(&nas);
  if (it != orviByNas_.end()) {
    return *it->second;
  }
  const Snapshot& snapshot = CurrentLocked();
  const Nas* same = snapshot.Find(nas.name);
  if (same == nullptr) {
    throw std::runtime_error("NAS not found: " + nas.name);
  }
  return *snapshot.Orvis().at(same);
}

void InventoryStore::UseInMemory(Inventory inventory) {
  Expired expired;
  const std::lock_guard<std::mutex> lock(mutex_);
  expired = TakeExpired();
  inMemory_ = true;
  Install(std::move(inventory));
}

void InventoryStore::UseFile() {
  Expired expired;
  const std::lock_guard<std::mutex> lock(mutex_);
  expired = TakeExpired();
  inMemory_ = false;
  Retire();
  fileStamp_.reset();
  fileError_.clear();
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
  Expired expired;
  const std::lock_guard<std::mutex> lock(mutex_);
  expired = TakeExpired();
  return retired_.size() + (current_ ? 1 : 0);
}

const Snapshot& InventoryStore::CurrentLocked() {
  if (!inMemory_ && !RefreshFromConfiguration()) {
    RefreshFromFile();
  }
  if (!current_) {
    // Only reachable in file mode: the file has never been read successfully.
    throw std::runtime_error(fileError_);
  }
  return *current_;
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
        Install(std::move(inventory));
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

void InventoryStore::Install(Inventory inventory) {
  auto snapshot = std::make_unique<const Snapshot>(std::move(inventory));
  AddOrvis(*snapshot);
  try {
    Retire();
  } catch (...) {
    RemoveOrvis(*snapshot);
    throw;
  }
  current_ = std::move(snapshot);
}

void InventoryStore::Retire() {
  if (!current_) return;
  // The slot first: if it cannot be had, nothing has changed.
  const auto slot = retired_.emplace(Clock::now() + SnapshotGracePeriod(), nullptr);
  slot->second = std::move(current_);
}

void InventoryStore::AddOrvis(const Snapshot& snapshot) {
  try {
    for (const auto& [nas, orvi] : snapshot.Orvis()) {
      orviByNas_.emplace(nas, orvi.get());
    }
  } catch (...) {
    RemoveOrvis(snapshot);
    throw;
  }
}

void InventoryStore::RemoveOrvis(const Snapshot& snapshot) {
  for (const auto& [nas, orvi] : snapshot.Orvis()) {
    orviByNas_.erase(nas);
  }
}

InventoryStore::Expired InventoryStore::TakeExpired() {
  Expired expired;
  if (retired_.empty()) return expired;
  const Clock::time_point now = Clock::now();
  while (!retired_.empty() && retired_.begin()->first <= now) {
    std::unique_ptr<const Snapshot> snapshot = std::move(retired_.begin()->second);
    retired_.erase(retired_.begin());
    RemoveOrvis(*snapshot);
    expired.push_back(std::move(snapshot));
  }
  return expired;
}

}  // namespace zeda::pelka::platform
