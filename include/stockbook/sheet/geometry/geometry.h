// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/sheet/geometry/rect.h"

namespace stockbook::sheet {

class ColumnAxis;
class RowAxis;

using platform::CellPosition;

// The rows and columns that do not scroll.
struct Pinned {
  int rows = 0;  // fixed rows
  int fixed_columns = 0;
  int columns = 0;  // fixed and frozen columns together
};

// How far the scrolling part of a view is scrolled, in device pixels from 0 on.
struct ScrollPosition {
  int64_t x = 0;
  int64_t y = 0;

  bool operator==(const ScrollPosition&) const = default;
};

// Rows and columns [first, last).
struct Span {
  int first = 0;
  int last = 0;

  bool operator==(const Span&) const = default;
};

// The positions of all cells in a view, used for painting, hit-testing and scrolling alike. Pixels are device pixels of
// the view; ranges are half-open; positions are 64-bit. It borrows the axes and is a cheap value: make a new one after
// any change. Queries about rows are O(log runs), about columns O(log columns).
class STOCKBOOK_API Geometry {
 public:
  // Clamps what is pinned to what there is, and the position to the contents.
  Geometry(const RowAxis& rows, const ColumnAxis& columns, Pinned pinned, Size view, ScrollPosition wanted);

  // In device pixels, 0 or more each way.
  Size view() const { return view_; }
  // At most the rows and columns that there are.
  const Pinned& pinned() const { return pinned_; }
  // The wanted position, clamped to the contents.
  ScrollPosition scroll() const { return scroll_; }
  // The last position: where the end of the contents is in view. 0 where all fits.
  ScrollPosition max_scroll() const;
  // Both with the pinned parts, and without hidden rows and columns.
  int64_t ContentWidth() const;
  int64_t ContentHeight() const;
  // These are sizes of the pinned parts, at most that of the view.
  int PinnedWidth() const;
  int FixedWidth() const;  // of the fixed columns alone
  int PinnedHeight() const;
  // The part of the view that scrolls.
  Rect BodyRect() const;
  // The part of the view that contains cells, pinned ones included.
  Rect CellsRect() const;

  // The whole cell, including parts outside its pane; empty if it is hidden.
  Rect CellRect(int row, int column) const;
  // The part of the cell within its pane; empty if it is scrolled out of view.
  Rect VisibleCellRect(int row, int column) const;
  // Where in the view cells of that row and column are drawn: one of four panes, divided by what is pinned.
  Rect PaneOf(int row, int column) const;
  // The cell at a point of the view; the row or column is -1 if there is none.
  CellPosition CellAt(Point point) const;

  // Both give what of the scrolling part overlaps [from, to) of the view, including hidden ones in between; an empty
  // span at the end where nothing does.
  Span RowsWithin(int from, int to) const;
  Span ColumnsWithin(int from, int to) const;
  // The same for the fixed rows.
  Span FixedRowsWithin(int from, int to) const;
  // Both are of the scrolling part: the first visible row, and the last fully visible one (but not above the first).
  int TopRow() const;
  int BottomRow() const;
  // The first visible column of the scrolling part; the last column where all are pinned.
  int LeftCol() const;
  // True for a pinned row, false for one that is hidden or not there.
  bool RowIsVisible(int row) const;

  // The scroll position nearest to the present one that shows the whole cell, or its top left corner if the cell is too
  // large.
  ScrollPosition ToShow(int row, int column) const;
  // Both are the present position but for that row or column, which comes first; clamped to the contents.
  ScrollPosition WithTopRow(int row) const;
  ScrollPosition WithLeftCol(int column) const;

  // Whether all positions are within the contents; for tests.
  bool CheckInvariants() const;

 private:
  ScrollPosition Clamped(ScrollPosition wanted) const;

  const RowAxis* rows_;
  const ColumnAxis* columns_;
  Pinned pinned_;
  Size view_;
  int64_t pinned_width_ = 0;  // may exceed the view
  int64_t pinned_height_ = 0;
  ScrollPosition scroll_;
};

}  // namespace stockbook::sheet
