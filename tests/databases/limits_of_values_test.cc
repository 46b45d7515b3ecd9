// SPDX-License-Identifier: MIT
// Infinite quantities, the least amount and amounts as texts: each plan gives the same, and an amount spells like a
// quantity.
#include <gtest/gtest.h>

#include <cmath>

#include "databases/journal_statements.h"
#include "databases/plain_query.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;
using databases::EmbeddedConnection;
using databases::Strategy;

constexpr Strategy kStrategies[] = {Strategy::kFastest, Strategy::kArms, Strategy::kStatement};

class LimitsOfValues : public ::testing::Test {
 protected:
  LimitsOfValues() {
    InventoryTypes types;
    types.money = "MONEY BLOB";  // keeps texts and numbers as they are written
    CreateInventory(file_, types);
    FillInventory(file_);
  }
  // One field of the material journal's line, by every plan.
  std::vector<base::Value> InJournal(int record, const char* field) {
    std::vector<base::Value> values;
    for (const Strategy strategy : kStrategies) {
      auto rows = EmbeddedConnection(file_.DesktopString(), strategy)
                      .Execute(MaterialJournal(Dialect::kDesktop, "1)", "2005-03"));
      for (; !rows.AtEnd(); rows.MoveNext()) {
        if (rows.FieldValue("RecID").AsInteger() == record) values.push_back(rows.FieldValue(field));
      }
    }
    return values;
  }
  std::vector<std::string> Journals() {
    std::vector<std::string> rows;
    for (const std::string& statement :
         {MaterialJournal(Dialect::kDesktop, "1)", "2005-03"), ProjectJournal(Dialect::kDesktop, "1", "2005-03"),
          CustomerJournal(Dialect::kDesktop, " Where Recs.pdID=1", "2005-03"),
          SupplierJournal(Dialect::kDesktop, " Where Recs.pdID=1", "2005-03")}) {
      for (std::string& row : RowsOfEveryPlan(file_.DesktopString(), statement)) rows.push_back(std::move(row));
    }
    return rows;
  }

  DatabaseFile file_;
};

TEST_F(LimitsOfValues, TheLeastAmountOnALineThatTheJoinDropsIsNoError) {
  // Bill 99 does not exist; bill 21 is of a later period than the journal.
  file_.Run(
      "INSERT INTO 出库记录(RecID, BillID, pdID, dpID, ksID, pjID, 数量, 除税金额) VALUES "
      "(300, 99, 1, 1, 7, 4, 2, '-922337203685477.5808')");
  const std::vector<std::string> rows = Journals();
  EXPECT_EQ(rows.size(), 5U + 5U + 2U + 3U);
  for (const std::string& row : rows) EXPECT_FALSE(row.starts_with("error")) << row;
}

TEST_F(LimitsOfValues, AValueThatFailsOnALineThatTheJoinDropsIsNoError) {
  file_.Run(
      "INSERT INTO 出库记录(RecID, BillID, pdID, dpID, ksID, pjID, OtherID, 数量, 除税金额) VALUES "
      "(300, 99, 1, 1, 7, 4, -9223372036854775807 - 1, 0, '1')");
  for (const char* value : {"Recs.除税金额 / Recs.数量", "-Recs.OtherID"}) {
    const auto rows = RowsOfEveryPlan(
        file_.DesktopString(), std::string("SELECT Recs.RecID, ") + value +
                                   " AS v FROM 出库记录 AS Recs INNER JOIN 出库目录 AS Dir ON Recs.BillID = Dir.BillID"
                                   " ORDER BY Dir.BillDate");
    EXPECT_EQ(rows.size(), 3U) << value << " " << rows[0];
  }
}

TEST_F(LimitsOfValues, TheLeastAmountOnALineOfTheJournalIsAnErrorOfEveryPlan) {
  file_.Run("UPDATE 出库记录 SET 除税金额 = '-922337203685477.5808' WHERE RecID = 200");
  for (const auto& row : RowsOfEveryPlan(file_.DesktopString(), MaterialJournal(Dialect::kDesktop, "1)", "2005-03")))
    EXPECT_TRUE(row.starts_with("error: 金额超出范围")) << row;
}

TEST_F(LimitsOfValues, AnInfiniteQuantityHasAnInfiniteNegative) {
  file_.Run("UPDATE 出库记录 SET 数量 = 9e999 WHERE RecID = 200; UPDATE 出库记录 SET 数量 = -9e999 WHERE RecID = 201");
  for (const base::Value& value : InJournal(200, "Quantity")) EXPECT_EQ(value, base::Value(-HUGE_VAL));
  for (const base::Value& value : InJournal(201, "Quantity")) EXPECT_EQ(value, base::Value(HUGE_VAL));
  EXPECT_EQ(InJournal(200, "Quantity").size(), 3U);
  Journals();
}

TEST_F(LimitsOfValues, AnInfiniteAmountStaysInfinite) {
  file_.Run("UPDATE 出库记录 SET 除税金额 = 9e999 WHERE RecID = 200");
  for (const base::Value& value : InJournal(200, "IssAcc")) EXPECT_EQ(value, base::Value(HUGE_VAL));
  for (const base::Value& value : InJournal(200, "Account")) EXPECT_EQ(value, base::Value(-HUGE_VAL));
  Journals();
}

TEST_F(LimitsOfValues, ASumOverAnInfiniteValueIsInfiniteOrAnError) {
  const auto rows = [&](const std::string& expression) {
    return RowsOfEveryPlan(file_.DesktopString(), "SELECT " + expression + " AS s FROM 仓库余额表")[0];
  };
  file_.Run("UPDATE 仓库余额表 SET 上期库存数量 = 9e999, 上期库存金额 = -9e999 WHERE ID = 55");
  for (const std::string function : {"Sum", "Avg"}) {
    EXPECT_EQ(rows(function + "(上期库存数量)"), "") << "an infinite number, which has no text";
    EXPECT_EQ(rows("IIf(" + function + "(上期库存数量)>1e300,1,0)"), "1");
    EXPECT_TRUE(rows(function + "(上期库存金额)").starts_with("error: 金额超出范围")) << function;
  }
  file_.Run("UPDATE 仓库余额表 SET 上期库存数量 = -9e999 WHERE ID = 56");
  EXPECT_TRUE(rows("Sum(上期库存数量)").starts_with("error: 合计超出范围"));
}

TEST_F(LimitsOfValues, AnAmountSpellsLikeAQuantity) {
  for (const char* text : {"1,234.50", " 1234.5 ", "+1,234.5", "1.2345e3", "1,234,5e-1"}) {
    file_.Run(std::string("UPDATE 入库记录 SET 数量 = '") + text + "', 除税金额 = '" + text + "' WHERE RecID = 100");
    for (const base::Value& value : InJournal(100, "RevAcc")) EXPECT_EQ(value.Text(), "1234.5") << text;
    for (const base::Value& value : InJournal(100, "RevQty")) EXPECT_EQ(value.Number(), 1234.5) << text;
    file_.Run(std::string("UPDATE 仓库余额表 SET 上期库存金额 = '") + text + "'");
    EXPECT_EQ(RowsOfEveryPlan(file_.DesktopString(), "SELECT Sum(上期库存金额) AS s FROM 仓库余额表"),
              std::vector<std::string>{"3703.5"})
        << text;
  }
}

}  // namespace
}  // namespace stockbook::testing
