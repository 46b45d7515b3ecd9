// SPDX-License-Identifier: MIT
#include "sheet/format/plain_number.h"

#include <array>
#include <cmath>
#include <cstring>

#include "base/digits.h"
#include "stockbook/base/money.h"

namespace stockbook::sheet {
namespace {

using base::kMostPower;
using base::kPowersOfTen;

constexpr uint64_t kMostUnits = kPowersOfTen[kMostPower];

// ",000", ",001" to ",999".
constexpr std::array<char, 4000> Groups() {
  std::array<char, 4000> groups{};
  for (size_t number = 0; number < 1000; ++number) {
    groups[4 * number] = ',';
    groups[4 * number + 1] = static_cast<char>('0' + number / 100);
    groups[4 * number + 2] = static_cast<char>('0' + number / 10 % 10);
    groups[4 * number + 3] = static_cast<char>('0' + number % 10);
  }
  return groups;
}
constexpr std::array kGroups = Groups();

// Writes a number from its last character to its first, three digits at once after a comma, which the next group
// overwrites.
class Backwards {
 public:
  explicit Backwards(char* end) : at_(end) {}

  void Put(char c) { *--at_ = c; }
  // That many digits of the number, with leading zeros.
  void PutDigits(uint64_t number, int count) {
    for (; count >= 3; count -= 3, number /= 1000) PutLast(number % 1000, 3);
    if (count > 0) PutLast(number % 1000, count);
  }
  // All digits of the number, none for zero.
  void PutNumber(uint64_t number) {
    for (; number >= 1000; number /= 1000) PutLast(number % 1000, 3);
    PutLast(number, number >= 100 ? 3 : number >= 10 ? 2 : number > 0 ? 1 : 0);
  }
  void PutGroup(uint64_t group) { PutLast(group, 4); }
  char* at() const { return at_; }

 private:
  // The last `count` characters of a group; the others are written too, but ignored.
  void PutLast(uint64_t group, int count) {
    std::memcpy(at_ - 4, &kGroups[static_cast<size_t>(4 * group)], 4);
    at_ -= count;
  }

  char* at_;
};

int DigitsOf(uint64_t number) {
  int digits = 0;
  for (; number > 0; number /= 10) ++digits;
  return digits;
}

void PutWhole(Backwards& text, uint64_t whole, const PlainNumber& shape) {
  int digits = whole > 0 && shape.least_whole <= 1 ? 1 : DigitsOf(whole);
  if (shape.grouped) {
    for (; whole >= 1000; whole /= 1000) text.PutGroup(whole % 1000);
  }
  text.PutNumber(whole);
  for (; digits < shape.least_whole; ++digits) {
    if (shape.grouped && digits > 0 && digits % 3 == 0) text.Put(',');
    text.Put('0');
  }
}

struct Parts {
  uint64_t whole = 0;
  uint64_t fraction = 0;
};

// The usual numbers of decimals have their own cases, because dividing by a constant takes a fraction of the time.
Parts PartsOf(uint64_t size, int places) {
  switch (places) {
    case 0:
      return {size, 0};
    case 1:
      return {size / 10, size % 10};
    case 2:
      return {size / 100, size % 100};
    case 4:
      return {size / 10000, size % 10000};
    default: {
      const uint64_t unit = kPowersOfTen[static_cast<size_t>(places)];
      return {size / unit, size % unit};
    }
  }
}

void PutFraction(Backwards& text, uint64_t fraction, int places, int least) {
  int digits = places;
  for (; digits > least && fraction % 10 == 0; --digits) fraction /= 10;
  for (int place = least; place > digits; --place) text.Put('0');
  text.PutDigits(fraction, digits);
  if (digits > 0 || least > 0) text.Put('.');
}

// Below this the digits of a double's shortest decimal are the same, whatever its 16th digit is.
constexpr double kMostExact = 1e11;

bool AppendWritten(const char* begin, const char* end, std::string& out) {
  if (begin != nullptr) out.append(begin, end);
  return begin != nullptr;
}

}  // namespace

char* PlainNumber::Write(int64_t units, int decimals, char* end) const {
  const bool negative = units < 0;
  uint64_t size = negative ? ~static_cast<uint64_t>(units) + 1 : static_cast<uint64_t>(units);
  if (size >= kMostUnits || decimals > kMostPower) return nullptr;
  int places = decimals - power;
  if (places < 0) {
    if (-places > kMostPower || size >= kMostUnits / kPowersOfTen[static_cast<size_t>(-places)]) return nullptr;
    size *= kPowersOfTen[static_cast<size_t>(-places)];
    places = 0;
  }
  if (places > most_decimals) {
    const Parts parts = PartsOf(size, places - most_decimals);
    size = parts.whole + (2 * parts.fraction >= kPowersOfTen[static_cast<size_t>(places - most_decimals)] ? 1 : 0);
    places = most_decimals;
  }
  Backwards text(end);
  if (suffix != 0) text.Put(suffix);
  const Parts parts = PartsOf(size, places);
  PutFraction(text, parts.fraction, places, least_decimals);
  PutWhole(text, parts.whole, *this);
  if (negative && size != 0) text.Put('-');
  return text.at();
}

char* PlainNumber::Write(double number, char* end) const {
  const int places = most_decimals + power;
  if (places > kMostPower) return nullptr;
  const double scaled = std::fabs(number) * static_cast<double>(kPowersOfTen[static_cast<size_t>(places)]);
  if (!(scaled < kMostExact)) return nullptr;
  auto units = static_cast<int64_t>(scaled);
  const double rest = scaled - static_cast<double>(units);
  constexpr double kNearMiddle = 1e-3;
  if (std::fabs(rest - 0.5) < kNearMiddle) return nullptr;
  if (rest > 0.5) ++units;
  return Write(number < 0 ? -units : units, places, end);
}

char* PlainNumber::WriteDefault(double number, char* end) {
  constexpr auto kScale = static_cast<double>(base::Money::kScale);
  constexpr int kDigits = 15;
  const double size = std::fabs(number);
  if (!(size < kMostExact / kScale)) return nullptr;
  const auto units = static_cast<int64_t>(size * kScale + 0.5);
  const double off = std::fabs(static_cast<double>(units) / kScale - size);
  if (off == 0) return PlainNumber().Write(number < 0 ? -units : units, base::Money::kDecimals, end);
  if (size < 1) return nullptr;
  int decimals = kDigits;
  for (double whole = 1; whole <= size; whole *= 10) --decimals;
  const double scaled = size * static_cast<double>(kPowersOfTen[static_cast<size_t>(decimals)]);
  auto digits = static_cast<int64_t>(scaled);
  const double rest = scaled - static_cast<double>(digits);
  constexpr double kNearMiddle = 0.2;
  if (std::fabs(rest - 0.5) < kNearMiddle) return nullptr;
  if (rest > 0.5) ++digits;
  PlainNumber all;
  all.most_decimals = decimals;
  return all.Write(number < 0 ? -digits : digits, decimals, end);
}

bool PlainNumber::Append(int64_t units, int decimals, std::string& out) const {
  std::array<char, kMostBytes> buffer;
  char* const end = buffer.data() + buffer.size();
  return AppendWritten(Write(units, decimals, end), end, out);
}

bool PlainNumber::Append(double number, std::string& out) const {
  std::array<char, kMostBytes> buffer;
  char* const end = buffer.data() + buffer.size();
  return AppendWritten(Write(number, end), end, out);
}

}  // namespace stockbook::sheet
