// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/pattern.h"
#include "stockbook/base/api.h"
#include "stockbook/base/date.h"

namespace stockbook::base {

// The letters that mean parts of a date, in either case: y, m, d, h and s everywhere.
enum class DateLetters {
  kDisplay,  // and AM/PM
  kDesktop,  // and n for minutes
};

enum class DateField : uint8_t { kText, kYear, kMonth, kDay, kHour, kMinute, kSecond, kHalfDay };

// A run of one letter, or a text that stands for itself.
struct DatePiece {
  DateField field = DateField::kText;
  int width = 0;     // the number of letters
  std::string text;  // of kText, and "AMPM" or "ampm" of kHalfDay
};

// True when the pattern has letters of dates and no places of digits.
STOCKBOOK_API bool IsDatePattern(const std::vector<PatternPiece>& pieces, DateLetters letters);

// The pieces of a date pattern. Every m is a month: which of them mean minutes is up to who shows dates with it.
STOCKBOOK_API std::vector<DatePiece> DatePieces(const std::vector<PatternPiece>& pieces, DateLetters letters);

// Appends the digits of the piece's part: a year in 2, or in 4 from the third letter on; the others in 1, or at least 2
// from the second letter on. Nothing for texts and half days.
STOCKBOOK_API void AppendDigits(const DatePiece& piece, const DateParts& date, std::string& out);

// "Jan" to "Dec", of 1 to 12.
STOCKBOOK_API std::string_view MonthName(int month);

// An hour from 0 to 23 on a clock of 12 hours.
inline int TwelveHours(int hour) { return hour % 12 == 0 ? 12 : hour % 12; }

}  // namespace stockbook::base
