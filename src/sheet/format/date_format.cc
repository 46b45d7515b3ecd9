// SPDX-License-Identifier: MIT
#include "sheet/format/date_format.h"

#include <array>

namespace stockbook::sheet {
namespace {

using base::DateField;
using base::DateLetters;
using base::DatePiece;

std::string_view DayName(base::Date date) {
  constexpr std::array<std::string_view, 7> kNames = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  // The zero date was a Saturday.
  return kNames[static_cast<size_t>(((date.days() + 6) % 7 + 7) % 7)];
}

}  // namespace

bool DateFormat::IsDateFormat(std::string_view format) {
  return base::IsDatePattern(base::ReadPattern(format), DateLetters::kDisplay);
}

void DateFormat::FindMinutes() {
  DateField before = DateField::kText;
  DatePiece* month_before = nullptr;
  for (DatePiece& piece : pieces_) {
    if (piece.field == DateField::kText || piece.field == DateField::kHalfDay) continue;
    if (piece.field == DateField::kMonth && before == DateField::kHour) piece.field = DateField::kMinute;
    if (piece.field == DateField::kSecond && month_before != nullptr) month_before->field = DateField::kMinute;
    month_before = piece.field == DateField::kMonth ? &piece : nullptr;
    before = piece.field;
  }
}

DateFormat DateFormat::Parse(std::string_view format) {
  DateFormat parsed;
  parsed.pieces_ = base::DatePieces(base::ReadPattern(format), DateLetters::kDisplay);
  for (const DatePiece& piece : parsed.pieces_) parsed.halves_ = parsed.halves_ || piece.field == DateField::kHalfDay;
  parsed.FindMinutes();
  return parsed;
}

std::string DateFormat::Format(base::Date date) const {
  base::DateParts at = date.parts();
  const bool morning = at.hour < 12;
  if (halves_) at.hour = base::TwelveHours(at.hour);
  std::string out;
  for (const DatePiece& piece : pieces_) {
    const bool name = piece.width > 2;
    if (piece.field == DateField::kHalfDay) {
      out += std::string_view(piece.text).substr(morning ? 0 : 2, 2);
    } else if (piece.field == DateField::kMonth && name) {
      out += base::MonthName(at.month);
    } else if (piece.field == DateField::kDay && name) {
      out += DayName(date);
    } else {
      out += piece.text;
      base::AppendDigits(piece, at, out);
    }
  }
  return out;
}

}  // namespace stockbook::sheet
