// SPDX-License-Identifier: MIT
// What the window does when the control asks its host for something.
#include <gtest/gtest.h>

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <algorithm>
#include <string>
#include <vector>

#include "app/window_fixture.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/bill_dialog.h"
#include "stockbook/window/find_bar.h"

namespace stockbook::app {
namespace {

class Requests : public WindowTest {
 protected:
  void OpenFirst() {
    Open();
    ASSERT_TRUE(window_->LoadFirstJournal().loaded);
    window_->activateWindow();
  }
  FindBar& bar() { return window_->find_bar(); }

  static void Press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(widget, &press);
  }
  void Type(const QString& text) {
    bar().words().selectAll();
    for (const QChar character : text) {
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
      QApplication::sendEvent(&bar().words(), &press);
    }
  }
  // The item of the menu bar with the shortcut.
  QAction* Item(const QKeySequence& shortcut) {
    for (QAction* menu : window_->menuBar()->actions()) {
      for (QAction* item : menu->menu()->actions()) {
        if (item->shortcut() == shortcut) return item;
      }
    }
    return nullptr;
  }
  template <typename Widget>
  Widget* Shown() {
    QApplication::processEvents();
    const QList<Widget*> all = window_->findChildren<Widget*>();
    for (Widget* widget : all) {
      if (widget->isVisible()) return widget;
    }
    return nullptr;
  }
  int FirstLine() {
    for (int row = grid().FixedRows(); row < grid().Rows(); ++row) {
      if (stockbook().BillID(row) > 0) return row;
    }
    return -1;
  }

  QString FirstBillNo() { return QString::fromStdString(grid().TextMatrix(FirstLine(), grid().ColIndex("BillNo"))); }
};

TEST_F(Requests, FindOpensTheBarWithTheKeysInIt) {
  OpenFirst();
  EXPECT_FALSE(bar().isVisible());
  emit stockbook().CommandExecute("Find", qt::BooleanReference());
  EXPECT_FALSE(bar().isVisible()) << "the control is in the middle of its menu";
  QApplication::processEvents();
  EXPECT_TRUE(bar().isVisible());
  EXPECT_EQ(window_->focusWidget(), &bar().words());
  Press(&bar().words(), Qt::Key_Escape);
  EXPECT_FALSE(bar().isVisible());
  EXPECT_EQ(window_->focusWidget(), stockbook().focusProxy());
}

TEST_F(Requests, FindOpensThePeriodOfAHit) {
  OpenFirst();
  grid().CollapseAll();
  Item(QKeySequence::Find)->trigger();
  Type(FirstBillNo());
  Press(&bar().words(), Qt::Key_Return);
  EXPECT_EQ(stockbook().Row(), FirstLine());
  EXPECT_GT(stockbook().sheet().view().geometry().CellRect(FirstLine(), grid().ColIndex("BillNo")).height, 0);
  int closed = 0;
  for (int node = grid().NextSubtotal(1); node >= 0; node = grid().NextSubtotal(node + 1))
    closed += grid().IsCollapsed(node) ? 1 : 0;
  EXPECT_GT(closed, 0) << "the other periods stay closed";
}

TEST_F(Requests, TheNextHitOfNoWordsAsksForThem) {
  OpenFirst();
  Item(QKeySequence(Qt::Key_F3))->trigger();
  EXPECT_TRUE(bar().isVisible());
  EXPECT_EQ(window_->focusWidget(), &bar().words());
}

TEST_F(Requests, EnterOnABillNumberShowsTheBill) {
  OpenFirst();
  const int row = FirstLine();
  grid().Select(row, grid().ColIndex("BillNo"));
  Press(stockbook().focusProxy(), Qt::Key_Return);
  auto* dialog = Shown<BillDialog>();
  ASSERT_NE(dialog, nullptr);
  EXPECT_TRUE(
      dialog->windowTitle().contains(QString::fromStdString(grid().TextMatrix(row, grid().ColIndex("BillName")))));
  EXPECT_GE(dialog->lines().rowCount(), 1);
  Press(dialog, Qt::Key_Escape);
  QApplication::processEvents();
  EXPECT_EQ(Shown<BillDialog>(), nullptr);
}

TEST_F(Requests, ARowWithoutABillSaysSo) {
  OpenFirst();
  grid().Select(grid().FixedRows(), grid().ColIndex("BillNo"));
  ASSERT_EQ(stockbook().BillID(), 0);
  Item(QKeySequence(Qt::CTRL | Qt::Key_B))->trigger();
  EXPECT_EQ(Shown<BillDialog>(), nullptr);
  EXPECT_EQ(window_->message().Message().toStdString(), "这一行不属于任何单据。");
}

TEST_F(Requests, StatisticsShowWhatTheControlCounts) {
  OpenFirst();
  Item(QKeySequence(Qt::CTRL | Qt::Key_T))->trigger();
  auto* box = Shown<QMessageBox>();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->text(), stockbook().Statistics());
  Press(box, Qt::Key_Escape);
  QApplication::processEvents();
  EXPECT_EQ(Shown<QMessageBox>(), nullptr);
}

TEST_F(Requests, StatisticsOfTooManyBillsSayWhyThereAreNone) {
  OpenFirst();
  const int first = grid().Rows();
  grid().SetRows(first + 32768);
  for (int row = first; row < grid().Rows(); ++row) {
    grid().SetTextMatrix(row, grid().ColIndex("BillID"), "1");
    grid().SetTextMatrix(row, grid().ColIndex("BillName"), "入库单");
  }
  Item(QKeySequence(Qt::CTRL | Qt::Key_T))->trigger();
  EXPECT_EQ(Shown<QMessageBox>(), nullptr);
  EXPECT_NE(window_->message().Message().toStdString().find("32767"), std::string::npos);
}

TEST_F(Requests, ColumnsThatTheUserHidOrShowedStaySoInTheNextJournal) {
  OpenFirst();
  const int explain = grid().ColIndex("Explain");
  ASSERT_FALSE(grid().ColHidden(explain));
  grid().SetColHidden(explain, true);
  const std::string kept = stockbook().control().ColsFilter();
  std::string shown;
  for (int column = grid().FixedCols(); column < grid().Cols(); ++column) {
    const std::string key = grid().ColKey(column);
    if (grid().ColHidden(column) && kept.find("|" + key + "|") == std::string::npos && key != "Explain") shown = key;
  }
  ASSERT_FALSE(shown.empty());
  grid().SetColHidden(grid().ColIndex(shown), false);
  emit window_->bar().LoadWanted();
  EXPECT_TRUE(grid().ColHidden(grid().ColIndex("Explain")));
  EXPECT_FALSE(grid().ColHidden(grid().ColIndex(shown)));
  stockbook().DefaultFormat();
  emit window_->bar().LoadWanted();
  EXPECT_FALSE(grid().ColHidden(grid().ColIndex("Explain")));
  EXPECT_TRUE(grid().ColHidden(grid().ColIndex(shown)));
}

TEST_F(Requests, ColumnsThatAreNotAllowedAnyMoreAreNotBroughtBack) {
  Open();
  JournalOptions options;
  options.journal_type = 2;
  options.dp_id = 3;
  options.allow_qty2 = true;
  window_->LoadJournal(options);
  ASSERT_FALSE(grid().ColHidden(grid().ColIndex("IssQty2")));
  grid().SetColHidden(grid().ColIndex("IssQty2"), true);
  window_->LoadJournal(options);
  EXPECT_TRUE(grid().ColHidden(grid().ColIndex("IssQty2")));
  grid().SetColHidden(grid().ColIndex("IssQty2"), false);
  window_->LoadJournal(options);
  EXPECT_FALSE(grid().ColHidden(grid().ColIndex("IssQty2")));
  options.allow_qty2 = false;
  window_->LoadJournal(options);
  EXPECT_TRUE(grid().ColHidden(grid().ColIndex("IssQty2")));
}

TEST_F(Requests, TheDescriptionOfARowComesOverTheLastMessageAndGoesAgain) {
  OpenFirst();
  stockbook().Prompt(QStringLiteral("重要的消息"));
  EXPECT_EQ(window_->message().Text().toStdString(), "重要的消息");
  emit stockbook().AfterRowChanged();
  stockbook().Prompt(QStringLiteral("来源：期初"));
  EXPECT_EQ(window_->message().Text().toStdString(), "来源：期初");
  emit stockbook().AfterRowChanged();
  stockbook().Prompt(QString());
  EXPECT_EQ(window_->message().Text().toStdString(), "重要的消息");
}

}  // namespace
}  // namespace stockbook::app
