// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"

namespace stockbook::sheet {

// A date format as data: y, M, d, H (24 hours) and h (12 with AM/PM, else 24), m, s by the number of letters; m next to
// hours or seconds means minutes, else the month, in either case of letters. Texts in double quotes, characters behind
// a backslash and all others (年, 月, 日) stand for themselves. A plain value.
class DateFormat {
 public:
  DateFormat() = default;
  static DateFormat Parse(std::string_view format);
  // True when the format has letters of dates and no digit places of numbers.
  static bool IsDateFormat(std::string_view format);

  std::string Format(base::Date date) const;

 private:
  enum class PieceKind : uint8_t { kLiteral, kYear, kMonth, kDay, kHour, kMinute, kSecond, kHalfDay };
  struct Piece {
    PieceKind kind = PieceKind::kLiteral;
    int width = 0;
    std::string literal;
  };

  static PieceKind KindOf(char letter);
  static size_t TakePiece(std::string_view text, Piece& piece);
  void FindMinutes();
  void AppendPiece(const Piece& piece, base::Date date, const base::DateParts& at, std::string& out) const;
  static int HourShown(int hour, bool halves);

  std::vector<Piece> pieces_;
  bool halves_ = false;
};

}  // namespace stockbook::sheet
