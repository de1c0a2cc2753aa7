// The recorded linux machine served through a configuration file, with the
// wear indicators of WearRecords.h in its SMART answers: the Drive resource
// shows the media life left of the disks that report it, and only of them.
#include <chrono>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "Resources.h"
#include "TempDir.h"
#include "WearRecords.h"
#include "inventory/Library.h"
#include "model/Json.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

using namespace std::chrono_literals;
using zeda::redfish::GetResource;
using zeda::redfish::Reply;
using zeda::redfish::model::Json;

const std::string kFixture = ZEDA_LINUX_FIXTURE;
constexpr char kDrives[] = "/redfish/v1/Systems/fx/Storage/1/Drives/";

Json Drive(const std::string& id) {
  const Reply reply = GetResource(kDrives + id);
  EXPECT_EQ(reply.status, 200) << id;
  return Json::parse(reply.body);
}

class LinuxDrives : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(dir_.file("pelka.json"))
        << R"({"programData": ")" << dir_.path() << R"(", "sources": [{"type": "linux", )"
        << R"("nas": "fx", "root": ")" << kFixture << R"(/root", "smartctl": ")" << kFixture
        << R"(/smartctl", "smartTtlSeconds": 300, "rescanSeconds": 0.1}]})"
        << "\n";
    zeda::pelka::platform::UseFileInventory();
  }
  // The library is given a configuration without the machine before the
  // records go, so that no rescan asks for them afterwards.
  void TearDown() override {
    std::ofstream(dir_.file("pelka.json"))
        << R"({"programData": ")" << dir_.path() << R"(", "sources": []})"
        << "\n";
    zeda::pelka::platform::UseFileInventory();
    const zeda::pelka::InventoryHold hold;
    EXPECT_TRUE(zeda::pelka::GetNasList().empty());
  }

  // The Drive of `id` once the disk's first SMART answer is served (its
  // Health is known): the linux source may still be asking when the first
  // look-up is answered.
  static Json AnsweredDrive(const std::string& id) {
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    Json drive = Drive(id);
    while (!drive["Status"].contains("Health") && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(20ms);
      drive = Drive(id);
    }
    return drive;
  }

  const WearRecords records_{kFixture};
  TempDir dir_;
  ScopedEnv smartRecords_{"ZEDA_SMART_RECORDS", records_.path()};
  ScopedEnv config_{"PELKA_CONFIG", dir_.file("pelka.json")};
};

TEST_F(LinuxDrives, ShowTheMediaLifeLeftWhereSmartTellsIt) {
  const Json nvme = AnsweredDrive("eui-0025388b91b28888");
  ASSERT_EQ(nvme["Status"], Json({{"State", "Enabled"}, {"Health", "OK"}}));
  EXPECT_EQ(nvme["PredictedMediaLifeLeftPercent"], 97);
  // Used beyond its rated endurance: none left.
  EXPECT_EQ(AnsweredDrive("wwn-0x5002538e45555555")["PredictedMediaLifeLeftPercent"], 0);
  // A hard disk's answer has no wear indicator, and a disk without SMART none.
  const Json hdd = AnsweredDrive("wwn-0x50014ee2b1111111");
  ASSERT_EQ(hdd["Status"]["Health"], "OK");
  EXPECT_FALSE(hdd.contains("PredictedMediaLifeLeftPercent"));
  EXPECT_FALSE(Drive("sata-OLDDISK_160_OD7777777").contains("PredictedMediaLifeLeftPercent"));
  // It comes last but for the links: the properties before it keep their order.
  const auto failure = nvme.find("FailurePredicted");
  ASSERT_NE(failure, nvme.end());
  EXPECT_EQ(std::next(failure).key(), "PredictedMediaLifeLeftPercent");
  EXPECT_EQ(std::next(failure, 2).key(), "Links");
}

}  // namespace
}  // namespace zeda::test
