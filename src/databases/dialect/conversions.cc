// SPDX-License-Identifier: MIT
#include "databases/dialect/conversions.h"

#include <array>
#include <cmath>

#include "base/date_pattern.h"
#include "base/digits.h"
#include "base/text.h"
#include "base/wide_integer.h"
#include "databases/dialect/operators.h"

namespace stockbook::databases {
namespace {

using base::Date;
using base::DateParts;
using base::Money;
using base::Value;
using base::ZeroPadded;

constexpr int kCompactStyle = 112;

std::string TwelveHour(const DateParts& at) {
  const int hour = base::TwelveHours(at.hour);
  const std::string day = at.day < 10 ? " " + std::to_string(at.day) : std::to_string(at.day);
  return std::string(base::MonthName(at.month)) + " " + day + " " + ZeroPadded(at.year, 4) + (hour < 10 ? "  " : " ") +
         std::to_string(hour) + ":" + ZeroPadded(at.minute, 2) + (at.hour < 12 ? "AM" : "PM");
}

// The server's text of a date in one of its numbered styles.
std::string DateInStyle(Date date, int64_t style) {
  const DateParts at = date.parts();
  const auto day = [&](const char* separator) {
    return ZeroPadded(at.year, 4) + separator + ZeroPadded(at.month, 2) + separator + ZeroPadded(at.day, 2);
  };
  const std::string time = ZeroPadded(at.hour, 2) + ":" + ZeroPadded(at.minute, 2) + ":" + ZeroPadded(at.second, 2);
  switch (style) {
    case 23:
      return day("-");
    case 20:
    case 120:
      return day("-") + " " + time;
    case 21:
    case 25:
    case 121:
      return day("-") + " " + time + ".000";
    case 126:
      return day("-") + "T" + time;
    case 102:
      return day(".");
    case 111:
      return day("/");
    case kCompactStyle:
      return day("");
    case 8:
    case 108:
      return time;
    default:
      return TwelveHour(at);
  }
}

// value, length in characters, 1 to pad with blanks up to it (char) or 0 (varchar), style of dates.
Value ToText(Arguments values) {
  if (values[0].IsNull()) return Value();
  const auto length = static_cast<size_t>(values[1].AsInteger().value_or(0));
  const auto* date = values[0].As<Date>();
  std::string text = date != nullptr ? DateInStyle(*date, values[3].AsInteger().value_or(0)) : values[0].Text();
  const size_t count = base::CharacterCount(text);
  if (count > length) return Value(std::string(base::LeftCharacters(text, length)));
  const bool padded = values[2].AsInteger() == 1;
  if (padded && length > kMostTextBytes) ThrowTextTooLong();
  if (padded) text.append(length - count, ' ');
  return Value(std::move(text));
}

Value ToInteger(Arguments values) {
  if (const auto* money = values[0].As<Money>()) {
    return Value(static_cast<int64_t>(base::DivideHalfToEven(money->units(), Money::kScale)));
  }
  const auto number = values[0].AsInteger();
  return number ? Value(*number) : Value();
}

// The server cuts decimals off.
Value ToIntegerServer(Arguments values) {
  if (const auto* money = values[0].As<Money>()) return Value(money->units() / Money::kScale);
  if (values[0].As<int64_t>() != nullptr) return values[0];
  const auto number = values[0].Number();
  const auto whole = number ? Value(std::trunc(*number)).AsInteger() : std::nullopt;
  return whole ? Value(*whole) : Value();
}

Value ToReal(Arguments values) {
  const auto number = values[0].Number();
  return number ? Value(*number) : Value();
}

Value ToMoney(Arguments values) {
  const auto money = values[0].AsMoney();
  if (money) return Value(*money);
  if (values[0].Number()) Money::ThrowOverflow();
  return Value();
}

// The desktop's Val: the number at the front of a text, or 0.
Value LeadingNumber(Arguments values) {
  if (values[0].IsNull()) return Value();
  std::string text = values[0].Text();
  for (; !text.empty(); text.pop_back()) {
    constexpr size_t kMostDigits = 40;
    if (text.size() > kMostDigits) text.resize(kMostDigits);
    if (const auto number = Value(text).Number()) return Value(*number);
  }
  return Value(0.0);
}

constexpr std::array<ScalarFunction, 6> kFunctions = {{
    {"sb_to_text", ToText, 4},
    {"sb_to_integer", ToInteger},
    {"sb_to_integer_server", ToIntegerServer},
    {"sb_to_real", ToReal},
    {"sb_to_money", ToMoney},
    {"sb_val", LeadingNumber},
}};

}  // namespace

std::span<const ScalarFunction> ConversionFunctions() { return kFunctions; }

}  // namespace stockbook::databases
