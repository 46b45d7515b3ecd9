// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace stockbook::sheet {

// `count` rows that share one value.
template <typename Value>
struct Run {
  int64_t count = 0;
  Value value{};
};

// The nodes of balanced trees over runs (treaps), all in one array, and the operations to split, join and build trees.
// A tree is identified by the index of its root, the empty tree by 0. Every node has the row count and the summary of
// its subtree. See RunTree for Traits.
template <typename Traits>
class RunNodes {
 public:
  using Value = typename Traits::Value;
  using Summary = typename Traits::Summary;
  using RunType = Run<Value>;
  // A run and its place: rows [first, first + count), value of the first row.
  struct Place {
    int64_t first = 0;
    int64_t count = 0;
    Value value{};
  };
  struct Node {
    Value value{};
    int64_t count = 0;
    int64_t total = 0;
    Summary summary{};
    uint32_t left = 0;
    uint32_t right = 0;
    uint32_t priority = 0;
  };

  RunNodes() { nodes_.emplace_back(); }

  Node& operator[](uint32_t at) { return nodes_[at]; }
  const Node& operator[](uint32_t at) const { return nodes_[at]; }
  size_t Count() const { return nodes_.size() - 1 - free_.size(); }
  size_t MemoryBytes() const { return nodes_.capacity() * sizeof(Node) + free_.capacity() * sizeof(uint32_t); }
  // Makes room for so many more nodes, and for freeing all of them: making and freeing these needs no memory then, so
  // that an operation on trees that has begun is also finished.
  void Reserve(size_t more) {
    const size_t needed = nodes_.size() + more - std::min(more, free_.size());
    if (needed > nodes_.capacity()) nodes_.reserve(std::max(needed, 2 * nodes_.capacity()));
    if (free_.capacity() < nodes_.capacity()) free_.reserve(nodes_.capacity());
  }
  // Frees the nodes of all trees.
  void Clear() {
    nodes_.resize(1);
    free_.clear();
  }

  // The run of a tree that contains the row; an empty run if there is none.
  Place RunIn(uint32_t at, int64_t row) const {
    int64_t first = 0;
    while (at != 0) {
      const Node& node = nodes_[at];
      const int64_t before = nodes_[node.left].total;
      if (row < first + before) {
        at = node.left;
      } else if (row < first + before + node.count) {
        return {first + before, node.count, node.value};
      } else {
        first += before + node.count;
        at = node.right;
      }
    }
    return {row, 0, Value{}};
  }

  // A tree of one run.
  uint32_t NewNode(const Value& value, int64_t count) {
    uint32_t at = 0;
    if (free_.empty()) {
      at = static_cast<uint32_t>(nodes_.size());
      nodes_.emplace_back();
    } else {
      at = free_.back();
      free_.pop_back();
    }
    nodes_[at] = Node{value, count, 0, Summary{}, 0, 0, NextPriority()};
    Pull(at);
    return at;
  }

  // Frees the nodes of a tree.
  void Free(uint32_t at) {
    if (at == 0) return;
    Free(nodes_[at].left);
    Free(nodes_[at].right);
    free_.push_back(at);
  }

  // Updates the sums of a node after it or a child has changed.
  void Pull(uint32_t at) {
    Node& node = nodes_[at];
    node.total = nodes_[node.left].total + node.count + nodes_[node.right].total;
    node.summary = Traits::Combine(Traits::Combine(nodes_[node.left].summary, Traits::Of(node.value, node.count)),
                                   nodes_[node.right].summary);
  }

  // Splits a tree into its first `row` rows and the others. A run across the border is replaced by two, the second one
  // with a new random priority.
  std::pair<uint32_t, uint32_t> Split(uint32_t root, int64_t row) {
    const Place place = RunIn(root, row);
    if (place.count == 0 || place.first == row) return SplitBetween(root, row);
    const auto [left, rest] = SplitBetween(root, place.first);
    const auto [head, right] = SplitBetween(rest, place.count);
    const int64_t inside = row - place.first;
    const uint32_t tail = NewNode(Traits::Advance(place.value, inside), place.count - inside);
    nodes_[head].count = inside;
    Pull(head);
    return {Merge(left, head), Merge(tail, right)};
  }

  // Joins two trees, and the two runs that meet if one continues the other.
  uint32_t Join(uint32_t left, uint32_t right) {
    if (left == 0 || right == 0) return left == 0 ? right : left;
    uint32_t last = left;
    while (nodes_[last].right != 0) last = nodes_[last].right;
    uint32_t first = right;
    while (nodes_[first].left != 0) first = nodes_[first].left;
    if (!Traits::Continues(nodes_[last].value, nodes_[last].count, nodes_[first].value)) return Merge(left, right);
    const int64_t count = nodes_[first].count;
    right = DropFirst(right);
    free_.push_back(first);
    ExtendLast(left, count);
    return Merge(left, right);
  }

  // The tree with those of its runs joined that continue each other. O(runs log runs); needs no memory.
  uint32_t Joined(uint32_t root) {
    uint32_t joined = 0;
    while (root != 0) {
      uint32_t first = root;
      while (nodes_[first].left != 0) first = nodes_[first].left;
      root = DropFirst(root);
      nodes_[first].right = 0;
      Pull(first);
      joined = Join(joined, first);
    }
    return joined;
  }

  // Adds the runs of a tree in order.
  void Collect(uint32_t at, std::vector<RunType>& runs) const {
    if (at == 0) return;
    Collect(nodes_[at].left, runs);
    runs.push_back({nodes_[at].count, nodes_[at].value});
    Collect(nodes_[at].right, runs);
  }

  // A balanced tree of the runs; runs that continue each other are joined.
  uint32_t Build(std::vector<RunType>& runs) {
    size_t joined = 0;
    for (const RunType& run : runs) {
      if (run.count <= 0) continue;
      if (joined > 0 && Traits::Continues(runs[joined - 1].value, runs[joined - 1].count, run.value)) {
        runs[joined - 1].count += run.count;
      } else {
        runs[joined++] = run;
      }
    }
    return BuildRange(std::span(runs).first(joined), UINT32_MAX);
  }

  // Whether a tree is in order and its runs are joined; counts its nodes.
  bool Check(uint32_t root, size_t& reached) const {
    const Value* before = nullptr;
    int64_t before_count = 0;
    return CheckNode(root, before, before_count, reached);
  }

 private:
  static constexpr double kMostPriority = 4294967295.0;

  uint32_t NextPriority() {
    random_ ^= random_ << 13;
    random_ ^= random_ >> 17;
    random_ ^= random_ << 5;
    return random_;
  }

  // The same where `row` is known to lie between two runs.
  std::pair<uint32_t, uint32_t> SplitBetween(uint32_t at, int64_t row) {
    if (at == 0) return {0, 0};
    const int64_t before = nodes_[nodes_[at].left].total;
    if (row <= before) {
      const auto [left, right] = SplitBetween(nodes_[at].left, row);
      nodes_[at].left = right;
      Pull(at);
      return {left, at};
    }
    const auto [left, right] = SplitBetween(nodes_[at].right, row - before - nodes_[at].count);
    nodes_[at].right = left;
    Pull(at);
    return {at, right};
  }

  uint32_t Merge(uint32_t left, uint32_t right) {
    if (left == 0) return right;
    if (right == 0) return left;
    if (nodes_[left].priority >= nodes_[right].priority) {
      const uint32_t merged = Merge(nodes_[left].right, right);
      nodes_[left].right = merged;
      Pull(left);
      return left;
    }
    const uint32_t merged = Merge(left, nodes_[right].left);
    nodes_[right].left = merged;
    Pull(right);
    return right;
  }

  uint32_t DropFirst(uint32_t at) {
    if (nodes_[at].left == 0) return nodes_[at].right;
    const uint32_t left = DropFirst(nodes_[at].left);
    nodes_[at].left = left;
    Pull(at);
    return at;
  }

  void ExtendLast(uint32_t at, int64_t count) {
    if (nodes_[at].right == 0) {
      nodes_[at].count += count;
    } else {
      ExtendLast(nodes_[at].right, count);
    }
    Pull(at);
  }

  uint32_t BuildRange(std::span<const RunType> runs, uint32_t most) {
    if (runs.empty()) return 0;
    const size_t middle = runs.size() / 2;
    const uint32_t at = NewNode(runs[middle].value, runs[middle].count);
    // The highest of that many random priorities, so that later inserts keep the tree balanced.
    const double random = static_cast<double>(nodes_[at].priority) / kMostPriority;
    const double highest = std::pow(random, 1.0 / static_cast<double>(runs.size()));
    nodes_[at].priority = std::min(most, static_cast<uint32_t>(highest * kMostPriority));
    const uint32_t priority = nodes_[at].priority;
    const uint32_t left = BuildRange(runs.first(middle), priority);
    const uint32_t right = BuildRange(runs.subspan(middle + 1), priority);
    nodes_[at].left = left;
    nodes_[at].right = right;
    Pull(at);
    return at;
  }

  bool CheckNode(uint32_t at, const Value*& before, int64_t& before_count, size_t& reached) const {
    if (at == 0) return true;
    const Node& node = nodes_[at];
    ++reached;
    if (!CheckNode(node.left, before, before_count, reached)) return false;
    if (node.count <= 0 || (before != nullptr && Traits::Continues(*before, before_count, node.value))) return false;
    before = &node.value;
    before_count = node.count;
    if (!CheckNode(node.right, before, before_count, reached)) return false;
    const Node& left = nodes_[node.left];
    const Node& right = nodes_[node.right];
    if ((node.left != 0 && left.priority > node.priority) || (node.right != 0 && right.priority > node.priority))
      return false;
    return node.total == left.total + node.count + right.total &&
           node.summary ==
               Traits::Combine(Traits::Combine(left.summary, Traits::Of(node.value, node.count)), right.summary);
  }

  std::vector<Node> nodes_;  // nodes_[0] stands for no node
  std::vector<uint32_t> free_;
  uint32_t random_ = 2463534242U;
};

}  // namespace stockbook::sheet
