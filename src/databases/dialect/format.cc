// SPDX-License-Identifier: MIT
#include <algorithm>
#include <vector>

#include "base/number.h"
#include "base/text.h"
#include "databases/dialect/scalar_functions.h"

namespace stockbook::databases {
namespace {

using base::Date;
using base::DateParts;
using base::Value;

// One piece of a pattern: a code character of the pattern, or text that is written as it stands.
struct Piece {
  char code = 0;  // 0: literal
  std::string text;
};

bool IsLetter(char c, char lower) { return c == lower || c == static_cast<char>(lower - 32); }

// Takes quotes and backslashes out; every other ASCII character stays a code for the caller to read.
std::vector<Piece> Pieces(std::string_view pattern) {
  std::vector<Piece> pieces;
  for (size_t at = 0; at < pattern.size(); ++at) {
    const char c = pattern[at];
    if (c == '\\' && at + 1 < pattern.size()) {
      const auto next = base::LeftCharacters(pattern.substr(at + 1), 1);
      pieces.push_back({0, std::string(next)});
      at += next.size();
    } else if (c == '"') {
      const size_t end = std::min(pattern.find('"', at + 1), pattern.size());
      pieces.push_back({0, std::string(pattern.substr(at + 1, end - at - 1))});
      at = end;
    } else if (static_cast<unsigned char>(c) >= 0x80) {
      const auto character = base::LeftCharacters(pattern.substr(at), 1);
      pieces.push_back({0, std::string(character)});
      at += character.size() - 1;
    } else {
      pieces.push_back({c, std::string(1, c)});
    }
  }
  return pieces;
}

bool IsDatePattern(const std::vector<Piece>& pieces) {
  bool date = false;
  for (const Piece& piece : pieces) {
    if (piece.code == '0' || piece.code == '#') return false;
    for (const char letter : {'y', 'm', 'd', 'h', 'n', 's'})
      date = date || (piece.code != 0 && IsLetter(piece.code, letter));
  }
  return date;
}

std::string Digits(int number, size_t least) {
  const std::string text = std::to_string(number);
  return text.size() < least ? std::string(least - text.size(), '0') + text : text;
}

// A run of the same letter, as in "yyyy".
std::string DateRun(char letter, size_t count, const DateParts& at, bool minutes) {
  switch (letter) {
    case 'y':
      return count > 2 ? Digits(at.year, 4) : Digits(at.year % 100, 2);
    case 'm':
      return Digits(minutes ? at.minute : at.month, std::min<size_t>(count, 2));
    case 'd':
      return Digits(at.day, std::min<size_t>(count, 2));
    case 'h':
      return Digits(at.hour, std::min<size_t>(count, 2));
    case 'n':
      return Digits(at.minute, std::min<size_t>(count, 2));
    default:
      return Digits(at.second, std::min<size_t>(count, 2));
  }
}

std::string FormatDate(Date date, const std::vector<Piece>& pieces) {
  const DateParts at = date.parts();
  std::string text;
  bool after_hour = false;  // an m behind an h means minutes
  for (size_t index = 0; index < pieces.size();) {
    const char code = pieces[index].code;
    const char letter = code >= 'A' && code <= 'Z' ? static_cast<char>(code + 32) : code;
    if (letter == 0 || std::string_view("ymdhns").find(letter) == std::string_view::npos) {
      text += pieces[index++].text;
      continue;
    }
    size_t end = index;
    while (end < pieces.size() && pieces[end].code != 0 && IsLetter(pieces[end].code, letter)) ++end;
    text += DateRun(letter, end - index, at, letter == 'm' && after_hour);
    after_hour = letter == 'h' || (after_hour && letter != 'm');
    index = end;
  }
  return text;
}

// A decimal taken apart and rounded half away from zero on its digits.
struct Rounded {
  bool negative = false;
  std::string whole;  // no leading zeros; empty for 0
  std::string fraction;
};

Rounded RoundTo(std::string_view decimal, size_t places, bool percent) {
  Rounded parts;
  parts.negative = !decimal.empty() && decimal.front() == '-';
  if (parts.negative) decimal.remove_prefix(1);
  const size_t point = std::min(decimal.find('.'), decimal.size());
  parts.whole = decimal.substr(0, point);
  if (point < decimal.size()) parts.fraction = decimal.substr(point + 1);
  if (percent) {
    parts.fraction.append(2, '0');
    parts.whole += parts.fraction.substr(0, 2);
    parts.fraction.erase(0, 2);
  }
  const bool up = parts.fraction.size() > places && parts.fraction[places] >= '5';
  parts.fraction.resize(places, '0');
  if (up) {
    std::string digits = "0" + parts.whole + parts.fraction;
    size_t at = digits.size() - 1;
    while (digits[at] == '9') digits[at--] = '0';
    ++digits[at];
    parts.whole = digits.substr(0, digits.size() - places);
    parts.fraction = digits.substr(digits.size() - places);
  }
  parts.whole.erase(0, std::min(parts.whole.find_first_not_of('0'), parts.whole.size()));
  parts.negative =
      parts.negative && (!parts.whole.empty() || parts.fraction.find_first_not_of('0') != std::string::npos);
  return parts;
}

// The places of a number pattern, and where the point stands among its pieces.
struct NumberPattern {
  std::vector<Piece> pieces;
  size_t point = 0;
  size_t decimals = 0;
  size_t whole_places = 0;
  size_t whole_zeros = 0;
  bool grouped = false;
  bool percent = false;
};

NumberPattern ReadNumberPattern(std::vector<Piece> pieces) {
  NumberPattern pattern;
  pattern.point = pieces.size();
  for (size_t index = 0; index < pieces.size(); ++index) {
    const char code = pieces[index].code;
    const bool behind = index > pattern.point;
    if (code == '.' && pattern.point == pieces.size()) pattern.point = index;
    if (code == '%') pattern.percent = true;
    if (code == ',' && pattern.whole_places > 0 && !behind) pattern.grouped = true;
    if (code != '0' && code != '#') continue;
    if (behind) {
      ++pattern.decimals;
    } else {
      ++pattern.whole_places;
      // Every place behind a 0 shows a digit.
      pattern.whole_zeros += code == '0' || pattern.whole_zeros > 0 ? 1 : 0;
    }
  }
  pattern.pieces = std::move(pieces);
  return pattern;
}

std::string Grouped(const std::string& whole, bool grouped) {
  std::string text = whole;
  if (!grouped) return text;
  for (size_t at = text.size(); at > 3; at -= 3) text.insert(at - 3, ",");
  return text;
}

std::string FormatNumber(const std::string& decimal, const NumberPattern& pattern) {
  Rounded parts = RoundTo(decimal, pattern.decimals, pattern.percent);
  if (parts.whole.size() < pattern.whole_zeros) parts.whole.insert(0, pattern.whole_zeros - parts.whole.size(), '0');
  std::string text = parts.negative ? "-" : "";
  // With literals among the places ("0000-00") the digits are dealt out from the right; the first place takes the rest.
  size_t whole_left = pattern.whole_places;
  size_t dealt = 0;
  size_t decimal_at = 0;
  for (size_t index = 0; index < pattern.pieces.size(); ++index) {
    const Piece& piece = pattern.pieces[index];
    const bool place = piece.code == '0' || piece.code == '#';
    if (place && index < pattern.point) {
      --whole_left;
      if (pattern.grouped) {
        if (dealt == 0) text += Grouped(parts.whole, true);
        dealt = 1;
        continue;
      }
      const size_t upto = parts.whole.size() > whole_left ? parts.whole.size() - whole_left : 0;
      text.append(parts.whole, dealt, upto > dealt ? upto - dealt : 0);
      dealt = std::max(dealt, upto);
    } else if (place) {
      // An optional place shows nothing when only zeros are left.
      const bool rest = parts.fraction.find_first_not_of('0', decimal_at) != std::string::npos;
      if (piece.code == '0' || rest) text += parts.fraction[decimal_at];
      ++decimal_at;
    } else if (index == pattern.point && index < pattern.pieces.size()) {
      text += '.';
    } else if (piece.code != ',' || pattern.whole_places == 0) {
      text += piece.text;
    }
  }
  return text;
}

// The sections of "positive;negative;zero"; a semicolon in quotes does not part them.
std::vector<std::vector<Piece>> Sections(const std::vector<Piece>& pieces) {
  std::vector<std::vector<Piece>> sections(1);
  for (const Piece& piece : pieces) {
    if (piece.code == ';') {
      sections.emplace_back();
    } else {
      sections.back().push_back(piece);
    }
  }
  return sections;
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
  const auto pieces = Pieces(NamedPattern(pattern_text));
  if (IsDatePattern(pieces)) {
    const auto date = value.As<std::string>() != nullptr ? ReadDateText(*value.As<std::string>()) : value.AsDate();
    return date ? FormatDate(*date, pieces) : value.Text();
  }
  std::string decimal = PlainDecimal(value);
  if (decimal.empty()) return value.Text();
  auto sections = Sections(pieces);
  const bool zero = decimal.find_first_of("123456789") == std::string::npos;
  if (zero && sections.size() > 2) return FormatNumber(decimal, ReadNumberPattern(std::move(sections[2])));
  if (decimal.front() == '-' && sections.size() > 1 && !sections[1].empty()) {
    return FormatNumber(decimal.substr(1), ReadNumberPattern(std::move(sections[1])));
  }
  return FormatNumber(decimal, ReadNumberPattern(std::move(sections[0])));
}

}  // namespace stockbook::databases
