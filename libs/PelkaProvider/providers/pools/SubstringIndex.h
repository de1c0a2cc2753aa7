// Which of a fixed set of identifiers occur inside a text, for many texts, in
// time linear in the texts: an Aho-Corasick automaton over the identifiers.
// The pool rules build one per request over the disk identifiers of a NAS
// and run it once over every RAID-group entry (or joined list) instead of
// searching every entry for every disk. Building it takes one pass over the
// identifiers when they come in byte order, as disk lists usually do, and a
// sort of them otherwise.
#ifndef ZEDA_PELKA_SUBSTRINGINDEX_H
#define ZEDA_PELKA_SUBSTRINGINDEX_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zeda::pelka {

class SubstringIndex {
 public:
  // Patterns are numbered 0, 1, ... in order of first appearance; equal
  // identifiers share one number. The empty identifier is a pattern too: it
  // occurs in every text, the empty text included (as std::string::find
  // finds it).
  explicit SubstringIndex(const std::vector<std::string_view>& identifiers);

  // Pattern number of identifiers[i] of the constructor.
  std::size_t PatternOf(std::size_t identifier) const { return patternOf_[identifier]; }
  std::size_t PatternCount() const { return patternCount_; }

  // Calls found(pattern) once for every distinct pattern that occurs in
  // `text` (as a substring), in no particular order. Cost: O(|text| + the
  // number of patterns reported), as every step of the walk either reads a
  // character, follows a failure link (paid for by characters read before)
  // or reports a pattern not yet reported for this text.
  template <class Found>
  void ForEachOccurring(std::string_view text, Found&& found);

 private:
  static constexpr std::uint32_t kNone = UINT32_MAX;
  static constexpr std::uint32_t kRoot = 0;

  // What the text walk reads, kept small so that more of the trie stays in
  // cache.
  struct Node {
    std::uint32_t fail = kRoot;     // longest proper suffix that is a trie node
    std::uint32_t output = kNone;   // nearest pattern node on the fail chain
    std::uint32_t pattern = kNone;  // pattern ending here
    std::uint32_t seen = 0;         // number of the last text that reported this node
  };

  // Builds the trie with nodes numbered in depth-first order of the sorted
  // identifiers; returns the node each identifier ends at.
  std::vector<std::uint32_t> BuildTrie(const std::vector<std::string_view>& identifiers);
  std::uint32_t Child(std::uint32_t node, unsigned char byte) const;
  void LinkFailures();
  // Reports `node` and the pattern nodes on its output chain not yet seen in
  // this text; stops at the first one seen (its chain was reported with it).
  template <class Found>
  void Report(std::uint32_t node, Found& found);

  // Nodes in depth-first order, so that texts which share a beginning, as the
  // neighbouring entries of a RAID group do, walk neighbouring memory. The
  // edges out of node n are firstEdge_[n] .. firstEdge_[n + 1] - 1 of
  // edgeByte_/edgeTarget_, in increasing byte order.
  std::vector<Node> nodes_;
  std::vector<std::uint32_t> firstEdge_;
  std::vector<unsigned char> edgeByte_;
  std::vector<std::uint32_t> edgeTarget_;
  std::vector<std::size_t> patternOf_;
  std::size_t patternCount_ = 0;
  std::uint32_t text_ = 0;  // number of the current text, for `seen`
};

template <class Found>
void SubstringIndex::Report(std::uint32_t node, Found& found) {
  if (nodes_[node].pattern == kNone) {
    node = nodes_[node].output;
  }
  while (node != kNone && nodes_[node].seen != text_) {
    nodes_[node].seen = text_;
    found(static_cast<std::size_t>(nodes_[node].pattern));
    node = nodes_[node].output;
  }
}

template <class Found>
void SubstringIndex::ForEachOccurring(std::string_view text, Found&& found) {
  if (++text_ == 0) {  // the counter wrapped: forget every mark
    for (Node& node : nodes_) {
      node.seen = 0;
    }
    text_ = 1;
  }
  std::uint32_t state = kRoot;
  Report(state, found);
  for (const char ch : text) {
    const auto byte = static_cast<unsigned char>(ch);
    std::uint32_t next = Child(state, byte);
    while (next == kNone && state != kRoot) {
      state = nodes_[state].fail;
      next = Child(state, byte);
    }
    state = next == kNone ? kRoot : next;
    Report(state, found);
  }
}

}  // namespace zeda::pelka

#endif
