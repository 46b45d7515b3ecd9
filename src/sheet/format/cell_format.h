// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "sheet/format/date_format.h"
#include "sheet/format/number_format.h"
#include "stockbook/base/value.h"
#include "stockbook/platform/grid_types.h"

namespace stockbook::sheet {

// True for the types whose cells are numbers.
inline bool IsNumberType(platform::DataType type) {
  return type == platform::DataType::kLong || type == platform::DataType::kDouble ||
         type == platform::DataType::kCurrency;
}

// A column's display format, parsed once. Number formats apply to numbers in columns of numbers, date formats to dates
// and to texts that spell one; everything else is shown as stored. "Fixed", "Standard" and "Percent" are names of
// "0.00", "#,##0.00" and "0.00%". A plain value.
class CellFormat {
 public:
  CellFormat() = default;
  explicit CellFormat(std::string_view format);

  const std::string& text() const { return text_; }
  bool IsEmpty() const { return kind_ == Kind::kNone; }
  // Appends the value as shown and returns true; returns false and appends nothing if the value is shown as stored.
  bool Append(platform::DataType type, const base::Value& value, std::string& out) const;
  bool Append(platform::DataType type, std::string_view text, std::string& out) const;

  // The type of the values that it is for: numbers or dates, if it tells.
  std::optional<platform::DataType> ShownType() const;
  // Whether it changes how numbers look in cells of the type.
  bool FormatsNumbers(platform::DataType type) const { return kind_ == Kind::kNumber && IsNumberType(type); }
  // How it shows them, if it has the common shape.
  const std::optional<PlainNumber>& plain() const { return number_.plain(); }

 private:
  enum class Kind { kNone, kNumber, kDate };

  std::string text_;
  Kind kind_ = Kind::kNone;
  NumberFormat number_;
  DateFormat date_;
};

}  // namespace stockbook::sheet
