// SPDX-License-Identifier: MIT
#include "databases/sqlite/arm_join.h"

#include <algorithm>
#include <atomic>
#include <numeric>
#include <optional>
#include <string>

#include "databases/execution/row_sorter.h"
#include "databases/execution/side_by_side.h"
#include "databases/sqlite/key_index.h"
#include "databases/sqlite/sliced_read.h"
#include "databases/sqlite/table_part.h"

namespace stockbook::databases {
namespace {

// So many rows are read before it is worth while to look for help.
constexpr size_t kAlone = 4096;
// Where so great a part of a table is wanted, reading it all is faster than fetching row by row.
constexpr int64_t kScanShare = 4;

struct EnoughRows {};

// Takes the rows of the first table, which come with their row numbers in front.
class FirstRows : public RowVisitor {
 public:
  FirstRows(TablePart& part, const std::atomic<bool>& failed) : part_(part), failed_(failed) {}
  // Ends with EnoughRows where the rest is better read by row numbers: when there is much of it, and most of the table
  // is wanted, so that no index helps.
  void EndWhereDense() { end_where_dense_ = true; }

  void Visit(std::span<sqlite3_value* const> values) override {
    const int64_t number = sqlite3_value_int64(values[0]);
    ascending_ = ascending_ && (numbers_.empty() || number > numbers_.back());
    numbers_.push_back(number);
    part_.TakeRow(values.subspan(1));
    if (failed_.load(std::memory_order_relaxed)) throw EndedEarly{};
    if (end_where_dense_ && numbers_.size() == kAlone && ascending_ && IsDense()) throw EnoughRows{};
  }

  bool ascending() const { return ascending_; }
  std::vector<int64_t>& numbers() { return numbers_; }

 private:
  bool IsDense() const {
    constexpr uint64_t kSparsest = 4;
    return static_cast<uint64_t>(numbers_.back()) - static_cast<uint64_t>(numbers_.front()) < kAlone * kSparsest;
  }

  TablePart& part_;
  const std::atomic<bool>& failed_;
  bool end_where_dense_ = false;
  bool ascending_ = true;
  std::vector<int64_t> numbers_;
};

// Takes the rows of a table that are wanted, which come with the keys that they are joined by in front, and no two with
// the same.
class WantedRows : public RowVisitor {
 public:
  WantedRows(TablePart& part, const KeyIndex& index, const std::atomic<bool>& failed)
      : part_(part), index_(index), failed_(failed), met_(index.keys().size()) {}

  void Visit(std::span<sqlite3_value* const> values) override {
    if (failed_.load(std::memory_order_relaxed)) throw EndedEarly{};
    const int64_t key = KeyOf(values[0]);
    const uint32_t number = key == kNullKey ? KeyIndex::kNone : index_.Find(key);
    if (number == KeyIndex::kNone) return;
    if (met_[number]) throw NotCovered{};
    met_[number] = true;
    keys_.push_back(number);
    part_.TakeRow(values.subspan(1));
  }

  // Which key each row has.
  const std::vector<uint32_t>& keys() const { return keys_; }

 private:
  TablePart& part_;
  const KeyIndex& index_;
  const std::atomic<bool>& failed_;
  std::vector<bool> met_;
  std::vector<uint32_t> keys_;
};

class ArmJoiner {
 public:
  ArmJoiner(const Readers& readers, const PlanArm& arm, std::vector<ColumnSink>& sinks)
      : readers_(readers),
        database_(readers.own()),
        arm_(arm),
        sinks_(sinks),
        parts_(arm.select.scope->sources.size()) {}

  ArmRows Run() {
    PlanTables();
    PlanConditions();
    PlanOutputs();
    ReadFirstTable();
    std::vector<uint32_t>& first = result_.rows_of_source[0];
    first.resize(parts_[0].rows);
    std::iota(first.begin(), first.end(), 0U);
    for (size_t table = 1; table < parts_.size(); ++table) JoinTable(table);
    DropUnmatched();
    return std::move(result_);
  }

 private:
  size_t TableOf(size_t source_id) const {
    const auto found =
        std::find_if(parts_.begin(), parts_.end(), [&](const TablePart& part) { return part.source->id == source_id; });
    if (found == parts_.end()) throw NotCovered{};
    return static_cast<size_t>(found - parts_.begin());
  }

  void PlanTables() {
    const BoundSelect& select = arm_.select;
    if (!select.chained || parts_.empty()) throw NotCovered{};
    for (size_t table = 0; table < parts_.size(); ++table) parts_[table].source = &select.scope->sources[table];
    for (size_t table = 1; table < parts_.size(); ++table) {
      const JoinStep& step = select.joins[table - 1];
      if (step.old_column == nullptr || step.type == JoinType::kRight) throw NotCovered{};
      TablePart& part = parts_[table];
      part.step = &step;
      part.parent = TableOf(step.old_column->source);
      if (part.parent >= table || step.new_column->source != part.source->id) throw NotCovered{};
      TablePart& parent = parts_[part.parent];
      part.parent_key = parent.key_columns.size();
      parent.key_columns.push_back(step.old_column->sql);
    }
    for (TablePart& part : parts_) part.keys.resize(part.key_columns.size());
    result_.rows_of_source.resize(parts_.size());
  }

  // Each condition is checked while its table is read; on the optional side of a join it would mean something else.
  void PlanConditions() {
    for (const TypedSql& condition : arm_.select.conditions) {
      const auto owner = std::find_if(parts_.begin(), parts_.end(),
                                      [&](const TablePart& part) { return condition.sources.IsOnly(part.source->id); });
      if (owner == parts_.end() || owner->IsLeft()) throw NotCovered{};
      owner->conditions.push_back(condition.sql);
    }
  }

  void PlanOutputs() {
    for (size_t index = 0; index < arm_.outputs.size(); ++index) {
      const TypedSql& output = arm_.outputs[index];
      if (output.constant) {
        result_.places.push_back({ArmRows::kConstant, sinks_[index].builder.size()});
        sinks_[index].builder.Append(ConstantOf(output));
        continue;
      }
      const auto owner = std::find_if(parts_.begin(), parts_.end(),
                                      [&](const TablePart& part) { return output.sources.IsOnly(part.source->id); });
      if (owner == parts_.end()) throw NotCovered{};
      const bool bare = output.column != nullptr || output.negated != nullptr;
      // Where the optional side is missing, a column is null, but an expression may be anything.
      if (owner->IsLeft() && !bare) throw NotCovered{};
      result_.places.push_back({static_cast<size_t>(owner - parts_.begin()), sinks_[index].builder.size()});
      owner->AddRead(output, index, sinks_);
    }
  }

  void ReadFirstTable() {
    TablePart& part = parts_[0];
    const std::string row_number = part.RowNumber();
    if (row_number.empty()) throw NotCovered{};
    FirstRows rows(part, never_);
    rows.EndWhereDense();
    try {
      VisitRows(database_, part.QueryOf(row_number, {}, {}), rows, {});
    } catch (const EnoughRows&) {
      const int64_t last = rows.numbers().back();
      if (MostAreWanted(part)) {
        if (last < INT64_MAX) ReadOtherFirstRows(last + 1);
      } else {
        // The sign keeps SQLite from reading by row number instead of the index.
        const int64_t numbers[] = {last};
        VisitRows(database_, part.QueryOf(row_number, {}, "+" + row_number + " > ?2"), rows, numbers);
      }
    }
    part.Flush();
    if (!rows.ascending()) row_numbers_ = std::move(rows.numbers());
  }

  // Whether reading the whole table takes no longer than fetching the rows through an index, if there is one.
  bool MostAreWanted(const TablePart& part) const {
    if (!IsSearched(part.QueryOf("1", {}, {}))) return true;
    const std::string table = QuotedName(part.source->table->name);
    Statement size(database_, "SELECT max(" + part.source->table->row_number + ") FROM " + table);
    if (!size.Step()) return false;
    const int64_t share = size.Integer(0) / kScanShare;
    // It stops counting there.
    RowQuery some = part.QueryOf("1", {}, {});
    some.columns.resize(1);
    Statement count(database_, "SELECT count(*) FROM (" + TextOf(some) + " LIMIT " + std::to_string(share) + ")");
    return count.Step() && count.Integer(0) >= share;
  }

  bool IsSearched(const RowQuery& query) const {
    constexpr int kDetail = 3;
    Statement explained(database_, "EXPLAIN QUERY PLAN " + TextOf(query));
    return explained.Step() && explained.Text(kDetail).substr(0, 6) == "SEARCH";
  }

  // The rows from that number on, in the order of their numbers.
  void ReadOtherFirstRows(int64_t first) {
    const std::string row_number = parts_[0].RowNumber();
    const RowQuery query = parts_[0].QueryOf(row_number, " NOT INDEXED", RangeOf(row_number));
    SlicedRead slices(readers_, sinks_);
    slices.Read(parts_[0], first,
                [&](const Database& database, TablePart& part, const RowRange& range, const auto& failed) {
                  FirstRows rows(part, failed);
                  VisitRows(database, query, rows, range.numbers);
                  // By row number they cannot come in another order.
                  if (!rows.ascending()) throw NotCovered{};
                });
  }

  static KeyIndex IndexFor(const std::vector<int64_t>& wanted) {
    int64_t lowest = INT64_MAX;
    int64_t highest = INT64_MIN;
    for (const int64_t key : wanted) {
      if (key == kNullKey) continue;
      lowest = std::min(lowest, key);
      highest = std::max(highest, key);
    }
    return {lowest, highest, wanted.size()};
  }

  // Finds the row of `table` for each row of its parent.
  void JoinTable(size_t table) {
    TablePart& part = parts_[table];
    const std::vector<int64_t>& wanted = parts_[part.parent].keys[part.parent_key];
    KeyIndex index = IndexFor(wanted);
    std::vector<uint32_t> row_of_parent(wanted.size(), kNoRow);
    for (size_t row = 0; row < wanted.size(); ++row) {
      if (wanted[row] == kNullKey) continue;
      row_of_parent[row] = row > 0 && wanted[row] == wanted[row - 1] ? row_of_parent[row - 1] : index.Add(wanted[row]);
    }
    std::vector<uint32_t> row_of_key(index.keys().size(), kNoRow);
    if (FewAreWanted(part, index.keys().size())) {
      LookRowsUp(part, index, row_of_key);
    } else if (!row_of_key.empty()) {
      ScanRows(part, index, row_of_key);
    }
    uint32_t missing = kNoRow;
    if (part.IsLeft()) {
      missing = static_cast<uint32_t>(part.rows);
      part.TakeNullRow();
    }
    part.Flush();
    for (uint32_t& row : row_of_parent) {
      if (row != kNoRow) row = row_of_key[row];
      if (row == kNoRow) row = missing;
    }
    const std::vector<uint32_t>& parent_rows = result_.rows_of_source[part.parent];
    std::vector<uint32_t>& rows = result_.rows_of_source[table];
    rows.resize(parent_rows.size());
    std::transform(parent_rows.begin(), parent_rows.end(), rows.begin(),
                   [&](uint32_t row) { return row == kNoRow ? kNoRow : row_of_parent[row]; });
  }

  // Whether fetching rows one by one through an index is faster than reading the whole table. Only over a column of
  // whole numbers does a look-up find what the join's own comparison would: SQLite reads a text as a number when it
  // compares it with a column of numbers, but not when it compares it with a bound value.
  bool FewAreWanted(const TablePart& part, size_t wanted) const {
    if (part.step->new_column->cls != ValueClass::kInteger) return false;
    const TableSchema& table = *part.source->table;
    if (table.row_number.empty()) return false;
    Statement size(database_, "SELECT max(" + table.row_number + ") FROM " + QuotedName(table.name));
    if (!size.Step() || static_cast<int64_t>(wanted) > size.Integer(0) / kScanShare) return false;
    return IsSearched(part.QueryOf("1", {}, part.step->new_column->sql + " = ?2"));
  }

  void LookRowsUp(TablePart& part, const KeyIndex& index, std::vector<uint32_t>& row_of_key) {
    const std::string& column = part.step->new_column->sql;
    const RowQuery query = part.QueryOf(column, {}, column + " = ?2");
    Statement statement(database_, TextOf(query));
    std::vector<sqlite3_value*> values(query.columns.size());
    for (size_t number = 0; number < row_of_key.size(); ++number) {
      statement.Bind(2, index.keys()[number]);
      while (statement.Step()) {
        for (size_t at = 0; at < values.size(); ++at)
          values[at] = sqlite3_column_value(statement.handle(), static_cast<int>(at));
        if (KeyOf(values[0]) != index.keys()[number] || row_of_key[number] != kNoRow) throw NotCovered{};
        row_of_key[number] = static_cast<uint32_t>(part.rows);
        part.TakeRow(std::span(values).subspan(1));
      }
      statement.Reset();
    }
  }

  void ScanRows(TablePart& part, const KeyIndex& index, std::vector<uint32_t>& row_of_key) {
    const std::string& key = part.step->new_column->sql;
    const std::string row_number = part.RowNumber();
    const size_t first = part.rows;
    std::vector<std::vector<uint32_t>> keys(1);
    if (row_of_key.size() < kAlone || row_number.empty()) {
      WantedRows rows(part, index, never_);
      VisitRows(database_, part.QueryOf(key, {}, {}), rows, {});
      keys[0] = rows.keys();
    } else {
      const RowQuery query = part.QueryOf(key, " NOT INDEXED", RangeOf(row_number));
      keys.resize(readers_.threads());
      SlicedRead slices(readers_, sinks_);
      slices.Read(part, std::nullopt,
                  [&](const Database& database, TablePart& slice, const RowRange& range, const auto& failed) {
                    WantedRows rows(slice, index, failed);
                    VisitRows(database, query, rows, range.numbers);
                    keys[range.slice] = rows.keys();
                  });
    }
    auto row = static_cast<uint32_t>(first);
    for (const auto& of_slice : keys) {
      for (const uint32_t number : of_slice) {
        if (row_of_key[number] != kNoRow) throw NotCovered{};
        row_of_key[number] = row++;
      }
    }
  }

  // An inner join leaves out rows without a partner.
  void DropUnmatched() {
    auto& sources = result_.rows_of_source;
    const size_t rows = parts_[0].rows;
    size_t kept = 0;
    for (size_t row = 0; row < rows; ++row) {
      const bool whole =
          std::none_of(sources.begin(), sources.end(), [&](const auto& places) { return places[row] == kNoRow; });
      if (!whole) continue;
      for (auto& places : sources) places[kept] = places[row];
      ++kept;
    }
    for (auto& places : sources) places.resize(kept);
    result_.rows = kept;
    if (!row_numbers_.empty()) SortByRowNumber();
  }

  void SortByRowNumber() {
    std::vector<uint32_t> order(result_.rows);
    std::iota(order.begin(), order.end(), 0U);
    const std::vector<uint32_t>& first = result_.rows_of_source[0];
    std::sort(order.begin(), order.end(),
              [&](uint32_t a, uint32_t b) { return row_numbers_[first[a]] < row_numbers_[first[b]]; });
    for (auto& places : result_.rows_of_source) {
      std::vector<uint32_t> sorted(order.size());
      std::transform(order.begin(), order.end(), sorted.begin(), [&](uint32_t row) { return places[row]; });
      places.swap(sorted);
    }
  }

  const std::atomic<bool> never_ = false;
  const Readers& readers_;
  const Database& database_;
  const PlanArm& arm_;
  std::vector<ColumnSink>& sinks_;
  std::vector<TablePart> parts_;
  std::vector<int64_t> row_numbers_;  // of the first table's rows, unless they ascend
  ArmRows result_;
};

}  // namespace

ArmRows JoinArm(const Readers& readers, const PlanArm& arm, std::vector<ColumnSink>& sinks) {
  return ArmJoiner(readers, arm, sinks).Run();
}

ArmRows StepArm(const Database& database, const PlanArm& arm, std::vector<ColumnSink>& sinks) {
  ArmRows result;
  std::vector<ValueFeed> feeds;
  for (size_t index = 0; index < sinks.size(); ++index) {
    result.places.push_back({0, sinks[index].builder.size()});
    feeds.emplace_back(ResultFormOf(arm.outputs[index].cls)).AddTarget(sinks[index], ValueFeed::Sign::kKept);
  }
  Statement statement(database, arm.sql);
  result.rows = StepInto(statement, feeds);
  result.rows_of_source.emplace_back(result.rows);
  std::iota(result.rows_of_source[0].begin(), result.rows_of_source[0].end(), 0U);
  return result;
}

base::Value ConstantOf(const TypedSql& output) {
  const base::Value& value = *output.constant;
  if (const auto* whole = value.As<int64_t>(); whole != nullptr && output.cls == ValueClass::kReal) {
    return base::Value(static_cast<double>(*whole));
  }
  if (value.As<base::Date>() != nullptr && output.cls != ValueClass::kDate) return base::Value(value.Text());
  return value;
}

}  // namespace stockbook::databases
