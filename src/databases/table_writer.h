// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "stockbook/columns/column.h"

namespace stockbook::databases {

// How a column is stored: whole numbers of 64 bits, doubles, amounts with four exact decimals, dates with a time to the
// second, texts.
enum class StoredType { kWhole, kNumber, kMoney, kDate, kText };

// Whether tables of an inventory that are there already are dropped, or refused.
enum class Existing { kRefused, kReplaced };

// The double of a value that a column of kNumber holds, infinite ones included.
inline double StoredDouble(const base::Value& value) {
  const auto* number = value.As<double>();
  return number != nullptr ? *number : value.Number().value_or(0);
}

// A column of a table to be written. Where `mixed`, texts occur among the values of its type.
struct StoredColumn {
  std::string name;
  StoredType type = StoredType::kText;
  bool mixed = false;
};

// A table to be written; `key` is the column of whole numbers that becomes its primary key, "" for none.
struct StoredTable {
  std::string name;
  std::vector<StoredColumn> columns;
  std::string key;
};

struct StoredIndex {
  std::string name;
  std::string table;
  std::vector<std::string> columns;
};

// Writes the tables of a new inventory: all or nothing. Every table is created and then filled in portions; Seal makes
// the indexes; then what is stored can be read back; Commit puts it where others see it. Without Commit, nothing is
// left. Functions throw platform::Error with a sentence for the user.
class TableWriter {
 public:
  TableWriter() = default;
  TableWriter(const TableWriter&) = delete;
  TableWriter& operator=(const TableWriter&) = delete;
  virtual ~TableWriter() = default;

  // Throws for a column that this database cannot hold.
  virtual void Create(const StoredTable& table) = 0;
  // Writes the rows [first, first + count) of the columns, which are as many as the table's and hold nothing but nulls,
  // values that their type holds exactly, and texts where they are mixed. Rows come in the order of the key.
  virtual void Write(const StoredTable& table, std::span<const columns::Column> columns, size_t first,
                     size_t count) = 0;
  virtual void Seal(std::span<const StoredIndex> indexes) = 0;
  // The columns as they are stored, rows in the order in which they were written.
  virtual std::vector<columns::Column> ReadBack(const StoredTable& table) = 0;
  virtual void Commit() = 0;
};

}  // namespace stockbook::databases
