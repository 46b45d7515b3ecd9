// SPDX-License-Identifier: MIT
#include "databases/dialect/operators.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/decimal_text.h"
#include "base/number.h"
#include "base/text.h"
#include "base/wide_integer.h"
#include "databases/dialect/like_pattern.h"

namespace stockbook::databases {
namespace {

using base::Date;
using base::Money;
using base::Value;

constexpr auto kSecondsPerDay = static_cast<double>(Date::kSecondsPerDay);

bool IsText(const Value& value) { return value.As<std::string>() != nullptr; }

Value Finite(double number) {
  if (!std::isfinite(number)) ThrowNumberOverflow();
  return Value(number);
}

Value MoneyOrNull(std::optional<Money> money) { return money ? Value(*money) : Value(); }

// The two as money; nothing for one that is no amount.
struct TwoAmounts {
  std::optional<Money> left;
  std::optional<Money> right;
  bool Known() const { return left && right; }
};
TwoAmounts AmountsOf(Arguments values) { return {values[0].AsMoney(), values[1].AsMoney()}; }

bool EitherMoney(Arguments values) { return values[0].As<Money>() != nullptr || values[1].As<Money>() != nullptr; }

Value DateAfterDays(const Value& date, double days) {
  const double seconds = std::nearbyint(static_cast<double>(date.As<Date>()->seconds()) + days * kSecondsPerDay);
  if (!std::isfinite(seconds)) return Value();
  const auto moved = Value(seconds / kSecondsPerDay).AsDate();
  return moved ? Value(Date::FromSeconds(static_cast<int64_t>(seconds))) : Value();
}

// + and - of numbers, money and dates; `sign` is 1 or -1.
Value AddSigned(Arguments values, int sign) {
  const Value& left = values[0];
  const Value& right = values[1];
  if (EitherMoney(values)) {
    const auto [a, b] = AmountsOf(values);
    if (!a || !b) return Value();
    return Value(sign > 0 ? *a + *b : *a - *b);
  }
  const auto* left_whole = left.As<int64_t>();
  const auto* right_whole = right.As<int64_t>();
  if (left_whole != nullptr && right_whole != nullptr) {
    int64_t sum = 0;
    const bool overflow = sign > 0 ? __builtin_add_overflow(*left_whole, *right_whole, &sum)
                                   : __builtin_sub_overflow(*left_whole, *right_whole, &sum);
    if (overflow) ThrowNumberOverflow();
    return Value(sum);
  }
  const bool left_date = left.As<Date>() != nullptr;
  const bool right_date = right.As<Date>() != nullptr;
  if (left_date && right_date && sign < 0) {
    return Value(static_cast<double>(left.As<Date>()->seconds() - right.As<Date>()->seconds()) / kSecondsPerDay);
  }
  const auto a = left.Number();
  const auto b = right.Number();
  if (!a || !b) return Value();
  if (left_date) return DateAfterDays(left, sign * *b);
  if (right_date && sign > 0) return DateAfterDays(right, *a);
  return Finite(*a + sign * *b);
}

Value Plus(Arguments values) {
  if (AnyNull(values)) return Value();
  if (IsText(values[0]) && IsText(values[1])) return Value(values[0].Text() + values[1].Text());
  return AddSigned(values, 1);
}

Value PlusServer(Arguments values) {
  if (AnyNull(values)) return Value();
  if (IsText(values[0]) || IsText(values[1])) return Value(values[0].Text() + values[1].Text());
  return AddSigned(values, 1);
}

Value Minus(Arguments values) { return AnyNull(values) ? Value() : AddSigned(values, -1); }

Value Negate(Arguments values) {
  const Value& value = values[0];
  if (const auto* money = value.As<Money>()) return Value(-*money);
  if (const auto* whole = value.As<int64_t>()) {
    if (*whole == INT64_MIN) ThrowNumberOverflow();
    return Value(-*whole);
  }
  if (const auto* real = value.As<double>()) return Value(-*real);  // infinities, too
  const auto number = value.Number();
  return number ? Value(-*number) : Value();
}

Value Multiply(Arguments values) {
  if (AnyNull(values)) return Value();
  if (const auto* money = values[0].As<Money>()) return MoneyOrNull(MultiplyMoney(*money, values[1]));
  if (const auto* money = values[1].As<Money>()) return MoneyOrNull(MultiplyMoney(*money, values[0]));
  const auto* left = values[0].As<int64_t>();
  const auto* right = values[1].As<int64_t>();
  if (left != nullptr && right != nullptr) {
    int64_t product = 0;
    if (__builtin_mul_overflow(*left, *right, &product)) ThrowNumberOverflow();
    return Value(product);
  }
  const auto a = values[0].Number();
  const auto b = values[1].Number();
  return a && b ? Finite(*a * *b) : Value();
}

[[noreturn]] void ThrowDivisionByZero() { throw base::ArithmeticError("除数为零：请检查语句和数据。"); }

Value Divide(Arguments values) {
  const auto a = values[0].Number();
  const auto b = values[1].Number();
  if (!a || !b) return Value();
  if (*b == 0) ThrowDivisionByZero();
  return Finite(*a / *b);
}

struct TwoWholes {
  std::optional<int64_t> left;
  std::optional<int64_t> right;
};
TwoWholes WholesOf(Arguments values) { return {values[0].AsInteger(), values[1].AsInteger()}; }

Value DivideWhole(Arguments values) {
  const auto [a, b] = WholesOf(values);
  if (!a || !b) return Value();
  if (*b == 0) ThrowDivisionByZero();
  if (*a == INT64_MIN && *b == -1) ThrowNumberOverflow();
  return Value(*a / *b);
}

// The server divides whole numbers to a whole number.
Value DivideServer(Arguments values) {
  const bool wholes = values[0].As<int64_t>() != nullptr && values[1].As<int64_t>() != nullptr;
  return wholes ? DivideWhole(values) : Divide(values);
}

Value Modulo(Arguments values) {
  const auto [a, b] = WholesOf(values);
  if (!a || !b) return Value();
  if (*b == 0) ThrowDivisionByZero();
  return Value(*b == -1 ? int64_t{0} : *a % *b);
}

Value Power(Arguments values) {
  const auto a = values[0].Number();
  const auto b = values[1].Number();
  return a && b ? Finite(std::pow(*a, *b)) : Value();
}

Value BitAnd(Arguments values) {
  const auto [a, b] = WholesOf(values);
  return a && b ? Value(*a & *b) : Value();
}

// Null counts as empty text.
Value Concat(Arguments values) {
  std::string text;
  size_t longest = 0;
  for (const Value& value : values) {
    const size_t before = text.size();
    text += value.Text();
    longest = std::max(longest, text.size() - before);
    if (text.size() > std::max(kMostTextBytes, longest)) ThrowTextTooLong();
  }
  return Value(std::move(text));
}

Value Compare(Arguments values) {
  const auto order = CompareValues(values[0], values[1]);
  return order ? Value(static_cast<int64_t>(*order)) : Value();
}

// value, low, high; null unless one of the sides decides.
Value Between(Arguments values) {
  const auto low = CompareValues(values[0], values[1]);
  const auto high = CompareValues(values[0], values[2]);
  if ((low && *low < 0) || (high && *high > 0)) return Value(int64_t{0});
  return low && high ? Value(int64_t{1}) : Value();
}

template <Wildcards wildcards>
Value Like(Arguments values) {
  if (AnyNull(values)) return Value();
  return Value(static_cast<int64_t>(MatchesLike(values[0].Text(), values[1].Text(), wildcards)));
}

// A number as a condition: not zero.
Value Truth(Arguments values) {
  const auto number = values[0].Number();
  return number ? Value(static_cast<int64_t>(*number != 0)) : Value();
}

Value Same(Arguments values) { return values[0]; }
Value TextOf(Arguments values) { return values[0].IsNull() ? Value() : Value(values[0].Text()); }

constexpr std::array<ScalarFunction, 22> kOperatorFunctions = {{
    {"sb_value", Same},
    {"sb_text", TextOf},
    // Money only: a value that spells no amount is null.
    {"sb_amount", [](Arguments values) { return values[0].As<Money>() != nullptr ? values[0] : Value(); }},
    {"sb_plus", Plus, 2},
    {"sb_plus_server", PlusServer, 2},
    {"sb_minus", Minus, 2},
    {"sb_negate", Negate},
    // For money columns: a text in them that spells no amount has no negative.
    {"sb_negate_money", [](Arguments values) { return IsText(values[0]) ? Value() : Negate(values); }},
    {"sb_multiply", Multiply, 2},
    {"sb_divide", Divide, 2},
    {"sb_divide_server", DivideServer, 2},
    {"sb_divide_whole", DivideWhole, 2},
    {"sb_modulo", Modulo, 2},
    {"sb_power", Power, 2},
    {"sb_bit_and", BitAnd, 2},
    {"sb_concat", Concat, 1, 126},
    {"sb_compare", Compare, 2},
    {"sb_between", Between, 3},
    {"sb_like", Like<Wildcards::kDesktop>, 2},
    {"sb_like_server", Like<Wildcards::kServer>, 2},
    {"sb_truth", Truth},
    {"sb_is_null", [](Arguments values) { return Value(static_cast<int64_t>(values[0].IsNull() ? -1 : 0)); }},
}};

template <typename Type>
int Sign(const Type& left, const Type& right) {
  return left < right ? -1 : right < left ? 1 : 0;
}

// Compares money with a double exactly: units first, then the remainder.
int CompareMoneyWithDouble(Money money, double number) {
  constexpr double kLimit = 922337203685477.0;
  if (number > kLimit) return -1;
  if (number < -kLimit) return 1;
  const Money rounded = Money::FromDouble(number);
  if (money != rounded) return Sign(money, rounded);
  return -Sign(number, rounded.ToDouble());
}

std::optional<int> CompareDates(const Value& left, const Value& right) {
  const auto a = left.AsDate();
  const auto b = right.AsDate();
  return a && b ? std::optional(Sign(*a, *b)) : std::nullopt;
}

std::optional<int> CompareMoneyWith(Money money, const Value& other) {
  if (const auto* number = other.As<double>()) {
    return std::isfinite(*number) ? CompareMoneyWithDouble(money, *number) : (*number > 0 ? -1 : 1);
  }
  if (const auto amount = other.AsMoney()) return Sign(money, *amount);
  const auto number = other.Number();
  return number ? std::optional(CompareMoneyWithDouble(money, *number)) : std::nullopt;
}

}  // namespace

void ThrowNumberOverflow() { throw base::ArithmeticError("数值超出范围：计算结果太大，请检查语句和数据。"); }

void ThrowTextTooLong() { throw base::ArithmeticError("文本太长：计算结果超过 4 MB，请检查语句和数据。"); }

std::span<const ScalarFunction> OperatorFunctions() { return kOperatorFunctions; }

std::optional<int> CompareValues(const Value& left, const Value& right) {
  if (left.IsNull() || right.IsNull()) return std::nullopt;
  if (left.As<Date>() != nullptr || right.As<Date>() != nullptr) return CompareDates(left, right);
  if (const auto* money = left.As<Money>()) return CompareMoneyWith(*money, right);
  if (const auto* money = right.As<Money>()) {
    const auto order = CompareMoneyWith(*money, left);
    return order ? std::optional(-*order) : std::nullopt;
  }
  if (IsText(left) && IsText(right)) return CompareTexts(*left.As<std::string>(), *right.As<std::string>());
  const auto* left_whole = left.As<int64_t>();
  const auto* right_whole = right.As<int64_t>();
  if (left_whole != nullptr && right_whole != nullptr) return Sign(*left_whole, *right_whole);
  const auto a = left.Number();
  const auto b = right.Number();
  return a && b ? std::optional(Sign(*a, *b)) : std::nullopt;
}

int CompareTexts(std::string_view left, std::string_view right) {
  const size_t both = std::min(left.size(), right.size());
  for (size_t at = 0; at < both; ++at) {
    if (left[at] == right[at]) continue;
    const auto a = static_cast<unsigned char>(base::AsciiLower(left[at]));
    const auto b = static_cast<unsigned char>(base::AsciiLower(right[at]));
    if (a != b) return Sign(a, b);
  }
  return Sign(left.size(), right.size());
}

std::optional<Money> MultiplyMoney(Money money, const Value& factor) {
  // The factor as digits x 10^-decimals; a double stands for its shortest decimal.
  const std::string text = PlainDecimal(factor);
  const auto parts = base::ReadDecimal(text, base::Grouping::kNone);
  if (!parts) return std::nullopt;
  int64_t digits = 0;
  for (const std::string_view part : {parts->whole, parts->fraction}) {
    for (const char c : part) {
      if (__builtin_mul_overflow(digits, int64_t{10}, &digits) ||
          __builtin_add_overflow(digits, int64_t{c - '0'}, &digits)) {
        Money::ThrowOverflow();
      }
    }
  }
  constexpr size_t kMostDecimals = 36;
  if (parts->fraction.size() > kMostDecimals) return Money();  // smaller than any unit
  const base::WideInteger product =
      static_cast<base::WideInteger>(money.units()) * (parts->negative ? -digits : digits);
  const base::WideInteger divisor = base::WidePowerOfTen(static_cast<int>(parts->fraction.size()));
  return base::MoneyOfUnits(base::DivideHalfToEven(product, divisor));
}

std::string PlainDecimal(const Value& value) {
  if (const auto* text = value.As<std::string>()) {
    const auto number = base::ParseNumber(*text);
    return number ? PlainDecimal(Value(*number)) : std::string();
  }
  if (value.As<int64_t>() != nullptr || value.As<Money>() != nullptr) return value.Text();
  const auto number = value.Number();
  if (!number) return {};
  std::array<char, 400> digits{};
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), *number, std::chars_format::fixed);
  if (error != std::errc()) return {};
  return {digits.data(), static_cast<size_t>(end - digits.data())};
}

}  // namespace stockbook::databases
