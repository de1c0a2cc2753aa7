// One loaded module, eight threads issuing every kind of operation on every
// class while another thread keeps replacing the inventory file with newer
// versions (atomic rename and in-place rewrite in turn). Every answer must
// succeed, equal the answer of version 0 apart from the version it carries,
// carry one version only (not torn) and never an older one than the thread
// saw before.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <nlohmann/json.hpp>

#include "inventory_versions.hpp"
#include "operations.hpp"

namespace zeda::concurrency_test {
namespace {

constexpr int kThreads = 8;
constexpr long kWriterPeriodMicros = 15000;  // about 65 versions a second

double testSeconds() {
  const char* configured = std::getenv("ZEDA_CONCURRENCY_SECONDS");
  return configured != nullptr ? std::atof(configured) : 3.0;
}

class ScratchDir {
 public:
  ScratchDir() {
    std::string pattern = ::testing::TempDir() + "/zeda_concurrency_XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
  }
  ~ScratchDir() { std::system(("rm -rf '" + path_ + "'").c_str()); }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

// The failures seen, the first few with their story.
class Failures {
 public:
  void add(const std::string& what) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (++count_ <= 20) text_ += what + "\n";
  }
  int count() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return count_;
  }
  std::string text() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return text_;
  }

 private:
  mutable std::mutex mutex_;
  int count_ = 0;
  std::string text_;
};

nlohmann::json SampleInventory() {
  std::ifstream in(ZEDA_SAMPLE_INVENTORY);
  if (!in) throw std::runtime_error(std::string("cannot read ") + ZEDA_SAMPLE_INVENTORY);
  return nlohmann::json::parse(in);
}

// Serves `inventory` (version 0 of `base` written there) to eight threads
// while a writer replaces it with newer versions; the environment says where
// the module takes its inventory from.
void ServeWhileTheInventoryChanges(const ScratchDir& /*dir*/, const nlohmann::json& base,
                                   const std::string& inventory);

TEST(ConcurrentRequests, EveryAnswerIsWholeAndNewerThanTheLastWhileTheInventoryChanges) {
  const ScratchDir dir;
  const std::string inventory = dir.path() + "/inventory.json";
  const nlohmann::json base = SampleInventory();
  replaceAtomically(inventory, inventoryVersion(base, 0));
  setenv("PELKA_INVENTORY", inventory.c_str(), 1);
  setenv("PELKA_PROGRAM_DATA", (dir.path() + "/program-data").c_str(), 1);
  ServeWhileTheInventoryChanges(dir, base, inventory);
}

// The same through a configuration file naming the inventory file and the
// recorded machine: the refresher thread reads both (the machine every
// 0.2 s, asking smartctl each time) while the requests take its snapshots.
TEST(ConcurrentRequests, ConfigurationModeWithAFileAndAMachineWhileTheInventoryChanges) {
  const ScratchDir dir;
  const std::string inventory = dir.path() + "/inventory.json";
  const nlohmann::json base = SampleInventory();
  replaceAtomically(inventory, inventoryVersion(base, 0));
  const std::string fixture = ZEDA_LINUX_FIXTURE;
  const nlohmann::json config = {{"programData", dir.path() + "/program-data"},
                                 {"sources",
                                  {{{"type", "file"}, {"path", inventory}},
                                   {{"type", "linux"},
                                    {"nas", "fx"},
                                    {"root", fixture + "/root"},
                                    {"smartctl", fixture + "/smartctl"},
                                    {"smartTtlSeconds", 0},
                                    {"rescanSeconds", 0.2}}}}};
  replaceAtomically(dir.path() + "/pelka.json", config.dump());
  setenv("PELKA_CONFIG", (dir.path() + "/pelka.json").c_str(), 1);
  ServeWhileTheInventoryChanges(dir, base, inventory);
  unsetenv("PELKA_CONFIG");
}

void ServeWhileTheInventoryChanges(const ScratchDir& /*dir*/, const nlohmann::json& base,
                                   const std::string& inventory) {
  host::Host h(ZEDA_MODULE_PATH);
  warmUpDefaults(h);
  const std::vector<Operation> candidates = everyOperation(h);

  // Version 0: what every answer must be, apart from its version.
  std::vector<Operation> mix;
  std::vector<Answer> expected;
  for (const auto& op : candidates) {
    const Answer a = summarize(perform(h, op));
    ASSERT_TRUE(a.problem.empty()) << op.label() << ": " << a.problem;
    if (a.code != 0) continue;  // no such association from that endpoint: warmed up, not in the mix
    ASSERT_LE(a.versions.size(), 1u) << op.label();
    if (!a.versions.empty()) {
      ASSERT_EQ(*a.versions.begin(), 0) << op.label();
    }
    mix.push_back(op);
    expected.push_back(a);
  }
  std::map<Kind, int> kinds;
  for (const auto& op : mix) ++kinds[op.kind];
  ASSERT_GE(kinds[Kind::EnumerateInstances], 10);
  ASSERT_GT(kinds[Kind::GetInstance], 0);
  ASSERT_GT(kinds[Kind::Associators], 0);
  ASSERT_GT(kinds[Kind::References], 0);

  Failures failures;
  std::atomic<long> served{0};
  std::atomic<long> versioned{0};
  std::atomic<long> newestSeen{0};
  VersionWriter writer(base, inventory, kWriterPeriodMicros);
  const auto deadline =
      std::chrono::steady_clock::now() + std::chrono::duration<double>(testSeconds());
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      long lastSeen = 0;
      for (std::size_t n = static_cast<std::size_t>(t); std::chrono::steady_clock::now() < deadline;
           n += 7) {
        const std::size_t i = n % mix.size();
        const Operation& op = mix[i];
        const Answer a = summarize(perform(h, op));
        const long newestWritten = writer.written();
        ++served;
        if (a.code != 0 || !a.problem.empty()) {
          failures.add(op.label() + ": status " + std::to_string(a.code) + " " + a.problem);
          continue;
        }
        if (a.identities != expected[i].identities) {
          failures.add(op.label() + ": answer differs from version 0 beyond its version");
          continue;
        }
        if (a.versions.size() > 1) {
          failures.add(op.label() + ": torn answer, versions " +
                       std::to_string(*a.versions.begin()) + " to " +
                       std::to_string(*a.versions.rbegin()));
          continue;
        }
        if (a.versions.empty()) continue;
        ++versioned;
        const long v = *a.versions.begin();
        if (v < lastSeen) {
          failures.add(op.label() + ": version " + std::to_string(v) + " after " +
                       std::to_string(lastSeen));
        } else if (v > newestWritten + 1) {
          failures.add(op.label() + ": version " + std::to_string(v) + " never written");
        }
        lastSeen = std::max(lastSeen, v);
        long seen = newestSeen.load();
        while (v > seen && !newestSeen.compare_exchange_weak(seen, v)) {
        }
      }
    });
  }
  for (auto& th : threads) th.join();
  writer.stop();

  EXPECT_EQ(writer.error(), "");
  EXPECT_EQ(failures.count(), 0) << failures.text();
  EXPECT_GT(served.load(), kThreads) << "requests served";
  // The changes were seen: answers moved on from version 0.
  EXPECT_GT(newestSeen.load(), 1);
  EXPECT_GT(writer.written(), 10);
  ::testing::Test::RecordProperty("requests", std::to_string(served.load()));
  ::testing::Test::RecordProperty("versions_written", std::to_string(writer.written()));
  std::cout << "served " << served.load() << " requests (" << versioned.load()
            << " carrying a version) over " << mix.size() << " operations; " << writer.written()
            << " versions written, newest seen " << newestSeen.load() << "\n";
}

}  // namespace
}  // namespace zeda::concurrency_test
