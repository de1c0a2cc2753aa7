#include "providers/pools/SubstringIndex.h"

#include <stdexcept>

namespace zeda::pelka {

namespace {

std::uint64_t EdgeKey(std::uint32_t node, unsigned char byte) {
  return ((static_cast<std::uint64_t>(node) << 8) | byte) + 1;
}

std::size_t EdgeSlot(std::uint64_t key, std::size_t mask) {
  // Fibonacci hashing: the multiplication spreads consecutive keys.
  return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15ULL) >> 32) & mask;
}

}  // namespace

SubstringIndex::SubstringIndex(const std::vector<std::string_view>& identifiers) {
  std::size_t bytes = 0;
  for (const std::string_view id : identifiers) {
    bytes += id.size();
  }
  if (bytes >= kNone) {
    throw std::length_error("too many identifier bytes for a substring index");
  }
  nodes_.reserve(bytes + 1);
  nodes_.emplace_back();
  edgeKeys_.assign(16, 0);
  edgeTargets_.assign(16, kNone);
  patternOf_.reserve(identifiers.size());
  for (const std::string_view id : identifiers) {
    std::uint32_t node = kRoot;
    for (const char ch : id) {
      const auto byte = static_cast<unsigned char>(ch);
      const std::uint32_t child = Child(node, byte);
      node = child == kNone ? AddChild(node, byte) : child;
    }
    if (nodes_[node].pattern == kNone) {
      nodes_[node].pattern = static_cast<std::uint32_t>(patternCount_++);
    }
    patternOf_.push_back(nodes_[node].pattern);
  }
  LinkFailures();
}

std::uint32_t SubstringIndex::Child(std::uint32_t node, unsigned char byte) const {
  const std::uint64_t key = EdgeKey(node, byte);
  const std::size_t mask = edgeKeys_.size() - 1;
  for (std::size_t slot = EdgeSlot(key, mask);; slot = (slot + 1) & mask) {
    if (edgeKeys_[slot] == key) {
      return edgeTargets_[slot];
    }
    if (edgeKeys_[slot] == 0) {
      return kNone;
    }
  }
}

std::uint32_t SubstringIndex::AddChild(std::uint32_t node, unsigned char byte) {
  // Keep the table at most half full so that probes stay short.
  if (2 * (edgeCount_ + 1) > edgeKeys_.size()) {
    GrowEdges();
  }
  const auto child = static_cast<std::uint32_t>(nodes_.size());
  Node added;
  added.byte = byte;
  added.nextSibling = nodes_[node].firstChild;
  nodes_.push_back(added);
  nodes_[node].firstChild = child;
  const std::uint64_t key = EdgeKey(node, byte);
  const std::size_t mask = edgeKeys_.size() - 1;
  std::size_t slot = EdgeSlot(key, mask);
  while (edgeKeys_[slot] != 0) {
    slot = (slot + 1) & mask;
  }
  edgeKeys_[slot] = key;
  edgeTargets_[slot] = child;
  ++edgeCount_;
  return child;
}

void SubstringIndex::GrowEdges() {
  std::vector<std::uint64_t> keys(edgeKeys_.size() * 2, 0);
  std::vector<std::uint32_t> targets(edgeTargets_.size() * 2, kNone);
  const std::size_t mask = keys.size() - 1;
  for (std::size_t old = 0; old < edgeKeys_.size(); ++old) {
    if (edgeKeys_[old] == 0) {
      continue;
    }
    std::size_t slot = EdgeSlot(edgeKeys_[old], mask);
    while (keys[slot] != 0) {
      slot = (slot + 1) & mask;
    }
    keys[slot] = edgeKeys_[old];
    targets[slot] = edgeTargets_[old];
  }
  edgeKeys_.swap(keys);
  edgeTargets_.swap(targets);
}

void SubstringIndex::LinkFailures() {
  // Breadth first, so that every node's fail target (a shorter string) is
  // linked before the node itself. The root's output stays kNone: the empty
  // pattern, if any, is reported by the root itself at the start of a text
  // and ends every output chain through the children of the root.
  std::vector<std::uint32_t> queue;
  queue.reserve(nodes_.size());
  for (std::uint32_t child = nodes_[kRoot].firstChild; child != kNone;
       child = nodes_[child].nextSibling) {
    nodes_[child].fail = kRoot;
    nodes_[child].output = nodes_[kRoot].pattern != kNone ? kRoot : kNone;
    queue.push_back(child);
  }
  for (std::size_t head = 0; head < queue.size(); ++head) {
    const std::uint32_t node = queue[head];
    for (std::uint32_t child = nodes_[node].firstChild; child != kNone;
         child = nodes_[child].nextSibling) {
      const unsigned char byte = nodes_[child].byte;
      std::uint32_t fail = nodes_[node].fail;
      std::uint32_t target = Child(fail, byte);
      while (target == kNone && fail != kRoot) {
        fail = nodes_[fail].fail;
        target = Child(fail, byte);
      }
      nodes_[child].fail = target == kNone ? kRoot : target;
      const Node& failNode = nodes_[nodes_[child].fail];
      nodes_[child].output =
          failNode.pattern != kNone ? nodes_[child].fail : failNode.output;
      queue.push_back(child);
    }
  }
}

}  // namespace zeda::pelka
