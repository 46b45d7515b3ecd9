// SPDX-License-Identifier: MIT
#include "interaction/find.h"

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "interaction/row_search.h"
#include "interaction/search_terms.h"
#include "platform/error.h"

namespace stockbook::interaction {
namespace {

constexpr const char* kSeparators[] = {" ", ";", ",", "；", "，"};
constexpr const char* kAnyText = "*";

// The words of a search text with bars between them; one separator at the end is dropped.
std::string Normalised(std::string_view search) {
  std::string words = base::CleanUtf8(search);
  for (const char* separator : kSeparators) words = base::ReplaceAll(words, separator, "|");
  words = base::TrimBlanks(words);
  if (words.ends_with('|')) words.pop_back();
  return words;
}

bool HasTextToSearch(const platform::Grid& grid) {
  const SearchTerms any(kAnyText);
  RowSearch search(grid, any);
  std::vector<int> hits;
  for (int row = grid.FixedRows(); row < grid.Rows() && hits.empty();) row = search.SearchBlock(row, hits);
  return !hits.empty();
}

// The terms, or none where one of them is no pattern: that is an error from the first text on that it is compared with.
std::optional<SearchTerms> TermsOf(const platform::Grid& grid, std::string_view words) {
  try {
    return SearchTerms(words);
  } catch (const platform::Error&) {
    if (HasTextToSearch(grid)) throw;
    return std::nullopt;
  }
}

std::string HitMessage(const platform::Grid& grid, const std::string& outline_key, int row) {
  const std::string text = grid.TextMatrix(row, grid.ColIndex(outline_key));
  const std::string_view name = base::TrimBlanks(text);
  return std::string(name.empty() ? std::string_view("[无名称]") : name) + " |" + std::to_string(row);
}

// Announces the hits and counts them.
int64_t AnnounceHits(const platform::Grid& grid, Events& events, const std::string& outline_key,
                     const SearchTerms& terms) {
  RowSearch search(grid, terms);
  std::vector<int> hits;
  int64_t count = 0;
  for (int row = grid.FixedRows(); row < grid.Rows();) {
    row = search.SearchBlock(row, hits);
    for (const int hit : hits) {
      ++count;
      events.FindMsg(HitMessage(grid, outline_key, hit));
      if (search.IsOutdated()) {
        row = hit + 1;
        break;
      }
    }
  }
  return count;
}

void SearchAndTell(const platform::Grid& grid, Events& events, const std::string& outline_key,
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

void ResetView(platform::Grid& grid) {
  try {
    grid.SetRedraw(true);
    grid.SetPointer(platform::MousePointer::kDefault);
  } catch (const std::exception&) {
    // A grid that cannot be told stays as it is.
  }
}

}  // namespace

void Find(platform::Grid& grid, Events& events, std::string_view outline_key, std::string_view search) {
  const std::string words = Normalised(search);
  // Several separators and nothing else leave bars.
  if (words.find_first_not_of("| ") == std::string::npos) return;
  // A listener may change the key.
  const std::string key(outline_key);
  std::optional<std::string> error;
  try {
    SearchAndTell(grid, events, key, words);
  } catch (const std::exception& caught) {
    error = caught.what();
  }
  ResetView(grid);
  if (error) events.Notify(*error);
}

}  // namespace stockbook::interaction
