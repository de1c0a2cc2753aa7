// The disk drive enumeration of the module against the raw C provider of
// raw_drive_provider.c, which makes the same broker calls with nothing
// around them, on the same disks and through the same object manager. Their
// ratio is what the module itself adds to the object manager's cost.
#include <benchmark/benchmark.h>

#include <dlfcn.h>
#include <time.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BenchHost.h"
#include "BenchInventory.h"
#include "platform/Inventory.h"
#include "raw_drive_provider.h"
#include "zeda/host/all.hpp"

namespace {

namespace host = zeda::host;
namespace platform = zeda::pelka::platform;

constexpr char kRawProvider[] = "ZEDA_RawDiskDriveProvider";
constexpr char kModuleProvider[] = "ZEDA_DiskDriveProvider";

// The raw provider, loaded once like the module, by a host of its own with
// the same settings.
host::Host& RawHost() {
  static const std::unique_ptr<host::Host> instance =
      std::make_unique<host::Host>(ZEDA_RAW_DRIVE_PROVIDER_PATH);
  return *instance;
}

// The raw provider's setter, looked up in the copy the host loaded.
ZedaRawDriveUseInventoryFn RawUseInventory() {
  RawHost();
  void* handle = ::dlopen(ZEDA_RAW_DRIVE_PROVIDER_PATH, RTLD_NOW | RTLD_NOLOAD);
  if (handle == nullptr) return nullptr;
  void* symbol = ::dlsym(handle, ZEDA_RAW_DRIVE_USE_INVENTORY);
  ::dlclose(handle);  // the host keeps the library loaded
  return reinterpret_cast<ZedaRawDriveUseInventoryFn>(symbol);
}

// An inventory both served to the module and handed to the raw provider as
// flat C arrays pointing into it, for the life of this object.
class SharedInventory {
 public:
  explicit SharedInventory(const zeda::bench::Size& size)
      : inventory_(zeda::bench::MakeInventory(size.disks, size.perNas)), served_(inventory_) {
    systemNames_.reserve(inventory_.nas.size());
    disks_.reserve(inventory_.nas.size());
    for (const platform::NasRecord& nas : inventory_.nas) {
      systemNames_.push_back("ZEDA:" + nas.name);
      std::vector<ZedaRawDisk>& disks = disks_.emplace_back();
      disks.reserve(nas.disks.size());
      for (const platform::DiskRecord& record : nas.disks) {
        disks.push_back({record.disk.id.c_str(), record.disk.interfaceType.c_str(),
                         record.health.healthStatus, static_cast<int>(record.disk.status),
                         record.disk.isSsd ? 1 : 0, record.disk.rpm});
      }
    }
    for (std::size_t n = 0; n < disks_.size(); ++n) {
      nas_.push_back({systemNames_[n].c_str(), disks_[n].data(), disks_[n].size()});
    }
    useInventory_ = RawUseInventory();
    if (useInventory_ != nullptr) useInventory_(nas_.data(), nas_.size());
  }
  ~SharedInventory() {
    if (useInventory_ != nullptr) useInventory_(nullptr, 0);
  }
  SharedInventory(const SharedInventory&) = delete;
  SharedInventory& operator=(const SharedInventory&) = delete;

  // False when the raw provider's setter could not be found.
  bool handedOver() const { return useInventory_ != nullptr; }

 private:
  const platform::Inventory inventory_;
  const zeda::bench::ServedInventory served_;
  std::vector<std::string> systemNames_;
  std::vector<std::vector<ZedaRawDisk>> disks_;
  std::vector<ZedaRawNas> nas_;
  ZedaRawDriveUseInventoryFn useInventory_ = nullptr;
};

host::Outcome Enumerate(host::Host& h, const char* provider) {
  return h.enumerateInstances(provider, host::ObjectPath("root/cimv2", "ZEDA_DiskDrive"));
}

bool Answered(const host::Outcome& outcome, int disks) {
  return outcome.ok() && outcome.done && outcome.results.size() == static_cast<std::size_t>(disks);
}

// The raw provider alone, at the three sizes: its cost per disk is the
// object manager's.
void BM_RawDiskDrive(benchmark::State& state) {
  const zeda::bench::Size size = zeda::bench::SizeOf(state);
  const SharedInventory inventory(size);
  if (!inventory.handedOver()) {
    state.SkipWithError("the raw provider exports no inventory setter");
    return;
  }
  host::Host& h = RawHost();
  {
    // Untimed first request, as for the module's benchmarks.
    zeda::bench::CountingSink sink;
    h.enumerateInstances(kRawProvider, host::ObjectPath("root/cimv2", "ZEDA_DiskDrive"),
                         std::nullopt, sink);
  }
  for (auto _ : state) {
    zeda::bench::CountingSink sink;
    const host::Outcome outcome = h.enumerateInstances(
        kRawProvider, host::ObjectPath("root/cimv2", "ZEDA_DiskDrive"), std::nullopt, sink);
    if (!outcome.ok() || !outcome.done || sink.count() != static_cast<std::size_t>(size.disks)) {
      state.SkipWithError("unexpected answer from the raw provider");
      break;
    }
  }
  state.SetItemsProcessed(state.iterations() * size.disks);
}
BENCHMARK(BM_RawDiskDrive)->Apply(zeda::bench::ThreeSizes);

// CPU time of this thread (the host runs providers in the calling thread).
double ThreadCpuNanoseconds() {
  timespec now{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

// Both providers in turn in every iteration, after checking once that the
// raw provider answers exactly the module's instances. Counters: CPU time
// per disk of each and their ratio module/raw.
void BM_DiskDriveModuleToRaw(benchmark::State& state) {
  const zeda::bench::Size size = zeda::bench::SizeOf(state);
  const SharedInventory inventory(size);
  host::Host& module = zeda::bench::ModuleHost();
  host::Host& raw = RawHost();
  {
    const host::Outcome ofModule = Enumerate(module, kModuleProvider);
    const host::Outcome ofRaw = Enumerate(raw, kRawProvider);
    bool same =
        inventory.handedOver() && Answered(ofModule, size.disks) && Answered(ofRaw, size.disks);
    for (std::size_t i = 0; same && i < ofModule.results.size(); ++i) {
      same = ofModule.results[i].instance() == ofRaw.results[i].instance();
    }
    if (!same) {
      state.SkipWithError("the raw provider does not answer the module's instances");
      return;
    }
  }
  double moduleNs = 0;
  double rawNs = 0;
  for (auto _ : state) {
    const double start = ThreadCpuNanoseconds();
    const bool moduleOk = Answered(Enumerate(module, kModuleProvider), size.disks);
    const double middle = ThreadCpuNanoseconds();
    const bool rawOk = Answered(Enumerate(raw, kRawProvider), size.disks);
    const double end = ThreadCpuNanoseconds();
    if (!moduleOk || !rawOk) {
      state.SkipWithError("unexpected answer");
      break;
    }
    moduleNs += middle - start;
    rawNs += end - middle;
  }
  const double disks = static_cast<double>(state.iterations()) * size.disks;
  state.counters["module_ns_per_disk"] = moduleNs / disks;
  state.counters["raw_ns_per_disk"] = rawNs / disks;
  state.counters["module_to_raw"] = rawNs > 0 ? moduleNs / rawNs : 0;
  state.SetItemsProcessed(state.iterations() * size.disks);
}
BENCHMARK(BM_DiskDriveModuleToRaw)
    ->ArgNames({"disks", "perNas"})
    ->Args({10000, 10000})
    ->MinTime(1.0)
    ->Unit(benchmark::kMillisecond);

}  // namespace
