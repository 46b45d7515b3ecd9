// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "databases/dialect/strict_emitter.h"

namespace stockbook::databases {

// Writes the language of SQL Server, from version 2012 on. Texts compare as the collation of the server's columns says.
class ServerEmitter : public StrictEmitter {
 public:
  std::string Name(std::string_view name) const override;
  std::string OrderKey(const TypedSql& key, size_t) const override { return key.sql; }
  const char* Direction(bool descending) const override { return descending ? " DESC" : ""; }
  std::string OrderedUnion(std::string sql, const std::vector<UnionKey>& keys) const override;
  std::string TopAtFront(uint64_t rows) const override { return "TOP (" + std::to_string(rows) + ") "; }
  std::string TopAtEnd(uint64_t) const override { return {}; }

 protected:
  std::string_view TypeName(ValueClass cls) const override;
  std::string TextLiteral(std::string_view text) const override { return "N" + QuotedText(text); }
  std::string DateLiteral(std::string_view text) const override;
  std::string_view ConcatOperator() const override { return "+"; }
  std::string TextOfReal(const std::string& sql) const override;
  std::string TextOfMoney(const std::string& sql) const override;
  std::string TextOfDate(const std::string& sql) const override;
  std::string WholeOf(const std::string& sql) const override;
  std::string NumberInText(const std::string& sql) const override;
  std::string DateInText(const std::string& sql) const override;
  std::string Folded(const TypedSql& text) const override { return As(ValueClass::kText, text); }
  std::string ByBytes(const std::string& sql) const override { return sql; }
  std::string SumOf(const AggregateCall& call, const std::string& sql, ValueClass cls) const override;
  std::span<const FunctionTemplate> Templates() const override;
  std::string Like(const TypedSql& text, std::string_view pattern, Wildcards wildcards) const override;
  std::string Format(const TypedSql& value, std::string_view pattern) const override;
  std::string ToText(const TypedSql& value, const TextType& type) const override;
};

}  // namespace stockbook::databases
