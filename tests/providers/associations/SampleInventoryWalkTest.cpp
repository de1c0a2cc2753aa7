// Walking the model of the sample inventory: drive -> extent -> drive with
// ZEDA_MediaPresent, drive -> package with ZEDA_Realizes_Disk, answering the
// same instances the element classes enumerate.
#include <gtest/gtest.h>

#include "AssociationFixtures.h"

namespace zeda::test {
namespace {

class SampleInventoryWalkTest : public ::testing::Test {
 protected:
  zeda::host::Host& host = ModuleHost();
  ScopedEnv inventory{"PELKA_INVENTORY", SampleInventoryPath()};

  // The enumerated instance of `className` whose `key` property is `value`.
  Instance Enumerated(const std::string& className, const std::string& key,
                      const std::string& value) {
    const Outcome outcome = host.enumerateInstances(Provider(className), ClassPath(className));
    EXPECT_EQ(outcome.code(), CMPI_RC_OK);
    for (const Instance& instance : outcome.instances()) {
      if (instance.property(key).str() == value) {
        return instance;
      }
    }
    ADD_FAILURE() << "no " << className << " with " << key << " " << value;
    return Instance();
  }
};

// The path of an instance whose keys are the four device keys.
ObjectPath DevicePathOf(const Instance& device) {
  ObjectPath path(device.path().nameSpace(), device.className());
  for (const char* key :
       {"SystemCreationClassName", "SystemName", "CreationClassName", "DeviceID"}) {
    path.addKey(key, device.property(key));
  }
  return path;
}

TEST_F(SampleInventoryWalkTest, DriveToExtentToDriveWithMediaPresent) {
  const Instance drive = Enumerated("ZEDA_DiskDrive", "DeviceID", "ZEDA:nas1:DISK0:1");
  const Instance extent =
      Enumerated("ZEDA_StorageExtent_Disk", "DeviceID", "ZEDA:nas1:DiskExtent0:1");

  const Outcome toExtent =
      host.associators("ZEDA_MediaPresentProvider", DevicePathOf(drive), "ZEDA_MediaPresent",
                       "ZEDA_StorageExtent_Disk", "Antecedent", "Dependent");
  ExpectInstances(toExtent, {extent});
  ExpectInstances(toExtent,
                  {ExtentInstance({"ZEDA_ComputerSystem", "ZEDA:nas1", "ZEDA_StorageExtent_Disk",
                                   "ZEDA:nas1:DiskExtent0:1", 2, 4000787030016ULL >> 9,
                                   4000787030016ULL >> 9, 5, 2})});

  const Outcome back =
      host.associators("ZEDA_MediaPresentProvider", DevicePathOf(toExtent.instances().at(0)),
                       "ZEDA_MediaPresent", "ZEDA_DiskDrive", "Dependent", "Antecedent");
  ExpectInstances(back, {drive});
  ExpectInstances(
      back, {DriveInstance("ZEDA_DiskDrive", {"ZEDA_ComputerSystem", "ZEDA:nas1", "ZEDA_DiskDrive",
                                              "ZEDA:nas1:DISK0:1", "0:1", 5, 2, 4, 2, 5400})});
}

TEST_F(SampleInventoryWalkTest, DriveToPackageWithRealizes) {
  const Instance drive = Enumerated("ZEDA_DiskDrive", "DeviceID", "ZEDA:nas1:DISK0:5");
  const Instance package = Enumerated("ZEDA_PhysicalPackage_Disk", "Tag", "ZEDA:nas1:DISK0:5");
  const Outcome outcome =
      host.associators("ZEDA_Realizes_DiskProvider", DevicePathOf(drive), "ZEDA_Realizes_Disk",
                       "ZEDA_PhysicalPackage_Disk", "Dependent", "Antecedent");
  ExpectInstances(outcome, {package});
  ExpectInstances(outcome,
                  {Instance(ObjectPath(kNamespace, "ZEDA_PhysicalPackage_Disk"),
                            {{"CreationClassName", Value::string("ZEDA_PhysicalPackage_Disk")},
                             {"Tag", Value::string("ZEDA:nas1:DISK0:5")},
                             {"Manufacturer", Value::string("Seagate")},
                             {"Model", Value::string("ST8000VN004")},
                             {"SerialNumber", Value::string("WSD1A2B3")}})});
}

// Every MediaPresent pair leads from each end to the other.
TEST_F(SampleInventoryWalkTest, EveryMediaPresentPairLeadsBothWays) {
  const Outcome pairs =
      host.enumerateInstances("ZEDA_MediaPresentProvider", ClassPath("ZEDA_MediaPresent"));
  ASSERT_EQ(pairs.code(), CMPI_RC_OK);
  ASSERT_EQ(pairs.results.size(), 14u);  // 8 disks of nas1, 6 of nas2, none of nas-edge
  for (const Instance& pair : pairs.instances()) {
    const ObjectPath drive = pair.property("Antecedent").ref();
    const ObjectPath extent = pair.property("Dependent").ref();
    const Outcome toExtent =
        host.associators("ZEDA_MediaPresentProvider", drive, "ZEDA_MediaPresent", std::nullopt,
                         std::nullopt, std::nullopt);
    ASSERT_EQ(toExtent.results.size(), 1u) << drive.toString();
    EXPECT_EQ(DevicePathOf(toExtent.instances()[0]), extent);
    const Outcome toDrive =
        host.associators("ZEDA_MediaPresentProvider", extent, "ZEDA_MediaPresent", std::nullopt,
                         std::nullopt, std::nullopt);
    ASSERT_EQ(toDrive.results.size(), 1u) << extent.toString();
    EXPECT_EQ(DevicePathOf(toDrive.instances()[0]), drive);
  }
}

// Every Realizes pair: the package answered from the drive carries the pair's Tag.
TEST_F(SampleInventoryWalkTest, EveryRealizesDriveLeadsToItsPackage) {
  const Outcome pairs =
      host.enumerateInstances("ZEDA_Realizes_DiskProvider", ClassPath("ZEDA_Realizes_Disk"));
  ASSERT_EQ(pairs.code(), CMPI_RC_OK);
  ASSERT_EQ(pairs.results.size(), 14u);
  for (const Instance& pair : pairs.instances()) {
    const ObjectPath package = pair.property("Antecedent").ref();
    const Outcome outcome =
        host.associators("ZEDA_Realizes_DiskProvider", pair.property("Dependent").ref(),
                         "ZEDA_Realizes_Disk", std::nullopt, std::nullopt, std::nullopt);
    ASSERT_EQ(outcome.results.size(), 1u);
    EXPECT_EQ(outcome.instances()[0].property("Tag"), package.key("Tag"));
    EXPECT_EQ(outcome.instances()[0].property("CreationClassName"),
              package.key("CreationClassName"));
  }
}

}  // namespace
}  // namespace zeda::test
