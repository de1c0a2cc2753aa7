// The generated inventory every per-disk benchmark runs on, so that figures of
// one run compare across classes, walks and sizes.
//
// Identifiers of one width ("d000042"), so none is a substring of another;
// RAID groups of 10 consecutive disks of a NAS. Every 50th disk is free,
// every 20th an SSD, every 10th a spare by flag (listed as spare by its
// group), every 10th more an unflagged disk its group lists as spare; the
// rest are the group's data disks. Every disk is healthy, status OK, SAS,
// 7200 rpm.
#ifndef ZEDA_BENCH_BENCHINVENTORY_H
#define ZEDA_BENCH_BENCHINVENTORY_H

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string>
#include <utility>

#include "platform/Inventory.h"

namespace zeda::bench {

inline constexpr int kGroupSize = 10;

inline std::string DiskId(int d) {
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

inline Role RoleOf(int d) {
  Role role{d % 50 == 5, d % 20 == 7, d % 10 == 3, false, false};
  role.listedAsSpare = role.isSpare || d % 10 == 9;
  role.listedAsData = !role.isFree && !role.listedAsSpare;
  return role;
}

// Instances an enumeration answers per disk: one of each class, except
// ZEDA_ConcreteComponent_Primordial, which names free disks (pool 1) and disks
// that are neither an SSD nor a spare by flag (pool 2).
inline std::size_t EveryDisk(int /*disk*/) { return 1; }
inline std::size_t EnumeratedInAPool(int disk) {
  const Role role = RoleOf(disk);
  return role.isFree || !(role.isSsd || role.isSpare) ? 1 : 0;
}

// `disks` disks over NAS devices "nas0", "nas1" ... of `perNas` disks each
// (the last one may hold fewer).
inline pelka::platform::Inventory MakeInventory(int disks, int perNas) {
  pelka::platform::Inventory inventory;
  for (int first = 0; first < disks; first += perNas) {
    pelka::platform::NasRecord nas;
    nas.name = "nas" + std::to_string(first / perNas);
    const int end = std::min(disks, first + perNas);
    for (int d = first; d < end; ++d) {
      if ((d - first) % kGroupSize == 0) {
        nas.groups.emplace_back();
      }
      const Role role = RoleOf(d);
      pelka::platform::DiskRecord record;
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

// Serves an inventory in place of the file for one benchmark.
class ServedInventory {
 public:
  explicit ServedInventory(pelka::platform::Inventory inventory) {
    pelka::platform::UseInMemoryInventory(std::move(inventory));
  }
  ~ServedInventory() { pelka::platform::UseFileInventory(); }
  ServedInventory(const ServedInventory&) = delete;
  ServedInventory& operator=(const ServedInventory&) = delete;
};

// The size a benchmark runs at: its first two arguments.
struct Size {
  int disks;
  int perNas;
  int nasCount() const { return (disks + perNas - 1) / perNas; }
  // System name of NAS n.
  std::string nas(int n) const { return "ZEDA:nas" + std::to_string(n); }
};

inline Size SizeOf(const benchmark::State& state) {
  return {static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
}

// The three sizes as {disks in all, disks per NAS}: 1,000 disks in NAS
// devices of 500; 10,000 in one NAS; 100,000 in one NAS. The minimum time is
// a few times the longest single request, so that the iterations a figure is
// taken from are at least two at every size and a whole run stays within
// minutes.
inline constexpr double kMinSeconds = 1.0;

inline void ThreeSizes(benchmark::internal::Benchmark* b) {
  b->ArgNames({"disks", "perNas"})
      ->Args({1000, 500})
      ->Args({10000, 10000})
      ->Args({100000, 100000})
      ->MinTime(kMinSeconds)
      ->Unit(benchmark::kMillisecond);
}

}  // namespace zeda::bench

#endif
