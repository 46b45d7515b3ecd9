// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace stockbook::databases {

// What is known about an expression's values before a row is read. Text, integer and real are expectations (a stored
// value of another type is kept as it is stored); money and date are decided: every value is read as one, see
// row_values.h.
enum class ValueClass { kNull, kBoolean, kInteger, kReal, kMoney, kDate, kText, kAny };

// Of a column by its declared type, as the names of types in host files suggest it.
ValueClass ClassOfDeclaredType(std::string_view declared);

// The class of a column that holds values of both, as in the arms of a UNION or the branches of a CASE.
ValueClass Unify(ValueClass left, ValueClass right);

constexpr bool IsNumeric(ValueClass cls) {
  return cls == ValueClass::kBoolean || cls == ValueClass::kInteger || cls == ValueClass::kReal ||
         cls == ValueClass::kMoney;
}

}  // namespace stockbook::databases
