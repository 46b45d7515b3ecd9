// SPDX-License-Identifier: MIT
#include "sheet/access/table_access.h"

#include <algorithm>

#include "base/text.h"
#include "sheet/outline/outline.h"
#include "sheet/outline/row_states.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::sheet {
namespace {

void AppendWord(std::string& text, const std::string& word) {
  if (word.empty()) return;
  if (!text.empty()) text += ' ';
  text += word;
}

}  // namespace

TableAccess::TableAccess(View& view) : view_(view), sheet_(view.sheet()) {}

int TableAccess::RowCount() const {
  const RowStates& states = sheet_.states();
  return static_cast<int>(states.TotalShown() - states.ShownBefore(sheet_.FixedRows()));
}

int TableAccess::ColumnCount() const {
  int count = 0;
  for (int column = sheet_.FixedCols(); column < sheet_.Cols(); ++column) count += sheet_.ColHidden(column) ? 0 : 1;
  return count;
}

int TableAccess::RowOf(int index) const {
  if (index < 0 || index >= RowCount()) return -1;
  const RowStates& states = sheet_.states();
  return static_cast<int>(states.ShownRow(states.ShownBefore(sheet_.FixedRows()) + index));
}

int TableAccess::ColumnOf(int index) const {
  if (index < 0) return -1;
  for (int column = sheet_.FixedCols(); column < sheet_.Cols(); ++column) {
    if (!sheet_.ColHidden(column) && index-- == 0) return column;
  }
  return -1;
}

int TableAccess::IndexOfRow(int row) const {
  const RowStates& states = sheet_.states();
  if (row < sheet_.FixedRows() || row >= sheet_.Rows() || !states.At(row).IsShown()) return -1;
  return static_cast<int>(states.ShownBefore(row) - states.ShownBefore(sheet_.FixedRows()));
}

int TableAccess::IndexOfColumn(int column) const {
  if (column < sheet_.FixedCols() || column >= sheet_.Cols() || sheet_.ColHidden(column)) return -1;
  int index = 0;
  for (int before = sheet_.FixedCols(); before < column; ++before) index += sheet_.ColHidden(before) ? 0 : 1;
  return index;
}

bool TableAccess::HasCaptions() const { return sheet_.states().ShownBefore(sheet_.FixedRows()) > 0; }

std::string TableAccess::Caption(int column) const {
  std::string caption;
  for (int row = 0; row < sheet_.FixedRows(); ++row)
    AppendWord(caption, base::OneLine(sheet_.TextMatrix(row, column), " "));
  return caption;
}

std::string TableAccess::RowName(int row) const {
  std::string name;
  for (int column = 0; column < sheet_.FixedCols(); ++column)
    AppendWord(name, base::OneLine(sheet_.DisplayText(row, column), " "));
  if (name.empty() && sheet_.OutlineCol() >= 0) name = base::OneLine(sheet_.DisplayText(row, sheet_.OutlineCol()), " ");
  return name;
}

NodeState TableAccess::NodeAt(int row) const {
  if (!sheet_.IsSubtotal(row) || !sheet_.outline().Governs(row)) return NodeState::kNone;
  return sheet_.IsCollapsed(row) ? NodeState::kClosed : NodeState::kOpen;
}

Rect TableAccess::CellArea(int row, int column) const { return view_.geometry().VisibleCellRect(row, column); }

Rect TableAccess::CaptionArea(int column) const {
  if (sheet_.FixedRows() == 0) return {};
  const Geometry geometry = view_.geometry();
  const Rect first = geometry.VisibleCellRect(0, column);
  const Rect last = geometry.VisibleCellRect(sheet_.FixedRows() - 1, column);
  return {first.x, 0, first.width, first.IsEmpty() ? 0 : std::max(first.bottom(), last.bottom())};
}

std::optional<CellPosition> TableAccess::CellAt(Point point) const {
  const CellPosition cell = view_.geometry().CellAt(point);
  if (cell.row < 0 || cell.column < sheet_.FixedCols()) return std::nullopt;
  return CellPosition{cell.row < sheet_.FixedRows() ? -1 : cell.row, cell.column};
}

IndexSpan TableAccess::SelectedRows() const {
  const platform::CellRange range = view_.selection().Range();
  const int first = std::max(range.row1, sheet_.FixedRows());
  const int last = std::min(range.row2, sheet_.Rows());
  if (first >= last || SelectedColumns().Count() == 0) return {};
  const RowStates& states = sheet_.states();
  const int64_t fixed = states.ShownBefore(sheet_.FixedRows());
  return {static_cast<int>(states.ShownBefore(first) - fixed), static_cast<int>(states.ShownBefore(last) - fixed)};
}

IndexSpan TableAccess::SelectedColumns() const {
  const platform::CellRange range = view_.selection().Range();
  IndexSpan span;
  for (int column = sheet_.FixedCols(); column < std::min(range.column2, sheet_.Cols()); ++column) {
    if (sheet_.ColHidden(column)) continue;
    ++(column < range.column1 ? span.first : span.last);
  }
  span.last += span.first;
  return span;
}

bool TableAccess::SelectsWholeRows() const {
  return ColumnCount() > 0 && SelectedColumns().Count() == ColumnCount() && SelectedRows().Count() > 0;
}

bool TableAccess::SelectsWholeColumns() const {
  return RowCount() > 0 && SelectedRows().Count() == RowCount() && SelectedColumns().Count() > 0;
}

bool TableAccess::GoTo(int row, int column) {
  if (IndexOfRow(row) < 0 || IndexOfColumn(column) < 0) return false;
  if (!view_.ChangeSelection(Selection::Of({row, column}))) return false;
  const CellPosition current = view_.selection().current;
  view_.ScrollTo(view_.geometry().ToShow(current.row, current.column));
  return true;
}

bool TableAccess::SelectRow(int row) {
  if (IndexOfRow(row) < 0 || ColumnCount() == 0) return false;
  return view_.ChangeSelection({{row, ColumnOf(0)}, {row, sheet_.Cols() - 1}});
}

bool TableAccess::SelectColumn(int column) {
  if (IndexOfColumn(column) < 0 || RowCount() == 0) return false;
  return view_.ChangeSelection({{RowOf(0), column}, {sheet_.Rows() - 1, column}});
}

bool TableAccess::SelectCurrentAlone() { return view_.ChangeSelection(Selection::Of(view_.selection().current)); }

bool TableAccess::ToggleNode(int row) {
  const NodeState state = NodeAt(row);
  if (state == NodeState::kNone) return false;
  sheet_.SetIsCollapsed(row, state == NodeState::kOpen);
  return true;
}

}  // namespace stockbook::sheet
