// SPDX-License-Identifier: MIT
#include "stockbook/sheet/geometry/geometry.h"

#include <algorithm>

#include "sheet/geometry/column_axis.h"
#include "sheet/geometry/row_axis.h"
#include "sheet/outline/row_states.h"

namespace stockbook::sheet {
namespace {

// Positions far out of view are clamped to this distance, so that differences of two of them fit into an int.
constexpr int64_t kFarAway = int64_t{1} << 29;

int ToView(int64_t pixel) { return static_cast<int>(std::clamp(pixel, -kFarAway, kFarAway)); }

int64_t Nearest(int64_t scroll, int64_t from, int64_t to, int64_t room) {
  if (from < scroll || to - from > room) return from;
  return to > scroll + room ? to - room : scroll;
}

}  // namespace

Geometry::Geometry(const RowAxis& rows, const ColumnAxis& columns, Pinned pinned, Size view, ScrollPosition wanted)
    : rows_(&rows), columns_(&columns), pinned_(pinned), view_{std::max(0, view.width), std::max(0, view.height)} {
  pinned_.rows = std::clamp(pinned_.rows, 0, static_cast<int>(rows.Count()));
  pinned_.columns = std::clamp(pinned_.columns, 0, columns.Count());
  pinned_.fixed_columns = std::clamp(pinned_.fixed_columns, 0, pinned_.columns);
  pinned_width_ = columns.Left(pinned_.columns);
  pinned_height_ = rows.Top(pinned_.rows);
  scroll_ = Clamped(wanted);
}

int64_t Geometry::ContentWidth() const { return columns_->Total(); }

int64_t Geometry::ContentHeight() const { return rows_->Total(); }

ScrollPosition Geometry::max_scroll() const {
  // The pinned parts are included in both the contents and the view.
  const int64_t room_x = std::max<int64_t>(view_.width, pinned_width_);
  const int64_t room_y = std::max<int64_t>(view_.height, pinned_height_);
  return {std::max<int64_t>(0, ContentWidth() - room_x), std::max<int64_t>(0, ContentHeight() - room_y)};
}

ScrollPosition Geometry::Clamped(ScrollPosition wanted) const {
  const ScrollPosition most = max_scroll();
  return {std::clamp<int64_t>(wanted.x, 0, most.x), std::clamp<int64_t>(wanted.y, 0, most.y)};
}

int Geometry::PinnedWidth() const { return static_cast<int>(std::min<int64_t>(pinned_width_, view_.width)); }
int Geometry::FixedWidth() const {
  return static_cast<int>(std::min<int64_t>(columns_->Left(pinned_.fixed_columns), view_.width));
}
int Geometry::PinnedHeight() const { return static_cast<int>(std::min<int64_t>(pinned_height_, view_.height)); }

Rect Geometry::BodyRect() const {
  const int left = PinnedWidth();
  const int top = PinnedHeight();
  return {left, top, view_.width - left, view_.height - top};
}

Rect Geometry::CellsRect() const {
  return {0, 0, static_cast<int>(std::min<int64_t>(view_.width, ContentWidth() - scroll_.x)),
          static_cast<int>(std::min<int64_t>(view_.height, ContentHeight() - scroll_.y))};
}

Rect Geometry::CellRect(int row, int column) const {
  const int64_t dx = column < pinned_.columns ? 0 : scroll_.x;
  const int64_t dy = row < pinned_.rows ? 0 : scroll_.y;
  const int left = ToView(columns_->Left(column) - dx);
  const int right = ToView(columns_->Left(column + 1) - dx);
  const int64_t top = rows_->Top(row) - dy;
  const int bottom = ToView(top + rows_->Height(row));
  return {left, ToView(top), right - left, bottom - ToView(top)};
}

Rect Geometry::PaneOf(int row, int column) const {
  const int left = column < pinned_.columns ? 0 : PinnedWidth();
  const int top = row < pinned_.rows ? 0 : PinnedHeight();
  const int right = column < pinned_.columns ? PinnedWidth() : view_.width;
  const int bottom = row < pinned_.rows ? PinnedHeight() : view_.height;
  return {left, top, right - left, bottom - top};
}

Rect Geometry::VisibleCellRect(int row, int column) const {
  return CellRect(row, column).Intersected(PaneOf(row, column));
}

CellPosition Geometry::CellAt(Point point) const {
  CellPosition cell;
  if (point.x < 0 || point.y < 0 || point.x >= view_.width || point.y >= view_.height) return cell;
  const int64_t x = point.x + (point.x < PinnedWidth() ? 0 : scroll_.x);
  const int64_t y = point.y + (point.y < PinnedHeight() ? 0 : scroll_.y);
  const int column = columns_->ColumnAt(x);
  const auto row = static_cast<int>(rows_->RowAt(y));
  if (column < columns_->Count()) cell.column = column;
  if (row < rows_->Count()) cell.row = row;
  return cell;
}

Span Geometry::RowsWithin(int from, int to) const {
  from = std::max(from, PinnedHeight());
  to = std::min(to, view_.height);
  const auto rows = static_cast<int>(rows_->Count());
  if (from >= to) return {rows, rows};
  const auto first = static_cast<int>(rows_->RowAt(from + scroll_.y));
  const auto last = static_cast<int>(rows_->RowAt(to - 1 + scroll_.y));
  return {first, std::min(last + 1, rows)};
}

Span Geometry::FixedRowsWithin(int from, int to) const {
  from = std::max(from, 0);
  to = std::min(to, PinnedHeight());
  if (from >= to) return {pinned_.rows, pinned_.rows};
  return {static_cast<int>(rows_->RowAt(from)), std::min(static_cast<int>(rows_->RowAt(to - 1)) + 1, pinned_.rows)};
}

Span Geometry::ColumnsWithin(int from, int to) const {
  from = std::max(from, PinnedWidth());
  to = std::min(to, view_.width);
  if (from >= to) return {columns_->Count(), columns_->Count()};
  return {columns_->ColumnAt(from + scroll_.x),
          std::min(columns_->ColumnAt(to - 1 + scroll_.x) + 1, columns_->Count())};
}

int Geometry::TopRow() const {
  const auto rows = static_cast<int>(rows_->Count());
  if (pinned_.rows >= rows) return pinned_.rows;
  const auto top = static_cast<int>(rows_->RowAt(pinned_height_ + scroll_.y));
  return std::clamp(top, pinned_.rows, rows - 1);
}

int Geometry::BottomRow() const {
  const int top = TopRow();
  const int64_t end = scroll_.y + std::max<int64_t>(view_.height, pinned_height_);
  auto row = static_cast<int>(rows_->RowAt(end - 1));
  if (row >= rows_->Count())
    return std::max(top, static_cast<int>(rows_->states().ShownAtOrBefore(rows_->Count() - 1)));
  const bool whole = rows_->Top(row) + rows_->Height(row) <= end;
  if (!whole) row = static_cast<int>(rows_->states().ShownAtOrBefore(row - 1));
  return std::max(top, row);
}

int Geometry::LeftCol() const {
  const int left = columns_->ColumnAt(pinned_width_ + scroll_.x);
  return std::clamp(left, std::min(pinned_.columns, std::max(0, columns_->Count() - 1)),
                    std::max(0, columns_->Count() - 1));
}

bool Geometry::RowIsVisible(int row) const {
  if (row < 0 || row >= rows_->Count() || !rows_->states().At(row).IsShown()) return false;
  return row < pinned_.rows || (row >= TopRow() && row <= BottomRow());
}

ScrollPosition Geometry::ToShow(int row, int column) const {
  ScrollPosition wanted = scroll_;
  if (row >= pinned_.rows && row < rows_->Count()) {
    const int64_t top = rows_->Top(row) - pinned_height_;
    wanted.y = Nearest(scroll_.y, top, top + rows_->Height(row), view_.height - PinnedHeight());
  }
  if (column >= pinned_.columns && column < columns_->Count()) {
    const int64_t left = columns_->Left(column) - pinned_width_;
    wanted.x = Nearest(scroll_.x, left, left + columns_->Width(column), view_.width - PinnedWidth());
  }
  return Clamped(wanted);
}

ScrollPosition Geometry::WithTopRow(int row) const {
  return Clamped({scroll_.x, rows_->Top(std::max(row, pinned_.rows)) - pinned_height_});
}

ScrollPosition Geometry::WithLeftCol(int column) const {
  return Clamped({columns_->Left(std::max(column, pinned_.columns)) - pinned_width_, scroll_.y});
}

bool Geometry::CheckInvariants() const {
  const ScrollPosition most = max_scroll();
  return columns_->CheckInvariants() && rows_->CheckInvariants() && scroll_.x >= 0 && scroll_.y >= 0 &&
         scroll_.x <= most.x && scroll_.y <= most.y && PinnedWidth() <= view_.width && PinnedHeight() <= view_.height;
}

}  // namespace stockbook::sheet
