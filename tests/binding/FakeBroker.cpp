// The fake object manager of the binding's unit tests.
#include "FakeBroker.h"

#include <strings.h>

#include <algorithm>

namespace fake {
namespace {

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

// A value as the object manager keeps it: characters become a string.
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

Entries::iterator find(Entries& entries, const char* name) {
  return std::find_if(entries.begin(), entries.end(), [name](const auto& e) {
    return name != nullptr && strcasecmp(e.first.c_str(), name) == 0;
  });
}

void put(Entries& entries, const char* name, CMPIData data) {
  auto it = find(entries, name);
  if (it != entries.end()) {
    it->second = data;
  } else {
    entries.emplace_back(name, data);
  }
}

CMPIData get(Broker* b, Entries& entries, const char* name, CMPIStatus* rc) {
  auto it = find(entries, name);
  if (it == entries.end()) {
    report(rc, failure(b, CMPI_RC_ERR_NOT_FOUND, std::string("no entry ") + (name ? name : "")));
    return makeData(CMPI_null, CMPI_notFound);
  }
  report(rc, ok());
  return it->second;
}

CMPIData getAt(Broker* b, Entries& entries, CMPICount index, CMPIString** name, CMPIStatus* rc) {
  if (index >= entries.size()) {
    report(rc, failure(b, CMPI_RC_ERR_NO_SUCH_PROPERTY, "index out of range"));
    return makeData(CMPI_null, CMPI_notFound);
  }
  if (name != nullptr) {
    *name = b->string(entries[index].first.c_str());
  }
  report(rc, ok());
  return entries[index].second;
}

// --- strings --------------------------------------------------------------
char* stringChars(const CMPIString* s, CMPIStatus* rc) {
  report(rc, ok());
  String* f = of<String>(s);
  return f->nullChars ? nullptr : f->text.data();
}

// --- arrays ---------------------------------------------------------------
CMPICount arraySize(const CMPIArray* a, CMPIStatus* rc) {
  report(rc, ok());
  return static_cast<CMPICount>(of<Array>(a)->items.size());
}
CMPIType arrayType(const CMPIArray* a, CMPIStatus* rc) {
  report(rc, ok());
  return of<Array>(a)->type;
}
CMPIData arrayGet(const CMPIArray* a, CMPICount i, CMPIStatus* rc) {
  Array* f = of<Array>(a);
  if (i >= f->items.size()) {
    report(rc, failure(f->owner, CMPI_RC_ERR_NO_SUCH_PROPERTY, "index out of range"));
    return makeData(CMPI_null, CMPI_notFound);
  }
  report(rc, ok());
  return f->items[i];
}
CMPIStatus arraySet(CMPIArray* a, CMPICount i, const CMPIValue* v, CMPIType t) {
  Array* f = of<Array>(a);
  if (i >= f->items.size()) {
    return failure(f->owner, CMPI_RC_ERR_NO_SUCH_PROPERTY, "index out of range");
  }
  CMPIData d = stored(f->owner, v, t);
  if (d.type != f->type) {
    return failure(f->owner, CMPI_RC_ERR_TYPE_MISMATCH, "wrong element type");
  }
  f->items[i] = d;
  return ok();
}

// --- object paths ---------------------------------------------------------
CMPIStatus pathSetNs(CMPIObjectPath* p, const char* ns) {
  of<Path>(p)->nameSpace = ns ? ns : "";
  return ok();
}
CMPIString* pathGetNs(const CMPIObjectPath* p, CMPIStatus* rc) {
  report(rc, ok());
  return of<Path>(p)->owner->string(of<Path>(p)->nameSpace.c_str());
}
CMPIStatus pathSetHost(CMPIObjectPath* p, const char* h) {
  of<Path>(p)->host = h ? h : "";
  return ok();
}
CMPIString* pathGetHost(const CMPIObjectPath* p, CMPIStatus* rc) {
  report(rc, ok());
  return of<Path>(p)->owner->string(of<Path>(p)->host.c_str());
}
CMPIStatus pathSetClass(CMPIObjectPath* p, const char* c) {
  of<Path>(p)->className = c ? c : "";
  return ok();
}
CMPIString* pathGetClass(const CMPIObjectPath* p, CMPIStatus* rc) {
  report(rc, ok());
  return of<Path>(p)->owner->string(of<Path>(p)->className.c_str());
}
CMPIStatus pathAddKey(CMPIObjectPath* p, const char* name, const CMPIValue* v, CMPIType t) {
  Path* f = of<Path>(p);
  CMPIData d = stored(f->owner, v, t);
  d.state = static_cast<CMPIValueState>(d.state | CMPI_keyValue);
  put(f->keys, name, d);
  return ok();
}
CMPIData pathGetKey(const CMPIObjectPath* p, const char* name, CMPIStatus* rc) {
  return get(of<Path>(p)->owner, of<Path>(p)->keys, name, rc);
}
CMPIData pathGetKeyAt(const CMPIObjectPath* p, CMPICount i, CMPIString** name, CMPIStatus* rc) {
  return getAt(of<Path>(p)->owner, of<Path>(p)->keys, i, name, rc);
}
CMPICount pathKeyCount(const CMPIObjectPath* p, CMPIStatus* rc) {
  report(rc, ok());
  return static_cast<CMPICount>(of<Path>(p)->keys.size());
}
CMPIString* pathToString(const CMPIObjectPath* p, CMPIStatus* rc) {
  Path* f = of<Path>(p);
  std::string text = f->nameSpace + ":" + f->className;
  char sep = '.';
  for (const auto& [name, d] : f->keys) {
    text += sep + name + "=";
    sep = ',';
    if (d.type == CMPI_string) {
      text += "\"" + Broker::text(d.value.string) + "\"";
    } else if (d.type == CMPI_uint16) {
      text += std::to_string(d.value.uint16);
    } else {
      text += "?";
    }
  }
  report(rc, ok());
  return f->owner->string(text.c_str());
}

// --- instances ------------------------------------------------------------
CMPIData instGet(const CMPIInstance* i, const char* name, CMPIStatus* rc) {
  Instance* f = of<Instance>(i);
  auto it = find(f->properties, name);
  if (it == f->properties.end()) {
    report(rc, failure(f->owner, CMPI_RC_ERR_NO_SUCH_PROPERTY, std::string("no property ") + name));
    return makeData(CMPI_null, CMPI_notFound);
  }
  report(rc, ok());
  return it->second;
}
CMPIData instGetAt(const CMPIInstance* i, CMPICount index, CMPIString** name, CMPIStatus* rc) {
  return getAt(of<Instance>(i)->owner, of<Instance>(i)->properties, index, name, rc);
}
CMPICount instCount(const CMPIInstance* i, CMPIStatus* rc) {
  report(rc, ok());
  return static_cast<CMPICount>(of<Instance>(i)->properties.size());
}
CMPIStatus instSet(const CMPIInstance* i, const char* name, const CMPIValue* v, CMPIType t) {
  Instance* f = of<Instance>(i);
  if (!f->filter.empty() &&
      std::none_of(f->filter.begin(), f->filter.end(),
                   [name](const std::string& n) { return strcasecmp(n.c_str(), name) == 0; })) {
    return ok();  // filtered out, silently
  }
  put(f->properties, name, stored(f->owner, v, t));
  return ok();
}
CMPIObjectPath* instPath(const CMPIInstance* i, CMPIStatus* rc) {
  report(rc, ok());
  return &of<Instance>(i)->path->enc;
}
CMPIStatus instFilter(CMPIInstance* i, const char** props, const char** keys) {
  Instance* f = of<Instance>(i);
  f->filter.clear();
  for (const char** list : {props, keys}) {
    for (; list != nullptr && *list != nullptr; ++list) {
      f->filter.emplace_back(*list);
    }
  }
  return ok();
}
CMPIStatus instSetPath(CMPIInstance* i, const CMPIObjectPath* p) {
  of<Instance>(i)->path = of<Path>(p);
  return ok();
}

// --- args, date-times, contexts -------------------------------------------
CMPIStatus argsAdd(const CMPIArgs* a, const char* name, const CMPIValue* v, CMPIType t) {
  put(of<Args>(a)->args, name, stored(of<Args>(a)->owner, v, t));
  return ok();
}
CMPIData argsGet(const CMPIArgs* a, const char* name, CMPIStatus* rc) {
  return get(of<Args>(a)->owner, of<Args>(a)->args, name, rc);
}
CMPIData argsGetAt(const CMPIArgs* a, CMPICount i, CMPIString** name, CMPIStatus* rc) {
  return getAt(of<Args>(a)->owner, of<Args>(a)->args, i, name, rc);
}
CMPICount argsCount(const CMPIArgs* a, CMPIStatus* rc) {
  report(rc, ok());
  return static_cast<CMPICount>(of<Args>(a)->args.size());
}

CMPIUint64 dtBinary(const CMPIDateTime* d, CMPIStatus* rc) {
  report(rc, ok());
  return of<DateTime>(d)->binary;
}
CMPIString* dtString(const CMPIDateTime* d, CMPIStatus* rc) {
  report(rc, ok());
  const DateTime* f = of<DateTime>(d);
  return f->owner->string((std::to_string(f->binary) + (f->interval ? ":interval" : "")).c_str());
}
CMPIBoolean dtInterval(const CMPIDateTime* d, CMPIStatus* rc) {
  report(rc, ok());
  return of<DateTime>(d)->interval ? 1 : 0;
}

CMPIData ctxGet(const CMPIContext* c, const char* name, CMPIStatus* rc) {
  return get(of<Context>(c)->owner, of<Context>(c)->entries, name, rc);
}
CMPIData ctxGetAt(const CMPIContext* c, CMPICount i, CMPIString** name, CMPIStatus* rc) {
  return getAt(of<Context>(c)->owner, of<Context>(c)->entries, i, name, rc);
}
CMPICount ctxCount(const CMPIContext* c, CMPIStatus* rc) {
  report(rc, ok());
  return static_cast<CMPICount>(of<Context>(c)->entries.size());
}
CMPIStatus ctxAdd(const CMPIContext* c, const char* name, const CMPIValue* v, CMPIType t) {
  put(of<Context>(c)->entries, name, stored(of<Context>(c)->owner, v, t));
  return ok();
}

// --- results, enumerations, select expressions ----------------------------
CMPIStatus resultKeep(const CMPIResult* r, CMPIData d) {
  Result* f = of<Result>(r);
  if (f->done) {
    return failure(f->owner, CMPI_RC_ERR_FAILED, "result already done");
  }
  f->data.push_back(d);
  return ok();
}
CMPIStatus resultData(const CMPIResult* r, const CMPIValue* v, CMPIType t) {
  return resultKeep(r, stored(of<Result>(r)->owner, v, t));
}
CMPIStatus resultInstance(const CMPIResult* r, const CMPIInstance* i) {
  CMPIData d = makeData(CMPI_instance, CMPI_goodValue);
  d.value.inst = const_cast<CMPIInstance*>(i);
  return resultKeep(r, d);
}
CMPIStatus resultPath(const CMPIResult* r, const CMPIObjectPath* p) {
  CMPIData d = makeData(CMPI_ref, CMPI_goodValue);
  d.value.ref = const_cast<CMPIObjectPath*>(p);
  return resultKeep(r, d);
}
CMPIStatus resultDone(const CMPIResult* r) {
  of<Result>(r)->done = true;
  return ok();
}

CMPIBoolean enumHasNext(const CMPIEnumeration* e, CMPIStatus* rc) {
  report(rc, ok());
  const Enumeration* f = of<Enumeration>(e);
  return f->next < f->items.size() ? 1 : 0;
}
CMPIData enumNext(const CMPIEnumeration* e, CMPIStatus* rc) {
  Enumeration* f = of<Enumeration>(e);
  if (f->next >= f->items.size()) {
    report(rc, failure(f->owner, CMPI_RC_ERR_NOT_FOUND, "enumeration exhausted"));
    return makeData(CMPI_null, CMPI_notFound);
  }
  report(rc, ok());
  return f->items[f->next++];
}
CMPIArray* enumToArray(const CMPIEnumeration* e, CMPIStatus* rc) {
  Enumeration* f = of<Enumeration>(e);
  Array* a = f->owner->array(f->items.empty() ? CMPI_null : f->items.front().type,
                             static_cast<CMPICount>(f->items.size()));
  a->items = f->items;
  report(rc, ok());
  return &a->enc;
}

CMPIString* seString(const CMPISelectExp* s, CMPIStatus* rc) {
  report(rc, ok());
  return of<SelectExp>(s)->owner->string(of<SelectExp>(s)->query.c_str());
}
CMPIBoolean seEvaluate(const CMPISelectExp* s, const CMPIInstance*, CMPIStatus* rc) {
  report(rc, ok());
  return of<SelectExp>(s)->matches ? 1 : 0;
}

// --- the broker -----------------------------------------------------------
Broker* brokerOf(const CMPIBroker* mb) { return static_cast<Broker*>(mb->hdl); }

CMPIInstance* newInstance(const CMPIBroker* mb, const CMPIObjectPath* op, CMPIStatus* rc) {
  report(rc, ok());
  return &brokerOf(mb)->instance(of<Path>(op))->enc;
}
CMPIObjectPath* newPath(const CMPIBroker* mb, const char* ns, const char* cn, CMPIStatus* rc) {
  report(rc, ok());
  return &brokerOf(mb)->path(ns, cn)->enc;
}
CMPIArgs* newArgs(const CMPIBroker* mb, CMPIStatus* rc) {
  report(rc, ok());
  return &brokerOf(mb)->args()->enc;
}
CMPIString* newString(const CMPIBroker* mb, const char* text, CMPIStatus* rc) {
  Broker* b = brokerOf(mb);
  if (b->newStringFails) {
    report(rc, CMPIStatus{CMPI_RC_ERR_FAILED, nullptr});
    return nullptr;
  }
  report(rc, ok());
  return b->string(text);
}
CMPIArray* newArray(const CMPIBroker* mb, CMPICount size, CMPIType type, CMPIStatus* rc) {
  report(rc, ok());
  return &brokerOf(mb)->array(type, size)->enc;
}
CMPIDateTime* newDateTime(const CMPIBroker* mb, CMPIStatus* rc) {
  report(rc, ok());
  return &brokerOf(mb)->dateTime(1000000, false)->enc;
}
CMPIDateTime* newDateTimeBinary(const CMPIBroker* mb, CMPIUint64 bin, CMPIBoolean interval,
                                CMPIStatus* rc) {
  report(rc, ok());
  return &brokerOf(mb)->dateTime(bin, interval != 0)->enc;
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
  return &brokerOf(mb)->dateTime(seconds * 1000000 + std::stoull(t.substr(15, 6)), true)->enc;
}
CMPIBoolean classPathIsA(const CMPIBroker*, const CMPIObjectPath* op, const char* type,
                         CMPIStatus* rc) {
  report(rc, ok());
  return strcasecmp(of<Path>(op)->className.c_str(), type) == 0 ? 1 : 0;
}
CMPIString* objectToString(const CMPIBroker* mb, const void* object, CMPIStatus* rc) {
  return pathToString(static_cast<const CMPIObjectPath*>(object), rc);
}
CMPIStatus logMessage(const CMPIBroker* mb, int, const char*, const char* text,
                      const CMPIString*) {
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

  stringFT = CMPIStringFT{200, nullptr, nullptr, stringChars};
  arrayFT = CMPIArrayFT{200, nullptr, nullptr, arraySize, arrayType, arrayGet, arraySet};
  pathFT.ftVersion = 200;
  pathFT.setNameSpace = pathSetNs;
  pathFT.getNameSpace = pathGetNs;
  pathFT.setHostname = pathSetHost;
  pathFT.getHostname = pathGetHost;
  pathFT.setClassName = pathSetClass;
  pathFT.getClassName = pathGetClass;
  pathFT.addKey = pathAddKey;
  pathFT.getKey = pathGetKey;
  pathFT.getKeyAt = pathGetKeyAt;
  pathFT.getKeyCount = pathKeyCount;
  pathFT.toString = pathToString;
  instanceFT.ftVersion = 200;
  instanceFT.getProperty = instGet;
  instanceFT.getPropertyAt = instGetAt;
  instanceFT.getPropertyCount = instCount;
  instanceFT.setProperty = instSet;
  instanceFT.getObjectPath = instPath;
  instanceFT.setPropertyFilter = instFilter;
  instanceFT.setObjectPath = instSetPath;
  argsFT = CMPIArgsFT{200, nullptr, nullptr, argsAdd, argsGet, argsGetAt, argsCount};
  dateTimeFT = CMPIDateTimeFT{200, nullptr, nullptr, dtBinary, dtString, dtInterval};
  contextFT = CMPIContextFT{200, nullptr, nullptr, ctxGet, ctxGetAt, ctxCount, ctxAdd};
  resultFT = CMPIResultFT{200,           nullptr,    nullptr,    resultData,
                          resultInstance, resultPath, resultDone, nullptr};
  enumerationFT = CMPIEnumerationFT{200, nullptr, nullptr, enumNext, enumHasNext, enumToArray};
  selectExpFT.ftVersion = 200;
  selectExpFT.getString = seString;
  selectExpFT.evaluate = seEvaluate;
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

std::string Broker::text(const CMPIString* s) {
  if (s == nullptr) {
    return "";
  }
  const char* chars = s->ft->getCharPtr(s, nullptr);
  return chars ? chars : "";
}

}  // namespace fake
