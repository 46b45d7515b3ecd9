// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "end_to_end/decimal_text.h"

struct sqlite3;

namespace stockbook::end_to_end {

// What the declared type of a column says about its values.
enum class ColumnClass { kPlain, kMoney, kDate };

// A value as stored in the file.
struct Stored {
  enum class Kind { kNull, kInteger, kReal, kText, kBlob };
  Kind kind = Kind::kNull;
  ColumnClass cls = ColumnClass::kPlain;
  int64_t integer = 0;
  double real = 0;
  std::string text;  // as stored

  bool IsNull() const { return kind == Kind::kNull; }
  // As a cell of its column shows it: nothing, a number, the text, a money amount, a date.
  std::string Cell() const;
  // The same, but never mended: what texts are composed of and sorted by.
  std::string Raw() const;
  // Such that the bytes of two values compare as the values are sorted: nulls, numbers, texts, blobs.
  std::string Order() const;
  // With its type, so that two of them are equal where the values are.
  std::string Identity() const;
  // Whether it is or spells a finite number.
  bool IsNumber() const;
  // A text that is not a number counts as 0.
  double Number() const;
  // A value that is stored as no whole number counts as 0.
  Amount Whole() const { return kind == Kind::kInteger ? integer : 0; }
  // Far beyond money where the number is.
  Amount MoneyAmount() const;

 private:
  std::string Plain() const;
  std::string Money() const;
  std::string Date() const;
};

// Minus the value, as a cell shows it and as an amount; a value that is no number has no negative.
Stored Negative(const Stored& value);

// The rows of a table in their stored order; columns are found by name.
class BaseTable {
 public:
  BaseTable(sqlite3* database, const std::string& name, const std::string& condition);

  size_t size() const { return rows_.size(); }
  // The column's index; the test fails if there is none.
  size_t Column(std::string_view name) const;
  const Stored& At(size_t row, size_t column) const { return rows_[row][column]; }
  const Stored& At(size_t row, std::string_view name) const { return rows_[row][Column(name)]; }
  // Whether the column is declared to hold numbers.
  bool IsOfNumbers(std::string_view name) const { return of_numbers_[Column(name)]; }
  // Where the row of that number is; the test fails if it was not read.
  size_t RowOf(int64_t number) const;

 private:
  std::map<std::string, size_t, std::less<>> columns_;
  std::vector<bool> of_numbers_;
  std::vector<std::vector<Stored>> rows_;
  std::map<int64_t, size_t> places_;  // by row number
};

// All tables of an inventory, read once through the database's own interface, which also finds rows by statements
// written for it by hand.
class BaseTables {
 public:
  // `conditions` restrict the tables that they name to rows of interest.
  explicit BaseTables(const std::string& path, const std::map<std::string, std::string>& conditions = {});

  const BaseTable& operator[](std::string_view name) const;
  // The rows of a statement in SQLite's own language.
  std::vector<std::vector<Stored>> Query(const std::string& sql) const;
  // The first value of a statement as a cell shows it; nothing without rows.
  std::optional<std::string> FirstText(const std::string& sql) const;
  // The first values of all rows that are whole numbers, separated by commas; nothing without rows, NULL without
  // numbers.
  std::optional<std::string> KeyList(const std::string& sql) const;

 private:
  struct Closer {
    void operator()(sqlite3* database) const;
  };
  std::unique_ptr<sqlite3, Closer> database_;
  std::map<std::string, BaseTable, std::less<>> tables_;
};

}  // namespace stockbook::end_to_end
