// The look-up of a NAS's disks by identifier and by health key, without
// regard to ASCII letter case, built once per snapshot.
//
// One flat open-addressing table (linear probing, at most half full) of
// 8-byte slots holds two entries per disk, its health key and its
// identifier, in list order. A slot holds a hash and the disk's position;
// the keys themselves are never copied: a candidate is confirmed against the
// disk's identifier in the snapshot's own records. So building the index
// allocates one array and reads the identifiers in one pass.
//
// First disk wins: entries are never removed and are inserted in list order,
// so of the entries with one key, the earlier one always stands earlier on
// the probe sequence from their common home slot, and a look-up stops at the
// first match.
//
// Providers ask for the disks of a NAS in list order, so a look-up first
// tries the disk found last and the one after it, without hashing: on a large
// NAS a probe of the table is a cache miss, a look at the next record is not.
// A guess is taken only for an entry that is the first of its key (marked
// while the table is built), so it gives exactly the table's answer.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/Inventory.h"

namespace zeda::pelka::platform {

class DiskKeyIndex {
 public:
  // `disks` must outlive the index and stay unchanged (both belong to one
  // snapshot). Throws std::length_error beyond 2^31 - 1 disks.
  explicit DiskKeyIndex(const std::vector<DiskRecord>& disks);

  // Position of the first disk, in list order, whose health key or whose
  // identifier equals `key` without regard to ASCII letter case.
  std::optional<std::size_t> FindByHealthKey(std::string_view key) const;
  // Position of the first disk whose identifier equals `id` without regard
  // to ASCII letter case.
  std::optional<std::size_t> FindByIdentifier(std::string_view id) const;

 private:
  enum class Form : std::uint32_t { HealthKey = 0, Identifier = 1 };

  // An entry is a disk's position * 2 + its form: health key first.
  static Form FormOf(std::uint32_t entry) { return static_cast<Form>(entry & 1U); }

  struct Slot {
    std::uint32_t hash = 0;  // the high half of the key's hash
    std::uint32_t entry = kEmpty;
  };
  static constexpr std::uint32_t kEmpty = UINT32_MAX;

  // A key as the two pieces of text it is made of, read in sequence.
  struct Key {
    std::string_view first;
    std::string_view second;
  };
  static Key KeyOf(std::string_view id, Form form);
  static std::uint64_t HashOf(const Key& key);

  // Whether two keys are the same text without regard to ASCII letter case.
  static bool SameKey(const Key& a, const Key& b);
  Key KeyOfEntry(std::uint32_t entry) const;
  void Insert(std::uint32_t entry, std::uint64_t hash);
  // The look-up: near the disk found last, else in the table.
  std::optional<std::size_t> Find(std::string_view text, bool identifierOnly) const;
  // The table's answer when it is the disk found last or the one after it.
  std::optional<std::size_t> FindNearRecent(std::string_view text, bool identifierOnly) const;
  std::optional<std::size_t> FindInTable(std::string_view text, bool identifierOnly) const;

  const std::vector<DiskRecord>& disks_;
  std::vector<Slot> slots_;  // size a power of two, at least twice the entries
  std::size_t mask_ = 0;     // slots_.size() - 1
  // Per entry: 1 when no earlier entry has the same key (so a look-up of
  // that key answers this entry's disk).
  std::vector<std::uint8_t> firstOfKey_;
  // Position of the disk the last look-up found; only a guess (any thread may
  // move it), checked before use.
  mutable std::atomic<std::uint32_t> recent_{0};
};

}  // namespace zeda::pelka::platform
