// SPDX-License-Identifier: MIT
// Rules of a load at their limits: which keys are kept, what is sent, what the events say, and what remains.
#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "stockbook/base/money.h"
#include "stockbook/base/value.h"
#include "stockbook/control/row_fields.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"
#include "support/faulty_grid.h"
#include "support/journal_rows.h"

namespace stockbook::control {
namespace {

using testing::AnswerJournal;
using testing::ControlOverFakes;
using testing::FakeConnection;
using testing::NameOf;

class LoadRules : public ::testing::Test {
 protected:
  LoadRules() : connection_(std::make_shared<FakeConnection>()) {
    AnswerJournal(*connection_, {{.quantity = 4, .amount = "12.5"}, {.flag = 1, .quantity = 3, .amount = "8"}});
    control().SetConn(connection_);
    control().AddListener(&ear_);
  }
  Stockbook& control() { return *fakes_.control; }
  sheet::GridSheet& grid() { return fakes_.fg; }
  std::string Cell(int row, const char* key) { return grid().TextMatrix(row, grid().ColIndex(key)); }
  bool WasSent(const std::string& beginning) const {
    for (const std::string& statement : connection_->Sent()) {
      if (statement.starts_with(beginning)) return true;
    }
    return false;
  }
  // Lines of the partner or project statement, as it begins in every one of these journals.
  void AnswerPartOf(const std::string& beginning, const std::vector<testing::JournalLine>& lines) {
    std::vector<std::vector<base::Value>> rows;
    for (const testing::JournalLine& line : lines) rows.push_back(testing::JournalRow(line));
    connection_->Answer(beginning, testing::JournalFieldNames(), rows);
  }

  ControlOverFakes fakes_;
  testing::EventRecorder ear_;
  std::shared_ptr<FakeConnection> connection_;
};

TEST_F(LoadRules, WhatTheConnectionLeftOutIsToldOnceAtTheEnd) {
  connection_->Do("SELECT * FROM (SELECT  * FROM (", [] {
    auto rows = testing::MakeRecordset(testing::JournalFieldNames(), {testing::JournalRow({.quantity = 4})});
    for (const char* remark : {"有 1 张单据没有列出。", "有 1 张单据没有列出。"}) rows.AddRemark(remark);
    return rows;
  });
  connection_->Do("SELECT TOP 1 AccPeriod AS Period", [] {
    auto rows = testing::MakeRecordset({"Period", "LastQty", "LastQty2", "LastAcc"}, {});
    for (const char* remark : {"有 1 张单据没有列出。", "有 2 个仓库没有余额。"}) rows.AddRemark(remark);
    return rows;
  });
  ASSERT_TRUE(control().Load(7, 0));
  const auto told = ear_.Of("Notify");
  ASSERT_EQ(told.size(), 4U);
  EXPECT_TRUE(told[1].starts_with("已读入"));
  EXPECT_EQ(told[2], "有 1 张单据没有列出。");
  EXPECT_EQ(told[3], "有 2 个仓库没有余额。");
  ear_.Take();
  AnswerJournal(*connection_, {{.quantity = 4, .amount = "12.5"}});
  connection_->Answer("SELECT TOP 1 AccPeriod AS Period", {"Period", "LastQty", "LastQty2", "LastAcc"}, {});
  ASSERT_TRUE(control().Load(7, 0));
  EXPECT_EQ(ear_.Of("Notify").size(), 2U) << "the next load says nothing of it";
}

TEST_F(LoadRules, AKeyIsStoredFromZeroOnAndTheSubjectIsLookedUpAgain) {
  control().Load(7, 3);
  EXPECT_EQ(control().KeyName(), "六角螺栓");
  connection_->Answer("SELECT pd.pdID", {"商品名称"}, {});
  control().Load(0, 0);
  EXPECT_EQ(control().KeyID(), 0);
  EXPECT_EQ(control().dpID(), 0);
  EXPECT_EQ(control().KeyName(), "") << "nobody was found";
  control().SetKeyID(7);
  control().SetdpID(3);
  control().Load(-2, -9);
  EXPECT_EQ(control().KeyID(), 7);
  EXPECT_EQ(control().dpID(), 3);
}

TEST_F(LoadRules, AMissingClassCodeIsLookedUpForAProductFromOneOnOnly) {
  control().SetJournalType(base::SupplierJournal);
  connection_->Answer("Select ClassCode From 厂商资料", {"ClassCode"}, {{testing::Text("0102")}});
  control().Load(0, 5);
  EXPECT_FALSE(WasSent("Select ClassCode From"));
  EXPECT_EQ(control().dpCode(), "");
  control().Load(1, 5);
  EXPECT_TRUE(WasSent("Select ClassCode From 厂商资料 Where ksID=5"));
  EXPECT_EQ(control().dpCode(), "0102");
  connection_->Forget();
  control().Load(1, 5, "07");
  EXPECT_EQ(control().dpCode(), "07");
  EXPECT_FALSE(WasSent("Select ClassCode From")) << "a code that is given is not looked up";
}

TEST_F(LoadRules, TheJournalIsReadOnceWithTheProvidersChoiceAndTheBalanceAfterIt) {
  connection_->Forget();
  control().Load(7, 0);
  int journal = -1;
  int balance = -1;
  int journals = 0;
  for (size_t at = 0; at < connection_->Sent().size(); ++at) {
    const std::string& statement = connection_->Sent()[at];
    if (statement.starts_with("SELECT * FROM (SELECT")) journal = static_cast<int>(at), ++journals;
    if (statement.starts_with("SELECT TOP 1 AccPeriod")) balance = static_cast<int>(at);
    EXPECT_FALSE(statement.starts_with("Drop Table"));
  }
  EXPECT_EQ(journals, 1);
  ASSERT_GE(journal, 0);
  EXPECT_GT(balance, journal);
  EXPECT_EQ(connection_->options[static_cast<size_t>(journal)], -1);
}

TEST_F(LoadRules, RowsComeIntoTheGridTogetherAndNotOneByOne) {
  testing::FaultyGrid counting(grid());
  Stockbook other({counting, fakes_.fg1, fakes_.metrics, fakes_.images, fakes_.menu, fakes_.clipboard, fakes_.site});
  other.SetConn(connection_);
  AnswerJournal(*connection_, std::vector<testing::JournalLine>(5000));
  counting.RefuseCall(4000);
  EXPECT_TRUE(other.Load(7, 0)) << "fewer calls than there are rows";
  counting.RefuseCall(0);
  EXPECT_EQ(other.Rows(), 5004);
}

TEST_F(LoadRules, ProgressOfARowIsAWholeNumber) {
  AnswerJournal(*connection_, std::vector<testing::JournalLine>(7));
  control().Load(7, 0);
  EXPECT_EQ(ear_.Of("Process"), (std::vector<std::string>{"0", "10", "20", "30", "35", "40", "48", "57", "65", "74",
                                                          "82", "91", "100", "-1"}));
}

TEST_F(LoadRules, TheCommandIsRaisedWithTheMarkerSetAndRedrawOffBeforeAnyStatement) {
  bool commanded = false;
  ear_.on_hearing = [&](const std::string& line) {
    if (std::exchange(commanded, true)) return;
    EXPECT_EQ(line, "CommandExecute Load");
    EXPECT_EQ(grid().Tag(), "Load");
    EXPECT_FALSE(grid().Redraw());
    EXPECT_TRUE(connection_->Sent().empty());
  };
  connection_->Forget();
  EXPECT_TRUE(control().Load(7, 0));
}

TEST_F(LoadRules, TheGridIsDownToItsFixedRowsAndColumnsWhenReadingBegins) {
  control().Load(7, 0);
  std::string size;
  ear_.on_hearing = [&](const std::string& line) {
    if (line.starts_with("Notify 正在读入："))
      size = std::to_string(grid().Rows()) + " " + std::to_string(grid().Cols());
  };
  control().Load(7, 0);
  EXPECT_EQ(size, "1 1");
}

TEST_F(LoadRules, TagAndRedrawComeBackAsTheyWere) {
  grid().SetTag("mine");
  grid().SetRedraw(false);
  EXPECT_TRUE(control().Load(7, 0));
  EXPECT_EQ(grid().Tag(), "mine");
  EXPECT_FALSE(grid().Redraw());
  ear_.cancels = true;
  EXPECT_FALSE(control().Load(7, 0));
  EXPECT_EQ(grid().Tag(), "mine");
  EXPECT_FALSE(grid().Redraw());
}

TEST_F(LoadRules, ACancelledLoadStillAppliesTheBackgroundPictures) {
  ear_.cancels = true;
  control().SetTitleBackPicture(testing::MakePicture("title"));
  control().SetMarkBackPicture(testing::MakePicture("mark"));
  grid().SetRows(3);
  EXPECT_FALSE(control().Load(7, 0));
  for (int column = 1; column < grid().Cols(); ++column) EXPECT_EQ(NameOf(grid().CellPicture(0, column)), "title");
  for (int row = 1; row < 3; ++row) EXPECT_EQ(NameOf(grid().CellPicture(row, 0)), "mark");
  EXPECT_EQ(grid().CellPicture(0, 0), nullptr);
  EXPECT_EQ(grid().CellPicture(1, 1), nullptr);
  EXPECT_EQ(control().OutlineColKey(), "BillNo");
}

TEST_F(LoadRules, AZeroAmountOfAnIssueIsEmptied) {
  AnswerJournal(*connection_, {{.flag = 1, .quantity = 2, .amount = "0"}});
  control().Load(7, 0);
  EXPECT_EQ(Cell(3, "IssQty"), "2");
  EXPECT_EQ(Cell(3, "IssAcc"), "");
  EXPECT_EQ(Cell(3, "RevAcc"), "0") << "the other side stays";
}

TEST_F(LoadRules, TheOpeningRowHasItsAmountAndPriceBehindTheTextsToo) {
  control().Load(7, 0);
  EXPECT_EQ(control().Fields().Get(fields::StoAcc, 1), base::Money::FromInteger(25));
  EXPECT_EQ(control().Fields().Get(fields::StoPrice, 1), 2.5);
}

TEST_F(LoadRules, RowsThatWereLoadedBeforeAnErrorStay) {
  AnswerJournal(*connection_, {{.bill_no = "stays", .quantity = 1, .amount = "922337203685477.5807"}});
  EXPECT_FALSE(control().Load(7, 0));
  EXPECT_EQ(control().Rows(), 4) << "captions, opening, node, line";
  EXPECT_EQ(Cell(3, "BillNo"), "stays");
}

TEST_F(LoadRules, ThePeriodsLastTwoCharactersAreItsMonth) {
  AnswerJournal(*connection_, {{.period = "200403", .quantity = 1, .amount = "1"}});
  connection_->Answer("SELECT TOP 1 AccPeriod AS Period", {"Period", "LastQty", "LastQty2", "LastAcc"},
                      {{testing::Text("2004.01"), base::Value(1.0), base::Value(1.0), base::Value(1.0)}});
  control().Load(7, 0);
  EXPECT_EQ(Cell(1, "BillNo"), "2004年01月期初");
  EXPECT_EQ(Cell(1, "Period"), "2004.01");
  EXPECT_EQ(Cell(4, "BillNo"), "2004年03月合计");
}

TEST_F(LoadRules, AProjectJournalRunsItsStockFromTheFirstBalanceRow) {
  AnswerPartOf("SELECT  * FROM (", {{.quantity = 5, .quantity2 = 1, .amount = "10"},
                                    {.flag = 1, .quantity = 2, .quantity2 = 3, .amount = "4.5"}});
  const auto number = [](double value) { return base::Value(value); };
  connection_->Answer(
      "SELECT bnPeriod AS Period",
      {"Period", "LastQty", "LastQty2", "LastAcc", "RevQty", "RevQty2", "RevAcc", "IssQty", "IssQty2", "IssAcc"},
      {{testing::Text("2004-01"), number(20), number(2), number(40), number(1), number(1), number(1), number(1),
        number(1), number(1)},
       {testing::Text("2004-02"), number(90), number(9), number(90), number(1), number(1), number(1), number(1),
        number(1), number(1)}});
  control().SetJournalType(base::ProjectJournal);
  ASSERT_TRUE(control().Load(7, 5));
  EXPECT_EQ(Cell(1, "BillNo"), "2004年01月期初");
  const auto running = [&](int row) {
    return Cell(row, "StoQty") + " " + Cell(row, "StoQty2") + " " + Cell(row, "StoAcc") + " " + Cell(row, "StoPrice");
  };
  EXPECT_EQ(running(1), "20 2 40 2");
  EXPECT_EQ(running(3), "25 3 50 2");
  EXPECT_EQ(running(4), "23 0 45.5 1.97826086956522");
}

TEST_F(LoadRules, PartnerJournalsAddUpTheirOwnSideAlone) {
  const std::vector<testing::JournalLine> lines = {{.quantity = 5, .quantity2 = 1, .amount = "10"},
                                                   {.flag = 1, .quantity = 2, .quantity2 = 3, .amount = "4"}};
  AnswerPartOf("SELECT dir.AccPeriod AS Period", lines);
  connection_->Fail("SELECT '2004-03' As Period", "no balance");
  control().SetJournalType(base::SupplierJournal);
  ASSERT_TRUE(control().Load(0, 5));
  EXPECT_EQ(Cell(4, "StoQty") + " " + Cell(4, "StoQty2") + " " + Cell(4, "StoAcc"), "5 1 10");
  control().SetJournalType(base::CustomerJournal);
  ASSERT_TRUE(control().Load(0, 5));
  EXPECT_EQ(Cell(3, "StoQty") + " " + Cell(3, "StoPrice"), "0 0");
  EXPECT_EQ(Cell(4, "StoQty") + " " + Cell(4, "StoQty2") + " " + Cell(4, "StoAcc") + " " + Cell(4, "StoPrice"),
            "2 3 4 2");
}

// What a name in row 3 becomes when a column is shown before the rows are finished.
class NamesAfterLoad : public LoadRules {
 protected:
  std::string NameWith(base::tqJournalTypeContants type, const char* shown) {
    AnswerPartOf("SELECT dir.AccPeriod AS Period", {{.quantity = 5, .amount = "10"}});
    control().SetJournalType(type);
    ear_.on_hearing = [this, shown](const std::string& line) {
      if (line != "AfterLoaded") return;
      if (shown[0] != 0) grid().SetColHidden(grid().ColIndex(shown), false);
      grid().SetTextMatrix(3, grid().ColIndex("ProductName"), "old");
      grid().SetCellData(3, grid().ColIndex("ProductName"), testing::Text("螺栓"));
      grid().SetTextMatrix(3, grid().ColIndex("Measure"), "个");
    };
    connection_->Answer("SELECT '2004-03' As Period", {"Period", "RevQty", "RevQty2", "RevAcc"},
                        {{testing::Text("2004-03"), base::Value(1.0), base::Value(1.0), base::Value(1.0)}});
    EXPECT_TRUE(control().Load(7, 5));
    return Cell(3, "ProductName");
  }
};

TEST_F(NamesAfterLoad, AreComposedWhenAColumnOfThePartsIsShown) {
  EXPECT_EQ(NameWith(base::SupplierJournal, ""), "old");
  EXPECT_EQ(NameWith(base::SupplierJournal, "Explain"), "old");
  EXPECT_EQ(NameWith(base::SupplierJournal, "Model"), "螺栓 (个)");
  EXPECT_EQ(NameWith(base::SupplierJournal, "Standard"), "螺栓 (个)");
  EXPECT_EQ(NameWith(base::SupplierJournal, "Measure"), "螺栓");
}

TEST_F(NamesAfterLoad, AreNotComposedForTheModelAloneInAStockJournal) {
  EXPECT_EQ(NameWith(base::MaterialJournal, "Model"), "old");
  EXPECT_EQ(NameWith(base::MaterialJournal, "Standard"), "螺栓 (个)");
}

TEST_F(LoadRules, HeightsAreReadBackAfterTheEventOfTheLoadedRows) {
  ear_.on_hearing = [&](const std::string& line) {
    if (line != "AfterLoaded") return;
    grid().SetRowHeight(0, 777);
    grid().SetRowHeight(1, 333);
    grid().SetRowHeight(2, 888);
  };
  control().Load(7, 0);
  EXPECT_EQ(control().RowHeightTitle(), 777);
  EXPECT_EQ(control().RowHeight(), 333) << "the first row that is no node";
  EXPECT_EQ(control().RowHeightSum(), 888) << "the first node";
}

TEST_F(LoadRules, ASecondLoadUsesEverythingThatWasSet) {
  control().SetQuantityFormat("0.000");
  control().SetFieldsFilter("Price|");
  control().Load(7, 3, "01");
  connection_->Forget();
  EXPECT_TRUE(control().Load());
  EXPECT_TRUE(grid().ColHidden(grid().ColIndex("Price")));
  EXPECT_EQ(grid().ColFormat(grid().ColIndex("StoQty")), "0.000");
  bool asked = false;
  for (const std::string& statement : connection_->Sent())
    asked = asked || statement.find("(Recs.pdID = 7) And Recs.dpID=3") != std::string::npos;
  EXPECT_TRUE(asked);
}

}  // namespace
}  // namespace stockbook::control
