// SPDX-License-Identifier: MIT
#include "databases/rows/row_filling.h"

#include <algorithm>
#include <new>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/digits.h"
#include "base/number.h"
#include "base/text.h"
#include "databases/rows/row_filters.h"
#include "databases/rows/row_names.h"
#include "databases/rows/row_periods.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

using Key = std::optional<int64_t>;

Key Either(const Key& own, const Key& otherwise) { return own ? own : otherwise; }

void AddBill(const Bill& bill, TableRows& rows) {
  const base::DateParts day = bill.date.parts();
  const auto part = [&](int number) { return bill.date.IsZero() ? Key() : Key(number); };
  rows.Add(bill.id, PeriodOf(bill), bill.date, part(day.year), part(day.month), part(day.day), bill.type, bill.number,
           bill.kind, bill.explain, bill.depot, bill.partner, bill.project, bill.entered_by, bill.entered_on,
           bill.audited_by, bill.audited_on);
}

void AddLine(const Bill& bill, const Line& line, TableRows& rows) {
  rows.Add(line.id, bill.id, line.product, Either(line.depot, bill.depot), Either(line.partner, bill.partner),
           Either(line.project, bill.project), line.origin, line.quantity, line.quantity2, line.price, line.amount,
           line.tax_rate, line.tax, line.tax_price, line.tax_amount, line.handler, line.counterpart, line.packing,
           line.place, line.term, line.serial_number, line.produced_on);
}

void AddProduct(const Product& product, TableRows& rows) {
  constexpr std::optional<double> kNothing;
  const std::string none;
  rows.Add(product.id, product.name, product.number, product.specification, product.model, product.unit, product.unit2,
           none, none, kNothing, kNothing, none, kNothing, kNothing, kNothing, kNothing, kNothing, kNothing, kNothing,
           StoredText{product.class_code}, kNothing, none, none, none, none, none, none, kNothing, none);
}

// What tells a bill from another one that was given the same id.
size_t ContentsOf(const Bill& bill) {
  size_t contents = std::hash<std::string>()(bill.period);
  for (const size_t part : {std::hash<std::string>()(bill.number), std::hash<std::string>()(bill.type),
                            std::hash<int64_t>()(bill.date.seconds())})
    contents = contents * 31 + part;
  return contents;
}

platform::Error TwoBills(int64_t id, TableName bills) {
  return {"read rows",
          std::string(NamesOf(bills).function) + " 给出了两张不同的单据，Bill::id 都是 " + std::to_string(id) +
              "：每张单据须有自己的编号，同一张单据的各行给出同样的 Bill，请更正后再读入。",
          0, platform::ErrorKind::kInputOutput};
}

void AddDepotBalance(const Balance& balance, TableRows& rows) {
  const auto number = [](std::string_view digits) -> Key { return base::ParseInteger(digits); };
  rows.Add(balance.id, balance.owner, balance.product, balance.period, number(base::LeftCharacters(balance.period, 4)),
           number(base::RightCharacters(balance.period, 2)), balance.price, balance.carried_forward.quantity,
           balance.carried_forward.quantity2, balance.carried_forward.amount, balance.received.quantity,
           balance.received.quantity2, balance.received.amount, balance.issued.quantity, balance.issued.quantity2,
           balance.issued.amount);
}

void AddOwnerBalance(const Balance& balance, TableRows& rows) {
  rows.Add(balance.period, balance.owner, balance.product, balance.price, balance.carried_forward.quantity,
           balance.carried_forward.quantity2, balance.carried_forward.amount, balance.received.quantity,
           balance.received.quantity2, balance.received.amount, balance.issued.quantity, balance.issued.quantity2,
           balance.issued.amount);
}

// Whether a line may be of none of the bills; where a number is none, nobody knows.
bool MayLackBills(CollectedNumbers bills, const CollectedNumbers& bills_of_lines) {
  if (bills.has_others || bills_of_lines.has_others) return true;
  std::vector<int64_t>& known = bills.numbers;
  if (!std::is_sorted(known.begin(), known.end())) std::sort(known.begin(), known.end());
  auto place = known.begin();
  for (const int64_t bill : bills_of_lines.numbers) {
    // Mostly they are the next ones.
    if (place != known.end() && *place < bill) ++place;
    if (place == known.end() || *place != bill) place = std::lower_bound(known.begin(), known.end(), bill);
    if (place == known.end() || *place != bill) return true;
  }
  return false;
}

}  // namespace

void AskSource(const std::function<void()>& call) {
  constexpr auto kKind = platform::ErrorKind::kInputOutput;
  try {
    call();
  } catch (const platform::Error&) {
    throw;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    throw platform::Error("read rows", error.what(), 0, kKind);
  } catch (...) {
    throw platform::Error("read rows", "主程序给出库存的数据时发生未知错误，读入已停止。", 0, kKind);
  }
}

void RowFilling::Fill() {
  memory_.Run("BEGIN");
  FillBills(TableName::ReceiptBills, TableName::ReceiptLines);
  FillBills(TableName::IssueBills, TableName::IssueLines);
  for (size_t index = static_cast<size_t>(TableName::Depots); index < kTableCount; ++index) {
    const auto table = static_cast<TableName>(index);
    if (IsNeeded(table)) FillTable(table);
  }
  memory_.Run("COMMIT");
  interruption_.Check();
}

bool RowFilling::AddColumns(TableName table, const RowFilter& filter, TableRows& rows) {
  std::optional<std::vector<platform::Field>> fields;
  AskSource([&] { fields = source_.Columns(InventoryTableOf(table).name, filter); });
  if (fields) rows.AddColumns(*fields);
  given_.as_columns[static_cast<size_t>(table)] = fields.has_value();
  return fields.has_value();
}

void RowFilling::FillBills(TableName bills, TableName lines) {
  const RowFilter filter = FilterOf(needs_, lines);
  const bool is_journal = LastPeriodOf(needs_, lines, bills).has_value();
  std::optional<TableRows> bill_rows;
  std::optional<TableRows> line_rows;
  CollectedNumbers keys;
  CollectedNumbers bills_of_lines;
  if (IsNeeded(bills)) {
    bill_rows.emplace(Create(bills));
    if (is_journal) bill_rows->Collect("BillID", &keys);
    if (AddColumns(bills, filter, *bill_rows)) bill_rows.reset();
  }
  if (IsNeeded(lines)) {
    line_rows.emplace(Create(lines));
    if (is_journal) line_rows->Collect("BillID", &bills_of_lines);
    if (AddColumns(lines, filter, *line_rows)) line_rows.reset();
  }
  // Rows that come together have each other.
  const bool together = bill_rows && line_rows;
  if (together && is_journal) {
    bill_rows->Collect("BillID", nullptr);
    line_rows->Collect("BillID", nullptr);
  }
  if (bill_rows || line_rows) TakeLines(lines, filter, bill_rows, line_rows);
  given_.may_lack_bills[static_cast<size_t>(lines)] =
      is_journal && !together && MayLackBills(std::move(keys), bills_of_lines);
}

void RowFilling::TakeLines(TableName lines, const RowFilter& filter, std::optional<TableRows>& bill_rows,
                           std::optional<TableRows>& line_rows) {
  const TableName bills = lines == TableName::ReceiptLines ? TableName::ReceiptBills : TableName::IssueBills;
  std::unordered_map<int64_t, size_t> known;
  std::optional<platform::Error> doubled;
  const RowSource::TakeLine take = [&](const Bill& bill, const Line& line) {
    if (bill_rows) {
      const size_t contents = ContentsOf(bill);
      const auto [place, is_new] = known.try_emplace(bill.id, contents);
      if (is_new) {
        AddBill(bill, *bill_rows);
      } else if (place->second != contents) {
        doubled = TwoBills(bill.id, bills);
        throw *doubled;
      }
    }
    if (line_rows) AddLine(bill, line, *line_rows);
  };
  AskSource([&] {
    if (lines == TableName::ReceiptLines) {
      source_.Receipts(filter, take);
    } else {
      source_.Issues(filter, take);
    }
  });
  // Where the source did not let it pass.
  if (doubled) throw *doubled;
  for (const auto* rows : {&bill_rows, &line_rows}) {
    if (*rows) (*rows)->ThrowWhatWasKept();
  }
}

void RowFilling::FillTable(TableName table) {
  const RowFilter filter = FilterOf(needs_, table);
  TableRows rows = Create(table);
  if (AddColumns(table, filter, rows)) return;
  AskSource([&] { AddMasters(table, filter, rows); });
  rows.ThrowWhatWasKept();
}

void RowFilling::AddMasters(TableName table, const RowFilter& filter, TableRows& rows) {
  // All classes are found by "LIKE '%'": an empty code is among them, a null is not.
  const auto take_partner = [&](const Partner& row) { rows.Add(row.id, row.name, StoredText{row.class_code}); };
  switch (table) {
    case TableName::Depots:
      return source_.Depots(filter, [&](const Depot& row) { rows.Add(row.id, row.name); });
    case TableName::Suppliers:
      return source_.Suppliers(filter, take_partner);
    case TableName::Customers:
      return source_.Customers(filter, take_partner);
    case TableName::Projects:
      return source_.Projects(
          filter, [&](const Project& row) { rows.Add(row.id, row.name, row.number, StoredText{row.class_code}); });
    case TableName::Products:
      return source_.Products(filter, [&](const Product& row) { AddProduct(row, rows); });
    case TableName::ProductClasses:
      return AddClasses(ClassTree::kProducts, rows);
    case TableName::SupplierClasses:
      return AddClasses(ClassTree::kSuppliers, rows);
    case TableName::CustomerClasses:
      return AddClasses(ClassTree::kCustomers, rows);
    case TableName::ProjectClasses:
      return AddClasses(ClassTree::kProjects, rows);
    case TableName::Periods:
      return AddPeriods(rows);
    case TableName::DepotBalances:
      return AddBalances(BalanceOwner::kDepots, filter, rows);
    case TableName::SupplierBalances:
      return AddBalances(BalanceOwner::kSuppliers, filter, rows);
    case TableName::CustomerBalances:
      return AddBalances(BalanceOwner::kCustomers, filter, rows);
    case TableName::ProjectBalances:
      return AddBalances(BalanceOwner::kProjects, filter, rows);
    case TableName::ReceiptBills:
    case TableName::IssueBills:
    case TableName::ReceiptLines:
    case TableName::IssueLines:
      return;
  }
}

void RowFilling::AddClasses(ClassTree tree, TableRows& rows) {
  source_.Classes(tree, [&](const Class& row) { rows.Add(row.code, row.name); });
}

void RowFilling::CheckRow() {
  if (interruption_.IsDueAfter(1)) throw interruption_.Reason("Execute");
}

void RowFilling::AddPeriods(TableRows& rows) {
  std::unordered_set<std::string> known;
  source_.Periods([&](const std::string& period) {
    CheckRow();
    if (known.insert(period).second) rows.Add(period);
  });
}

void RowFilling::AddBalances(BalanceOwner owner, const RowFilter& filter, TableRows& rows) {
  const auto add = [&](const Balance& row) {
    if (owner == BalanceOwner::kDepots) {
      AddDepotBalance(row, rows);
    } else {
      AddOwnerBalance(row, rows);
    }
  };
  std::vector<Balance> without_period;
  source_.Balances(owner, filter, [&](const Balance& row) {
    if (row.period.empty()) {
      CheckRow();
      without_period.push_back(row);
    } else {
      add(row);
    }
  });
  if (without_period.empty()) return;
  // Only now: the source is not asked while it answers.
  const std::string earliest = EarliestPeriod(source_, [&] { CheckRow(); });
  for (Balance& row : without_period) {
    row.period = earliest;
    add(row);
  }
}

}  // namespace stockbook::databases
