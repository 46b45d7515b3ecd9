// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "databases/dialect/typed_sql.h"

// Composes larger expressions from translated ones in words that every engine understands. Nothing here reads a
// statement or refuses one.
namespace stockbook::databases {

// What a translation writes more than once may have this many bytes: nested, it doubles with every level.
inline constexpr size_t kMostWritten = size_t{1} << 20;

// What the parts have in common, without text: their sources, aggregates and ungrouped columns.
TypedSql Gathered(const std::vector<TypedSql>& parts);
TypedSql Not(TypedSql condition);

// A constant with which every text compares the same whether case is minded or not: a number, or a text of bytes that
// are neither letters nor between the two alphabets.
bool IsCaseless(const TypedSql& value);

}  // namespace stockbook::databases
