// SPDX-License-Identifier: MIT
#include "databases/rows/row_filters.h"

#include <algorithm>

#include "base/number.h"
#include "base/text.h"

namespace stockbook::databases {
namespace {

// The numbers that the column must be one of; none where the statement does not say.
std::vector<int64_t> NumbersOf(const TableNeeds& needs, std::string_view column) {
  std::vector<int64_t> numbers;
  for (const WholeNumberCondition& condition : needs.conditions) {
    if (!base::EqualsIgnoringCase(condition.column, column)) continue;
    for (const std::string& text : condition.numbers) {
      if (const auto number = base::ParseInteger(text)) numbers.push_back(*number);
    }
    break;
  }
  return numbers;
}

// Nothing where the statement does not limit the column.
const TextLimit* LimitOfColumn(const TableNeeds& needs, std::string_view column) {
  const auto limit = std::find_if(needs.limits.begin(), needs.limits.end(), [&](const TextLimit& candidate) {
    return base::EqualsIgnoringCase(candidate.column, column);
  });
  return limit == needs.limits.end() ? nullptr : &*limit;
}

std::string LastTextOf(const TableNeeds& needs, std::string_view column) {
  const TextLimit* limit = LimitOfColumn(needs, column);
  return limit == nullptr ? std::string() : limit->text;
}

bool JoinsBills(const StatementNeeds& needs, TableName lines, TableName bills) {
  return needs.JoinsRows(InventoryTableOf(lines).name, InventoryTableOf(bills).name, "BillID");
}

RowFilter LineFilter(const StatementNeeds& needs, TableName lines, TableName bills) {
  const TableNeeds* of_lines = needs.Find(InventoryTableOf(lines).name);
  const TableNeeds* of_bills = needs.Find(InventoryTableOf(bills).name);
  RowFilter filter;
  // A bill that is read for itself may be one without such a line.
  if (of_lines == nullptr || (of_bills != nullptr && !JoinsBills(needs, lines, bills))) return filter;
  filter.ids = NumbersOf(*of_lines, "RecID");
  filter.products = NumbersOf(*of_lines, "pdID");
  filter.depots = NumbersOf(*of_lines, "dpID");
  filter.partners = NumbersOf(*of_lines, "ksID");
  filter.projects = NumbersOf(*of_lines, "pjID");
  if (of_bills != nullptr) filter.last_period = LastTextOf(*of_bills, "AccPeriod");
  return filter;
}

// Of a balance table, whose owner and period are in these columns.
RowFilter BalanceFilter(const TableNeeds& needs, std::vector<int64_t> RowFilter::*owners, std::string_view owner,
                        std::string_view period) {
  RowFilter filter;
  filter.*owners = NumbersOf(needs, owner);
  filter.products = NumbersOf(needs, "pdID");
  filter.last_period = LastTextOf(needs, period);
  return filter;
}

}  // namespace

RowFilter FilterOf(const StatementNeeds& needs, TableName table) {
  RowFilter filter;
  const TableNeeds* of_table = needs.Find(InventoryTableOf(table).name);
  switch (table) {
    case TableName::ReceiptBills:
    case TableName::ReceiptLines:
      return LineFilter(needs, TableName::ReceiptLines, TableName::ReceiptBills);
    case TableName::IssueBills:
    case TableName::IssueLines:
      return LineFilter(needs, TableName::IssueLines, TableName::IssueBills);
    default:
      break;
  }
  if (of_table == nullptr) return filter;
  switch (table) {
    case TableName::Depots:
      filter.depots = NumbersOf(*of_table, "dpID");
      break;
    case TableName::Suppliers:
    case TableName::Customers:
      filter.partners = NumbersOf(*of_table, "ksID");
      break;
    case TableName::Projects:
      filter.projects = NumbersOf(*of_table, "项目ID");
      break;
    case TableName::Products:
      filter.products = NumbersOf(*of_table, "pdID");
      break;
    case TableName::DepotBalances:
      filter = BalanceFilter(*of_table, &RowFilter::depots, "DpID", "AccPeriod");
      filter.ids = NumbersOf(*of_table, "ID");
      break;
    case TableName::SupplierBalances:
    case TableName::CustomerBalances:
      filter = BalanceFilter(*of_table, &RowFilter::partners, "ksID", "bnPeriod");
      break;
    case TableName::ProjectBalances:
      filter = BalanceFilter(*of_table, &RowFilter::projects, "pjID", "bnPeriod");
      break;
    default:
      break;
  }
  return filter;
}

std::optional<std::string> LastPeriodOf(const StatementNeeds& needs, TableName lines, TableName bills) {
  if (!JoinsBills(needs, lines, bills)) return std::nullopt;
  const TextLimit* limit = LimitOfColumn(*needs.Find(InventoryTableOf(bills).name), "AccPeriod");
  return limit == nullptr || limit->exact ? std::nullopt : std::optional(limit->text);
}

}  // namespace stockbook::databases
