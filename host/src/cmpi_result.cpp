// CMPIResult: hands what a provider returns, in order, to the request's sink.
#include "convert.hpp"
#include "objects.hpp"

namespace zeda::host::detail {

ResultObj::ResultObj(Broker& b, Outcome& o, ResultSink& s)
    : Enc(b, &b.tables().result), outcome(&o), sink(&s) {}

ResultObj* makeResult(Broker& b, Outcome& outcome, ResultSink& sink) {
  return b.store().adopt(std::make_unique<ResultObj>(b, outcome, sink));
}

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
    const Value v = toValue(value, type);
    std::lock_guard<std::mutex> lock(o.mutex);
    o.sink->value(v);
    return status(CMPI_RC_OK);
  });
}

// An instance or path of this broker is handed over as the broker holds it;
// one of another CMPI implementation is read through its function table.
CMPIStatus returnInstance(const CMPIResult* r, const CMPIInstance* inst) {
  return guarded([&] {
    ResultObj& o = self(r);
    if (inst == nullptr || inst->hdl == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    if (inst->ft == &o.broker().tables().instance) {
      const InstanceObj& own = *unwrap<InstanceObj>(inst);
      std::lock_guard<std::mutex> lock(o.mutex);
      o.sink->instance(own.inst);
    } else {
      const Instance read = readInstance(inst);
      std::lock_guard<std::mutex> lock(o.mutex);
      o.sink->instance(read);
    }
    return status(CMPI_RC_OK);
  });
}

CMPIStatus returnObjectPath(const CMPIResult* r, const CMPIObjectPath* op) {
  return guarded([&] {
    ResultObj& o = self(r);
    if (op == nullptr || op->hdl == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    if (op->ft == &o.broker().tables().objectPath) {
      const ObjectPathObj& own = *unwrap<ObjectPathObj>(op);
      std::lock_guard<std::mutex> lock(o.mutex);
      o.sink->path(own.path);
    } else {
      const ObjectPath read = readObjectPath(op);
      std::lock_guard<std::mutex> lock(o.mutex);
      o.sink->path(read);
    }
    return status(CMPI_RC_OK);
  });
}

CMPIStatus returnDone(const CMPIResult* r) {
  return guarded([&] {
    ResultObj& o = self(r);
    std::lock_guard<std::mutex> lock(o.mutex);
    o.outcome->done = true;
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
    std::lock_guard<std::mutex> lock(o.mutex);
    o.outcome->errors.push_back(std::move(e));
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
