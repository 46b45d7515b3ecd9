// SPDX-License-Identifier: MIT
#include "databases/dialect/format_value.h"

#include <algorithm>
#include <vector>

#include "base/date_pattern.h"
#include "base/decimal.h"
#include "base/number_pattern.h"
#include "base/text.h"
#include "databases/dialect/date_functions.h"
#include "databases/dialect/operators.h"

namespace stockbook::databases {
namespace {

using base::DateField;
using base::DateLetters;
using base::Decimal;
using base::NumberSection;
using base::PatternPiece;
using base::Value;

std::string FormatDate(base::Date date, const std::vector<PatternPiece>& pieces) {
  const base::DateParts at = date.parts();
  std::string text;
  bool after_hour = false;  // an m after an h means minutes, whatever other letters come between them
  for (base::DatePiece& piece : base::DatePieces(pieces, DateLetters::kDesktop)) {
    text += piece.text;
    if (piece.field == DateField::kText) continue;
    const bool month = piece.field == DateField::kMonth;
    if (month && after_hour) piece.field = DateField::kMinute;
    base::AppendDigits(piece, at, text);
    after_hour = piece.field == DateField::kHour || (after_hour && !month);
  }
  return text;
}

std::string Grouped(std::string digits) {
  for (size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, ",");
  return digits;
}

// The digits of the whole part, as many as the pattern's zeros ask for: every place after a 0 shows a digit, too.
std::string WholeDigits(const Decimal& number, const NumberSection& section) {
  std::string digits = number.WholeDigits();
  const auto whole = section.Whole();
  const auto zero =
      std::find_if(whole.begin(), whole.end(), [](const PatternPiece& piece) { return piece.sign == '0'; });
  const auto least = static_cast<size_t>(std::count_if(zero, whole.end(), [](const auto& p) { return p.IsPlace(); }));
  if (digits.size() < least) digits.insert(0, least - digits.size(), '0');
  return section.grouping_commas + section.other_commas > 0 ? Grouped(std::move(digits)) : digits;
}

// With literals among the places ("0000-00") the digits are dealt out from the right; the first place takes the rest,
// and with grouping all of them.
std::string FormatWhole(const Decimal& number, const NumberSection& section) {
  const std::string digits = WholeDigits(number, section);
  const bool grouped = section.grouping_commas + section.other_commas > 0;
  auto places = static_cast<size_t>(section.whole_places);
  size_t dealt = 0;
  std::string text;
  for (const PatternPiece& piece : section.Whole()) {
    if (piece.IsPlace()) {
      --places;
      const size_t end = grouped ? digits.size() : digits.size() - std::min(places, digits.size());
      text.append(digits, dealt, std::max(end, dealt) - dealt);
      dealt = std::max(end, dealt);
    } else if (piece.sign != ',' || section.whole_places == 0) {
      text += piece.text;
    }
  }
  return text;
}

std::string FormatFraction(const Decimal& number, const NumberSection& section) {
  const std::string digits = number.FractionDigits(section.decimals);
  size_t place = 0;
  std::string text = section.HasPoint() ? "." : "";
  for (const PatternPiece& piece : section.Fraction()) {
    if (piece.IsPlace()) {
      // An optional place shows nothing when only zeros are left.
      const bool rest = digits.find_first_not_of('0', place) != std::string::npos;
      if (piece.sign == '0' || rest) text += digits[place];
      ++place;
    } else if (piece.sign != ',' || section.whole_places == 0) {
      text += piece.text;
    }
  }
  return text;
}

// Any number of percent signs multiplies by 100 once, and commas never divide.
std::string FormatNumber(const Decimal& number, const NumberSection& section) {
  const Decimal shown = number.Shown(section.percent_signs > 0 ? 2 : 0, section.decimals);
  return (shown.negative ? "-" : "") + FormatWhole(shown, section) + FormatFraction(shown, section);
}

std::string_view NamedPattern(std::string_view name) {
  struct Named {
    std::string_view name;
    std::string_view pattern;
  };
  static constexpr Named kNamed[] = {{"short date", "yyyy-mm-dd"},
                                     {"long date", "yyyy年m月d日"},
                                     {"short time", "hh:nn"},
                                     {"long time", "hh:nn:ss"},
                                     {"fixed", "0.00"},
                                     {"standard", "#,##0.00"},
                                     {"currency", "#,##0.00"},
                                     {"percent", "0.00%"}};
  const std::string lower = base::AsciiLower(name);
  for (const Named& named : kNamed) {
    if (lower == named.name) return named.pattern;
  }
  return name;
}

}  // namespace

std::string FormatValue(const Value& value, std::string_view pattern_text) {
  if (value.IsNull()) return {};
  const std::string lower = base::AsciiLower(pattern_text);
  if (pattern_text.empty() || lower == "general number" || lower == "general date") return value.Text();
  auto pieces = base::ReadPattern(NamedPattern(pattern_text));
  // The desktop shows a backslash at the very end.
  if (pieces.back().sign == '\\') pieces.back().text = "\\";
  if (base::IsDatePattern(pieces, DateLetters::kDesktop)) {
    const auto date = value.As<std::string>() != nullptr ? ReadDateText(*value.As<std::string>()) : value.AsDate();
    return date ? FormatDate(*date, pieces) : value.Text();
  }
  const std::string digits = PlainDecimal(value);
  const auto text = base::ReadDecimal(digits, base::Grouping::kNone);
  if (!text) return value.Text();
  Decimal number = Decimal::FromText(*text);
  const auto sections = base::NumberSections(std::move(pieces));
  if (number.IsZero() && sections.size() > 2) return FormatNumber(number, sections[2]);
  if (number.negative && sections.size() > 1 && !sections[1].pieces.empty()) {
    number.negative = false;
    return FormatNumber(number, sections[1]);
  }
  return FormatNumber(number, sections[0]);
}

}  // namespace stockbook::databases
