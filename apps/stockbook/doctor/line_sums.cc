// SPDX-License-Identifier: MIT
#include "stockbook/doctor/line_sums.h"

#include <cmath>

#include "stockbook/doctor/keyed_rows.h"

namespace stockbook::app {
namespace {

constexpr double kMillionths = 1e6;

base::WideInteger MillionthsOf(double quantity) {
  // What is larger has been reported as no sensible number already.
  constexpr double kMost = 1e30;
  if (!std::isfinite(quantity) || std::fabs(quantity) > kMost / kMillionths) return 0;
  return static_cast<base::WideInteger>(std::rint(quantity * kMillionths));
}

// The number of the period of each bill.
std::vector<int> PeriodsOfBills(const ExaminedTable& bills, const PeriodNumbers& numbers) {
  const columns::Column* periods = bills.Find("AccPeriod");
  std::vector<int> of_bills;
  if (periods == nullptr) return of_bills;
  of_bills.reserve(periods->size());
  for (size_t row = 0; row < periods->size(); ++row) of_bills.push_back(numbers.Of(periods->Text(row)));
  return of_bills;
}

}  // namespace

PeriodNumbers::PeriodNumbers(const ExaminedTables& tables) {
  for (size_t index = 0; index < kTableCount; ++index) {
    for (const char* name : {"AccPeriod", "bnPeriod"}) {
      const columns::Column* periods = tables.Of(static_cast<TableName>(index)).Find(name);
      for (size_t row = 0; periods != nullptr && row < periods->size(); ++row) numbers_.emplace(periods->Text(row), 0);
    }
  }
  for (auto& [text, number] : numbers_) {
    number = static_cast<int>(texts_.size());
    texts_.push_back(text);
  }
}

int PeriodNumbers::Of(const std::string& period) const { return numbers_.at(period); }

size_t LineSums::KeyHash::operator()(const StockKey& key) const {
  uint64_t mixed = static_cast<uint64_t>(key.owner) * 0x9E3779B97F4A7C15U + static_cast<uint64_t>(key.product);
  mixed = (mixed ^ (mixed >> 32)) * 0xD6E8FEB86659FD93U + static_cast<uint64_t>(key.period);
  return static_cast<size_t>((mixed ^ (mixed >> 29)) * 0xD6E8FEB86659FD93U);
}

ExactSums SumColumns::At(size_t row) const {
  ExactSums sums{};
  for (size_t index = 0; index < 2; ++index) {
    if (columns[index] != nullptr) sums[index] = MillionthsOf(columns[index]->Number(row));
  }
  if (columns[2] != nullptr) {
    if (const auto money = columns[2]->At(row).AsMoney()) sums[2] = money->units();
  }
  return sums;
}

void LineSums::Add(Direction direction, std::string_view owner_column) {
  const bool receipts = direction == Direction::Receipt;
  const ExaminedTable& bills = tables_.Of(receipts ? TableName::ReceiptBills : TableName::IssueBills);
  const ExaminedTable& lines = tables_.Of(receipts ? TableName::ReceiptLines : TableName::IssueLines);
  const columns::Column* bill_keys = bills.Find("BillID");
  const columns::Column* bill = lines.Find("BillID");
  const columns::Column* owner = lines.Find(owner_column);
  const columns::Column* product = lines.Find("pdID");
  const std::vector<int> periods = PeriodsOfBills(bills, periods_);
  if (bill_keys == nullptr || bill == nullptr || owner == nullptr || product == nullptr || periods.empty()) return;
  const KeyedRows bill_rows(*bill_keys);
  const SumColumns values{{lines.Find("数量"), lines.Find("Qty2"), lines.Find("除税金额")}};
  for (size_t row = 0; row < lines.rows(); ++row) {
    const int64_t owner_key = WholeAt(*owner, row).value_or(0);
    const auto bill_row = owner_key > 0 ? bill_rows.Find(WholeAt(*bill, row).value_or(0)) : std::nullopt;
    if (!bill_row) continue;
    StockMovement& movement = sums_[{owner_key, WholeAt(*product, row).value_or(0), periods[*bill_row]}];
    const ExactSums moved = values.At(row);
    ExactSums& sums = receipts ? movement.received : movement.issued;
    for (size_t index = 0; index < sums.size(); ++index) sums[index] += moved[index];
  }
}

}  // namespace stockbook::app
