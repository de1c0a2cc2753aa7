// Cost of the live inventory check: GetNasList on an unchanged 1000-disk
// inventory file (stat only) against a forced re-parse of the same file; and
// the load of a 100,000-disk inventory (parse and check; file to snapshot in
// service), reported per disk.
#include <benchmark/benchmark.h>

#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

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

// `nasCount` NAS devices of `disksPerNas` disks each, one RAID group per NAS.
std::string InventoryText(int nasCount, int disksPerNas) {
  std::string text = R"({"nas": [)";
  for (int nas = 0; nas < nasCount; ++nas) {
    if (nas != 0) text += ",";
    text += R"({"name": "nas)" + std::to_string(nas) + R"(", "disks": [)";
    std::string group;
    for (int disk = 0; disk < disksPerNas; ++disk) {
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

std::string ThousandDiskInventory() { return InventoryText(4, 250); }

// 100,000 disks: one NAS, as the largest inventories are laid out.
constexpr int kLargeDisks = 100000;
const std::string& LargeInventoryText() {
  static const std::string text = InventoryText(1, kLargeDisks);
  return text;
}

// Points the library at a scratch 1000-disk file for one benchmark and puts
// the previous setting back afterwards.
class ScratchInventory {
 public:
  explicit ScratchInventory(const std::string& text = ThousandDiskInventory()) {
    std::string pattern = (std::filesystem::temp_directory_path() / "pelka-bench-XXXXXX").string();
    if (::mkdtemp(pattern.data()) != nullptr) directory_ = pattern;
    const std::string path = (directory_ / "inventory.json").string();
    std::ofstream(path, std::ios::binary) << text;
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

// Parse and check of 100,000 disks from text already in memory.
void BM_InventoryParse100k(benchmark::State& state) {
  const std::string& text = LargeInventoryText();
  for (auto _ : state) {
    benchmark::DoNotOptimize(platform::ParseInventory(text, "inventory.json"));
  }
  state.SetItemsProcessed(state.iterations() * kLargeDisks);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_InventoryParse100k)->Unit(benchmark::kMillisecond);

// The whole reload of a changed 100,000-disk file: read, parse, check,
// compare with the inventory in service and build the snapshot. A fixed,
// small number of rounds: every round leaves a superseded snapshot behind.
void BM_InventoryReload100k(benchmark::State& state) {
  const ScratchInventory inventory(LargeInventoryText());
  for (auto _ : state) {
    platform::UseFileInventory();  // forgets file state and snapshot: every load installs one
    benchmark::DoNotOptimize(&GetNasList());
  }
  state.SetItemsProcessed(state.iterations() * kLargeDisks);
}
BENCHMARK(BM_InventoryReload100k)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
