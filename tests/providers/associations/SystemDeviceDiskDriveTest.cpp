// ZEDA_SystemDevice_DiskDrive: the drives of each NAS as parts of its
// computer system.
#include <gtest/gtest.h>

#include "AssociationFixtures.h"

namespace zeda::test {
namespace {

constexpr char kSystemDrive[] = "ZEDA_SystemDevice_DiskDrive";

class SystemDeviceDiskDriveTest : public ::testing::Test {
 protected:
  zeda::host::Host& host = ModuleHost();
  const std::string provider = Provider(kSystemDrive);
  ScopedTrace trace;
};

Instance ExpectedDriveLink(const std::string& systemName, const std::string& deviceId) {
  return Association(kSystemDrive, "GroupComponent", SystemPath(systemName), "PartComponent",
                     DrivePath(systemName, deviceId));
}

TEST_F(SystemDeviceDiskDriveTest, EmptyNasListAnswersNothingButDone) {
  ScopedInventory inventory(InventoryJson({}));
  ExpectInstances(host.enumerateInstances(provider, ClassPath(kSystemDrive)), {});
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{Call("-", "GetNasList")}));
}

TEST_F(SystemDeviceDiskDriveTest, EnumeratesEveryDiskOfEveryNasSkippingNasWithoutDisks) {
  ScopedInventory inventory(
      InventoryJson({NasJson("nasA"), NasJson("nasB", {DiskJson("0:1"), DiskJson("0:10")}),
                     NasJson("nasC", {DiskJson("7")})}));
  ExpectInstances(host.enumerateInstances(provider, ClassPath(kSystemDrive)),
                  {ExpectedDriveLink("ZEDA:nasB", "ZEDA:nasB:DISK0:1"),
                   ExpectedDriveLink("ZEDA:nasB", "ZEDA:nasB:DISK0:10"),
                   ExpectedDriveLink("ZEDA:nasC", "ZEDA:nasC:DISK7")});
  EXPECT_EQ(trace.calls(),
            (std::vector<TraceCall>{Call("-", "GetNasList"), Call("nasA", "GetOrvi"),
                                    Call("nasA", "GetDiskList"), Call("nasB", "GetOrvi"),
                                    Call("nasB", "GetDiskList"), Call("nasC", "GetOrvi"),
                                    Call("nasC", "GetDiskList")}));
}

TEST_F(SystemDeviceDiskDriveTest, EnumerationCarriesTheRequestNamespace) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("3")})}));
  const Outcome outcome =
      host.enumerateInstances(provider, ClassPath(kSystemDrive, kOtherNamespace));
  ExpectInstances(outcome, {Association(kSystemDrive, "GroupComponent",
                                        SystemPath("ZEDA:nas1", kOtherNamespace), "PartComponent",
                                        DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK3", kOtherNamespace),
                                        kOtherNamespace)});
}

TEST_F(SystemDeviceDiskDriveTest, AssociatorsFromDriveToComputerSystemAnswersNoObjectButDone) {
  ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("3")})}));
  const ObjectPath drive = DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK3");
  ExpectEmpty(host.associators(provider, drive, kSystemDrive, "CIM_ComputerSystem", std::nullopt,
                               std::nullopt),
              true);
  ExpectEmpty(host.associators(provider, drive, kSystemDrive, "CIM_ComputerSystem", std::nullopt,
                               std::nullopt, std::vector<std::string>{"Name"}),
              true);
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(SystemDeviceDiskDriveTest, AssociatorsFromDriveWithOtherResultClassAnswersOkWithoutDone) {
  const ObjectPath drive = DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK3");
  for (const auto& resultClass : std::vector<zeda::host::OptString>{
           std::nullopt, std::string("ZEDA_ComputerSystem"), std::string("cim_computersystem"),
           std::string("CIM_DiskDrive")}) {
    ExpectEmpty(
        host.associators(provider, drive, kSystemDrive, resultClass, std::nullopt, std::nullopt),
        false);
  }
}

TEST_F(SystemDeviceDiskDriveTest, AssociatorsFromComputerSystemAnswersThePlaceholderDrive) {
  const Outcome outcome = host.associators(provider, SystemPath("ZEDA:nas1"), kSystemDrive,
                                           "CIM_DiskDrive", "GroupComponent", "PartComponent");
  ExpectInstances(outcome, {PlaceholderDrive("ZEDA_DiskDrive", "Name")});
  EXPECT_EQ(outcome.instances().at(0).property("DeviceID").str(), "ZEDA_DeviceID");
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(SystemDeviceDiskDriveTest, PlaceholderDriveIgnoresThePropertyList) {
  ExpectInstances(host.associators(provider, SystemPath("anything", kOtherNamespace), kSystemDrive,
                                   "CIM_DiskDrive", std::nullopt, std::nullopt,
                                   std::vector<std::string>{"DeviceID"}),
                  {PlaceholderDrive("ZEDA_DiskDrive", "Name", kOtherNamespace)});
}

TEST_F(SystemDeviceDiskDriveTest,
       AssociatorsFromComputerSystemWithConcreteDriveClassAnswersNothing) {
  ExpectEmpty(host.associators(provider, SystemPath("ZEDA:nas1"), kSystemDrive, "ZEDA_DiskDrive",
                               std::nullopt, std::nullopt),
              false);
  ExpectEmpty(host.associators(provider, SystemPath("ZEDA:nas1"), kSystemDrive, std::nullopt,
                               std::nullopt, std::nullopt),
              false);
}

TEST_F(SystemDeviceDiskDriveTest, ForeignAssociationClassIsWrongClassName) {
  const ObjectPath drive = DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK3");
  for (const auto& assocClass :
       std::vector<zeda::host::OptString>{std::nullopt, std::string("zeda_systemdevice_diskdrive"),
                                          std::string("ZEDA_SystemDevice_StorageExtent_Disk")}) {
    ExpectFailure(host.associators(provider, drive, assocClass, "CIM_ComputerSystem", std::nullopt,
                                   std::nullopt),
                  200, "Wrong class name");
  }
  EXPECT_TRUE(HasErrorLogLine(kAssociatorsLine, "ZEDA_SystemDevice_DiskDrive: Wrong class name"));
}

TEST_F(SystemDeviceDiskDriveTest, AssociationClassIsCheckedBeforeTheSourceClass) {
  const ObjectPath parent = DevicePath("CIM_DiskDrive", "ZEDA_ComputerSystem", "ZEDA:nas1",
                                       "ZEDA_DiskDrive", "ZEDA:nas1:DISK3");
  ExpectFailure(host.associators(provider, parent, "CIM_SystemDevice", "CIM_ComputerSystem",
                                 std::nullopt, std::nullopt),
                200, "Wrong class name");
}

TEST_F(SystemDeviceDiskDriveTest, ParentClassSourceIsUnknownClassName) {
  const ObjectPath parent = DevicePath("CIM_DiskDrive", "ZEDA_ComputerSystem", "ZEDA:nas1",
                                       "ZEDA_DiskDrive", "ZEDA:nas1:DISK3");
  ExpectFailure(host.associators(provider, parent, kSystemDrive, "CIM_ComputerSystem", std::nullopt,
                                 std::nullopt),
                200, "Unknown class name: CIM_DiskDrive");
  EXPECT_TRUE(HasErrorLogLine(kAssociatorsLine,
                              "ZEDA_SystemDevice_DiskDrive: Unknown class name: CIM_DiskDrive"));
  ExpectFailure(host.references(provider, parent, std::nullopt, std::nullopt), CMPI_RC_ERROR,
                "Unknown class name: CIM_DiskDrive");
  EXPECT_TRUE(HasErrorLogLine(kReferencesLine,
                              "ZEDA_SystemDevice_DiskDrive: Unknown class name: CIM_DiskDrive"));
}

TEST_F(SystemDeviceDiskDriveTest, ReferencesFromAnyDriveNamesThePlaceholderSystem) {
  const ObjectPath real = DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK3");
  const ObjectPath invented = DrivePath("ZEDA:nowhere", "nothing");
  for (const ObjectPath& drive : {real, invented}) {
    const Outcome outcome = host.references(provider, drive, "CIM_Component", "Bogus",
                                            std::vector<std::string>{"Caption"});
    ExpectInstances(outcome, {Association(kSystemDrive, "GroupComponent", SystemPath("ZEDAName"),
                                          "PartComponent", drive)});
  }
  EXPECT_TRUE(trace.calls().empty());
}

TEST_F(SystemDeviceDiskDriveTest, ReferencesFromComputerSystemNamesThePlaceholderDrive) {
  const ObjectPath system = SystemPath("ZEDA:nas1", kOtherNamespace);
  ExpectInstances(
      host.references(provider, system, std::nullopt, std::nullopt),
      {Association(kSystemDrive, "GroupComponent", system, "PartComponent",
                   PlaceholderDevicePath("ZEDA_DiskDrive", kOtherNamespace), kOtherNamespace)});
}

TEST_F(SystemDeviceDiskDriveTest, OperationsItDoesNotServeAnswerNotSupported) {
  const ObjectPath drive = DrivePath("ZEDA:nas1", "ZEDA:nas1:DISK3");
  const Outcome get = host.getInstance(provider, drive);
  EXPECT_EQ(get.code(), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_TRUE(get.results.empty());
  EXPECT_EQ(host.associatorNames(provider, drive, kSystemDrive, "CIM_ComputerSystem", std::nullopt,
                                 std::nullopt)
                .code(),
            7);
  EXPECT_EQ(host.referenceNames(provider, drive, std::nullopt, std::nullopt).code(),
            CMPI_RC_ERR_NOT_SUPPORTED);
}

}  // namespace
}  // namespace zeda::test
