// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "end_to_end/decimal_text.h"

struct sqlite3;

namespace stockbook::end_to_end {

// A value as stored in the file.
struct Stored {
  enum class Kind { kNull, kInteger, kReal, kText, kBlob };
  Kind kind = Kind::kNull;
  int64_t integer = 0;
  double real = 0;
  std::string text;

  bool IsNull() const { return kind == Kind::kNull; }
  // As a cell shows it: nothing, a number, the text, a money amount, a date.
  std::string Plain() const;
  std::string Money() const;
  std::string Date() const;
  // A text that is not a number counts as 0.
  double Number() const;
  Amount MoneyAmount() const;
  bool Is(int64_t key) const { return kind == Kind::kInteger && integer == key; }
};

// The rows of a table in their stored order; columns are found by name.
class BaseTable {
 public:
  BaseTable(sqlite3* database, const std::string& name, const std::string& condition);

  size_t size() const { return rows_.size(); }
  // The column's index; the test fails if there is none.
  size_t Column(std::string_view name) const;
  const Stored& At(size_t row, size_t column) const { return rows_[row][column]; }
  const Stored& At(size_t row, std::string_view name) const { return rows_[row][Column(name)]; }
  // The rows with the whole number in the column.
  std::vector<size_t> Where(std::string_view name, int64_t key) const;

 private:
  using Index = std::multimap<int64_t, size_t>;

  std::map<std::string, size_t, std::less<>> columns_;
  std::vector<std::vector<Stored>> rows_;
  mutable std::map<std::string, Index, std::less<>> indexes_;
};

// All tables of an inventory, read once through the database's own interface.
class BaseTables {
 public:
  // `conditions` restrict the tables that they name to rows of interest.
  explicit BaseTables(const std::string& path, const std::map<std::string, std::string>& conditions = {});

  const BaseTable& operator[](std::string_view name) const;

 private:
  std::map<std::string, BaseTable, std::less<>> tables_;
};

}  // namespace stockbook::end_to_end
