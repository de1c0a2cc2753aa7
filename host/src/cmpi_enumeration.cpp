// CMPIEnumeration: the results of an up-call, read forward once.
#include "convert.hpp"
#include "objects.hpp"

namespace zeda::host::detail {

EnumerationObj::EnumerationObj(Broker& b, std::vector<Value> i)
    : Enc(b, &b.tables().enumeration), items(std::move(i)) {}

EnumerationObj* makeEnumeration(Broker& b, std::vector<Value> items) {
  return b.store().adopt(std::make_unique<EnumerationObj>(b, std::move(items)));
}

namespace {

EnumerationObj& self(const CMPIEnumeration* en) {
  EnumerationObj* o = unwrap<EnumerationObj>(en);
  if (o == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
  return *o;
}

CMPIStatus release(CMPIEnumeration* en) { return releaseFace<EnumerationObj>(en); }

CMPIEnumeration* clone(const CMPIEnumeration* en, CMPIStatus* rc) {
  return cloneFace<EnumerationObj>(en, rc, [](const EnumerationObj& o) {
    auto c = std::make_unique<EnumerationObj>(o.broker(), o.items);
    c->next = o.next;
    return c;
  });
}

CMPIData getNext(const CMPIEnumeration* en, CMPIStatus* rc) {
  return guardedValue<CMPIData>(rc, nullData(), [&] {
    EnumerationObj& o = self(en);
    if (o.next >= o.items.size()) throw RcError(CMPI_RC_ERR_NOT_FOUND);  // read past the end
    CMPIData d = toData(o.broker(), o.items[o.next++]);
    setStatus(rc, CMPI_RC_OK);
    return d;
  });
}

CMPIBoolean hasNext(const CMPIEnumeration* en, CMPIStatus* rc) {
  return guardedValue<CMPIBoolean>(rc, 0, [&] {
    EnumerationObj& o = self(en);
    setStatus(rc, CMPI_RC_OK);
    return static_cast<CMPIBoolean>(o.next < o.items.size() ? 1 : 0);
  });
}

// All items (also those already read), as an array of their common type.
CMPIArray* toArray(const CMPIEnumeration* en, CMPIStatus* rc) {
  return guardedValue<CMPIArray*>(rc, nullptr, [&]() -> CMPIArray* {
    EnumerationObj& o = self(en);
    const CMPIType type =
        o.items.empty() ? static_cast<CMPIType>(CMPI_instance) : o.items.front().type();
    CMPIArray* a = makeArray(o.broker(), type, o.items)->face();
    setStatus(rc, CMPI_RC_OK);
    return a;
  });
}

}  // namespace

void fillEnumerationFT(CMPIEnumerationFT& ft) {
  ft.ftVersion = CMPIVersion200;
  ft.release = release;
  ft.clone = clone;
  ft.getNext = getNext;
  ft.hasNext = hasNext;
  ft.toArray = toArray;
}

}  // namespace zeda::host::detail
