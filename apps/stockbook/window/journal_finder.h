// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <vector>

#include "qt/stockbook_widget.h"

namespace stockbook::app {

// Where to go next.
enum class FindStep { kHere, kNext, kPrevious };

// Asks the control to find words, keeps the rows that it reports, and steps through them, wrapping around at the ends.
// A hit in a closed period opens it. If the rows have changed since (a reload), it searches again. A step costs a
// search, or O(log hits + nodes).
class JournalFinder : public QObject {
  Q_OBJECT

 public:
  explicit JournalFinder(qt::StockbookWidget& stockbook);

  // Moves to the hit at, after or before the current row, wrapping around at the ends. For new words the next hit may
  // be the current row itself. Does nothing if the text has no words or no row contains them.
  void Go(const QString& words, FindStep step);
  // The number of rows found by the last search, and the position of the current row among them, from 1; 0 for none.
  size_t hits() const { return rows_.size(); }
  size_t place() const { return place_; }

 private:
  void Take(const QString& message);
  void Search(const QString& words);
  size_t PlaceOf(FindStep step) const;
  void OpenPeriodsOf(int row);

  qt::StockbookWidget& stockbook_;
  QString words_;
  std::vector<int> rows_;
  size_t place_ = 0;
  int64_t revision_ = -1;
};

}  // namespace stockbook::app
