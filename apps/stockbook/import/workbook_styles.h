// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace stockbook::app {

// Whether a number with the format is a date: formats have a number of their own, or one that every spreadsheet knows,
// and then no code.
bool IsDateFormat(size_t number, std::string_view code);

// The text of a date that a spreadsheet stores as a number of days since `epoch_day`, which is counted from 1899-12-30.
// The text of the number if it is no date of the years up to 9999.
std::string SerialDateText(double days, int epoch_day);

}  // namespace stockbook::app
