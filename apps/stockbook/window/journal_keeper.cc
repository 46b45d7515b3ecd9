// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_keeper.h"

#include <QSet>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/platform/grid_guards.h"

namespace stockbook::app {
namespace {

constexpr int kKeptJournalTypes = 4;

QString ClosedName() { return QStringLiteral("closed"); }
QString RangeName() { return QStringLiteral("range"); }

QString BoundText(const std::optional<RangeBound>& bound) { return bound ? qt::ToQString(bound->Text()) : QString(); }

// The two ends, as they can be typed; all of a journal for anything else.
JournalRange RangeFrom(const QStringList& ends) {
  JournalRange range;
  if (ends.size() != 2) return range;
  if (const auto from = ReadBounds(qt::FromQString(ends.front()))) range.from = from->first;
  if (const auto to = ReadBounds(qt::FromQString(ends.back()))) range.to = to->last;
  return range.IsBackward() ? JournalRange() : range;
}

}  // namespace

JournalKeeper::JournalKeeper(qt::StockbookWidget& stockbook, ShownJournal& journal, WindowMemory& memory)
    : stockbook_(stockbook), journal_(journal), memory_(memory) {
  connect(&journal_, &ShownJournal::Leaving, this, &JournalKeeper::Keep);
  connect(&journal_, &ShownJournal::Arrived, this, &JournalKeeper::Arrive);
}

void JournalKeeper::OpenInventory(const std::string& name) {
  memory_.SetInventory(name);
  arrived_.clear();
  forgotten_ = false;
  for (int type = 0; type < kKeptJournalTypes; ++type) {
    journal_.SetChanges(type, memory_.Columns(type).value_or(ColumnChanges()));
  }
}

void JournalKeeper::Keep() {
  if (!journal_.options().has_value() || forgotten_) return;
  const int type = journal_.options()->journal_type;
  memory_.SetColumns(type, journal_.ChangesOf(type));
  memory_.SetOfJournals(type, ClosedName(), ClosedPeriods());
  const JournalRange& range = journal_.options()->range;
  memory_.SetOfJournals(type, RangeName(), QStringList{BoundText(range.from), BoundText(range.to)});
  memory_.SetPlace(*journal_.options(), ReadingPlace::Keep(stockbook_.sheet()));
}

void JournalKeeper::ReturnToPlace() {
  if (!journal_.options().has_value()) return;
  if (auto place = memory_.Place(*journal_.options())) ReadingPlace(std::move(*place)).GoBack(stockbook_.sheet());
}

void JournalKeeper::Forget() {
  forgotten_ = true;
  for (int type = 0; type < kKeptJournalTypes; ++type) journal_.SetChanges(type, {});
}

void JournalKeeper::Arrive(bool loaded) {
  if (!loaded) return;
  forgotten_ = false;
  memory_.SetLastSubject(*journal_.options());
  const int type = journal_.options()->journal_type;
  if (!arrived_.insert(type).second) return;
  ClosePeriods(type);
  RecallRange(type);
}

// A range that was asked for, or that the journal before had, goes before the one of the last run.
void JournalKeeper::RecallRange(int journal_type) {
  if (!journal_.options()->range.IsAll()) return;
  journal_.SetRange(RangeFrom(memory_.OfJournals(journal_type, RangeName()).toStringList()));
}

QStringList JournalKeeper::ClosedPeriods() const {
  const platform::Grid& grid = stockbook_.Grid();
  QStringList closed;
  if (grid.OutlineCol() < 0) return closed;
  for (int node = grid.NextSubtotal(grid.FixedRows()); node >= 0; node = grid.NextSubtotal(node + 1)) {
    if (grid.IsCollapsed(node)) closed.append(qt::ToQString(grid.TextMatrix(node, grid.OutlineCol())));
  }
  return closed;
}

void JournalKeeper::ClosePeriods(int journal_type) {
  const QStringList list = memory_.OfJournals(journal_type, ClosedName()).toStringList();
  const QSet<QString> closed(list.begin(), list.end());
  platform::Grid& grid = stockbook_.Grid();
  if (closed.isEmpty() || grid.OutlineCol() < 0) return;
  const auto redraw = platform::RedrawOff(grid);
  for (int node = grid.NextSubtotal(grid.FixedRows()); node >= 0; node = grid.NextSubtotal(node + 1)) {
    if (closed.contains(qt::ToQString(grid.TextMatrix(node, grid.OutlineCol())))) grid.SetIsCollapsed(node, true);
  }
}

}  // namespace stockbook::app
