// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_finder.h"

#include <QApplication>
#include <algorithm>

#include "qt/sheet/text.h"
#include "stockbook/base/scope_exit.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/row_sight.h"

namespace stockbook::app {
namespace {

// Looking up what so many lines hold takes a noticeable time.
constexpr size_t kManyLines = 200'000;

}  // namespace

JournalFinder::JournalFinder(qt::StockbookWidget& stockbook) : stockbook_(stockbook), search_(stockbook.sheet()) {
  // Numbers may be shown in other formats.
  connect(&stockbook, &qt::StockbookWidget::AfterFormatted, this, [this] { search_.Forget(); });
}

void JournalFinder::Search(const FindQuery& query) {
  const std::vector<int> before = std::move(rows_);
  const bool same_words = query == query_;
  query_ = query;
  error_.clear();
  rows_.clear();
  const bool takes_long = !search_.IsIndexed() && stockbook_.sheet().RecordCount() >= kManyLines;
  if (takes_long) QApplication::setOverrideCursor(Qt::WaitCursor);
  const base::ScopeExit restored([takes_long] {
    if (takes_long) QApplication::restoreOverrideCursor();
  });
  try {
    rows_ = search_.Find(query);
  } catch (const platform::Error& error) {
    error_ = qt::ToQString(error.what());
  }
  if (!same_words || rows_ != before) emit Changed();
}

void JournalFinder::Clear() {
  rows_.clear();
  place_ = 0;
  emit Changed();
}

void JournalFinder::Go(const FindQuery& query, FindStep step) {
  const bool anew = query != query_;
  Search(query);
  place_ = 0;
  if (rows_.empty()) return;
  GoTo(PlaceOf(anew && step == FindStep::kNext ? FindStep::kHere : step));
}

void JournalFinder::GoTo(size_t index) {
  if (index >= rows_.size()) return;
  const int row = rows_[index];
  const platform::Grid& grid = stockbook_.Grid();
  if (row >= grid.Rows()) return;
  place_ = index + 1;
  const int column = FirstColumnWithAWord(row);
  BringIntoSight(stockbook_.sheet(), row, column >= 0 ? column : std::max(grid.Col(), grid.FixedCols()));
}

int JournalFinder::FirstColumnWithAWord(int row) const {
  const platform::Grid& grid = stockbook_.Grid();
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column) {
    if (!grid.ColHidden(column) && HasAnyWord(grid.DisplayText(row, column))) return column;
  }
  return -1;
}

size_t JournalFinder::PlaceOf(FindStep step) const {
  const int row = stockbook_.Row();
  const auto after = step == FindStep::kNext ? std::upper_bound(rows_.begin(), rows_.end(), row)
                                             : std::lower_bound(rows_.begin(), rows_.end(), row);
  const auto index = static_cast<size_t>(after - rows_.begin());
  if (step == FindStep::kPrevious) return (index + rows_.size() - 1) % rows_.size();
  return index % rows_.size();
}

}  // namespace stockbook::app
