// End-to-end cost of the module's operations on large inventories, through
// the in-process object manager exactly as an object manager drives them.
// Each benchmark reports the disks it walked as items, so items_per_second of
// two benchmarks of one run compare directly: enumeration cost per disk at
// 1000 vs 10000 disks shows whether a walk stays linear, and extent vs drive
// enumeration shows the price of the second health query.
#include <benchmark/benchmark.h>

#include <unistd.h>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "BenchHost.h"
#include "platform/Inventory.h"
#include "zeda/host/all.hpp"

namespace {

namespace host = zeda::host;
namespace platform = zeda::pelka::platform;

// `disks` disks spread over NAS devices of `perNas` disks; every tenth
// disk a spare (by flag), every twentieth an SSD, one RAID group per NAS
// listing the non-spare disks as data disks.
platform::Inventory MakeInventory(int disks, int perNas) {
  platform::Inventory inventory;
  for (int first = 0; first < disks; first += perNas) {
    platform::NasRecord nas;
    nas.name = "nas" + std::to_string(first / perNas);
    zeda::orvi::OrviDiskGroup group;
    for (int d = first; d < std::min(disks, first + perNas); ++d) {
      platform::DiskRecord record;
      record.disk.id = std::to_string(d / 100) + ":" + std::to_string(d % 100 + d);
      record.disk.status = zeda::orvi::Ok;
      record.disk.isSpare = d % 10 == 3;
      record.disk.isSsd = d % 20 == 7;
      record.disk.interfaceType = d % 2 ? "SAS" : "SATA";
      record.disk.capacity = 4000787030016ULL;
      record.disk.rpm = 7200;
      record.disk.firmwareVersion = "82.00A82";
      record.identity = {"WDC WD40EFRX", "WD40EFRX", "WD-" + std::to_string(d)};
      if (!record.disk.isSpare) group.dataDisks.push_back(record.disk.id);
      nas.disks.push_back(record);
    }
    nas.groups.push_back(group);
    inventory.nas.push_back(std::move(nas));
  }
  return inventory;
}

using zeda::bench::ModuleHost;

// `operation(host, sink)` hands its results to the sink.
template <class Operation>
void Run(benchmark::State& state, std::size_t expected, Operation operation) {
  const int disks = static_cast<int>(state.range(0));
  platform::UseInMemoryInventory(MakeInventory(disks, static_cast<int>(state.range(1))));
  host::Host& h = ModuleHost();
  {
    // Untimed first request: the module reads the served inventory on it.
    zeda::bench::CountingSink sink;
    operation(h, sink);
  }
  for (auto _ : state) {
    zeda::bench::CountingSink sink;
    const host::Outcome outcome = operation(h, sink);
    if (!outcome.ok() ||
        sink.count() != (expected == 0 ? static_cast<std::size_t>(disks) : expected)) {
      state.SkipWithError("unexpected answer from the module");
    }
  }
  state.SetItemsProcessed(state.iterations() * disks);
  platform::UseFileInventory();
}

void BM_EnumerateDiskDrives(benchmark::State& state) {
  Run(state, 0, [](host::Host& h, host::ResultSink& sink) {
    return h.enumerateInstances("ZEDA_DiskDriveProvider",
                                host::ObjectPath("root/cimv2", "ZEDA_DiskDrive"), std::nullopt,
                                sink);
  });
}

void BM_EnumerateStorageExtents(benchmark::State& state) {
  Run(state, 0, [](host::Host& h, host::ResultSink& sink) {
    return h.enumerateInstances("ZEDA_StorageExtent_DiskProvider",
                                host::ObjectPath("root/cimv2", "ZEDA_StorageExtent_Disk"),
                                std::nullopt, sink);
  });
}

void BM_EnumerateSoftwareIdentities(benchmark::State& state) {
  Run(state, 0, [](host::Host& h, host::ResultSink& sink) {
    return h.enumerateInstances("ZEDA_SoftwareIdentity_DiskProvider",
                                host::ObjectPath("root/cimv2", "ZEDA_SoftwareIdentity_Disk"),
                                std::nullopt, sink);
  });
}

// GetInstance of the last disk of the last NAS: one disk-list scan.
void BM_GetLastStorageExtent(benchmark::State& state) {
  const int disks = static_cast<int>(state.range(0));
  const int last = disks - 1;
  const std::string nas = "ZEDA:nas" + std::to_string(last / state.range(1));
  const std::string id = std::to_string(last / 100) + ":" + std::to_string(last % 100 + last);
  host::ObjectPath path("root/cimv2", "ZEDA_StorageExtent_Disk");
  path.addKey("SystemName", nas).addKey("DeviceID", nas + ":DiskExtent" + id);
  Run(state, 1, [&](host::Host& h, host::ResultSink& sink) {
    return h.getInstance("ZEDA_StorageExtent_DiskProvider", path, std::nullopt, sink);
  });
}

// Associators from the spare pool of one NAS: a health query per disk of it.
// Disks are spares by flag only, so each is returned exactly once.
void BM_SparePoolExtents(benchmark::State& state) {
  const int disks = static_cast<int>(state.range(0));
  int inPool = 0;
  for (int d = 0; d < std::min<int>(disks, state.range(1)); ++d) {
    inPool += (d % 10 == 3 && d % 20 != 7) ? 1 : 0;
  }
  host::ObjectPath pool("root/cimv2", "ZEDA_StoragePool_Primordial");
  pool.addKey("InstanceID", "ZEDA:nas0:PrimordialPool3");
  Run(state, static_cast<std::size_t>(inPool), [&](host::Host& h, host::ResultSink& sink) {
    return h.associators("ZEDA_ConcreteComponent_PrimordialProvider", pool,
                         std::string("ZEDA_ConcreteComponent_Primordial"), std::nullopt,
                         std::nullopt, std::nullopt, std::nullopt, sink);
  });
}

// Arguments: {disks in all, disks per NAS}.
void Sizes(benchmark::internal::Benchmark* b) {
  b->ArgNames({"disks", "perNas"})->Args({1000, 500})->Args({10000, 500})->Args({10000, 10000});
}

BENCHMARK(BM_EnumerateDiskDrives)->Apply(Sizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EnumerateStorageExtents)->Apply(Sizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EnumerateSoftwareIdentities)->Apply(Sizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GetLastStorageExtent)->Apply(Sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SparePoolExtents)->Apply(Sizes)->Unit(benchmark::kMillisecond);

}  // namespace
