#include "InventoryStore.h"

#include <stdexcept>

#include <glog/logging.h>

namespace zeda::pelka::platform {

InventoryStore& InventoryStore::Instance() {
  static InventoryStore store;
  return store;
}

const Snapshot& InventoryStore::Current() {
  const std::lock_guard<std::mutex> lock(mutex_);
  return CurrentLocked();
}

const Nas& InventoryStore::Find(const std::string& name) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const Nas* nas = CurrentLocked().Find(name);
  if (nas == nullptr) {
    throw std::runtime_error("NAS not found: " + name);
  }
  return *nas;
}

zeda::orvi::Orvi& InventoryStore::OrviOf(const Nas& nas) {
  const std::lock_guard<std::mutex> lock(mutex_);
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
  const std::lock_guard<std::mutex> lock(mutex_);
  inMemory_ = true;
  current_ = nullptr;
  Install(std::move(inventory));
}

void InventoryStore::UseFile() {
  const std::lock_guard<std::mutex> lock(mutex_);
  inMemory_ = false;
  current_ = nullptr;
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

const Snapshot& InventoryStore::CurrentLocked() {
  if (!inMemory_ && !RefreshFromConfiguration()) {
    RefreshFromFile();
  }
  if (current_ == nullptr) {
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
      if (current_ == nullptr || current_->Records() != inventory) {
        Install(std::move(inventory));
      }
    } catch (const std::runtime_error& error) {
      fileError_ = error.what();
    }
  }
  if (!fileError_.empty() && current_ != nullptr) {
    LOG(ERROR) << fileError_ << " (the inventory read before stays in service)";
  }
}

void InventoryStore::Install(Inventory inventory) {
  snapshots_.reserve(snapshots_.size() + 1);  // nothing below throws after the map is filled
  auto snapshot = std::make_unique<const Snapshot>(std::move(inventory));
  for (const auto& [nas, orvi] : snapshot->Orvis()) {
    orviByNas_.emplace(nas, orvi.get());
  }
  current_ = snapshot.get();
  snapshots_.push_back(std::move(snapshot));
}

}  // namespace zeda::pelka::platform
