// A tiny in-test object manager for the binding's unit tests: CMPI objects as
// plain structs with function tables, just enough behaviour for the tests.
// Every object it makes lives as long as the FakeBroker. Each function table
// is a member, so a test can empty an entry to see how the binding copes.
#ifndef ZEDA_TESTS_CMPI_BINDING_FAKEBROKER_H
#define ZEDA_TESTS_CMPI_BINDING_FAKEBROKER_H

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "cmpift.h"

namespace zeda::test {

namespace fake {

class Broker;

using Entries = std::vector<std::pair<std::string, CMPIData>>;

struct String {
  CMPIString enc;
  Broker* owner;
  std::string text;
  bool nullChars = false;  // getCharPtr answers null
};

struct Array {
  CMPIArray enc;
  Broker* owner;
  CMPIType type;
  std::vector<CMPIData> items;
};

struct Path {
  CMPIObjectPath enc;
  Broker* owner;
  std::string nameSpace, host, className;
  Entries keys;
};

struct Instance {
  CMPIInstance enc;
  Broker* owner;
  Path* path;
  Entries properties;
  std::vector<std::string> filter;  // empty: no filter
};

struct Args {
  CMPIArgs enc;
  Broker* owner;
  Entries args;
};

struct DateTime {
  CMPIDateTime enc;
  Broker* owner;
  CMPIUint64 binary;
  bool interval;
};

struct Context {
  CMPIContext enc;
  Broker* owner;
  Entries entries;
};

struct Result {
  CMPIResult enc;
  Broker* owner;
  std::vector<CMPIData> data;
  bool done = false;
};

struct Enumeration {
  CMPIEnumeration enc;
  Broker* owner;
  std::vector<CMPIData> items;
  std::size_t next = 0;
};

struct SelectExp {
  CMPISelectExp enc;
  Broker* owner;
  std::string query;
  bool matches = true;
};

class Broker {
 public:
  Broker();
  Broker(const Broker&) = delete;
  Broker& operator=(const Broker&) = delete;
  ~Broker();

  const CMPIBroker* enc() const { return &enc_; }

  // Object factories for the tests (the binding uses the eft entries).
  CMPIString* string(const char* text);
  Path* path(const char* ns, const char* cls);
  Instance* instance(Path* path);
  Context* context();
  Result* result();
  Enumeration* enumeration(std::vector<CMPIData> items);
  SelectExp* selectExp(const char* query);
  Array* array(CMPIType type, CMPICount size);
  Args* args();
  DateTime* dateTime(CMPIUint64 binary, bool interval);

  // Text of a C status message, "" for none.
  static std::string text(const CMPIString* s);

  CMPIBroker enc_{};
  CMPIBrokerFT bft{};
  CMPIBrokerEncFT eft{};
  CMPIStringFT stringFT{};
  CMPIArrayFT arrayFT{};
  CMPIObjectPathFT pathFT{};
  CMPIInstanceFT instanceFT{};
  CMPIArgsFT argsFT{};
  CMPIDateTimeFT dateTimeFT{};
  CMPIContextFT contextFT{};
  CMPIResultFT resultFT{};
  CMPIEnumerationFT enumerationFT{};
  CMPISelectExpFT selectExpFT{};

  // Behaviour knobs.
  bool newStringFails = false;                   // newString answers CMPI_RC_ERR_FAILED
  CMPIrc logAnswer = CMPI_RC_ERR_NOT_SUPPORTED;  // what logMessage and trace answer
  std::vector<std::string> logged;               // texts given to logMessage and trace
  std::vector<std::string> calls;                // names of the up-calls made

  // Ownership: the objects made through the factory table (eft) and how
  // often each object (by its C handle) was released. Released objects are
  // kept, so a test can still look at them.
  std::set<const void*> made;
  std::map<const void*, int> releases;
  int releasesOf(const void* enc) const;
  int releasesInAll() const;

  std::vector<std::unique_ptr<String>> strings;
  std::vector<std::unique_ptr<Array>> arrays;
  std::vector<std::unique_ptr<Path>> paths;
  std::vector<std::unique_ptr<Instance>> instances;
  std::vector<std::unique_ptr<Args>> argLists;
  std::vector<std::unique_ptr<DateTime>> dateTimes;
  std::vector<std::unique_ptr<Context>> contexts;
  std::vector<std::unique_ptr<Result>> results;
  std::vector<std::unique_ptr<Enumeration>> enumerations;
  std::vector<std::unique_ptr<SelectExp>> selectExps;
};

// The fake behind a C object made by a Broker.
template <class Fake, class Enc>
Fake* of(const Enc* enc) {
  return static_cast<Fake*>(enc->hdl);
}

}  // namespace fake

}  // namespace zeda::test

#endif
