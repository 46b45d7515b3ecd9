// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/ast.h"

namespace stockbook::databases {

// A column of a table that has to be one of these whole numbers for a row to matter.
struct WholeNumberCondition {
  std::string column;
  std::vector<std::string> numbers;
};

// A column of a table that may not be greater than this text for a row to matter.
struct TextLimit {
  std::string column;
  std::string text;
  bool exact = false;  // nor less
};

// What a statement reads of a table.
struct TableNeeds {
  std::string name;  // as the statement writes it
  bool all_columns = false;
  std::vector<WholeNumberCondition>
      conditions;                 // that every row read for the statement meets; the statement still asks
  std::vector<TextLimit> limits;  // and so these
};

// What a statement reads: a superset that the tree alone shows, without knowing any table. A column of any table may be
// meant by a name that stands anywhere in the statement.
class StatementNeeds {
 public:
  explicit StatementNeeds(const Query& query);

  // In the order in which they are first named.
  const std::vector<TableNeeds>& tables() const { return tables_; }
  // Ignoring ASCII case; nullptr for a table that is not read.
  const TableNeeds* Find(std::string_view table) const;
  // Ignoring ASCII case.
  bool NamesColumn(const std::string& column) const;
  // Whether both tables are read once, and together: a row of either matters only with one of the other that has the
  // same value in this column. Ignoring ASCII case.
  bool JoinsRows(std::string_view table, std::string_view other, std::string_view column) const;

 private:
  void AddQuery(const Query& query);
  void AddCore(const SelectCore& core);
  void AddSource(const TableRef& ref, std::vector<const TableRef*>& named);
  void AddExpression(const Expr& expr);
  void AddConditions(const Expr& where, const std::vector<const TableRef*>& named);
  void AddJoins(const Expr& on, const std::vector<const TableRef*>& named);
  bool IsReadOnce(std::string_view table) const;
  TableNeeds& NeedsOf(const std::string& name);

  std::vector<TableNeeds> tables_;
  std::map<std::string, size_t, std::less<>> mentions_;  // by lower-case name
  std::set<std::string, std::less<>> columns_;           // in lower case
  struct InnerJoin {
    std::string table;
    std::string other;
    std::string column;
  };
  std::vector<InnerJoin> joins_;
};

}  // namespace stockbook::databases
