// The 17 factories of the real module through the in-process object manager:
// their function tables, the reuse of their MI records and the one provider
// object per class behind the instance and association records.
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
    CMPIStatus (*cleanup)(CMPIInstanceMI*, const CMPIContext*, CMPIBoolean) =
        &CmpiBaseMI::driveBaseCleanup;
    EXPECT_EQ(ft.cleanup, cleanup);
    EXPECT_EQ(ft.enumerateInstanceNames, &CmpiInstanceMI::driveEnumInstanceNames);
    EXPECT_EQ(ft.enumerateInstances, &CmpiInstanceMI::driveEnumInstances);
    EXPECT_EQ(ft.getInstance, &CmpiInstanceMI::driveGetInstance);
    EXPECT_EQ(ft.createInstance, &CmpiInstanceMI::driveCreateInstance);
    EXPECT_EQ(ft.modifyInstance, &CmpiInstanceMI::driveSetInstance);
    EXPECT_EQ(ft.deleteInstance, &CmpiInstanceMI::driveDeleteInstance);
    EXPECT_EQ(ft.execQuery, &CmpiInstanceMI::driveExecQuery);
  } else {
    const CMPIAssociationMIFT& ft = *created.associationMI()->ft;
    EXPECT_EQ(ft.ftVersion, 200);
    EXPECT_EQ(ft.miVersion, 200);
    EXPECT_EQ(std::string(ft.miName), e.miName());
    CMPIStatus (*cleanup)(CMPIAssociationMI*, const CMPIContext*, CMPIBoolean) =
        &CmpiBaseMI::driveBaseCleanup;
    EXPECT_EQ(ft.cleanup, cleanup);
    EXPECT_EQ(ft.associators, &CmpiAssociationMI::driveAssociators);
    EXPECT_EQ(ft.associatorNames, &CmpiAssociationMI::driveAssociatorNames);
    EXPECT_EQ(ft.references, &CmpiAssociationMI::driveReferences);
    EXPECT_EQ(ft.referenceNames, &CmpiAssociationMI::driveReferenceNames);
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
                           return info.param.provider() +
                                  (info.param.kind == MIKind::Instance ? "_Instance"
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
