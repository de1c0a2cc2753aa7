// Cost of the live inventory check: GetNasList on an unchanged 1000-disk
// inventory file (stat only) against a forced re-parse of the same file.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <unistd.h>

#include "inventory/Library.h"
#include "platform/Inventory.h"

namespace {

using zeda::pelka::GetNasList;
namespace platform = zeda::pelka::platform;

std::string DiskJson(int nas, int disk) {
  const std::string id = std::to_string(nas) + ":" + std::to_string(disk);
  return R"({"id": ")" + id + R"(", "status": "ok", "isFree": false, "isSpare": false, )" +
         R"("isSsd": false, "interfaceType": "SATA", "firmwareVersion": "82.00A82", )" +
         R"("capacity": 4000787030016, "rpm": 5400, "health": {"status": 0, "message": "Good"}, )" +
         R"("identity": {"product": "WDC WD40EFRX-68N32N0", "model": "WD40EFRX", "serial": "WD-)" +
         std::to_string(nas * 1000 + disk) + R"("}})";
}

// Four NAS devices of 250 disks each, one RAID group per NAS.
std::string ThousandDiskInventory() {
  std::string text = R"({"nas": [)";
  for (int nas = 0; nas < 4; ++nas) {
    if (nas != 0) text += ",";
    text += R"({"name": "nas)" + std::to_string(nas) + R"(", "disks": [)";
    std::string group;
    for (int disk = 0; disk < 250; ++disk) {
      if (disk != 0) {
        text += ",";
        group += ",";
      }
      text += DiskJson(nas, disk);
      group += "\"" + std::to_string(nas) + ":" + std::to_string(disk) + "\"";
    }
    text += R"(], "groups": [{"dataDisks": [)" + group + R"(]}]})";
  }
  return text + "]}";
}

// Points the library at a scratch 1000-disk file for one benchmark and puts
// the previous setting back afterwards.
class ScratchInventory {
 public:
  ScratchInventory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "pelka-bench-XXXXXX").string();
    if (::mkdtemp(pattern.data()) != nullptr) directory_ = pattern;
    const std::string path = (directory_ / "inventory.json").string();
    std::ofstream(path, std::ios::binary) << ThousandDiskInventory();
    if (const char* old = std::getenv("PELKA_INVENTORY")) previous_ = old;
    ::setenv("PELKA_INVENTORY", path.c_str(), 1);
    platform::UseFileInventory();
    GetNasList();
  }
  ~ScratchInventory() {
    if (previous_) {
      ::setenv("PELKA_INVENTORY", previous_->c_str(), 1);
    } else {
      ::unsetenv("PELKA_INVENTORY");
    }
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
  }
  ScratchInventory(const ScratchInventory&) = delete;
  ScratchInventory& operator=(const ScratchInventory&) = delete;

 private:
  std::filesystem::path directory_;
  std::optional<std::string> previous_;
};

void BM_InventoryUnchanged(benchmark::State& state) {
  const ScratchInventory inventory;
  for (auto _ : state) {
    benchmark::DoNotOptimize(&GetNasList());
  }
}
BENCHMARK(BM_InventoryUnchanged);

void BM_InventoryForcedReparse(benchmark::State& state) {
  const ScratchInventory inventory;
  for (auto _ : state) {
    platform::ForgetInventoryFileState();
    benchmark::DoNotOptimize(&GetNasList());
  }
}
BENCHMARK(BM_InventoryForcedReparse);

// Both in one run: reparse_ns / unchanged_ns is the reported ratio.
void BM_InventoryReparseToUnchangedRatio(benchmark::State& state) {
  using Clock = std::chrono::steady_clock;
  const ScratchInventory inventory;
  Clock::duration unchanged{};
  Clock::duration reparse{};
  for (auto _ : state) {
    const auto start = Clock::now();
    benchmark::DoNotOptimize(&GetNasList());
    const auto middle = Clock::now();
    platform::ForgetInventoryFileState();
    benchmark::DoNotOptimize(&GetNasList());
    const auto end = Clock::now();
    unchanged += middle - start;
    reparse += end - middle;
  }
  const auto nanoseconds = [](Clock::duration d) {
    return static_cast<double>(std::chrono::duration_cast<std::chrono::nanoseconds>(d).count());
  };
  const double iterations = static_cast<double>(state.iterations());
  state.counters["unchanged_ns"] = nanoseconds(unchanged) / iterations;
  state.counters["reparse_ns"] = nanoseconds(reparse) / iterations;
  state.counters["ratio"] = nanoseconds(reparse) / std::max(1.0, nanoseconds(unchanged));
}
BENCHMARK(BM_InventoryReparseToUnchangedRatio);

}  // namespace
