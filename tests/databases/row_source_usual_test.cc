// SPDX-License-Identifier: MIT
// What a source need not give, and what it may not give twice.
#include <gtest/gtest.h>

#include <ctime>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "stockbook/columns/column_builder.h"
#include "stockbook/databases/rows/row_source.h"
#include "stockbook/platform/error.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"

namespace stockbook::databases {
namespace {

base::Date DayOf(int month, int day) { return *base::Date::FromParts({2025, month, day}); }

// Gives what a shop has written down, and no more.
class Plain : public RowSource {
 public:
  void Receipts(const RowFilter&, const TakeLine& take) override {
    for (const auto& [bill, line] : receipts) take(bill, line);
  }
  void Issues(const RowFilter&, const TakeLine& take) override {
    for (const auto& [bill, line] : issues) take(bill, line);
  }
  void Balances(BalanceOwner owner, const RowFilter&, const Take<Balance>& take) override {
    if (owner != BalanceOwner::kDepots) return;
    for (const Balance& balance : balances) take(balance);
  }
  std::optional<std::vector<platform::Field>> Columns(std::string_view table, const RowFilter&) override {
    if (table != "入库目录" || periods_of_columns.empty()) return std::nullopt;
    columns::ColumnBuilder keys;
    columns::ColumnBuilder periods;
    for (size_t row = 0; row < periods_of_columns.size(); ++row) {
      keys.Append(base::Value(static_cast<int64_t>(row) + 1));
      periods.Append(base::Value(periods_of_columns[row]));
    }
    std::vector<platform::Field> fields;
    fields.push_back({"BillID", keys.Finish()});
    fields.push_back({"accperiod", periods.Finish()});
    return fields;
  }

  std::vector<std::pair<Bill, Line>> receipts;
  std::vector<std::pair<Bill, Line>> issues;
  std::vector<Balance> balances;
  std::vector<std::string> periods_of_columns;  // of the receipts, where they come so
};

class UsualRows : public ::testing::Test {
 protected:
  std::set<std::string> Periods() const {
    std::set<std::string> periods;
    source_->Periods([&](const std::string& period) { periods.insert(period); });
    return periods;
  }
  // The column of the journal of product 7 from its opening row on, total rows left out.
  std::vector<std::string> Journal(const char* key) {
    fakes_.control->SetConn(std::shared_ptr<platform::Connection>(OpenRowSource(source_)));
    testing::EventRecorder heard;
    fakes_.control->AddListener(&heard);
    loaded_ = fakes_.control->Load(7, 0);
    fakes_.control->RemoveListener(&heard);
    told_ = heard.Of("Notify");
    std::vector<std::string> cells;
    const platform::Grid& grid = fakes_.control->Grid();
    for (int row = grid.FixedRows(); loaded_ && row < grid.Rows(); ++row) {
      if (!grid.IsSubtotal(row)) cells.push_back(grid.DisplayText(row, grid.ColIndex(key)));
    }
    return cells;
  }

  std::shared_ptr<Plain> source_ = std::make_shared<Plain>();
  testing::ControlOverFakes fakes_;
  bool loaded_ = false;
  std::vector<std::string> told_;
};

TEST_F(UsualRows, ThePeriodsAreThoseOfBillsAndBalances) {
  source_->receipts = {{{.id = 1, .date = DayOf(4, 8)}, {.id = 1, .product = 7}},
                       {{.id = 2, .period = "2025-06", .date = DayOf(5, 31)}, {.id = 2, .product = 8}},
                       {{.id = 3}, {.id = 3, .product = 7}}};
  source_->issues = {{{.id = 1, .date = DayOf(4, 9)}, {.id = 1, .product = 7}},
                     {{.id = 2, .date = DayOf(3, 1)}, {.id = 2, .product = 7}}};
  source_->balances = {{.id = 1, .owner = 1, .product = 7, .period = "2025-01"}, {.id = 2, .owner = 1, .product = 7}};
  EXPECT_EQ(Periods(), (std::set<std::string>{"2025-01", "2025-03", "2025-04", "2025-06"}));
}

TEST_F(UsualRows, ThePeriodsAreThoseOfColumnsToo) {
  source_->periods_of_columns = {"2025-07", "2025-02", "2025-07", ""};
  source_->issues = {{{.id = 1, .date = DayOf(4, 9)}, {.id = 1, .product = 7}}};
  EXPECT_EQ(Periods(), (std::set<std::string>{"2025-02", "2025-04", "2025-07"}));
}

std::string ThisMonth() {
  const std::time_t now = std::time(nullptr);
  char month[16];
  std::strftime(month, sizeof(month), "%Y-%m", std::localtime(&now));
  return month;
}

TEST_F(UsualRows, ThePeriodIsThisMonthAsLongAsThereAreNoBills) {
  source_->balances = {{.id = 2, .owner = 1, .product = 7}};
  const std::string before = ThisMonth();
  const std::set<std::string> periods = Periods();
  // The month may end just now.
  EXPECT_TRUE(periods == std::set<std::string>{before} || periods == std::set<std::string>{ThisMonth()});
}

TEST_F(UsualRows, BillsThatLackTheirPeriodAreInNone) {
  source_->receipts = {{{.id = 3}, {.id = 3, .product = 7}}};
  EXPECT_TRUE(Periods().empty());
}

TEST_F(UsualRows, AnInventoryWithoutAnyBillShowsWhatItBeginsWith) {
  source_->balances = {{.id = 1, .owner = 1, .product = 7, .carried_forward = {.quantity = 100}}};
  EXPECT_EQ(Journal("StoQty"), std::vector<std::string>{"100.00"});
  EXPECT_TRUE(told_.back().starts_with("已读入")) << told_.back();
  source_->balances.clear();
  EXPECT_EQ(Journal("StoQty"), std::vector<std::string>{"0.00"});
  for (const std::string& told : told_) EXPECT_EQ(told.find("读不到"), std::string::npos) << told;
}

TEST_F(UsualRows, TheSearchForPeriodsEndsWhenItsStatementIsCancelled) {
  class Long : public Plain {
   public:
    void Issues(const RowFilter&, const TakeLine& take) override {
      for (; given < 5000000; ++given) {
        if (given == 3000) connection->Cancel();
        take({.id = 1, .period = "2025-03"}, {.id = given, .product = 7});
      }
    }
    int64_t given = 0;
    platform::Connection* connection = nullptr;
  };
  const auto source = std::make_shared<Long>();
  const auto connection = OpenRowSource(source);
  source->connection = connection.get();
  EXPECT_THROW(connection->Execute("Select * From tqAccPeriod Order by AccPeriod"), platform::Error);
  EXPECT_LT(source->given, 500000);
}

TEST_F(UsualRows, TheSourceIsNotAskedWhileItAnswers) {
  class Busy : public Plain {
   public:
    void Receipts(const RowFilter& filter, const TakeLine& take) override {
      EXPECT_FALSE(answering);
      Plain::Receipts(filter, take);
    }
    void Balances(BalanceOwner owner, const RowFilter& filter, const Take<Balance>& take) override {
      EXPECT_FALSE(answering);
      answering = true;
      Plain::Balances(owner, filter, take);
      answering = false;
    }
    bool answering = false;
  };
  source_ = std::make_shared<Busy>();
  source_->receipts = {{{.id = 1, .date = DayOf(3, 8)}, {.id = 1, .product = 7, .quantity = 40}}};
  source_->balances = {{.id = 1, .owner = 1, .product = 7, .carried_forward = {.quantity = 1}},
                       {.id = 2, .owner = 2, .product = 7, .period = "2025-03", .carried_forward = {.quantity = 2}}};
  EXPECT_EQ(Journal("StoQty"), (std::vector<std::string>{"3.00", "43.00"}));
}

TEST_F(UsualRows, EveryMonthIsListedWithoutAWordOfPeriods) {
  source_->receipts = {{{.id = 1, .date = DayOf(3, 8)}, {.id = 1, .product = 7, .quantity = 40}},
                       {{.id = 2, .date = DayOf(5, 8)}, {.id = 2, .product = 7, .quantity = 2}}};
  source_->issues = {{{.id = 1, .date = DayOf(4, 9)}, {.id = 1, .product = 7, .quantity = 3}}};
  EXPECT_EQ(Journal("StoQty"), (std::vector<std::string>{"0.00", "40.00", "37.00", "39.00"}));
  EXPECT_TRUE(told_.back().starts_with("已读入")) << told_.back();
}

TEST_F(UsualRows, ABalanceWithoutAPeriodOpensTheEarliestOne) {
  source_->receipts = {{{.id = 1, .date = DayOf(3, 8)}, {.id = 1, .product = 7, .quantity = 40}}};
  source_->balances = {{.id = 1,
                        .owner = 1,
                        .product = 7,
                        .carried_forward = {.quantity = 100, .amount = base::Money::FromInteger(50)}}};
  EXPECT_EQ(Journal("StoQty"), (std::vector<std::string>{"100.00", "140.00"}));
}

TEST_F(UsualRows, TwoBillsUnderOneIdEndTheLoad) {
  source_->receipts = {{{.date = DayOf(3, 8), .number = "A"}, {.id = 1, .product = 7, .quantity = 40}},
                       {{.date = DayOf(4, 8), .number = "B"}, {.id = 2, .product = 7, .quantity = 2}}};
  Journal("StoQty");
  EXPECT_FALSE(loaded_);
  EXPECT_EQ(
      told_.back(),
      "RowSource::Receipts 给出了两张不同的单据，Bill::id 都是 0：每张单据须有自己的编号，同一张单据的各行给出同样的 "
      "Bill，请更正后再读入。");
}

TEST_F(UsualRows, TheLinesOfOneBillMayDifferInWhatIsNotTheBills) {
  const Bill bill{.id = 5, .date = DayOf(3, 8), .type = "入库单", .number = "A"};
  Bill explained = bill;
  explained.explain = "补录";
  source_->receipts = {{bill, {.id = 1, .product = 7, .quantity = 40}},
                       {explained, {.id = 2, .product = 7, .quantity = 2}}};
  source_->issues = {{{.id = 5, .date = DayOf(3, 9)}, {.id = 1, .product = 7, .quantity = 1}}};
  EXPECT_EQ(Journal("StoQty").back(), "41.00") << "an issue may have the id of a receipt";
}

TEST_F(UsualRows, ASourceThatSwallowsTheErrorOfTwoBillsEndsTheLoadAllTheSame) {
  class Swallowing : public Plain {
   public:
    void Receipts(const RowFilter& filter, const TakeLine& take) override {
      try {
        Plain::Receipts(filter, take);
      } catch (const platform::Error&) {
      }
    }
  };
  source_ = std::make_shared<Swallowing>();
  source_->receipts = {{{.date = DayOf(3, 8)}, {.id = 1, .product = 7}},
                       {{.date = DayOf(4, 8)}, {.id = 2, .product = 7}}};
  Journal("StoQty");
  EXPECT_FALSE(loaded_);
}

}  // namespace
}  // namespace stockbook::databases
