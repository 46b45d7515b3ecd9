// SPDX-License-Identifier: MIT
#include "databases/rows/row_names.h"

namespace stockbook::databases {

RowNames NamesOf(TableName table) {
  switch (table) {
    case TableName::ReceiptBills:
      return {"RowSource::Receipts", "Bill::id"};
    case TableName::IssueBills:
      return {"RowSource::Issues", "Bill::id"};
    case TableName::ReceiptLines:
      return {"RowSource::Receipts", "Line::id"};
    case TableName::IssueLines:
      return {"RowSource::Issues", "Line::id"};
    case TableName::Depots:
      return {"RowSource::Depots", "Depot::id"};
    case TableName::Suppliers:
      return {"RowSource::Suppliers", "Partner::id"};
    case TableName::Customers:
      return {"RowSource::Customers", "Partner::id"};
    case TableName::Projects:
      return {"RowSource::Projects", "Project::id"};
    case TableName::Products:
      return {"RowSource::Products", "Product::id"};
    case TableName::ProductClasses:
    case TableName::SupplierClasses:
    case TableName::CustomerClasses:
    case TableName::ProjectClasses:
      return {"RowSource::Classes", ""};
    case TableName::Periods:
      return {"RowSource::Periods", ""};
    case TableName::DepotBalances:
      return {"RowSource::Balances", "Balance::id"};
    case TableName::SupplierBalances:
    case TableName::CustomerBalances:
    case TableName::ProjectBalances:
      break;
  }
  return {"RowSource::Balances", ""};
}

}  // namespace stockbook::databases
