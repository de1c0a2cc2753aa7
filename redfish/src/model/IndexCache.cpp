#include "model/IndexCache.h"

#include <exception>
#include <optional>

#include <glog/logging.h>

#include "inventory/Library.h"

namespace zeda::redfish::model {

IndexCache::~IndexCache() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  if (thread_.joinable()) thread_.join();
}

std::shared_ptr<const InventoryIndex> IndexCache::Current() {
  const void* source = &zeda::pelka::GetNasList();
  {
    std::unique_lock<std::mutex> lock(mutex_);
    if (pinned_ && pinned_->source == source) return pinned_;
    if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
    const std::uint64_t ticket = ++requested_;
    changed_.notify_all();
    changed_.wait(lock, [&] { return finished_ >= ticket || stopping_; });
    if (pinned_ && pinned_->source == source) return pinned_;
    ++builds_;
  }
  // The inventory changed again meanwhile (or the thread could not index it):
  // this request's own hold keeps its inventory alive while it is indexed.
  return BuildIndex();
}

std::uint64_t IndexCache::Builds() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return builds_;
}

void IndexCache::Run() {
  std::optional<zeda::pelka::InventoryHold> hold;
  std::unique_lock<std::mutex> lock(mutex_);
  while (true) {
    changed_.wait(lock, [&] { return requested_ > finished_ || stopping_; });
    if (stopping_) break;
    const std::uint64_t ticket = requested_;
    // The old index leaves the cache before its hold ends: once its
    // inventory is freed, a newer one may take the same address.
    pinned_.reset();
    lock.unlock();
    // Replies still streaming from the old index read only its copies.
    hold.reset();
    hold.emplace();
    std::shared_ptr<const InventoryIndex> index;
    try {
      index = BuildIndex();
    } catch (const std::exception& e) {
      // The requests build their own index and answer the failure.
      LOG(ERROR) << "Redfish: cannot index the inventory: " << e.what();
    }
    lock.lock();
    pinned_ = std::move(index);
    ++builds_;
    finished_ = ticket;
    changed_.notify_all();
  }
  lock.unlock();
  hold.reset();
}

IndexCache& ServiceIndexCache() {
  // Never destroyed: its thread may hold an inventory of the library, whose
  // own statics can be gone by the time this one would be destroyed.
  static IndexCache* const cache = new IndexCache;
  return *cache;
}

}  // namespace zeda::redfish::model
