// SPDX-License-Identifier: MIT
#include "interaction/number_matcher.h"

#include <algorithm>

namespace stockbook::interaction {
namespace {

constexpr size_t kMostDigits = 3;  // of a term that are looked for in windows
constexpr size_t kMostText = 40;

constexpr auto PowersOfTen() {
  std::array<uint64_t, 17> powers{};
  uint64_t power = 1;
  for (uint64_t& each : powers) {
    each = power;
    power *= 10;
  }
  return powers;
}
constexpr std::array kPowers = PowersOfTen();

size_t DigitsOf(uint64_t number) {
  size_t digits = 1;
  for (; number >= 10; number /= 10) ++digits;
  return digits;
}

// The first digits of the term, as many as are looked for.
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
  for (size_t places = 1; places <= kWindow; ++places) padded_[places].assign(kPowers[places], 0);
  size_t longest = 1;
  for (size_t at = 0; at < terms.terms().size(); ++at) {
    const auto bit = static_cast<uint8_t>(1U << at);
    const base::Substring* const part = terms.terms()[at].Contained();
    if ((terms.in_numbers() & bit) == 0) continue;
    const std::string_view digits = part != nullptr ? DigitsIn(part->text()) : std::string_view();
    if (digits.empty()) {
      always_ |= bit;
      continue;
    }
    if (digits.size() == part->text().size()) exact_ |= bit;
    longest = std::max(longest, digits.size());
    AddDigits({digits, bit});
  }
  plain_.resize(kPowers[kWindow]);
  for (size_t number = 0; number < plain_.size(); ++number) plain_[number] = padded_[DigitsOf(number)][number];
  step_places_ = static_cast<int>(kWindow - longest + 1);
  step_ = kPowers[static_cast<size_t>(step_places_)];
}

void NumberMatcher::AddDigits(const Digits& digits) {
  uint64_t value = 0;
  for (const char c : digits.text) value = value * 10 + static_cast<uint64_t>(c - '0');
  for (size_t places = digits.text.size(); places <= kWindow; ++places) {
    // So many digits stand behind them and before them.
    for (size_t behind = 0; behind + digits.text.size() <= places; ++behind) {
      const uint64_t unit = kPowers[behind + digits.text.size()];
      for (uint64_t before = 0; before < kPowers[places]; before += unit) {
        const uint64_t first = before + value * kPowers[behind];
        for (uint64_t number = first; number < first + kPowers[behind]; ++number) padded_[places][number] |= digits.bit;
      }
    }
  }
}

uint8_t NumberMatcher::FoundInWhole(uint64_t whole) const {
  uint8_t found = 0;
  for (; whole >= kPowers[kWindow]; whole /= step_) found |= padded_[kWindow][whole % kPowers[kWindow]];
  return found | plain_[whole];
}

uint8_t NumberMatcher::FoundInFraction(uint64_t fraction, int places) const {
  uint8_t found = 0;
  for (; places > static_cast<int>(kWindow); places -= step_places_, fraction /= step_)
    found |= padded_[kWindow][fraction % kPowers[kWindow]];
  return found | padded_[static_cast<size_t>(places)][fraction];
}

uint8_t NumberMatcher::FoundIn(int64_t units, int decimals, uint8_t wanted) const {
  auto size = static_cast<uint64_t>(units < 0 ? -units : units);
  for (; decimals > 0 && size % 10 == 0; --decimals) size /= 10;
  uint8_t found = always_;
  if (decimals == 0) {
    found |= FoundInWhole(size);
  } else {
    const uint64_t unit = kPowers[static_cast<size_t>(decimals)];
    found |= FoundInWhole(size / unit);
    found |= FoundInFraction(size % unit, decimals);
  }
  found &= wanted;
  const auto unsure = static_cast<uint8_t>(found & ~exact_);
  if (unsure == 0) return found;
  std::array<char, kMostText> text;
  const auto trimmed = static_cast<int64_t>(size);
  const std::string_view written = WriteDecimal(units < 0 ? -trimmed : trimmed, decimals, text.data() + text.size());
  return static_cast<uint8_t>((found & exact_) | terms_.FoundIn(written, unsure));
}

}  // namespace stockbook::interaction
