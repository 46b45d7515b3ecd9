// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "base/money.h"
#include "stockbook/inventory/inventory_quantity.h"
#include "stockbook/inventory/inventory_schema.h"

namespace stockbook::app {

// A prepared INSERT into one table. Texts are borrowed for the call. It never outlives its database.
class InsertCursor {
 public:
  InsertCursor(sqlite3* database, const InventoryTable& table, const std::string& file);
  ~InsertCursor();
  InsertCursor(const InsertCursor&) = delete;
  InsertCursor& operator=(const InsertCursor&) = delete;

  // One value per column, in the table's order. Empty texts and zero dates become null.
  template <typename... Values>
  void Row(const Values&... values) {
    Expect(sizeof...(values));
    int index = 0;
    (Bind(++index, values), ...);
    Step();
  }

 private:
  void Expect(size_t count) const;
  void Bind(int index, int64_t number);
  void Bind(int index, int number) { Bind(index, int64_t{number}); }
  void Bind(int index, double number);
  void Bind(int index, Quantity quantity) { Bind(index, quantity.ToDouble()); }
  void Bind(int index, base::Money money);
  void Bind(int index, base::Date date);
  void Bind(int index, std::string_view text);
  // Keeps the text until the row is written.
  void BindCopy(int index, std::string text);
  void Check(int code) const;
  void Step();

  sqlite3* database_;
  const InventoryTable& table_;
  std::string file_;
  std::vector<std::string> copies_;  // of the columns' texts that were made for the row
  sqlite3_stmt* statement_ = nullptr;
};

}  // namespace stockbook::app
