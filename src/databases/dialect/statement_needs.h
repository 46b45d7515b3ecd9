// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "databases/dialect/ast.h"

namespace stockbook::databases {

// A column of a table that has to be one of these whole numbers for a row to matter.
struct WholeNumberCondition {
  std::string column;
  std::vector<std::string> numbers;
};

// What a statement reads of a table.
struct TableNeeds {
  std::string name;  // as the statement writes it
  bool all_columns = false;
  std::vector<WholeNumberCondition>
      conditions;  // that every row read for the statement meets; the statement still asks
};

// What a statement reads: a superset that the tree alone shows, without knowing any table. A column of any table may be
// meant by a name that stands anywhere in the statement.
class StatementNeeds {
 public:
  explicit StatementNeeds(const Query& query);

  // In the order in which they are first named.
  const std::vector<TableNeeds>& tables() const { return tables_; }
  // Ignoring ASCII case.
  bool NamesColumn(const std::string& column) const;

 private:
  void AddQuery(const Query& query);
  void AddCore(const SelectCore& core);
  void AddSource(const TableRef& ref, std::vector<const TableRef*>& named);
  void AddExpression(const Expr& expr);
  void AddConditions(const Expr& where, const std::vector<const TableRef*>& named);
  TableNeeds& NeedsOf(const std::string& name);

  std::vector<TableNeeds> tables_;
  std::map<std::string, size_t, std::less<>> mentions_;  // by lower-case name
  std::set<std::string, std::less<>> columns_;           // in lower case
};

}  // namespace stockbook::databases
