// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "stockbook/base/date.h"
#include "stockbook/inventory/inventory_records.h"

namespace stockbook::app {

// Months are counted: year x 12 + month - 1.
int MonthOf(base::Date date);
// The period of a month, "2026-03": its first four characters are the year, its last two the month, and it sorts as
// text.
std::string PeriodText(int month);

// The balances of one kind of owner while lines are entered: for each owner and product the opening stock and the
// receipts and issues of each month. It never reads the database. Entering a line is O(1) for lines in date order.
class BalanceBook {
 public:
  // Sets the stock carried into the initial period; returns the record's ID, counted from 1 in the order of the calls.
  int64_t Open(int64_t owner_id, int64_t product_id, const StockSums& stock);
  void Enter(Direction direction, int64_t owner_id, int64_t product_id, int month, const StockSums& sums);

  // Calls `take` for every row, by owner, product and month: one for the initial month where the account was opened,
  // and one for every month in which it has a line. So there are no more rows than openings and lines, however many
  // months lie between them. The initial month precedes every month entered.
  void ForEachRow(int initial_month, const std::function<void(const BalanceRecord&)>& take) const;

 private:
  struct Month {
    int month = 0;
    StockSums received;
    StockSums issued;
  };
  struct Account {
    int64_t opening_id = 0;
    StockSums opening;
    std::vector<Month> months;  // ascending
  };
  struct Key {
    int64_t owner_id;
    int64_t product_id;
    auto operator<=>(const Key&) const = default;
  };
  struct KeyHash {
    size_t operator()(const Key& key) const;
  };
  static Month& MonthIn(Account& account, int month);

  std::unordered_map<Key, Account, KeyHash> accounts_;
  int64_t openings_ = 0;
};

}  // namespace stockbook::app
