// SPDX-License-Identifier: MIT
// Sheet as platform::GridView and platform::GridAppearance.
#include <algorithm>

#include "base/scope_exit.h"
#include "sheet/selection/selection_text.h"
#include "sheet/sheet.h"

namespace stockbook::sheet {

using platform::CellRange;
using platform::Colour;
using platform::Font;
using platform::GridColour;
using platform::GridLineStyle;
using platform::MousePointer;
using platform::ScrollBarsSetting;
using platform::Verdict;

bool Sheet::ChangeSelection(const Selection& selection) {
  const CellPosition old_cell = selection_.current;
  const bool moves = selection.current != old_cell;
  if (moves && observer().BeforeRowColChange(old_cell, selection.current) == Verdict::kRefuse) return false;
  const CellRange before = selection_.Range();
  selection_ = selection;
  // The observer may have taken rows away.
  KeepSelectionInside();
  DamageCells(before);
  DamageCells(selection_.Range());
  if (redraw_ && viewer_ != nullptr) viewer_->SelectionChanged();
  if (moves) observer().AfterRowColChange(old_cell, selection_.current);
  return true;
}

void Sheet::Select(int row, int column) { SelectRange(row, column, row, column); }

void Sheet::SelectRange(int row, int column, int row_sel, int col_sel) {
  CheckCell("Select", row, column);
  CheckCell("Select", row_sel, col_sel);
  ChangeSelection({{row, column}, {row_sel, col_sel}});
}

void Sheet::SetFocused(bool focused) {
  if (focused_ == focused) return;
  focused_ = focused;
  DamageCells(Selection::Of(selection_.current).Range());
}

void Sheet::CopySelection(platform::Clipboard& clipboard) {
  SetPointer(MousePointer::kArrowHourglass);
  const base::ScopeExit pointer([this] { SetPointer(MousePointer::kDefault); });
  clipboard.Clear();
  clipboard.TakeText(SelectionText(*this));
}

void Sheet::SetTopRow(int row) {
  CheckRow("TopRow", row);
  ScrollTo(geometry().WithTopRow(row));
}

void Sheet::SetLeftCol(int column) {
  CheckColumn("LeftCol", column);
  ScrollTo(geometry().WithLeftCol(column));
}

void Sheet::ScrollTo(ScrollPosition position) {
  const Geometry before = geometry();
  const ScrollPosition most = before.max_scroll();
  const int64_t y = std::clamp<int64_t>(position.y, 0, most.y);
  scroll_x_ = std::clamp<int64_t>(position.x, 0, most.x);
  const int64_t pixel = rows_.Top(fixed_rows_) + y;
  const auto row = std::min(static_cast<int>(rows_.RowAt(pixel)), Rows());
  anchor_ = {row, pixel - rows_.Top(row)};
  if (geometry().scroll() == before.scroll()) return;
  ScrollChanged();
  // The mark does not always move with the pixels under it.
  if (drop_column_ >= 0) LooksChanged();
}

Sheet::Layout Sheet::layout() const { return {view_, scale(), anchor_.row, anchor_.offset_px, scroll_x_}; }

void Sheet::SetLayout(const Layout& layout) {
  SetView(layout.view, layout.scale);
  // The rows may be others since the layout was taken.
  anchor_.row = std::clamp(layout.top_row, fixed_rows_, Rows());
  anchor_.offset_px = anchor_.row == layout.top_row ? std::max<int64_t>(layout.top_offset_px, 0) : 0;
  scroll_x_ = std::max<int64_t>(layout.scroll_x_px, 0);
  ScrollChanged();
}

void Sheet::ScrollBy(int64_t dx_px, int64_t dy_px) {
  const ScrollPosition at = geometry().scroll();
  // Farther than any sheet is large, and far from overflowing.
  constexpr int64_t kFar = int64_t{1} << 60;
  ScrollTo({at.x + std::clamp(dx_px, -kFar, kFar), at.y + std::clamp(dy_px, -kFar, kFar)});
}

void Sheet::SetDropColumn(int column) {
  if (drop_column_ == column) return;
  drop_column_ = column;
  LooksChanged();
}

void Sheet::SetRedraw(bool on) {
  if (redraw_ == on) return;
  redraw_ = on;
  if (!on) return;
  ScrollChanged();
  DamageAll();
}

void Sheet::SetPointer(MousePointer pointer) {
  pointer_ = pointer;
  if (viewer_ != nullptr) viewer_->CursorChanged(pointer == MousePointer::kDefault ? Cursor::kDefault : Cursor::kBusy);
}

void Sheet::SetColour(GridColour which, Colour colour) {
  appearance_.Of(which) = colour;
  LooksChanged();
}

void Sheet::SetGridLines(GridLineStyle style) {
  appearance_.grid_lines = style;
  LooksChanged();
}

void Sheet::SetGridLinesFixed(GridLineStyle style) {
  appearance_.grid_lines_fixed = style;
  LooksChanged();
}

void Sheet::SetScrollBars(ScrollBarsSetting setting) {
  appearance_.scroll_bars = setting;
  ScrollChanged();
  LooksChanged();
}

void Sheet::SetGridFont(const Font& font) {
  appearance_.font = font;
  LooksChanged();
}

}  // namespace stockbook::sheet
