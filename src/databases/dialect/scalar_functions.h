// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/value.h"

namespace stockbook::databases {

using Arguments = std::span<const base::Value>;

// One operator or function of the dialects over plain values. `name` is what translated statements call it. A null
// argument gives null unless the function says otherwise; a value that cannot be read as required gives null; leaving
// the range of money or of whole numbers throws base::ArithmeticError. The translator checks the argument count.
struct ScalarFunction {
  const char* name;
  base::Value (*apply)(Arguments);
};

bool AnyNull(Arguments values);
// The result is no number that the dialects have; throws base::ArithmeticError.
[[noreturn]] void ThrowNumberOverflow();

std::span<const ScalarFunction> OperatorFunctions();
std::span<const ScalarFunction> TextFunctions();
std::span<const ScalarFunction> NumberFunctions();
std::span<const ScalarFunction> DateFunctions();
std::span<const ScalarFunction> ConversionFunctions();

// -1, 0 or 1; nothing where either is null or the two do not compare. Numbers, money and dates compare exactly with
// each other and with texts that spell one; two texts compare byte by byte.
std::optional<int> CompareValues(const base::Value& left, const base::Value& right);

// The desktop's Format(value, pattern): "00", "#,##0.00", "0%", "yyyy-MM-dd", "yyyy年MM月dd日", "Standard"…
std::string FormatValue(const base::Value& value, std::string_view pattern);

// LIKE, ignoring ASCII case. The desktop's wildcards are % * (any text), _ ? (one character), # (a digit) and [a-z],
// [!a-z]; the server's are %, _, [a-z] and [^a-z].
enum class Wildcards { kDesktop, kServer };
bool MatchesLike(std::string_view text, std::string_view pattern, Wildcards wildcards);

// Money times a number: exact, then rounded half to even to 1/10,000.
std::optional<base::Money> MultiplyMoney(base::Money money, const base::Value& factor);

// A date out of a text as people write it: what base::Date reads, with blanks around the separators allowed, and
// yyyyMMdd.
std::optional<base::Date> ReadDateText(std::string_view text);

// A double, whole number or money in plain decimal digits, never with an exponent: "-1234.5".
std::string PlainDecimal(const base::Value& value);

}  // namespace stockbook::databases
