// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stockbook::databases {

// A number of the server's type numeric as it comes in binary: digits of 10,000 each, whose place is counted from the
// point, so that money falls out of them exactly. It refers to the bytes and copies nothing.
class NumericValue {
 public:
  enum class Kind { kFinite, kInfinite, kMinusInfinite, kNotANumber };

  // Nothing when the bytes are no numeric.
  static std::optional<NumericValue> FromWire(std::string_view bytes);

  Kind kind() const { return kind_; }
  // The following are of a finite number. In units of 1/10,000, half to even; nothing when 64 bits do not hold them.
  std::optional<int64_t> Units() const;
  bool HasAtMostFourDecimals() const;
  // When it is whole and 64 bits hold it.
  std::optional<int64_t> Whole() const;
  // The nearest double.
  double Real() const;
  // All its digits: "-1234.5".
  std::string Text() const;

 private:
  int DigitAt(size_t index) const;
  // The number at the places from the highest down to `place` (10,000^place), or nothing when 64 bits do not hold it.
  std::optional<int64_t> CountOf(int place) const;

  std::string_view digits_;
  size_t count_ = 0;
  int weight_ = 0;
  bool negative_ = false;
  Kind kind_ = Kind::kFinite;
};

}  // namespace stockbook::databases
