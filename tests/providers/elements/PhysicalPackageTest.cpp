// ZEDA_PhysicalPackage_Disk through the module: enumeration with the identity
// query and the manufacturer rule, and the placeholder of GetInstance.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Fixtures.h"

namespace zeda::test {
namespace {

using zeda::host::Instance;
using zeda::host::Outcome;
using zeda::host::Value;

const char kPackageClass[] = "ZEDA_PhysicalPackage_Disk";

Outcome EnumeratePackages() {
  return ModuleHost().enumerateInstances(Provider(kPackageClass), ClassPath(kPackageClass));
}

const std::vector<std::string> kPackagePropertyNames = {"CreationClassName", "Tag", "Manufacturer",
                                                        "Model", "SerialNumber"};
const std::vector<std::string> kPackagePropertyTypes(5, "string");

// The Manufacturer reported for a disk whose identity holds these texts.
std::string ManufacturerOf(const std::string& product, const std::string& model) {
  nlohmann::json disk = DiskJson("0:1");
  disk["identity"] = {{"product", product}, {"model", model}, {"serial", "S"}};
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {disk})}));
  const Outcome outcome = EnumeratePackages();
  EXPECT_EQ(outcome.code(), CMPI_RC_OK);
  const std::vector<Instance> instances = outcome.instances();
  EXPECT_EQ(instances.size(), 1u);
  if (instances.empty()) {
    return "<none>";
  }
  EXPECT_EQ(instances.front().property("Model"), Value::string(model));
  return instances.front().property("Manufacturer").str();
}

TEST(PhysicalPackageEnumerate, EveryPropertyInOrderWithItsTypeAndValue) {
  nlohmann::json disk = DiskJson("0:3");
  disk["identity"] = {
      {"product", "WDC WD40EFRX"}, {"model", "WD40EFRX"}, {"serial", "WD-WCC7K3CD9012"}};
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {disk})}));

  const Outcome outcome = EnumeratePackages();

  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  const std::vector<Instance> instances = outcome.instances();
  ASSERT_EQ(instances.size(), 1u);
  const Instance& package = instances.front();
  EXPECT_EQ(package.path(), ClassPath(kPackageClass));
  EXPECT_EQ(PropertyNames(package), kPackagePropertyNames);
  EXPECT_EQ(PropertyTypes(package), kPackagePropertyTypes);
  EXPECT_EQ(package.property("CreationClassName"), Value::string("ZEDA_PhysicalPackage_Disk"));
  EXPECT_EQ(package.property("Tag"), Value::string("ZEDA:nas1:DISK0:3"));
  EXPECT_EQ(package.property("Manufacturer"), Value::string("WDC"));
  EXPECT_EQ(package.property("Model"), Value::string("WD40EFRX"));
  EXPECT_EQ(package.property("SerialNumber"), Value::string("WD-WCC7K3CD9012"));
}

TEST(PhysicalPackageEnumerate, ManufacturerIsWhatStandsBeforeTheModelLessOneSeparator) {
  EXPECT_EQ(ManufacturerOf("WDC WD40EFRX-68N32N0", "WD40EFRX"), "WDC");
  EXPECT_EQ(ManufacturerOf("Seagate ST8000VN004-2M2101", "ST8000VN004"), "Seagate");
  EXPECT_EQ(ManufacturerOf("X-M", "M"), "X");
}

TEST(PhysicalPackageEnumerate, ProductEqualToModelGivesTheWholeProduct) {
  EXPECT_EQ(ManufacturerOf("HDWG460", "HDWG460"), "HDWG460");
}

TEST(PhysicalPackageEnumerate, ProductWithoutTheModelGivesTheWholeProduct) {
  EXPECT_EQ(ManufacturerOf("Samsung SSD 870 EVO 500GB", "MZ-77E500"), "Samsung SSD 870 EVO 500GB");
  // The search is case-sensitive.
  EXPECT_EQ(ManufacturerOf("wdc wd40efrx", "WD40EFRX"), "wdc wd40efrx");
}

TEST(PhysicalPackageEnumerate, ModelAtTheStartOrEmptyGivesTheWholeProduct) {
  EXPECT_EQ(ManufacturerOf("WD40EFRX-68N32N0", "WD40EFRX"), "WD40EFRX-68N32N0");
  EXPECT_EQ(ManufacturerOf("ACME AX100", ""), "ACME AX100");
  EXPECT_EQ(ManufacturerOf("", ""), "");
}

TEST(PhysicalPackageEnumerate, TwoSpacesBeforeTheModelKeepOneTrailingSpace) {
  EXPECT_EQ(ManufacturerOf("A  M", "M"), "A ");
}

TEST(PhysicalPackageEnumerate, OnlyTheFirstOccurrenceOfTheModelCounts) {
  EXPECT_EQ(ManufacturerOf("AB X AB", "AB"), "AB X AB");  // first at 0
  EXPECT_EQ(ManufacturerOf("V M M", "M"), "V");
}

TEST(PhysicalPackageEnumerate, AsksForTheIdentityOncePerDiskWithTheIdentifierVerbatim) {
  const ScopedInventory inventory(InventoryJson(
      {NasJson("nas1", {DiskJson("0:3"), DiskJson("0:10")}), NasJson("nas2", {DiskJson("7")})}));
  const ScopedTrace trace;

  const Outcome outcome = EnumeratePackages();

  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  std::vector<std::string> tags;
  std::vector<std::string> serials;
  for (const Instance& package : outcome.instances()) {
    tags.push_back(package.property("Tag").str());
    serials.push_back(package.property("SerialNumber").str());
  }
  EXPECT_EQ(tags, (std::vector<std::string>{"ZEDA:nas1:DISK0:3", "ZEDA:nas1:DISK0:10",
                                            "ZEDA:nas2:DISK7"}));
  EXPECT_EQ(serials, (std::vector<std::string>{"SN-0:3", "SN-0:10", "SN-7"}));
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{{"-", "GetNasList", ""},
                                                   {"nas1", "GetOrvi", ""},
                                                   {"nas1", "GetDiskList", ""},
                                                   {"nas1", "GetDiskIdentity", "0:3"},
                                                   {"nas1", "GetDiskIdentity", "0:10"},
                                                   {"nas2", "GetOrvi", ""},
                                                   {"nas2", "GetDiskList", ""},
                                                   {"nas2", "GetDiskIdentity", "7"}}));
}

TEST(PhysicalPackageEnumerate, EmptyNasListAnswersNothingButDone) {
  const ScopedInventory inventory(InventoryJson({}));
  const Outcome outcome = EnumeratePackages();
  EXPECT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  EXPECT_TRUE(outcome.results.empty());
}

TEST(PhysicalPackageGetInstance, AnyPathGetsThePlaceholderWithoutAskingTheNas) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:3")})}));
  const ScopedTrace trace;
  const std::vector<zeda::host::ObjectPath> paths = {
      Path(std::string(kNamespace) +
           ":ZEDA_PhysicalPackage_Disk.CreationClassName=\"ZEDA_PhysicalPackage_Disk\","
           "Tag=\"ZEDA:nas1:DISK0:3\""),
      Path(std::string(kNamespace) + ":ZEDA_PhysicalPackage_Disk.Tag=\"ZEDA:ghost:DISK9\""),
      Path(std::string(kNamespace) + ":ZEDA_PhysicalPackage_Disk")};

  for (const zeda::host::ObjectPath& path : paths) {
    SCOPED_TRACE(path.toString());
    const Outcome outcome = ModuleHost().getInstance(Provider(kPackageClass), path);
    ASSERT_EQ(outcome.code(), CMPI_RC_OK);
    EXPECT_TRUE(outcome.done);
    const std::vector<Instance> instances = outcome.instances();
    ASSERT_EQ(instances.size(), 1u);
    const Instance& package = instances.front();
    EXPECT_EQ(package.path(), ClassPath(kPackageClass));
    EXPECT_EQ(PropertyNames(package), kPackagePropertyNames);
    EXPECT_EQ(PropertyTypes(package), kPackagePropertyTypes);
    EXPECT_EQ(package.property("CreationClassName"), Value::string("ZEDA_CreationClassName"));
    EXPECT_EQ(package.property("Tag"), Value::string("ZEDA_Tag"));
    EXPECT_EQ(package.property("Manufacturer"), Value::string("ZEDA_Manufacturer"));
    EXPECT_EQ(package.property("Model"), Value::string("ZEDA_Model"));
    EXPECT_EQ(package.property("SerialNumber"), Value::string("ZEDA_SerialNumber"));
  }
  EXPECT_TRUE(trace.calls().empty());
}

}  // namespace
}  // namespace zeda::test
