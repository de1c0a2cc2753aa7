#include "DiskKeyIndex.h"

#include <array>
#include <stdexcept>

namespace zeda::pelka::platform {

namespace {

char AsciiLower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

// FNV-1a over the folded bytes, then a finaliser that spreads every input
// bit over the whole word: the low bits choose the home slot, the high 32
// are kept in the slot to skip most comparisons with other keys.
constexpr std::uint64_t kFnvOffset = 14695981039346656037ULL;
constexpr std::uint64_t kFnvPrime = 1099511628211ULL;

std::uint64_t HashFolded(std::uint64_t hash, std::string_view text) {
  for (const char c : text) {
    hash ^= static_cast<unsigned char>(AsciiLower(c));
    hash *= kFnvPrime;
  }
  return hash;
}

std::uint64_t Finished(std::uint64_t hash) {
  hash ^= hash >> 33;
  hash *= 0xff51afd7ed558ccdULL;
  hash ^= hash >> 33;
  hash *= 0xc4ceb9fe1a85ec53ULL;
  hash ^= hash >> 33;
  return hash;
}

std::uint32_t Tag(std::uint64_t hash) { return static_cast<std::uint32_t>(hash >> 32); }

// Whether `a` and `b`, of one size, hold the same text, letter case aside.
bool SameFolded(std::string_view a, std::string_view b) {
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
  }
  return true;
}

// The slots for `entries` entries: a power of two, at least twice as many.
std::size_t SlotCount(std::size_t entries) {
  std::size_t count = 4;
  while (count < 2 * entries) count *= 2;
  return count;
}

}  // namespace

DiskKeyIndex::DiskKeyIndex(const std::vector<DiskRecord>& disks) : disks_(disks) {
  if (disks_.size() > (kEmpty - 1) / 2) {
    throw std::length_error("too many disks in one NAS for the disk index");
  }
  const std::size_t entries = 2 * disks_.size();
  slots_.resize(SlotCount(entries));
  mask_ = slots_.size() - 1;
  firstOfKey_.assign(entries, 1);
  // On a large NAS nearly every insertion lands on a line not in the cache:
  // each entry's hash is computed kAhead entries before it is inserted and its
  // home slot fetched meanwhile.
  constexpr std::size_t kAhead = 16;
  std::array<std::uint64_t, kAhead> ahead{};
  const auto hashOf = [this](std::size_t entry) {
    return HashOf(KeyOfEntry(static_cast<std::uint32_t>(entry)));
  };
  for (std::size_t entry = 0; entry < entries + kAhead; ++entry) {
    if (entry >= kAhead) {
      const std::size_t inserted = entry - kAhead;
      Insert(static_cast<std::uint32_t>(inserted), ahead[inserted % kAhead]);
    }
    if (entry < entries) {
      const std::uint64_t hash = hashOf(entry);
      __builtin_prefetch(&slots_[static_cast<std::size_t>(hash) & mask_], 1);
      ahead[entry % kAhead] = hash;
    }
  }
}

// The health key is the text before the first ":" followed by the text after
// it ("0:3" gives "03"); an identifier without ":" gives itself twice ("7"
// gives "77"), which is what the NAS API has always answered to.
DiskKeyIndex::Key DiskKeyIndex::KeyOf(std::string_view id, Form form) {
  if (form == Form::Identifier) return Key{id, {}};
  const std::size_t colon = id.find(':');
  if (colon == std::string_view::npos) return Key{id, id};
  return Key{id.substr(0, colon), id.substr(colon + 1)};
}

std::uint64_t DiskKeyIndex::HashOf(const Key& key) {
  return Finished(HashFolded(HashFolded(kFnvOffset, key.first), key.second));
}

bool DiskKeyIndex::SameKey(const Key& a, const Key& b) {
  const std::size_t size = a.first.size() + a.second.size();
  if (size != b.first.size() + b.second.size()) return false;
  // A look-up compares with a text in one piece: a piece-by-piece compare.
  if (b.second.empty()) {
    return SameFolded(a.first, b.first.substr(0, a.first.size())) &&
           SameFolded(a.second, b.first.substr(a.first.size()));
  }
  const auto at = [](const Key& key, std::size_t i) {
    return AsciiLower(i < key.first.size() ? key.first[i] : key.second[i - key.first.size()]);
  };
  for (std::size_t i = 0; i < size; ++i) {
    if (at(a, i) != at(b, i)) return false;
  }
  return true;
}

DiskKeyIndex::Key DiskKeyIndex::KeyOfEntry(std::uint32_t entry) const {
  return KeyOf(disks_[entry / 2].disk.id, FormOf(entry));
}

void DiskKeyIndex::Insert(std::uint32_t entry, std::uint64_t hash) {
  // Equal keys have equal hashes, so every earlier entry with this key lies
  // on the probe sequence walked here; only equal tags need a comparison.
  const std::uint32_t tag = Tag(hash);
  std::size_t at = static_cast<std::size_t>(hash) & mask_;
  for (; slots_[at].entry != kEmpty; at = (at + 1) & mask_) {
    if (firstOfKey_[entry] == 1 && slots_[at].hash == tag) {
      if (SameKey(KeyOfEntry(entry), KeyOfEntry(slots_[at].entry))) firstOfKey_[entry] = 0;
    }
  }
  slots_[at] = Slot{tag, entry};
}

std::optional<std::size_t> DiskKeyIndex::FindNearRecent(std::string_view text,
                                                        bool identifierOnly) const {
  // The next disk first: a walk in list order asks for it.
  const std::size_t recent = recent_.load(std::memory_order_relaxed);
  for (const std::size_t position : {recent + 1, recent}) {
    if (position >= disks_.size()) continue;
    for (std::uint32_t form = identifierOnly ? 1 : 0; form < 2; ++form) {
      const auto entry = static_cast<std::uint32_t>(position * 2 + form);
      if (firstOfKey_[entry] == 1 && SameKey(KeyOfEntry(entry), Key{text, {}})) return position;
    }
  }
  return std::nullopt;
}

std::optional<std::size_t> DiskKeyIndex::FindInTable(std::string_view text,
                                                     bool identifierOnly) const {
  const std::uint64_t hash = HashOf(Key{text, {}});
  const std::uint32_t tag = Tag(hash);
  for (std::size_t at = static_cast<std::size_t>(hash) & mask_; slots_[at].entry != kEmpty;
       at = (at + 1) & mask_) {
    const Slot& slot = slots_[at];
    if (slot.hash != tag) continue;
    if (identifierOnly && FormOf(slot.entry) != Form::Identifier) continue;
    if (SameKey(KeyOfEntry(slot.entry), Key{text, {}})) return slot.entry / 2;
  }
  return std::nullopt;
}

std::optional<std::size_t> DiskKeyIndex::Find(std::string_view text, bool identifierOnly) const {
  std::optional<std::size_t> found = FindNearRecent(text, identifierOnly);
  if (!found) found = FindInTable(text, identifierOnly);
  if (found) recent_.store(static_cast<std::uint32_t>(*found), std::memory_order_relaxed);
  return found;
}

std::optional<std::size_t> DiskKeyIndex::FindByHealthKey(std::string_view key) const {
  return Find(key, false);
}

std::optional<std::size_t> DiskKeyIndex::FindByIdentifier(std::string_view id) const {
  return Find(id, true);
}

}  // namespace zeda::pelka::platform
