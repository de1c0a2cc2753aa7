// AssociatorsDelegate behind PelkaProvider::associators: the association
// class check, the handler check and the choice of handler by the source
// path's class, in that order.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "AssociatorsDelegate.h"
#include "Exception.h"
#include "LogCapture.h"
#include "Operations.h"
#include "TestHost.h"

namespace zeda::test {

using namespace zeda::pelka;  // the framework under test
namespace {

using Texts = std::vector<std::string>;

// What the handlers were asked, in call order.
struct HandlerCall {
  std::string handler;
  const CmpiObjectPath* path;
  Texts texts;
  const char** properties;
};

class RecordingHandler : public AssociatorsDelegate::ClassHandler {
 public:
  RecordingHandler(const std::string& endpoint, std::string label, std::vector<HandlerCall>& calls,
                   std::vector<std::string>& destroyed, CmpiStatus answer = CmpiStatus(CMPI_RC_OK))
      : ClassHandler(endpoint),
        label_(std::move(label)),
        calls_(calls),
        destroyed_(destroyed),
        answer_(std::move(answer)) {}
  ~RecordingHandler() override { destroyed_.push_back(label_); }

  CmpiStatus operator()(const CmpiContext&, CmpiResult&, const CmpiObjectPath& cop,
                        const std::string& assocClass, const std::string& resultClass,
                        const std::string& role, const std::string& resultRole,
                        const char** properties) override {
    calls_.push_back({label_, &cop, {assocClass, resultClass, role, resultRole}, properties});
    return answer_;
  }

 private:
  std::string label_;
  std::vector<HandlerCall>& calls_;
  std::vector<std::string>& destroyed_;
  CmpiStatus answer_;
};

class Associators : public ::testing::Test {
 protected:
  Associators()
      : delegate(TestProvider::install(&provider, provider.associationDelegates().Associators,
                                       std::make_unique<AssociatorsDelegate>())) {}

  std::unique_ptr<RecordingHandler> handler(const std::string& endpoint, const std::string& label,
                                            CmpiStatus answer = CmpiStatus(CMPI_RC_OK)) {
    return std::make_unique<RecordingHandler>(endpoint, label, calls, destroyed, std::move(answer));
  }

  void installModuleLikeHandlers() {
    auto second = handler("ZEDA_PhysicalPackage_Disk", "second");
    auto first = handler("ZEDA_DiskDrive", "first");
    delegate.setHandlers(std::move(first), std::move(second));
  }

  CmpiStatus associators(const CmpiObjectPath& source, const char* assocClass,
                         const char* resultClass = nullptr, const char* role = nullptr,
                         const char* resultRole = nullptr) {
    return provider.associators(args.ctx, args.rslt, source, assocClass, resultClass, role,
                                resultRole, args.properties);
  }

  std::vector<HandlerCall> calls;
  std::vector<std::string> destroyed;
  TestProvider provider{Broker(), Context(), "ZEDA_Realizes_Disk"};
  AssociatorsDelegate& delegate;
  CallArgs args;
  LogCapture capture;
};

TEST_F(Associators, SourceOfTheFirstEndpointGoesToTheFirstHandler) {
  installModuleLikeHandlers();
  const CmpiObjectPath source = PathOf("ZEDA_DiskDrive");
  const CmpiStatus status =
      associators(source, "ZEDA_Realizes_Disk", "ZEDA_PhysicalPackage_Disk", "Dependent", nullptr);
  EXPECT_EQ(status.rc(), CMPI_RC_OK);
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].handler, "first");
  EXPECT_EQ(calls[0].path, &source);
  EXPECT_EQ(calls[0].texts,
            (Texts{"ZEDA_Realizes_Disk", "ZEDA_PhysicalPackage_Disk", "Dependent", ""}));
  EXPECT_EQ(calls[0].properties, args.properties);
  EXPECT_TRUE(FrameworkLines(capture).empty());
}

TEST_F(Associators, SourceOfTheSecondEndpointGoesToTheSecondHandler) {
  installModuleLikeHandlers();
  const CmpiObjectPath source = PathOf("ZEDA_PhysicalPackage_Disk");
  EXPECT_EQ(associators(source, "ZEDA_Realizes_Disk").rc(), CMPI_RC_OK);
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].handler, "second");
  EXPECT_EQ(calls[0].texts, (Texts{"ZEDA_Realizes_Disk", "", "", ""}));
}

TEST_F(Associators, TheHandlersStatusIsReturned) {
  delegate.setHandlers(
      handler("ZEDA_DiskDrive", "first", CmpiStatus(CMPI_RC_ERR_NOT_FOUND, "nothing here")),
      handler("ZEDA_PhysicalPackage_Disk", "second"));
  const CmpiStatus status = associators(PathOf("ZEDA_DiskDrive"), "ZEDA_Realizes_Disk");
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_NOT_FOUND);
  EXPECT_STREQ(status.msg(), "nothing here");
  EXPECT_TRUE(FrameworkLines(capture).empty());
}

TEST_F(Associators, ANameMatchingBothHandlersGoesToTheFirst) {
  delegate.setHandlers(handler("ZEDA_StorageExtent_Disk", "first"),
                       handler("ZEDA_StorageExtent_Disk", "second"));
  EXPECT_EQ(associators(PathOf("ZEDA_StorageExtent_Disk"), "ZEDA_Realizes_Disk").rc(), CMPI_RC_OK);
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].handler, "first");
}

TEST_F(Associators, MissingAssociationClassIsRefused) {
  installModuleLikeHandlers();
  const CmpiStatus status = associators(PathOf("ZEDA_DiskDrive"), nullptr);
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  EXPECT_STREQ(status.msg(), "Wrong association class name: ; Expected: ZEDA_Realizes_Disk");
  EXPECT_TRUE(calls.empty());
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].severity, google::GLOG_ERROR);
  EXPECT_EQ(lines[0].line, 129);
  EXPECT_EQ(lines[0].text,
            "ZEDA_Realizes_Disk: Wrong association class name: ; Expected: ZEDA_Realizes_Disk "
            "(RC=4)");
}

TEST_F(Associators, EmptyAssociationClassIsRefused) {
  installModuleLikeHandlers();
  const CmpiStatus status = associators(PathOf("ZEDA_DiskDrive"), "");
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  EXPECT_STREQ(status.msg(), "Wrong association class name: ; Expected: ZEDA_Realizes_Disk");
  EXPECT_TRUE(calls.empty());
}

TEST_F(Associators, AssociationClassInOtherLetterCaseIsRefused) {
  installModuleLikeHandlers();
  const CmpiStatus status = associators(PathOf("ZEDA_DiskDrive"), "zeda_realizes_disk");
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  EXPECT_STREQ(status.msg(),
               "Wrong association class name: zeda_realizes_disk; Expected: ZEDA_Realizes_Disk");
  EXPECT_TRUE(calls.empty());
}

TEST_F(Associators, AssociationClassMustMatchAsAWholeString) {
  installModuleLikeHandlers();
  for (const char* name : {"ZEDA_Realizes_Disk ", "ZEDA_Realizes", "CIM_Realizes"}) {
    const CmpiStatus status = associators(PathOf("ZEDA_DiskDrive"), name);
    EXPECT_EQ(status.rc(), CMPI_RC_ERR_INVALID_PARAMETER) << name;
    EXPECT_EQ(status.msg(), "Wrong association class name: " + std::string(name) +
                                "; Expected: ZEDA_Realizes_Disk");
  }
  EXPECT_TRUE(calls.empty());
}

TEST_F(Associators, MissingHandlersAreANullHandlerError) {
  const CmpiStatus status = associators(PathOf("ZEDA_DiskDrive"), "ZEDA_Realizes_Disk");
  EXPECT_EQ(status.rc(), CMPI_RC_ERROR);
  EXPECT_STREQ(status.msg(), "Null handler");
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].line, 129);
  EXPECT_EQ(lines[0].text, "ZEDA_Realizes_Disk: Null handler");
}

TEST_F(Associators, OneMissingHandlerIsANullHandlerErrorEvenForTheOthersClass) {
  delegate.setHandlers(handler("ZEDA_DiskDrive", "first"), nullptr);
  const CmpiStatus status = associators(PathOf("ZEDA_DiskDrive"), "ZEDA_Realizes_Disk");
  EXPECT_EQ(status.rc(), CMPI_RC_ERROR);
  EXPECT_STREQ(status.msg(), "Null handler");
  EXPECT_TRUE(calls.empty());

  delegate.setHandlers(nullptr, handler("ZEDA_PhysicalPackage_Disk", "second"));
  const CmpiStatus again = associators(PathOf("ZEDA_PhysicalPackage_Disk"), "ZEDA_Realizes_Disk");
  EXPECT_EQ(again.rc(), CMPI_RC_ERROR);
  EXPECT_STREQ(again.msg(), "Null handler");
  EXPECT_TRUE(calls.empty());
}

TEST_F(Associators, WrongAssociationClassIsReportedBeforeMissingHandlers) {
  const CmpiStatus status = associators(PathOf("ZEDA_DiskDrive"), "ZEDA_MediaPresent");
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  EXPECT_STREQ(status.msg(),
               "Wrong association class name: ZEDA_MediaPresent; Expected: ZEDA_Realizes_Disk");
}

TEST_F(Associators, SourcePathIsNotReadWhenAHandlerIsMissing) {
  // Reading the class of a null path fails; the handler check comes first.
  const CmpiObjectPath nullPath;
  const CmpiStatus status = associators(nullPath, "ZEDA_Realizes_Disk");
  EXPECT_EQ(status.rc(), CMPI_RC_ERROR);
  EXPECT_STREQ(status.msg(), "Null handler");
}

TEST_F(Associators, SubclassOfAnEndpointIsAnUnknownClassName) {
  installModuleLikeHandlers();
  const CmpiStatus status = associators(PathOf("ZEDA_DiskDrive_Special"), "ZEDA_Realizes_Disk");
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  EXPECT_STREQ(status.msg(), "Unknown class name: ZEDA_DiskDrive_Special");
  EXPECT_TRUE(calls.empty());
  const auto lines = FrameworkLines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].line, 129);
  EXPECT_EQ(lines[0].text, "ZEDA_Realizes_Disk: Unknown class name: ZEDA_DiskDrive_Special (RC=4)");
}

TEST_F(Associators, EndpointNameInOtherLetterCaseIsAnUnknownClassName) {
  installModuleLikeHandlers();
  const CmpiStatus status = associators(PathOf("zeda_diskdrive"), "ZEDA_Realizes_Disk");
  EXPECT_EQ(status.rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  EXPECT_STREQ(status.msg(), "Unknown class name: zeda_diskdrive");
  EXPECT_TRUE(calls.empty());
}

TEST_F(Associators, ExceptionOfAHandlerReachesTheWrapper) {
  class Throwing : public AssociatorsDelegate::ClassHandler {
   public:
    using ClassHandler::ClassHandler;
    CmpiStatus operator()(const CmpiContext&, CmpiResult&, const CmpiObjectPath&,
                          const std::string&, const std::string&, const std::string&,
                          const std::string&, const char**) override {
      throw Exception("Wrong class name");
    }
  };
  delegate.setHandlers(std::make_unique<Throwing>("ZEDA_DiskDrive"),
                       handler("ZEDA_PhysicalPackage_Disk", "second"));
  const CmpiStatus status = associators(PathOf("ZEDA_DiskDrive"), "ZEDA_Realizes_Disk");
  EXPECT_EQ(status.rc(), CMPI_RC_ERROR);
  EXPECT_STREQ(status.msg(), "Wrong class name");
}

TEST_F(Associators, SettingHandlersDestroysTheOnesHeldBefore) {
  installModuleLikeHandlers();
  EXPECT_TRUE(destroyed.empty());
  delegate.setHandlers(handler("A", "third"), handler("B", "fourth"));
  ASSERT_EQ(destroyed.size(), 2u);
  EXPECT_EQ(associators(PathOf("B"), "ZEDA_Realizes_Disk").rc(), CMPI_RC_OK);
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].handler, "fourth");
}

TEST(AssociatorsDelegateLifetime, DestroysTheSecondHandlerThenTheFirst) {
  std::vector<HandlerCall> calls;
  std::vector<std::string> destroyed;
  {
    AssociatorsDelegate delegate;
    delegate.setHandlers(std::make_unique<RecordingHandler>("A", "first", calls, destroyed),
                         std::make_unique<RecordingHandler>("B", "second", calls, destroyed));
  }
  EXPECT_EQ(destroyed, (Texts{"second", "first"}));
}

}  // namespace
}  // namespace zeda::test
