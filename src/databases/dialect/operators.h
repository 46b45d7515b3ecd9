// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "databases/dialect/scalar_functions.h"

namespace stockbook::databases {

std::span<const ScalarFunction> OperatorFunctions();

// -1, 0 or 1; nothing where either is null or the two do not compare. Numbers, money and dates compare exactly with
// each other and with texts that spell one; two texts compare as CompareTexts says.
std::optional<int> CompareValues(const base::Value& left, const base::Value& right);

// -1, 0 or 1: byte by byte, but ASCII letters of either case are the same, as they are to `like`.
int CompareTexts(std::string_view left, std::string_view right);

// Money times a number: exact, then rounded half to even to 1/10,000.
std::optional<base::Money> MultiplyMoney(base::Money money, const base::Value& factor);

// A double, whole number or money in plain decimal digits, never with an exponent: "-1234.5".
std::string PlainDecimal(const base::Value& value);

// Throws base::ArithmeticError: the result is no number that the dialects have.
[[noreturn]] void ThrowNumberOverflow();
// Throws base::ArithmeticError: the result would be a text of more than kMostTextBytes.
[[noreturn]] void ThrowTextTooLong();

}  // namespace stockbook::databases
