// CMPIContext: named entries (CMPIInitNameSpace, CMPIInvocationFlags ...).
#include "convert.hpp"
#include "objects.hpp"

namespace zeda::host::detail {

ContextObj::ContextObj(Broker& b, std::vector<NamedValue> e)
    : Enc(b, &b.tables().context), entries(std::move(e)) {}

ContextObj* makeContext(Broker& b, std::vector<NamedValue> entries) {
  return b.store().adopt(std::make_unique<ContextObj>(b, std::move(entries)));
}

namespace {

ContextObj& self(const CMPIContext* ctx) {
  ContextObj* o = unwrap<ContextObj>(ctx);
  if (o == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
  return *o;
}

CMPIStatus release(CMPIContext* ctx) { return releaseFace<ContextObj>(ctx); }

CMPIContext* clone(const CMPIContext* ctx, CMPIStatus* rc) {
  return cloneFace<ContextObj>(ctx, rc, [](const ContextObj& o) {
    return std::make_unique<ContextObj>(o.broker(), o.entries);
  });
}

CMPIData getEntry(const CMPIContext* ctx, const char* name, CMPIStatus* rc) {
  return guardedValue<CMPIData>(rc, notFoundData(), [&] {
    ContextObj& o = self(ctx);
    if (name == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    const long i = findName(o.entries, name);
    if (i < 0) throw RcError(CMPI_RC_ERR_NO_SUCH_PROPERTY);
    CMPIData d = toData(o.broker(), o.entries[static_cast<std::size_t>(i)].value);
    setStatus(rc, CMPI_RC_OK);
    return d;
  });
}

CMPIData getEntryAt(const CMPIContext* ctx, CMPICount index, CMPIString** name, CMPIStatus* rc) {
  return guardedValue<CMPIData>(rc, notFoundData(), [&] {
    ContextObj& o = self(ctx);
    if (index >= o.entries.size()) throw RcError(CMPI_RC_ERR_NO_SUCH_PROPERTY);
    CMPIData d = toData(o.broker(), o.entries[index].value);
    if (name != nullptr) *name = makeString(o.broker(), o.entries[index].name)->face();
    setStatus(rc, CMPI_RC_OK);
    return d;
  });
}

CMPICount getEntryCount(const CMPIContext* ctx, CMPIStatus* rc) {
  return guardedValue<CMPICount>(rc, 0, [&] {
    const auto n = static_cast<CMPICount>(self(ctx).entries.size());
    setStatus(rc, CMPI_RC_OK);
    return n;
  });
}

CMPIStatus addEntry(const CMPIContext* ctx, const char* name, const CMPIValue* value,
                    const CMPIType type) {
  return guarded([&] {
    ContextObj& o = self(ctx);
    if (name == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    Value v = toValue(value, type);
    const long i = findName(o.entries, name);
    if (i >= 0) {
      o.entries[static_cast<std::size_t>(i)].value = std::move(v);
    } else {
      o.entries.push_back(NamedValue{name, std::move(v)});
    }
    return status(CMPI_RC_OK);
  });
}

}  // namespace

void fillContextFT(CMPIContextFT& ft) {
  ft.ftVersion = CMPIVersion200;
  ft.release = release;
  ft.clone = clone;
  ft.getEntry = getEntry;
  ft.getEntryAt = getEntryAt;
  ft.getEntryCount = getEntryCount;
  ft.addEntry = addEntry;
}

}  // namespace zeda::host::detail
