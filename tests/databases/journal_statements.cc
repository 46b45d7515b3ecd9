// SPDX-License-Identifier: MIT
#include "databases/journal_statements.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;

std::string Head(Dialect dialect) {
  const char* bill = dialect == Dialect::kServer
                         ? "Convert(Char(10),Dir.BillDate,23) + Dir.单据类型 + ' ' + Dir.单据编号"
                         : "Dir.BillDate & ' ' & Dir.单据类型 & ' ' & Dir.单据编号";
  return std::string("SELECT dir.AccPeriod AS Period,dir.BillDate As BillDate,") + bill +
         " AS BillNo, Dir.类型 AS BillKind,Dir.说明 As Explain,";
}

const char* const kProduct =
    " pd.商品名称 As ProductName,pd.商品编号 As ProductNo,pd.规格 As Model,pd.型号 as Standard,pd.计量单位 As Measure,"
    "pd.计量2 As Measure2,";
const char* const kReceived =
    " Recs.除税单价 AS Price, Recs.数量 AS Quantity,Recs.Qty2 AS Quantity2, Recs.除税金额 AS Account,"
    " Recs.数量 AS RevQty,Recs.Qty2 AS RevQty2, Recs.除税金额 AS RevAcc, 0 AS IssQty,0 AS IssQty2, 0 AS IssAcc,"
    " 0 AS StoPrice,Recs.数量 AS StoQty,Recs.Qty2 AS StoQty2, Recs.除税金额 AS StoAcc,";
const char* const kIssued =
    " Recs.除税单价 AS Price, -Recs.数量 AS Quantity,-Recs.Qty2 AS Quantity2, -Recs.除税金额 AS Account,"
    " 0 AS RevQty,0 AS RevQty2, 0 AS RevAcc,  Recs.数量 AS IssQty,Recs.Qty2 AS IssQty2, Recs.除税金额 AS IssAcc,"
    "  0 AS StoPrice,Recs.数量 AS StoQty,Recs.Qty2 AS StoQty2, Recs.除税金额 AS StoAcc,";
const char* const kTail =
    " Recs.税率 AS Ratio, Recs.税额 AS Tax, Recs.单价 AS TaxPrice, Recs.金额 AS TaxAccount, Recs.经手人 AS Field0, "
    "Recs.交接人 AS"
    " Field1, Recs.包装 AS Field2, Recs.货位 AS Field3, Recs.期限 AS Field4, Recs.SerialNo AS Field5, Recs.ProductDate "
    "AS Field6,"
    " dp.仓库名称 AS Depot, ks.企业名称 AS Enterprise, pj.项目名称 AS Project, pj.项目编号 AS ProjNo, Dir.录入员 AS "
    "Inputor,"
    " Dir.录入日期 AS InputDate, Dir.审核员 AS Auditor, Dir.审核日期 AS AuditDate, Recs.数量 AS DQty, 0 AS DStoQty, ";

std::string Keys(bool text, const char* flag) {
  const std::string empty = text ? " & ''" : "";
  return " Dir.BillID" + empty + " As BillID, Recs.recID" + empty + " As RecID, Dir.dpID" + empty +
         " As dpID, Dir.ksID" + (text ? "  & ''" : "") + " As ksID, Dir.pjID" + empty +
         " As pjID, Recs.OtherID  As OtherID, " + flag + " AS Flag,Dir.单据类型 As BillName,Recs.pdID ";
}

enum class Kind { kReceipt, kIssue };

std::string Source(Kind kind, bool products) {
  const bool receipt = kind == Kind::kReceipt;
  std::string from =
      std::string(" FROM ") + (products ? "(" : "") + "(((" + (receipt ? "入库记录" : "出库记录") +
      " AS Recs INNER JOIN " + (receipt ? "入库目录" : "出库目录") +
      " AS Dir ON Recs.BillID = Dir.BillID) LEFT JOIN 仓库设置 AS dp ON Recs.dpID = dp.dpID) LEFT JOIN " +
      (receipt ? "厂商资料" : "客户资料") +
      " AS ks ON Dir.ksID = ks.KSID) LEFT JOIN 项目设置 AS pj ON Dir.pjID = pj.项目ID";
  return from + (products ? ") Left Join 商品设置 as pd On Recs.pdID=pd.pdID " : " ");
}

std::string Limit(const std::string& period) { return " And Dir.AccPeriod<='" + period + "'"; }

std::string PartnerOrder(Dialect dialect) {
  return dialect == Dialect::kServer ? " ORDER BY dir.BillDate,dir.单据类型 + dir.单据编号"
                                     : " ORDER BY dir.BillDate,dir.单据类型 & dir.单据编号";
}

}  // namespace

std::string MaterialJournal(Dialect dialect, const std::string& where_product, const std::string& period) {
  const std::string where = " Where (Recs.pdID = " + where_product + Limit(period);
  const std::string receipts =
      Head(dialect) + kReceived + kTail + Keys(false, "0") + Source(Kind::kReceipt, false) + where;
  const std::string issues = Head(dialect) + kIssued + kTail + Keys(false, "1") + Source(Kind::kIssue, false) + where;
  return "SELECT * FROM (SELECT  * FROM (" + receipts + ") As RevRecs  Union Select * From (" + issues +
         ") AS IssRecs ) AS JnlRecs ORDER BY BillDate,Flag,BillNo";
}

std::string SupplierJournal(Dialect dialect, const std::string& where, const std::string& period) {
  return Head(dialect) + kProduct + kReceived + kTail + Keys(true, "0") + Source(Kind::kReceipt, true) + where +
         Limit(period) + PartnerOrder(dialect);
}

std::string CustomerJournal(Dialect dialect, const std::string& where, const std::string& period) {
  return Head(dialect) + kProduct + kIssued + kTail + Keys(true, "1") + Source(Kind::kIssue, true) + where +
         Limit(period) + PartnerOrder(dialect);
}

std::string ProjectJournal(Dialect dialect, const std::string& condition, const std::string& period) {
  const std::string where = "Where  Recs.pdID=" + condition + Limit(period);
  return "SELECT  * FROM (" + Head(dialect) + kProduct + kReceived + kTail + Keys(true, "0") +
         Source(Kind::kReceipt, true) + where + " Union " + Head(dialect) + kProduct + kIssued + kTail +
         Keys(true, "1") + Source(Kind::kIssue, true) + where + ") AS Jnl ORDER BY jnl.BillDate, jnl.Flag";
}

std::string DepotBalance(const std::string& product, const std::string& depot_condition, const std::string& period) {
  return "SELECT TOP 1 AccPeriod AS Period, Avg(bn.上期库存单价) AS LastPrice, Sum((bn.上期库存数量)) AS LastQty,"
         "Sum((bn.上期库存数量2)) AS LastQty2, Sum((bn.上期库存金额)) AS LastAcc,Sum(bn.TotalRevQuantity) As RevQty,"
         "Sum(bn.TotalRevQuantity2) As RevQty2,Sum(bn.TotalRevAccount) As RevAcc,Sum(bn.TotalIssQuantity) As IssQty,"
         "Sum(bn.TotalIssQuantity2) As IssQty2,Sum(bn.TotalIssAccount) As IssAcc FROM 仓库余额表 AS bn Where bn.PdID=" +
         product + " " + depot_condition + " And bn.AccPeriod='" + period + "' GROUP BY AccPeriod";
}

std::string PartnerBalance(const std::string& table, const std::string& conditions, const std::string& period) {
  return "SELECT '" + period +
         "' As Period, Avg(bn.LastPrice) AS LastPrice, Sum((bn.LastQuantity)) AS LastQty,"
         "Sum((bn.LastQuantity2)) AS LastQty2, Sum((bn.LastAccount)) AS LastAcc,Sum(bn.SumRevQuantity) As RevQty,"
         "Sum(bn.SumRevQuantity2) As RevQty2,Sum(bn.SumRevAccount) As RevAcc,Sum(bn.SumIssQuantity) As IssQty,"
         "Sum(bn.SumIssQuantity2) As IssQty2,Sum(bn.SumIssQuantity) As IssAcc FROM " +
         table + " AS bn " + conditions + " And bn.bnPeriod<='" + period + "' ";
}

std::string ProjectBalance(const std::string& product, const std::string& conditions) {
  return "SELECT bnPeriod AS Period, Avg(bn.LastPrice) AS LastPrice, Sum((bn.LastQuantity)) AS LastQty,"
         "Sum((bn.LastQuantity2)) AS LastQty2, Sum((bn.LastAccount)) AS LastAcc,Sum(bn.SumRevQuantity) As RevQty,"
         "Sum(bn.SumRevQuantity2) As RevQty2,Sum(bn.SumRevAccount) As RevAcc,Sum(bn.SumIssQuantity) As IssQty,"
         "Sum(bn.SumIssQuantity2) As IssQty2,Sum(bn.SumIssQuantity) As IssAcc FROM tqProjBalance AS bn  Where "
         "bn.pdID=" +
         product + conditions + " GROUP BY bn.bnPeriod";
}

}  // namespace stockbook::testing
