// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "databases/dialect/dialect.h"
#include "databases/dialect/token.h"

namespace stockbook::databases {

// The words of a statement, a kEnd token last; throws Refusal for anything that is no word of the dialect.
std::vector<Token> Tokenize(std::string_view statement, Dialect dialect);

}  // namespace stockbook::databases
