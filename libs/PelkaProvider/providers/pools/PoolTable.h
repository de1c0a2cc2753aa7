// The four primordial pools every NAS has, one per way a disk can be used.
// The pool number is the last character of the PoolID and the index + 1 of
// the pool's entry in PoolTotals.
#ifndef ZEDA_PELKA_POOLTABLE_H
#define ZEDA_PELKA_POOLTABLE_H

#include <cstdint>
#include <string>

#include "providers/common/ClassNames.h"

namespace zeda::pelka {

// CIM class of the pools; no provider of this module serves it, the pool
// associations build its paths and instances themselves.
inline constexpr const char* kStoragePoolClass = className::kStoragePoolPrimordial;

struct PoolKind {
  int number;                    // 1 free, 2 data, 3 spare, 4 cache
  const char* poolId;            // "PrimordialPool1" ... "PrimordialPool4"
  const char* instanceIdSuffix;  // ":PrimordialPool1" ...; follows the system name
  const char* elementName;       // "Free", "Data", "Spare", "Cache"
  std::uint16_t usage;           // CIM Usage of the pool
  bool remainingIsTotal;         // free pool: all of its space remains unused
};

// The pool of that number, or nullptr outside 1 to 4.
const PoolKind* FindPool(int number);

// InstanceID of a pool: the system name followed by the pool's suffix
// ("ZEDA:nas1" and pool 3 give "ZEDA:nas1:PrimordialPool3").
std::string PoolInstanceId(const std::string& systemName, const PoolKind& pool);

// RemainingManagedSpace in bytes: the whole total for the free pool, else 0.
std::uint64_t RemainingManagedSpace(const PoolKind& pool, std::uint64_t total);

}  // namespace zeda::pelka

#endif
