// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/emitter.h"

namespace stockbook::databases {

// Under what name the room's collation of texts, which ignores case, is known to SQLite.
inline constexpr const char* kTextCollation = "sb_text";

// Writes SQLite's language. Everything that touches money or dates, and every function, becomes a call of one of the
// room's own functions (sb_…) whose first argument spells the forms of the others; plain comparisons stay SQLite's own,
// so that its indexes serve them.
class SqliteEmitter : public Emitter {
 public:
  std::string Name(std::string_view name) const override { return QuotedName(name); }
  std::string Literal(std::string_view text, ValueClass cls) const override;
  Form ColumnForm(ValueClass cls) const override { return RawFormOf(cls); }
  ValueClass Common(ValueClass left, ValueClass right) const override { return Unify(left, right); }
  TypedSql Call(std::string_view function, const std::vector<TypedSql>& arguments, ValueClass cls,
                size_t offset) const override;
  TypedSql Canonical(TypedSql value) const override;
  TypedSql ConvertTo(TypedSql value, ValueClass cls) const override;
  TypedSql NumberOf(TypedSql condition) const override;
  TypedSql Truth(const TypedSql& value, size_t offset) const override;
  TypedSql Comparison(std::string_view op, const TypedSql& left, const TypedSql& right, size_t offset) const override;
  TypedSql Between(const std::vector<TypedSql>& parts, size_t offset) const override;
  TypedSql In(const TypedSql& value, const std::vector<TypedSql>& items, size_t offset) const override;
  TypedSql InQuery(const TypedSql& value, const std::string& query, ValueClass cls, size_t offset) const override;
  TypedSql Aggregate(const AggregateCall& call, const TypedSql& value) const override;
  std::string OrderKey(const TypedSql& key, size_t place) const override;
  const char* Direction(bool descending) const override { return descending ? " DESC" : ""; }
  std::string OrderedUnion(std::string sql, const std::vector<UnionKey>& keys) const override;
  std::string TopAtFront(uint64_t) const override { return {}; }
  std::string TopAtEnd(uint64_t rows) const override { return " LIMIT " + std::to_string(rows); }
  bool OrdersUnasked() const override { return false; }

 private:
  TypedSql Function(std::string_view function, const std::vector<TypedSql>& arguments, ValueClass cls) const;
};

}  // namespace stockbook::databases
