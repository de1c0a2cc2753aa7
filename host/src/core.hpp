// Internals shared by the broker side of the host: the per-broker object
// store, the base of every encapsulated object, status helpers.
//
// Every encapsulated object (CMPIString, CMPIInstance ...) is a C++ object
// derived from EncObject with a CMPI face {hdl, ft}; hdl points back to the
// EncObject. The face lives in a slot of the store that adopted the object,
// apart from the object, so that it can outlive it: objects live in the scope
// that was current when they were made (a provider call, a mark() of the
// memory table, or the host's ambient scope) and die with it; clones live
// until release() or until the host goes. release() frees the object at
// once and leaves its face behind with hdl = NULL, so a second release or a
// late use answers CMPI_RC_ERR_INVALID_HANDLE instead of touching freed
// memory. The face of a released object stays until its store goes (a
// request's store goes with the request); that of a released clone until
// the scope of the releasing call closes, then its slot is reused.
// Under AddressSanitizer the face of a released object, and of every object
// of a closed scope, is poisoned instead: real object managers free both at
// once, so a late use is reported there as the crash it would be in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <cmpidt.h>
#include <cmpift.h>

namespace zeda::host::detail {

class Broker;
class Store;
struct StoreScope;

// Slots for the faces of encapsulated objects: every CMPI face is two
// pointers. A slot handed out stays at its address until given back or
// until the arena goes. Locked on its own: a clone's slot comes back from
// whichever request released it.
class FaceArena {
 public:
  static constexpr std::size_t kSlotSize = 2 * sizeof(void*);
  FaceArena() = default;
  FaceArena(const FaceArena&) = delete;
  FaceArena& operator=(const FaceArena&) = delete;

  void* take();
  void giveBack(void* slot);

 private:
  struct Slot {
    alignas(void*) unsigned char bytes[kSlotSize];
  };
  static constexpr std::size_t kChunkSlots = 256;
  std::mutex mutex_;
  std::vector<std::unique_ptr<Slot[]>> chunks_;
  std::size_t usedInLast_ = kChunkSlots;  // slots handed out of the newest chunk
  std::vector<void*> free_;
};

class EncObject {
 public:
  explicit EncObject(Broker& broker) : broker_(&broker) {}
  virtual ~EncObject() = default;
  EncObject(const EncObject&) = delete;
  EncObject& operator=(const EncObject&) = delete;

  Broker& broker() const { return *broker_; }
  bool isClone() const { return clone_; }
  // The store that holds the object (set when a store adopts it).
  Store& home() const { return *home_; }

 private:
  friend class Store;
  // Makes the face in `slot` (FaceArena::kSlotSize bytes).
  virtual void placeFace(void* slot) = 0;
  // Marks the face dead: every later call through it answers
  // CMPI_RC_ERR_INVALID_HANDLE.
  virtual void clearHandle() = 0;

  Broker* broker_;
  bool clone_ = false;
  // Where the store keeps the object: the scope (null for a clone) and the
  // position in that scope's list or in the store's clones.
  Store* home_ = nullptr;
  StoreScope* scope_ = nullptr;
  std::size_t index_ = 0;
  void* faceSlot_ = nullptr;
};

// An EncObject with its CMPI face of type Face (CMPIString, CMPIArray ...).
template <typename Face>
class Enc : public EncObject {
 public:
  using FT = std::remove_pointer_t<decltype(std::declval<Face&>().ft)>;
  static_assert(sizeof(Face) <= FaceArena::kSlotSize && alignof(Face) <= alignof(void*),
                "a CMPI face is two pointers");
  Enc(Broker& broker, FT* ft) : EncObject(broker), ft_(ft) {}
  // Valid once a store has adopted the object (every maker does at once).
  Face* face() { return face_; }

 private:
  void placeFace(void* slot) override {
    face_ = new (slot) Face{static_cast<EncObject*>(this), ft_};
  }
  void clearHandle() override { face_->hdl = nullptr; }

  FT* ft_;
  Face* face_ = nullptr;
};

// The object behind a face, or null for a null or released face.
template <typename Obj, typename Face>
Obj* unwrap(const Face* face) {
  if (face == nullptr || face->hdl == nullptr) return nullptr;
  return static_cast<Obj*>(static_cast<EncObject*>(face->hdl));
}

// Owner of the objects the broker makes for one request (or, for the broker's
// own store, outside requests, and every clone). Locked: a provider may use
// the broker from threads of its own during a call.
class Store {
 public:
  Store();
  ~Store();
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  // Scopes nest; depth() is the number of open scopes (the ambient one
  // included). push() opens a scope and returns the depth before it, which
  // popTo() takes to close it and every scope opened after it.
  std::size_t push();
  void popTo(std::size_t depth);
  std::size_t depth() const;

  // Takes an object into the current scope and gives it its face.
  template <typename T>
  T* adopt(std::unique_ptr<T> obj) {
    T* raw = obj.get();
    adoptObject(std::move(obj), false);
    return raw;
  }
  // Takes a clone: it lives until release() or the end of the store.
  template <typename T>
  T* adoptClone(std::unique_ptr<T> obj) {
    T* raw = obj.get();
    adoptObject(std::move(obj), true);
    return raw;
  }
  // Frees one of this store's objects now and leaves its face dead (see the
  // top of this file); `releasing` is the store of the releasing call, whose
  // current scope hands a clone's face slot back when it closes.
  void release(EncObject& obj, Store& releasing);
  std::size_t liveClones() const;
  // Objects held (clones included), for tests of the store.
  std::size_t liveObjects() const;
  // Distinct for every store made in the process: a store made later at the
  // same address is told apart from an older one.
  std::uint64_t serial() const { return serial_; }

  // Memory handed out by the memory table: freed with the current scope
  // unless freed before.
  void* allocate(std::size_t size, bool zero);
  void* reallocate(void* ptr, std::size_t size);
  void deallocate(void* ptr);

 private:
  void adoptObject(std::unique_ptr<EncObject> obj, bool clone);
  // Takes obj out of the list that holds it (swapping the last one in).
  std::unique_ptr<EncObject> detach(EncObject& obj);
  void recycleLater(FaceArena& arena, void* slot);
  // Frees what a closed scope held: objects newest first, then the memory
  // blocks. The faces of its objects go dead and, like the slots of the
  // clones released during the scope, back to their arenas: nothing may use
  // them once the scope has closed.
  static void dispose(StoreScope& scope, FaceArena& faces);

  const std::uint64_t serial_;
  // Declared first: the faces outlive every object and scope of the store.
  FaceArena faces_;
  mutable std::mutex mutex_;
  std::vector<std::unique_ptr<StoreScope>> scopes_;
  std::vector<std::unique_ptr<EncObject>> clones_;
  std::size_t scopedObjects_ = 0;
};

// Closes a scope on destruction (also when a provider call throws).
class ScopeGuard {
 public:
  explicit ScopeGuard(Store& store) : store_(store), depth_(store.push()) {}
  ~ScopeGuard() { store_.popTo(depth_); }
  ScopeGuard(const ScopeGuard&) = delete;
  ScopeGuard& operator=(const ScopeGuard&) = delete;

 private:
  Store& store_;
  std::size_t depth_;
};

// Thrown inside the broker to answer a specific return code; guarded()
// turns it into the status.
class RcError : public std::exception {
 public:
  explicit RcError(CMPIrc rc) : rc_(rc) {}
  CMPIrc rc() const { return rc_; }
  const char* what() const noexcept override { return "CMPI failure"; }

 private:
  CMPIrc rc_;
};

inline CMPIStatus status(CMPIrc rc) { return CMPIStatus{rc, nullptr}; }
inline void setStatus(CMPIStatus* out, CMPIrc rc) {
  if (out != nullptr) *out = status(rc);
}
inline CMPIData nullData(CMPIType type = CMPI_null) {
  CMPIData d{};
  d.type = type;
  d.state = CMPI_nullValue;
  return d;
}
inline CMPIData notFoundData() {
  CMPIData d = nullData();
  d.state = CMPI_nullValue | CMPI_notFound;
  return d;
}

// Runs f, turning any C++ exception into CMPI_RC_ERR_FAILED: nothing thrown
// inside the broker may unwind into a provider's C frames.
template <typename F>
CMPIStatus guarded(F&& f) noexcept {
  try {
    return f();
  } catch (const RcError& e) {
    return status(e.rc());
  } catch (...) {
    return status(CMPI_RC_ERR_FAILED);
  }
}

// Same for functions that return a value and report through CMPIStatus*.
template <typename R, typename F>
R guardedValue(CMPIStatus* rc, R fallback, F&& f) noexcept {
  try {
    return f();
  } catch (const RcError& e) {
    setStatus(rc, e.rc());
    return fallback;
  } catch (...) {
    setStatus(rc, CMPI_RC_ERR_FAILED);
    return fallback;
  }
}

}  // namespace zeda::host::detail
