// SPDX-License-Identifier: MIT
#include "app/inventory_balance_check.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <map>
#include <utility>
#include <vector>

#include "app/inventory_fixture.h"
#include "stockbook/base/money.h"

namespace stockbook::app {
namespace {

constexpr double kMillion = 1e6;

// Quantity and second quantity in millionths, amount in 1/10,000.
using Sums = std::array<int64_t, 3>;
struct Movement {
  Sums received{};
  Sums issued{};
};
using Account = std::map<std::string, Movement>;                  // by period
using Accounts = std::map<std::pair<int64_t, int64_t>, Account>;  // by owner and product

struct BalanceTable {
  std::string name;
  std::string owner;   // its column, which the lines have too
  std::string period;  // the period's column
  std::string values;  // price, carried forward, received, issued
  bool receipts;       // whether receipts count, or issues
  bool issues;
};

const std::string kPartnerValues =
    "LastPrice, LastQuantity, LastQuantity2, LastAccount, SumRevQuantity, SumRevQuantity2, SumRevAccount, "
    "SumIssQuantity, "
    "SumIssQuantity2, SumIssAccount";
const std::array<BalanceTable, 4> kTables{
    {{"仓库余额表", "dpID", "AccPeriod",
      "上期库存单价, 上期库存数量, 上期库存数量2, 上期库存金额, TotalRevQuantity, TotalRevQuantity2, TotalRevAccount, "
      "TotalIssQuantity, TotalIssQuantity2, TotalIssAccount",
      true, true},
     {"tqSuppBalance", "ksID", "bnPeriod", kPartnerValues, true, false},
     {"tqCustBalance", "ksID", "bnPeriod", kPartnerValues, false, true},
     {"tqProjBalance", "pjID", "bnPeriod", kPartnerValues, true, true}}};

int64_t Millionths(const std::string& text) {
  const int64_t millionths = std::llround(std::strtod(text.c_str(), nullptr) * kMillion);
  // The stored number must be the one nearest to the decimal, without accumulated errors.
  EXPECT_EQ(static_cast<double>(millionths) / kMillion, std::strtod(text.c_str(), nullptr)) << text;
  return millionths;
}

Sums SumsOf(const std::vector<std::string>& row, size_t first) {
  const auto money = base::Money::Parse(row[first + 2]);
  EXPECT_TRUE(money) << row[first + 2];
  return {Millionths(row[first]), Millionths(row[first + 1]), money ? money->units() : 0};
}

void Add(Sums& sums, const Sums& other, int sign) {
  for (size_t index = 0; index < sums.size(); ++index) sums[index] += sign * other[index];
}

void ReadLines(const OpenedInventory& inventory, const std::string& kind, const BalanceTable& table,
               Accounts& accounts) {
  const bool receipts = kind == "入库";
  for (const auto& row : inventory.Rows("SELECT Recs." + table.owner +
                                        ", Recs.pdID, Dir.AccPeriod, Recs.数量, Recs.Qty2, Recs.除税金额 FROM " + kind +
                                        "记录 AS Recs JOIN " + kind +
                                        "目录 AS Dir ON Recs.BillID = Dir.BillID WHERE Recs." + table.owner + " > 0")) {
    Movement& movement = accounts[{std::stoll(row[0]), std::stoll(row[1])}][row[2]];
    Add(receipts ? movement.received : movement.issued, SumsOf(row, 3), 1);
  }
}

class TableCheck {
 public:
  TableCheck(const OpenedInventory& inventory, const BalanceTable& table) : inventory_(inventory), table_(table) {
    for (const auto& row : inventory.Rows("SELECT AccPeriod FROM tqAccPeriod ORDER BY AccPeriod")) {
      const size_t index = periods_.size();
      periods_[row[0]] = index;
    }
    if (table.receipts) ReadLines(inventory, "入库", table, accounts_);
    if (table.issues) ReadLines(inventory, "出库", table, accounts_);
  }

  int64_t Run() {
    int64_t rows = 0;
    for (const auto& row : inventory_.Rows("SELECT " + table_.owner + ", pdID, " + table_.period + ", " +
                                           table_.values + " FROM " + table_.name + " ORDER BY 1, 2, 3")) {
      CheckRow(row);
      ++rows;
    }
    EXPECT_TRUE(accounts_.empty()) << table_.name << " has no row for some lines";
    return rows;
  }

 private:
  void CheckRow(const std::vector<std::string>& row) {
    const std::pair<int64_t, int64_t> key{std::stoll(row[0]), std::stoll(row[1])};
    const std::string where = table_.name + " " + row[0] + "/" + row[1] + " " + row[2];
    ASSERT_TRUE(periods_.contains(row[2])) << where;
    const size_t period = periods_[row[2]];
    const Sums carried = SumsOf(row, 4);
    if (key != key_) {
      key_ = key;
      // Only the initial period has an opening balance that does not come from the lines.
      running_ = period == 0 ? carried : Sums{};
    } else {
      EXPECT_GT(period, period_) << where;
    }
    period_ = period;
    EXPECT_EQ(carried, running_) << where;
    const double price =
        running_[0] == 0 ? 0 : static_cast<double>(running_[2]) / 1e4 / (static_cast<double>(running_[0]) / kMillion);
    EXPECT_NEAR(std::strtod(row[3].c_str(), nullptr), price, std::fabs(price) * 1e-14) << where;
    Account& account = accounts_[key];
    // What is neither carried into the initial period nor moved has no row, and the initial period has no lines.
    EXPECT_EQ(account.contains(row[2]), period > 0) << where;
    EXPECT_TRUE(period > 0 || carried != Sums{}) << where;
    const Movement expected = account[row[2]];
    account.erase(row[2]);
    if (account.empty()) accounts_.erase(key);
    EXPECT_EQ(SumsOf(row, 7), expected.received) << where;
    EXPECT_EQ(SumsOf(row, 10), expected.issued) << where;
    Add(running_, expected.received, 1);
    Add(running_, expected.issued, -1);
  }

  const OpenedInventory& inventory_;
  const BalanceTable& table_;
  std::map<std::string, size_t> periods_;
  Accounts accounts_;
  std::pair<int64_t, int64_t> key_{};
  size_t period_ = 0;
  Sums running_{};
};

}  // namespace

int64_t CheckBalances(const std::string& path) {
  const OpenedInventory inventory(path);
  int64_t rows = 0;
  for (const BalanceTable& table : kTables) rows += TableCheck(inventory, table).Run();
  return rows;
}

}  // namespace stockbook::app
