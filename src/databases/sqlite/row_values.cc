// SPDX-License-Identifier: MIT
#include "databases/sqlite/row_values.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

#include "base/number.h"
#include "base/text.h"

namespace stockbook::databases {
namespace {

using base::Date;
using base::Money;
using base::Value;

constexpr int64_t kExactDouble = int64_t{1} << 53;

std::string_view BytesOf(sqlite3_value* stored) {
  const auto* bytes = static_cast<const char*>(sqlite3_value_blob(stored));
  const int size = sqlite3_value_bytes(stored);
  return bytes == nullptr ? std::string_view() : std::string_view(bytes, static_cast<size_t>(size));
}

std::string_view BytesOf(sqlite3_stmt* row, int column) {
  const auto* bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
  const int size = sqlite3_column_bytes(row, column);
  return bytes == nullptr ? std::string_view() : std::string_view(bytes, static_cast<size_t>(size));
}

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

std::optional<Money> AmountOfText(std::string_view text) {
  if (text.size() < 19) {
    if (const auto money = ReadPlainAmount(text)) return money;
  }
  return Money::Parse(text);
}

std::optional<Money> AmountOfReal(double number) {
  // Far from a half unit, the nearest unit is the answer whatever the decimal digits are.
  const double units = number * static_cast<double>(Money::kScale);
  const double nearest = std::nearbyint(units);
  if (std::fabs(nearest) < 1e14 && std::fabs(units - nearest) < 0.49) return Money::FromUnits(static_cast<int64_t>(nearest));
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

void ColumnSink::Append(sqlite3_stmt* row, int column, Form form, Sign sign) {
  if (sign == Sign::kKept) {
    AppendKept(row, column, form);
    return;
  }
  const Value value = ReadValue(sqlite3_column_value(row, column), form);
  if (const auto* money = value.As<Money>()) {
    builder_.AppendMoney(-*money);
  } else if (const auto* whole = value.As<int64_t>(); whole != nullptr && *whole != INT64_MIN) {
    form == Form::kReal && std::abs(*whole) <= kExactDouble ? builder_.AppendDouble(-static_cast<double>(*whole))
                                                            : builder_.AppendInteger(-*whole);
  } else if (whole != nullptr) {
    throw base::ArithmeticError("数值超出范围：计算结果太大，请检查语句和数据。");
  } else if (const auto number = value.Number(); number && form != Form::kRawMoney && form != Form::kUnits) {
    builder_.AppendDouble(-*number);
  } else {
    builder_.AppendNull();
  }
}

void ColumnSink::AppendKept(sqlite3_stmt* row, int column, Form form) {
  const int type = sqlite3_column_type(row, column);
  if (type == SQLITE_NULL) {
    builder_.AppendNull();
    return;
  }
  switch (form) {
    case Form::kRawMoney:
      AppendAmount(row, column, type);
      return;
    case Form::kRawDate:
    case Form::kDateText:
      type == SQLITE_TEXT ? AppendDate(BytesOf(row, column)) : builder_.AppendNull();
      return;
    case Form::kUnits:
      if (type != SQLITE_INTEGER) break;
      builder_.AppendMoney(Money::FromUnits(sqlite3_column_int64(row, column)));
      return;
    case Form::kReal:
    case Form::kPlain:
      break;
  }
  if (type == SQLITE_INTEGER) {
    const int64_t whole = sqlite3_column_int64(row, column);
    const bool as_real = form == Form::kReal && whole >= -kExactDouble && whole <= kExactDouble;
    as_real ? builder_.AppendDouble(static_cast<double>(whole)) : builder_.AppendInteger(whole);
  } else if (type == SQLITE_FLOAT) {
    builder_.AppendDouble(sqlite3_column_double(row, column));
  } else {
    // A blob stands behind all texts in order; as a text it would not.
    mended_ = mended_ || type == SQLITE_BLOB;
    AppendText(BytesOf(row, column));
  }
}

void ColumnSink::AppendText(std::string_view bytes) {
  if (IsAscii(bytes) || base::IsCleanUtf8(bytes)) {
    builder_.AppendText(bytes);
    return;
  }
  mended_ = true;
  builder_.AppendText(base::CleanUtf8(bytes));
}

void ColumnSink::AppendDate(std::string_view bytes) {
  if (bytes != last_date_ || last_date_.empty()) {
    last_date_ = bytes;
    const auto date = Date::Parse(bytes);
    last_date_value_ = date ? Value(*date) : Value();
  }
  builder_.Append(last_date_value_);
}

void ColumnSink::AppendAmount(sqlite3_stmt* row, int column, int type) {
  if (type == SQLITE_TEXT) {
    const std::string_view bytes = BytesOf(row, column);
    const auto money = AmountOfText(bytes);
    money ? builder_.AppendMoney(*money) : AppendText(bytes);
    return;
  }
  mended_ = mended_ || type == SQLITE_BLOB;
  const Value value = RawAmount(sqlite3_column_value(row, column));
  const auto* text = value.As<std::string>();
  text != nullptr ? AppendText(*text) : builder_.Append(value);
}

}  // namespace stockbook::databases
