// SPDX-License-Identifier: MIT
#include "stockbook/sheet/view/view.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "sheet/geometry/column_axis.h"
#include "sheet/geometry/row_axis.h"
#include "sheet/geometry/scale.h"
#include "sheet/outline/row_states.h"
#include "sheet/selection/selection_text.h"
#include "sheet/store/store.h"
#include "stockbook/base/scope_exit.h"

namespace stockbook::sheet {

using platform::CellRange;
using platform::MousePointer;
using platform::Verdict;

struct View::Axes {
  RowAxis rows;
  ColumnAxis columns;
};

View::View(Sheet& sheet)
    : sheet_(sheet),
      axes_(new Axes{{sheet.states(), 1.0}, {}}),
      rows_(axes_->rows),
      columns_(axes_->columns),
      anchor_{sheet.FixedRows()} {
  sheet_.AddWatcher(this);
}

View::View(const View& other, Size size_px, double scale)
    : sheet_(other.sheet_),
      axes_(new Axes{{other.sheet_.states(), other.scale()}, {}}),
      rows_(axes_->rows),
      columns_(axes_->columns),
      size_(other.size_),
      pinned_cols_(other.pinned_cols_),
      anchor_(other.anchor_),
      scroll_x_(other.scroll_x_),
      selection_(other.selection_),
      drop_column_(other.drop_column_),
      focused_(other.focused_) {
  SetSize(size_px, scale);
  sheet_.AddWatcher(this);
}

View::~View() {
  Leave();
  if (!sheet_gone_) sheet_.RemoveWatcher(this);
}

void View::SheetGone() {
  sheet_gone_ = true;
  Leave();
}

void View::Leave() {
  if (viewer_ != nullptr) std::exchange(viewer_, nullptr)->ViewGone();
}

void View::SetViewer(SheetViewer* viewer) {
  if (viewer != nullptr && viewer != viewer_) Leave();
  viewer_ = viewer;
}

void View::SetSize(Size size_px, double scale) {
  constexpr double kLeastScale = 1.0 / 16;
  constexpr double kMostScale = 64;
  const double before = rows_.scale();
  scale = std::isfinite(scale) && scale > 0 ? std::clamp(scale, kLeastScale, kMostScale) : before;
  size_ = {std::max(0, size_px.width), std::max(0, size_px.height)};
  if (scale != before) {
    scroll_x_ = static_cast<int64_t>(std::llround(static_cast<double>(scroll_x_) * scale / before));
    anchor_.offset_px = static_cast<int64_t>(static_cast<double>(anchor_.offset_px) * scale / before);
    rows_.SetScale(scale);
    columns_valid_ = false;
  }
  ScrollChanged();
  DamageAll();
}

double View::scale() const { return rows_.scale(); }

size_t View::MemoryBytes() const { return sizeof(Axes) + rows_.MemoryBytes() + columns_.MemoryBytes(); }

void View::SetPinnedCols(int columns) {
  pinned_cols_ = columns;
  EverythingChanged();
}

int View::PinnedCols() const {
  if (pinned_cols_ < 0) return sheet_.PinnedCols();
  return std::clamp(pinned_cols_, std::min(sheet_.FixedCols(), sheet_.Cols()), sheet_.Cols());
}

CellPart View::PartOf(int row, int column) const {
  const CellPart part = sheet_.PartOf(row, column);
  return part == CellPart::kFrozen && column >= PinnedCols() ? CellPart::kBody : part;
}

Geometry View::geometry() const {
  const int fixed = sheet_.FixedRows();
  const int anchor = std::clamp(anchor_.row, 0, sheet_.Rows());
  int64_t y = rows_.Top(anchor) - rows_.Top(fixed);
  if (anchor < sheet_.Rows()) y += std::min(anchor_.offset_px, rows_.Height(anchor));
  return Geometry(rows_, columns(), {fixed, sheet_.FixedCols(), PinnedCols()}, size_, {scroll_x_, y});
}

const ColumnAxis& View::columns() const {
  if (!columns_valid_) {
    std::vector<int> widths(static_cast<size_t>(sheet_.Cols()));
    for (int column = 0; column < sheet_.Cols(); ++column) {
      const SheetColumn& of = sheet_.store().columns().At(column);
      widths[static_cast<size_t>(column)] = of.hidden ? 0 : static_cast<int>(ToPixels(of.width_twips, scale()));
    }
    columns_ = ColumnAxis(widths);
    columns_valid_ = true;
  }
  return columns_;
}

void View::ScrollTo(ScrollPosition position) {
  const Geometry before = geometry();
  const ScrollPosition most = before.max_scroll();
  const int64_t y = std::clamp<int64_t>(position.y, 0, most.y);
  scroll_x_ = std::clamp<int64_t>(position.x, 0, most.x);
  const int64_t pixel = rows_.Top(sheet_.FixedRows()) + y;
  const auto row = std::min(static_cast<int>(rows_.RowAt(pixel)), sheet_.Rows());
  anchor_ = {row, pixel - rows_.Top(row)};
  if (geometry().scroll() == before.scroll()) return;
  ScrollChanged();
  // The mark does not always scroll with the pixels under it.
  if (drop_column_ >= 0) DamageAll();
}

void View::ScrollBy(int64_t dx_px, int64_t dy_px) {
  const ScrollPosition at = geometry().scroll();
  // Larger than any sheet, and far from overflowing.
  constexpr int64_t kFar = int64_t{1} << 60;
  ScrollTo({at.x + std::clamp(dx_px, -kFar, kFar), at.y + std::clamp(dy_px, -kFar, kFar)});
}

bool View::ChangeSelection(const Selection& selection) {
  const CellPosition old_cell = selection_.current;
  const bool moves = selection.current != old_cell;
  if (moves && observer().BeforeRowColChange(old_cell, selection.current) == Verdict::kRefuse) return false;
  const CellRange before = selection_.Range();
  selection_ = selection;
  // The observer may have taken rows away.
  KeepSelectionInside();
  CellsChanged(before);
  CellsChanged(selection_.Range());
  if (Reports()) viewer_->SelectionChanged();
  if (moves) observer().AfterRowColChange(old_cell, selection_.current);
  return true;
}

View::Place View::KeepPlace() const {
  Place place;
  place.anchor_ = anchor_;
  place.scroll_x_ = scroll_x_;
  place.selection_ = selection_;
  return place;
}

void View::PutBack(const Place& place) {
  anchor_ = place.anchor_;
  scroll_x_ = place.scroll_x_;
  selection_ = place.selection_;
  RowsChanged();
  if (Reports()) viewer_->SelectionChanged();
}

void View::KeepSelectionInside() {
  const auto keep = [](int at, int first, int count) {
    return count <= first ? -1 : std::clamp(at < 0 ? first : at, 0, count - 1);
  };
  for (CellPosition* cell : {&selection_.current, &selection_.end}) {
    cell->row = keep(cell->row, sheet_.FixedRows(), sheet_.Rows());
    cell->column = keep(cell->column < 0 ? sheet_.FirstShownColumn() : cell->column, sheet_.FixedCols(), sheet_.Cols());
  }
}

void View::CopySelection(platform::Clipboard& clipboard) {
  SetPointer(MousePointer::kArrowHourglass);
  const base::ScopeExit pointer([this] { SetPointer(MousePointer::kDefault); });
  clipboard.Clear();
  clipboard.SetText(SelectionText(sheet_, selection_));
}

CellPosition View::mouse_cell() const {
  return {sheet_.HasRow(mouse_cell_.row) ? mouse_cell_.row : -1,
          sheet_.HasColumn(mouse_cell_.column) ? mouse_cell_.column : -1};
}

void View::SetDropColumn(int column) {
  if (drop_column_ == column) return;
  drop_column_ = column;
  DamageAll();
}

void View::SetFocused(bool focused) {
  if (focused_ == focused) return;
  focused_ = focused;
  CellsChanged(Selection::Of(selection_.current).Range());
}

void View::SetPointer(MousePointer pointer) {
  pointer_ = pointer;
  if (viewer_ != nullptr) viewer_->CursorChanged(pointer == MousePointer::kDefault ? Cursor::kDefault : Cursor::kBusy);
}

void View::RowsInserted(std::span<const int64_t> rows, int count) {
  if (IsAtTop(sheet_.FixedRows())) return;
  const auto above = std::upper_bound(rows.begin(), rows.end(), anchor_.row) - rows.begin();
  anchor_.row += static_cast<int>(above) * count;
}

void View::RowsRemoved(int row, int count) {
  if (anchor_.row >= row + count) {
    anchor_.row -= count;
  } else if (anchor_.row >= row) {
    anchor_ = {row, 0};
  }
}

void View::RowsReplaced() {
  anchor_ = {sheet_.FixedRows(), 0};
  selection_ = Selection();
}

void View::FixedRowsChanged(int before) {
  if (IsAtTop(before) || anchor_.row < sheet_.FixedRows()) anchor_ = {sheet_.FixedRows(), 0};
}

void View::RowsChanged() {
  KeepSelectionInside();
  ScrollChanged();
  DamageAll();
}

void View::ColumnsChanged() {
  columns_valid_ = false;
  drop_column_ = std::min(drop_column_, sheet_.Cols());
  RowsChanged();
}

void View::LooksChanged() { DamageAll(); }

void View::EverythingChanged() {
  ScrollChanged();
  DamageAll();
}

void View::NodeChanged(int row) {
  if (Reports()) viewer_->NodeChanged(row);
}

void View::DamageAll() {
  if (Reports()) viewer_->Damaged({0, 0, size_.width, size_.height});
}

void View::CellsChanged(const CellRange& range) {
  if (!Reports() || range.row1 >= range.row2 || range.column1 >= range.column2) return;
  const Geometry at = geometry();
  // Half-open in both directions: from the first cell's corner to where the cell after the last one would begin.
  const Rect first = at.CellRect(range.row1, range.column1);
  const Rect last = at.CellRect(range.row2 - 1, range.column2 - 1);
  Rect area{first.x, first.y, last.right() - first.x, last.bottom() - first.y};
  // A range that begins in a pinned part and ends in a scrolled one may be larger than its corners suggest.
  if (range.column1 < PinnedCols() && range.column2 > PinnedCols()) area.width = size_.width - area.x;
  if (range.row1 < sheet_.FixedRows() && range.row2 > sheet_.FixedRows()) area.height = size_.height - area.y;
  area = area.Intersected({0, 0, size_.width, size_.height});
  if (!area.IsEmpty()) viewer_->Damaged(area);
}

void View::ScrollChanged() {
  if (Reports()) viewer_->ScrollChanged();
}

bool View::CheckInvariants() const {
  const bool scrolled = anchor_.row >= 0 && anchor_.row <= sheet_.Rows() && anchor_.offset_px >= 0 && scroll_x_ >= 0;
  return geometry().CheckInvariants() && scrolled && drop_column_ <= sheet_.Cols() && selection_.CheckInvariants() &&
         selection_.IsWithin(sheet_.Rows(), sheet_.Cols()) && columns().Count() == sheet_.Cols();
}

}  // namespace stockbook::sheet
