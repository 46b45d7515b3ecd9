// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_finder.h"

#include <algorithm>

namespace stockbook::app {

JournalFinder::JournalFinder(qt::StockbookWidget& stockbook) : stockbook_(stockbook) {
  connect(&stockbook, &qt::StockbookWidget::FindMsg, this, &JournalFinder::Take);
}

// A hit is the text of the row, a blank, a bar and the row's number; the text may contain bars itself.
void JournalFinder::Take(const QString& message) {
  if (message == QLatin1String("#BEGIN#")) {
    rows_.clear();
    return;
  }
  bool is_number = false;
  const int row = QStringView(message).mid(message.lastIndexOf(QLatin1Char('|')) + 1).toInt(&is_number);
  if (is_number && message.contains(QLatin1Char('|'))) rows_.push_back(row);
}

void JournalFinder::Search(const QString& words) {
  words_ = words;
  rows_.clear();
  stockbook_.Find(words);
  revision_ = stockbook_.Grid().Revision();
}

void JournalFinder::Go(const QString& words, FindStep step) {
  const bool anew = words != words_;
  if (anew || revision_ != stockbook_.Grid().Revision()) Search(words);
  place_ = 0;
  if (rows_.empty()) return;
  const size_t index = PlaceOf(anew && step == FindStep::kNext ? FindStep::kHere : step);
  OpenPeriodsOf(rows_[index]);
  stockbook_.SetRow(rows_[index]);
  place_ = index + 1;
}

size_t JournalFinder::PlaceOf(FindStep step) const {
  const int row = stockbook_.Row();
  const auto after = step == FindStep::kNext ? std::upper_bound(rows_.begin(), rows_.end(), row)
                                             : std::lower_bound(rows_.begin(), rows_.end(), row);
  const auto index = static_cast<size_t>(after - rows_.begin());
  if (step == FindStep::kPrevious) return (index + rows_.size() - 1) % rows_.size();
  return index % rows_.size();
}

// The nodes above the row are the last ones before it on each higher level.
void JournalFinder::OpenPeriodsOf(int row) {
  platform::Grid& grid = stockbook_.Grid();
  std::vector<int> over;
  for (int node = grid.NextSubtotal(grid.FixedRows()); node >= 0 && node < row; node = grid.NextSubtotal(node + 1)) {
    while (!over.empty() && grid.RowOutlineLevel(over.back()) >= grid.RowOutlineLevel(node)) over.pop_back();
    over.push_back(node);
  }
  for (const int node : over) {
    if (grid.RowOutlineLevel(node) < grid.RowOutlineLevel(row) && grid.IsCollapsed(node))
      grid.SetIsCollapsed(node, false);
  }
}

}  // namespace stockbook::app
