// SPDX-License-Identifier: MIT
#pragma once

#include "platform/grid_observer.h"
#include "sheet/input/events.h"
#include "sheet/paint/rect.h"
#include "sheet/paint/text_measure.h"
#include "sheet/selection/selection.h"

namespace stockbook::sheet {

using platform::Verdict;

// What happens to the sheet, for the one who gives it a meaning. Every call may change the sheet.
class SheetObserver {
 public:
  virtual ~SheetObserver() = default;

  virtual Verdict BeforeRowColChange(const CellPosition& old_cell, const CellPosition& new_cell) {
    static_cast<void>(old_cell);
    static_cast<void>(new_cell);
    return Verdict::kAllow;
  }
  virtual void AfterRowColChange(const CellPosition& old_cell, const CellPosition& new_cell) {
    static_cast<void>(old_cell);
    static_cast<void>(new_cell);
  }
  // The sheet has done its own part (selection, folding) for the left button already.
  virtual void MouseDown(const MouseEvent& event) { static_cast<void>(event); }
  virtual void MouseUp(const MouseEvent& event) { static_cast<void>(event); }
  virtual void DoubleClick() {}
  // The key that copies. True when it was done: the sheet then copies nothing by itself.
  virtual bool Copy() { return false; }
  // The row or the column is -1: the other one is resized.
  virtual Verdict BeforeUserResize(int row, int column) {
    static_cast<void>(row);
    static_cast<void>(column);
    return Verdict::kAllow;
  }
  virtual void AfterUserResize(int row, int column) {
    static_cast<void>(row);
    static_cast<void>(column);
  }
  // The column moved to the position.
  virtual void AfterMoveColumn(int column, int position) {
    static_cast<void>(column);
    static_cast<void>(position);
  }
};

enum class Cursor { kDefault, kColumnResize, kRowResize, kBusy };

// What the toolkit's widget needs to know to keep up with the sheet.
class SheetViewer {
 public:
  virtual ~SheetViewer() = default;
  // These device pixels of the view are to be painted again; never called while redraw is off.
  virtual void Damaged(const Rect& area) = 0;
  // Content size, scroll position or view changed; the scroll bars are Geometry's content and scroll. The body was
  // moved by scroll alone when nothing was damaged since.
  virtual void ScrollChanged() = 0;
  virtual void CursorChanged(Cursor cursor) = 0;
  // For those who tell of the sheet in words, as a screen reader does; never called while redraw is off. Other changes
  // are seen by comparing the sheet with what it was at the last call of any kind.
  // The current cell or the selection is another one, in view or not.
  virtual void SelectionChanged() {}
  // The node was folded or unfolded by itself; what it governs is hidden or shown already.
  virtual void NodeChanged(int row) { static_cast<void>(row); }
  // What the viewer draws texts with, at the sheet's scale; without one nothing can be fitted to its contents.
  virtual TextMeasure* Measure() { return nullptr; }
};

}  // namespace stockbook::sheet
