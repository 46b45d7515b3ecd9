// SPDX-License-Identifier: MIT
#include "base/date_pattern.h"

#include <algorithm>

#include "base/digits.h"
#include "base/text.h"

namespace stockbook::base {
namespace {

constexpr std::string_view kHalfDay = "am/pm";

DateField FieldOf(char sign, DateLetters letters) {
  switch (sign) {
    case 'y':
    case 'Y':
      return DateField::kYear;
    case 'm':
    case 'M':
      return DateField::kMonth;
    case 'd':
    case 'D':
      return DateField::kDay;
    case 'h':
    case 'H':
      return DateField::kHour;
    case 'n':
    case 'N':
      return letters == DateLetters::kDesktop ? DateField::kMinute : DateField::kText;
    case 's':
    case 'S':
      return DateField::kSecond;
    default:
      return DateField::kText;
  }
}

bool IsHalfDay(const std::vector<PatternPiece>& pieces, size_t at) {
  if (pieces.size() - at < kHalfDay.size()) return false;
  return std::equal(kHalfDay.begin(), kHalfDay.end(), pieces.begin() + static_cast<std::ptrdiff_t>(at),
                    [](char letter, const PatternPiece& piece) {
                      return piece.sign != 0 && EqualsIgnoringCase(piece.text, std::string_view(&letter, 1));
                    });
}

}  // namespace

bool IsDatePattern(const std::vector<PatternPiece>& pieces, DateLetters letters) {
  bool date = false;
  for (const PatternPiece& piece : pieces) {
    if (piece.IsPlace()) return false;
    date = date || FieldOf(piece.sign, letters) != DateField::kText;
  }
  return date;
}

std::vector<DatePiece> DatePieces(const std::vector<PatternPiece>& pieces, DateLetters letters) {
  std::vector<DatePiece> dates;
  dates.reserve(pieces.size());
  for (size_t at = 0; at < pieces.size();) {
    if (letters == DateLetters::kDisplay && IsHalfDay(pieces, at)) {
      dates.push_back({DateField::kHalfDay, 0, pieces[at].sign == 'a' ? "ampm" : "AMPM"});
      at += kHalfDay.size();
      continue;
    }
    const DateField field = FieldOf(pieces[at].sign, letters);
    size_t end = at + 1;
    if (field == DateField::kText) {
      dates.push_back({field, 0, pieces[at].text});
    } else {
      while (end < pieces.size() && FieldOf(pieces[end].sign, letters) == field) ++end;
      dates.push_back({field, static_cast<int>(end - at), {}});
    }
    at = end;
  }
  return dates;
}

void AppendDigits(const DatePiece& piece, const DateParts& date, std::string& out) {
  const auto width = static_cast<size_t>(std::min(piece.width, 2));
  switch (piece.field) {
    case DateField::kYear:
      out += piece.width > 2 ? ZeroPadded(date.year, 4) : ZeroPadded(date.year % 100, 2);
      break;
    case DateField::kMonth:
      out += ZeroPadded(date.month, width);
      break;
    case DateField::kDay:
      out += ZeroPadded(date.day, width);
      break;
    case DateField::kHour:
      out += ZeroPadded(date.hour, width);
      break;
    case DateField::kMinute:
      out += ZeroPadded(date.minute, width);
      break;
    case DateField::kSecond:
      out += ZeroPadded(date.second, width);
      break;
    case DateField::kText:
    case DateField::kHalfDay:
      break;
  }
}

std::string_view MonthName(int month) {
  constexpr std::string_view kNames = "JanFebMarAprMayJunJulAugSepOctNovDec";
  return kNames.substr(static_cast<size_t>(month - 1) * 3, 3);
}

}  // namespace stockbook::base
