// ZEDA_MediaPresent: each drive with the extent of its medium; Associators
// looks the disk up on its NAS in both directions.
#include <gtest/gtest.h>

#include "AssociationFixtures.h"

namespace zeda::test {
namespace {

constexpr char kMediaPresent[] = "ZEDA_MediaPresent";

class MediaPresentTest : public ::testing::Test {
 protected:
  zeda::host::Host& host = ModuleHost();
  const std::string provider = Provider(kMediaPresent);
  ScopedTrace trace;

  Outcome FromExtent(const ObjectPath& extent) {
    return host.associators(provider, extent, kMediaPresent, std::nullopt, std::nullopt,
                            std::nullopt);
  }
  Outcome FromDrive(const ObjectPath& drive) {
    return host.associators(provider, drive, kMediaPresent, std::nullopt, std::nullopt,
                            std::nullopt);
  }
};

// The drive answered for an extent source: keys from the source's SystemName
// and the parsed identifier, numbers from the record and its health.
Instance Drive(const std::string& systemName, const std::string& id, std::uint16_t health,
               std::uint16_t status, std::uint16_t interconnect, std::uint16_t diskType,
               std::uint32_t rpm) {
  return DriveInstance("ZEDA_DiskDrive", {"ZEDA_ComputerSystem", systemName, "ZEDA_DiskDrive",
                                          systemName + ":DISK" + id, id, health, status,
                                          interconnect, diskType, rpm});
}

Instance Extent(const std::string& systemName, const std::string& id, std::uint16_t extentStatus,
                std::uint64_t blocks, std::uint16_t health, std::uint16_t status) {
  return ExtentInstance({"ZEDA_ComputerSystem", systemName, "ZEDA_StorageExtent_Disk",
                         systemName + ":DiskExtent" + id, extentStatus, blocks, blocks, health,
                         status});
}

nlohmann::json With(nlohmann::json disk, const std::string& member, nlohmann::json value) {
  disk[member] = std::move(value);
  return disk;
}

TEST_F(MediaPresentTest, EnumeratesDriveThenExtentOfEveryDisk) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:3"), DiskJson("7")}),
                                           NasJson("empty"), NasJson("nas2", {DiskJson("a1")})}));
  ExpectInstances(
      host.enumerateInstances(provider, ClassPath(kMediaPresent)),
      {Association(kMediaPresent, "Antecedent", DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK0:3"),
                   "Dependent", ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:3")),
       Association(kMediaPresent, "Antecedent", DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK7"),
                   "Dependent", ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent7")),
       Association(kMediaPresent, "Antecedent", DrivePath("ZEDA:nas2", "ZEDA:nas2:DISKa1"),
                   "Dependent", ExtentPath("ZEDA:nas2", "ZEDA:nas2:DiskExtenta1"))});
  // The inventory walk alone: no health query, no NAS lookup by name.
  EXPECT_EQ(trace.calls(),
            (std::vector<TraceCall>{Call("-", "GetNasList"), Call("nas1", "GetOrvi"),
                                    Call("nas1", "GetDiskList"), Call("empty", "GetOrvi"),
                                    Call("empty", "GetDiskList"), Call("nas2", "GetOrvi"),
                                    Call("nas2", "GetDiskList")}));
}

TEST_F(MediaPresentTest, EmptyNasListAnswersNothingButDone) {
  ScopedInventory inventory(InventoryJson({}));
  ExpectInstances(host.enumerateInstances(provider, ClassPath(kMediaPresent)), {});
}

TEST_F(MediaPresentTest, ExtentSourceAnswersItsDrive) {
  ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {DiskJson("2"), DiskJson("3"), DiskJson("4")})}));
  ExpectInstances(FromExtent(ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent3")),
                  {Drive("ZEDA:nas1", "3", 5, 2, 4, 2, 7200)});
  // One lookup by Nas::Get, one disk list, one health query by the health key.
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{
                               Call("-", "Nas::Get", "nas1"), Call("nas1", "GetOrvi"),
                               Call("nas1", "GetDiskList"), Call("nas1", "GetDiskHealth", "33")}));
}

TEST_F(MediaPresentTest, ExtentSourceAsksHealthWithoutTheFirstColon) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:3")})}));
  ExpectInstances(FromExtent(ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:3")),
                  {Drive("ZEDA:nas1", "0:3", 5, 2, 4, 2, 7200)});
  EXPECT_EQ(trace.calls("GetDiskHealth"),
            (std::vector<TraceCall>{Call("nas1", "GetDiskHealth", "03")}));
}

TEST_F(MediaPresentTest, DriveSourceAnswersItsExtentThroughTheUtilityLookup) {
  ScopedInventory inventory(InventoryJson({NasJson(
      "nas1", {DiskJson("0:2"), With(With(DiskJson("0:3"), "isFree", true), "capacity", 1000000),
               DiskJson("0:4")})}));
  ExpectInstances(FromDrive(DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK0:3")),
                  {Extent("ZEDA:nas1", "0:3", 13, 1953, 5, 2)});
  // The identifier goes to the health query as it stands, colon kept.
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{
                               Call("-", "util::GetNas", "nas1"), Call("nas1", "GetOrvi"),
                               Call("nas1", "GetDiskList"), Call("nas1", "GetDiskHealth", "0:3")}));
}

TEST_F(MediaPresentTest, DriveSourceExtentOfADiskInUse) {
  ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {With(DiskJson("5"), "capacity", 4000787030016ULL)})}));
  ExpectInstances(FromDrive(DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK5")),
                  {Extent("ZEDA:nas1", "5", 2, 4000787030016ULL >> 9, 5, 2)});
}

TEST_F(MediaPresentTest, IdentifierMatchingIgnoresCase) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("a1")})}));
  // The instance is built from what the source names, not from the record's id.
  ExpectInstances(FromExtent(ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtentA1")),
                  {Drive("ZEDA:nas1", "A1", 5, 2, 4, 2, 7200)});
  EXPECT_EQ(trace.calls("GetDiskHealth"),
            (std::vector<TraceCall>{Call("nas1", "GetDiskHealth", "A1A1")}));
  ExpectInstances(FromDrive(DrivePath("ZEDA:nas1", "ZEDA:nas1:DISKA1")),
                  {Extent("ZEDA:nas1", "A1", 2, 1953, 5, 2)});
}

TEST_F(MediaPresentTest, EveryMatchingRecordAnswersAndTheWholeListIsWalked) {
  ScopedInventory inventory(InventoryJson(
      {NasJson("nas1", {With(DiskJson("x1"), "rpm", 5400), DiskJson("y"),
                        With(With(DiskJson("X1"), "rpm", 15000), "capacity", 2048)})}));
  ExpectInstances(
      FromExtent(ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtentx1")),
      {Drive("ZEDA:nas1", "x1", 5, 2, 4, 2, 5400), Drive("ZEDA:nas1", "x1", 5, 2, 4, 2, 15000)});
  EXPECT_EQ(trace.calls("GetDiskHealth").size(), 2u);
  EXPECT_EQ(trace.calls("GetDiskList").size(), 1u);
  trace.clear();
  ExpectInstances(
      FromDrive(DrivePath("ZEDA:nas1", "ZEDA:nas1:DISKX1")),
      {Extent("ZEDA:nas1", "X1", 2, 1953, 5, 2), Extent("ZEDA:nas1", "X1", 2, 4, 5, 2)});
  EXPECT_EQ(trace.calls("GetDiskHealth"),
            (std::vector<TraceCall>{Call("nas1", "GetDiskHealth", "X1"),
                                    Call("nas1", "GetDiskHealth", "X1")}));
}

TEST_F(MediaPresentTest, InterconnectTypeNeedsTheExactInterfaceName) {
  ScopedInventory inventory(InventoryJson({NasJson(
      "nas1",
      {With(DiskJson("1"), "interfaceType", "SATA"), With(DiskJson("2"), "interfaceType", "SAS"),
       With(DiskJson("3"), "interfaceType", "sata"), With(DiskJson("4"), "interfaceType", "NL-SAS"),
       With(DiskJson("5"), "interfaceType", "SATA-3"), With(DiskJson("6"), "interfaceType", ""),
       With(DiskJson("7"), "interfaceType", "sas")})}));
  const std::vector<std::pair<std::string, std::uint16_t>> expected = {
      {"1", 4}, {"2", 5}, {"3", 1}, {"4", 1}, {"5", 1}, {"6", 1}, {"7", 1}};
  for (const auto& [id, interconnect] : expected) {
    const Outcome outcome = FromExtent(ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent" + id));
    ASSERT_EQ(outcome.results.size(), 1u) << id;
    EXPECT_EQ(outcome.instances()[0].property("InterconnectType"), Value::uint16(interconnect))
        << id;
  }
}

TEST_F(MediaPresentTest, SolidStateDiskAndRpmComeFromTheRecord) {
  ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {With(With(With(DiskJson("9"), "isSsd", true), "rpm", 0),
                                           "interfaceType", "SAS")})}));
  ExpectInstances(FromExtent(ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent9")),
                  {Drive("ZEDA:nas1", "9", 5, 2, 5, 3, 0)});
}

TEST_F(MediaPresentTest, NonZeroHealthStatusGivesUnknownHealthInBothDirections) {
  ScopedInventory inventory(InventoryJson({NasJson(
      "nas1", {With(With(DiskJson("0:3"), "health", {{"status", 2}}), "status", "degraded")})}));
  ExpectInstances(FromExtent(ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:3")),
                  {Drive("ZEDA:nas1", "0:3", 0, 0, 4, 2, 7200)});
  ExpectInstances(FromDrive(DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK0:3")),
                  {Extent("ZEDA:nas1", "0:3", 2, 1953, 0, 0)});
}

TEST_F(MediaPresentTest, AbsentDiskAnswersNothingButDone) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:3")})}));
  ExpectEmpty(FromExtent(ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent0:4")), true);
  ExpectEmpty(FromDrive(DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK03")), true);
  EXPECT_TRUE(trace.calls("GetDiskHealth").empty());
}

TEST_F(MediaPresentTest, SystemNameIsTakenAsGivenAndTheNasAfterItsLastColon) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("3")})}));
  // No ":" at all: the whole value names the NAS; the keys carry it unchanged.
  ExpectInstances(FromExtent(ExtentPath("nas1", "nas1:DiskExtent3")),
                  {Drive("nas1", "3", 5, 2, 4, 2, 7200)});
  ExpectInstances(FromDrive(DrivePath("X:Y:nas1", "whatever:DISK3")),
                  {Extent("X:Y:nas1", "3", 2, 1953, 5, 2)});
  EXPECT_EQ(trace.calls("Nas::Get"), (std::vector<TraceCall>{Call("-", "Nas::Get", "nas1")}));
  EXPECT_EQ(trace.calls("util::GetNas"),
            (std::vector<TraceCall>{Call("-", "util::GetNas", "nas1")}));
}

TEST_F(MediaPresentTest, DeviceIdWithoutTheMarkerLosesItsFirstCharacters) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("jkl"), DiskJson("def")})}));
  // Without "DiskExtent" the identifier starts at the tenth character ...
  ExpectInstances(FromExtent(ExtentPath("ZEDA:nas1", "abcdefghijkl")),
                  {Drive("ZEDA:nas1", "jkl", 5, 2, 4, 2, 7200)});
  // ... without "DISK" at the fourth.
  ExpectInstances(FromDrive(DrivePath("ZEDA:nas1", "abcdef")),
                  {Extent("ZEDA:nas1", "def", 2, 1953, 5, 2)});
}

TEST_F(MediaPresentTest, ShortDeviceIdWithoutTheMarkerFails) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("3")})}));
  ExpectFailure(FromExtent(ExtentPath("ZEDA:nas1", "DISK3")), 200, "invalid string position");
  ExpectFailure(FromDrive(DrivePath("ZEDA:nas1", "ab")), 200, "invalid string position");
  EXPECT_TRUE(HasErrorLogLine(kAssociatorsLine, "ZEDA_MediaPresent: invalid string position"));
  // The identifier is parsed before the NAS is looked up.
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(MediaPresentTest, UnknownNasFailsWithTheLookupsMessage) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("3")})}));
  ExpectFailure(FromExtent(ExtentPath("ZEDA:nas9", "ZEDA:nas9:DiskExtent3")), 200,
                "NAS not found: nas9");
  ExpectFailure(FromDrive(DrivePath("ZEDA:nas8", "ZEDA:nas8:DISK3")), 200, "NAS not found: nas8");
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{Call("-", "Nas::Get", "nas9"),
                                                   Call("-", "util::GetNas", "nas8")}));
  EXPECT_TRUE(HasErrorLogLine(kAssociatorsLine, "ZEDA_MediaPresent: NAS not found: nas9"));
}

TEST_F(MediaPresentTest, MissingKeyFailsAsTheKeyReaderFails) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("3")})}));
  const ObjectPath noSystemName =
      ObjectPath(kNamespace, "ZEDA_StorageExtent_Disk").addKey("DeviceID", "ZEDA:nas1:DiskExtent3");
  const Outcome outcome = FromExtent(noSystemName);
  EXPECT_EQ(outcome.code(), CMPI_RC_ERR_NOT_FOUND);  // CMPI_RC_ERR_NOT_FOUND of the missing key
  EXPECT_TRUE(outcome.results.empty());
  EXPECT_FALSE(outcome.done);
  EXPECT_TRUE(HasErrorLogLine(kAssociatorsLine, "ZEDA_MediaPresent: CmpiStatus.rc() = 6"));
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(MediaPresentTest, AssociatorsExaminesNeitherAssociationNorResultClass) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("3")})}));
  ExpectInstances(host.associators(provider, ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent3"),
                                   "Bogus", "CIM_StorageExtent", "Dependent", "Antecedent",
                                   std::vector<std::string>{"Name"}),
                  {Drive("ZEDA:nas1", "3", 5, 2, 4, 2, 7200)});
}

TEST_F(MediaPresentTest, ForeignSourceClassIsUnknownClassName) {
  const ObjectPath parent = DevicePath("CIM_DiskDrive", "ZEDA_ComputerSystem", "ZEDA:nas1",
                                       "ZEDA_DiskDrive", "ZEDA:nas1:DISK3");
  ExpectFailure(FromDrive(parent), CMPI_RC_ERROR, "Unknown class name: CIM_DiskDrive");
  ExpectFailure(host.references(provider, parent, std::nullopt, std::nullopt), CMPI_RC_ERROR,
                "Unknown class name: CIM_DiskDrive");
  EXPECT_TRUE(
      HasErrorLogLine(kAssociatorsLine, "ZEDA_MediaPresent: Unknown class name: CIM_DiskDrive"));
  EXPECT_TRUE(
      HasErrorLogLine(kReferencesLine, "ZEDA_MediaPresent: Unknown class name: CIM_DiskDrive"));
}

TEST_F(MediaPresentTest, ReferencesFromAnyDriveNamesThePlaceholderExtent) {
  const ObjectPath drive = DrivePath("ZEDA:nowhere", "invented");
  const Outcome outcome = host.references(provider, drive, "CIM_MediaPresent", "Antecedent",
                                          std::vector<std::string>{"DeviceID"});
  ExpectInstances(outcome, {Association(kMediaPresent, "Antecedent", drive, "Dependent",
                                        PlaceholderDevicePath("ZEDA_StorageExtent_Disk"))});
  EXPECT_EQ(outcome.instances().at(0).property("Dependent").ref().key("DeviceID").str(),
            "ZEDA_DeviceID");
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(MediaPresentTest, ReferencesFromAnExtentNamesThePlaceholderDrive) {
  const ObjectPath extent = ExtentPath("ZEDA:nas1", "ZEDA:nas1:DiskExtent3", kOtherNamespace);
  ExpectInstances(host.references(provider, extent, std::nullopt, std::nullopt),
                  {Association(kMediaPresent, "Antecedent",
                               PlaceholderDevicePath("ZEDA_DiskDrive", kOtherNamespace),
                               "Dependent", extent, kOtherNamespace)});
}

TEST_F(MediaPresentTest, GetInstanceIsNotSupported) {
  EXPECT_EQ(host.getInstance(provider, DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK3")).code(),
            CMPI_RC_ERR_NOT_SUPPORTED);
}

}  // namespace
}  // namespace zeda::test
