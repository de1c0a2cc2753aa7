// ZEDA_DiskDrive through the module: enumeration from the inventory, the
// placeholder answer of GetInstance, and the NAS API calls each one makes.
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Fixtures.h"

namespace zeda::test {
namespace {

using zeda::host::Instance;
using zeda::host::Outcome;
using zeda::host::Value;

const char kDriveClass[] = "ZEDA_DiskDrive";

Outcome EnumerateDrives() {
  return ModuleHost().enumerateInstances(Provider(kDriveClass), ClassPath(kDriveClass));
}

Outcome Get(const zeda::host::ObjectPath& path) {
  return ModuleHost().getInstance(Provider(kDriveClass), path);
}

// The one instance an inventory of one disk on nas1 yields.
Instance EnumerateOneDrive(const nlohmann::json& disk) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {disk})}));
  const Outcome outcome = EnumerateDrives();
  EXPECT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  const std::vector<Instance> instances = outcome.instances();
  EXPECT_EQ(instances.size(), 1u);
  return instances.empty() ? Instance() : instances.front();
}

std::uint64_t InterconnectTypeOf(const std::string& interfaceType) {
  nlohmann::json disk = DiskJson("0:1");
  disk["interfaceType"] = interfaceType;
  return EnumerateOneDrive(disk).property("InterconnectType").u();
}

const std::vector<std::string> kDrivePropertyNames = {"SystemCreationClassName",
                                                      "SystemName",
                                                      "CreationClassName",
                                                      "DeviceID",
                                                      "Name",
                                                      "EnabledState",
                                                      "HealthState",
                                                      "OperationalStatus",
                                                      "InterconnectType",
                                                      "DiskType",
                                                      "RPM",
                                                      "Description"};
const std::vector<std::string> kDrivePropertyTypes = {"string", "string", "string", "string",
                                                      "string", "uint16", "uint16", "uint16[]",
                                                      "uint16", "uint16", "uint32", "string"};

TEST(DiskDriveEnumerate, EveryPropertyInOrderWithItsTypeAndValue) {
  nlohmann::json disk = DiskJson("0:3");
  disk["rpm"] = 5400;
  const Instance drive = EnumerateOneDrive(disk);

  EXPECT_EQ(drive.path(), ClassPath(kDriveClass));
  EXPECT_EQ(PropertyNames(drive), kDrivePropertyNames);
  EXPECT_EQ(PropertyTypes(drive), kDrivePropertyTypes);
  EXPECT_EQ(drive.property("SystemCreationClassName"), Value::string("ZEDA_ComputerSystem"));
  EXPECT_EQ(drive.property("SystemName"), Value::string("ZEDA:nas1"));
  EXPECT_EQ(drive.property("CreationClassName"), Value::string("ZEDA_DiskDrive"));
  EXPECT_EQ(drive.property("DeviceID"), Value::string("ZEDA:nas1:DISK0:3"));
  EXPECT_EQ(drive.property("Name"), Value::string("0:3"));
  EXPECT_EQ(drive.property("EnabledState"), Value::uint16(2));
  EXPECT_EQ(drive.property("HealthState"), Value::uint16(kHealthOk));
  EXPECT_EQ(drive.property("OperationalStatus"), Value::uint16s({kOperationalStatusOk}));
  EXPECT_EQ(drive.property("InterconnectType"), Value::uint16(4));
  EXPECT_EQ(drive.property("DiskType"), Value::uint16(2));
  EXPECT_EQ(drive.property("RPM"), Value::uint32(5400));
  EXPECT_EQ(drive.property("Description"), Value::string("ZEDA_DiskDrive"));
}

TEST(DiskDriveEnumerate, NameIsTheBareIdentifierWhileDeviceIdCarriesSystemAndDisk) {
  const Instance drive = EnumerateOneDrive(DiskJson("0:10"));
  EXPECT_EQ(drive.property("Name").str(), "0:10");
  EXPECT_EQ(drive.property("DeviceID").str(), "ZEDA:nas1:DISK0:10");
}

TEST(DiskDriveEnumerate, InterconnectTypeFollowsTheInterfaceName) {
  EXPECT_EQ(InterconnectTypeOf("SATA"), 4u);
  EXPECT_EQ(InterconnectTypeOf("SAS"), 5u);
  EXPECT_EQ(InterconnectTypeOf(""), 1u);
}

TEST(DiskDriveEnumerate, OnlyExactlySataIsSataAndSasCountsAnywhereCaseSensitively) {
  EXPECT_EQ(InterconnectTypeOf("SATA-3"), 1u);
  EXPECT_EQ(InterconnectTypeOf(" SATA"), 1u);
  EXPECT_EQ(InterconnectTypeOf("sata"), 1u);
  EXPECT_EQ(InterconnectTypeOf("NL-SAS"), 5u);
  EXPECT_EQ(InterconnectTypeOf("SAS-12G"), 5u);
  EXPECT_EQ(InterconnectTypeOf("sas"), 1u);
  EXPECT_EQ(InterconnectTypeOf("NVMe"), 1u);
}

TEST(DiskDriveEnumerate, SolidStateDiskIsDiskType3EvenOnSas) {
  nlohmann::json disk = DiskJson("0:1");
  disk["interfaceType"] = "SAS";
  disk["isSsd"] = true;
  disk["rpm"] = 0;
  const Instance drive = EnumerateOneDrive(disk);
  EXPECT_EQ(drive.property("DiskType"), Value::uint16(3));
  EXPECT_EQ(drive.property("InterconnectType"), Value::uint16(5));
  EXPECT_EQ(drive.property("RPM"), Value::uint32(0));
}

TEST(DiskDriveEnumerate, NonzeroHealthStatusGivesHealthState0AndNoError) {
  nlohmann::json disk = DiskJson("0:1");
  disk["health"]["status"] = 7;
  const Instance drive = EnumerateOneDrive(disk);
  EXPECT_EQ(drive.property("HealthState"), Value::uint16(kHealthUnknown));
}

TEST(DiskDriveEnumerate, OperationalStatusComesFromTheDiskStateNotFromHealth) {
  nlohmann::json degraded = DiskJson("0:1");
  degraded["status"] = "degraded";  // healthy by the health query
  EXPECT_EQ(EnumerateOneDrive(degraded).property("OperationalStatus"),
            Value::uint16s({kOperationalStatusDegraded}));

  nlohmann::json unhealthy = DiskJson("0:2");
  unhealthy["health"]["status"] = 1;  // state still ok
  const Instance drive = EnumerateOneDrive(unhealthy);
  EXPECT_EQ(drive.property("OperationalStatus"), Value::uint16s({kOperationalStatusOk}));
  EXPECT_EQ(drive.property("HealthState"), Value::uint16(kHealthUnknown));

  nlohmann::json stopped = DiskJson("0:3");
  stopped["status"] = "stopped";
  EXPECT_EQ(EnumerateOneDrive(stopped).property("OperationalStatus"),
            Value::uint16s({kOperationalStatusStopped}));
}

TEST(DiskDriveEnumerate, EveryDiskOfEveryNasInOrderWithOneHealthQueryEach) {
  nlohmann::json failing = DiskJson("0:2");
  failing["status"] = "error";
  const ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {DiskJson("0:1"), failing}), NasJson("empty", {}),
                     NasJson("nas2", {DiskJson("7")})}));
  const ScopedTrace trace;

  const Outcome outcome = EnumerateDrives();

  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  std::vector<std::string> deviceIds;
  for (const Instance& drive : outcome.instances()) {
    deviceIds.push_back(drive.property("DeviceID").str());
  }
  EXPECT_EQ(deviceIds, (std::vector<std::string>{"ZEDA:nas1:DISK0:1", "ZEDA:nas1:DISK0:2",
                                                 "ZEDA:nas2:DISK7"}));
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{{"-", "GetNasList", ""},
                                                   {"nas1", "GetOrvi", ""},
                                                   {"nas1", "GetDiskList", ""},
                                                   {"nas1", "GetDiskHealth", "01"},
                                                   {"nas1", "GetDiskHealth", "02"},
                                                   {"empty", "GetOrvi", ""},
                                                   {"empty", "GetDiskList", ""},
                                                   {"nas2", "GetOrvi", ""},
                                                   {"nas2", "GetDiskList", ""},
                                                   {"nas2", "GetDiskHealth", "77"}}));
}

TEST(DiskDriveEnumerate, EmptyNasListAnswersNothingButDone) {
  const ScopedInventory inventory(InventoryJson({}));
  const ScopedTrace trace;
  const Outcome outcome = EnumerateDrives();
  EXPECT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  EXPECT_TRUE(outcome.results.empty());
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{{"-", "GetNasList", ""}}));
}

TEST(DiskDriveGetInstance, AnyPathGetsThePlaceholderWithoutAskingTheNas) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:3")})}));
  const ScopedTrace trace;
  const std::vector<zeda::host::ObjectPath> paths = {
      Path(std::string(kNamespace) +
           ":ZEDA_DiskDrive.SystemCreationClassName=\"ZEDA_ComputerSystem\","
           "SystemName=\"ZEDA:nas1\",CreationClassName=\"ZEDA_DiskDrive\","
           "DeviceID=\"ZEDA:nas1:DISK0:3\""),
      Path(std::string(kNamespace) + ":ZEDA_DiskDrive.SystemName=\"ZEDA:ghost\","
                                     "DeviceID=\"nothing\""),
      Path(std::string(kNamespace) + ":ZEDA_DiskDrive")};

  for (const zeda::host::ObjectPath& path : paths) {
    SCOPED_TRACE(path.toString());
    const Outcome outcome = Get(path);
    ASSERT_EQ(outcome.code(), CMPI_RC_OK);
    EXPECT_TRUE(outcome.done);
    const std::vector<Instance> instances = outcome.instances();
    ASSERT_EQ(instances.size(), 1u);
    const Instance& drive = instances.front();
    EXPECT_EQ(drive.path(), ClassPath(kDriveClass));
    EXPECT_EQ(PropertyNames(drive), kDrivePropertyNames);
    EXPECT_EQ(PropertyTypes(drive), kDrivePropertyTypes);
    EXPECT_EQ(drive.property("SystemCreationClassName"),
              Value::string("ZEDA_SystemCreationClassName"));
    EXPECT_EQ(drive.property("SystemName"), Value::string("ZEDA_SystemName"));
    EXPECT_EQ(drive.property("CreationClassName"), Value::string("ZEDA_CreationClassName"));
    EXPECT_EQ(drive.property("DeviceID"), Value::string("ZEDA_DeviceID"));
    EXPECT_EQ(drive.property("Name"), Value::string("ZEDA_Name"));
    EXPECT_EQ(drive.property("EnabledState"), Value::uint16(2));
    EXPECT_EQ(drive.property("HealthState"), Value::uint16(kHealthUnknown));
    EXPECT_EQ(drive.property("OperationalStatus"), Value::uint16s({kOperationalStatusUnknown}));
    EXPECT_EQ(drive.property("InterconnectType"), Value::uint16(0));
    EXPECT_EQ(drive.property("DiskType"), Value::uint16(0));
    EXPECT_EQ(drive.property("RPM"), Value::uint32(0));
    EXPECT_EQ(drive.property("Description"), Value::string("ZEDA_DiskDrive"));
  }
  EXPECT_TRUE(trace.calls().empty());
}

TEST(DiskDriveGetInstance, AnswersEvenWithoutAnyInventory) {
  const ScopedInventory inventory("this is not an inventory");
  const Outcome outcome = Get(Path(std::string(kNamespace) + ":ZEDA_DiskDrive"));
  EXPECT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_EQ(outcome.instances().size(), 1u);
}

TEST(DiskDriveOperations, ThePropertyListOfTheRequestIsNotApplied) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:3")})}));
  const std::vector<std::string> onlyName = {"Name"};

  const Outcome all =
      ModuleHost().enumerateInstances(Provider(kDriveClass), ClassPath(kDriveClass), onlyName);
  ASSERT_EQ(all.code(), CMPI_RC_OK);
  ASSERT_EQ(all.instances().size(), 1u);
  EXPECT_EQ(PropertyNames(all.instances().front()), kDrivePropertyNames);

  // Any namespace: the placeholder carries the request's, with all twelve properties.
  const Outcome one = ModuleHost().getInstance(Provider(kDriveClass),
                                               zeda::host::ObjectPath(kOtherNamespace, kDriveClass),
                                               std::vector<std::string>{});
  ASSERT_EQ(one.code(), CMPI_RC_OK);
  ASSERT_EQ(one.instances().size(), 1u);
  EXPECT_EQ(one.instances().front().path(), zeda::host::ObjectPath(kOtherNamespace, kDriveClass));
  EXPECT_EQ(PropertyNames(one.instances().front()), kDrivePropertyNames);
  EXPECT_EQ(PropertyTypes(one.instances().front()), kDrivePropertyTypes);
}

TEST(DiskDriveOperations, OnlyEnumerationAndGetInstanceAreServed) {
  const Outcome names =
      ModuleHost().enumerateInstanceNames(Provider(kDriveClass), ClassPath(kDriveClass));
  EXPECT_EQ(names.code(), CMPI_RC_ERR_NOT_SUPPORTED);
  const Outcome removal = ModuleHost().deleteInstance(
      Provider(kDriveClass), Path(std::string(kNamespace) + ":ZEDA_DiskDrive"));
  EXPECT_EQ(removal.code(), CMPI_RC_ERR_NOT_SUPPORTED);
}

}  // namespace
}  // namespace zeda::test
