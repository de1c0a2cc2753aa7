// Operations no class of the module installs answer CMPI_RC_ERR_NOT_SUPPORTED
// with no message and produce nothing, on the first call and on later ones.
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Fixtures.h"
#include "ModuleExports.h"

namespace zeda::test {
namespace {

using zeda::host::Host;
using zeda::host::Instance;
using zeda::host::ObjectPath;
using zeda::host::Outcome;

struct Call {
  std::string name;
  std::function<Outcome(Host&, const ProviderClass&)> run;
};

ObjectPath ClassPath(const ProviderClass& c) { return ObjectPath(kNamespace, c.className); }

ObjectPath SomeInstancePath(const ProviderClass& c) {
  ObjectPath path = ClassPath(c);
  path.addKey("DeviceID", "ZEDA:nas1:DISK0");
  return path;
}

const std::vector<Call>& InstanceCalls() {
  static const std::vector<Call> calls = {
      {"enumInstanceNames",
       [](Host& h, const ProviderClass& c) {
         return h.enumerateInstanceNames(c.provider(), ClassPath(c));
       }},
      {"createInstance",
       [](Host& h, const ProviderClass& c) {
         return h.createInstance(c.provider(), SomeInstancePath(c), Instance(SomeInstancePath(c)));
       }},
      {"modifyInstance",
       [](Host& h, const ProviderClass& c) {
         return h.modifyInstance(c.provider(), SomeInstancePath(c), Instance(SomeInstancePath(c)));
       }},
      {"deleteInstance",
       [](Host& h, const ProviderClass& c) {
         return h.deleteInstance(c.provider(), SomeInstancePath(c));
       }},
      {"execQuery",
       [](Host& h, const ProviderClass& c) {
         return h.execQuery(c.provider(), ClassPath(c), "SELECT * FROM " + c.className, "WQL");
       }},
  };
  return calls;
}

const std::vector<Call>& AssociationCalls() {
  static const std::vector<Call> calls = {
      {"associatorNames",
       [](Host& h, const ProviderClass& c) {
         return h.associatorNames(c.provider(), ObjectPath(kNamespace, "ZEDA_DiskDrive"),
                                  c.className, std::nullopt, std::nullopt, std::nullopt);
       }},
      {"referenceNames",
       [](Host& h, const ProviderClass& c) {
         return h.referenceNames(c.provider(), ObjectPath(kNamespace, "ZEDA_DiskDrive"),
                                 std::nullopt, std::nullopt);
       }},
  };
  return calls;
}

void ExpectNotSupported(const Outcome& outcome, const std::string& what) {
  EXPECT_EQ(outcome.code(), CMPI_RC_ERR_NOT_SUPPORTED) << what;
  EXPECT_FALSE(outcome.status.message.has_value()) << what << ": " << *outcome.status.message;
  EXPECT_FALSE(outcome.done) << what;
  EXPECT_TRUE(outcome.results.empty()) << what;
  EXPECT_TRUE(outcome.errors.empty()) << what;
}

std::vector<ProviderClass> ClassesWhere(const std::function<bool(const ProviderClass&)>& keep) {
  std::vector<ProviderClass> classes;
  for (const ProviderClass& c : ProviderClasses()) {
    if (keep(c)) classes.push_back(c);
  }
  return classes;
}

std::string NameOf(const ::testing::TestParamInfo<ProviderClass>& info) {
  return info.param.className;
}

class EachInstanceClass : public ::testing::TestWithParam<ProviderClass> {};

TEST_P(EachInstanceClass, UninstalledInstanceOperationsAreNotSupported) {
  const ProviderClass& c = GetParam();
  Host& host = ModuleHost();
  for (const Call& call : InstanceCalls()) {
    ExpectNotSupported(call.run(host, c), c.className + " " + call.name);
    ExpectNotSupported(call.run(host, c), c.className + " " + call.name + " (again)");
  }
}

INSTANTIATE_TEST_SUITE_P(Module, EachInstanceClass,
                         ::testing::ValuesIn(ClassesWhere([](const ProviderClass& c) {
                           return c.instanceFactory;
                         })),
                         NameOf);

class EachClassWithoutGetInstance : public ::testing::TestWithParam<ProviderClass> {};

TEST_P(EachClassWithoutGetInstance, GetInstanceIsNotSupported) {
  const ProviderClass& c = GetParam();
  Host& host = ModuleHost();
  ExpectNotSupported(host.getInstance(c.provider(), SomeInstancePath(c)),
                     c.className + " getInstance");
  ExpectNotSupported(host.getInstance(c.provider(), SomeInstancePath(c)),
                     c.className + " getInstance (again)");
}

INSTANTIATE_TEST_SUITE_P(Module, EachClassWithoutGetInstance,
                         ::testing::ValuesIn(ClassesWhere([](const ProviderClass& c) {
                           return c.instanceFactory && !c.installsGetInstance;
                         })),
                         NameOf);

class EachAssociationClass : public ::testing::TestWithParam<ProviderClass> {};

TEST_P(EachAssociationClass, UninstalledAssociationOperationsAreNotSupported) {
  const ProviderClass& c = GetParam();
  Host& host = ModuleHost();
  for (const Call& call : AssociationCalls()) {
    ExpectNotSupported(call.run(host, c), c.className + " " + call.name);
    ExpectNotSupported(call.run(host, c), c.className + " " + call.name + " (again)");
  }
}

INSTANTIATE_TEST_SUITE_P(Module, EachAssociationClass,
                         ::testing::ValuesIn(ClassesWhere([](const ProviderClass& c) {
                           return c.associationFactory;
                         })),
                         NameOf);

TEST(NotSupported, NotSupportedIsNotLogged) {
  Host& host = ModuleHost();
  const size_t before = ErrorLogLines().size();
  ExpectNotSupported(host.enumerateInstanceNames("ZEDA_DiskDriveProvider",
                                                 ObjectPath(kNamespace, "ZEDA_DiskDrive")),
                     "enumInstanceNames");
  EXPECT_EQ(ErrorLogLines().size(), before);
}

}  // namespace
}  // namespace zeda::test
