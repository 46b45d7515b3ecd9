// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

#include "stockbook/base/date.h"
#include "stockbook/base/money.h"
#include "stockbook/inventory/inventory_quantity.h"

namespace stockbook::app {

// The rows that an InventoryWriter writes. Texts are borrowed for the call; an empty text and the zero date are stored
// as null.

enum class Direction { Receipt, Issue };
enum class Partners { Suppliers, Customers };
enum class ClassTree { Products, Suppliers, Customers, Projects };
enum class BalanceOwner { Depots, Suppliers, Customers, Projects };

struct BillRecord {
  int64_t bill_id = 0;
  std::string_view period;
  base::Date date;
  std::string_view type_name;  // 单据类型: 入库单, 采购单, 出库单, 销售单, 调拨单
  std::string_view number;
  std::string_view kind;
  std::string_view explain;
  int64_t depot_id = 0;
  int64_t partner_id = 0;
  int64_t project_id = 0;
  std::string_view entered_by;
  base::Date entered_on;
  std::string_view audited_by;
  base::Date audited_on;
};

struct LineRecord {
  int64_t record_id = 0;
  int64_t bill_id = 0;
  int64_t product_id = 0;
  int64_t depot_id = 0;
  int64_t partner_id = 0;
  int64_t project_id = 0;
  int64_t other_id = 0;
  Quantity quantity;
  Quantity quantity2;
  double price = 0;  // without tax
  base::Money amount;
  double tax_rate = 0;
  base::Money tax;
  double tax_price = 0;
  base::Money tax_amount;
  std::string_view handler;
  std::string_view counterpart;
  std::string_view packing;
  std::string_view place;
  std::string_view term;
  std::string_view serial_number;
  base::Date produced_on;
};

struct ProductRecord {
  int64_t product_id = 0;
  std::string_view name;
  std::string_view number;
  std::string_view specification;  // 规格, which the journal shows as the model
  std::string_view model;          // 型号, which the journal shows as the standard
  std::string_view unit;
  std::string_view unit2;
  std::string_view costing;
  std::string_view rounding;
  Quantity least_stock;
  Quantity most_stock;
  std::string_view short_code;
  int64_t supplier_id = 0;
  double price = 0;
  double ordinary_tax_rate = 0;
  double vat_rate = 0;
  double purchase_price = 0;
  double ordinary_purchase_tax_rate = 0;
  double purchase_vat_rate = 0;
  std::string_view class_code;
  Quantity per_package;
  std::string_view place;
  std::string_view barcode;
  std::string_view maker;
  std::string_view remark;
  std::string_view alias;
  std::string_view colour;
  double weight = 0;
  std::string_view definition;
};

// Quantity, second quantity and amount of a stock or a movement.
struct StockSums {
  Quantity quantity;
  Quantity quantity2;
  base::Money amount;

  StockSums& operator+=(const StockSums& other) {
    quantity += other.quantity;
    quantity2 += other.quantity2;
    amount += other.amount;
    return *this;
  }
  StockSums& operator-=(const StockSums& other) {
    quantity -= other.quantity;
    quantity2 -= other.quantity2;
    amount -= other.amount;
    return *this;
  }
  bool operator==(const StockSums&) const = default;
};

// One owner's (depot's, supplier's, customer's, project's) stock of one product in one period.
struct BalanceRecord {
  int64_t id = 0;  // of a depot balance; the other tables have no key
  int64_t owner_id = 0;
  int64_t product_id = 0;
  int month = 0;  // year x 12 + month - 1
  StockSums carried_forward;
  StockSums received;
  StockSums issued;
};

}  // namespace stockbook::app
