// Space of the four primordial pools of one NAS.
#ifndef ZEDA_PELKA_POOLTOTALS_H
#define ZEDA_PELKA_POOLTOTALS_H

#include <array>
#include <cstdint>

#include "inventory/Records.h"

namespace zeda::pelka {

// Bytes per pool; index 0 to 3 for pools 1 to 4.
using PoolTotals = std::array<std::uint64_t, 4>;

// Adds every disk's capacity to the pools it counts in. The flags decide
// first, in the order isFree (pool 1), isSsd (pool 4), isSpare (pool 3), and
// such a disk counts once. A disk without any flag is looked for per RAID
// group in the group's spareDisks joined with "," (pool 3), then in its
// dataDisks joined the same way (pool 2). The identifier is searched in the
// joined text, so a match may span the "," between two entries, and a disk
// counts once per group and list that holds it. This counting differs on
// purpose from ClassifyDisk, which matches per entry and yields one pool.
PoolTotals ComputePoolTotals(const zeda::orvi::OrviDiskList& diskList);

}  // namespace zeda::pelka

#endif
