// SPDX-License-Identifier: MIT
#include "interaction/find/find.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "interaction/find/row_search.h"
#include "interaction/find/search_terms.h"
#include "journal/error_text.h"
#include "stockbook/platform/error.h"

namespace stockbook::interaction {
namespace {

constexpr const char* kSeparators[] = {" ", ";", ",", "；", "，"};
constexpr const char* kAnyText = "*";

// The words of a search text, joined by bars; one trailing separator is dropped.
std::string Normalised(std::string_view search) {
  std::string words = base::CleanUtf8(search);
  for (const char* separator : kSeparators) words = base::ReplaceAll(words, separator, "|");
  words = base::TrimBlanks(words);
  if (words.ends_with('|')) words.pop_back();
  return words;
}

bool HasTextToSearch(const platform::GridTable& grid) {
  const SearchTerms any(kAnyText);
  RowSearch search(grid, any);
  std::vector<int> hits;
  for (int row = grid.FixedRows(); row < grid.Rows() && hits.empty();) row = search.SearchBlock(row, hits);
  return !hits.empty();
}

// The terms, or none if one of them is malformed, which is an error as soon as it is compared with a text.
std::optional<SearchTerms> TermsOf(const platform::GridTable& grid, std::string_view words) {
  try {
    return SearchTerms(words);
  } catch (const platform::Error&) {
    if (HasTextToSearch(grid)) throw;
    return std::nullopt;
  }
}

// Writes the messages of the hits in a block of rows while nothing changes. Borrows its arguments.
class HitMessages {
 public:
  HitMessages(const platform::GridTable& grid, const grid::RowRun& block, const std::string& outline_key)
      : grid_(grid), block_(block), column_(grid.ColIndex(outline_key)) {
    if (!block.IsInserted()) loaded_ = grid::UneditedColumn(grid, column_);
  }

  // Writes the message of a row into a buffer.
  void Write(int row, std::string& message) const {
    message.clear();
    if (loaded_ != nullptr)
      loaded_->AppendText(static_cast<size_t>(block_.record + (row - block_.row)), message);
    else
      message = grid_.TextMatrix(row, column_);
    const std::string_view name = base::TrimBlanks(message);
    if (name.size() < message.size()) message = std::string(name);
    if (message.empty()) message = "[无名称]";
    std::array<char, 16> number;
    const auto end = std::to_chars(number.data(), number.data() + number.size(), row).ptr;
    message += " |";
    message.append(number.data(), end);
  }

 private:
  const platform::GridTable& grid_;
  const grid::RowRun& block_;
  int column_;
  const columns::Column* loaded_ = nullptr;
};

// Announces the hits and counts them.
int64_t AnnounceHits(const platform::GridTable& grid, Events& events, const std::string& outline_key,
                     const SearchTerms& terms) {
  RowSearch search(grid, terms);
  std::vector<int> hits;
  std::string message;
  int64_t count = 0;
  for (int row = grid.FixedRows(); row < grid.Rows();) {
    row = search.SearchBlock(row, hits);
    if (hits.empty()) continue;
    const HitMessages messages(grid, search.block(), outline_key);
    for (const int hit : hits) {
      ++count;
      messages.Write(hit, message);
      events.FindMsg(message);
      if (search.IsOutdated()) {
        row = hit + 1;
        break;
      }
    }
  }
  return count;
}

void SearchAndTell(const platform::GridTable& grid, Events& events, const std::string& outline_key,
                   const std::string& words) {
  if (words.empty()) {
    events.Notify("请输入要查找的文字;");
    return;
  }
  events.FindMsg("#BEGIN#");
  const std::optional<SearchTerms> terms = TermsOf(grid, words);
  const int64_t count = terms ? AnnounceHits(grid, events, outline_key, *terms) : 0;
  events.FindMsg("#END#");
  events.Notify("找到记录共 " + std::to_string(count) + " 条。");
}

// Not a guard around the search: an exception that is no std::exception must find the grid untouched.
void ResetView(platform::GridBusy& busy) {
  try {
    busy.SetRedraw(true);
    busy.SetPointer(platform::MousePointer::kDefault);
  } catch (const std::exception&) {
    // A grid that refuses the change stays as it is.
  }
}

}  // namespace

void Find(const platform::GridTable& grid, platform::GridBusy& busy, Events& events, std::string_view outline_key,
          std::string_view search) {
  const std::string words = Normalised(search);
  // A text of nothing but separators leaves only bars.
  if (words.find_first_not_of("| ") == std::string::npos) return;
  // A copy, because a listener may change the key.
  const std::string key(outline_key);
  std::string room;
  const std::string* error = nullptr;
  try {
    SearchAndTell(grid, events, key, words);
  } catch (const std::exception& caught) {
    error = &journal::TextOfError(caught.what(), room);
  }
  ResetView(busy);
  if (error != nullptr) events.Notify(*error);
}

}  // namespace stockbook::interaction
