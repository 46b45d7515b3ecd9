// SPDX-License-Identifier: MIT
#include "databases/dialect/number_functions.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/digits.h"
#include "base/number.h"

namespace stockbook::databases {
namespace {

using base::Money;
using base::Value;

constexpr int kMostPlaces = 15;

enum class Rounding { kHalfEven, kHalfAway, kDown, kTowardsZero, kUp };

// Units rounded to a multiple of `step`.
Money RoundMoney(Money money, int64_t step, Rounding rounding) {
  const int64_t rest = money.units() % step;  // has the sign of the units
  if (rest == 0) return money;
  const Money towards_zero = Money::FromUnits(money.units() - rest);
  const Money away = rest < 0 ? towards_zero - Money::FromUnits(step) : towards_zero + Money::FromUnits(step);
  const int64_t size = rest < 0 ? -rest : rest;
  switch (rounding) {
    case Rounding::kTowardsZero:
      return towards_zero;
    case Rounding::kDown:
      return rest < 0 ? away : towards_zero;
    case Rounding::kUp:
      return rest < 0 ? towards_zero : away;
    case Rounding::kHalfAway:
      return size >= step - size ? away : towards_zero;
    case Rounding::kHalfEven:
      if (size != step - size) return size > step - size ? away : towards_zero;
      return towards_zero.units() / step % 2 == 0 ? towards_zero : away;
  }
  return money;
}

double RoundWhole(double number, Rounding rounding) {
  switch (rounding) {
    case Rounding::kTowardsZero:
      return std::trunc(number);
    case Rounding::kDown:
      return std::floor(number);
    case Rounding::kUp:
      return std::ceil(number);
    case Rounding::kHalfAway:
      return std::round(number);
    case Rounding::kHalfEven:
      return std::nearbyint(number);
  }
  return number;
}

// Rounds the digits that the number shows, not its binary neighbour: 2.675 is a half.
double RoundDecimals(double number, int places, Rounding rounding) {
  if (std::fabs(number) >= 1e15) return number;
  const auto scaled = base::ParseNumber(base::NumberText(number) + "E" + std::to_string(places));
  if (!scaled) {
    const double factor = std::pow(10.0, places);
    return RoundWhole(number * factor, rounding) / factor;
  }
  return RoundWhole(*scaled, rounding) / std::pow(10.0, places);
}

template <Rounding rounding>
Value Round(Arguments values) {
  const auto places = values.size() > 1 ? values[1].AsInteger() : std::optional<int64_t>(0);
  if (!places) return Value();
  const int kept = static_cast<int>(std::min<int64_t>(std::max<int64_t>(*places, -kMostPlaces), kMostPlaces));
  if (values[0].As<int64_t>() != nullptr && kept >= 0) return values[0];
  if (const auto* money = values[0].As<Money>()) {
    if (kept >= Money::kDecimals) return values[0];
    const int power = std::min(Money::kDecimals - kept, base::kMostPower);
    return Value(RoundMoney(*money, static_cast<int64_t>(base::kPowersOfTen[static_cast<size_t>(power)]), rounding));
  }
  const auto number = values[0].Number();
  return number ? Value(kept == 0 ? RoundWhole(*number, rounding) : RoundDecimals(*number, kept, rounding)) : Value();
}

Value Absolute(Arguments values) {
  const Value& value = values[0];
  if (const auto* money = value.As<Money>()) return money->units() < 0 ? Value(-*money) : value;
  if (const auto* whole = value.As<int64_t>(); whole != nullptr && *whole != INT64_MIN)
    return Value(*whole < 0 ? -*whole : *whole);
  const auto number = value.Number();
  return number ? Value(std::fabs(*number)) : Value();
}

Value SignOf(Arguments values) {
  const auto number = values[0].Number();
  return number ? Value(static_cast<int64_t>(*number > 0) - static_cast<int64_t>(*number < 0)) : Value();
}

Value SquareRoot(Arguments values) {
  const auto number = values[0].Number();
  return number && *number >= 0 ? Value(std::sqrt(*number)) : Value();
}

constexpr std::array<ScalarFunction, 8> kNumberFunctions = {{
    {"sb_round", Round<Rounding::kHalfEven>, 1, 2},
    {"sb_round_server", Round<Rounding::kHalfAway>, 1, 2},
    {"sb_floor", Round<Rounding::kDown>},
    {"sb_fix", Round<Rounding::kTowardsZero>},
    {"sb_ceiling", Round<Rounding::kUp>},
    {"sb_abs", Absolute},
    {"sb_sign", SignOf},
    {"sb_sqrt", SquareRoot},
}};

}  // namespace

std::span<const ScalarFunction> NumberFunctions() { return kNumberFunctions; }

}  // namespace stockbook::databases
