// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "sheet/outline/row_states.h"

namespace stockbook::sheet {

// The outline over the row states. A node governs the deeper rows that follow it, up to the next row of its own or a
// higher level; a collapsed node covers the rows it governs. Every change keeps the covered flags correct. It costs
// O(log runs) plus the runs that the changed row governs. A change for which there is no memory throws std::bad_alloc
// and changes nothing.
class Outline {
 public:
  explicit Outline(RowStates& states) : states_(states) {}

  // Makes room for any change but InsertNodes: it needs no memory then.
  void Reserve() { states_.Reserve(); }
  // Inserts rows of level 0 before `row`.
  void InsertRows(int64_t row, int64_t count);
  void RemoveRows(int64_t row, int64_t count);
  // Inserts a node of level 0 before each of the ascending `rows`. All other rows from `first_line` on get level 1
  // unless they are nodes.
  void InsertNodes(const std::vector<int64_t>& rows, int64_t first_line);

  void SetSubtotal(int64_t row, bool subtotal);
  void SetLevel(int64_t row, int level);
  // Does nothing and returns false if the row is not a node or already is as wanted.
  bool SetCollapsed(int64_t row, bool collapsed);
  // The same for all nodes at once; O(runs).
  bool SetAllCollapsed(bool collapsed);

  // The end of the rows that a node at `row` governs.
  int64_t EndOf(int64_t row) const { return states_.NextRowOfLevelAtMost(row + 1, states_.At(row).level); }
  bool Governs(int64_t row) const;
  // The node that governs the row, or -1.
  int64_t NodeOf(int64_t row) const;

  // The rows from `first` on that are not nodes, as ascending half-open ranges.
  std::vector<std::pair<int64_t, int64_t>> Lines(int64_t first) const;

  // Every covered flag agrees with the row's level and the nodes before it; O(runs).
  bool CheckInvariants() const;

 private:
  static constexpr int kNoNode = std::numeric_limits<int>::max();

  // The level of the outermost collapsed node that could cover `row`, or kNoNode.
  int CoveringLevel(int64_t row) const;
  // Recomputes the covered flags from `row` to the next row after it whose level is `level` or less.
  void CoverAnew(int64_t row, int level);

  RowStates& states_;
};

}  // namespace stockbook::sheet
