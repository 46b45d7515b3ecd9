// SPDX-License-Identifier: MIT
// Opening the grid's menus by the keyboard.
#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include "qt/application.h"
#include "sheet/input/events.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::qt {
namespace {

class Watcher : public platform::GridObserver {
 public:
  explicit Watcher(sheet::GridSheet& sheet) : sheet_(sheet) { sheet_.SetObserver(this); }
  ~Watcher() override { sheet_.SetObserver(nullptr); }
  void MouseDown(const platform::GridMouseEvent& event) override {
    pressed = event;
    row = sheet_.MouseRow();
    column = sheet_.MouseCol();
    if (view != nullptr) place = view->MenuPlace();
  }

  platform::GridMouseEvent pressed;
  int row = -1;
  int column = -1;
  QPoint place;
  const SheetWidget* view = nullptr;

 private:
  sheet::GridSheet& sheet_;
};

class MenuKey : public WithApplication {
 protected:
  MenuKey() : view_(sheet_.view()) {
    sheet_.SetCols(3);
    sheet_.SetRows(20);
    view_.resize(500, 300);
    view_.show();
    sheet_.Select(4, 2);
  }
  bool Ask(QContextMenuEvent::Reason reason, Qt::KeyboardModifiers modifiers = {}) {
    QContextMenuEvent event(reason, {5, 5}, {5, 5}, modifiers);
    QApplication::sendEvent(reason == QContextMenuEvent::Keyboard ? &view_ : view_.viewport(), &event);
    return event.isAccepted();
  }

  sheet::GridSheet sheet_;
  SheetWidget view_;
};

TEST_F(MenuKey, StandsForTheRightButtonOnTheCurrentCell) {
  Watcher watcher(sheet_);
  watcher.view = &view_;
  EXPECT_TRUE(Ask(QContextMenuEvent::Keyboard));
  EXPECT_EQ(watcher.pressed.button, sheet::MouseButton::kRight);
  EXPECT_EQ(watcher.pressed.modifiers.bits, 0);
  EXPECT_EQ(watcher.row, 4);
  EXPECT_EQ(watcher.column, 2);
  const QRect cell = view_.ToScreen(sheet_.view().geometry().CellRect(4, 2));
  EXPECT_EQ(watcher.place, QPoint(cell.left(), cell.bottom() + 1));
}

TEST_F(MenuKey, WithControlStandsForItOnTheCaption) {
  Watcher watcher(sheet_);
  EXPECT_TRUE(Ask(QContextMenuEvent::Keyboard, Qt::ControlModifier));
  EXPECT_EQ(watcher.row, 0);
  EXPECT_EQ(watcher.column, 2);
}

TEST_F(MenuKey, IsShiftAndF10AsWell) {
  Watcher watcher(sheet_);
  QKeyEvent press(QEvent::KeyPress, Qt::Key_F10, Qt::ShiftModifier);
  QApplication::sendEvent(&view_, &press);
  EXPECT_TRUE(press.isAccepted());
  EXPECT_EQ(watcher.pressed.button, sheet::MouseButton::kRight);
  EXPECT_EQ(watcher.row, 4);
  watcher.row = -1;
  QKeyEvent alone(QEvent::KeyPress, Qt::Key_F10, Qt::NoModifier);
  QApplication::sendEvent(&view_, &alone);
  EXPECT_FALSE(alone.isAccepted()) << "that one is for the menu bar";
  EXPECT_EQ(watcher.row, -1);
}

TEST_F(MenuKey, BringsTheCurrentCellIntoViewFirst) {
  Watcher watcher(sheet_);
  watcher.view = &view_;
  sheet_.Select(19, 1);
  sheet_.SetTopRow(1);
  ASSERT_FALSE(sheet_.RowIsVisible(19));
  EXPECT_TRUE(Ask(QContextMenuEvent::Keyboard));
  EXPECT_TRUE(sheet_.RowIsVisible(19));
}

TEST_F(MenuKey, IsLeftToTheWindowWhereNobodyWatches) { EXPECT_FALSE(Ask(QContextMenuEvent::Keyboard)); }

TEST_F(MenuKey, DoesNotAskTwiceForTheMouse) {
  Watcher watcher(sheet_);
  EXPECT_TRUE(Ask(QContextMenuEvent::Mouse));
  EXPECT_EQ(watcher.row, -1);
}

}  // namespace
}  // namespace stockbook::qt
