// SPDX-License-Identifier: MIT
#include "sheet/input/mouse.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "sheet/geometry/outline_metrics.h"
#include "sheet/geometry/scale.h"
#include "sheet/input/fit.h"
#include "sheet/outline/outline.h"
#include "sheet/outline/row_states.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::sheet {
namespace {

constexpr int kEdgeReach = 4;     // pixels on either side of an edge where it can be grabbed
constexpr int kRowEdgeReach = 3;  // rows are low
constexpr int kDragDistance = 5;  // pixels before a pressed caption moves
constexpr int kLeastSize = 60;    // twips; the minimum size for dragging
constexpr int kMostSize = 1 << 24;

}  // namespace

Mouse::Mouse(View& view) : view_(view), sheet_(view.sheet()) {}

int Mouse::Scaled(int pixels) const { return std::max(1, static_cast<int>(std::lround(pixels * view_.scale()))); }

int Mouse::ColumnEdgeAt(int x) const {
  const Geometry at = view_.geometry();
  const int reach = Scaled(kEdgeReach);
  // The column that ends here comes before the one that begins here.
  for (const int probe : {x - reach, x}) {
    const int column = at.CellAt({std::max(probe, 0), 0}).column;
    if (column >= 0 && std::abs(at.CellRect(0, column).right() - x) <= reach) return column;
  }
  if (x >= at.CellsRect().right() && x <= at.CellsRect().right() + reach)
    return at.CellAt({at.CellsRect().right() - 1, 0}).column;
  return -1;
}

int Mouse::RowEdgeAt(int y) const {
  const Geometry at = view_.geometry();
  const int reach = Scaled(kRowEdgeReach);
  for (const int probe : {y - reach, y}) {
    const int row = at.CellAt({0, std::max(probe, 0)}).row;
    if (row >= 0 && std::abs(at.CellRect(row, 0).bottom() - y) <= reach) return row;
  }
  return -1;
}

Mouse::Edge Mouse::EdgeAt(Point at) const {
  const Geometry geometry = view_.geometry();
  if (!Rect{0, 0, geometry.view().width, geometry.view().height}.Contains(at)) return {};
  if (sheet_.FixedRows() > 0 && at.y < geometry.PinnedHeight()) {
    if (const int column = ColumnEdgeAt(at.x); column >= 0) return {-1, column};
  }
  if (sheet_.FixedCols() > 0 && at.x < geometry.FixedWidth()) {
    if (const int row = RowEdgeAt(at.y); row >= 0) return {row, -1};
  }
  return {};
}

bool Mouse::Exists(const Edge& edge) const { return edge.row < sheet_.Rows() && edge.column < sheet_.Cols(); }

int Mouse::SizeOf(const Edge& edge) const {
  return edge.column >= 0 ? sheet_.ColWidth(edge.column) : sheet_.RowHeight(edge.row);
}

bool Mouse::ToggleNodeAt(Point at) {
  const Geometry geometry = view_.geometry();
  const CellPosition cell = geometry.CellAt(at);
  const bool on_tree = cell.row >= sheet_.FixedRows() && cell.column >= 0 && cell.column == sheet_.OutlineCol() &&
                       sheet_.OutlineBar() != platform::OutlineBarStyle::kNone;
  if (!on_tree || !sheet_.IsSubtotal(cell.row) || !sheet_.outline().Governs(cell.row)) return false;
  const OutlineMetrics metrics = OutlineMetrics::Of(view_.scale());
  if (!metrics.ClickArea(geometry.CellRect(cell.row, cell.column), sheet_.RowOutlineLevel(cell.row)).Contains(at))
    return false;
  sheet_.SetIsCollapsed(cell.row, !sheet_.IsCollapsed(cell.row));
  return true;
}

void Mouse::Press(const MouseEvent& event) {
  Cancel();
  pressed_ = last_ = event.at;
  view_.SetMouseCell(view_.geometry().CellAt(event.at));
  if (event.button == MouseButton::kLeft) PressLeft(event);
  view_.observer().MouseDown(ToGridEvent(event, view_.scale()));
}

void Mouse::PressLeft(const MouseEvent& event) {
  const CellPosition cell = view_.geometry().CellAt(event.at);
  if (const Edge edge = EdgeAt(event.at); !edge.IsNone()) {
    BeginResize(edge, event.at);
    return;
  }
  if (cell.row < 0 || cell.column < 0 || ToggleNodeAt(event.at)) return;
  const bool caption = cell.row < sheet_.FixedRows();
  if (caption && cell.column >= sheet_.FixedCols() && !event.modifiers.Shift()) {
    drag_ = Drag::kCaption;
    moved_column_ = cell.column;
    return;
  }
  BeginSelection(cell, event.modifiers.Shift() ? Start::kCurrent : Start::kCell);
}

void Mouse::BeginSelection(CellPosition cell, Start start) {
  const CellPosition first{sheet_.FixedRows(), sheet_.FixedCols()};
  const CellPosition last{sheet_.Rows() - 1, sheet_.Cols() - 1};
  if (last.row < first.row || last.column < first.column) return;
  const bool whole_columns = cell.row < first.row;
  const bool whole_rows = cell.column < first.column;
  Selection wanted = Selection::Of({std::max(cell.row, first.row), std::max(cell.column, first.column)});
  if (start == Start::kCurrent) wanted.current = view_.selection().current;
  if (whole_columns) {
    wanted.current.row = first.row;
    wanted.end.row = last.row;
  }
  if (whole_rows) {
    wanted.current.column = sheet_.FirstShownColumn();
    wanted.end.column = last.column;
  }
  if (!view_.ChangeSelection(wanted)) return;
  drag_ = whole_columns && whole_rows ? Drag::kNone
          : whole_columns             ? Drag::kColumns
          : whole_rows                ? Drag::kRows
                                      : Drag::kCells;
}

void Mouse::ExtendSelection(Point at) {
  const Geometry geometry = view_.geometry();
  const Rect cells = geometry.CellsRect();
  Selection wanted = view_.selection();
  if (cells.IsEmpty() || wanted.current.row < 0) return;
  // Beyond the cells the nearest one counts; pinned parts count as beyond if the drag began outside them.
  const int least_y = pressed_.y >= geometry.PinnedHeight() ? geometry.PinnedHeight() : 0;
  const int least_x = pressed_.x >= geometry.PinnedWidth() ? geometry.PinnedWidth() : 0;
  const Point inside{std::clamp(at.x, std::min(least_x, cells.right() - 1), cells.right() - 1),
                     std::clamp(at.y, std::min(least_y, cells.bottom() - 1), cells.bottom() - 1)};
  const CellPosition cell = geometry.CellAt(inside);
  if (drag_ != Drag::kColumns && cell.row >= 0) wanted.end.row = std::max(cell.row, sheet_.FixedRows());
  if (drag_ != Drag::kRows && cell.column >= 0) wanted.end.column = std::max(cell.column, sheet_.FixedCols());
  if (wanted != view_.selection()) view_.ChangeSelection(wanted);
}

void Mouse::Move(const MouseEvent& event) {
  last_ = event.at;
  view_.SetMouseCell(view_.geometry().CellAt(event.at));
  switch (drag_) {
    case Drag::kNone:
      ShowCursor(event.at);
      break;
    case Drag::kCells:
    case Drag::kRows:
    case Drag::kColumns:
      ExtendSelection(event.at);
      break;
    case Drag::kColumnEdge:
    case Drag::kRowEdge:
      Resize(event.at);
      break;
    case Drag::kCaption:
      MoveCaption(event.at);
      break;
  }
}

void Mouse::Release(const MouseEvent& event) {
  // Only the left button drags; releasing another one meanwhile does not end the drag.
  if (event.button == MouseButton::kLeft) {
    const Drag ended = std::exchange(drag_, Drag::kNone);
    const Edge resized = resized_;
    if (ended == Drag::kCaption) EndCaption(event.at);
    const bool resizing = ended == Drag::kColumnEdge || ended == Drag::kRowEdge;
    if (resizing && Exists(resized) && SizeOf(resized) != size_before_)
      view_.observer().AfterUserResize(resized.row, resized.column);
  }
  view_.SetMouseCell(view_.geometry().CellAt(event.at));
  view_.observer().MouseUp(ToGridEvent(event, view_.scale()));
}

void Mouse::DoubleClick(const MouseEvent& event) {
  view_.SetMouseCell(view_.geometry().CellAt(event.at));
  if (event.button != MouseButton::kLeft) return;
  if (const Edge edge = EdgeAt(event.at); !edge.IsNone()) {
    Fit(edge);
    return;
  }
  if (!ToggleNodeAt(event.at)) view_.observer().DoubleClick();
}

void Mouse::Fit(const Edge& edge) {
  if (Refuses(edge)) return;
  if (edge.column >= 0) {
    FitColumn(view_, edge.column);
  } else {
    FitRow(view_, edge.row);
  }
  // The observer that was asked may have removed itself or the column.
  if (Exists(edge)) view_.observer().AfterUserResize(edge.row, edge.column);
}

bool Mouse::Refuses(const Edge& edge) const {
  return view_.observer().BeforeUserResize(edge.row, edge.column) == platform::Verdict::kRefuse;
}

bool Mouse::Cancel() {
  const bool drags = drag_ != Drag::kNone;
  if (drag_ == Drag::kColumnEdge && resized_.column < sheet_.Cols()) sheet_.SetColWidth(resized_.column, size_before_);
  if (drag_ == Drag::kRowEdge && resized_.row < sheet_.Rows()) sheet_.SetOwnRowHeight(resized_.row, own_height_before_);
  drag_ = Drag::kNone;
  moving_ = false;
  view_.SetDropColumn(-1);
  return drags;
}

void Mouse::Wheel(int64_t dx_px, int64_t dy_px) {
  view_.ScrollBy(dx_px, dy_px);
  if (drag_ == Drag::kCells || drag_ == Drag::kRows || drag_ == Drag::kColumns) ExtendSelection(last_);
  if (drag_ == Drag::kCaption) MoveCaption(last_);
}

// How far the mouse is dragged beyond the scrolling part. A drag that began in the frozen columns may stay there.
Mouse::Distance Mouse::BeyondBody() const {
  const Rect body = view_.geometry().BodyRect();
  const bool rows = drag_ == Drag::kCells || drag_ == Drag::kRows;
  const bool columns = drag_ == Drag::kCells || drag_ == Drag::kColumns || (drag_ == Drag::kCaption && moving_);
  const auto beyond = [](int64_t at, int first, int last) {
    return at < first ? at - first : at >= last ? at - last + 1 : 0;
  };
  const int left = pressed_.x < body.x ? 0 : body.x;
  return {columns ? beyond(last_.x, left, body.right()) : 0, rows ? beyond(last_.y, body.y, body.bottom()) : 0};
}

bool Mouse::WantsAutoScroll() const {
  const Distance beyond = BeyondBody();
  return beyond.dx != 0 || beyond.dy != 0;
}

void Mouse::AutoScroll() {
  if (!WantsAutoScroll()) return;
  // The further out, the faster.
  const Distance beyond = BeyondBody();
  Wheel(beyond.dx, beyond.dy);
}

void Mouse::BeginResize(const Edge& edge, Point at) {
  if (Refuses(edge) || !Exists(edge)) return;
  resized_ = edge;
  pressed_ = at;
  drag_ = edge.column >= 0 ? Drag::kColumnEdge : Drag::kRowEdge;
  if (edge.row >= 0) own_height_before_ = sheet_.states().At(edge.row).height_twips;
  size_before_ = SizeOf(edge);
}

void Mouse::Resize(Point at) {
  const int64_t pixels = drag_ == Drag::kColumnEdge ? int64_t{at.x} - pressed_.x : int64_t{at.y} - pressed_.y;
  const double wanted = std::round(size_before_ + static_cast<double>(pixels) * kTwipsPerPixel / view_.scale());
  const auto twips = static_cast<int>(std::clamp(wanted, double{kLeastSize}, double{kMostSize}));
  if (drag_ == Drag::kColumnEdge && resized_.column < sheet_.Cols()) sheet_.SetColWidth(resized_.column, twips);
  if (drag_ == Drag::kRowEdge && resized_.row < sheet_.Rows()) sheet_.SetRowHeight(resized_.row, twips);
}

void Mouse::MoveCaption(Point at) {
  moving_ = moving_ || std::abs(int64_t{at.x} - pressed_.x) >= Scaled(kDragDistance);
  if (!moving_) return;
  const Geometry geometry = view_.geometry();
  const int x = std::clamp(at.x, 0, std::max(0, geometry.CellsRect().right() - 1));
  const int column = std::max(geometry.CellAt({x, 0}).column, sheet_.FixedCols());
  if (column >= sheet_.Cols()) return;
  const Rect caption = geometry.CellRect(0, column);
  view_.SetDropColumn(x < caption.x + caption.width / 2 ? column : column + 1);
}

void Mouse::EndCaption(Point at) {
  const int drop = view_.drop_column();
  const bool moved = moving_;
  moving_ = false;
  view_.SetDropColumn(-1);
  if (moved_column_ >= sheet_.Cols()) return;
  if (!moved) {
    const CellPosition cell = view_.geometry().CellAt(at);
    if (cell.column == moved_column_) BeginSelection({0, moved_column_}, Start::kCell);
    drag_ = Drag::kNone;
    return;
  }
  const int position = drop > moved_column_ ? drop - 1 : drop;
  if (drop < 0 || position == moved_column_ || position >= sheet_.Cols()) return;
  sheet_.SetColPosition(moved_column_, position);
  view_.observer().AfterMoveColumn(moved_column_, position);
}

void Mouse::ShowCursor(Point at) {
  const Edge edge = EdgeAt(at);
  const Cursor cursor = edge.column >= 0 ? Cursor::kColumnResize
                        : edge.row >= 0  ? Cursor::kRowResize
                                         : Cursor::kDefault;
  if (cursor == cursor_) return;
  cursor_ = cursor;
  if (view_.viewer() != nullptr) view_.viewer()->CursorChanged(cursor);
}

bool Mouse::CheckInvariants() const {
  const bool captions = drag_ == Drag::kCaption ? moved_column_ >= 0 : !moving_;
  const bool mark = view_.drop_column() < 0 || moving_;
  const bool column_edge = drag_ != Drag::kColumnEdge || (resized_.column >= 0 && resized_.row < 0);
  const bool row_edge = drag_ != Drag::kRowEdge || (resized_.row >= 0 && resized_.column < 0);
  return captions && mark && column_edge && row_edge;
}

}  // namespace stockbook::sheet
