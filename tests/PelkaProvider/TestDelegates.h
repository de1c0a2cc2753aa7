// Test provider classes and scripted delegates for every slot: each delegate
// counts its calls, remembers the arguments it was handed and then does what
// its script says (return a status or throw).
#ifndef ZEDA_TESTS_PELKAPROVIDER_TESTDELEGATES_H
#define ZEDA_TESTS_PELKAPROVIDER_TESTDELEGATES_H

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "DelegateTables.h"
#include "PelkaProvider.h"

namespace zeda::test {

using namespace zeda::pelka;  // the framework under test

using Script = std::function<CmpiStatus()>;

inline Script Returns(CmpiStatus status) {
  return [status] { return status; };
}

template <class Thrown>
Script Throws(Thrown thrown) {
  return [thrown]() -> CmpiStatus { throw thrown; };
}

// What a delegate saw on its last call.
struct Seen {
  int calls = 0;
  std::vector<std::string> texts;     // converted filter strings, in argument order
  std::vector<const void*> pointers;  // arguments passed on as received
  std::vector<bool> flags;
};

template <class Base>
class Scripted : public Base {
 public:
  Scripted(Script script, Seen& seen) : script_(std::move(script)), seen_(seen) {}

 protected:
  CmpiStatus run(std::vector<std::string> texts, std::vector<const void*> pointers,
                 std::vector<bool> flags = {}) {
    ++seen_.calls;
    seen_.texts = std::move(texts);
    seen_.pointers = std::move(pointers);
    seen_.flags = std::move(flags);
    return script_();
  }

 private:
  Script script_;
  Seen& seen_;
};

struct TestEnumInstanceNames : Scripted<InstanceMI::EnumInstanceNamesDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p) override {
    return run({}, {&c, &r, &p});
  }
};
struct TestEnumInstances : Scripted<InstanceMI::EnumInstancesDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p,
                        const char** props) override {
    return run({}, {&c, &r, &p, props});
  }
};
struct TestGetInstance : Scripted<InstanceMI::GetInstanceDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p,
                        const char** props) override {
    return run({}, {&c, &r, &p, props});
  }
};
struct TestCreateInstance : Scripted<InstanceMI::CreateInstanceDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p,
                        const CmpiInstance& i) override {
    return run({}, {&c, &r, &p, &i});
  }
};
struct TestSetInstance : Scripted<InstanceMI::SetInstanceDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p,
                        const CmpiInstance& i, const char** props) override {
    return run({}, {&c, &r, &p, &i, props});
  }
};
struct TestDeleteInstance : Scripted<InstanceMI::DeleteInstanceDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p) override {
    return run({}, {&c, &r, &p});
  }
};
struct TestExecQuery : Scripted<InstanceMI::ExecQueryDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p,
                        const char* query, const char* language) override {
    return run({}, {&c, &r, &p, query, language});
  }
};
struct TestAssociators : Scripted<AssociationMI::AssociatorsDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p,
                        const std::string& assocClass, const std::string& resultClass,
                        const std::string& role, const std::string& resultRole,
                        const char** props) override {
    return run({assocClass, resultClass, role, resultRole}, {&c, &r, &p, props});
  }
};
struct TestAssociatorNames : Scripted<AssociationMI::AssociatorNamesDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p,
                        const std::string& assocClass, const std::string& resultClass,
                        const std::string& role, const std::string& resultRole) override {
    return run({assocClass, resultClass, role, resultRole}, {&c, &r, &p});
  }
};
struct TestReferences : Scripted<AssociationMI::ReferencesDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p,
                        const std::string& resultClass, const std::string& role,
                        const char** props) override {
    return run({resultClass, role}, {&c, &r, &p, props});
  }
};
struct TestReferenceNames : Scripted<AssociationMI::ReferenceNamesDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p,
                        const std::string& resultClass, const std::string& role) override {
    return run({resultClass, role}, {&c, &r, &p});
  }
};
struct TestInvokeMethod : Scripted<MethodMI::InvokeMethodDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, CmpiResult& r, const CmpiObjectPath& p,
                        const std::string& method, const CmpiArgs& in, CmpiArgs& out) override {
    return run({method}, {&c, &r, &p, &in, &out});
  }
};
struct TestAuthorizeFilter : Scripted<IndicationMI::AuthorizeFilterDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, const CmpiSelectExp& f, const char* cls,
                        const CmpiObjectPath& p, const char* owner) override {
    return run({}, {&c, &f, cls, &p, owner});
  }
};
struct TestMustPoll : Scripted<IndicationMI::MustPollDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, const CmpiSelectExp& f, const char* cls,
                        const CmpiObjectPath& p) override {
    return run({}, {&c, &f, cls, &p});
  }
};
struct TestActivateFilter : Scripted<IndicationMI::ActivateFilterDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, const CmpiSelectExp& f, const char* cls,
                        const CmpiObjectPath& p, bool first) override {
    return run({}, {&c, &f, cls, &p}, {first});
  }
};
struct TestDeActivateFilter : Scripted<IndicationMI::DeActivateFilterDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c, const CmpiSelectExp& f, const char* cls,
                        const CmpiObjectPath& p, bool last) override {
    return run({}, {&c, &f, cls, &p}, {last});
  }
};
struct TestEnableIndications : Scripted<IndicationMI::EnableIndicationsDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c) override { return run({}, {&c}); }
};
struct TestDisableIndications : Scripted<IndicationMI::DisableIndicationsDelegate> {
  using Scripted::Scripted;
  CmpiStatus operator()(const CmpiContext& c) override { return run({}, {&c}); }
};

// A provider class for tests: the class name is whatever the test gives
// (none: the framework's default), delegates are installed from outside.
class TestProvider : public PelkaProvider {
 public:
  TestProvider(const CmpiBroker& broker, const CmpiContext& ctx)
      : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {}
  TestProvider(const CmpiBroker& broker, const CmpiContext& ctx, const std::string& className)
      : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
    setClassName(className);
  }

  using PelkaProvider::install;
};

}  // namespace zeda::test

#endif
