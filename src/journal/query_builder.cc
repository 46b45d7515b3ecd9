// SPDX-License-Identifier: MIT
#include "journal/query_builder.h"

#include "journal/class_filters.h"
#include "journal/dialect.h"
#include "journal/periods.h"

namespace stockbook::journal {
namespace {

// The fragments are sent exactly as written here, blanks included.
constexpr const char* kProductColumns =
    " pd.商品名称 As ProductName,pd.商品编号 As ProductNo,pd.规格 As Model,pd.型号 as Standard,pd.计量单位 As Measure,"
    "pd.计量2 As Measure2,";

constexpr const char* kReceiptAmounts =
    " Recs.除税单价 AS Price, Recs.数量 AS Quantity,Recs.Qty2 AS Quantity2, Recs.除税金额 AS Account,"
    " Recs.数量 AS RevQty,Recs.Qty2 AS RevQty2, Recs.除税金额 AS RevAcc,"
    " 0 AS IssQty,0 AS IssQty2, 0 AS IssAcc,"
    " 0 AS StoPrice,Recs.数量 AS StoQty,Recs.Qty2 AS StoQty2, Recs.除税金额 AS StoAcc,";

constexpr const char* kIssueAmounts =
    " Recs.除税单价 AS Price, -Recs.数量 AS Quantity,-Recs.Qty2 AS Quantity2, -Recs.除税金额 AS Account,"
    " 0 AS RevQty,0 AS RevQty2, 0 AS RevAcc, "
    " Recs.数量 AS IssQty,Recs.Qty2 AS IssQty2, Recs.除税金额 AS IssAcc,"
    "  0 AS StoPrice,Recs.数量 AS StoQty,Recs.Qty2 AS StoQty2, Recs.除税金额 AS StoAcc,";

constexpr const char* kCommonTail =
    " Recs.税率 AS Ratio, Recs.税额 AS Tax, Recs.单价 AS TaxPrice, Recs.金额 AS TaxAccount,"
    " Recs.经手人 AS Field0, Recs.交接人 AS Field1, Recs.包装 AS Field2, Recs.货位 AS Field3, Recs.期限 AS Field4,"
    " Recs.SerialNo AS Field5, Recs.ProductDate AS Field6,"
    " dp.仓库名称 AS Depot, ks.企业名称 AS Enterprise, pj.项目名称 AS Project, pj.项目编号 AS ProjNo, Dir.录入员 AS "
    "Inputor,"
    " Dir.录入日期 AS InputDate, Dir.审核员 AS Auditor, Dir.审核日期 AS AuditDate,"
    " Recs.数量 AS DQty, 0 AS DStoQty, ";

constexpr const char* kReceiptKeys =
    " Dir.BillID As BillID, Recs.recID As RecID, Dir.dpID As dpID, Dir.ksID As ksID, Dir.pjID As pjID,"
    " Recs.OtherID  As OtherID, 0 AS Flag,Dir.单据类型 As BillName,Recs.pdID ";

constexpr const char* kIssueKeys =
    " Dir.BillID As BillID, Recs.recID As RecID, Dir.dpID As dpID, Dir.ksID As ksID, Dir.pjID As pjID,"
    " Recs.OtherID  As OtherID, 1 AS Flag,Dir.单据类型 As BillName,Recs.pdID ";

constexpr const char* kReceiptTextKeys =
    " Dir.BillID & '' As BillID, Recs.recID & '' As RecID, Dir.dpID & '' As dpID, Dir.ksID  & '' As ksID,"
    " Dir.pjID & '' As pjID, Recs.OtherID  As OtherID, 0 AS Flag,Dir.单据类型 As BillName,Recs.pdID ";

constexpr const char* kIssueTextKeys =
    " Dir.BillID & '' As BillID, Recs.recID & '' As RecID, Dir.dpID & '' As dpID, Dir.ksID  & '' As ksID,"
    " Dir.pjID & '' As pjID, Recs.OtherID  As OtherID, 1 AS Flag,Dir.单据类型 As BillName,Recs.pdID  ";

constexpr const char* kReceiptSource =
    " FROM (((入库记录 AS Recs INNER JOIN 入库目录 AS Dir ON Recs.BillID = Dir.BillID)"
    " LEFT JOIN 仓库设置 AS dp ON Recs.dpID = dp.dpID) LEFT JOIN 厂商资料 AS ks ON Dir.ksID = ks.KSID)"
    " LEFT JOIN 项目设置 AS pj ON Dir.pjID = pj.项目ID ";

constexpr const char* kIssueSource =
    " FROM (((出库记录 AS Recs INNER JOIN 出库目录 AS Dir ON Recs.BillID = Dir.BillID)"
    " LEFT JOIN 仓库设置 AS dp ON Recs.dpID = dp.dpID) LEFT JOIN 客户资料 AS ks ON Dir.ksID = ks.KSID)"
    " LEFT JOIN 项目设置 AS pj ON Dir.pjID = pj.项目ID ";

constexpr const char* kReceiptProductSource =
    " FROM ((((入库记录 AS Recs INNER JOIN 入库目录 AS Dir ON Recs.BillID = Dir.BillID)"
    " LEFT JOIN 仓库设置 AS dp ON Recs.dpID = dp.dpID) LEFT JOIN 厂商资料 AS ks ON Dir.ksID = ks.KSID)"
    " LEFT JOIN 项目设置 AS pj ON Dir.pjID = pj.项目ID) Left Join 商品设置 as pd On Recs.pdID=pd.pdID ";

constexpr const char* kIssueProductSource =
    " FROM ((((出库记录 AS Recs INNER JOIN 出库目录 AS Dir ON Recs.BillID = Dir.BillID)"
    " LEFT JOIN 仓库设置 AS dp ON Recs.dpID = dp.dpID) LEFT JOIN 客户资料 AS ks ON Dir.ksID = ks.KSID)"
    " LEFT JOIN 项目设置 AS pj ON Dir.pjID = pj.项目ID) Left Join 商品设置 as pd On Recs.pdID=pd.pdID ";

// The supplier journal's source: the same words as kReceiptProductSource with one more blank at each join.
constexpr const char* kSupplierSource =
    " FROM ((((入库记录 AS Recs "
    " INNER JOIN 入库目录 AS Dir ON Recs.BillID = Dir.BillID) "
    " LEFT JOIN 仓库设置 AS dp ON Recs.dpID = dp.dpID) "
    " LEFT JOIN 厂商资料 AS ks ON Dir.ksID = ks.KSID) "
    " LEFT JOIN 项目设置 AS pj ON Dir.pjID = pj.项目ID) "
    " Left Join 商品设置 as pd On Recs.pdID=pd.pdID ";

}  // namespace

QueryBuilder::QueryBuilder(Inventory inventory, base::tqJournalTypeContants type, SubjectKeys keys,
                           std::function<void(int)> progress)
    : inventory_(std::move(inventory)), type_(type), keys_(std::move(keys)), progress_(std::move(progress)) {}

std::string QueryBuilder::Build() const {
  const auto moment = inventory_.OneMoment();
  switch (type_) {
    case base::MaterialJournal:
      return Material();
    case base::SupplierJournal:
      return Supplier();
    case base::CustomerJournal:
      return Customer();
    case base::ProjectJournal:
      break;
  }
  return Project();
}

std::string QueryBuilder::Material() const {
  const std::string receipts =
      SelectHead() + kReceiptAmounts + kCommonTail + kReceiptKeys + kReceiptSource + MaterialCondition();
  Progress(10);
  const std::string issues =
      SelectHead() + kIssueAmounts + kCommonTail + kIssueKeys + kIssueSource + MaterialCondition();
  Progress(20);
  return "SELECT * FROM (SELECT  * FROM (" + receipts + ") As RevRecs  Union Select * From (" + issues +
         ") AS IssRecs ) AS JnlRecs ORDER BY BillDate,Flag,BillNo";
}

std::string QueryBuilder::MaterialCondition() const {
  return " Where (Recs.pdID = " + std::to_string(keys_.KeyID) + ")" +
         (keys_.dpID >= 1 ? " And Recs.dpID=" + std::to_string(keys_.dpID) : "") + PeriodLimit();
}

std::string QueryBuilder::Supplier() const {
  const std::string part = SelectHead() + kProductColumns + kReceiptAmounts + kCommonTail + kReceiptTextKeys +
                           kSupplierSource + PartnerCondition(keys_.dpCode) + PartnerSort();
  Progress(20);
  return part;
}

std::string QueryBuilder::Customer() const {
  // The class is looked up by the number of the second key, not by the class code; this is kept on purpose.
  const std::string part = SelectHead() + kProductColumns + kIssueAmounts + kCommonTail + kIssueTextKeys +
                           kIssueProductSource + PartnerCondition(std::to_string(keys_.dpID)) + PartnerSort();
  Progress(20);
  return part;
}

std::string QueryBuilder::PartnerCondition(const std::string& class_code) const {
  std::string condition;
  if (keys_.dpID >= 1) {
    condition = " Where (Recs.ksID = " + std::to_string(keys_.dpID) + ")";
  } else {
    const std::string list = PartnerKeyList(inventory_, type_, class_code);
    if (!list.empty()) condition = " Where Recs.ksID in (" + list + ")";
  }
  if (keys_.KeyID >= 1) condition += " And Recs.pdID=" + std::to_string(keys_.KeyID);
  return condition + PeriodLimit();
}

std::string QueryBuilder::Project() const {
  const std::string condition = ProjectCondition();
  const std::string receipts = SelectHead() + kProductColumns + kReceiptAmounts + kCommonTail + kReceiptTextKeys +
                               kReceiptProductSource + condition + PeriodLimit();
  Progress(10);
  const std::string issues = SelectHead() + kProductColumns + kIssueAmounts + kCommonTail + kIssueTextKeys +
                             kIssueProductSource + condition + PeriodLimit();
  Progress(20);
  return "SELECT  * FROM (" + receipts + " Union " + issues + ") AS Jnl ORDER BY jnl.BillDate, jnl.Flag";
}

std::string QueryBuilder::ProjectCondition() const {
  std::string condition = "Where  Recs.pdID=" + std::to_string(keys_.KeyID);
  if (keys_.dpID >= 1) return condition + " And Recs.pjID=" + std::to_string(keys_.dpID);
  const std::string list = ProjectKeyList(inventory_, keys_.dpCode);
  if (!list.empty()) condition += " And Recs.pjID in (" + list + ")";
  return condition;
}

std::string QueryBuilder::SelectHead() const {
  return "SELECT dir.AccPeriod AS Period,dir.BillDate As BillDate," + BillNoExpr(connection()) +
         " AS BillNo, Dir.类型 AS BillKind,Dir.说明 As Explain,";
}

std::string QueryBuilder::PeriodLimit() const { return " And Dir.AccPeriod<='" + NewestAccPeriod(inventory_) + "'"; }

std::string QueryBuilder::PartnerSort() const {
  return IsSqlServerConnection(connection()) ? " ORDER BY dir.BillDate,dir.单据类型 + dir.单据编号"
                                             : " ORDER BY dir.BillDate,dir.单据类型 & dir.单据编号";
}

void QueryBuilder::Progress(int indicator) const {
  if (progress_) progress_(indicator);
}

}  // namespace stockbook::journal
