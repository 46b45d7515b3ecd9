// SPDX-License-Identifier: MIT
#include "end_to_end/inventory_maker.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace stockbook::end_to_end {
namespace {

std::string TypeOf(const app::InventoryColumn& column, Declared declared) {
  std::string type(column.type);
  const bool money = type.find("MONEY") != std::string::npos;
  switch (declared) {
    case Declared::kUsual:
      return type;
    case Declared::kWithoutKeys:
      return type.starts_with("INTEGER") ? "INTEGER" : type;
    case Declared::kNothing:
      return {};
    case Declared::kRealMoney:
      return money ? "REAL" : type;
    case Declared::kIntegerMoney:
      return money ? "INTEGER" : type;
    case Declared::kNumericMoney:
      return money ? "MONEY" : type;
    case Declared::kTextKeys:
      return type.starts_with("INTEGER") ? "TEXT" : type;
    case Declared::kTextMasters:
      return type == "INTEGER PRIMARY KEY" ? "TEXT PRIMARY KEY" : type;
  }
  return type;
}

void Merge(Literals& values, const Literals& more) {
  for (const auto& [column, literal] : more) values[column] = literal;
}

}  // namespace

std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("''") : std::string(1, c);
  return quoted + "'";
}

InventoryMaker::InventoryMaker(const std::string& path, Declared declared) {
  EXPECT_EQ(sqlite3_open(path.c_str(), &database_), SQLITE_OK) << path;
  Run("PRAGMA synchronous = OFF; PRAGMA journal_mode = OFF; BEGIN");
  for (size_t table = 0; table < app::kTableCount; ++table) {
    const app::InventoryTable& definition = app::InventoryTableOf(static_cast<app::TableName>(table));
    std::string columns;
    for (const app::InventoryColumn& column : definition.columns) {
      columns += (columns.empty() ? "" : ", ") + std::string(column.name) + " " + TypeOf(column, declared);
    }
    Run("CREATE TABLE " + std::string(definition.name) + "(" + columns + ")");
  }
}

InventoryMaker::~InventoryMaker() {
  Run("COMMIT");
  sqlite3_close(database_);
}

void InventoryMaker::Run(const std::string& sql) {
  EXPECT_EQ(sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(database_) << ": " << sql.substr(0, 500);
}

void InventoryMaker::Insert(std::string_view table, const Literals& values) {
  std::string columns;
  std::string literals;
  for (const auto& [column, literal] : values) {
    columns += (columns.empty() ? "" : ", ") + column;
    literals += (literals.empty() ? "" : ", ") + literal;
  }
  Run("INSERT INTO " + std::string(table) + "(" + columns + ") VALUES (" + literals + ")");
}

void InventoryMaker::AddMasters() {
  Run("INSERT INTO 仓库设置(dpID, 仓库名称) VALUES (1, '总库');"
      "INSERT INTO 厂商资料(KSID, 企业名称, ClassCode) VALUES (1, '供方', '01');"
      "INSERT INTO 客户资料(KSID, 企业名称, ClassCode) VALUES (1, '客户', '01');"
      "INSERT INTO 项目设置(项目ID, 项目名称, 项目编号, ClassCode) VALUES (1, '工程', 'XM1', '01');"
      "INSERT INTO 商品设置(pdID, 商品名称, 商品编号, 规格, 型号, 计量单位, 计量2) VALUES (1, '螺栓', 'P1', 'M8', "
      "'GB', '个', '箱');"
      "INSERT INTO tqAccPeriod VALUES ('2025-01'), ('2025-02'), ('2025-03')");
}

void InventoryMaker::AddReceipt(int number, const std::string& date, const Literals& line, const Literals& bill) {
  AddMovement("入库", number, date, "入库单", line, bill);
}

void InventoryMaker::AddIssue(int number, const std::string& date, const Literals& line, const Literals& bill) {
  AddMovement("出库", number, date, "出库单", line, bill);
}

void InventoryMaker::AddMovement(const char* side, int number, const std::string& date, const char* kind,
                                 const Literals& line, const Literals& bill) {
  const std::string key = std::to_string(number);
  Literals of_bill{{"BillID", key},
                   {"AccPeriod", Quoted(date.substr(0, 7))},
                   {"BillDate", Quoted(date)},
                   {"单据类型", Quoted(kind)},
                   {"单据编号", Quoted("N" + key)},
                   {"dpID", "1"},
                   {"ksID", "1"},
                   {"pjID", "1"}};
  Merge(of_bill, bill);
  Literals of_line{{"RecID", key}, {"BillID", key}, {"pdID", "1"}, {"dpID", "1"}, {"ksID", "1"}, {"pjID", "1"}};
  Merge(of_line, line);
  Insert(std::string(side) + "目录", of_bill);
  Insert(std::string(side) + "记录", of_line);
}

}  // namespace stockbook::end_to_end
