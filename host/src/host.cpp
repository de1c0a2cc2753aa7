// The Host: a broker, a loaded module, its MIs, and one call per operation.
#include "zeda/host/host.hpp"

#include <algorithm>
#include <mutex>

#include "broker.hpp"
#include "dispatch.hpp"
#include "module.hpp"
#include "objects.hpp"
#include "request.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace zeda::host {

using detail::Op;
using detail::Request;

std::string factorySymbol(const std::string& provider, MIKind kind) {
  switch (kind) {
    case MIKind::Instance: return provider + "_Create_InstanceMI";
    case MIKind::Association: return provider + "_Create_AssociationMI";
    case MIKind::Method: return provider + "_Create_MethodMI";
    case MIKind::Indication: return provider + "_Create_IndicationMI";
  }
  return provider;
}

BrokerSettings BrokerSettings::sfcbLike() {
  BrokerSettings s;
  s.brokerName = "sfcb-like";
  s.brokerVersion = 0;
  s.encFtVersion = 1;
  s.withMemFT = false;
  s.logMessageRc = CMPI_RC_ERR_NOT_SUPPORTED;
  return s;
}

namespace {
template <typename MI>
MI* typedMI(const CreatedMI& c, MIKind want, const char* what) {
  if (c.kind != want) throw TypeMismatch(std::string("the MI is not ") + what);
  return static_cast<MI*>(c.mi);
}
}  // namespace

CMPIInstanceMI* CreatedMI::instanceMI() const {
  return typedMI<CMPIInstanceMI>(*this, MIKind::Instance, "an instance MI");
}
CMPIAssociationMI* CreatedMI::associationMI() const {
  return typedMI<CMPIAssociationMI>(*this, MIKind::Association, "an association MI");
}
CMPIMethodMI* CreatedMI::methodMI() const { return typedMI<CMPIMethodMI>(*this, MIKind::Method, "a method MI"); }
CMPIIndicationMI* CreatedMI::indicationMI() const {
  return typedMI<CMPIIndicationMI>(*this, MIKind::Indication, "an indication MI");
}

struct Host::Impl final : detail::Router {
  Impl(const std::string& path, BrokerSettings settings) : broker(std::move(settings)), module(path) {
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
    if (refused.status.code == CMPI_RC_OK) refused.status.code = CMPI_RC_ERR_FAILED;  // NULL MI with rc 0
    return nullptr;
  }

  // Runs req on provider, results to sink (null: into the outcome); ctx null:
  // a fresh context for the path's namespace. Any number of threads may run
  // requests at once: each has its own objects, result and status.
  Outcome run(const std::string& provider, const Request& req, const CMPIContext* ctx, ResultSink* sink = nullptr) {
    requireLoaded();
    detail::RequestStore objects(broker);
    const MIKind kind = detail::kindOf(req.op);
    Outcome refused;
    void* mi = miFor(provider, kind, refused);
    if (mi == nullptr) return refused;
    detail::ScopeGuard scope(broker.store());
    if (ctx == nullptr) {
      const std::string ns = req.path.nameSpace().empty() ? kDefaultNameSpace : req.path.nameSpace();
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
      const OptString& assoc =
          (req.op == Op::References || req.op == Op::ReferenceNames) ? req.resultClass : req.assocClass;
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

Host::Host(const std::string& modulePath, BrokerSettings settings)
    : impl_(std::make_unique<Impl>(modulePath, std::move(settings))) {}

Host::~Host() {
  if (!impl_->module.isOpen()) return;
  try {
    unload();
  } catch (...) {
    // A provider's clean-up threw; the module is closed anyway.
    impl_->module.close();
  }
}

const std::string& Host::modulePath() const { return impl_->module.path(); }
const BrokerSettings& Host::settings() const { return impl_->broker.settings(); }
bool Host::loaded() const { return impl_->module.isOpen(); }

bool Host::hasFactory(const std::string& provider, MIKind kind) const { return impl_->hasFactory(provider, kind); }

std::vector<std::string> Host::exportedFactories() const { return impl_->module.factories(); }

CreatedMI Host::createMI(const std::string& provider, MIKind kind) {
  impl_->requireLoaded();
  detail::RequestStore objects(impl_->broker);
  return impl_->registry.create(impl_->module, impl_->broker, impl_->ambient, provider, kind);
}

namespace {
Request make(Op op, const ObjectPath& path) {
  Request r;
  r.op = op;
  r.path = path;
  return r;
}
}  // namespace

namespace {
Request enumerateRequest(Op op, const ObjectPath& classPath, const PropertyList& properties) {
  Request r = make(op, classPath);
  r.properties = properties;
  return r;
}

Request associationRequest(Op op, const ObjectPath& path, const OptString& assocClass, const OptString& resultClass,
                           const OptString& role, const OptString& resultRole, const PropertyList& properties) {
  Request r = make(op, path);
  r.assocClass = assocClass;
  r.resultClass = resultClass;
  r.role = role;
  r.resultRole = resultRole;
  r.properties = properties;
  return r;
}
}  // namespace

Outcome Host::enumerateInstanceNames(const std::string& provider, const ObjectPath& classPath) {
  return impl_->run(provider, make(Op::EnumerateInstanceNames, classPath), nullptr);
}

Outcome Host::enumerateInstanceNames(const std::string& provider, const ObjectPath& classPath, ResultSink& sink) {
  return impl_->run(provider, make(Op::EnumerateInstanceNames, classPath), nullptr, &sink);
}

Outcome Host::enumerateInstances(const std::string& provider, const ObjectPath& classPath,
                                 const PropertyList& properties) {
  return impl_->run(provider, enumerateRequest(Op::EnumerateInstances, classPath, properties), nullptr);
}

Outcome Host::enumerateInstances(const std::string& provider, const ObjectPath& classPath,
                                 const PropertyList& properties, ResultSink& sink) {
  return impl_->run(provider, enumerateRequest(Op::EnumerateInstances, classPath, properties), nullptr, &sink);
}

Outcome Host::getInstance(const std::string& provider, const ObjectPath& instancePath, const PropertyList& properties) {
  return impl_->run(provider, enumerateRequest(Op::GetInstance, instancePath, properties), nullptr);
}

Outcome Host::getInstance(const std::string& provider, const ObjectPath& instancePath, const PropertyList& properties,
                          ResultSink& sink) {
  return impl_->run(provider, enumerateRequest(Op::GetInstance, instancePath, properties), nullptr, &sink);
}

Outcome Host::createInstance(const std::string& provider, const ObjectPath& path, const Instance& instance) {
  Request r = make(Op::CreateInstance, path);
  r.instance = instance;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::modifyInstance(const std::string& provider, const ObjectPath& path, const Instance& instance,
                             const PropertyList& properties) {
  Request r = make(Op::ModifyInstance, path);
  r.instance = instance;
  r.properties = properties;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::deleteInstance(const std::string& provider, const ObjectPath& path) {
  return impl_->run(provider, make(Op::DeleteInstance, path), nullptr);
}

Outcome Host::execQuery(const std::string& provider, const ObjectPath& classPath, const std::string& query,
                        const std::string& language) {
  Request r = make(Op::ExecQuery, classPath);
  r.query = query;
  r.language = language;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::associators(const std::string& provider, const ObjectPath& path, const OptString& assocClass,
                          const OptString& resultClass, const OptString& role, const OptString& resultRole,
                          const PropertyList& properties) {
  return impl_->run(
      provider, associationRequest(Op::Associators, path, assocClass, resultClass, role, resultRole, properties),
      nullptr);
}

Outcome Host::associators(const std::string& provider, const ObjectPath& path, const OptString& assocClass,
                          const OptString& resultClass, const OptString& role, const OptString& resultRole,
                          const PropertyList& properties, ResultSink& sink) {
  return impl_->run(
      provider, associationRequest(Op::Associators, path, assocClass, resultClass, role, resultRole, properties),
      nullptr, &sink);
}

Outcome Host::associatorNames(const std::string& provider, const ObjectPath& path, const OptString& assocClass,
                              const OptString& resultClass, const OptString& role, const OptString& resultRole) {
  return impl_->run(
      provider, associationRequest(Op::AssociatorNames, path, assocClass, resultClass, role, resultRole, std::nullopt),
      nullptr);
}

Outcome Host::associatorNames(const std::string& provider, const ObjectPath& path, const OptString& assocClass,
                              const OptString& resultClass, const OptString& role, const OptString& resultRole,
                              ResultSink& sink) {
  return impl_->run(
      provider, associationRequest(Op::AssociatorNames, path, assocClass, resultClass, role, resultRole, std::nullopt),
      nullptr, &sink);
}

Outcome Host::references(const std::string& provider, const ObjectPath& path, const OptString& resultClass,
                         const OptString& role, const PropertyList& properties) {
  return impl_->run(
      provider, associationRequest(Op::References, path, std::nullopt, resultClass, role, std::nullopt, properties),
      nullptr);
}

Outcome Host::references(const std::string& provider, const ObjectPath& path, const OptString& resultClass,
                         const OptString& role, const PropertyList& properties, ResultSink& sink) {
  return impl_->run(
      provider, associationRequest(Op::References, path, std::nullopt, resultClass, role, std::nullopt, properties),
      nullptr, &sink);
}

Outcome Host::referenceNames(const std::string& provider, const ObjectPath& path, const OptString& resultClass,
                             const OptString& role) {
  return impl_->run(provider,
                    associationRequest(Op::ReferenceNames, path, std::nullopt, resultClass, role, std::nullopt,
                                       std::nullopt),
                    nullptr);
}

Outcome Host::referenceNames(const std::string& provider, const ObjectPath& path, const OptString& resultClass,
                             const OptString& role, ResultSink& sink) {
  return impl_->run(provider,
                    associationRequest(Op::ReferenceNames, path, std::nullopt, resultClass, role, std::nullopt,
                                       std::nullopt),
                    nullptr, &sink);
}

Outcome Host::invokeMethod(const std::string& provider, const ObjectPath& path, const std::string& method,
                           const std::vector<NamedValue>& in) {
  Request r = make(Op::InvokeMethod, path);
  r.method = method;
  r.in = in;
  return impl_->run(provider, r, nullptr);
}

namespace {
Request indication(Op op, const std::string& query, const std::string& className, const ObjectPath& classPath) {
  Request r = make(op, classPath);
  r.query = query;
  r.className = className;
  return r;
}
}  // namespace

Outcome Host::authorizeFilter(const std::string& provider, const std::string& query, const std::string& className,
                              const ObjectPath& classPath, const std::string& owner) {
  Request r = indication(Op::AuthorizeFilter, query, className, classPath);
  r.owner = owner;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::mustPoll(const std::string& provider, const std::string& query, const std::string& className,
                       const ObjectPath& classPath) {
  return impl_->run(provider, indication(Op::MustPoll, query, className, classPath), nullptr);
}

Outcome Host::activateFilter(const std::string& provider, const std::string& query, const std::string& className,
                             const ObjectPath& classPath, bool firstActivation) {
  Request r = indication(Op::ActivateFilter, query, className, classPath);
  r.activation = firstActivation;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::deActivateFilter(const std::string& provider, const std::string& query, const std::string& className,
                               const ObjectPath& classPath, bool lastActivation) {
  Request r = indication(Op::DeActivateFilter, query, className, classPath);
  r.activation = lastActivation;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::enableIndications(const std::string& provider) {
  return impl_->run(provider, make(Op::EnableIndications, ObjectPath(kDefaultNameSpace, "")), nullptr);
}

Outcome Host::disableIndications(const std::string& provider) {
  return impl_->run(provider, make(Op::DisableIndications, ObjectPath(kDefaultNameSpace, "")), nullptr);
}

std::vector<Status> Host::unload() {
  impl_->requireLoaded();
  std::vector<Status> out;
  {
    detail::RequestStore objects(impl_->broker);
    out = impl_->registry.cleanupAll(impl_->broker, impl_->ambient);
  }
  impl_->module.close();
  return out;
}

void Host::setInvocationFlags(std::uint32_t flags) { impl_->invocationFlags = flags; }

void Host::setContextEntry(const std::string& name, const Value& value) {
  for (auto& e : impl_->extraEntries) {
    if (namesEqual(e.name, name)) {
      e.value = value;
      return;
    }
  }
  impl_->extraEntries.push_back(NamedValue{name, value});
}

const CMPIBroker* Host::broker() const { return impl_->broker.face(); }
const CMPIContext* Host::context() const { return impl_->ambient; }

CMPIObjectPath* Host::makeObjectPath(const ObjectPath& path) { return detail::makeObjectPath(impl_->broker, path)->face(); }
CMPIInstance* Host::makeInstance(const Instance& instance) {
  return detail::makeInstance(impl_->broker, instance)->face();
}
CMPIContext* Host::makeContext(const std::string& nameSpace) {
  return detail::makeContext(impl_->broker, impl_->contextEntries(nameSpace))->face();
}

std::size_t Host::liveClones() const { return impl_->broker.ownStore().liveClones(); }
std::vector<LogRecord> Host::logMessages() const { return impl_->broker.logs(false); }
std::vector<LogRecord> Host::traces() const { return impl_->broker.logs(true); }

}  // namespace zeda::host
