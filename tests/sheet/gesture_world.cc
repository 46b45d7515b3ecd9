// SPDX-License-Identifier: MIT
#include "sheet/gesture_world.h"

#include <algorithm>
#include <memory>

#include "sheet/columns.h"
#include "sheet/outline/row_states.h"
#include "sheet/paint/painter.h"
#include "sheet/paint/snapshot.h"
#include "sheet/recording_canvas.h"

namespace stockbook::sheet::test {
namespace {

std::vector<columns::Column> Result(int records, int periods) {
  const auto rows = static_cast<size_t>(records);
  return Together(Periods(records, periods), Numbers(records), Numbers(records),
                  columns::Column::Constant(base::Value(-1.5), rows),
                  columns::Column::Constant(base::Value(std::string("same")), rows));
}

constexpr int kMostColumns = 12;

}  // namespace

GestureWorld::GestureWorld(unsigned seed, int records, int periods)
    : GestureWorld([random = std::mt19937(seed)]() mutable { return static_cast<unsigned>(random()); }, records,
                   periods) {}

GestureWorld::GestureWorld(Chance chance, int records, int periods)
    : random_(std::move(chance)), records_(records), periods_(periods) {
  sheet_.view().SetClipboard(&clipboard_);
  sheet_.LoadColumns(Result(records_, periods_), 1);
  sheet_.GroupBy(1, 2, "%s");
  sheet_.SetOutlineCol(2);
  sheet_.SetObserver(this);
  sheet_.view().SetViewer(this);
}

GestureWorld::~GestureWorld() {
  sheet_.SetObserver(nullptr);
  sheet_.view().SetViewer(nullptr);
}

void GestureWorld::Act() {
  if (Below(5) < 3) {
    Gesture();
  } else {
    HostCall();
  }
}

MouseEvent GestureWorld::AnyMouse() {
  constexpr MouseButton kButtons[] = {MouseButton::kLeft,  MouseButton::kLeft,   MouseButton::kLeft,
                                      MouseButton::kRight, MouseButton::kMiddle, MouseButton::kNone};
  const Size view = sheet_.view().size();
  Point at{Below(view.width + 80) - 40, Below(view.height + 80) - 40};
  // Captions, fixed columns and their edges are hit more often than by pure chance.
  if (Below(4) == 0) at.y = Below(sheet_.view().geometry().PinnedHeight());
  if (Below(4) == 0) at.x = Below(sheet_.view().geometry().PinnedWidth());
  if (Below(3) == 0 && sheet_.Cols() > 0)
    at.x = sheet_.view().geometry().CellRect(0, AnyColumn()).right() + Below(5) - 2;
  if (Below(500) == 0) at = {Below(1 << 30) - (1 << 29), Below(1 << 30) - (1 << 29)};
  return {kButtons[Below(6)], Modifiers{static_cast<int16_t>(Below(3) == 0 ? Below(8) : 0)}, at};
}

KeyEvent GestureWorld::AnyKey() {
  return {static_cast<Key>(Below(static_cast<int>(Key::kOther) + 1)),
          Modifiers{static_cast<int16_t>(Below(2) == 0 ? Below(8) : 0)}};
}

void GestureWorld::Gesture() {
  switch (Below(16)) {
    case 0:
    case 1:
    case 2:
      mouse_.Press(AnyMouse());
      break;
    case 3:
    case 4:
    case 5:
    case 6:
      mouse_.Move(AnyMouse());
      break;
    case 7:
    case 8:
      mouse_.Release(AnyMouse());
      break;
    case 9:
      mouse_.DoubleClick(AnyMouse());
      break;
    case 10:
      mouse_.Wheel(Below(400) - 200, Below(4000) - 2000);
      break;
    case 11:
      mouse_.AutoScroll();
      break;
    case 12:
      if (Below(4) == 0) mouse_.Cancel();
      break;
    case 13:
      Drag();
      break;
    default:
      keyboard_.Press(AnyKey());
  }
}

void GestureWorld::Drag() {
  MouseEvent event = AnyMouse();
  event.button = MouseButton::kLeft;
  mouse_.Press(event);
  for (int steps = 1 + Below(6); steps > 0; --steps) {
    const Point at = AnyMouse().at;
    // Mostly along one axis.
    if (Below(3) > 0) event.at.x = at.x;
    if (Below(3) == 0) event.at.y = at.y;
    mouse_.Move(event);
    if (mouse_.WantsAutoScroll()) mouse_.AutoScroll();
    if (Below(8) == 0) HostCall();
  }
  if (Below(10) > 0) mouse_.Release(event);
}

void GestureWorld::HostCall() {
  switch (Below(60)) {
    case 0:
      Load();
      break;
    case 1:
      sheet_.SetRedraw(Below(4) != 0);
      break;
    case 2:
      if (sheet_.Cols() > 0 && sheet_.Rows() > 0) sheet_.SelectRange(AnyRow(), AnyColumn(), AnyRow(), AnyColumn());
      break;
    default:
      switch (Below(6)) {
        case 0:
          ChangeRows();
          break;
        case 1:
          ChangeColumns();
          break;
        case 2:
          ChangeOutline();
          break;
        case 3:
          ChangeCells();
          break;
        case 4:
          ChangeSizes();
          break;
        default:
          ChangeView();
      }
  }
}

void GestureWorld::Load() {
  const int lengths[] = {records_, records_ / 2, 100, 1, 0};
  if (sheet_.Cols() > kMostColumns) sheet_.SetCols(kMostColumns / 2);
  sheet_.LoadColumns(Result(lengths[Below(5)], periods_), std::min(1, sheet_.Cols()));
  if (Below(4) > 0) sheet_.GroupBy(1, 2, "%s");
  if (Below(2) == 0) {
    std::vector<uint8_t> codes(sheet_.RecordCount());
    for (size_t record = 0; record < codes.size(); record += 3) codes[record] = static_cast<uint8_t>(record % 2 + 1);
    sheet_.SetLoadedPictures(3, codes, {nullptr, testing::MakePicture("any")}, platform::PictureAlignment::kRightTop);
  }
}

void GestureWorld::ChangeRows() {
  const int rows = sheet_.Rows();
  const int fixed = sheet_.FixedRows();
  switch (Below(12)) {
    case 0:
    case 1:
    case 2:
    case 3:
      sheet_.AddItem("new\t1\t2", fixed + Below(rows - fixed + 1));
      break;
    case 4:
    case 5:
    case 6:
    case 7:
      if (rows > fixed) sheet_.RemoveItem(fixed + Below(rows - fixed));
      break;
    case 8:
      sheet_.SetRows(std::max(0, rows + Below(7) - 3));
      break;
    case 9:
      if (Below(40) == 0) sheet_.SetRows(Below(4));
      break;
    default:
      sheet_.SetFixedRows(std::min(Below(4), rows));
  }
}

void GestureWorld::ChangeColumns() {
  if (sheet_.Cols() == 0) {
    sheet_.SetCols(1 + Below(5));
    return;
  }
  switch (Below(8)) {
    case 0:
      if (Below(8) == 0) sheet_.SetCols(Below(kMostColumns));
      break;
    case 1:
      sheet_.SetFixedCols(Below(std::min(3, sheet_.Cols() + 1)));
      break;
    case 2:
    case 3:
      sheet_.SetFrozenCols(AnyColumn());
      break;
    case 4:
      sheet_.SetColHidden(AnyColumn(), Below(3) == 0);
      break;
    case 5:
      sheet_.SetColDataType(AnyColumn(), static_cast<platform::DataType>(Below(2) * 5));
      break;
    default:
      sheet_.SetColPosition(AnyColumn(), AnyColumn());
  }
}

void GestureWorld::ChangeOutline() {
  if (!HasCells()) return;
  const int row = AnyRow();
  const int column = AnyColumn();
  switch (Below(8)) {
    case 0:
      sheet_.SetIsSubtotal(row, Below(2) == 0);
      break;
    case 1:
      sheet_.SetRowOutlineLevel(row, Below(4));
      break;
    case 2:
    case 3:
    case 4: {
      const int node = sheet_.NextSubtotal(row);
      if (node >= 0) sheet_.SetIsCollapsed(node, Below(3) > 0);
      break;
    }
    case 5:
      Below(2) == 0 ? sheet_.CollapseAll() : sheet_.ExpandAll();
      break;
    case 6:
      // Not by a column whose texts all differ, which would make a node for each row.
      if (sheet_.states().NodeCount() < 100 && (sheet_.Rows() < 5000 || column < 1))
        sheet_.GroupBy(column, AnyColumn(), "[%s]");
      break;
    default:
      sheet_.SetOutlineCol(AnyColumn());
      sheet_.SetOutlineBar(static_cast<platform::OutlineBarStyle>(Below(7)));
  }
}

void GestureWorld::ChangeCells() {
  if (!HasCells()) return;
  const int row = AnyRow();
  const int column = AnyColumn();
  const platform::CellRange range{row, column, row + 1 + Below(sheet_.Rows() - row),
                                  column + 1 + Below(sheet_.Cols() - column)};
  switch (Below(8)) {
    case 0:
      sheet_.SetCellColors(range, static_cast<platform::Colour>(Below(4)), static_cast<platform::Colour>(Below(4)));
      break;
    case 1:
      sheet_.SetCellPicture(range, nullptr, platform::PictureAlignment::kLeftTop);
      break;
    case 2:
      sheet_.SetCellFontName(range, Below(2) == 0 ? "Arial" : "");
      break;
    case 3:
      sheet_.SetCellData(row, column, base::Value(int64_t{7}));
      break;
    case 4:
      sheet_.SetCellAlignment(range, static_cast<platform::Alignment>(Below(9)));
      break;
    case 5:
      if (Below(20) == 0) sheet_.ReplaceLoadedText(column, columns::Column::Constant({}, sheet_.RecordCount()));
      break;
    default:
      sheet_.SetTextMatrix(row, column, Below(2) == 0 ? "-12,345.67" : "two\nlines");
  }
}

void GestureWorld::ChangeSizes() {
  switch (Below(8)) {
    case 0:
      sheet_.SetRowHeight(-1, Below(600));
      break;
    case 1:
      sheet_.SetRowHeightMin(static_cast<float>(Below(3) == 0 ? Below(400) : 0));
      break;
    case 2:
      sheet_.SetRowHeightMax(static_cast<float>(Below(3) == 0 ? 200 + Below(2000) : 0));
      break;
    case 3:
    case 4:
      if (sheet_.Cols() > 0) sheet_.SetColWidth(AnyColumn(), Below(60) == 0 ? 1 << 20 : Below(2400));
      break;
    case 5:
      if (sheet_.Rows() > 0) sheet_.SetRowHidden(AnyRow(), Below(3) > 0);
      break;
    default:
      if (sheet_.Rows() > 0) sheet_.SetRowHeight(AnyRow(), Below(60) == 0 ? 1 << 20 : Below(900));
  }
}

void GestureWorld::ChangeView() {
  constexpr double kScales[] = {1, 1, 1.25, 1.5, 1.75, 2, 3};
  const ScrollPosition most = sheet_.view().geometry().max_scroll();
  switch (Below(5)) {
    case 0:
      sheet_.view().SetSize({Below(900), Below(600)}, kScales[Below(7)]);
      break;
    case 1:
      sheet_.view().SetSize({Below(10) == 0 ? Below(40) : 300 + Below(900), 200 + Below(600)}, sheet_.view().scale());
      break;
    case 2:
      if (sheet_.Rows() > 0) sheet_.SetTopRow(AnyRow());
      break;
    case 3:
      if (sheet_.Cols() > 0) sheet_.SetLeftCol(AnyColumn());
      break;
    default:
      sheet_.view().ScrollTo({static_cast<int64_t>(random_()) % (most.x + 10) - 5,
                              static_cast<int64_t>(random_()) * 64 % (most.y + 10) - 5});
  }
}

platform::Verdict GestureWorld::React() {
  if (reacting_ || Below(8) > 0) return platform::Verdict::kAllow;
  reacting_ = true;
  const int what = Below(3);
  if (what == 0) HostCall();
  if (what == 1) ChangeRows();
  reacting_ = false;
  return Below(3) == 0 ? platform::Verdict::kRefuse : platform::Verdict::kAllow;
}

platform::Verdict GestureWorld::BeforeRowColChange(CellPosition, CellPosition) { return React(); }
void GestureWorld::AfterRowColChange(CellPosition, CellPosition) { React(); }
void GestureWorld::MouseDown(const platform::GridMouseEvent&) { React(); }
void GestureWorld::MouseUp(const platform::GridMouseEvent&) { React(); }
void GestureWorld::DoubleClick() { React(); }
platform::Verdict GestureWorld::BeforeUserResize(int, int) { return React(); }
void GestureWorld::AfterUserResize(int, int) { React(); }
void GestureWorld::AfterMoveColumn(int, int) { React(); }

void GestureWorld::Damaged(const Rect& area) {
  const Rect view{0, 0, sheet_.view().size().width, sheet_.view().size().height};
  damaged_.push_back(area);
  damaged_outside_ = damaged_outside_ || !view.Contains(area);
  told_while_off_ = told_while_off_ || !sheet_.Redraw();
}
void GestureWorld::ScrollChanged() { told_while_off_ = told_while_off_ || !sheet_.Redraw(); }
void GestureWorld::CursorChanged(Cursor) {}

::testing::AssertionResult GestureWorld::Holds() const {
  if (!sheet_.CheckInvariants()) return ::testing::AssertionFailure() << "the sheet does not hold";
  if (!mouse_.CheckInvariants()) return ::testing::AssertionFailure() << "the mouse does not hold";
  if (damaged_outside_) return ::testing::AssertionFailure() << "something outside of the view was to be painted";
  if (told_while_off_) return ::testing::AssertionFailure() << "the viewer was told while redraw was off";
  return ::testing::AssertionSuccess();
}

::testing::AssertionResult GestureWorld::PaintsWithinTheView() const {
  RecordingCanvas canvas;
  Paint(Snapshot::Of(sheet_.view()), canvas);
  const Rect view{0, 0, sheet_.view().size().width, sheet_.view().size().height};
  if (!canvas.IsBalanced()) return ::testing::AssertionFailure() << "clips are not balanced";
  for (const auto& fill : canvas.fills) {
    if (!view.Contains(fill.rect) || !view.Contains(fill.clip))
      return ::testing::AssertionFailure() << "a fill at " << fill.rect.x << ' ' << fill.rect.y << " leaves the view";
  }
  for (const auto& text : canvas.texts) {
    if (!view.Contains(text.clip))
      return ::testing::AssertionFailure() << "the text " << text.text << " is out of view";
  }
  for (const auto& drawn : canvas.pictures) {
    if (!view.Contains(drawn.clip)) return ::testing::AssertionFailure() << "a picture leaves the view";
  }
  return ::testing::AssertionSuccess();
}

}  // namespace stockbook::sheet::test
