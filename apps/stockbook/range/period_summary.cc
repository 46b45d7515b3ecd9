// SPDX-License-Identifier: MIT
#include "stockbook/range/period_summary.h"

#include <algorithm>

#include "base/number.h"
#include "columns/block_reader.h"
#include "stockbook/base/column_keys.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

// What a restricted journal shows in place of an amount.
constexpr const char* kMaskText = "-";

void AddAmount(int64_t units, std::optional<base::Money>& sum) {
  if (!sum) return;
  int64_t total = 0;
  sum =
      __builtin_add_overflow(sum->units(), units, &total) ? std::nullopt : std::optional(base::Money::FromUnits(total));
}

// Of the records of both runs at once; the sums are of those that are shown.
StockFigures SumOfShown(const platform::Grid& grid, const RangeView& view, const RecordRun& records,
                        const char* quantity, const char* amount) {
  StockFigures sum{0, base::Money()};
  columns::BlockReader<double> quantities(grid.LoadedData(grid.ColIndex(quantity)));
  columns::BlockReader<int64_t> amounts(grid.LoadedData(grid.ColIndex(amount)));
  for (const RecordRun& run : view.shown()) {
    const size_t begin = std::max(run.begin, records.begin);
    const size_t end = std::min(run.end, records.end);
    for (const columns::RowBlock block : columns::RowBlocks(begin, std::max(begin, end))) {
      for (const double number : quantities.Read(block)) sum.quantity += number;
      for (const int64_t units : amounts.Read(block)) AddAmount(units, sum.amount);
    }
  }
  return sum;
}

double NumberAfter(const platform::Grid& grid, const char* key, size_t record) {
  const columns::Column* column = grid.LoadedData(grid.ColIndex(key));
  return column == nullptr ? 0 : column->Number(record);
}

StockFigures StockAfterRecord(const platform::Grid& grid, size_t record) {
  StockFigures stock{NumberAfter(grid, keys::kStoQty, record), std::nullopt};
  if (const columns::Column* amounts = grid.LoadedData(grid.ColIndex(keys::kStoAcc)))
    stock.amount = amounts->At(record).AsMoney();
  return stock;
}

PeriodLine PeriodLineOf(const platform::Grid& grid, const RangeView& view, const PeriodRun& period) {
  PeriodLine line;
  const auto key = PeriodKey::Of(period.period);
  line.caption = key ? key->Caption() : period.period;
  line.records = view.ShownOf(period);
  line.is_whole = view.ShowsWhole(period);
  line.opening = StockBeforeRecord(grid, line.records.begin).figures;
  line.in = SumOfShown(grid, view, line.records, keys::kRevQty, keys::kRevAcc);
  line.out = SumOfShown(grid, view, line.records, keys::kIssQty, keys::kIssAcc);
  line.closing = StockAfterRecord(grid, line.records.end - 1);
  line.price = NumberAfter(grid, keys::kStoPrice, line.records.end - 1);
  return line;
}

void AddFigures(const StockFigures& more, StockFigures& sum) {
  sum.quantity += more.quantity;
  if (more.amount) {
    AddAmount(more.amount->units(), sum.amount);
  } else {
    sum.amount.reset();
  }
}

PeriodLine TotalOfPeriods(const std::vector<PeriodLine>& lines) {
  PeriodLine total;
  total.caption = "合计";
  total.records = {lines.front().records.begin, lines.back().records.end};
  total.opening = lines.front().opening;
  total.closing = lines.back().closing;
  total.price = lines.back().price;
  total.in.amount = total.out.amount = base::Money();
  for (const PeriodLine& line : lines) {
    AddFigures(line.in, total.in);
    AddFigures(line.out, total.out);
  }
  return total;
}

void HideAmounts(PeriodLine& line) {
  for (StockFigures* figures : {&line.opening, &line.in, &line.out, &line.closing}) figures->amount.reset();
  line.price.reset();
}

}  // namespace

bool HidesAmounts(const platform::Grid& grid) {
  const int column = grid.ColIndex(keys::kStoAcc);
  if (grid.RecordCount() == 0 || column < 0) return false;
  return grid.TextMatrix(grid.RowOfRecord(0), column) == kMaskText;
}

StockBefore StockBeforeRecord(const platform::Grid& grid, size_t record) {
  if (record > 0) return {StockAfterRecord(grid, record - 1), NumberAfter(grid, keys::kStoPrice, record - 1)};
  const int row = grid.FixedRows();
  StockBefore before;
  if (row >= grid.Rows() || grid.RecordOfRow(row) >= 0) return before;
  const auto number = [&](const char* key) {
    const int column = grid.ColIndex(key);
    return column < 0 ? std::string() : grid.TextMatrix(row, column);
  };
  before.figures = {base::ParseNumber(number(keys::kStoQty)).value_or(0), base::Money::Parse(number(keys::kStoAcc))};
  before.price = base::ParseNumber(number(keys::kStoPrice)).value_or(0);
  return before;
}

std::vector<PeriodLine> SummarizePeriods(const platform::Grid& grid, const RangeView& view) {
  std::vector<PeriodLine> lines;
  const bool hide = HidesAmounts(grid);
  for (const PeriodRun& period : view.periods()) {
    if (view.ShownOf(period).size() == 0) continue;
    lines.push_back(PeriodLineOf(grid, view, period));
    if (hide) HideAmounts(lines.back());
  }
  if (lines.size() > 1) lines.push_back(TotalOfPeriods(lines));
  // Lines of another period between those that are shown move the stock, too.
  if (lines.size() > 1) lines.back().is_whole = view.shown().size() == 1;
  return lines;
}

}  // namespace stockbook::app
