// CMPIInstance: properties in the order of first setting, the object path as
// given, and the property filter of setPropertyFilter.
//
// The filter keeps the properties of its property list and the key
// properties of the instance's own object path (a client always gets the
// keys). The key list of setPropertyFilter is deprecated in the CMPI
// standard and ignored by the object manager, so it is ignored here too,
// unless Host::setHonourKeyList asks for the older behaviour of also keeping
// the properties it names.
#include "convert.hpp"
#include "objects.hpp"

namespace zeda::host::detail {

InstanceObj::InstanceObj(Broker& b, Instance i)
    : Enc(b, &b.tables().instance), inst(std::move(i)) {}

bool InstanceObj::admits(std::string_view name) const {
  if (!propertyFilter) return true;
  for (const auto& n : *propertyFilter) {
    if (namesEqual(n, name)) return true;
  }
  for (const auto& key : inst.path().keys()) {
    if (namesEqual(key.name, name)) return true;
  }
  for (const auto& n : keyFilter) {
    if (namesEqual(n, name)) return true;
  }
  return false;
}

InstanceObj* makeInstance(Broker& b, Instance inst) {
  return b.store().adopt(std::make_unique<InstanceObj>(b, std::move(inst)));
}

namespace {

InstanceObj& self(const CMPIInstance* ci) {
  InstanceObj* o = unwrap<InstanceObj>(ci);
  if (o == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
  return *o;
}

CMPIStatus release(CMPIInstance* ci) { return releaseFace<InstanceObj>(ci); }

CMPIInstance* clone(const CMPIInstance* ci, CMPIStatus* rc) {
  return cloneFace<InstanceObj>(ci, rc, [](const InstanceObj& o) {
    auto c = std::make_unique<InstanceObj>(o.broker(), o.inst);
    c->propertyFilter = o.propertyFilter;
    c->keyFilter = o.keyFilter;
    return c;
  });
}

CMPIData getProperty(const CMPIInstance* ci, const char* name, CMPIStatus* rc) {
  return guardedValue<CMPIData>(rc, notFoundData(), [&] {
    InstanceObj& o = self(ci);
    if (name == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    const long i = findName(o.inst.properties(), name);
    if (i < 0) throw RcError(CMPI_RC_ERR_NO_SUCH_PROPERTY);
    CMPIData d = toData(o.broker(), o.inst.properties()[static_cast<std::size_t>(i)].value);
    setStatus(rc, CMPI_RC_OK);
    return d;
  });
}

CMPIData getPropertyAt(const CMPIInstance* ci, CMPICount index, CMPIString** name, CMPIStatus* rc) {
  return guardedValue<CMPIData>(rc, notFoundData(), [&] {
    InstanceObj& o = self(ci);
    if (index >= o.inst.properties().size()) throw RcError(CMPI_RC_ERR_NO_SUCH_PROPERTY);
    const NamedValue& p = o.inst.properties()[index];
    CMPIData d = toData(o.broker(), p.value);
    if (name != nullptr) *name = makeString(o.broker(), p.name)->face();
    setStatus(rc, CMPI_RC_OK);
    return d;
  });
}

CMPICount getPropertyCount(const CMPIInstance* ci, CMPIStatus* rc) {
  return guardedValue<CMPICount>(rc, 0, [&] {
    const auto n = static_cast<CMPICount>(self(ci).inst.properties().size());
    setStatus(rc, CMPI_RC_OK);
    return n;
  });
}

CMPIStatus setProperty(const CMPIInstance* ci, const char* name, const CMPIValue* value,
                       CMPIType type) {
  return guarded([&] {
    InstanceObj& o = self(ci);
    if (name == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    Value v = toValue(value, type);
    // A filtered-out property is dropped silently.
    if (o.admits(name)) o.inst.set(name, std::move(v));
    return status(CMPI_RC_OK);
  });
}

CMPIObjectPath* getObjectPath(const CMPIInstance* ci, CMPIStatus* rc) {
  return guardedValue<CMPIObjectPath*>(rc, nullptr, [&]() -> CMPIObjectPath* {
    InstanceObj& o = self(ci);
    CMPIObjectPath* op = makeObjectPath(o.broker(), o.inst.path())->face();
    setStatus(rc, CMPI_RC_OK);
    return op;
  });
}

CMPIStatus setPropertyFilter(CMPIInstance* ci, const char** propertyList, const char** keyList) {
  return guarded([&] {
    InstanceObj& o = self(ci);
    o.propertyFilter = readNameList(propertyList);
    o.keyFilter.clear();
    if (o.broker().honourKeyList()) {
      o.keyFilter = readNameList(keyList).value_or(std::vector<std::string>{});
    }
    return status(CMPI_RC_OK);
  });
}

CMPIStatus setObjectPath(CMPIInstance* ci, const CMPIObjectPath* op) {
  return guarded([&] {
    InstanceObj& o = self(ci);
    if (op == nullptr || op->hdl == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    o.inst.setPath(readObjectPath(op));
    return status(CMPI_RC_OK);
  });
}

CMPIStatus setPropertyWithOrigin(const CMPIInstance* ci, const char* name, const CMPIValue* value,
                                 const CMPIType type,
                                 const char* /*origin: no class repository to record it*/) {
  return setProperty(ci, name, value, type);
}

}  // namespace

const Instance* ownInstance(const CMPIInstance* ci) {
  // Every broker's instance table has this getPropertyAt: the face is one of ours.
  if (ci == nullptr || ci->hdl == nullptr || ci->ft == nullptr ||
      ci->ft->getPropertyAt != getPropertyAt)
    return nullptr;
  return &unwrap<InstanceObj>(ci)->inst;
}

void fillInstanceFT(CMPIInstanceFT& ft) {
  ft.ftVersion = CMPIVersion200;
  ft.release = release;
  ft.clone = clone;
  ft.getProperty = getProperty;
  ft.getPropertyAt = getPropertyAt;
  ft.getPropertyCount = getPropertyCount;
  ft.setProperty = setProperty;
  ft.getObjectPath = getObjectPath;
  ft.setPropertyFilter = setPropertyFilter;
  ft.setObjectPath = setObjectPath;
  ft.setPropertyWithOrigin = setPropertyWithOrigin;
}

}  // namespace zeda::host::detail
