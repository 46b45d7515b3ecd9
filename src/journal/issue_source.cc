// SPDX-License-Identifier: MIT
#include "journal/issue_source.h"

#include "base/digits.h"
#include "stockbook/base/column_keys.h"

namespace stockbook::journal {
namespace {

namespace keys = base::keys;

std::string LongDate(const base::Value& value) {
  const auto date = value.AsDate();
  if (!date) return value.Text();
  const base::DateParts parts = date->parts();
  return base::ZeroPadded(parts.year, 4) + "年" + base::ZeroPadded(parts.month, 2) + "月" +
         base::ZeroPadded(parts.day, 2) + "日";
}

// 出库自“总库”：2005年1月期初库存 (issued from "main depot": opening stock of January 2005).
std::string OpeningSource(platform::Connection& connection, int64_t balance_id) {
  const platform::Recordset rows = connection.Execute(
      "SELECT 仓库余额表.*, 仓库设置.仓库名称, * FROM 仓库余额表 LEFT JOIN 仓库设置 ON 仓库余额表.DpID = "
      "仓库设置.dpID  Where ID=" +
      std::to_string(balance_id));
  const auto text = [&](const char* field) { return rows.FieldValue(field).Text(); };
  return "出库自“" + text("仓库名称") + "”：" + text("年份") + "年" + text("月份") + "月" + "期初库存";
}

// 出库自“总库”：2005年03月08日采购入库第 12 号 (issued from "main depot": purchase receipt 12 of 8 March 2005).
std::string ReceiptSource(platform::Connection& connection, int64_t record_id) {
  const platform::Recordset rows = connection.Execute(
      "SELECT d.BillID, CDate(d.年份 & '-' & d.月份 & '-' & d.日子) AS BillDate, d.单据类型 AS BillName, d.单据编号 AS "
      "BillNo, 仓库设置.仓库名称 AS DepotName FROM (入库目录 AS d INNER JOIN 入库记录 AS r ON d.BillID = r.BillID) "
      "LEFT JOIN 仓库设置 ON r.dpID = 仓库设置.dpID Where r.RecID=" +
      std::to_string(record_id));
  const auto text = [&](const char* field) { return rows.FieldValue(field).Text(); };
  return "出库自“" + text("DepotName") + "”：" + LongDate(rows.FieldValue(keys::kBillDate)) + text(keys::kBillName) +
         "第 " + text(keys::kBillNo) + " 号";
}

}  // namespace

std::string IssueSource(platform::Connection* connection, int64_t other_id) {
  if (other_id == 0 || connection == nullptr) return {};
  return other_id < 0 ? OpeningSource(*connection, -other_id) : ReceiptSource(*connection, other_id);
}

}  // namespace stockbook::journal
