#include "Operations.h"

#include <memory>

namespace zeda::test {

using namespace zeda::pelka;  // the framework under test

namespace {

// Installs a scripted delegate of type `Delegate` in `slot`.
template <class Delegate, class Slot>
void Put(TestProvider& provider, std::unique_ptr<Slot>& slot, Script script, Seen& seen) {
  TestProvider::install(&provider, slot, std::make_unique<Delegate>(std::move(script), seen));
}

}  // namespace

const std::vector<Operation>& AllOperations() {
  using P = TestProvider;
  using A = CallArgs;
  static const std::vector<Operation> operations = {
      {"associators", 129,
       [](P& p, Script s, Seen& seen) {
         Put<TestAssociators>(p, p.associationDelegates().Associators, s, seen);
       },
       [](P& p, A& a) {
         return p.associators(a.ctx, a.rslt, a.cop, "A", "B", "C", "D", a.properties);
       },
       [](P& p) -> const MIFunction* { return p.associationDelegates().Associators.get(); }},
      {"associatorNames", 141,
       [](P& p, Script s, Seen& seen) {
         Put<TestAssociatorNames>(p, p.associationDelegates().AssociatorNames, s, seen);
       },
       [](P& p, A& a) { return p.associatorNames(a.ctx, a.rslt, a.cop, "A", "B", "C", "D"); },
       [](P& p) -> const MIFunction* { return p.associationDelegates().AssociatorNames.get(); }},
      {"references", 151,
       [](P& p, Script s, Seen& seen) {
         Put<TestReferences>(p, p.associationDelegates().References, s, seen);
       },
       [](P& p, A& a) { return p.references(a.ctx, a.rslt, a.cop, "B", "C", a.properties); },
       [](P& p) -> const MIFunction* { return p.associationDelegates().References.get(); }},
      {"referenceNames", 160,
       [](P& p, Script s, Seen& seen) {
         Put<TestReferenceNames>(p, p.associationDelegates().ReferenceNames, s, seen);
       },
       [](P& p, A& a) { return p.referenceNames(a.ctx, a.rslt, a.cop, "B", "C"); },
       [](P& p) -> const MIFunction* { return p.associationDelegates().ReferenceNames.get(); }},
      {"authorizeFilter", 183,
       [](P& p, Script s, Seen& seen) {
         Put<TestAuthorizeFilter>(p, p.indicationDelegates().AuthorizeFilter, s, seen);
       },
       [](P& p, A& a) {
         return p.authorizeFilter(a.ctx, a.filter, a.indicationClass, a.cop, a.owner);
       },
       [](P& p) -> const MIFunction* { return p.indicationDelegates().AuthorizeFilter.get(); }},
      {"mustPoll", 190,
       [](P& p, Script s, Seen& seen) {
         Put<TestMustPoll>(p, p.indicationDelegates().MustPoll, s, seen);
       },
       [](P& p, A& a) { return p.mustPoll(a.ctx, a.filter, a.indicationClass, a.cop); },
       [](P& p) -> const MIFunction* { return p.indicationDelegates().MustPoll.get(); }},
      {"activateFilter", 199,
       [](P& p, Script s, Seen& seen) {
         Put<TestActivateFilter>(p, p.indicationDelegates().ActivateFilter, s, seen);
       },
       [](P& p, A& a) { return p.activateFilter(a.ctx, a.filter, a.indicationClass, a.cop, true); },
       [](P& p) -> const MIFunction* { return p.indicationDelegates().ActivateFilter.get(); }},
      {"deActivateFilter", 208,
       [](P& p, Script s, Seen& seen) {
         Put<TestDeActivateFilter>(p, p.indicationDelegates().DeActivateFilter, s, seen);
       },
       [](P& p, A& a) {
         return p.deActivateFilter(a.ctx, a.filter, a.indicationClass, a.cop, true);
       },
       [](P& p) -> const MIFunction* { return p.indicationDelegates().DeActivateFilter.get(); }},
      {"enableIndications", 212,
       [](P& p, Script s, Seen& seen) {
         Put<TestEnableIndications>(p, p.indicationDelegates().EnableIndications, s, seen);
       },
       [](P& p, A& a) { return p.enableIndications(a.ctx); },
       [](P& p) -> const MIFunction* { return p.indicationDelegates().EnableIndications.get(); }},
      {"disableIndications", 216,
       [](P& p, Script s, Seen& seen) {
         Put<TestDisableIndications>(p, p.indicationDelegates().DisableIndications, s, seen);
       },
       [](P& p, A& a) { return p.disableIndications(a.ctx); },
       [](P& p) -> const MIFunction* { return p.indicationDelegates().DisableIndications.get(); }},
      {"enumInstanceNames", 70,
       [](P& p, Script s, Seen& seen) {
         Put<TestEnumInstanceNames>(p, p.instanceDelegates().EnumInstanceNames, s, seen);
       },
       [](P& p, A& a) { return p.enumInstanceNames(a.ctx, a.rslt, a.cop); },
       [](P& p) -> const MIFunction* { return p.instanceDelegates().EnumInstanceNames.get(); }},
      {"enumInstances", 77,
       [](P& p, Script s, Seen& seen) {
         Put<TestEnumInstances>(p, p.instanceDelegates().EnumInstances, s, seen);
       },
       [](P& p, A& a) { return p.enumInstances(a.ctx, a.rslt, a.cop, a.properties); },
       [](P& p) -> const MIFunction* { return p.instanceDelegates().EnumInstances.get(); }},
      {"getInstance", 84,
       [](P& p, Script s, Seen& seen) {
         Put<TestGetInstance>(p, p.instanceDelegates().GetInstance, s, seen);
       },
       [](P& p, A& a) { return p.getInstance(a.ctx, a.rslt, a.cop, a.properties); },
       [](P& p) -> const MIFunction* { return p.instanceDelegates().GetInstance.get(); }},
      {"createInstance", 91,
       [](P& p, Script s, Seen& seen) {
         Put<TestCreateInstance>(p, p.instanceDelegates().CreateInstance, s, seen);
       },
       [](P& p, A& a) { return p.createInstance(a.ctx, a.rslt, a.cop, a.inst); },
       [](P& p) -> const MIFunction* { return p.instanceDelegates().CreateInstance.get(); }},
      {"setInstance", 100,
       [](P& p, Script s, Seen& seen) {
         Put<TestSetInstance>(p, p.instanceDelegates().SetInstance, s, seen);
       },
       [](P& p, A& a) { return p.setInstance(a.ctx, a.rslt, a.cop, a.inst, a.properties); },
       [](P& p) -> const MIFunction* { return p.instanceDelegates().SetInstance.get(); }},
      {"deleteInstance", 106,
       [](P& p, Script s, Seen& seen) {
         Put<TestDeleteInstance>(p, p.instanceDelegates().DeleteInstance, s, seen);
       },
       [](P& p, A& a) { return p.deleteInstance(a.ctx, a.rslt, a.cop); },
       [](P& p) -> const MIFunction* { return p.instanceDelegates().DeleteInstance.get(); }},
      {"execQuery", 114,
       [](P& p, Script s, Seen& seen) {
         Put<TestExecQuery>(p, p.instanceDelegates().ExecQuery, s, seen);
       },
       [](P& p, A& a) { return p.execQuery(a.ctx, a.rslt, a.cop, a.query, a.language); },
       [](P& p) -> const MIFunction* { return p.instanceDelegates().ExecQuery.get(); }},
      {"invokeMethod", 172,
       [](P& p, Script s, Seen& seen) {
         Put<TestInvokeMethod>(p, p.methodDelegates().InvokeMethod, s, seen);
       },
       [](P& p, A& a) { return p.invokeMethod(a.ctx, a.rslt, a.cop, "Reset", a.in, a.out); },
       [](P& p) -> const MIFunction* { return p.methodDelegates().InvokeMethod.get(); }},
  };
  return operations;
}

}  // namespace zeda::test
