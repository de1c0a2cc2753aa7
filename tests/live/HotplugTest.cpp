// Disks and paths plugged in and pulled out of a copy of a recorded machine
// while the library serves it in configuration mode: the NAS API shows each
// change after the refresher's next rescan, without a restart.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <set>
#include <thread>

#include "Fixtures.h"
#include "MachineCopy.h"
#include "inventory/Library.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

// rescanSeconds of the served machine, and the longest a change may take to
// show: the rescan interval, one round (milliseconds) and a wide margin for
// a loaded machine.
constexpr auto kRescan = 200ms;
constexpr auto kShowsWithin = 3s;

long Milliseconds(Clock::duration duration) {
  return static_cast<long>(std::chrono::duration_cast<std::chrono::milliseconds>(duration).count());
}

std::set<std::string> ServedDisks() {
  const pelka::InventoryHold hold;
  std::set<std::string> ids;
  for (const zeda::orvi::OrviDisk& disk :
       pelka::GetOrvi(pelka::Nas::Get("hp")).GetDiskList().disks) {
    ids.insert(disk.id);
  }
  return ids;
}

// Serves a copy of a recorded machine through a configuration file.
class Hotplug : public ::testing::Test {
 protected:
  // Copies the machine of `fixture` and serves it.
  const MachineCopy& Serve(const std::string& fixture) {
    machine_ = std::make_unique<MachineCopy>(fixture);
    std::ofstream(dir_.file("pelka.json"))
        << R"({"programData": ")" << dir_.path() << R"(", "sources": [{"type": "linux", )"
        << R"("nas": "hp", "root": ")" << machine_->Root() << R"(", "smartctl": ")" << fixture
        << R"(/smartctl", "rescanSeconds": )" << std::chrono::duration<double>(kRescan).count()
        << "}]}\n";
    pelka::platform::UseFileInventory();
    return *machine_;
  }
  // Before the copy goes, the library is given a configuration without it,
  // so that no rescan looks for the machine once it is gone.
  void TearDown() override {
    std::ofstream(dir_.file("pelka.json"))
        << R"({"programData": ")" << dir_.path() << R"(", "sources": []})"
        << "\n";
    pelka::platform::UseFileInventory();
    const pelka::InventoryHold hold;
    EXPECT_TRUE(pelka::GetNasList().empty());
  }

  // Asks until `expected` is served; returns how long that took, or fails.
  Clock::duration Await(const std::set<std::string>& expected) {
    const auto start = Clock::now();
    while (ServedDisks() != expected) {
      if (Clock::now() - start > kShowsWithin) {
        ADD_FAILURE() << "not served within " << kShowsWithin.count() << " s";
        break;
      }
      std::this_thread::sleep_for(10ms);
    }
    return Clock::now() - start;
  }

  TempDir dir_;
  ScopedEnv config_{"PELKA_CONFIG", dir_.file("pelka.json")};
  std::unique_ptr<MachineCopy> machine_;
};

// Unplugs the disk behind /sys/block/<name> and gives back what plugs it in again.
class Unplugged {
 public:
  Unplugged(const MachineCopy& machine, const std::string& name)
      : link_(machine.Path("sys/block/" + name)), target_(fs::read_symlink(link_)) {
    fs::remove(link_);
  }
  void PlugBackIn() const { fs::create_directory_symlink(target_, link_); }

 private:
  const fs::path link_;
  const fs::path target_;
};

TEST_F(Hotplug, DisksVanishAndAppearAtTheNextRescan) {
  const MachineCopy& machine = Serve(ZEDA_LINUX_FIXTURE);
  const std::set<std::string> all = ServedDisks();
  ASSERT_EQ(all.size(), 9u);
  std::set<std::string> without = all;
  without.erase("wwn-0x5002538e45555555");

  const Unplugged sde(machine, "sde");
  const auto vanished = Await(without);
  sde.PlugBackIn();
  const auto appeared = Await(all);
  std::cout << "shown after " << Milliseconds(vanished) << " ms (vanished), "
            << Milliseconds(appeared) << " ms (appeared); rescan every " << Milliseconds(kRescan)
            << " ms\n";
}

TEST_F(Hotplug, AMultipathDiskStaysUntilItsLastPathGoes) {
  const MachineCopy& machine = Serve(ZEDA_MULTIPATH_FIXTURE);
  const std::set<std::string> all = ServedDisks();
  ASSERT_EQ(all.size(), 13u);

  const Unplugged sdk(machine, "sdk");
  std::this_thread::sleep_for(3 * kRescan);  // a few rescans without sdk
  EXPECT_EQ(ServedDisks(), all);

  const Unplugged sdb(machine, "sdb");
  std::set<std::string> without = all;
  without.erase("wwn-0x5000c500d0000001");
  Await(without);

  sdk.PlugBackIn();  // one path back is the disk back
  Await(all);
}

}  // namespace
}  // namespace zeda::test
