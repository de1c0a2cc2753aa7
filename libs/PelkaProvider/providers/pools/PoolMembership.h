// How often the pool-to-extent walk answers a disk for a pool.
#ifndef ZEDA_PELKA_POOLMEMBERSHIP_H
#define ZEDA_PELKA_POOLMEMBERSHIP_H

#include <cstddef>
#include <vector>

#include "inventory/Records.h"

namespace zeda::pelka {

// Number of times `disk` is returned for pool `pool` (any number; outside 1
// to 4 nothing matches). A flag that names the pool (isFree for 1, isSsd for
// 4, isSpare for 3) gives exactly one return. Otherwise every RAID group is
// walked without early exit: each spareDisks entry that contains the disk
// identifier gives one return for pool 3, each dataDisks entry that contains
// it one return for pool 2, whatever the disk's flags.
std::size_t PoolMembershipCount(const zeda::orvi::OrviDisk& disk,
                                const std::vector<zeda::orvi::OrviDiskGroup>& groups, int pool);

}  // namespace zeda::pelka

#endif
