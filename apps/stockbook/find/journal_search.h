// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/find/find_words.h"
#include "stockbook/find/row_bits.h"
#include "stockbook/find/searched_columns.h"
#include "stockbook/sheet/contents/sheet.h"

namespace stockbook::app {

// What is searched for: rows that show every word in some cell. A plain value.
struct FindQuery {
  std::string text;
  FindOptions options;

  bool operator==(const FindQuery&) const = default;
};

// Finds rows by what their cells show, in all columns that are not hidden, closed periods included; rows that were
// hidden one by one are left out. It looks up once what the columns hold, and remembers what it found: a longer word,
// or one word more, is looked for only among the rows that had the shorter ones. It notices when contents, rows or
// columns have changed; of formats it is told by Forget. Borrows the sheet. The first search of a journal costs about a
// microsecond and 93 bytes a row, the others a few nanoseconds, more where many rows look as if they might have the
// word.
class JournalSearch {
 public:
  explicit JournalSearch(const sheet::Sheet& sheet) : sheet_(sheet) {}

  // The rows that have all the words, ascending, valid until the next call; none if there are no words. Throws
  // platform::Error with a message for the user if a pattern is malformed.
  const std::vector<int>& Find(const FindQuery& query);
  // Whether the shown text has one of the words of the last query.
  bool HasAnyWord(std::string_view text) const;
  bool HasWords() const { return !words_.empty(); }
  // Gives back the memory; everything is looked up again at the next search.
  void Forget();
  // Forgets what words were found, and keeps what the columns hold.
  void ForgetWords() { remembered_.clear(); }
  // Keeps what words were found, and forgets what the columns hold.
  void DropIndex() { columns_.reset(); }
  // Whether the next search of other words need not look up what the columns hold.
  bool IsIndexed() const { return columns_ != nullptr && revision_ == Revision(); }
  size_t MemoryBytes() const { return columns_ == nullptr ? 0 : columns_->MemoryBytes(); }

 private:
  // What a query found among the records.
  struct Found {
    std::vector<std::string> words;
    FindOptions options;
    RowBits rows;
    size_t count = 0;
  };

  // Another number whenever contents, rows or columns are others.
  int64_t Revision() const;
  void Refresh();
  void ReadWords(const FindQuery& query);
  const RowBits& FindRecords();
  // The smallest remembered set that the words of the query can only narrow; nullptr if there is none.
  const Found* Wider() const;
  void ListRows(const RowBits& records);
  void AddInserted(int row, int64_t count);
  bool ShowsAllWords(int row) const;
  void DropHidden();

  const sheet::Sheet& sheet_;
  std::unique_ptr<SearchedColumns> columns_;
  int64_t revision_ = -1;
  FindOptions options_;
  std::vector<std::string> texts_;  // of the words
  std::vector<FindWord> words_;
  std::deque<Found> remembered_;
  std::vector<int> rows_;
};

}  // namespace stockbook::app
