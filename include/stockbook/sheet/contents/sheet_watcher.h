// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_types.h"

namespace stockbook::sheet {

// Is notified of changes of a sheet: what a view needs to keep its place and to be repainted.
class STOCKBOOK_API SheetWatcher {
 public:
  virtual ~SheetWatcher() = default;

  // These four are called after the change; RowsChanged or ColumnsChanged follows at the end of the operation.

  // `count` new rows before each of the ascending `rows`, numbered as they were.
  virtual void RowsInserted(std::span<const int64_t> rows, int count) = 0;
  // Rows [row, row + count), numbered as they were.
  virtual void RowsRemoved(int row, int count) = 0;
  // Other rows were loaded.
  virtual void RowsReplaced() = 0;
  // How many there were; the sheet says how many there are.
  virtual void FixedRowsChanged(int before) = 0;

  // Rows were inserted, removed, hidden or shown, or have other heights.
  virtual void RowsChanged() = 0;
  // Columns were added, removed, moved, hidden or shown, or have other widths.
  virtual void ColumnsChanged() = 0;

  // None of the following is called while redraw is off.

  // Texts or looks of these cells; the range is not empty.
  virtual void CellsChanged(const platform::CellRange& range) = 0;
  // Any cell may look otherwise, at the same place.
  virtual void LooksChanged() = 0;
  // Anything may have changed: redraw is on again, or the scroll bars are others.
  virtual void EverythingChanged() = 0;
  // Only this node was folded or unfolded; RowsChanged follows.
  virtual void NodeChanged(int row) = 0;

  // The sheet is being destroyed: nothing may be asked of it any more, and the watcher need not be removed.
  virtual void SheetGone() = 0;
};

}  // namespace stockbook::sheet
