// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace stockbook::platform {

enum class Verdict { kAllow, kRefuse };

// What the user does to a grid, for the one who gives it a meaning. Rows and columns are the grid's, -1 where there is
// none. Every call may change the grid, and may take the observer away. Calls do not throw.
class GridObserver {
 public:
  virtual ~GridObserver() = default;

  // The current cell is about to be another one; a refusal leaves it.
  virtual Verdict BeforeRowColChange(int old_row, int old_column, int new_row, int new_column) {
    static_cast<void>(old_row), static_cast<void>(old_column), static_cast<void>(new_row);
    static_cast<void>(new_column);
    return Verdict::kAllow;
  }
  virtual void AfterRowColChange(int old_row, int old_column, int new_row, int new_column) {
    static_cast<void>(old_row), static_cast<void>(old_column), static_cast<void>(new_row);
    static_cast<void>(new_column);
  }
  // Button 1 left, 2 right, 4 middle; shift is the sum of 1 Shift, 2 Ctrl, 4 Alt; x and y in twips from the grid's left
  // top corner. The grid has done its own part (selection, folding) already.
  virtual void MouseDown(int16_t button, int16_t shift, float x, float y) {
    static_cast<void>(button), static_cast<void>(shift), static_cast<void>(x), static_cast<void>(y);
  }
  virtual void MouseUp(int16_t button, int16_t shift, float x, float y) {
    static_cast<void>(button), static_cast<void>(shift), static_cast<void>(x), static_cast<void>(y);
  }
  // By the mouse, or by the key that stands for it, on the cell under the mouse.
  virtual void DoubleClick() {}
  // The key that copies. True when it was done: the grid then copies nothing by itself.
  virtual bool Copy() { return false; }
  // The row or the column is -1: the other one is resized.
  virtual Verdict BeforeUserResize(int row, int column) {
    static_cast<void>(row), static_cast<void>(column);
    return Verdict::kAllow;
  }
  virtual void AfterUserResize(int row, int column) { static_cast<void>(row), static_cast<void>(column); }
  // The column moved to the position.
  virtual void AfterMoveColumn(int column, int position) { static_cast<void>(column), static_cast<void>(position); }
};

}  // namespace stockbook::platform
