// Memory for the shared control blocks of CmpiOwner. A provider makes and
// releases several objects per result (a path, an instance, a string per
// text property ...), and each owner needs a small control block; taking
// those from a short per-thread list of freed blocks keeps the heap out of
// the per-result path. A block freed on another thread than the one that
// took it joins that other thread's list; each list keeps at most a few
// hundred blocks and frees the rest, and all of them when its thread ends.
#ifndef ZEDA_CMPI_CMPIOWNERBLOCKS_H
#define ZEDA_CMPI_CMPIOWNERBLOCKS_H

#include <cstddef>
#include <new>

namespace cmpi_detail {

// Size of one block, enough for the control block of a shared owner with a
// function-pointer deleter.
inline constexpr std::size_t kOwnerBlockBytes = 64;

// A block of kOwnerBlockBytes bytes aligned for any scalar type; throws
// std::bad_alloc like operator new.
void* takeOwnerBlock();
// Gives back a block from takeOwnerBlock, on any thread.
void giveOwnerBlock(void* block) noexcept;

// Standard allocator over those blocks for the control block of a
// std::shared_ptr; anything larger goes to operator new.
template <class T>
struct OwnerBlockAllocator {
  using value_type = T;

  OwnerBlockAllocator() = default;
  template <class U>
  OwnerBlockAllocator(const OwnerBlockAllocator<U>& /*other*/) noexcept {}  // NOLINT: rebinding

  static constexpr bool fitsBlock(std::size_t n) {
    return n == 1 && sizeof(T) <= kOwnerBlockBytes && alignof(T) <= alignof(std::max_align_t);
  }

  T* allocate(std::size_t n) {
    if (fitsBlock(n)) {
      return static_cast<T*>(takeOwnerBlock());
    }
    return static_cast<T*>(::operator new(n * sizeof(T)));
  }

  void deallocate(T* p, std::size_t n) noexcept {
    if (fitsBlock(n)) {
      giveOwnerBlock(p);
    } else {
      ::operator delete(p);
    }
  }

  template <class U>
  bool operator==(const OwnerBlockAllocator<U>& /*other*/) const noexcept {
    return true;
  }
  template <class U>
  bool operator!=(const OwnerBlockAllocator<U>& /*other*/) const noexcept {
    return false;
  }
};

}  // namespace cmpi_detail

#endif
