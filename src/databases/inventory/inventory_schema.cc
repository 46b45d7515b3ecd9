// SPDX-License-Identifier: MIT
#include "databases/inventory/inventory_schema.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace stockbook::databases {
namespace {

constexpr std::string_view kWhole = "INTEGER";
constexpr std::string_view kText = "TEXT";
constexpr std::string_view kDate = "DATETIME TEXT";
constexpr std::string_view kMoney = "MONEY TEXT";
constexpr std::string_view kNumber = "REAL";

constexpr InventoryColumn kBills[] = {
    {"BillID", kKeyColumn, "单据的键", "key of the bill"},
    {"AccPeriod", kText, "记账的会计期间", "accounting period that the bill is posted in"},
    {"BillDate", kDate, "单据日期", "date of the bill"},
    {"年份", kWhole, "单据日期的年", "year of the bill's date"},
    {"月份", kWhole, "单据日期的月", "month of the bill's date"},
    {"日子", kWhole, "单据日期的日", "day of the bill's date"},
    {"单据类型", kText, "单据类型的名称：入库单、采购单、出库单、销售单、调拨单，或别的",
     "name of the bill's type: 入库单 (receipt), 采购单 (purchase), 出库单 (issue), 销售单 (sale), 调拨单 (transfer), "
     "or "
     "another"},
    {"单据编号", kText, "单据编号", "number of the bill"},
    {"类型", kText, "单据的类别，显示在“类型”列", "kind of the bill, shown in the column 类型"},
    {"说明", kText, "摘要", "explanation, shown as the summary"},
    {"dpID", kWhole, "单据的仓库", "depot of the bill"},
    {"ksID", kWhole, "往来单位：入库为厂商，出库为客户", "partner: supplier of a receipt, customer of an issue"},
    {"pjID", kWhole, "项目", "project"},
    {"录入员", kText, "录入员", "who entered it"},
    {"录入日期", kDate, "录入日期", "when it was entered"},
    {"审核员", kText, "审核员；空为未审核", "who audited it; empty means not audited"},
    {"审核日期", kDate, "审核日期", "when it was audited"},
};

constexpr InventoryColumn kLines[] = {
    {"RecID", kKeyColumn, "记录的键", "key of the line"},
    {"BillID", kWhole, "所属单据", "bill that it belongs to"},
    {"pdID", kWhole, "商品", "product"},
    {"dpID", kWhole, "记录的仓库", "depot of the line"},
    {"ksID", kWhole, "记录的往来单位", "partner of the line"},
    {"pjID", kWhole, "记录的项目", "project of the line"},
    {"OtherID", kWhole, "出库的来源：正数是入库记录的 RecID，负数是仓库余额表的 ID，0 为没有",
     "where issued stock came from: positive is the RecID of a receipt line, negative the ID of a depot balance, 0 "
     "none"},
    {"数量", kNumber, "数量，入库和出库都是正数", "quantity, positive for receipts and issues"},
    {"Qty2", kNumber, "第二单位的数量", "quantity in the second unit"},
    {"除税单价", kNumber, "不含税的单价", "unit price without tax"},
    {"除税金额", kMoney, "不含税的金额", "amount without tax"},
    {"税率", kNumber, "税率，如 0.13", "tax rate, as 0.13"},
    {"税额", kMoney, "税额", "amount of tax"},
    {"单价", kNumber, "含税的单价", "unit price with tax"},
    {"金额", kMoney, "含税的金额", "amount with tax"},
    {"经手人", kText, "经手人", "handled by"},
    {"交接人", kText, "交接人", "handed over by or to"},
    {"包装", kText, "包装", "packing"},
    {"货位", kText, "货位", "storage place"},
    {"期限", kText, "期限", "term"},
    {"SerialNo", kText, "序列号", "serial number"},
    {"ProductDate", kDate, "生产日期", "date of production"},
};

constexpr InventoryColumn kDepots[] = {{"dpID", kKeyColumn, "仓库的键", "key of the depot"},
                                       {"仓库名称", kText, "仓库名称", "name"}};

constexpr InventoryColumn kPartners[] = {
    {"KSID", kKeyColumn, "往来单位的键", "key of the partner"},
    {"企业名称", kText, "单位名称", "name"},
    {"ClassCode", kText, "分类代码，以上级分类的代码开头",
     "class code, which begins with the codes of the classes above"},
};

constexpr InventoryColumn kProjects[] = {
    {"项目ID", kKeyColumn, "项目的键", "key of the project"},
    {"项目名称", kText, "项目名称", "name"},
    {"项目编号", kText, "项目编号", "number"},
    {"ClassCode", kText, "分类代码", "class code"},
};

constexpr InventoryColumn kProducts[] = {
    {"pdID", kKeyColumn, "商品的键", "key of the product"},
    {"商品名称", kText, "商品名称", "name"},
    {"商品编号", kText, "商品编号", "number"},
    {"规格", kText, "规格，日记账的 Model", "specification, the journal's Model"},
    {"型号", kText, "型号，日记账的 Standard", "model, the journal's Standard"},
    {"计量单位", kText, "计量单位", "unit"},
    {"计量2", kText, "第二计量单位", "second unit"},
    {"计价方法", kText, "计价方法", "costing method"},
    {"进位方法", kText, "进位方法", "rounding method"},
    {"最低库存", kNumber, "最低库存", "least stock"},
    {"最高库存", kNumber, "最高库存", "most stock"},
    {"输入简码", kText, "输入简码", "short code for typing"},
    {"KSID", kWhole, "默认的厂商", "usual supplier"},
    {"默认单价", kNumber, "默认单价", "usual price"},
    {"普通税率", kNumber, "销售的普通税率", "ordinary tax rate of sales"},
    {"增值税率", kNumber, "销售的增值税率", "VAT rate of sales"},
    {"购进单价", kNumber, "购进单价", "purchase price"},
    {"普购税率", kNumber, "购进的普通税率", "ordinary tax rate of purchases"},
    {"增购税率", kNumber, "购进的增值税率", "VAT rate of purchases"},
    {"ClassCode", kText, "分类代码", "class code"},
    {"单位数量", kNumber, "每件的数量", "units per package"},
    {"存放位置", kText, "存放位置", "storage place"},
    {"商品条码", kText, "条码", "barcode"},
    {"生产厂家", kText, "生产厂家", "manufacturer"},
    {"备注", kText, "备注", "remark"},
    {"别名", kText, "别名", "alias"},
    {"颜色", kText, "颜色", "colour"},
    {"重量", kNumber, "重量", "weight"},
    {"定义", kText, "定义", "definition"},
};

constexpr InventoryColumn kClasses[] = {{"ClassCode", kText, "分类代码", "class code"},
                                        {"ClassName", kText, "分类名称", "name"}};

constexpr InventoryColumn kPeriods[] = {{"AccPeriod", kText, "会计期间，按文本排序即按时间排序，如 2025-03",
                                         "accounting period, whose texts sort in the order of time, as 2025-03"}};

constexpr InventoryColumn kDepotBalances[] = {
    {"ID", kKeyColumn, "余额的键", "key of the balance"},
    {"DpID", kWhole, "仓库", "depot"},
    {"PdID", kWhole, "商品", "product"},
    {"AccPeriod", kText, "会计期间", "accounting period"},
    {"年份", kWhole, "期间的年", "year of the period"},
    {"月份", kWhole, "期间的月", "month of the period"},
    {"上期库存单价", kNumber, "上期结存的单价", "unit price carried forward"},
    {"上期库存数量", kNumber, "上期结存的数量", "quantity carried forward"},
    {"上期库存数量2", kNumber, "上期结存的第二数量", "second quantity carried forward"},
    {"上期库存金额", kMoney, "上期结存的金额", "amount carried forward"},
    {"TotalRevQuantity", kNumber, "本期入库数量", "quantity received in the period"},
    {"TotalRevQuantity2", kNumber, "本期入库第二数量", "second quantity received in the period"},
    {"TotalRevAccount", kMoney, "本期入库金额", "amount received in the period"},
    {"TotalIssQuantity", kNumber, "本期出库数量", "quantity issued in the period"},
    {"TotalIssQuantity2", kNumber, "本期出库第二数量", "second quantity issued in the period"},
    {"TotalIssAccount", kMoney, "本期出库金额", "amount issued in the period"},
};

// The partner and project balances differ only in the owner's column. SumIssAccount is kept for other programs.
constexpr std::array<InventoryColumn, 13> OwnerBalances(std::string_view owner, std::string_view chinese,
                                                        std::string_view english) {
  return {{{"bnPeriod", kText, "会计期间", "accounting period"},
           {owner, kWhole, chinese, english},
           {"pdID", kWhole, "商品", "product"},
           {"LastPrice", kNumber, "上期结存的单价", "unit price carried forward"},
           {"LastQuantity", kNumber, "上期结存的数量", "quantity carried forward"},
           {"LastQuantity2", kNumber, "上期结存的第二数量", "second quantity carried forward"},
           {"LastAccount", kMoney, "上期结存的金额", "amount carried forward"},
           {"SumRevQuantity", kNumber, "入库数量", "quantity received"},
           {"SumRevQuantity2", kNumber, "入库第二数量", "second quantity received"},
           {"SumRevAccount", kMoney, "入库金额", "amount received"},
           {"SumIssQuantity", kNumber, "出库数量", "quantity issued"},
           {"SumIssQuantity2", kNumber, "出库第二数量", "second quantity issued"},
           {"SumIssAccount", kMoney, "出库金额，控件不读", "amount issued, which the control does not read"}}};
}
constexpr auto kSupplierBalances = OwnerBalances("ksID", "厂商", "supplier");
constexpr auto kCustomerBalances = OwnerBalances("ksID", "客户", "customer");
constexpr auto kProjectBalances = OwnerBalances("pjID", "项目", "project");

constexpr std::array<InventoryTable, kTableCount> kTables{{
    {"入库目录", kBills, "入库单据", "bills of receipts", "BillID"},
    {"出库目录", kBills, "出库单据", "bills of issues", "BillID"},
    {"入库记录", kLines, "入库单据的记录", "lines of receipts", "RecID"},
    {"出库记录", kLines, "出库单据的记录", "lines of issues", "RecID"},
    {"仓库设置", kDepots, "仓库", "depots", "dpID"},
    {"厂商资料", kPartners, "厂商", "suppliers", "KSID"},
    {"客户资料", kPartners, "客户", "customers", "KSID"},
    {"项目设置", kProjects, "项目", "projects", "项目ID"},
    {"商品设置", kProducts, "商品", "products", "pdID"},
    {"商品分类", kClasses, "商品的分类", "classes of products", "ClassCode"},
    {"厂商分类", kClasses, "厂商的分类", "classes of suppliers", "ClassCode"},
    {"客户分类", kClasses, "客户的分类", "classes of customers", "ClassCode"},
    {"项目分类", kClasses, "项目的分类", "classes of projects", "ClassCode"},
    {"tqAccPeriod", kPeriods, "会计期间", "accounting periods", "AccPeriod"},
    {"仓库余额表", kDepotBalances, "每个仓库、商品和期间的余额", "balances, one a depot, product and period", "ID"},
    {"tqSuppBalance", kSupplierBalances, "每个厂商、商品和期间的余额", "balances, one a supplier, product and period",
     "ksID, pdID, bnPeriod"},
    {"tqCustBalance", kCustomerBalances, "每个客户、商品和期间的余额", "balances, one a customer, product and period",
     "ksID, pdID, bnPeriod"},
    {"tqProjBalance", kProjectBalances, "每个项目、商品和期间的余额", "balances, one a project, product and period",
     "pjID, pdID, bnPeriod"},
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

const InventoryTable* FindInventoryTable(std::string_view name) {
  const auto found = std::find_if(kTables.begin(), kTables.end(), [&](const InventoryTable& table) {
    return base::EqualsIgnoringCase(table.name, name);
  });
  return found == kTables.end() ? nullptr : &*found;
}

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

}  // namespace stockbook::databases
