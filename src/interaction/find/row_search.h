// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "grid/row_runs.h"
#include "interaction/find/column_matcher.h"
#include "interaction/find/search_terms.h"
#include "stockbook/platform/grid_table.h"

namespace stockbook::interaction {

// Finds, block by block, the rows of a grid that contain every term, each in at least one visible column. Loaded
// records are searched column by column; inserted rows, and columns with edited cells, are read cell by cell. The grid
// may change in any way between two blocks; each block searches the grid as it is then. Borrows the grid and the terms
// and changes neither.
class RowSearch {
 public:
  RowSearch(const platform::GridTable& grid, const SearchTerms& terms);

  // Searches a block of rows from `row` on, puts the rows found into `hits` in ascending order and returns the row
  // after the block.
  int SearchBlock(int row, std::vector<int>& hits);
  // The rows of the last block.
  const grid::RowRun& block() const { return block_; }
  // Whether the grid has changed since the last block, so that its results may be out of date.
  bool IsOutdated() const;

 private:
  // A searched column; read cell by cell if `loaded` is nullptr.
  struct Searched {
    int column = 0;
    const columns::Column* loaded = nullptr;
  };
  struct Matchers {
    std::unique_ptr<NumberMatcher> numbers;
    std::vector<std::unique_ptr<ColumnMatcher>> columns;
  };

  void ReadColumns();
  // The matchers of a group's columns; those that read texts one by one come last.
  std::vector<std::unique_ptr<ColumnMatcher>>& MatchersOf(size_t group);
  void SearchRecords(const grid::RowRun& run, std::vector<int>& hits);
  void SearchGroup(size_t group, const grid::RowRun& run);
  // Lists the rows that lack terms but would have them all together with the reachable ones.
  void ListUndecided(uint8_t all, uint8_t reachable);
  void AddFoundByCell(const TermGroup& terms, const grid::RowRun& run);
  bool RowMatches(int row) const;
  bool GroupMatches(int row, const TermGroup& terms) const;

  const platform::GridTable& grid_;
  const SearchTerms& terms_;
  int64_t revision_ = -1;
  int64_t text_revision_ = -1;
  int64_t column_revision_ = -1;
  int64_t loaded_revision_ = -1;
  std::vector<Searched> columns_;
  std::vector<Matchers> matchers_;  // by group; empty until needed
  size_t block_rows_ = 0;
  grid::RowRun block_;
  // By row of the block:
  std::vector<uint8_t> alive_;
  std::vector<uint8_t> found_;       // the terms found; all of them if the row is settled
  std::vector<uint16_t> undecided_;  // rows, ascending
};

}  // namespace stockbook::interaction
