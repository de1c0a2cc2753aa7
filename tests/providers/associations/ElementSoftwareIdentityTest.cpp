// ZEDA_ElementSoftwareIdentity_Disk: each drive with the identity of its
// firmware; only the enumeration reads the inventory.
#include <gtest/gtest.h>

#include "AssociationFixtures.h"

namespace zeda::test {
namespace {

constexpr char kElementSoftware[] = "ZEDA_ElementSoftwareIdentity_Disk";

class ElementSoftwareIdentityTest : public ::testing::Test {
 protected:
  zeda::host::Host& host = ModuleHost();
  const std::string provider = Provider(kElementSoftware);
  ScopedTrace trace;
};

Instance PlaceholderSoftware(const std::string& ns = kNamespace) {
  return Instance(ObjectPath(ns, "ZEDA_SoftwareIdentity_Disk"),
                  {{"InstanceID", Value::string("ZEDA_InstanceID")},
                   {"VersionString", Value::string("ZEDA_VersionString")}});
}

TEST_F(ElementSoftwareIdentityTest, EnumerationPairsIdentityAndDriveOfEveryDisk) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("5"), DiskJson("0:3")}),
                                           NasJson("empty"), NasJson("nas2", {DiskJson("1")})}));
  ExpectInstances(
      host.enumerateInstances(provider, ClassPath(kElementSoftware)),
      {Association(kElementSoftware, "Antecedent", SoftwarePath("ZEDA:nas1:Software(DISK5)"),
                   "Dependent", DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK5")),
       Association(kElementSoftware, "Antecedent", SoftwarePath("ZEDA:nas1:Software(DISK0:3)"),
                   "Dependent", DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK0:3")),
       Association(kElementSoftware, "Antecedent", SoftwarePath("ZEDA:nas2:Software(DISK1)"),
                   "Dependent", DrivePath("ZEDA:nas2", "ZEDA:nas2:DISK1"))});
  EXPECT_EQ(trace.calls(),
            (std::vector<TraceCall>{Call("-", "GetNasList"), Call("nas1", "GetOrvi"),
                                    Call("nas1", "GetDiskList"), Call("empty", "GetOrvi"),
                                    Call("empty", "GetDiskList"), Call("nas2", "GetOrvi"),
                                    Call("nas2", "GetDiskList")}));
}

TEST_F(ElementSoftwareIdentityTest, EmptyNasListAnswersNothingButDone) {
  ScopedInventory inventory(InventoryJson({}));
  ExpectInstances(host.enumerateInstances(provider, ClassPath(kElementSoftware)), {});
}

TEST_F(ElementSoftwareIdentityTest, GetInstanceAnswersTheDriveShapedPlaceholderOfThisClass) {
  ScopedInventory inventory(InventoryJson({}));
  // Keys naming no existing disk, or no keys at all: the same answer.
  const ObjectPath keyed =
      ObjectPath(kOtherNamespace, kElementSoftware)
          .addKey("Antecedent", Value::reference(SoftwarePath("ZEDA:nas9:Software(DISK9)")))
          .addKey("Dependent", Value::reference(DrivePath("ZEDA:nas9", "ZEDA:nas9:DISK9")));
  for (const ObjectPath& path : {keyed, ObjectPath(kOtherNamespace, kElementSoftware)}) {
    const Outcome outcome = host.getInstance(provider, path, std::vector<std::string>{"Name"});
    ExpectInstances(outcome, {PlaceholderDrive(kElementSoftware, "ZEDA_Name", kOtherNamespace)});
    const Instance answer = outcome.instances().at(0);
    EXPECT_EQ(answer.className(), kElementSoftware);
    EXPECT_EQ(answer.property("Description").str(), "ZEDA_DiskDrive");
    EXPECT_FALSE(answer.has("Antecedent"));
    EXPECT_FALSE(answer.has("Dependent"));
  }
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(ElementSoftwareIdentityTest, AssociatorsFromADriveAnswersThePlaceholderIdentity) {
  const ObjectPath drive = DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK5");
  // Neither the association class nor the result class is examined.
  for (const auto& [assocClass, resultClass] :
       std::vector<std::pair<zeda::host::OptString, zeda::host::OptString>>{
           {std::string(kElementSoftware), std::string("CIM_SoftwareIdentity")},
           {std::string(kElementSoftware), std::string("CIM_DiskDrive")},
           {std::nullopt, std::nullopt},
           {std::string("Bogus"), std::string("Bogus")}}) {
    ExpectInstances(host.associators(provider, drive, assocClass, resultClass, std::nullopt,
                                     std::nullopt, std::vector<std::string>{"Caption"}),
                    {PlaceholderSoftware()});
  }
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(ElementSoftwareIdentityTest, AssociatorsFromAnIdentityAnswersAPlaceholderDrive) {
  const Outcome outcome =
      host.associators(provider, SoftwarePath("ZEDA:nas1:Software(DISK5)", kOtherNamespace),
                       "Bogus", "CIM_SoftwareIdentity", std::nullopt, std::nullopt);
  ExpectInstances(outcome, {PlaceholderDrive("ZEDA_DiskDrive", "Name", kOtherNamespace)});
  EXPECT_EQ(outcome.instances().at(0).property("Name").str(), "Name");
}

TEST_F(ElementSoftwareIdentityTest, ForeignSourceClassIsUnknownClassName) {
  const ObjectPath parent =
      ObjectPath(kNamespace, "CIM_SoftwareIdentity").addKey("InstanceID", "x");
  ExpectFailure(host.associators(provider, parent, kElementSoftware, std::nullopt, std::nullopt,
                                 std::nullopt),
                CMPI_RC_ERROR, "Unknown class name: CIM_SoftwareIdentity");
  ExpectFailure(host.references(provider, parent, std::nullopt, std::nullopt), CMPI_RC_ERROR,
                "Unknown class name: CIM_SoftwareIdentity");
  EXPECT_TRUE(HasErrorLogLine(
      kAssociatorsLine,
      "ZEDA_ElementSoftwareIdentity_Disk: Unknown class name: CIM_SoftwareIdentity"));
  EXPECT_TRUE(HasErrorLogLine(
      kReferencesLine,
      "ZEDA_ElementSoftwareIdentity_Disk: Unknown class name: CIM_SoftwareIdentity"));
}

TEST_F(ElementSoftwareIdentityTest, ReferencesFromADriveNamesThePlaceholderIdentity) {
  const ObjectPath drive = DrivePath("ZEDA:nowhere", "invented");
  ExpectInstances(host.references(provider, drive, "CIM_ElementSoftwareIdentity", "Dependent",
                                  std::vector<std::string>{"Caption"}),
                  {Association(kElementSoftware, "Antecedent", SoftwarePath("ZEDA_InstanceID"),
                               "Dependent", drive)});
}

TEST_F(ElementSoftwareIdentityTest, ReferencesFromAnIdentityNamesThePlaceholderDrive) {
  const ObjectPath software = SoftwarePath("ZEDA:nas1:Software(DISK5)");
  ExpectInstances(host.references(provider, software, std::nullopt, std::nullopt),
                  {Association(kElementSoftware, "Antecedent", software, "Dependent",
                               PlaceholderDevicePath("ZEDA_DiskDrive"))});
  EXPECT_TRUE(trace.calls().empty());
}

}  // namespace
}  // namespace zeda::test
