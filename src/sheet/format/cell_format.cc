// SPDX-License-Identifier: MIT
#include "sheet/format/cell_format.h"

#include <array>
#include <utility>

#include "base/text.h"

namespace stockbook::sheet {
namespace {

using base::Decimal;
using base::Money;

constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kNamedFormats = {{
    {"fixed", "0.00"},
    {"standard", "#,##0.00"},
    {"percent", "0.00%"},
    {"general number", ""},
}};

std::string_view PatternOf(std::string_view format) {
  for (const auto& [name, pattern] : kNamedFormats) {
    if (base::EqualsIgnoringCase(format, name)) return pattern;
  }
  return format;
}

std::optional<Decimal> DecimalOf(const base::Value& value) {
  if (const auto* whole = value.As<int64_t>()) return Decimal::FromInteger(*whole);
  if (const auto* money = value.As<Money>()) return Decimal::FromScaled(money->units(), Money::kDecimals);
  if (const auto* number = value.As<double>()) return Decimal::FromDouble(*number);
  return std::nullopt;
}

bool AppendPlain(const PlainNumber& plain, const base::Value& value, std::string& out) {
  if (const auto* whole = value.As<int64_t>()) return plain.Append(*whole, 0, out);
  if (const auto* money = value.As<Money>()) return plain.Append(money->units(), Money::kDecimals, out);
  const auto* number = value.As<double>();
  return number != nullptr && plain.Append(*number, out);
}

}  // namespace

CellFormat::CellFormat(std::string_view format) : text_(format) {
  const std::string_view pattern = PatternOf(format);
  if (pattern.empty()) return;
  if (DateFormat::IsDateFormat(pattern)) {
    kind_ = Kind::kDate;
    date_ = DateFormat::Parse(pattern);
  } else {
    kind_ = Kind::kNumber;
    number_ = NumberFormat::Parse(pattern);
  }
}

std::optional<platform::DataType> CellFormat::ShownType() const {
  if (kind_ == Kind::kDate) return platform::DataType::kDate;
  // One without a place for a digit would show every cell alike.
  const bool has_digits = kind_ == Kind::kNumber && number_.ShowsDigits();
  return has_digits ? std::optional(platform::DataType::kDouble) : std::nullopt;
}

bool CellFormat::Append(platform::DataType type, const base::Value& value, std::string& out) const {
  if (const auto* text = value.As<std::string>()) return Append(type, std::string_view(*text), out);
  if (kind_ == Kind::kDate) {
    const auto* date = value.As<base::Date>();
    if (date != nullptr) out += date_.Format(*date);
    return date != nullptr;
  }
  if (kind_ != Kind::kNumber || !IsNumberType(type)) return false;
  if (number_.plain() && AppendPlain(*number_.plain(), value, out)) return true;
  const auto decimal = DecimalOf(value);
  if (decimal) out += number_.Format(*decimal);
  return decimal.has_value();
}

bool CellFormat::Append(platform::DataType type, std::string_view text, std::string& out) const {
  if (text.empty()) return false;
  if (kind_ == Kind::kDate) {
    const auto date = IsNumberType(type) ? std::nullopt : base::Date::Parse(text);
    if (date) out += date_.Format(*date);
    return date.has_value();
  }
  if (kind_ != Kind::kNumber || !IsNumberType(type)) return false;
  const auto decimal = Decimal::Parse(text);
  if (decimal) out += number_.Format(*decimal);
  return decimal.has_value();
}

}  // namespace stockbook::sheet
