// SPDX-License-Identifier: MIT
#include "stockbook/doctor/balance_examination.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/number.h"
#include "stockbook/base/money.h"
#include "stockbook/doctor/line_sums.h"

namespace stockbook::app {
namespace {

using Words = std::array<std::string_view, 3>;

struct BalanceRule {
  TableName table;
  std::string_view owner;
  std::string_view lines_owner;  // the column of the lines
  std::string_view period;
  Words opening;
  Words received;
  Words issued;
  bool receipts;  // whether receipts count
  bool issues;
};

constexpr Words kLast{"LastQuantity", "LastQuantity2", "LastAccount"};
constexpr Words kSumRev{"SumRevQuantity", "SumRevQuantity2", "SumRevAccount"};
constexpr Words kSumIss{"SumIssQuantity", "SumIssQuantity2", "SumIssAccount"};

constexpr std::array<BalanceRule, 4> kRules{{
    {TableName::DepotBalances,
     "DpID",
     "dpID",
     "AccPeriod",
     {"上期库存数量", "上期库存数量2", "上期库存金额"},
     {"TotalRevQuantity", "TotalRevQuantity2", "TotalRevAccount"},
     {"TotalIssQuantity", "TotalIssQuantity2", "TotalIssAccount"},
     true,
     true},
    {TableName::SupplierBalances, "ksID", "ksID", "bnPeriod", kLast, kSumRev, kSumIss, true, false},
    {TableName::CustomerBalances, "ksID", "ksID", "bnPeriod", kLast, kSumRev, kSumIss, false, true},
    {TableName::ProjectBalances, "pjID", "pjID", "bnPeriod", kLast, kSumRev, kSumIss, true, true},
}};

SumColumns ColumnsOf(const ExaminedTable& table, const Words& names) {
  return {{table.Find(names[0]), table.Find(names[1]), table.Find(names[2])}};
}

std::string FigureText(size_t which, base::WideInteger units) {
  const auto number = static_cast<double>(units);
  constexpr double kQuantityScale = 1e6;
  if (which < 2) return base::NumberText(number / kQuantityScale);
  return base::NumberText(number / static_cast<double>(base::Money::kScale));
}

// Quantities are doubles that a program may have added up: they agree to a millionth. Amounts are exact.
bool Agree(size_t which, base::WideInteger left, base::WideInteger right) {
  const base::WideInteger difference = left < right ? right - left : left - right;
  return difference <= (which < 2 ? 1 : 0);
}

// One table of balances against the sums of its lines.
class BalanceExamination {
 public:
  BalanceExamination(const ExaminedTables& tables, const PeriodNumbers& periods, const BalanceRule& rule,
                     DoctorReport& report)
      : table_(tables.Of(rule.table)),
        rule_(rule),
        periods_(periods),
        sums_(tables, periods),
        opening_(ColumnsOf(table_, rule.opening)),
        received_(ColumnsOf(table_, rule.received)),
        issued_(ColumnsOf(table_, rule.issued)),
        report_(report) {
    if (rule.receipts) sums_.Add(Direction::Receipt, rule.lines_owner);
    if (rule.issues) sums_.Add(Direction::Issue, rule.lines_owner);
  }

  void Run(int initial_period) {
    if (table_.Find(rule_.owner) == nullptr || table_.Find(rule_.period) == nullptr || table_.Find("pdID") == nullptr)
      return;
    ReadRows();
    const Row* before = nullptr;
    for (const Row& row : rows_) {
      const bool same =
          before != nullptr && before->key.owner == row.key.owner && before->key.product == row.key.product;
      if (same && before->key.period == row.key.period) {
        report_.Group(Ailment::kBalanceDuplicate, table_.name()).Add([&] {
          return FindingGroup::Example{KeyText(row.key), "第 " + std::to_string(before->row + 1) + " 行和第 " +
                                                             std::to_string(row.row + 1) + " 行"};
        });
        continue;
      }
      ExamineTotals(row);
      if (same || row.key.period != initial_period) ExamineOpening(row, same ? before : nullptr);
      before = &row;
    }
    ReportMissing();
  }

 private:
  struct Row {
    StockKey key;
    size_t row;
  };

  void ReadRows() {
    const columns::Column& owners = *table_.Find(rule_.owner);
    const columns::Column& products = *table_.Find("pdID");
    const columns::Column& periods = *table_.Find(rule_.period);
    for (size_t row = 0; row < table_.rows(); ++row) {
      rows_.push_back(
          {{WholeAt(owners, row).value_or(0), WholeAt(products, row).value_or(0), periods_.Of(periods.Text(row))},
           row});
    }
    std::stable_sort(rows_.begin(), rows_.end(),
                     [](const Row& left, const Row& right) { return left.key < right.key; });
  }

  std::string KeyText(const StockKey& key) const {
    return std::string(rule_.owner) + "=" + std::to_string(key.owner) + " pdID=" + std::to_string(key.product) + " " +
           std::string(rule_.period) + "=" + periods_.Text(key.period);
  }

  void ExamineTotals(const Row& row) {
    const StockMovement& lines = sums_.Take(row.key);
    Compare(row, rule_.received, received_, lines.received);
    Compare(row, rule_.issued, issued_, lines.issued);
  }

  void Compare(const Row& row, const Words& names, const SumColumns& columns, const ExactSums& lines) {
    const ExactSums stored = columns.At(row.row);
    for (size_t which = 0; which < stored.size(); ++which) {
      if (columns.columns[which] == nullptr || Agree(which, stored[which], lines[which])) continue;
      report_.Group(Ailment::kBalanceTotal, table_.name(), names[which]).Add([&] {
        return FindingGroup::Example{KeyText(row.key), "表中 " + FigureText(which, stored[which]) + "，单据合计 " +
                                                           FigureText(which, lines[which])};
      });
    }
  }

  // `before` is the row that the owner and product had last, nullptr for the first one: it opens with nothing.
  void ExamineOpening(const Row& row, const Row* before) {
    const ExactSums stored = opening_.At(row.row);
    ExactSums left{};
    if (before != nullptr) {
      left = opening_.At(before->row);
      const ExactSums received = received_.At(before->row);
      const ExactSums issued = issued_.At(before->row);
      for (size_t which = 0; which < left.size(); ++which) left[which] += received[which] - issued[which];
    }
    for (size_t which = 0; which < stored.size(); ++which) {
      // Without the column of amounts issued nobody knows what is left.
      const bool known = opening_.columns[which] != nullptr && issued_.columns[which] != nullptr;
      if (!known || Agree(which, stored[which], left[which])) continue;
      report_.Group(Ailment::kBalanceOpening, table_.name(), rule_.opening[which]).Add([&] {
        const std::string source =
            before == nullptr ? "，此前没有余额行，应为 " : "，" + periods_.Text(before->key.period) + " 结存 ";
        return FindingGroup::Example{
            KeyText(row.key), "期初 " + FigureText(which, stored[which]) + source + FigureText(which, left[which])};
      });
    }
  }

  void ReportMissing() {
    std::vector<StockKey> missing;
    for (const auto& [key, movement] : sums_.sums()) {
      if (!movement.has_row && (movement.received != ExactSums{} || movement.issued != ExactSums{}))
        missing.push_back(key);
    }
    std::sort(missing.begin(), missing.end());
    FindingGroup& group = report_.Group(Ailment::kBalanceMissing, table_.name());
    for (const StockKey& key : missing) {
      group.Add([&] {
        const StockMovement& movement = sums_.sums().at(key);
        return FindingGroup::Example{KeyText(key), "单据收入数量 " + FigureText(0, movement.received[0]) +
                                                       "、发出数量 " + FigureText(0, movement.issued[0]) +
                                                       "，余额表没有这一行"};
      });
    }
  }

  const ExaminedTable& table_;
  const BalanceRule& rule_;
  const PeriodNumbers& periods_;
  LineSums sums_;
  SumColumns opening_;
  SumColumns received_;
  SumColumns issued_;
  std::vector<Row> rows_;
  DoctorReport& report_;
};

// The earliest period on record: its balances are what the inventory began with.
std::optional<int> InitialPeriod(const ExaminedTables& tables, const PeriodNumbers& numbers) {
  const columns::Column* periods = tables.Of(TableName::Periods).Find("AccPeriod");
  std::optional<int> initial;
  for (size_t row = 0; periods != nullptr && row < periods->size(); ++row) {
    const int number = numbers.Of(periods->Text(row));
    if (!initial || number < *initial) initial = number;
  }
  return initial;
}

}  // namespace

void ExamineBalances(const ExaminedTables& tables, DoctorReport& report) {
  const PeriodNumbers periods(tables);
  const auto initial = InitialPeriod(tables, periods);
  if (!initial) {
    report.LeaveOut("余额表与单据是否相符", "tqAccPeriod 没有会计期间");
    return;
  }
  for (const BalanceRule& rule : kRules) BalanceExamination(tables, periods, rule, report).Run(*initial);
}

}  // namespace stockbook::app
