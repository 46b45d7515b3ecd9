// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_keeper.h"

#include <QSet>

#include "platform/grid_guards.h"
#include "qt/text.h"

namespace stockbook::app {
namespace {

constexpr int kKeptJournalTypes = 4;

QString ClosedName() { return QStringLiteral("closed"); }

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
  if (arrived_.insert(type).second) ClosePeriods(type);
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
