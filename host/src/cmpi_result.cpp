// CMPIResult: collects what a provider returns, in order, into an Outcome.
#include "convert.hpp"
#include "objects.hpp"

namespace zeda::host::detail {

ResultObj::ResultObj(Broker& b, Outcome& s) : Enc(b, &b.tables().result), sink(&s) {}

ResultObj* makeResult(Broker& b, Outcome& sink) { return b.store().adopt(std::make_unique<ResultObj>(b, sink)); }

namespace {

ResultObj& self(const CMPIResult* r) {
  ResultObj* o = unwrap<ResultObj>(r);
  if (o == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
  return *o;
}

// The result belongs to the broker for the length of the call.
CMPIStatus release(CMPIResult* r) {
  return guarded([&] {
    self(r);
    return status(CMPI_RC_OK);
  });
}

CMPIResult* clone(const CMPIResult* r, CMPIStatus* rc) {
  setStatus(rc, unwrap<ResultObj>(r) ? CMPI_RC_ERR_NOT_SUPPORTED : CMPI_RC_ERR_INVALID_HANDLE);
  return nullptr;
}

CMPIStatus returnData(const CMPIResult* r, const CMPIValue* value, const CMPIType type) {
  return guarded([&] {
    ResultObj& o = self(r);
    if (value == nullptr && type != CMPI_null) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    o.sink->results.emplace_back(toValue(value, type));
    return status(CMPI_RC_OK);
  });
}

CMPIStatus returnInstance(const CMPIResult* r, const CMPIInstance* inst) {
  return guarded([&] {
    ResultObj& o = self(r);
    if (inst == nullptr || inst->hdl == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    o.sink->results.emplace_back(readInstance(inst));
    return status(CMPI_RC_OK);
  });
}

CMPIStatus returnObjectPath(const CMPIResult* r, const CMPIObjectPath* op) {
  return guarded([&] {
    ResultObj& o = self(r);
    if (op == nullptr || op->hdl == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    o.sink->results.emplace_back(readObjectPath(op));
    return status(CMPI_RC_OK);
  });
}

CMPIStatus returnDone(const CMPIResult* r) {
  return guarded([&] {
    self(r).sink->done = true;
    return status(CMPI_RC_OK);
  });
}

using ErrorGetter = CMPIString* (*)(const CMPIError*, CMPIStatus*);

std::optional<std::string> errorText(const CMPIError* er, ErrorGetter CMPIErrorFT::*get) {
  CMPIStatus st{CMPI_RC_OK, nullptr};
  CMPIString* s = (er->ft->*get)(er, &st);
  return st.rc == CMPI_RC_OK ? readString(s) : std::nullopt;
}

CMPIStatus returnError(const CMPIResult* r, const CMPIError* er) {
  return guarded([&] {
    ResultObj& o = self(r);
    if (er == nullptr || er->hdl == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    ReportedError e;
    e.owningEntity = errorText(er, &CMPIErrorFT::getOwningEntity);
    e.messageId = errorText(er, &CMPIErrorFT::getMessageID);
    e.message = errorText(er, &CMPIErrorFT::getMessage);
    CMPIStatus st{CMPI_RC_OK, nullptr};
    e.cimStatusCode = er->ft->getCIMStatusCode(er, &st);
    o.sink->errors.push_back(std::move(e));
    return status(CMPI_RC_OK);
  });
}

}  // namespace

void fillResultFT(CMPIResultFT& ft) {
  ft.ftVersion = CMPIVersion200;
  ft.release = release;
  ft.clone = clone;
  ft.returnData = returnData;
  ft.returnInstance = returnInstance;
  ft.returnObjectPath = returnObjectPath;
  ft.returnDone = returnDone;
  ft.returnError = returnError;
}

}  // namespace zeda::host::detail
