// SPDX-License-Identifier: MIT
#include "databases/dialect/value_class.h"

#include <initializer_list>
#include <string>

#include "base/text.h"

namespace stockbook::databases {
namespace {

bool ContainsAny(std::string_view text, std::initializer_list<std::string_view> words) {
  for (const std::string_view word : words) {
    if (text.find(word) != std::string_view::npos) return true;
  }
  return false;
}

}  // namespace

ValueClass ClassOfDeclaredType(std::string_view declared) {
  const std::string type = base::AsciiLower(declared);
  if (ContainsAny(type, {"money", "currency", "decimal", "numeric"})) return ValueClass::kMoney;
  if (ContainsAny(type, {"date", "time"})) return ValueClass::kDate;
  if (ContainsAny(type, {"char", "text", "clob"})) return ValueClass::kText;
  if (ContainsAny(type, {"real", "floa", "doub"})) return ValueClass::kReal;
  if (ContainsAny(type, {"int"})) return ValueClass::kInteger;
  return ValueClass::kAny;
}

ValueClass Unify(ValueClass left, ValueClass right) {
  if (left == right || right == ValueClass::kNull) return left;
  if (left == ValueClass::kNull) return right;
  const auto either = [&](ValueClass cls) { return left == cls || right == cls; };
  if (either(ValueClass::kMoney)) {
    return either(ValueClass::kText)   ? ValueClass::kText
           : either(ValueClass::kDate) ? ValueClass::kText
                                       : ValueClass::kMoney;
  }
  if (either(ValueClass::kDate) && either(ValueClass::kText)) return ValueClass::kText;
  if (IsNumeric(left) && IsNumeric(right)) return either(ValueClass::kReal) ? ValueClass::kReal : ValueClass::kInteger;
  return ValueClass::kAny;
}

}  // namespace stockbook::databases
