// Cost per disk of the pool associations, through the in-process object
// manager: the pool-to-extent walk of both association classes from each of
// the four pools, and the extent-to-pool lookup. Every benchmark visits every
// NAS once per iteration (one walk or one lookup per NAS) and reports the
// disks of the inventory as items, so items_per_second compares per-disk
// costs across sizes: 1,000 disks in NAS devices of 500 against 100,000 in
// one NAS shows whether the walks stay linear in the disks of a NAS. The
// inventory is the one of BenchInventory.h.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

#include "BenchHost.h"
#include "BenchInventory.h"
#include "zeda/host/all.hpp"

namespace {

namespace host = zeda::host;

using zeda::bench::DiskId;
using zeda::bench::ModuleHost;
using zeda::bench::Role;
using zeda::bench::RoleOf;
using zeda::bench::Size;

// Extents the walk from `pool` answers for disk d (each identifier is listed
// at most once, and in one list only).
std::size_t Answers(int d, int pool) {
  const Role role = RoleOf(d);
  switch (pool) {
    case 1:
      return role.isFree ? 1 : 0;
    case 2:
      return role.listedAsData ? 1 : 0;
    case 3:
      return role.listedAsSpare ? 1 : 0;
    case 4:
      return role.isSsd ? 1 : 0;
    default:
      return 0;
  }
}

// Runs `visit(host, nas index)` for every NAS per iteration; `visit` returns
// false when the module's answer is not the expected one.
template <class Visit>
void Run(benchmark::State& state, Visit visit) {
  const Size size = zeda::bench::SizeOf(state);
  const zeda::bench::ServedInventory served(zeda::bench::MakeInventory(size.disks, size.perNas));
  host::Host& h = ModuleHost();
  // Untimed first pass: the module reads the served inventory on it.
  for (int n = 0; n < size.nasCount(); ++n) {
    visit(h, size, n);
  }
  for (auto _ : state) {
    for (int n = 0; n < size.nasCount(); ++n) {
      if (!visit(h, size, n)) {
        state.SkipWithError("unexpected answer from the module");
        break;
      }
    }
  }
  state.SetItemsProcessed(state.iterations() * size.disks);
}

// Associators from pool `pool` of every NAS, through `assocClass`.
void PoolWalk(benchmark::State& state, const char* assocClass) {
  const int pool = static_cast<int>(state.range(2));
  Run(state, [&](host::Host& h, const Size& size, int n) {
    std::size_t expected = 0;
    for (int d = n * size.perNas; d < std::min(size.disks, (n + 1) * size.perNas); ++d) {
      expected += Answers(d, pool);
    }
    host::ObjectPath path("root/cimv2", "ZEDA_StoragePool_Primordial");
    path.addKey("InstanceID", size.nas(n) + ":PrimordialPool" + std::to_string(pool));
    zeda::bench::CountingSink sink;
    const host::Outcome outcome =
        h.associators(std::string(assocClass) + "Provider", path, std::string(assocClass),
                      std::nullopt, std::nullopt, std::nullopt, std::nullopt, sink);
    return outcome.ok() && sink.count() == expected;
  });
}

void BM_ConcreteComponentFromPool(benchmark::State& state) {
  PoolWalk(state, "ZEDA_ConcreteComponent_Primordial");
}

void BM_AssociatedComponentExtentFromPool(benchmark::State& state) {
  PoolWalk(state, "ZEDA_AssociatedComponentExtent_Primordial");
}

// Associators from the extent of the last data disk of every NAS: the disk
// look-up, its classification and the pool totals of the whole NAS.
void BM_ConcreteComponentFromExtent(benchmark::State& state) {
  Run(state, [](host::Host& h, const Size& size, int n) {
    int last = std::min(size.disks, (n + 1) * size.perNas) - 1;
    while (!RoleOf(last).listedAsData) --last;
    host::ObjectPath path("root/cimv2", "ZEDA_StorageExtent_Disk");
    path.addKey("SystemName", size.nas(n))
        .addKey("DeviceID", size.nas(n) + ":DiskExtent" + DiskId(last));
    zeda::bench::CountingSink sink;
    const host::Outcome outcome =
        h.associators("ZEDA_ConcreteComponent_PrimordialProvider", path,
                      std::string("ZEDA_ConcreteComponent_Primordial"), std::nullopt, std::nullopt,
                      std::nullopt, std::nullopt, sink);
    return outcome.ok() && sink.count() == 1;
  });
}

// Arguments: {disks in all, disks per NAS, pool number}, pools 1 to 4 at
// each of the three sizes.
void SizesAndPools(benchmark::internal::Benchmark* b) {
  b->ArgNames({"disks", "perNas", "pool"});
  for (const int pool : {1, 2, 3, 4}) {
    b->Args({1000, 500, pool})->Args({10000, 10000, pool})->Args({100000, 100000, pool});
  }
  b->MinTime(zeda::bench::kMinSeconds)->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_ConcreteComponentFromPool)->Apply(SizesAndPools);
BENCHMARK(BM_AssociatedComponentExtentFromPool)->Apply(SizesAndPools);
BENCHMARK(BM_ConcreteComponentFromExtent)->Apply(zeda::bench::ThreeSizes);

}  // namespace
