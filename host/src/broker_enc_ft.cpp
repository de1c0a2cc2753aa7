// CMPIBrokerEncFT: object factories, type inquiry, messages, logging and
// tracing.
#include <cstdarg>
#include <cstring>

#include "convert.hpp"
#include "objects.hpp"
#include "zeda/host/format.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace zeda::host::detail {

namespace {

Broker& brokerOf(const CMPIBroker* mb) {
  Broker* b = Broker::of(mb);
  if (b == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
  return *b;
}

bool storable(CMPIType t) {
  switch (storedType(static_cast<CMPIType>(t & ~CMPI_ARRAY))) {
    case CMPI_boolean:
    case CMPI_char16:
    case CMPI_uint8:
    case CMPI_uint16:
    case CMPI_uint32:
    case CMPI_uint64:
    case CMPI_sint8:
    case CMPI_sint16:
    case CMPI_sint32:
    case CMPI_sint64:
    case CMPI_real32:
    case CMPI_real64:
    case CMPI_string:
    case CMPI_dateTime:
    case CMPI_ref:
    case CMPI_instance:
      return true;
    default:
      return false;
  }
}

CMPIInstance* newInstance(const CMPIBroker* mb, const CMPIObjectPath* op, CMPIStatus* rc) {
  return guardedValue<CMPIInstance*>(rc, nullptr, [&]() -> CMPIInstance* {
    Broker& b = brokerOf(mb);
    if (op == nullptr || op->hdl == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    CMPIInstance* ci = makeInstance(b, Instance(readObjectPath(op)))->face();
    setStatus(rc, CMPI_RC_OK);
    return ci;
  });
}

CMPIObjectPath* newObjectPath(const CMPIBroker* mb, const char* ns, const char* cn,
                              CMPIStatus* rc) {
  return guardedValue<CMPIObjectPath*>(rc, nullptr, [&]() -> CMPIObjectPath* {
    Broker& b = brokerOf(mb);
    if (cn == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    CMPIObjectPath* op = makeObjectPath(b, ObjectPath(ns ? ns : "", cn))->face();
    setStatus(rc, CMPI_RC_OK);
    return op;
  });
}

CMPIArgs* newArgs(const CMPIBroker* mb, CMPIStatus* rc) {
  return guardedValue<CMPIArgs*>(rc, nullptr, [&]() -> CMPIArgs* {
    CMPIArgs* a = makeArgs(brokerOf(mb))->face();
    setStatus(rc, CMPI_RC_OK);
    return a;
  });
}

CMPIString* newString(const CMPIBroker* mb, const char* data, CMPIStatus* rc) {
  return guardedValue<CMPIString*>(rc, nullptr, [&]() -> CMPIString* {
    CMPIString* s =
        makeString(brokerOf(mb), data ? std::optional<std::string>(data) : std::nullopt)->face();
    setStatus(rc, CMPI_RC_OK);
    return s;
  });
}

CMPIArray* newArray(const CMPIBroker* mb, CMPICount max, CMPIType type, CMPIStatus* rc) {
  return guardedValue<CMPIArray*>(rc, nullptr, [&]() -> CMPIArray* {
    Broker& b = brokerOf(mb);
    if (!storable(type)) throw RcError(CMPI_RC_ERR_INVALID_DATA_TYPE);
    const CMPIType element = storedType(static_cast<CMPIType>(type & ~CMPI_ARRAY));
    CMPIArray* a = makeArray(b, element, std::vector<Value>(max, Value::null(element)))->face();
    setStatus(rc, CMPI_RC_OK);
    return a;
  });
}

CMPIDateTime* newDateTime(const CMPIBroker* mb, CMPIStatus* rc) {
  return guardedValue<CMPIDateTime*>(rc, nullptr, [&]() -> CMPIDateTime* {
    CMPIDateTime* dt = makeDateTime(brokerOf(mb), nowMicros(), false)->face();
    setStatus(rc, CMPI_RC_OK);
    return dt;
  });
}

CMPIDateTime* newDateTimeFromBinary(const CMPIBroker* mb, CMPIUint64 binTime, CMPIBoolean interval,
                                    CMPIStatus* rc) {
  return guardedValue<CMPIDateTime*>(rc, nullptr, [&]() -> CMPIDateTime* {
    CMPIDateTime* dt = makeDateTime(brokerOf(mb), binTime, interval != 0)->face();
    setStatus(rc, CMPI_RC_OK);
    return dt;
  });
}

CMPIDateTime* newDateTimeFromChars(const CMPIBroker* mb, const char* utcTime, CMPIStatus* rc) {
  return guardedValue<CMPIDateTime*>(rc, nullptr, [&]() -> CMPIDateTime* {
    Broker& b = brokerOf(mb);
    if (utcTime == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    std::uint64_t micros = 0;
    bool interval = false;
    if (!parseDateTime(utcTime, micros, interval)) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    CMPIDateTime* dt = makeDateTime(b, micros, interval, std::string(utcTime))->face();
    setStatus(rc, CMPI_RC_OK);
    return dt;
  });
}

CMPISelectExp* newSelectExp(const CMPIBroker* mb, const char* query, const char* lang,
                            CMPIArray** projection, CMPIStatus* rc) {
  return guardedValue<CMPISelectExp*>(rc, nullptr, [&]() -> CMPISelectExp* {
    Broker& b = brokerOf(mb);
    if (projection != nullptr) *projection = nullptr;
    if (query == nullptr || lang == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    const std::string l(lang);
    if (!namesEqual(l, "WQL") && !namesEqual(l, "CQL") && !namesEqual(l, "DMTF:CQL")) {
      throw RcError(CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED);
    }
    CMPISelectExp* se = makeSelectExp(b, query, l)->face();
    setStatus(rc, CMPI_RC_OK);
    return se;
  });
}

// No class repository: a class "is a" type exactly when the names match.
CMPIBoolean classPathIsA(const CMPIBroker* mb, const CMPIObjectPath* op, const char* type,
                         CMPIStatus* rc) {
  return guardedValue<CMPIBoolean>(rc, 0, [&] {
    brokerOf(mb);
    if (op == nullptr || op->hdl == nullptr || type == nullptr)
      throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    CMPIStatus st{CMPI_RC_OK, nullptr};
    const auto cls = readString(op->ft->getClassName(op, &st));
    if (st.rc != CMPI_RC_OK) throw RcError(st.rc);
    setStatus(rc, CMPI_RC_OK);
    return static_cast<CMPIBoolean>(cls && namesEqual(*cls, type) ? 1 : 0);
  });
}

CMPIString* toString(const CMPIBroker* mb, const void* object, CMPIStatus* rc) {
  return guardedValue<CMPIString*>(rc, nullptr, [&]() -> CMPIString* {
    Broker& b = brokerOf(mb);
    const auto text = describe(b, object);
    if (!text) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    setStatus(rc, CMPI_RC_OK);
    return makeString(b, *text)->face();
  });
}

CMPIBoolean isOfType(const CMPIBroker* mb, const void* object, const char* type, CMPIStatus* rc) {
  return guardedValue<CMPIBoolean>(rc, 0, [&] {
    Broker& b = brokerOf(mb);
    if (type == nullptr) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    const auto name = typeNameOf(b, object);
    if (!name) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    setStatus(rc, CMPI_RC_OK);
    return static_cast<CMPIBoolean>(*name == type ? 1 : 0);
  });
}

CMPIString* getType(const CMPIBroker* mb, const void* object, CMPIStatus* rc) {
  return guardedValue<CMPIString*>(rc, nullptr, [&]() -> CMPIString* {
    Broker& b = brokerOf(mb);
    const auto name = typeNameOf(b, object);
    if (!name) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    setStatus(rc, CMPI_RC_OK);
    return makeString(b, *name)->face();
  });
}

// Reads count (type, value) pairs as the CMPI standard's CMFmt... macros pass
// them (sint32 as long, uint32 as unsigned long, 64-bit integers as long
// long, reals as double, booleans as int, CMPI_chars as char*, CMPI_string
// as CMPIString*) and substitutes $0..$9 in the default message. Throws
// RcError for a type that cannot be a message argument.
std::string substitute(const char* defMsg, CMPICount count, va_list& args) {
  if (count > 10) throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
  std::vector<std::string> values;
  for (CMPICount i = 0; i < count; ++i) {
    const int type = va_arg(args, int);
    switch (type) {
      case CMPI_sint32:
        values.push_back(std::to_string(va_arg(args, long)));
        break;
      case CMPI_uint32:
        values.push_back(std::to_string(va_arg(args, unsigned long)));
        break;
      case CMPI_sint64:
        values.push_back(std::to_string(va_arg(args, long long)));
        break;
      case CMPI_uint64:
        values.push_back(std::to_string(va_arg(args, unsigned long long)));
        break;
      case CMPI_real32:
      case CMPI_real64: {
        Value v = Value::real64(va_arg(args, double));
        values.push_back(valueToMof(v));
        break;
      }
      case CMPI_boolean:
        values.push_back(va_arg(args, int) ? "true" : "false");
        break;
      case CMPI_chars: {
        const char* c = va_arg(args, const char*);
        values.push_back(c ? c : "");
        break;
      }
      case CMPI_string: {
        const CMPIString* str = va_arg(args, const CMPIString*);
        values.push_back(readString(str).value_or(""));
        break;
      }
      default:
        throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
    }
  }
  const std::string text = defMsg ? defMsg : "";
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '$' && i + 1 < text.size() && text[i + 1] >= '0' && text[i + 1] <= '9') {
      const auto n = static_cast<std::size_t>(text[i + 1] - '0');
      if (n < values.size()) {
        out += values[n];
        ++i;
        continue;
      }
    }
    out += text[i];
  }
  return out;
}

// The host has no message catalogues: every message is the default one.
CMPIString* getMessage(const CMPIBroker* mb, const char* msgId, const char* defMsg, CMPIStatus* rc,
                       CMPICount count, ...) {
  va_list args;
  va_start(args, count);
  CMPIString* out = guardedValue<CMPIString*>(rc, nullptr, [&]() -> CMPIString* {
    Broker& b = brokerOf(mb);
    CMPIString* s = makeString(b, substitute(defMsg, count, args))->face();
    setStatus(rc, CMPI_RC_OK);
    return s;
  });
  va_end(args);
  return out;
}

CMPIString* getMessage2(const CMPIBroker* mb, const char* msgId, const CMPIMsgFileHandle handle,
                        const char* defMsg, CMPIStatus* rc, CMPICount count, ...) {
  va_list args;
  va_start(args, count);
  CMPIString* out = guardedValue<CMPIString*>(rc, nullptr, [&]() -> CMPIString* {
    Broker& b = brokerOf(mb);
    if (handle != nullptr && !b.isMessageFile(handle)) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
    CMPIString* s = makeString(b, substitute(defMsg, count, args))->face();
    setStatus(rc, CMPI_RC_OK);
    return s;
  });
  va_end(args);
  return out;
}

std::string logText(const char* text, const CMPIString* string) {
  if (text != nullptr) return text;
  return readString(string).value_or("");
}

CMPIStatus logMessage(const CMPIBroker* mb, int severity, const char* id, const char* text,
                      const CMPIString* string) {
  return guarded([&] {
    Broker& b = brokerOf(mb);
    b.log(LogRecord{severity, id ? id : "", logText(text, string)}, false);
    return status(static_cast<CMPIrc>(b.settings().logMessageRc));
  });
}

CMPIStatus trace(const CMPIBroker* mb, int level, const char* component, const char* text,
                 const CMPIString* string) {
  return guarded([&] {
    Broker& b = brokerOf(mb);
    b.log(LogRecord{level, component ? component : "", logText(text, string)}, true);
    return status(CMPI_RC_OK);
  });
}

CMPIError* newCMPIError(const CMPIBroker* mb, const char* owner, const char* msgID, const char* msg,
                        const CMPIErrorSeverity sev, const CMPIErrorProbableCause pc,
                        const CMPIrc cimStatusCode, CMPIStatus* rc) {
  return guardedValue<CMPIError*>(rc, nullptr, [&]() -> CMPIError* {
    Broker& b = brokerOf(mb);
    ErrorObj* e = makeError(b);
    if (owner != nullptr) e->owningEntity = owner;
    if (msgID != nullptr) e->messageId = msgID;
    if (msg != nullptr) e->message = msg;
    e->severity = sev;
    e->probableCause = pc;
    e->cimStatusCode = cimStatusCode;
    setStatus(rc, CMPI_RC_OK);
    return e->face();
  });
}

CMPIStatus openMessageFile(const CMPIBroker* mb, const char* msgFile, CMPIMsgFileHandle* handle) {
  return guarded([&] {
    Broker& b = brokerOf(mb);
    if (msgFile == nullptr || handle == nullptr) return status(CMPI_RC_ERR_INVALID_PARAMETER);
    *handle = b.openMessageFile(msgFile);
    return status(CMPI_RC_OK);
  });
}

CMPIStatus closeMessageFile(const CMPIBroker* mb, const CMPIMsgFileHandle handle) {
  return guarded([&] {
    Broker& b = brokerOf(mb);
    return status(b.closeMessageFile(handle) ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
  });
}

}  // namespace

void fillBrokerEncFT(CMPIBrokerEncFT& ft, const BrokerSettings& s) {
  ft.ftVersion = s.encFtVersion;
  ft.newInstance = newInstance;
  ft.newObjectPath = newObjectPath;
  ft.newArgs = newArgs;
  ft.newString = newString;
  ft.newArray = newArray;
  ft.newDateTime = newDateTime;
  ft.newDateTimeFromBinary = newDateTimeFromBinary;
  ft.newDateTimeFromChars = newDateTimeFromChars;
  ft.newSelectExp = newSelectExp;
  ft.classPathIsA = classPathIsA;
  ft.toString = toString;
  ft.isOfType = isOfType;
  ft.getType = getType;
  ft.getMessage = getMessage;
  ft.logMessage = logMessage;
  ft.trace = trace;
  ft.newCMPIError = newCMPIError;
  ft.openMessageFile = openMessageFile;
  ft.closeMessageFile = closeMessageFile;
  ft.getMessage2 = getMessage2;
}

}  // namespace zeda::host::detail
