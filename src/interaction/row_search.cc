// SPDX-License-Identifier: MIT
#include "interaction/row_search.h"

#include <algorithm>
#include <iterator>

namespace stockbook::interaction {
namespace {

// A block grows while nothing changes, so that little is searched twice where every hit changes the grid.
constexpr size_t kLeastBlock = 64;
constexpr size_t kMostBlock = 4096;

}  // namespace

RowSearch::RowSearch(const platform::Grid& grid, const SearchTerms& terms) : grid_(grid), terms_(terms) {
  matchers_.resize(terms.groups().size());
  ReadColumns();
}

bool RowSearch::IsOutdated() const {
  if (grid_.Revision() != revision_ || grid_.TextRevision() != text_revision_) return true;
  for (size_t column = 0; column < hidden_.size(); ++column) {
    if (grid_.ColHidden(static_cast<int>(column)) != hidden_[column]) return true;
  }
  return false;
}

void RowSearch::ReadColumns() {
  const bool loaded_stays = grid_.LoadedRevision() == loaded_revision_;
  revision_ = grid_.Revision();
  text_revision_ = grid_.TextRevision();
  loaded_revision_ = grid_.LoadedRevision();
  block_rows_ = kLeastBlock;
  hidden_.clear();
  columns_.clear();
  for (int column = 0; column < grid_.Cols(); ++column) {
    hidden_.push_back(grid_.ColHidden(column));
    if (column < grid_.FixedCols() || hidden_.back()) continue;
    const platform::Column* loaded = grid_.HasEditedRecords(column) ? nullptr : grid_.LoadedText(column);
    // Nothing loaded and nothing written: all records are blank there.
    if (loaded != nullptr || grid_.HasEditedRecords(column)) columns_.push_back({column, loaded});
  }
  for (Matchers& matchers : matchers_) {
    if (!loaded_stays) matchers.columns.clear();
    // The same columns as before keep what was found out about their texts.
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
                   [](const auto& left, const auto& right) { return left->Cost() < right->Cost(); });
  return matchers;
}

int RowSearch::SearchBlock(int row, std::vector<int>& hits) {
  hits.clear();
  if (IsOutdated()) ReadColumns();
  platform::RowRun run = platform::RowRunAt(grid_, row);
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

void RowSearch::SearchRecords(const platform::RowRun& run, std::vector<int>& hits) {
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

void RowSearch::SearchGroup(size_t group, const platform::RowRun& run) {
  const TermGroup& terms = terms_.groups()[group];
  auto& matchers = MatchersOf(group);
  const bool by_cell = std::any_of(columns_.begin(), columns_.end(),
                                   [](const Searched& searched) { return searched.loaded == nullptr; });
  uint8_t possible = by_cell ? terms.all() : 0;
  for (const auto& matcher : matchers) possible |= matcher->possible();
  found_.assign(alive_.size(), 0);
  if (possible != terms.all()) return;
  for (size_t at = 0; at < alive_.size(); ++at) found_[at] = alive_[at] != 0 ? 0 : terms.all();
  for (auto matcher = matchers.begin(); matcher != matchers.end(); ++matcher) {
    uint8_t rest = by_cell ? terms.all() : 0;
    for (auto later = std::next(matcher); later != matchers.end(); ++later) rest |= (*later)->possible();
    (*matcher)->AddFound(static_cast<size_t>(run.record), rest, found_);
  }
  if (by_cell) AddFoundByCell(terms, run);
}

void RowSearch::AddFoundByCell(const TermGroup& terms, const platform::RowRun& run) {
  for (size_t at = 0; at < found_.size(); ++at) {
    for (auto searched = columns_.begin(); searched != columns_.end() && found_[at] != terms.all(); ++searched) {
      if (searched->loaded != nullptr) continue;
      const std::string text = grid_.TextMatrix(run.row + static_cast<int>(at), searched->column);
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
    if (hidden_[static_cast<size_t>(column)]) continue;
    found |= terms.FoundIn(grid_.TextMatrix(row, column), static_cast<uint8_t>(terms.all() & ~found));
  }
  return found == terms.all();
}

}  // namespace stockbook::interaction
