// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "stockbook/base/api.h"
#include "stockbook/sheet/geometry/rect.h"
#include "stockbook/sheet/selection/selection.h"

namespace stockbook::sheet {

class Sheet;
class View;

// Whether a row is a node with lines, and whether it is open.
enum class NodeState { kNone, kOpen, kClosed };

// Indexes [first, last) of the table.
struct IndexSpan {
  int first = 0;
  int last = 0;

  int Count() const { return last - first; }
  bool operator==(const IndexSpan&) const = default;
};

// A view of a sheet as a table, for screen readers: the data rows that are shown and the columns that are neither fixed
// nor hidden, both counted from 0, with a caption for each column. Hidden and folded rows are not included, so an index
// is valid until the next change of the sheet, whereas the sheet's own row and column numbers survive folding. It has
// no state; queries are O(log runs) or O(columns), whatever the number of rows.
class STOCKBOOK_API TableAccess {
 public:
  explicit TableAccess(View& view);

  int RowCount() const;
  int ColumnCount() const;
  // Convert an index to the sheet's row or column and back; -1 if there is none.
  int RowOf(int index) const;
  int ColumnOf(int index) const;
  int IndexOfRow(int row) const;
  int IndexOfColumn(int column) const;

  // The caption of a column of the sheet, on one line.
  std::string Caption(int column) const;
  // The name of a row of the sheet: its fixed cells or, if they are empty, its cell in the outline column.
  std::string RowName(int row) const;
  bool HasCaptions() const;
  NodeState NodeAt(int row) const;

  // The visible part of the cell, in device pixels of the view; empty if it is out of view. The captions of a column
  // count as one cell.
  Rect CellArea(int row, int column) const;
  Rect CaptionArea(int column) const;
  // The data cell at the point, or {-1, column} for a caption; nothing outside the table.
  std::optional<CellPosition> CellAt(Point point) const;

  // The selected part of the table; at least the current cell.
  IndexSpan SelectedRows() const;
  IndexSpan SelectedColumns() const;
  // Whether the selection spans the whole width or height of the table.
  bool SelectsWholeRows() const;
  bool SelectsWholeColumns() const;

  // The same as the user can do by keys or mouse. False if it is impossible or the observer refused.
  bool GoTo(int row, int column);
  bool SelectRow(int row);
  bool SelectColumn(int column);
  // Reduces the selection to the current cell.
  bool SelectCurrentAlone();
  bool ToggleNode(int row);

 private:
  View& view_;
  Sheet& sheet_;
};

}  // namespace stockbook::sheet
