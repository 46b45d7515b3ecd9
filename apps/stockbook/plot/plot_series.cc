// SPDX-License-Identifier: MIT
#include "stockbook/plot/plot_series.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/text.h"
#include "columns/block_reader.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/base/date.h"
#include "stockbook/range/period_summary.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

constexpr size_t kMostSteps = 6000;
constexpr size_t kStepsOfPart = 4;  // the first, the least, the greatest and the last one
constexpr int64_t kMostDayBars = 400;

std::optional<int64_t> FirstDayOf(const PeriodKey& month) {
  const auto date = base::Date::FromParts({month.year, month.month, 1, 0, 0, 0});
  return date ? std::optional(date->days()) : std::nullopt;
}

bool IsIn(int64_t day, const PeriodKey& month) {
  const auto first = FirstDayOf(month);
  const auto next = FirstDayOf(month.Plus(1));
  return first && next && day >= *first && day < *next;
}

// The days of the shown records in a row; a line without a date has that of the line before it.
class ShownDays {
 public:
  ShownDays(const platform::Grid& grid, const RangeView& view) {
    for (const RecordRun& run : view.shown()) {
      const std::vector<int64_t> days = DaysOf(grid, run);
      days_.insert(days_.end(), days.begin(), days.end());
      for (size_t record = run.begin; record < run.end; ++record) records_.push_back(record);
    }
    const auto dated = std::find_if(days_.begin(), days_.end(), [](int64_t day) { return day != 0; });
    if (dated == days_.end()) {
      days_.clear();
      records_.clear();
      return;
    }
    std::fill(days_.begin(), dated, *dated);
    for (size_t at = 1; at < days_.size(); ++at) days_[at] = days_[at] == 0 ? days_[at - 1] : days_[at];
  }

  size_t size() const { return days_.size(); }
  int64_t day(size_t at) const { return days_[at]; }
  size_t record(size_t at) const { return records_[at]; }
  // The place of the first record that is `record` or later.
  size_t PlaceOf(size_t record) const {
    return static_cast<size_t>(std::lower_bound(records_.begin(), records_.end(), record) - records_.begin());
  }
  const std::vector<int64_t>& days() const { return days_; }

 private:
  std::vector<int64_t> days_;
  std::vector<size_t> records_;
};

// What a column has in the shown records; zeros where the journal has no such column.
std::vector<double> ShownNumbers(const platform::Grid& grid, const RangeView& view, const char* key) {
  const columns::Column* column = grid.LoadedData(grid.ColIndex(key));
  if (column == nullptr) return std::vector<double>(view.ShownCount());
  std::vector<double> numbers;
  numbers.reserve(view.ShownCount());
  columns::BlockReader<double> reader(column);
  for (const RecordRun& run : view.shown()) {
    for (const columns::RowBlock block : columns::RowBlocks(run.begin, run.end)) {
      const auto read = reader.Read(block);
      numbers.insert(numbers.end(), read.begin(), read.end());
    }
  }
  return numbers;
}

class PlotBuilder {
 public:
  PlotBuilder(const platform::Grid& grid, const RangeView& view, JournalPlot& plot)
      : grid_(grid), view_(view), plot_(plot), days_(grid, view) {}

  void Build() {
    if (days_.size() == 0) return;
    BuildBands();
    BuildSteps();
    BuildBars();
  }

 private:
  void BuildBands() {
    for (const PeriodRun& period : view_.periods()) {
      const RecordRun part = view_.ShownOf(period);
      if (part.size() == 0) continue;
      const auto key = PeriodKey::Of(period.period);
      const int64_t first = days_.day(days_.PlaceOf(part.begin));
      const int64_t last = days_.day(days_.PlaceOf(part.end - 1));
      int64_t from = first;
      int64_t to = last + 1;
      if (key && view_.ShowsWhole(period)) {
        if (IsIn(first, *key)) from = FirstDayOf(*key).value_or(first);
        if (IsIn(last, *key)) to = FirstDayOf(key->Plus(1)).value_or(to);
      }
      if (!plot_.bands.empty()) plot_.bands.back().to = static_cast<double>(from);
      plot_.bands.push_back({static_cast<double>(from), static_cast<double>(to), key ? key->Caption() : period.period});
    }
    const auto [least, most] = std::minmax_element(days_.days().begin(), days_.days().end());
    plot_.from = std::min(plot_.bands.front().from, static_cast<double>(*least));
    plot_.to = std::max(plot_.bands.back().to, static_cast<double>(*most + 1));
  }

  void BuildSteps() {
    quantities_ = ShownNumbers(grid_, view_, keys::kStoQty);
    prices_ = ShownNumbers(grid_, view_, keys::kStoPrice);
    const StockBefore before = StockBeforeRecord(grid_, days_.record(0));
    plot_.steps.push_back({plot_.from, before.figures.quantity, before.price});
    if (days_.size() <= kMostSteps) {
      for (size_t at = 0; at < days_.size(); ++at) AddStep(at);
      return;
    }
    const size_t parts = kMostSteps / kStepsOfPart;
    for (size_t part = 0; part < parts; ++part) AddPart(days_.size() * part / parts, days_.size() * (part + 1) / parts);
  }

  void AddStep(size_t at) { plot_.steps.push_back({static_cast<double>(days_.day(at)), quantities_[at], prices_[at]}); }

  void AddPart(size_t begin, size_t end) {
    std::array<size_t, kStepsOfPart> places{begin, begin, begin, end - 1};
    for (size_t at = begin; at < end; ++at) {
      if (quantities_[at] < quantities_[places[1]]) places[1] = at;
      if (quantities_[at] > quantities_[places[2]]) places[2] = at;
    }
    std::sort(places.begin(), places.end());
    const auto last = std::unique(places.begin(), places.end());
    for (auto place = places.begin(); place != last; ++place) AddStep(*place);
  }

  void BuildBars() {
    const auto from = static_cast<int64_t>(plot_.from);
    const int64_t count = static_cast<int64_t>(plot_.to) - from;
    const bool of_days = count <= kMostDayBars;
    if (of_days) {
      for (int64_t day = 0; day < count; ++day) {
        const auto begin = static_cast<double>(from + day);
        plot_.bars.push_back({begin, begin + 1, 0, 0});
      }
    } else {
      for (const PlotBand& band : plot_.bands) plot_.bars.push_back({band.from, band.to, 0, 0});
    }
    const std::vector<double> in = ShownNumbers(grid_, view_, keys::kRevQty);
    const std::vector<double> out = ShownNumbers(grid_, view_, keys::kIssQty);
    size_t band = 0;
    for (size_t at = 0; at < days_.size(); ++at) {
      const auto day = static_cast<double>(days_.day(at));
      while (!of_days && band + 1 < plot_.bars.size() && day >= plot_.bars[band].to) ++band;
      PlotBar& bar = plot_.bars[of_days ? static_cast<size_t>(days_.day(at) - from) : band];
      bar.in += in[at];
      bar.out += out[at];
    }
    std::erase_if(plot_.bars, [](const PlotBar& bar) { return bar.in == 0 && bar.out == 0; });
  }

  const platform::Grid& grid_;
  const RangeView& view_;
  JournalPlot& plot_;
  ShownDays days_;
  std::vector<double> quantities_;  // of the shown records, in their order
  std::vector<double> prices_;
};

std::string CaptionOfColumn(const platform::Grid& grid, const char* key) {
  const int column = grid.ColIndex(key);
  return column < 0 ? std::string() : base::OneLine(grid.TextMatrix(0, column), "");
}

}  // namespace

JournalPlot PlotOf(const platform::Grid& grid, const RangeView& view, const std::string& title) {
  JournalPlot plot;
  plot.title = title;
  plot.has_price = !HidesAmounts(grid);
  plot.quantity_caption = CaptionOfColumn(grid, keys::kStoQty);
  plot.price_caption = CaptionOfColumn(grid, keys::kStoPrice);
  plot.movements_caption = "收入（上）与发出（下）";
  PlotBuilder(grid, view, plot).Build();
  return plot;
}

PlotStep PlotStepOf(const platform::Grid& grid, size_t record) {
  const std::vector<int64_t> days = DaysOf(grid, {record, record + 1});
  const StockBefore after = StockBeforeRecord(grid, record + 1);
  return {static_cast<double>(days.front()), after.figures.quantity, after.price};
}

std::optional<size_t> RecordAt(const platform::Grid& grid, const RangeView& view, double day,
                               std::optional<double> quantity) {
  const ShownDays days(grid, view);
  if (days.size() == 0) return std::nullopt;
  std::optional<int64_t> wanted;
  for (const int64_t each : days.days()) {
    if (static_cast<double>(each) <= day && (!wanted || each > *wanted)) wanted = each;
  }
  if (!wanted) return days.record(0);
  const columns::Column* stock = grid.LoadedData(grid.ColIndex(keys::kStoQty));
  std::optional<size_t> best;
  double nearest = 0;
  for (size_t at = 0; at < days.size(); ++at) {
    if (days.day(at) != *wanted) continue;
    const double number = stock == nullptr ? 0 : stock->Number(days.record(at));
    const double distance = quantity ? std::fabs(number - *quantity) : 0;
    if (!best || distance <= nearest) {
      best = days.record(at);
      nearest = distance;
    }
  }
  return best;
}

}  // namespace stockbook::app
