// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "end_to_end/base_tables.h"
#include "end_to_end/journal_columns.h"
#include "stockbook/command/journal_options.h"

namespace stockbook::end_to_end {

// Quantity, quantity in the second unit, amount.
struct Measures {
  double quantity = 0;
  double quantity2 = 0;
  Amount amount = 0;

  void Add(const Measures& other, int sign);
};

// A movement joined with its bill and its masters; the running columns of its cells are still empty.
struct MovementLine {
  Cells cells;
  Measures net;
  Measures receipt;
  Measures issue;
  std::tuple<std::string, int, std::string> order;  // what the journal sorts by
};

struct OpeningRow {
  std::string period;
  Measures measures;
};

enum class RowKind { kOpening, kNode, kLine, kTotal };

struct JournalRow {
  RowKind kind = RowKind::kLine;
  Cells cells;
};

// A journal computed from the base tables of an inventory independently of the program, with its own joins, order and
// arithmetic.
class RecomputedJournal {
 public:
  RecomputedJournal(const BaseTables& tables, const app::JournalOptions& options);

  // Whether the journal's statement fails: a class without members leaves a partner journal without its condition.
  bool cannot_run() const { return cannot_run_; }
  // Whether the statement of its balance fails: a partner journal over everybody has no condition to add the product
  // to. It opens with zeros then, and says so.
  bool balance_is_refused() const { return balance_is_refused_; }
  // Sorted; lines that tie in the journal's order are adjacent.
  const std::vector<MovementLine>& lines() const { return lines_; }
  // All rows with their running values, given the order of the lines; nothing if an amount exceeds the range of Money.
  std::optional<std::vector<JournalRow>> Rows(const std::vector<size_t>& order) const;

 private:
  struct Side;

  void AddSide(const Side& side);
  void AddMovement(const Side& side, size_t record, size_t bill);
  std::vector<MovementLine> JoinMasters(const Side& side, size_t record, size_t bill) const;
  void FillCells(const Side& side, size_t record, size_t bill, MovementLine& line) const;
  void FillAmounts(const Side& side, size_t record, MovementLine& line) const;
  bool Selects(const BaseTable& records, size_t record) const;
  void ReadSecondKeys();
  void ReadOpening();
  void SumBalance(const BaseTable& table, const std::vector<size_t>& rows, const std::array<std::string, 3>& columns);
  std::vector<int64_t> BalanceOwners(bool& all) const;
  void Blank(MovementLine& line, int flag) const;

  const BaseTables& tables_;
  const app::JournalOptions& options_;
  std::string latest_;
  std::optional<std::vector<int64_t>> second_keys_;  // nothing stands for all
  bool cannot_run_ = false;
  bool balance_is_refused_ = false;
  std::optional<OpeningRow> opening_;
  std::vector<MovementLine> lines_;
};

}  // namespace stockbook::end_to_end
