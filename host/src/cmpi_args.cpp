// CMPIArgs: named method arguments in the order added.
#include "convert.hpp"
#include "objects.hpp"

namespace zeda::host::detail {

ArgsObj::ArgsObj(Broker& b, std::vector<NamedValue> a)
    : Enc(b, &b.tables().args), args(std::move(a)) {}

ArgsObj* makeArgs(Broker& b, std::vector<NamedValue> args) {
  return b.store().adopt(std::make_unique<ArgsObj>(b, std::move(args)));
}

namespace {

ArgsObj& self(const CMPIArgs* as) {
  ArgsObj* o = unwrap<ArgsObj>(as);
  if (o == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
  return *o;
}

CMPIStatus release(CMPIArgs* as) { return releaseFace<ArgsObj>(as); }

CMPIArgs* clone(const CMPIArgs* as, CMPIStatus* rc) {
  return cloneFace<ArgsObj>(
      as, rc, [](const ArgsObj& o) { return std::make_unique<ArgsObj>(o.broker(), o.args); });
}

CMPIStatus addArg(const CMPIArgs* as, const char* name, const CMPIValue* value,
                  const CMPIType type) {
  return guarded([&] {
    ArgsObj& o = self(as);
    if (name == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    Value v = toValue(value, type);
    const long i = findName(o.args, name);
    if (i >= 0) {
      o.args[static_cast<std::size_t>(i)].value = std::move(v);
    } else {
      o.args.push_back(NamedValue{name, std::move(v)});
    }
    return status(CMPI_RC_OK);
  });
}

CMPIData getArg(const CMPIArgs* as, const char* name, CMPIStatus* rc) {
  return guardedValue<CMPIData>(rc, notFoundData(), [&] {
    ArgsObj& o = self(as);
    if (name == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    const long i = findName(o.args, name);
    if (i < 0) throw RcError(CMPI_RC_ERR_NOT_FOUND);
    CMPIData d = toData(o.broker(), o.args[static_cast<std::size_t>(i)].value);
    setStatus(rc, CMPI_RC_OK);
    return d;
  });
}

CMPIData getArgAt(const CMPIArgs* as, CMPICount index, CMPIString** name, CMPIStatus* rc) {
  return guardedValue<CMPIData>(rc, notFoundData(), [&] {
    ArgsObj& o = self(as);
    if (index >= o.args.size()) throw RcError(CMPI_RC_ERR_NO_SUCH_PROPERTY);
    CMPIData d = toData(o.broker(), o.args[index].value);
    if (name != nullptr) *name = makeString(o.broker(), o.args[index].name)->face();
    setStatus(rc, CMPI_RC_OK);
    return d;
  });
}

CMPICount getArgCount(const CMPIArgs* as, CMPIStatus* rc) {
  return guardedValue<CMPICount>(rc, 0, [&] {
    const auto n = static_cast<CMPICount>(self(as).args.size());
    setStatus(rc, CMPI_RC_OK);
    return n;
  });
}

}  // namespace

void fillArgsFT(CMPIArgsFT& ft) {
  ft.ftVersion = CMPIVersion200;
  ft.release = release;
  ft.clone = clone;
  ft.addArg = addArg;
  ft.getArg = getArg;
  ft.getArgAt = getArgAt;
  ft.getArgCount = getArgCount;
}

}  // namespace zeda::host::detail
