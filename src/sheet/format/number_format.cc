// SPDX-License-Identifier: MIT
#include "sheet/format/number_format.h"

#include <algorithm>

namespace stockbook::sheet {
namespace {

constexpr size_t kGroup = 3;

// The literal text in quotes or behind a backslash at the front of `text`; cuts it off.
std::string_view TakeQuoted(std::string_view& text) {
  if (text.front() == '\\') {
    // A whole character, however many bytes it has.
    size_t end = 2;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) ++end;
    const std::string_view literal = text.substr(std::min<size_t>(1, text.size()), end - 1);
    text.remove_prefix(std::min(end, text.size()));
    return literal;
  }
  const size_t end = std::min(text.find('"', 1), text.size());
  const std::string_view literal = text.substr(1, end - 1);
  text.remove_prefix(std::min(end + 1, text.size()));
  return literal;
}

bool NextIsDigit(std::string_view rest) {
  const size_t next = rest.find_first_not_of(',');
  return next != std::string_view::npos && (rest[next] == '0' || rest[next] == '#');
}

}  // namespace

void NumberFormat::AddLiteral(Section& section, std::string_view literal) {
  auto& pieces = section.has_point ? section.fraction : section.whole;
  pieces.push_back({PieceKind::kLiteral, std::string(literal)});
}

void NumberFormat::ParseSign(Section& section, char sign, std::string_view rest) {
  if (sign == '0' || sign == '#') {
    const Piece piece{sign == '0' ? PieceKind::kZero : PieceKind::kDigit, {}};
    (section.has_point ? section.fraction : section.whole).push_back(piece);
    ++(section.has_point ? section.decimals : section.whole_digits);
  } else if (sign == '.' && !section.has_point) {
    section.has_point = true;
  } else if (sign == ',' && section.whole_digits > 0 && !section.has_point) {
    if (NextIsDigit(rest)) {
      section.grouped = true;
    } else {
      section.power -= static_cast<int>(kGroup);
    }
  } else {
    if (sign == '%') section.power += 2;
    AddLiteral(section, std::string_view(&sign, 1));
  }
}

NumberFormat::Section NumberFormat::ParseSection(std::string_view text) {
  Section section;
  while (!text.empty()) {
    if (text.front() == '"' || text.front() == '\\') {
      AddLiteral(section, TakeQuoted(text));
      continue;
    }
    const char sign = text.front();
    text.remove_prefix(1);
    ParseSign(section, sign, text);
  }
  return section;
}

NumberFormat NumberFormat::Parse(std::string_view format) {
  NumberFormat parsed;
  std::string_view rest = format;
  size_t length = 0;
  while (length < rest.size()) {
    if (rest[length] == '"' || rest[length] == '\\') {
      std::string_view behind = rest.substr(length);
      TakeQuoted(behind);
      length = rest.size() - behind.size();
    } else if (rest[length] == ';') {
      parsed.sections_.push_back(ParseSection(rest.substr(0, length)));
      rest.remove_prefix(length + 1);
      length = 0;
    } else {
      ++length;
    }
  }
  parsed.sections_.push_back(ParseSection(rest));
  if (parsed.sections_.size() == 1) parsed.plain_ = PlainOf(parsed.sections_.front());
  return parsed;
}

std::optional<PlainNumber> NumberFormat::PlainOf(const Section& section) {
  constexpr int kMostPlaces = 9;
  const bool small = section.whole_digits <= kMostPlaces && section.decimals <= kMostPlaces;
  if (section.whole_digits + section.decimals == 0 || section.power < 0 || !small) return std::nullopt;
  PlainNumber plain{0, 0, section.decimals, section.power, section.grouped, 0};
  for (const Piece& piece : section.whole) {
    const bool last = &piece == &section.whole.back() && !section.has_point;
    if (piece.kind == PieceKind::kLiteral) {
      if (!last || piece.literal.size() != 1) return std::nullopt;
      plain.behind = piece.literal.front();
    } else if (piece.kind == PieceKind::kZero) {
      ++plain.least_whole;
    } else if (plain.least_whole > 0) {
      return std::nullopt;  // an optional digit behind one that is always there
    }
  }
  int place = 0;
  for (const Piece& piece : section.fraction) {
    if (piece.kind == PieceKind::kLiteral) {
      if (&piece != &section.fraction.back() || piece.literal.size() != 1) return std::nullopt;
      plain.behind = piece.literal.front();
      continue;
    }
    ++place;
    if (piece.kind == PieceKind::kZero) plain.least_decimals = place;
  }
  return plain;
}

const NumberFormat::Section& NumberFormat::SectionAt(size_t index) const {
  return index < sections_.size() && !sections_[index].IsEmpty() ? sections_[index] : sections_.front();
}

Decimal NumberFormat::Rounded(const Section& section, Decimal number) {
  if (!number.IsZero()) number.whole += section.power;
  number.RoundTo(section.decimals);
  if (number.IsZero()) number.negative = false;
  return number;
}

std::string NumberFormat::ShowWhole(const Section& section, const std::string& digits) {
  std::string reversed;
  size_t shown = 0;
  size_t left = digits.size();
  const auto put = [&](char digit) {
    if (section.grouped && shown > 0 && shown % kGroup == 0) reversed += ',';
    reversed += digit;
    ++shown;
  };
  int places = section.whole_digits;
  // A section without digits before its point still shows those that the number has.
  if (places == 0) {
    while (left > 0) put(digits[--left]);
  }
  for (auto piece = section.whole.rbegin(); piece != section.whole.rend(); ++piece) {
    if (piece->kind == PieceKind::kLiteral) {
      reversed.append(piece->literal.rbegin(), piece->literal.rend());
      continue;
    }
    if (left > 0) {
      put(digits[--left]);
    } else if (piece->kind == PieceKind::kZero) {
      put('0');
    }
    // The first place takes all digits that are left.
    if (--places == 0) {
      while (left > 0) put(digits[--left]);
    }
  }
  std::reverse(reversed.begin(), reversed.end());
  return reversed;
}

std::string NumberFormat::ShowFraction(const Section& section, const std::string& digits) {
  size_t needed = digits.find_last_not_of('0') + 1;  // npos + 1 is 0
  size_t place = 0;
  for (const Piece& piece : section.fraction) {
    if (piece.kind == PieceKind::kLiteral) continue;
    ++place;
    if (piece.kind == PieceKind::kZero) needed = std::max(needed, place);
  }
  std::string text;
  if (needed > 0) text += '.';
  place = 0;
  for (const Piece& piece : section.fraction) {
    if (piece.kind == PieceKind::kLiteral) {
      text += piece.literal;
    } else if (place++ < needed) {
      text += digits[place - 1];
    }
  }
  return text;
}

std::string NumberFormat::Show(const Section& section, const Decimal& rounded) {
  if (section.whole_digits == 0 && section.decimals == 0) {
    std::string text;
    for (const Piece& piece : section.whole) text += piece.literal;
    for (const Piece& piece : section.fraction) text += piece.literal;
    return text;
  }
  return ShowWhole(section, rounded.WholeDigits()) + ShowFraction(section, rounded.FractionDigits(section.decimals));
}

std::string NumberFormat::Format(const Decimal& number) const {
  if (sections_.empty()) return {};
  constexpr size_t kNegative = 1;
  constexpr size_t kZero = 2;
  const Section* section = &SectionAt(number.negative ? kNegative : 0);
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

}  // namespace stockbook::sheet
