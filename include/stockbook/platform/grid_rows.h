// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

#include "stockbook/base/api.h"

namespace stockbook::platform {

// The rows of a grid. A fixed row stays on top and is no data row.
class STOCKBOOK_API GridRows {
 public:
  virtual ~GridRows() = default;

  // Fixed and hidden ones included.
  virtual int Rows() const = 0;
  // Rows are added empty at the end or dropped from the end. Throws Error below 0 and above 2^30.
  virtual void SetRows(int count) = 0;
  // How many rows at the top do not scroll and hold no data; 1 unless set. Setting it throws Error below 0 and above
  // Rows.
  virtual int FixedRows() const = 0;
  virtual void SetFixedRows(int count) = 0;
  // Inserts a row before `position` (the row count: at the end) filled from a tab-separated text, at no cost to the
  // rows after it; texts beyond the last column are dropped. The row is an ordinary one of outline level 0. Throws
  // Error for a position among the fixed rows or beyond the end.
  virtual void AddItem(std::string_view tab_text, int position) = 0;
  // Another number whenever rows or columns came, went or moved, so that a row or a column may mean another one.
  virtual int64_t Revision() const = 0;

  // Whether the row is a node of the outline. Throws Error for a row that is not there, as all that follow, but
  // NextSubtotal.
  virtual bool IsSubtotal(int row) const = 0;
  // The first node at or after `row`, or -1; O(log rows). A row below 0 counts as 0.
  virtual int NextSubtotal(int row) const = 0;

  // Whether the row is hidden on its own account or by a folded node.
  virtual bool RowHidden(int row) const = 0;
  // Showing a row unfolds the nodes that cover it.
  virtual void SetRowHidden(int row, bool hidden) = 0;
  // Hides or shows the rows [first, last) on their own account, at once; nodes stay as they are folded. Nothing for an
  // empty range.
  virtual void SetRowsHidden(int first, int last, bool hidden) = 0;
  // Height in twips, whatever is hidden; within the limits.
  virtual int RowHeight(int row) const = 0;
  // Row -1 means all rows, those to come included. Heights are kept between the limits. More than 144000 counts as
  // that; below 0 throws Error.
  virtual void SetRowHeight(int row, int twips) = 0;
  // Both are limits in twips, 0 (none) unless set; they show heights otherwise and change none. Where they contradict
  // each other the least height wins.
  virtual float RowHeightMin() const = 0;
  virtual void SetRowHeightMin(float twips) = 0;
  virtual float RowHeightMax() const = 0;
  virtual void SetRowHeightMax(float twips) = 0;
};

}  // namespace stockbook::platform
