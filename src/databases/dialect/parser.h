// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "databases/dialect/ast.h"
#include "databases/dialect/dialect.h"

namespace stockbook::databases {

// The tree of one SELECT statement of the dialect; throws Refusal with the place and the reason for everything else.
// Nesting is bounded, so no statement can exhaust the stack.
Query ParseStatement(std::string_view statement, Dialect dialect);

}  // namespace stockbook::databases
