// SPDX-License-Identifier: MIT
// A widget whose sheet goes first: a member beside a child widget is what every host writes.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <memory>

#include "qt/application.h"
#include "qt/sheet/accessible_grid.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::qt {
namespace {

// A host that keeps its sheet beside the widget, which is deleted later, with the other children.
class Host : public QWidget {
 public:
  Host() : view_(new SheetWidget(sheet_->view(), this)) {
    sheet_->SetCols(30);
    sheet_->SetRows(400);
    for (int row = 0; row < 400; ++row) sheet_->SetTextMatrix(row, 2, "a text that is too long for its cell");
    sheet_->SetObserver(&observer_);
    resize(500, 300);
    view_->resize(500, 300);
    show();
    QApplication::processEvents();
  }

  sheet::GridSheet& sheet() { return *sheet_; }
  SheetWidget& view() { return *view_; }
  void DropSheet() { sheet_.reset(); }

 private:
  platform::GridObserver observer_;
  std::unique_ptr<sheet::GridSheet> sheet_ = std::make_unique<sheet::GridSheet>();
  SheetWidget* view_;
};

class SheetGone : public WithApplication {
 protected:
  // Whatever a user and the toolkit may do with a widget.
  static void UseEverywhere(SheetWidget& view) {
    QWidget& port = *view.viewport();
    for (const QPoint at : {QPoint(5, 5), QPoint(100, 50), QPoint(499, 299)}) {
      QTest::mouseMove(&port, at);
      QTest::mousePress(&port, Qt::LeftButton, {}, at);
      QTest::mouseMove(&port, at + QPoint(40, 40));
      QTest::mouseRelease(&port, Qt::LeftButton, {}, at + QPoint(40, 40));
      QTest::mouseDClick(&port, Qt::LeftButton, {}, at);
      QTest::mouseClick(&port, Qt::RightButton, {}, at);
      QHelpEvent tip(QEvent::ToolTip, at, port.mapToGlobal(at));
      QApplication::sendEvent(&port, &tip);
      QWheelEvent wheel(at, port.mapToGlobal(at), {}, {0, -240}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
      QApplication::sendEvent(&port, &wheel);
    }
    for (const auto key : {Qt::Key_Down, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Right, Qt::Key_Plus, Qt::Key_Space,
                           Qt::Key_Return, Qt::Key_Escape, Qt::Key_Menu})
      QTest::keyClick(&view, key, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, {5, 5}, port.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&view, &menu);
    (void)view.MenuPlace();
    view.verticalScrollBar()->setValue(10);
    view.setFocus();
    view.clearFocus();
    view.setEnabled(false);
    view.setEnabled(true);
    view.resize(300, 200);
    view.setFont(QFont(QStringLiteral("Arial"), 20));
    (void)view.grab();
    view.hide();
    view.show();
    QTest::qWait(120);
  }
};

TEST_F(SheetGone, TheWidgetPaintsAnEmptyGrid) {
  Host host;
  const QImage before = host.view().viewport()->grab().toImage();
  host.DropSheet();
  const QImage after = host.view().viewport()->grab().toImage();
  EXPECT_NE(before, after);
  const QRgb background = after.pixel(250, 150);
  EXPECT_EQ(PixelsUnlike(after, after.rect(), background), 0);
  EXPECT_EQ(host.view().sheet().Rows(), 0);
  EXPECT_EQ(host.view().verticalScrollBar()->maximum(), 0);
}

TEST_F(SheetGone, NothingThatIsDoneWithTheWidgetHarms) {
  Host host;
  UseEverywhere(host.view());
  host.DropSheet();
  UseEverywhere(host.view());
  EXPECT_TRUE(host.view().sheet().CheckInvariants());
}

TEST_F(SheetGone, InTheMiddleOfADragTheTimerStops) {
  Host host;
  QTest::mousePress(host.view().viewport(), Qt::LeftButton, {}, {150, 80});
  QTest::mouseMove(host.view().viewport(), {150, 900});
  host.DropSheet();
  QTest::qWait(200);
  QTest::mouseMove(host.view().viewport(), {150, 80});
  QTest::mouseRelease(host.view().viewport(), Qt::LeftButton, {}, {150, 80});
}

TEST_F(SheetGone, WhatAScreenReaderHoldsIsInvalid) {
  Host host;
  QAccessibleInterface* const grid = QAccessible::queryAccessibleInterface(&host.view());
  ASSERT_NE(grid, nullptr);
  QAccessibleInterface* const cell = grid->tableInterface()->cellAt(3, 1);
  QAccessibleInterface* const caption = grid->child(1);
  ASSERT_NE(cell, nullptr);
  ASSERT_NE(caption, nullptr);
  host.DropSheet();
  EXPECT_EQ(grid->childCount(), 0);
  EXPECT_EQ(grid->tableInterface()->rowCount(), 0);
  EXPECT_EQ(grid->tableInterface()->cellAt(3, 1), nullptr);
  EXPECT_TRUE(grid->tableInterface()->selectedCells().isEmpty());
  EXPECT_EQ(grid->focusChild(), nullptr);
  for (QAccessibleInterface* held : {cell, caption}) {
    EXPECT_FALSE(held->isValid());
    EXPECT_EQ(held->text(QAccessible::Name), QString());
    EXPECT_TRUE(held->rect().isEmpty());
    EXPECT_TRUE(held->state().invalid);
    EXPECT_EQ(held->tableCellInterface()->rowIndex(), -1);
    EXPECT_FALSE(held->tableCellInterface()->isSelected());
  }
}

// A view of its own may even be destroyed after its sheet.
TEST_F(SheetGone, AViewOfItsOwnOutlivesItsSheet) {
  auto sheet = std::make_unique<sheet::Sheet>();
  sheet->SetRows(10);
  sheet::View view(*sheet);
  SheetWidget widget(view);
  widget.show();
  sheet.reset();
  UseEverywhere(widget);
  EXPECT_EQ(widget.sheet().Rows(), 0);
}

TEST_F(SheetGone, AViewThatAnotherWidgetTakesOverIsShownThere) {
  sheet::GridSheet sheet;
  sheet.SetRows(10);
  auto first = std::make_unique<SheetWidget>(sheet.view());
  SheetWidget second(sheet.view());
  EXPECT_EQ(first->sheet().Rows(), 0);
  first.reset();
  EXPECT_EQ(sheet.view().viewer() != nullptr, true);
  EXPECT_EQ(second.sheet().Rows(), 10);
}

}  // namespace
}  // namespace stockbook::qt
