// SPDX-License-Identifier: MIT
#include "stockbook/plot/plot_layout.h"

#include <gtest/gtest.h>

#include <cmath>

#include "stockbook/plot/plot_drawing.h"

namespace stockbook::app {
namespace {

JournalPlot PlotOfTenDays() {
  JournalPlot plot;
  plot.from = 45000;
  plot.to = 45010;
  for (int day = 0; day < 10; ++day) {
    plot.steps.push_back({45000.0 + day, 100.0 * day - 150, 8.0 + 0.01 * day});
    plot.bars.push_back({45000.0 + day, 45001.0 + day, 100, 30});
  }
  plot.bands.push_back({45000, 45010, "2023年03月"});
  return plot;
}

TEST(PlotLayout, PutsThePanesBelowEachOther) {
  const PlotLayout layout = LayOutPlot(PlotOfTenDays(), {800, 600, 1});
  ASSERT_EQ(layout.frames.size(), 3u);
  EXPECT_EQ(layout.frames[0].pane, PlotPane::kQuantity);
  EXPECT_EQ(layout.frames[1].pane, PlotPane::kPrice);
  EXPECT_EQ(layout.frames[2].pane, PlotPane::kMovements);
  for (size_t at = 0; at < 3; ++at) {
    EXPECT_LT(layout.frames[at].top, layout.frames[at].bottom);
    if (at > 0) {
      EXPECT_LT(layout.frames[at - 1].bottom, layout.frames[at].top);
    }
    EXPECT_LE(layout.frames[at].bottom, 600);
    EXPECT_LT(layout.frames[at].right, 800);
  }
}

TEST(PlotLayout, HasNoPaneForHiddenPrices) {
  JournalPlot plot = PlotOfTenDays();
  plot.has_price = false;
  const PlotLayout layout = LayOutPlot(plot, {800, 600, 1});
  ASSERT_EQ(layout.frames.size(), 2u);
  EXPECT_EQ(layout.frames[1].pane, PlotPane::kMovements);
}

TEST(PlotLayout, HoldsEveryNumberBetweenRoundMarks) {
  const PlotLayout layout = LayOutPlot(PlotOfTenDays(), {800, 600, 1});
  const PlotFrame& quantity = layout.frames.at(0);
  EXPECT_LE(quantity.low, -150);
  EXPECT_GE(quantity.high, 750);
  EXPECT_EQ(quantity.step, 200);
  EXPECT_EQ(std::remainder(quantity.low, quantity.step), 0);
  const PlotFrame& price = layout.frames.at(1);
  EXPECT_GT(price.low, 7) << "prices that differ by little are told apart";
  EXPECT_LE(price.low, 8);
  const PlotFrame& movements = layout.frames.at(2);
  EXPECT_LE(movements.low, -30);
  EXPECT_GE(movements.high, 100);
}

TEST(PlotLayout, FindsTheDayAndTheNumberAtAPoint) {
  const PlotLayout layout = LayOutPlot(PlotOfTenDays(), {800, 600, 1});
  const PlotFrame& frame = layout.frames.at(0);
  const double x = layout.XOf(45004);
  const double y = frame.YOf(250);
  ASSERT_TRUE(layout.DayAt(x, y));
  EXPECT_NEAR(*layout.DayAt(x, y), 45004, 1e-9);
  ASSERT_EQ(layout.FrameAt(x, y), &frame);
  EXPECT_NEAR(frame.NumberAt(y), 250, 1e-9);
  EXPECT_FALSE(layout.DayAt(x, frame.top - 1)) << "above the panes";
  EXPECT_FALSE(layout.DayAt(frame.left - 1, y));
  EXPECT_FALSE(layout.DayAt(frame.right, y));
}

TEST(PlotLayout, GrowsWithTheScaleOfTheDisplay) {
  const PlotLayout plain = LayOutPlot(PlotOfTenDays(), {800, 600, 1});
  const PlotLayout fine = LayOutPlot(PlotOfTenDays(), {1600, 1200, 2});
  EXPECT_EQ(fine.text_height, 2 * plain.text_height);
  EXPECT_EQ(fine.frames.at(0).left, 2 * plain.frames.at(0).left);
  EXPECT_EQ(fine.day_step, plain.day_step);
}

TEST(PlotLayout, HasNoPanesWithoutRoomOrLines) {
  EXPECT_TRUE(LayOutPlot(PlotOfTenDays(), {60, 600, 1}).frames.empty());
  EXPECT_TRUE(LayOutPlot(PlotOfTenDays(), {800, 90, 1}).frames.empty());
  EXPECT_TRUE(LayOutPlot({}, {800, 600, 1}).frames.empty());
}

TEST(PlotLayout, LeavesPanesOutWhereThereIsLittleRoom) {
  const auto panes = [](int height) {
    std::vector<PlotPane> found;
    for (const PlotFrame& frame : LayOutPlot(PlotOfTenDays(), {800, height, 1}).frames) found.push_back(frame.pane);
    return found;
  };
  EXPECT_EQ(panes(240), (std::vector{PlotPane::kQuantity, PlotPane::kPrice, PlotPane::kMovements}));
  EXPECT_EQ(panes(180), (std::vector{PlotPane::kQuantity, PlotPane::kMovements}));
  EXPECT_EQ(panes(110), (std::vector{PlotPane::kQuantity}));
}

TEST(PlotLayout, NamesPeriodsBelowTheDaysWhereNoLineRuns) {
  const PlotLayout layout = LayOutPlot(PlotOfTenDays(), {800, 300, 1});
  ASSERT_TRUE(layout.period_line);
  EXPECT_GT(*layout.period_line, layout.frames.back().bottom + layout.text_height * 2) << "the days are between";
  EXPECT_LT(*layout.period_line, 300 - layout.text_height / 2);
  EXPECT_TRUE(layout.HasRoomFor({45000, 45010, "2023年03月"}));
  EXPECT_FALSE(layout.HasRoomFor({45000, 45001, "2023年03月"}));
}

TEST(PlotLayout, NamesPeriodsBelowThreeLowPanes) {
  const PlotLayout layout = LayOutPlot(PlotOfTenDays(), {800, 240, 1});
  EXPECT_EQ(layout.frames.size(), 3u);
  EXPECT_TRUE(layout.period_line);
  for (const PlotFrame& frame : layout.frames) EXPECT_GE(frame.bottom - frame.top, 34);
}

TEST(PlotLayout, NamesNoPeriodsWhereThatTakesTheRoomOfAPane) {
  const PlotLayout layout = LayOutPlot(PlotOfTenDays(), {800, 172, 1});
  EXPECT_EQ(layout.frames.size(), 2u);
  EXPECT_FALSE(layout.period_line);
  EXPECT_FALSE(LayOutPlot(PlotOfTenDays(), {190, 300, 1}).period_line) << "none of the names fits";
}

TEST(PlotLayout, GivesTheRoomOfTheTitleToThePanes) {
  const PlotLayout titled = LayOutPlot(PlotOfTenDays(), {800, 600, 1});
  const PlotLayout plain = LayOutPlot(PlotOfTenDays(), {800, 600, 1, false});
  EXPECT_LT(plain.frames.front().top, titled.frames.front().top);
  EXPECT_EQ(plain.frames.back().bottom, titled.frames.back().bottom);
}

TEST(PlotLayout, WritesItsTitleAsLargeWithoutLines) {
  EXPECT_EQ(LayOutPlot({}, {800, 600, 1}).text_height, LayOutPlot(PlotOfTenDays(), {800, 600, 1}).text_height);
}

TEST(PlotLayout, DrawsALevelLineAndNumbersThatAreNone) {
  JournalPlot plot = PlotOfTenDays();
  for (PlotStep& step : plot.steps) step = {step.day, 0, 5};
  plot.steps[3].quantity = std::nan("");
  plot.bars.clear();
  for (const PlotFrame& frame : LayOutPlot(plot, {800, 600, 1}).frames) {
    EXPECT_LT(frame.low, frame.high);
    EXPECT_GT(frame.step, 0);
    EXPECT_TRUE(std::isfinite(frame.low) && std::isfinite(frame.high));
  }
}

TEST(PlotLayout, WritesFewerDaysWhereTheyAreMany) {
  JournalPlot plot = PlotOfTenDays();
  const double few = LayOutPlot(plot, {800, 600, 1}).day_step;
  plot.to = plot.from + 3650;
  const double many = LayOutPlot(plot, {800, 600, 1}).day_step;
  EXPECT_LE(few, 2);
  EXPECT_GE(many, 365);
}

// Where a plot without lines says so, there is nothing else to read.
TEST(PlotLayout, HasTheTitleAtTheTopWithoutLines) {
  if (!CanDrawPlots()) GTEST_SKIP() << WhyNoPlots();
  JournalPlot plot;
  plot.title = "商品:六角螺栓";
  const QImage picture = PlotPicture(plot, {600, 300, 1}, PlotLook::kLight);
  const auto is_blank = [&](int top, int bottom) {
    for (int y = top; y < bottom; ++y)
      for (int x = 0; x < picture.width(); ++x)
        if (picture.pixel(x, y) != picture.pixel(0, 0)) return false;
    return true;
  };
  EXPECT_FALSE(is_blank(0, 60));
  EXPECT_TRUE(is_blank(60, 300));
}

TEST(PlotLayout, NamesTheDayThatAMarkStandsAt) {
  const double first = 45689;  // 2025-02-01
  EXPECT_EQ(PlotDayText(first, 0), "2025-02-01");
  EXPECT_EQ(PlotDayText(first, 5), "2025-02-06");
  EXPECT_EQ(PlotDayText(first, 5 - 1e-9), "2025-02-06");
  EXPECT_EQ(PlotDayText(first, 28), "2025-03-01");
}

TEST(PlotLayout, WritesTheNumbersOfAnAxisWithTheSameDecimals) {
  EXPECT_EQ(PlotNumberText(11.3, 0.02), "11.30");
  EXPECT_EQ(PlotNumberText(11.32, 0.02), "11.32");
  EXPECT_EQ(PlotNumberText(-0.1, 0.1), "-0.1");
  EXPECT_EQ(PlotNumberText(-1e-12, 0.1), "0.0");
  EXPECT_EQ(PlotNumberText(1200000, 200000), "1,200,000");
  EXPECT_EQ(PlotNumberText(-1500, 500), "-1,500");
  EXPECT_EQ(PlotNumberText(1000, 1000), "1,000");
}

}  // namespace
}  // namespace stockbook::app
