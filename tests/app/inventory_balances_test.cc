// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_balances.h"

#include <gtest/gtest.h>

namespace stockbook::app {
namespace {

StockSums StockOf(int64_t units, int64_t amount) {
  return {Quantity::Whole(units), Quantity(), base::Money::FromInteger(amount)};
}

std::vector<std::string> RowsOf(const BalanceBook& book, int initial_month) {
  std::vector<std::string> rows;
  book.ForEachRow(initial_month, [&](const BalanceRecord& row) {
    rows.push_back(std::to_string(row.id) + " " + std::to_string(row.owner_id) + "/" + std::to_string(row.product_id) +
                   " " + PeriodText(row.month) + " " + row.carried_forward.amount.Text() + " +" +
                   row.received.amount.Text() + " -" + row.issued.amount.Text());
  });
  return rows;
}

TEST(BalanceBook, CarriesStockIntoTheInitialPeriodAndFromLineToLine) {
  BalanceBook book;
  EXPECT_EQ(book.Open(1, 5, StockOf(10, 100)), 1);
  book.Enter(Direction::Receipt, 1, 5, 24301, StockOf(1, 7));
  book.Enter(Direction::Issue, 1, 5, 24301, StockOf(2, 30));
  book.Enter(Direction::Issue, 1, 5, 24300, StockOf(1, 5));
  EXPECT_EQ(RowsOf(book, 24299), (std::vector<std::string>{"1 1/5 2024-12 100 +0 -0", "2 1/5 2025-01 100 +0 -5",
                                                           "3 1/5 2025-02 95 +7 -30"}));
}

TEST(BalanceBook, BeginsAnAccountWithoutOpeningAtItsFirstLine) {
  BalanceBook book;
  book.Enter(Direction::Receipt, 1, 5, 24301, StockOf(1, 7));
  EXPECT_EQ(RowsOf(book, 24299), (std::vector<std::string>{"1 1/5 2025-02 0 +7 -0"}));
}

TEST(BalanceBook, HasNoMoreRowsThanOpeningsAndLinesHoweverManyMonthsPass) {
  BalanceBook book;
  book.Open(1, 5, StockOf(10, 100));
  book.Enter(Direction::Receipt, 1, 5, 24300, StockOf(1, 7));
  book.Enter(Direction::Issue, 1, 5, 36000, StockOf(1, 7));
  EXPECT_EQ(RowsOf(book, 24299), (std::vector<std::string>{"1 1/5 2024-12 100 +0 -0", "2 1/5 2025-01 100 +7 -0",
                                                           "3 1/5 3000-01 107 +0 -7"}));
}

TEST(BalanceBook, SortsByOwnerThenProduct) {
  BalanceBook book;
  book.Enter(Direction::Receipt, 2, 1, 24300, StockOf(1, 1));
  book.Enter(Direction::Receipt, 1, 9, 24300, StockOf(1, 1));
  book.Enter(Direction::Receipt, 1, 2, 24300, StockOf(1, 1));
  EXPECT_EQ(RowsOf(book, 24299),
            (std::vector<std::string>{"1 1/2 2025-01 0 +1 -0", "2 1/9 2025-01 0 +1 -0", "3 2/1 2025-01 0 +1 -0"}));
}

TEST(BalanceBook, WritesPeriodsThatSortAsText) {
  EXPECT_EQ(PeriodText(2026 * 12 + 2), "2026-03");
  EXPECT_EQ(PeriodText(2026 * 12 + 11), "2026-12");
  EXPECT_EQ(PeriodText(201 * 12), "0201-01");
  EXPECT_EQ(MonthOf(*base::Date::Parse("2026-03-31 23:59:59")), 2026 * 12 + 2);
}

}  // namespace
}  // namespace stockbook::app
