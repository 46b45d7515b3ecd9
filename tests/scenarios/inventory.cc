// SPDX-License-Identifier: MIT
#include "scenarios/inventory.h"

#include <map>
#include <set>
#include <stdexcept>

namespace stockbook::scenarios {
namespace {

using Columns = std::map<std::string, std::string>;

struct TableNames {
  const char* table;
  Columns columns;
};

const Columns kPartner = {{"partner", "KSID"}, {"name", "企业名称"}, {"class", "ClassCode"}};
const Columns kClass = {{"class", "ClassCode"}, {"name", "ClassName"}};

Columns OwnerBalance(const char* key) {
  return {{"period", "bnPeriod"},
          {"partner", key},
          {"project", key},
          {"product", "pdID"},
          {"price", "LastPrice"},
          {"quantity", "LastQuantity"},
          {"quantity2", "LastQuantity2"},
          {"amount", "LastAccount"},
          {"received", "SumRevQuantity"},
          {"received2", "SumRevQuantity2"},
          {"received amount", "SumRevAccount"},
          {"issued", "SumIssQuantity"},
          {"issued2", "SumIssQuantity2"}};
}

const std::map<std::string, TableNames>& Masters() {
  static const std::map<std::string, TableNames> kMasters = {
      {"periods", {"tqAccPeriod", {{"period", "AccPeriod"}}}},
      {"products",
       {"商品设置",
        {{"product", "pdID"},
         {"name", "商品名称"},
         {"number", "商品编号"},
         {"规格", "规格"},
         {"型号", "型号"},
         {"unit", "计量单位"},
         {"unit2", "计量2"}}}},
      {"depots", {"仓库设置", {{"depot", "dpID"}, {"name", "仓库名称"}}}},
      {"suppliers", {"厂商资料", kPartner}},
      {"customers", {"客户资料", kPartner}},
      {"projects",
       {"项目设置", {{"project", "项目ID"}, {"name", "项目名称"}, {"number", "项目编号"}, {"class", "ClassCode"}}}},
      {"supplier classes", {"厂商分类", kClass}},
      {"customer classes", {"客户分类", kClass}},
      {"project classes", {"项目分类", kClass}},
      {"depot balances",
       {"仓库余额表",
        {{"balance", "ID"},
         {"depot", "DpID"},
         {"product", "PdID"},
         {"period", "AccPeriod"},
         {"year", "年份"},
         {"month", "月份"},
         {"price", "上期库存单价"},
         {"quantity", "上期库存数量"},
         {"quantity2", "上期库存数量2"},
         {"amount", "上期库存金额"}}}},
      {"supplier balances", {"tqSuppBalance", OwnerBalance("ksID")}},
      {"customer balances", {"tqCustBalance", OwnerBalance("ksID")}},
      {"project balances", {"tqProjBalance", OwnerBalance("pjID")}},
  };
  return kMasters;
}

// Where a column of receipts or issues goes: the bill, its line, or both.
struct MovementColumn {
  const char* bill;
  const char* line;
};

const std::map<std::string, MovementColumn>& MovementColumns() {
  static const std::map<std::string, MovementColumn> kColumns = {
      {"bill", {"BillID", "BillID"}},
      {"line", {nullptr, "RecID"}},
      {"date", {"BillDate", nullptr}},
      {"period", {"AccPeriod", nullptr}},
      {"kind", {"单据类型", nullptr}},
      {"no", {"单据编号", nullptr}},
      {"type", {"类型", nullptr}},
      {"explain", {"说明", nullptr}},
      {"entered by", {"录入员", nullptr}},
      {"entered", {"录入日期", nullptr}},
      {"audited by", {"审核员", nullptr}},
      {"audited", {"审核日期", nullptr}},
      {"product", {nullptr, "pdID"}},
      {"depot", {"dpID", "dpID"}},
      {"partner", {"ksID", "ksID"}},
      {"project", {"pjID", "pjID"}},
      {"source", {nullptr, "OtherID"}},
      {"quantity", {nullptr, "数量"}},
      {"quantity2", {nullptr, "Qty2"}},
      {"price", {nullptr, "除税单价"}},
      {"amount", {nullptr, "除税金额"}},
      {"tax rate", {nullptr, "税率"}},
      {"tax", {nullptr, "税额"}},
      {"price with tax", {nullptr, "单价"}},
      {"amount with tax", {nullptr, "金额"}},
      {"handler", {nullptr, "经手人"}},
      {"handed to", {nullptr, "交接人"}},
      {"packing", {nullptr, "包装"}},
      {"place", {nullptr, "货位"}},
      {"term", {nullptr, "期限"}},
      {"serial no", {nullptr, "SerialNo"}},
      {"made", {nullptr, "ProductDate"}},
  };
  return kColumns;
}

// An empty cell is null, '' the empty text.
std::string Literal(const std::string& cell) {
  if (cell.empty()) return "NULL";
  if (cell == "''") return cell;
  std::string text = "'";
  for (const char c : cell) text += c == '\'' ? std::string("''") : std::string(1, c);
  return text + "'";
}

std::string InsertText(const std::string& table, const Columns& values) {
  std::string columns;
  std::string literals;
  for (const auto& [column, value] : values) {
    columns += (columns.empty() ? "" : ", ") + column;
    literals += (literals.empty() ? "" : ", ") + Literal(value);
  }
  return "INSERT INTO " + table + "(" + columns + ") VALUES (" + literals + ");";
}

template <typename Map>
const typename Map::mapped_type& Known(const Map& map, const std::string& name, const char* what) {
  const auto found = map.find(name);
  if (found == map.end()) throw std::runtime_error(std::string("There is no ") + what + " \"" + name + "\".");
  return found->second;
}

}  // namespace

Inventory::Inventory() { testing::CreateInventory(file_); }

std::string Inventory::ConnectionString(const std::string& dialect) const {
  return dialect == "server" ? file_.ServerString() : file_.DesktopString();
}

void Inventory::Fill(const std::string& name, const Table& table) {
  if (name == "receipts" || name == "issues") return FillMovements(name, table);
  const TableNames& names = Known(Masters(), name, "table");
  for (size_t row = 1; row < table.size(); ++row) {
    Columns values;
    for (size_t column = 0; column < table[0].size(); ++column)
      values[Known(names.columns, table[0][column], "column")] = table[row][column];
    file_.Run(InsertText(names.table, values));
  }
}

void Inventory::FillMovements(const std::string& name, const Table& table) {
  const size_t side = name == "receipts" ? 0 : 1;
  const std::string prefix = side == 0 ? "入库" : "出库";
  std::set<std::string> bills;
  for (size_t row = 1; row < table.size(); ++row) {
    Columns cells{{"product", "1"}, {"source", "0"}};
    for (size_t column = 0; column < table[0].size(); ++column) {
      if (!table[row][column].empty() || !cells.contains(table[0][column]))
        cells[table[0][column]] = table[row][column];
    }
    if (cells["bill"].empty()) cells["bill"] = std::to_string(next_bill_[side]++);
    if (cells["line"].empty()) cells["line"] = std::to_string(next_line_[side]++);
    const std::string date = cells["date"];
    if (cells["period"].empty()) cells["period"] = date.substr(0, 7);
    Columns bill{{"年份", date.substr(0, 4)},
                 {"月份", std::to_string(std::stoi(date.substr(5, 2)))},
                 {"日子", std::to_string(std::stoi(date.substr(8, 2)))}};
    Columns line;
    for (const auto& [column, cell] : cells) {
      const MovementColumn& goes = Known(MovementColumns(), column, "column");
      if (goes.bill != nullptr) bill[goes.bill] = cell;
      if (goes.line != nullptr) line[goes.line] = cell;
    }
    if (bills.insert(cells["bill"]).second) file_.Run(InsertText(prefix + "目录", bill));
    file_.Run(InsertText(prefix + "记录", line));
  }
}

}  // namespace stockbook::scenarios
