// SPDX-License-Identifier: MIT
#include "interaction/find/row_search.h"

#include <algorithm>
#include <iterator>

namespace stockbook::interaction {
namespace {

// Blocks grow while nothing changes, so that little is searched twice if every hit changes the grid.
constexpr size_t kLeastBlock = 64;
constexpr size_t kMostBlock = 4096;

}  // namespace

RowSearch::RowSearch(const platform::GridTable& grid, const SearchTerms& terms) : grid_(grid), terms_(terms) {
  matchers_.resize(terms.groups().size());
  ReadColumns();
}

bool RowSearch::IsOutdated() const {
  return grid_.Revision() != revision_ || grid_.TextRevision() != text_revision_ ||
         grid_.ColRevision() != column_revision_;
}

void RowSearch::ReadColumns() {
  const bool loaded_stays = grid_.LoadedRevision() == loaded_revision_;
  revision_ = grid_.Revision();
  text_revision_ = grid_.TextRevision();
  column_revision_ = grid_.ColRevision();
  loaded_revision_ = grid_.LoadedRevision();
  block_rows_ = kLeastBlock;
  columns_.clear();
  for (int column = grid_.FixedCols(); column < grid_.Cols(); ++column) {
    if (grid_.ColHidden(column)) continue;
    const columns::Column* loaded = grid::UneditedColumn(grid_, column);
    // Nothing loaded and nothing written: all records are blank there.
    if (loaded != nullptr || grid_.HasEditedRecords(column)) columns_.push_back({column, loaded});
  }
  for (Matchers& matchers : matchers_) {
    if (!loaded_stays) matchers.columns.clear();
    // Unchanged columns keep the results of searching their texts.
    std::erase_if(matchers.columns, [&](const auto& matcher) {
      return std::none_of(columns_.begin(), columns_.end(),
                          [&](const Searched& searched) { return searched.loaded == matcher->column(); });
    });
  }
}

std::vector<std::unique_ptr<ColumnMatcher>>& RowSearch::MatchersOf(size_t group) {
  const TermGroup& terms = terms_.groups()[group];
  std::unique_ptr<NumberMatcher>& numbers = matchers_[group].numbers;
  if (numbers == nullptr) numbers = std::make_unique<NumberMatcher>(terms);
  auto& matchers = matchers_[group].columns;
  for (const Searched& searched : columns_) {
    const bool known = std::any_of(matchers.begin(), matchers.end(),
                                   [&](const auto& matcher) { return searched.loaded == matcher->column(); });
    if (searched.loaded != nullptr && !known)
      matchers.push_back(std::make_unique<ColumnMatcher>(*searched.loaded, terms, *numbers));
  }
  std::stable_sort(matchers.begin(), matchers.end(),
                   [](const auto& left, const auto& right) { return left->HasManyTexts() < right->HasManyTexts(); });
  return matchers;
}

int RowSearch::SearchBlock(int row, std::vector<int>& hits) {
  hits.clear();
  if (IsOutdated()) ReadColumns();
  grid::RowRun& run = block_;
  run = grid::RowRunAt(grid_, row);
  if (run.count == 0) return grid_.Rows();
  if (run.IsInserted()) {
    if (RowMatches(row)) hits.push_back(row);
    return run.End();
  }
  run.count = static_cast<int>(std::min(block_rows_, static_cast<size_t>(run.count)));
  block_rows_ = std::min(block_rows_ * 2, kMostBlock);
  SearchRecords(run, hits);
  return run.End();
}

void RowSearch::SearchRecords(const grid::RowRun& run, std::vector<int>& hits) {
  alive_.assign(static_cast<size_t>(run.count), 1);
  for (size_t group = 0; group < terms_.groups().size(); ++group) {
    SearchGroup(group, run);
    const uint8_t all = terms_.groups()[group].all();
    uint8_t any = 0;
    for (size_t at = 0; at < alive_.size(); ++at) {
      alive_[at] &= static_cast<uint8_t>(found_[at] == all);
      any |= alive_[at];
    }
    if (any == 0) return;
  }
  for (size_t at = 0; at < alive_.size(); ++at) {
    if (alive_[at] != 0) hits.push_back(run.row + static_cast<int>(at));
  }
}

void RowSearch::SearchGroup(size_t group, const grid::RowRun& run) {
  const TermGroup& terms = terms_.groups()[group];
  const auto& matchers = MatchersOf(group);
  const bool by_cell = std::any_of(columns_.begin(), columns_.end(),
                                   [](const Searched& searched) { return searched.loaded == nullptr; });
  uint8_t known = 0;
  uint8_t open = by_cell ? terms.all() : 0;
  for (const auto& matcher : matchers) {
    known |= matcher->known();
    open |= matcher->open();
  }
  found_.assign(alive_.size(), 0);
  if ((known | open) != terms.all()) return;
  for (size_t at = 0; at < alive_.size(); ++at) found_[at] = alive_[at] != 0 ? 0 : terms.all();
  const auto record = static_cast<size_t>(run.record);
  for (const auto& matcher : matchers) matcher->AddKnown(record, found_);
  ListUndecided(terms.all(), open);
  for (auto matcher = matchers.begin(); matcher != matchers.end() && !undecided_.empty(); ++matcher) {
    if ((*matcher)->open() == 0) continue;
    uint8_t rest = by_cell ? terms.all() : 0;
    for (auto later = std::next(matcher); later != matchers.end(); ++later) rest |= (*later)->open();
    (*matcher)->AddOpen(record, undecided_, rest, found_);
    std::erase_if(undecided_,
                  [&](uint16_t at) { return found_[at] == terms.all() || (found_[at] | rest) != terms.all(); });
  }
  if (by_cell) AddFoundByCell(terms, run);
}

void RowSearch::ListUndecided(uint8_t all, uint8_t reachable) {
  undecided_.resize(found_.size());
  size_t count = 0;
  for (size_t at = 0; at < found_.size(); ++at) {
    undecided_[count] = static_cast<uint16_t>(at);
    // Both are computed, because a jump would cost more.
    count += static_cast<size_t>(found_[at] != all) & static_cast<size_t>((found_[at] | reachable) == all);
  }
  undecided_.resize(count);
}

void RowSearch::AddFoundByCell(const TermGroup& terms, const grid::RowRun& run) {
  for (const uint16_t at : undecided_) {
    for (auto searched = columns_.begin(); searched != columns_.end() && found_[at] != terms.all(); ++searched) {
      if (searched->loaded != nullptr) continue;
      const std::string text = grid_.TextMatrix(run.row + at, searched->column);
      found_[at] |= terms.FoundIn(text, static_cast<uint8_t>(terms.all() & ~found_[at]));
    }
  }
}

bool RowSearch::RowMatches(int row) const {
  return std::all_of(terms_.groups().begin(), terms_.groups().end(),
                     [&](const TermGroup& terms) { return GroupMatches(row, terms); });
}

bool RowSearch::GroupMatches(int row, const TermGroup& terms) const {
  uint8_t found = 0;
  for (int column = grid_.FixedCols(); column < grid_.Cols() && found != terms.all(); ++column) {
    if (grid_.ColHidden(column)) continue;
    found |= terms.FoundIn(grid_.TextMatrix(row, column), static_cast<uint8_t>(terms.all() & ~found));
  }
  return found == terms.all();
}

}  // namespace stockbook::interaction
