// CMPISelectExp: a query kept as text. The host has no query engine, so
// evaluation and the normal forms answer CMPI_RC_ERR_NOT_SUPPORTED.
#include "objects.hpp"

namespace zeda::host::detail {

SelectExpObj::SelectExpObj(Broker& b, std::string q, std::string l)
    : Enc(b, &b.tables().selectExp), query(std::move(q)), language(std::move(l)) {}

SelectExpObj* makeSelectExp(Broker& b, std::string query, std::string language) {
  return b.store().adopt(std::make_unique<SelectExpObj>(b, std::move(query), std::move(language)));
}

namespace {

CMPIStatus release(CMPISelectExp* se) { return releaseFace<SelectExpObj>(se); }

CMPISelectExp* clone(const CMPISelectExp* se, CMPIStatus* rc) {
  return cloneFace<SelectExpObj>(se, rc, [](const SelectExpObj& o) {
    return std::make_unique<SelectExpObj>(o.broker(), o.query, o.language);
  });
}

CMPIrc notSupported(const CMPISelectExp* se) {
  return unwrap<SelectExpObj>(se) ? CMPI_RC_ERR_NOT_SUPPORTED : CMPI_RC_ERR_INVALID_HANDLE;
}

CMPIBoolean evaluate(const CMPISelectExp* se, const CMPIInstance*, CMPIStatus* rc) {
  setStatus(rc, notSupported(se));
  return 0;
}

CMPIString* getString(const CMPISelectExp* se, CMPIStatus* rc) {
  return guardedValue<CMPIString*>(rc, nullptr, [&]() -> CMPIString* {
    SelectExpObj* o = unwrap<SelectExpObj>(se);
    if (o == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
    setStatus(rc, CMPI_RC_OK);
    return makeString(o->broker(), o->query)->face();
  });
}

CMPISelectCond* getDOC(const CMPISelectExp* se, CMPIStatus* rc) {
  setStatus(rc, notSupported(se));
  return nullptr;
}

CMPISelectCond* getCOD(const CMPISelectExp* se, CMPIStatus* rc) {
  setStatus(rc, notSupported(se));
  return nullptr;
}

CMPIBoolean evaluateUsingAccessor(const CMPISelectExp* se, CMPIAccessor*, void*, CMPIStatus* rc) {
  setStatus(rc, notSupported(se));
  return 0;
}

}  // namespace

void fillSelectExpFT(CMPISelectExpFT& ft) {
  ft.ftVersion = CMPIVersion200;
  ft.release = release;
  ft.clone = clone;
  ft.evaluate = evaluate;
  ft.getString = getString;
  ft.getDOC = getDOC;
  ft.getCOD = getCOD;
  ft.evaluateUsingAccessor = evaluateUsingAccessor;
}

}  // namespace zeda::host::detail
