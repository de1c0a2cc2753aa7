// ZEDA_StorageExtent_Disk through the module: enumeration with its two
// health queries per disk, and GetInstance, which really looks the disk up.
#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Fixtures.h"

namespace zeda::test {
namespace {

using zeda::host::Instance;
using zeda::host::ObjectPath;
using zeda::host::Outcome;
using zeda::host::Value;

const char kExtentClass[] = "ZEDA_StorageExtent_Disk";
constexpr int kGetInstanceLine = 84;

Outcome EnumerateExtents() {
  return ModuleHost().enumerateInstances(Provider(kExtentClass), ClassPath(kExtentClass));
}

Outcome Get(const std::string& systemName, const std::string& deviceId) {
  return ModuleHost().getInstance(Provider(kExtentClass), ExtentPath(systemName, deviceId));
}

Instance EnumerateOneExtent(const nlohmann::json& disk) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {disk})}));
  const Outcome outcome = EnumerateExtents();
  EXPECT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  const std::vector<Instance> instances = outcome.instances();
  EXPECT_EQ(instances.size(), 1u);
  return instances.empty() ? Instance() : instances.front();
}

const std::vector<std::string> kExtentPropertyNames = {"SystemCreationClassName",
                                                       "SystemName",
                                                       "CreationClassName",
                                                       "DeviceID",
                                                       "ExtentStatus",
                                                       "NumberOfBlocks",
                                                       "ConsumableBlocks",
                                                       "BlockSize",
                                                       "HealthState",
                                                       "OperationalStatus",
                                                       "ExtentDiscriminator"};
const std::vector<std::string> kExtentPropertyTypes = {"string",   "string",   "string",  "string",
                                                       "uint16[]", "uint64",   "uint64",  "uint64",
                                                       "uint16",   "uint16[]", "string[]"};

TEST(StorageExtentEnumerate, EveryPropertyInOrderWithItsTypeAndValue) {
  nlohmann::json disk = DiskJson("0:3");
  disk["capacity"] = 4000787030016ULL;
  const Instance extent = EnumerateOneExtent(disk);

  EXPECT_EQ(extent.path(), ClassPath(kExtentClass));
  EXPECT_EQ(PropertyNames(extent), kExtentPropertyNames);
  EXPECT_EQ(PropertyTypes(extent), kExtentPropertyTypes);
  EXPECT_EQ(extent.property("SystemCreationClassName"), Value::string("ZEDA_ComputerSystem"));
  EXPECT_EQ(extent.property("SystemName"), Value::string("ZEDA:nas1"));
  EXPECT_EQ(extent.property("CreationClassName"), Value::string("ZEDA_StorageExtent_Disk"));
  EXPECT_EQ(extent.property("DeviceID"), Value::string("ZEDA:nas1:DiskExtent0:3"));
  EXPECT_EQ(extent.property("ExtentStatus"), Value::uint16s({2}));
  EXPECT_EQ(extent.property("NumberOfBlocks"), Value::uint64(7814037168ULL));
  EXPECT_EQ(extent.property("ConsumableBlocks"), Value::uint64(7814037168ULL));
  EXPECT_EQ(extent.property("BlockSize"), Value::uint64(512));
  EXPECT_EQ(extent.property("HealthState"), Value::uint16(kHealthOk));
  EXPECT_EQ(extent.property("OperationalStatus"), Value::uint16s({kOperationalStatusOk}));
  EXPECT_EQ(extent.property("ExtentDiscriminator"), Value::strings({"SNIA:Pool Component"}));
}

// sfcb and OpenPegasus keep the string given to setElementAt by pointer and
// read it only when the array becomes a property; the host does the same and
// frees a released string at once. A provider that released the one element
// of ExtentDiscriminator before setProperty crashed both object managers on
// every answer holding an extent; here it fails (under AddressSanitizer with
// a use-after-poison report, elsewhere with an invalid-handle status).
TEST(StorageExtentEnumerate, ExtentDiscriminatorOutlivesAnObjectManagerThatKeepsArrayElements) {
  const ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {DiskJson("0:1"), DiskJson("0:2"), DiskJson("0:3")})}));
  const Outcome all = EnumerateExtents();
  ASSERT_EQ(all.code(), CMPI_RC_OK) << all.status.message.value_or("");
  ASSERT_EQ(all.instances().size(), 3u);
  for (const Instance& extent : all.instances()) {
    EXPECT_EQ(extent.property("ExtentDiscriminator"), Value::strings({"SNIA:Pool Component"}));
  }
  const Outcome one = Get("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:2");
  ASSERT_EQ(one.code(), CMPI_RC_OK) << one.status.message.value_or("");
  ASSERT_EQ(one.instances().size(), 1u);
  EXPECT_EQ(one.instances()[0].property("ExtentDiscriminator"),
            Value::strings({"SNIA:Pool Component"}));
}

TEST(StorageExtentEnumerate, OneMillionBytesAre1953WholeBlocks) {
  nlohmann::json disk = DiskJson("0:1");
  disk["capacity"] = 1000000;
  const Instance extent = EnumerateOneExtent(disk);
  EXPECT_EQ(extent.property("NumberOfBlocks"), Value::uint64(1953));
  EXPECT_EQ(extent.property("ConsumableBlocks"), Value::uint64(1953));
  EXPECT_EQ(extent.property("BlockSize"), Value::uint64(512));
}

TEST(StorageExtentEnumerate, ExtentStatusIs13ForAFreeDiskElse2) {
  nlohmann::json free = DiskJson("0:1");
  free["isFree"] = true;
  EXPECT_EQ(EnumerateOneExtent(free).property("ExtentStatus"), Value::uint16s({13}));
  nlohmann::json used = DiskJson("0:2");
  used["isFree"] = false;
  used["isSpare"] = true;
  EXPECT_EQ(EnumerateOneExtent(used).property("ExtentStatus"), Value::uint16s({2}));
}

TEST(StorageExtentEnumerate, HealthAndOperationalStatusComeFromTheHealthReplyAlone) {
  nlohmann::json unhealthy = DiskJson("0:1");
  unhealthy["health"]["status"] = 3;  // the disk state stays ok
  const Instance sick = EnumerateOneExtent(unhealthy);
  EXPECT_EQ(sick.property("HealthState"), Value::uint16(kHealthUnknown));
  EXPECT_EQ(sick.property("OperationalStatus"), Value::uint16s({kOperationalStatusUnknown}));

  nlohmann::json degraded = DiskJson("0:2");
  degraded["status"] = "degraded";  // healthy by the health query
  const Instance fine = EnumerateOneExtent(degraded);
  EXPECT_EQ(fine.property("HealthState"), Value::uint16(kHealthOk));
  EXPECT_EQ(fine.property("OperationalStatus"), Value::uint16s({kOperationalStatusOk}));
}

TEST(StorageExtentEnumerate, AsksForHealthTwicePerDiskWithTheHealthKey) {
  const ScopedInventory inventory(InventoryJson(
      {NasJson("nas1", {DiskJson("0:3"), DiskJson("0:10")}), NasJson("nas2", {DiskJson("7")})}));
  const ScopedTrace trace;

  const Outcome outcome = EnumerateExtents();

  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  std::vector<std::string> deviceIds;
  for (const Instance& extent : outcome.instances()) {
    deviceIds.push_back(extent.property("DeviceID").str());
  }
  EXPECT_EQ(deviceIds,
            (std::vector<std::string>{"ZEDA:nas1:DiskExtent0:3", "ZEDA:nas1:DiskExtent0:10",
                                      "ZEDA:nas2:DiskExtent7"}));
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{{"-", "GetNasList", ""},
                                                   {"nas1", "GetOrvi", ""},
                                                   {"nas1", "GetDiskList", ""},
                                                   {"nas1", "GetDiskHealth", "03"},
                                                   {"nas1", "GetDiskHealth", "03"},
                                                   {"nas1", "GetDiskHealth", "010"},
                                                   {"nas1", "GetDiskHealth", "010"},
                                                   {"nas2", "GetOrvi", ""},
                                                   {"nas2", "GetDiskList", ""},
                                                   {"nas2", "GetDiskHealth", "77"},
                                                   {"nas2", "GetDiskHealth", "77"}}));
}

TEST(StorageExtentGetInstance, FindsTheDiskAndAnswersTheEnumeratedInstance) {
  nlohmann::json free = DiskJson("0:3");
  free["isFree"] = true;
  free["capacity"] = 8001563222016ULL;
  free["health"]["status"] = 2;
  const ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {DiskJson("0:1"), free, DiskJson("0:30")})}));
  const Outcome all = EnumerateExtents();
  ASSERT_EQ(all.code(), CMPI_RC_OK);
  ASSERT_EQ(all.instances().size(), 3u);
  const Instance enumerated = all.instances()[1];

  const ScopedTrace trace;
  const Outcome outcome = Get("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:3");

  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  const std::vector<Instance> instances = outcome.instances();
  ASSERT_EQ(instances.size(), 1u);
  EXPECT_EQ(instances.front(), enumerated);
  EXPECT_EQ(PropertyNames(instances.front()), kExtentPropertyNames);
  EXPECT_EQ(PropertyTypes(instances.front()), kExtentPropertyTypes);
  EXPECT_EQ(instances.front().property("ExtentStatus"), Value::uint16s({13}));
  EXPECT_EQ(instances.front().property("HealthState"), Value::uint16(kHealthUnknown));
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{{"-", "Nas::Get", "nas1"},
                                                   {"nas1", "GetOrvi", ""},
                                                   {"nas1", "GetDiskList", ""},
                                                   {"nas1", "GetDiskHealth", "03"}}));
}

TEST(StorageExtentGetInstance, EveryEnumeratedExtentIsFoundAgain) {
  const ScopedInventory inventory(InventoryJson(
      {NasJson("nas1", {DiskJson("0:1"), DiskJson("0:10")}), NasJson("nas2", {DiskJson("7")})}));
  const Outcome all = EnumerateExtents();
  ASSERT_EQ(all.instances().size(), 3u);
  for (const Instance& extent : all.instances()) {
    const Outcome one = Get(extent.property("SystemName").str(), extent.property("DeviceID").str());
    ASSERT_EQ(one.code(), CMPI_RC_OK);
    ASSERT_EQ(one.instances().size(), 1u);
    EXPECT_EQ(one.instances().front(), extent);
  }
}

TEST(StorageExtentGetInstance, AnAbsentDiskAnswersNothingAndOk) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:3")})}));
  const ScopedTrace trace;
  const std::size_t loggedBefore = ErrorLogLines().size();
  const Outcome outcome = Get("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:4");
  EXPECT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_FALSE(outcome.status.message.has_value());
  EXPECT_TRUE(outcome.done);
  EXPECT_TRUE(outcome.results.empty());
  EXPECT_EQ(ErrorLogLines().size(), loggedBefore);  // not an error: nothing is logged
  EXPECT_EQ(trace.calls(),
            (std::vector<TraceCall>{
                {"-", "Nas::Get", "nas1"}, {"nas1", "GetOrvi", ""}, {"nas1", "GetDiskList", ""}}));
}

TEST(StorageExtentGetInstance, TheIdentifierMatchesExactlyAndCaseSensitively) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("a:1")})}));
  EXPECT_TRUE(Get("ZEDA:nas1", "ZEDA:nas1:DiskExtentA:1").results.empty());
  EXPECT_TRUE(Get("ZEDA:nas1", "ZEDA:nas1:DiskExtenta:").results.empty());
  EXPECT_TRUE(Get("ZEDA:nas1", "ZEDA:nas1:DiskExtenta:10").results.empty());
  EXPECT_EQ(Get("ZEDA:nas1", "ZEDA:nas1:DiskExtenta:1").instances().size(), 1u);
}

TEST(StorageExtentGetInstance, TakesTheFirstOfTwoDisksWithTheSameIdentifier) {
  nlohmann::json first = DiskJson("0:1");
  first["capacity"] = 1024;
  nlohmann::json second = DiskJson("0:1");
  second["capacity"] = 2048;
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {first, second})}));
  const Outcome outcome = Get("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:1");
  ASSERT_EQ(outcome.instances().size(), 1u);
  EXPECT_EQ(outcome.instances().front().property("NumberOfBlocks"), Value::uint64(2));
}

TEST(StorageExtentGetInstance, TheIdentifierFollowsTheLastDiskExtent) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:1")})}));
  const Outcome outcome = Get("ZEDA:nas1", "DiskExtentX:DiskExtent0:1");
  ASSERT_EQ(outcome.instances().size(), 1u);
  EXPECT_EQ(outcome.instances().front().property("DeviceID"),
            Value::string("ZEDA:nas1:DiskExtent0:1"));
}

TEST(StorageExtentGetInstance, WithoutDiskExtentTheFirstNineCharactersAreDropped) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:1")})}));
  const ScopedTrace trace;
  const Outcome outcome = Get("ZEDA:nas1", "ZEDA:nas10:1");
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  ASSERT_EQ(outcome.instances().size(), 1u);
  EXPECT_EQ(outcome.instances().front().property("DeviceID"),
            Value::string("ZEDA:nas1:DiskExtent0:1"));
  EXPECT_EQ(trace.calls("GetDiskHealth"),
            (std::vector<TraceCall>{{"nas1", "GetDiskHealth", "01"}}));

  // Exactly nine characters leave an empty identifier: no disk, no error.
  const Outcome nine = Get("ZEDA:nas1", "123456789");
  EXPECT_EQ(nine.code(), CMPI_RC_OK);
  EXPECT_TRUE(nine.done);
  EXPECT_TRUE(nine.results.empty());
}

TEST(StorageExtentGetInstance, ADeviceIdShorterThanNineCharactersFailsWithCode200) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:1")})}));
  const ScopedTrace trace;
  const Outcome outcome = Get("ZEDA:nas1", "ZEDA:0:1");
  EXPECT_EQ(outcome.code(), CMPI_RC_ERROR);
  EXPECT_EQ(outcome.status.message, std::string("invalid string position"));
  EXPECT_FALSE(outcome.done);
  EXPECT_TRUE(outcome.results.empty());
  EXPECT_TRUE(
      HasErrorLogLine(kGetInstanceLine, "ZEDA_StorageExtent_Disk: invalid string position"));
  // The NAS is looked up before the DeviceID is read; no disk list is asked for.
  EXPECT_EQ(trace.calls(),
            (std::vector<TraceCall>{{"-", "Nas::Get", "nas1"}, {"nas1", "GetOrvi", ""}}));
}

TEST(StorageExtentGetInstance, AnUnknownNasFailsWithTheLibrarysMessageAndALogLine) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:1")})}));
  const ScopedTrace trace;
  const Outcome outcome = Get("ZEDA:ghost17", "ZEDA:ghost17:DiskExtent0:1");
  EXPECT_EQ(outcome.code(), CMPI_RC_ERROR);
  EXPECT_EQ(outcome.status.message, std::string("NAS not found: ghost17"));
  EXPECT_FALSE(outcome.done);
  EXPECT_TRUE(outcome.results.empty());
  EXPECT_TRUE(HasErrorLogLine(kGetInstanceLine, "ZEDA_StorageExtent_Disk: NAS not found: ghost17"));
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{{"-", "Nas::Get", "ghost17"}}));
}

TEST(StorageExtentGetInstance, AnUnknownNasIsReportedBeforeAShortDeviceId) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:1")})}));
  const Outcome outcome = Get("ZEDA:ghost18", "x");
  EXPECT_EQ(outcome.code(), CMPI_RC_ERROR);
  EXPECT_EQ(outcome.status.message, std::string("NAS not found: ghost18"));
}

TEST(StorageExtentGetInstance, TheNasNameFollowsTheLastColonAndSystemNameIsKeptAsGiven) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:1")})}));

  const Outcome bare = Get("nas1", "ZEDA:nas1:DiskExtent0:1");
  ASSERT_EQ(bare.instances().size(), 1u);
  EXPECT_EQ(bare.instances().front().property("SystemName"), Value::string("nas1"));
  EXPECT_EQ(bare.instances().front().property("DeviceID"), Value::string("nas1:DiskExtent0:1"));

  const Outcome nested = Get("X:ZEDA:nas1", "ZEDA:nas1:DiskExtent0:1");
  ASSERT_EQ(nested.instances().size(), 1u);
  EXPECT_EQ(nested.instances().front().property("SystemName"), Value::string("X:ZEDA:nas1"));
  EXPECT_EQ(nested.instances().front().property("DeviceID"),
            Value::string("X:ZEDA:nas1:DiskExtent0:1"));
}

TEST(StorageExtentGetInstance, TheNasComesFromSystemNameEvenWhenDeviceIdNamesAnother) {
  nlohmann::json onNas2 = DiskJson("5");
  onNas2["capacity"] = 5120;
  const ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {DiskJson("0:1")}), NasJson("nas2", {onNas2})}));
  const ScopedTrace trace;
  const Outcome outcome = Get("ZEDA:nas2", "ZEDA:nas1:DiskExtent5");
  ASSERT_EQ(outcome.instances().size(), 1u);
  EXPECT_EQ(outcome.instances().front().property("DeviceID"),
            Value::string("ZEDA:nas2:DiskExtent5"));
  EXPECT_EQ(outcome.instances().front().property("NumberOfBlocks"), Value::uint64(10));
  EXPECT_EQ(trace.calls("GetDiskHealth"),
            (std::vector<TraceCall>{{"nas2", "GetDiskHealth", "55"}}));
}

TEST(StorageExtentGetInstance, TheAnswerCarriesTheRequestNamespace) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:1")})}));
  ObjectPath path = ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:1");
  path.setNameSpace(kOtherNamespace);
  const Outcome outcome = ModuleHost().getInstance(Provider(kExtentClass), path);
  ASSERT_EQ(outcome.instances().size(), 1u);
  EXPECT_EQ(outcome.instances().front().path(), ObjectPath(kOtherNamespace, kExtentClass));
}

}  // namespace
}  // namespace zeda::test
