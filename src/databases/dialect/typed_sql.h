// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/schema.h"
#include "databases/dialect/value_class.h"
#include "stockbook/base/value.h"

namespace stockbook::databases {

// How a stored value is to be read. Inside translated statements money travels as whole units (kUnits: an integer
// counts units of 1/10,000, a text is one that spells no amount) and dates as the text of base::Date (kDateText);
// columns of the file's own tables are in the raw forms: money as any number or decimal text, dates as ISO text.
enum class Form : char { kPlain = 'v', kReal = 'r', kUnits = 'm', kDateText = 'd', kRawMoney = 'M', kRawDate = 'D' };

// The form that a column of the class has in a file's table, and in the result of a select.
Form RawFormOf(ValueClass cls);
Form ResultFormOf(ValueClass cls);

// A column that a name can mean.
struct BoundColumn {
  std::string name;
  std::string sql;
  ValueClass cls = ValueClass::kAny;
  Form form = Form::kPlain;
  size_t source = 0;
};

// A table or derived table of a FROM, under the name that the statement gives it.
struct BoundSource {
  size_t id = 0;                       // unique in the statement
  std::string name;                    // as the statement calls it
  std::string alias;                   // as the translation calls it
  const TableSchema* table = nullptr;  // nullptr for derived tables
  std::vector<BoundColumn> columns;
};

// The sources that a name may refer to, followed by those of the enclosing statement.
struct Scope {
  std::deque<BoundSource> sources;  // a deque, since columns are pointed at while sources are added
  const Scope* outer = nullptr;

  // The column meant; throws Refusal when there is none or more than one.
  const BoundColumn& Find(const std::string& qualifier, const std::string& name, size_t offset) const;
  // The source meant, or throws Refusal.
  const BoundSource& FindSource(const std::string& name, size_t offset) const;
};

// A set of sources by their numbers. Everything beyond the 63rd counts as "many".
class SourceSet {
 public:
  static constexpr size_t kMost = 63;
  void Add(size_t id) { bits_ |= uint64_t{1} << (id < kMost ? id : kMost); }
  void AddAll(SourceSet other) { bits_ |= other.bits_; }
  static SourceSet Many() {
    SourceSet set;
    set.bits_ = ~uint64_t{0};
    return set;
  }
  bool Contains(size_t id) const { return id < kMost && (bits_ >> id & 1) != 0; }
  bool IsEmpty() const { return bits_ == 0; }
  bool IsOnly(size_t id) const { return id < kMost && bits_ == uint64_t{1} << id; }
  bool IsWithin(SourceSet other) const { return (bits_ & ~other.bits_) == 0; }

 private:
  uint64_t bits_ = 0;
};

// A translated expression.
struct TypedSql {
  std::string sql;
  ValueClass cls = ValueClass::kAny;  // kBoolean: a condition, 1, 0 or null
  Form form = Form::kPlain;
  SourceSet sources;
  bool has_aggregate = false;
  std::optional<size_t> ungrouped;       // position of a column outside every aggregate and grouped expression
  const BoundColumn* column = nullptr;   // set for a bare column
  const BoundColumn* negated = nullptr;  // set for minus a bare column
  std::optional<base::Value> constant;   // set for literals
};

std::string QuotedName(std::string_view name);
std::string QuotedText(std::string_view text);

}  // namespace stockbook::databases
