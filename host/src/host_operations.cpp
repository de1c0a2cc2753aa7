// The Host's operations: each builds the request and runs it on the provider.
#include "host_impl.hpp"

namespace zeda::host {

using detail::Op;
using detail::Request;

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

Request associationRequest(Op op, const ObjectPath& path, const OptString& assocClass,
                           const OptString& resultClass, const OptString& role,
                           const OptString& resultRole, const PropertyList& properties) {
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

Outcome Host::enumerateInstanceNames(const std::string& provider, const ObjectPath& classPath,
                                     ResultSink& sink) {
  return impl_->run(provider, make(Op::EnumerateInstanceNames, classPath), nullptr, &sink);
}

Outcome Host::enumerateInstances(const std::string& provider, const ObjectPath& classPath,
                                 const PropertyList& properties) {
  return impl_->run(provider, enumerateRequest(Op::EnumerateInstances, classPath, properties),
                    nullptr);
}

Outcome Host::enumerateInstances(const std::string& provider, const ObjectPath& classPath,
                                 const PropertyList& properties, ResultSink& sink) {
  return impl_->run(provider, enumerateRequest(Op::EnumerateInstances, classPath, properties),
                    nullptr, &sink);
}

Outcome Host::getInstance(const std::string& provider, const ObjectPath& instancePath,
                          const PropertyList& properties) {
  return impl_->run(provider, enumerateRequest(Op::GetInstance, instancePath, properties), nullptr);
}

Outcome Host::getInstance(const std::string& provider, const ObjectPath& instancePath,
                          const PropertyList& properties, ResultSink& sink) {
  return impl_->run(provider, enumerateRequest(Op::GetInstance, instancePath, properties), nullptr,
                    &sink);
}

Outcome Host::createInstance(const std::string& provider, const ObjectPath& path,
                             const Instance& instance) {
  Request r = make(Op::CreateInstance, path);
  r.instance = instance;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::modifyInstance(const std::string& provider, const ObjectPath& path,
                             const Instance& instance, const PropertyList& properties) {
  Request r = make(Op::ModifyInstance, path);
  r.instance = instance;
  r.properties = properties;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::deleteInstance(const std::string& provider, const ObjectPath& path) {
  return impl_->run(provider, make(Op::DeleteInstance, path), nullptr);
}

Outcome Host::execQuery(const std::string& provider, const ObjectPath& classPath,
                        const std::string& query, const std::string& language) {
  Request r = make(Op::ExecQuery, classPath);
  r.query = query;
  r.language = language;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::associators(const std::string& provider, const ObjectPath& path,
                          const OptString& assocClass, const OptString& resultClass,
                          const OptString& role, const OptString& resultRole,
                          const PropertyList& properties) {
  return impl_->run(provider,
                    associationRequest(Op::Associators, path, assocClass, resultClass, role,
                                       resultRole, properties),
                    nullptr);
}

Outcome Host::associators(const std::string& provider, const ObjectPath& path,
                          const OptString& assocClass, const OptString& resultClass,
                          const OptString& role, const OptString& resultRole,
                          const PropertyList& properties, ResultSink& sink) {
  return impl_->run(provider,
                    associationRequest(Op::Associators, path, assocClass, resultClass, role,
                                       resultRole, properties),
                    nullptr, &sink);
}

Outcome Host::associatorNames(const std::string& provider, const ObjectPath& path,
                              const OptString& assocClass, const OptString& resultClass,
                              const OptString& role, const OptString& resultRole) {
  return impl_->run(provider,
                    associationRequest(Op::AssociatorNames, path, assocClass, resultClass, role,
                                       resultRole, std::nullopt),
                    nullptr);
}

Outcome Host::associatorNames(const std::string& provider, const ObjectPath& path,
                              const OptString& assocClass, const OptString& resultClass,
                              const OptString& role, const OptString& resultRole,
                              ResultSink& sink) {
  return impl_->run(provider,
                    associationRequest(Op::AssociatorNames, path, assocClass, resultClass, role,
                                       resultRole, std::nullopt),
                    nullptr, &sink);
}

Outcome Host::references(const std::string& provider, const ObjectPath& path,
                         const OptString& resultClass, const OptString& role,
                         const PropertyList& properties) {
  return impl_->run(provider,
                    associationRequest(Op::References, path, std::nullopt, resultClass, role,
                                       std::nullopt, properties),
                    nullptr);
}

Outcome Host::references(const std::string& provider, const ObjectPath& path,
                         const OptString& resultClass, const OptString& role,
                         const PropertyList& properties, ResultSink& sink) {
  return impl_->run(provider,
                    associationRequest(Op::References, path, std::nullopt, resultClass, role,
                                       std::nullopt, properties),
                    nullptr, &sink);
}

Outcome Host::referenceNames(const std::string& provider, const ObjectPath& path,
                             const OptString& resultClass, const OptString& role) {
  return impl_->run(provider,
                    associationRequest(Op::ReferenceNames, path, std::nullopt, resultClass, role,
                                       std::nullopt, std::nullopt),
                    nullptr);
}

Outcome Host::referenceNames(const std::string& provider, const ObjectPath& path,
                             const OptString& resultClass, const OptString& role,
                             ResultSink& sink) {
  return impl_->run(provider,
                    associationRequest(Op::ReferenceNames, path, std::nullopt, resultClass, role,
                                       std::nullopt, std::nullopt),
                    nullptr, &sink);
}

Outcome Host::invokeMethod(const std::string& provider, const ObjectPath& path,
                           const std::string& method, const std::vector<NamedValue>& in) {
  Request r = make(Op::InvokeMethod, path);
  r.method = method;
  r.in = in;
  return impl_->run(provider, r, nullptr);
}

namespace {
Request indication(Op op, const std::string& query, const std::string& className,
                   const ObjectPath& classPath) {
  Request r = make(op, classPath);
  r.query = query;
  r.className = className;
  return r;
}
}  // namespace

Outcome Host::authorizeFilter(const std::string& provider, const std::string& query,
                              const std::string& className, const ObjectPath& classPath,
                              const std::string& owner) {
  Request r = indication(Op::AuthorizeFilter, query, className, classPath);
  r.owner = owner;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::mustPoll(const std::string& provider, const std::string& query,
                       const std::string& className, const ObjectPath& classPath) {
  return impl_->run(provider, indication(Op::MustPoll, query, className, classPath), nullptr);
}

Outcome Host::activateFilter(const std::string& provider, const std::string& query,
                             const std::string& className, const ObjectPath& classPath,
                             bool firstActivation) {
  Request r = indication(Op::ActivateFilter, query, className, classPath);
  r.activation = firstActivation;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::deActivateFilter(const std::string& provider, const std::string& query,
                               const std::string& className, const ObjectPath& classPath,
                               bool lastActivation) {
  Request r = indication(Op::DeActivateFilter, query, className, classPath);
  r.activation = lastActivation;
  return impl_->run(provider, r, nullptr);
}

Outcome Host::enableIndications(const std::string& provider) {
  return impl_->run(provider, make(Op::EnableIndications, ObjectPath(kDefaultNameSpace, "")),
                    nullptr);
}

Outcome Host::disableIndications(const std::string& provider) {
  return impl_->run(provider, make(Op::DisableIndications, ObjectPath(kDefaultNameSpace, "")),
                    nullptr);
}
}  // namespace zeda::host
