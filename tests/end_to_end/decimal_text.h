// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace stockbook::end_to_end {

// Numbers as an accountant would write them, worked out on decimal digits alone. Nothing here calls the program's own
// money, number or format code: it is the other side of the comparison.

// An amount in 1/10,000, wide enough that no sum of a test leaves it.
__extension__ typedef __int128 Amount;

// The amount that a decimal text spells, rounded half to even; nothing when it spells none.
std::optional<Amount> AmountOf(std::string_view text);
// At most four decimals, without trailing zeros.
std::string AmountText(Amount amount);
bool FitsMoney(Amount amount);
double AsDouble(Amount amount);

// At most 15 significant digits; "" for what is no number.
std::string NumberText(double number);
// The number that the whole text spells, or nothing.
std::optional<double> NumberOf(std::string_view text);

// The text in a format: "#,##0.00", "#0.00%", "yyyy-MM-dd" or none. A text that is no number stays as it is.
std::string Shown(std::string_view text, std::string_view format);

// A stored date as it is shown: "yyyy-MM-dd", with " HH:mm:ss" when there is a time; "" when it is none.
std::string DateText(std::string_view stored);

}  // namespace stockbook::end_to_end
