// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "interaction/find/column_matcher.h"
#include "interaction/find/search_terms.h"
#include "platform/grid.h"
#include "platform/row_runs.h"

namespace stockbook::interaction {

// Finds the rows of a grid that hold every term, each in at least one of the columns that are not hidden, block by
// block. Records are searched column by column as they were loaded; inserted rows, and columns in which cells were
// written, are read cell by cell. Between two blocks anything may happen to the grid: a block is searched as the grid
// is then. Borrows the grid and the terms; changes neither.
class RowSearch {
 public:
  RowSearch(const platform::Grid& grid, const SearchTerms& terms);

  // Searches some rows from `row` on, puts those found into `hits` in ascending order and returns the row behind the
  // block.
  int SearchBlock(int row, std::vector<int>& hits);
  // The rows that were searched last.
  const platform::RowRun& block() const { return block_; }
  // Whether the grid has changed since the last block, so that what was found in it may no longer be so.
  bool IsOutdated() const;

 private:
  // A column that is searched; by cell where `loaded` is nullptr.
  struct Searched {
    int column = 0;
    const columns::Column* loaded = nullptr;
  };
  struct Matchers {
    std::unique_ptr<NumberMatcher> numbers;
    std::vector<std::unique_ptr<ColumnMatcher>> columns;
  };

  void ReadColumns();
  // The matchers of a group's columns, those that read texts one by one last.
  std::vector<std::unique_ptr<ColumnMatcher>>& MatchersOf(size_t group);
  void SearchRecords(const platform::RowRun& run, std::vector<int>& hits);
  void SearchGroup(size_t group, const platform::RowRun& run);
  // Lists the rows that lack terms but would have all with the reachable ones.
  void ListUndecided(uint8_t all, uint8_t reachable);
  void AddFoundByCell(const TermGroup& terms, const platform::RowRun& run);
  bool RowMatches(int row) const;
  bool GroupMatches(int row, const TermGroup& terms) const;

  const platform::Grid& grid_;
  const SearchTerms& terms_;
  int64_t revision_ = -1;
  int64_t text_revision_ = -1;
  int64_t column_revision_ = -1;
  int64_t loaded_revision_ = -1;
  std::vector<Searched> columns_;
  std::vector<Matchers> matchers_;  // by group; empty until needed
  size_t block_rows_ = 0;
  platform::RowRun block_;
  // By row of the block:
  std::vector<uint8_t> alive_;
  std::vector<uint8_t> found_;       // all terms where the row needs no more looking
  std::vector<uint16_t> undecided_;  // rows, ascending
};

}  // namespace stockbook::interaction
