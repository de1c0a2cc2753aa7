// CIM values derived from a disk record that several classes report alike.
#ifndef ZEDA_PELKA_DISKPROPERTIES_H
#define ZEDA_PELKA_DISKPROPERTIES_H

#include <cstdint>

namespace zeda::pelka {

// CIM DiskType: 3 solid state, 2 hard disk.
constexpr std::uint16_t DiskTypeOf(bool isSsd) { return isSsd ? 3 : 2; }

// CIM ExtentStatus: 13 "Unused" for a free disk, else 2 "None/Not Applicable".
constexpr std::uint16_t ExtentStatusOf(bool isFree) { return isFree ? 13 : 2; }

// Whole 512-byte blocks of a capacity in bytes; the remainder is dropped.
constexpr std::uint64_t BlocksOf(std::uint64_t capacityBytes) { return capacityBytes >> 9; }

}  // namespace zeda::pelka

#endif
