// Which primordial pool one disk belongs to, as the extent-to-pool walk of
// the pool associations decides it.
#ifndef ZEDA_PELKA_CLASSIFYDISK_H
#define ZEDA_PELKA_CLASSIFYDISK_H

#include <vector>

#include "inventory/Records.h"

namespace zeda::pelka {

// Pool number 1 to 4 of `disk`, 0 when it is in none. The flags decide
// first, in the order isFree (1), isSsd (4), isSpare (3). A disk without any
// flag is looked for in the RAID groups, in order: per group its spareDisks
// list, then its dataDisks list. An entry matches when it contains the disk
// identifier as a substring (an empty identifier matches every entry); the
// first match in a list sets 3 (spare) or 2 (data) and ends that list. The
// walk covers every group, so the last match wins.
int ClassifyDisk(const zeda::orvi::OrviDisk& disk,
                 const std::vector<zeda::orvi::OrviDiskGroup>& groups);

}  // namespace zeda::pelka

#endif
