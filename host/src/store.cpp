// The object store: scopes of objects made during calls, clones, and the
// slots of their faces.
#include <atomic>
#include <cstdlib>
#include <cstring>

#include <sanitizer/asan_interface.h>

#include "core.hpp"

namespace zeda::host::detail {

namespace {

// Under AddressSanitizer the face of a freed object is poisoned: the object
// manager's own objects are freed at once (OpenPegasus, sfcb), so any later
// use through the face, even of its handle, is reported as an error instead
// of being answered CMPI_RC_ERR_INVALID_HANDLE. Elsewhere these do nothing.
void poisonFace(void* slot) { ASAN_POISON_MEMORY_REGION(slot, FaceArena::kSlotSize); }
void unpoisonFace(void* slot) { ASAN_UNPOISON_MEMORY_REGION(slot, FaceArena::kSlotSize); }

}  // namespace

void* FaceArena::take() {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!free_.empty()) {
    void* slot = free_.back();
    free_.pop_back();
    unpoisonFace(slot);
    return slot;
  }
  if (usedInLast_ == kChunkSlots) {
    chunks_.push_back(std::make_unique<Slot[]>(kChunkSlots));
    usedInLast_ = 0;
  }
  return chunks_.back()[usedInLast_++].bytes;
}

void FaceArena::giveBack(void* slot) {
  std::lock_guard<std::mutex> lock(mutex_);
  free_.push_back(slot);
}

struct StoreScope {
  std::vector<std::unique_ptr<EncObject>> objects;
  std::vector<void*> blocks;  // from allocate(), owned by this scope
  // Face slots of clones released during this scope, reused once it closes.
  std::vector<std::pair<FaceArena*, void*>> recycle;
};

namespace {
std::atomic<std::uint64_t> nextSerial{1};
}  // namespace

void Store::dispose(StoreScope& scope, FaceArena& faces) {
  while (!scope.objects.empty()) {
    EncObject& obj = *scope.objects.back();
    obj.clearHandle();
    void* slot = obj.faceSlot_;
    scope.objects.pop_back();
    poisonFace(slot);
    faces.giveBack(slot);
  }
  for (void* p : scope.blocks) std::free(p);
  for (const auto& [arena, slot] : scope.recycle) arena->giveBack(slot);
}

Store::Store() : serial_(nextSerial.fetch_add(1, std::memory_order_relaxed)) {
  scopes_.push_back(std::make_unique<StoreScope>());
}

Store::~Store() {
  std::unique_lock<std::mutex> lock(mutex_);
  auto scopes = std::move(scopes_);
  auto clones = std::move(clones_);
  lock.unlock();
  while (!scopes.empty()) {
    dispose(*scopes.back(), faces_);
    scopes.pop_back();
  }
  clones.clear();
}

std::size_t Store::push() {
  std::lock_guard<std::mutex> lock(mutex_);
  const std::size_t before = scopes_.size();
  scopes_.push_back(std::make_unique<StoreScope>());
  return before;
}

void Store::popTo(std::size_t depth) {
  std::vector<std::unique_ptr<StoreScope>> closing;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const std::size_t keep = depth == 0 ? 1 : depth;  // the ambient scope stays
    while (scopes_.size() > keep) {
      scopedObjects_ -= scopes_.back()->objects.size();
      closing.push_back(std::move(scopes_.back()));
      scopes_.pop_back();
    }
  }
  // Destroyed outside the lock: object destructors never call back, but keep
  // the critical section short anyway.
  for (auto& scope : closing) dispose(*scope, faces_);
}

std::size_t Store::depth() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return scopes_.size();
}

void Store::adoptObject(std::unique_ptr<EncObject> obj, bool clone) {
  obj->faceSlot_ = faces_.take();
  obj->placeFace(obj->faceSlot_);
  obj->home_ = this;
  obj->clone_ = clone;
  std::lock_guard<std::mutex> lock(mutex_);
  auto& list = clone ? clones_ : scopes_.back()->objects;
  obj->scope_ = clone ? nullptr : scopes_.back().get();
  obj->index_ = list.size();
  list.push_back(std::move(obj));
  if (!clone) ++scopedObjects_;
}

std::unique_ptr<EncObject> Store::detach(EncObject& obj) {
  auto& list = obj.scope_ != nullptr ? obj.scope_->objects : clones_;
  std::unique_ptr<EncObject> out = std::move(list[obj.index_]);
  if (obj.index_ + 1 != list.size()) {
    list[obj.index_] = std::move(list.back());
    list[obj.index_]->index_ = obj.index_;
  }
  list.pop_back();
  if (obj.scope_ != nullptr) --scopedObjects_;
  return out;
}

void Store::release(EncObject& obj, Store& releasing) {
  std::unique_ptr<EncObject> freed;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    obj.clearHandle();
    freed = detach(obj);
  }
  // A clone's slot is reused once the releasing call's scope closes; any
  // other object's stays dead until this store goes.
  if (freed->isClone()) releasing.recycleLater(faces_, freed->faceSlot_);
  void* const slot = freed->faceSlot_;
  freed.reset();  // outside the lock, like popTo
  poisonFace(slot);
}

void Store::recycleLater(FaceArena& arena, void* slot) {
  std::lock_guard<std::mutex> lock(mutex_);
  scopes_.back()->recycle.emplace_back(&arena, slot);
}

std::size_t Store::liveClones() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return clones_.size();
}

std::size_t Store::liveObjects() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return scopedObjects_ + clones_.size();
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
