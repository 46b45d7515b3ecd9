// SPDX-License-Identifier: MIT
#include "sheet/sheet.h"

#include <algorithm>
#include <cmath>

#include "platform/error.h"
#include "sheet/geometry/scale.h"

namespace stockbook::sheet {

using platform::CellRange;
using platform::Error;

Sheet::Sheet() {
  store_.columns().SetCount(fixed_cols_);
  InsertRows(0, fixed_rows_);
  anchor_.row = fixed_rows_;
}

Sheet::~Sheet() = default;

void Sheet::CheckRow(const char* operation, int row) const {
  if (HasRow(row)) return;
  throw Error(operation, std::string(operation) + ": there is no row " + std::to_string(row) +
                             "; the grid has rows 0 to " + std::to_string(Rows() - 1) + ".");
}

void Sheet::CheckColumn(const char* operation, int column) const {
  if (HasColumn(column)) return;
  throw Error(operation, std::string(operation) + ": there is no column " + std::to_string(column) +
                             "; the grid has columns 0 to " + std::to_string(Cols() - 1) + ".");
}

void Sheet::CheckCell(const char* operation, int row, int column) const {
  CheckRow(operation, row);
  CheckColumn(operation, column);
}

bool Sheet::CheckRange(const char* operation, const CellRange& range) const {
  if (range.row1 >= range.row2 || range.column1 >= range.column2) return false;
  CheckCell(operation, range.row1, range.column1);
  CheckCell(operation, range.row2 - 1, range.column2 - 1);
  return true;
}

void Sheet::InsertRows(int row, int count) {
  if (count <= 0) return;
  ++revision_;
  store_.InsertRows(row, count);
  outline_.InsertRows(row, count);
  const bool at_top = anchor_.row == fixed_rows_ && anchor_.offset_px == 0;
  if (row <= anchor_.row && !at_top) anchor_.row += count;
}

void Sheet::RemoveRows(int row, int count) {
  if (count <= 0) return;
  ++revision_;
  store_.RemoveRows(row, count);
  outline_.RemoveRows(row, count);
  if (anchor_.row >= row + count) {
    anchor_.row -= count;
  } else if (anchor_.row >= row) {
    anchor_ = {row, 0};
  }
}

void Sheet::KeepSelectionInside() {
  const auto keep = [](int at, int first, int count) {
    return count <= first ? -1 : std::clamp(at < 0 ? first : at, 0, count - 1);
  };
  const int first_row = fixed_rows_;
  const int first_column = fixed_cols_;
  for (CellPosition* cell : {&selection_.current, &selection_.end}) {
    cell->row = keep(cell->row, first_row, Rows());
    cell->column = keep(cell->column < 0 ? FirstShownColumn() : cell->column, first_column, Cols());
  }
}

Geometry Sheet::geometry() const {
  const int anchor = std::clamp(anchor_.row, 0, Rows());
  int64_t y = rows_.Top(anchor) - rows_.Top(fixed_rows_);
  if (anchor < Rows()) y += std::min(anchor_.offset_px, rows_.Height(anchor));
  return Geometry(rows_, column_axis(), {fixed_rows_, fixed_cols_, PinnedCols()}, view_, {scroll_x_, y});
}

const ColumnAxis& Sheet::column_axis() const {
  if (!column_axis_valid_) {
    std::vector<int> widths(static_cast<size_t>(Cols()));
    for (int column = 0; column < Cols(); ++column) {
      const SheetColumn& of = store_.columns().At(column);
      widths[static_cast<size_t>(column)] = of.hidden ? 0 : static_cast<int>(ToPixels(of.width_twips, scale()));
    }
    column_axis_ = ColumnAxis(widths);
    column_axis_valid_ = true;
  }
  return column_axis_;
}

int Sheet::PinnedCols() const {
  const int pinned = frozen_cols_ >= fixed_cols_ && frozen_cols_ > 0 ? frozen_cols_ + 1 : fixed_cols_;
  return std::min(pinned, Cols());
}

int Sheet::FirstShownColumn() const {
  for (int column = fixed_cols_; column < Cols(); ++column) {
    if (!store_.columns().At(column).hidden) return column;
  }
  return fixed_cols_;
}

CellPart Sheet::PartOf(int row, int column) const {
  if (row < fixed_rows_ || column < fixed_cols_) return CellPart::kFixed;
  return column < PinnedCols() ? CellPart::kFrozen : CellPart::kBody;
}

void Sheet::ColumnsChanged() {
  column_axis_valid_ = false;
  drop_column_ = std::min(drop_column_, Cols());
  KeepSelectionInside();
  ScrollChanged();
  DamageAll();
}

void Sheet::RowsChanged() {
  KeepSelectionInside();
  ScrollChanged();
  DamageAll();
}

void Sheet::LooksChanged() { DamageAll(); }

void Sheet::DamageAll() {
  if (redraw_ && viewer_ != nullptr) viewer_->Damaged({0, 0, view_.width, view_.height});
}

void Sheet::DamageCells(const CellRange& range) {
  if (!redraw_ || viewer_ == nullptr || range.row1 >= range.row2 || range.column1 >= range.column2) return;
  const Geometry at = geometry();
  // Half-open in both directions: from the first cell's corner to where the next one would begin.
  const auto edges = [](const Rect& first, const Rect& last) {
    return Rect{first.x, first.y, last.right() - first.x, last.bottom() - first.y};
  };
  Rect area = edges(at.CellRect(range.row1, range.column1), at.CellRect(range.row2 - 1, range.column2 - 1));
  // A range that begins in pinned parts and ends in scrolled ones is wider than its corners tell.
  if (range.column1 < PinnedCols() && range.column2 > PinnedCols()) area.width = view_.width - area.x;
  if (range.row1 < fixed_rows_ && range.row2 > fixed_rows_) area.height = view_.height - area.y;
  area = area.Intersected({0, 0, view_.width, view_.height});
  if (!area.IsEmpty()) viewer_->Damaged(area);
}

void Sheet::ScrollChanged() {
  if (redraw_ && viewer_ != nullptr) viewer_->ScrollChanged();
}

void Sheet::SetView(Size view_px, double scale) {
  constexpr double kLeastScale = 1.0 / 16;
  constexpr double kMostScale = 64;
  scale = std::isfinite(scale) && scale > 0 ? std::clamp(scale, kLeastScale, kMostScale) : rows_.scale();
  const bool rescaled = scale != rows_.scale();
  view_ = {std::max(0, view_px.width), std::max(0, view_px.height)};
  if (rescaled) {
    scroll_x_ = static_cast<int64_t>(std::llround(static_cast<double>(scroll_x_) * scale / rows_.scale()));
    anchor_.offset_px = static_cast<int64_t>(static_cast<double>(anchor_.offset_px) * scale / rows_.scale());
    rows_.SetScale(scale);
    column_axis_valid_ = false;
  }
  ScrollChanged();
  DamageAll();
}

void Sheet::SetAppearance(const Appearance& appearance) {
  appearance_ = appearance;
  LooksChanged();
}

}  // namespace stockbook::sheet
