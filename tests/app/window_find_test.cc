// SPDX-License-Identifier: MIT
// Finding in the window.
#include <gtest/gtest.h>

#include <QAction>
#include <QImage>
#include <QKeyEvent>
#include <QSignalSpy>
#include <algorithm>
#include <string>
#include <vector>

#include "app/shown_rows.h"
#include "app/window_fixture.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/find_bar.h"

namespace stockbook::app {
namespace {

class FindInTheWindow : public WindowTest {
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
  void Find(const QString& text) {
    bar().Open();
    Type(text);
    Press(&bar().words(), Qt::Key_Return);
  }
  QAction* ItemWith(const QKeySequence& shortcut) {
    for (QAction* action : window_->findChildren<QAction*>()) {
      if (action->shortcut() == shortcut) return action;
    }
    return nullptr;
  }
  std::vector<int> Rows(const std::string& word) { return RowsThatShow(grid(), {word}); }
  static std::string CountOf(size_t place, size_t hits) {
    return "第 " + std::to_string(place) + " 条，共 " + std::to_string(hits) + " 条";
  }
  std::string Listed(int hit, int column) {
    return bar().hits().model()->index(hit, column).data().toString().toStdString();
  }
  // An amount that is shown with a comma, and its row.
  int RowWithAComma(std::string& shown) {
    const int column = grid().ColIndex("StoAcc");
    for (int row = grid().FixedRows(); row < grid().Rows(); ++row) {
      shown = grid().DisplayText(row, column);
      if (grid().RecordOfRow(row) >= 0 && shown.find(',') != std::string::npos) return row;
    }
    return -1;
  }
  QImage Picture() {
    QApplication::processEvents();
    return stockbook().viewport()->grab().toImage();
  }
  // Inside of the cell near its left upper corner, where no text is.
  QPoint CornerOf(int row, int column) {
    const sheet::Rect cell = stockbook().sheet().view().geometry().CellRect(row, column);
    return {cell.x + 2, cell.y + 2};
  }
  // A column in view whose cell does not have 入库.
  int UnmarkedColumn(int row) {
    const sheet::Geometry geometry = stockbook().sheet().view().geometry();
    int column = grid().FixedCols();
    while (geometry.VisibleCellRect(row, column).IsEmpty() || ShowsWord(grid().DisplayText(row, column), "入库"))
      ++column;
    return column;
  }
};

TEST_F(FindInTheWindow, GoesFromHitToHitAndAround) {
  OpenFirst();
  const std::vector<int> hits = Rows("入库");
  ASSERT_GT(hits.size(), 2U);
  Find(QStringLiteral("入库"));
  EXPECT_EQ(stockbook().Row(), hits[0]);
  EXPECT_EQ(bar().Count().toStdString(), CountOf(1, hits.size()));
  Press(&bar().words(), Qt::Key_Return);
  EXPECT_EQ(stockbook().Row(), hits[1]);
  ItemWith(QKeySequence(Qt::Key_F3))->trigger();
  EXPECT_EQ(stockbook().Row(), hits[2]);
  ItemWith(QKeySequence(Qt::SHIFT | Qt::Key_F3))->trigger();
  Press(&bar().words(), Qt::Key_Enter, Qt::ShiftModifier);
  EXPECT_EQ(stockbook().Row(), hits[0]);
  Press(&bar().words(), Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(stockbook().Row(), hits.back());
  EXPECT_EQ(bar().Count().toStdString(), CountOf(hits.size(), hits.size()));
  EXPECT_FALSE(stockbook().sheet().view().geometry().VisibleCellRect(hits.back(), grid().Col()).IsEmpty());
  Press(&bar().words(), Qt::Key_Return);
  EXPECT_EQ(stockbook().Row(), hits[0]);
}

TEST_F(FindInTheWindow, ANumberIsFoundAsItIsShownAndWithoutItsCommas) {
  OpenFirst();
  std::string shown;
  const int row = RowWithAComma(shown);
  ASSERT_GT(row, 0);
  for (const std::string& typed : {shown, WithoutCommas(shown)}) {
    grid().Select(grid().FixedRows(), grid().OutlineCol());
    Find(QString::fromStdString(typed));
    EXPECT_EQ(bar().Count().toStdString(), CountOf(1, Rows(shown).size())) << typed;
    EXPECT_TRUE(ShowsWord(grid().DisplayText(stockbook().Row(), grid().Col()), shown)) << "the cell itself is current";
  }
}

TEST_F(FindInTheWindow, FindsWhileOneTypes) {
  OpenFirst();
  const std::vector<int> hits = Rows("XS2");
  ASSERT_FALSE(hits.empty());
  ItemWith(QKeySequence::Find)->trigger();
  QSignalSpy moved(&stockbook(), &qt::StockbookWidget::AfterRowChanged);
  Type(QStringLiteral("xs2"));
  EXPECT_EQ(bar().Count().toStdString(), "");
  ASSERT_TRUE(moved.wait(300000));
  EXPECT_EQ(stockbook().Row(), hits[0]);
  EXPECT_EQ(bar().Count().toStdString(), CountOf(1, hits.size()));
  EXPECT_EQ(window_->focusWidget(), &bar().words());
}

TEST_F(FindInTheWindow, SaysThatThereIsNothing) {
  OpenFirst();
  const int row = stockbook().Row();
  Find(QStringLiteral("没有这样的字"));
  EXPECT_EQ(bar().Count().toStdString(), "没有找到");
  EXPECT_EQ(stockbook().Row(), row);
}

TEST_F(FindInTheWindow, LooksAnewInAJournalThatWasLoadedAgain) {
  OpenFirst();
  Find(QStringLiteral("单"));
  JournalOptions other = window_->bar().Options();
  other.key_id += 1;
  window_->LoadJournal(other);
  EXPECT_EQ(bar().Count().toStdString(), "");
  ItemWith(QKeySequence(Qt::Key_F3))->trigger();
  const std::vector<int> hits = Rows("单");
  EXPECT_NE(std::find(hits.begin(), hits.end(), stockbook().Row()), hits.end());
  EXPECT_NE(bar().Count().toStdString().find("共 " + std::to_string(hits.size()) + " 条"), std::string::npos);
}

TEST_F(FindInTheWindow, StepsIntoClosedPeriodsWithTheBarClosed) {
  OpenFirst();
  const std::vector<int> hits = Rows("出库");
  ASSERT_GT(hits.size(), 1U);
  Find(QStringLiteral("出库"));
  Press(&bar().words(), Qt::Key_Escape);
  EXPECT_FALSE(bar().isVisible());
  for (size_t hit = 1; hit < hits.size(); ++hit) {
    grid().CollapseAll();
    ItemWith(QKeySequence(Qt::Key_F3))->trigger();
    ASSERT_EQ(stockbook().Row(), hits[hit]);
    ASSERT_FALSE(grid().RowHidden(hits[hit]));
  }
}

TEST_F(FindInTheWindow, CapitalsWholeWordsAndPatternsCountOnlyWhereTheyAreChosen) {
  OpenFirst();
  const std::vector<int> hits = Rows("XS2");
  ASSERT_FALSE(hits.empty());
  Find(QStringLiteral("xs2"));
  EXPECT_EQ(bar().Count().toStdString(), CountOf(1, hits.size()));
  bar().match_case().click();
  EXPECT_EQ(bar().Count().toStdString(), "没有找到");
  bar().match_case().click();
  EXPECT_EQ(bar().Count().toStdString(), CountOf(1, hits.size())) << "switching finds at once";
  bar().whole_words().click();
  Find(QStringLiteral("X"));
  EXPECT_EQ(bar().Count().toStdString(), "没有找到");
  bar().whole_words().click();
  Find(QStringLiteral("XS######-*"));
  EXPECT_EQ(bar().Count().toStdString(), "没有找到") << "no text has these signs";
  bar().patterns().click();
  EXPECT_EQ(bar().Count().toStdString(), CountOf(1, hits.size()));
}

TEST_F(FindInTheWindow, AMalformedPatternIsToldInTheMessageLine) {
  OpenFirst();
  bar().patterns().click();
  Find(QStringLiteral("[甲"));
  EXPECT_EQ(bar().Count().toStdString(), "通配符有误");
  EXPECT_NE(window_->message().Message().indexOf(QStringLiteral("[甲")), -1);
  Find(QStringLiteral("入库"));
  EXPECT_NE(bar().Count().toStdString(), "通配符有误");
}

TEST_F(FindInTheWindow, MarksEveryCellInViewThatHasAWord) {
  OpenFirst();
  Find(QStringLiteral("入库"));
  const std::vector<sheet::CellPosition> marked = bar().marks().Cells();
  ASSERT_GT(marked.size(), 1U);
  const sheet::Geometry geometry = stockbook().sheet().view().geometry();
  size_t expected = 0;
  for (int row = grid().FixedRows(); row < grid().Rows(); ++row) {
    for (int column = grid().FixedCols(); column < grid().Cols(); ++column) {
      if (!geometry.VisibleCellRect(row, column).IsEmpty() && ShowsWord(grid().DisplayText(row, column), "入库"))
        ++expected;
    }
  }
  EXPECT_EQ(marked.size(), expected);
  for (const sheet::CellPosition& cell : marked)
    EXPECT_TRUE(ShowsWord(grid().DisplayText(cell.row, cell.column), "入库"));
}

TEST_F(FindInTheWindow, MarksNoCellOfARowThatLacksTheOtherWord) {
  OpenFirst();
  Find(QStringLiteral("入库 出库"));
  EXPECT_TRUE(bar().marks().Cells().empty()) << "no line is both";
  Find(QStringLiteral("出库 CK"));
  ASSERT_FALSE(bar().marks().Cells().empty());
  const std::vector<int> hits = RowsThatShow(grid(), {"出库", "CK"});
  for (const sheet::CellPosition& cell : bar().marks().Cells())
    EXPECT_TRUE(std::binary_search(hits.begin(), hits.end(), cell.row));
}

TEST_F(FindInTheWindow, MarksArePaintedAndGoWithTheBar) {
  OpenFirst();
  Find(QStringLiteral("入库"));
  const std::vector<sheet::CellPosition> marked = bar().marks().Cells();
  // Not of the current row, which has colours of its own.
  const auto marked_cell = std::find_if(marked.begin(), marked.end(),
                                        [&](const sheet::CellPosition& cell) { return cell.row != stockbook().Row(); });
  ASSERT_NE(marked_cell, marked.end());
  const QPoint corner = CornerOf(marked_cell->row, marked_cell->column);
  const QPoint beside = CornerOf(marked_cell->row, UnmarkedColumn(marked_cell->row));
  const QImage with_marks = Picture();
  EXPECT_EQ(Picture().pixel(corner), with_marks.pixel(corner)) << "painting again does not darken it";
  Press(&bar().words(), Qt::Key_Escape);
  const QImage without = Picture();
  EXPECT_NE(with_marks.pixel(corner), without.pixel(corner));
  EXPECT_EQ(with_marks.pixel(beside), without.pixel(beside));
  EXPECT_TRUE(bar().marks().Cells().empty());
}

TEST_F(FindInTheWindow, MarksLeaveTextsAsDarkAsTheyAre) {
  OpenFirst();
  Find(QStringLiteral("入库"));
  const sheet::CellPosition cell = bar().marks().Cells().front();
  const auto darkest = [&] {
    const QImage picture = Picture();
    const QPoint corner = CornerOf(cell.row, cell.column);
    int dark = 255;
    for (int y = 3; y < 14; ++y)
      for (int x = 0; x < 120; ++x) dark = std::min(dark, qGray(picture.pixel(corner + QPoint(x, y))));
    return dark;
  };
  const int marked = darkest();
  Press(&bar().words(), Qt::Key_Escape);
  EXPECT_LE(marked, darkest() + 5);
}

TEST_F(FindInTheWindow, ListsTheHitsWithTheirPeriodAndBill) {
  OpenFirst();
  const std::vector<int> hits = Rows("入库");
  Find(QStringLiteral("入库"));
  EXPECT_FALSE(bar().hits().isVisible());
  bar().list_button().click();
  EXPECT_TRUE(bar().hits().isVisible());
  ASSERT_EQ(bar().hits().model()->rowCount(), static_cast<int>(hits.size()));
  for (size_t hit = 0; hit < hits.size(); ++hit) {
    if (grid().RecordOfRow(hits[hit]) < 0) continue;
    EXPECT_EQ(Listed(static_cast<int>(hit), 0), grid().TextMatrix(hits[hit], grid().ColIndex("Period")));
    EXPECT_EQ(Listed(static_cast<int>(hit), 1), grid().DisplayText(hits[hit], grid().OutlineCol()));
    EXPECT_NE(Listed(static_cast<int>(hit), 2).find("入库"), std::string::npos);
  }
  EXPECT_EQ(bar().hits().currentIndex().row(), 0);
}

TEST_F(FindInTheWindow, ATotalIsListedWithThePeriodThatItCloses) {
  OpenFirst();
  const std::vector<int> hits = Rows("合计");
  ASSERT_GT(hits.size(), 1U);
  bar().list_button().click();
  Find(QStringLiteral("合计"));
  for (size_t hit = 0; hit < hits.size(); ++hit) {
    EXPECT_EQ(Listed(static_cast<int>(hit), 0), grid().TextMatrix(hits[hit] - 1, grid().ColIndex("Period")));
  }
}

TEST_F(FindInTheWindow, GoingThroughTheListGoesThroughTheJournal) {
  OpenFirst();
  const std::vector<int> hits = Rows("入库");
  ASSERT_GT(hits.size(), 2U);
  bar().list_button().click();
  Find(QStringLiteral("入库"));
  Press(&bar().words(), Qt::Key_Down);
  EXPECT_EQ(window_->focusWidget(), &bar().hits());
  Press(&bar().hits(), Qt::Key_Down);
  Press(&bar().hits(), Qt::Key_Down);
  EXPECT_EQ(stockbook().Row(), hits[2]);
  EXPECT_EQ(bar().Count().toStdString(), CountOf(3, hits.size()));
  EXPECT_EQ(window_->focusWidget(), &bar().hits()) << "the focus stays";
  ItemWith(QKeySequence(Qt::SHIFT | Qt::Key_F3))->trigger();
  EXPECT_EQ(bar().hits().currentIndex().row(), 1) << "the list follows the steps";
  Press(&bar().hits(), Qt::Key_Return);
  EXPECT_EQ(window_->focusWidget(), stockbook().focusProxy());
  bar().hits().setFocus();
  Press(&bar().hits(), Qt::Key_Escape);
  EXPECT_FALSE(bar().isVisible());
}

TEST_F(FindInTheWindow, ALongListOffersMoreWhenItIsNeeded) {
  OpenFirst();
  constexpr int kMany = 3000;
  const int first = grid().Rows();
  grid().SetRows(first + kMany);
  for (int row = first; row < grid().Rows(); ++row) grid().SetTextMatrix(row, grid().OutlineCol(), "许多");
  bar().list_button().click();
  Find(QStringLiteral("许多"));
  EXPECT_EQ(bar().Count(), QStringLiteral("第 1 条，共 %L1 条").arg(kMany));
  QAbstractItemModel& model = *bar().hits().model();
  EXPECT_LT(model.rowCount(), kMany);
  EXPECT_TRUE(model.canFetchMore({}));
  Press(&bar().words(), Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(stockbook().Row(), grid().Rows() - 1);
  EXPECT_EQ(bar().hits().currentIndex().row(), kMany - 1);
  EXPECT_FALSE(model.canFetchMore({}));
}

}  // namespace
}  // namespace stockbook::app
