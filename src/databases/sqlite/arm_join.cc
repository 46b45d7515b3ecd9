// SPDX-License-Identifier: MIT
#include "databases/sqlite/arm_join.h"

#include <algorithm>
#include <numeric>
#include <string>

#include "databases/execution/row_sorter.h"
#include "databases/sqlite/key_index.h"

namespace stockbook::databases {
namespace {

constexpr int64_t kNullKey = INT64_MIN;
constexpr uint32_t kNoRow = UINT32_MAX;

// One value read from a table's rows, for the outputs that show it.
struct Read {
  std::string sql;
  ValueFeed feed;
};

// One table of the arm: what to read from it, and what has been read.
struct TablePart {
  const BoundSource* source = nullptr;
  const JoinStep* step = nullptr;  // nullptr for the first table
  size_t parent = 0;               // the table whose column the step compares with
  size_t parent_key = 0;           // which of the parent's key columns that is
  std::vector<std::string> key_columns;
  std::vector<std::string> conditions;
  std::vector<Read> reads;

  size_t rows = 0;
  std::vector<std::vector<int64_t>> keys;  // of each key column, kNullKey for null

  bool IsLeft() const { return step != nullptr && step->type == JoinType::kLeft; }
};

class ArmJoiner {
 public:
  ArmJoiner(const Database& database, const PlanArm& arm, std::vector<ColumnSink>& sinks)
      : database_(database), arm_(arm), sinks_(sinks), parts_(arm.select.scope->sources.size()) {}

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
      AddOutput(*owner, sinks_[index], output);
    }
  }

  static void AddOutput(TablePart& part, ColumnSink& sink, const TypedSql& output) {
    std::string sql = output.sql;
    Form form = output.form == Form::kPlain ? ResultFormOf(output.cls) : output.form;
    auto sign = ValueFeed::Sign::kKept;
    if (output.column != nullptr) {
      sql = output.column->sql;
      if (output.column->form != Form::kPlain) form = output.column->form;
    } else if (output.negated != nullptr && output.negated->form != Form::kRawDate) {
      sql = output.negated->sql;
      if (output.negated->form != Form::kPlain) form = output.negated->form;
      sign = ValueFeed::Sign::kNegated;
    }
    auto same = std::find_if(part.reads.begin(), part.reads.end(),
                             [&](const Read& other) { return other.sql == sql && other.feed.form() == form; });
    if (same == part.reads.end()) same = part.reads.insert(part.reads.end(), Read{std::move(sql), ValueFeed(form)});
    same->feed.AddTarget(sink, sign);
  }

  // SELECT `first`, the keys, the values FROM the table WHERE its conditions and `more`.
  static std::string SelectOf(const TablePart& part, const std::string& first, const std::string& more) {
    std::string list = first;
    for (const std::string& column : part.key_columns) list += ", " + column;
    for (const Read& read : part.reads) list += ", " + read.sql;
    std::string sql = "SELECT " + list + " FROM " + QuotedName(part.source->table->name) + " AS " + part.source->alias;
    const char* word = " WHERE ";
    for (const std::string& condition : part.conditions) {
      sql += word + condition;
      word = " AND ";
    }
    return more.empty() ? sql : sql + word + more;
  }

  static int64_t KeyAt(const Statement& statement, int column) {
    sqlite3_value* stored = sqlite3_column_value(statement.handle(), column);
    const int type = sqlite3_value_type(stored);
    if (type == SQLITE_NULL) return kNullKey;
    const int64_t key = sqlite3_value_int64(stored);
    if (type != SQLITE_INTEGER || key == kNullKey) throw NotCovered{};
    return key;
  }

  static void TakeRow(TablePart& part, const Statement& statement) {
    int column = 1;
    for (auto& keys : part.keys) keys.push_back(KeyAt(statement, column++));
    for (Read& read : part.reads) read.feed.Take(sqlite3_column_value(statement.handle(), column++));
    if (++part.rows >= kNoRow) throw NotCovered{};
  }

  static void TakeNullRow(TablePart& part) {
    for (auto& keys : part.keys) keys.push_back(kNullKey);
    for (Read& read : part.reads) read.feed.TakeNull();
    ++part.rows;
  }

  static void FlushReads(TablePart& part) {
    for (Read& read : part.reads) read.feed.Flush();
  }

  void ReadFirstTable() {
    TablePart& part = parts_[0];
    const std::string row_number = part.source->alias + "." + part.source->table->row_number;
    if (part.source->table->row_number.empty()) throw NotCovered{};
    Statement statement(database_, SelectOf(part, row_number, {}));
    int64_t last = INT64_MIN;
    bool ascending = true;
    while (statement.Step()) {
      const int64_t number = statement.Integer(0);
      ascending = ascending && number >= last;
      last = number;
      row_numbers_.push_back(number);
      TakeRow(part, statement);
    }
    FlushReads(part);
    if (ascending) row_numbers_.clear();
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
    FewAreWanted(part, index.keys().size()) ? LookRowsUp(part, index, row_of_key) : ScanRows(part, index, row_of_key);
    uint32_t missing = kNoRow;
    if (part.IsLeft()) {
      missing = static_cast<uint32_t>(part.rows);
      TakeNullRow(part);
    }
    FlushReads(part);
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
    constexpr int64_t kScanShare = 4;
    if (part.step->new_column->cls != ValueClass::kInteger) return false;
    const TableSchema& table = *part.source->table;
    if (table.row_number.empty()) return false;
    Statement size(database_, "SELECT max(" + table.row_number + ") FROM " + QuotedName(table.name));
    if (!size.Step() || static_cast<int64_t>(wanted) > size.Integer(0) / kScanShare) return false;
    Statement explained(database_, "EXPLAIN QUERY PLAN " + SelectOf(part, "1", part.step->new_column->sql + " = ?1"));
    constexpr int kDetail = 3;
    return explained.Step() && explained.Text(kDetail).substr(0, 6) == "SEARCH";
  }

  void LookRowsUp(TablePart& part, const KeyIndex& index, std::vector<uint32_t>& row_of_key) {
    const std::string& column = part.step->new_column->sql;
    Statement statement(database_, SelectOf(part, column, column + " = ?1"));
    for (size_t number = 0; number < row_of_key.size(); ++number) {
      statement.Bind(1, index.keys()[number]);
      while (statement.Step()) {
        if (KeyAt(statement, 0) != index.keys()[number] || row_of_key[number] != kNoRow) throw NotCovered{};
        row_of_key[number] = static_cast<uint32_t>(part.rows);
        TakeRow(part, statement);
      }
      statement.Reset();
    }
  }

  void ScanRows(TablePart& part, const KeyIndex& index, std::vector<uint32_t>& row_of_key) {
    if (row_of_key.empty()) return;
    Statement statement(database_, SelectOf(part, part.step->new_column->sql, {}));
    while (statement.Step()) {
      const int64_t key = KeyAt(statement, 0);
      const uint32_t number = key == kNullKey ? KeyIndex::kNone : index.Find(key);
      if (number == KeyIndex::kNone) continue;
      if (row_of_key[number] != kNoRow) throw NotCovered{};
      row_of_key[number] = static_cast<uint32_t>(part.rows);
      TakeRow(part, statement);
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

  const Database& database_;
  const PlanArm& arm_;
  std::vector<ColumnSink>& sinks_;
  std::vector<TablePart> parts_;
  std::vector<int64_t> row_numbers_;  // of the first table's rows, unless they ascend
  ArmRows result_;
};

}  // namespace

ArmRows JoinArm(const Database& database, const PlanArm& arm, std::vector<ColumnSink>& sinks) {
  return ArmJoiner(database, arm, sinks).Run();
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
