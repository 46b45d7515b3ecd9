// SPDX-License-Identifier: MIT
// Every text is read as a number, an amount and a date, or refused; what is read and written again stays the same.
#include <cmath>

#include "base/decimal.h"
#include "base/number.h"
#include "base/text.h"
#include "fuzzed_bytes.h"
#include "stockbook/base/date.h"
#include "stockbook/base/money.h"
#include "stockbook/base/value.h"

namespace stockbook::fuzz {
namespace {

void ReadText(std::string_view text) {
  const std::string shown(text);
  const auto number = base::ParseNumber(text);
  Require(base::NumericValue(text) == number.value_or(0), "a grid reads the same number", shown);
  if (number) Require(std::isfinite(*number), "a number that was read is finite", shown);
  if (const auto whole = base::ParseInteger(text)) {
    Require(base::ParseInteger(std::to_string(*whole)) == whole, "a whole number stays", shown);
    Require(number.has_value(), "a whole number is a number", shown);
  }
  if (const auto money = base::Money::Parse(text))
    Require(base::Money::Parse(money->Text()) == money, "an amount stays", shown);
  if (const auto date = base::Date::Parse(text)) {
    Require(base::Date::Parse(date->Text()) == date, "a date stays", shown);
    Require(base::Date::FromParts(date->parts()) == date, "a date is its parts", shown);
  }
  if (const auto decimal = base::Decimal::Parse(text)) {
    Require(number.has_value(), "a decimal is a number", shown);
    (void)decimal->Shown(2, 4);
  }
  Require(base::IsCleanUtf8(base::CleanUtf8(text)), "a cleaned text is clean", shown);
  const base::Value value{std::string(text)};
  (void)value.AsMoney();
  (void)value.AsInteger();
  (void)value.AsDate();
}

void WriteNumber(double number) {
  const std::string text = base::NumberText(number);
  Require(text.empty() == !std::isfinite(number), "finite numbers have a text", text);
  if (std::isfinite(number)) {
    const auto read = base::ParseNumber(text);
    // Rounded to 15 digits, the largest doubles are out of range.
    if (std::fabs(number) < 1.79e308) Require(read.has_value(), "a number's text is a number", text);
    if (read) Require(base::NumberText(*read) == text, "a number's text stays", text);
  }
  try {
    const base::Money money = base::Money::FromDouble(number);
    Require(base::Money::Parse(money.Text()) == money, "an amount stays", text);
  } catch (const base::ArithmeticError&) {
    Require(!(std::fabs(number) < 9.2e14), "an amount in range is taken", text);
  }
  Require(std::isfinite(base::SafeDivide(number, number)), "a quotient is finite", text);
  if (const auto quick = base::QuickDigits(number))
    Require(static_cast<double>(quick->units) / std::pow(10.0, quick->decimals) == base::ParseNumber(text),
            "quick digits are the digits", text);
}

void AddMoney(int64_t left, int64_t right) {
  const base::Money first = base::Money::FromUnits(left);
  const base::Money second = base::Money::FromUnits(right);
  Require(base::Money::Parse(first.Text()) == first, "every amount has a text", first.Text());
  int64_t exact = 0;
  const bool overflows = __builtin_add_overflow(left, right, &exact);
  try {
    Require((first + second).units() == exact && !overflows, "amounts add exactly", first.Text());
  } catch (const base::ArithmeticError&) {
    Require(overflows, "only a sum out of range is refused", first.Text());
  }
  const base::Date date = base::Date::FromSeconds(left % (int64_t{1} << 40));
  (void)date.Text();
  (void)date.parts();
}

}  // namespace
}  // namespace stockbook::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  stockbook::fuzz::FuzzedBytes numbers(data, size);
  stockbook::fuzz::WriteNumber(numbers.Take<double>());
  const auto left = numbers.Take<int64_t>();
  stockbook::fuzz::AddMoney(left, numbers.Take<int64_t>());
  stockbook::fuzz::ReadText(stockbook::fuzz::FuzzedBytes(data, size).TakeAll());
  return 0;
}
