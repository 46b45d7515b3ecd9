// SPDX-License-Identifier: MIT
#include "databases/dialect/aggregates.h"

#include <cmath>

namespace stockbook::databases {
namespace {

[[noreturn]] void ThrowSumOverflow() { throw base::ArithmeticError("合计超出范围：结果太大，请检查数据。"); }

}  // namespace

void SumState::AddMoney(base::Money amount) {
  money = true;
  whole += amount.units();
  ++count;
}

void SumState::Add(const base::Value& value) {
  if (const auto* number = value.As<int64_t>()) {
    whole += *number;
    ++count;
    return;
  }
  const auto number = value.Number();
  if (!number) return;
  const double sum = real + *number;
  real_error += std::fabs(real) >= std::fabs(*number) ? (real - sum) + *number : (*number - sum) + real;
  real = sum;
  ++count;
  ++real_count;
}

base::Value SumState::Sum() const {
  if (count == 0) return {};
  if (money) return base::Value(base::MoneyOfUnits(whole));
  if (real_count == 0) {
    if (whole > INT64_MAX || whole < INT64_MIN) ThrowSumOverflow();
    return base::Value(static_cast<int64_t>(whole));
  }
  const double sum = real + real_error + static_cast<double>(whole);
  if (!std::isfinite(sum)) ThrowSumOverflow();
  return base::Value(sum);
}

base::Value SumState::Average() const {
  if (count == 0) return {};
  if (!money) {
    const double average = (real + real_error + static_cast<double>(whole)) / static_cast<double>(count);
    if (!std::isfinite(average)) ThrowSumOverflow();
    return base::Value(average);
  }
  return base::Value(base::MoneyOfUnits(base::DivideHalfToEven(whole, count)));
}

}  // namespace stockbook::databases
