// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <memory>

#include "support/event_recorder.h"
#include "support/fake_surroundings.h"
#include "support/journal_rows.h"

namespace stockbook::control {
namespace {

using testing::AnswerJournal;
using testing::ControlOverFakes;
using testing::FakeConnection;
using testing::JournalLine;
using testing::NameOf;

class Load : public ::testing::Test {
 protected:
  Load() : connection_(std::make_shared<FakeConnection>()) {
    diary_.on_hearing = [&](const std::string& line) {
      if (line.starts_with("Process"))
        busy_throughout_ = busy_throughout_ && grid().Tag() == "Load" && !grid().Redraw();
    };
    fakes_.control->SetConn(connection_);
    fakes_.control->AddListener(&diary_);
  }
  std::string Cell(int row, const char* key) { return fakes_.fg.TextMatrix(row, fakes_.fg.ColIndex(key)); }
  Stockbook& control() { return *fakes_.control; }
  sheet::GridSheet& grid() { return fakes_.fg; }

  ControlOverFakes fakes_;
  testing::EventRecorder diary_;
  bool busy_throughout_ = true;
  std::shared_ptr<FakeConnection> connection_;
};

const std::vector<JournalLine> kTwoPeriods = {
    {.bill_no = "2004-03-05 入库单 1",
     .quantity = 4,
     .quantity2 = 0.5,
     .amount = "12.5",
     .bill_name = "入库单",
     .rec_id = 11},
    {.bill_no = "2004-03-06 出库单 2",
     .flag = 1,
     .quantity = 3,
     .amount = "8.0001",
     .bill_name = "出库单",
     .auditor = "王",
     .other_id = -3,
     .rec_id = 12},
    {.period = "2004-04",
     .bill_no = "2004-04-01 出库单 3",
     .flag = 1,
     .quantity = 11,
     .amount = "20",
     .bill_name = "出库单",
     .rec_id = 13},
};

constexpr const char* kCaption = "商品:六角螺栓[1001]{M8\\GB5783} 单位:箱 [全部仓库]";

TEST_F(Load, ShowsOpeningGroupsLinesAndTotals) {
  AnswerJournal(*connection_, kTwoPeriods);
  EXPECT_TRUE(control().Load(7, 0));
  ASSERT_EQ(control().Rows(), 9);
  const char* bills[] = {"2004年03月期初", "2004-03", "2004-03-05 入库单 1", "2004-03-06 出库单 2",
                         "2004年03月合计", "2004-04", "2004-04-01 出库单 3", "2004年04月合计"};
  for (int row = 1; row < 9; ++row) EXPECT_EQ(Cell(row, "BillNo"), bills[row - 1]);
  for (int row = 1; row < 9; ++row) {
    const bool node = row == 2 || row == 5 || row == 6 || row == 8;
    EXPECT_EQ(grid().IsSubtotal(row), node) << row;
    EXPECT_EQ(grid().RowOutlineLevel(row), node || row == 1 ? 0 : 1) << row;
  }
}

TEST_F(Load, RunsStockAmountAndAveragePriceFromTheOpeningOn) {
  AnswerJournal(*connection_, kTwoPeriods);
  control().Load(7, 0);
  EXPECT_EQ(Cell(1, "Period"), "2004-03");
  const char* quantities[] = {"10", "14", "11", "0"};
  const char* seconds[] = {"1", "1.5", "1.5", "1.5"};
  const char* amounts[] = {"25", "37.5", "29.4999", "9.4999"};
  const char* prices[] = {"2.5", "2.67857142857143", "2.68180909090909", "0"};
  const int rows[] = {1, 3, 4, 7};
  for (size_t at = 0; at < 4; ++at) {
    EXPECT_EQ(Cell(rows[at], "StoQty"), quantities[at]);
    EXPECT_EQ(Cell(rows[at], "StoQty2"), seconds[at]);
    EXPECT_EQ(Cell(rows[at], "StoAcc"), amounts[at]);
    EXPECT_EQ(Cell(rows[at], "StoPrice"), prices[at]);
  }
}

TEST_F(Load, TotalsEveryPeriodTheLastOneIncludedOverTheCumulativeSum) {
  AnswerJournal(*connection_, kTwoPeriods);
  control().SetQuantityFormat("#,##0.0");
  control().Load(7, 0);
  EXPECT_EQ(Cell(5, "Quantity"), "1.0\n1.0");
  EXPECT_EQ(Cell(5, "Quantity2"), "0.5\n0.5");
  EXPECT_EQ(Cell(5, "Account"), "4.50\n4.50");
  EXPECT_EQ(Cell(5, "RevQty"), "4.0\n4.0");
  EXPECT_EQ(Cell(5, "IssAcc"), "8.00\n8.00");
  EXPECT_EQ(Cell(8, "Quantity"), "-11.0\n-10.0");
  EXPECT_EQ(Cell(8, "Account"), "-20.00\n-15.50");
  EXPECT_EQ(Cell(8, "RevQty"), "0.0\n4.0");
  EXPECT_EQ(Cell(8, "IssQty"), "11.0\n14.0");
  EXPECT_EQ(Cell(8, "StoQty"), "");
}

TEST_F(Load, RaisesItsEventsInOrder) {
  AnswerJournal(*connection_, kTwoPeriods);
  diary_.lines.clear();
  control().Load(7, 0);
  EXPECT_EQ(diary_.lines,
            (std::vector<std::string>{"CommandExecute Load", std::string("Notify 正在读入：") + kCaption + "...",
                                      "Process 0", "Process 10", "Process 20", "Process 30", "AfterFormatted",
                                      "Process 35", "Process 40", "Process 60", "Process 80", "Process 100",
                                      "AfterLoaded", std::string("Notify 已读入：") + kCaption, "Process -1"}));
  EXPECT_TRUE(busy_throughout_);
  EXPECT_EQ(grid().Tag(), "");
  EXPECT_TRUE(grid().Redraw());
  EXPECT_EQ(control().OutlineColKey(), "BillNo");
}

TEST_F(Load, ShowsOnlyTheOpeningRowOfAProductWithoutMovements) {
  AnswerJournal(*connection_, {});
  EXPECT_TRUE(control().Load(7, 0));
  ASSERT_EQ(control().Rows(), 2);
  EXPECT_EQ(Cell(1, "BillNo"), "2004年03月期初");
  EXPECT_EQ(Cell(1, "StoQty"), "10");
  EXPECT_EQ(diary_.lines, (std::vector<std::string>{
                              "CommandExecute Load", std::string("Notify 正在读入：") + kCaption + "...", "Process 0",
                              "Process 10", "Process 20", "Process 30", "AfterFormatted", "Process 35", "Process 40",
                              "AfterLoaded", std::string("Notify 已读入：") + kCaption, "Process -1"}));
}

TEST_F(Load, OpensWithZeroWhenNothingWasEverCarriedForward) {
  AnswerJournal(*connection_, kTwoPeriods);
  connection_->Answer("SELECT TOP 1 AccPeriod AS Period", {"Period", "LastQty"}, {});
  EXPECT_TRUE(control().Load(7, 0));
  EXPECT_EQ(Cell(1, "BillNo"), "2004年03月期初");
  EXPECT_EQ(Cell(1, "StoQty"), "0");
  EXPECT_EQ(Cell(1, "StoAcc"), "0");
  EXPECT_EQ(Cell(3, "StoQty"), "4");
}

TEST_F(Load, OpensWithZeroWhenTheBalanceCannotBeRead) {
  AnswerJournal(*connection_, kTwoPeriods);
  connection_->Fail("SELECT TOP 1 AccPeriod AS Period", "no such table");
  diary_.lines.clear();
  EXPECT_TRUE(control().Load(7, 0));
  EXPECT_EQ(Cell(1, "BillNo") + " " + Cell(1, "StoQty") + " " + Cell(1, "StoAcc"), "2004年03月期初 0 0");
  EXPECT_EQ(Cell(3, "StoQty"), "4");
  const auto end = diary_.lines.end();
  EXPECT_EQ(end[-1], "Process -1");
  EXPECT_TRUE(end[-2].starts_with("Notify 读不到期初余额") && end[-2].ends_with("no such table")) << end[-2];
  EXPECT_EQ(end[-3], std::string("Notify 已读入：") + kCaption);
}

TEST_F(Load, EndsWithItsClosingMessageWhenTheHostCancels) {
  AnswerJournal(*connection_, kTwoPeriods);
  control().Load(7, 0);
  diary_.lines.clear();
  diary_.cancels = true;
  connection_->Forget();
  EXPECT_FALSE(control().Load(8, 0));
  EXPECT_EQ(diary_.lines,
            (std::vector<std::string>{"CommandExecute Load", std::string("Notify 已读入：") + kCaption, "Process -1"}));
  EXPECT_TRUE(connection_->Sent().empty());
  EXPECT_EQ(control().Rows(), 9);
  EXPECT_EQ(control().KeyID(), 7);
  EXPECT_EQ(grid().Tag(), "");
  EXPECT_TRUE(grid().Redraw());
}

TEST_F(Load, TellsTheErrorOfTheJournalStatementAndEndsTheProgress) {
  AnswerJournal(*connection_, kTwoPeriods);
  connection_->Fail("SELECT * FROM (SELECT  * FROM (", "表“入库记录”不存在。");
  diary_.lines.clear();
  EXPECT_FALSE(control().Load(7, 0));
  EXPECT_EQ(diary_.lines, (std::vector<std::string>{
                              "CommandExecute Load", std::string("Notify 正在读入：") + kCaption + "...", "Process 0",
                              "Process 10", "Process 20", "Notify 表“入库记录”不存在。", "Process -1"}));
  EXPECT_EQ(grid().Tag(), "");
  EXPECT_TRUE(grid().Redraw());
  EXPECT_EQ(control().Rows(), 1);
}

TEST_F(Load, SaysThatThereIsNoConnection) {
  control().SetConn(nullptr);
  diary_.lines.clear();
  EXPECT_FALSE(control().Load(7, 0));
  EXPECT_EQ(diary_.lines,
            (std::vector<std::string>{"CommandExecute Load", "Notify 正在读入：商品:(无) 单位:(无) [全部仓库]...",
                                      "Process 0", "Notify 没有数据库连接：请先设置 Conn，再载入。", "Process -1"}));
  EXPECT_TRUE(grid().Redraw());
}

TEST_F(Load, StopsWithAMessageWhenAnAmountLeavesTheRangeOfMoney) {
  AnswerJournal(*connection_, {{.quantity = 1, .amount = "922337203685477.5807"}});
  diary_.lines.clear();
  EXPECT_FALSE(control().Load(7, 0));
  EXPECT_NE(diary_.lines[diary_.lines.size() - 2].find("金额超出范围"), std::string::npos);
  EXPECT_EQ(diary_.lines.back(), "Process -1");
}

TEST_F(Load, KeepsTheKeysThatAreNotGivenAndReportsABadSecondKey) {
  AnswerJournal(*connection_, kTwoPeriods);
  control().Load(7, 3, "01");
  EXPECT_EQ(control().dpID(), 3);
  control().Load();
  EXPECT_EQ(control().KeyID(), 7);
  EXPECT_EQ(control().dpID(), 3);
  EXPECT_EQ(control().dpCode(), "01");
  diary_.lines.clear();
  EXPECT_FALSE(control().Load(7, 40000));
  EXPECT_EQ(control().dpID(), 3);
  EXPECT_NE(diary_.lines[1].find("40000"), std::string::npos);
  EXPECT_EQ(diary_.lines.back(), "Process -1");
}

TEST_F(Load, MasksAmountsAndKeepsThemBehindTheMask) {
  AnswerJournal(*connection_, kTwoPeriods);
  control().SetAccRestrict("True");
  control().Load(7, 0);
  for (const char* key : {"Price", "Account", "RevAcc", "IssAcc", "StoPrice", "StoAcc"})
    EXPECT_EQ(Cell(3, key), "-") << key;
  EXPECT_EQ(Cell(3, "StoQty"), "14");
  EXPECT_EQ(grid().CellData(3, grid().ColIndex("StoAcc")), base::Value(*base::Money::Parse("37.5")));
  EXPECT_EQ(grid().CellData(3, grid().ColIndex("Account")).AsMoney(), base::Money::Parse("12.5"));
  EXPECT_EQ(grid().DisplayText(3, grid().ColIndex("StoAcc")), "-");
}

TEST_F(Load, EmptiesZeroMovementsOnTheirOwnSideOnly) {
  AnswerJournal(
      *connection_,
      {{.quantity = 0, .amount = "0"}, {.flag = 1, .quantity = 0, .amount = "5"}, {.quantity = 2, .amount = "0"}});
  control().Load(7, 0);
  EXPECT_EQ(Cell(3, "RevQty"), "");
  EXPECT_EQ(Cell(3, "RevAcc"), "");
  EXPECT_EQ(Cell(3, "IssQty"), "0");
  EXPECT_EQ(Cell(4, "IssQty"), "");
  EXPECT_EQ(Cell(4, "IssAcc"), "5");
  EXPECT_EQ(Cell(4, "RevQty"), "0");
  EXPECT_EQ(Cell(5, "RevQty"), "2");
  EXPECT_EQ(Cell(5, "RevAcc"), "");
}

TEST_F(Load, EmptiesZeroDates) {
  AnswerJournal(*connection_, {{.quantity = 1, .audit_date = base::Value(base::Date())},
                               {.quantity = 1, .audit_date = base::Value(*base::Date::Parse("2004-03-09"))}});
  control().Load(7, 0);
  EXPECT_EQ(Cell(3, "AuditDate"), "");
  EXPECT_EQ(Cell(4, "AuditDate"), "2004-03-09");
}

TEST_F(Load, EmptiesZeroDatesInAllThreeDateColumnsHoweverTheyAreStored) {
  AnswerJournal(*connection_, {{.quantity = 1}});
  for (const base::Value& zero : {base::Value(base::Date()), base::Value(int64_t{0}), base::Value(0.0),
                                  testing::Text("1899-12-30"), testing::Text("0")}) {
    std::vector<base::Value> row = testing::JournalRow({.quantity = 1});
    const std::vector<std::string>& names = testing::JournalFieldNames();
    for (size_t at = 0; at < names.size(); ++at) {
      if (names[at] == "Field6" || names[at] == "InputDate" || names[at] == "AuditDate" || names[at] == "Field4")
        row[at] = zero;
    }
    connection_->Answer("SELECT * FROM (SELECT  * FROM (", names, {row});
    ASSERT_TRUE(control().Load(7, 0));
    EXPECT_EQ(Cell(3, "Field6") + Cell(3, "InputDate") + Cell(3, "AuditDate"), "") << zero.Text();
    EXPECT_EQ(Cell(3, "Field4"), zero.Text()) << "only the date columns";
  }
}

TEST_F(Load, LeavesTheOpeningAndTheTotalsUnmasked) {
  AnswerJournal(*connection_, kTwoPeriods);
  control().SetAccRestrict("-1");
  control().Load(7, 0);
  EXPECT_EQ(Cell(1, "StoAcc"), "25");
  EXPECT_EQ(Cell(1, "StoPrice"), "2.5");
  EXPECT_EQ(Cell(5, "Account"), "4.50\n4.50");
  control().SetAccRestrict("0");
  control().Load(7, 0);
  EXPECT_EQ(Cell(3, "StoAcc"), "37.5");
}

TEST_F(Load, TakesTheOpeningForZeroWhereItIsNoNumber) {
  AnswerJournal(*connection_, kTwoPeriods);
  connection_->Answer("SELECT TOP 1 AccPeriod AS Period", {"Period", "LastQty", "LastQty2", "LastAcc"},
                      {{testing::Text("2004-03"), testing::Text("ten"), base::Value(), base::Value()}});
  EXPECT_TRUE(control().Load(7, 0));
  EXPECT_EQ(Cell(1, "BillNo"), "2004年03月期初");
  EXPECT_EQ(Cell(1, "StoQty") + " " + Cell(1, "StoQty2") + " " + Cell(1, "StoAcc") + " " + Cell(1, "StoPrice"),
            "0 0 0 0");
  EXPECT_EQ(Cell(3, "StoQty"), "4");
}

TEST_F(Load, LeavesTheRunningValuesOfAnUnknownTypeAsTheyWere) {
  connection_->Answer("SELECT  * FROM (", testing::JournalFieldNames(),
                      {testing::JournalRow({.quantity = 5, .amount = "10"}),
                       testing::JournalRow({.flag = 1, .quantity = 2, .amount = "4"})});
  connection_->Answer("Select Top 1 * From tqAccPeriod", {"AccPeriod"}, {{testing::Text("2004-03")}});
  control().SetJournalType(static_cast<tqJournalTypeContants>(9));
  ASSERT_TRUE(control().Load(7, 1));
  EXPECT_EQ(Cell(3, "StoQty") + " " + Cell(4, "StoQty") + " " + Cell(4, "StoAcc") + " " + Cell(4, "StoPrice"),
            "0 0 0 0");
  EXPECT_EQ(Cell(5, "RevQty"), "5.00\n5.00");
  EXPECT_EQ(Cell(5, "IssAcc"), "4.00\n4.00");
}

TEST_F(Load, DividesByANegativeStock) {
  AnswerJournal(*connection_, {{.flag = 1, .quantity = 14, .amount = "27"}});
  control().Load(7, 0);
  EXPECT_EQ(Cell(3, "StoQty"), "-4");
  EXPECT_EQ(Cell(3, "StoAcc"), "-2");
  EXPECT_EQ(Cell(3, "StoPrice"), "0.5");
}

TEST_F(Load, PutsThePicturesOfABillWhereTheyBelong) {
  AnswerJournal(*connection_, kTwoPeriods);
  control().SetRevPicture(testing::MakePicture("host rev"));
  control().SetIssAuditedPicture(testing::MakePicture("host iss audited"));
  control().SetTitleBackPicture(testing::MakePicture("title"));
  control().SetMarkBackPicture(testing::MakePicture("mark back"));
  control().Load(7, 0);
  const auto picture = [&](int row, const char* key) { return NameOf(grid().CellPicture(row, grid().ColIndex(key))); };
  EXPECT_EQ(picture(3, "BillNo"), "RevBill");
  EXPECT_EQ(picture(3, "BillKind"), "host rev");
  EXPECT_EQ(picture(4, "BillNo"), "IssBill1");
  EXPECT_EQ(picture(4, "BillKind"), "host iss audited");
  EXPECT_EQ(picture(7, "BillKind"), "");
  EXPECT_EQ(picture(3, "Quantity"), "");
  EXPECT_EQ(picture(4, "Quantity"), "Mark");
  EXPECT_EQ(picture(4, "IssQty"), "Mark");
  EXPECT_EQ(grid().CellPictureAlignment(4, grid().ColIndex("Quantity")), platform::PictureAlignment::kRightTop);
  EXPECT_EQ(picture(3, "ProductName"), "Mtr");
  EXPECT_EQ(picture(5, "BillNo"), "");
  EXPECT_EQ(NameOf(grid().CellPicture(0, 5)), "title");
  EXPECT_EQ(NameOf(grid().CellPicture(4, 0)), "mark back");
  EXPECT_EQ(NameOf(grid().CellPicture(0, 0)), "");
}

TEST_F(Load, ReportsTheHeightsThatTheGridShows) {
  AnswerJournal(*connection_, kTwoPeriods);
  control().Load(7, 0);
  EXPECT_EQ(control().RowHeight(), 270);
  EXPECT_EQ(control().RowHeightTitle(), 480);
  EXPECT_EQ(control().RowHeightSum(), 540);
  EXPECT_EQ(grid().RowHeight(5), 540);
  EXPECT_EQ(grid().RowHeight(2), 540);
  EXPECT_EQ(grid().RowHeight(4), 270);
  AnswerJournal(*connection_, {});
  control().Load(7, 0);
  EXPECT_EQ(control().RowHeightSum(), control().RowHeight());
}

TEST_F(Load, OpensThePartnerJournalsWithTheSumsUpToThePeriod) {
  connection_->Answer("SELECT dir.AccPeriod AS Period", testing::JournalFieldNames(),
                      {testing::JournalRow({.quantity = 5, .amount = "10"})});
  connection_->Answer("Select Top 1 * From tqAccPeriod", {"AccPeriod"}, {{testing::Text("2004-03")}});
  connection_->Answer("Select * From tqAccPeriod", {"AccPeriod"}, {{testing::Text("2004-03")}});
  connection_->Answer(
      "SELECT '2004-03' As Period",
      {"Period", "LastQty", "LastQty2", "LastAcc", "RevQty", "RevQty2", "RevAcc", "IssQty", "IssQty2", "IssAcc"},
      {{testing::Text("2004-03"), base::Value(90.0), base::Value(91.0), base::Value(92.0), base::Value(4.0),
        base::Value(2.0), base::Value(8.0), base::Value(6.0), base::Value(), base::Value(6.0)}});
  connection_->Answer("Select", {"ksID", "ClassCode", "企业名称"}, {});
  control().SetJournalType(base::SupplierJournal);
  ASSERT_TRUE(control().Load(0, 5));
  EXPECT_EQ(Cell(1, "StoQty") + " " + Cell(1, "StoQty2") + " " + Cell(1, "StoAcc") + " " + Cell(1, "StoPrice"),
            "4 2 8 2");
  EXPECT_EQ(Cell(3, "StoQty") + " " + Cell(3, "StoAcc"), "9 18");
  control().SetJournalType(base::CustomerJournal);
  ASSERT_TRUE(control().Load(0, 5));
  EXPECT_EQ(Cell(1, "StoQty") + " " + Cell(1, "StoQty2") + " " + Cell(1, "StoAcc") + " " + Cell(1, "StoPrice"),
            "6 0 6 1");
  EXPECT_EQ(Cell(3, "StoQty") + " " + Cell(3, "StoAcc"), "6 6");
}

TEST_F(Load, FillsAMissingClassCodeFromTheSecondKey) {
  AnswerJournal(*connection_, {});
  connection_->Answer("Select ClassCode From 厂商资料 Where ksID=5", {"ClassCode"}, {{testing::Text("0102")}});
  control().SetJournalType(base::SupplierJournal);
  control().Load(7, 5);
  EXPECT_EQ(control().dpCode(), "0102");
}

TEST_F(Load, ReplacesWhatWasLoadedBefore) {
  AnswerJournal(*connection_, kTwoPeriods);
  control().Load(7, 0);
  AnswerJournal(*connection_, {{.bill_no = "only"}});
  control().Load(7, 0);
  ASSERT_EQ(control().Rows(), 5);
  EXPECT_EQ(Cell(3, "BillNo"), "only");
  EXPECT_EQ(grid().Cols(), 56);
}

}  // namespace
}  // namespace stockbook::control
