// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace stockbook::app {

// What to write into separated values so that a spreadsheet shows the text and calculates nothing. It takes what begins
// with =, +, -, @, a tab or a carriage return for a formula: such a text gets an apostrophe in front, unless it is a
// number, a lone dash, or numbers in lines, as total rows have them, of which only the first has a sign. So does one
// that already has apostrophes there, so that CellText gives every text back.
std::string SpreadsheetText(std::string_view text);

// Whether a spreadsheet would take the text for a formula, which nearly no text is.
inline bool BeginsLikeAFormula(std::string_view text) {
  if (text.empty()) return false;
  const char c = text.front();
  return c == '=' || c == '+' || c == '-' || c == '@' || c == '\t' || c == '\r';
}

// Whether SpreadsheetText puts an apostrophe there.
bool NeedsApostrophe(std::string_view text);

// The text that SpreadsheetText was given.
std::string CellText(std::string text);

}  // namespace stockbook::app
