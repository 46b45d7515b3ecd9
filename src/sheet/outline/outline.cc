// SPDX-License-Identifier: MIT
#include "sheet/outline/outline.h"

#include <algorithm>

namespace stockbook::sheet {
namespace {

// Walks runs of rows in order and decides whether each is covered. The rows of a run are covered together: the first
// row that is not deeper than the covering node ends the cover, and equal rows do not cover each other.
class Coverage {
 public:
  explicit Coverage(int level) : level_(level) {}

  bool Covers(const RowState& state) {
    if (state.level > level_) return true;
    level_ = state.subtotal && state.collapsed ? state.level : std::numeric_limits<int>::max();
    return false;
  }

 private:
  int level_;
};

}  // namespace

int Outline::CoveringLevel(int64_t row) const {
  if (!states_.HasCollapsedNodes() || row == 0) return kNoNode;
  // Only the last uncovered row before this one can cover it: every uncovered row ends earlier covers.
  const int64_t node = states_.UncoveredBefore(row);
  if (node < 0) return kNoNode;
  const RowState state = states_.At(node);
  return state.subtotal && state.collapsed ? state.level : kNoNode;
}

void Outline::CoverAnew(int64_t row, int level) {
  if (row >= states_.Rows() || (!states_.HasCollapsedNodes() && states_.CoveredRows() == 0)) return;
  const int covering = CoveringLevel(row);
  const int64_t end = states_.NextRowOfLevelAtMost(row + 1, std::min(level, covering));
  Coverage coverage(covering);
  states_.Update(row, end, [&](RowState& state) { state.covered = coverage.Covers(state); });
}

void Outline::InsertRows(int64_t row, int64_t count) {
  Reserve();
  states_.Insert(row, count, RowState{});
  // The last of them ends the cover of the rows after it.
  CoverAnew(row + count - 1, 0);
}

void Outline::RemoveRows(int64_t row, int64_t count) {
  int lowest = kNoNode;
  states_.ForEachRun(row, row + count, [&](int64_t, int64_t, const RowState& state) {
    lowest = std::min<int>(lowest, state.level);
    return true;
  });
  Reserve();
  states_.Remove(row, count);
  CoverAnew(row, lowest);
}

void Outline::InsertNodes(const std::vector<int64_t>& rows, int64_t first_line) {
  RowState node;
  node.subtotal = true;
  states_.InsertBeforeEach(rows, node);
  const int64_t moved = std::lower_bound(rows.begin(), rows.end(), first_line) - rows.begin();
  states_.Update(first_line + moved, states_.Rows(), [](RowState& state) {
    if (!state.subtotal) state.level = 1;
  });
  if (!states_.HasCollapsedNodes() && states_.CoveredRows() == 0) return;
  Coverage coverage(kNoNode);
  states_.Update(0, states_.Rows(), [&](RowState& state) { state.covered = coverage.Covers(state); });
}

void Outline::SetSubtotal(int64_t row, bool subtotal) {
  const RowState before = states_.At(row);
  if (before.subtotal == subtotal) return;
  Reserve();
  states_.Update(row, row + 1, [&](RowState& state) {
    state.subtotal = subtotal;
    state.collapsed = false;
  });
  if (before.collapsed) CoverAnew(row + 1, before.level);
}

void Outline::SetLevel(int64_t row, int level) {
  const int before = states_.At(row).level;
  if (before == level) return;
  Reserve();
  states_.Update(row, row + 1, [&](RowState& state) { state.level = static_cast<int16_t>(level); });
  CoverAnew(row, std::min(before, level));
}

bool Outline::SetCollapsed(int64_t row, bool collapsed) {
  const RowState state = states_.At(row);
  if (!state.subtotal || state.collapsed == collapsed) return false;
  Reserve();
  states_.Update(row, row + 1, [&](RowState& node) { node.collapsed = collapsed; });
  if (Governs(row)) CoverAnew(row + 1, state.level);
  return true;
}

bool Outline::SetAllCollapsed(bool collapsed) {
  Coverage coverage(kNoNode);
  bool changed = false;
  states_.Update(0, states_.Rows(), [&](RowState& state) {
    if (state.subtotal && state.collapsed != collapsed) {
      state.collapsed = collapsed;
      changed = true;
    }
    state.covered = coverage.Covers(state);
  });
  return changed;
}

bool Outline::Governs(int64_t row) const {
  return row + 1 < states_.Rows() && states_.At(row + 1).level > states_.At(row).level;
}

int64_t Outline::NodeOf(int64_t row) const {
  const int64_t above = states_.LastRowOfLevelBelow(row, states_.At(row).level);
  return above >= 0 && states_.At(above).subtotal ? above : -1;
}

std::vector<std::pair<int64_t, int64_t>> Outline::Lines(int64_t first) const {
  std::vector<std::pair<int64_t, int64_t>> lines;
  states_.ForEachRun(first, states_.Rows(), [&](int64_t row, int64_t count, const RowState& state) {
    if (state.subtotal) return true;
    if (!lines.empty() && lines.back().second == row) {
      lines.back().second = row + count;
    } else {
      lines.emplace_back(row, row + count);
    }
    return true;
  });
  return lines;
}

bool Outline::CheckInvariants() const {
  if (!states_.CheckInvariants()) return false;
  Coverage coverage(kNoNode);
  bool right = true;
  states_.ForEachRun(0, states_.Rows(), [&](int64_t, int64_t, const RowState& state) {
    right = state.covered == coverage.Covers(state) && (state.subtotal || !state.collapsed);
    return right;
  });
  return right;
}

}  // namespace stockbook::sheet
