// The call trace written when PELKA_NAS_TRACE names a file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "InventoryBuilders.h"
#include "TempDir.h"
#include "inventory/Library.h"
#include "platform/Inventory.h"

namespace zeda::test {
namespace {

using namespace zeda::pelka;

class CallTrace : public ::testing::Test {
 protected:
  CallTrace() {
    platform::UseInMemoryInventory(
        InventoryOf({NasWith("nas1", {Disk("0:1"), Disk("0:10")}), NasWith("nas2")}));
  }
  ~CallTrace() override { platform::UseFileInventory(); }

  TempDir directory_;
  const std::string trace_ = directory_.file("trace.tsv");
};

TEST_F(CallTrace, EveryCallWritesOneLine) {
  {
    const ScopedEnv setting("PELKA_NAS_TRACE", trace_);
    GetNasList();
    const Nas& nas = Nas::Get("nas1");
    util::GetNas("nas2");
    zeda::orvi::Orvi& orvi = GetOrvi(nas);
    orvi.GetDiskList();
    orvi.GetDiskHealth("010");
    orvi.GetDiskIdentity("0:1");
    EXPECT_THROW(Nas::Get("nas9"), std::runtime_error);
    EXPECT_THROW(orvi.GetDiskHealth("99"), std::runtime_error);
    // Calls that are not library look-ups or NAS API queries leave no line.
    util::GetOperationalStatus(zeda::orvi::Ok);
    util::GetProgramDataPath();
  }
  EXPECT_EQ(ReadFile(trace_),
            "-\tGetNasList\t\n"
            "-\tNas::Get\tnas1\n"
            "-\tutil::GetNas\tnas2\n"
            "nas1\tGetOrvi\t\n"
            "nas1\tGetDiskList\t\n"
            "nas1\tGetDiskHealth\t010\n"
            "nas1\tGetDiskIdentity\t0:1\n"
            "-\tNas::Get\tnas9\n"
            "nas1\tGetDiskHealth\t99\n");
}

TEST_F(CallTrace, TraceAppendsToAnExistingFile) {
  ReplaceFile(trace_, "earlier\n");
  const ScopedEnv setting("PELKA_NAS_TRACE", trace_);
  GetNasList();
  EXPECT_EQ(ReadFile(trace_), "earlier\n-\tGetNasList\t\n");
}

TEST_F(CallTrace, VariableIsReadOnEveryCall) {
  const std::string second = directory_.file("second.tsv");
  GetNasList();  // not traced
  {
    const ScopedEnv setting("PELKA_NAS_TRACE", trace_);
    Nas::Get("nas1");
  }
  GetNasList();  // not traced
  {
    const ScopedEnv setting("PELKA_NAS_TRACE", second);
    util::GetNas("nas2");
  }
  {
    const ScopedEnv setting("PELKA_NAS_TRACE", "");
    GetNasList();  // empty value: not traced
  }
  EXPECT_EQ(ReadFile(trace_), "-\tNas::Get\tnas1\n");
  EXPECT_EQ(ReadFile(second), "-\tutil::GetNas\tnas2\n");
}

TEST_F(CallTrace, LinesOfConcurrentCallsStayWhole) {
  const ScopedEnv setting("PELKA_NAS_TRACE", trace_);
  constexpr int kThreads = 4;
  constexpr int kCalls = 250;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([] {
      zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get("nas1"));
      for (int i = 0; i < kCalls; ++i) orvi.GetDiskHealth("010");
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::istringstream lines(ReadFile(trace_));
  std::string line;
  int health = 0;
  int other = 0;
  while (std::getline(lines, line)) {
    if (line == "nas1\tGetDiskHealth\t010") {
      ++health;
    } else if (line == "-\tNas::Get\tnas1" || line == "nas1\tGetOrvi\t") {
      ++other;
    } else {
      ADD_FAILURE() << "unexpected trace line: " << line;
    }
  }
  EXPECT_EQ(health, kThreads * kCalls);
  EXPECT_EQ(other, 2 * kThreads);
}

}  // namespace
}  // namespace zeda::test
