#include "providers/pools/SubstringIndex.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace zeda::pelka {

namespace {

// Beyond this many edges a node's edges are searched by halving; below it a
// straight scan of the bytes is cheaper.
constexpr std::uint32_t kScanEdges = 8;

std::size_t CommonPrefix(std::string_view a, std::string_view b) {
  const std::size_t size = std::min(a.size(), b.size());
  std::size_t i = 0;
  while (i < size && a[i] == b[i]) {
    ++i;
  }
  return i;
}

}  // namespace

SubstringIndex::SubstringIndex(const std::vector<std::string_view>& identifiers) {
  std::size_t bytes = 0;
  for (const std::string_view id : identifiers) {
    bytes += id.size();
  }
  if (bytes >= kNone || identifiers.size() >= kNone) {
    // std::exception: answered as 200 (CMPI_RC_ERROR) with this text.
    throw std::length_error("too many identifier bytes for a substring index");
  }
  const std::vector<std::uint32_t> endOf = BuildTrie(identifiers);
  patternOf_.reserve(identifiers.size());
  for (const std::uint32_t node : endOf) {
    if (nodes_[node].pattern == kNone) {
      nodes_[node].pattern = static_cast<std::uint32_t>(patternCount_++);
    }
    patternOf_.push_back(nodes_[node].pattern);
  }
  LinkFailures();
}

std::vector<std::uint32_t> SubstringIndex::BuildTrie(
    const std::vector<std::string_view>& identifiers) {
  // Identifiers in byte order (string_view compares bytes as unsigned), so
  // that each one shares its path with the one before it up to their common
  // prefix and only the rest is new. Disk lists are usually in order
  // already; then no sorting is done.
  std::vector<std::uint32_t> order(identifiers.size());
  std::iota(order.begin(), order.end(), 0U);
  const auto before = [&identifiers](std::uint32_t a, std::uint32_t b) {
    return identifiers[a] < identifiers[b];
  };
  if (!std::is_sorted(order.begin(), order.end(), before)) {
    std::sort(order.begin(), order.end(), before);
  }

  // New nodes are numbered as they are made, which is depth-first order.
  // Their edges are collected as (parent, byte, child) and grouped by parent
  // afterwards; per parent they come in increasing byte order.
  struct NewEdge {
    std::uint32_t parent;
    std::uint32_t child;
    unsigned char byte;
  };
  std::vector<NewEdge> made;
  nodes_.emplace_back();
  std::vector<std::uint32_t> path{kRoot};  // path[d]: node of the first d bytes
  std::vector<std::uint32_t> endOf(identifiers.size(), kRoot);
  std::string_view previous;
  for (const std::uint32_t i : order) {
    const std::string_view id = identifiers[i];
    const std::size_t shared = CommonPrefix(previous, id);
    path.resize(shared + 1);
    for (std::size_t d = shared; d < id.size(); ++d) {
      const auto child = static_cast<std::uint32_t>(nodes_.size());
      nodes_.emplace_back();
      made.push_back(NewEdge{path.back(), child, static_cast<unsigned char>(id[d])});
      path.push_back(child);
    }
    endOf[i] = path.back();
    previous = id;
  }

  firstEdge_.assign(nodes_.size() + 1, 0);
  for (const NewEdge& edge : made) {
    ++firstEdge_[edge.parent + 1];
  }
  std::partial_sum(firstEdge_.begin(), firstEdge_.end(), firstEdge_.begin());
  edgeByte_.resize(made.size());
  edgeTarget_.resize(made.size());
  std::vector<std::uint32_t> filled(firstEdge_.begin(), firstEdge_.end() - 1);
  for (const NewEdge& edge : made) {
    const std::uint32_t at = filled[edge.parent]++;
    edgeByte_[at] = edge.byte;
    edgeTarget_[at] = edge.child;
  }
  return endOf;
}

std::uint32_t SubstringIndex::Child(std::uint32_t node, unsigned char byte) const {
  const std::uint32_t first = firstEdge_[node];
  const std::uint32_t end = firstEdge_[node + 1];
  if (end - first <= kScanEdges) {
    for (std::uint32_t at = first; at < end; ++at) {
      if (edgeByte_[at] == byte) {
        return edgeTarget_[at];
      }
    }
    return kNone;
  }
  const auto begin = edgeByte_.begin() + first;
  const auto found = std::lower_bound(begin, edgeByte_.begin() + end, byte);
  if (found == edgeByte_.begin() + end || *found != byte) {
    return kNone;
  }
  return edgeTarget_[static_cast<std::size_t>(found - edgeByte_.begin())];
}

void SubstringIndex::LinkFailures() {
  // Breadth first, so that every node's fail target (a shorter string) is
  // linked before the node itself. The root's output stays kNone: the empty
  // pattern, if any, is reported by the root itself at the start of a text
  // and ends every output chain through the children of the root.
  std::vector<std::uint32_t> queue;
  queue.reserve(nodes_.size());
  for (std::uint32_t at = firstEdge_[kRoot]; at < firstEdge_[kRoot + 1]; ++at) {
    const std::uint32_t child = edgeTarget_[at];
    nodes_[child].fail = kRoot;
    nodes_[child].output = nodes_[kRoot].pattern != kNone ? kRoot : kNone;
    queue.push_back(child);
  }
  for (std::size_t head = 0; head < queue.size(); ++head) {
    const std::uint32_t node = queue[head];
    for (std::uint32_t at = firstEdge_[node]; at < firstEdge_[node + 1]; ++at) {
      const std::uint32_t child = edgeTarget_[at];
      const unsigned char byte = edgeByte_[at];
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
