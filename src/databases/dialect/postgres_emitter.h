// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "databases/dialect/strict_emitter.h"

namespace stockbook::databases {

// Writes the language of PostgreSQL, from version 10 on, and keeps to what other engines that speak its protocol
// understand: standard SQL, the operators || and ~, CAST, to_char, LIMIT, NULLS FIRST and COLLATE "C". docs/dialects.md
// lists all of it.
class PostgresEmitter : public StrictEmitter {
 public:
  std::string Name(std::string_view name) const override { return QuotedName(name); }
  std::string OrderKey(const TypedSql& key, size_t place) const override;
  const char* Direction(bool descending) const override;
  std::string OrderedUnion(std::string sql, const std::vector<UnionKey>& keys) const override;
  std::string TopAtFront(uint64_t) const override { return {}; }
  std::string TopAtEnd(uint64_t rows) const override { return " LIMIT " + std::to_string(rows); }

 protected:
  std::string_view TypeName(ValueClass cls) const override;
  std::string TextLiteral(std::string_view text) const override { return QuotedText(text); }
  std::string DateLiteral(std::string_view text) const override;
  std::string_view ConcatOperator() const override { return "||"; }
  std::string TextOfReal(const std::string& sql) const override;
  std::string TextOfMoney(const std::string& sql) const override;
  std::string TextOfDate(const std::string& sql) const override;
  std::string WholeOf(const std::string& sql) const override { return Cast(sql, ValueClass::kInteger); }
  std::string NumberInText(const std::string& sql) const override;
  std::string DateInText(const std::string& sql) const override;
  std::string Folded(const TypedSql& text) const override;
  std::string ByBytes(const std::string& sql) const override { return sql + " COLLATE \"C\""; }
  std::string SumOf(const AggregateCall& call, const std::string& sql, ValueClass cls) const override;
  std::span<const FunctionTemplate> Templates() const override;
  std::string Like(const TypedSql& text, std::string_view pattern, Wildcards wildcards) const override;
  std::string Format(const TypedSql& value, std::string_view pattern) const override;
  std::string ToText(const TypedSql& value, const TextType& type) const override;
};

}  // namespace stockbook::databases
