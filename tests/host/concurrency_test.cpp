// One Host, many threads: each request has its own objects, results and
// status; the factories of one class never run twice at once.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "host_fixture.hpp"

namespace zeda::test {

using namespace zeda::host;

namespace {

constexpr unsigned kItems = 500;

const char* manyProvider() { return ZEDA_TEST_CONCURRENT_PROVIDER; }

// Lets every thread start its first call at the same moment.
class StartLine {
 public:
  explicit StartLine(int n) : waiting_(n) {}
  void arriveAndWait() {
    std::unique_lock<std::mutex> lock(mutex_);
    if (--waiting_ == 0) {
      cv_.notify_all();
      return;
    }
    cv_.wait(lock, [this] { return waiting_ == 0; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable cv_;
  int waiting_;
};

template <typename F>
F moduleFunction(const char* name) {
  void* self = dlopen(manyProvider(), RTLD_NOW | RTLD_NOLOAD);
  if (self == nullptr) return nullptr;
  void* sym = dlsym(self, name);
  dlclose(self);
  return reinterpret_cast<F>(sym);
}

}  // namespace

TEST(Concurrency, ThreadsEnumeratingAtOnceEachGetTheirOwnCompleteAnswer) {
  Host h(manyProvider());
  constexpr int kThreads = 8;
  constexpr int kRounds = 20;
  StartLine start(kThreads);
  std::atomic<int> wrong{0};
  std::atomic<int> served{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      start.arriveAndWait();
      for (int round = 0; round < kRounds; ++round) {
        const std::string tag = "t" + std::to_string(t) + "r" + std::to_string(round);
        const Outcome out = h.enumerateInstances(
            "ZEDA_HostManyProvider",
            ObjectPath("root/cimv2", "ZEDA_HostMany", {{"Tag", Value::string(tag)}}));
        bool good = out.ok() && out.done && out.results.size() == kItems;
        for (unsigned i = 0; good && i < kItems; ++i) {
          const Instance& inst = out.results[i].instance();
          good = inst.property("Index").u() == i && inst.property("Tag").str() == tag &&
                 inst.property("Name").str() == "item-" + std::to_string(i);
        }
        if (!good) ++wrong;
        ++served;
      }
    });
  }
  for (auto& th : threads) th.join();
  EXPECT_EQ(wrong.load(), 0);
  EXPECT_EQ(served.load(), kThreads * kRounds);
  EXPECT_EQ(h.liveClones(), 0u);
}

TEST(Concurrency, FactoriesOfOneClassAreNeverCalledByTwoThreadsAtOnce) {
  Host h(manyProvider());
  using Reader = int (*)(int);
  const auto maxSameClass = moduleFunction<Reader>("zeda_slow_max_same_class");
  const auto calls = moduleFunction<Reader>("zeda_slow_calls");
  ASSERT_NE(maxSameClass, nullptr);
  ASSERT_NE(calls, nullptr);

  constexpr int kThreads = 8;
  StartLine start(kThreads);
  std::atomic<int> failed{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      const std::string cls = t % 2 == 0 ? "ZEDA_HostSlowA" : "ZEDA_HostSlowB";
      start.arriveAndWait();
      // The first request of each class finds no MI: every thread of that
      // class wants the factory at once.
      if (!h.enumerateInstances(cls + "Provider", ObjectPath("root/cimv2", cls)).ok()) ++failed;
    });
  }
  for (auto& th : threads) th.join();
  EXPECT_EQ(failed.load(), 0);
  EXPECT_EQ(maxSameClass(0), 1);
  EXPECT_EQ(maxSameClass(1), 1);
  // One MI per class: the threads that waited used the one made meanwhile.
  EXPECT_EQ(calls(0), 1);
  EXPECT_EQ(calls(1), 1);

  // createMI is serialized the same way.
  std::vector<std::thread> more;
  for (int t = 0; t < 4; ++t)
    more.emplace_back([&] { h.createMI("ZEDA_HostSlowAProvider", MIKind::Instance); });
  for (auto& th : more) th.join();
  EXPECT_EQ(maxSameClass(0), 1);
  EXPECT_EQ(calls(0), 5);
}

TEST(Concurrency, BrokerCallsFromManyThreadsKeepEveryRequestApart) {
  // The test provider's self-checks call the broker's and every object's
  // functions (marks of the memory table, clones, up-calls included); run in
  // many threads at once on one host, each must pass as it does alone.
  Host h(testProvider());
  const ObjectPath path = testPath("1");
  const std::vector<std::string> checks = {"CheckStrings",     "CheckArrays",    "CheckDateTimes",
                                           "CheckObjectPaths", "CheckInstances", "CheckArgs",
                                           "CheckErrors",      "CheckMemory",    "CheckUpcalls"};
  // Once alone first: the test provider's factories store the broker in a
  // global, which its operations read; every MI it has is made before the
  // threads start (up-calls reach the instance MI).
  for (const auto& method : checks) {
    const Outcome out = h.invokeMethod(kTestProvider, path, method);
    ASSERT_TRUE(out.ok()) << method;
  }
  constexpr int kThreads = 6;
  StartLine start(kThreads);
  std::mutex failuresMutex;
  std::vector<std::string> failures;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      start.arriveAndWait();
      for (std::size_t round = 0; round < 3 * checks.size(); ++round) {
        const std::string& method = checks[(round + static_cast<std::size_t>(t)) % checks.size()];
        const Outcome out = h.invokeMethod(kTestProvider, path, method);
        if (!out.ok() || out.results.empty() || out.results.back().value() != Value::uint32(0)) {
          std::lock_guard<std::mutex> lock(failuresMutex);
          failures.push_back(method);
        }
      }
    });
  }
  for (auto& th : threads) th.join();
  EXPECT_TRUE(failures.empty()) << failures.size() << " failed, first " << failures.front();
  EXPECT_EQ(h.liveClones(), 0u);
}

}  // namespace zeda::test
