// driveBaseCleanup: use counts of the provider base, DO_NOT_UNLOAD, and the
// end of the provider object.
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "CmpiCpp.h"
#include "FakeBroker.h"

namespace zeda::test {
namespace {

enum class CleanupAnswer { Ok, Failure, ThrowStd, ThrowInt, ThrowStatus };

// What a provider object leaves behind once it is gone.
struct Trace {
  int cleanups = 0;
  bool destroyed = false;
  const CMPIBroker* brokerDuringCleanup = nullptr;
};

class Tracked : public CmpiInstanceMI, public CmpiAssociationMI {
 public:
  Tracked(const CmpiBroker& broker, const CmpiContext& ctx, Trace& trace)
      : CmpiBaseMI(broker, ctx),
        CmpiInstanceMI(broker, ctx),
        CmpiAssociationMI(broker, ctx),
        trace_(trace) {}
  ~Tracked() override { trace_.destroyed = true; }

  bool unloadable = true;
  bool unloadableThrows = false;
  CleanupAnswer answer = CleanupAnswer::Ok;

  CmpiStatus cleanup(CmpiContext&) override {
    ++trace_.cleanups;
    trace_.brokerDuringCleanup = CmpiBroker::current();
    switch (answer) {
      case CleanupAnswer::Ok:
        return CmpiStatus(CMPI_RC_OK);
      case CleanupAnswer::Failure:
        return CmpiStatus(CMPI_RC_ERR_FAILED, "no");
      case CleanupAnswer::ThrowStd:
        throw std::runtime_error("cleanup failed");
      case CleanupAnswer::ThrowInt:
        throw 7;
      case CleanupAnswer::ThrowStatus:
        throw CmpiStatus(CMPI_RC_ERR_FAILED);
    }
    return CmpiStatus(CMPI_RC_OK);
  }
  bool isUnloadable() const override {
    if (unloadableThrows) {
      throw std::runtime_error("cannot tell");
    }
    return unloadable;
  }

 private:
  Trace& trace_;
};

class CleanupTest : public ::testing::Test {
 protected:
  // A provider object registered the way a factory registers it: owned by
  // the provider base, one use per MI record handed out.
  Tracked* registered(int uses) {
    auto made = std::make_unique<Tracked>(CmpiBroker(mb.enc()), CmpiContext(ctx), trace);
    Tracked* provider = made.get();
    provider->setProviderBase(&base);
    base.setBaseMI(made.release());
    for (int i = 0; i < uses; ++i) {
      base.incUseCount();
    }
    instanceMI.hdl = CmpiBaseMI::toHandle(provider);
    associationMI.hdl = CmpiBaseMI::toHandle(provider);
    return provider;
  }

  fake::Broker mb;
  const CMPIContext* ctx = &mb.context()->enc;
  Trace trace;
  CmpiProviderBase base;
  CMPIInstanceMI instanceMI{nullptr, nullptr};
  CMPIAssociationMI associationMI{nullptr, nullptr};
};

}  // namespace

TEST(CmpiBaseMIDefaultsTest, InitializeAndCleanupSucceedAndTheObjectIsUnloadable) {
  fake::Broker mb;
  CmpiInstanceMI plain(CmpiBroker(mb.enc()), CmpiContext());
  EXPECT_EQ(plain.initialize(CmpiContext()).rc(), CMPI_RC_OK);
  CmpiContext ctx;
  EXPECT_EQ(plain.cleanup(ctx).rc(), CMPI_RC_OK);
  EXPECT_TRUE(plain.isUnloadable());
  EXPECT_EQ(plain.getBroker().getEnc(), mb.enc());
  EXPECT_EQ(plain.getProviderBase(), nullptr);
}

TEST(CmpiProviderBaseTest, OwnsItsObjectAndCountsUses) {
  fake::Broker mb;
  Trace trace;
  CmpiProviderBase base;
  EXPECT_EQ(base.getBaseMI(), nullptr);
  EXPECT_EQ(base.getUseCount(), 0);
  auto made = std::make_unique<Tracked>(CmpiBroker(mb.enc()), CmpiContext(), trace);
  CmpiBaseMI* object = made.get();
  base.setBaseMI(made.release());
  EXPECT_EQ(base.getBaseMI(), object);
  base.setBaseMI(object);  // storing it again keeps it
  EXPECT_FALSE(trace.destroyed);
  base.incUseCount();
  base.incUseCount();
  EXPECT_EQ(base.getUseCount(), 2);
  EXPECT_EQ(base.decUseCount(), 1);
  std::unique_ptr<CmpiBaseMI> released = base.releaseBaseMI();
  EXPECT_EQ(released.get(), object);
  EXPECT_EQ(base.getBaseMI(), nullptr);
  EXPECT_FALSE(trace.destroyed);
  base.setBaseMI(released.release());
  base.setBaseMI(nullptr);
  EXPECT_TRUE(trace.destroyed);
}

TEST_F(CleanupTest, OnlyTheLastUseEndsTheObject) {
  registered(2);
  const CMPIStatus first = CmpiBaseMI::driveBaseCleanup(&instanceMI, ctx, 0);
  EXPECT_EQ(first.rc, CMPI_RC_OK);
  EXPECT_EQ(base.getUseCount(), 1);
  EXPECT_EQ(trace.cleanups, 0);
  EXPECT_FALSE(trace.destroyed);

  const CMPIStatus last = CmpiBaseMI::driveBaseCleanup(&associationMI, ctx, 0);
  EXPECT_EQ(last.rc, CMPI_RC_OK);
  EXPECT_EQ(trace.cleanups, 1);
  EXPECT_EQ(trace.brokerDuringCleanup, mb.enc());
  EXPECT_TRUE(trace.destroyed);
  EXPECT_EQ(base.getBaseMI(), nullptr);
  EXPECT_EQ(CmpiBroker::current(), nullptr);
}

TEST_F(CleanupTest, AProviderThatWantsToStayIsKeptUnlessTerminating) {
  registered(1)->unloadable = false;
  const CMPIStatus kept = CmpiBaseMI::driveBaseCleanup(&instanceMI, ctx, 0);
  EXPECT_EQ(kept.rc, CMPI_RC_DO_NOT_UNLOAD);
  EXPECT_EQ(base.getUseCount(), 1);
  EXPECT_EQ(trace.cleanups, 0);
  EXPECT_FALSE(trace.destroyed);

  const CMPIStatus ended = CmpiBaseMI::driveBaseCleanup(&instanceMI, ctx, 1);
  EXPECT_EQ(ended.rc, CMPI_RC_OK);
  EXPECT_EQ(trace.cleanups, 1);
  EXPECT_TRUE(trace.destroyed);
}

TEST_F(CleanupTest, AProviderThatCannotTellIsKept) {
  registered(1)->unloadableThrows = true;
  EXPECT_EQ(CmpiBaseMI::driveBaseCleanup(&instanceMI, ctx, 0).rc, CMPI_RC_DO_NOT_UNLOAD);
  EXPECT_FALSE(trace.destroyed);
  EXPECT_EQ(CmpiBaseMI::driveBaseCleanup(&instanceMI, ctx, 1).rc, CMPI_RC_OK);
  EXPECT_TRUE(trace.destroyed);
}

TEST_F(CleanupTest, TheObjectEndsWhateverCleanupAnswersOrThrows) {
  for (const CleanupAnswer answer : {CleanupAnswer::Failure, CleanupAnswer::ThrowStd,
                                     CleanupAnswer::ThrowInt, CleanupAnswer::ThrowStatus}) {
    trace = Trace();
    registered(1)->answer = answer;
    const CMPIStatus status = CmpiBaseMI::driveBaseCleanup(&associationMI, ctx, 0);
    EXPECT_EQ(status.rc, CMPI_RC_OK);
    EXPECT_EQ(trace.cleanups, 1);
    EXPECT_TRUE(trace.destroyed);
    EXPECT_EQ(base.getBaseMI(), nullptr);
  }
}

TEST_F(CleanupTest, WithoutProviderBaseTheObjectIsCleanedUpAndDeleted) {
  auto made = std::make_unique<Tracked>(CmpiBroker(mb.enc()), CmpiContext(ctx), trace);
  // The clean-up driver takes the object over from here.
  instanceMI.hdl = CmpiBaseMI::toHandle(made.release());
  EXPECT_EQ(CmpiBaseMI::driveBaseCleanup(&instanceMI, ctx, 0).rc, CMPI_RC_OK);
  EXPECT_EQ(trace.cleanups, 1);
  EXPECT_TRUE(trace.destroyed);
}

TEST_F(CleanupTest, MethodAndIndicationRecordsShareTheRoutine) {
  registered(2);
  CMPIMethodMI methodMI{associationMI.hdl, nullptr};
  CMPIIndicationMI indicationMI{associationMI.hdl, nullptr};
  EXPECT_EQ(CmpiBaseMI::driveBaseCleanup(&methodMI, ctx, 0).rc, CMPI_RC_OK);
  EXPECT_FALSE(trace.destroyed);
  EXPECT_EQ(CmpiBaseMI::driveBaseCleanup(&indicationMI, ctx, 0).rc, CMPI_RC_OK);
  EXPECT_TRUE(trace.destroyed);
}

TEST_F(CleanupTest, NullRecordsAndHandlesAreInvalid) {
  EXPECT_EQ(CmpiBaseMI::driveBaseCleanup(static_cast<CMPIInstanceMI*>(nullptr), ctx, 0).rc,
            CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(CmpiBaseMI::driveBaseCleanup(static_cast<CMPIAssociationMI*>(nullptr), ctx, 0).rc,
            CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(CmpiBaseMI::driveBaseCleanup(static_cast<CMPIMethodMI*>(nullptr), ctx, 0).rc,
            CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(CmpiBaseMI::driveBaseCleanup(static_cast<CMPIIndicationMI*>(nullptr), ctx, 0).rc,
            CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(CmpiBaseMI::driveBaseCleanup(&instanceMI, ctx, 0).rc, CMPI_RC_ERR_INVALID_HANDLE);
}

}  // namespace zeda::test
