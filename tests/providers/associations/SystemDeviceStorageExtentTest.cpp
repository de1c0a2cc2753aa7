// ZEDA_SystemDevice_StorageExtent_Disk: the disk extents of each NAS as
// parts of its computer system.
#include <algorithm>

#include <gtest/gtest.h>

#include "AssociationFixtures.h"

namespace zeda::test {
namespace {

constexpr char kClass[] = "ZEDA_SystemDevice_StorageExtent_Disk";

class SystemDeviceStorageExtentTest : public ::testing::Test {
 protected:
  zeda::host::Host& host = ModuleHost();
  const std::string provider = Provider(kClass);
  ScopedTrace trace;
};

Instance Expected(const std::string& systemName, const std::string& deviceId) {
  return Association(kClass, "GroupComponent", SystemPath(systemName), "PartComponent",
                     ExtentPath(systemName, deviceId));
}

Instance PlaceholderExtent(const std::string& ns = kNamespace) {
  return ExtentInstance({"ZEDA_SystemCreationClassName", "ZEDA_SystemName",
                         "ZEDA_CreationClassName", "ZEDA_DeviceID", 2, 1000, 100, 5, 2},
                        ns);
}

// The placeholder system less the properties a filter drops.
Instance SystemWithout(const std::vector<std::string>& dropped) {
  Instance full = PlaceholderSystem();
  std::vector<NamedValue> kept;
  for (const NamedValue& p : full.properties()) {
    if (std::find(dropped.begin(), dropped.end(), p.name) == dropped.end()) {
      kept.push_back(p);
    }
  }
  return Instance(full.path(), kept);
}

TEST_F(SystemDeviceStorageExtentTest, EmptyNasListAnswersNothingButDone) {
  ScopedInventory inventory(InventoryJson({}));
  ExpectInstances(host.enumerateInstances(provider, ClassPath(kClass)), {});
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{Call("-", "GetNasList")}));
}

TEST_F(SystemDeviceStorageExtentTest, NasWithoutDisksYieldsNoInstance) {
  ScopedInventory inventory(InventoryJson({NasJson("nasA", {DiskJson("0:3")}), NasJson("empty"),
                                           NasJson("nasB", {DiskJson("a1"), DiskJson("0:10")})}));
  ExpectInstances(host.enumerateInstances(provider, ClassPath(kClass)),
                  {Expected("ZEDA:nasA", "ZEDA:nasA:DiskExtent0:3"),
                   Expected("ZEDA:nasB", "ZEDA:nasB:DiskExtenta1"),
                   Expected("ZEDA:nasB", "ZEDA:nasB:DiskExtent0:10")});
  EXPECT_EQ(trace.calls(),
            (std::vector<TraceCall>{Call("-", "GetNasList"), Call("nasA", "GetOrvi"),
                                    Call("nasA", "GetDiskList"), Call("empty", "GetOrvi"),
                                    Call("empty", "GetDiskList"), Call("nasB", "GetOrvi"),
                                    Call("nasB", "GetDiskList")}));
}

TEST_F(SystemDeviceStorageExtentTest, AssociatorsFromExtentWithStoragePoolAnswersTheSystem) {
  const Outcome outcome =
      host.associators(provider, ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:3"), kClass,
                       "CIM_StoragePool", std::nullopt, std::nullopt);
  ExpectInstances(outcome, {PlaceholderSystem()});
  EXPECT_EQ(outcome.instances().at(0).property("Name").str(), "ZEDAName");
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(SystemDeviceStorageExtentTest, AssociatorsFromExtentWithComputerSystemAnswersNothing) {
  const ObjectPath extent = ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:3");
  for (const auto& resultClass : std::vector<zeda::host::OptString>{
           std::string("CIM_ComputerSystem"), std::string("ZEDA_ComputerSystem"),
           std::string("cim_storagepool"), std::nullopt}) {
    ExpectEmpty(host.associators(provider, extent, kClass, resultClass, std::nullopt, std::nullopt),
                false);
  }
}

TEST_F(SystemDeviceStorageExtentTest, AssociatorsFromSystemAnswersThePlaceholderExtent) {
  const Outcome outcome = host.associators(provider, SystemPath("ZEDA:nas1"), kClass,
                                           "CIM_StorageExtent", std::nullopt, std::nullopt);
  ExpectInstances(outcome, {PlaceholderExtent()});
  const Instance extent = outcome.instances().at(0);
  EXPECT_EQ(extent.property("NumberOfBlocks").u(), 1000u);
  EXPECT_EQ(extent.property("ConsumableBlocks").u(), 100u);
  EXPECT_EQ(extent.property("BlockSize").u(), 512u);
}

TEST_F(SystemDeviceStorageExtentTest, AssociatorsFromSystemWithOtherResultClassAnswersNothing) {
  for (const auto& resultClass : std::vector<zeda::host::OptString>{
           std::string("ZEDA_StorageExtent_Disk"), std::string("CIM_StoragePool"), std::nullopt}) {
    ExpectEmpty(host.associators(provider, SystemPath("ZEDA:nas1"), kClass, resultClass,
                                 std::nullopt, std::nullopt),
                false);
  }
}

// The system's filter: the request's list and the module's fixed key list,
// which an object manager that honours the key list keeps too.
TEST_F(SystemDeviceStorageExtentTest, PropertyListFiltersTheSystemButNotTheExtent) {
  const ObjectPath extent = ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:3");
  const KeyListHonoured honoured;
  // Caption is asked for; Description is neither asked for nor a kept name.
  ExpectInstances(host.associators(provider, extent, kClass, "CIM_StoragePool", std::nullopt,
                                   std::nullopt, std::vector<std::string>{"Caption"}),
                  {SystemWithout({"Description"})});
  // An empty list keeps only the system's fixed names.
  ExpectInstances(host.associators(provider, extent, kClass, "CIM_StoragePool", std::nullopt,
                                   std::nullopt, std::vector<std::string>{}),
                  {SystemWithout({"Caption", "Description"})});
  // No list: no filter.
  ExpectInstances(host.associators(provider, extent, kClass, "CIM_StoragePool", std::nullopt,
                                   std::nullopt, std::nullopt),
                  {PlaceholderSystem()});
  ExpectInstances(host.associators(provider, SystemPath("ZEDA:nas1"), kClass, "CIM_StorageExtent",
                                   std::nullopt, std::nullopt, std::vector<std::string>{}),
                  {PlaceholderExtent()});
  ExpectInstances(host.associators(provider, SystemPath("ZEDA:nas1"), kClass, "CIM_StorageExtent",
                                   std::nullopt, std::nullopt, std::vector<std::string>{"Caption"}),
                  {PlaceholderExtent()});
}

// The CMPI standard has the object manager ignore the key list, and the
// placeholder system's path has no keys: only the listed properties are left.
TEST_F(SystemDeviceStorageExtentTest, PropertyListKeepsOnlyTheListedPropertiesOfTheSystem) {
  const ObjectPath extent = ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:3");
  ExpectInstances(
      host.associators(provider, extent, kClass, "CIM_StoragePool", std::nullopt, std::nullopt,
                       std::vector<std::string>{"Caption"}),
      {SystemWithout({"CreationClassName", "Name", "NameFormat", "ElementName", "Description",
                      "OperationalStatus", "Dedicated", "HealthState"})});
  ExpectInstances(host.associators(provider, extent, kClass, "CIM_StoragePool", std::nullopt,
                                   std::nullopt, std::vector<std::string>{}),
                  {Instance(PlaceholderSystem().path())});
}

TEST_F(SystemDeviceStorageExtentTest, ForeignAssociationClassIsWrongClassName) {
  const ObjectPath extent = ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:3");
  for (const auto& assocClass :
       std::vector<zeda::host::OptString>{std::nullopt, std::string("ZEDA_SystemDevice_DiskDrive"),
                                          std::string("ZEDA_SYSTEMDEVICE_STORAGEEXTENT_DISK")}) {
    ExpectFailure(host.associators(provider, extent, assocClass, "CIM_StoragePool", std::nullopt,
                                   std::nullopt),
                  200, "Wrong class name");
  }
  EXPECT_TRUE(
      HasErrorLogLine(kAssociatorsLine, "ZEDA_SystemDevice_StorageExtent_Disk: Wrong class name"));
}

TEST_F(SystemDeviceStorageExtentTest, AssociationClassIsCheckedBeforeTheSourceClass) {
  ExpectFailure(host.associators(provider, ObjectPath(kNamespace, "CIM_StorageExtent"),
                                 "ZEDA_SystemDevice_DiskDrive", "CIM_StoragePool", std::nullopt,
                                 std::nullopt),
                200, "Wrong class name");
}

TEST_F(SystemDeviceStorageExtentTest, ForeignSourceClassIsUnknownClassName) {
  const ObjectPath parent = DevicePath("CIM_StorageExtent", "ZEDA_ComputerSystem", "ZEDA:nas1",
                                       "ZEDA_StorageExtent_Disk", "ZEDA:nas1:DiskExtent0:3");
  ExpectFailure(
      host.associators(provider, parent, kClass, "CIM_StoragePool", std::nullopt, std::nullopt),
      200, "Unknown class name: CIM_StorageExtent");
  ExpectFailure(host.references(provider, parent, std::nullopt, std::nullopt), CMPI_RC_ERROR,
                "Unknown class name: CIM_StorageExtent");
  EXPECT_TRUE(HasErrorLogLine(
      kAssociatorsLine,
      "ZEDA_SystemDevice_StorageExtent_Disk: Unknown class name: CIM_StorageExtent"));
  EXPECT_TRUE(HasErrorLogLine(
      kReferencesLine,
      "ZEDA_SystemDevice_StorageExtent_Disk: Unknown class name: CIM_StorageExtent"));
}

TEST_F(SystemDeviceStorageExtentTest, ReferencesFromExtentNamesThePlaceholderSystem) {
  const ObjectPath extent = ExtentPath("ZEDA:nowhere", "invented");
  ExpectInstances(
      host.references(provider, extent, "CIM_SystemDevice", "PartComponent",
                      std::vector<std::string>{"Name"}),
      {Association(kClass, "GroupComponent", SystemPath("ZEDAName"), "PartComponent", extent)});
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(SystemDeviceStorageExtentTest, ReferencesFromSystemNamesThePlaceholderExtent) {
  const ObjectPath system = SystemPath("ZEDA:nas1");
  ExpectInstances(host.references(provider, system, std::nullopt, std::nullopt),
                  {Association(kClass, "GroupComponent", system, "PartComponent",
                               PlaceholderDevicePath("ZEDA_StorageExtent_Disk"))});
}

TEST_F(SystemDeviceStorageExtentTest, GetInstanceIsNotSupported) {
  EXPECT_EQ(host.getInstance(provider, ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:3")).code(),
            7);
}

}  // namespace
}  // namespace zeda::test
