// CMPIBrokerFT: thread registration, indications and the up-calls, which the
// router hands to the providers the host has loaded.
#include "convert.hpp"
#include "objects.hpp"

namespace zeda::host::detail {

namespace {

Broker& brokerOf(const CMPIBroker* mb) {
  Broker* b = Broker::of(mb);
  if (b == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
  return *b;
}

void writeStatus(Broker& b, CMPIStatus* rc, const Status& s) {
  if (rc == nullptr) return;
  rc->rc = static_cast<CMPIrc>(s.code);
  rc->msg = s.message ? makeString(b, *s.message)->face() : nullptr;
}

CMPIStatus toStatus(Broker& b, const Status& s) {
  CMPIStatus out{CMPI_RC_OK, nullptr};
  writeStatus(b, &out, s);
  return out;
}

// Runs the request through the router; NOT_SUPPORTED when nothing serves it.
Outcome route(Broker& b, const CMPIContext* ctx, const Request& req) {
  Router* r = b.router();
  std::optional<Outcome> out = r ? r->upcall(req, ctx) : std::nullopt;
  if (!out) {
    Outcome none;
    none.status.code = CMPI_RC_ERR_NOT_SUPPORTED;
    return none;
  }
  return std::move(*out);
}

Request request(Op op, const CMPIObjectPath* op_path) {
  if (op_path == nullptr || op_path->hdl == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
  Request req;
  req.op = op;
  req.path = readObjectPath(op_path);
  return req;
}

OptString opt(const char* s) { return s ? OptString(s) : std::nullopt; }

// The results as an enumeration: paths become references.
CMPIEnumeration* enumeration(Broker& b, const Outcome& out, CMPIStatus* rc) {
  writeStatus(b, rc, out.status);
  if (!out.status.ok()) return nullptr;
  std::vector<Value> items;
  for (const auto& r : out.results) {
    if (r.isInstance()) {
      items.push_back(Value::instance(r.instance()));
    } else if (r.isPath()) {
      items.push_back(Value::reference(r.path()));
    } else {
      items.push_back(r.value());
    }
  }
  return makeEnumeration(b, std::move(items))->face();
}

CMPIContext* prepareAttachThread(const CMPIBroker* mb, const CMPIContext* ctx) {
  try {
    Broker& b = brokerOf(mb);
    ContextObj* c = unwrap<ContextObj>(ctx);
    if (c == nullptr) return nullptr;
    // Lives until detachThread releases it.
    return b.ownStore().adoptClone(std::make_unique<ContextObj>(b, c->entries))->face();
  } catch (...) {
    return nullptr;
  }
}

CMPIStatus attachThread(const CMPIBroker* mb, const CMPIContext* ctx) {
  return guarded([&] {
    brokerOf(mb);
    return status(unwrap<ContextObj>(ctx) ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
  });
}

CMPIStatus detachThread(const CMPIBroker* mb, const CMPIContext* ctx) {
  return guarded([&] {
    Broker& b = brokerOf(mb);
    ContextObj* c = unwrap<ContextObj>(ctx);
    if (c == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (c->isClone()) b.release(*c);
    return status(CMPI_RC_OK);
  });
}

CMPIStatus deliverIndication(const CMPIBroker* mb, const CMPIContext*, const char*,
                             const CMPIInstance*) {
  return guarded([&] {
    brokerOf(mb);
    return status(CMPI_RC_ERR_NOT_SUPPORTED);
  });
}

CMPIEnumeration* enumerateInstanceNames(const CMPIBroker* mb, const CMPIContext* ctx,
                                        const CMPIObjectPath* op, CMPIStatus* rc) {
  return guardedValue<CMPIEnumeration*>(rc, nullptr, [&] {
    Broker& b = brokerOf(mb);
    return enumeration(b, route(b, ctx, request(Op::EnumerateInstanceNames, op)), rc);
  });
}

CMPIEnumeration* enumerateInstances(const CMPIBroker* mb, const CMPIContext* ctx,
                                    const CMPIObjectPath* op, const char** properties,
                                    CMPIStatus* rc) {
  return guardedValue<CMPIEnumeration*>(rc, nullptr, [&] {
    Broker& b = brokerOf(mb);
    Request req = request(Op::EnumerateInstances, op);
    req.properties = readNameList(properties);
    return enumeration(b, route(b, ctx, req), rc);
  });
}

CMPIInstance* getInstance(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* op,
                          const char** properties, CMPIStatus* rc) {
  return guardedValue<CMPIInstance*>(rc, nullptr, [&]() -> CMPIInstance* {
    Broker& b = brokerOf(mb);
    Request req = request(Op::GetInstance, op);
    req.properties = readNameList(properties);
    const Outcome out = route(b, ctx, req);
    writeStatus(b, rc, out.status);
    if (!out.status.ok()) return nullptr;
    for (const auto& r : out.results) {
      if (r.isInstance()) return makeInstance(b, r.instance())->face();
    }
    setStatus(rc, CMPI_RC_ERR_NOT_FOUND);
    return nullptr;
  });
}

CMPIObjectPath* createInstance(const CMPIBroker* mb, const CMPIContext* ctx,
                               const CMPIObjectPath* op, const CMPIInstance* inst, CMPIStatus* rc) {
  return guardedValue<CMPIObjectPath*>(rc, nullptr, [&]() -> CMPIObjectPath* {
    Broker& b = brokerOf(mb);
    Request req = request(Op::CreateInstance, op);
    if (inst == nullptr || inst->hdl == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    req.instance = readInstance(inst);
    const Outcome out = route(b, ctx, req);
    writeStatus(b, rc, out.status);
    if (!out.status.ok()) return nullptr;
    for (const auto& r : out.results) {
      if (r.isPath()) return makeObjectPath(b, r.path())->face();
    }
    return makeObjectPath(b, req.instance.path())->face();
  });
}

CMPIStatus modifyInstance(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* op,
                          const CMPIInstance* inst, const char** properties) {
  return guarded([&] {
    Broker& b = brokerOf(mb);
    Request req = request(Op::ModifyInstance, op);
    if (inst == nullptr || inst->hdl == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    req.instance = readInstance(inst);
    req.properties = readNameList(properties);
    return toStatus(b, route(b, ctx, req).status);
  });
}

CMPIStatus deleteInstance(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* op) {
  return guarded([&] {
    Broker& b = brokerOf(mb);
    return toStatus(b, route(b, ctx, request(Op::DeleteInstance, op)).status);
  });
}

CMPIEnumeration* execQuery(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* op,
                           const char* query, const char* lang, CMPIStatus* rc) {
  return guardedValue<CMPIEnumeration*>(rc, nullptr, [&] {
    Broker& b = brokerOf(mb);
    if (query == nullptr || lang == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    Request req = request(Op::ExecQuery, op);
    req.query = query;
    req.language = lang;
    return enumeration(b, route(b, ctx, req), rc);
  });
}

CMPIEnumeration* associators(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* op,
                             const char* assocClass, const char* resultClass, const char* role,
                             const char* resultRole, const char** properties, CMPIStatus* rc) {
  return guardedValue<CMPIEnumeration*>(rc, nullptr, [&] {
    Broker& b = brokerOf(mb);
    Request req = request(Op::Associators, op);
    req.assocClass = opt(assocClass);
    req.resultClass = opt(resultClass);
    req.role = opt(role);
    req.resultRole = opt(resultRole);
    req.properties = readNameList(properties);
    return enumeration(b, route(b, ctx, req), rc);
  });
}

CMPIEnumeration* associatorNames(const CMPIBroker* mb, const CMPIContext* ctx,
                                 const CMPIObjectPath* op, const char* assocClass,
                                 const char* resultClass, const char* role, const char* resultRole,
                                 CMPIStatus* rc) {
  return guardedValue<CMPIEnumeration*>(rc, nullptr, [&] {
    Broker& b = brokerOf(mb);
    Request req = request(Op::AssociatorNames, op);
    req.assocClass = opt(assocClass);
    req.resultClass = opt(resultClass);
    req.role = opt(role);
    req.resultRole = opt(resultRole);
    return enumeration(b, route(b, ctx, req), rc);
  });
}

CMPIEnumeration* references(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* op,
                            const char* resultClass, const char* role, const char** properties,
                            CMPIStatus* rc) {
  return guardedValue<CMPIEnumeration*>(rc, nullptr, [&] {
    Broker& b = brokerOf(mb);
    Request req = request(Op::References, op);
    req.resultClass = opt(resultClass);
    req.role = opt(role);
    req.properties = readNameList(properties);
    return enumeration(b, route(b, ctx, req), rc);
  });
}

CMPIEnumeration* referenceNames(const CMPIBroker* mb, const CMPIContext* ctx,
                                const CMPIObjectPath* op, const char* resultClass, const char* role,
                                CMPIStatus* rc) {
  return guardedValue<CMPIEnumeration*>(rc, nullptr, [&] {
    Broker& b = brokerOf(mb);
    Request req = request(Op::ReferenceNames, op);
    req.resultClass = opt(resultClass);
    req.role = opt(role);
    return enumeration(b, route(b, ctx, req), rc);
  });
}

CMPIData invokeMethod(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* op,
                      const char* method, const CMPIArgs* in, CMPIArgs* out, CMPIStatus* rc) {
  return guardedValue<CMPIData>(rc, nullData(), [&] {
    Broker& b = brokerOf(mb);
    if (method == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    Request req = request(Op::InvokeMethod, op);
    req.method = method;
    if (in != nullptr && in->hdl != nullptr) {
      CMPIStatus st{CMPI_RC_OK, nullptr};
      const CMPICount n = in->ft->getArgCount(in, &st);
      for (CMPICount i = 0; i < n && st.rc == CMPI_RC_OK; ++i) {
        CMPIString* name = nullptr;
        const CMPIData d = in->ft->getArgAt(in, i, &name, &st);
        if (st.rc == CMPI_RC_OK)
          req.in.push_back(NamedValue{readString(name).value_or(""), readData(d)});
      }
    }
    const Outcome result = route(b, ctx, req);
    writeStatus(b, rc, result.status);
    if (out != nullptr && out->hdl != nullptr) {
      for (const auto& a : result.outArgs) {
        CMPIData d = toData(b, a.value);
        out->ft->addArg(out, a.name.c_str(), a.value.isNull() ? nullptr : &d.value, d.type);
      }
    }
    for (const auto& r : result.results) {
      if (r.isValue()) return toData(b, r.value());
    }
    return nullData();
  });
}

// The property MI is not part of what this host serves.
CMPIStatus setProperty(const CMPIBroker* mb, const CMPIContext*, const CMPIObjectPath*, const char*,
                       const CMPIValue*, CMPIType) {
  return guarded([&] {
    brokerOf(mb);
    return status(CMPI_RC_ERR_NOT_SUPPORTED);
  });
}

CMPIData getProperty(const CMPIBroker* mb, const CMPIContext*, const CMPIObjectPath*, const char*,
                     CMPIStatus* rc) {
  setStatus(rc, Broker::of(mb) ? CMPI_RC_ERR_NOT_SUPPORTED : CMPI_RC_ERR_INVALID_HANDLE);
  return nullData();
}

}  // namespace

void fillBrokerFT(CMPIBrokerFT& ft, const BrokerSettings& s) {
  ft.brokerCapabilities = s.brokerCapabilities;
  ft.brokerVersion = static_cast<unsigned int>(s.brokerVersion);
  ft.brokerName = s.brokerName.c_str();
  ft.prepareAttachThread = prepareAttachThread;
  ft.attachThread = attachThread;
  ft.detachThread = detachThread;
  ft.deliverIndication = deliverIndication;
  ft.enumerateInstanceNames = enumerateInstanceNames;
  ft.getInstance = getInstance;
  ft.createInstance = createInstance;
  ft.modifyInstance = modifyInstance;
  ft.deleteInstance = deleteInstance;
  ft.execQuery = execQuery;
  ft.enumerateInstances = enumerateInstances;
  ft.associators = associators;
  ft.associatorNames = associatorNames;
  ft.references = references;
  ft.referenceNames = referenceNames;
  ft.invokeMethod = invokeMethod;
  ft.setProperty = setProperty;
  ft.getProperty = getProperty;
}

}  // namespace zeda::host::detail
