// SPDX-License-Identifier: MIT
// What the window tells about the selection, and what it adds to the clipboard.
#include <gtest/gtest.h>

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QTest>
#include <algorithm>
#include <string>

#include "app/window_fixture.h"
#include "sheet/selection/selection_text.h"
#include "stockbook/selection/selection_sums.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

constexpr int kPatienceMs = 300000;

class SelectionInTheWindow : public WindowTest {
 protected:
  void OpenFirst() {
    Open();
    ASSERT_TRUE(window_->LoadFirstJournal().loaded);
    window_->activateWindow();
    QGuiApplication::clipboard()->clear();
  }
  sheet::GridSheet& sheet() { return stockbook().sheet(); }
  int Column(const char* key) { return grid().ColIndex(key); }
  int FirstLine() { return sheet().RowOfRecord(0); }
  void SelectLines(const char* from, const char* to, int lines) {
    sheet().SelectRange(FirstLine(), Column(from), FirstLine() + lines - 1, Column(to));
  }
  std::string Line() const { return window_->selection_line().text().toStdString(); }
  void Press(int key, Qt::KeyboardModifiers modifiers) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(stockbook().focusProxy(), &press);
  }
  static const QMimeData& Copied() { return *QGuiApplication::clipboard()->mimeData(); }
  static bool WaitForHtml() {
    const auto has_html = [] {
      const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
      return copied != nullptr && copied->hasHtml();
    };
    return QTest::qWaitFor(has_html, kPatienceMs);
  }
};

TEST_F(SelectionInTheWindow, TheStatusLineSumsUpTheSelectedNumbers) {
  OpenFirst();
  EXPECT_EQ(Line(), "");
  SelectLines("StoQty", "StoAcc", 2);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !Line().empty(); }, kPatienceMs));
  const SelectionSums sums = SelectionSums::Of(sheet(), sheet().view().selection());
  ASSERT_GT(sums.count(), 0);
  EXPECT_EQ(Line(), "计数 " + std::to_string(sums.count()) + "　求和 " + sums.SumText() + "　平均 " +
                        sums.AverageText() + "　最小 " + sums.LeastText() + "　最大 " + sums.GreatestText());
}

TEST_F(SelectionInTheWindow, SumsHaveTheDecimalsThatTheColumnShows) {
  OpenFirst();
  sheet().SelectRange(FirstLine(), Column("StoQty"), FirstLine() + 1, Column("StoQty"));
  const SelectionSums sums = SelectionSums::Of(sheet(), sheet().view().selection());
  ASSERT_EQ(sums.count(), 2);
  const auto decimals = [](const std::string& text) { return text.size() - std::min(text.find('.'), text.size()); };
  const size_t shown = decimals(sheet().DisplayText(FirstLine(), Column("StoQty")));
  EXPECT_EQ(shown, 3U);
  for (const std::string& text : {sums.SumText(), sums.LeastText(), sums.GreatestText()})
    EXPECT_EQ(decimals(text), shown) << text;
}

TEST_F(SelectionInTheWindow, ASingleCellOrTextsSumUpToNothing) {
  OpenFirst();
  SelectLines("StoQty", "StoAcc", 2);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !Line().empty(); }, kPatienceMs));
  grid().Select(FirstLine(), Column("StoQty"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Line().empty(); }, kPatienceMs));
}

TEST_F(SelectionInTheWindow, TheSummaryGoesWithTheJournal) {
  OpenFirst();
  SelectLines("StoQty", "StoAcc", 3);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !Line().empty(); }, kPatienceMs));
  JournalOptions other = window_->bar().Options();
  other.key_id += 1;
  window_->LoadJournal(other);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Line().empty(); }, kPatienceMs));
}

TEST_F(SelectionInTheWindow, CopyingAddsFormsForSpreadsheetsAndKeepsTheText) {
  OpenFirst();
  SelectLines("BillNo", "StoAcc", 2);
  const std::string text = sheet::SelectionText(sheet(), sheet().view().selection());
  Press(Qt::Key_C, Qt::ControlModifier);
  ASSERT_TRUE(WaitForHtml());
  EXPECT_EQ(Copied().text().toStdString(), text);
  EXPECT_TRUE(Copied().html().contains(QStringLiteral("sdval=")));
  const std::string csv = Copied().data(QStringLiteral("text/csv")).toStdString();
  EXPECT_TRUE(csv.starts_with("\"")) << csv;
  EXPECT_TRUE(Copied().hasFormat(QStringLiteral("text/tab-separated-values")));
}

TEST_F(SelectionInTheWindow, ATotalOfTwoLinesIsOneCell) {
  OpenFirst();
  int total = -1;
  for (int row = grid().FixedRows(); row < grid().Rows() && total < 0; ++row) {
    if (grid().TextMatrix(row, Column("Quantity")).find('\n') != std::string::npos) total = row;
  }
  ASSERT_GT(total, 0);
  sheet().SelectRange(total, Column("Quantity"), total, Column("StoAcc"));
  Press(Qt::Key_C, Qt::ControlModifier);
  ASSERT_TRUE(WaitForHtml());
  EXPECT_EQ(Copied().html().count(QStringLiteral("<tr>")), 2);
  EXPECT_TRUE(Copied().html().contains(QStringLiteral("<br>")));
  EXPECT_EQ(QString::fromUtf8(Copied().data(QStringLiteral("text/csv"))).count(QStringLiteral("\r\n")), 2);
}

TEST_F(SelectionInTheWindow, WhatSomebodyElseCopiesStaysAsItIs) {
  OpenFirst();
  QGuiApplication::clipboard()->setText(QStringLiteral("从别处"));
  QApplication::processEvents();
  EXPECT_FALSE(Copied().hasHtml());
  EXPECT_EQ(Copied().text().toStdString(), "从别处");
}

TEST_F(SelectionInTheWindow, OneCellIsCopiedWithoutItsCaption) {
  OpenFirst();
  grid().Select(FirstLine(), Column("BillNo"));
  QAction* copy = nullptr;
  for (QAction* action : window_->findChildren<QAction*>()) {
    if (action->shortcut() == QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C)) copy = action;
  }
  ASSERT_NE(copy, nullptr);
  copy->trigger();
  QApplication::processEvents();
  EXPECT_EQ(Copied().text().toStdString(), grid().DisplayText(FirstLine(), Column("BillNo")));
  EXPECT_FALSE(Copied().hasHtml());
}

}  // namespace
}  // namespace stockbook::app
