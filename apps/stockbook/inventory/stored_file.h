// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/inventory/inventory_schema.h"

struct sqlite3;
struct sqlite3_stmt;

namespace stockbook::app {

// An embedded database as it is stored, for what a connection does not tell: its indexes, and texts that are no dates,
// which a connection reads as null. Opened with a handle of its own that cannot write. Throws platform::Error.
class StoredFile {
 public:
  explicit StoredFile(const std::string& file);

  // Whether rows of the table are found by the column without reading all of them: it is the first column of an index
  // over the whole table, or the number of the row itself.
  bool HasIndexOn(std::string_view table, std::string_view column) const;

  // Calls `take` for every text in a column of dates that is none. `key` tells the row from others.
  using TakeDate = std::function<void(std::string_view column, const std::string& key, const std::string& text)>;
  void ForEachUnreadableDate(TableName table, const TakeDate& take) const;

 private:
  struct CloseHandle {
    void operator()(sqlite3* handle) const;
  };
  struct FirstColumn {
    std::string table;
    std::string column;
  };
  using TakeRow = std::function<void(const std::string& first, const std::string& second)>;
  // The first two columns of every row, as texts.
  void Query(const std::string& sql, const TakeRow& take) const;
  bool HasColumn(std::string_view table, std::string_view column) const;

  std::string file_;
  std::unique_ptr<sqlite3, CloseHandle> handle_;
  std::vector<FirstColumn> indexed_;
  std::vector<FirstColumn> columns_;  // of tables; those of views are not read
};

}  // namespace stockbook::app
