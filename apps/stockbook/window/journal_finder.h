// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <vector>

#include "qt/stockbook_widget.h"

namespace stockbook::app {

// Where to look next for the words.
enum class FindStep { kHere, kNext, kPrevious };

// Asks the control to find words, keeps the rows that it tells of, and goes from one to another, around at the ends.
// Hits in closed periods open them. When the rows have become others since (a reload), it asks anew. A step costs the
// search, or O(log hits + nodes).
class JournalFinder : public QObject {
  Q_OBJECT

 public:
  explicit JournalFinder(qt::StockbookWidget& stockbook);

  // Makes the hit at, behind or before the current row the current one; the first and the last follow each other. Of
  // new words the next hit is the one here, if there is one.
  // Nothing when the text has no words or no row has them.
  void Go(const QString& words, FindStep step);
  // Rows that have the words of the last search, and the place of the current row among them, from 1; 0 for none.
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
