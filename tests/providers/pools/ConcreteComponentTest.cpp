// ZEDA_ConcreteComponent_Primordial through the module: enumeration (free and
// data pools only), the pool-to-extent walk (all four pools), the
// extent-to-pool walk (free and data pools only) and the placeholder
// references.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "PoolFixtures.h"

namespace zeda::test {
namespace {

using zeda::host::Instance;
using zeda::host::MIKind;
using zeda::host::ObjectPath;
using zeda::host::Outcome;
using zeda::host::Value;
using Strings = std::vector<std::string>;

// nas1: 0:1 and 0:2 in the data list, 0:4 a flagged spare in the spare list,
// 0:3 free, 0:5 a data disk no group lists, 0:6 a cache SSD. 0:2 is unhealthy.
constexpr std::uint64_t kCap01 = 4000787030016ULL;
constexpr std::uint64_t kCap02 = 2000398934016ULL;
constexpr std::uint64_t kCap03 = 8001563222016ULL;
constexpr std::uint64_t kCap04 = 1000204886016ULL;
constexpr std::uint64_t kCap05 = 3000592982016ULL;
constexpr std::uint64_t kCap06 = 500107862016ULL;

std::string MixedInventory() {
  return InventoryJson({NasJson("nas1",
                                {DiskJson("0:1", kCap01), Unhealthy(DiskJson("0:2", kCap02), 3),
                                 Free(DiskJson("0:3", kCap03)), Spare(DiskJson("0:4", kCap04)),
                                 DiskJson("0:5", kCap05), Ssd(DiskJson("0:6", kCap06))},
                                {GroupJson({"0:1", "0:2"}, {"0:4"})})});
}

Outcome Enumerate() {
  return ModuleHost().enumerateInstances(Provider(kConcrete), ObjectPath(kNamespace, kConcrete));
}

Outcome FromPool(const std::string& instanceId) {
  return Associators(kConcrete, PoolPath(instanceId));
}

Outcome FromExtent(const std::string& diskId,
                   const zeda::host::PropertyList& properties = std::nullopt) {
  return Associators(kConcrete, ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent" + diskId),
                     properties);
}

ObjectPath EnumeratedExtentPath(const std::string& systemName, const std::string& diskId) {
  return ObjectPath(kNamespace, kExtentClass)
      .addKey("SystemCreationClassName", "ZEDA_ComputerSystem")
      .addKey("SystemName", systemName)
      .addKey("CreationClassName", kExtentClass)
      .addKey("DeviceID", systemName + ":DiskExtent" + diskId);
}

// "<pool InstanceID> <extent DeviceID>" of every enumerated association.
Strings Pairs(const Outcome& outcome) {
  Strings pairs;
  for (const Instance& link : outcome.instances()) {
    pairs.push_back(link.property("GroupComponent").ref().key("InstanceID").str() + " " +
                    link.property("PartComponent").ref().key("DeviceID").str());
  }
  return pairs;
}

void ExpectFailure(const Outcome& outcome, const std::string& message) {
  EXPECT_EQ(outcome.code(), CMPI_RC_ERROR);
  EXPECT_EQ(outcome.status.message, message);
  EXPECT_FALSE(outcome.done);
  EXPECT_TRUE(outcome.results.empty());
}

// --- EnumInstances -------------------------------------------------------

TEST(ConcreteComponentEnumerate, FreeDisksInPool1OtherUnflaggedDisksInPool2SpareAndCacheSkipped) {
  const ScopedInventory inventory(MixedInventory());
  const Outcome outcome = Enumerate();
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  // 0:5, which no group lists, is still paired with the data pool.
  EXPECT_EQ(Pairs(outcome), (Strings{"ZEDA:nas1:PrimordialPool2 ZEDA:nas1:DiskExtent0:1",
                                     "ZEDA:nas1:PrimordialPool2 ZEDA:nas1:DiskExtent0:2",
                                     "ZEDA:nas1:PrimordialPool1 ZEDA:nas1:DiskExtent0:3",
                                     "ZEDA:nas1:PrimordialPool2 ZEDA:nas1:DiskExtent0:5"}));
}

TEST(ConcreteComponentEnumerate, AssociationShapeAndPathsInFull) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {Free(DiskJson("0:3"))})}));
  const Outcome outcome = Enumerate();
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  const std::vector<Instance> links = outcome.instances();
  ASSERT_EQ(links.size(), 1u);
  const Instance& link = links.front();
  EXPECT_EQ(link.path(), ObjectPath(kNamespace, kConcrete));
  EXPECT_EQ(PropertyNames(link), (Strings{"GroupComponent", "PartComponent"}));
  EXPECT_EQ(PropertyTypes(link), (Strings{"reference", "reference"}));
  EXPECT_EQ(link.property("GroupComponent").ref(), PoolPath("ZEDA:nas1:PrimordialPool1"));
  // Enumerated extent paths name the computer-system class.
  EXPECT_EQ(link.property("PartComponent").ref(), EnumeratedExtentPath("ZEDA:nas1", "0:3"));
  EXPECT_EQ(KeyNames(link.property("PartComponent").ref()),
            (Strings{"SystemCreationClassName", "SystemName", "CreationClassName", "DeviceID"}));
}

TEST(ConcreteComponentEnumerate, NasDevicesInListOrderANasWithoutDisksAddsNothing) {
  const ScopedInventory inventory(
      InventoryJson({NasJson("nasA", {DiskJson("7")}), NasJson("empty", {}),
                     NasJson("nasB", {Free(DiskJson("0:10"))})}));
  const ScopedTrace trace;
  const Outcome outcome = Enumerate();
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  EXPECT_EQ(Pairs(outcome), (Strings{"ZEDA:nasA:PrimordialPool2 ZEDA:nasA:DiskExtent7",
                                     "ZEDA:nasB:PrimordialPool1 ZEDA:nasB:DiskExtent0:10"}));
  // No RAID group and no health is consulted.
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{{"-", "GetNasList", ""},
                                                   {"nasA", "GetOrvi", ""},
                                                   {"nasA", "GetDiskList", ""},
                                                   {"empty", "GetOrvi", ""},
                                                   {"empty", "GetDiskList", ""},
                                                   {"nasB", "GetOrvi", ""},
                                                   {"nasB", "GetDiskList", ""}}));
}

TEST(ConcreteComponentEnumerate, AnEmptyNasListIsDoneAtOnce) {
  const ScopedInventory inventory(InventoryJson({}));
  const Outcome outcome = Enumerate();
  EXPECT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  EXPECT_TRUE(outcome.results.empty());
}

// --- AssociatorsHandler2: from a pool ------------------------------------

TEST(ConcreteComponentFromPool, ExtentInstancesInFull) {
  const ScopedInventory inventory(MixedInventory());
  const Outcome outcome = FromPool("ZEDA:nas1:PrimordialPool2");
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  const std::vector<Instance> extents = outcome.instances();
  ASSERT_EQ(extents.size(), 2u);

  const Instance& extent = extents[0];
  EXPECT_EQ(extent.path(), ObjectPath(kNamespace, kExtentClass));
  EXPECT_EQ(PropertyNames(extent),
            (Strings{"SystemCreationClassName", "SystemName", "CreationClassName", "DeviceID",
                     "ExtentStatus", "NumberOfBlocks", "ConsumableBlocks", "BlockSize",
                     "HealthState", "OperationalStatus", "ExtentDiscriminator"}));
  EXPECT_EQ(PropertyTypes(extent),
            (Strings{"string", "string", "string", "string", "uint16[]", "uint64", "uint64",
                     "uint64", "uint16", "uint16[]", "string[]"}));
  EXPECT_EQ(extent.property("SystemCreationClassName"),
            Value::string("ZEDA_SystemCreationClassName"));
  EXPECT_EQ(extent.property("SystemName"), Value::string("ZEDA:nas1"));
  EXPECT_EQ(extent.property("CreationClassName"), Value::string("ZEDA_StorageExtent_Disk"));
  EXPECT_EQ(extent.property("DeviceID"), Value::string("ZEDA:nas1:DiskExtent0:1"));
  EXPECT_EQ(extent.property("ExtentStatus"), Value::uint16s({2}));
  EXPECT_EQ(extent.property("NumberOfBlocks"), Value::uint64(kCap01 / 512));
  EXPECT_EQ(extent.property("ConsumableBlocks"), Value::uint64(kCap01 / 512));
  EXPECT_EQ(extent.property("BlockSize"), Value::uint64(512));
  EXPECT_EQ(extent.property("HealthState"), Value::uint16(kHealthOk));
  EXPECT_EQ(extent.property("OperationalStatus"), Value::uint16s({kOperationalStatusOk}));
  EXPECT_EQ(extent.property("ExtentDiscriminator"), Value::strings({"SNIA:Pool Component"}));

  const Instance& unhealthy = extents[1];
  EXPECT_EQ(unhealthy.property("DeviceID"), Value::string("ZEDA:nas1:DiskExtent0:2"));
  EXPECT_EQ(unhealthy.property("HealthState"), Value::uint16(kHealthUnknown));
  EXPECT_EQ(unhealthy.property("OperationalStatus"), Value::uint16s({kOperationalStatusUnknown}));
}

TEST(ConcreteComponentFromPool, EachPoolAnswersItsDisksExtentStatus13OnlyForFreeDisks) {
  const ScopedInventory inventory(MixedInventory());
  struct Case {
    int pool;
    Strings deviceIds;
    std::vector<std::uint16_t> extentStatus;
  };
  const std::vector<Case> cases = {
      {1, {"ZEDA:nas1:DiskExtent0:3"}, {13}},
      // 0:5 is in no group: not in the data pool here.
      {2, {"ZEDA:nas1:DiskExtent0:1", "ZEDA:nas1:DiskExtent0:2"}, {2, 2}},
      {3, {"ZEDA:nas1:DiskExtent0:4"}, {2}},
      {4, {"ZEDA:nas1:DiskExtent0:6"}, {2}},
      {5, {}, {}},
  };
  for (const Case& c : cases) {
    const Outcome outcome = FromPool("ZEDA:nas1:PrimordialPool" + std::to_string(c.pool));
    ASSERT_EQ(outcome.code(), CMPI_RC_OK) << c.pool;
    EXPECT_TRUE(outcome.done) << c.pool;
    EXPECT_EQ(DeviceIds(outcome), c.deviceIds) << c.pool;
    std::vector<std::uint16_t> statuses;
    for (const Instance& extent : outcome.instances()) {
      statuses.push_back(static_cast<std::uint16_t>(extent.property("ExtentStatus").uints().at(0)));
    }
    EXPECT_EQ(statuses, c.extentStatus) << c.pool;
  }
}

TEST(ConcreteComponentFromPool, AsksForTheHealthOfEveryDiskOfTheNas) {
  const ScopedInventory inventory(MixedInventory());
  const ScopedTrace trace;
  const Outcome outcome = FromPool("ZEDA:nas1:PrimordialPool1");
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{{"-", "Nas::Get", "nas1"},
                                                   {"nas1", "GetOrvi", ""},
                                                   {"nas1", "GetDiskList", ""},
                                                   {"nas1", "GetDiskHealth", "01"},
                                                   {"nas1", "GetDiskHealth", "02"},
                                                   {"nas1", "GetDiskHealth", "03"},
                                                   {"nas1", "GetDiskHealth", "04"},
                                                   {"nas1", "GetDiskHealth", "05"},
                                                   {"nas1", "GetDiskHealth", "06"}}));
}

TEST(ConcreteComponentFromPool, AnIdentifierWithoutColonIsQueriedDoubled) {
  const ScopedInventory inventory(
      InventoryJson({NasJson("nas2", {DiskJson("7")}, {GroupJson({"7"}, {})})}));
  const ScopedTrace trace;
  const Outcome outcome = FromPool("ZEDA:nas2:PrimordialPool2");
  EXPECT_EQ(DeviceIds(outcome), (Strings{"ZEDA:nas2:DiskExtent7"}));
  EXPECT_EQ(trace.args("GetDiskHealth"), (Strings{"77"}));
}

TEST(ConcreteComponentFromPool, OneReturnPerMatchingEntryAndFlagsDoNotStopTheGroupWalk) {
  // 0:1 occurs in "0:1" and in "0:10"; 0:9 is in two spare lists; the free
  // disk 0:3 and the SSD 0:6 are also listed as data.
  const ScopedInventory inventory(InventoryJson(
      {NasJson("nas1",
               {DiskJson("0:1"), DiskJson("0:10"), Free(DiskJson("0:3")), Ssd(DiskJson("0:6")),
                DiskJson("0:9")},
               {GroupJson({"0:1", "0:3"}, {"0:9"}), GroupJson({"0:10", "0:6"}, {"0:9"})})}));
  const Outcome data = FromPool("ZEDA:nas1:PrimordialPool2");
  EXPECT_EQ(DeviceIds(data), (Strings{"ZEDA:nas1:DiskExtent0:1", "ZEDA:nas1:DiskExtent0:1",
                                      "ZEDA:nas1:DiskExtent0:10", "ZEDA:nas1:DiskExtent0:3",
                                      "ZEDA:nas1:DiskExtent0:6"}));
  // A free disk keeps ExtentStatus 13 in the data pool too.
  EXPECT_EQ(data.instances().at(3).property("ExtentStatus"), Value::uint16s({13}));
  EXPECT_EQ(data.instances().at(4).property("ExtentStatus"), Value::uint16s({2}));
  EXPECT_EQ(DeviceIds(FromPool("ZEDA:nas1:PrimordialPool3")),
            (Strings{"ZEDA:nas1:DiskExtent0:9", "ZEDA:nas1:DiskExtent0:9"}));
}

TEST(ConcreteComponentFromPool, TheSystemNameComesFromTheInstanceId) {
  const ScopedInventory inventory(MixedInventory());
  const Outcome outcome = FromPool("Other:nas1:PrimordialPool1");
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  const std::vector<Instance> extents = outcome.instances();
  ASSERT_EQ(extents.size(), 1u);
  EXPECT_EQ(extents[0].property("SystemName"), Value::string("Other:nas1"));
  EXPECT_EQ(extents[0].property("DeviceID"), Value::string("Other:nas1:DiskExtent0:3"));
}

TEST(ConcreteComponentFromPool, ThePlaceholderPoolFailsOnItsNumberBeforeAnyLibraryCall) {
  const ScopedInventory inventory(MixedInventory());
  const ScopedTrace trace;
  ExpectFailure(FromPool("InstanceID_SPP"), "invalid stoi argument");
  EXPECT_TRUE(trace.lines().empty());
  EXPECT_TRUE(ErrorLogEndsWith("ZEDA_ConcreteComponent_Primordial: invalid stoi argument"));
}

TEST(ConcreteComponentFromPool, MalformedInstanceIdsFailBeforeAnyLibraryCall) {
  const ScopedInventory inventory(MixedInventory());
  const ScopedTrace trace;
  ExpectFailure(FromPool("ZEDA:nas1:PrimordialPoo"), "invalid string position");
  ExpectFailure(FromPool("ZEDA:nas1"), "invalid string position");
  ExpectFailure(FromPool("ZEDA:nas1:PrimordialPool"), "invalid stoi argument");
  ExpectFailure(FromPool("ZEDA:nas1:PrimordialPool99999999999"), "stoi argument out of range");
  EXPECT_TRUE(trace.lines().empty());
}

TEST(ConcreteComponentFromPool, AnUnknownNasFailsWithTheLibrarysMessage) {
  const ScopedInventory inventory(MixedInventory());
  ExpectFailure(FromPool("ZEDA:nas9:PrimordialPool2"), "NAS not found: nas9");
  // With a single ":" the NAS name is everything after it.
  ExpectFailure(FromPool("ZEDA:PrimordialPool2"), "NAS not found: PrimordialPool2");
}

// --- AssociatorsHandler1: from an extent ---------------------------------

const Strings kPoolPropertyNames = {"Usage",
                                    "InstanceID",
                                    "Primordial",
                                    "ElementName",
                                    "PoolID",
                                    "TotalManagedSpace",
                                    "RemainingManagedSpace",
                                    "OperationalStatus"};

TEST(ConcreteComponentFromExtent, TheDataPoolInstanceInFullWithItsTotalInBytes) {
  const ScopedInventory inventory(MixedInventory());
  const ScopedTrace trace;
  const Outcome outcome = FromExtent("0:1");
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  const std::vector<Instance> pools = outcome.instances();
  ASSERT_EQ(pools.size(), 1u);
  const Instance& pool = pools[0];
  EXPECT_EQ(pool.path(), ObjectPath(kNamespace, kPoolClass));
  EXPECT_EQ(PropertyNames(pool), kPoolPropertyNames);
  EXPECT_EQ(PropertyTypes(pool), (Strings{"uint16", "string", "boolean", "string", "string",
                                          "uint64", "uint64", "uint16[]"}));
  EXPECT_EQ(pool.property("Usage"), Value::uint16(1));
  EXPECT_EQ(pool.property("InstanceID"), Value::string("ZEDA:nas1:PrimordialPool2"));
  EXPECT_EQ(pool.property("Primordial"), Value::boolean(true));
  EXPECT_EQ(pool.property("ElementName"), Value::string("Data"));
  EXPECT_EQ(pool.property("PoolID"), Value::string("PrimordialPool2"));
  // 0:1 + 0:2: 4000787030016 + 2000398934016 bytes. 0:5 is in no list.
  EXPECT_EQ(pool.property("TotalManagedSpace"), Value::uint64(6001185964032ULL));
  EXPECT_EQ(pool.property("RemainingManagedSpace"), Value::uint64(0));
  EXPECT_EQ(pool.property("OperationalStatus"), Value::uint16s({kOperationalStatusOk}));
  // The pool's way: the NAS and its disk list, no health query.
  EXPECT_EQ(trace.calls(),
            (std::vector<TraceCall>{
                {"-", "Nas::Get", "nas1"}, {"nas1", "GetOrvi", ""}, {"nas1", "GetDiskList", ""}}));
}

TEST(ConcreteComponentFromExtent, TheFreePoolKeepsAllOfItsSpace) {
  const ScopedInventory inventory(MixedInventory());
  const std::vector<Instance> pools = FromExtent("0:3").instances();
  ASSERT_EQ(pools.size(), 1u);
  EXPECT_EQ(pools[0].property("Usage"), Value::uint16(2));
  EXPECT_EQ(pools[0].property("InstanceID"), Value::string("ZEDA:nas1:PrimordialPool1"));
  EXPECT_EQ(pools[0].property("ElementName"), Value::string("Free"));
  EXPECT_EQ(pools[0].property("PoolID"), Value::string("PrimordialPool1"));
  EXPECT_EQ(pools[0].property("TotalManagedSpace"), Value::uint64(kCap03));
  EXPECT_EQ(pools[0].property("RemainingManagedSpace"), Value::uint64(kCap03));
}

TEST(ConcreteComponentFromExtent, SpareCacheAndUnlistedDisksHaveNoPoolHere) {
  const ScopedInventory inventory(MixedInventory());
  ExpectFailure(FromExtent("0:4"), "Incorrect association class");  // spare
  ExpectFailure(FromExtent("0:6"), "Incorrect association class");  // cache
  ExpectFailure(FromExtent("0:5"), "Incorrect association class");  // in no group
  ExpectFailure(FromExtent("0:9"), "Incorrect association class");  // no such disk
  EXPECT_TRUE(ErrorLogEndsWith("ZEDA_ConcreteComponent_Primordial: Incorrect association class"));
}

TEST(ConcreteComponentFromExtent, ANasWithoutDisksHasNoPoolForAnyExtent) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {})}));
  ExpectFailure(FromExtent("0:1"), "Incorrect association class");
}

TEST(ConcreteComponentFromExtent, TheDataTotalCountsEveryJoinedListHoldingTheIdentifier) {
  // Hand computation of pool 2, in bytes. Joined data lists: "0:10,0:2" and
  // "0:11".
  //   0:1   occurs in both (inside 0:10 and 0:11)   2 * 1000
  //   0:10  occurs in the first                          20000
  //   0:11  occurs in the second                        300000
  //   0,0   occurs across the "," of the first         4000000
  //   0:2   is a flagged spare: pool 3 only
  //   total                                            4322000
  const ScopedInventory inventory(InventoryJson(
      {NasJson("nas1",
               {DiskJson("0:1", 1000), DiskJson("0:10", 20000), DiskJson("0:11", 300000),
                DiskJson("0,0", 4000000), Spare(DiskJson("0:2", 50000000))},
               {GroupJson({"0:10", "0:2"}, {}), GroupJson({"0:11"}, {})})}));
  const std::vector<Instance> pools = FromExtent("0:10").instances();
  ASSERT_EQ(pools.size(), 1u);
  EXPECT_EQ(pools[0].property("PoolID"), Value::string("PrimordialPool2"));
  EXPECT_EQ(pools[0].property("TotalManagedSpace"), Value::uint64(4322000));
  // 0,0 is in no single entry: no pool for its extent.
  ExpectFailure(FromExtent("0,0"), "Incorrect association class");
}

TEST(ConcreteComponentFromExtent, TheInstanceIdIsTheGivenSystemNameWithThePoolSuffix) {
  const ScopedInventory inventory(MixedInventory());
  const Outcome outcome =
      Associators(kConcrete, ExtentPath("Other:nas1", "ZEDA:nas1:DiskExtent0:1"));
  const std::vector<Instance> pools = outcome.instances();
  ASSERT_EQ(pools.size(), 1u);
  EXPECT_EQ(pools[0].property("InstanceID"), Value::string("Other:nas1:PrimordialPool2"));
}

TEST(ConcreteComponentFromExtent, TheDiskIdentifierMatchesWithoutRegardToCase) {
  const ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {DiskJson("ab1")}, {GroupJson({"ab1"}, {})})}));
  const std::vector<Instance> pools = FromExtent("AB1").instances();
  ASSERT_EQ(pools.size(), 1u);
  EXPECT_EQ(pools[0].property("PoolID"), Value::string("PrimordialPool2"));
}

// The module asks the filter to keep five names whatever the list says; an
// object manager that honours that key list shows them.
TEST(ConcreteComponentFromExtent, APropertyListFiltersAllButTheFiveKeptNames) {
  const ScopedInventory inventory(MixedInventory());
  const KeyListHonoured honoured;
  const std::vector<Instance> named = FromExtent("0:1", Strings{"ElementName"}).instances();
  ASSERT_EQ(named.size(), 1u);
  EXPECT_EQ(PropertyNames(named[0]), (Strings{"InstanceID", "Primordial", "ElementName", "PoolID",
                                              "TotalManagedSpace", "RemainingManagedSpace"}));
  const std::vector<Instance> none = FromExtent("0:1", Strings{}).instances();
  ASSERT_EQ(none.size(), 1u);
  EXPECT_EQ(PropertyNames(none[0]), (Strings{"InstanceID", "Primordial", "PoolID",
                                             "TotalManagedSpace", "RemainingManagedSpace"}));
  const std::vector<Instance> all = FromExtent("0:1", std::nullopt).instances();
  ASSERT_EQ(all.size(), 1u);
  EXPECT_EQ(PropertyNames(all[0]), kPoolPropertyNames);
}

// The CMPI standard has the object manager ignore the key list, and the
// pool's object path has no keys: only the listed properties are left.
TEST(ConcreteComponentFromExtent, APropertyListKeepsOnlyTheListedPropertiesOfThePool) {
  const ScopedInventory inventory(MixedInventory());
  const std::vector<Instance> named =
      FromExtent("0:1", Strings{"ElementName", "Nothing"}).instances();
  ASSERT_EQ(named.size(), 1u);
  EXPECT_EQ(PropertyNames(named[0]), (Strings{"ElementName"}));
  EXPECT_EQ(named[0].property("ElementName"), Value::string("Data"));
  const std::vector<Instance> none = FromExtent("0:1", Strings{}).instances();
  ASSERT_EQ(none.size(), 1u);
  EXPECT_TRUE(PropertyNames(none[0]).empty());
  const std::vector<Instance> all = FromExtent("0:1", std::nullopt).instances();
  ASSERT_EQ(all.size(), 1u);
  EXPECT_EQ(PropertyNames(all[0]), kPoolPropertyNames);
}

TEST(ConcreteComponentFromExtent, AShortDeviceIdFailsBeforeAnyLibraryCall) {
  const ScopedInventory inventory(MixedInventory());
  const ScopedTrace trace;
  ExpectFailure(Associators(kConcrete, ExtentPath("ZEDA:nas1", "ZEDA:nas")),
                "invalid string position");
  EXPECT_TRUE(trace.lines().empty());
}

// --- References -----------------------------------------------------------

TEST(ConcreteComponentReferences, FromAnExtentThePlaceholderPoolAndTheSourcePath) {
  const ScopedInventory inventory(MixedInventory());
  const ScopedTrace trace;
  const ObjectPath source = ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:1");
  const Outcome outcome = References(kConcrete, source);
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  const std::vector<Instance> links = outcome.instances();
  ASSERT_EQ(links.size(), 1u);
  EXPECT_EQ(links[0].path(), ObjectPath(kNamespace, kConcrete));
  EXPECT_EQ(PropertyNames(links[0]), (Strings{"GroupComponent", "PartComponent"}));
  EXPECT_EQ(links[0].property("GroupComponent").ref(), PoolPath("InstanceID_SPP"));
  EXPECT_EQ(links[0].property("PartComponent").ref(), source);
  EXPECT_TRUE(trace.lines().empty());
}

TEST(ConcreteComponentReferences, FromAPoolTheSourcePathAndThePlaceholderExtent) {
  const ScopedTrace trace;
  const ObjectPath source = PoolPath("ZEDA:nas1:PrimordialPool3");
  const Outcome outcome = References(kConcrete, source);
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  const std::vector<Instance> links = outcome.instances();
  ASSERT_EQ(links.size(), 1u);
  EXPECT_EQ(PropertyNames(links[0]), (Strings{"GroupComponent", "PartComponent"}));
  EXPECT_EQ(links[0].property("GroupComponent").ref(), source);
  EXPECT_EQ(links[0].property("PartComponent").ref(),
            ObjectPath(kNamespace, kExtentClass)
                .addKey("SystemCreationClassName", "ZEDA_SystemCreationClassName")
                .addKey("SystemName", "ZEDA_SystemName")
                .addKey("CreationClassName", "ZEDA_CreationClassName")
                .addKey("DeviceID", "ZEDA_DeviceID"));
  EXPECT_TRUE(trace.lines().empty());
}

TEST(ConcreteComponentReferences, AForeignClassIsUnknown) {
  ExpectFailure(
      References(kConcrete, ObjectPath(kNamespace, "ZEDA_DiskDrive").addKey("DeviceID", "x")),
      "Unknown class name: ZEDA_DiskDrive");
  // Class names compare exactly.
  ExpectFailure(
      References(kConcrete,
                 ObjectPath(kNamespace, "zeda_storagepool_primordial").addKey("InstanceID", "x")),
      "Unknown class name: zeda_storagepool_primordial");
}

TEST(ConcreteComponentReferences, AssociatorsOfThePlaceholderPoolFailOnTheNumber) {
  const ScopedInventory inventory(MixedInventory());
  const Outcome references =
      References(kConcrete, ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:1"));
  ASSERT_EQ(references.instances().size(), 1u);
  const ObjectPath placeholder = references.instances()[0].property("GroupComponent").ref();
  const ScopedTrace trace;
  ExpectFailure(Associators(kConcrete, placeholder), "invalid stoi argument");
  EXPECT_TRUE(trace.lines().empty());
}

// --- Operations the class does not serve ---------------------------------

TEST(ConcreteComponentUnserved, GetInstanceAndTheNameOperationsAreNotSupported) {
  const ScopedInventory inventory(MixedInventory());
  EXPECT_EQ(ModuleHost().getInstance(Provider(kConcrete), ObjectPath(kNamespace, kConcrete)).code(),
            CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(ModuleHost()
                .associatorNames(Provider(kConcrete), PoolPath("ZEDA:nas1:PrimordialPool1"),
                                 std::string(kConcrete), std::nullopt, std::nullopt, std::nullopt)
                .code(),
            7);
  EXPECT_EQ(ModuleHost()
                .referenceNames(Provider(kConcrete), PoolPath("ZEDA:nas1:PrimordialPool1"),
                                std::nullopt, std::nullopt)
                .code(),
            7);
}

}  // namespace
}  // namespace zeda::test
