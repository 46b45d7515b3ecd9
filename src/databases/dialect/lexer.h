// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/dialect.h"

namespace stockbook::databases {

enum class TokenType { kEnd, kName, kQuotedName, kText, kInteger, kDecimal, kDate, kSymbol };

// One word of a statement. `text` is the name without its quotes, the text with doubled quotes undone, the date as
// base::Date::Text writes it, the digits of a number, or the symbol itself.
struct Token {
  TokenType type = TokenType::kEnd;
  std::string text;
  size_t offset = 0;
};

// The words of a statement, a kEnd token last; throws Refusal for anything that is no word of the dialect.
std::vector<Token> Tokenize(std::string_view statement, Dialect dialect);

}  // namespace stockbook::databases
