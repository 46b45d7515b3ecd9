// SPDX-License-Identifier: MIT
#include "databases/rows/left_out_rows.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <unordered_set>
#include <utility>

#include "databases/rows/row_names.h"

namespace stockbook::databases {
namespace {

struct QueryFinalizer {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

// A query of the database in memory. Texts are borrowed.
class MemoryQuery {
 public:
  MemoryQuery(const MemoryDatabase& memory, const std::string& sql) : memory_(memory) {
    sqlite3_stmt* prepared = nullptr;
    memory.Check(sqlite3_prepare_v2(memory.handle(), sql.c_str(), -1, &prepared, nullptr));
    statement_.reset(prepared);
  }
  void Bind(const std::string& text) {
    memory_.Check(sqlite3_bind_text64(statement_.get(), 1, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
  }
  // Whether there is another row.
  bool Step() {
    const int code = sqlite3_step(statement_.get());
    memory_.Check(code);
    return code == SQLITE_ROW;
  }
  bool IsNull(int column) const { return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL; }
  int64_t Integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }
  std::string Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    const auto bytes = static_cast<size_t>(sqlite3_column_bytes(statement_.get(), column));
    return text == nullptr ? std::string() : std::string(text, bytes);
  }

 private:
  const MemoryDatabase& memory_;
  std::unique_ptr<sqlite3_stmt, QueryFinalizer> statement_;
};

std::string TableOf(TableName table) { return std::string(InventoryTableOf(table).name); }
std::string QuotedTable(TableName table) { return "表“" + TableOf(table) + "”"; }

// Whether the number of the column is one of those that are asked for, where any are.
class AskedNumbers {
 public:
  AskedNumbers(int column, const std::vector<int64_t>& numbers)
      : column_(column), numbers_(numbers.begin(), numbers.end()) {}
  bool HasThatOf(const MemoryQuery& row) const {
    return numbers_.empty() || (!row.IsNull(column_) && numbers_.contains(row.Integer(column_)));
  }

 private:
  int column_;
  std::unordered_set<int64_t> numbers_;
};

// "3 张入库单据".
std::string Count(const std::unordered_set<int64_t>& keys, const char* unit, TableName table) {
  return std::to_string(keys.size()) + " " + unit + std::string(InventoryTableOf(table).chinese);
}

// "Bill::id 17 等".
std::string Which(const std::unordered_set<int64_t>& keys, TableName table, bool as_columns) {
  const std::string key(as_columns ? InventoryTableOf(table).keys : NamesOf(table).key);
  const int64_t first = *std::min_element(keys.begin(), keys.end());
  return key + " " + std::to_string(first) + (keys.size() > 1 ? " 等" : "");
}

}  // namespace

// Of a side, what is left out.
struct LeftOutRows::Found {
  std::unordered_set<int64_t> without_period;
  std::unordered_set<int64_t> later;
  std::string latest;
  std::unordered_set<int64_t> without_bill;  // lines
};

std::vector<std::string> LeftOutRows::Remarks() const {
  std::vector<std::string> remarks;
  const auto add = [&](TableName bills, TableName lines) {
    if (auto last = LastPeriodOf(needs_, lines, bills)) AddRemarks({bills, lines, *std::move(last)}, remarks);
  };
  add(TableName::ReceiptBills, TableName::ReceiptLines);
  add(TableName::IssueBills, TableName::IssueLines);
  return remarks;
}

void LeftOutRows::AddRemarks(const Side& side, std::vector<std::string>& remarks) const {
  if (!MissesAny(side)) return;
  const Found found = Find(side);
  if (side.last_period.empty()) {
    if (!found.without_period.empty() || !found.later.empty()) remarks.push_back(NoPeriods(side, found));
  } else {
    if (!found.without_period.empty()) remarks.push_back(WithoutPeriod(side, found));
    if (!found.later.empty()) remarks.push_back(Later(side, found));
  }
  if (!found.without_bill.empty()) remarks.push_back(WithoutBill(side, found));
}

// Of any subject. Nearly always false, and as cheap as it can be.
bool LeftOutRows::MissesAny(const Side& side) const {
  if (given_.may_lack_bills[static_cast<size_t>(side.lines)]) return true;
  MemoryQuery bills(memory_, "SELECT 1 FROM " + TableOf(side.bills) +
                                 " WHERE AccPeriod IS NULL OR AccPeriod > ?1 COLLATE NOCASE LIMIT 1");
  bills.Bind(side.last_period);
  return bills.Step();
}

LeftOutRows::Found LeftOutRows::Find(const Side& side) const {
  MemoryQuery lines(
      memory_, "SELECT r.RecID, r.pdID, r.dpID, r.ksID, r.pjID, d.BillID, d.AccPeriod FROM " + TableOf(side.lines) +
                   " AS r LEFT JOIN " + TableOf(side.bills) +
                   " AS d ON d.BillID = r.BillID WHERE d.AccPeriod IS NULL OR d.AccPeriod > ?1 COLLATE NOCASE");
  lines.Bind(side.last_period);
  const RowFilter filter = FilterOf(needs_, side.lines);
  const AskedNumbers asked[] = {
      {0, filter.ids}, {1, filter.products}, {2, filter.depots}, {3, filter.partners}, {4, filter.projects}};
  Found found;
  while (lines.Step()) {
    if (interruption_.IsDueAfter(1)) throw interruption_.Reason("Execute");
    const bool counts =
        std::all_of(std::begin(asked), std::end(asked), [&](const auto& each) { return each.HasThatOf(lines); });
    if (!counts) continue;
    if (lines.IsNull(5)) {
      found.without_bill.insert(lines.Integer(0));
    } else if (lines.IsNull(6)) {
      found.without_period.insert(lines.Integer(5));
    } else {
      found.later.insert(lines.Integer(5));
      found.latest = std::max(found.latest, lines.Text(6));
    }
  }
  return found;
}

std::string LeftOutRows::NoPeriods(const Side& side, const Found& found) const {
  std::unordered_set<int64_t> bills = found.without_period;
  bills.insert(found.later.begin(), found.later.end());
  const bool as_columns = IsAsColumns(side.bills);
  return "没有会计期间，有 " + Count(bills, "张", side.bills) + "（" + Which(bills, side.bills, as_columns) +
         "）没有列出：请在 RowSource::Periods " +
         (as_columns ? "或" + QuotedTable(TableName::Periods) : std::string()) + "中给出会计期间。";
}

std::string LeftOutRows::WithoutPeriod(const Side& side, const Found& found) const {
  const bool as_columns = IsAsColumns(side.bills);
  return "有 " + Count(found.without_period, "张", side.bills) + "没有会计期间（" +
         Which(found.without_period, side.bills, as_columns) + "），没有列出：请在 " +
         (as_columns ? "RowSource::Columns 给出的" + QuotedTable(side.bills) + "中填写字段 AccPeriod。"
                     : std::string(NamesOf(side.bills).function) + " 中给出 Bill::period 或 Bill::date。");
}

std::string LeftOutRows::Later(const Side& side, const Found& found) const {
  const bool as_columns = IsAsColumns(side.bills);
  return "有 " + Count(found.later, "张", side.bills) + "的会计期间晚于最后的会计期间 " + side.last_period + "（" +
         Which(found.later, side.bills, as_columns) + "，最晚为 " + found.latest +
         "），没有列出：请在 RowSource::Periods " +
         (as_columns ? "或" + QuotedTable(TableName::Periods) + "中补上这些期间，或更正" + QuotedTable(side.bills) +
                           "的字段 AccPeriod。"
                     : std::string("中补上这些期间，或更正 Bill::period 或 Bill::date。"));
}

std::string LeftOutRows::WithoutBill(const Side& side, const Found& found) const {
  const bool lines_as_columns = IsAsColumns(side.lines);
  return "有 " + Count(found.without_bill, "条", side.lines) + "找不到单据（" +
         Which(found.without_bill, side.lines, lines_as_columns) + "），没有列出：请在 " +
         (IsAsColumns(side.bills) ? "RowSource::Columns 给出的" + QuotedTable(side.bills)
                                  : std::string(NamesOf(side.bills).function) + " ") +
         "中给出这些单据，或更正" +
         (lines_as_columns ? QuotedTable(side.lines) + "的字段 BillID。"
                           : " " + std::string(NamesOf(side.lines).function) + " 的 Bill::id。");
}

}  // namespace stockbook::databases
