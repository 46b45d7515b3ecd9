// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_schema.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kKey = "INTEGER PRIMARY KEY";
constexpr std::string_view kWhole = "INTEGER";
constexpr std::string_view kText = "TEXT";
constexpr std::string_view kDate = "DATETIME TEXT";
constexpr std::string_view kMoney = "MONEY TEXT";
constexpr std::string_view kNumber = "REAL";

constexpr InventoryColumn kBills[] = {
    {"BillID", kKey},  {"AccPeriod", kText}, {"BillDate", kDate}, {"年份", kWhole},  {"月份", kWhole},
    {"日子", kWhole},  {"单据类型", kText},  {"单据编号", kText}, {"类型", kText},   {"说明", kText},
    {"dpID", kWhole},  {"ksID", kWhole},     {"pjID", kWhole},    {"录入员", kText}, {"录入日期", kDate},
    {"审核员", kText}, {"审核日期", kDate},
};

constexpr InventoryColumn kLines[] = {
    {"RecID", kKey},      {"BillID", kWhole},     {"pdID", kWhole},  {"dpID", kWhole},  {"ksID", kWhole},
    {"pjID", kWhole},     {"OtherID", kWhole},    {"数量", kNumber}, {"Qty2", kNumber}, {"除税单价", kNumber},
    {"除税金额", kMoney}, {"税率", kNumber},      {"税额", kMoney},  {"单价", kNumber}, {"金额", kMoney},
    {"经手人", kText},    {"交接人", kText},      {"包装", kText},   {"货位", kText},   {"期限", kText},
    {"SerialNo", kText},  {"ProductDate", kDate},
};

constexpr InventoryColumn kDepots[] = {{"dpID", kKey}, {"仓库名称", kText}};

constexpr InventoryColumn kPartners[] = {{"KSID", kKey}, {"企业名称", kText}, {"ClassCode", kText}};

constexpr InventoryColumn kProjects[] = {
    {"项目ID", kKey}, {"项目名称", kText}, {"项目编号", kText}, {"ClassCode", kText}};

constexpr InventoryColumn kProducts[] = {
    {"pdID", kKey},        {"商品名称", kText},   {"商品编号", kText},   {"规格", kText},       {"型号", kText},
    {"计量单位", kText},   {"计量2", kText},      {"计价方法", kText},   {"进位方法", kText},   {"最低库存", kNumber},
    {"最高库存", kNumber}, {"输入简码", kText},   {"KSID", kWhole},      {"默认单价", kNumber}, {"普通税率", kNumber},
    {"增值税率", kNumber}, {"购进单价", kNumber}, {"普购税率", kNumber}, {"增购税率", kNumber}, {"ClassCode", kText},
    {"单位数量", kNumber}, {"存放位置", kText},   {"商品条码", kText},   {"生产厂家", kText},   {"备注", kText},
    {"别名", kText},       {"颜色", kText},       {"重量", kNumber},     {"定义", kText},
};

constexpr InventoryColumn kClasses[] = {{"ClassCode", kText}, {"ClassName", kText}};

constexpr InventoryColumn kPeriods[] = {{"AccPeriod", kText}};

constexpr InventoryColumn kDepotBalances[] = {
    {"ID", kKey},
    {"DpID", kWhole},
    {"PdID", kWhole},
    {"AccPeriod", kText},
    {"年份", kWhole},
    {"月份", kWhole},
    {"上期库存单价", kNumber},
    {"上期库存数量", kNumber},
    {"上期库存数量2", kNumber},
    {"上期库存金额", kMoney},
    {"TotalRevQuantity", kNumber},
    {"TotalRevQuantity2", kNumber},
    {"TotalRevAccount", kMoney},
    {"TotalIssQuantity", kNumber},
    {"TotalIssQuantity2", kNumber},
    {"TotalIssAccount", kMoney},
};

// The partner and project balances differ only in the owner's column. SumIssAccount is kept for other programs.
constexpr std::array<InventoryColumn, 13> OwnerBalances(std::string_view owner) {
  return {{{"bnPeriod", kText},
           {owner, kWhole},
           {"pdID", kWhole},
           {"LastPrice", kNumber},
           {"LastQuantity", kNumber},
           {"LastQuantity2", kNumber},
           {"LastAccount", kMoney},
           {"SumRevQuantity", kNumber},
           {"SumRevQuantity2", kNumber},
           {"SumRevAccount", kMoney},
           {"SumIssQuantity", kNumber},
           {"SumIssQuantity2", kNumber},
           {"SumIssAccount", kMoney}}};
}
constexpr auto kPartnerBalances = OwnerBalances("ksID");
constexpr auto kProjectBalances = OwnerBalances("pjID");

constexpr std::array<InventoryTable, kTableCount> kTables{{
    {"入库目录", kBills},
    {"出库目录", kBills},
    {"入库记录", kLines},
    {"出库记录", kLines},
    {"仓库设置", kDepots},
    {"厂商资料", kPartners},
    {"客户资料", kPartners},
    {"项目设置", kProjects},
    {"商品设置", kProducts},
    {"商品分类", kClasses},
    {"厂商分类", kClasses},
    {"客户分类", kClasses},
    {"项目分类", kClasses},
    {"tqAccPeriod", kPeriods},
    {"仓库余额表", kDepotBalances},
    {"tqSuppBalance", kPartnerBalances},
    {"tqCustBalance", kPartnerBalances},
    {"tqProjBalance", kProjectBalances},
}};

constexpr InventoryIndex kIndexes[] = {
    {TableName::ReceiptLines, "pdID", "pdID"},
    {TableName::ReceiptLines, "BillID", "BillID"},
    {TableName::ReceiptLines, "ksID", "ksID"},
    {TableName::ReceiptLines, "pjID", "pjID"},
    {TableName::IssueLines, "pdID", "pdID"},
    {TableName::IssueLines, "BillID", "BillID"},
    {TableName::IssueLines, "ksID", "ksID"},
    {TableName::IssueLines, "pjID", "pjID"},
    {TableName::Periods, "AccPeriod", "AccPeriod"},
    {TableName::DepotBalances, "PdID", "PdID, AccPeriod"},
    {TableName::SupplierBalances, "ksID", "ksID, pdID"},
    {TableName::CustomerBalances, "ksID", "ksID, pdID"},
    {TableName::ProjectBalances, "pdID", "pdID, pjID"},
};

}  // namespace

const InventoryTable& InventoryTableOf(TableName name) { return kTables[static_cast<size_t>(name)]; }

std::string CreateStatement(const InventoryTable& table) {
  std::string text = "CREATE TABLE " + std::string(table.name) + "(";
  for (size_t index = 0; index < table.columns.size(); ++index) {
    const InventoryColumn& column = table.columns[index];
    text.append(index == 0 ? "" : ", ").append(column.name).append(" ").append(column.type);
  }
  return text + ")";
}

std::string InsertStatement(const InventoryTable& table) {
  std::string text = "INSERT INTO " + std::string(table.name) + " VALUES(";
  for (size_t index = 0; index < table.columns.size(); ++index) text += index == 0 ? "?" : ",?";
  return text + ")";
}

std::span<const InventoryIndex> InventoryIndexes() { return kIndexes; }

std::string CreateStatement(const InventoryIndex& index) {
  const std::string table(InventoryTableOf(index.table).name);
  return "CREATE INDEX " + table + "_" + std::string(index.suffix) + " ON " + table + "(" + std::string(index.columns) +
         ")";
}

}  // namespace stockbook::app
