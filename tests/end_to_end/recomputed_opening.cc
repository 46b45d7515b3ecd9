// SPDX-License-Identifier: MIT
#include "end_to_end/recomputed_opening.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "end_to_end/inventory_maker.h"

namespace stockbook::end_to_end {
namespace {

// The condition on the rows of the balance table; empty where the statement lacks its first condition and fails.
std::string BalancesWanted(const BaseTables& tables, const app::JournalOptions& options, const std::string& period) {
  const int type = options.journal_type;
  const std::string product = std::to_string(options.key_id);
  const std::string second = std::to_string(options.dp_id);
  const std::string until = Quoted(period) + " COLLATE NOCASE";
  if (type == kMaterial) {
    return "PdID = " + product + " AND AccPeriod = " + until + (options.dp_id > 0 ? " AND DpID = " + second : "");
  }
  const char* masters = type == kSupplier ? "厂商资料" : type == kCustomer ? "客户资料" : "项目设置";
  const std::string& code = options.dp_code;
  std::optional<std::string> owners;
  if (options.dp_id != 0) {
    owners = second;
  } else if (!code.empty()) {
    const std::string compared = type == kProject ? "ClassCode" : "substr(ClassCode, 1, length(" + Quoted(code) + "))";
    owners = tables.KeyList(std::string("SELECT ") + (type == kProject ? "项目ID" : "KSID") + " FROM " + masters +
                            " WHERE " + compared + " = " + Quoted(code) + " COLLATE NOCASE");
  }
  if (type == kProject) return "pdID = " + product + (owners ? " AND pjID IN (" + *owners + ")" : "");
  if (!owners) return {};
  return "ksID IN (" + *owners + ") AND bnPeriod <= " + until + (options.key_id != 0 ? " AND pdID = " + product : "");
}

// What a journal opens with, and what else its statement computes: an average, and sums.
struct BalanceColumns {
  const char* table;
  const char* period;
  std::array<const char*, 3> measures;
  const char* average;
  std::array<const char*, 5> others;
};

BalanceColumns ColumnsOfBalance(int type) {
  if (type == kMaterial) {
    return {"仓库余额表",
            "AccPeriod",
            {"上期库存数量", "上期库存数量2", "上期库存金额"},
            "上期库存单价",
            {"TotalRevQuantity", "TotalRevQuantity2", "TotalRevAccount", "TotalIssQuantity", "TotalIssQuantity2"}};
  }
  constexpr std::array kLast = {"LastQuantity", "LastQuantity2", "LastAccount"};
  constexpr std::array kReceipts = {"SumRevQuantity", "SumRevQuantity2", "SumRevAccount"};
  constexpr const char* kIssues[] = {"SumIssQuantity", "SumIssQuantity2"};
  if (type == kSupplier)
    return {
        "tqSuppBalance", "bnPeriod", kReceipts, "LastPrice", {kLast[0], kLast[1], kLast[2], kIssues[0], kIssues[1]}};
  // In the customer journal the amount is a quantity.
  if (type == kCustomer) {
    return {"tqCustBalance",
            "bnPeriod",
            {kIssues[0], kIssues[1], kIssues[0]},
            "LastPrice",
            {kLast[0], kLast[1], kLast[2], kReceipts[0], kReceipts[2]}};
  }
  return {"tqProjBalance",
          "bnPeriod",
          kLast,
          "LastPrice",
          {kReceipts[0], kReceipts[2], kIssues[0], kIssues[1], kReceipts[1]}};
}

class BalanceRows {
 public:
  BalanceRows(const BaseTable& table, std::vector<size_t> rows) : table_(table), rows_(std::move(rows)) {}

  // Values that are no numbers are left out. A sum beyond all numbers, or of amounts beyond money, fails.
  bool CanSum(const char* column) const {
    return IsMoney(column) ? CanSumAmounts(column) : CanAverage(column) && (HasReals(column) || FitsWhole(column));
  }
  bool CanAverage(const char* column) const { return IsMoney(column) ? CanSumAmounts(column) : CanAdd(column); }
  // The double nearest to the exact sum, whatever the order of addition.
  double Number(const char* column) const {
    long double sum = 0;
    for (const size_t row : rows_) sum += table_.At(row, column).Number();
    return static_cast<double>(sum);
  }
  Amount AmountSum(const char* column) const {
    if (IsMoney(column)) return Exact(column, &Stored::MoneyAmount);
    Stored sum;
    sum.kind = HasReals(column) ? Stored::Kind::kReal : Stored::Kind::kInteger;
    sum.real = Number(column);
    if (!HasReals(column)) sum.integer = static_cast<int64_t>(Exact(column, &Stored::Whole));
    return sum.MoneyAmount();
  }

 private:
  template <typename Callback>
  bool None(const char* column, Callback callback) const {
    return std::none_of(rows_.begin(), rows_.end(), [&](size_t row) { return callback(table_.At(row, column)); });
  }
  bool IsMoney(const char* column) const {
    return !rows_.empty() && table_.At(rows_[0], column).cls == ColumnClass::kMoney;
  }
  bool HasReals(const char* column) const {
    return !None(column, [](const Stored& value) {
      return value.kind == Stored::Kind::kReal || (value.kind != Stored::Kind::kInteger && value.IsNumber());
    });
  }
  Amount Exact(const char* column, Amount (Stored::*part)() const) const {
    Amount sum = 0;
    for (const size_t row : rows_) sum += (table_.At(row, column).*part)();
    return sum;
  }
  bool FitsWhole(const char* column) const {
    const Amount sum = Exact(column, &Stored::Whole);
    return sum >= INT64_MIN && sum <= INT64_MAX;
  }
  bool CanSumAmounts(const char* column) const {
    return None(column, [](const Stored& value) { return !FitsMoney(value.MoneyAmount()); }) &&
           FitsMoney(Exact(column, &Stored::MoneyAmount));
  }
  bool CanAdd(const char* column) const {
    double finite = 0;
    double infinite = 0;
    for (const size_t row : rows_) {
      const double number = table_.At(row, column).Number();
      (std::isinf(number) ? infinite : finite) += number;
      if (!std::isfinite(finite)) break;
    }
    return std::isinf(infinite) || (!std::isnan(infinite) && std::isfinite(finite));
  }

  const BaseTable& table_;
  std::vector<size_t> rows_;
};

bool CanRun(const BalanceRows& rows, const BalanceColumns& columns) {
  const auto sums = [&](const char* column) { return rows.CanSum(column); };
  return std::all_of(columns.measures.begin(), columns.measures.end(), sums) &&
         std::all_of(columns.others.begin(), columns.others.end(), sums) && rows.CanAverage(columns.average);
}

}  // namespace

RecomputedOpening OpeningOf(const BaseTables& tables, const app::JournalOptions& options) {
  const auto earliest = tables.FirstText("SELECT AccPeriod FROM tqAccPeriod ORDER BY AccPeriod");
  if (!earliest) return {{}, {}, true};
  const BalanceColumns columns = ColumnsOfBalance(options.journal_type);
  RecomputedOpening opening{*earliest, {}, false};
  std::string wanted = BalancesWanted(tables, options, *earliest);
  opening.is_refused = wanted.empty();
  if (opening.is_refused) return opening;
  const BaseTable& table = tables[columns.table];
  const auto rows_where = [&](const std::string& condition) {
    std::vector<size_t> rows;
    for (const auto& row : tables.Query(std::string("SELECT rowid FROM ") + columns.table + " WHERE " + condition))
      rows.push_back(table.RowOf(row[0].integer));
    return BalanceRows(table, std::move(rows));
  };
  const std::string periods = std::string("SELECT DISTINCT ") + columns.period + " FROM " + columns.table + " WHERE " +
                              wanted + " ORDER BY " + columns.period;
  const auto group = [&](size_t number) {
    return wanted + " AND " + columns.period + " IS (" + periods + " LIMIT 1 OFFSET " + std::to_string(number) + ")";
  };
  // A material journal stops at the first of the periods, which differ in case only; a project journal has all of them
  // computed and opens with the first.
  const size_t groups = IsPartner(options.journal_type) ? 0 : tables.Query(periods).size();
  const size_t computed = options.journal_type == kMaterial ? std::min<size_t>(groups, 1) : groups;
  for (size_t number = 0; number < computed; ++number)
    opening.is_refused = opening.is_refused || !CanRun(rows_where(group(number)), columns);
  const BalanceRows rows = rows_where(groups == 0 ? wanted : group(0));
  if (opening.is_refused || !CanRun(rows, columns)) return {*earliest, {}, true};
  if (groups > 0) opening.period = *tables.FirstText(periods);
  opening.measures = {rows.Number(columns.measures[0]), rows.Number(columns.measures[1]),
                      rows.AmountSum(columns.measures[2])};
  return opening;
}

}  // namespace stockbook::end_to_end
