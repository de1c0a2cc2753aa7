#include <atomic>
#include <chrono>
#include <fstream>
#include <thread>

#include <gtest/gtest.h>

#include "ErrorLines.h"
#include "ModelInventories.h"
#include "Resources.h"
#include "TempDir.h"
#include "model/IndexCache.h"
#include "model/Json.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

using zeda::redfish::GetResource;
using zeda::redfish::IsInventoryPath;
using zeda::redfish::Reply;
using zeda::redfish::model::Json;
using zeda::redfish::model::ServiceIndexCache;

constexpr char kStorage[] = "/redfish/v1/Systems/nas1/Storage/1";

std::string Text(Reply& reply) {
  if (!reply.chunks) return reply.body;
  std::string body;
  while (reply.chunks(body)) {
  }
  return body;
}

Json Get(std::string_view path, int status = 200) {
  Reply reply = GetResource(path);
  EXPECT_EQ(reply.status, status) << path;
  return Json::parse(Text(reply));
}

void ExpectNotFound(std::string_view path, const std::string& type, const std::string& id) {
  const Json error = Get(path, 404);
  const Json& info = error["error"]["@Message.ExtendedInfo"][0];
  EXPECT_EQ(info["MessageId"], "Base.1.19.0.ResourceNotFound") << path;
  EXPECT_EQ(info["MessageArgs"], Json::array({type, id})) << path;
}

class RedfishResources : public ::testing::Test {
 protected:
  void SetUp() override {
    zeda::pelka::platform::NasRecord odd;
    odd.name = "shelf 2/b";
    odd.disks = {RedfishDisk("disk 9"), RedfishDisk("wwn-0x5000c500a1b2c3d4")};
    odd.disks[1].disk.interfaceType = "NVMe";
    odd.disks[1].disk.isSsd = true;
    zeda::pelka::platform::Inventory inventory;
    inventory.nas = {ExampleNas1(), odd};
    zeda::pelka::platform::UseInMemoryInventory(std::move(inventory));
  }
  void TearDown() override { zeda::pelka::platform::UseFileInventory(); }
};

TEST_F(RedfishResources, SystemsListEveryNasInOrder) {
  const Json systems = Get("/redfish/v1/Systems");
  EXPECT_EQ(systems["@odata.type"], "#ComputerSystemCollection.ComputerSystemCollection");
  EXPECT_EQ(systems["Members@odata.count"], 2);
  EXPECT_EQ(systems["Members"][0]["@odata.id"], "/redfish/v1/Systems/nas1");
  EXPECT_EQ(systems["Members"][1]["@odata.id"], "/redfish/v1/Systems/~7368656c6620322f62");
  const Json system = Get("/redfish/v1/Systems/~7368656c6620322f62/");
  EXPECT_EQ(system["Id"], "~7368656c6620322f62");
  EXPECT_EQ(system["Name"], "shelf 2/b");
  EXPECT_EQ(system["Storage"]["@odata.id"], "/redfish/v1/Systems/~7368656c6620322f62/Storage");
  EXPECT_EQ(system["Status"], Json({{"State", "Enabled"}, {"HealthRollup", "OK"}}));
  // 0:3 is degraded and 0:10 predicts its failure; none is critical.
  EXPECT_EQ(Get("/redfish/v1/Systems/nas1")["Status"]["HealthRollup"], "Warning");
  EXPECT_EQ(Get("/redfish/v1/Systems/nas1/Storage/1")["Status"]["HealthRollup"], "Warning");
}

TEST_F(RedfishResources, StorageLinksEveryDrive) {
  const Json collection = Get("/redfish/v1/Systems/nas1/Storage");
  EXPECT_EQ(collection["Members"], Json::array({{{"@odata.id", kStorage}}}));
  const Json storage = Get(kStorage);
  EXPECT_EQ(storage["@odata.type"], "#Storage.v1_15_0.Storage");
  EXPECT_EQ(storage["Id"], "1");
  EXPECT_EQ(storage["Drives@odata.count"], 8);
  EXPECT_EQ(storage["Drives"][7]["@odata.id"], std::string(kStorage) + "/Drives/0:10");
  EXPECT_EQ(storage["StoragePools"]["@odata.id"], std::string(kStorage) + "/StoragePools");
}

TEST_F(RedfishResources, DriveCarriesTheMappedValues) {
  const Json drive = Get(std::string(kStorage) + "/Drives/0:3");
  EXPECT_EQ(drive["@odata.type"], "#Drive.v1_18_0.Drive");
  EXPECT_EQ(drive["Id"], "0:3");
  EXPECT_EQ(drive["Name"], "0:3");
  EXPECT_EQ(drive["Model"], "Disk-0:3");
  EXPECT_EQ(drive["Manufacturer"], "ACME");
  EXPECT_EQ(drive["SerialNumber"], "SN-0:3");
  EXPECT_EQ(drive["Revision"], "FW-0:3");
  EXPECT_EQ(drive["CapacityBytes"], 4000787030016u);
  EXPECT_EQ(drive["MediaType"], "HDD");
  EXPECT_EQ(drive["Protocol"], "SATA");
  EXPECT_EQ(drive["RotationSpeedRPM"], 7200);
  EXPECT_FALSE(drive.contains("Identifiers"));
  EXPECT_FALSE(drive.contains("PredictedMediaLifeLeftPercent"));
  EXPECT_EQ(drive["Status"], Json({{"State", "Enabled"}, {"Health", "Warning"}}));
  EXPECT_EQ(drive["FailurePredicted"], false);
  EXPECT_EQ(
      drive["Links"]["StoragePools"],
      Json::array({{{"@odata.id", std::string(kStorage) + "/StoragePools/PrimordialPool2"}}}));

  const Json ssd = Get(std::string(kStorage) + "/Drives/0:6");
  EXPECT_EQ(ssd["MediaType"], "SSD");
  EXPECT_EQ(ssd["Links"]["StoragePools@odata.count"], 2);
  const Json failing = Get(std::string(kStorage) + "/Drives/0:10");
  EXPECT_EQ(failing["FailurePredicted"], true);
  EXPECT_EQ(failing["Links"]["StoragePools@odata.count"], 0);

  const std::string odd = "/redfish/v1/Systems/~7368656c6620322f62/Storage/1/Drives/";
  const Json nvme = Get(odd + "wwn-0x5000c500a1b2c3d4");
  EXPECT_EQ(nvme["Protocol"], "NVMe");
  EXPECT_EQ(nvme["Identifiers"],
            Json::array({{{"DurableName", "5000C500A1B2C3D4"}, {"DurableNameFormat", "NAA"}}}));
  EXPECT_EQ(Get(odd + "~6469736b2039")["Name"], "disk 9");
}

TEST_F(RedfishResources, MediaLifeLeftOfTheDiskRecordWhenKnown) {
  zeda::pelka::platform::NasRecord nas = ExampleNas1();
  nas.disks[5].mediaLifeLeftPercent = 42;  // 0:6
  nas.disks[6].mediaLifeLeftPercent = 0;   // 0:7
  // A later record of 0:1 is not the Drive's: its value does not show.
  nas.disks.push_back(RedfishDisk("0:1"));
  nas.disks.back().mediaLifeLeftPercent = 77;
  zeda::pelka::platform::Inventory inventory;
  inventory.nas = {nas};
  zeda::pelka::platform::UseInMemoryInventory(std::move(inventory));
  EXPECT_EQ(Get(std::string(kStorage) + "/Drives/0:6")["PredictedMediaLifeLeftPercent"], 42);
  EXPECT_EQ(Get(std::string(kStorage) + "/Drives/0:7")["PredictedMediaLifeLeftPercent"], 0);
  EXPECT_FALSE(
      Get(std::string(kStorage) + "/Drives/0:1").contains("PredictedMediaLifeLeftPercent"));
  EXPECT_FALSE(
      Get(std::string(kStorage) + "/Drives/0:3").contains("PredictedMediaLifeLeftPercent"));
}

TEST_F(RedfishResources, PoolsWithCapacityAndProvidingDrives) {
  const std::string pools = std::string(kStorage) + "/StoragePools";
  EXPECT_EQ(Get(pools)["Members@odata.count"], 4);
  const Json data = Get(pools + "/PrimordialPool2");
  EXPECT_EQ(data["@odata.type"], "#StoragePool.v1_8_0.StoragePool");
  EXPECT_EQ(data["Name"], "Data");
  EXPECT_EQ(data["Capacity"]["Data"]["AllocatedBytes"], 3 * 4000787030016u);
  EXPECT_EQ(data["Capacity"]["Data"]["ConsumedBytes"], 3 * 4000787030016u);
  const std::string source = pools + "/PrimordialPool2/CapacitySources/1";
  EXPECT_EQ(data["CapacitySources"][0]["@odata.id"], source);
  EXPECT_EQ(Get(source), data["CapacitySources"][0]);
  const Json drives = Get(source + "/ProvidingDrives");
  EXPECT_EQ(drives["Members@odata.count"], 5);
  EXPECT_EQ(drives["Members"][3]["@odata.id"], std::string(kStorage) + "/Drives/0:6");
  const Json free = Get(pools + "/PrimordialPool1");
  EXPECT_EQ(free["Capacity"]["Data"]["AllocatedBytes"], 8001563222016u);
  EXPECT_EQ(free["Capacity"]["Data"]["ConsumedBytes"], 0);
}

TEST_F(RedfishResources, OddAndUnknownPathsAreNotFound) {
  const std::string drives = std::string(kStorage) + "/Drives/";
  ExpectNotFound(drives + "0:99", "Drive", "0:99");
  ExpectNotFound(drives, "Storage", "Drives");  // one trailing "/" is allowed
  ExpectNotFound(drives + "/", "Drive", "");
  ExpectNotFound(drives + "..", "Drive", "..");
  ExpectNotFound(drives + ".", "Drive", ".");
  ExpectNotFound(drives + "%2F", "Drive", "%2F");
  ExpectNotFound(drives + "0:3/x", "Drive", "0:3");
  ExpectNotFound(drives + "~303a33", "Drive", "~303a33");  // "0:3" has its plain segment
  ExpectNotFound("/redfish/v1/Systems/nas9", "ComputerSystem", "nas9");
  ExpectNotFound("/redfish/v1/Systems//Storage", "ComputerSystem", "");
  ExpectNotFound("/redfish/v1/Systems/../Systems/nas1", "ComputerSystem", "..");
  ExpectNotFound("/redfish/v1/Systems/nas1/Storage/2", "Storage", "2");
  ExpectNotFound("/redfish/v1/Systems/nas1/Storage/1/Drives", "Storage", "Drives");
  ExpectNotFound("/redfish/v1/Systems/nas1/Storage/1/StoragePools/PrimordialPool9", "StoragePool",
                 "PrimordialPool9");
  ExpectNotFound("/redfish/v1/Systems/nas1/Bios", "ComputerSystem", "Bios");
  ExpectNotFound("/redfish/v1/Chassis", "Resource", "/redfish/v1/Chassis");
  ExpectNotFound(std::string("/redfish/v1/Systems/\xff\x00", 22), "ComputerSystem",
                 "\xef\xbf\xbd" + std::string(1, '\0'));
}

TEST_F(RedfishResources, WhichPathsAreAnsweredHere) {
  EXPECT_TRUE(IsInventoryPath("/redfish/v1/Systems"));
  EXPECT_TRUE(IsInventoryPath("/redfish/v1/Systems/x/y"));
  EXPECT_TRUE(IsInventoryPath("/redfish/v1/$metadata"));
  EXPECT_TRUE(IsInventoryPath("/redfish/v1/odata"));
  EXPECT_FALSE(IsInventoryPath("/redfish/v1/SystemsX"));
  EXPECT_FALSE(IsInventoryPath("/redfish/v1/SessionService"));
  EXPECT_FALSE(IsInventoryPath("/redfish/v1"));
}

TEST_F(RedfishResources, MetadataAndServiceDocument) {
  Reply metadata = GetResource("/redfish/v1/$metadata");
  EXPECT_EQ(metadata.status, 200);
  EXPECT_EQ(
      metadata.headers,
      (std::vector<std::pair<std::string, std::string>>{{"Content-Type", "application/xml"}}));
  for (const char* include : {"<edmx:Include Namespace=\"Drive.v1_18_0\"/>",
                              "<edmx:Include Namespace=\"StoragePool.v1_8_0\"/>",
                              "http://redfish.dmtf.org/schemas/swordfish/v1/StoragePool_v1.xml",
                              "Extends=\"ServiceRoot.v1_16_0.ServiceContainer\""}) {
    EXPECT_NE(metadata.body.find(include), std::string::npos) << include;
  }
  const Json odata = Get("/redfish/v1/odata");
  EXPECT_EQ(odata["value"][1],
            Json({{"name", "Systems"}, {"kind", "Singleton"}, {"url", "/redfish/v1/Systems"}}));
  const Json root = Json::parse(zeda::redfish::ServiceRootBody());
  EXPECT_EQ(root["Id"], "RootService");
  EXPECT_EQ(root["UUID"], Json::parse(zeda::redfish::ServiceRootBody())["UUID"]);
  EXPECT_EQ(root["Links"]["Sessions"]["@odata.id"], "/redfish/v1/SessionService/Sessions");
}

TEST_F(RedfishResources, OneIndexPerInventory) {
  Get(kStorage);
  const std::uint64_t builds = ServiceIndexCache().Builds();
  for (int i = 0; i < 50; ++i) Get(std::string(kStorage) + "/Drives/0:1");
  EXPECT_EQ(ServiceIndexCache().Builds(), builds);

  zeda::pelka::platform::Inventory changed;
  changed.nas = {ExampleNas1()};
  changed.nas[0].disks[0].disk.firmwareVersion = "NEW";
  changed.nas[0].disks.push_back(RedfishDisk("0:11"));
  zeda::pelka::platform::UseInMemoryInventory(std::move(changed));
  EXPECT_EQ(Get(std::string(kStorage) + "/Drives/0:1")["Revision"], "NEW");
  EXPECT_EQ(Get(kStorage)["Drives@odata.count"], 9);
  EXPECT_EQ(Get("/redfish/v1/Systems")["Members@odata.count"], 1);
  EXPECT_EQ(ServiceIndexCache().Builds(), builds + 1);
}

TEST_F(RedfishResources, LargeNasStreamsAndFindsOneDriveWithoutAWalk) {
  zeda::pelka::platform::Inventory inventory;
  inventory.nas = {LargeNas("big", 100000)};
  zeda::pelka::platform::UseInMemoryInventory(std::move(inventory));
  Reply storage = GetResource("/redfish/v1/Systems/big/Storage/1");
  ASSERT_TRUE(storage.chunks);
  std::size_t largest = 0;
  std::string body;
  for (bool more = true; more;) {
    std::string piece;
    more = storage.chunks(piece);
    largest = std::max(largest, piece.size());
    body += piece;
  }
  EXPECT_LT(largest, 100000u);
  const Json parsed = Json::parse(body);
  EXPECT_EQ(parsed["Drives@odata.count"], 100000);
  EXPECT_EQ(parsed["Drives"][99999]["@odata.id"],
            "/redfish/v1/Systems/big/Storage/1/Drives/d099999");

  const std::uint64_t builds = ServiceIndexCache().Builds();
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(
        Get("/redfish/v1/Systems/big/Storage/1/Drives/d0" + std::to_string(10000 + i * 777))["Id"],
        "d0" + std::to_string(10000 + i * 777));
  }
  const auto elapsed = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(ServiceIndexCache().Builds(), builds);
  std::cout << "100 drives of a 100,000-disk NAS: "
            << std::chrono::duration_cast<std::chrono::microseconds>(elapsed).count() / 100
            << " us each\n";
}

}  // namespace
}  // namespace zeda::test

namespace zeda::test {
namespace {

// Eight clients ask for drives while the inventory is replaced again and
// again: every answer is whole and belongs to one of the inventories, and no
// index outlives what it was built from (run under the sanitizers too).
TEST(RedfishResourcesConcurrency, ChangingInventoryUnderEightClients) {
  constexpr int kVersions = 40;
  auto versionOf = [](int version) {
    zeda::pelka::platform::Inventory inventory;
    inventory.nas = {LargeNas("big", 2000)};
    for (auto& disk : inventory.nas[0].disks) disk.disk.firmwareVersion = std::to_string(version);
    return inventory;
  };
  zeda::pelka::platform::UseInMemoryInventory(versionOf(0));
  std::atomic<bool> stop{false};
  std::atomic<int> bad{0};
  std::atomic<long> answers{0};
  std::vector<std::thread> clients;
  for (int c = 0; c < 8; ++c) {
    clients.emplace_back([&, c] {
      for (int i = 0; !stop; ++i) {
        const std::string id = "d00" + std::to_string(1000 + (c * 131 + i * 17) % 1000);
        Reply reply = GetResource("/redfish/v1/Systems/big/Storage/1/Drives/" + id);
        const Json drive = Json::parse(Text(reply), nullptr, false);
        const bool whole = reply.status == 200 && drive.is_object() && drive["Id"] == id &&
                           std::stoi(drive["Revision"].get<std::string>()) < kVersions;
        if (!whole) ++bad;
        ++answers;
      }
    });
  }
  for (int version = 1; version < kVersions; ++version) {
    zeda::pelka::platform::UseInMemoryInventory(versionOf(version));
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  stop = true;
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(bad, 0);
  EXPECT_GT(answers, 0);
  EXPECT_EQ(Get("/redfish/v1/Systems/big/Storage/1/Drives/d001234")["Revision"],
            std::to_string(kVersions - 1));
  zeda::pelka::platform::UseFileInventory();
}

}  // namespace
}  // namespace zeda::test

namespace zeda::test {
namespace {

TEST(RedfishResourcesFailure, UnreadableInventoryAnswersInternalError) {
  TempDir dir;
  const std::string file = dir.file("inventory.json");
  {
    std::ofstream out(file);
    out << "{\"nas\": [";  // cut short
  }
  ::setenv("PELKA_INVENTORY", file.c_str(), 1);
  zeda::pelka::platform::UseFileInventory();
  const ErrorLines errors;
  for (const char* path : {"/redfish/v1/Systems", "/redfish/v1/Systems/nas1/Storage/1/Drives/0:1",
                           "/redfish/v1/Systems/a\nE1125 forged\\x"}) {
    Reply reply = GetResource(path);
    EXPECT_EQ(reply.status, 500) << path;
    EXPECT_EQ(Json::parse(reply.body)["error"]["code"], "Base.1.19.0.InternalError") << path;
  }
  // One line per failure, the client's bytes never breaking a line.
  const std::vector<std::string> lines = errors.Lines();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0].rfind("Redfish: GET /redfish/v1/Systems: Bad inventory file " + file, 0), 0u)
      << lines[0];
  EXPECT_EQ(lines[2].rfind("Redfish: GET /redfish/v1/Systems/a\\x0aE1125 forged\\x5cx: ", 0), 0u)
      << lines[2];
  // The documents that read no inventory still answer.
  EXPECT_EQ(GetResource("/redfish/v1/$metadata").status, 200);
  ::unsetenv("PELKA_INVENTORY");
}

}  // namespace
}  // namespace zeda::test

namespace zeda::test {
namespace {

// Paths made of the service's own words, odd segments and random bytes: every
// answer is 200 or 404 with a body of JSON, never anything else.
TEST(RedfishResourcesHostile, RandomPathsAnswer200Or404) {
  zeda::pelka::platform::Inventory inventory;
  inventory.nas = {ExampleNas1()};
  zeda::pelka::platform::UseInMemoryInventory(std::move(inventory));
  const std::vector<std::string> words = {"Systems",
                                          "nas1",
                                          "Storage",
                                          "1",
                                          "Drives",
                                          "0:3",
                                          "StoragePools",
                                          "PrimordialPool2",
                                          "CapacitySources",
                                          "ProvidingDrives",
                                          "",
                                          ".",
                                          "..",
                                          "~",
                                          "~30",
                                          "%2F",
                                          "$metadata",
                                          "odata",
                                          std::string("\0", 1),
                                          "\xff\xfe",
                                          "0:3/"};
  std::uint64_t state = 42;
  auto next = [&state] {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<std::size_t>(state >> 33);
  };
  for (int i = 0; i < 20000; ++i) {
    std::string path = "/redfish/v1/";
    const std::size_t segments = next() % 9;
    for (std::size_t s = 0; s < segments; ++s) {
      if (s != 0) path += '/';
      if (next() % 8 == 0) {
        for (std::size_t b = next() % 6; b > 0; --b) path += static_cast<char>(next() % 256);
      } else {
        path += words[next() % words.size()];
      }
    }
    Reply reply = GetResource(path);
    ASSERT_TRUE(reply.status == 200 || reply.status == 404) << reply.status << " " << path;
    const std::string text = Text(reply);
    if (reply.headers.empty()) {  // JSON unless a Content-Type (XML of $metadata) is given
      ASSERT_FALSE(Json::parse(text, nullptr, false).is_discarded()) << path;
    }
  }
  zeda::pelka::platform::UseFileInventory();
}

}  // namespace
}  // namespace zeda::test
