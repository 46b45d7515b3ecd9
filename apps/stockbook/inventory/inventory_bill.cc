// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_bill.h"

#include <algorithm>
#include <array>

#include "stockbook/platform/recordset.h"

namespace stockbook::app {
namespace {

struct BillTables {
  const char* bills;
  const char* lines;
  const char* partners;
};

BillTables BillTablesOf(BillSide side) {
  return side == BillSide::kReceipt ? BillTables{"入库目录", "入库记录", "厂商资料"}
                                    : BillTables{"出库目录", "出库记录", "客户资料"};
}

std::string HeadStatement(BillSide side, int32_t bill_id) {
  const BillTables tables = BillTablesOf(side);
  return std::string(
             "Select Dir.BillDate As BillDate, Dir.AccPeriod As Period, Dir.单据类型 As BillName, "
             "Dir.单据编号 As BillNo, Dir.说明 As Explain, ks.企业名称 As Enterprise, "
             "pj.项目名称 As Project, Dir.录入员 As Inputor, Dir.录入日期 As InputDate, Dir.审核员 As Auditor, "
             "Dir.审核日期 As AuditDate From (") +
         tables.bills + " As Dir Left Join " + tables.partners +
         " As ks On Dir.ksID = ks.KSID) Left Join 项目设置 As pj On Dir.pjID = pj.项目ID Where Dir.BillID = " +
         std::to_string(bill_id);
}

std::string LinesStatement(BillSide side, int32_t bill_id) {
  return std::string(
             "Select Recs.RecID As RecID, Recs.pdID As pdID, pd.商品编号 As ProductNo, "
             "pd.商品名称 As ProductName, pd.规格 As Model, pd.型号 As Standard, pd.计量单位 As Measure, "
             "dp.仓库名称 As Depot, Recs.数量 As Quantity, Recs.Qty2 As Quantity2, Recs.除税单价 As Price, "
             "Recs.除税金额 As Account, Recs.税率 As Ratio, Recs.税额 As Tax, Recs.单价 As TaxPrice, "
             "Recs.金额 As TaxAccount, Recs.经手人 As Field0, Recs.交接人 As Field1, Recs.包装 As Field2, "
             "Recs.货位 As Field3, Recs.期限 As Field4, Recs.SerialNo As Field5, Recs.ProductDate As Field6 "
             "From (") +
         BillTablesOf(side).lines +
         " As Recs Left Join 商品设置 As pd On Recs.pdID = pd.pdID) Left Join 仓库设置 As dp On Recs.dpID = dp.dpID "
         "Where Recs.BillID = " +
         std::to_string(bill_id) + " Order By Recs.RecID";
}

// The fields of a record by their names.
class BillFields {
 public:
  explicit BillFields(const platform::Recordset& rows) : rows_(rows) {}

  std::string Text(const char* field) const { return rows_.FieldValue(field).Text(); }
  double Number(const char* field) const { return rows_.FieldValue(field).Number().value_or(0); }
  base::Money Amount(const char* field) const { return rows_.FieldValue(field).AsMoney().value_or(base::Money()); }
  int64_t Key(const char* field) const { return rows_.FieldValue(field).AsInteger().value_or(0); }

 private:
  const platform::Recordset& rows_;
};

std::optional<InventoryBill> ReadHead(platform::Connection& connection, BillSide side, int32_t bill_id) {
  const platform::Recordset rows = connection.Execute(HeadStatement(side, bill_id));
  if (rows.AtEnd()) return std::nullopt;
  const BillFields record(rows);
  InventoryBill bill;
  bill.side = side;
  bill.bill_id = bill_id;
  bill.kind = record.Text("BillName");
  bill.number = record.Text("BillNo");
  bill.date = record.Text("BillDate");
  bill.period = record.Text("Period");
  bill.explain = record.Text("Explain");
  bill.partner = record.Text("Enterprise");
  bill.project = record.Text("Project");
  bill.inputor = record.Text("Inputor");
  bill.input_date = record.Text("InputDate");
  bill.auditor = record.Text("Auditor");
  bill.audit_date = record.Text("AuditDate");
  return bill;
}

BillLine LineFrom(const BillFields& record, BillSide side) {
  BillLine line;
  line.side = side;
  line.record_id = record.Key("RecID");
  line.product_id = static_cast<int32_t>(record.Key("pdID"));
  line.product_no = record.Text("ProductNo");
  line.product_name = record.Text("ProductName");
  line.model = record.Text("Model");
  line.standard = record.Text("Standard");
  line.measure = record.Text("Measure");
  line.depot = record.Text("Depot");
  line.quantity = record.Number("Quantity");
  line.quantity2 = record.Number("Quantity2");
  line.price = record.Number("Price");
  line.amount = record.Amount("Account");
  line.tax_rate = record.Number("Ratio");
  line.tax = record.Amount("Tax");
  line.tax_price = record.Number("TaxPrice");
  line.tax_amount = record.Amount("TaxAccount");
  for (const char* field : {"Field0", "Field1", "Field2", "Field3", "Field4", "Field5", "Field6"})
    line.details.push_back(record.Text(field));
  return line;
}

void ReadLines(platform::Connection& connection, BillSide side, InventoryBill& bill) {
  for (platform::Recordset rows = connection.Execute(LinesStatement(side, bill.bill_id)); !rows.AtEnd();
       rows.MoveNext()) {
    bill.lines.push_back(LineFrom(BillFields(rows), side));
  }
}

}  // namespace

std::optional<InventoryBill> ReadInventoryBill(platform::Connection& connection, BillSide side, int32_t bill_id) {
  const auto moment = connection.ReadAsOfOneMoment();
  auto bill = ReadHead(connection, side, bill_id);
  if (!bill) return std::nullopt;
  const BillSide other = side == BillSide::kReceipt ? BillSide::kIssue : BillSide::kReceipt;
  const auto counterpart = ReadHead(connection, other, bill_id);
  const bool is_transfer = counterpart && counterpart->kind == bill->kind && counterpart->number == bill->number;
  for (const BillSide each : {BillSide::kIssue, BillSide::kReceipt}) {
    if (each == side || is_transfer) ReadLines(connection, each, *bill);
  }
  return bill;
}

}  // namespace stockbook::app
