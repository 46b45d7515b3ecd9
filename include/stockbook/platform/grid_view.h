// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/base/api.h"
#include "stockbook/platform/clipboard.h"
#include "stockbook/platform/grid_observer.h"

namespace stockbook::platform {

// Where the user is in the grid: current cell, selection, scroll position and mouse.
class STOCKBOOK_API GridView {
 public:
  virtual ~GridView() = default;

  // These are the current cell; -1 where there is none. Setting moves the selection's end with it, asks the observer,
  // and throws Error outside of the grid.
  virtual int Row() const = 0;
  virtual int Col() const = 0;
  virtual void Select(int row, int column) = 0;
  // Both are the end of the selection, which may be before the current cell, its other corner; -1 where there is none.
  virtual int RowSel() const = 0;
  virtual int ColSel() const = 0;
  // Puts the selected range on the clipboard as text that a spreadsheet pastes: a line of the captions of row 0 with
  // their line breaks taken out, then a line for each row that is shown, with the cells as they are displayed; hidden
  // columns are left out. Every cell but that of the last selected column is followed by a tab, every line but that of
  // the last selected row by "\r\n". Where there is no current cell it is the line of all captions. The pointer shows
  // an arrow with an hourglass meanwhile and is the default afterwards. The clipboard is cleared first: if the text
  // cannot be produced, it stays empty.
  virtual void CopySelection(Clipboard& clipboard) = 0;

  // First and last row of the scrolling part that are in view, from FixedRows on; the last one is whole. Setting
  // scrolls as far as there are rows, and throws Error for a row that is not there.
  virtual int TopRow() const = 0;
  virtual void SetTopRow(int row) = 0;
  // The last row that is in view as a whole, but not above TopRow.
  virtual int BottomRow() const = 0;
  // True for a fixed row, false for one that is hidden or not there.
  virtual bool RowIsVisible(int row) const = 0;
  // Both are the cell under the mouse at its last event, -1 where there is none.
  virtual int MouseRow() const = 0;
  virtual int MouseCol() const = 0;

  // Receives what the user does here; nullptr for nobody.
  virtual void SetObserver(GridObserver* observer) = 0;
};

}  // namespace stockbook::platform
