// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "stockbook/base/money.h"

namespace stockbook::app {

// An exact quantity used while an inventory is built: a signed count of millionths of a unit. Addition is exact or
// throws base::ArithmeticError. It becomes a double only when stored. A plain value.
class Quantity {
 public:
  static constexpr int kDecimals = 6;
  static constexpr int64_t kScale = 1'000'000;

  constexpr Quantity() = default;
  static constexpr Quantity FromMillionths(int64_t millionths) { return Quantity(millionths); }
  static constexpr Quantity FromThousandths(int64_t thousandths) { return Quantity(thousandths * 1000); }
  static constexpr Quantity Whole(int64_t units) { return Quantity(units * kScale); }

  constexpr int64_t millionths() const { return millionths_; }
  constexpr bool IsZero() const { return millionths_ == 0; }
  // The nearest double; exact to the last digit below nine thousand million units.
  double ToDouble() const { return static_cast<double>(millionths_) / static_cast<double>(kScale); }

  Quantity operator+(Quantity other) const;
  Quantity operator-(Quantity other) const;
  Quantity operator-() const { return Quantity() - *this; }
  Quantity& operator+=(Quantity other) { return *this = *this + other; }
  Quantity& operator-=(Quantity other) { return *this = *this - other; }
  constexpr auto operator<=>(const Quantity&) const = default;

 private:
  constexpr explicit Quantity(int64_t millionths) : millionths_(millionths) {}
  int64_t millionths_ = 0;
};

// A decimal number: digits x 10^-scale.
struct ScaledDecimal {
  int64_t digits = 0;
  int scale = 0;  // 0..18
  double ToDouble() const;
};

// quantity x price, rounded half to even to 1/10,000; throws base::ArithmeticError if Money cannot hold it.
base::Money AmountOf(Quantity quantity, ScaledDecimal price);
// amount x percent / 100, rounded half to even.
base::Money PercentOf(base::Money amount, int percent);
// amount / quantity in 1/10,000, rounded half to even; 0 for the quantity 0.
base::Money UnitPriceOf(base::Money amount, Quantity quantity);

}  // namespace stockbook::app
