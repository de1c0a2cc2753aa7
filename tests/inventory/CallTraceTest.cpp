// The call trace written when PELKA_NAS_TRACE names a file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "InventoryBuilders.h"
#include "TestFiles.h"
#include "inventory/Library.h"
#include "platform/Inventory.h"

namespace zeda::pelka {
namespace {

using testing::Disk;
using testing::InventoryOf;
using testing::NasWith;

class CallTrace : public ::testing::Test {
 protected:
  CallTrace() {
    platform::UseInMemoryInventory(
        InventoryOf({NasWith("nas1", {Disk("0:1"), Disk("0:10")}), NasWith("nas2")}));
  }
  ~CallTrace() override { platform::UseFileInventory(); }

  testing::ScratchDirectory directory_;
  const std::string trace_ = directory_.File("trace.tsv");
};

TEST_F(CallTrace, EveryCallWritesOneLine) {
  {
    const testing::EnvironmentSetting setting("PELKA_NAS_TRACE", trace_);
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
  EXPECT_EQ(testing::ReadFile(trace_),
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
  testing::ReplaceFile(trace_, "earlier\n");
  const testing::EnvironmentSetting setting("PELKA_NAS_TRACE", trace_);
  GetNasList();
  EXPECT_EQ(testing::ReadFile(trace_), "earlier\n-\tGetNasList\t\n");
}

TEST_F(CallTrace, VariableIsReadOnEveryCall) {
  const std::string second = directory_.File("second.tsv");
  GetNasList();  // not traced
  {
    const testing::EnvironmentSetting setting("PELKA_NAS_TRACE", trace_);
    Nas::Get("nas1");
  }
  GetNasList();  // not traced
  {
    const testing::EnvironmentSetting setting("PELKA_NAS_TRACE", second);
    util::GetNas("nas2");
  }
  {
    const testing::EnvironmentSetting setting("PELKA_NAS_TRACE", "");
    GetNasList();  // empty value: not traced
  }
  EXPECT_EQ(testing::ReadFile(trace_), "-\tNas::Get\tnas1\n");
  EXPECT_EQ(testing::ReadFile(second), "-\tutil::GetNas\tnas2\n");
}

TEST_F(CallTrace, LinesOfConcurrentCallsStayWhole) {
  const testing::EnvironmentSetting setting("PELKA_NAS_TRACE", trace_);
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
  std::istringstream lines(testing::ReadFile(trace_));
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
}  // namespace zeda::pelka
