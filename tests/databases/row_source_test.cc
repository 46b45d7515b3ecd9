// SPDX-License-Identifier: MIT
// A connection over a host's own objects: what they are asked for, and what becomes of their answers.
#include "stockbook/databases/rows/row_source.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "databases/database_file.h"
#include "databases/dialect/dialect.h"
#include "databases/journal_statements.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/platform/error.h"
#include "support/fake_surroundings.h"

namespace stockbook::databases {
namespace {

using testing::AllRows;

base::Date Day(int year, int month, int day) { return *base::Date::FromParts({year, month, day}); }

std::string ListText(const char* name, const std::vector<int64_t>& numbers) {
  std::string text;
  for (const int64_t number : numbers) text += (text.empty() ? std::string(name) + "=" : ",") + std::to_string(number);
  return text.empty() ? text : " " + text;
}

std::string FilterText(const RowFilter& filter) {
  return ListText("id", filter.ids) + ListText("product", filter.products) + ListText("depot", filter.depots) +
         ListText("partner", filter.partners) + ListText("project", filter.projects) +
         (filter.last_period.empty() ? "" : " until=" + filter.last_period);
}

// Two bills of screws, and what was asked for.
class Shop : public RowSource {
 public:
  void Periods(const Take<std::string>& take) override {
    asked += "periods;";
    take("2025-03");
    take("2025-04");
  }
  void Receipts(const RowFilter& filter, const TakeLine& take) override {
    Ask("receipts", filter);
    if (on_receipts) on_receipts(take);
    const Bill bill{.id = 1,
                    .date = Day(2025, 3, 8),
                    .type = "入库单",
                    .number = "R1",
                    .depot = 3,
                    .partner = 5,
                    .audited_by = "王"};
    take(bill, {.id = 11, .product = 7, .quantity = 10, .amount = base::Money::FromInteger(25)});
    take(bill, {.id = 12, .product = 8, .depot = 4, .quantity = 1});
  }
  void Issues(const RowFilter& filter, const TakeLine& take) override {
    Ask("issues", filter);
    if (!RowFilter::Has(filter.products, 7)) return;
    take({.id = 1, .period = "2025-04", .date = Day(2025, 4, 1), .type = "出库单", .number = "I1", .partner = 6},
         {.id = 11, .product = 7, .origin = 11, .quantity = 4, .amount = base::Money::FromInteger(10)});
  }
  void Products(const RowFilter& filter, const Take<Product>& take) override {
    Ask("products", filter);
    take({.id = 7, .name = "螺钉", .number = "P7", .specification = "M8", .unit = "个"});
  }
  void Suppliers(const RowFilter& filter, const Take<Partner>& take) override {
    Ask("suppliers", filter);
    take({.id = 5, .name = "供方", .class_code = "01"});
  }
  void Classes(ClassTree tree, const Take<Class>& take) override {
    asked += "classes " + std::to_string(static_cast<int>(tree)) + ";";
    take({"01", "本地"});
  }
  void Balances(BalanceOwner owner, const RowFilter& filter, const Take<Balance>& take) override {
    Ask("balances " + std::to_string(static_cast<int>(owner)), filter);
    if (owner != BalanceOwner::kDepots) return;
    take({.id = 2,
          .owner = 3,
          .product = 7,
          .period = "2025-03",
          .price = 2.5,
          .carried_forward = {.quantity = 100, .amount = base::Money::FromInteger(250)}});
  }
  void BeginMoment() override { asked += "begin;"; }
  void EndMoment() override { asked += "end;"; }

  void Ask(const std::string& what, const RowFilter& filter) { asked += what + FilterText(filter) + ";"; }

  std::string asked;
  std::function<void(const TakeLine&)> on_receipts;
};

class RowSources : public ::testing::Test {
 protected:
  std::vector<std::string> Rows(std::string_view statement) { return AllRows(connection_->Execute(statement)); }
  // What the statement asks of the source.
  std::string Asked(std::string_view statement) {
    shop_->asked.clear();
    connection_->Execute(statement);
    return shop_->asked;
  }
  platform::Error ErrorOf(std::string_view statement) {
    try {
      connection_->Execute(statement);
    } catch (const platform::Error& error) {
      return error;
    }
    ADD_FAILURE() << "no error";
    return {"", ""};
  }

  std::shared_ptr<Shop> shop_ = std::make_shared<Shop>();
  std::unique_ptr<platform::Connection> connection_ = OpenRowSource(shop_);
};

constexpr const char* kCountReceipts = "SELECT Count(*) FROM 入库记录";

TEST_F(RowSources, GiveRowsThatStatementsRead) {
  EXPECT_EQ(Rows("SELECT RecID, BillID, pdID, dpID, ksID, pjID, 数量, 除税金额, 经手人 FROM 入库记录 ORDER BY RecID"),
            (std::vector<std::string>{"11|1|7|3|5|~|10|25|~", "12|1|8|4|5|~|1|~|~"}))
      << "a line without keys has those of its bill";
  EXPECT_EQ(Rows("SELECT BillID, AccPeriod, BillDate, 年份, 月份, 日子, 审核员, 说明 FROM 入库目录"),
            (std::vector<std::string>{"1|2025-03|2025-03-08|2025|3|8|王|~"}));
  EXPECT_EQ(Rows("SELECT 商品名称, 规格, 计量2, 重量 FROM 商品设置"), (std::vector<std::string>{"螺钉|M8|~|~"}));
  EXPECT_EQ(Rows("SELECT ID, 年份, 月份, 上期库存数量, 上期库存金额 FROM 仓库余额表"),
            (std::vector<std::string>{"2|2025|3|100|250"}));
  EXPECT_EQ(Rows("SELECT * FROM 厂商分类"), (std::vector<std::string>{"01|本地"}));
  EXPECT_EQ(Rows("SELECT Count(*) FROM 项目设置"), (std::vector<std::string>{"0"})) << "nothing is given of projects";
}

TEST_F(RowSources, AreToldWhatAJournalIsOf) {
  EXPECT_EQ(Asked(testing::MaterialJournal(Dialect::kDesktop, "7)", "2025-04")),
            "begin;receipts product=7 until=2025-04;issues product=7 until=2025-04;suppliers;end;");
  EXPECT_EQ(Asked(testing::SupplierJournal(Dialect::kDesktop, " Where Recs.ksID in (5,6) And Recs.pdID=7", "2025-03")),
            "begin;receipts product=7 partner=5,6 until=2025-03;suppliers;products;end;");
  EXPECT_EQ(Asked(testing::DepotBalance("7", "AND bn.DpID=3 ", "2025-03")),
            "begin;balances 0 product=7 depot=3 until=2025-03;end;");
  EXPECT_EQ(Asked("SELECT * FROM 商品设置 WHERE pdID=7"), "begin;products product=7;end;");
  EXPECT_EQ(Asked("SELECT r.RecID FROM 入库目录 AS d INNER JOIN 入库记录 AS r ON d.BillID = r.BillID WHERE r.RecID=11"),
            "begin;receipts id=11;end;");
  EXPECT_EQ(Asked("Select ClassName From 厂商分类 Where ClassCode='01'"), "begin;classes 1;end;");
}

TEST_F(RowSources, AreAskedForAllRowsWhereOthersCouldCount) {
  EXPECT_EQ(Asked("SELECT Count(*) FROM 入库目录, 入库记录 WHERE pdID=7"), "begin;receipts;end;");
  EXPECT_EQ(Asked("SELECT d.BillID FROM 入库目录 AS d LEFT JOIN 入库记录 AS r ON d.BillID=r.BillID WHERE r.pdID=7"),
            "begin;receipts;end;");
  EXPECT_EQ(Asked("SELECT 数量 FROM 入库记录 WHERE pdID=7 UNION SELECT 数量 FROM 入库记录 WHERE pdID=8"),
            "begin;receipts;end;");
  EXPECT_EQ(Asked("SELECT BillID FROM 入库目录 WHERE AccPeriod<='2025-03'"), "begin;receipts;end;");
}

TEST_F(RowSources, MayGiveMoreThanTheyAreAskedFor) {
  EXPECT_EQ(Rows("SELECT RecID FROM 入库记录 WHERE pdID=8"), (std::vector<std::string>{"12"}));
  EXPECT_EQ(Rows("SELECT RecID FROM 入库记录 WHERE pdID=9"), (std::vector<std::string>{}));
}

TEST_F(RowSources, AreReadAsOfOneMomentByALoadAndAnewByTheNext) {
  {
    const auto moment = connection_->ReadAsOfOneMoment();
    const auto inner = connection_->ReadAsOfOneMoment();
    Rows("SELECT * FROM tqAccPeriod");
    Rows("SELECT * FROM tqAccPeriod");
  }
  EXPECT_EQ(shop_->asked, "begin;periods;periods;end;");
  shop_->on_receipts = [](const RowSource::TakeLine& take) { take({.id = 9}, {.id = 99}); };
  EXPECT_EQ(Rows(kCountReceipts), (std::vector<std::string>{"3"}));
  shop_->on_receipts = {};
  EXPECT_EQ(Rows(kCountReceipts), (std::vector<std::string>{"2"}));
}

TEST_F(RowSources, EndAStatementWithTheirWordsAsAnErrorOfTheEngine) {
  shop_->on_receipts = [](const RowSource::TakeLine&) { throw std::runtime_error("仓库的服务没有回答"); };
  const platform::Error said = ErrorOf(kCountReceipts);
  EXPECT_STREQ(said.what(), "仓库的服务没有回答");
  EXPECT_TRUE(said.IsOfEngine());
  shop_->on_receipts = [](const RowSource::TakeLine&) { throw 7; };
  EXPECT_TRUE(std::string(ErrorOf(kCountReceipts).what()).find("未知错误") != std::string::npos);
  shop_->on_receipts = [](const RowSource::TakeLine&) {
    throw platform::Error("post", "正在记账", 0, platform::ErrorKind::kBusy);
  };
  EXPECT_EQ(ErrorOf(kCountReceipts).kind(), platform::ErrorKind::kBusy);
  shop_->on_receipts = {};
  EXPECT_EQ(Rows(kCountReceipts), (std::vector<std::string>{"2"}));
  EXPECT_TRUE(shop_->asked.ends_with("end;"));
}

TEST_F(RowSources, AreStoppedWhenTheStatementIsCancelled) {
  shop_->on_receipts = [&](const RowSource::TakeLine& take) {
    for (int64_t id = 1000;; ++id) {
      take({.id = 1}, {.id = id});
      if (id == 3000) connection_->Cancel();
    }
  };
  EXPECT_EQ(ErrorOf(kCountReceipts).kind(), platform::ErrorKind::kInterrupted);
  EXPECT_GE(connection_->RowsRead(), 2000U);
}

TEST_F(RowSources, MustGiveEveryLineAKeyOfItsOwn) {
  shop_->on_receipts = [](const RowSource::TakeLine& take) { take({.id = 9}, {.id = 11}); };
  const std::string said = ErrorOf(kCountReceipts).what();
  EXPECT_NE(said.find("RowSource::Receipts 给出了两行，Line::id 同为 11"), std::string::npos) << said;
}

TEST_F(RowSources, RefuseWhatADatabaseRefuses) {
  for (const char* statement : {"DELETE FROM 入库记录", "SELECT 没有 FROM 入库记录", "SELECT * FROM 没有", "SELEC 1"})
    EXPECT_EQ(ErrorOf(statement).kind(), platform::ErrorKind::kStatement) << statement;
  EXPECT_EQ(connection_->ConnectionString(), "Provider=Stockbook.Rows");
  EXPECT_THROW(OpenRowSource(shop_, "Timeout=soon"), platform::Error);
  for (const char* settings : {"x=1", "Dialect=Server", "Data Source=stock.db", "Timeout=5;Colour=red"})
    EXPECT_THROW(OpenRowSource(shop_, settings), platform::Error) << settings;
  EXPECT_NO_THROW(OpenRowSource(shop_, "timeout=5;Dialect=SQL"));
  EXPECT_THROW(OpenRowSource(nullptr), std::invalid_argument);
}

TEST_F(RowSources, AnswerTheServerDialectWhereTheSettingsSaySo) {
  connection_ = OpenRowSource(shop_, "Dialect=SQL");
  EXPECT_EQ(Rows("SELECT Convert(Char(10),BillDate,23) + 单据类型 FROM 入库目录"),
            (std::vector<std::string>{"2025-03-08入库单"}));
}

// A whole table, as columns.
class Tables : public Shop {
 public:
  std::optional<std::vector<platform::Field>> Columns(std::string_view table, const RowFilter& filter) override {
    if (table != "入库记录") return std::nullopt;
    Ask("columns", filter);
    columns::ColumnBuilder ids;
    columns::ColumnBuilder products;
    for (const int64_t id : {21, 22, 23}) {
      ids.AppendInteger(id);
      products.AppendInteger(7);
    }
    std::vector<platform::Field> fields;
    fields.push_back({has_key ? "recid" : "Nothing", ids.Finish()});
    fields.push_back({"pdID", products.Finish()});
    return fields;
  }
  bool has_key = true;
};

TEST_F(RowSources, MayGiveATableAsColumns) {
  const auto tables = std::make_shared<Tables>();
  connection_ = OpenRowSource(tables);
  EXPECT_EQ(Rows("SELECT RecID, pdID, 数量 FROM 入库记录 WHERE pdID=7 ORDER BY RecID"),
            (std::vector<std::string>{"21|7|~", "22|7|~", "23|7|~"}));
  EXPECT_EQ(tables->asked, "begin;columns product=7;end;");
  tables->has_key = false;
  EXPECT_NE(std::string(ErrorOf(kCountReceipts).what()).find("缺少键字段 RecID"), std::string::npos);
}

TEST_F(RowSources, FillAJournal) {
  testing::ControlOverFakes fakes;
  fakes.control->SetConn(std::shared_ptr<platform::Connection>(std::move(connection_)));
  ASSERT_TRUE(fakes.control->Load(7, 0));
  const auto cell = [&](int row, const char* key) { return fakes.fg.TextMatrix(row, fakes.fg.ColIndex(key)); };
  EXPECT_EQ(fakes.control->KeyName(), "螺钉");
  EXPECT_EQ(cell(1, "BillNo") + " " + cell(1, "StoQty") + " " + cell(1, "StoAcc"), "2025年03月期初 100 250");
  EXPECT_EQ(cell(3, "BillNo") + " " + cell(3, "Enterprise") + " " + cell(3, "StoQty"), "2025-03-08 入库单 R1 供方 110");
  EXPECT_EQ(cell(6, "BillNo") + " " + cell(6, "StoQty") + " " + cell(6, "StoAcc"), "2025-04-01 出库单 I1 106 265");
}

}  // namespace
}  // namespace stockbook::databases
