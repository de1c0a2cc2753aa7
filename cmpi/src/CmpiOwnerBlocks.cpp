// CmpiOwnerBlocks: the per-thread lists of freed owner blocks.
#include "CmpiOwnerBlocks.h"

namespace cmpi_detail {

namespace {

// Enough for the objects of a few results in flight; beyond it blocks go
// back to the heap.
constexpr std::size_t kKeptBlocks = 256;

struct FreeBlock {
  FreeBlock* next;
};

// Trivially destructible, so it stays usable for the whole life of its
// thread, also while other thread-local objects are being destroyed.
struct FreeList {
  FreeBlock* head;
  std::size_t count;
  bool closed;  // the thread is ending: blocks go straight back to the heap
};

thread_local FreeList freeList{nullptr, 0, false};

// Frees the list when its thread ends. Touched whenever a block joins an
// empty list, which registers its destructor for that thread.
struct FreeListCloser {
  FreeListCloser() = default;
  FreeListCloser(const FreeListCloser&) = delete;
  FreeListCloser& operator=(const FreeListCloser&) = delete;
  ~FreeListCloser() {
    freeList.closed = true;
    while (freeList.head != nullptr) {
      FreeBlock* const next = freeList.head->next;
      ::operator delete(freeList.head);
      freeList.head = next;
    }
    freeList.count = 0;
  }
  void arm() {}
};

thread_local FreeListCloser closer;

}  // namespace

void* takeOwnerBlock() {
  FreeList& list = freeList;
  if (list.head == nullptr) {
    return ::operator new(kOwnerBlockBytes);
  }
  FreeBlock* const block = list.head;
  list.head = block->next;
  --list.count;
  return block;
}

void giveOwnerBlock(void* block) noexcept {
  FreeList& list = freeList;
  if (list.closed || list.count == kKeptBlocks) {
    ::operator delete(block);
    return;
  }
  if (list.head == nullptr) {
    closer.arm();
  }
  auto* const freed = static_cast<FreeBlock*>(block);
  freed->next = list.head;
  list.head = freed;
  ++list.count;
}

}  // namespace cmpi_detail
