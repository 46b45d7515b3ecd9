// SPDX-License-Identifier: MIT
#include "databases/rows/row_periods.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <tuple>

#include "base/digits.h"
#include "base/text.h"
#include "databases/dialect/date_functions.h"
#include "databases/inventory/inventory_schema.h"

namespace stockbook::databases {
namespace {

using TakePeriod = std::function<void(const std::string& period)>;

// Whether the source gives the table as columns; then each row's period is taken, empty where it has none.
bool TakeColumn(RowSource& source, TableName table, std::string_view column, const TakePeriod& take) {
  const auto fields = source.Columns(InventoryTableOf(table).name, {});
  if (!fields) return false;
  const auto field = std::find_if(fields->begin(), fields->end(), [&](const platform::Field& candidate) {
    return base::EqualsIgnoringCase(candidate.name, column);
  });
  if (field == fields->end()) return true;
  for (size_t row = 0; row < field->column.size(); ++row) {
    const base::Value value = field->column.At(row);
    take(value.IsNull() ? std::string() : value.Text());
  }
  return true;
}

std::string MonthOf(const base::Date& date) {
  const base::DateParts day = date.parts();
  return base::ZeroPadded(day.year, 4) + "-" + base::ZeroPadded(day.month, 2);
}

}  // namespace

std::string PeriodOf(const Bill& bill) {
  if (!bill.period.empty() || bill.date.IsZero()) return bill.period;
  return MonthOf(bill.date);
}

std::string EarliestPeriod(RowSource& source, const std::function<void()>& check) {
  std::string earliest;
  const auto take = [&](const std::string& period) {
    check();
    if (!period.empty() && (earliest.empty() || period < earliest)) earliest = period;
  };
  if (!TakeColumn(source, TableName::Periods, "AccPeriod", take)) source.Periods(take);
  return earliest;
}

void RowSource::Periods(const Take<std::string>& take) {
  bool has_one = false;
  // Each row's is given at once, as whoever takes it may end the load there.
  const auto give = [&](const std::string& period) {
    if (period.empty()) return;
    has_one = true;
    take(period);
  };
  bool has_bills = false;
  const auto give_bill = [&](const std::string& period) {
    has_bills = true;
    give(period);
  };
  const TakeLine take_line = [&](const Bill& bill, const Line&) { give_bill(PeriodOf(bill)); };
  if (!TakeColumn(*this, TableName::ReceiptBills, "AccPeriod", give_bill)) Receipts({}, take_line);
  if (!TakeColumn(*this, TableName::IssueBills, "AccPeriod", give_bill)) Issues({}, take_line);
  const std::tuple<BalanceOwner, TableName, std::string_view> balances[] = {
      {BalanceOwner::kDepots, TableName::DepotBalances, "AccPeriod"},
      {BalanceOwner::kSuppliers, TableName::SupplierBalances, "bnPeriod"},
      {BalanceOwner::kCustomers, TableName::CustomerBalances, "bnPeriod"},
      {BalanceOwner::kProjects, TableName::ProjectBalances, "bnPeriod"}};
  for (const auto& [owner, table, column] : balances) {
    if (!TakeColumn(*this, table, column, give)) Balances(owner, {}, [&](const Balance& row) { give(row.period); });
  }
  // Nothing has moved yet: the journal begins now. Bills that lack their period are told of instead.
  if (!has_one && !has_bills) take(MonthOf(LocalNow()));
}

}  // namespace stockbook::databases
