// SPDX-License-Identifier: MIT
#include "sheet/input/keyboard.h"

#include <algorithm>

#include "sheet/geometry/row_axis.h"
#include "sheet/outline/outline.h"
#include "sheet/outline/row_states.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::sheet {

Keyboard::Keyboard(View& view) : view_(view), sheet_(view.sheet()) {}

bool Keyboard::Press(const KeyEvent& event) {
  if (event.key == Key::kOther || event.key == Key::kEscape || event.modifiers.Alt()) return false;
  // The observer may have something to copy even if nothing is selected.
  if (IsCopying(event) && view_.observer().Copy()) return true;
  const Selection& selection = view_.selection();
  if (selection.current.row < 0 || selection.current.column < 0) return false;
  if (const std::optional<bool> done = Command(event)) return *done;
  if (FoldNode(event)) return true;
  const bool extends = event.modifiers.Shift();
  const CellPosition target = Target(event, extends ? selection.end : selection.current);
  MoveTo(extends ? Selection{selection.current, target} : Selection::Of(target));
  return true;
}

bool Keyboard::IsCopying(const KeyEvent& event) {
  return event.modifiers.Control() && (event.key == Key::kC || event.key == Key::kInsert);
}

std::optional<bool> Keyboard::Command(const KeyEvent& event) {
  const bool control = event.modifiers.Control();
  switch (event.key) {
    case Key::kA:
      if (control) SelectAll();
      return control;
    case Key::kC:
    case Key::kInsert:
      return control && Copy();
    case Key::kSpace:
      return SelectWhole(event.modifiers);
    case Key::kEnter:
      return DoubleClick();
    case Key::kMenu:
      return PressRight(event.modifiers);
    case Key::kPlus:
    case Key::kMinus:
      // On many keyboards the plus sign needs Shift.
      if (!control) return FoldNode({event.key, {}});
      FoldAll(event.key);
      return true;
    default:
      return std::nullopt;
  }
}

bool Keyboard::Copy() {
  if (view_.clipboard() == nullptr) return false;
  view_.CopySelection(*view_.clipboard());
  return true;
}

// With Shift the rows of the selection from the first column to the last, with Control its columns from top to bottom.
bool Keyboard::SelectWhole(Modifiers modifiers) {
  Selection wanted = view_.selection();
  if (modifiers.Shift()) {
    wanted.current.column = sheet_.FirstShownColumn();
    wanted.end.column = sheet_.Cols() - 1;
  }
  if (modifiers.Control()) {
    wanted.current.row = sheet_.FixedRows();
    wanted.end.row = sheet_.Rows() - 1;
  }
  if (wanted == view_.selection()) return false;
  view_.ChangeSelection(wanted);
  return true;
}

// Without an observer the key is passed on to the dialog around the sheet.
bool Keyboard::DoubleClick() {
  if (!view_.IsObserved()) return false;
  view_.SetMouseCell(view_.selection().current);
  view_.observer().DoubleClick();
  return true;
}

bool Keyboard::PressRight(Modifiers modifiers) {
  if (!view_.IsObserved()) return false;
  CellPosition cell = view_.selection().current;
  view_.ScrollTo(view_.geometry().ToShow(cell.row, cell.column));
  if (modifiers.Control()) cell.row = 0;
  const Rect area = view_.geometry().CellRect(cell.row, cell.column);
  view_.SetMouseCell(cell);
  const Point middle{area.x + area.width / 2, area.y + area.height / 2};
  view_.observer().MouseDown(ToGridEvent({MouseButton::kRight, {}, middle}, view_.scale()));
  return true;
}

void Keyboard::FoldAll(Key key) {
  key == Key::kMinus ? sheet_.CollapseAll() : sheet_.ExpandAll();
  const CellPosition cell = view_.selection().current;
  if (!sheet_.states().At(cell.row).covered) {
    view_.ScrollTo(view_.geometry().ToShow(cell.row, cell.column));
    return;
  }
  // The node that hides the current row takes its place.
  MoveTo(Selection::Of({static_cast<int>(sheet_.states().UncoveredBefore(cell.row)), cell.column}));
}

void Keyboard::MoveTo(const Selection& wanted) {
  if (!view_.ChangeSelection(wanted)) return;
  const CellPosition shown = view_.selection().end;
  view_.ScrollTo(view_.geometry().ToShow(shown.row, shown.column));
}

CellPosition Keyboard::Target(const KeyEvent& event, CellPosition from) const {
  // A cell in a hidden column has no place; the next visible column takes over.
  if (from.column < sheet_.FixedCols() || sheet_.ColHidden(from.column)) {
    const int next = ColumnStep(from.column, 1);
    from.column = next != from.column ? next : ColumnStep(from.column, -1);
  }
  const bool far = event.modifiers.Control();
  switch (event.key) {
    case Key::kUp:
      return {far ? EdgeRow(-1) : RowStep(from.row, -1), from.column};
    case Key::kDown:
      return {far ? EdgeRow(1) : RowStep(from.row, 1), from.column};
    case Key::kLeft:
      return {from.row, far ? EdgeColumn(-1) : ColumnStep(from.column, -1)};
    case Key::kRight:
      return {from.row, far ? EdgeColumn(1) : ColumnStep(from.column, 1)};
    case Key::kHome:
      return {far ? EdgeRow(-1) : from.row, EdgeColumn(-1)};
    case Key::kEnd:
      return {far ? EdgeRow(1) : from.row, EdgeColumn(1)};
    case Key::kPageUp:
      return {PageRow(from.row, -1), from.column};
    case Key::kPageDown:
      return {PageRow(from.row, 1), from.column};
    default:
      return from;
  }
}

int Keyboard::RowStep(int row, int direction) const {
  const RowStates& states = sheet_.states();
  if (direction < 0) {
    const auto above = static_cast<int>(states.ShownAtOrBefore(row - 1));
    return above < sheet_.FixedRows() ? row : above;
  }
  const auto below = static_cast<int>(states.ShownAtOrAfter(row + 1));
  return below < sheet_.Rows() ? below : row;
}

int Keyboard::ColumnStep(int column, int direction) const {
  for (int at = column + direction; at >= sheet_.FixedCols() && at < sheet_.Cols(); at += direction) {
    if (!sheet_.ColHidden(at)) return at;
  }
  return column;
}

int Keyboard::EdgeRow(int direction) const {
  const int beyond = direction < 0 ? sheet_.FixedRows() - 1 : sheet_.Rows();
  const int row = RowStep(beyond, -direction);
  return row == beyond ? view_.selection().current.row : row;
}

int Keyboard::EdgeColumn(int direction) const {
  const int beyond = direction < 0 ? sheet_.FixedCols() - 1 : sheet_.Cols();
  const int column = ColumnStep(beyond, -direction);
  return column == beyond ? view_.selection().current.column : column;
}

int Keyboard::PageRow(int row, int direction) const {
  const RowAxis& rows = view_.rows();
  const int64_t height = rows.Height(row);
  const int64_t page = std::max<int64_t>(view_.geometry().BodyRect().height - height, 1);
  // Counted from the far edge of the row, so that a page up undoes a page down.
  const int64_t pixel = rows.Top(row) + (direction < 0 ? height - 1 - page : page);
  const int first = EdgeRow(-1);
  const int last = EdgeRow(1);
  const auto target = static_cast<int>(rows.RowAt(std::max<int64_t>(pixel, 0)));
  // Even a row higher than the page is left.
  const int least = RowStep(row, direction);
  return std::clamp(direction < 0 ? std::min(target, least) : std::max(target, least), first, last);
}

bool Keyboard::FoldNode(const KeyEvent& event) {
  const CellPosition cell = view_.selection().current;
  if (event.modifiers.Any()) return false;
  if (event.key == Key::kLeft && GoToNode(cell)) return true;
  if (!sheet_.IsSubtotal(cell.row) || !sheet_.outline().Governs(cell.row)) return false;
  const bool collapsed = sheet_.IsCollapsed(cell.row);
  const bool on_tree = cell.column == sheet_.OutlineCol();
  const bool closes = event.key == Key::kMinus || (event.key == Key::kLeft && on_tree);
  const bool opens = event.key == Key::kPlus || (event.key == Key::kRight && on_tree);
  if ((closes && !collapsed) || (opens && collapsed)) {
    sheet_.SetIsCollapsed(cell.row, closes);
    return true;
  }
  return event.key == Key::kPlus || event.key == Key::kMinus;
}

// From a line in the column of the tree, where no column is left of it.
bool Keyboard::GoToNode(CellPosition cell) {
  if (cell.column != sheet_.OutlineCol() || ColumnStep(cell.column, -1) != cell.column) return false;
  const auto node = static_cast<int>(sheet_.outline().NodeOf(cell.row));
  if (sheet_.IsSubtotal(cell.row) || node < sheet_.FixedRows()) return false;
  MoveTo(Selection::Of({node, cell.column}));
  return true;
}

void Keyboard::SelectAll() {
  view_.ChangeSelection({{sheet_.FixedRows(), sheet_.FirstShownColumn()}, {sheet_.Rows() - 1, sheet_.Cols() - 1}});
}

}  // namespace stockbook::sheet
