// The Host's inside: broker, module, MI registry, and the one routine that
// runs a request on a provider. Shared by the files of the Host class.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "broker.hpp"
#include "dispatch.hpp"
#include "module.hpp"
#include "objects.hpp"
#include "request.hpp"
#include "zeda/host/host.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace zeda::host {

struct Host::Impl final : detail::Router {
  using Op = detail::Op;
  using Request = detail::Request;

  Impl(const std::string& path, BrokerSettings settings)
      : broker(std::move(settings)), module(path) {
    broker.setRouter(this);
    ambient = detail::makeContext(broker, contextEntries(kDefaultNameSpace))->face();
  }

  std::vector<NamedValue> contextEntries(const std::string& ns) const {
    std::vector<NamedValue> entries{{CMPIInitNameSpace, Value::string(ns)},
                                    {CMPIInvocationFlags, Value::uint32(invocationFlags)}};
    for (const auto& e : extraEntries) entries.push_back(e);
    return entries;
  }

  void requireLoaded() const {
    if (!module.isOpen()) throw LoadError("module " + module.path() + " is unloaded");
  }

  bool hasFactory(const std::string& provider, MIKind kind) const {
    return module.symbol(factorySymbol(provider, kind)) != nullptr;
  }

  // The MI serving provider/kind, made on first use. On a refused factory
  // call, the outcome to answer with.
  void* miFor(const std::string& provider, MIKind kind, Outcome& refused) {
    const CreatedMI created = registry.serving(module, broker, ambient, provider, kind);
    if (created.mi != nullptr && created.status.code == CMPI_RC_OK) return created.mi;
    refused.status = created.status;
    if (refused.status.code == CMPI_RC_OK)
      refused.status.code = CMPI_RC_ERR_FAILED;  // NULL MI with rc 0
    return nullptr;
  }

  // Runs req on provider, results to sink (null: into the outcome); ctx null:
  // a fresh context for the path's namespace. Any number of threads may run
  // requests at once: each has its own objects, result and status.
  Outcome run(const std::string& provider, const Request& req, const CMPIContext* ctx,
              ResultSink* sink = nullptr) {
    requireLoaded();
    detail::RequestStore objects(broker);
    const MIKind kind = detail::kindOf(req.op);
    Outcome refused;
    void* mi = miFor(provider, kind, refused);
    if (mi == nullptr) return refused;
    detail::ScopeGuard scope(broker.store());
    if (ctx == nullptr) {
      const std::string ns =
          req.path.nameSpace().empty() ? kDefaultNameSpace : req.path.nameSpace();
      ctx = detail::makeContext(broker, contextEntries(ns))->face();
    }
    if (sink != nullptr) return detail::drive(broker, mi, req, ctx, *sink);
    Outcome out;
    detail::CollectingSink collect(out);
    Outcome driven = detail::drive(broker, mi, req, ctx, collect);
    driven.results = std::move(out.results);
    return driven;
  }

  std::vector<std::string> associationProviders() const {
    std::vector<std::string> out;
    const std::string tail = "_Create_AssociationMI";
    for (const auto& f : module.factories()) {
      if (f.size() > tail.size() && f.compare(f.size() - tail.size(), tail.size(), tail) == 0) {
        out.push_back(f.substr(0, f.size() - tail.size()));
      }
    }
    return out;
  }

  // Up-calls: the provider of the class named by the request. Association
  // traversals without an association class go to every association
  // provider of the module; their successful answers are joined.
  std::optional<Outcome> upcall(const Request& req, const CMPIContext* ctx) override {
    if (!module.isOpen()) return std::nullopt;
    const MIKind kind = detail::kindOf(req.op);
    std::vector<std::string> providers;
    if (kind == MIKind::Association) {
      const OptString& assoc = (req.op == Op::References || req.op == Op::ReferenceNames)
                                   ? req.resultClass
                                   : req.assocClass;
      if (assoc) {
        providers.push_back(*assoc + "Provider");
      } else {
        providers = associationProviders();
      }
    } else {
      providers.push_back(req.path.className() + "Provider");
    }
    providers.erase(std::remove_if(providers.begin(), providers.end(),
                                   [&](const std::string& p) { return !hasFactory(p, kind); }),
                    providers.end());
    if (providers.empty()) return std::nullopt;
    if (providers.size() == 1) return run(providers.front(), req, ctx);
    Outcome joined;
    joined.done = true;
    for (const auto& p : providers) {
      Outcome one = run(p, req, ctx);
      if (!one.ok()) continue;
      for (auto& r : one.results) joined.results.push_back(std::move(r));
    }
    return joined;
  }

  detail::Broker broker;  // first: outlives the module and every object
  detail::Module module;
  detail::MIRegistry registry;
  CMPIContext* ambient = nullptr;
  std::uint32_t invocationFlags = 0;
  std::vector<NamedValue> extraEntries;
};

}  // namespace zeda::host
