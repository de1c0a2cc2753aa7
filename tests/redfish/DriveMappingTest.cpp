#include <gtest/gtest.h>

#include "model/DriveMapping.h"

namespace zeda::test {
namespace {

using namespace zeda::redfish::model;
using zeda::orvi::DiskStatus;
using zeda::orvi::OrviDisk;
using zeda::orvi::OrviDiskHealth;
using zeda::orvi::OrviDiskIdentity;

OrviDisk SataDisk() {
  OrviDisk disk;
  disk.status = zeda::orvi::Ok;
  disk.interfaceType = "SATA";
  disk.id = "0:3";
  disk.firmwareVersion = "82.00A82";
  disk.capacity = 4000787030016;
  disk.rpm = 5400;
  return disk;
}

TEST(RedfishDriveMapping, CimFiguresFollowTheModuleRules) {
  OrviDisk disk = SataDisk();
  disk.capacity = 1025;  // two whole blocks and one byte
  const CimDriveFigures figures = CimFiguresOf(disk, 0);
  EXPECT_EQ(figures.operationalStatus, 2);
  EXPECT_EQ(figures.healthState, 5);
  EXPECT_EQ(figures.interconnectType, 4);
  EXPECT_EQ(figures.diskType, 2);
  EXPECT_EQ(figures.rpm, 5400u);
  EXPECT_EQ(figures.numberOfBlocks, 2u);
  EXPECT_EQ(CimFiguresOf(disk, 7).healthState, 0);
  disk.isSsd = true;
  EXPECT_EQ(CimFiguresOf(disk, 0).diskType, 3);
}

TEST(RedfishDriveMapping, InterconnectTypeAsTheDriveClassGivesIt) {
  OrviDisk disk = SataDisk();
  const std::pair<const char*, std::uint16_t> cases[] = {
      {"SATA", 4}, {"SAS", 5},  {"NL-SAS", 5}, {"SAS-3", 5}, {"SATA-3", 1},
      {"sata", 1}, {"NVMe", 1}, {"USB", 1},    {"", 1},      {"xSASx", 5}};
  for (const auto& [interfaceType, expected] : cases) {
    disk.interfaceType = interfaceType;
    EXPECT_EQ(CimFiguresOf(disk, 0).interconnectType, expected) << interfaceType;
  }
}

TEST(RedfishDriveMapping, OperationalStatusOfEveryDiskState) {
  OrviDisk disk = SataDisk();
  const std::pair<DiskStatus, std::uint16_t> cases[] = {
      {zeda::orvi::Unknown, 0},           {zeda::orvi::Ok, 2},    {zeda::orvi::Degraded, 3},
      {zeda::orvi::PredictiveFailure, 5}, {zeda::orvi::Error, 6}, {zeda::orvi::Stopped, 10},
      {zeda::orvi::NoContact, 12}};
  for (const auto& [status, expected] : cases) {
    disk.status = status;
    EXPECT_EQ(CimFiguresOf(disk, 0).operationalStatus, expected) << status;
  }
}

TEST(RedfishDriveMapping, ProtocolOfTheInterconnectType) {
  EXPECT_EQ(ProtocolOf(4, "SATA"), std::optional<std::string_view>("SATA"));
  EXPECT_EQ(ProtocolOf(5, "NL-SAS"), std::optional<std::string_view>("SAS"));
  EXPECT_EQ(ProtocolOf(1, "NVMe"), std::optional<std::string_view>("NVMe"));
  EXPECT_EQ(ProtocolOf(1, "USB"), std::optional<std::string_view>("USB"));
  EXPECT_EQ(ProtocolOf(1, "SATA-3"), std::nullopt);
  EXPECT_EQ(ProtocolOf(1, "SCSI"), std::nullopt);
  EXPECT_EQ(ProtocolOf(1, "VIRTIO"), std::nullopt);
  EXPECT_EQ(ProtocolOf(1, "nvme"), std::nullopt);
  EXPECT_EQ(ProtocolOf(1, ""), std::nullopt);
}

TEST(RedfishDriveMapping, MediaTypeOfTheDiskType) {
  EXPECT_EQ(MediaTypeOf(3), "SSD");
  EXPECT_EQ(MediaTypeOf(2), "HDD");
}

TEST(RedfishDriveMapping, ConditionOfEveryOperationalStatusAndHealth) {
  struct Case {
    std::uint16_t operationalStatus;
    std::uint16_t healthState;
    std::optional<std::string_view> state;
    std::optional<std::string_view> health;
    bool failurePredicted;
  };
  const Case cases[] = {
      {2, 5, "Enabled", "OK", false},        {2, 0, "Enabled", "Warning", false},
      {3, 5, "Enabled", "Warning", false},   {3, 0, "Enabled", "Warning", false},
      {5, 5, "Enabled", "Warning", true},    {5, 0, "Enabled", "Warning", true},
      {6, 5, "Enabled", "Critical", false},  {6, 0, "Enabled", "Critical", false},
      {10, 5, "Disabled", "Warning", false}, {12, 0, "UnavailableOffline", "Critical", false},
      {0, 5, std::nullopt, "OK", false},     {0, 0, std::nullopt, std::nullopt, false},
      {4, 5, std::nullopt, "OK", false},
  };
  for (const Case& c : cases) {
    const DriveCondition condition = ConditionOf(c.operationalStatus, c.healthState);
    EXPECT_EQ(condition.state, c.state) << c.operationalStatus << "/" << c.healthState;
    EXPECT_EQ(condition.health, c.health) << c.operationalStatus << "/" << c.healthState;
    EXPECT_EQ(condition.failurePredicted, c.failurePredicted) << c.operationalStatus;
  }
}

TEST(RedfishDriveMapping, HealthKeyAsTheModuleAsksIt) {
  EXPECT_EQ(HealthKeyOf("0:3"), "03");
  EXPECT_EQ(HealthKeyOf("7"), "77");
  EXPECT_EQ(HealthKeyOf("a:b:c"), "ab:c");
  EXPECT_EQ(HealthKeyOf(":x"), "x");
  EXPECT_EQ(HealthKeyOf(""), "");
}

TEST(RedfishDriveMapping, ManufacturerAsThePackageClassGivesIt) {
  EXPECT_EQ(ManufacturerOf("WDC WD40EFRX-68N32N0", "WD40EFRX"), "WDC");
  EXPECT_EQ(ManufacturerOf("Seagate ST8000VN004-2M2101", "ST8000VN004"), "Seagate");
  EXPECT_EQ(ManufacturerOf("Samsung SSD 870 EVO 500GB", "MZ-77E500"), "Samsung SSD 870 EVO 500GB");
  EXPECT_EQ(ManufacturerOf("HUH721212AL5200", "HUH721212AL5200"), "HUH721212AL5200");
  EXPECT_EQ(ManufacturerOf("ACME", ""), "ACME");
  EXPECT_EQ(ManufacturerOf("", "x"), "");
}

TEST(RedfishDriveMapping, DurableNameOnlyForWorldWideNames) {
  const auto naa = DurableNameOf("wwn-0x5000c500a1b2c3d4");
  ASSERT_TRUE(naa);
  EXPECT_EQ(naa->format, "NAA");
  EXPECT_EQ(naa->name, "5000C500A1B2C3D4");
  const auto naa32 = DurableNameOf("wwn-0x600508b1001c2d3e4f5a6b7c8d9e0f10");
  ASSERT_TRUE(naa32);
  EXPECT_EQ(naa32->name, "600508B1001C2D3E4F5A6B7C8D9E0F10");
  const auto eui = DurableNameOf("eui-0025388b91b2e5a1");
  ASSERT_TRUE(eui);
  EXPECT_EQ(eui->format, "EUI");
  EXPECT_EQ(eui->name, "00:25:38:8B:91:B2:E5:A1");
  for (const char* id :
       {"0:3", "wwn-0x5000c500a1b2c3d", "wwn-0x5000c500a1b2c3dg", "wwn-eui.0025388b91b2e5a1",
        "eui-0025388b91b2e5a", "sata-WDC_X_Y", "WWN-0x5000c500a1b2c3d4", ""}) {
    EXPECT_FALSE(DurableNameOf(id)) << id;
  }
}

TEST(RedfishDriveMapping, DriveValuesOfOneDisk) {
  OrviDisk disk = SataDisk();
  disk.status = zeda::orvi::PredictiveFailure;
  OrviDiskHealth health;
  health.healthStatus = 5;
  health.message = "SMART predicts failure within 24 hours";
  OrviDiskIdentity identity;
  identity.product = "WDC WD40EFRX-68N32N0";
  identity.model = "WD40EFRX";
  identity.serial = "WD-WCC7K3CD9012";
  const DriveValues values = DriveValuesOf(disk, health, identity);
  EXPECT_EQ(values.name, "0:3");
  EXPECT_EQ(values.model, "WD40EFRX");
  EXPECT_EQ(values.manufacturer, "WDC");
  EXPECT_EQ(values.serialNumber, "WD-WCC7K3CD9012");
  EXPECT_EQ(values.revision, "82.00A82");
  EXPECT_EQ(values.capacityBytes, 4000787030016u);  // a whole number of blocks already
  EXPECT_EQ(values.mediaType, "HDD");
  EXPECT_EQ(values.protocol, std::optional<std::string_view>("SATA"));
  EXPECT_EQ(values.rotationSpeedRpm, 5400u);
  EXPECT_FALSE(values.durableName);
  EXPECT_EQ(values.condition.state, std::optional<std::string_view>("Enabled"));
  EXPECT_EQ(values.condition.health, std::optional<std::string_view>("Warning"));
  EXPECT_TRUE(values.condition.failurePredicted);
}

TEST(RedfishDriveMapping, CapacityIsWholeBlocks) {
  OrviDisk disk = SataDisk();
  disk.capacity = 1000;
  EXPECT_EQ(DriveValuesOf(disk, {}, {}).capacityBytes, 512u);
  disk.capacity = 511;
  EXPECT_EQ(DriveValuesOf(disk, {}, {}).capacityBytes, 0u);
}

TEST(RedfishDriveMapping, MediaLifeLeftOnlyWhenKnown) {
  const OrviDisk disk = SataDisk();
  EXPECT_EQ(DriveValuesOf(disk, {}, {}).mediaLifeLeftPercent, std::nullopt);
  EXPECT_EQ(DriveValuesOf(disk, {}, {}, std::nullopt).mediaLifeLeftPercent, std::nullopt);
  EXPECT_EQ(DriveValuesOf(disk, {}, {}, 97).mediaLifeLeftPercent, 97u);
  EXPECT_EQ(DriveValuesOf(disk, {}, {}, 0).mediaLifeLeftPercent, 0u);
  EXPECT_EQ(DriveValuesOf(disk, {}, {}, 100).mediaLifeLeftPercent, 100u);
  EXPECT_EQ(DriveValuesOf(disk, {}, {}, 130).mediaLifeLeftPercent, 100u);
}

TEST(RedfishDriveMapping, PoolsOfTheCimModel) {
  const PoolValues free = PoolValuesOf(1, 8001563222016);
  EXPECT_EQ(free.id, "PrimordialPool1");
  EXPECT_EQ(free.name, "Free");
  EXPECT_EQ(free.allocatedBytes, 8001563222016u);
  EXPECT_EQ(free.consumedBytes, 0u);  // RemainingManagedSpace is the whole total
  const PoolValues data = PoolValuesOf(2, 12002361090048);
  EXPECT_EQ(data.id, "PrimordialPool2");
  EXPECT_EQ(data.name, "Data");
  EXPECT_EQ(data.consumedBytes, 12002361090048u);
  EXPECT_EQ(PoolValuesOf(3, 0).name, "Spare");
  EXPECT_EQ(PoolValuesOf(4, 0).name, "Cache");
  EXPECT_THROW(PoolValuesOf(0, 0), std::out_of_range);
  EXPECT_THROW(PoolValuesOf(5, 0), std::out_of_range);
  EXPECT_EQ(PoolNumberOfId("PrimordialPool3"), 3);
  EXPECT_EQ(PoolNumberOfId("PrimordialPool5"), 0);
  EXPECT_EQ(PoolNumberOfId("primordialpool1"), 0);
  EXPECT_EQ(PoolNumberOfId(""), 0);
}

}  // namespace
}  // namespace zeda::test
