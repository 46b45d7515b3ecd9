// SPDX-License-Identifier: MIT
#include "stockbook/plot/plot_series.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "app/inventory_fixture.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/base/date.h"
#include "stockbook/command/plain_desk.h"
#include "stockbook/inventory/database_source.h"
#include "stockbook/sample/sample_inventory.h"
#include "stockbook/window/journal_desk.h"

namespace stockbook::app {
namespace {

constexpr size_t kMostStepsDrawn = 6001;  // and the opening

class PlotOfALongJournal : public InventoryTest {
 protected:
  void LoadLines(int64_t lines, int periods) {
    WriteSampleInventory(PathOf("long.db"), {lines, periods, 1, SampleProductRange::One});
    JournalOptions options;
    options.key_id = 1;
    const LoadReport report = LoadJournal(desk_.control(), OpenInventory(PathOf("long.db")), options);
    ASSERT_TRUE(report.loaded) << LoadError(report);
    view_.JournalLoaded();
  }
  double StockOf(size_t record) const {
    return desk_.sheet().LoadedData(desk_.sheet().ColIndex(base::keys::kStoQty))->Number(record);
  }

  PlainDesk desk_;
  RangeView view_{desk_.control()};
};

TEST_F(PlotOfALongJournal, IsThinnedOutWithoutLosingItsHeightsAndDepths) {
  LoadLines(20'000, 12);
  const size_t records = desk_.sheet().RecordCount();
  ASSERT_GT(records, kMostStepsDrawn);
  const JournalPlot plot = PlotOf(desk_.sheet(), view_, "title");
  EXPECT_LE(plot.steps.size(), kMostStepsDrawn);
  EXPECT_GT(plot.steps.size(), 1000u);
  double least = StockOf(0);
  double most = StockOf(0);
  for (size_t record = 0; record < records; ++record) {
    least = std::min(least, StockOf(record));
    most = std::max(most, StockOf(record));
  }
  const auto has = [&](double quantity) {
    return std::any_of(plot.steps.begin(), plot.steps.end(),
                       [&](const PlotStep& step) { return step.quantity == quantity; });
  };
  EXPECT_TRUE(has(least));
  EXPECT_TRUE(has(most));
  EXPECT_EQ(plot.steps.back().quantity, StockOf(records - 1));
  EXPECT_TRUE(std::is_sorted(plot.steps.begin(), plot.steps.end(),
                             [](const PlotStep& left, const PlotStep& right) { return left.day < right.day; }));
}

TEST_F(PlotOfALongJournal, HasBarsOfPeriodsWhereDaysAreTooMany) {
  LoadLines(2000, 36);
  const JournalPlot plot = PlotOf(desk_.sheet(), view_, "title");
  ASSERT_EQ(plot.bands.size(), 36u);
  ASSERT_EQ(plot.bars.size(), 36u);
  double in = 0;
  double out = 0;
  for (size_t at = 0; at < plot.bars.size(); ++at) {
    EXPECT_EQ(plot.bars[at].from, plot.bands[at].from);
    in += plot.bars[at].in;
    out += plot.bars[at].out;
  }
  EXPECT_NEAR(plot.steps.front().quantity + in - out, plot.steps.back().quantity, 1e-4);
  view_.Show(JournalRange::Of(*ReadBounds("2026Q1")));
  EXPECT_EQ(PlotOf(desk_.sheet(), view_, "title").bands.size(), 3u);
  EXPECT_GT(PlotOf(desk_.sheet(), view_, "title").bars.size(), 3u) << "of days";
}

TEST_F(PlotOfALongJournal, FindsTheLineOfAPoint) {
  LoadLines(2000, 12);
  const platform::Grid& grid = desk_.sheet();
  for (const size_t record : {size_t{0}, size_t{77}, size_t{1000}}) {
    const PlotStep step = PlotStepOf(grid, record);
    const auto found = RecordAt(grid, view_, step.day, step.quantity);
    ASSERT_TRUE(found);
    EXPECT_EQ(PlotStepOf(grid, *found).day, step.day);
    EXPECT_EQ(StockOf(*found), StockOf(record));
  }
  EXPECT_EQ(RecordAt(grid, view_, 1, {}), std::optional<size_t>(0)) << "before all lines";
  EXPECT_EQ(RecordAt(grid, view_, 1e6, {}), std::optional<size_t>(grid.RecordCount() - 1)) << "after them";
  view_.Show(JournalRange::Of(*ReadBounds("2040")));
  EXPECT_FALSE(RecordAt(grid, view_, 45000, {}));
  EXPECT_TRUE(PlotOf(grid, view_, "title").IsEmpty());
}

}  // namespace
}  // namespace stockbook::app
