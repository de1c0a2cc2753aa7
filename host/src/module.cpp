// Module loading, factory calls and clean-up at unload.
#include "module.hpp"

#include <dlfcn.h>

#include <algorithm>

#include "convert.hpp"
#include "elf_symbols.hpp"

namespace zeda::host::detail {

Module::Module(std::string path) : path_(std::move(path)) {
  handle_ = dlopen(path_.c_str(), RTLD_NOW | RTLD_GLOBAL);
  if (handle_ == nullptr) {
    const char* why = dlerror();
    throw LoadError("cannot load module " + path_ + ": " + (why ? why : "unknown dlopen error"));
  }
}

Module::~Module() { close(); }

void Module::close() {
  if (handle_ != nullptr) {
    dlclose(handle_);
    handle_ = nullptr;
  }
}

void* Module::symbol(const std::string& name) const {
  if (handle_ == nullptr) return nullptr;
  return dlsym(handle_, name.c_str());
}

namespace {
bool endsWith(const std::string& s, const std::string& tail) {
  return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}
}  // namespace

std::vector<std::string> Module::factories() const {
  std::vector<std::string> out;
  for (auto& name : exportedFunctions(path_)) {
    for (const char* tail : {"_Create_InstanceMI", "_Create_AssociationMI", "_Create_MethodMI",
                             "_Create_IndicationMI"}) {
      if (endsWith(name, tail) && name.size() > std::char_traits<char>::length(tail)) {
        out.push_back(name);
        break;
      }
    }
  }
  std::sort(out.begin(), out.end());
  out.erase(std::unique(out.begin(), out.end()), out.end());
  return out;
}

Status readStatus(const CMPIStatus& st) {
  Status out;
  out.code = st.rc;
  if (st.msg != nullptr) out.message = readString(st.msg);
  return out;
}

namespace {

template <typename MI>
using Factory = MI* (*)(const CMPIBroker*, const CMPIContext*, CMPIStatus*);

template <typename MI>
void* callFactory(void* sym, const CMPIBroker* mb, const CMPIContext* ctx, CMPIStatus* st) {
  return reinterpret_cast<Factory<MI>>(sym)(mb, ctx, st);
}

template <typename MI>
Status cleanup(void* mi, const CMPIContext* ctx) {
  auto* typed = static_cast<MI*>(mi);
  if (typed->ft == nullptr || typed->ft->cleanup == nullptr)
    return Status{CMPI_RC_ERR_NOT_SUPPORTED, std::nullopt};
  return readStatus(typed->ft->cleanup(typed, ctx, 1));
}

}  // namespace

std::mutex& MIRegistry::providerLock(const std::string& provider) {
  std::lock_guard<std::mutex> lock(mutex_);
  auto& slot = providerLocks_[provider];
  if (!slot) slot = std::make_unique<std::mutex>();
  return *slot;
}

CreatedMI MIRegistry::create(Module& module, Broker& broker, const CMPIContext* ctx,
                             const std::string& provider, MIKind kind) {
  std::lock_guard<std::mutex> serial(providerLock(provider));
  return createHeld(module, broker, ctx, provider, kind);
}

CreatedMI MIRegistry::serving(Module& module, Broker& broker, const CMPIContext* ctx,
                              const std::string& provider, MIKind kind) {
  CreatedMI out;
  out.kind = kind;
  if ((out.mi = current(provider, kind)) != nullptr) return out;
  std::lock_guard<std::mutex> serial(providerLock(provider));
  if ((out.mi = current(provider, kind)) != nullptr) return out;  // made while this thread waited
  return createHeld(module, broker, ctx, provider, kind);
}

CreatedMI MIRegistry::createHeld(Module& module, Broker& broker, const CMPIContext* ctx,
                                 const std::string& provider, MIKind kind) {
  const std::string name = factorySymbol(provider, kind);
  void* sym = module.symbol(name);
  if (sym == nullptr) throw FactoryMissing("module " + module.path() + " exports no " + name);

  ScopeGuard scope(broker.store());
  CMPIStatus st{CMPI_RC_OK, nullptr};
  CreatedMI out;
  out.kind = kind;
  switch (kind) {
    case MIKind::Instance:
      out.mi = callFactory<CMPIInstanceMI>(sym, broker.face(), ctx, &st);
      break;
    case MIKind::Association:
      out.mi = callFactory<CMPIAssociationMI>(sym, broker.face(), ctx, &st);
      break;
    case MIKind::Method:
      out.mi = callFactory<CMPIMethodMI>(sym, broker.face(), ctx, &st);
      break;
    case MIKind::Indication:
      out.mi = callFactory<CMPIIndicationMI>(sym, broker.face(), ctx, &st);
      break;
  }
  out.status = readStatus(st);
  if (out.ok()) {
    std::lock_guard<std::mutex> lock(mutex_);
    records_.push_back(Record{provider, kind, out.mi});
  }
  return out;
}

void* MIRegistry::current(const std::string& provider, MIKind kind) const {
  std::lock_guard<std::mutex> lock(mutex_);
  for (const auto& r : records_) {
    if (r.kind == kind && r.provider == provider) return r.mi;
  }
  return nullptr;
}

std::vector<Status> MIRegistry::cleanupAll(Broker& broker, const CMPIContext* ctx) {
  std::vector<Status> out;
  for (;;) {
    Record r;
    {
      std::lock_guard<std::mutex> lock(mutex_);
      if (records_.empty()) break;
      r = records_.back();
      records_.pop_back();
    }
    ScopeGuard scope(broker.store());
    switch (r.kind) {
      case MIKind::Instance:
        out.push_back(cleanup<CMPIInstanceMI>(r.mi, ctx));
        break;
      case MIKind::Association:
        out.push_back(cleanup<CMPIAssociationMI>(r.mi, ctx));
        break;
      case MIKind::Method:
        out.push_back(cleanup<CMPIMethodMI>(r.mi, ctx));
        break;
      case MIKind::Indication:
        out.push_back(cleanup<CMPIIndicationMI>(r.mi, ctx));
        break;
    }
  }
  return out;
}

}  // namespace zeda::host::detail
