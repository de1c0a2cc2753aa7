// ZEDA_SoftwareIdentity_Disk through the module: one firmware identity per
// disk from the disk list alone, and the placeholder of GetInstance.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Fixtures.h"

namespace zeda::test {
namespace {

using zeda::host::Instance;
using zeda::host::Outcome;
using zeda::host::Value;

const char kSoftwareClass[] = "ZEDA_SoftwareIdentity_Disk";

Outcome EnumerateSoftwareIdentities() {
  return ModuleHost().enumerateInstances(Provider(kSoftwareClass), ClassPath(kSoftwareClass));
}

const std::vector<std::string> kSoftwarePropertyNames = {"InstanceID", "VersionString"};
const std::vector<std::string> kSoftwarePropertyTypes = {"string", "string"};

TEST(SoftwareIdentityEnumerate, InstanceIdKeepsTheColonOfTheIdentifier) {
  nlohmann::json disk = DiskJson("0:3");
  disk["firmwareVersion"] = "82.00A82";
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {disk})}));

  const Outcome outcome = EnumerateSoftwareIdentities();

  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  const std::vector<Instance> instances = outcome.instances();
  ASSERT_EQ(instances.size(), 1u);
  const Instance& identity = instances.front();
  EXPECT_EQ(identity.path(), ClassPath(kSoftwareClass));
  EXPECT_EQ(PropertyNames(identity), kSoftwarePropertyNames);
  EXPECT_EQ(PropertyTypes(identity), kSoftwarePropertyTypes);
  EXPECT_EQ(identity.property("InstanceID"), Value::string("ZEDA:nas1:Software(DISK0:3)"));
  EXPECT_EQ(identity.property("VersionString"), Value::string("82.00A82"));
}

TEST(SoftwareIdentityEnumerate, AnEmptyFirmwareVersionIsAnEmptyString) {
  nlohmann::json disk = DiskJson("0:1");
  disk["firmwareVersion"] = "";
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {disk})}));
  const std::vector<Instance> instances = EnumerateSoftwareIdentities().instances();
  ASSERT_EQ(instances.size(), 1u);
  const Value& version = instances.front().property("VersionString");
  EXPECT_FALSE(version.isNull());
  EXPECT_EQ(version, Value::string(""));
}

TEST(SoftwareIdentityEnumerate, OneInstancePerDiskWithOnlyTheDiskListAsked) {
  const ScopedInventory inventory(
      InventoryJson({NasJson("nas1", {DiskJson("0:1"), DiskJson("0:10")}), NasJson("none", {}),
                     NasJson("nas2", {DiskJson("7")})}));
  const ScopedTrace trace;

  const Outcome outcome = EnumerateSoftwareIdentities();

  ASSERT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  std::vector<std::string> ids;
  for (const Instance& identity : outcome.instances()) {
    ids.push_back(identity.property("InstanceID").str());
    // DiskJson gives every disk the same firmware version.
    EXPECT_EQ(identity.property("VersionString"), Value::string("FW1"));
  }
  EXPECT_EQ(ids,
            (std::vector<std::string>{"ZEDA:nas1:Software(DISK0:1)", "ZEDA:nas1:Software(DISK0:10)",
                                      "ZEDA:nas2:Software(DISK7)"}));
  EXPECT_EQ(trace.calls(), (std::vector<TraceCall>{{"-", "GetNasList", ""},
                                                   {"nas1", "GetOrvi", ""},
                                                   {"nas1", "GetDiskList", ""},
                                                   {"none", "GetOrvi", ""},
                                                   {"none", "GetDiskList", ""},
                                                   {"nas2", "GetOrvi", ""},
                                                   {"nas2", "GetDiskList", ""}}));
}

TEST(SoftwareIdentityEnumerate, EmptyNasListAnswersNothingButDone) {
  const ScopedInventory inventory(InventoryJson({}));
  const Outcome outcome = EnumerateSoftwareIdentities();
  EXPECT_EQ(outcome.code(), CMPI_RC_OK);
  EXPECT_TRUE(outcome.done);
  EXPECT_TRUE(outcome.results.empty());
}

TEST(SoftwareIdentityGetInstance, AnyPathGetsThePlaceholderWithoutAskingTheNas) {
  const ScopedInventory inventory(InventoryJson({NasJson("nas1", {DiskJson("0:3")})}));
  const ScopedTrace trace;
  const std::vector<zeda::host::ObjectPath> paths = {
      Path(std::string(kNamespace) +
           ":ZEDA_SoftwareIdentity_Disk.InstanceID=\"ZEDA:nas1:Software(DISK0:3)\""),
      Path(std::string(kNamespace) + ":ZEDA_SoftwareIdentity_Disk.InstanceID=\"bogus\""),
      Path(std::string(kNamespace) + ":ZEDA_SoftwareIdentity_Disk")};

  for (const zeda::host::ObjectPath& path : paths) {
    SCOPED_TRACE(path.toString());
    const Outcome outcome = ModuleHost().getInstance(Provider(kSoftwareClass), path);
    ASSERT_EQ(outcome.code(), CMPI_RC_OK);
    EXPECT_TRUE(outcome.done);
    const std::vector<Instance> instances = outcome.instances();
    ASSERT_EQ(instances.size(), 1u);
    EXPECT_EQ(instances.front().path(), ClassPath(kSoftwareClass));
    EXPECT_EQ(PropertyNames(instances.front()), kSoftwarePropertyNames);
    EXPECT_EQ(instances.front().property("InstanceID"), Value::string("ZEDA_InstanceID"));
    EXPECT_EQ(instances.front().property("VersionString"), Value::string("ZEDA_VersionString"));
  }
  EXPECT_TRUE(trace.calls().empty());
}

}  // namespace
}  // namespace zeda::test
