// Internals shared by the broker side of the host: the per-broker object
// store, the base of every encapsulated object, status helpers.
//
// Every encapsulated object (CMPIString, CMPIInstance ...) is a C++ object
// derived from EncObject that embeds its CMPI face {hdl, ft}; hdl points back
// to the EncObject. Objects live in the scope that was current when they were
// made (a provider call, a mark() of the memory table, or the host's ambient
// scope) and die with it; clones live until release() or until the host goes.
// release() marks an object dead (hdl = NULL) and keeps its memory until the
// current scope closes (a released clone moves into it), so a second release
// or a late use within the call answers CMPI_RC_ERR_INVALID_HANDLE instead of
// touching freed memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <cmpidt.h>
#include <cmpift.h>

namespace zeda::host::detail {

class Broker;

class EncObject {
 public:
  explicit EncObject(Broker& broker) : broker_(&broker) {}
  virtual ~EncObject() = default;
  EncObject(const EncObject&) = delete;
  EncObject& operator=(const EncObject&) = delete;

  Broker& broker() const { return *broker_; }
  bool isClone() const { return clone_; }
  bool released() const { return released_; }
  void setClone() { clone_ = true; }
  // Marks the object dead: its face answers every later call with
  // CMPI_RC_ERR_INVALID_HANDLE. What it holds is freed at once; only the
  // small shell waits for the end of its scope.
  void markReleased() {
    released_ = true;
    clearHandle();
    dropContent();
  }

 protected:
  virtual void clearHandle() = 0;
  // Frees the content of a released object (nothing reads it any more).
  virtual void dropContent() {}

 private:
  Broker* broker_;
  bool clone_ = false;
  bool released_ = false;
};

// An EncObject with its CMPI face of type Face (CMPIString, CMPIArray ...).
template <typename Face>
class Enc : public EncObject {
 public:
  using FT = std::remove_pointer_t<decltype(std::declval<Face&>().ft)>;
  Enc(Broker& broker, FT* ft) : EncObject(broker) {
    face_.hdl = static_cast<EncObject*>(this);
    face_.ft = ft;
  }
  Face* face() { return &face_; }

 protected:
  void clearHandle() override { face_.hdl = nullptr; }

 private:
  Face face_{};
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

  // Takes an object into the current scope.
  template <typename T>
  T* adopt(std::unique_ptr<T> obj) {
    T* raw = obj.get();
    adoptObject(std::move(obj));
    return raw;
  }
  // Takes a clone: it lives until release() or the end of the store.
  template <typename T>
  T* adoptClone(std::unique_ptr<T> obj) {
    obj->setClone();
    T* raw = obj.get();
    adoptCloneObject(std::move(obj));
    return raw;
  }
  // Marks a clone (of this store) dead and hands it over, for the current
  // scope of the store that serves the releasing call; null when it was
  // released before or is not one of this store's clones.
  std::unique_ptr<EncObject> takeClone(EncObject& obj);
  // Marks an object dead; its memory stays until its scope closes.
  void markReleased(EncObject& obj);
  // Takes a dead object into the current scope.
  void adoptDead(std::unique_ptr<EncObject> obj) { adoptObject(std::move(obj)); }
  std::size_t liveClones() const;
  // Distinct for every store made in the process: a store made later at the
  // same address is told apart from an older one.
  std::uint64_t serial() const { return serial_; }

  // Memory handed out by the memory table: freed with the current scope
  // unless freed before.
  void* allocate(std::size_t size, bool zero);
  void* reallocate(void* ptr, std::size_t size);
  void deallocate(void* ptr);

 private:
  struct Scope;
  void adoptObject(std::unique_ptr<EncObject> obj);
  void adoptCloneObject(std::unique_ptr<EncObject> obj);

  const std::uint64_t serial_;
  mutable std::mutex mutex_;
  std::vector<std::unique_ptr<Scope>> scopes_;
  std::vector<std::unique_ptr<EncObject>> clones_;
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
