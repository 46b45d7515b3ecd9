// SPDX-License-Identifier: MIT
#include "base/date_pattern.h"

#include <algorithm>

#include "base/digits.h"
#include "base/text.h"

namespace stockbook::base {
namespace {

constexpr std::string_view kHalfDay = "am/pm";

DateField FieldOf(char sign, DateLetters letters) {
  constexpr std::string_view kLetters = "ymdhns";  // of the fields from kYear on
  const char letter = sign >= 'A' && sign <= 'Z' ? static_cast<char>(sign - 'A' + 'a') : sign;
  const size_t at = kLetters.find(letter);
  if (at == std::string_view::npos || (letter == 'n' && letters != DateLetters::kDesktop)) return DateField::kText;
  return static_cast<DateField>(static_cast<size_t>(DateField::kYear) + at);
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
  constexpr int DateParts::*kParts[] = {&DateParts::month, &DateParts::day, &DateParts::hour, &DateParts::minute,
                                        &DateParts::second};  // of the fields from kMonth on
  if (piece.field == DateField::kText || piece.field == DateField::kHalfDay) return;
  if (piece.field == DateField::kYear) {
    out += piece.width > 2 ? ZeroPadded(date.year, 4) : ZeroPadded(date.year % 100, 2);
  } else {
    const auto part = static_cast<size_t>(piece.field) - static_cast<size_t>(DateField::kMonth);
    out += ZeroPadded(date.*kParts[part], static_cast<size_t>(std::min(piece.width, 2)));
  }
}

std::string_view MonthName(int month) {
  constexpr std::string_view kNames = "JanFebMarAprMayJunJulAugSepOctNovDec";
  return kNames.substr(static_cast<size_t>(month - 1) * 3, 3);
}

}  // namespace stockbook::base
