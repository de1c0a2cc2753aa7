// Which primordial pool a disk is in: the four rules of the pool associations,
// side by side. They look alike and are not alike; each difference below is
// required behaviour clients rely on, so none may be "fixed" to match another.
//
//                  | EnumeratedPool  | PoolOfDisk         | PoolMembership-    | ComputePool-
//                  |                 |                    | Counts             | Totals
// -----------------+-----------------+--------------------+--------------------+-----------------
// answers          | enumeration of  | extent-to-pool     | pool-to-extent     | TotalManaged-
//                  | ConcreteCompo-  | walks of both      | walks of both      | Space of a pool
//                  | nent_Primordial | associations       | associations       | instance
// flags            | isFree: 1;      | isFree 1, isSsd 4, | a flag naming the  | as PoolOfDisk;
//                  | isSsd, isSpare: | isSpare 3, in this | asked pool: one    | the disk counts
//                  | none; else 2    | order              | result             | once
// groups read      | never           | no flag set only   | always, for pools  | no flag set only
//                  |                 |                    | 2 and 3            |
// a group lists    | -               | an entry contains  | an entry contains  | the list joined
// the disk when    |                 | the identifier     | the identifier     | with "," holds it
// listed more than | -               | one pool: the last | one result per     | once per group
// once             |                 | match wins (data   | matching entry     | and list, pools
//                  |                 | after spare)       |                    | 2 and 3 both
//
// Why they differ (required behaviour clients rely on):
// - The enumeration never reads the groups: every non-free, non-spare,
//   non-cache disk is listed in the data pool, even one no group names, and
//   it knows only pools 1 and 2.
// - The extent-to-pool walks answer exactly one pool per extent, so their rule
//   settles on one: the flags first, then the last group entry that names
//   the disk.
// - The pool-to-extent walks answer every listing: a disk named in two spare
//   entries is answered twice for pool 3, and a flagged disk is still
//   answered for pool 2 or 3 when a group names it.
// - The totals search the joined lists, so an identifier found across the ","
//   of two entries counts, and a disk counts once per group and list.
// In every rule "contains" is substring search: 0:1 is found in the entry
// 0:10, and an empty identifier is found in every entry (and in every joined
// list, even an empty one).
//
// Cost: the per-NAS rules (PoolOfDisk, PoolMembershipCounts,
// ComputePoolTotals) build one SubstringIndex over the identifiers they look
// for and run it once over every entry or joined list, so they take
// O(D + I + T + M): D disks, I bytes of identifiers, T bytes of group
// entries, M (entry or joined list, identifier) pairs found. For the pool
// walks every such pair is an answered result (only identifiers that can
// produce one are indexed); for identifiers none of which is a substring of
// another, M <= T. In the worst case (identifiers nested in one another,
// such as 1, 11, 111) M is at most T times the number of distinct
// identifier lengths.
#ifndef ZEDA_PELKA_POOLRULES_H
#define ZEDA_PELKA_POOLRULES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "inventory/Records.h"

namespace zeda::pelka {

// Pool of `disk` in the enumeration of ZEDA_ConcreteComponent_Primordial:
// 1 for isFree, else 0 (none) for isSsd or isSpare, else 2.
int EnumeratedPool(const zeda::orvi::OrviDisk& disk);

// Pool of the disk `diskId` of a NAS: every disk record whose id equals
// `diskId` without regard to case (each character upper-cased in the global
// locale) is classified, in NAS order; the last one with a pool decides. 0
// when no equal record has a pool.
// A record's pool is a number 1 to 4, 0 when it is in none. The flags decide
// first, in the order isFree (1), isSsd (4), isSpare (3). A disk without any
// flag is looked for in the RAID groups, in order: per group its spareDisks
// list, then its dataDisks list. An entry matches when it contains the disk
// identifier as a substring (an empty identifier matches every entry); the
// first match in a list sets 3 (spare) or 2 (data) and ends that list. The
// walk covers every group, so the last match wins.
int PoolOfDisk(const zeda::orvi::OrviDiskList& diskList, const std::string& diskId);

// Per disk of `diskList`, in disk order, the number of times the disk is
// returned for pool `pool` (any number; outside 1 to 4 nothing matches). A
// flag that names the pool (isFree for 1, isSsd for 4, isSpare for 3) gives
// exactly one return. Otherwise every RAID group is walked without early
// exit: each spareDisks entry that contains the disk identifier gives one
// return for pool 3, each dataDisks entry that contains it one return for
// pool 2, whatever the disk's flags.
std::vector<std::size_t> PoolMembershipCounts(const zeda::orvi::OrviDiskList& diskList, int pool);

// Bytes per pool; index 0 to 3 for pools 1 to 4.
using PoolTotals = std::array<std::uint64_t, 4>;

// Adds every disk's capacity to the pools it counts in. The flags decide
// first, in the order isFree (pool 1), isSsd (pool 4), isSpare (pool 3), and
// such a disk counts once. A disk without any flag is looked for per RAID
// group in the group's spareDisks joined with "," (pool 3), then in its
// dataDisks joined the same way (pool 2). The identifier is searched in the
// joined text, so a match may span the "," between two entries, and a disk
// counts once per group and list that holds it.
PoolTotals ComputePoolTotals(const zeda::orvi::OrviDiskList& diskList);

}  // namespace zeda::pelka

#endif
