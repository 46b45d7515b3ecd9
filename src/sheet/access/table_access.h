// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "sheet/geometry/rect.h"
#include "sheet/selection/selection.h"

namespace stockbook::sheet {

class Sheet;
class View;

// What a row is to the outline: a line, or a node that has lines to show or to hide.
enum class NodeState { kNone, kOpen, kClosed };

// Indexes of the table [first, last).
struct IndexSpan {
  int first = 0;
  int last = 0;

  int Count() const { return last - first; }
  bool operator==(const IndexSpan&) const = default;
};

// The sheet as those have it who do not see it: a table of the data rows that are shown and of the columns that are
// neither fixed nor hidden, both counted from 0, with a caption over each column. What is hidden or folded away is not
// in it, so an index holds until the next change of the sheet, while the sheet's own rows and columns stay what they
// are when a node is folded. It keeps nothing; a question costs O(log runs) or O(columns), whatever the number of rows.
class TableAccess {
 public:
  explicit TableAccess(View& view);

  int RowCount() const;
  int ColumnCount() const;
  // Of an index the sheet's row or column, and back; -1 where there is none.
  int RowOf(int index) const;
  int ColumnOf(int index) const;
  int IndexOfRow(int row) const;
  int IndexOfColumn(int column) const;

  // The caption of a column of the sheet, on one line.
  std::string Caption(int column) const;
  // What a row of the sheet is called: its fixed cells, or what stands in the outline column where they are empty.
  std::string RowName(int row) const;
  bool HasCaptions() const;
  NodeState NodeAt(int row) const;

  // Where the cell is in sight, in device pixels of the view; empty where it is scrolled away. The captions of a column
  // are one cell.
  Rect CellArea(int row, int column) const;
  Rect CaptionArea(int column) const;
  // The data cell at the point, or {-1, column} of a caption; nothing beside the table.
  std::optional<CellPosition> CellAt(Point point) const;

  // What of the table is selected; the current cell alone is.
  IndexSpan SelectedRows() const;
  IndexSpan SelectedColumns() const;
  // The selection goes over the whole width, or the whole height, of the table.
  bool SelectsWholeRows() const;
  bool SelectsWholeColumns() const;

  // What a user does by keys or mouse; false where it cannot be, or who watches the sheet refused.
  bool GoTo(int row, int column);
  bool SelectRow(int row);
  bool SelectColumn(int column);
  // Back to the current cell alone.
  bool SelectCurrentAlone();
  bool ToggleNode(int row);

 private:
  View& view_;
  Sheet& sheet_;
};

}  // namespace stockbook::sheet
