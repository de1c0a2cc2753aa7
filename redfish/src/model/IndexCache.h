// The index of the inventory in service, built once per inventory.
//
// Whether a request reads the inventory the index was built from is told by
// the address of the library's NAS list. An address alone could be reused
// by a later inventory once the indexed one is freed, so the cache keeps the
// indexed inventory alive: a thread of its own builds every index inside an
// InventoryHold that it keeps open until the next index replaces it. While
// the hold stands no other inventory can sit at that address, so an equal
// address is the same inventory. One indexed inventory stays in memory
// besides the one in service, until the next request after a change.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>

#include "model/InventoryIndex.h"

namespace zeda::redfish::model {

class IndexCache {
 public:
  IndexCache() = default;
  ~IndexCache();
  IndexCache(const IndexCache&) = delete;
  IndexCache& operator=(const IndexCache&) = delete;

  // The index of the inventory the calling request reads. Call it inside the
  // request's InventoryHold. When the inventory changes again while the
  // index is being built, the request gets an index of its own, built on
  // its own thread. The library's exceptions pass through.
  std::shared_ptr<const InventoryIndex> Current();

  // How many indexes have been built (by the cache's thread and for single
  // requests), for tests and measurements.
  std::uint64_t Builds() const;

 private:
  void Run();

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::shared_ptr<const InventoryIndex> pinned_;  // built inside the thread's hold
  std::uint64_t requested_ = 0;                   // rebuilds asked for
  std::uint64_t finished_ = 0;                    // rebuilds done (with or without success)
  std::uint64_t builds_ = 0;
  bool stopping_ = false;
  std::thread thread_;  // started at the first rebuild
};

// The cache the resources use.
IndexCache& ServiceIndexCache();

}  // namespace zeda::redfish::model
