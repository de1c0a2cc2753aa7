// The encapsulated objects of the broker, one class per CMPI type. Their
// function tables are filled by the fill...FT functions, one file per type.
#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "broker.hpp"
#include "core.hpp"
#include "zeda/host/instance.hpp"
#include "zeda/host/object_path.hpp"
#include "zeda/host/outcome.hpp"
#include "zeda/host/result_sink.hpp"
#include "zeda/host/value.hpp"

namespace zeda::host::detail {

class StringObj : public Enc<CMPIString> {
 public:
  StringObj(Broker& b, std::optional<std::string> text);
  StringObj(Broker& b, Value text);
  Value text;  // a string, or a null string when made from a NULL char*
};

// The text of a CMPIString made by this host (any broker of the process),
// or null for a string of another CMPI implementation.
const Value* ownStringText(const CMPIString* s);
// Same for object paths and instances: read without a call through the
// function table (which would leave a string object per name read in the
// caller's scope).
const ObjectPath* ownObjectPath(const CMPIObjectPath* op);
const Instance* ownInstance(const CMPIInstance* ci);

class ArrayObj : public Enc<CMPIArray> {
 public:
  ArrayObj(Broker& b, CMPIType elementType, std::vector<Value> elements);
  // Element i as a value; a kept object is read now, through its own table
  // (throws RcError CMPI_RC_ERR_INVALID_HANDLE once it has been released).
  Value element(std::size_t i) const;
  // Every element as a value, kept objects read now.
  std::vector<Value> values() const;
  // The object kept at i, or null when element i is a value.
  const CMPIData* keptAt(std::size_t i) const {
    return i < kept.size() && kept[i] ? &*kept[i] : nullptr;
  }
  // Keeps `data` at i; forgets what was kept there when it is null.
  void keep(std::size_t i, std::optional<CMPIData> data);

  CMPIType elementType;  // scalar code, CMPI_chars folded into CMPI_string
  std::vector<Value> elements;
  // An encapsulated object (string, reference, instance, date-time) given to
  // setElementAt is kept, not copied: OpenPegasus keeps the pointer and reads
  // it only when the array is used, so a provider that releases the object
  // before that reads freed memory, here as there. kept[i] holds the object
  // set at i (elements[i] is then a null placeholder); the list stays empty
  // until an object is set, so arrays of values cost nothing more.
  std::vector<std::optional<CMPIData>> kept;
};

class DateTimeObj : public Enc<CMPIDateTime> {
 public:
  DateTimeObj(Broker& b, std::uint64_t micros, bool interval,
              std::optional<std::string> text = std::nullopt);
  std::uint64_t micros;  // since the epoch (UTC), or the interval length
  bool interval;
  std::optional<std::string> text;  // as given to newDateTimeFromChars
};

// CIM datetime text <-> microseconds. Timestamps: "yyyymmddhhmmss.mmmmmmsUUU"
// (s = + or -, UUU = UTC offset in minutes); intervals:
// "ddddddddhhmmss.mmmmmm:000". parse returns false for malformed text.
bool parseDateTime(const std::string& text, std::uint64_t& micros, bool& interval);
std::string formatDateTime(std::uint64_t micros, bool interval);

class ObjectPathObj : public Enc<CMPIObjectPath> {
 public:
  ObjectPathObj(Broker& b, ObjectPath path, std::string host = {});
  ObjectPath path;
  std::string host;
};

class InstanceObj : public Enc<CMPIInstance> {
 public:
  InstanceObj(Broker& b, Instance inst);
  Instance inst;
  // Set by setPropertyFilter; nullopt: no filter. keyFilter holds the
  // names of its key list only under Host::setHonourKeyList(true).
  std::optional<std::vector<std::string>> propertyFilter;
  std::vector<std::string> keyFilter;
  // Whether setProperty keeps `name`: no filter, a name of the property
  // list, a key of the instance's object path, or of keyFilter.
  bool admits(std::string_view name) const;
};

class ArgsObj : public Enc<CMPIArgs> {
 public:
  ArgsObj(Broker& b, std::vector<NamedValue> args);
  std::vector<NamedValue> args;
};

class ContextObj : public Enc<CMPIContext> {
 public:
  ContextObj(Broker& b, std::vector<NamedValue> entries);
  std::vector<NamedValue> entries;
};

class EnumerationObj : public Enc<CMPIEnumeration> {
 public:
  EnumerationObj(Broker& b, std::vector<Value> items);
  std::vector<Value> items;
  std::size_t next = 0;
};

// Hands what a provider returns to a sink (results) and an Outcome (done,
// errors), both owned by the caller.
class ResultObj : public Enc<CMPIResult> {
 public:
  ResultObj(Broker& b, Outcome& outcome, ResultSink& sink);
  Outcome* outcome;
  ResultSink* sink;
  std::mutex mutex;  // one return call at a time, whichever thread makes it
};

// A sink that appends every result to an Outcome's results.
class CollectingSink final : public ResultSink {
 public:
  explicit CollectingSink(Outcome& outcome) : outcome_(outcome) {}
  void instance(const Instance& i) override { outcome_.results.emplace_back(i); }
  void path(const ObjectPath& p) override { outcome_.results.emplace_back(p); }
  void value(const Value& v) override { outcome_.results.emplace_back(v); }

 private:
  Outcome& outcome_;
};

class ErrorObj : public Enc<CMPIError> {
 public:
  explicit ErrorObj(Broker& b);
  CMPIErrorType errorType = UnknownErrorType;
  std::optional<std::string> otherErrorType;
  std::optional<std::string> owningEntity;
  std::optional<std::string> messageId;
  std::optional<std::string> message;
  CMPIErrorSeverity severity = ErrorSevUnknown;
  CMPIErrorProbableCause probableCause = ErrorProbCauseUnknown;
  std::optional<std::string> probableCauseDescription;
  std::optional<Value> recommendedActions;  // string[]
  std::optional<std::string> errorSource;
  CMPIErrorSrcFormat errorSourceFormat = CMPIErrSrcUnknown;
  std::optional<std::string> otherErrorSourceFormat;
  CMPIrc cimStatusCode = CMPI_RC_OK;
  std::optional<std::string> cimStatusCodeDescription;
  std::optional<Value> messageArguments;  // string[]
};

class SelectExpObj : public Enc<CMPISelectExp> {
 public:
  SelectExpObj(Broker& b, std::string query, std::string language);
  std::string query;
  std::string language;
};

// Makers: the new object belongs to the current scope of the broker's store.
StringObj* makeString(Broker& b, std::optional<std::string> text);
ArrayObj* makeArray(Broker& b, CMPIType elementType, std::vector<Value> elements);
DateTimeObj* makeDateTime(Broker& b, std::uint64_t micros, bool interval,
                          std::optional<std::string> text = std::nullopt);
ObjectPathObj* makeObjectPath(Broker& b, ObjectPath path);
InstanceObj* makeInstance(Broker& b, Instance inst);
ArgsObj* makeArgs(Broker& b, std::vector<NamedValue> args = {});
ContextObj* makeContext(Broker& b, std::vector<NamedValue> entries);
EnumerationObj* makeEnumeration(Broker& b, std::vector<Value> items);
ResultObj* makeResult(Broker& b, Outcome& outcome, ResultSink& sink);
ErrorObj* makeError(Broker& b);
SelectExpObj* makeSelectExp(Broker& b, std::string query, std::string language);

// Function tables, one file each.
void fillStringFT(CMPIStringFT& ft);
void fillArrayFT(CMPIArrayFT& ft);
void fillDateTimeFT(CMPIDateTimeFT& ft);
void fillObjectPathFT(CMPIObjectPathFT& ft);
void fillInstanceFT(CMPIInstanceFT& ft);
void fillArgsFT(CMPIArgsFT& ft);
void fillContextFT(CMPIContextFT& ft);
void fillEnumerationFT(CMPIEnumerationFT& ft);
void fillResultFT(CMPIResultFT& ft);
void fillErrorFT(CMPIErrorFT& ft);
void fillSelectExpFT(CMPISelectExpFT& ft);

// Names in a NULL-terminated char* list; nullopt for a NULL list.
std::optional<std::vector<std::string>> readNameList(const char** list);

}  // namespace zeda::host::detail

namespace zeda::host::detail {

// Shared release() / clone() of the function tables.
template <typename Obj, typename Face>
CMPIStatus releaseFace(Face* face) {
  Obj* o = unwrap<Obj>(face);
  if (o == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
  o->broker().release(*o);
  return status(CMPI_RC_OK);
}

// copy(const Obj&) returns the std::unique_ptr<Obj> of the clone.
template <typename Obj, typename Face, typename Copy>
Face* cloneFace(const Face* face, CMPIStatus* rc, Copy copy) {
  return guardedValue<Face*>(rc, nullptr, [&]() -> Face* {
    Obj* o = unwrap<Obj>(face);
    if (o == nullptr) {
      setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
      return nullptr;
    }
    Obj* c = o->broker().ownStore().adoptClone(copy(*o));
    setStatus(rc, CMPI_RC_OK);
    return c->face();
  });
}

// Index look-up of a named value, ignoring case; -1 when absent.
long findName(const std::vector<NamedValue>& list, const char* name);

}  // namespace zeda::host::detail

namespace zeda::host::detail {
// Microseconds since the epoch, now (UTC).
std::uint64_t nowMicros();
}  // namespace zeda::host::detail
