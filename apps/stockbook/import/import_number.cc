// SPDX-License-Identifier: MIT
#include "stockbook/import/import_number.h"

#include <algorithm>
#include <array>

#include "base/digits.h"
#include "base/text.h"

namespace stockbook::app {
namespace {

constexpr std::array<std::string_view, 7> kBlanks{" ", "\t", "　", "\u00A0", "\u202F", "\u2007", "\u2009"};
constexpr std::array<std::string_view, 13> kCurrencies{"¥",   "￥",  "元",  "CNY", "RMB", "USD", "EUR",
                                                       "GBP", "HKD", "US$", "$",   "€",   "£"};

// Takes one of the words from the front or from the back.
template <typename Words>
bool TakeFront(std::string_view& text, const Words& words) {
  const auto found =
      std::find_if(words.begin(), words.end(), [&](std::string_view word) { return text.starts_with(word); });
  if (found == words.end()) return false;
  text.remove_prefix(found->size());
  return true;
}

template <typename Words>
bool TakeBack(std::string_view& text, const Words& words) {
  const auto found =
      std::find_if(words.begin(), words.end(), [&](std::string_view word) { return text.ends_with(word); });
  if (found == words.end()) return false;
  text.remove_suffix(found->size());
  return true;
}

// A price may bear one sign on either side: ￥12元.
std::string_view WithoutCurrency(std::string_view text) {
  TakeFront(text, kCurrencies);
  TakeBack(text, kCurrencies);
  return TrimWideBlanks(text);
}

// The digits of groups of three behind one to three; nothing if they are not grouped like that.
std::string Ungrouped(std::string_view text, char separator) {
  std::string digits;
  bool first = true;
  for (const std::string_view group : base::Split(text, separator)) {
    const bool fits = first ? !group.empty() && group.size() <= 3 : group.size() == 3;
    if (!fits || !std::all_of(group.begin(), group.end(), base::IsDigit)) return {};
    digits += group;
    first = false;
  }
  return digits;
}

bool HasOnce(std::string_view text, char c) { return std::count(text.begin(), text.end(), c) == 1; }

// Number without a sign, its groups and decimals told apart by known marks; empty if it is none.
std::string WithMarks(std::string_view text, char decimal, char group) {
  const size_t mark = text.rfind(decimal);
  const std::string_view whole = text.substr(0, mark);
  std::string plain(whole);
  if (whole.find(group) != std::string_view::npos) plain = Ungrouped(whole, group);
  if (plain.empty() && !whole.empty()) return {};
  if (mark != std::string_view::npos) plain.append(".").append(text.substr(mark + 1));
  return plain;
}

// Where nobody has said which is which. With both marks the last one begins the decimals.
std::string WithEitherMark(std::string_view text, bool& is_ambiguous) {
  const size_t comma = text.rfind(',');
  const size_t point = text.rfind('.');
  constexpr auto kNone = std::string_view::npos;
  if (comma != kNone && point != kNone) return comma > point ? WithMarks(text, ',', '.') : WithMarks(text, '.', ',');
  if (comma == kNone) return HasOnce(text, '.') || point == kNone ? std::string(text) : Ungrouped(text, '.');
  if (!HasOnce(text, ',')) return Ungrouped(text, ',');
  const bool may_be_group = text.size() - comma - 1 == 3 && comma >= 1 && comma <= 3 && text.front() != '0';
  is_ambiguous =
      may_be_group && std::all_of(text.begin() + static_cast<std::ptrdiff_t>(comma) + 1, text.end(), base::IsDigit);
  return WithMarks(text, ',', '.');
}

// A blank or an apostrophe groups digits wherever it stands between them.
std::string WithoutBlankGroups(std::string_view text) {
  std::string narrow(text);
  for (const std::string_view blank : {"\u00A0", "\u202F", "\u2007", "\u2009", "'", "’"})
    narrow = base::ReplaceAll(narrow, blank, " ");
  const size_t end = narrow.find_first_not_of("0123456789 ");
  const std::string_view whole = std::string_view(narrow).substr(0, end);
  if (whole.find(' ') == std::string_view::npos) return narrow;
  const std::string digits = Ungrouped(whole, ' ');
  if (digits.empty()) return narrow;
  return end == std::string::npos ? digits : digits + narrow.substr(end);
}

}  // namespace

std::string_view TrimWideBlanks(std::string_view text) {
  while (TakeFront(text, kBlanks) || TakeBack(text, kBlanks)) {
  }
  return text;
}

std::string NarrowText(std::string_view text) {
  if (text.find('\xEF') == std::string_view::npos) return std::string(text);
  std::string narrow;
  for (size_t at = 0; at < text.size(); ++at) {
    // U+FF01 to U+FF5E stand for ! to ~.
    const std::string_view rest = text.substr(at);
    const auto last = rest.size() > 2 ? static_cast<unsigned char>(rest[2]) : 0U;
    if (rest.size() > 2 && rest.starts_with("\xEF\xBC") && last >= 0x81 && last <= 0xBF) {
      narrow += static_cast<char>(last - 0x81 + '!');
      at += 2;
    } else if (rest.size() > 2 && rest.starts_with("\xEF\xBD") && last >= 0x80 && last <= 0x9E) {
      narrow += static_cast<char>(last - 0x80 + '`');
      at += 2;
    } else {
      narrow += text[at];
    }
  }
  return narrow;
}

ImportNumber PlainNumber(std::string_view text, DecimalMark mark) {
  const std::string narrow = NarrowText(text);
  std::string_view rest = WithoutCurrency(TrimWideBlanks(narrow));
  std::string sign;
  if (rest.size() > 2 && rest.front() == '(' && rest.back() == ')') {
    sign = "-";
    rest = TrimWideBlanks(rest.substr(1, rest.size() - 2));
  } else if (!rest.empty() && (rest.front() == '-' || rest.front() == '+')) {
    sign = rest.front() == '-' ? "-" : "";
    rest = TrimWideBlanks(rest.substr(1));
  } else if (rest.size() > 1 && rest.back() == '-') {
    sign = "-";
    rest = TrimWideBlanks(rest.substr(0, rest.size() - 1));
  } else if (rest.starts_with("\u2212")) {
    sign = "-";
    rest.remove_prefix(3);
  }
  const std::string number = WithoutBlankGroups(WithoutCurrency(rest));
  ImportNumber read;
  switch (mark) {
    case DecimalMark::kPoint:
      read.plain = WithMarks(number, '.', ',');
      break;
    case DecimalMark::kComma:
      read.plain = WithMarks(number, ',', '.');
      break;
    case DecimalMark::kEither:
      read.plain = WithEitherMark(number, read.is_ambiguous);
      break;
  }
  // A sign that currencies had hidden would be taken for one of the number by who reads it next.
  const auto is_numeric = [](char c) { return base::IsDigit(c) || c == '.'; };
  const bool is_number = !read.plain.empty() && is_numeric(read.plain.front()) && is_numeric(read.plain.back());
  read.plain = is_number ? sign + read.plain : std::string(text);
  return read;
}

}  // namespace stockbook::app
