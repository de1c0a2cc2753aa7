// The object store: scopes of objects made during calls, and clones.
#include <atomic>
#include <cstdlib>
#include <cstring>

#include "core.hpp"

namespace zeda::host::detail {

struct Store::Scope {
  std::vector<std::unique_ptr<EncObject>> objects;
  std::vector<void*> blocks;  // from allocate(), owned by this scope
  ~Scope() {
    // Newest first: a container made later may refer to an older object.
    while (!objects.empty()) objects.pop_back();
    for (void* p : blocks) std::free(p);
  }
};

namespace {
std::atomic<std::uint64_t> nextSerial{1};
}  // namespace

Store::Store() : serial_(nextSerial.fetch_add(1, std::memory_order_relaxed)) {
  scopes_.push_back(std::make_unique<Scope>());
}

Store::~Store() {
  std::unique_lock<std::mutex> lock(mutex_);
  auto scopes = std::move(scopes_);
  auto clones = std::move(clones_);
  lock.unlock();
  while (!scopes.empty()) scopes.pop_back();
  clones.clear();
}

std::size_t Store::push() {
  std::lock_guard<std::mutex> lock(mutex_);
  const std::size_t before = scopes_.size();
  scopes_.push_back(std::make_unique<Scope>());
  return before;
}

void Store::popTo(std::size_t depth) {
  std::vector<std::unique_ptr<Scope>> closing;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const std::size_t keep = depth == 0 ? 1 : depth;  // the ambient scope stays
    while (scopes_.size() > keep) {
      closing.push_back(std::move(scopes_.back()));
      scopes_.pop_back();
    }
  }
  // Destroyed outside the lock: object destructors never call back, but keep
  // the critical section short anyway.
  closing.clear();
}

std::size_t Store::depth() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return scopes_.size();
}

void Store::adoptObject(std::unique_ptr<EncObject> obj) {
  std::lock_guard<std::mutex> lock(mutex_);
  scopes_.back()->objects.push_back(std::move(obj));
}

void Store::adoptCloneObject(std::unique_ptr<EncObject> obj) {
  std::lock_guard<std::mutex> lock(mutex_);
  clones_.push_back(std::move(obj));
}

void Store::markReleased(EncObject& obj) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!obj.released()) obj.markReleased();
}

std::unique_ptr<EncObject> Store::takeClone(EncObject& obj) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (obj.released()) return nullptr;
  obj.markReleased();
  for (auto it = clones_.begin(); it != clones_.end(); ++it) {
    if (it->get() == &obj) {
      std::unique_ptr<EncObject> out = std::move(*it);
      clones_.erase(it);
      return out;
    }
  }
  return nullptr;
}

std::size_t Store::liveClones() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return clones_.size();
}

void* Store::allocate(std::size_t size, bool zero) {
  void* p = zero ? std::calloc(1, size == 0 ? 1 : size) : std::malloc(size == 0 ? 1 : size);
  if (p == nullptr) return nullptr;
  std::lock_guard<std::mutex> lock(mutex_);
  scopes_.back()->blocks.push_back(p);
  return p;
}

void* Store::reallocate(void* ptr, std::size_t size) {
  if (ptr == nullptr) return allocate(size, false);
  std::lock_guard<std::mutex> lock(mutex_);
  for (auto& scope : scopes_) {
    for (auto& b : scope->blocks) {
      if (b == ptr) {
        void* q = std::realloc(ptr, size == 0 ? 1 : size);
        if (q != nullptr) b = q;
        return q;
      }
    }
  }
  return nullptr;  // not ours
}

void Store::deallocate(void* ptr) {
  if (ptr == nullptr) return;
  std::lock_guard<std::mutex> lock(mutex_);
  for (auto& scope : scopes_) {
    auto& blocks = scope->blocks;
    for (auto it = blocks.begin(); it != blocks.end(); ++it) {
      if (*it == ptr) {
        std::free(ptr);
        blocks.erase(it);
        return;
      }
    }
  }
}

}  // namespace zeda::host::detail
