// SPDX-License-Identifier: MIT
#include "journal/opening_balance.h"

#include "journal/class_filters.h"
#include "journal/periods.h"

namespace stockbook::journal {
namespace {

constexpr int kCacheRows = 1000;

std::string Number(int64_t number) { return std::to_string(number); }

std::string MaterialStatement(const SubjectKeys& keys, const std::string& first_period) {
  return "SELECT TOP 1 AccPeriod AS Period, Avg(bn.上期库存单价) AS LastPrice, Sum((bn.上期库存数量)) AS LastQty,"
         "Sum((bn.上期库存数量2)) AS LastQty2, Sum((bn.上期库存金额)) AS LastAcc,Sum(bn.TotalRevQuantity) As RevQty,"
         "Sum(bn.TotalRevQuantity2) As RevQty2,Sum(bn.TotalRevAccount) As RevAcc,Sum(bn.TotalIssQuantity) As IssQty,"
         "Sum(bn.TotalIssQuantity2) As IssQty2,Sum(bn.TotalIssAccount) As IssAcc FROM 仓库余额表 AS bn Where bn.PdID=" +
         Number(keys.KeyID) + " " + (keys.dpID > 0 ? "AND bn.DpID=" + Number(keys.dpID) + " " : "") +
         " And bn.AccPeriod='" + first_period + "' GROUP BY AccPeriod";
}

// Sums of the carried-forward columns and the period columns, which partner and project balances share. `seam` goes
// between the two carried-forward quantities.
std::string BalanceColumns(const char* seam) {
  return std::string(" Avg(bn.LastPrice) AS LastPrice, Sum((bn.LastQuantity)) AS LastQty,") + seam +
         "Sum((bn.LastQuantity2)) AS LastQty2, Sum((bn.LastAccount)) AS LastAcc,Sum(bn.SumRevQuantity) As RevQty,"
         "Sum(bn.SumRevQuantity2) As RevQty2,Sum(bn.SumRevAccount) As RevAcc,Sum(bn.SumIssQuantity) As IssQty,"
         "Sum(bn.SumIssQuantity2) As IssQty2,Sum(bn.SumIssQuantity) As IssAcc FROM ";
}

// The balance of suppliers in the supplier journal, otherwise of customers.
std::string PartnerStatement(const Inventory& inventory, base::tqJournalTypeContants type, const SubjectKeys& keys,
                             const std::string& first_period) {
  const bool suppliers = type == base::SupplierJournal;
  std::string statement = "SELECT '" + first_period + "' As Period," + BalanceColumns(suppliers ? "" : " ") +
                          (suppliers ? "tqSuppBalance" : "tqCustBalance") + " AS bn ";
  if (keys.dpID != 0) {
    statement += " Where bn.ksID=" + Number(keys.dpID);
  } else {
    const std::string list =
        suppliers ? SupplierKeyList(inventory, keys.dpCode) : CustomerKeyList(inventory, keys.dpCode);
    if (!list.empty()) statement += " Where bn.ksID in (" + list + ")";
  }
  if (keys.KeyID != 0) statement += " And bn.pdID=" + Number(keys.KeyID);
  return statement + " And bn.bnPeriod<='" + first_period + "' ";
}

std::string ProjectStatement(const Inventory& inventory, const SubjectKeys& keys) {
  std::string statement =
      "SELECT bnPeriod AS Period," + BalanceColumns("") + "tqProjBalance AS bn  Where bn.pdID=" + Number(keys.KeyID);
  if (keys.dpID != 0) {
    statement += " And bn.pjID=" + Number(keys.dpID);
  } else {
    const std::string list = ProjectKeyList(inventory, keys.dpCode);
    if (!list.empty()) statement += " And bn.pjID in (" + list + ")";
  }
  return statement + " GROUP BY bn.bnPeriod";
}

}  // namespace

std::string BuildBalanceStatement(const Inventory& inventory, base::tqJournalTypeContants type, const SubjectKeys& keys,
                                  const std::string& first_period) {
  if (type == base::MaterialJournal) return MaterialStatement(keys, first_period);
  if (type == base::ProjectJournal) return ProjectStatement(inventory, keys);
  return PartnerStatement(inventory, type, keys, first_period);
}

OpeningBalance OpenOpeningBalance(const Inventory& inventory, base::tqJournalTypeContants type,
                                  const SubjectKeys& keys) {
  OpeningBalance balance;
  const auto read = [&] {
    const auto moment = inventory.OneMoment();
    platform::Connection* connection = inventory.connection();
    balance.first_period = EarliestAccPeriod(connection);
    balance.result = connection->Execute(BuildBalanceStatement(inventory, type, keys, balance.first_period),
                                         platform::kExecuteUnspecified);
    balance.result->SetCacheSize(kCacheRows);
  };
  inventory.Try("读不到期初余额，期初行按零显示，以后各行的结存从零算起：", read);
  return balance;
}

}  // namespace stockbook::journal
