// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_rules.h"

#include <array>

namespace stockbook::app {
namespace {

constexpr InventoryReference kReferences[] = {
    {TableName::ReceiptLines, "BillID", TableName::ReceiptBills, true},
    {TableName::ReceiptLines, "pdID", TableName::Products, true},
    {TableName::ReceiptLines, "dpID", TableName::Depots, false},
    {TableName::ReceiptLines, "ksID", TableName::Suppliers, false},
    {TableName::ReceiptLines, "pjID", TableName::Projects, false},
    {TableName::IssueLines, "BillID", TableName::IssueBills, true},
    {TableName::IssueLines, "pdID", TableName::Products, true},
    {TableName::IssueLines, "dpID", TableName::Depots, false},
    {TableName::IssueLines, "ksID", TableName::Customers, false},
    {TableName::IssueLines, "pjID", TableName::Projects, false},
    {TableName::ReceiptBills, "dpID", TableName::Depots, false},
    {TableName::ReceiptBills, "ksID", TableName::Suppliers, false},
    {TableName::ReceiptBills, "pjID", TableName::Projects, false},
    {TableName::IssueBills, "dpID", TableName::Depots, false},
    {TableName::IssueBills, "ksID", TableName::Customers, false},
    {TableName::IssueBills, "pjID", TableName::Projects, false},
    {TableName::Products, "KSID", TableName::Suppliers, false},
    {TableName::DepotBalances, "DpID", TableName::Depots, true},
    {TableName::DepotBalances, "PdID", TableName::Products, true},
    {TableName::SupplierBalances, "ksID", TableName::Suppliers, true},
    {TableName::SupplierBalances, "pdID", TableName::Products, true},
    {TableName::CustomerBalances, "ksID", TableName::Customers, true},
    {TableName::CustomerBalances, "pdID", TableName::Products, true},
    {TableName::ProjectBalances, "pjID", TableName::Projects, true},
    {TableName::ProjectBalances, "pdID", TableName::Products, true},
};

}  // namespace

std::string_view NumberKeyOf(TableName table) {
  // The schema declares as the key of a table what must be one.
  for (const InventoryColumn& column : InventoryTableOf(table).columns) {
    if (column.type == "INTEGER PRIMARY KEY") return column.name;
  }
  return {};
}

std::vector<std::string_view> IdentifyingColumns(TableName table) {
  switch (table) {
    case TableName::Periods:
      return {"AccPeriod"};
    case TableName::ProductClasses:
    case TableName::SupplierClasses:
    case TableName::CustomerClasses:
    case TableName::ProjectClasses:
      return {"ClassCode"};
    case TableName::DepotBalances:
      return {"ID", "DpID", "PdID", "AccPeriod"};
    case TableName::SupplierBalances:
    case TableName::CustomerBalances:
      return {"ksID", "pdID", "bnPeriod"};
    case TableName::ProjectBalances:
      return {"pjID", "pdID", "bnPeriod"};
    default:
      return {NumberKeyOf(table)};
  }
}

std::span<const InventoryReference> InventoryReferences() { return kReferences; }

}  // namespace stockbook::app
