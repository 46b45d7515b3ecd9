// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

#include "columns/block_reader.h"
#include "stockbook/base/journal_type.h"
#include "stockbook/base/money.h"

namespace stockbook::journal {

// What the stock columns run over: the stock itself, or the cumulative receipts or issues of a partner.
enum class BalanceKind { kStock, kReceipts, kIssues, kNone };
BalanceKind BalanceKindOf(base::tqJournalTypeContants type);

// Quantity, second-unit quantity and amount of one kind of movement.
struct Totals {
  double quantity = 0;
  double quantity2 = 0;
  base::Money amount;

  bool operator==(const Totals&) const = default;
};

// Sums over rows: of the signed movement, the receipts and the issues.
struct MovementSums {
  Totals movement;
  Totals receipts;
  Totals issues;

  bool operator==(const MovementSums&) const = default;
};

// One kind of movement of several rows; amounts in Money units. An empty span is a column of zeros.
struct MovementColumns {
  std::span<const double> quantity;
  std::span<const double> quantity2;
  std::span<const int64_t> amount_units;
};

struct MovementRows {
  size_t count = 0;
  MovementColumns movement;
  MovementColumns receipts;
  MovementColumns issues;
};

// Where the running values of the rows are written; each span has an element per row.
struct RunningColumns {
  std::span<double> quantity;
  std::span<double> quantity2;
  std::span<int64_t> amount_units;
  std::span<double> price;
};

// The running balance of a journal: after every row the stock (or cumulative) quantity, second quantity, amount and the
// average price amount / quantity, 0 if that is undefined. Quantities run in double arithmetic, receipts added before
// issues are subtracted; amounts run in Money, exactly. It keeps the sums of the current period and of all rows from
// the first one on; the opening balance is not a movement and is in neither. An amount that leaves the range of Money
// throws base::ArithmeticError. A pass over rows allocates nothing.
class RunningBalance {
 public:
  // The most rows of one Add.
  static constexpr size_t kBlockRows = columns::kBlockRows;

  RunningBalance(BalanceKind kind, const Totals& opening) : kind_(kind), running_(opening) {}

  void Add(const MovementRows& rows, const RunningColumns& out);
  const Totals& Running() const { return running_; }
  const MovementSums& Period() const { return period_; }
  const MovementSums& Cumulative() const { return cumulative_; }
  void StartPeriod() { period_ = MovementSums(); }

 private:
  BalanceKind kind_;
  Totals running_;
  MovementSums period_;
  MovementSums cumulative_;
};

}  // namespace stockbook::journal
