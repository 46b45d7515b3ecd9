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

// "-123.45" in the plain form that stores write; everything else is left to Money::Parse.
std::optional<Money> ReadPlainAmount(std::string_view text) {
  constexpr size_t kSafeDigits = 13;
  size_t at = !text.empty() && text.front() == '-' ? 1 : 0;
  const bool negative = at == 1;
  int64_t units = 0;
  const size_t first = at;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) units = units * 10 + (text[at] - '0');
  if (at == first || at - first > kSafeDigits) return std::nullopt;
  int decimals = 0;
  if (at < text.size() && text[at] == '.') {
    for (++at; at < text.size() && decimals < 4 && text[at] >= '0' && text[at] <= '9'; ++at, ++decimals) {
      units = units * 10 + (text[at] - '0');
    }
  }
  if (at != text.size()) return std::nullopt;
  for (; decimals < 4; ++decimals) units *= 10;
  return Money::FromUnits(negative ? -units : units);
}

std::optional<Money> AmountOfReal(double number) {
  // Far from a half unit, the nearest unit is the answer whatever the decimal digits are.
  const double units = number * static_cast<double>(Money::kScale);
  const double nearest = std::nearbyint(units);
  if (std::fabs(nearest) < 1e14 && std::fabs(units - nearest) < 0.49)
    return Money::FromUnits(static_cast<int64_t>(nearest));
  return Value(number).AsMoney();
}

// What spells no amount, or one out of range, stays a text.
Value RawAmount(sqlite3_value* stored) {
  switch (sqlite3_value_type(stored)) {
    case SQLITE_INTEGER: {
      const Value whole(static_cast<int64_t>(sqlite3_value_int64(stored)));
      const auto money = whole.AsMoney();
      return money ? Value(*money) : Value(whole.Text());
    }
    case SQLITE_FLOAT: {
      const double number = sqlite3_value_double(stored);
      const auto money = AmountOfReal(number);
      return money ? Value(*money) : Value(base::NumberText(number));
    }
    case SQLITE_NULL:
      return {};
    default: {
      const std::string_view bytes = BytesOf(stored);
      const auto money = AmountOfText(bytes);
      return money ? Value(*money) : Value(std::string(bytes));
    }
  }
}

Value DateOf(sqlite3_value* stored) {
  if (sqlite3_value_type(stored) != SQLITE_TEXT) return {};
  const auto date = DateOfText(BytesOf(stored));
  return date ? Value(*date) : Value();
}

// The digits at `at`, or something below 0 where one is none.
int DigitsAt(std::string_view text, size_t at, size_t count) {
  int number = 0;
  for (size_t index = at; index < at + count; ++index) {
    const int digit = text[index] - '0';
    if (digit < 0 || digit > 9) return -1;
    number = number * 10 + digit;
  }
  return number;
}

// Days from the zero date to a day of the Gregorian calendar; years are counted from March, so that leap days come
// last.
int64_t DayNumber(int year, int month, int day) {
  constexpr int64_t kDaysOfEra = 146097;  // of 400 years
  constexpr int64_t kZeroDate = 693899;   // 1899-12-30, counted from 0000-03-01
  const int shifted_year = month > 2 ? year : year - 1;
  const int64_t era = shifted_year / 400;
  const int64_t year_of_era = shifted_year - era * 400;
  const int64_t day_of_year = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  return era * kDaysOfEra + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year - kZeroDate;
}

// yyyy-MM-dd, or with HH:mm:ss, as stores write them; everything else is left to Date::Parse.
std::optional<Date> ReadPlainDate(std::string_view text) {
  constexpr size_t kDayLength = 10;
  constexpr size_t kTimeLength = 19;
  constexpr int kSafeDays = 28;  // every month has them
  const bool timed = text.size() == kTimeLength && text[10] == ' ' && text[13] == ':' && text[16] == ':';
  if ((text.size() != kDayLength && !timed) || text[4] != '-' || text[7] != '-') return std::nullopt;
  const int year = DigitsAt(text, 0, 4);
  const int month = DigitsAt(text, 5, 2);
  const int day = DigitsAt(text, 8, 2);
  if (year < 100 || month < 1 || month > 12 || day < 1 || day > kSafeDays) return std::nullopt;
  const int64_t seconds = DayNumber(year, month, day) * 86400;
  if (!timed) return Date::FromSeconds(seconds);
  const int hour = DigitsAt(text, 11, 2);
  const int minute = DigitsAt(text, 14, 2);
  const int second = DigitsAt(text, 17, 2);
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) return std::nullopt;
  return Date::FromSeconds(seconds + hour * 3600 + minute * 60 + second);
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

std::optional<Money> AmountOfText(std::string_view bytes) {
  constexpr size_t kPlainLength = 19;
  if (bytes.size() < kPlainLength) {
    if (const auto money = ReadPlainAmount(bytes)) return money;
  }
  return Money::Parse(bytes);
}

std::optional<Date> DateOfText(std::string_view bytes) {
  const auto date = ReadPlainDate(bytes);
  return date ? date : Date::Parse(bytes);
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
