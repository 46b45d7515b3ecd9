// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "stockbook/inventory/inventory_balances.h"
#include "stockbook/inventory/inventory_file.h"
#include "stockbook/inventory/inventory_records.h"
#include "stockbook/inventory/inventory_schema.h"

namespace stockbook::app {

class InsertCursor;

// Writes a new inventory file: all tables, then the rows in any order, then the indexes. The file is created under a
// temporary name and moved into place by Finish; without Finish nothing is left. An existing inventory is not read, and
// not changed before it is replaced, except that the database completes what another program left unfinished in it.
// Errors are platform::Error. About 2 us per row.
class InventoryWriter {
 public:
  explicit InventoryWriter(const std::string& path);
  ~InventoryWriter();
  InventoryWriter(const InventoryWriter&) = delete;
  InventoryWriter& operator=(const InventoryWriter&) = delete;

  void AddBill(Direction direction, const BillRecord& bill);
  void AddLine(Direction direction, const LineRecord& line);
  void AddDepot(int64_t depot_id, std::string_view name);
  void AddPartner(Partners partners, int64_t partner_id, std::string_view name, std::string_view class_code);
  void AddProject(int64_t project_id, std::string_view name, std::string_view number, std::string_view class_code);
  void AddProduct(const ProductRecord& product);
  void AddClass(ClassTree tree, std::string_view code, std::string_view name);
  void AddPeriod(int month);
  void AddBalance(BalanceOwner owner, const BalanceRecord& balance);
  void AddBalances(BalanceOwner owner, const BalanceBook& book, int initial_month);

  // Creates the indexes, commits, closes and moves the file into place.
  void Finish();

 private:
  InsertCursor& Into(TableName table);

  InventoryFile file_;
  std::array<std::unique_ptr<InsertCursor>, kTableCount> cursors_;
};

}  // namespace stockbook::app
