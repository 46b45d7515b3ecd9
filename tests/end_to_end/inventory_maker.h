// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "stockbook/inventory/inventory_schema.h"

struct sqlite3;

namespace stockbook::end_to_end {

// How an inventory's tables are declared.
enum class Declared {
  kUsual,
  kWithoutKeys,   // no primary keys, so that keys may repeat
  kNothing,       // columns without types
  kRealMoney,     // money in REAL columns
  kIntegerMoney,  // money in INTEGER columns
  kNumericMoney,  // money in MONEY columns, which keep numbers as numbers
  kTextKeys,      // keys in TEXT columns
  kTextMasters,   // primary keys in TEXT columns, which lines and bills name by whole numbers
};

// Column names and their values as SQL literals.
using Literals = std::map<std::string, std::string>;

// An inventory built by hand, statement by statement. The file is complete once the maker is destroyed.
class InventoryMaker {
 public:
  explicit InventoryMaker(const std::string& path, Declared declared = Declared::kUsual);
  ~InventoryMaker();
  InventoryMaker(const InventoryMaker&) = delete;
  InventoryMaker& operator=(const InventoryMaker&) = delete;

  void Run(const std::string& sql);
  // Values that are not given stay null.
  void Insert(std::string_view table, const Literals& values);
  // One depot, supplier, customer, project and product, each with the number 1, and the periods 2025-01 to 2025-03.
  void AddMasters();
  // A bill with one line, for product and partner 1; bill and line get the same number.
  void AddReceipt(int number, const std::string& date, const Literals& line, const Literals& bill = {});
  void AddIssue(int number, const std::string& date, const Literals& line, const Literals& bill = {});

 private:
  void AddMovement(const char* side, int number, const std::string& date, const char* kind, const Literals& line,
                   const Literals& bill);

  sqlite3* database_ = nullptr;
};

// A text as a literal.
std::string Quoted(std::string_view text);

}  // namespace stockbook::end_to_end
