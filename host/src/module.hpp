// A provider module loaded with dlopen, and the MIs its factories handed out.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "broker.hpp"
#include "zeda/host/host.hpp"

namespace zeda::host::detail {

class Module {
 public:
  // dlopen(path, RTLD_NOW | RTLD_GLOBAL); throws LoadError naming the path
  // and dlerror().
  explicit Module(std::string path);
  ~Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  const std::string& path() const { return path_; }
  bool isOpen() const { return handle_ != nullptr; }
  // dlsym; null when the module does not export the name (or is closed).
  void* symbol(const std::string& name) const;
  // The exported MI factory names, sorted.
  std::vector<std::string> factories() const;
  void close();

 private:
  std::string path_;
  void* handle_ = nullptr;
};

// Every MI a factory handed out and the host accepted, in order. Thread-safe.
// The factories of one provider (one class) are never called by two threads
// at once: modules rely on the object manager for that and take no lock of
// their own. Factories of different providers may run at the same time.
class MIRegistry {
 public:
  // Calls the factory with the broker, ctx and a fresh CMPIStatus (rc OK,
  // msg NULL); accepts the MI when it is non-null and rc is 0. Throws
  // FactoryMissing when the module lacks the factory.
  CreatedMI create(Module& module, Broker& broker, const CMPIContext* ctx,
                   const std::string& provider, MIKind kind);
  // The MI that serves operations of provider and kind: the current one, or
  // one made with create() now. Threads asking at once for a provider that
  // has none yet: one calls the factory, the others wait for its answer
  // (and call it again only when it refused).
  CreatedMI serving(Module& module, Broker& broker, const CMPIContext* ctx,
                    const std::string& provider, MIKind kind);
  // The MI that serves operations of provider and kind, or null.
  void* current(const std::string& provider, MIKind kind) const;
  // cleanup(ctx, terminating = true) of every accepted MI, newest first.
  // Not to be called while operations run.
  std::vector<Status> cleanupAll(Broker& broker, const CMPIContext* ctx);

 private:
  struct Record {
    std::string provider;
    MIKind kind = MIKind::Instance;
    void* mi = nullptr;
  };
  std::mutex& providerLock(const std::string& provider);
  CreatedMI createHeld(Module& module, Broker& broker, const CMPIContext* ctx,
                       const std::string& provider, MIKind kind);

  mutable std::mutex mutex_;  // guards records_ and providerLocks_
  std::vector<Record> records_;
  std::map<std::string, std::unique_ptr<std::mutex>> providerLocks_;
};

// Status read out of a CMPIStatus (message through the string's table).
Status readStatus(const CMPIStatus& st);

}  // namespace zeda::host::detail
