// The fake object manager of the binding's unit tests: the broker, its
// factories and up-calls, and the shared helpers.
#include <strings.h>

#include "FakeSupport.h"

namespace zeda::test {

namespace fake {

CMPIStatus ok() { return CMPIStatus{CMPI_RC_OK, nullptr}; }

CMPIStatus failure(Broker* b, CMPIrc rc, const std::string& msg) {
  return CMPIStatus{rc, b->string(msg.c_str())};
}

void report(CMPIStatus* rc, CMPIStatus status) {
  if (rc != nullptr) {
    *rc = status;
  }
}

CMPIData makeData(CMPIType type, CMPIValueState state) {
  CMPIData d{};
  d.type = type;
  d.state = state;
  return d;
}

CMPIData stored(Broker* b, const CMPIValue* value, CMPIType type) {
  if (value == nullptr) {
    return makeData(type, CMPI_nullValue);
  }
  if (type == CMPI_chars) {
    CMPIData d = makeData(CMPI_string, CMPI_goodValue);
    d.value.string = b->string(reinterpret_cast<const char*>(value));
    return d;
  }
  CMPIData d = makeData(type, CMPI_goodValue);
  d.value = *value;
  return d;
}

namespace {

// --- the broker -----------------------------------------------------------
Broker* brokerOf(const CMPIBroker* mb) { return static_cast<Broker*>(mb->hdl); }

// Notes an object made through the factory table: the provider's to release.
template <class Enc>
Enc* madeBy(const CMPIBroker* mb, Enc* enc) {
  brokerOf(mb)->made.insert(enc);
  return enc;
}

CMPIInstance* newInstance(const CMPIBroker* mb, const CMPIObjectPath* op, CMPIStatus* rc) {
  report(rc, ok());
  return madeBy(mb, &brokerOf(mb)->instance(of<Path>(op))->enc);
}
CMPIObjectPath* newPath(const CMPIBroker* mb, const char* ns, const char* cn, CMPIStatus* rc) {
  report(rc, ok());
  return madeBy(mb, &brokerOf(mb)->path(ns, cn)->enc);
}
CMPIArgs* newArgs(const CMPIBroker* mb, CMPIStatus* rc) {
  report(rc, ok());
  return madeBy(mb, &brokerOf(mb)->args()->enc);
}
CMPIString* newString(const CMPIBroker* mb, const char* text, CMPIStatus* rc) {
  Broker* b = brokerOf(mb);
  if (b->newStringFails) {
    report(rc, CMPIStatus{CMPI_RC_ERR_FAILED, nullptr});
    return nullptr;
  }
  report(rc, ok());
  return madeBy(mb, b->string(text));
}
CMPIArray* newArray(const CMPIBroker* mb, CMPICount size, CMPIType type, CMPIStatus* rc) {
  report(rc, ok());
  return madeBy(mb, &brokerOf(mb)->array(type, size)->enc);
}
CMPIDateTime* newDateTime(const CMPIBroker* mb, CMPIStatus* rc) {
  report(rc, ok());
  return madeBy(mb, &brokerOf(mb)->dateTime(1000000, false)->enc);
}
CMPIDateTime* newDateTimeBinary(const CMPIBroker* mb, CMPIUint64 bin, CMPIBoolean interval,
                                CMPIStatus* rc) {
  report(rc, ok());
  return madeBy(mb, &brokerOf(mb)->dateTime(bin, interval != 0)->enc);
}
CMPIDateTime* newDateTimeChars(const CMPIBroker* mb, const char* text, CMPIStatus* rc) {
  // Only the CIM interval form "ddddddddhhmmss.mmmmmm:000" is understood here.
  const std::string t = text ? text : "";
  if (t.size() != 25 || t[21] != ':') {
    report(rc, failure(brokerOf(mb), CMPI_RC_ERR_INVALID_PARAMETER, "bad date-time " + t));
    return nullptr;
  }
  report(rc, ok());
  const CMPIUint64 seconds = std::stoull(t.substr(0, 8)) * 86400 +
                             std::stoull(t.substr(8, 2)) * 3600 +
                             std::stoull(t.substr(10, 2)) * 60 + std::stoull(t.substr(12, 2));
  return madeBy(
      mb, &brokerOf(mb)->dateTime(seconds * 1000000 + std::stoull(t.substr(15, 6)), true)->enc);
}
CMPIBoolean classPathIsA(const CMPIBroker*, const CMPIObjectPath* op, const char* type,
                         CMPIStatus* rc) {
  report(rc, ok());
  return strcasecmp(of<Path>(op)->className.c_str(), type) == 0 ? 1 : 0;
}
CMPIString* objectToString(const CMPIBroker* mb, const void* object, CMPIStatus* rc) {
  return pathToString(static_cast<const CMPIObjectPath*>(object), rc);
}
CMPIStatus logMessage(const CMPIBroker* mb, int, const char*, const char* text, const CMPIString*) {
  brokerOf(mb)->logged.emplace_back(text ? text : "");
  return CMPIStatus{brokerOf(mb)->logAnswer, nullptr};
}
CMPIStatus trace(const CMPIBroker* mb, int, const char*, const char* text, const CMPIString*) {
  brokerOf(mb)->logged.emplace_back(text ? text : "");
  return CMPIStatus{brokerOf(mb)->logAnswer, nullptr};
}

CMPIInstance* upGetInstance(const CMPIBroker* mb, const CMPIContext*, const CMPIObjectPath* op,
                            const char**, CMPIStatus* rc) {
  Broker* b = brokerOf(mb);
  b->calls.emplace_back("getInstance");
  if (of<Path>(op)->keys.empty()) {
    report(rc, failure(b, CMPI_RC_ERR_NOT_FOUND, "no such instance"));
    return nullptr;
  }
  report(rc, ok());
  return &b->instance(of<Path>(op))->enc;
}
CMPIEnumeration* upEnumNames(const CMPIBroker* mb, const CMPIContext*, const CMPIObjectPath* op,
                             CMPIStatus* rc) {
  Broker* b = brokerOf(mb);
  b->calls.emplace_back("enumerateInstanceNames");
  CMPIData d = makeData(CMPI_ref, CMPI_goodValue);
  d.value.ref = const_cast<CMPIObjectPath*>(op);
  report(rc, ok());
  return &b->enumeration({d, d})->enc;
}
CMPIStatus upModify(const CMPIBroker* mb, const CMPIContext*, const CMPIObjectPath*,
                    const CMPIInstance*, const char**) {
  brokerOf(mb)->calls.emplace_back("modifyInstance");
  return failure(brokerOf(mb), CMPI_RC_ERR_ACCESS_DENIED, "read-only");
}
CMPIEnumeration* upAssociators(const CMPIBroker* mb, const CMPIContext*, const CMPIObjectPath*,
                               const char* assocClass, const char*, const char*, const char*,
                               const char**, CMPIStatus* rc) {
  Broker* b = brokerOf(mb);
  b->calls.emplace_back(std::string("associators ") + (assocClass ? assocClass : "(null)"));
  report(rc, ok());
  return &b->enumeration({})->enc;
}

}  // namespace

Broker::Broker() {
  enc_.hdl = this;
  enc_.bft = &bft;
  enc_.eft = &eft;
  bft.brokerCapabilities = 0;
  bft.brokerVersion = 200;
  bft.brokerName = "fake";
  bft.getInstance = upGetInstance;
  bft.enumerateInstanceNames = upEnumNames;
  bft.modifyInstance = upModify;
  bft.associators = upAssociators;

  eft.ftVersion = 200;
  eft.newInstance = newInstance;
  eft.newObjectPath = newPath;
  eft.newArgs = newArgs;
  eft.newString = newString;
  eft.newArray = newArray;
  eft.newDateTime = newDateTime;
  eft.newDateTimeFromBinary = newDateTimeBinary;
  eft.newDateTimeFromChars = newDateTimeChars;
  eft.classPathIsA = classPathIsA;
  eft.toString = objectToString;
  eft.logMessage = logMessage;
  eft.trace = trace;

  fillObjectTables(*this);
}

Broker::~Broker() = default;

namespace {
template <class Fake, class FT>
Fake* make(std::vector<std::unique_ptr<Fake>>& store, Broker* owner, FT* ft) {
  store.push_back(std::make_unique<Fake>());
  Fake* f = store.back().get();
  f->enc.hdl = f;
  f->enc.ft = ft;
  f->owner = owner;
  return f;
}
}  // namespace

CMPIString* Broker::string(const char* text) {
  String* s = make(strings, this, &stringFT);
  s->text = text ? text : "";
  s->nullChars = text == nullptr;
  return &s->enc;
}

Path* Broker::path(const char* ns, const char* cls) {
  Path* p = make(paths, this, &pathFT);
  p->nameSpace = ns ? ns : "";
  p->className = cls ? cls : "";
  return p;
}

Instance* Broker::instance(Path* source) {
  Instance* i = make(instances, this, &instanceFT);
  // Like a real object manager, the instance keeps its own copy of the path.
  Path* copy = path(source->nameSpace.c_str(), source->className.c_str());
  copy->host = source->host;
  copy->keys = source->keys;
  i->path = copy;
  return i;
}

Context* Broker::context() { return make(contexts, this, &contextFT); }

Result* Broker::result() { return make(results, this, &resultFT); }

Enumeration* Broker::enumeration(std::vector<CMPIData> items) {
  Enumeration* e = make(enumerations, this, &enumerationFT);
  e->items = std::move(items);
  return e;
}

SelectExp* Broker::selectExp(const char* query) {
  SelectExp* s = make(selectExps, this, &selectExpFT);
  s->query = query;
  return s;
}

Array* Broker::array(CMPIType type, CMPICount size) {
  Array* a = make(arrays, this, &arrayFT);
  a->type = type;
  a->items.assign(size, makeData(type, CMPI_nullValue));
  return a;
}

Args* Broker::args() { return make(argLists, this, &argsFT); }

DateTime* Broker::dateTime(CMPIUint64 binary, bool interval) {
  DateTime* d = make(dateTimes, this, &dateTimeFT);
  d->binary = binary;
  d->interval = interval;
  return d;
}

int Broker::releasesOf(const void* enc) const {
  const auto it = releases.find(enc);
  return it == releases.end() ? 0 : it->second;
}

int Broker::releasesInAll() const {
  int n = 0;
  for (const auto& [enc, count] : releases) n += count;
  return n;
}

std::string Broker::text(const CMPIString* s) {
  if (s == nullptr) {
    return "";
  }
  const char* chars = s->ft->getCharPtr(s, nullptr);
  return chars ? chars : "";
}

}  // namespace fake

}  // namespace zeda::test
