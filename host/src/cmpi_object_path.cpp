// CMPIObjectPath: namespace, class name, host and keys in the order added;
// addKey replaces an existing key (names compare ignoring case) in place.
#include "convert.hpp"
#include "objects.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace zeda::host::detail {

ObjectPathObj::ObjectPathObj(Broker& b, ObjectPath p, std::string h)
    : Enc(b, &b.tables().objectPath), path(std::move(p)), host(std::move(h)) {}

ObjectPathObj* makeObjectPath(Broker& b, ObjectPath path) {
  return b.store().adopt(std::make_unique<ObjectPathObj>(b, std::move(path)));
}

namespace {

ObjectPathObj& self(const CMPIObjectPath* op) {
  ObjectPathObj* o = unwrap<ObjectPathObj>(op);
  if (o == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
  return *o;
}

CMPIStatus release(CMPIObjectPath* op) { return releaseFace<ObjectPathObj>(op); }

CMPIObjectPath* clone(const CMPIObjectPath* op, CMPIStatus* rc) {
  return cloneFace<ObjectPathObj>(op, rc, [](const ObjectPathObj& o) {
    return std::make_unique<ObjectPathObj>(o.broker(), o.path, o.host);
  });
}

CMPIStatus setNameSpace(CMPIObjectPath* op, const char* ns) {
  return guarded([&] {
    ObjectPathObj& o = self(op);
    if (ns == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    o.path.setNameSpace(ns);
    return status(CMPI_RC_OK);
  });
}

CMPIString* stringResult(const CMPIObjectPath* op, CMPIStatus* rc,
                         std::string (*get)(const ObjectPathObj&)) {
  return guardedValue<CMPIString*>(rc, nullptr, [&]() -> CMPIString* {
    ObjectPathObj& o = self(op);
    CMPIString* s = makeString(o.broker(), get(o))->face();
    setStatus(rc, CMPI_RC_OK);
    return s;
  });
}

CMPIString* getNameSpace(const CMPIObjectPath* op, CMPIStatus* rc) {
  return stringResult(op, rc, [](const ObjectPathObj& o) { return o.path.nameSpace(); });
}

CMPIStatus setHostname(CMPIObjectPath* op, const char* hn) {
  return guarded([&] {
    ObjectPathObj& o = self(op);
    if (hn == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    o.host = hn;
    return status(CMPI_RC_OK);
  });
}

CMPIString* getHostname(const CMPIObjectPath* op, CMPIStatus* rc) {
  return stringResult(op, rc, [](const ObjectPathObj& o) { return o.host; });
}

CMPIStatus setClassName(CMPIObjectPath* op, const char* cn) {
  return guarded([&] {
    ObjectPathObj& o = self(op);
    if (cn == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    o.path.setClassName(cn);
    return status(CMPI_RC_OK);
  });
}

CMPIString* getClassName(const CMPIObjectPath* op, CMPIStatus* rc) {
  return stringResult(op, rc, [](const ObjectPathObj& o) { return o.path.className(); });
}

CMPIStatus addKey(CMPIObjectPath* op, const char* name, const CMPIValue* value,
                  const CMPIType type) {
  return guarded([&] {
    ObjectPathObj& o = self(op);
    if (name == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    o.path.addKey(name, toValue(value, type));
    return status(CMPI_RC_OK);
  });
}

CMPIData keyData(ObjectPathObj& o, const Value& v) {
  CMPIData d = toData(o.broker(), v);
  d.state = static_cast<CMPIValueState>(d.state | CMPI_keyValue);
  return d;
}

CMPIData getKey(const CMPIObjectPath* op, const char* name, CMPIStatus* rc) {
  return guardedValue<CMPIData>(rc, notFoundData(), [&] {
    ObjectPathObj& o = self(op);
    if (name == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    const long i = findName(o.path.keys(), name);
    if (i < 0) throw RcError(CMPI_RC_ERR_NOT_FOUND);
    CMPIData d = keyData(o, o.path.keys()[static_cast<std::size_t>(i)].value);
    setStatus(rc, CMPI_RC_OK);
    return d;
  });
}

CMPIData getKeyAt(const CMPIObjectPath* op, CMPICount index, CMPIString** name, CMPIStatus* rc) {
  return guardedValue<CMPIData>(rc, notFoundData(), [&] {
    ObjectPathObj& o = self(op);
    if (index >= o.path.keys().size()) throw RcError(CMPI_RC_ERR_NO_SUCH_PROPERTY);
    const NamedValue& k = o.path.keys()[index];
    CMPIData d = keyData(o, k.value);
    if (name != nullptr) *name = makeString(o.broker(), k.name)->face();
    setStatus(rc, CMPI_RC_OK);
    return d;
  });
}

CMPICount getKeyCount(const CMPIObjectPath* op, CMPIStatus* rc) {
  return guardedValue<CMPICount>(rc, 0, [&] {
    const auto n = static_cast<CMPICount>(self(op).path.keys().size());
    setStatus(rc, CMPI_RC_OK);
    return n;
  });
}

CMPIStatus setNameSpaceFromObjectPath(CMPIObjectPath* op, const CMPIObjectPath* src) {
  return guarded([&] {
    ObjectPathObj& o = self(op);
    if (src == nullptr || src->hdl == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    CMPIStatus st{CMPI_RC_OK, nullptr};
    auto ns = readString(src->ft->getNameSpace(src, &st));
    if (st.rc != CMPI_RC_OK) return status(st.rc);
    o.path.setNameSpace(ns.value_or(""));
    return status(CMPI_RC_OK);
  });
}

CMPIStatus setHostAndNameSpaceFromObjectPath(CMPIObjectPath* op, const CMPIObjectPath* src) {
  return guarded([&] {
    ObjectPathObj& o = self(op);
    if (src == nullptr || src->hdl == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    CMPIStatus st{CMPI_RC_OK, nullptr};
    auto ns = readString(src->ft->getNameSpace(src, &st));
    if (st.rc != CMPI_RC_OK) return status(st.rc);
    auto host = readString(src->ft->getHostname(src, &st));
    if (st.rc != CMPI_RC_OK) return status(st.rc);
    o.path.setNameSpace(ns.value_or(""));
    o.host = host.value_or("");
    return status(CMPI_RC_OK);
  });
}

// No class repository: qualifiers are not available.
CMPIData getClassQualifier(const CMPIObjectPath* op, const char*, CMPIStatus* rc) {
  setStatus(rc, unwrap<ObjectPathObj>(op) ? CMPI_RC_ERR_NOT_SUPPORTED : CMPI_RC_ERR_INVALID_HANDLE);
  return nullData();
}
CMPIData getPropertyQualifier(const CMPIObjectPath* op, const char*, const char*, CMPIStatus* rc) {
  return getClassQualifier(op, nullptr, rc);
}
CMPIData getMethodQualifier(const CMPIObjectPath* op, const char*, const char*, CMPIStatus* rc) {
  return getClassQualifier(op, nullptr, rc);
}
CMPIData getParameterQualifier(const CMPIObjectPath* op, const char*, const char*, const char*,
                               CMPIStatus* rc) {
  return getClassQualifier(op, nullptr, rc);
}

CMPIString* toString(const CMPIObjectPath* op, CMPIStatus* rc) {
  return stringResult(op, rc, [](const ObjectPathObj& o) { return formatObjectPath(o.path); });
}

}  // namespace

const ObjectPath* ownObjectPath(const CMPIObjectPath* op) {
  // Every broker's path table has this getNameSpace: the face is one of ours.
  if (op == nullptr || op->hdl == nullptr || op->ft == nullptr ||
      op->ft->getNameSpace != getNameSpace)
    return nullptr;
  return &unwrap<ObjectPathObj>(op)->path;
}

void fillObjectPathFT(CMPIObjectPathFT& ft) {
  ft.ftVersion = CMPIVersion200;
  ft.release = release;
  ft.clone = clone;
  ft.setNameSpace = setNameSpace;
  ft.getNameSpace = getNameSpace;
  ft.setHostname = setHostname;
  ft.getHostname = getHostname;
  ft.setClassName = setClassName;
  ft.getClassName = getClassName;
  ft.addKey = addKey;
  ft.getKey = getKey;
  ft.getKeyAt = getKeyAt;
  ft.getKeyCount = getKeyCount;
  ft.setNameSpaceFromObjectPath = setNameSpaceFromObjectPath;
  ft.setHostAndNameSpaceFromObjectPath = setHostAndNameSpaceFromObjectPath;
  ft.getClassQualifier = getClassQualifier;
  ft.getPropertyQualifier = getPropertyQualifier;
  ft.getMethodQualifier = getMethodQualifier;
  ft.getParameterQualifier = getParameterQualifier;
  ft.toString = toString;
}

}  // namespace zeda::host::detail
