// SPDX-License-Identifier: MIT
// What a journal of a host's own objects does not list is said, once, with the place where it is to be mended.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "stockbook/columns/column_builder.h"
#include "stockbook/databases/rows/row_source.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"

namespace stockbook::databases {
namespace {

using Told = std::vector<std::string>;
using Movement = std::pair<Bill, Line>;

base::Date InMarch(int day) { return *base::Date::FromParts({2025, 3, day}); }

Movement Moved(int64_t bill, std::string period, int64_t line, int64_t product = 7) {
  return {{.id = bill, .period = std::move(period), .type = "单", .number = std::to_string(bill)},
          {.id = line, .product = product, .quantity = 1}};
}

// Gives all it has, whatever is asked.
class Careless : public RowSource {
 public:
  void Periods(const Take<std::string>& take) override {
    for (const std::string& period : periods) take(period);
  }
  void Receipts(const RowFilter&, const TakeLine& take) override { Give(receipts, take); }
  void Issues(const RowFilter&, const TakeLine& take) override { Give(issues, take); }
  void Products(const RowFilter&, const Take<Product>& take) override { take({.id = 7, .name = "螺钉"}); }
  std::optional<std::vector<platform::Field>> Columns(std::string_view table, const RowFilter&) override {
    const auto found = tables.find(std::string(table));
    if (found == tables.end()) return std::nullopt;
    std::vector<platform::Field> fields;
    for (const auto& [name, values] : found->second) {
      columns::ColumnBuilder builder;
      for (const base::Value& value : values) builder.Append(value);
      fields.push_back({name, builder.Finish()});
    }
    return fields;
  }

  std::vector<std::string> periods = {"2025-03", "2025-04"};
  std::vector<Movement> receipts = {Moved(1, "2025-03", 11)};
  std::vector<Movement> issues = {Moved(1, "2025-04", 11)};
  std::map<std::string, std::vector<std::pair<std::string, std::vector<base::Value>>>> tables;

 private:
  static void Give(const std::vector<Movement>& movements, const TakeLine& take) {
    for (const auto& [bill, line] : movements) take(bill, line);
  }
};

std::vector<base::Value> Numbers(const std::vector<int64_t>& numbers) {
  std::vector<base::Value> values;
  for (const int64_t number : numbers) values.emplace_back(number);
  return values;
}

class LeftOut : public ::testing::Test {
 protected:
  // What a load says after that it has loaded.
  Told ToldBy(base::tqJournalTypeContants type, int32_t key, int32_t second_key = 0) const {
    testing::ControlOverFakes fakes;
    testing::EventRecorder heard;
    fakes.control->SetConn(std::shared_ptr<platform::Connection>(OpenRowSource(source_)));
    fakes.control->SetJournalType(type);
    fakes.control->AddListener(&heard);
    EXPECT_TRUE(fakes.control->Load(key, second_key));
    fakes.control->RemoveListener(&heard);
    Told told = heard.Of("Notify");
    size_t loaded = 0;
    while (loaded < told.size() && !told[loaded].starts_with("已读入")) ++loaded;
    EXPECT_LT(loaded, told.size()) << "it says that it has loaded";
    if (loaded < told.size()) told.erase(told.begin(), told.begin() + static_cast<std::ptrdiff_t>(loaded) + 1);
    return told;
  }
  Told ToldByTheProduct() const { return ToldBy(base::MaterialJournal, 7); }

  // The receipts as two tables: the bills 1 and 2, and four lines of which the last two have no bill.
  void GiveReceiptsAsColumns() {
    source_->tables["入库目录"] = {
        {"BillID", Numbers({1, 2})},
        {"AccPeriod", {base::Value(std::string("2025-03")), base::Value(std::string("2025-04"))}}};
    std::vector<base::Value> bills_of_lines = Numbers({1, 2, 99});
    bills_of_lines.emplace_back();
    source_->tables["入库记录"] = {
        {"RecID", Numbers({21, 22, 23, 24})}, {"BillID", std::move(bills_of_lines)}, {"pdID", Numbers({7, 7, 7, 7})}};
  }

  std::shared_ptr<Careless> source_ = std::make_shared<Careless>();
};

TEST_F(LeftOut, NothingIsSaidWhereEverythingIsListed) {
  EXPECT_EQ(ToldByTheProduct(), Told());
  source_->receipts.push_back({{.id = 2, .date = InMarch(8)}, {.id = 12, .product = 7}});
  EXPECT_EQ(ToldByTheProduct(), Told()) << "the date says the period";
}

TEST_F(LeftOut, BillsWithNeitherPeriodNorDateAreCounted) {
  for (const int64_t id : {19, 17, 18}) source_->receipts.push_back(Moved(id, "", 100 + id));
  source_->receipts.push_back(Moved(17, "", 200));
  EXPECT_EQ(ToldByTheProduct(), (Told{"有 3 张入库单据没有会计期间（Bill::id 17 等），没有列出：请在 "
                                      "RowSource::Receipts 中给出 Bill::period 或 Bill::date。"}))
      << "bills, and not lines";
  source_->receipts.resize(1);
  source_->issues.push_back(Moved(9, "", 12));
  EXPECT_EQ(ToldByTheProduct(), (Told{"有 1 张出库单据没有会计期间（Bill::id 9），没有列出：请在 RowSource::Issues "
                                      "中给出 Bill::period 或 Bill::date。"}));
}

TEST_F(LeftOut, BillsOfPeriodsThatAreNotGivenAreCounted) {
  source_->issues.push_back(Moved(2, "2025-05", 12));
  source_->issues.push_back(Moved(3, "2025-06", 13));
  EXPECT_EQ(
      ToldByTheProduct(),
      (Told{"有 2 张出库单据的会计期间晚于最后的会计期间 2025-04（Bill::id 2 等，最晚为 2025-06），没有列出：请在 "
            "RowSource::Periods 中补上这些期间，或更正 Bill::period 或 Bill::date。"}));
}

TEST_F(LeftOut, WithoutAnyPeriodTheFunctionThatGivesThemIsNamed) {
  source_->periods.clear();
  source_->receipts.push_back(Moved(2, "", 12));
  const Told told = ToldByTheProduct();
  ASSERT_EQ(told.size(), 3U);
  EXPECT_EQ(told[0],
            "没有会计期间，有 2 张入库单据（Bill::id 1 等）没有列出：请在 RowSource::Periods 中给出会计期间。");
  EXPECT_EQ(told[1], "没有会计期间，有 1 张出库单据（Bill::id 1）没有列出：请在 RowSource::Periods 中给出会计期间。");
  EXPECT_TRUE(told[2].starts_with("读不到期初余额")) << told[2];
}

TEST_F(LeftOut, OnlyBillsOfTheJournalAreCounted) {
  source_->receipts.push_back(Moved(2, "", 12, 8));
  EXPECT_EQ(ToldByTheProduct(), Told()) << "of another product";
  source_->receipts.push_back(Moved(3, "", 13));
  source_->receipts.back().first.depot = 4;
  source_->receipts.back().first.partner = 5;
  EXPECT_EQ(ToldByTheProduct().size(), 1U);
  EXPECT_EQ(ToldBy(base::MaterialJournal, 7, 4).size(), 1U);
  EXPECT_EQ(ToldBy(base::MaterialJournal, 7, 3), Told()) << "of another depot";
  EXPECT_EQ(ToldBy(base::SupplierJournal, 7, 5).size(), 1U);
  EXPECT_EQ(ToldBy(base::SupplierJournal, 7, 6), Told()) << "of another supplier";
  EXPECT_EQ(ToldBy(base::CustomerJournal, 7, 5), Told()) << "which has no receipts";
  EXPECT_EQ(ToldBy(base::ProjectJournal, 7, 0).size(), 1U);
}

TEST_F(LeftOut, OfColumnsTheTablesAndFieldsAreNamed) {
  GiveReceiptsAsColumns();
  EXPECT_EQ(ToldByTheProduct(), (Told{"有 2 条入库单据的记录找不到单据（RecID 23 等），没有列出：请在 "
                                      "RowSource::Columns 给出的表“入库目录”中给出这些单据，或更正表“入库记录”的字段 "
                                      "BillID。"}));
  auto& lines = source_->tables["入库记录"];
  lines[1].second = Numbers({1, 2, 1, 2});
  EXPECT_EQ(ToldByTheProduct(), Told());
  lines[1].second = {base::Value(std::string("2")), base::Value(int64_t{1}), base::Value(2.0), base::Value(int64_t{1})};
  auto& bills = source_->tables["入库目录"];
  bills[0].second = Numbers({2, 1});
  EXPECT_EQ(ToldByTheProduct(), Told()) << "whatever their order and type";
  bills[0].second = Numbers({1, 2});
  bills[1].second = {base::Value(), base::Value(std::string("2025-05"))};
  EXPECT_EQ(ToldByTheProduct(),
            (Told{"有 1 张入库单据没有会计期间（BillID 1），没有列出：请在 RowSource::Columns "
                  "给出的表“入库目录”中填写字段 AccPeriod。",
                  "有 1 张入库单据的会计期间晚于最后的会计期间 2025-04（BillID 2，最晚为 2025-05），没有列出：请在 "
                  "RowSource::Periods 或表“tqAccPeriod”中补上这些期间，或更正表“入库目录”的字段 AccPeriod。"}));
  source_->periods.clear();
  EXPECT_EQ(ToldByTheProduct().front(),
            "没有会计期间，有 2 张入库单据（BillID 1 等）没有列出：请在 RowSource::Periods "
            "或表“tqAccPeriod”中给出会计期间。");
}

TEST_F(LeftOut, LinesAndBillsThatComeDifferentWaysAreComparedToo) {
  GiveReceiptsAsColumns();
  source_->tables.erase("入库目录");
  EXPECT_EQ(ToldByTheProduct(), (Told{"有 3 条入库单据的记录找不到单据（RecID 22 等），没有列出：请在 "
                                      "RowSource::Receipts 中给出这些单据，或更正表“入库记录”的字段 BillID。"}));
  GiveReceiptsAsColumns();
  source_->tables.erase("入库记录");
  source_->receipts.push_back(Moved(5, "2025-03", 12));
  EXPECT_EQ(ToldByTheProduct(), (Told{"有 1 条入库单据的记录找不到单据（Line::id 12），没有列出：请在 "
                                      "RowSource::Columns 给出的表“入库目录”中给出这些单据，或更正 "
                                      "RowSource::Receipts 的 Bill::id。"}));
}

TEST_F(LeftOut, OtherStatementsThanJournalsRemarkNothing) {
  GiveReceiptsAsColumns();
  source_->receipts.push_back(Moved(2, "", 12));
  source_->issues.push_back(Moved(2, "", 12));
  source_->issues.push_back(Moved(3, "2025-05", 13));
  const auto connection = OpenRowSource(source_);
  for (const char* statement :
       {"SELECT BillID FROM 出库目录 WHERE AccPeriod<='2025-04'", "SELECT Count(*) FROM 出库记录",
        "SELECT r.RecID FROM 出库目录 AS d INNER JOIN 出库记录 AS r ON d.BillID = r.BillID WHERE r.RecID=12",
        "SELECT r.RecID FROM 入库目录 AS d INNER JOIN 入库记录 AS r ON d.BillID = r.BillID WHERE r.pdID=7",
        "SELECT r.RecID FROM 出库目录 AS d INNER JOIN 出库记录 AS r ON d.BillID = r.BillID WHERE d.AccPeriod='2025-04'",
        "Select * From tqAccPeriod Order by AccPeriod"})
    EXPECT_EQ(connection->Execute(statement).Remarks(), Told()) << statement;
  const char* const journal =
      "SELECT r.RecID FROM 出库目录 AS d INNER JOIN 出库记录 AS r ON d.BillID = r.BillID WHERE d.AccPeriod<='2025-04'";
  EXPECT_EQ(connection->Execute(journal).Remarks().size(), 2U);
}

// The function that gives a row is named, and the table only to whoever gives tables.
TEST_F(LeftOut, ARowThatComesTwiceIsNamedByItsMember) {
  const auto said = [&](const char* statement) -> std::string {
    try {
      OpenRowSource(source_)->Execute(statement);
    } catch (const std::exception& error) {
      return error.what();
    }
    return "nothing";
  };
  source_->issues.push_back(Moved(1, "2025-04", 11));
  EXPECT_EQ(said("SELECT Count(*) FROM 出库记录"),
            "RowSource::Issues 给出了两行，Line::id 同为 11：每一行须有自己的编号，请更正后再读入。");
  source_->tables["出库目录"] = {{"BillID", Numbers({4, 5, 4})}};
  EXPECT_EQ(said("SELECT Count(*) FROM 出库目录"),
            "表“出库目录”中有两行的键 BillID 同为 4：每一行须有自己的编号，请更正后再读入。");
}

}  // namespace
}  // namespace stockbook::databases
