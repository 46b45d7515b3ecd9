// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/value.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/range/journal_periods.h"

namespace stockbook::app {

// What stands between the caption of a journal and the range that is shown of it.
inline constexpr std::string_view kRangeInCaption = "   ";

// Shows a range of a loaded journal: rows outside it are hidden, and the opening row tells what the line before the
// first shown one had in stock, as what is brought forward (承前). The total of a period of which only a part is shown
// is hidden, since it sums the whole. The caption names the range. Nothing is loaded or computed again, and nothing of
// the journal is lost: another range, or all of it, can be shown at any time. Borrows the control. Costs one pass over
// the periods, over the dates where days are given, and O(runs) of rows.
class RangeView {
 public:
  explicit RangeView(control::Stockbook& control) : control_(control) {}

  // To be called after every load, before Show: what the control shows is all of a new journal.
  void JournalLoaded();
  void Show(JournalRange range);
  // Whether the grid has other records than were there when a journal was loaded.
  bool IsStale() const;

  const JournalRange& range() const { return range_; }
  const std::vector<PeriodRun>& periods() const { return periods_; }
  // The records that are shown, in ascending order.
  const std::vector<RecordRun>& shown() const { return shown_; }
  size_t ShownCount() const;
  bool Shows(size_t record) const;
  // The part of a period's records that is shown, from the first to the last of them; empty at its begin if none is.
  RecordRun ShownOf(const PeriodRun& period) const;
  // Whether all of a period's records are shown.
  bool ShowsWhole(const PeriodRun& period) const;

 private:
  // What the opening row had before it told what is brought forward.
  struct OpeningCell {
    std::string key;
    std::string text;
    base::Value data;
  };

  void HideRows();
  void HideTotals();
  void BringForward();
  void KeepOpening();
  void PutBackOpening();
  void NameRange();
  int OpeningRow() const;

  control::Stockbook& control_;
  JournalRange range_;
  std::vector<PeriodRun> periods_;
  std::vector<RecordRun> shown_;
  std::vector<OpeningCell> opening_;  // empty while the row is as it was loaded
  std::string caption_;               // without the range
  std::string named_caption_;         // with it; empty while it is not named
};

// Shows the range of a journal that was just loaded, for as long as it is shown.
void ShowRange(control::Stockbook& control, const JournalRange& range);

}  // namespace stockbook::app
