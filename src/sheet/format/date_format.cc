// SPDX-License-Identifier: MIT
#include "sheet/format/date_format.h"

#include <algorithm>
#include <array>

namespace stockbook::sheet {
namespace {

constexpr std::string_view kHalfDaySign = "AM/PM";
constexpr std::string_view kMonthNames = "JanFebMarAprMayJunJulAugSepOctNovDec";
constexpr std::array<std::string_view, 7> kDayNames = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool StartsWithHalfDay(std::string_view text) {
  if (text.size() < kHalfDaySign.size()) return false;
  for (size_t at = 0; at < kHalfDaySign.size(); ++at) {
    if (Lower(text[at]) != Lower(kHalfDaySign[at])) return false;
  }
  return true;
}

// Length of a literal in quotes or behind a backslash at the front; 0 when there is none.
size_t QuotedLength(std::string_view text) {
  if (text.front() == '\\') return std::min<size_t>(2, text.size());
  if (text.front() != '"') return 0;
  const size_t end = text.find('"', 1);
  return end == std::string_view::npos ? text.size() : end + 1;
}

void AppendPadded(std::string& out, int number, int width) {
  const std::string digits = std::to_string(number);
  if (static_cast<int>(digits.size()) < width) out.append(static_cast<size_t>(width) - digits.size(), '0');
  out += digits;
}

std::string_view DayName(base::Date date) {
  // The zero date was a Saturday.
  const auto day = static_cast<size_t>(((date.days() + 6) % 7 + 7) % 7);
  return kDayNames[day];
}

}  // namespace

DateFormat::PieceKind DateFormat::KindOf(char letter) {
  switch (Lower(letter)) {
    case 'y':
      return PieceKind::kYear;
    case 'm':
      return PieceKind::kMonth;
    case 'd':
      return PieceKind::kDay;
    case 'h':
      return PieceKind::kHour;
    case 's':
      return PieceKind::kSecond;
    default:
      return PieceKind::kLiteral;
  }
}

bool DateFormat::IsDateFormat(std::string_view format) {
  bool letters = false;
  while (!format.empty()) {
    const size_t quoted = QuotedLength(format);
    if (quoted == 0) {
      if (format.front() == '0' || format.front() == '#') return false;
      letters = letters || KindOf(format.front()) != PieceKind::kLiteral;
    }
    format.remove_prefix(quoted == 0 ? 1 : quoted);
  }
  return letters;
}

size_t DateFormat::TakePiece(std::string_view text, Piece& piece) {
  if (const size_t quoted = QuotedLength(text); quoted != 0) {
    const bool closed = text.front() == '"' && quoted > 1 && text[quoted - 1] == '"';
    piece = {PieceKind::kLiteral, 0, std::string(text.substr(1, quoted - (closed ? 2 : 1)))};
    return quoted;
  }
  if (StartsWithHalfDay(text)) {
    piece = {PieceKind::kHalfDay, 0, text.front() == 'a' ? "ampm" : "AMPM"};
    return kHalfDaySign.size();
  }
  const PieceKind kind = KindOf(text.front());
  size_t length = 1;
  if (kind == PieceKind::kLiteral) {
    piece = {kind, 0, std::string(text.substr(0, 1))};
    return length;
  }
  while (length < text.size() && KindOf(text[length]) == kind) ++length;
  piece = {kind, static_cast<int>(length), {}};
  return length;
}

void DateFormat::FindMinutes() {
  PieceKind before = PieceKind::kLiteral;
  Piece* month_before = nullptr;
  for (Piece& piece : pieces_) {
    if (piece.kind == PieceKind::kLiteral || piece.kind == PieceKind::kHalfDay) continue;
    if (piece.kind == PieceKind::kMonth && before == PieceKind::kHour) piece.kind = PieceKind::kMinute;
    if (piece.kind == PieceKind::kSecond && month_before != nullptr) month_before->kind = PieceKind::kMinute;
    month_before = piece.kind == PieceKind::kMonth ? &piece : nullptr;
    before = piece.kind;
  }
}

DateFormat DateFormat::Parse(std::string_view format) {
  DateFormat parsed;
  while (!format.empty()) {
    Piece piece;
    format.remove_prefix(TakePiece(format, piece));
    parsed.halves_ = parsed.halves_ || piece.kind == PieceKind::kHalfDay;
    parsed.pieces_.push_back(std::move(piece));
  }
  parsed.FindMinutes();
  return parsed;
}

int DateFormat::HourShown(int hour, bool halves) {
  if (!halves) return hour;
  return hour % 12 == 0 ? 12 : hour % 12;
}

void DateFormat::AppendPiece(const Piece& piece, base::Date date, const base::DateParts& at, std::string& out) const {
  const bool name = piece.width > 2;
  const int width = std::min(piece.width, 2);
  switch (piece.kind) {
    case PieceKind::kLiteral:
      out += piece.literal;
      break;
    case PieceKind::kYear:
      AppendPadded(out, name ? at.year : at.year % 100, name ? 4 : 2);
      break;
    case PieceKind::kMonth:
      if (name) {
        out += kMonthNames.substr(static_cast<size_t>(at.month - 1) * 3, 3);
      } else {
        AppendPadded(out, at.month, width);
      }
      break;
    case PieceKind::kDay:
      if (name) {
        out += DayName(date);
      } else {
        AppendPadded(out, at.day, width);
      }
      break;
    case PieceKind::kHour:
      AppendPadded(out, HourShown(at.hour, halves_), width);
      break;
    case PieceKind::kMinute:
      AppendPadded(out, at.minute, width);
      break;
    case PieceKind::kSecond:
      AppendPadded(out, at.second, width);
      break;
    case PieceKind::kHalfDay:
      out += std::string_view(piece.literal).substr(at.hour < 12 ? 0 : 2, 2);
      break;
  }
}

std::string DateFormat::Format(base::Date date) const {
  const base::DateParts at = date.parts();
  std::string out;
  for (const Piece& piece : pieces_) AppendPiece(piece, date, at, out);
  return out;
}

}  // namespace stockbook::sheet
