// The factory routine with test provider classes: creation, reuse, sharing
// between an instance and an association factory, and the failure paths.
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <cmpi/CmpiAssociationMI.h>
#include <cmpi/CmpiInstanceMI.h>

#include "TestDelegates.h"
#include "TestHost.h"
#include "module/FunctionTables.h"
#include "module/MIFactory.h"

namespace zeda::test {

using namespace zeda::pelka;  // the framework under test
namespace {

// How the next FactoryProvider behaves; reset by each test.
struct Plan {
  bool throwInConstructor = false;
  bool throwInInitialize = false;
  CmpiStatus initializeAnswer = CmpiStatus(CMPI_RC_OK);
  int constructed = 0;
  int destroyed = 0;
  int initialized = 0;
};
Plan plan;

class FactoryProvider : public PelkaProvider {
 public:
  FactoryProvider(const CmpiBroker& broker, const CmpiContext& ctx)
      : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
    if (plan.throwInConstructor) throw std::runtime_error("constructor failed");
    ++plan.constructed;
    setClassName("TEST_Factory");
  }
  ~FactoryProvider() override { ++plan.destroyed; }

  CmpiStatus initialize(const CmpiContext&) override {
    ++plan.initialized;
    if (plan.throwInInitialize) throw std::runtime_error("initialize failed");
    return plan.initializeAnswer;
  }
};

class MIFactory : public ::testing::Test {
 protected:
  void SetUp() override { plan = Plan(); }

  CMPIInstanceMI* createInstanceMI() {
    return CreateMI<FactoryProvider>(instanceExport, base, ModuleHost().broker(),
                                     ModuleHost().context(), &status);
  }
  CMPIAssociationMI* createAssociationMI() {
    return CreateMI<FactoryProvider>(associationExport, base, ModuleHost().broker(),
                                     ModuleHost().context(), &status);
  }

  // Written by the factory only on failure.
  CMPIStatus status{static_cast<CMPIrc>(99), nullptr};
  MIExport<InstanceKind> instanceExport{"TEST_FactoryProvider"};
  MIExport<AssociationKind> associationExport{"TEST_FactoryProvider"};
  CmpiProviderBase base;
};

TEST_F(MIFactory, FirstCallBuildsAndRegistersTheProvider) {
  CMPIInstanceMI* mi = createInstanceMI();
  ASSERT_NE(mi, nullptr);
  EXPECT_EQ(mi, &instanceExport.record);
  EXPECT_EQ(mi->ft, &instanceExport.table);
  EXPECT_EQ(plan.constructed, 1);
  EXPECT_EQ(plan.initialized, 1);

  CmpiBaseMI* provider = base.getBaseMI();
  ASSERT_NE(provider, nullptr);
  EXPECT_EQ(mi->hdl, CmpiBaseMI::toHandle(provider));
  EXPECT_EQ(provider->getProviderBase(), &base);
  EXPECT_EQ(provider->getBroker().getEnc(), ModuleHost().broker());
  EXPECT_EQ(dynamic_cast<PelkaProvider*>(provider)->className(), "TEST_Factory");
  EXPECT_EQ(base.getUseCount(), 1);
  EXPECT_EQ(static_cast<int>(status.rc), 99);  // untouched on success
}

TEST_F(MIFactory, InstanceTableHeaderAndEntryPoints) {
  CMPIInstanceMI* mi = createInstanceMI();
  ASSERT_NE(mi, nullptr);
  const CMPIInstanceMIFT& ft = *mi->ft;
  EXPECT_EQ(ft.ftVersion, 200);
  EXPECT_EQ(ft.miVersion, 200);
  EXPECT_STREQ(ft.miName, "instanceTEST_FactoryProvider");
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
}

TEST_F(MIFactory, AssociationTableHeaderAndEntryPoints) {
  CMPIAssociationMI* mi = createAssociationMI();
  ASSERT_NE(mi, nullptr);
  const CMPIAssociationMIFT& ft = *mi->ft;
  EXPECT_EQ(ft.ftVersion, 200);
  EXPECT_EQ(ft.miVersion, 200);
  EXPECT_STREQ(ft.miName, "associationTEST_FactoryProvider");
  CMPIStatus (*cleanup)(CMPIAssociationMI*, const CMPIContext*, CMPIBoolean) =
      &CmpiBaseMI::driveBaseCleanup;
  EXPECT_EQ(ft.cleanup, cleanup);
  EXPECT_EQ(ft.associators, &CmpiAssociationMI::driveAssociators);
  EXPECT_EQ(ft.associatorNames, &CmpiAssociationMI::driveAssociatorNames);
  EXPECT_EQ(ft.references, &CmpiAssociationMI::driveReferences);
  EXPECT_EQ(ft.referenceNames, &CmpiAssociationMI::driveReferenceNames);
}

TEST_F(MIFactory, TableIsEmptyUntilTheFirstCall) {
  EXPECT_EQ(instanceExport.table.miName, nullptr);
  EXPECT_EQ(instanceExport.table.getInstance, nullptr);
  EXPECT_EQ(instanceExport.record.ft, nullptr);
  EXPECT_EQ(instanceExport.miName, "instanceTEST_FactoryProvider");
}

TEST_F(MIFactory, TableIsFilledByTheFirstCallOnlyButTheRecordPointsAtItEveryTime) {
  ASSERT_NE(createInstanceMI(), nullptr);
  instanceExport.table.getInstance = nullptr;  // a refill would restore it
  instanceExport.record.ft = nullptr;
  CMPIInstanceMI* mi = createInstanceMI();
  ASSERT_NE(mi, nullptr);
  EXPECT_EQ(mi->ft, &instanceExport.table);
  EXPECT_EQ(instanceExport.table.getInstance, nullptr);
}

TEST(MIExportTable, ConcurrentFirstCallsFillTheTableOnce) {
  MIExport<AssociationKind> shared("TEST_ConcurrentProvider");
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) threads.emplace_back([&shared] { shared.fillTableOnce(); });
  for (std::thread& t : threads) t.join();
  EXPECT_STREQ(shared.table.miName, "associationTEST_ConcurrentProvider");
  EXPECT_EQ(shared.table.associators, &CmpiAssociationMI::driveAssociators);
  EXPECT_EQ(shared.table.referenceNames, &CmpiAssociationMI::driveReferenceNames);
}

TEST_F(MIFactory, SameFactoryTwiceReturnsTheSameRecord) {
  CMPIInstanceMI* first = createInstanceMI();
  CMPIInstanceMI* second = createInstanceMI();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(second, first);
  EXPECT_EQ(second->hdl, first->hdl);
  EXPECT_EQ(plan.constructed, 1);
  EXPECT_EQ(plan.initialized, 1);
  EXPECT_EQ(base.getUseCount(), 2);
  EXPECT_EQ(static_cast<int>(status.rc), 99);  // reuse leaves the status alone
}

TEST_F(MIFactory, InstanceAndAssociationFactoriesShareOneProvider) {
  CMPIInstanceMI* instance = createInstanceMI();
  CMPIAssociationMI* association = createAssociationMI();
  ASSERT_NE(instance, nullptr);
  ASSERT_NE(association, nullptr);
  EXPECT_NE(static_cast<void*>(instance), static_cast<void*>(association));
  EXPECT_EQ(instance->hdl, association->hdl);
  EXPECT_EQ(association->hdl, CmpiBaseMI::toHandle(base.getBaseMI()));
  EXPECT_EQ(base.getUseCount(), 2);
  EXPECT_EQ(plan.constructed, 1);
}

TEST_F(MIFactory, CleanupOfTheLastRecordEndsTheProvider) {
  CMPIInstanceMI* instance = createInstanceMI();
  CMPIAssociationMI* association = createAssociationMI();
  ASSERT_NE(instance, nullptr);
  ASSERT_NE(association, nullptr);
  EXPECT_EQ(instance->ft->cleanup(instance, ModuleHost().context(), true).rc, CMPI_RC_OK);
  EXPECT_EQ(plan.destroyed, 0);
  EXPECT_EQ(base.getUseCount(), 1);
  EXPECT_EQ(association->ft->cleanup(association, ModuleHost().context(), true).rc, CMPI_RC_OK);
  EXPECT_EQ(plan.destroyed, 1);
  EXPECT_EQ(base.getBaseMI(), nullptr);
}

TEST_F(MIFactory, FailingInitializeReportsItsStatusAndRegistersNothing) {
  plan.initializeAnswer = CmpiStatus(CMPI_RC_ERR_ACCESS_DENIED, "x");
  EXPECT_EQ(createInstanceMI(), nullptr);
  EXPECT_EQ(status.rc, CMPI_RC_ERR_ACCESS_DENIED);
  EXPECT_EQ(TextOf(status.msg), "x");
  EXPECT_EQ(base.getBaseMI(), nullptr);
  EXPECT_EQ(base.getUseCount(), 0);
  EXPECT_EQ(plan.constructed, 1);
  EXPECT_EQ(plan.destroyed, 1);
}

TEST_F(MIFactory, NextCallAfterAFailedInitializeTriesAgain) {
  plan.initializeAnswer = CmpiStatus(CMPI_RC_ERR_FAILED, "x");
  EXPECT_EQ(createInstanceMI(), nullptr);
  EXPECT_EQ(TextOf(status.msg), "x");

  plan.initializeAnswer = CmpiStatus(CMPI_RC_OK);
  status = CMPIStatus{static_cast<CMPIrc>(99), nullptr};
  CMPIInstanceMI* mi = createInstanceMI();
  ASSERT_NE(mi, nullptr);
  EXPECT_EQ(plan.constructed, 2);
  EXPECT_EQ(plan.initialized, 2);
  EXPECT_EQ(base.getUseCount(), 1);
  EXPECT_EQ(mi->hdl, CmpiBaseMI::toHandle(base.getBaseMI()));
}

TEST_F(MIFactory, FailingInitializeWithoutMessageLeavesTheMessageNull) {
  plan.initializeAnswer = CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED);
  status.msg = reinterpret_cast<CMPIString*>(&status);  // must be overwritten
  EXPECT_EQ(createAssociationMI(), nullptr);
  EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(status.msg, nullptr);
  EXPECT_EQ(base.getBaseMI(), nullptr);
}

// An object manager without a broker, or whose broker cannot make strings,
// still gets the failure code; the message stays null instead of a crash.
TEST_F(MIFactory, FailingInitializeWithoutABrokerReportsTheCodeWithoutMessage) {
  plan.initializeAnswer = CmpiStatus(CMPI_RC_ERR_ACCESS_DENIED, "x");
  status.msg = reinterpret_cast<CMPIString*>(&status);
  EXPECT_EQ(
      CreateMI<FactoryProvider>(instanceExport, base, nullptr, ModuleHost().context(), &status),
      nullptr);
  EXPECT_EQ(status.rc, CMPI_RC_ERR_ACCESS_DENIED);
  EXPECT_EQ(status.msg, nullptr);
  EXPECT_EQ(base.getBaseMI(), nullptr);
  EXPECT_EQ(plan.destroyed, 1);
}

TEST_F(MIFactory, FailingInitializeUnderABrokerWithoutNewStringLeavesTheMessageNull) {
  CMPIBrokerEncFT factories = *ModuleHost().broker()->eft;
  factories.newString = nullptr;
  CMPIBroker broker = *ModuleHost().broker();
  broker.eft = &factories;
  plan.initializeAnswer = CmpiStatus(CMPI_RC_ERR_ACCESS_DENIED, "x");
  status.msg = reinterpret_cast<CMPIString*>(&status);
  EXPECT_EQ(
      CreateMI<FactoryProvider>(associationExport, base, &broker, ModuleHost().context(), &status),
      nullptr);
  EXPECT_EQ(status.rc, CMPI_RC_ERR_ACCESS_DENIED);
  EXPECT_EQ(status.msg, nullptr);
  EXPECT_EQ(base.getBaseMI(), nullptr);
}

TEST_F(MIFactory, ThrowingInitializeGivesCodeOneAndNoMessage) {
  plan.throwInInitialize = true;
  status.msg = reinterpret_cast<CMPIString*>(&status);
  EXPECT_EQ(createInstanceMI(), nullptr);
  EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
  EXPECT_EQ(status.msg, nullptr);
  EXPECT_EQ(base.getBaseMI(), nullptr);
  EXPECT_EQ(base.getUseCount(), 0);
  EXPECT_EQ(plan.constructed, 1);
  EXPECT_EQ(plan.destroyed, 1);
}

TEST_F(MIFactory, ThrowingConstructorGivesCodeOneAndNoMessage) {
  plan.throwInConstructor = true;
  status.msg = reinterpret_cast<CMPIString*>(&status);
  EXPECT_EQ(createAssociationMI(), nullptr);
  EXPECT_EQ(status.rc, CMPI_RC_ERR_FAILED);
  EXPECT_EQ(status.msg, nullptr);
  EXPECT_EQ(base.getBaseMI(), nullptr);
  EXPECT_EQ(plan.initialized, 0);

  plan.throwInConstructor = false;
  EXPECT_NE(createAssociationMI(), nullptr);
  EXPECT_EQ(plan.constructed, 1);
}

TEST_F(MIFactory, ExistingProviderIsReusedWithoutInitializingAgain) {
  ASSERT_NE(createInstanceMI(), nullptr);
  plan.throwInInitialize = true;  // would fail if it ran again
  EXPECT_NE(createAssociationMI(), nullptr);
  EXPECT_EQ(plan.initialized, 1);
  EXPECT_EQ(base.getUseCount(), 2);
}

}  // namespace
}  // namespace zeda::test
