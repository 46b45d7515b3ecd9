// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "sheet/outline/row_states.h"

namespace stockbook::sheet {

// The outline over the row states. A node governs the rows behind it of a deeper level, up to the next row of its level
// or above; a collapsed node covers what it governs. Every change keeps the covered flags true. Costs O(log runs) plus
// the runs of what the changed row governs.
class Outline {
 public:
  explicit Outline(RowStates& states) : states_(states) {}

  // Rows of level 0 before `row`.
  void InsertRows(int64_t row, int64_t count);
  void RemoveRows(int64_t row, int64_t count);
  // A node of level 0 before each of the ascending `rows`; all lines from `first_line` on that are no nodes get
  // level 1.
  void InsertNodes(const std::vector<int64_t>& rows, int64_t first_line);

  void SetSubtotal(int64_t row, bool subtotal);
  void SetLevel(int64_t row, int level);
  // False, and nothing happens, where the row is no node or is as wanted.
  bool SetCollapsed(int64_t row, bool collapsed);
  // The same of every node at once; O(runs).
  bool SetAllCollapsed(bool collapsed);

  // One behind the last row that a node at `row` governs.
  int64_t EndOf(int64_t row) const { return states_.NextRowOfLevelAtMost(row + 1, states_.At(row).level); }
  bool Governs(int64_t row) const;
  // The node whose line the row is, or -1.
  int64_t NodeOf(int64_t row) const;

  // The rows from `first` on that are no nodes, as ascending half-open ranges.
  std::vector<std::pair<int64_t, int64_t>> Lines(int64_t first) const;

  // Every row's covered flag is what its level and the nodes before it say; O(runs).
  bool CheckInvariants() const;

 private:
  static constexpr int kNoNode = std::numeric_limits<int>::max();

  // The level of the outermost collapsed node that could cover `row`, kNoNode when there is none.
  int CoveringLevel(int64_t row) const;
  // Sets the covered flags anew from `row` to the next row behind it whose level is `level` or less.
  void CoverAnew(int64_t row, int level);

  RowStates& states_;
};

}  // namespace stockbook::sheet
