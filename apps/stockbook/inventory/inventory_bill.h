// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "stockbook/base/money.h"
#include "stockbook/platform/connection.h"

namespace stockbook::app {

enum class BillSide { kReceipt, kIssue };

struct BillLine {
  BillSide side = BillSide::kReceipt;
  int64_t record_id = 0;
  int32_t product_id = 0;
  std::string product_no;
  std::string product_name;
  std::string model;
  std::string standard;
  std::string measure;
  std::string depot;
  double quantity = 0;
  double quantity2 = 0;
  double price = 0;
  base::Money amount;
  double tax_rate = 0;
  base::Money tax;
  double tax_price = 0;
  base::Money tax_amount;
  // Handler, counterpart, packing, place, term, serial number, production date.
  std::vector<std::string> details;
};

// A bill as it was entered, with all its lines whatever journal shows them. A transfer has its issues first and then
// its receipts, which are entered as two bills of one kind and number.
struct InventoryBill {
  BillSide side = BillSide::kReceipt;
  int32_t bill_id = 0;
  std::string kind;
  std::string number;
  std::string date;
  std::string period;
  std::string explain;
  std::string partner;
  std::string project;
  std::string inputor;
  std::string input_date;
  std::string auditor;
  std::string audit_date;
  std::vector<BillLine> lines;
};

// Reads a bill as of one moment; nothing if there is none. Throws platform::Error.
std::optional<InventoryBill> ReadInventoryBill(platform::Connection& connection, BillSide side, int32_t bill_id);

}  // namespace stockbook::app
