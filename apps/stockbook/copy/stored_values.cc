// SPDX-License-Identifier: MIT
#include "stockbook/copy/stored_values.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <functional>
#include <optional>

#include "base/number.h"
#include "base/text.h"
#include "base/wide_integer.h"
#include "stockbook/base/money.h"
#include "stockbook/inventory/inventory_rules.h"

namespace stockbook::app {
namespace {

using databases::StoredColumn;
using databases::StoredType;

// Every whole number up to this is a double of its own.
constexpr int64_t kMostExact = int64_t{1} << 53;

std::optional<base::Money> ExactMoney(double number) {
  constexpr double kMost = 9e14;
  if (!(std::fabs(number) < kMost)) return std::nullopt;
  const base::Money money = base::Money::FromDouble(number);
  return money.ToDouble() == number ? std::optional(money) : std::nullopt;
}

bool IsExactWhole(double number) { return std::fabs(number) <= kMostExact && std::trunc(number) == number; }

StoredType TypeOf(std::string_view declared) {
  if (declared.starts_with("INTEGER")) return StoredType::kWhole;
  if (declared.starts_with("REAL")) return StoredType::kNumber;
  if (declared.starts_with("MONEY")) return StoredType::kMoney;
  if (declared.starts_with("DATETIME")) return StoredType::kDate;
  return StoredType::kText;
}

bool FitsWhole(const base::Value& value) {
  if (value.As<int64_t>() != nullptr) return true;
  if (const auto* number = value.As<double>()) return IsExactWhole(*number);
  const auto* money = value.As<base::Money>();
  return money != nullptr && money->units() % base::Money::kScale == 0;
}

bool FitsNumber(const base::Value& value) {
  if (const auto* whole = value.As<int64_t>()) return *whole >= -kMostExact && *whole <= kMostExact;
  if (value.As<double>() != nullptr) return true;
  const auto* money = value.As<base::Money>();
  return money != nullptr && ExactMoney(money->ToDouble()) == *money;
}

bool FitsMoney(const base::Value& value) {
  constexpr int64_t kMostWhole = INT64_MAX / base::Money::kScale;
  if (const auto* whole = value.As<int64_t>()) return *whole >= -kMostWhole && *whole <= kMostWhole;
  if (const auto* number = value.As<double>()) return ExactMoney(*number).has_value();
  return value.As<base::Money>() != nullptr;
}

enum class Texts { kRefused, kAllowed };

bool HoldsAll(const columns::Column& column, StoredType type, Texts texts) {
  if (type == StoredType::kText && column.HasTextCodes()) return true;
  for (size_t row = 0; row < column.size(); ++row) {
    const base::Value value = column.At(row);
    if (value.IsNull() || HoldsExactly(type, value)) continue;
    // A text that spells a number would become one.
    if (texts == Texts::kRefused || value.As<std::string>() == nullptr || value.Number()) return false;
  }
  return true;
}

// The wanted type if it keeps every value, otherwise the first one that does.
StoredColumn PlanColumn(std::string name, const columns::Column& column, std::optional<StoredType> wanted) {
  constexpr StoredType kTypes[] = {StoredType::kWhole, StoredType::kMoney, StoredType::kNumber, StoredType::kDate,
                                   StoredType::kText};
  for (const Texts texts : {Texts::kRefused, Texts::kAllowed}) {
    const bool mixed = texts == Texts::kAllowed;
    if (wanted && HoldsAll(column, *wanted, texts)) return {std::move(name), *wanted, mixed};
    // A column without a value says nothing about its type.
    if (!mixed && !wanted && HoldsAll(column, StoredType::kText, texts))
      return {std::move(name), StoredType::kText, mixed};
    for (const StoredType type : kTypes) {
      if (HoldsAll(column, type, texts)) return {std::move(name), type, mixed};
    }
  }
  return {std::move(name), StoredType::kText, true};
}

void Mix(uint64_t& checksum, uint64_t part) { checksum = (std::rotl(checksum, 5) ^ part) * 0x9E3779B97F4A7C15U; }

std::string WideText(base::WideInteger number) {
  if (number == 0) return "0";
  const bool negative = number < 0;
  std::string digits;
  for (; number != 0; number /= 10) digits += static_cast<char>('0' + (negative ? -(number % 10) : number % 10));
  if (negative) digits += '-';
  return {digits.rbegin(), digits.rend()};
}

// A sum of 1/10,000 units as a decimal.
std::string WideMoneyText(base::WideInteger units) {
  const bool negative = units < 0;
  std::string digits = WideText(negative ? -units : units);
  if (digits.size() <= base::Money::kDecimals) digits.insert(0, base::Money::kDecimals + 1 - digits.size(), '0');
  digits.insert(digits.size() - base::Money::kDecimals, 1, '.');
  while (digits.ends_with('0')) digits.pop_back();
  if (digits.ends_with('.')) digits.pop_back();
  return (negative ? "-" : "") + digits;
}

// The number that equal values of the type have in common.
int64_t WholeOf(StoredType type, const base::Value& value) {
  if (type == StoredType::kWhole) return value.AsInteger().value_or(0);
  if (type == StoredType::kMoney) return value.AsMoney().value_or(base::Money()).units();
  const auto* date = value.As<base::Date>();
  return date == nullptr ? 0 : date->seconds();
}

std::string SumText(StoredType type, base::WideInteger sum) {
  if (type == StoredType::kMoney) return WideMoneyText(sum);
  return type == StoredType::kWhole || type == StoredType::kNumber ? WideText(sum) : std::string();
}

constexpr uint64_t kNullMark = 1;

// The same as by values, each distinct text looked at once.
ColumnDigest DigestOfTexts(const columns::Column& column, StoredType type) {
  std::vector<uint64_t> marks(column.TextCodeCount(), kNullMark);
  for (uint32_t code = 1; code < marks.size(); ++code)
    marks[code] = std::hash<std::string_view>()(column.TextOfCode(code));
  ColumnDigest digest;
  std::array<uint32_t, 4096> codes{};
  for (size_t first = 0; first < column.size(); first += codes.size()) {
    const std::span<uint32_t> read(codes.data(), std::min(codes.size(), column.size() - first));
    column.ReadTextCodes(first, read);
    for (const uint32_t code : read) {
      if (code != 0) ++digest.values;
      Mix(digest.checksum, marks[code]);
    }
  }
  digest.sum = SumText(type, 0);
  return digest;
}

}  // namespace

bool HoldsExactly(StoredType type, const base::Value& value) {
  switch (type) {
    case StoredType::kWhole:
      return FitsWhole(value);
    case StoredType::kNumber:
      return FitsNumber(value);
    case StoredType::kMoney:
      return FitsMoney(value);
    case StoredType::kDate:
      return value.As<base::Date>() != nullptr;
    case StoredType::kText:
      return value.As<std::string>() != nullptr;
  }
  return false;
}

databases::StoredTable PlanStoredTable(TableName name, std::vector<platform::Field>& fields) {
  const InventoryTable& schema = InventoryTableOf(name);
  const size_t rows = fields.empty() ? 0 : fields.front().column.size();
  std::vector<platform::Field> ordered;
  databases::StoredTable table{std::string(schema.name), {}, std::string(NumberKeyOf(name))};
  for (const InventoryColumn& column : schema.columns) {
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const platform::Field& field) {
      return base::EqualsIgnoringCase(field.name, column.name);
    });
    columns::Column values;
    if (found == fields.end()) {
      values = columns::Column::Constant({}, rows);
    } else {
      values = std::move(found->column);
      fields.erase(found);
    }
    table.columns.push_back(PlanColumn(std::string(column.name), values, TypeOf(column.type)));
    ordered.push_back({std::string(column.name), std::move(values)});
  }
  for (platform::Field& field : fields) {
    table.columns.push_back(PlanColumn(field.name, field.column, std::nullopt));
    ordered.push_back(std::move(field));
  }
  fields = std::move(ordered);
  return table;
}

ColumnDigest DigestOf(const columns::Column& column, StoredType type) {
  if (column.HasTextCodes()) return DigestOfTexts(column, type);
  ColumnDigest digest;
  base::WideInteger exact = 0;
  double number_sum = 0;
  for (size_t row = 0; row < column.size(); ++row) {
    const base::Value value = column.At(row);
    if (value.IsNull()) {
      Mix(digest.checksum, kNullMark);
      continue;
    }
    ++digest.values;
    if (const auto* words = value.As<std::string>()) {
      Mix(digest.checksum, std::hash<std::string_view>()(*words));
    } else if (type == StoredType::kNumber) {
      // The sign of zero is no part of a number here.
      const double number = databases::StoredDouble(value) + 0.0;
      number_sum += number;
      Mix(digest.checksum, std::bit_cast<uint64_t>(number));
    } else {
      const int64_t whole = WholeOf(type, value);
      exact += whole;
      Mix(digest.checksum, static_cast<uint64_t>(whole));
    }
  }
  digest.sum = type == StoredType::kNumber ? base::NumberText(number_sum) : SumText(type, exact);
  return digest;
}

}  // namespace stockbook::app
