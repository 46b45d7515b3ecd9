// SPDX-License-Identifier: MIT
#include "interaction/find/number_matcher.h"

#include <algorithm>

#include "base/digits.h"

namespace stockbook::interaction {
namespace {

using base::kPowersOfTen;

constexpr size_t kMostDigits = 3;   // digits of a term that are looked up in windows
constexpr size_t kMostAtPoint = 9;  // digits before and after a point that are compared as numbers
constexpr size_t kMostText = 40;

size_t DigitsOf(uint64_t number) {
  size_t digits = 1;
  for (; number >= 10; number /= 10) ++digits;
  return digits;
}

uint64_t ValueOf(std::string_view digits) {
  uint64_t value = 0;
  for (const char c : digits) value = value * 10 + static_cast<uint64_t>(c - '0');
  return value;
}

// Division by a constant that the compiler knows is several times as fast.
uint64_t DividedByPower(uint64_t number, int decimals) {
  switch (decimals) {
    case 0:
      return number;
    case 1:
      return number / kPowersOfTen[1];
    case 2:
      return number / kPowersOfTen[2];
    case 3:
      return number / kPowersOfTen[3];
    case 4:
      return number / kPowersOfTen[4];
    default:
      return number / kPowersOfTen[static_cast<size_t>(decimals)];
  }
}

// The leading digits of the term, as many as are looked up.
std::string_view DigitsIn(std::string_view term) {
  constexpr std::string_view kDigits = "0123456789";
  const size_t begin = std::min(term.find_first_of(kDigits), term.size());
  const size_t end = std::min(term.find_first_not_of(kDigits, begin), term.size());
  return term.substr(begin, std::min(end - begin, kMostDigits));
}

// The default text of units / 10^decimals, written up to `end`.
std::string_view WriteDecimal(int64_t units, int decimals, char* end) {
  const bool negative = units < 0;
  auto rest = static_cast<uint64_t>(negative ? -units : units);
  char* at = end;
  if (decimals > 0) {
    for (; decimals > 0; --decimals, rest /= 10) *--at = static_cast<char>('0' + rest % 10);
    *--at = '.';
  }
  do {
    *--at = static_cast<char>('0' + rest % 10);
    rest /= 10;
  } while (rest > 0);
  if (negative) *--at = '-';
  return {at, static_cast<size_t>(end - at)};
}

}  // namespace

NumberMatcher::NumberMatcher(const TermGroup& terms) : terms_(terms) {
  for (size_t places = 1; places <= kWindow; ++places)
    padded_[places].assign(static_cast<size_t>(kPowersOfTen[places]), 0);
  for (size_t at = 0; at < terms.terms().size(); ++at) {
    const auto bit = static_cast<uint8_t>(1U << at);
    if ((terms.in_numbers() & bit) != 0) AddTerm(bit, terms.terms()[at]);
  }
  plain_.resize(kPowersOfTen[kWindow]);
  for (size_t number = 0; number < plain_.size(); ++number) plain_[number] = padded_[DigitsOf(number)][number];
  trimmed_.resize(kPowersOfTen[kWindow]);
  for (size_t number = 1; number < trimmed_.size(); ++number) {
    size_t places = kWindow;
    size_t rest = number;
    for (; rest % 10 == 0; rest /= 10) --places;
    trimmed_[number] = padded_[places][rest];
  }
}

void NumberMatcher::AddTerm(uint8_t bit, const Wildcard& term) {
  const base::Substring* const part = term.Contained();
  const std::string_view text = part != nullptr ? std::string_view(part->text()) : std::string_view();
  if (AddPoint(bit, text)) return;
  const std::string_view digits = DigitsIn(text);
  if (digits.empty()) {
    always_ |= bit;
    return;
  }
  if (digits.size() == text.size()) exact_ |= bit;
  longest_ = std::max(longest_, digits.size());
  has_digits_ = true;
  AddDigits({digits, bit});
}

bool NumberMatcher::AddPoint(uint8_t bit, std::string_view term) {
  const size_t point = term.find('.');
  if (point == std::string_view::npos) return false;
  const std::string_view whole = term.substr(0, point);
  const std::string_view fraction = term.substr(point + 1);
  const bool plain = term.find_first_not_of("0123456789", term.find_first_not_of("0123456789") + 1) == term.npos;
  if (!plain || whole.size() > kMostAtPoint || fraction.size() > kMostAtPoint) return false;
  const uint64_t least = whole.size() > 1 ? kPowersOfTen[whole.size() - 1] : 0;
  points_.push_back(
      {bit, ValueOf(whole), kPowersOfTen[whole.size()], least, ValueOf(fraction), static_cast<int>(fraction.size())});
  exact_ |= bit;
  return true;
}

void NumberMatcher::AddDigits(const Digits& digits) {
  const uint64_t value = ValueOf(digits.text);
  for (size_t places = digits.text.size(); places <= kWindow; ++places) {
    // The number of digits after and before them.
    for (size_t after = 0; after + digits.text.size() <= places; ++after) {
      const uint64_t unit = kPowersOfTen[after + digits.text.size()];
      for (uint64_t before = 0; before < kPowersOfTen[places]; before += unit) {
        const uint64_t first = before + value * kPowersOfTen[after];
        for (uint64_t number = first; number < first + kPowersOfTen[after]; ++number)
          padded_[places][static_cast<size_t>(number)] |= digits.bit;
      }
    }
  }
}

template <int kStep>
uint8_t NumberMatcher::FoundInWhole(uint64_t whole) const {
  uint8_t found = 0;
  for (; whole >= kPowersOfTen[kWindow]; whole /= kPowersOfTen[kStep])
    found |= padded_[kWindow][static_cast<size_t>(whole % kPowersOfTen[kWindow])];
  return found | plain_[static_cast<size_t>(whole)];
}

template <int kStep>
uint8_t NumberMatcher::FoundInPlaces(uint64_t fraction, int places) const {
  uint8_t found = 0;
  for (; places > static_cast<int>(kWindow); places -= kStep, fraction /= kPowersOfTen[kStep])
    found |= padded_[kWindow][static_cast<size_t>(fraction % kPowersOfTen[kWindow])];
  return places > 0 ? found | padded_[static_cast<size_t>(places)][static_cast<size_t>(fraction)] : found;
}

uint8_t NumberMatcher::FoundInDigits(uint64_t whole, uint64_t fraction, int places) const {
  switch (longest_) {
    case 1:
      return FoundInWhole<4>(whole) | FoundInPlaces<4>(fraction, places);
    case 2:
      return FoundInWhole<3>(whole) | FoundInPlaces<3>(fraction, places);
    default:
      return FoundInWhole<2>(whole) | FoundInPlaces<2>(fraction, places);
  }
}

uint8_t NumberMatcher::FoundAroundPoint(uint64_t whole, uint64_t fraction, int places) const {
  uint8_t found = 0;
  // An integer is shown without a point.
  if (places == 0) return found;
  for (const Point& point : points_) {
    if (places < point.places || whole < point.whole_least || whole % point.whole_unit != point.whole) continue;
    if (fraction / kPowersOfTen[static_cast<size_t>(places - point.places)] == point.fraction) found |= point.bit;
  }
  return found;
}

uint8_t NumberMatcher::FoundIn(int64_t units, int decimals) const {
  auto size = static_cast<uint64_t>(units < 0 ? -units : units);
  const uint64_t whole = DividedByPower(size, decimals);
  uint64_t fraction = size - whole * kPowersOfTen[static_cast<size_t>(decimals)];
  uint8_t found = always_;
  const bool few_places = decimals <= static_cast<int>(kWindow);
  if (few_places) {
    // The table already covers trailing zeros.
    if (has_digits_) {
      found |= FoundInDigits(whole, 0, 0);
      found |= trimmed_[static_cast<size_t>(fraction * kPowersOfTen[kWindow - static_cast<size_t>(decimals)])];
    }
    if (points_.empty() && (found & ~exact_) == 0) return found;
  }
  for (; decimals > 0 && fraction % 10 == 0; --decimals, fraction /= 10) size /= 10;
  if (has_digits_ && !few_places) found |= FoundInDigits(whole, fraction, decimals);
  if (!points_.empty()) found |= FoundAroundPoint(whole, fraction, decimals);
  const auto unsure = static_cast<uint8_t>(found & ~exact_);
  if (unsure == 0) return found;
  std::array<char, kMostText> text;
  const auto trimmed = static_cast<int64_t>(size);
  const std::string_view written = WriteDecimal(units < 0 ? -trimmed : trimmed, decimals, text.data() + text.size());
  return static_cast<uint8_t>((found & exact_) | terms_.FoundIn(written, unsure));
}

}  // namespace stockbook::interaction
