// SPDX-License-Identifier: MIT
#include "schema/schema_page.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "databases/inventory/inventory_schema.h"
#include "journal/class_filters.h"
#include "journal/issue_source.h"
#include "journal/opening_balance.h"
#include "journal/periods.h"
#include "journal/query_builder.h"
#include "journal/subjects.h"
#include "stockbook/databases/rows/row_source.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::InventoryColumn;
using databases::InventoryTable;

constexpr const char* kHead = R"(# 数据库结构 · The schema

本页由 `tools/draw-schema` 根据代码生成：控件读取的全部表和字段，以及它发出的语句。自己的连接可以直接执行这些语句；
不想理会 SQL 的程序，实现 `RowSource`（`include/stockbook/databases/rows/row_source.h`）即可，其中的名称列于最后一节。

This page is made from the code by `tools/draw-schema`: every table and field that the control reads, and the statements
that it sends. A connection of one's own runs these statements; a program that wants no SQL implements `RowSource`
(`include/stockbook/databases/rows/row_source.h`), whose names are in the last section. What the languages of the
statements mean is on the page of the [dialects](dialects.md); what the columns of the journal hold, in the
[glossary](glossary.md).

键是整数；会计期间是按文本排序的文本；金额是四位小数的定点数。没有值的字段为 NULL。
Keys are whole numbers; accounting periods are texts that sort in the order of time; amounts are exact to four decimals.
A field without a value is NULL.
)";

std::string TypeWords(const InventoryColumn& column) {
  if (column.type == databases::kKeyColumn) return "整数，键 · whole number, key";
  if (column.type == "INTEGER") return "整数 · whole number";
  if (column.type == "REAL") return "数字 · number";
  if (column.type == "MONEY TEXT") return "金额 · amount";
  if (column.type == "DATETIME TEXT") return "日期 · date";
  return "文本 · text";
}

std::string TableText(const InventoryTable& table) {
  std::string text = "\n### " + std::string(table.name) + "\n\n" + std::string(table.chinese) + " · " +
                     std::string(table.english) + "。键 · key: `" + std::string(table.keys) + "`\n\n" +
                     "| 字段 · Field | 类型 · Type | 含义 | Meaning |\n|---|---|---|---|\n";
  for (const InventoryColumn& column : table.columns) {
    text += "| `" + std::string(column.name) + "` | " + TypeWords(column) + " | " + std::string(column.chinese) +
            " | " + std::string(column.english) + " |\n";
  }
  return text;
}

// Enough of an inventory for every look-up to find something.
class ExampleRows : public databases::RowSource {
 public:
  void Periods(const Take<std::string>& take) override {
    take("2025-01");
    take("2025-12");
  }
  void Receipts(const databases::RowFilter&, const TakeLine& take) override { take({.id = 1}, {.id = 17}); }
  void Issues(const databases::RowFilter&, const TakeLine&) override {}
  void Suppliers(const databases::RowFilter&, const Take<databases::Partner>& take) override {
    for (const int64_t key : {5, 6}) take({.id = key, .class_code = "01"});
  }
  void Customers(const databases::RowFilter&, const Take<databases::Partner>& take) override {
    for (const int64_t key : {7, 8}) take({.id = key, .class_code = "01"});
  }
  void Projects(const databases::RowFilter&, const Take<databases::Project>& take) override {
    for (const int64_t key : {3, 4}) take({.id = key, .class_code = "01"});
  }
  void Balances(databases::BalanceOwner, const databases::RowFilter&, const Take<databases::Balance>& take) override {
    take({.id = 4, .owner = 1, .product = 35, .period = "2025-01"});
  }
};

// Keeps what is sent.
class Recorder : public platform::Connection {
 public:
  explicit Recorder(bool server)
      : rows_(databases::OpenRowSource(std::make_shared<ExampleRows>(), server ? "Dialect=SQL" : "")) {}
  std::string ConnectionString() const override { return rows_->ConnectionString(); }
  platform::Recordset Execute(std::string_view statement, int options) override {
    sent.emplace_back(statement);
    return rows_->Execute(statement, options);
  }
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override { return rows_->ReadAsOfOneMoment(); }

  std::vector<std::string> sent;

 private:
  std::unique_ptr<platform::Connection> rows_;
};

// A part of the page: statements that have not been shown before, under a heading.
class Statements {
 public:
  void Add(const std::string& heading, const std::vector<std::string>& statements) {
    std::string blocks;
    for (const std::string& statement : statements) {
      if (std::find(shown_.begin(), shown_.end(), statement) != shown_.end()) continue;
      shown_.push_back(statement);
      blocks += "\n```sql\n" + statement + "\n```\n";
    }
    if (!blocks.empty()) text_ += "\n### " + heading + "\n" + blocks;
  }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
  std::vector<std::string> shown_;
};

struct JournalName {
  base::tqJournalTypeContants type;
  const char* name;
};
constexpr JournalName kJournals[] = {
    {base::MaterialJournal, "商品日记账 · journal of a product"},
    {base::SupplierJournal, "厂商日记账 · journal of a supplier"},
    {base::CustomerJournal, "客户日记账 · journal of a customer"},
    {base::ProjectJournal, "项目日记账 · journal of a project"},
};

// What the work sends; a statement that the language refuses has been sent all the same.
std::vector<std::string> SentBy(bool server, const std::function<void(platform::Connection&)>& work) {
  Recorder recorder(server);
  try {
    work(recorder);
  } catch (const platform::Error&) {
  }
  return recorder.sent;
}

void AddJournal(const JournalName& journal, bool server, Statements& statements) {
  const std::string language = server ? "，服务器语言 · server dialect" : "，桌面语言 · desktop dialect";
  const std::pair<journal::SubjectKeys, const char*> subjects[] = {
      {{35, 2, ""}, "KeyID = 35, dpID = 2"}, {{35, 0, "01"}, "KeyID = 35, dpID = 0, dpCode = 01"}};
  for (const auto& [keys, words] : subjects) {
    std::vector<std::string> built;
    // The period, the members of a class and the journal are shown apart.
    SentBy(server, [&, &subject = keys](platform::Connection& connection) {
      built.push_back(journal::QueryBuilder(&connection, journal.type, subject).Build());
      built.push_back(journal::BuildBalanceStatement(&connection, journal.type, subject, "2025-01"));
    });
    statements.Add(std::string(journal.name) + language + "；" + words, built);
  }
}

void AddLookUps(Statements& statements) {
  statements.Add("会计期间：最新的和最早的 · the newest and the earliest accounting period",
                 SentBy(false, [](platform::Connection& connection) {
                   journal::NewestAccPeriod(&connection);
                   journal::EarliestAccPeriod(&connection);
                 }));
  statements.Add("标题 · the header", SentBy(false, [](platform::Connection& connection) {
                   for (const JournalName& journal : kJournals) {
                     const journal::Subjects subjects(&connection, journal.type);
                     subjects.Read(35, journal::SecondUnit::kShown);
                     if (journal.type != base::MaterialJournal) subjects.ReadMember(5);
                     subjects.DepotName({35, 2, "01"});
                     subjects.DepotName({35, 0, "01"});
                     subjects.SecondKeyClassCode(2, {});
                     subjects.ClassNames("0101");
                   }
                 }));
  statements.Add("分类的成员 · the members of a class", SentBy(false, [](platform::Connection& connection) {
                   journal::PartnerKeyList(&connection, base::SupplierJournal, "01");
                   journal::PartnerKeyList(&connection, base::CustomerJournal, "01");
                   journal::SupplierKeyList(&connection, "01");
                   journal::CustomerKeyList(&connection, "01");
                   journal::ProjectKeyList(&connection, "01");
                 }));
  statements.Add("出库的来源 · where issued stock came from",
                 SentBy(false, [](platform::Connection& connection) { journal::IssueSource(&connection, 17); }));
  statements.Add("出库的来源：期初库存 · where it came from: an opening stock",
                 SentBy(false, [](platform::Connection& connection) { journal::IssueSource(&connection, -4); }));
}

constexpr const char* kRowNames = R"(
## `RowSource`

| 表 · Tables | 函数 · Function | 结构 · Struct |
|---|---|---|
| `入库目录`, `入库记录` | `Receipts` | `Bill`, `Line` |
| `出库目录`, `出库记录` | `Issues` | `Bill`, `Line` |
| `仓库设置` | `Depots` | `Depot` |
| `厂商资料`, `客户资料` | `Suppliers`, `Customers` | `Partner` |
| `项目设置` | `Projects` | `Project` |
| `商品设置` | `Products` | `Product` |
| `商品分类`, `厂商分类`, `客户分类`, `项目分类` | `Classes` | `Class` |
| `tqAccPeriod` | `Periods` | `std::string` |
| `仓库余额表`, `tqSuppBalance`, `tqCustBalance`, `tqProjBalance` | `Balances` | `Balance` |
)";

}  // namespace

std::string SchemaPage() {
  std::string page = std::string(kHead) + "\n## 表 · Tables\n";
  for (size_t table = 0; table < databases::kTableCount; ++table)
    page += TableText(databases::InventoryTableOf(static_cast<databases::TableName>(table)));
  Statements statements;
  AddLookUps(statements);
  for (const JournalName& journal : kJournals) {
    for (const bool server : {false, true}) AddJournal(journal, server, statements);
  }
  page +=
      "\n## 语句 · Statements\n\n每种日记账有两条：日记账的，和期初余额的。与前面相同的不再列出。\n"
      "Two for each journal: its own, and that of its opening balance. One that is the same as before is not "
      "repeated.\n";
  return page + statements.text() + kRowNames;
}

}  // namespace stockbook::testing
