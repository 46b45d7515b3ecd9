// SPDX-License-Identifier: MIT
#include "stockbook/base/value.h"

#include <cmath>

#include "base/number.h"

namespace stockbook::base {
namespace {

constexpr auto kSecondsPerDay = static_cast<double>(Date::kSecondsPerDay);
constexpr double kInt64Limit = 9223372036854775808.0;

std::optional<int64_t> RoundToInteger(double number) {
  if (!std::isfinite(number)) return std::nullopt;
  const double rounded = std::nearbyint(number);
  if (rounded < -kInt64Limit || rounded >= kInt64Limit) return std::nullopt;
  return static_cast<int64_t>(rounded);
}

std::optional<Money> MoneyOrNothing(double number) {
  try {
    return Money::FromDouble(number);
  } catch (const ArithmeticError&) {
    return std::nullopt;
  }
}

std::optional<Money> MoneyOrNothing(int64_t whole) {
  int64_t units = 0;
  if (__builtin_mul_overflow(whole, Money::kScale, &units)) return std::nullopt;
  return Money::FromUnits(units);
}

}  // namespace

std::string Value::Text() const {
  struct Visitor {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(int64_t number) const { return std::to_string(number); }
    std::string operator()(double number) const { return NumberText(number); }
    std::string operator()(Money money) const { return money.Text(); }
    std::string operator()(Date date) const { return date.Text(); }
    std::string operator()(const std::string& text) const { return text; }
  };
  return std::visit(Visitor{}, variant_);
}

std::optional<double> Value::Number() const {
  if (const auto* integer = As<int64_t>()) return static_cast<double>(*integer);
  if (const auto* number = As<double>()) return std::isfinite(*number) ? std::optional(*number) : std::nullopt;
  if (const auto* money = As<Money>()) return money->ToDouble();
  if (const auto* date = As<Date>()) return static_cast<double>(date->seconds()) / kSecondsPerDay;
  if (const auto* text = As<std::string>()) return ParseNumber(*text);
  return std::nullopt;
}

std::optional<Money> Value::AsMoney() const {
  if (const auto* money = As<Money>()) return *money;
  if (const auto* integer = As<int64_t>()) return MoneyOrNothing(*integer);
  if (const auto* number = As<double>()) return MoneyOrNothing(*number);
  if (const auto* text = As<std::string>()) return Money::Parse(*text);
  return std::nullopt;
}

std::optional<int64_t> Value::AsInteger() const {
  if (const auto* integer = As<int64_t>()) return *integer;
  if (const auto* text = As<std::string>()) {
    if (const auto exact = ParseInteger(*text)) return exact;
  }
  const auto number = Number();
  return number ? RoundToInteger(*number) : std::nullopt;
}

std::optional<Date> Value::AsDate() const {
  if (const auto* date = As<Date>()) return *date;
  if (const auto* text = As<std::string>()) return Date::Parse(*text);
  if (const auto number = Number()) {
    constexpr double kLastDay = 2958466.0;  // 10000-01-01
    if (*number > -657435.0 && *number < kLastDay) {
      return Date::FromSeconds(static_cast<int64_t>(std::nearbyint(*number * kSecondsPerDay)));
    }
  }
  return std::nullopt;
}

}  // namespace stockbook::base
