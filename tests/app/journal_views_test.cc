// SPDX-License-Identifier: MIT
// The range of a journal, the summary of its periods and its plot, in the window.
#include "stockbook/window/journal_views.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QPdfWriter>
#include <QTest>
#include <cmath>

#include "app/window_fixture.h"
#include "base/number.h"
#include "stockbook/base/date.h"
#include "stockbook/platform/error.h"
#include "stockbook/plot/plot_series.h"
#include "stockbook/range/period_summary.h"
#include "stockbook/window/plot_paper.h"

namespace stockbook::app {
namespace {

JournalRange RangeFrom(const char* from, const char* to) {
  JournalRange range;
  if (const auto bounds = ReadBounds(from)) range.from = bounds->first;
  if (const auto bounds = ReadBounds(to)) range.to = bounds->last;
  return range;
}

class JournalViewsInTheWindow : public WindowTest {
 protected:
  void SetUp() override {
    Open();
    window_->activateWindow();
    window_->LoadFirstJournal();
    views().range_bar().SetToday([] { return base::Date::Parse("2025-05-20").value().days(); });
  }

  JournalViews& views() { return window_->views(); }
  RangeBar& bar() { return views().range_bar(); }
  std::string Text(int row, const char* key) { return grid().TextMatrix(row, grid().ColIndex(key)); }
  std::string Message() const { return window_->message().Message().toStdString(); }
  // The periods of the rows that can be seen, each once.
  std::vector<std::string> PeriodsInSight() {
    std::vector<std::string> periods;
    for (size_t record = 0; record < grid().RecordCount(); ++record) {
      const int row = grid().RowOfRecord(record);
      if (grid().RowHidden(row)) continue;
      const std::string period = Text(row, "Period");
      if (periods.empty() || periods.back() != period) periods.push_back(period);
    }
    return periods;
  }
  std::vector<std::string> EveryCell() {
    std::vector<std::string> cells;
    for (int row = 0; row < grid().Rows(); ++row) {
      cells.push_back(grid().RowHidden(row) ? "hidden" : "shown");
      for (int column = 0; column < grid().Cols(); ++column) cells.push_back(grid().TextMatrix(row, column));
    }
    return cells;
  }
  size_t FirstRecordOf(const std::string& period) {
    for (size_t record = 0; record < grid().RecordCount(); ++record)
      if (Text(grid().RowOfRecord(record), "Period") == period) return record;
    return grid().RecordCount();
  }
  void TypeRange(const char* from, const char* to) {
    bar().from().setText(QString::fromUtf8(from));
    bar().to().setText(QString::fromUtf8(to));
    QTest::keyClick(&bar().to(), Qt::Key_Return);
    QApplication::processEvents();
  }
};

TEST_F(JournalViewsInTheWindow, ARangeHidesTheLinesOutsideAndBringsForwardWhatWasBefore) {
  const size_t first = FirstRecordOf("2025-03");
  ASSERT_GT(first, 0u);
  TypeRange("2025-03", "2025-04");
  EXPECT_EQ(PeriodsInSight(), (std::vector<std::string>{"2025-03", "2025-04"}));
  const int opening = grid().FixedRows();
  const int before = grid().RowOfRecord(first - 1);
  EXPECT_FALSE(grid().RowHidden(opening));
  EXPECT_EQ(Text(opening, "BillNo"), "2025年03月承前");
  for (const char* key : {"StoQty", "StoAcc", "StoPrice"}) {
    EXPECT_EQ(Text(opening, key), Text(before, key)) << key;
    EXPECT_EQ(grid().DisplayText(opening, grid().ColIndex(key)), grid().DisplayText(before, grid().ColIndex(key)));
  }
  EXPECT_FALSE(grid().RowHidden(grid().Row())) << "the current cell can be seen";
}

TEST_F(JournalViewsInTheWindow, ShowingAllAgainLeavesNoTraceOfTheRange) {
  const std::vector<std::string> as_loaded = EveryCell();
  const std::string title = Title();
  TypeRange("2025-03-10", "2025-04-05");
  EXPECT_NE(EveryCell(), as_loaded);
  TypeRange("2025Q4", "");
  TypeRange("", "");
  EXPECT_EQ(EveryCell(), as_loaded);
  EXPECT_EQ(Title(), title);
}

TEST_F(JournalViewsInTheWindow, TheTotalOfAPeriodIsShownOnlyWithAllOfIt) {
  TypeRange("2025-03-10", "2025-04");
  std::vector<std::string> totals;
  for (int row = grid().FixedRows(); row < grid().Rows(); ++row) {
    if (grid().IsSubtotal(row) && !grid().RowHidden(row) && !Text(row, "Quantity").empty())
      totals.push_back(Text(row, "BillNo"));
  }
  EXPECT_EQ(totals, (std::vector<std::string>{"2025年04月合计"}));
}

TEST_F(JournalViewsInTheWindow, TitleHeaderAndStatusLineNameTheRange) {
  TypeRange("2025Q1", "2025Q1");
  EXPECT_TRUE(stockbook().control().Caption().ends_with("   2025年01月至2025年03月"))
      << stockbook().control().Caption();
  EXPECT_NE(Title().find("2025年01月至2025年03月"), std::string::npos) << Title();
  EXPECT_TRUE(views().RowCount().startsWith(QStringLiteral("显示 ")));
  TypeRange("2025Q2", "2025Q2");
  EXPECT_EQ(stockbook().control().Caption().find("2025年01月"), std::string::npos) << "one range at a time";
}

TEST_F(JournalViewsInTheWindow, ARangeStaysUntilOptionsWithoutOneAreLoaded) {
  TypeRange("2025-03", "2025-03");
  const std::vector<std::string> shown = EveryCell();
  emit window_->bar().LoadWanted();
  EXPECT_EQ(EveryCell(), shown);
  EXPECT_EQ(views().range(), RangeFrom("2025-03", "2025-03"));
  JournalOptions options = window_->bar().Options();
  options.key_id = 5;
  window_->bar().SetOptions(options);
  emit window_->bar().LoadWanted();
  EXPECT_EQ(PeriodsInSight(), std::vector<std::string>{"2025-03"}) << "of the next product, too";
  window_->LoadJournal(options);
  EXPECT_TRUE(views().range().IsAll());
  EXPECT_EQ(stockbook().control().Caption().find("2025年03月"), std::string::npos);
}

TEST_F(JournalViewsInTheWindow, ARangeOfTheOptionsIsShownAfterTheLoad) {
  JournalOptions options = window_->bar().Options();
  options.range = RangeFrom("2025-06", "2025-07");
  window_->LoadJournal(options);
  EXPECT_EQ(PeriodsInSight(), (std::vector<std::string>{"2025-06", "2025-07"}));
  EXPECT_TRUE(bar().isVisible());
  EXPECT_EQ(bar().from().text().toStdString(), "2025-06");
}

TEST_F(JournalViewsInTheWindow, ARangeWithoutLinesBringsForwardWhatThereIsAndSaysSo) {
  const int last = grid().RowOfRecord(grid().RecordCount() - 1);
  const std::string stock = Text(last, "StoQty");
  TypeRange("2031", "2031");
  EXPECT_TRUE(PeriodsInSight().empty());
  EXPECT_EQ(Text(grid().FixedRows(), "StoQty"), stock);
  EXPECT_EQ(Message(), "2031年01月至2031年12月没有单据。");
  TypeRange("1999", "1999");
  EXPECT_EQ(Text(grid().FixedRows(), "BillNo").find("承前"), std::string::npos) << "nothing was before it";
}

TEST_F(JournalViewsInTheWindow, WhatIsNoRangeIsRefusedWithASentence) {
  TypeRange("2025-03", "2025-03");
  TypeRange("2025-13", "");
  EXPECT_EQ(Message(), "“2025-13”不是期间或日期：请输入如 2025-03、2025-03-15、2025Q1 或 2025，留空为不限。");
  TypeRange("2025-05", "2025-04");
  EXPECT_EQ(Message(), "区间的起点 2025年05月 晚于终点 2025年04月：请交换或修改。");
  EXPECT_EQ(views().range(), RangeFrom("2025-03", "2025-03")) << "nothing has changed";
  QTest::keyClick(&bar().to(), Qt::Key_Escape);
  EXPECT_EQ(bar().from().text().toStdString(), "2025-03") << "Esc puts back what is shown";
}

TEST_F(JournalViewsInTheWindow, MonthsAndQuartersAreAtHandByKeyboard) {
  QTest::keyClick(window_.get(), Qt::Key_R, Qt::ControlModifier);
  EXPECT_TRUE(bar().presets().hasFocus());
  QTest::keyClick(&bar().presets(), Qt::Key_Down);
  EXPECT_EQ(PeriodsInSight(), std::vector<std::string>{"2025-05"});
  QTest::keyClick(window_.get(), Qt::Key_PageUp, Qt::AltModifier);
  EXPECT_EQ(PeriodsInSight(), std::vector<std::string>{"2025-04"});
  EXPECT_EQ(bar().presets().currentText().toStdString(), "上月");
  QTest::keyClick(window_.get(), Qt::Key_PageDown, Qt::AltModifier);
  EXPECT_EQ(PeriodsInSight(), std::vector<std::string>{"2025-05"});
  bar().Choose(RangePreset::kThisQuarter);
  EXPECT_EQ(PeriodsInSight(), (std::vector<std::string>{"2025-04", "2025-05", "2025-06"}));
  bar().Choose(RangePreset::kNewestPeriod);
  EXPECT_EQ(PeriodsInSight(), std::vector<std::string>{"2025-12"});
}

TEST_F(JournalViewsInTheWindow, TheBarStaysWhileOnlyAPartIsShown) {
  EXPECT_FALSE(bar().isVisible());
  bar().Open();
  QTest::keyClick(&bar().from(), Qt::Key_Escape);
  EXPECT_FALSE(bar().isVisible());
  TypeRange("2025-03", "");
  QTest::keyClick(&bar().from(), Qt::Key_Escape);
  EXPECT_TRUE(bar().isVisible());
  EXPECT_EQ(window_->focusWidget(), stockbook().focusProxy());
}

TEST_F(JournalViewsInTheWindow, ALineOutsideTheRangeThatSomethingGoesToIsShown) {
  TypeRange("2025-03", "2025-03");
  const int row = grid().RowOfRecord(FirstRecordOf("2025-09"));
  stockbook().control().SetRow(row);
  QApplication::processEvents();
  EXPECT_TRUE(views().range().IsAll());
  EXPECT_EQ(grid().Row(), row);
  EXPECT_EQ(Message(), "这一行不在区间（2025年03月）内，现在显示全部。");
}

TEST_F(JournalViewsInTheWindow, ClosedPeriodsStayClosedInARange) {
  const int node = grid().RowOfRecord(FirstRecordOf("2025-03")) - 1;
  ASSERT_TRUE(grid().IsSubtotal(node));
  grid().SetIsCollapsed(node, true);
  TypeRange("2025-03", "2025-04");
  EXPECT_TRUE(grid().IsCollapsed(node));
  EXPECT_FALSE(grid().RowHidden(node));
  EXPECT_EQ(PeriodsInSight(), std::vector<std::string>{"2025-04"});
}

TEST_F(JournalViewsInTheWindow, HiddenAmountsAreNotBroughtForward) {
  JournalOptions options = window_->bar().Options();
  options.acc_restrict = true;
  options.range = RangeFrom("2025-03", "");
  window_->LoadJournal(options);
  const int opening = grid().FixedRows();
  EXPECT_EQ(Text(opening, "StoAcc"), "-");
  EXPECT_EQ(Text(opening, "StoPrice"), "-");
  EXPECT_TRUE(grid().CellData(opening, grid().ColIndex("StoAcc")).IsNull());
  EXPECT_NE(Text(opening, "StoQty"), "-");
}

TEST_F(JournalViewsInTheWindow, ThePeriodSummaryAddsUpFromOpeningToClosing) {
  QTest::keyClick(window_.get(), Qt::Key_M, Qt::ControlModifier);
  QApplication::processEvents();
  const std::vector<PeriodLine>& lines = views().periods().table().lines();
  ASSERT_EQ(lines.size(), 13u) << "twelve periods and their total";
  EXPECT_EQ(lines.back().caption, "合计");
  for (size_t at = 0; at < lines.size(); ++at) {
    const PeriodLine& line = lines[at];
    EXPECT_NEAR(line.opening.quantity + line.in.quantity - line.out.quantity, line.closing.quantity, 1e-6);
    EXPECT_EQ(*line.opening.amount + *line.in.amount - *line.out.amount, *line.closing.amount);
    const bool follows = at > 0 && at < 12;
    EXPECT_EQ(line.opening.amount, follows ? lines[at - 1].closing.amount : lines[0].opening.amount);
    const int last = grid().RowOfRecord(line.records.end - 1);
    EXPECT_EQ(base::NumberText(line.closing.quantity), Text(last, "StoQty"));
  }
  PeriodTable& table = views().periods().table();
  EXPECT_EQ(table.data(table.index(2, 0), Qt::DisplayRole).toString().toStdString(), "2025年03月");
  EXPECT_EQ(table.headerData(7, Qt::Horizontal, Qt::DisplayRole).toString().toStdString(), "期末数量");
  EXPECT_EQ(table.columnCount(), 10);
  const int last = grid().RowOfRecord(lines[2].records.end - 1);
  EXPECT_EQ(table.data(table.index(2, 7), Qt::DisplayRole).toString().toStdString(),
            grid().DisplayText(last, grid().ColIndex("StoQty")));
}

TEST_F(JournalViewsInTheWindow, ThePeriodSummaryCountsWhatIsShown) {
  views().periods().show();
  TypeRange("2025-03-10", "2025-03-20");
  const std::vector<PeriodLine>& lines = views().periods().table().lines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_FALSE(lines[0].is_whole);
  EXPECT_NEAR(lines[0].opening.quantity + lines[0].in.quantity - lines[0].out.quantity, lines[0].closing.quantity,
              1e-6);
  EXPECT_EQ(base::NumberText(lines[0].opening.quantity), Text(grid().FixedRows(), "StoQty"));
}

TEST_F(JournalViewsInTheWindow, ALineOfThePeriodSummaryLeadsToItsPeriod) {
  const size_t record = FirstRecordOf("2025-08");
  grid().SetIsCollapsed(grid().RowOfRecord(record) - 1, true);
  QTest::keyClick(window_.get(), Qt::Key_M, Qt::ControlModifier);
  QTableView& view = views().periods().view();
  EXPECT_TRUE(view.hasFocus());
  view.setCurrentIndex(view.model()->index(7, 0));
  QTest::keyClick(&view, Qt::Key_Return);
  EXPECT_EQ(grid().Row(), grid().RowOfRecord(record));
  EXPECT_FALSE(grid().RowHidden(grid().Row())) << "its period is open";
  EXPECT_EQ(window_->focusWidget(), stockbook().focusProxy());
  const QRect place = view.visualRect(view.model()->index(1, 0));
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place.center());
  EXPECT_EQ(Text(grid().Row(), "Period"), "2025-02");
}

TEST_F(JournalViewsInTheWindow, ThePeriodSummaryHidesAmountsWithTheJournal) {
  views().periods().show();
  JournalOptions options = window_->bar().Options();
  options.acc_restrict = true;
  window_->LoadJournal(options);
  const std::vector<PeriodLine>& lines = views().periods().table().lines();
  ASSERT_FALSE(lines.empty());
  EXPECT_FALSE(lines[0].closing.amount);
  EXPECT_FALSE(lines[0].price);
  PeriodTable& table = views().periods().table();
  EXPECT_EQ(table.data(table.index(0, 8), Qt::DisplayRole).toString().toStdString(), "-");
}

TEST_F(JournalViewsInTheWindow, ThePlotStepsThroughEveryLine) {
  const JournalPlot plot = PlotOf(grid(), views().range_view(), "title");
  ASSERT_EQ(plot.steps.size(), grid().RecordCount() + 1);
  EXPECT_EQ(plot.bands.size(), 12u);
  EXPECT_EQ(plot.bands[1].caption, "2025年02月");
  EXPECT_EQ(plot.bands[1].from, static_cast<double>(base::Date::Parse("2025-02-01").value().days()));
  EXPECT_EQ(plot.to, static_cast<double>(base::Date::Parse("2026-01-01").value().days()));
  double in = 0;
  double out = 0;
  for (const PlotBar& bar : plot.bars) {
    in += bar.in;
    out += bar.out;
  }
  EXPECT_NEAR(plot.steps.front().quantity + in - out, plot.steps.back().quantity, 1e-6);
  EXPECT_EQ(base::NumberText(plot.steps[1].quantity), Text(grid().RowOfRecord(0), "StoQty"));
}

TEST_F(JournalViewsInTheWindow, ARangeWithLinesTakesBackThatThereAreNone) {
  views().ShowRange(RangeFrom("2031-01", "2031-01"));
  EXPECT_EQ(Message(), "2031年01月没有单据。");
  views().ShowRange({});
  EXPECT_EQ(Message(), views().RowCount().toStdString());
}

TEST_F(JournalViewsInTheWindow, AClickInThePlotGoesToTheLine) {
  if (!CanDrawPlots()) GTEST_SKIP() << WhyNoPlots();
  QTest::keyClick(window_.get(), Qt::Key_G, Qt::ControlModifier);
  QApplication::processEvents();
  PlotView& view = views().plot().view();
  EXPECT_TRUE(view.hasFocus());
  const size_t record = FirstRecordOf("2025-06") + 3;
  const PlotStep step = PlotStepOf(grid(), record);
  const PlotFrame& frame = view.plot_layout().frames.at(0);
  const QPointF place(view.plot_layout().XOf(step.day) + 0.5, frame.YOf(step.quantity));
  QTest::mouseClick(&view, Qt::LeftButton, {}, place.toPoint());
  QApplication::processEvents();
  const auto gone_to = static_cast<size_t>(grid().RecordOfRow(grid().Row()));
  EXPECT_NEAR(PlotStepOf(grid(), gone_to).day, step.day, 2);
  ASSERT_TRUE(view.MarkPlace());
  EXPECT_NEAR(view.MarkPlace()->x(), place.x(), 4);
}

TEST_F(JournalViewsInTheWindow, KeysInThePlotGoFromLineToLine) {
  views().plot().show();
  PlotView& view = views().plot().view();
  QTest::keyClick(&view, Qt::Key_Home);
  EXPECT_EQ(grid().RecordOfRow(grid().Row()), 0);
  QTest::keyClick(&view, Qt::Key_Right);
  EXPECT_EQ(grid().RecordOfRow(grid().Row()), 1);
  QTest::keyClick(&view, Qt::Key_Left);
  QTest::keyClick(&view, Qt::Key_Left);
  EXPECT_EQ(grid().RecordOfRow(grid().Row()), 0);
  QTest::keyClick(&view, Qt::Key_End);
  EXPECT_EQ(grid().RecordOfRow(grid().Row()), static_cast<int64_t>(grid().RecordCount()) - 1);
  QApplication::processEvents();
  ASSERT_TRUE(view.mark());
  EXPECT_EQ(view.mark()->day, PlotStepOf(grid(), grid().RecordCount() - 1).day);
}

TEST_F(JournalViewsInTheWindow, ThePlotFollowsRangeAndHiddenAmounts) {
  views().plot().show();
  TypeRange("2025-03", "2025-04");
  EXPECT_EQ(views().plot().view().plot().bands.size(), 2u);
  EXPECT_EQ(views().plot().view().plot_layout().frames.size(), 3u);
  JournalOptions options = window_->bar().Options();
  options.acc_restrict = true;
  window_->LoadJournal(options);
  EXPECT_FALSE(views().plot().view().plot().has_price);
  EXPECT_EQ(views().plot().view().plot_layout().frames.size(), 2u);
}

TEST_F(JournalViewsInTheWindow, ThePlotIsPrintedAndSaved) {
  if (!CanDrawPlots()) GTEST_SKIP() << WhyNoPlots();
  const JournalPlot plot = PlotOf(grid(), views().range_view(), "title");
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    EXPECT_TRUE(PrintPlot(plot, writer));
  }
  EXPECT_TRUE(bytes.contains("/Subtype /Image"));
  SavePlot(plot, QString::fromStdString(PathOf("plot.svg")));
  EXPECT_NE(ReadAll(PathOf("plot.svg")).find("<svg"), std::string::npos);
  SavePlot(plot, QString::fromStdString(PathOf("plot.PNG")));
  EXPECT_FALSE(QImage(QString::fromStdString(PathOf("plot.PNG"))).isNull());
  EXPECT_THROW(SavePlot(plot, QString::fromStdString(PathOf("plot.doc"))), platform::Error);
  EXPECT_THROW(SavePlot(plot, QString::fromStdString(PathOf("no/plot.png"))), platform::Error);
}

}  // namespace
}  // namespace stockbook::app
