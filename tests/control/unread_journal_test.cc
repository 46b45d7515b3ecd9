// SPDX-License-Identifier: MIT
// What the control shows and tells where the database cannot be read, or not at one moment.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "control/working_control.h"
#include "stockbook/control/row_fields.h"

namespace stockbook::control {
namespace {

constexpr auto kBusy = platform::ErrorKind::kBusy;

class UnreadJournal : public WorkingControl {
 protected:
  std::string Cell(int row, const char* key) { return grid().TextMatrix(row, ColumnOf(key)); }
  // How often a message was told that begins so.
  int64_t TimesTold(std::string_view beginning) {
    const Lines told = heard_.Of("Notify");
    return std::count_if(told.begin(), told.end(),
                         [&](const std::string& line) { return line.starts_with(beginning); });
  }
  // Everything that a load that fails in time leaves as it was.
  Lines State() {
    Lines state = {std::to_string(control().KeyID()),
                   std::to_string(control().dpID()),
                   control().dpCode(),
                   control().KeyName(),
                   control().Caption(),
                   std::to_string(control().Rows()),
                   std::to_string(grid().Row()),
                   std::to_string(grid().CellBackColor(grid().Row(), 1))};
    for (int row = 0; row < grid().Rows(); ++row) state.push_back(Cell(row, "BillNo") + " " + Cell(row, "StoQty"));
    return state;
  }
  void ExpectEnded() {
    EXPECT_EQ(heard_.LastOf("Process"), "-1");
    EXPECT_EQ(grid().Tag(), "");
    EXPECT_TRUE(grid().Redraw());
    EXPECT_EQ(connection_->open_moments, 0);
  }
};

TEST_F(UnreadJournal, IsReadAsOfOneMomentThatEndsBeforeTheEventsOfTheRows) {
  connection_->Forget();
  std::vector<std::pair<std::string, int>> open;
  heard_.on_hearing = [&](const std::string& line) { open.emplace_back(line, connection_->open_moments); };
  ASSERT_TRUE(control().Load(7, 3));
  ASSERT_GE(connection_->moments_of_statements.size(), 6U);
  for (size_t at = 0; at < connection_->moments_of_statements.size(); ++at)
    EXPECT_GE(connection_->moments_of_statements[at], 1) << connection_->Sent()[at];
  bool rows = false;
  for (const auto& [line, moments] : open) {
    rows = rows || line == "Process 35";
    const bool before = line == "CommandExecute Load";
    EXPECT_EQ(moments > 0, !rows && !before) << line;
  }
  EXPECT_TRUE(rows);
}

TEST_F(UnreadJournal, KeepsKeysRowsAndHeaderOnABusyDatabase) {
  control().SetRow(5);
  const Lines before = State();
  connection_->busy = true;
  connection_->Forget();
  heard_.Take();
  EXPECT_FALSE(control().Load(8, 3, "01"));
  EXPECT_EQ(heard_.Take(), (Lines{"CommandExecute Load", "Notify 数据库正忙", "Process -1"}));
  EXPECT_EQ(State(), before);
  EXPECT_TRUE(connection_->Sent().empty());
  connection_->busy = false;
  EXPECT_TRUE(control().Load(7, 0));
  ExpectEnded();
}

TEST_F(UnreadJournal, KeepsThemWithoutMomentsTooIfALookUpMeetsTheBusyDatabase) {
  control().SetRow(5);
  const Lines before = State();
  connection_->has_moments = false;
  for (const char* look_up : {"SELECT pd.pdID", "SELECT * FROM 仓库设置"}) {
    connection_->Fail(look_up, "数据库正忙", kBusy);
    EXPECT_FALSE(control().Load(8, 3, "01")) << look_up;
    EXPECT_EQ(heard_.LastOf("Notify"), "数据库正忙");
    EXPECT_EQ(State(), before) << look_up;
    connection_->Answer(look_up, {"商品名称"}, {});
  }
  ExpectEnded();
}

TEST_F(UnreadJournal, LoadsAsBeforeOverAConnectionThatHasNoMoments) {
  const Lines before = State();
  connection_->has_moments = false;
  EXPECT_TRUE(control().Load(7, 0));
  EXPECT_EQ(State(), before);
}

TEST_F(UnreadJournal, EndsWithTheErrorOfTheEngineWhicheverStatementMeetsIt) {
  connection_->Forget();
  ASSERT_TRUE(control().Load(7, 3));
  const Lines statements = connection_->Sent();
  ASSERT_EQ(statements.size(), 7U) << "product, depot, newest period twice, journal, earliest period, balance";
  for (const std::string& statement : statements) {
    const testing::FakeConnection whole = *connection_;
    connection_->Fail(statement, "磁盘读取错误", platform::ErrorKind::kInputOutput);
    heard_.Take();
    EXPECT_FALSE(control().Load(7, 3)) << statement;
    EXPECT_EQ(heard_.LastOf("Notify"), "磁盘读取错误") << statement;
    EXPECT_EQ(TimesTold("已读入"), 0) << statement;
    ExpectEnded();
    *connection_ = whole;
    ASSERT_TRUE(control().Load(7, 3));
  }
}

TEST_F(UnreadJournal, EndsWithoutMemoryAndOfAnythingElseInASentence) {
  connection_->Do("SELECT TOP 1 AccPeriod AS Period", []() -> platform::Recordset { throw std::bad_alloc(); });
  EXPECT_FALSE(control().Load(7, 0));
  EXPECT_TRUE(heard_.LastOf("Notify").starts_with("内存不足")) << heard_.LastOf("Notify");
  connection_->Do("SELECT TOP 1 AccPeriod AS Period", []() -> platform::Recordset { throw 7; });
  EXPECT_FALSE(control().Load(7, 0));
  EXPECT_EQ(heard_.LastOf("Notify"), "读入时发生未知错误，读入已停止。");
  ExpectEnded();
}

TEST_F(UnreadJournal, TellsOnceBehindItsEndWhatItCouldDoWithout) {
  connection_->Fail("Select Top 1 * From tqAccPeriod", "no such table: tqAccPeriod");
  heard_.Take();
  EXPECT_TRUE(control().Load(7, 0));
  EXPECT_EQ(TimesTold("读不到最新的会计期间"), 1) << "the statement is sent twice";
  EXPECT_TRUE(heard_.LastOf("Notify").ends_with("no such table: tqAccPeriod"));
  ASSERT_GE(heard_.lines.size(), 3U);
  EXPECT_TRUE(heard_.lines[heard_.lines.size() - 3].starts_with("Notify 已读入："));
  ExpectEnded();
}

TEST_F(UnreadJournal, OpensWithZerosAndSaysSoWhenTheBalanceIsRefused) {
  connection_->Fail("SELECT TOP 1 AccPeriod AS Period", "no such table: 仓库余额表");
  EXPECT_TRUE(control().Load(7, 0));
  EXPECT_EQ(Cell(1, "BillNo") + " " + Cell(1, "StoQty"), "2004年03月期初 0");
  EXPECT_EQ(Cell(3, "StoQty"), "3");
  EXPECT_EQ(TimesTold("读不到期初余额，期初行按零显示"), 1);
}

TEST_F(UnreadJournal, SaysAfterWhichBillAnInfiniteQuantityLeavesNoStock) {
  std::vector<testing::JournalLine> lines = {{.bill_no = "入库单 1", .quantity = 4},
                                             {.bill_no = "入库单 2", .quantity = 1},
                                             {.period = "2004-04", .bill_no = "出库单 3", .flag = 1, .quantity = 1}};
  lines[1].quantity = std::numeric_limits<double>::infinity();
  testing::AnswerJournal(*connection_, lines);
  EXPECT_TRUE(control().Load(7, 0));
  EXPECT_EQ(TimesTold("单据“入库单 2”的数量是无穷大"), 1);
  EXPECT_EQ(Cell(3, "StoQty"), "14");
}

TEST_F(UnreadJournal, ReadsAsNothingOutsideOfALoadAndSaysWhyOnce) {
  connection_->Fail("Select Top 1 * From tqAccPeriod", "数据库正忙", kBusy);
  connection_->Fail("SELECT * FROM 仓库设置", "数据库正忙", kBusy);
  connection_->Fail("SELECT pd.pdID", "数据库正忙", kBusy);
  connection_->Fail("SELECT d.BillID", "数据库正忙", kBusy);
  control().SetdpID(3);
  heard_.Take();
  EXPECT_EQ(control().AccPeriod(), "");
  EXPECT_EQ(heard_.Take(), Lines{"Notify 数据库正忙"});
  EXPECT_EQ(control().DepotName(), "");
  EXPECT_EQ(heard_.Take(), Lines{"Notify 数据库正忙"});
  control().SetKeyID(8);
  EXPECT_EQ(control().KeyName(), "");
  EXPECT_EQ(heard_.Take(), Lines{"Notify 数据库正忙"});
  EXPECT_EQ(control().Fields().IssueSource(6), "");
  EXPECT_EQ(heard_.Take(), Lines{"Notify 数据库正忙"});
}

TEST_F(UnreadJournal, ReadsAsNothingOutsideOfALoadAndQuietlyIfOnlyTheStatementFails) {
  connection_->Fail("Select Top 1 * From tqAccPeriod", "no such table");
  connection_->Fail("SELECT pd.pdID", "no such table");
  heard_.Take();
  EXPECT_EQ(control().AccPeriod(), "");
  control().SetKeyID(8);
  EXPECT_EQ(heard_.Take(), Lines{});
}

TEST_F(UnreadJournal, TellsThatARowCannotBeDescribedInPlaceOfItsDescription) {
  connection_->Fail("SELECT d.BillID", "数据库正忙", kBusy);
  heard_.Take();
  control().SetRow(6);
  EXPECT_EQ(heard_.Take(), (Lines{"AfterRowChanged", "Notify 数据库正忙"}));
}

TEST_F(UnreadJournal, KeepsQuietOfItsReadersIfTheListenerFailsOfWhatItIsTold) {
  connection_->Fail("Select Top 1 * From tqAccPeriod", "数据库正忙", kBusy);
  heard_.on_hearing = [](const std::string&) { throw 7; };
  EXPECT_EQ(control().AccPeriod(), "");
}

}  // namespace
}  // namespace stockbook::control
