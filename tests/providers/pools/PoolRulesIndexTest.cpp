// The indexed pool rules against a plain reference that searches every entry
// for every disk, on random inventories built to stress substring matching:
// short identifiers over a tiny alphabet (so they are substrings of one
// another), empty identifiers and entries, commas inside entries, letters
// that differ only in case, and repeated identifiers.
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <locale>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/predicate.hpp>

#include "PoolRecords.h"
#include "providers/pools/PoolRules.h"
#include "providers/pools/SubstringIndex.h"

namespace zeda::test {
namespace {

using zeda::orvi::OrviDisk;
using zeda::orvi::OrviDiskGroup;
using zeda::orvi::OrviDiskList;
using zeda::pelka::PoolTotals;

// ---- Reference rules: every entry searched for every disk. ----

bool Contains(const std::string& text, const std::string& id) {
  return text.find(id) != std::string::npos;
}

std::size_t EntriesContaining(const std::vector<std::string>& entries, const std::string& id) {
  std::size_t count = 0;
  for (const std::string& entry : entries) {
    count += Contains(entry, id) ? 1 : 0;
  }
  return count;
}

int ReferenceClassify(const OrviDisk& disk, const std::vector<OrviDiskGroup>& groups) {
  if (disk.isFree) return 1;
  if (disk.isSsd) return 4;
  if (disk.isSpare) return 3;
  int pool = 0;
  for (const OrviDiskGroup& group : groups) {
    if (EntriesContaining(group.spareDisks, disk.id) != 0) pool = 3;
    if (EntriesContaining(group.dataDisks, disk.id) != 0) pool = 2;
  }
  return pool;
}

int ReferencePoolOfDisk(const OrviDiskList& list, const std::string& diskId) {
  int pool = 0;
  for (const OrviDisk& disk : list.disks) {
    if (boost::algorithm::iequals(disk.id, diskId, std::locale())) {
      const int found = ReferenceClassify(disk, list.groups);
      if (found != 0) pool = found;
    }
  }
  return pool;
}

std::size_t ReferenceMembership(const OrviDisk& disk, const std::vector<OrviDiskGroup>& groups,
                                int pool) {
  if ((disk.isFree && pool == 1) || (disk.isSsd && pool == 4) || (disk.isSpare && pool == 3)) {
    return 1;
  }
  std::size_t count = 0;
  for (const OrviDiskGroup& group : groups) {
    if (pool == 3) count += EntriesContaining(group.spareDisks, disk.id);
    if (pool == 2) count += EntriesContaining(group.dataDisks, disk.id);
  }
  return count;
}

PoolTotals ReferenceTotals(const OrviDiskList& list) {
  PoolTotals totals{};
  for (const OrviDisk& disk : list.disks) {
    if (disk.isFree) {
      totals[0] += disk.capacity;
    } else if (disk.isSsd) {
      totals[3] += disk.capacity;
    } else if (disk.isSpare) {
      totals[2] += disk.capacity;
    } else {
      for (const OrviDiskGroup& group : list.groups) {
        if (Contains(boost::algorithm::join(group.spareDisks, ","), disk.id)) {
          totals[2] += disk.capacity;
        }
        if (Contains(boost::algorithm::join(group.dataDisks, ","), disk.id)) {
          totals[1] += disk.capacity;
        }
      }
    }
  }
  return totals;
}

// ---- Random inventories. ----

class RandomInventory {
 public:
  explicit RandomInventory(unsigned seed) : random_(seed) {}

  OrviDiskList Make() {
    OrviDiskList list;
    const int disks = Below(12);
    for (int d = 0; d < disks; ++d) {
      unsigned flags = 0;
      if (Below(4) == 0) flags |= kFree;
      if (Below(4) == 0) flags |= kSpare;
      if (Below(5) == 0) flags |= kSsd;
      // Huge capacities too, so that wrapping sums are compared.
      const std::uint64_t capacity = Below(6) == 0
                                         ? ~std::uint64_t{0} - static_cast<std::uint64_t>(Below(3))
                                         : static_cast<std::uint64_t>(1 + Below(1000));
      list.disks.push_back(
          Disk(Below(3) == 0 && d > 0 ? list.disks[Below(d)].id : Text(4), capacity, flags));
    }
    const int groups = Below(5);
    for (int g = 0; g < groups; ++g) {
      list.groups.push_back(Group(Entries(), Entries()));
    }
    return list;
  }

  // An identifier of the inventory, a case variant of one, or random text.
  std::string Probe(const OrviDiskList& list) {
    if (list.disks.empty() || Below(4) == 0) return Text(4);
    std::string id = list.disks[Below(static_cast<int>(list.disks.size()))].id;
    for (char& ch : id) {
      if (Below(2) == 0) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    }
    return id;
  }

 private:
  int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random_); }

  std::string Text(int maxLength) {
    static constexpr std::string_view kAlphabet = "01:,aA";
    std::string text;
    const int length = Below(maxLength + 1);
    for (int i = 0; i < length; ++i) {
      text += kAlphabet[static_cast<std::size_t>(Below(static_cast<int>(kAlphabet.size())))];
    }
    return text;
  }

  std::vector<std::string> Entries() {
    std::vector<std::string> entries;
    const int count = Below(4);
    for (int i = 0; i < count; ++i) entries.push_back(Text(6));
    return entries;
  }

  std::mt19937 random_;
};

constexpr unsigned kRounds = 3000;

TEST(IndexedPoolRules, ClassifyDiskAndPoolOfDiskMatchTheReference) {
  RandomInventory random(11);
  for (unsigned round = 0; round < kRounds; ++round) {
    const OrviDiskList list = random.Make();
    for (const OrviDisk& disk : list.disks) {
      ASSERT_EQ(ClassifyDisk(disk, list.groups), ReferenceClassify(disk, list.groups))
          << "round " << round << " disk '" << disk.id << "'";
    }
    for (int probe = 0; probe < 4; ++probe) {
      const std::string id = random.Probe(list);
      ASSERT_EQ(zeda::pelka::PoolOfDisk(list, id), ReferencePoolOfDisk(list, id))
          << "round " << round << " id '" << id << "'";
    }
  }
}

TEST(IndexedPoolRules, MembershipCountsMatchTheReferenceForEveryPool) {
  RandomInventory random(12);
  for (unsigned round = 0; round < kRounds; ++round) {
    const OrviDiskList list = random.Make();
    for (int pool = 0; pool <= 5; ++pool) {
      const std::vector<std::size_t> counts = zeda::pelka::PoolMembershipCounts(list, pool);
      ASSERT_EQ(counts.size(), list.disks.size());
      for (std::size_t d = 0; d < list.disks.size(); ++d) {
        const std::size_t expected = ReferenceMembership(list.disks[d], list.groups, pool);
        ASSERT_EQ(counts[d], expected) << "round " << round << " pool " << pool << " disk " << d;
        ASSERT_EQ(PoolMembershipCount(list.disks[d], list.groups, pool), expected);
      }
    }
  }
}

TEST(IndexedPoolRules, TotalsMatchTheReference) {
  RandomInventory random(13);
  for (unsigned round = 0; round < kRounds; ++round) {
    const OrviDiskList list = random.Make();
    ASSERT_EQ(zeda::pelka::ComputePoolTotals(list), ReferenceTotals(list)) << "round " << round;
  }
}

// ---- The automaton itself. ----

std::vector<std::size_t> Occurring(zeda::pelka::SubstringIndex& index, std::string_view text) {
  std::vector<std::size_t> found(index.PatternCount(), 0);
  index.ForEachOccurring(text, [&found](std::size_t pattern) { ++found[pattern]; });
  return found;
}

TEST(SubstringIndex, EqualIdentifiersShareAPattern) {
  const zeda::pelka::SubstringIndex index({"ab", "b", "ab", ""});
  EXPECT_EQ(index.PatternCount(), 3u);
  EXPECT_EQ(index.PatternOf(0), index.PatternOf(2));
  EXPECT_NE(index.PatternOf(0), index.PatternOf(1));
}

TEST(SubstringIndex, ReportsEveryOccurringPatternExactlyOnce) {
  zeda::pelka::SubstringIndex index({"a", "aa", "aaa", "b", "", "ab"});
  // Pattern numbers follow first appearance: a 0, aa 1, aaa 2, b 3, "" 4, ab 5.
  EXPECT_EQ(Occurring(index, "aaaa"), (std::vector<std::size_t>{1, 1, 1, 0, 1, 0}));
  EXPECT_EQ(Occurring(index, "bab"), (std::vector<std::size_t>{1, 0, 0, 1, 1, 1}));
  EXPECT_EQ(Occurring(index, ""), (std::vector<std::size_t>{0, 0, 0, 0, 1, 0}));
  EXPECT_EQ(Occurring(index, "xyz"), (std::vector<std::size_t>{0, 0, 0, 0, 1, 0}));
}

TEST(SubstringIndex, WithoutTheEmptyIdentifierAnEmptyTextHoldsNothing) {
  zeda::pelka::SubstringIndex index({"1", "0:1"});
  EXPECT_EQ(Occurring(index, ""), (std::vector<std::size_t>{0, 0}));
  EXPECT_EQ(Occurring(index, "0:10"), (std::vector<std::size_t>{1, 1}));
  EXPECT_EQ(Occurring(index, "0:,1"), (std::vector<std::size_t>{1, 0}));
}

TEST(SubstringIndex, MatchesFindOnRandomTexts) {
  std::mt19937 random(14);
  auto text = [&random](int maxLength) {
    std::string s(static_cast<std::size_t>(random() % static_cast<unsigned>(maxLength + 1)), ' ');
    for (char& ch : s) ch = "ab,"[random() % 3];
    return s;
  };
  for (int round = 0; round < 500; ++round) {
    std::vector<std::string> ids;
    for (int i = 0; i < 8; ++i) ids.push_back(text(4));
    const std::vector<std::string_view> views(ids.begin(), ids.end());
    zeda::pelka::SubstringIndex index(views);
    for (int t = 0; t < 6; ++t) {
      const std::string haystack = text(12);
      const std::vector<std::size_t> found = Occurring(index, haystack);
      for (std::size_t i = 0; i < ids.size(); ++i) {
        ASSERT_EQ(found[index.PatternOf(i)], Contains(haystack, ids[i]) ? 1u : 0u)
            << "'" << ids[i] << "' in '" << haystack << "'";
      }
    }
  }
}

TEST(SubstringIndex, MatchesFindWithEveryByteAndWideBranching) {
  // Identifiers over all 256 byte values, so that nodes have many edges
  // (searched by halving) and bytes above 0x7f sort after the others; given
  // in random order, so the index sorts them itself.
  std::mt19937 random(15);
  auto text = [&random](int maxLength) {
    std::string s(static_cast<std::size_t>(random() % static_cast<unsigned>(maxLength + 1)), ' ');
    for (char& ch : s) ch = static_cast<char>(random() % 256);
    return s;
  };
  for (int round = 0; round < 20; ++round) {
    std::vector<std::string> ids;
    for (int i = 0; i < 400; ++i) ids.push_back(text(3));
    ids.push_back(ids[7]);  // a repeat shares its pattern
    const std::vector<std::string_view> views(ids.begin(), ids.end());
    zeda::pelka::SubstringIndex index(views);
    EXPECT_EQ(index.PatternOf(ids.size() - 1), index.PatternOf(7));
    for (int t = 0; t < 50; ++t) {
      std::string haystack = text(40);
      if (t % 2 == 0) haystack += ids[random() % ids.size()];  // at least one inside
      const std::vector<std::size_t> found = Occurring(index, haystack);
      for (std::size_t i = 0; i < ids.size(); ++i) {
        ASSERT_EQ(found[index.PatternOf(i)], Contains(haystack, ids[i]) ? 1u : 0u)
            << "identifier " << i << " in round " << round;
      }
    }
  }
}

}  // namespace
}  // namespace zeda::test
