// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <string>

#include "databases/dialect/schema.h"
#include "databases/sqlite/database.h"

namespace stockbook::databases {

// The tables and views of an open file, read when they are first asked for and forgotten when the file's schema
// changes.
class Catalog {
 public:
  explicit Catalog(const Database& database) : database_(database) {}

  // Call it before a statement is translated: forgets tables that another program has changed since.
  void Refresh();
  // Ignoring ASCII case; nullptr when there is no such table. It stays valid until Refresh.
  const TableSchema* FindTable(std::string_view name);

 private:
  struct Entry {
    bool is_table = false;
    bool has_row_numbers = false;
    std::unique_ptr<TableSchema> schema;  // without columns until it is used
  };
  void ReadTables();
  void ReadColumns(Entry& entry) const;
  bool ComparesByBytes(const TableSchema& table) const;

  static constexpr int64_t kUnread = -1;

  const Database& database_;
  int64_t version_ = kUnread;
  bool utf8_ = false;
  std::map<std::string, Entry, std::less<>> tables_;  // by lower-case name
};

}  // namespace stockbook::databases
