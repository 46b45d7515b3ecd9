// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "end_to_end/base_tables.h"
#include "end_to_end/journal_columns.h"
#include "end_to_end/recomputed_opening.h"
#include "stockbook/command/journal_options.h"
#include "stockbook/window/journal_desk.h"

namespace stockbook::end_to_end {

// A movement joined with its bill and its masters; the running columns of its cells are still empty.
struct MovementLine {
  Cells cells;
  std::string identity;  // of all values of the statement's row; a union keeps one of equal rows
  Measures net;
  Measures receipt;
  Measures issue;
  bool fits = true;  // whether its amount and what is negated are in the ranges of Money and of whole numbers
  std::tuple<std::string, int, std::string> order;  // what the journal sorts by
};

enum class RowKind { kOpening, kNode, kLine, kTotal };

struct JournalRow {
  RowKind kind = RowKind::kLine;
  Cells cells;
};

// A journal computed from the base tables of an inventory independently of the program: joined by SQL that is written
// here by hand, with its own order and arithmetic.
class RecomputedJournal {
 public:
  RecomputedJournal(const BaseTables& tables, const app::JournalOptions& options,
                    app::SqlDialect dialect = app::SqlDialect::kDesktop);

  // Whether the journal's statement fails: a class without members leaves a partner journal without its condition, and
  // the server knows nothing of the keys that all journals but the material one turn into texts.
  bool cannot_run() const { return cannot_run_; }
  // Whether the statement of its balance fails: a partner journal over everybody has no condition to add the product
  // to. It opens with zeros then, and says so.
  bool balance_is_refused() const { return opening_.is_refused; }
  // Sorted; lines that tie in the journal's order are adjacent.
  const std::vector<MovementLine>& lines() const { return lines_; }
  // All rows with their running values, given the order of the lines; nothing if an amount exceeds the range of Money.
  std::optional<std::vector<JournalRow>> Rows(const std::vector<size_t>& order) const;

 private:
  struct Side;
  // The rows that one line of a journal is made of; nothing where a master is missing.
  struct Sources;

  void AddSide(const Side& side);
  void FillCells(const Side& side, const Sources& at, MovementLine& line) const;
  void FillBillNo(const Side& side, const Sources& at, MovementLine& line) const;
  void FillAmounts(const Side& side, const Sources& at, MovementLine& line) const;
  std::string LinesWanted() const;
  void CompleteCode();
  void ReadSecondKeys();
  void Blank(MovementLine& line, int flag) const;

  const BaseTables& tables_;
  app::JournalOptions options_;
  bool server_;
  std::string latest_;
  std::optional<std::string> second_keys_;  // nothing stands for all
  bool cannot_run_ = false;
  RecomputedOpening opening_;
  std::vector<MovementLine> lines_;
};

}  // namespace stockbook::end_to_end
