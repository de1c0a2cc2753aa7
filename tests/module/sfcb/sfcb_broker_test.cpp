// The real module under a broker that behaves like sfcb's: broker version 0,
// an encapsulated-function table of version 1, no memory table, logMessage
// answering CMPI_RC_ERR_NOT_SUPPORTED. The module must not depend on any of
// these: every class answers exactly as under a CMPI 2.0 broker.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "Fixtures.h"

namespace zeda::test {
namespace {

using zeda::host::BrokerSettings;
using zeda::host::Host;
using zeda::host::MIKind;
using zeda::host::ObjectPath;

// One NAS: a data disk its group lists, a spare, a free disk and an SSD.
constexpr const char* kInventory = R"({"nas": [{"name": "n1",
  "disks": [{"id": "0:1", "capacity": 1000000},
            {"id": "0:2", "isSpare": true, "capacity": 2000000},
            {"id": "0:3", "isFree": true, "capacity": 3000000},
            {"id": "0:4", "isSsd": true, "capacity": 4000000}],
  "groups": [{"dataDisks": ["0:1"], "spareDisks": ["0:2"]}]}]})";

class SfcbBroker : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { setenv("PELKA_PROGRAM_DATA", ProgramDataDir().c_str(), 1); }

  ScopedInventory inventory_{kInventory};
  Host host_{ModulePath(), BrokerSettings::sfcbLike()};
};

TEST_F(SfcbBroker, BrokerReportsWhatSfcbReports) {
  EXPECT_EQ(host_.broker()->bft->brokerVersion, 0u);
  EXPECT_EQ(host_.broker()->eft->ftVersion, 1);
  EXPECT_EQ(host_.broker()->mft, nullptr);
}

TEST_F(SfcbBroker, EveryInstanceClassEnumerates) {
  const struct {
    const char* cls;
    std::size_t expected;
  } classes[] = {{"ZEDA_DiskDrive", 4},
                 {"ZEDA_StorageExtent_Disk", 4},
                 {"ZEDA_PhysicalPackage_Disk", 4},
                 {"ZEDA_SoftwareIdentity_Disk", 4},
                 {"ZEDA_SystemDevice_DiskDrive", 4},
                 {"ZEDA_SystemDevice_StorageExtent_Disk", 4},
                 {"ZEDA_MediaPresent", 4},
                 {"ZEDA_Realizes_Disk", 4},
                 {"ZEDA_ElementSoftwareIdentity_Disk", 4},
                 // the free disk in pool 1 and the data disk in pool 2 only
                 {"ZEDA_ConcreteComponent_Primordial", 2}};
  for (const auto& c : classes) {
    const auto outcome =
        host_.enumerateInstances(std::string(c.cls) + "Provider", ObjectPath(kNamespace, c.cls));
    EXPECT_EQ(outcome.status.code, 0) << c.cls;
    EXPECT_FALSE(outcome.status.message) << c.cls;
    EXPECT_TRUE(outcome.done) << c.cls;
    EXPECT_EQ(outcome.results.size(), c.expected) << c.cls;
  }
}

TEST_F(SfcbBroker, FailureMessagesAreMadeThroughTheBroker) {
  const auto outcome = host_.getInstance(
      "ZEDA_StorageExtent_DiskProvider",
      Path(
          R"(ZEDA_StorageExtent_Disk.SystemName="ZEDA:ghost",DeviceID="ZEDA:ghost:DiskExtent0:1")"));
  EXPECT_EQ(outcome.status.code, 200);
  EXPECT_EQ(outcome.status.message, std::string("NAS not found: ghost"));
}

TEST_F(SfcbBroker, NullAssociationClassIsRefusedByTheDispatch) {
  // A client naming no association class reaches the provider with null.
  const auto outcome =
      host_.associators("ZEDA_Realizes_DiskProvider",
                        Path(R"(ZEDA_DiskDrive.SystemName="ZEDA:n1",DeviceID="ZEDA:n1:DISK0:1")"),
                        std::nullopt, std::nullopt, std::nullopt, std::nullopt);
  EXPECT_EQ(outcome.status.code, 4);
  EXPECT_EQ(outcome.status.message,
            std::string("Wrong association class name: ; Expected: ZEDA_Realizes_Disk"));
  EXPECT_TRUE(outcome.results.empty());
}

TEST_F(SfcbBroker, PoolWalkAnswersAsUnderAnyBroker) {
  const auto outcome = host_.associators(
      "ZEDA_ConcreteComponent_PrimordialProvider",
      Path(R"(ZEDA_StoragePool_Primordial.InstanceID="ZEDA:n1:PrimordialPool3")"),
      std::string("ZEDA_ConcreteComponent_Primordial"), std::nullopt, std::nullopt, std::nullopt);
  ASSERT_EQ(outcome.status.code, 0);
  ASSERT_EQ(outcome.results.size(), 1u);
  EXPECT_EQ(outcome.results[0].instance().property("DeviceID").str(), "ZEDA:n1:DiskExtent0:2");
}

TEST_F(SfcbBroker, SharedProviderObjectAndCleanUp) {
  const auto instanceMI = host_.createMI("ZEDA_MediaPresentProvider", MIKind::Instance);
  const auto associationMI = host_.createMI("ZEDA_MediaPresentProvider", MIKind::Association);
  ASSERT_TRUE(instanceMI.ok());
  ASSERT_TRUE(associationMI.ok());
  EXPECT_EQ(instanceMI.instanceMI()->hdl, associationMI.associationMI()->hdl);
  for (const auto& status : host_.unload()) {
    EXPECT_EQ(status.code, 0);
  }
}

}  // namespace
}  // namespace zeda::test
