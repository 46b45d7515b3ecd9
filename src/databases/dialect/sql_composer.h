// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/typed_sql.h"

// Composes larger expressions from translated ones. Nothing here reads a statement or refuses one.
namespace stockbook::databases {

// What a translation writes more than once may have this many bytes: nested, it doubles with every level.
inline constexpr size_t kMostWritten = size_t{1} << 20;

// True when SQLite itself compares the value as the dialects do.
bool IsPlain(const TypedSql& value);

// What the parts have in common, without text: their sources, aggregates and ungrouped columns.
TypedSql Gathered(const std::vector<TypedSql>& parts);
// function('forms', a, b, …) of the class.
TypedSql Call(std::string_view function, const std::vector<TypedSql>& arguments, ValueClass cls);
// The same value in the form that results and derived tables have.
TypedSql Canonical(TypedSql value);
// The canonical value turned into another class, as Unify asks for it.
TypedSql ConvertTo(TypedSql value, ValueClass cls);
// Under what name the room's collation of texts, which ignores case, is known to SQLite.
inline constexpr const char* kTextCollation = "sb_text";
// Whether both may be texts, and differ for SQLite where they are the same for the dialects. Columns of numbers are
// taken to hold numbers, so that SQLite's indexes serve them, and so do constants without letters.
bool NeedsCollation(const TypedSql& left, const TypedSql& right);
// The value, to be compared by the room's collation.
std::string Collated(const TypedSql& value);
// A condition; `op` is one of = <> < <= > >=.
TypedSql Comparison(std::string_view op, const TypedSql& left, const TypedSql& right);
TypedSql Not(TypedSql condition);

}  // namespace stockbook::databases
