// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

#include "platform/grid_types.h"

namespace stockbook::sheet {

// What a view must hear of its sheet to stay where it is and to be painted again.
class SheetWatcher {
 public:
  virtual ~SheetWatcher() = default;

  // These four come after the change; RowsChanged or ColumnsChanged follows when the whole operation is done.
  // `count` new rows before each of the ascending `rows`, numbered as they were.
  virtual void RowsInserted(std::span<const int64_t> rows, int count) = 0;
  virtual void RowsRemoved(int row, int count) = 0;
  // Other rows were loaded.
  virtual void RowsReplaced() = 0;
  virtual void FixedRowsChanged(int before) = 0;

  // Rows came or went, are hidden or shown, or have other heights.
  virtual void RowsChanged() = 0;
  // Columns came, went or moved, are hidden or shown, or have other widths.
  virtual void ColumnsChanged() = 0;

  // None of the following is called while redraw is off.
  virtual void CellsChanged(const platform::CellRange& range) = 0;
  virtual void LooksChanged() = 0;
  // Anything may be different: redraw is on again, or other scroll bars are wanted.
  virtual void EverythingChanged() = 0;
  // Only this node was folded or unfolded; RowsChanged follows.
  virtual void NodeChanged(int row) = 0;
};

}  // namespace stockbook::sheet
