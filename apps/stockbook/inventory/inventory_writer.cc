// SPDX-License-Identifier: MIT
#include "stockbook/inventory/inventory_writer.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number.h"
#include "stockbook/base/date.h"
#include "stockbook/base/money.h"
#include "stockbook/inventory/inventory_quantity.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {

// A prepared INSERT into one table. Texts are borrowed for the call. It never outlives its database.
class InsertCursor {
 public:
  InsertCursor(sqlite3* database, const InventoryTable& table, const std::string& file)
      : database_(database), table_(table), file_(file), copies_(table.columns.size()) {
    const std::string sql = InsertStatement(table);
    Check(sqlite3_prepare_v3(database_, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                             &statement_, nullptr));
  }
  ~InsertCursor() { sqlite3_finalize(statement_); }
  InsertCursor(const InsertCursor&) = delete;
  InsertCursor& operator=(const InsertCursor&) = delete;

  // One value per column, in the table's order. Empty texts and zero dates become null.
  template <typename... Values>
  void Row(const Values&... values) {
    if (sizeof...(values) != table_.columns.size())
      throw std::logic_error("A row of " + std::string(table_.name) + " has another number of values.");
    int index = 0;
    (Bind(++index, values), ...);
    const int code = sqlite3_step(statement_);
    Check(code == SQLITE_DONE ? SQLITE_OK : code);
    Check(sqlite3_reset(statement_));
  }

 private:
  void Bind(int index, int64_t number) { Check(sqlite3_bind_int64(statement_, index, number)); }
  void Bind(int index, int number) { Bind(index, int64_t{number}); }
  void Bind(int index, double number) { Check(sqlite3_bind_double(statement_, index, number)); }
  void Bind(int index, Quantity quantity) { Bind(index, quantity.ToDouble()); }
  void Bind(int index, base::Money money) { BindCopy(index, money.Text()); }
  void Bind(int index, base::Date date) { BindCopy(index, date.IsZero() ? std::string() : date.Text()); }
  void Bind(int index, std::string_view text) {
    Check(text.empty() ? sqlite3_bind_null(statement_, index)
                       : sqlite3_bind_text64(statement_, index, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
  }
  // Keeps the text until the row is written.
  void BindCopy(int index, std::string text) {
    std::string& kept = copies_[static_cast<size_t>(index - 1)];
    kept = std::move(text);
    Bind(index, std::string_view(kept));
  }
  void Check(int code) const {
    if (code == SQLITE_OK) return;
    throw platform::Error(
        "write an inventory",
        "Cannot write '" + file_ + "', table " + std::string(table_.name) + ": " + sqlite3_errmsg(database_) + ".",
        code);
  }

  sqlite3* database_;
  const InventoryTable& table_;
  std::string file_;
  std::vector<std::string> copies_;  // of the columns' texts that were made for the row
  sqlite3_stmt* statement_ = nullptr;
};

namespace {

double PriceOf(const StockSums& stock) { return base::SafeDivide(stock.amount.ToDouble(), stock.quantity.ToDouble()); }

// By BalanceOwner, and by ClassTree.
constexpr TableName kBalanceTables[] = {TableName::DepotBalances, TableName::SupplierBalances,
                                        TableName::CustomerBalances, TableName::ProjectBalances};
constexpr TableName kClassTables[] = {TableName::ProductClasses, TableName::SupplierClasses, TableName::CustomerClasses,
                                      TableName::ProjectClasses};

}  // namespace

InventoryWriter::InventoryWriter(const std::string& path) : file_(path) {
  for (size_t index = 0; index < kTableCount; ++index)
    file_.Execute(CreateStatement(InventoryTableOf(static_cast<TableName>(index))));
}

// The statements are closed before their database, which is a member declared before them.
InventoryWriter::~InventoryWriter() = default;

InsertCursor& InventoryWriter::Into(TableName table) {
  auto& cursor = cursors_[static_cast<size_t>(table)];
  if (!cursor) cursor = std::make_unique<InsertCursor>(file_.handle(), InventoryTableOf(table), file_.target());
  return *cursor;
}

void InventoryWriter::AddBill(Direction direction, const BillRecord& bill) {
  const base::DateParts day = bill.date.parts();
  Into(direction == Direction::Receipt ? TableName::ReceiptBills : TableName::IssueBills)
      .Row(bill.bill_id, bill.period, bill.date, day.year, day.month, day.day, bill.type_name, bill.number, bill.kind,
           bill.explain, bill.depot_id, bill.partner_id, bill.project_id, bill.entered_by, bill.entered_on,
           bill.audited_by, bill.audited_on);
}

void InventoryWriter::AddLine(Direction direction, const LineRecord& line) {
  Into(direction == Direction::Receipt ? TableName::ReceiptLines : TableName::IssueLines)
      .Row(line.record_id, line.bill_id, line.product_id, line.depot_id, line.partner_id, line.project_id,
           line.other_id, line.quantity, line.quantity2, line.price, line.amount, line.tax_rate, line.tax,
           line.tax_price, line.tax_amount, line.handler, line.counterpart, line.packing, line.place, line.term,
           line.serial_number, line.produced_on);
}

void InventoryWriter::AddDepot(int64_t depot_id, std::string_view name) { Into(TableName::Depots).Row(depot_id, name); }

void InventoryWriter::AddPartner(Partners partners, int64_t partner_id, std::string_view name,
                                 std::string_view class_code) {
  Into(partners == Partners::Suppliers ? TableName::Suppliers : TableName::Customers).Row(partner_id, name, class_code);
}

void InventoryWriter::AddProject(int64_t project_id, std::string_view name, std::string_view number,
                                 std::string_view class_code) {
  Into(TableName::Projects).Row(project_id, name, number, class_code);
}

void InventoryWriter::AddProduct(const ProductRecord& product) {
  Into(TableName::Products)
      .Row(product.product_id, product.name, product.number, product.specification, product.model, product.unit,
           product.unit2, product.costing, product.rounding, product.least_stock, product.most_stock,
           product.short_code, product.supplier_id, product.price, product.ordinary_tax_rate, product.vat_rate,
           product.purchase_price, product.ordinary_purchase_tax_rate, product.purchase_vat_rate, product.class_code,
           product.per_package, product.place, product.barcode, product.maker, product.remark, product.alias,
           product.colour, product.weight, product.definition);
}

void InventoryWriter::AddClass(ClassTree tree, std::string_view code, std::string_view name) {
  Into(kClassTables[static_cast<size_t>(tree)]).Row(code, name);
}

void InventoryWriter::AddPeriod(int month) {
  const std::string period = PeriodText(month);
  Into(TableName::Periods).Row(std::string_view(period));
}

void InventoryWriter::AddBalance(BalanceOwner owner, const BalanceRecord& row) {
  const std::string text = PeriodText(row.month);
  const std::string_view period = text;
  const StockSums& last = row.carried_forward;
  InsertCursor& table = Into(kBalanceTables[static_cast<size_t>(owner)]);
  if (owner == BalanceOwner::Depots) {
    table.Row(row.id, row.owner_id, row.product_id, period, row.month / 12, row.month % 12 + 1, PriceOf(last),
              last.quantity, last.quantity2, last.amount, row.received.quantity, row.received.quantity2,
              row.received.amount, row.issued.quantity, row.issued.quantity2, row.issued.amount);
  } else {
    table.Row(period, row.owner_id, row.product_id, PriceOf(last), last.quantity, last.quantity2, last.amount,
              row.received.quantity, row.received.quantity2, row.received.amount, row.issued.quantity,
              row.issued.quantity2, row.issued.amount);
  }
}

void InventoryWriter::AddBalances(BalanceOwner owner, const BalanceBook& book, int initial_month) {
  book.ForEachRow(initial_month, [&](const BalanceRecord& row) { AddBalance(owner, row); });
}

void InventoryWriter::Finish() {
  for (auto& cursor : cursors_) cursor.reset();
  for (const InventoryIndex& index : InventoryIndexes()) file_.Execute(CreateStatement(index));
  file_.Close();
  file_.Commit();
}

}  // namespace stockbook::app
