// SPDX-License-Identifier: MIT
#include "databases/odbc/odbc_mirror.h"

#include <algorithm>
#include <chrono>

#include "base/text.h"
#include "databases/dialect/parser.h"
#include "databases/dialect/refusal.h"
#include "databases/dialect/typed_sql.h"
#include "databases/odbc/odbc_text.h"

namespace stockbook::databases {
namespace {

// Long lists of keys are longer than what some databases read in one statement.
constexpr size_t kMostNumbers = 500;

bool EqualColumns(const std::string& left, const std::string& right) { return base::EqualsIgnoringCase(left, right); }

// Writes rows into a table of the copy.
class OdbcTableCopier : public OdbcRowTaker {
 public:
  OdbcTableCopier(const MemoryDatabase& memory, const std::string& table, const std::string& insertion)
      : memory_(memory), table_(table) {
    sqlite3_stmt* prepared = nullptr;
    memory.Check(sqlite3_prepare_v2(memory.handle(), insertion.c_str(), -1, &prepared, nullptr));
    insertion_.reset(prepared);
  }

  void Begin(size_t) override { memory_.Run("DELETE FROM " + QuotedName(table_)); }
  void Take(const OdbcRowset& block) override {
    for (size_t row = 0; row < block.rows(); ++row) {
      for (size_t column = 0; column < block.columns().size(); ++column) Bind(block, column, row);
      memory_.Check(sqlite3_step(insertion_.get()));
      memory_.Check(sqlite3_reset(insertion_.get()));
    }
  }

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };

  void Bind(const OdbcRowset& block, size_t column, size_t row) {
    sqlite3_stmt* statement = insertion_.get();
    const int index = static_cast<int>(column) + 1;
    if (block.IsNull(column, row)) {
      memory_.Check(sqlite3_bind_null(statement, index));
      return;
    }
    switch (block.columns()[column].carrier) {
      case OdbcCarrier::kInteger:
        memory_.Check(sqlite3_bind_int64(statement, index, block.IntegerAt(column, row)));
        return;
      case OdbcCarrier::kDouble:
        memory_.Check(sqlite3_bind_double(statement, index, block.DoubleAt(column, row)));
        return;
      case OdbcCarrier::kDigits:
        BindText(index, block.DigitsAt(column, row));
        return;
      case OdbcCarrier::kTimestamp: {
        const auto date = block.DateAt(column, row);
        BindText(index, date ? date->Text() : "");
        return;
      }
      case OdbcCarrier::kText: {
        const auto wide = block.TextAt(column, row);
        text_.clear();
        AppendUtf8(wide.data(), wide.size(), text_);
        BindText(index, text_);
        return;
      }
    }
  }
  void BindText(int index, std::string_view text) {
    memory_.Check(
        sqlite3_bind_text64(insertion_.get(), index, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
  }

  const MemoryDatabase& memory_;
  std::string table_;
  std::unique_ptr<sqlite3_stmt, Finalizer> insertion_;
  std::string text_;
};

std::string Creation(const OdbcTable& table) {
  std::string sql;
  const auto whole_key = table.WholeKey();
  for (size_t index = 0; index < table.schema.columns.size(); ++index) {
    sql.append(sql.empty() ? "" : ", ").append(QuotedName(table.schema.columns[index].name)).append(" ");
    // As the row's own number it brings the rows into the order of the key.
    sql.append(whole_key == index ? "INTEGER PRIMARY KEY" : table.declared[index]);
  }
  return "CREATE TABLE " + QuotedName(table.schema.name) + "(" + sql + ")";
}

std::string Insertion(const OdbcTable& table, const std::vector<size_t>& columns) {
  std::string names;
  std::string places;
  for (const size_t column : columns) {
    names.append(names.empty() ? "" : ",").append(QuotedName(table.schema.columns[column].name));
    places.append(places.empty() ? "?" : ",?");
  }
  return "INSERT INTO " + QuotedName(table.schema.name) + "(" + names + ") VALUES(" + places + ")";
}

std::vector<size_t> NeededColumns(const OdbcTable& table, const TableNeeds& table_needs, const StatementNeeds& needs) {
  const auto whole_key = table.WholeKey();
  std::vector<size_t> columns;
  for (size_t index = 0; index < table.schema.columns.size(); ++index) {
    if (table_needs.all_columns || whole_key == index || needs.NamesColumn(table.schema.columns[index].name))
      columns.push_back(index);
  }
  // Even a statement that only counts rows needs the rows.
  if (columns.empty()) columns.push_back(0);
  return columns;
}

}  // namespace

void OdbcMirror::Copy(std::string_view statement, Dialect dialect) {
  Query query;
  try {
    query = ParseStatement(statement, dialect);
  } catch (const Refusal& refusal) {
    throw RefusedAt(statement, refusal);
  }
  const StatementNeeds needs(query);
  memory_.Run("BEGIN");
  for (const TableNeeds& table_needs : needs.tables()) {
    // The embedded engine says what is wrong with a table that may not be read, or that is none.
    if (!catalog_.MayRead(table_needs.name)) continue;
    const OdbcTable* table = catalog_.Find(session_, table_needs.name);
    if (table == nullptr || table->schema.columns.empty()) continue;
    CopyTable(*table, table_needs, NeededColumns(*table, table_needs, needs));
  }
  memory_.Run("COMMIT");
}

void OdbcMirror::CopyTable(const OdbcTable& table, const TableNeeds& needs, const std::vector<size_t>& columns) {
  memory_.Run(Creation(table));
  OdbcTableCopier copier(memory_, table.schema.name, Insertion(table, columns));
  session_.Stream(Selecting(table, needs, columns), copier);
}

std::string OdbcMirror::Selecting(const OdbcTable& table, const TableNeeds& needs,
                                  const std::vector<size_t>& columns) const {
  std::string sql;
  for (const size_t column : columns) sql.append(sql.empty() ? "SELECT " : ",").append(SelectedColumn(table, column));
  return sql + " FROM " + Quoted(table.schema.name) + Conditions(table, needs) + Order(table);
}

// The driver of SQLite passes numbers on with 15 digits, which not every double has enough of.
std::string OdbcMirror::SelectedColumn(const OdbcTable& table, size_t column) const {
  const std::string name = Quoted(table.schema.columns[column].name);
  const ValueClass cls = table.schema.columns[column].cls;
  const bool cut_off = cls == ValueClass::kReal || cls == ValueClass::kAny || cls == ValueClass::kMoney;
  if (session_.info().engine != OdbcEngine::kSqlite || !cut_off) return name;
  return "CASE WHEN typeof(" + name + ")='real' AND CAST(CAST(" + name + " AS TEXT) AS REAL)<>" + name +
         " THEN printf('%!.17g'," + name + ") ELSE " + name + " END";
}

std::string OdbcMirror::Conditions(const OdbcTable& table, const TableNeeds& needs) const {
  std::string sql;
  for (const WholeNumberCondition& condition : needs.conditions) {
    for (size_t index = 0; index < table.schema.columns.size(); ++index) {
      const std::string& name = table.schema.columns[index].name;
      if (!table.whole[index] || !EqualColumns(name, condition.column) || condition.numbers.size() > kMostNumbers)
        continue;
      sql.append(sql.empty() ? " WHERE " : " AND ").append(Quoted(name)).append(" IN (");
      for (const std::string& number : condition.numbers)
        sql.append(&number == &condition.numbers.front() ? "" : ",").append(number);
      sql += ")";
    }
  }
  return sql;
}

// Rows that a statement does not order come as they are stored, and in the order of their key where that is told.
std::string OdbcMirror::Order(const OdbcTable& table) const {
  if (table.WholeKey() || table.is_view) return "";
  std::string sql;
  for (const std::string& name : table.key) sql.append(sql.empty() ? " ORDER BY " : ",").append(Quoted(name));
  return sql.empty() && session_.info().engine == OdbcEngine::kSqlite ? " ORDER BY rowid" : sql;
}

std::string OdbcMirror::Quoted(std::string_view name) const {
  const std::string& quote = session_.info().quote;
  if (quote.empty()) return std::string(name);
  // Desktop drivers say "`" or "[", and a bracket is closed by the other one.
  const std::string closing = quote == "[" ? "]" : quote;
  return quote + base::ReplaceAll(name, closing, closing + closing) + closing;
}

std::unique_ptr<EmbeddedConnection> OdbcMirror::Open(const OdbcSettings& settings,
                                                     const Interruption& interruption) const {
  std::string text = "Provider=Stockbook.Embedded;Data Source=" + memory_.name();
  text += ";Tables=\"" + base::ReplaceAll(settings.tables, "\"", "\"\"") + "\"";
  if (settings.dialect == Dialect::kServer) text += ";Dialect=SQL";
  if (settings.joins_ampersand) text += ";AmpersandJoins=1";
  const auto remaining = interruption.Remaining();
  const double seconds = remaining ? std::chrono::duration<double>(*remaining).count() : 0;
  text += ";Timeout=" + std::to_string(remaining ? std::max(seconds, 0.001) : 0.0);
  return std::make_unique<EmbeddedConnection>(text);
}

}  // namespace stockbook::databases
