// SPDX-License-Identifier: MIT
#include "sheet/format/number_format.h"

#include <algorithm>

namespace stockbook::sheet {
namespace {

using base::Decimal;
using base::NumberSection;
using base::PatternPiece;

constexpr int kGroup = 3;

// The power of ten by which a number is multiplied before the section shows it.
int PowerOf(const NumberSection& section) { return 2 * section.percent_signs - kGroup * section.other_commas; }

bool IsGrouped(const NumberSection& section) { return section.grouping_commas > 0; }

bool IsEmpty(const NumberSection& section) {
  return section.pieces.empty() || (section.pieces.size() == 1 && section.HasPoint());
}

Decimal Rounded(const NumberSection& section, const Decimal& number) {
  return number.Shown(PowerOf(section), section.decimals);
}

std::string ShowWhole(const NumberSection& section, const std::string& digits) {
  std::string reversed;
  int shown = 0;
  size_t left = digits.size();
  const auto put = [&](char digit) {
    if (IsGrouped(section) && shown > 0 && shown % kGroup == 0) reversed += ',';
    reversed += digit;
    ++shown;
  };
  int places = section.whole_places;
  // A section without digits before its point still shows the digits of the number.
  if (places == 0) {
    while (left > 0) put(digits[--left]);
  }
  const auto whole = section.Whole();
  for (auto piece = whole.rbegin(); piece != whole.rend(); ++piece) {
    if (!piece->IsPlace()) {
      // A comma after the first place has already been handled.
      if (piece->sign != ',' || places == 0) reversed.append(piece->text.rbegin(), piece->text.rend());
      continue;
    }
    if (left > 0) {
      put(digits[--left]);
    } else if (piece->sign == '0') {
      put('0');
    }
    // The first place takes all remaining digits.
    if (--places == 0) {
      while (left > 0) put(digits[--left]);
    }
  }
  std::reverse(reversed.begin(), reversed.end());
  return reversed;
}

std::string ShowFraction(const NumberSection& section, const std::string& digits) {
  size_t needed = digits.find_last_not_of('0') + 1;  // npos + 1 is 0
  size_t place = 0;
  for (const PatternPiece& piece : section.Fraction()) {
    if (!piece.IsPlace()) continue;
    ++place;
    if (piece.sign == '0') needed = std::max(needed, place);
  }
  std::string text;
  if (needed > 0) text += '.';
  place = 0;
  for (const PatternPiece& piece : section.Fraction()) {
    if (!piece.IsPlace()) {
      text += piece.text;
    } else if (place++ < needed) {
      text += digits[place - 1];
    }
  }
  return text;
}

std::string Show(const NumberSection& section, const Decimal& rounded) {
  if (section.whole_places > 0 || section.decimals > 0)
    return ShowWhole(section, rounded.WholeDigits()) + ShowFraction(section, rounded.FractionDigits(section.decimals));
  std::string text;
  for (const PatternPiece& piece : section.Whole()) text += piece.text;
  for (const PatternPiece& piece : section.Fraction()) text += piece.text;
  return text;
}

// One character after all others; none that a PlainNumber takes for no suffix.
bool IsSuffix(const PatternPiece& piece, const NumberSection& section) {
  return &piece == &section.pieces.back() && piece.text.size() == 1 && piece.text.front() != 0;
}

// Converts a section with at most a one-character suffix to a plain number; nothing for other sections.
std::optional<PlainNumber> PlainOf(const NumberSection& section) {
  constexpr int kMostPlaces = 9;
  const int power = PowerOf(section);
  const bool small = section.whole_places <= kMostPlaces && section.decimals <= kMostPlaces;
  if (section.whole_places + section.decimals == 0 || power < 0 || !small) return std::nullopt;
  PlainNumber plain{0, 0, section.decimals, power, IsGrouped(section), 0};
  int places = 0;
  for (const PatternPiece& piece : section.Whole()) {
    if (piece.IsPlace()) {
      ++places;
      if (piece.sign == '0') {
        ++plain.least_whole;
      } else if (plain.least_whole > 0) {
        return std::nullopt;  // an optional digit after one that is always there
      }
    } else if (piece.sign != ',' || places == 0) {
      if (!IsSuffix(piece, section)) return std::nullopt;
      plain.suffix = piece.text.front();
    }
  }
  places = 0;
  for (const PatternPiece& piece : section.Fraction()) {
    if (piece.IsPlace()) {
      ++places;
      if (piece.sign == '0') plain.least_decimals = places;
    } else {
      if (!IsSuffix(piece, section)) return std::nullopt;
      plain.suffix = piece.text.front();
    }
  }
  return plain;
}

}  // namespace

NumberFormat NumberFormat::Parse(std::string_view format) {
  NumberFormat parsed;
  parsed.sections_ = base::NumberSections(base::ReadPattern(format));
  if (parsed.sections_.size() == 1) parsed.plain_ = PlainOf(parsed.sections_.front());
  return parsed;
}

const NumberSection& NumberFormat::SectionAt(size_t index) const {
  return index < sections_.size() && !IsEmpty(sections_[index]) ? sections_[index] : sections_.front();
}

std::string NumberFormat::Format(const Decimal& number) const {
  if (sections_.empty()) return {};
  constexpr size_t kNegative = 1;
  constexpr size_t kZero = 2;
  const NumberSection* section = &SectionAt(number.negative ? kNegative : 0);
  Decimal rounded = Rounded(*section, number);
  if (rounded.IsZero() && !number.IsZero()) {
    section = &SectionAt(kZero);
    rounded = Rounded(*section, number);
    if (!rounded.IsZero()) section = &SectionAt(number.negative ? kNegative : 0);
  } else if (number.IsZero()) {
    section = &SectionAt(kZero);
  }
  const bool own_sign = section != &sections_.front();
  return (rounded.negative && !own_sign ? "-" : "") + Show(*section, rounded);
}

bool NumberFormat::ShowsDigits() const {
  return std::any_of(sections_.begin(), sections_.end(),
                     [](const base::NumberSection& section) { return section.whole_places + section.decimals > 0; });
}

}  // namespace stockbook::sheet
