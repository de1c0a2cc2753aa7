// Cost per disk of the pool rules alone, on in-memory disk lists, without the
// object manager: what the module itself adds to a pool walk or an
// extent-to-pool look-up. Same inventory shape as pool_bench.cpp
// (fixed-width identifiers, RAID groups of 10); each iteration handles every
// NAS once and counts the disks of the inventory as items.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

#include "providers/pools/PoolRules.h"

namespace {

using zeda::orvi::OrviDisk;
using zeda::orvi::OrviDiskList;

std::string DiskId(int d) {
  char id[16];
  std::snprintf(id, sizeof id, "d%06d", d);
  return id;
}

// One disk list per NAS: every 50th disk free, every 20th an SSD, every 10th
// a flagged spare listed as spare, every 10th more an unflagged disk listed
// as spare, the rest data disks of their group of 10.
std::vector<OrviDiskList> MakeLists(int disks, int perNas) {
  std::vector<OrviDiskList> lists;
  for (int first = 0; first < disks; first += perNas) {
    OrviDiskList& list = lists.emplace_back();
    for (int d = first; d < std::min(disks, first + perNas); ++d) {
      if ((d - first) % 10 == 0) list.groups.emplace_back();
      OrviDisk& disk = list.disks.emplace_back();
      disk.id = DiskId(d);
      disk.capacity = 4000787030016ULL;
      disk.isFree = d % 50 == 5;
      disk.isSsd = d % 20 == 7;
      disk.isSpare = d % 10 == 3;
      if (disk.isSpare || d % 10 == 9) {
        list.groups.back().spareDisks.push_back(disk.id);
      } else if (!disk.isFree) {
        list.groups.back().dataDisks.push_back(disk.id);
      }
    }
  }
  return lists;
}

template <class Rule>
void RunRule(benchmark::State& state, Rule rule) {
  const int disks = static_cast<int>(state.range(0));
  const std::vector<OrviDiskList> lists = MakeLists(disks, static_cast<int>(state.range(1)));
  for (auto _ : state) {
    for (const OrviDiskList& list : lists) {
      rule(list);
    }
  }
  state.SetItemsProcessed(state.iterations() * disks);
}

void BM_RuleMembershipData(benchmark::State& state) {
  RunRule(state, [](const OrviDiskList& list) {
    benchmark::DoNotOptimize(zeda::pelka::PoolMembershipCounts(list, 2));
  });
}

void BM_RuleMembershipSpare(benchmark::State& state) {
  RunRule(state, [](const OrviDiskList& list) {
    benchmark::DoNotOptimize(zeda::pelka::PoolMembershipCounts(list, 3));
  });
}

void BM_RuleTotals(benchmark::State& state) {
  RunRule(state, [](const OrviDiskList& list) {
    benchmark::DoNotOptimize(zeda::pelka::ComputePoolTotals(list));
  });
}

void BM_RulePoolOfLastDisk(benchmark::State& state) {
  RunRule(state, [](const OrviDiskList& list) {
    benchmark::DoNotOptimize(zeda::pelka::PoolOfDisk(list, list.disks.back().id));
  });
}

void Sizes(benchmark::internal::Benchmark* b) {
  b->ArgNames({"disks", "perNas"})->Args({1000, 500})->Args({10000, 10000})->Args({100000, 100000});
}

BENCHMARK(BM_RuleMembershipData)->Apply(Sizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RuleMembershipSpare)->Apply(Sizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RuleTotals)->Apply(Sizes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RulePoolOfLastDisk)->Apply(Sizes)->Unit(benchmark::kMillisecond);

}  // namespace
