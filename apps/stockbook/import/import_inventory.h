// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>

#include "stockbook/import/import_movement.h"
#include "stockbook/inventory/inventory_writer.h"

namespace stockbook::app {

// Builds an inventory from movements: one bill for each bill number, time, partner, project and direction; products,
// partners and projects as they occur, numbered from 1; a partner (无客户), or (无供应商) of a table of receipts, for
// lines that name none, which would be in no partner's journal otherwise; one depot, 总库; one period for each month
// that occurs, and an initial one without bills before them; the balance tables from the lines. Lines are written at
// once; master records, bill keys and balances stay in memory until the end.
class ImportInventory {
 public:
  // The direction of the table names the partner of lines without one.
  explicit ImportInventory(InventoryWriter& writer, Direction direction = Direction::Issue)
      : writer_(writer), nobody_(direction == Direction::Receipt ? "(无供应商)" : "(无客户)") {}

  void Add(const Movement& movement);
  // Writes what is known only at the end. The writer's Finish is left to the caller.
  void Complete();

  int64_t receipts() const { return next_record_[static_cast<size_t>(Direction::Receipt)] - 1; }
  int64_t issues() const { return next_record_[static_cast<size_t>(Direction::Issue)] - 1; }
  int64_t bills() const { return next_bill_ - 1; }
  size_t products() const { return products_.size(); }
  size_t periods() const { return months_.size(); }

 private:
  // The names of a product in the table with their counts; the most frequent one becomes its name, the first of equals.
  struct Product {
    int64_t id = 0;
    std::unordered_map<std::string, std::pair<int64_t, int64_t>> names;  // name: how often, and its place among them
  };
  struct Partner {
    int64_t id = 0;
    bool supplies = false;
    bool buys = false;
  };

  int64_t BillOf(const Movement& movement, int64_t partner_id, int64_t project_id);
  void WriteBill(const Movement& movement, int64_t bill_id, int64_t partner_id, int64_t project_id);
  void EnterBalances(const Movement& movement, const LineRecord& line);
  int64_t ProductOf(const Movement& movement);
  int64_t PartnerOf(const Movement& movement);
  int64_t ProjectOf(const Movement& movement);
  void WriteMasters();

  InventoryWriter& writer_;
  std::string nobody_;
  std::unordered_map<std::string, int64_t> bills_;
  std::unordered_map<std::string, Product> products_;
  std::unordered_map<std::string, Partner> partners_;
  std::unordered_map<std::string, int64_t> projects_;
  std::unordered_map<int64_t, int64_t> bills_of_day_;
  std::set<int> months_;
  std::string bill_key_;
  int64_t next_bill_ = 1;
  int64_t next_record_[2] = {1, 1};
  BalanceBook depots_;
  BalanceBook suppliers_;
  BalanceBook customers_;
  BalanceBook project_stocks_;
};

}  // namespace stockbook::app
