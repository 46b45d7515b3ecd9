// SPDX-License-Identifier: MIT
#include "databases/rows/row_periods.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>

#include "base/digits.h"
#include "base/text.h"
#include "databases/inventory/inventory_schema.h"

namespace stockbook::databases {
namespace {

using PeriodSet = std::set<std::string>;

void Insert(const std::string& period, PeriodSet& periods) {
  if (!period.empty()) periods.insert(period);
}

// Whether the source gives the table as columns.
bool InsertColumn(RowSource& source, TableName table, std::string_view column, PeriodSet& periods) {
  const auto fields = source.Columns(InventoryTableOf(table).name, {});
  if (!fields) return false;
  const auto field = std::find_if(fields->begin(), fields->end(), [&](const platform::Field& candidate) {
    return base::EqualsIgnoringCase(candidate.name, column);
  });
  if (field == fields->end()) return true;
  for (size_t row = 0; row < field->column.size(); ++row) {
    if (const base::Value value = field->column.At(row); !value.IsNull()) Insert(value.Text(), periods);
  }
  return true;
}

}  // namespace

std::string PeriodOf(const Bill& bill) {
  if (!bill.period.empty() || bill.date.IsZero()) return bill.period;
  const base::DateParts day = bill.date.parts();
  return base::ZeroPadded(day.year, 4) + "-" + base::ZeroPadded(day.month, 2);
}

std::string EarliestPeriod(RowSource& source) {
  PeriodSet periods;
  if (!InsertColumn(source, TableName::Periods, "AccPeriod", periods))
    source.Periods([&](const std::string& period) { Insert(period, periods); });
  return periods.empty() ? std::string() : *periods.begin();
}

void RowSource::Periods(const Take<std::string>& take) {
  PeriodSet periods;
  const TakeLine take_line = [&](const Bill& bill, const Line&) { Insert(PeriodOf(bill), periods); };
  if (!InsertColumn(*this, TableName::ReceiptBills, "AccPeriod", periods)) Receipts({}, take_line);
  if (!InsertColumn(*this, TableName::IssueBills, "AccPeriod", periods)) Issues({}, take_line);
  const std::tuple<BalanceOwner, TableName, std::string_view> balances[] = {
      {BalanceOwner::kDepots, TableName::DepotBalances, "AccPeriod"},
      {BalanceOwner::kSuppliers, TableName::SupplierBalances, "bnPeriod"},
      {BalanceOwner::kCustomers, TableName::CustomerBalances, "bnPeriod"},
      {BalanceOwner::kProjects, TableName::ProjectBalances, "bnPeriod"}};
  for (const auto& [owner, table, column] : balances) {
    if (InsertColumn(*this, table, column, periods)) continue;
    Balances(owner, {}, [&](const Balance& row) { Insert(row.period, periods); });
  }
  for (const std::string& period : periods) take(period);
}

}  // namespace stockbook::databases
