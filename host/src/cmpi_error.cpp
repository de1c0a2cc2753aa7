// CMPIError: the extended error of CMPI 2.0, modelled after CIM_Error.
#include "convert.hpp"
#include "objects.hpp"

namespace zeda::host::detail {

ErrorObj::ErrorObj(Broker& b) : Enc(b, &b.tables().error) {}

ErrorObj* makeError(Broker& b) { return b.store().adopt(std::make_unique<ErrorObj>(b)); }

namespace {

ErrorObj& self(const CMPIError* er) {
  ErrorObj* o = unwrap<ErrorObj>(er);
  if (o == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
  return *o;
}

CMPIStatus release(CMPIError* er) { return releaseFace<ErrorObj>(er); }

CMPIError* clone(const CMPIError* er, CMPIStatus* rc) {
  return cloneFace<ErrorObj>(er, rc, [](const ErrorObj& o) {
    auto c = std::make_unique<ErrorObj>(o.broker());
    c->errorType = o.errorType;
    c->otherErrorType = o.otherErrorType;
    c->owningEntity = o.owningEntity;
    c->messageId = o.messageId;
    c->message = o.message;
    c->severity = o.severity;
    c->probableCause = o.probableCause;
    c->probableCauseDescription = o.probableCauseDescription;
    c->recommendedActions = o.recommendedActions;
    c->errorSource = o.errorSource;
    c->errorSourceFormat = o.errorSourceFormat;
    c->otherErrorSourceFormat = o.otherErrorSourceFormat;
    c->cimStatusCode = o.cimStatusCode;
    c->cimStatusCodeDescription = o.cimStatusCodeDescription;
    c->messageArguments = o.messageArguments;
    return c;
  });
}

// Getter of a plain field.
template <typename T>
T field(const CMPIError* er, CMPIStatus* rc, T fallback, T ErrorObj::*member) {
  return guardedValue<T>(rc, fallback, [&] {
    ErrorObj& o = self(er);
    setStatus(rc, CMPI_RC_OK);
    return o.*member;
  });
}

// Getter of a text field: a new string, or NULL (status OK) when unset.
CMPIString* text(const CMPIError* er, CMPIStatus* rc,
                 std::optional<std::string> ErrorObj::*member) {
  return guardedValue<CMPIString*>(rc, nullptr, [&]() -> CMPIString* {
    ErrorObj& o = self(er);
    setStatus(rc, CMPI_RC_OK);
    const auto& v = o.*member;
    return v ? makeString(o.broker(), *v)->face() : nullptr;
  });
}

CMPIArray* array(const CMPIError* er, CMPIStatus* rc, std::optional<Value> ErrorObj::*member) {
  return guardedValue<CMPIArray*>(rc, nullptr, [&]() -> CMPIArray* {
    ErrorObj& o = self(er);
    setStatus(rc, CMPI_RC_OK);
    const auto& v = o.*member;
    if (!v || v->isNull()) return nullptr;
    return makeArray(o.broker(), static_cast<CMPIType>(v->elementType()), v->elements())->face();
  });
}

CMPIStatus setText(CMPIError* er, const char* value, std::optional<std::string> ErrorObj::*member) {
  return guarded([&] {
    ErrorObj& o = self(er);
    if (value == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    o.*member = std::string(value);
    return status(CMPI_RC_OK);
  });
}

CMPIStatus setArray(CMPIError* er, const CMPIArray* value, std::optional<Value> ErrorObj::*member) {
  return guarded([&] {
    ErrorObj& o = self(er);
    if (value == nullptr || value->hdl == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    CMPIStatus st{CMPI_RC_OK, nullptr};
    const CMPIType t = value->ft->getSimpleType(value, &st);
    if (st.rc != CMPI_RC_OK) return status(st.rc);
    CMPIValue v{};
    v.array = const_cast<CMPIArray*>(value);
    o.*member = toValue(&v, static_cast<CMPIType>(t | CMPI_ARRAY));
    return status(CMPI_RC_OK);
  });
}

CMPIErrorType getErrorType(const CMPIError* er, CMPIStatus* rc) {
  return field(er, rc, UnknownErrorType, &ErrorObj::errorType);
}
CMPIString* getOtherErrorType(const CMPIError* er, CMPIStatus* rc) {
  return text(er, rc, &ErrorObj::otherErrorType);
}
CMPIString* getOwningEntity(const CMPIError* er, CMPIStatus* rc) {
  return text(er, rc, &ErrorObj::owningEntity);
}
CMPIString* getMessageID(const CMPIError* er, CMPIStatus* rc) {
  return text(er, rc, &ErrorObj::messageId);
}
CMPIString* getMessage(const CMPIError* er, CMPIStatus* rc) {
  return text(er, rc, &ErrorObj::message);
}
CMPIErrorSeverity getPerceivedSeverity(const CMPIError* er, CMPIStatus* rc) {
  return field(er, rc, ErrorSevUnknown, &ErrorObj::severity);
}
CMPIErrorProbableCause getProbableCause(const CMPIError* er, CMPIStatus* rc) {
  return field(er, rc, ErrorProbCauseUnknown, &ErrorObj::probableCause);
}
CMPIString* getProbableCauseDescription(const CMPIError* er, CMPIStatus* rc) {
  return text(er, rc, &ErrorObj::probableCauseDescription);
}
CMPIArray* getRecommendedActions(const CMPIError* er, CMPIStatus* rc) {
  return array(er, rc, &ErrorObj::recommendedActions);
}
CMPIString* getErrorSource(const CMPIError* er, CMPIStatus* rc) {
  return text(er, rc, &ErrorObj::errorSource);
}
CMPIErrorSrcFormat getErrorSourceFormat(const CMPIError* er, CMPIStatus* rc) {
  return field(er, rc, CMPIErrSrcUnknown, &ErrorObj::errorSourceFormat);
}
CMPIString* getOtherErrorSourceFormat(const CMPIError* er, CMPIStatus* rc) {
  return text(er, rc, &ErrorObj::otherErrorSourceFormat);
}
CMPIrc getCIMStatusCode(const CMPIError* er, CMPIStatus* rc) {
  return field(er, rc, CMPI_RC_OK, &ErrorObj::cimStatusCode);
}
CMPIString* getCIMStatusCodeDescription(const CMPIError* er, CMPIStatus* rc) {
  return text(er, rc, &ErrorObj::cimStatusCodeDescription);
}
CMPIArray* getMessageArguments(const CMPIError* er, CMPIStatus* rc) {
  return array(er, rc, &ErrorObj::messageArguments);
}

CMPIStatus setErrorType(CMPIError* er, const CMPIErrorType et) {
  return guarded([&] {
    self(er).errorType = et;
    return status(CMPI_RC_OK);
  });
}
CMPIStatus setOtherErrorType(CMPIError* er, const char* ot) {
  return setText(er, ot, &ErrorObj::otherErrorType);
}
CMPIStatus setProbableCauseDescription(CMPIError* er, const char* pcd) {
  return setText(er, pcd, &ErrorObj::probableCauseDescription);
}
CMPIStatus setRecommendedActions(CMPIError* er, const CMPIArray* ra) {
  return setArray(er, ra, &ErrorObj::recommendedActions);
}
CMPIStatus setErrorSource(CMPIError* er, const char* es) {
  return setText(er, es, &ErrorObj::errorSource);
}
CMPIStatus setErrorSourceFormat(CMPIError* er, const CMPIErrorSrcFormat esf) {
  return guarded([&] {
    self(er).errorSourceFormat = esf;
    return status(CMPI_RC_OK);
  });
}
CMPIStatus setOtherErrorSourceFormat(CMPIError* er, const char* oesf) {
  return setText(er, oesf, &ErrorObj::otherErrorSourceFormat);
}
CMPIStatus setCIMStatusCodeDescription(CMPIError* er, const char* cd) {
  return setText(er, cd, &ErrorObj::cimStatusCodeDescription);
}
CMPIStatus setMessageArguments(CMPIError* er, CMPIArray* values) {
  return setArray(er, values, &ErrorObj::messageArguments);
}

}  // namespace

void fillErrorFT(CMPIErrorFT& ft) {
  ft.ftVersion = CMPIVersion200;
  ft.release = release;
  ft.clone = clone;
  ft.getErrorType = getErrorType;
  ft.getOtherErrorType = getOtherErrorType;
  ft.getOwningEntity = getOwningEntity;
  ft.getMessageID = getMessageID;
  ft.getMessage = getMessage;
  ft.getPerceivedSeverity = getPerceivedSeverity;
  ft.getProbableCause = getProbableCause;
  ft.getProbableCauseDescription = getProbableCauseDescription;
  ft.getRecommendedActions = getRecommendedActions;
  ft.getErrorSource = getErrorSource;
  ft.getErrorSourceFormat = getErrorSourceFormat;
  ft.getOtherErrorSourceFormat = getOtherErrorSourceFormat;
  ft.getCIMStatusCode = getCIMStatusCode;
  ft.getCIMStatusCodeDescription = getCIMStatusCodeDescription;
  ft.getMessageArguments = getMessageArguments;
  ft.setErrorType = setErrorType;
  ft.setOtherErrorType = setOtherErrorType;
  ft.setProbableCauseDescription = setProbableCauseDescription;
  ft.setRecommendedActions = setRecommendedActions;
  ft.setErrorSource = setErrorSource;
  ft.setErrorSourceFormat = setErrorSourceFormat;
  ft.setOtherErrorSourceFormat = setOtherErrorSourceFormat;
  ft.setCIMStatusCodeDescription = setCIMStatusCodeDescription;
  ft.setMessageArguments = setMessageArguments;
}

}  // namespace zeda::host::detail
