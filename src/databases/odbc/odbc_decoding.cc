// SPDX-License-Identifier: MIT
#include "databases/odbc/odbc_decoding.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>

#include "base/number.h"
#include "databases/odbc/odbc_text.h"
#include "stockbook/base/value.h"

namespace stockbook::databases {
namespace {

using base::Money;
using base::Value;

bool IsWhole(ValueClass cls) { return cls == ValueClass::kInteger || cls == ValueClass::kBoolean; }

void AppendWhole(int64_t number, ValueClass cls, columns::ColumnBuilder& builder) {
  if (cls == ValueClass::kMoney) {
    builder.AppendMoney(Money::FromInteger(number));
  } else if (cls == ValueClass::kReal) {
    builder.AppendDouble(static_cast<double>(number));
  } else if (cls == ValueClass::kText) {
    builder.AppendText(std::to_string(number));
  } else {
    builder.AppendInteger(number);
  }
}

void AppendReal(double number, ValueClass cls, columns::ColumnBuilder& builder) {
  constexpr double kExact = 9007199254740992.0;
  if (cls == ValueClass::kMoney) {
    const auto money = Value(number).AsMoney();
    builder.Append(money ? Value(*money) : Value(base::NumberText(number)));
  } else if (cls == ValueClass::kText) {
    builder.AppendText(base::NumberText(number));
  } else if (IsWhole(cls) && number == std::trunc(number) && std::fabs(number) < kExact) {
    builder.AppendInteger(static_cast<int64_t>(number));
  } else {
    builder.AppendDouble(number);
  }
}

// A number that a text spells, or the text itself.
void AppendSpelled(std::string_view text, ValueClass cls, columns::ColumnBuilder& builder) {
  if (cls == ValueClass::kMoney) {
    if (const auto money = Money::Parse(text)) {
      builder.AppendMoney(*money);
      return;
    }
  } else if (IsWhole(cls)) {
    if (const auto whole = base::ParseInteger(text)) {
      builder.AppendInteger(*whole);
      return;
    }
  }
  if (cls == ValueClass::kReal || IsWhole(cls)) {
    if (const auto number = base::ParseNumber(text)) {
      AppendReal(*number, cls, builder);
      return;
    }
  }
  if (cls == ValueClass::kDate) {
    const auto date = base::Date::Parse(text);
    builder.Append(date ? Value(*date) : Value());
    return;
  }
  builder.AppendText(text);
}

void AppendDigits(std::string_view digits, ValueClass cls, columns::ColumnBuilder& builder) {
  const bool free = cls == ValueClass::kAny || cls == ValueClass::kNull;
  AppendSpelled(digits, free ? ValueClass::kMoney : cls, builder);
}

void AppendDay(const std::optional<base::Date>& date, ValueClass cls, columns::ColumnBuilder& builder) {
  if (!date) {
    builder.AppendNull();
  } else if (cls == ValueClass::kText) {
    builder.AppendText(date->Text());
  } else {
    builder.AppendDate(*date);
  }
}

void AppendDoubleColumn(const OdbcRowset& block, size_t column, columns::ColumnBuilder& builder) {
  std::vector<double> portion;
  portion.reserve(block.rows());
  for (size_t row = 0; row < block.rows(); ++row) {
    if (!block.IsNull(column, row)) {
      portion.push_back(block.DoubleAt(column, row));
      continue;
    }
    builder.AppendDoubles(portion);
    portion.clear();
    builder.AppendNull();
  }
  builder.AppendDoubles(portion);
}

// Texts repeat from row to row; one equal to that above it is not converted again.
void AppendTextColumn(const OdbcRowset& block, size_t column, ValueClass cls, ColumnSink& sink) {
  std::span<const SQLWCHAR> last;
  std::string text;
  bool clean = true;
  for (size_t row = 0; row < block.rows(); ++row) {
    if (block.IsNull(column, row)) {
      sink.builder.AppendNull();
      continue;
    }
    const std::span<const SQLWCHAR> wide = block.TextAt(column, row);
    if (row == 0 || !std::equal(wide.begin(), wide.end(), last.begin(), last.end())) {
      text.clear();
      clean = AppendUtf8(wide.data(), wide.size(), text);
      last = wide;
    }
    sink.mended = sink.mended || !clean;
    if (cls == ValueClass::kText || cls == ValueClass::kAny || cls == ValueClass::kNull) {
      sink.builder.AppendText(text);
    } else {
      AppendSpelled(text, cls, sink.builder);
    }
  }
}

template <typename AppendOne>
void AppendEach(const OdbcRowset& block, size_t column, columns::ColumnBuilder& builder, AppendOne append) {
  for (size_t row = 0; row < block.rows(); ++row) {
    if (block.IsNull(column, row)) {
      builder.AppendNull();
    } else {
      append(row);
    }
  }
}

}  // namespace

void AppendColumn(const OdbcRowset& block, size_t column, ValueClass cls, ColumnSink& sink) {
  columns::ColumnBuilder& builder = sink.builder;
  switch (block.columns()[column].carrier) {
    case OdbcCarrier::kInteger:
      AppendEach(block, column, builder, [&](size_t row) { AppendWhole(block.IntegerAt(column, row), cls, builder); });
      return;
    case OdbcCarrier::kDouble:
      if (cls == ValueClass::kReal || cls == ValueClass::kAny) {
        AppendDoubleColumn(block, column, builder);
        return;
      }
      AppendEach(block, column, builder, [&](size_t row) { AppendReal(block.DoubleAt(column, row), cls, builder); });
      return;
    case OdbcCarrier::kDigits:
      AppendEach(block, column, builder, [&](size_t row) { AppendDigits(block.DigitsAt(column, row), cls, builder); });
      return;
    case OdbcCarrier::kTimestamp:
      AppendEach(block, column, builder, [&](size_t row) { AppendDay(block.DateAt(column, row), cls, builder); });
      return;
    case OdbcCarrier::kText:
      AppendTextColumn(block, column, cls, sink);
      return;
  }
}

}  // namespace stockbook::databases
