#include "providers/pools/PoolTable.h"

#include <array>

namespace zeda::pelka {

namespace {

constexpr std::array<PoolKind, 4> kPools{{
    {1, "PrimordialPool1", ":PrimordialPool1", "Free", 2, true},
    {2, "PrimordialPool2", ":PrimordialPool2", "Data", 1, false},
    {3, "PrimordialPool3", ":PrimordialPool3", "Spare", 1, false},
    {4, "PrimordialPool4", ":PrimordialPool4", "Cache", 1, false},
}};

}  // namespace

const PoolKind* FindPool(int number) {
  if (number < 1 || number > static_cast<int>(kPools.size())) {
    return nullptr;
  }
  return &kPools[static_cast<std::size_t>(number - 1)];
}

std::string PoolInstanceId(const std::string& systemName, const PoolKind& pool) {
  return systemName + pool.instanceIdSuffix;
}

std::uint64_t RemainingManagedSpace(const PoolKind& pool, std::uint64_t total) {
  return pool.remainingIsTotal ? total : 0;
}

}  // namespace zeda::pelka
