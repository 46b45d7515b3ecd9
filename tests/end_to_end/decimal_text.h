// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace stockbook::end_to_end {

// Numbers as an accountant would write them, computed on decimal digits. Nothing here calls the program's own money,
// number or format code, because its results are compared with these.

// An amount in 1/10,000, wide enough for every sum in a test.
__extension__ typedef __int128 Amount;

// Stands for every amount that is far beyond money.
extern const Amount kBeyondMoney;

// The amount of a decimal text, whose whole part commas may group, rounded half to even; nothing if it is not a number.
std::optional<Amount> AmountOf(std::string_view text);
// At most four decimals, without trailing zeros.
std::string AmountText(Amount amount);
bool FitsMoney(Amount amount);
double AsDouble(Amount amount);

// At most 15 significant digits; "" if it is not a number.
std::string NumberText(double number);
// The number of the whole text, or nothing.
std::optional<double> NumberOf(std::string_view text);

// The text in a format: "#,##0.00", "#0.00%", "yyyy-MM-dd" or none. A text that is not a number stays unchanged.
std::string Shown(std::string_view text, std::string_view format);

// A stored date as it is shown: "yyyy-MM-dd", with " HH:mm:ss" when there is a time; "" when it is none.
std::string DateText(std::string_view stored);

}  // namespace stockbook::end_to_end
