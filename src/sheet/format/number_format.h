// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/decimal.h"
#include "base/number_pattern.h"
#include "sheet/format/plain_number.h"

namespace stockbook::sheet {

// A parsed number format: up to three sections, for positive, negative and zero numbers, separated by semicolons. In a
// section 0 is a digit always shown, # a digit shown if there is one, a point starts the decimals, a comma between
// digits groups by thousands and one after the last digit divides by a thousand, % shows the number times 100; texts in
// double quotes, characters after a backslash and all others are literal. A missing or empty section is the same as
// that of positive numbers, with a minus sign for negative numbers. A plain value; formatting is O(digits).
class NumberFormat {
 public:
  NumberFormat() = default;
  static NumberFormat Parse(std::string_view format);

  // Rounded half away from zero to the decimals that the section shows; a number that rounds to zero has no sign.
  std::string Format(const base::Decimal& number) const;

  // Whether it has a place for a digit: one without shows the same for every number.
  bool ShowsDigits() const;

  // The same in one step, if the format has the common shape.
  const std::optional<PlainNumber>& plain() const { return plain_; }

 private:
  const base::NumberSection& SectionAt(size_t index) const;

  std::vector<base::NumberSection> sections_;
  std::optional<PlainNumber> plain_;
};

}  // namespace stockbook::sheet
