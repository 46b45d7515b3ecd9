// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/typed_sql.h"

namespace stockbook::databases {

// An aggregate of a statement.
struct AggregateCall {
  std::string_view name;  // in lower case: sum, avg, count, min or max
  bool distinct = false;
  size_t offset = 0;  // byte of the statement, for messages
};

// Writes what a translated statement means in the language of one engine. The translator resolves names, decides what
// class each value is of, and refuses what the dialects do not know; it says here which operation is meant, and never
// writes an engine's function itself. An operation that an engine has no words for is refused with its place. Emitters
// have no state.
class Emitter {
 public:
  Emitter() = default;
  Emitter(const Emitter&) = delete;
  Emitter& operator=(const Emitter&) = delete;
  virtual ~Emitter() = default;

  // A name as the engine quotes it.
  virtual std::string Name(std::string_view name) const = 0;
  // A constant: the text of a kText, the digits of a number, yyyy-MM-dd[ HH:mm:ss] of a kDate; kNull has none.
  virtual std::string Literal(std::string_view text, ValueClass cls) const = 0;
  // In which form a column of the class is stored.
  virtual Form ColumnForm(ValueClass cls) const = 0;
  // The class of a column that holds values of both.
  virtual ValueClass Common(ValueClass left, ValueClass right) const = 0;

  // One of the scalar functions sb_… (see scalar_functions.h) of the class; the emitter may know the class better.
  virtual TypedSql Call(std::string_view function, const std::vector<TypedSql>& arguments, ValueClass cls,
                        size_t offset) const = 0;
  // The same value in the form that results and derived tables have.
  virtual TypedSql Canonical(TypedSql value) const = 0;
  // The canonical value turned into another class, as Common asks for it.
  virtual TypedSql ConvertTo(TypedSql value, ValueClass cls) const = 0;
  // A condition as a number: -1, 0 or null.
  virtual TypedSql NumberOf(TypedSql condition) const = 0;
  // A number as a condition: whether it is not 0.
  virtual TypedSql Truth(const TypedSql& value, size_t offset) const = 0;

  // A condition; `op` is one of = <> < <= > >=.
  virtual TypedSql Comparison(std::string_view op, const TypedSql& left, const TypedSql& right,
                              size_t offset) const = 0;
  // value BETWEEN low AND high.
  virtual TypedSql Between(const std::vector<TypedSql>& parts, size_t offset) const = 0;
  // value IN (items).
  virtual TypedSql In(const TypedSql& value, const std::vector<TypedSql>& items, size_t offset) const = 0;
  // value IN (a query of one column c0 of the class).
  virtual TypedSql InQuery(const TypedSql& value, const std::string& query, ValueClass cls, size_t offset) const = 0;

  // An aggregate over a canonical value; its class and form are set.
  virtual TypedSql Aggregate(const AggregateCall& call, const TypedSql& value) const = 0;

  // `key` as an item of an ORDER BY, which may also be called by its place in the result (from 1; 0: it is none).
  virtual std::string OrderKey(const TypedSql& key, size_t place) const = 0;
  virtual const char* Direction(bool descending) const = 0;
  // A union as a whole, put in order by `keys` (places in the result, from 1).
  struct UnionKey {
    size_t place = 0;
    ValueClass cls = ValueClass::kAny;
    bool descending = false;
  };
  virtual std::string OrderedUnion(std::string sql, const std::vector<UnionKey>& keys) const = 0;
  // The first rows only: what stands after SELECT, and what at the end.
  virtual std::string TopAtFront(uint64_t rows) const = 0;
  virtual std::string TopAtEnd(uint64_t rows) const = 0;
  // Whether rows have to be put in an order that tables suggest (by their keys, groups by theirs) where a statement
  // asks for none, because the engine gives them in any order.
  virtual bool OrdersUnasked() const = 0;
};

}  // namespace stockbook::databases
