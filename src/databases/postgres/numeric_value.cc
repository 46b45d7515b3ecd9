// SPDX-License-Identifier: MIT
#include "databases/postgres/numeric_value.h"

#include <array>
#include <charconv>
#include <limits>

#include "databases/postgres/wire_numbers.h"

namespace stockbook::databases {
namespace {

constexpr int kBase = 10000;

}  // namespace

std::optional<NumericValue> NumericValue::FromWire(std::string_view bytes) {
  constexpr size_t kHeader = 8;
  constexpr uint16_t kNegative = 0x4000;
  constexpr uint16_t kNotANumber = 0xC000;
  constexpr uint16_t kInfinite = 0xD000;
  constexpr uint16_t kMinusInfinite = 0xF000;
  if (bytes.size() < kHeader) return std::nullopt;
  NumericValue value;
  value.count_ = WireUnsigned<uint16_t>(bytes.data());
  value.weight_ = WireSigned<int16_t>(bytes.data() + 2);
  const auto sign = WireUnsigned<uint16_t>(bytes.data() + 4);
  value.digits_ = bytes.substr(kHeader);
  if (value.digits_.size() != value.count_ * 2) return std::nullopt;
  value.negative_ = sign == kNegative;
  if (sign == kNotANumber) value.kind_ = Kind::kNotANumber;
  if (sign == kInfinite) value.kind_ = Kind::kInfinite;
  if (sign == kMinusInfinite) value.kind_ = Kind::kMinusInfinite;
  return value;
}

int NumericValue::DigitAt(size_t index) const {
  return index < count_ ? WireUnsigned<uint16_t>(digits_.data() + index * 2) : 0;
}

std::optional<int64_t> NumericValue::CountOf(int place) const {
  int64_t number = 0;
  for (int at = weight_; at >= place; --at) {
    const int digit = DigitAt(static_cast<size_t>(weight_ - at));
    if (__builtin_mul_overflow(number, int64_t{kBase}, &number)) return std::nullopt;
    // Towards its own side, as the least number has no opposite.
    if (__builtin_add_overflow(number, int64_t{negative_ ? -digit : digit}, &number)) return std::nullopt;
  }
  return number;
}

std::optional<int64_t> NumericValue::Units() const {
  std::optional<int64_t> units = CountOf(-1);
  if (!units || weight_ + 1 + 1 < 0) return units;
  const auto beyond = static_cast<size_t>(weight_ + 2);  // the first digit that units have no room for
  if (beyond >= count_) return units;
  const int digit = DigitAt(beyond);
  // The server keeps no zeros at the end, so another digit makes it more than a half.
  const bool more = digit > kBase / 2 || (digit == kBase / 2 && (beyond + 1 < count_ || *units % 2 != 0));
  if (more && __builtin_add_overflow(*units, int64_t{negative_ ? -1 : 1}, &*units)) return std::nullopt;
  return units;
}

bool NumericValue::HasAtMostFourDecimals() const { return count_ == 0 || weight_ - static_cast<int>(count_) + 1 >= -1; }

std::optional<int64_t> NumericValue::Whole() const {
  if (count_ > 0 && weight_ - static_cast<int>(count_) + 1 < 0) return std::nullopt;
  return CountOf(0);
}

double NumericValue::Real() const {
  // A whole number of 53 bits over a power of ten of 53 bits is rounded once, by the division.
  constexpr std::array<double, 6> kPowers = {1, 1e4, 1e8, 1e12, 1e16, 1e20};
  constexpr int64_t kExact = int64_t{1} << 53;
  if (count_ == 0) return 0;
  const int lowest = weight_ - static_cast<int>(count_) + 1;
  const auto mantissa = lowest <= 0 ? CountOf(lowest) : CountOf(0);
  if (mantissa && lowest > -6 && *mantissa >= -kExact && *mantissa <= kExact) {
    return static_cast<double>(*mantissa) / kPowers[lowest < 0 ? static_cast<size_t>(-lowest) : 0];
  }
  const std::string text = Text();
  double number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec != std::errc::result_out_of_range) return number;
  if (weight_ < 0) return 0;
  return negative_ ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
}

std::string NumericValue::Text() const {
  std::string text;
  const auto append = [&](int place) {
    const int index = weight_ - place;
    const int digit = index < 0 ? 0 : DigitAt(static_cast<size_t>(index));
    for (int power = kBase / 10; power > 0; power /= 10) text += static_cast<char>('0' + digit / power % 10);
  };
  for (int place = weight_; place >= 0; --place) append(place);
  const size_t zeros = text.find_first_not_of('0');
  text.erase(0, zeros == std::string::npos ? text.size() : zeros);
  if (text.empty()) text = "0";
  const int lowest = weight_ - static_cast<int>(count_) + 1;
  if (count_ > 0 && lowest < 0) {
    text += '.';
    for (int place = -1; place >= lowest; --place) append(place);
    text.erase(text.find_last_not_of('0') + 1);
  }
  return negative_ ? '-' + text : text;
}

}  // namespace stockbook::databases
