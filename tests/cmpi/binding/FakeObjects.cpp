// The encapsulated objects of the fake object manager: strings, arrays,
// object paths, instances, args, date-times, contexts, results,
// enumerations and select expressions.
#include <strings.h>

#include <algorithm>

#include "FakeSupport.h"

namespace zeda::test {

namespace fake {
namespace {

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
}  // namespace

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

namespace {

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

// --- release of any object: counted, the object is kept --------------------
template <class Fake, class Enc>
CMPIStatus release(Enc* e) {
  ++of<Fake>(e)->owner->releases[e];
  return ok();
}

}  // namespace

void fillObjectTables(Broker& b) {
  b.stringFT = CMPIStringFT{200, release<String>, nullptr, stringChars};
  b.arrayFT = CMPIArrayFT{200, release<Array>, nullptr, arraySize, arrayType, arrayGet, arraySet};
  b.pathFT.ftVersion = 200;
  b.pathFT.release = release<Path>;
  b.pathFT.setNameSpace = pathSetNs;
  b.pathFT.getNameSpace = pathGetNs;
  b.pathFT.setHostname = pathSetHost;
  b.pathFT.getHostname = pathGetHost;
  b.pathFT.setClassName = pathSetClass;
  b.pathFT.getClassName = pathGetClass;
  b.pathFT.addKey = pathAddKey;
  b.pathFT.getKey = pathGetKey;
  b.pathFT.getKeyAt = pathGetKeyAt;
  b.pathFT.getKeyCount = pathKeyCount;
  b.pathFT.toString = pathToString;
  b.instanceFT.ftVersion = 200;
  b.instanceFT.release = release<Instance>;
  b.instanceFT.getProperty = instGet;
  b.instanceFT.getPropertyAt = instGetAt;
  b.instanceFT.getPropertyCount = instCount;
  b.instanceFT.setProperty = instSet;
  b.instanceFT.getObjectPath = instPath;
  b.instanceFT.setPropertyFilter = instFilter;
  b.instanceFT.setObjectPath = instSetPath;
  b.argsFT = CMPIArgsFT{200, release<Args>, nullptr, argsAdd, argsGet, argsGetAt, argsCount};
  b.dateTimeFT = CMPIDateTimeFT{200, release<DateTime>, nullptr, dtBinary, dtString, dtInterval};
  b.contextFT = CMPIContextFT{200, release<Context>, nullptr, ctxGet, ctxGetAt, ctxCount, ctxAdd};
  b.resultFT = CMPIResultFT{200,        release<Result>, nullptr, resultData, resultInstance,
                            resultPath, resultDone,      nullptr};
  b.enumerationFT =
      CMPIEnumerationFT{200, release<Enumeration>, nullptr, enumNext, enumHasNext, enumToArray};
  b.selectExpFT.ftVersion = 200;
  b.selectExpFT.release = release<SelectExp>;
  b.selectExpFT.getString = seString;
  b.selectExpFT.evaluate = seEvaluate;
}

}  // namespace fake

}  // namespace zeda::test
