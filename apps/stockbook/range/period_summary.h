// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "stockbook/base/money.h"
#include "stockbook/platform/grid.h"
#include "stockbook/range/range_view.h"

namespace stockbook::app {

// A quantity and what it is worth; no amount where it is hidden, or too large to be added up.
struct StockFigures {
  double quantity = 0;
  std::optional<base::Money> amount;
};

// One period of a journal, or the part of it that is shown. In the supplier and customer journals opening and closing
// are what was received or issued so far, as the journal's stock columns are.
struct PeriodLine {
  std::string caption;   // "2025年03月"
  RecordRun records;     // from the first to the last of them that is shown
  bool is_whole = true;  // of a total: no line between the first and the last one is left out
  StockFigures opening;
  StockFigures in;
  StockFigures out;
  StockFigures closing;
  std::optional<double> price;  // of what there is at the end; nothing where amounts are hidden
};

// The periods that are shown, in the journal's order, and below several of them their total (合计), from the opening of
// the first to the closing of the last. Reads some columns once.
std::vector<PeriodLine> SummarizePeriods(const platform::Grid& grid, const RangeView& view);

// Whether the journal shows signs in place of amounts.
bool HidesAmounts(const platform::Grid& grid);

// What there was before a record: after the line before it, or in the opening row.
struct StockBefore {
  StockFigures figures;
  double price = 0;
};
StockBefore StockBeforeRecord(const platform::Grid& grid, size_t record);

}  // namespace stockbook::app
