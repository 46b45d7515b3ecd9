// SPDX-License-Identifier: MIT
#include "stockbook/command/spreadsheet_text.h"

#include <algorithm>

#include "base/digits.h"

namespace stockbook::app {
namespace {

std::string_view WithoutApostrophes(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of('\''), text.size()));
}

// Passes over digits and grouping commas; returns how many digits.
size_t TakeDigits(std::string_view& text) {
  const auto end = std::find_if_not(text.begin(), text.end(), [](char c) { return base::IsDigit(c) || c == ','; });
  const auto digits = std::count_if(text.begin(), end, base::IsDigit);
  text.remove_prefix(static_cast<size_t>(end - text.begin()));
  return static_cast<size_t>(digits);
}

bool Take(std::string_view& text, std::string_view any) {
  if (text.empty() || any.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

// A number as the grid's formats show it: "-1,234.50", "+7", "-12.5%", "-1E+20".
bool IsShownNumber(std::string_view text) {
  Take(text, "+-");
  size_t digits = TakeDigits(text);
  if (Take(text, ".")) digits += TakeDigits(text);
  if (digits == 0) return false;
  if (Take(text, "eE")) {
    Take(text, "+-");
    if (TakeDigits(text) == 0) return false;
  }
  Take(text, "%");
  return text.empty();
}

// The sums of a total row: a number a line. A sign before a later one would be an operator to a spreadsheet, which then
// shows the difference of the two as if it were the sum.
bool AreShownNumbers(std::string_view text) {
  for (bool first = true;; first = false) {
    const size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    if (!IsShownNumber(line) || (!first && BeginsLikeAFormula(line))) return false;
    if (end == std::string_view::npos) return true;
    text.remove_prefix(end + 1);
  }
}

}  // namespace

bool NeedsApostrophe(std::string_view text) {
  const std::string_view bare = WithoutApostrophes(text);
  const bool is_harmless = bare.size() == text.size() && (text == "-" || AreShownNumbers(text));
  return BeginsLikeAFormula(bare) && !is_harmless;
}

std::string SpreadsheetText(std::string_view text) { return (NeedsApostrophe(text) ? "'" : "") + std::string(text); }

std::string CellText(std::string text) {
  if (text.starts_with('\'') && BeginsLikeAFormula(WithoutApostrophes(text))) text.erase(0, 1);
  return text;
}

}  // namespace stockbook::app
