// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <set>
#include <string>

#include "stockbook/window/shown_journal.h"
#include "stockbook/window/window_memory.h"

namespace stockbook::app {

// Keeps in the memory of the window what the user does to the journals of an inventory, and gives it back when the
// inventory is opened again: the last subject, of each journal type the columns, the closed periods and the range,
// and the place in each journal.
class JournalKeeper : public QObject {
  Q_OBJECT

 public:
  JournalKeeper(qt::StockbookWidget& stockbook, ShownJournal& journal, WindowMemory& memory);

  // The journals of another inventory follow; `name` tells it from others.
  void OpenInventory(const std::string& name);
  // Before the window goes, or another inventory comes.
  void Keep();
  // To where the journal that was loaded was left, as soon as it shows its range; does nothing if that is not known, or
  // not there.
  void ReturnToPlace();
  // Nothing of what is in the window now is kept until the next load.
  void Forget();

 private:
  void Arrive(bool loaded);
  void ClosePeriods(int journal_type);
  void RecallRange(int journal_type);
  QStringList ClosedPeriods() const;

  qt::StockbookWidget& stockbook_;
  ShownJournal& journal_;
  WindowMemory& memory_;
  std::set<int> arrived_;  // the journal types that were shown since the inventory was opened
  bool forgotten_ = false;
};

}  // namespace stockbook::app
