// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "sheet/store/run_nodes.h"

namespace stockbook::sheet {

// A sequence of rows stored as runs of equal values, so a million equal rows cost no more than one. A balanced tree
// over the runs (see RunNodes) with a summary of each subtree; insert, remove, change, find by a summed measure and sum
// of a prefix are O(log runs). Neighbouring runs that continue each other are always joined. A change for which there
// is no memory throws std::bad_alloc and changes nothing.
//
// Traits gives: Value, Summary (default: of nothing), and the static functions Summary Of(value, count), Summary
// Combine(left, right), Value Advance(value, offset): the value `offset` rows into a run, bool Continues(value, count,
// next): the run and the one after it are one.
template <typename Traits>
class RunTree {
 public:
  using Value = typename Traits::Value;
  using Summary = typename Traits::Summary;
  using RunType = Run<Value>;
  using Place = typename RunNodes<Traits>::Place;

  int64_t size() const { return nodes_[root_].total; }
  size_t RunCount() const { return nodes_.Count(); }
  const Summary& Total() const { return nodes_[root_].summary; }

  // The run that contains a row in [0, size()); an empty run for any other row.
  Place RunAt(int64_t row) const { return nodes_.RunIn(root_, row); }
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
      sum = Traits::Combine(sum, Traits::Of(node.value, inside));
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
      if (reached(Traits::Combine(sum, Traits::Of(node.value, node.count))))
        return first + FindInRun(node, sum, reached);
      sum = Traits::Combine(sum, Traits::Of(node.value, node.count));
      first += node.count;
      at = node.right;
    }
    return first;
  }

  // The first row at or after `row`, or the last one before it, that lies in a run for which `has(summary)` is true;
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

  // Makes room for a few changes of any kind but Assign: they need no memory then.
  void Reserve() { nodes_.Reserve(kNodesOfAFewChanges); }

  void Insert(int64_t row, int64_t count, const Value& value) {
    if (count <= 0) return;
    nodes_.Reserve(kNodesOfAChange);
    auto [left, right] = nodes_.Split(root_, row);
    root_ = nodes_.Join(nodes_.Join(left, nodes_.NewNode(value, count)), right);
  }

  void Remove(int64_t row, int64_t count) {
    if (count <= 0) return;
    nodes_.Reserve(kNodesOfAChange);
    auto [left, rest] = nodes_.Split(root_, row);
    auto [middle, right] = nodes_.Split(rest, count);
    nodes_.Free(middle);
    root_ = nodes_.Join(left, right);
  }

  // Changes the values of rows [first, last), run by run, by `change(value)`, which may not fail. O(log runs + runs in
  // the range).
  template <typename Change>
  void Update(int64_t first, int64_t last, Change change) {
    if (first >= last) return;
    nodes_.Reserve(kNodesOfAChange);
    if (const Place run = RunAt(first); run.first == first && run.first + run.count == last) {
      UpdateRun(run, change);
      return;
    }
    auto [left, rest] = nodes_.Split(root_, first);
    auto [middle, right] = nodes_.Split(rest, last - first);
    const Node* before = nullptr;
    if (ChangeEach(middle, change, before)) middle = nodes_.Joined(middle);
    root_ = nodes_.Join(nodes_.Join(left, middle), right);
  }

  std::vector<RunType> Runs() const {
    std::vector<RunType> runs;
    runs.reserve(RunCount());
    nodes_.Collect(root_, runs);
    return runs;
  }

  // Replaces everything, and makes room for a few changes; O(runs).
  void Assign(std::vector<RunType> runs) {
    nodes_.Reserve(runs.size() + kNodesOfAFewChanges);
    Clear();
    root_ = nodes_.Build(runs);
  }

  void Clear() {
    nodes_.Clear();
    root_ = 0;
  }

  size_t MemoryBytes() const { return nodes_.MemoryBytes(); }

  bool CheckInvariants() const {
    size_t reached = 0;
    return nodes_.Check(root_, reached) && reached == RunCount();
  }

 private:
  using Node = typename RunNodes<Traits>::Node;
  // A split makes one node at most, and no change splits more than twice.
  static constexpr size_t kNodesOfAChange = 3;
  static constexpr size_t kNodesOfAFewChanges = 4 * kNodesOfAChange;

  template <typename Has>
  int64_t FindFromIn(uint32_t at, int64_t offset, int64_t row, const Has& has) const {
    const Node& node = nodes_[at];
    if (at == 0 || offset + node.total <= row || !has(node.summary)) return -1;
    const int64_t first = offset + nodes_[node.left].total;
    if (const int64_t found = FindFromIn(node.left, offset, row, has); found >= 0) return found;
    const int64_t end = first + node.count;
    if (end > row && has(Traits::Of(node.value, node.count))) return std::max(first, row);
    return FindFromIn(node.right, end, row, has);
  }

  template <typename Has>
  int64_t FindBeforeIn(uint32_t at, int64_t offset, int64_t row, const Has& has) const {
    const Node& node = nodes_[at];
    if (at == 0 || offset >= row || !has(node.summary)) return -1;
    const int64_t first = offset + nodes_[node.left].total;
    const int64_t end = first + node.count;
    if (const int64_t found = FindBeforeIn(node.right, end, row, has); found >= 0) return found;
    if (first < row && has(Traits::Of(node.value, node.count))) return std::min(end, row) - 1;
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

  // Updates one whole run in place, unless it becomes equal to a neighbour.
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
    nodes_.Pull(at);
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
    nodes_.Pull(at);
    return joins;
  }

  template <typename Reached>
  int64_t FindInRun(const Node& node, const Summary& sum, Reached reached) const {
    int64_t low = 1;
    int64_t high = node.count;
    while (low < high) {
      const int64_t middle = low + (high - low) / 2;
      if (reached(Traits::Combine(sum, Traits::Of(node.value, middle)))) {
        high = middle;
      } else {
        low = middle + 1;
      }
    }
    return low - 1;
  }

  RunNodes<Traits> nodes_;
  uint32_t root_ = 0;
};

}  // namespace stockbook::sheet
