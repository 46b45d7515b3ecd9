// SPDX-License-Identifier: MIT
#include "databases/sqlite/row_values.h"

#include <cmath>
#include <cstring>

#include "base/number.h"
#include "base/text.h"

namespace stockbook::databases {
namespace {

using base::Date;
using base::Money;
using base::Value;

std::optional<Money> AmountOfReal(double number) {
  // Away from half a unit, the nearest unit is right whatever the decimal digits are.
  const double units = number * static_cast<double>(Money::kScale);
  const double nearest = std::nearbyint(units);
  if (std::fabs(nearest) < 1e14 && std::fabs(units - nearest) < 0.49)
    return Money::FromUnits(static_cast<int64_t>(nearest));
  return Value(number).AsMoney();
}

// A text that spells no amount, or one out of range, stays a text; an infinite number stays one, so that whoever needs
// an amount notices.
Value RawAmount(sqlite3_value* stored) {
  switch (sqlite3_value_type(stored)) {
    case SQLITE_INTEGER: {
      const Value whole(static_cast<int64_t>(sqlite3_value_int64(stored)));
      const auto money = whole.AsMoney();
      return money ? Value(*money) : Value(whole.Text());
    }
    case SQLITE_FLOAT: {
      const double number = sqlite3_value_double(stored);
      if (!std::isfinite(number)) return Value(number);
      const auto money = AmountOfReal(number);
      return money ? Value(*money) : Value(base::NumberText(number));
    }
    case SQLITE_NULL:
      return {};
    default: {
      const std::string_view bytes = BytesOf(stored);
      const auto money = Money::Parse(bytes);
      return money ? Value(*money) : Value(std::string(bytes));
    }
  }
}

Value DateOf(sqlite3_value* stored) {
  if (sqlite3_value_type(stored) != SQLITE_TEXT) return {};
  const auto date = Date::Parse(BytesOf(stored));
  return date ? Value(*date) : Value();
}

Value PlainValue(sqlite3_value* stored) {
  switch (sqlite3_value_type(stored)) {
    case SQLITE_INTEGER:
      return Value(static_cast<int64_t>(sqlite3_value_int64(stored)));
    case SQLITE_FLOAT:
      return Value(sqlite3_value_double(stored));
    case SQLITE_NULL:
      return {};
    default:
      return Value(std::string(BytesOf(stored)));
  }
}

bool IsAscii(std::string_view bytes) {
  uint64_t marks = 0;
  uint64_t zeros = 0;
  size_t at = 0;
  for (; at + sizeof(uint64_t) <= bytes.size(); at += sizeof(uint64_t)) {
    uint64_t word = 0;
    std::memcpy(&word, bytes.data() + at, sizeof word);
    marks |= word;
    zeros |= (word - 0x0101010101010101U) & ~word;
  }
  for (; at < bytes.size(); ++at) {
    marks |= static_cast<unsigned char>(bytes[at]);
    if (bytes[at] == 0) zeros |= 0x80;
  }
  return ((marks | zeros) & 0x8080808080808080U) == 0;
}

}  // namespace

std::string_view BytesOf(sqlite3_value* stored) {
  const auto* bytes = static_cast<const char*>(sqlite3_value_blob(stored));
  const int size = sqlite3_value_bytes(stored);
  return bytes == nullptr ? std::string_view() : std::string_view(bytes, static_cast<size_t>(size));
}

Value ReadValue(sqlite3_value* stored, Form form) {
  switch (form) {
    case Form::kRawMoney:
      return RawAmount(stored);
    case Form::kRawDate:
    case Form::kDateText:
      return DateOf(stored);
    case Form::kUnits:
      if (sqlite3_value_type(stored) == SQLITE_INTEGER) return Value(Money::FromUnits(sqlite3_value_int64(stored)));
      return PlainValue(stored);
    case Form::kReal:
    case Form::kPlain:
      return PlainValue(stored);
  }
  return {};
}

void WriteValue(sqlite3_context* context, const Value& value) {
  if (const auto* money = value.As<Money>()) {
    sqlite3_result_int64(context, money->units());
  } else if (const auto* whole = value.As<int64_t>()) {
    sqlite3_result_int64(context, *whole);
  } else if (const auto* number = value.As<double>()) {
    sqlite3_result_double(context, *number);
  } else if (const auto* text = value.As<std::string>()) {
    sqlite3_result_text64(context, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  } else if (const auto* date = value.As<Date>()) {
    const std::string written = date->Text();
    sqlite3_result_text64(context, written.data(), written.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  } else {
    sqlite3_result_null(context);
  }
}

bool IsCleanText(std::string_view bytes) { return IsAscii(bytes) || base::IsCleanUtf8(bytes); }

}  // namespace stockbook::databases
