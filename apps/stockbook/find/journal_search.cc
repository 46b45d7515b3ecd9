// SPDX-License-Identifier: MIT
#include "stockbook/find/journal_search.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "sheet/outline/row_states.h"
#include "sheet/store/store.h"
#include "stockbook/find/letter_case.h"

namespace stockbook::app {
namespace {

constexpr size_t kMostRemembered = 32;

}  // namespace

// All of them only grow.
int64_t JournalSearch::Revision() const {
  return std::max({sheet_.Revision(), sheet_.TextRevision(), sheet_.ColRevision()});
}

void JournalSearch::Forget() {
  columns_.reset();
  remembered_.clear();
}

void JournalSearch::Refresh() {
  const int64_t revision = Revision();
  if (revision != revision_) Forget();
  revision_ = revision;
}

void JournalSearch::ReadWords(const FindQuery& query) {
  std::vector<std::string> texts = SplitWords(query.text);
  if (texts == texts_ && query.options == options_ && words_.size() == texts_.size()) return;
  words_.clear();
  texts_.clear();
  std::vector<FindWord> words;
  for (const std::string& text : texts) words.emplace_back(text, query.options);
  words_ = std::move(words);
  texts_ = std::move(texts);
  options_ = query.options;
}

bool JournalSearch::HasAnyWord(std::string_view text) const {
  return std::any_of(words_.begin(), words_.end(), [&](const FindWord& word) { return word.IsIn(text); });
}

const std::vector<int>& JournalSearch::Find(const FindQuery& query) {
  rows_.clear();
  ReadWords(query);
  Refresh();
  if (words_.empty()) return rows_;
  ListRows(FindRecords());
  DropHidden();
  return rows_;
}

const JournalSearch::Found* JournalSearch::Wider() const {
  // What is not a plain word may be in rows that do not have its parts.
  const bool grows = !options_.whole_words && !options_.patterns;
  const auto narrows = [&](const std::string& shorter) {
    return std::any_of(words_.begin(), words_.end(), [&](const FindWord& word) {
      return grows ? FindWord(shorter, options_).IsIn(word.text()) : FindWord(shorter, options_).text() == word.text();
    });
  };
  const Found* best = nullptr;
  for (const Found& found : remembered_) {
    if (found.options != options_ || (best != nullptr && best->count <= found.count)) continue;
    if (std::all_of(found.words.begin(), found.words.end(), narrows)) best = &found;
  }
  return best;
}

const RowBits& JournalSearch::FindRecords() {
  const auto known = std::find_if(remembered_.begin(), remembered_.end(), [&](const Found& found) {
    return found.words == texts_ && found.options == options_;
  });
  if (known != remembered_.end()) return known->rows;
  if (columns_ == nullptr) columns_ = std::make_unique<SearchedColumns>(sheet_);
  const Found* wider = Wider();
  RowBits rows = wider != nullptr ? wider->rows : RowBits::All(sheet_.RecordCount());
  std::vector<SearchedColumns::Search> searches;
  for (size_t at = 0; at < words_.size(); ++at) {
    const bool in_all =
        wider != nullptr && std::find(wider->words.begin(), wider->words.end(), texts_[at]) != wider->words.end();
    if (!in_all) searches.push_back(columns_->Begin(words_[at], rows));
  }
  // The fewer rows can have a word, the fewer are left to look for the others in.
  std::sort(searches.begin(), searches.end(),
            [](const auto& left, const auto& right) { return left.most < right.most; });
  for (SearchedColumns::Search& search : searches) rows = columns_->Finish(search, rows);
  const size_t count = rows.Count();
  remembered_.push_front({texts_, options_, std::move(rows), count});
  if (remembered_.size() > kMostRemembered) remembered_.pop_back();
  return remembered_.front().rows;
}

void JournalSearch::ListRows(const RowBits& records) {
  const int first = sheet_.FixedRows();
  sheet_.store().order().ForEachPiece(first, sheet_.Rows(), [&](int64_t row, int64_t count, sheet::RowId id) {
    if (id < 0) {
      AddInserted(static_cast<int>(row), count);
      return;
    }
    const auto begin = static_cast<size_t>(id);
    const size_t end = begin + static_cast<size_t>(count);
    for (size_t word = begin / RowBits::kWordRows; word * RowBits::kWordRows < end; ++word) {
      for (uint64_t bits = records.words()[word]; bits != 0; bits &= bits - 1) {
        const size_t record = word * RowBits::kWordRows + static_cast<size_t>(std::countr_zero(bits));
        if (record >= begin && record < end)
          rows_.push_back(static_cast<int>(row + static_cast<int64_t>(record - begin)));
      }
    }
  });
}

void JournalSearch::AddInserted(int row, int64_t count) {
  for (int64_t offset = 0; offset < count; ++offset) {
    if (ShowsAllWords(row + static_cast<int>(offset))) rows_.push_back(row + static_cast<int>(offset));
  }
}

bool JournalSearch::ShowsAllWords(int row) const {
  size_t missing = words_.size();
  std::vector<uint8_t> has(words_.size());
  for (int column = sheet_.FixedCols(); column < sheet_.Cols() && missing > 0; ++column) {
    if (sheet_.ColHidden(column)) continue;
    const std::string text = sheet_.DisplayText(row, column);
    if (text.empty()) continue;
    for (size_t at = 0; at < words_.size(); ++at) {
      if (has[at] != 0 || !words_[at].IsIn(text)) continue;
      has[at] = 1;
      --missing;
    }
  }
  return missing == 0;
}

void JournalSearch::DropHidden() {
  size_t kept = 0;
  size_t at = 0;
  sheet_.states().ForEachRun(0, sheet_.Rows(), [&](int64_t first, int64_t count, const sheet::RowState& state) {
    for (; at < rows_.size() && rows_[at] < first + count; ++at) {
      if (!state.hidden) rows_[kept++] = rows_[at];
    }
    return at < rows_.size();
  });
  rows_.resize(kept);
}

}  // namespace stockbook::app
