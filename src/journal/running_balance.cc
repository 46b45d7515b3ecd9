// SPDX-License-Identifier: MIT
#include "journal/running_balance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <type_traits>

namespace stockbook::journal {
namespace {

constexpr size_t kBlockRows = RunningBalance::kBlockRows;

template <typename Number>
struct Zeros {
  std::array<Number, kBlockRows> values{};
};
constexpr Zeros<double> kZeroQuantities;
constexpr Zeros<int64_t> kZeroAmounts;

const double* OrZeros(std::span<const double> column) {
  return column.empty() ? kZeroQuantities.values.data() : column.data();
}
const int64_t* OrZeros(std::span<const int64_t> column) {
  return column.empty() ? kZeroAmounts.values.data() : column.data();
}

template <typename Number>
struct Columns {
  const Number* movement;
  const Number* receipts;
  const Number* issues;
  const Number* added;
  const Number* subtracted;
};

template <typename Number>
struct Sums {
  Number movement;
  Number receipts;
  Number issues;
};

// What a row adds to the running quantity. Where every row has a receipt or an issue and not both, adding the one and
// subtracting the other is one addition with the same result; false otherwise.
bool NetQuantities(const Columns<double>& columns, size_t count, double* net) {
  const double* added = columns.added;
  const double* subtracted = columns.subtracted;
  int64_t both = 0;
  for (size_t row = 0; row < count; ++row) {
    net[row] = added[row] - subtracted[row];
    both |= -static_cast<int64_t>(added[row] != 0) & -static_cast<int64_t>(subtracted[row] != 0);
  }
  return both == 0;
}

void RunBothSides(const Columns<double>& columns, size_t count, double running, double* out) {
  for (size_t row = 0; row < count; ++row) {
    running += columns.added[row];
    running -= columns.subtracted[row];
    out[row] = running;
  }
}

// Adding row by row keeps the sums equal to an accountant's own running sum; the chains of additions are independent of
// each other and run in parallel.
void RunQuantities(const Columns<double>& columns, size_t count, double& running, Sums<double>& period,
                   Sums<double>& cumulative, double* out) {
  std::array<double, kBlockRows> net;
  const bool single = NetQuantities(columns, count, net.data());
  const double* net_of = net.data();
  const double* movement = columns.movement;
  const double* receipts = columns.receipts;
  const double* issues = columns.issues;
  // Side by side: of the period and of all rows.
  double movements[2] = {period.movement, cumulative.movement};
  double received[2] = {period.receipts, cumulative.receipts};
  double issued[2] = {period.issues, cumulative.issues};
  double now = running;
  for (size_t row = 0; row < count; ++row) {
    now += net_of[row];
    out[row] = now;
    for (double& sum : movements) sum += movement[row];
    for (double& sum : received) sum += receipts[row];
    for (double& sum : issued) sum += issues[row];
  }
  if (!single) RunBothSides(columns, count, running, out);
  running = out[count - 1];
  period = {movements[0], received[0], issued[0]};
  cumulative = {movements[1], received[1], issued[1]};
}

// Running amounts and sums with every addition checked, for blocks with very large amounts.
void RunAmountsChecked(const Columns<int64_t>& columns, size_t count, int64_t& running, Sums<int64_t>& sums,
                       int64_t* out) {
  bool overflow = false;
  for (size_t row = 0; row < count; ++row) {
    overflow |= __builtin_add_overflow(running, columns.added[row], &running);
    overflow |= __builtin_sub_overflow(running, columns.subtracted[row], &running);
    out[row] = running;
    overflow |= __builtin_add_overflow(sums.movement, columns.movement[row], &sums.movement);
    overflow |= __builtin_add_overflow(sums.receipts, columns.receipts[row], &sums.receipts);
    overflow |= __builtin_add_overflow(sums.issues, columns.issues[row], &sums.issues);
  }
  if (overflow) base::Money::ThrowOverflow();
}

int64_t SumOf(const int64_t* column, size_t count) {
  int64_t sum = 0;
  for (size_t row = 0; row < count; ++row) sum += column[row];
  return sum;
}

// All bits that are set in the magnitudes of the column.
int64_t MagnitudeBits(const int64_t* column, size_t count) {
  int64_t bits = 0;
  for (size_t row = 0; row < count; ++row) bits |= column[row] ^ (column[row] >> 63);
  return bits;
}

// Integer addition is associative, so one sum of the rows serves both the period and the total. If a whole block cannot
// overflow in any order, the rows are not checked one by one.
void RunAmounts(const Columns<int64_t>& columns, size_t count, int64_t& running, Sums<int64_t>& sums, int64_t* out) {
  constexpr int64_t kSmall = int64_t{1} << 48;  // 2 x kBlockRows of them stay below 2^61
  const int64_t bits = MagnitudeBits(columns.movement, count) | MagnitudeBits(columns.receipts, count) |
                       MagnitudeBits(columns.issues, count);
  const int64_t running_bits = running ^ (running >> 63);
  if (bits >= kSmall || running_bits >= (int64_t{1} << 61))
    return RunAmountsChecked(columns, count, running, sums, out);
  int64_t now = running;
  for (size_t row = 0; row < count; ++row) {
    now += columns.added[row] - columns.subtracted[row];
    out[row] = now;
  }
  running = now;
  sums = {SumOf(columns.movement, count), SumOf(columns.receipts, count), SumOf(columns.issues, count)};
}

// base::SafeDivide row by row, without branches.
void DividePrices(const int64_t* amount_units, const double* quantity, size_t count, double* price) {
  constexpr double kLargest = std::numeric_limits<double>::max();
  for (size_t row = 0; row < count; ++row) {
    const double amount = static_cast<double>(amount_units[row]) / static_cast<double>(base::Money::kScale);
    const double quotient = amount / quantity[row];
    // Infinite and undefined quotients, those of a zero quantity among them, compare false; a finite amount divided by
    // an infinite quantity is 0 anyway.
    price[row] = std::fabs(quotient) <= kLargest ? quotient : 0.0;
  }
}

void AddAmounts(const Sums<int64_t>& sums, MovementSums& to) {
  to.movement.amount += base::Money::FromUnits(sums.movement);
  to.receipts.amount += base::Money::FromUnits(sums.receipts);
  to.issues.amount += base::Money::FromUnits(sums.issues);
}

using QuantityMember = double Totals::*;

Sums<double> QuantitySums(const MovementSums& sums, QuantityMember which) {
  return {sums.movement.*which, sums.receipts.*which, sums.issues.*which};
}

void StoreSums(const Sums<double>& from, QuantityMember which, MovementSums& to) {
  to.movement.*which = from.movement;
  to.receipts.*which = from.receipts;
  to.issues.*which = from.issues;
}

}  // namespace

BalanceKind BalanceKindOf(base::tqJournalTypeContants type) {
  switch (type) {
    case base::MaterialJournal:
    case base::ProjectJournal:
      return BalanceKind::kStock;
    case base::SupplierJournal:
      return BalanceKind::kReceipts;
    case base::CustomerJournal:
      return BalanceKind::kIssues;
  }
  return BalanceKind::kNone;
}

void RunningBalance::Add(const MovementRows& rows, const RunningColumns& out) {
  if (rows.count == 0) return;
  const MovementColumns none;
  const bool adds_receipts = kind_ == BalanceKind::kStock || kind_ == BalanceKind::kReceipts;
  const MovementColumns& added = adds_receipts ? rows.receipts : kind_ == BalanceKind::kIssues ? rows.issues : none;
  const MovementColumns& subtracted = kind_ == BalanceKind::kStock ? rows.issues : none;
  const auto columns = [&](auto which) {
    using Number = std::remove_cvref_t<decltype((none.*which)[0])>;
    return Columns<Number>{OrZeros(rows.movement.*which), OrZeros(rows.receipts.*which), OrZeros(rows.issues.*which),
                           OrZeros(added.*which), OrZeros(subtracted.*which)};
  };
  const auto run = [&](auto column, QuantityMember total, double* to) {
    Sums<double> in_period = QuantitySums(period_, total);
    Sums<double> in_all = QuantitySums(cumulative_, total);
    RunQuantities(columns(column), rows.count, running_.*total, in_period, in_all, to);
    StoreSums(in_period, total, period_);
    StoreSums(in_all, total, cumulative_);
  };
  run(&MovementColumns::quantity, &Totals::quantity, out.quantity.data());
  const bool has_second =
      !(rows.movement.quantity2.empty() && rows.receipts.quantity2.empty() && rows.issues.quantity2.empty());
  if (has_second)
    run(&MovementColumns::quantity2, &Totals::quantity2, out.quantity2.data());
  else
    std::fill_n(out.quantity2.begin(), rows.count, running_.quantity2);
  int64_t amount = running_.amount.units();
  Sums<int64_t> sums{};
  RunAmounts(columns(&MovementColumns::amount_units), rows.count, amount, sums, out.amount_units.data());
  running_.amount = base::Money::FromUnits(amount);
  AddAmounts(sums, period_);
  AddAmounts(sums, cumulative_);
  DividePrices(out.amount_units.data(), out.quantity.data(), rows.count, out.price.data());
}

}  // namespace stockbook::journal
