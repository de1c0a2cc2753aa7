// ZEDA_Realizes_Disk: each disk's package realizing its drive, served through
// the association dispatch by source class.
#include <gtest/gtest.h>

#include "AssociationFixtures.h"

namespace zeda::test {
namespace {

constexpr char kRealizes[] = "ZEDA_Realizes_Disk";

class RealizesDiskTest : public ::testing::Test {
 protected:
  zeda::host::Host& host = ModuleHost();
  const std::string provider = Provider(kRealizes);
  ScopedTrace trace;

  Outcome From(const ObjectPath& source) {
    return host.associators(provider, source, kRealizes, std::nullopt, std::nullopt, std::nullopt);
  }
};

nlohmann::json WithIdentity(const std::string& id, const std::string& product,
                            const std::string& model, const std::string& serial) {
  nlohmann::json disk = DiskJson(id);
  disk["identity"] = {{"product", product}, {"model", model}, {"serial", serial}};
  return disk;
}

Instance Package(const std::string& tag, const std::string& manufacturer, const std::string& model,
                 const std::string& serial) {
  return Instance(ObjectPath(kNamespace, "ZEDA_PhysicalPackage_Disk"),
                  {{"CreationClassName", Value::string("ZEDA_PhysicalPackage_Disk")},
                   {"Tag", Value::string(tag)},
                   {"Manufacturer", Value::string(manufacturer)},
                   {"Model", Value::string(model)},
                   {"SerialNumber", Value::string(serial)}});
}

TEST_F(RealizesDiskTest, EnumeratesPackageThenDriveOfEveryDisk) {
  ScopedInventory inventory(
      InventoryJson({NasJson("empty"), NasJson("nas1", {DiskJson("0:3"), DiskJson("7")}),
                     NasJson("nas2", {DiskJson("0:10")})}));
  ExpectInstances(host.enumerateInstances(provider, ClassPath(kRealizes)),
                  {Association(kRealizes, "Antecedent",
                               PackagePath("ZEDA_PhysicalPackage_Disk", "ZEDA:nas1:DISK0:3"),
                               "Dependent", DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK0:3")),
                   Association(kRealizes, "Antecedent",
                               PackagePath("ZEDA_PhysicalPackage_Disk", "ZEDA:nas1:DISK7"),
                               "Dependent", DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK7")),
                   Association(kRealizes, "Antecedent",
                               PackagePath("ZEDA_PhysicalPackage_Disk", "ZEDA:nas2:DISK0:10"),
                               "Dependent", DrivePath("ZEDA:nas2", "ZEDA:nas2:DISK0:10"))});
  // The inventory walk alone: no identity query.
  EXPECT_EQ(trace.calls(),
            (std::vector<TraceCall>{Call("-", "GetNasList"), Call("empty", "GetOrvi"),
                                    Call("empty", "GetDiskList"), Call("nas1", "GetOrvi"),
                                    Call("nas1", "GetDiskList"), Call("nas2", "GetOrvi"),
                                    Call("nas2", "GetDiskList")}));
}

TEST_F(RealizesDiskTest, EmptyNasListAnswersNothingButDone) {
  ScopedInventory inventory(InventoryJson({}));
  ExpectInstances(host.enumerateInstances(provider, ClassPath(kRealizes)), {});
}

TEST_F(RealizesDiskTest, DriveSourceAnswersItsPackage) {
  ScopedInventory inventory(InventoryJson(
      {NasJson("nas1", {DiskJson("6"), WithIdentity("7", "ACME X100", "X100", "SN7")})}));
  const Outcome outcome = From(DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK7"));
  ExpectInstances(outcome, {Package("ZEDA:nas1:DISK7", "ACME", "X100", "SN7")});
  // The NAS by Nas::Get, then the identity by the identifier as it stands;
  // no disk list.
  EXPECT_EQ(trace.calls(),
            (std::vector<TraceCall>{Call("-", "Nas::Get", "nas1"), Call("nas1", "GetOrvi"),
                                    Call("nas1", "GetDiskIdentity", "7")}));
}

TEST_F(RealizesDiskTest, TagIsTheSourceDeviceIdExactly) {
  ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {WithIdentity("0:3", "P M", "M", "S")})}));
  const Outcome outcome = From(DrivePath("nas1", "some:odd:prefixDISK0:3"));
  ExpectInstances(outcome, {Package("some:odd:prefixDISK0:3", "P", "M", "S")});
  EXPECT_EQ(trace.calls("GetDiskIdentity"),
            (std::vector<TraceCall>{Call("nas1", "GetDiskIdentity", "0:3")}));
}

TEST_F(RealizesDiskTest, DeviceIdWithoutDiskLosesItsFirstThreeCharacters) {
  ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {WithIdentity("def", "V D", "D", "S")})}));
  ExpectInstances(From(DrivePath("ZEDA:nas1", "abcdef")), {Package("abcdef", "V", "D", "S")});
  EXPECT_EQ(trace.calls("GetDiskIdentity"),
            (std::vector<TraceCall>{Call("nas1", "GetDiskIdentity", "def")}));
}

TEST_F(RealizesDiskTest, ShortDeviceIdWithoutDiskFails) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("7")})}));
  ExpectFailure(From(DrivePath("ZEDA:nas1", "ab")), 200, "invalid string position");
  EXPECT_TRUE(HasErrorLogLine(kAssociatorsLine, "ZEDA_Realizes_Disk: invalid string position"));
  // The NAS is looked up before the DeviceID is parsed.
  EXPECT_EQ(trace.calls(),
            (std::vector<TraceCall>{Call("-", "Nas::Get", "nas1"), Call("nas1", "GetOrvi")}));
}

TEST_F(RealizesDiskTest, DriveSourceAnswersInItsOwnNamespace) {
  ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {WithIdentity("7", "ACME X100", "X100", "SN7")})}));
  const Outcome outcome = From(DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK7", kOtherNamespace));
  ASSERT_EQ(outcome.results.size(), 1u);
  EXPECT_EQ(outcome.instances()[0].path(),
            ObjectPath(kOtherNamespace, "ZEDA_PhysicalPackage_Disk"));
}

TEST_F(RealizesDiskTest, DriveSourceWithoutSystemNameFailsAsTheKeyReaderFails) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("7")})}));
  const ObjectPath noSystemName =
      ObjectPath(kNamespace, "ZEDA_DiskDrive").addKey("DeviceID", "ZEDA:nas1:DISK7");
  const Outcome outcome = From(noSystemName);
  EXPECT_EQ(outcome.code(), CMPI_RC_ERR_NOT_FOUND);  // CMPI_RC_ERR_NOT_FOUND of the missing key
  EXPECT_TRUE(outcome.results.empty());
  EXPECT_FALSE(outcome.done);
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(RealizesDiskTest, ManufacturerIsTheProductBeforeTheModelLessOneCharacter) {
  ScopedInventory inventory(InventoryJson({NasJson(
      "nas1",
      {WithIdentity("1", "ACME X100", "X100", "S1"), WithIdentity("2", "ACME X100", "Y200", "S2"),
       WithIdentity("3", "X100 by ACME", "X100", "S3"), WithIdentity("4", "X100", "X100", "S4"),
       WithIdentity("5", "A  M", "M", "S5"), WithIdentity("6", "ACME X100", "", "S6")})}));
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"1", "ACME"}, {"2", "ACME X100"}, {"3", "X100 by ACME"},
      {"4", "X100"}, {"5", "A "},        {"6", "ACME X100"}};
  for (const auto& [id, manufacturer] : expected) {
    const Outcome outcome = From(DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK" + id));
    ASSERT_EQ(outcome.results.size(), 1u) << id;
    EXPECT_EQ(outcome.instances()[0].property("Manufacturer"), Value::string(manufacturer)) << id;
  }
}

TEST_F(RealizesDiskTest, UnknownNasOrDiskFailsWithTheLibrarysMessage) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("7")})}));
  ExpectFailure(From(DrivePath("ZEDA:nas9", "ZEDA:nas9:DISK7")), 200, "NAS not found: nas9");
  ExpectFailure(From(DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK8")), 200, "Disk not found: 8");
  EXPECT_TRUE(HasErrorLogLine(kAssociatorsLine, "ZEDA_Realizes_Disk: Disk not found: 8"));
}

TEST_F(RealizesDiskTest, PackageSourceOfAnyContentAnswersThePlaceholderDrive) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("7")})}));
  for (const ObjectPath& package :
       {PackagePath("ZEDA_PhysicalPackage_Disk", "ZEDA:nas1:DISK7"),
        PackagePath("x", "no such disk"), ObjectPath(kNamespace, "ZEDA_PhysicalPackage_Disk")}) {
    const Outcome outcome = From(package);
    ExpectInstances(outcome, {PlaceholderDrive("ZEDA_DiskDrive", "Name")});
  }
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(RealizesDiskTest, DispatchRefusesAnAbsentAssociationClass) {
  const Outcome outcome = host.associators(provider, DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK7"),
                                           std::nullopt, std::nullopt, std::nullopt, std::nullopt);
  ExpectFailure(outcome, CMPI_RC_ERR_INVALID_PARAMETER,
                "Wrong association class name: ; Expected: ZEDA_Realizes_Disk");
  EXPECT_TRUE(HasErrorLogLine(
      kAssociatorsLine,
      "ZEDA_Realizes_Disk: Wrong association class name: ; Expected: ZEDA_Realizes_Disk (RC=4)"));
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(RealizesDiskTest, DispatchRefusesADifferentlyCasedAssociationClass) {
  ExpectFailure(host.associators(provider, PackagePath("a", "b"), "zeda_realizes_disk",
                                 std::nullopt, std::nullopt, std::nullopt),
                4,
                "Wrong association class name: zeda_realizes_disk; Expected: ZEDA_Realizes_Disk");
}

TEST_F(RealizesDiskTest, DispatchRefusesASubclassSource) {
  const ObjectPath subclass = DevicePath("ZEDA_DiskDrive_Special", "ZEDA_ComputerSystem",
                                         "ZEDA:nas1", "ZEDA_DiskDrive", "ZEDA:nas1:DISK7");
  ExpectFailure(From(subclass), CMPI_RC_ERR_INVALID_PARAMETER,
                "Unknown class name: ZEDA_DiskDrive_Special");
  EXPECT_TRUE(HasErrorLogLine(
      kAssociatorsLine, "ZEDA_Realizes_Disk: Unknown class name: ZEDA_DiskDrive_Special (RC=4)"));
  ExpectFailure(From(ObjectPath(kNamespace, "CIM_PhysicalPackage")), 4,
                "Unknown class name: CIM_PhysicalPackage");
}

TEST_F(RealizesDiskTest, ReferencesFromADriveNamesThePlaceholderPackage) {
  const ObjectPath drive = DrivePath("ZEDA:nowhere", "invented");
  ExpectInstances(
      host.references(provider, drive, "CIM_Realizes", "Dependent",
                      std::vector<std::string>{"Tag"}),
      {Association(kRealizes, "Antecedent", PackagePath("ZEDA_CreationClassName", "ZEDA_Tag"),
                   "Dependent", drive)});
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(RealizesDiskTest, ReferencesFromAPackageNamesThePlaceholderDrive) {
  const ObjectPath package = PackagePath("ZEDA_PhysicalPackage_Disk", "ZEDA:nas1:DISK7");
  const Outcome outcome = host.references(provider, package, std::nullopt, std::nullopt);
  ExpectInstances(outcome, {Association(kRealizes, "Antecedent", package, "Dependent",
                                        PlaceholderDevicePath("ZEDA_DiskDrive"))});
  EXPECT_EQ(outcome.instances().at(0).property("Dependent").ref().key("DeviceID").str(),
            "ZEDA_DeviceID");
}

TEST_F(RealizesDiskTest, ReferencesFromAForeignClassIsUnknownClassName) {
  ExpectFailure(host.references(provider, ObjectPath(kNamespace, "CIM_PhysicalPackage"),
                                std::nullopt, std::nullopt),
                200, "Unknown class name: CIM_PhysicalPackage");
  EXPECT_TRUE(HasErrorLogLine(kReferencesLine,
                              "ZEDA_Realizes_Disk: Unknown class name: CIM_PhysicalPackage"));
}

}  // namespace
}  // namespace zeda::test
