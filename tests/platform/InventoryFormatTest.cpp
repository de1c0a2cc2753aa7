// The inventory file format: accepted documents, defaults and every refusal
// with its one message (file, place, problem).
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "InventoryRefusal.h"
#include "TempDir.h"
#include "inventory/Library.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

using namespace zeda::pelka;
using namespace zeda::pelka::platform;

using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(InventoryFormat, FullRecordIsRead) {
  const Inventory inventory = ParseInventory(R"({"nas": [{"name": "nas1",
      "disks": [{"id": "0:1", "status": "degraded", "isFree": true, "isSpare": true,
                 "isSsd": true, "interfaceType": "SAS", "firmwareVersion": "82.00A82",
                 "capacity": 4000787030016, "rpm": 7200,
                 "health": {"status": 3, "message": "Reallocated sectors"},
                 "identity": {"product": "WDC WD40EFRX", "model": "WD40EFRX",
                              "serial": "WD-0001"}}],
      "groups": [{"dataDisks": ["0:1", "0:2"], "spareDisks": ["0:3"]}]}]})",
                                             kFile);
  ASSERT_EQ(inventory.nas.size(), 1u);
  const NasRecord& nas = inventory.nas[0];
  EXPECT_EQ(nas.name, "nas1");
  ASSERT_EQ(nas.disks.size(), 1u);
  const DiskRecord& record = nas.disks[0];
  EXPECT_EQ(record.disk.id, "0:1");
  EXPECT_EQ(record.disk.status, zeda::orvi::Degraded);
  EXPECT_TRUE(record.disk.isFree);
  EXPECT_TRUE(record.disk.isSpare);
  EXPECT_TRUE(record.disk.isSsd);
  EXPECT_EQ(record.disk.interfaceType, "SAS");
  EXPECT_EQ(record.disk.firmwareVersion, "82.00A82");
  EXPECT_EQ(record.disk.capacity, 4000787030016u);
  EXPECT_EQ(record.disk.rpm, 7200u);
  EXPECT_EQ(record.health.healthStatus, 3u);
  EXPECT_EQ(record.health.message, "Reallocated sectors");
  EXPECT_EQ(record.identity.product, "WDC WD40EFRX");
  EXPECT_EQ(record.identity.model, "WD40EFRX");
  EXPECT_EQ(record.identity.serial, "WD-0001");
  ASSERT_EQ(nas.groups.size(), 1u);
  EXPECT_EQ(nas.groups[0].dataDisks, (std::vector<std::string>{"0:1", "0:2"}));
  EXPECT_EQ(nas.groups[0].spareDisks, (std::vector<std::string>{"0:3"}));
}

TEST(InventoryFormat, OptionalMembersTakeTheirDefaults) {
  const Inventory inventory =
      ParseInventory(R"({"nas": [{"name": "n", "disks": [{"id": "9"}]}]})", kFile);
  const DiskRecord& record = inventory.nas.at(0).disks.at(0);
  EXPECT_EQ(record.disk.id, "9");
  EXPECT_EQ(record.disk.status, zeda::orvi::Ok);
  EXPECT_FALSE(record.disk.isFree);
  EXPECT_FALSE(record.disk.isSpare);
  EXPECT_FALSE(record.disk.isSsd);
  EXPECT_EQ(record.disk.interfaceType, "");
  EXPECT_EQ(record.disk.firmwareVersion, "");
  EXPECT_EQ(record.disk.capacity, 0u);
  EXPECT_EQ(record.disk.rpm, 0u);
  EXPECT_EQ(record.health.healthStatus, 0u);
  EXPECT_EQ(record.health.message, "");
  EXPECT_EQ(record.identity.product, "");
  EXPECT_EQ(record.identity.model, "");
  EXPECT_EQ(record.identity.serial, "");
  EXPECT_TRUE(inventory.nas[0].groups.empty());
}

TEST(InventoryFormat, PartialHealthAndIdentityKeepDefaults) {
  const Inventory inventory = ParseInventory(
      R"({"nas": [{"name": "n", "disks": [{"id": "1", "health": {"message": "x"},
          "identity": {"serial": "S1"}}]}]})",
      kFile);
  const DiskRecord& record = inventory.nas.at(0).disks.at(0);
  EXPECT_EQ(record.health.healthStatus, 0u);
  EXPECT_EQ(record.health.message, "x");
  EXPECT_EQ(record.identity.product, "");
  EXPECT_EQ(record.identity.serial, "S1");
}

TEST(InventoryFormat, EmptyDocumentsGiveNoNas) {
  EXPECT_TRUE(ParseInventory("{}", kFile).nas.empty());
  EXPECT_TRUE(ParseInventory(R"({"nas": []})", kFile).nas.empty());
  const Inventory bare = ParseInventory(R"({"nas": [{"name": "empty"}]})", kFile);
  ASSERT_EQ(bare.nas.size(), 1u);
  EXPECT_TRUE(bare.nas[0].disks.empty());
  EXPECT_TRUE(bare.nas[0].groups.empty());
}

TEST(InventoryFormat, NasAndDisksKeepFileOrder) {
  const Inventory inventory = ParseInventory(
      R"({"nas": [{"name": "zeta", "disks": [{"id": "2"}, {"id": "10"}, {"id": "1"}]},
                  {"name": "alpha"}]})",
      kFile);
  ASSERT_EQ(inventory.nas.size(), 2u);
  EXPECT_EQ(inventory.nas[0].name, "zeta");
  EXPECT_EQ(inventory.nas[1].name, "alpha");
  EXPECT_EQ(inventory.nas[0].disks[0].disk.id, "2");
  EXPECT_EQ(inventory.nas[0].disks[1].disk.id, "10");
  EXPECT_EQ(inventory.nas[0].disks[2].disk.id, "1");
}

TEST(InventoryFormat, StatusWordsMapToOperationalStatus) {
  const std::vector<std::pair<std::string, int>> expected = {
      {"unknown", 0}, {"ok", 2},       {"degraded", 3},   {"predictive-failure", 5},
      {"error", 6},   {"stopped", 10}, {"no-contact", 12}};
  for (const auto& [word, operational] : expected) {
    const Inventory inventory = ParseInventory(
        R"({"nas": [{"name": "n", "disks": [{"id": "1", "status": ")" + word + R"("}]}]})", kFile);
    EXPECT_EQ(util::GetOperationalStatus(inventory.nas[0].disks[0].disk.status), operational)
        << word;
  }
}

TEST(InventoryFormat, OperationalStatusOfEachState) {
  using namespace zeda::orvi;
  EXPECT_EQ(util::GetOperationalStatus(Unknown), 0);
  EXPECT_EQ(util::GetOperationalStatus(Ok), 2);
  EXPECT_EQ(util::GetOperationalStatus(Degraded), 3);
  EXPECT_EQ(util::GetOperationalStatus(PredictiveFailure), 5);
  EXPECT_EQ(util::GetOperationalStatus(Error), 6);
  EXPECT_EQ(util::GetOperationalStatus(Stopped), 10);
  EXPECT_EQ(util::GetOperationalStatus(NoContact), 12);
  EXPECT_EQ(util::GetOperationalStatus(static_cast<DiskStatus>(42)), 0);
}

TEST(InventoryFormat, LargestNumbersAreAccepted) {
  const Inventory inventory = ParseInventory(
      WithThirdDisk(R"({"id": "0:3", "capacity": 18446744073709551615, "rpm": 4294967295,
                        "health": {"status": 4294967295}})"),
      kFile);
  const DiskRecord& record = inventory.nas[0].disks.at(2);
  EXPECT_EQ(record.disk.capacity, 18446744073709551615u);
  EXPECT_EQ(record.disk.rpm, 4294967295u);
  EXPECT_EQ(record.health.healthStatus, 4294967295u);
}

TEST(InventoryFormat, SyntaxErrorNamesLineAndColumn) {
  const std::string message = Refusal("{\"nas\": [\n  {\"name\": \"nas1\",}\n]}");
  EXPECT_THAT(message, StartsWith(Expected("line 2, column 19: syntax error")));
  EXPECT_THAT(Refusal(""), StartsWith(Expected("line 1, column 1: syntax error")));
  EXPECT_THAT(Refusal("{\"nas\": []} x"), StartsWith(Expected("line 1, column 13: syntax error")));
}

TEST(InventoryFormat, TopLevelMustBeAnObject) {
  EXPECT_EQ(Refusal("[]"), Expected("top level: expected an object, found an array"));
  EXPECT_EQ(Refusal("null"), Expected("top level: expected an object, found null"));
}

TEST(InventoryFormat, UnknownMembersAreRefused) {
  EXPECT_EQ(Refusal(R"({"nas": [], "version": 2})"), Expected("version: unknown member"));
  EXPECT_EQ(Refusal(R"({"nas": [{"name": "n", "location": "rack 4"}]})"),
            Expected("nas[0].location: unknown member"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "speed": 7200})")),
            Expected("nas[0].disks[2].speed: unknown member"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "health": {"state": 1}})")),
            Expected("nas[0].disks[2].health.state: unknown member"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "identity": {"vendor": "X"}})")),
            Expected("nas[0].disks[2].identity.vendor: unknown member"));
  EXPECT_EQ(Refusal(R"({"nas": [{"name": "n", "groups": [{"parity": 1}]}]})"),
            Expected("nas[0].groups[0].parity: unknown member"));
}

TEST(InventoryFormat, WrongTypesAreRefused) {
  EXPECT_EQ(Refusal(R"({"nas": {}})"), Expected("nas: expected an array, found an object"));
  EXPECT_EQ(Refusal(R"({"nas": [7]})"),
            Expected("nas[0]: expected an object, found an unsigned integer"));
  EXPECT_EQ(Refusal(R"({"nas": [{"name": 1}]})"),
            Expected("nas[0].name: expected a string, found an unsigned integer"));
  EXPECT_EQ(Refusal(R"({"nas": [{"name": "n", "disks": {}}]})"),
            Expected("nas[0].disks: expected an array, found an object"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": 3})")),
            Expected("nas[0].disks[2].id: expected a string, found an unsigned integer"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "isFree": "yes"})")),
            Expected("nas[0].disks[2].isFree: expected a boolean, found a string"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "isSsd": 1})")),
            Expected("nas[0].disks[2].isSsd: expected a boolean, found an unsigned integer"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "status": 1})")),
            Expected("nas[0].disks[2].status: expected a string, found an unsigned integer"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "capacity": "4TB"})")),
            Expected("nas[0].disks[2].capacity: expected an unsigned integer, found a string"));
  EXPECT_EQ(
      Refusal(WithThirdDisk(R"({"id": "0:3", "rpm": 5400.5})")),
      Expected("nas[0].disks[2].rpm: expected an unsigned integer, found a floating-point number"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "interfaceType": null})")),
            Expected("nas[0].disks[2].interfaceType: expected a string, found null"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "health": 0})")),
            Expected("nas[0].disks[2].health: expected an object, found an unsigned integer"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "health": {"message": false}})")),
            Expected("nas[0].disks[2].health.message: expected a string, found a boolean"));
  EXPECT_EQ(
      Refusal(R"({"nas": [{"name": "n", "groups": [{"dataDisks": ["0:1", 2]}]}]})"),
      Expected("nas[0].groups[0].dataDisks[1]: expected a string, found an unsigned integer"));
  EXPECT_EQ(Refusal(R"({"nas": [{"name": "n", "groups": [{"spareDisks": "0:1"}]}]})"),
            Expected("nas[0].groups[0].spareDisks: expected an array, found a string"));
}

TEST(InventoryFormat, NegativeNumbersAreRefused) {
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "capacity": -1})")),
            Expected("nas[0].disks[2].capacity: number is negative"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "rpm": -5400})")),
            Expected("nas[0].disks[2].rpm: number is negative"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "health": {"status": -1}})")),
            Expected("nas[0].disks[2].health.status: number is negative"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "capacity": -99999999999999999999})")),
            Expected("nas[0].disks[2].capacity: number is negative"));
}

TEST(InventoryFormat, TooLargeNumbersAreRefused) {
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "capacity": 18446744073709551616})")),
            Expected("nas[0].disks[2].capacity: number too large for unsigned 64-bit"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "capacity": 1e30})")),
            Expected("nas[0].disks[2].capacity: number too large for unsigned 64-bit"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "rpm": 4294967296})")),
            Expected("nas[0].disks[2].rpm: number too large for unsigned 32-bit"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"id": "0:3", "health": {"status": 4294967296}})")),
            Expected("nas[0].disks[2].health.status: number too large for unsigned 32-bit"));
}

TEST(InventoryFormat, MissingNameOrIdIsRefused) {
  EXPECT_EQ(Refusal(R"({"nas": [{"name": "a"}, {"disks": []}]})"),
            Expected("nas[1].name: missing required member"));
  EXPECT_EQ(Refusal(WithThirdDisk(R"({"status": "ok"})")),
            Expected("nas[0].disks[2].id: missing required member"));
}

TEST(InventoryFormat, DuplicateNasNameIsRefused) {
  EXPECT_EQ(Refusal(R"({"nas": [{"name": "nas1"}, {"name": "nas2"}, {"name": "nas1"}]})"),
            Expected("nas[2].name: duplicate NAS name \"nas1\" (also at nas[0])"));
  // Names are compared exactly: letter case makes a different NAS.
  EXPECT_EQ(ParseInventory(R"({"nas": [{"name": "nas1"}, {"name": "NAS1"}]})", kFile).nas.size(),
            2u);
}

TEST(InventoryFormat, UnknownStatusWordIsRefused) {
  EXPECT_EQ(
      Refusal(WithThirdDisk(R"({"id": "0:3", "status": "OK"})")),
      Expected("nas[0].disks[2].status: unknown status \"OK\" (expected unknown, ok, degraded, "
               "predictive-failure, error, stopped or no-contact)"));
}

TEST(InventoryFormat, FirstProblemInDocumentOrderIsReported) {
  // nas[0] is checked completely before nas[1].
  EXPECT_EQ(Refusal(R"({"nas": [{"name": "a", "disks": [{"id": "1", "rpm": -1}]}, {"x": 1}]})"),
            Expected("nas[0].disks[0].rpm: number is negative"));
}

TEST(InventoryFormat, LoadingNamesTheFile) {
  TempDir directory;
  const std::string path = directory.file("inventory.json");
  try {
    LoadInventoryFile(path);
    FAIL() << "a missing file was accepted";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string(error.what()),
              "Cannot read inventory file " + path + ": No such file or directory");
  }
  ReplaceFile(path, R"({"nas": [{"name": "n", "disks": [{"id": "1", "rpm": -3}]}]})");
  try {
    LoadInventoryFile(path);
    FAIL() << "a malformed file was accepted";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string(error.what()),
              "Bad inventory file " + path + ": nas[0].disks[0].rpm: number is negative");
  }
}

}  // namespace
}  // namespace zeda::test
