// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/statement_needs.h"
#include "databases/execution/interruption.h"
#include "databases/inventory/inventory_schema.h"
#include "databases/sqlite/memory_database.h"
#include "stockbook/base/date.h"
#include "stockbook/base/money.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::databases {

// A text that stays one where it is empty.
struct StoredText {
  const std::string& text;
};

// The whole numbers of a column, in the order of the rows; one for several rows with the same.
struct CollectedNumbers {
  void Add(int64_t number) {
    if (numbers.empty() || numbers.back() != number) numbers.push_back(number);
  }
  std::vector<int64_t> numbers;
  bool has_others = false;  // than whole numbers
};

// One table of an inventory in memory, created empty and filled row by row with the columns that a statement names. It
// counts its rows, and stops when what runs has to end. Throws platform::Error.
class TableRows {
 public:
  TableRows(const MemoryDatabase& memory, TableName table, const StatementNeeds& needs, Interruption& interruption);

  // One value a column, in the table's order. Empty texts, zero dates and what has no value become null. Texts are
  // borrowed for the call.
  template <typename... Values>
  void Add(const Values&... values) {
    if (sizeof...(values) != table_.columns.size())
      throw std::logic_error("A row of " + std::string(table_.name) + " has another number of values.");
    ThrowWhatWasKept();
    try {
      size_t column = 0;
      (Bind(column++, values), ...);
      Step();
    } catch (...) {
      failure_ = std::current_exception();
      throw;
    }
  }
  // From now on every row's number of the column goes there, too; nullptr ends it.
  void Collect(std::string_view column, CollectedNumbers* numbers);
  // What Add threw, where whoever called it did not let it pass.
  void ThrowWhatWasKept() const;
  // All rows of the fields, which are found by the columns' names, ignoring ASCII case. An empty text stays one. Throws
  // for what would make rows missing: other lengths, keys that are none, no field to find the rows by.
  void AddColumns(std::span<const platform::Field> fields);

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };

  template <typename Type>
  void Bind(size_t column, const std::optional<Type>& value) {
    if (value) {
      Bind(column, *value);
    } else {
      BindNull(column);
    }
  }
  void Bind(size_t column, int64_t number);
  void Bind(size_t column, int number) { Bind(column, int64_t{number}); }
  void Bind(size_t column, double number);
  void Bind(size_t column, base::Money money) { BindText(column, copies_[column] = money.Text()); }
  void Bind(size_t column, base::Date date) {
    BindText(column, copies_[column] = date.IsZero() ? std::string() : date.Text());
  }
  void Bind(size_t column, const std::string& text) { BindText(column, text); }
  void Bind(size_t column, const StoredText& stored) { BindStored(column, stored.text); }
  void MissColumn(size_t column) const;
  void BindKey(size_t column, size_t row, const base::Value& value);
  void BindValue(size_t column, const base::Value& value);
  void BindText(size_t column, const std::string& text);
  void BindStored(size_t column, const std::string& text);  // as it is, be it empty
  void BindNull(size_t column);
  void Step();
  std::string SameKey() const;

  const MemoryDatabase& memory_;
  const TableName name_;
  const InventoryTable& table_;
  Interruption& interruption_;
  std::vector<bool> needed_;         // by column
  std::vector<std::string> copies_;  // of texts that were made for the row
  std::unique_ptr<sqlite3_stmt, Finalizer> insertion_;
  bool as_columns_ = false;
  size_t key_column_ = 0;
  int64_t key_ = 0;  // of the row that is being added, where the table has such a column
  size_t collected_column_ = 0;
  CollectedNumbers* collected_ = nullptr;
  std::exception_ptr failure_;
};

}  // namespace stockbook::databases
