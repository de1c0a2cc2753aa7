// Dispatch of PelkaProvider's operations to the delegates in its tables.
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "LogDirectory.h"
#include "Operations.h"
#include "TestHost.h"

namespace zeda::test {

using namespace zeda::pelka;  // the framework under test
namespace {

using Texts = std::vector<std::string>;

TEST(PelkaProvider, ConstructorCreatesEmptyTablesOwnedByTheProvider) {
  TestProvider provider(Broker(), Context());
  EXPECT_EQ(provider.className(), "Unknown");
  EXPECT_EQ(provider.broker().getEnc(), ModuleHost().broker());

  EXPECT_EQ(provider.instanceDelegates().provider, &provider);
  EXPECT_EQ(provider.associationDelegates().provider, &provider);
  EXPECT_EQ(provider.methodDelegates().provider, &provider);
  EXPECT_EQ(provider.indicationDelegates().provider, &provider);
  for (const Operation& op : AllOperations()) {
    EXPECT_EQ(op.slot(provider), nullptr) << op.name;
  }
}

TEST(PelkaProvider, ConstructorStartsLoggingInTheLogDirectory) {
  const TestProvider provider(Broker(), Context());
  EXPECT_TRUE(std::filesystem::is_directory(LogDirectory())) << LogDirectory();
}

TEST(PelkaProvider, InitializeAndCleanupAnswerOkAndItIsUnloadable) {
  TestProvider provider(Broker(), Context());
  CmpiContext ctx = Context();
  const CmpiStatus initialized = provider.initialize(ctx);
  EXPECT_EQ(initialized.rc(), CMPI_RC_OK);
  EXPECT_FALSE(initialized.hasMessage());
  const CmpiStatus cleaned = provider.cleanup(ctx);
  EXPECT_EQ(cleaned.rc(), CMPI_RC_OK);
  EXPECT_FALSE(cleaned.hasMessage());
  EXPECT_TRUE(provider.isUnloadable());
}

// A delegate that reports its own destruction.
struct Tracked : InstanceMI::EnumInstancesDelegate {
  explicit Tracked(std::vector<std::string>& log, std::string name)
      : log_(log), name_(std::move(name)) {}
  ~Tracked() override { log_.push_back(name_); }
  std::vector<std::string>& log_;
  std::string name_;
};

TEST(PelkaProvider, InstallingReplacesAndDestroysThePreviousDelegate) {
  std::vector<std::string> destroyed;
  {
    TestProvider provider(Broker(), Context());
    auto& first = TestProvider::install(&provider, provider.instanceDelegates().EnumInstances,
                                        std::make_unique<Tracked>(destroyed, "first"));
    EXPECT_EQ(first.owner(), &provider);
    TestProvider::install(&provider, provider.instanceDelegates().EnumInstances,
                          std::make_unique<Tracked>(destroyed, "second"));
    EXPECT_EQ(destroyed, Texts{"first"});
  }
  EXPECT_EQ(destroyed, (Texts{"first", "second"}));  // the table owns its delegates
}

class DispatchedOperation : public ::testing::TestWithParam<Operation> {};

TEST_P(DispatchedOperation, WithoutDelegateAnswersNotSupportedAndKeepsTheDefault) {
  const Operation& op = GetParam();
  TestProvider provider(Broker(), Context(), "TEST_Dispatch");
  CallArgs args;
  const LogCapture capture;

  const CmpiStatus first = op.call(provider, args);
  EXPECT_EQ(first.rc(), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(static_cast<int>(first.rc()), 7);
  EXPECT_FALSE(first.hasMessage());
  const MIFunction* installed = op.slot(provider);
  ASSERT_NE(installed, nullptr);
  EXPECT_EQ(installed->owner(), &provider);

  const CmpiStatus second = op.call(provider, args);
  EXPECT_EQ(second.rc(), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_FALSE(second.hasMessage());
  EXPECT_EQ(op.slot(provider), installed);  // the same default, not a new one
  EXPECT_TRUE(capture.lines().empty());
}

TEST_P(DispatchedOperation, InstalledDelegateServesTheCall) {
  const Operation& op = GetParam();
  TestProvider provider(Broker(), Context(), "TEST_Dispatch");
  Seen seen;
  op.install(provider, Returns(CmpiStatus(CMPI_RC_OK)), seen);
  const MIFunction* installed = op.slot(provider);
  CallArgs args;
  EXPECT_EQ(op.call(provider, args).rc(), CMPI_RC_OK);
  EXPECT_EQ(op.call(provider, args).rc(), CMPI_RC_OK);
  EXPECT_EQ(seen.calls, 2);
  EXPECT_EQ(op.slot(provider), installed);
}

INSTANTIATE_TEST_SUITE_P(AllOperations, DispatchedOperation, ::testing::ValuesIn(AllOperations()),
                         [](const ::testing::TestParamInfo<Operation>& info) {
                           return info.param.name;
                         });

class Dispatch : public ::testing::Test {
 protected:
  Seen seen;
  TestProvider provider{Broker(), Context(), "TEST_Dispatch"};
  CallArgs args;
  const Script ok = Returns(CmpiStatus(CMPI_RC_OK));
};

TEST_F(Dispatch, AssociatorsConvertsNullFiltersToEmptyStrings) {
  TestProvider::install(&provider, provider.associationDelegates().Associators,
                        std::make_unique<TestAssociators>(ok, seen));
  provider.associators(args.ctx, args.rslt, args.cop, nullptr, nullptr, nullptr, nullptr,
                       args.properties);
  EXPECT_EQ(seen.texts, (Texts{"", "", "", ""}));

  provider.associators(args.ctx, args.rslt, args.cop, nullptr, "CIM_Result", nullptr, "Dependent",
                       nullptr);
  EXPECT_EQ(seen.texts, (Texts{"", "CIM_Result", "", "Dependent"}));
  EXPECT_EQ(seen.pointers.back(), nullptr);  // a null property list stays null
}

TEST_F(Dispatch, AssociatorsPassesTheOtherArgumentsAsReceived) {
  TestProvider::install(&provider, provider.associationDelegates().Associators,
                        std::make_unique<TestAssociators>(ok, seen));
  provider.associators(args.ctx, args.rslt, args.cop, "A", "B", "C", "D", args.properties);
  EXPECT_EQ(seen.texts, (Texts{"A", "B", "C", "D"}));
  EXPECT_EQ(seen.pointers,
            (std::vector<const void*>{&args.ctx, &args.rslt, &args.cop, args.properties}));
}

TEST_F(Dispatch, AssociatorNamesConvertsNullFiltersToEmptyStrings) {
  TestProvider::install(&provider, provider.associationDelegates().AssociatorNames,
                        std::make_unique<TestAssociatorNames>(ok, seen));
  provider.associatorNames(args.ctx, args.rslt, args.cop, nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(seen.texts, (Texts{"", "", "", ""}));
  provider.associatorNames(args.ctx, args.rslt, args.cop, "A", nullptr, "C", nullptr);
  EXPECT_EQ(seen.texts, (Texts{"A", "", "C", ""}));
}

TEST_F(Dispatch, ReferencesConvertsNullFiltersToEmptyStrings) {
  TestProvider::install(&provider, provider.associationDelegates().References,
                        std::make_unique<TestReferences>(ok, seen));
  provider.references(args.ctx, args.rslt, args.cop, nullptr, nullptr, args.properties);
  EXPECT_EQ(seen.texts, (Texts{"", ""}));
  EXPECT_EQ(seen.pointers.back(), args.properties);
  provider.references(args.ctx, args.rslt, args.cop, "CIM_Result", nullptr, nullptr);
  EXPECT_EQ(seen.texts, (Texts{"CIM_Result", ""}));
}

TEST_F(Dispatch, ReferenceNamesConvertsNullFiltersToEmptyStrings) {
  TestProvider::install(&provider, provider.associationDelegates().ReferenceNames,
                        std::make_unique<TestReferenceNames>(ok, seen));
  provider.referenceNames(args.ctx, args.rslt, args.cop, nullptr, nullptr);
  EXPECT_EQ(seen.texts, (Texts{"", ""}));
  provider.referenceNames(args.ctx, args.rslt, args.cop, nullptr, "Antecedent");
  EXPECT_EQ(seen.texts, (Texts{"", "Antecedent"}));
}

TEST_F(Dispatch, InvokeMethodConvertsANullMethodNameToAnEmptyString) {
  TestProvider::install(&provider, provider.methodDelegates().InvokeMethod,
                        std::make_unique<TestInvokeMethod>(ok, seen));
  provider.invokeMethod(args.ctx, args.rslt, args.cop, nullptr, args.in, args.out);
  EXPECT_EQ(seen.texts, Texts{""});
  provider.invokeMethod(args.ctx, args.rslt, args.cop, "RequestStateChange", args.in, args.out);
  EXPECT_EQ(seen.texts, Texts{"RequestStateChange"});
  EXPECT_EQ(seen.pointers,
            (std::vector<const void*>{&args.ctx, &args.rslt, &args.cop, &args.in, &args.out}));
}

TEST_F(Dispatch, ExecQueryPassesQueryAndLanguageAsReceived) {
  TestProvider::install(&provider, provider.instanceDelegates().ExecQuery,
                        std::make_unique<TestExecQuery>(ok, seen));
  provider.execQuery(args.ctx, args.rslt, args.cop, args.query, args.language);
  EXPECT_EQ(seen.pointers, (std::vector<const void*>{&args.ctx, &args.rslt, &args.cop, args.query,
                                                     args.language}));
  provider.execQuery(args.ctx, args.rslt, args.cop, nullptr, nullptr);
  EXPECT_EQ(seen.pointers[3], nullptr);
  EXPECT_EQ(seen.pointers[4], nullptr);
}

TEST_F(Dispatch, InstanceOperationsPassInstanceAndPropertyList) {
  TestProvider::install(&provider, provider.instanceDelegates().SetInstance,
                        std::make_unique<TestSetInstance>(ok, seen));
  provider.setInstance(args.ctx, args.rslt, args.cop, args.inst, args.properties);
  EXPECT_EQ(seen.pointers, (std::vector<const void*>{&args.ctx, &args.rslt, &args.cop, &args.inst,
                                                     args.properties}));
}

TEST_F(Dispatch, IndicationOperationsPassTheirArgumentsAsReceived) {
  TestProvider::install(&provider, provider.indicationDelegates().AuthorizeFilter,
                        std::make_unique<TestAuthorizeFilter>(ok, seen));
  provider.authorizeFilter(args.ctx, args.filter, args.indicationClass, args.cop, nullptr);
  EXPECT_EQ(seen.pointers, (std::vector<const void*>{&args.ctx, &args.filter, args.indicationClass,
                                                     &args.cop, nullptr}));

  Seen activated;
  TestProvider::install(&provider, provider.indicationDelegates().ActivateFilter,
                        std::make_unique<TestActivateFilter>(ok, activated));
  provider.activateFilter(args.ctx, args.filter, nullptr, args.cop, false);
  EXPECT_EQ(activated.pointers[2], nullptr);
  EXPECT_EQ(activated.flags, std::vector<bool>{false});
  provider.activateFilter(args.ctx, args.filter, nullptr, args.cop, true);
  EXPECT_EQ(activated.flags, std::vector<bool>{true});
}

}  // namespace
}  // namespace zeda::test
