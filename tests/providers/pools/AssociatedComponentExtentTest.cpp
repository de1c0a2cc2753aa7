// ZEDA_AssociatedComponentExtent_Primordial through the module: association
// interface only, ExtentStatus always 13, the pool of an extent built but
// never answered, and the placeholder references.
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

// nas1: 0:1 and 0:2 data, 0:3 free, 0:4 flagged spare, 0:5 in no group,
// 0:6 and 0:7 cache SSDs (0:6 also listed as data), 0:8 unflagged in the
// spare lists of both groups, 0:9 flagged spare in both spare lists.
std::string Inventory() {
  return InventoryJson({NasJson(
      "nas1",
      {DiskJson("0:1", 4000787030016ULL), Unhealthy(DiskJson("0:2"), 1), Free(DiskJson("0:3")),
       Spare(DiskJson("0:4")), DiskJson("0:5"), Ssd(DiskJson("0:6", 500107862016ULL)),
       Ssd(DiskJson("0:7")), DiskJson("0:8"), Spare(DiskJson("0:9"))},
      {GroupJson({"0:1", "0:2", "0:6"}, {"0:4", "0:8", "0:9"}), GroupJson({}, {"0:8", "0:9"})})});
}

Outcome ExtentsOfPool(const std::string& instanceId) {
  return Associators(kAssociated, PoolPath(instanceId));
}

Outcome PoolsOfExtent(const std::string& diskId) {
  return Associators(kAssociated, ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent" + diskId));
}

std::vector<std::uint64_t> ExtentStatuses(const Outcome& outcome) {
  std::vector<std::uint64_t> statuses;
  for (const Instance& extent : outcome.instances()) {
    const std::vector<std::uint64_t> values = extent.property("ExtentStatus").uints();
    statuses.insert(statuses.end(), values.begin(), values.end());
  }
  return statuses;
}

TEST(AssociatedComponentExtent, HasAnAssociationFactoryAndNoInstanceFactory) {
  EXPECT_TRUE(ModuleHost().hasFactory(Provider(kAssociated), MIKind::Association));
  EXPECT_FALSE(ModuleHost().hasFactory(Provider(kAssociated), MIKind::Instance));
}

// --- AssociatorsHandler2: from a pool ------------------------------------

TEST(AssociatedComponentExtentFromPool, ExtentInstancesInFullWithExtentStatus13) {
  const ScopedInventory inventory(Inventory());
  const Outcome outcome = ExtentsOfPool("ZEDA:nas1:PrimordialPool2");
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  const std::vector<Instance> extents = outcome.instances();
  ASSERT_EQ(extents.size(), 3u);
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
  // Not a free disk, yet 13 in this class.
  EXPECT_EQ(extent.property("ExtentStatus"), Value::uint16s({13}));
  EXPECT_EQ(extent.property("NumberOfBlocks"), Value::uint64(7814037168ULL));
  EXPECT_EQ(extent.property("ConsumableBlocks"), Value::uint64(7814037168ULL));
  EXPECT_EQ(extent.property("BlockSize"), Value::uint64(512));
  EXPECT_EQ(extent.property("HealthState"), Value::uint16(kHealthOk));
  EXPECT_EQ(extent.property("OperationalStatus"), Value::uint16s({kOperationalStatusOk}));
  EXPECT_EQ(extent.property("ExtentDiscriminator"), Value::strings({"SNIA:Pool Component"}));

  EXPECT_EQ(extents[1].property("DeviceID"), Value::string("ZEDA:nas1:DiskExtent0:2"));
  EXPECT_EQ(extents[1].property("HealthState"), Value::uint16(kHealthUnknown));
  EXPECT_EQ(extents[1].property("OperationalStatus"), Value::uint16s({kOperationalStatusUnknown}));
  // The SSD listed as data is in the data pool too.
  EXPECT_EQ(extents[2].property("DeviceID"), Value::string("ZEDA:nas1:DiskExtent0:6"));
}

TEST(AssociatedComponentExtentFromPool, Pool4IsExactlyTheSsdDisksEachWithExtentStatus13) {
  const ScopedInventory inventory(Inventory());
  const Outcome outcome = ExtentsOfPool("ZEDA:nas1:PrimordialPool4");
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  // 0:6 is also named by a group: once all the same.
  EXPECT_EQ(DeviceIds(outcome), (Strings{"ZEDA:nas1:DiskExtent0:6", "ZEDA:nas1:DiskExtent0:7"}));
  EXPECT_EQ(ExtentStatuses(outcome), (std::vector<std::uint64_t>{13, 13}));
  EXPECT_EQ(outcome.instances()[0].property("NumberOfBlocks"), Value::uint64(976773168ULL));
}

TEST(AssociatedComponentExtentFromPool, ASpareInTwoSpareListsTwiceUnlessItsFlagIsSet) {
  const ScopedInventory inventory(Inventory());
  const Outcome outcome = ExtentsOfPool("ZEDA:nas1:PrimordialPool3");
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  // 0:4 and 0:9 flagged: once each; 0:8 unflagged, in two spare lists: twice.
  EXPECT_EQ(DeviceIds(outcome), (Strings{"ZEDA:nas1:DiskExtent0:4", "ZEDA:nas1:DiskExtent0:8",
                                         "ZEDA:nas1:DiskExtent0:8", "ZEDA:nas1:DiskExtent0:9"}));
  EXPECT_EQ(ExtentStatuses(outcome), (std::vector<std::uint64_t>{13, 13, 13, 13}));
}

TEST(AssociatedComponentExtentFromPool, TheFreePool) {
  const ScopedInventory inventory(Inventory());
  const Outcome outcome = ExtentsOfPool("ZEDA:nas1:PrimordialPool1");
  EXPECT_EQ(DeviceIds(outcome), (Strings{"ZEDA:nas1:DiskExtent0:3"}));
  EXPECT_EQ(ExtentStatuses(outcome), (std::vector<std::uint64_t>{13}));
}

TEST(AssociatedComponentExtentFromPool, AsksForTheHealthOfEveryDiskOfTheNas) {
  const ScopedInventory inventory(Inventory());
  const ScopedTrace trace;
  const Outcome outcome = ExtentsOfPool("ZEDA:nas1:PrimordialPool4");
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_EQ(trace.args("Nas::Get"), (Strings{"nas1"}));
  EXPECT_EQ(trace.calls("GetDiskList").size(), 1u);
  EXPECT_EQ(trace.args("GetDiskHealth"),
            (Strings{"01", "02", "03", "04", "05", "06", "07", "08", "09"}));
  EXPECT_EQ(trace.calls().size(), 3u + 9u);
}

TEST(AssociatedComponentExtentFromPool, ThePlaceholderPoolFailsOnItsNumberBeforeAnyLibraryCall) {
  const ScopedInventory inventory(Inventory());
  const ScopedTrace trace;
  ExpectFailure(ExtentsOfPool("InstanceID_SPP"), "invalid stoi argument");
  EXPECT_TRUE(trace.lines().empty());
  EXPECT_TRUE(ErrorLogEndsWith("ZEDA_AssociatedComponentExtent_Primordial: invalid stoi argument"));
}

// --- AssociatorsHandler1: from an extent ---------------------------------

TEST(AssociatedComponentExtentFromExtent, AnExtentInAnyPoolEndsWithoutAnInstance) {
  const ScopedInventory inventory(Inventory());
  for (const char* diskId : {"0:3", "0:1", "0:4", "0:8", "0:6"}) {  // pools 1, 2, 3, 3, 4
    const ScopedTrace trace;
    const Outcome outcome = PoolsOfExtent(diskId);
    EXPECT_EQ(outcome.code(), CMPI_RC_OK) << diskId;
    EXPECT_TRUE(outcome.done) << diskId;
    EXPECT_TRUE(outcome.results.empty()) << diskId;
    // The pool is still looked up.
    EXPECT_EQ(trace.calls(),
              (std::vector<TraceCall>{
                  {"-", "Nas::Get", "nas1"}, {"nas1", "GetOrvi", ""}, {"nas1", "GetDiskList", ""}}))
        << diskId;
  }
}

TEST(AssociatedComponentExtentFromExtent, AnExtentInNoPoolFails) {
  const ScopedInventory inventory(Inventory());
  ExpectFailure(PoolsOfExtent("0:5"), "Incorrect association class");
  ExpectFailure(PoolsOfExtent("7:7"), "Incorrect association class");
  EXPECT_TRUE(
      ErrorLogEndsWith("ZEDA_AssociatedComponentExtent_Primordial: Incorrect association class"));
}

TEST(AssociatedComponentExtentFromExtent, ANasWithoutDisksFails) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {})}));
  ExpectFailure(PoolsOfExtent("0:1"), "Incorrect association class");
}

// --- References -----------------------------------------------------------

TEST(AssociatedComponentExtentReferences, FromAnExtentThePlaceholderPoolAndTheSourcePath) {
  const ScopedTrace trace;
  const ObjectPath source = ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:1");
  const Outcome outcome = References(kAssociated, source);
  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  const std::vector<Instance> links = outcome.instances();
  ASSERT_EQ(links.size(), 1u);
  EXPECT_EQ(links[0].path(), ObjectPath(kNamespace, kAssociated));
  EXPECT_EQ(PropertyNames(links[0]), (Strings{"GroupComponent", "PartComponent"}));
  EXPECT_EQ(links[0].property("GroupComponent").ref(), PoolPath("InstanceID_SPP"));
  EXPECT_EQ(links[0].property("PartComponent").ref(), source);
  EXPECT_TRUE(trace.lines().empty());
}

TEST(AssociatedComponentExtentReferences, AnyPoolPathGetsTheSamePlaceholderExtent) {
  const ObjectPath placeholder =
      ObjectPath(kNamespace, kExtentClass)
          .addKey("SystemCreationClassName", "ZEDA_SystemCreationClassName")
          .addKey("SystemName", "ZEDA_SystemName")
          .addKey("CreationClassName", "ZEDA_CreationClassName")
          .addKey("DeviceID", "ZEDA_DeviceID");
  for (const char* instanceId : {"ZEDA:nas1:PrimordialPool1", "InstanceID_SPP", "anything"}) {
    const ObjectPath source = PoolPath(instanceId);
    const Outcome outcome = References(kAssociated, source);
    ASSERT_EQ(outcome.code(), CMPI_RC_OK) << instanceId;
    EXPECT_TRUE(outcome.done);
    const std::vector<Instance> links = outcome.instances();
    ASSERT_EQ(links.size(), 1u);
    EXPECT_EQ(links[0].path(), ObjectPath(kNamespace, kAssociated));
    EXPECT_EQ(links[0].property("GroupComponent").ref(), source);
    EXPECT_EQ(links[0].property("PartComponent").ref(), placeholder);
  }
}

TEST(AssociatedComponentExtentReferences, AForeignClassIsUnknown) {
  ExpectFailure(
      References(kAssociated, ObjectPath(kNamespace, "CIM_StoragePool").addKey("InstanceID", "x")),
      "Unknown class name: CIM_StoragePool");
}

TEST(AssociatedComponentExtentUnserved, TheNameOperationsAreNotSupported) {
  EXPECT_EQ(ModuleHost()
                .associatorNames(Provider(kAssociated), PoolPath("ZEDA:nas1:PrimordialPool1"),
                                 std::string(kAssociated), std::nullopt, std::nullopt, std::nullopt)
                .code(),
            7);
  EXPECT_EQ(ModuleHost()
                .referenceNames(Provider(kAssociated), PoolPath("ZEDA:nas1:PrimordialPool1"),
                                std::nullopt, std::nullopt)
                .code(),
            7);
}

}  // namespace
}  // namespace zeda::test
