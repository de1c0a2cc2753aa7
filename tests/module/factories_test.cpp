// The 17 factories of the real module through the in-process object manager:
// their function tables, the reuse of their MI records and the one provider
// object per class behind the instance and association records.
#include <dlfcn.h>

#include <cstdio>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include <cmpi/CmpiAssociationMI.h>
#include <cmpi/CmpiBaseMI.h>
#include <cmpi/CmpiInstanceMI.h>
#include <cmpi/CmpiProviderBase.h>

#include "Fixtures.h"
#include "ModuleExports.h"

namespace zeda::test {
namespace {

using zeda::host::MIKind;

const void* HandleOf(const zeda::host::CreatedMI& created) {
  return created.kind == MIKind::Instance ? created.instanceMI()->hdl
                                          : created.associationMI()->hdl;
}

// Uses counted by the provider base of the object behind an MI handle.
int UseCount(const void* handle) {
  const CmpiBaseMI* provider = CmpiBaseMI::fromHandle(const_cast<void*>(handle));
  return provider->getProviderBase()->getUseCount();
}

// The module carries its own hidden copy of the binding, so its function
// tables point at the module's copies of the binding's drivers: the address
// of the function whose demangled name starts with `prefix` in the module's
// symbol table, relocated by the module's load address (taken from `inModule`,
// any address inside the loaded module).
const void* ModuleFunction(const void* inModule, const std::string& prefix) {
  Dl_info info{};
  if (dladdr(inModule, &info) == 0) return nullptr;
  const std::string command =
      std::string("'") + ZEDA_NM + "' -C --defined-only '" + ModulePath() + "'";
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  if (!pipe) return nullptr;
  char line[4096];
  while (std::fgets(line, sizeof line, pipe.get()) != nullptr) {
    // "<hex offset> t <demangled name>"; clones (".cold" parts) are skipped.
    const std::string text(line);
    if (text.size() < 20 || text.find("[clone") != std::string::npos) continue;
    if (text.compare(19, prefix.size(), prefix) != 0) continue;
    const unsigned long long offset = std::stoull(text.substr(0, 16), nullptr, 16);
    return static_cast<const char*>(info.dli_fbase) + offset;
  }
  ADD_FAILURE() << "no function " << prefix << "... in the module's symbol table";
  return nullptr;
}

template <typename Function>
const void* Address(Function function) {
  return reinterpret_cast<const void*>(function);
}

class EachExport : public ::testing::TestWithParam<Export> {};

TEST_P(EachExport, FactoryAnswersWithItsMIRecord) {
  const Export& e = GetParam();
  const zeda::host::CreatedMI created = ModuleHost().createMI(e.provider(), e.kind);
  ASSERT_TRUE(created.ok()) << e.symbol() << " code " << created.status.code;
  EXPECT_EQ(created.status.code, 0);
  EXPECT_FALSE(created.status.message.has_value());
  EXPECT_NE(HandleOf(created), nullptr);
}

TEST_P(EachExport, FunctionTableHeaderAndEntryPoints) {
  const Export& e = GetParam();
  const zeda::host::CreatedMI created = ModuleHost().createMI(e.provider(), e.kind);
  ASSERT_TRUE(created.ok());
  if (e.kind == MIKind::Instance) {
    const CMPIInstanceMIFT& ft = *created.instanceMI()->ft;
    EXPECT_EQ(ft.ftVersion, 200);
    EXPECT_EQ(ft.miVersion, 200);
    EXPECT_EQ(std::string(ft.miName), e.miName());
    const auto driver = [&ft](const char* name) { return ModuleFunction(&ft, name); };
    EXPECT_EQ(Address(ft.cleanup), driver("CmpiBaseMI::driveBaseCleanup(_CMPIInstanceMI*"));
    EXPECT_EQ(Address(ft.enumerateInstanceNames),
              driver("CmpiInstanceMI::driveEnumInstanceNames("));
    EXPECT_EQ(Address(ft.enumerateInstances), driver("CmpiInstanceMI::driveEnumInstances("));
    EXPECT_EQ(Address(ft.getInstance), driver("CmpiInstanceMI::driveGetInstance("));
    EXPECT_EQ(Address(ft.createInstance), driver("CmpiInstanceMI::driveCreateInstance("));
    EXPECT_EQ(Address(ft.modifyInstance), driver("CmpiInstanceMI::driveSetInstance("));
    EXPECT_EQ(Address(ft.deleteInstance), driver("CmpiInstanceMI::driveDeleteInstance("));
    EXPECT_EQ(Address(ft.execQuery), driver("CmpiInstanceMI::driveExecQuery("));
    EXPECT_NE(Address(ft.enumerateInstances), nullptr);
  } else {
    const CMPIAssociationMIFT& ft = *created.associationMI()->ft;
    EXPECT_EQ(ft.ftVersion, 200);
    EXPECT_EQ(ft.miVersion, 200);
    EXPECT_EQ(std::string(ft.miName), e.miName());
    const auto driver = [&ft](const char* name) { return ModuleFunction(&ft, name); };
    EXPECT_EQ(Address(ft.cleanup), driver("CmpiBaseMI::driveBaseCleanup(_CMPIAssociationMI*"));
    EXPECT_EQ(Address(ft.associators), driver("CmpiAssociationMI::driveAssociators("));
    EXPECT_EQ(Address(ft.associatorNames), driver("CmpiAssociationMI::driveAssociatorNames("));
    EXPECT_EQ(Address(ft.references), driver("CmpiAssociationMI::driveReferences("));
    EXPECT_EQ(Address(ft.referenceNames), driver("CmpiAssociationMI::driveReferenceNames("));
    EXPECT_NE(Address(ft.associators), nullptr);
  }
}

TEST_P(EachExport, SameFactoryTwiceGivesTheSameRecordAndCountsBothUses) {
  const Export& e = GetParam();
  auto& host = ModuleHost();
  const zeda::host::CreatedMI first = host.createMI(e.provider(), e.kind);
  ASSERT_TRUE(first.ok());
  const int usesAfterFirst = UseCount(HandleOf(first));
  const zeda::host::CreatedMI second = host.createMI(e.provider(), e.kind);
  ASSERT_TRUE(second.ok());
  EXPECT_EQ(second.mi, first.mi);
  EXPECT_EQ(HandleOf(second), HandleOf(first));
  EXPECT_EQ(UseCount(HandleOf(second)), usesAfterFirst + 1);
}

INSTANTIATE_TEST_SUITE_P(Module, EachExport, ::testing::ValuesIn(Exports()),
                         [](const ::testing::TestParamInfo<Export>& info) {
                           return info.param.provider() + (info.param.kind == MIKind::Instance
                                                               ? "_Instance"
                                                               : "_Association");
                         });

class EachClassWithBothInterfaces : public ::testing::TestWithParam<ProviderClass> {};

TEST_P(EachClassWithBothInterfaces, InstanceAndAssociationRecordsShareOneProvider) {
  const ProviderClass& c = GetParam();
  auto& host = ModuleHost();
  const zeda::host::CreatedMI instance = host.createMI(c.provider(), MIKind::Instance);
  ASSERT_TRUE(instance.ok());
  const int usesAfterInstance = UseCount(HandleOf(instance));
  const zeda::host::CreatedMI association = host.createMI(c.provider(), MIKind::Association);
  ASSERT_TRUE(association.ok());
  EXPECT_NE(association.mi, instance.mi);
  EXPECT_EQ(HandleOf(association), HandleOf(instance));
  EXPECT_EQ(UseCount(HandleOf(association)), usesAfterInstance + 1);
}

std::vector<ProviderClass> ClassesWithBothInterfaces() {
  std::vector<ProviderClass> classes;
  for (const ProviderClass& c : ProviderClasses()) {
    if (c.instanceFactory && c.associationFactory) classes.push_back(c);
  }
  return classes;
}

INSTANTIATE_TEST_SUITE_P(Module, EachClassWithBothInterfaces,
                         ::testing::ValuesIn(ClassesWithBothInterfaces()),
                         [](const ::testing::TestParamInfo<ProviderClass>& info) {
                           return info.param.className;
                         });

TEST(ModuleFactories, ClassesHaveProvidersOfTheirOwn) {
  auto& host = ModuleHost();
  const zeda::host::CreatedMI drive = host.createMI("ZEDA_DiskDriveProvider", MIKind::Instance);
  const zeda::host::CreatedMI extent =
      host.createMI("ZEDA_StorageExtent_DiskProvider", MIKind::Instance);
  ASSERT_TRUE(drive.ok());
  ASSERT_TRUE(extent.ok());
  EXPECT_NE(drive.mi, extent.mi);
  EXPECT_NE(HandleOf(drive), HandleOf(extent));
}

}  // namespace
}  // namespace zeda::test
