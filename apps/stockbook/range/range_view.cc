// SPDX-License-Identifier: MIT
#include "stockbook/range/range_view.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "stockbook/base/column_keys.h"
#include "stockbook/base/value.h"
#include "stockbook/platform/grid.h"
#include "stockbook/platform/grid_guards.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

constexpr const char* kRangeTag = "Range";

}  // namespace

void RangeView::JournalLoaded() {
  range_ = {};
  opening_.clear();
  named_caption_.clear();
  periods_ = PeriodRunsOf(control_.Grid());
  shown_.clear();
  if (const size_t records = control_.Grid().RecordCount(); records > 0) shown_.push_back({0, records});
}

bool RangeView::IsStale() const {
  return (periods_.empty() ? 0 : periods_.back().records.end) != control_.Grid().RecordCount();
}

void RangeView::Show(JournalRange range) {
  platform::Grid& grid = control_.Grid();
  if (IsStale()) JournalLoaded();
  range_ = std::move(range);
  if (range_.IsAll() && opening_.empty() && named_caption_.empty() && ShownCount() == grid.RecordCount()) return;
  shown_ = RecordsInside(range_, periods_, grid);
  {
    const auto redraw = platform::RedrawOff(grid);
    const auto tag = platform::BusyTag(grid, kRangeTag);
    HideRows();
    HideTotals();
    PutBackOpening();
    if (!shown_.empty() && shown_.front().begin > 0) BringForward();
    // Without a line in the range, what is brought forward is what there was before it.
    if (shown_.empty()) BringForward();
    NameRange();
  }
  const int row = grid.Row();
  if (row >= grid.FixedRows() && grid.RowHidden(row) && OpeningRow() >= 0 && grid.Col() >= 0)
    grid.Select(OpeningRow(), grid.Col());
}

size_t RangeView::ShownCount() const {
  return std::accumulate(shown_.begin(), shown_.end(), size_t{0},
                         [](size_t sum, const RecordRun& run) { return sum + run.size(); });
}

bool RangeView::Shows(size_t record) const {
  const auto after = std::upper_bound(shown_.begin(), shown_.end(), record,
                                      [](size_t wanted, const RecordRun& run) { return wanted < run.begin; });
  return after != shown_.begin() && record < std::prev(after)->end;
}

RecordRun RangeView::ShownOf(const PeriodRun& period) const {
  RecordRun part{period.records.begin, period.records.begin};
  bool found = false;
  for (const RecordRun& run : shown_) {
    const size_t begin = std::max(run.begin, period.records.begin);
    const size_t end = std::min(run.end, period.records.end);
    if (begin >= end) continue;
    if (!found) part.begin = begin;
    part.end = end;
    found = true;
  }
  return part;
}

bool RangeView::ShowsWhole(const PeriodRun& period) const {
  return std::any_of(shown_.begin(), shown_.end(), [&](const RecordRun& run) {
    return run.begin <= period.records.begin && run.end >= period.records.end;
  });
}

// The opening row is the first one of a loaded journal, before all nodes.
int RangeView::OpeningRow() const {
  const platform::Grid& grid = control_.Grid();
  const int row = grid.FixedRows();
  return row < grid.Rows() && !grid.IsSubtotal(row) && grid.RecordOfRow(row) < 0 ? row : -1;
}

// Nodes and totals of periods without a shown line are hidden with them.
void RangeView::HideRows() {
  platform::Grid& grid = control_.Grid();
  const int first = std::max(OpeningRow() + 1, grid.FixedRows());
  grid.SetRowsHidden(first, grid.Rows(), !range_.IsAll());
  if (range_.IsAll()) return;
  for (const RecordRun& run : shown_)
    grid.SetRowsHidden(grid.RowOfRecord(run.begin), grid.RowOfRecord(run.end - 1) + 1, false);
}

void RangeView::HideTotals() {
  if (range_.IsAll()) return;
  platform::Grid& grid = control_.Grid();
  for (const PeriodRun& period : periods_) {
    const int node = grid.RowOfRecord(period.records.begin) - 1;
    const int total = grid.RowOfRecord(period.records.end - 1) + 1;
    const auto is_node = [&](int row) { return row >= grid.FixedRows() && row < grid.Rows() && grid.IsSubtotal(row); };
    if (is_node(node)) grid.SetRowsHidden(node, node + 1, ShownOf(period).size() == 0);
    if (is_node(total)) grid.SetRowsHidden(total, total + 1, !ShowsWhole(period));
  }
}

void RangeView::KeepOpening() {
  const platform::Grid& grid = control_.Grid();
  const int row = OpeningRow();
  std::vector<const char*> cells{keys::kPeriod, keys::kBillNo};
  cells.insert(cells.end(), std::begin(keys::kRunning), std::end(keys::kRunning));
  for (const char* key : cells) {
    const int column = grid.ColIndex(key);
    if (column >= 0) opening_.push_back({key, grid.TextMatrix(row, column), grid.CellData(row, column)});
  }
}

void RangeView::PutBackOpening() {
  platform::Grid& grid = control_.Grid();
  const int row = OpeningRow();
  for (const OpeningCell& cell : opening_) {
    const int column = grid.ColIndex(cell.key);
    if (row < 0 || column < 0) continue;
    grid.SetTextMatrix(row, column, cell.text);
    grid.SetCellData(row, column, cell.data);
  }
  opening_.clear();
}

// Restricted amounts stay hidden: their texts are copied as the line has them, and no numbers beside them.
void RangeView::BringForward() {
  platform::Grid& grid = control_.Grid();
  const int row = OpeningRow();
  if (row < 0 || periods_.empty()) return;
  size_t before = shown_.empty() ? 0 : shown_.front().begin;
  if (shown_.empty()) {
    // The lines before the range are those that an open end would show.
    const std::vector<RecordRun> from = RecordsInside({range_.from, {}}, periods_, grid);
    before = !range_.from ? 0 : from.empty() ? grid.RecordCount() : from.front().begin;
  }
  if (before == 0) return;
  KeepOpening();
  const int line = grid.RowOfRecord(before - 1);
  for (const char* key : keys::kRunning) {
    const int column = grid.ColIndex(key);
    if (column < 0) continue;
    const std::string text = grid.TextMatrix(line, column);
    const bool hidden = text == "-";
    grid.SetTextMatrix(row, column, text);
    grid.SetCellData(row, column, hidden ? base::Value() : grid.CellData(line, column));
  }
  const std::string begin = range_.from ? range_.from->Caption() : std::string();
  grid.SetTextMatrix(row, grid.ColIndex(keys::kBillNo), begin + "承前");
}

void RangeView::NameRange() {
  if (named_caption_.empty() || control_.Caption() != named_caption_) caption_ = control_.Caption();
  named_caption_.clear();
  if (range_.IsAll()) {
    control_.SetCaption(caption_);
    return;
  }
  control_.SetCaption(caption_ + std::string(kRangeInCaption) + range_.Caption());
  named_caption_ = control_.Caption();
}

void ShowRange(control::Stockbook& control, const JournalRange& range) {
  if (range.IsAll()) return;
  RangeView view(control);
  view.JournalLoaded();
  view.Show(range);
}

}  // namespace stockbook::app
