// Cost per disk of the pool associations, through the in-process object
// manager: the pool-to-extent walk of both association classes from each of
// the four pools, and the extent-to-pool lookup. Every benchmark visits every
// NAS once per iteration (one walk or one lookup per NAS) and reports the
// disks of the inventory as items, so items_per_second compares per-disk
// costs across sizes: 1,000 disks in NAS devices of 500 against 100,000 in
// one NAS shows whether the walks stay linear in the disks of a NAS.
//
// Inventory: identifiers of one width ("d000042"), so none is a substring of
// another; RAID groups of 10 consecutive disks. Every 50th disk is free,
// every 20th an SSD, every 10th a spare by flag (listed as spare by its
// group), every 10th more an unflagged disk its group lists as spare; the
// rest are the group's data disks.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

#include "BenchHost.h"
#include "platform/Inventory.h"
#include "zeda/host/all.hpp"

namespace {

namespace host = zeda::host;
namespace platform = zeda::pelka::platform;

constexpr int kGroupSize = 10;

std::string DiskId(int d) {
  char id[16];
  std::snprintf(id, sizeof id, "d%06d", d);
  return id;
}

struct Role {
  bool isFree;
  bool isSsd;
  bool isSpare;
  bool listedAsSpare;
  bool listedAsData;
};

Role RoleOf(int d) {
  Role role{d % 50 == 5, d % 20 == 7, d % 10 == 3, false, false};
  role.listedAsSpare = role.isSpare || d % 10 == 9;
  role.listedAsData = !role.isFree && !role.listedAsSpare;
  return role;
}

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

platform::Inventory MakeInventory(int disks, int perNas) {
  platform::Inventory inventory;
  for (int first = 0; first < disks; first += perNas) {
    platform::NasRecord nas;
    nas.name = "nas" + std::to_string(first / perNas);
    const int end = std::min(disks, first + perNas);
    for (int d = first; d < end; ++d) {
      if ((d - first) % kGroupSize == 0) {
        nas.groups.emplace_back();
      }
      const Role role = RoleOf(d);
      platform::DiskRecord record;
      record.disk.id = DiskId(d);
      record.disk.status = zeda::orvi::Ok;
      record.disk.isFree = role.isFree;
      record.disk.isSpare = role.isSpare;
      record.disk.isSsd = role.isSsd;
      record.disk.interfaceType = "SAS";
      record.disk.capacity = 4000787030016ULL;
      record.disk.rpm = 7200;
      record.disk.firmwareVersion = "F1";
      record.identity = {"ACME X1", "X1", "S" + record.disk.id};
      if (role.listedAsSpare) nas.groups.back().spareDisks.push_back(record.disk.id);
      if (role.listedAsData) nas.groups.back().dataDisks.push_back(record.disk.id);
      nas.disks.push_back(record);
    }
    inventory.nas.push_back(std::move(nas));
  }
  return inventory;
}

using zeda::bench::ModuleHost;

struct Size {
  int disks;
  int perNas;
  int nasCount() const { return (disks + perNas - 1) / perNas; }
  std::string nas(int n) const { return "ZEDA:nas" + std::to_string(n); }
};

Size SizeOf(const benchmark::State& state) {
  return {static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
}

// Runs `visit(host, nas index)` for every NAS per iteration; `visit` returns
// false when the module's answer is not the expected one.
template <class Visit>
void Run(benchmark::State& state, Visit visit) {
  const Size size = SizeOf(state);
  platform::UseInMemoryInventory(MakeInventory(size.disks, size.perNas));
  host::Host& h = ModuleHost();
  for (auto _ : state) {
    for (int n = 0; n < size.nasCount(); ++n) {
      if (!visit(h, size, n)) {
        state.SkipWithError("unexpected answer from the module");
        break;
      }
    }
  }
  state.SetItemsProcessed(state.iterations() * size.disks);
  platform::UseFileInventory();
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
    const host::Outcome outcome = h.associators(std::string(assocClass) + "Provider", path,
                                                std::string(assocClass), std::nullopt,
                                                std::nullopt, std::nullopt);
    return outcome.ok() && outcome.results.size() == expected;
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
    path.addKey("SystemName", size.nas(n)).addKey("DeviceID", size.nas(n) + ":DiskExtent" + DiskId(last));
    const host::Outcome outcome =
        h.associators("ZEDA_ConcreteComponent_PrimordialProvider", path,
                      std::string("ZEDA_ConcreteComponent_Primordial"), std::nullopt,
                      std::nullopt, std::nullopt);
    return outcome.ok() && outcome.results.size() == 1;
  });
}

// Arguments: {disks in all, disks per NAS}.
void Sizes(benchmark::internal::Benchmark* b) {
  b->ArgNames({"disks", "perNas"})
      ->Args({1000, 500})
      ->Args({10000, 10000})
      ->Args({100000, 100000});
}

// Arguments: {disks in all, disks per NAS, pool number}.
void SizesAndPools(benchmark::internal::Benchmark* b) {
  b->ArgNames({"disks", "perNas", "pool"});
  for (const int pool : {1, 2, 3, 4}) {
    b->Args({1000, 500, pool})->Args({10000, 10000, pool})->Args({100000, 100000, pool});
  }
}

BENCHMARK(BM_ConcreteComponentFromPool)->Apply(SizesAndPools)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AssociatedComponentExtentFromPool)
    ->Apply(SizesAndPools)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ConcreteComponentFromExtent)->Apply(Sizes)->Unit(benchmark::kMillisecond);

}  // namespace
