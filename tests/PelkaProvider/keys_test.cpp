#include <gtest/gtest.h>

#include <boost/format.hpp>

#include "providers/common/Keys.h"

namespace zeda::test {
namespace {

using namespace zeda::pelka;

TEST(Keys, SystemNameIsZedaColonName) {
  EXPECT_EQ(SystemName("nas1"), "ZEDA:nas1");
  EXPECT_EQ(SystemName("Nas-East"), "ZEDA:Nas-East");  // no case change
  EXPECT_EQ(SystemName(""), "ZEDA:");
}

TEST(Keys, StripFirstColonRemovesOnlyTheFirstColon) {
  EXPECT_EQ(StripFirstColon("0:3"), "03");
  EXPECT_EQ(StripFirstColon("0:10"), "010");
  EXPECT_EQ(StripFirstColon("1:2:3"), "12:3");
  EXPECT_EQ(StripFirstColon(":5"), "5");
  EXPECT_EQ(StripFirstColon("5:"), "5");
}

TEST(Keys, StripFirstColonWritesAnIdWithoutColonTwice) {
  EXPECT_EQ(StripFirstColon("7"), "77");
  EXPECT_EQ(StripFirstColon("sda"), "sdasda");
  EXPECT_EQ(StripFirstColon(""), "");
}

TEST(Keys, NasNameIsTheTextAfterTheLastColon) {
  EXPECT_EQ(NasNameFromSystemName("ZEDA:nas1"), "nas1");
  EXPECT_EQ(NasNameFromSystemName("ZEDA:site:nas2"), "nas2");
  EXPECT_EQ(NasNameFromSystemName("nas3"), "nas3");
  EXPECT_EQ(NasNameFromSystemName("ZEDA:"), "");
}

TEST(Keys, FormatsAreThePositionalStrings) {
  EXPECT_STREQ(kDiskKeyFormat, "%1%:DISK%2%");
  EXPECT_STREQ(kExtentKeyFormat, "%1%:DiskExtent%2%");
  EXPECT_STREQ(kSoftwareKeyFormat, "ZEDA:%1%:Software(DISK%2%)");
  EXPECT_STREQ(kSystemSoftwareKeyFormat, "%1%:Software(DISK%2%)");
}

TEST(Keys, DiskKeysOfNas1Disk0Colon3) {
  EXPECT_EQ(DiskDeviceId("ZEDA:nas1", "0:3"), "ZEDA:nas1:DISK0:3");
  EXPECT_EQ(PackageTag("ZEDA:nas1", "0:3"), "ZEDA:nas1:DISK0:3");
  EXPECT_EQ(ExtentDeviceId("ZEDA:nas1", "0:3"), "ZEDA:nas1:DiskExtent0:3");
  EXPECT_EQ(SoftwareInstanceId("nas1", "0:3"), "ZEDA:nas1:Software(DISK0:3)");
  EXPECT_EQ(SystemSoftwareInstanceId("ZEDA:nas1", "0:3"), "ZEDA:nas1:Software(DISK0:3)");
}

TEST(Keys, IdentifiersAreNeverPaddedOrRenumbered) {
  EXPECT_EQ(DiskDeviceId("ZEDA:nas1", "0:10"), "ZEDA:nas1:DISK0:10");
  EXPECT_EQ(ExtentDeviceId("ZEDA:nas1", "0:10"), "ZEDA:nas1:DiskExtent0:10");
  EXPECT_EQ(SoftwareInstanceId("nas1", "0:10"), "ZEDA:nas1:Software(DISK0:10)");
  EXPECT_EQ(DiskDeviceId("ZEDA:nas1", "007"), "ZEDA:nas1:DISK007");
  EXPECT_EQ(StripFirstColon("0:10"), "010");
}

TEST(Keys, ArgumentsAreInsertedAsIs) {
  // Format directives inside an argument are not interpreted.
  EXPECT_EQ(DiskDeviceId("ZEDA:n%1%", "x%2%"), "ZEDA:n%1%:DISKx%2%");
  EXPECT_EQ(SoftwareInstanceId("nas 1", "5"), "ZEDA:nas 1:Software(DISK5)");
}

TEST(Keys, SoftwareInstanceIdAgreesWithTheSystemNameForm) {
  for (const char* id : {"5", "0:3", "0:10", "a:b:c"}) {
    EXPECT_EQ(SystemSoftwareInstanceId(SystemName("nas1"), id), SoftwareInstanceId("nas1", id));
  }
}

TEST(Keys, HelpersMatchBoostFormatOfTheConstants) {
  EXPECT_EQ(DiskDeviceId("S", "I"), (boost::format(kDiskKeyFormat) % "S" % "I").str());
  EXPECT_EQ(ExtentDeviceId("S", "I"), (boost::format(kExtentKeyFormat) % "S" % "I").str());
}

}  // namespace
}  // namespace zeda::test
