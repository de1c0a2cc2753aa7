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
  std::vector<Links> links(1);
  links.reserve(bytes + 1);
  edges_.assign(16, Edge{});
  patternOf_.reserve(identifiers.size());
  for (const std::string_view id : identifiers) {
    std::uint32_t node = kRoot;
    for (const char ch : id) {
      const auto byte = static_cast<unsigned char>(ch);
      const std::uint32_t child = Child(node, byte);
      node = child == kNone ? AddChild(node, byte, links) : child;
    }
    if (nodes_[node].pattern == kNone) {
      nodes_[node].pattern = static_cast<std::uint32_t>(patternCount_++);
    }
    patternOf_.push_back(nodes_[node].pattern);
  }
  LinkFailures(links);
}

std::uint32_t SubstringIndex::Child(std::uint32_t node, unsigned char byte) const {
  const std::uint64_t key = EdgeKey(node, byte);
  const std::size_t mask = edges_.size() - 1;
  for (std::size_t slot = EdgeSlot(key, mask);; slot = (slot + 1) & mask) {
    if (edges_[slot].key == key) {
      return edges_[slot].target;
    }
    if (edges_[slot].key == 0) {
      return kNone;
    }
  }
}

std::uint32_t SubstringIndex::AddChild(std::uint32_t node, unsigned char byte,
                                       std::vector<Links>& links) {
  // Keep the table at most half full so that probes stay short.
  if (2 * (edgeCount_ + 1) > edges_.size()) {
    GrowEdges();
  }
  const auto child = static_cast<std::uint32_t>(nodes_.size());
  nodes_.emplace_back();
  links.push_back(Links{kNone, links[node].firstChild, byte});
  links[node].firstChild = child;
  const std::uint64_t key = EdgeKey(node, byte);
  const std::size_t mask = edges_.size() - 1;
  std::size_t slot = EdgeSlot(key, mask);
  while (edges_[slot].key != 0) {
    slot = (slot + 1) & mask;
  }
  edges_[slot] = Edge{key, child};
  ++edgeCount_;
  return child;
}

void SubstringIndex::GrowEdges() {
  std::vector<Edge> grown(edges_.size() * 2);
  const std::size_t mask = grown.size() - 1;
  for (const Edge& edge : edges_) {
    if (edge.key == 0) {
      continue;
    }
    std::size_t slot = EdgeSlot(edge.key, mask);
    while (grown[slot].key != 0) {
      slot = (slot + 1) & mask;
    }
    grown[slot] = edge;
  }
  edges_.swap(grown);
}

void SubstringIndex::LinkFailures(const std::vector<Links>& links) {
  // Breadth first, so that every node's fail target (a shorter string) is
  // linked before the node itself. The root's output stays kNone: the empty
  // pattern, if any, is reported by the root itself at the start of a text
  // and ends every output chain through the children of the root.
  std::vector<std::uint32_t> queue;
  queue.reserve(nodes_.size());
  for (std::uint32_t child = links[kRoot].firstChild; child != kNone;
       child = links[child].nextSibling) {
    nodes_[child].fail = kRoot;
    nodes_[child].output = nodes_[kRoot].pattern != kNone ? kRoot : kNone;
    queue.push_back(child);
  }
  for (std::size_t head = 0; head < queue.size(); ++head) {
    const std::uint32_t node = queue[head];
    for (std::uint32_t child = links[node].firstChild; child != kNone;
         child = links[child].nextSibling) {
      const unsigned char byte = links[child].byte;
      std::uint32_t fail = nodes_[node].fail;
      std::uint32_t target = Child(fail, byte);
      while (target == kNone && fail != kRoot) {
        fail = nodes_[fail].fail;
        target = Child(fail, byte);
      }
      nodes_[child].fail = target == kNone ? kRoot : target;
      const Node& failNode = nodes_[nodes_[child].fail];
      nodes_[child].output = failNode.pattern != kNone ? nodes_[child].fail : failNode.output;
      queue.push_back(child);
    }
  }
}

}  // namespace zeda::pelka
