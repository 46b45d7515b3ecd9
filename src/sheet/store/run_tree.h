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

// A sequence of rows kept as runs of equal values: what a million rows have in common costs nothing. A balanced tree
// over the runs (a treap in one array) with a summary of each subtree; insert, remove, change, find by a summed measure
// and sum of a prefix are O(log runs). Neighbouring runs that can be one are always joined.
//
// Traits gives: Value, Summary (default: of nothing), Summary Of(value, count), static Summary Combine(left, right),
// static Value Advance(value, offset): the value `offset` rows into a run, static bool Continues(value, count, next):
// the run and the one behind it are one.
template <typename Traits>
class RunTree {
 public:
  using Value = typename Traits::Value;
  using Summary = typename Traits::Summary;
  using RunType = Run<Value>;
  // A run where it stands: rows [first, first + count), value of its first row.
  struct Place {
    int64_t first = 0;
    int64_t count = 0;
    Value value{};
  };

  explicit RunTree(Traits traits = {}) : traits_(std::move(traits)) { nodes_.emplace_back(); }

  int64_t size() const { return nodes_[root_].total; }
  size_t RunCount() const { return nodes_.size() - 1 - free_.size(); }
  const Summary& Total() const { return nodes_[root_].summary; }
  Traits& traits() { return traits_; }
  const Traits& traits() const { return traits_; }

  // The run that holds a row in [0, size()); a run of no rows for any other.
  Place RunAt(int64_t row) const { return RunIn(root_, row); }
  Value At(int64_t row) const {
    const Place place = RunAt(row);
    return Traits::Advance(place.value, row - place.first);
  }

  // The summary of rows [0, row).
  Summary Before(int64_t row) const {
    Summary sum{};
    uint32_t at = root_;
    while (at != 0 && row > 0) {
      const Node& node = nodes_[at];
      const int64_t before = nodes_[node.left].total;
      if (row <= before) {
        at = node.left;
        continue;
      }
      sum = Traits::Combine(sum, nodes_[node.left].summary);
      const int64_t inside = row - before < node.count ? row - before : node.count;
      sum = Traits::Combine(sum, traits_.Of(node.value, inside));
      row -= before + inside;
      at = node.right;
    }
    return sum;
  }

  // The first row whose prefix up to and including it satisfies `reached`, or size(). `reached` must stay true once
  // true.
  template <typename Reached>
  int64_t FindFirst(Reached reached) const {
    Summary sum{};
    int64_t first = 0;
    uint32_t at = root_;
    while (at != 0) {
      const Node& node = nodes_[at];
      const Summary with_left = Traits::Combine(sum, nodes_[node.left].summary);
      if (node.left != 0 && reached(with_left)) {
        at = node.left;
        continue;
      }
      sum = with_left;
      first += nodes_[node.left].total;
      if (reached(Traits::Combine(sum, traits_.Of(node.value, node.count))))
        return first + FindInRun(node, sum, reached);
      sum = Traits::Combine(sum, traits_.Of(node.value, node.count));
      first += node.count;
      at = node.right;
    }
    return first;
  }

  // The first row at or behind `row`, or the last one before it, that lies in a run for which `has(summary)` is true;
  // -1 where there is none. `has` must be true of a subtree when it is true of one of its runs, and only then.
  template <typename Has>
  int64_t FindFrom(int64_t row, Has has) const {
    return FindFromIn(root_, 0, row, has);
  }
  template <typename Has>
  int64_t FindBefore(int64_t row, Has has) const {
    return FindBeforeIn(root_, 0, row, has);
  }

  // Calls `visit(Place)` for the runs of rows [first, last) in order, cut to that range, until it returns false. O(log
  // runs + runs in the range).
  template <typename Visit>
  void ForEach(int64_t first, int64_t last, Visit visit) const {
    VisitIn(root_, 0, first, last, visit);
  }

  void Insert(int64_t row, int64_t count, const Value& value) {
    if (count <= 0) return;
    auto [left, right] = Split(root_, row);
    root_ = Join(Join(left, NewNode(value, count)), right);
  }

  void Remove(int64_t row, int64_t count) {
    if (count <= 0) return;
    auto [left, rest] = Split(root_, row);
    auto [middle, right] = Split(rest, count);
    Free(middle);
    root_ = Join(left, right);
  }

  // Changes the values of rows [first, last), run by run, by `change(value)`. O(log runs + runs in the range).
  template <typename Change>
  void Update(int64_t first, int64_t last, Change change) {
    if (first >= last) return;
    if (const Place run = RunAt(first); run.first == first && run.first + run.count == last) {
      UpdateRun(run, change);
      return;
    }
    auto [left, rest] = Split(root_, first);
    auto [middle, right] = Split(rest, last - first);
    const Node* before = nullptr;
    if (ChangeEach(middle, change, before)) middle = Rebuilt(middle);
    root_ = Join(Join(left, middle), right);
  }

  std::vector<RunType> Runs() const {
    std::vector<RunType> runs;
    runs.reserve(RunCount());
    Collect(root_, runs);
    return runs;
  }

  // Replaces everything; O(runs).
  void Assign(const std::vector<RunType>& runs) {
    Clear();
    root_ = Build(runs);
  }

  void Clear() {
    nodes_.resize(1);
    free_.clear();
    root_ = 0;
  }

  size_t MemoryBytes() const { return nodes_.capacity() * sizeof(Node) + free_.capacity() * sizeof(uint32_t); }

  // Sums anew after the traits changed; O(runs).
  void Refresh() { RefreshNode(root_); }

  bool CheckInvariants() const {
    const Value* before = nullptr;
    int64_t before_count = 0;
    size_t reached = 0;
    return CheckNode(root_, before, before_count, reached) && reached == RunCount();
  }

 private:
  static constexpr double kMostPriority = 4294967295.0;

  struct Node {
    Value value{};
    int64_t count = 0;
    int64_t total = 0;
    Summary summary{};
    uint32_t left = 0;
    uint32_t right = 0;
    uint32_t priority = 0;
  };

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

  template <typename Has>
  int64_t FindFromIn(uint32_t at, int64_t offset, int64_t row, const Has& has) const {
    const Node& node = nodes_[at];
    if (at == 0 || offset + node.total <= row || !has(node.summary)) return -1;
    const int64_t first = offset + nodes_[node.left].total;
    if (const int64_t found = FindFromIn(node.left, offset, row, has); found >= 0) return found;
    const int64_t end = first + node.count;
    if (end > row && has(traits_.Of(node.value, node.count))) return std::max(first, row);
    return FindFromIn(node.right, end, row, has);
  }

  template <typename Has>
  int64_t FindBeforeIn(uint32_t at, int64_t offset, int64_t row, const Has& has) const {
    const Node& node = nodes_[at];
    if (at == 0 || offset >= row || !has(node.summary)) return -1;
    const int64_t first = offset + nodes_[node.left].total;
    const int64_t end = first + node.count;
    if (const int64_t found = FindBeforeIn(node.right, end, row, has); found >= 0) return found;
    if (first < row && has(traits_.Of(node.value, node.count))) return std::min(end, row) - 1;
    return FindBeforeIn(node.left, offset, row, has);
  }

  template <typename Visit>
  bool VisitIn(uint32_t at, int64_t offset, int64_t first, int64_t last, Visit& visit) const {
    if (at == 0 || offset >= last || offset + nodes_[at].total <= first) return true;
    const Node& node = nodes_[at];
    const int64_t begin = offset + nodes_[node.left].total;
    const int64_t end = begin + node.count;
    if (!VisitIn(node.left, offset, first, last, visit)) return false;
    const int64_t from = std::max(begin, first);
    const int64_t to = std::min(end, last);
    if (from < to && !visit(Place{from, to - from, Traits::Advance(node.value, from - begin)})) return false;
    return VisitIn(node.right, end, first, last, visit);
  }

  // Update of one whole run: in its place, unless it becomes like a neighbour.
  template <typename Change>
  void UpdateRun(const Place& run, Change& change) {
    Value value = run.value;
    change(value);
    const int64_t end = run.first + run.count;
    const Place before = RunAt(run.first - 1);
    const Place next = RunAt(end);
    const bool joins = (before.count > 0 && Traits::Continues(before.value, before.count, value)) ||
                       (next.count > 0 && Traits::Continues(value, run.count, next.value));
    if (joins) {
      Remove(run.first, run.count);
      Insert(run.first, run.count, value);
    } else {
      SetValue(root_, run.first, value);
    }
  }

  // Of the run that begins at `row`.
  void SetValue(uint32_t at, int64_t row, const Value& value) {
    Node& node = nodes_[at];
    const int64_t before = nodes_[node.left].total;
    if (row < before) {
      SetValue(node.left, row, value);
    } else if (row == before) {
      node.value = value;
    } else {
      SetValue(node.right, row - before - node.count, value);
    }
    Pull(at);
  }

  // Changes the values of a subtree in order; true when some of its runs have become one.
  template <typename Change>
  bool ChangeEach(uint32_t at, Change& change, const Node*& before) {
    if (at == 0) return false;
    Node& node = nodes_[at];
    bool joins = ChangeEach(node.left, change, before);
    change(node.value);
    joins = joins || (before != nullptr && Traits::Continues(before->value, before->count, node.value));
    before = &node;
    joins = ChangeEach(node.right, change, before) || joins;
    Pull(at);
    return joins;
  }

  uint32_t Rebuilt(uint32_t at) {
    std::vector<RunType> runs;
    Collect(at, runs);
    Free(at);
    return Build(runs);
  }

  template <typename Reached>
  int64_t FindInRun(const Node& node, const Summary& sum, Reached reached) const {
    int64_t low = 1;
    int64_t high = node.count;
    while (low < high) {
      const int64_t middle = low + (high - low) / 2;
      if (reached(Traits::Combine(sum, traits_.Of(node.value, middle)))) {
        high = middle;
      } else {
        low = middle + 1;
      }
    }
    return low - 1;
  }

  uint32_t NextPriority() {
    random_ ^= random_ << 13;
    random_ ^= random_ >> 17;
    random_ ^= random_ << 5;
    return random_;
  }

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

  void Free(uint32_t at) {
    if (at == 0) return;
    Free(nodes_[at].left);
    Free(nodes_[at].right);
    free_.push_back(at);
  }

  void Pull(uint32_t at) {
    Node& node = nodes_[at];
    node.total = nodes_[node.left].total + node.count + nodes_[node.right].total;
    node.summary = Traits::Combine(Traits::Combine(nodes_[node.left].summary, traits_.Of(node.value, node.count)),
                                   nodes_[node.right].summary);
  }

  void RefreshNode(uint32_t at) {
    if (at == 0) return;
    RefreshNode(nodes_[at].left);
    RefreshNode(nodes_[at].right);
    Pull(at);
  }

  // The first `row` rows of a tree, and the others. A run that reaches over the border is taken out and put back as
  // two, the second one with a random priority of its own.
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

  // Merge that makes one run of the two that meet, where they continue each other.
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

  void Collect(uint32_t at, std::vector<RunType>& runs) const {
    if (at == 0) return;
    Collect(nodes_[at].left, runs);
    runs.push_back({nodes_[at].count, nodes_[at].value});
    Collect(nodes_[at].right, runs);
  }

  // A balanced tree of the runs, joined where they continue each other.
  uint32_t Build(const std::vector<RunType>& runs) {
    std::vector<RunType> joined;
    joined.reserve(runs.size());
    for (const RunType& run : runs) {
      if (run.count <= 0) continue;
      if (!joined.empty() && Traits::Continues(joined.back().value, joined.back().count, run.value)) {
        joined.back().count += run.count;
      } else {
        joined.push_back(run);
      }
    }
    return BuildRange(joined, UINT32_MAX);
  }

  uint32_t BuildRange(std::span<const RunType> runs, uint32_t most) {
    if (runs.empty()) return 0;
    const size_t middle = runs.size() / 2;
    const uint32_t at = NewNode(runs[middle].value, runs[middle].count);
    // The highest of so many random priorities, so that later inserts keep the tree balanced.
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
               Traits::Combine(Traits::Combine(left.summary, traits_.Of(node.value, node.count)), right.summary);
  }

  Traits traits_;
  std::vector<Node> nodes_;  // nodes_[0] stands for no node
  std::vector<uint32_t> free_;
  uint32_t root_ = 0;
  uint32_t random_ = 2463534242U;
};

}  // namespace stockbook::sheet
