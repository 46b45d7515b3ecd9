// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/find/journal_search.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::app {

// Where to go next.
enum class FindStep { kHere, kNext, kPrevious };

// Finds rows by what their cells show and steps through them, wrapping around at the ends. A hit in a closed period
// opens it. It searches again at every step, which costs next to nothing as long as the journal is the same.
class JournalFinder : public QObject {
  Q_OBJECT

 public:
  explicit JournalFinder(qt::StockbookWidget& stockbook);

  // Moves to the hit at, after or before the current row, wrapping around at the ends. For new words the next hit may
  // be the current row itself. Does nothing if the text has no words or no row contains them.
  void Go(const FindQuery& query, FindStep step);
  // Moves to a hit, from 0.
  void GoTo(size_t index);
  // There are no hits until the next search; marked words stay.
  void Clear();
  // Gives back the memory that only searching for other words needs.
  void Rest() { search_.DropIndex(); }

  // The rows found by the last search, ascending, and the position of the current row among them, from 1; 0 for none.
  const std::vector<int>& rows() const { return rows_; }
  size_t hits() const { return rows_.size(); }
  size_t place() const { return place_; }
  // Why nothing could be searched for; empty if it could.
  const QString& error() const { return error_; }

  bool HasWords() const { return search_.HasWords(); }
  // Whether the text that a cell shows has one of the words.
  bool HasAnyWord(std::string_view shown) const { return search_.HasAnyWord(shown); }
  // The first shown cell of the row with one of the words, or -1.
  int FirstColumnWithAWord(int row) const;

 signals:
  // The rows or the words are others.
  void Changed();

 private:
  void Search(const FindQuery& query);
  size_t PlaceOf(FindStep step) const;

  qt::StockbookWidget& stockbook_;
  JournalSearch search_;
  FindQuery query_;
  std::vector<int> rows_;
  size_t place_ = 0;
  QString error_;
};

}  // namespace stockbook::app
