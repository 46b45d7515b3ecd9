// SPDX-License-Identifier: MIT
#include "databases/desktop/copy_writer.h"

#include <algorithm>

#include "base/text.h"
#include "databases/desktop/read_failure.h"

namespace stockbook::databases {
namespace {

// The columns by which journals and balances find rows.
constexpr const char* kJournalKeys[] = {"pdID", "BillID", "ksID", "pjID", "AccPeriod"};

std::string InQuotes(const std::string& name) { return "\"" + base::ReplaceAll(name, "\"", "\"\"") + "\""; }

// Money, decimals and dates have text affinity, so that nothing turns them into doubles.
const char* DeclaredType(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::kWhole:
      return "INTEGER";
    case ColumnKind::kReal:
      return "REAL";
    case ColumnKind::kMoney:
      return "MONEY TEXT";
    case ColumnKind::kDecimal:
      return "DECIMAL TEXT";
    case ColumnKind::kDate:
      return "DATETIME TEXT";
    case ColumnKind::kText:
      return "TEXT";
    case ColumnKind::kBytes:
      return "BLOB";
  }
  return "";
}

int AskWhetherDue(void* interruption) { return static_cast<Interruption*>(interruption)->IsDue() ? 1 : 0; }

}  // namespace

CopyWriter::CopyWriter(const std::string& path, const std::string& source, Interruption& interruption)
    : path_(path), interruption_(interruption) {
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  database_.reset(opened);
  if (code != SQLITE_OK) Fail();
  constexpr int kInstructionsBetweenLooks = 20000;
  sqlite3_progress_handler(opened, kInstructionsBetweenLooks, AskWhetherDue, &interruption_);
  // Nobody sees the file before it is whole, and one that is not is thrown away. A journal is there all the same:
  // without one an index that cannot be built would leave its traces.
  Run("PRAGMA journal_mode=MEMORY; PRAGMA synchronous=OFF; PRAGMA locking_mode=EXCLUSIVE; PRAGMA temp_store=MEMORY; "
      "BEGIN");
  Run("CREATE TABLE stockbook_source(path TEXT)");
  Run("INSERT INTO stockbook_source VALUES('" + base::ReplaceAll(source, "'", "''") + "')");
}

void CopyWriter::BeginTable(const DesktopTable& table) {
  EndTable();
  std::string columns;
  std::string parameters;
  for (const DesktopColumn& column : table.columns) {
    columns += (columns.empty() ? "" : ", ") + InQuotes(column.name) + " " + DeclaredType(column.kind);
    parameters += parameters.empty() ? "?" : ",?";
  }
  const std::string create = "CREATE TABLE " + InQuotes(table.name) + "(" + columns + ")";
  const int code = sqlite3_exec(database_.get(), create.c_str(), nullptr, nullptr, nullptr);
  // Two of one name.
  if (code == SQLITE_ERROR) throw ReadFailure(FailureCause::kDamaged, table.name);
  if (code != SQLITE_OK) Fail();
  table_ = table;
  const std::string insert = "INSERT INTO " + InQuotes(table.name) + " VALUES(" + parameters + ")";
  sqlite3_stmt* prepared = nullptr;
  if (sqlite3_prepare_v2(database_.get(), insert.c_str(), -1, &prepared, nullptr) != SQLITE_OK) Fail();
  insert_.reset(prepared);
}

void CopyWriter::AddRow(const std::vector<DesktopValue>& values) {
  if (interruption_.IsDueAfter(1)) throw interruption_.Reason("Open");
  for (size_t index = 0; index < values.size(); ++index) Bind(static_cast<int>(index) + 1, values[index]);
  const int code = sqlite3_step(insert_.get());
  sqlite3_reset(insert_.get());
  if (code != SQLITE_DONE) Fail();
}

// The values live until the step.
void CopyWriter::Bind(int parameter, const DesktopValue& value) {
  sqlite3_stmt* insert = insert_.get();
  if (const auto* whole = std::get_if<int64_t>(&value)) {
    sqlite3_bind_int64(insert, parameter, *whole);
  } else if (const auto* number = std::get_if<double>(&value)) {
    sqlite3_bind_double(insert, parameter, *number);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    sqlite3_bind_text64(insert, parameter, text->data(), text->size(), SQLITE_STATIC, SQLITE_UTF8);
  } else if (const auto* bytes = std::get_if<Bytes>(&value)) {
    sqlite3_bind_blob64(insert, parameter, bytes->content.data(), bytes->content.size(), SQLITE_STATIC);
  } else {
    sqlite3_bind_null(insert, parameter);
  }
}

void CopyWriter::Finish() {
  EndTable();
  Run("ANALYZE; COMMIT");
  if (sqlite3_close(database_.release()) != SQLITE_OK) throw CannotWriteCopy("Open", "无法写完临时文件“" + path_ + "”");
}

// Indexes are built over rows that are there already.
void CopyWriter::EndTable() {
  if (insert_ == nullptr) return;
  insert_.reset();
  AddJournalIndexes();
  for (size_t index = 0; index < indexes_.size(); ++index) {
    const auto same = [&](const DesktopIndex& other) { return other.columns == indexes_[index].columns; };
    if (std::none_of(indexes_.begin(), indexes_.begin() + static_cast<std::ptrdiff_t>(index), same))
      CreateIndex(indexes_[index]);
  }
  indexes_.clear();
}

void CopyWriter::AddJournalIndexes() {
  for (uint32_t column = 0; column < table_.columns.size(); ++column) {
    const bool is_key = std::any_of(std::begin(kJournalKeys), std::end(kJournalKeys), [&](const char* key) {
      return base::EqualsIgnoringCase(table_.columns[column].name, key);
    });
    const bool is_there = std::any_of(indexes_.begin(), indexes_.end(),
                                      [&](const DesktopIndex& index) { return index.columns.front() == column; });
    if (is_key && !is_there) indexes_.push_back({{column}, Repetition::kAllowed});
  }
}

void CopyWriter::CreateIndex(const DesktopIndex& index) {
  std::string columns;
  for (const uint32_t column : index.columns)
    columns += (columns.empty() ? "" : ",") + InQuotes(table_.columns[column].name);
  const std::string rest = "INDEX \"stockbook_index_" + std::to_string(++index_count_) + "\" ON " +
                           InQuotes(table_.name) + "(" + columns + ")";
  if (index.repetition == Repetition::kForbidden) {
    const int code = sqlite3_exec(database_.get(), ("CREATE UNIQUE " + rest).c_str(), nullptr, nullptr, nullptr);
    if (code == SQLITE_OK) return;
    // What the desktop engine holds to be different may be equal here.
    if (code != SQLITE_CONSTRAINT) Fail();
  }
  Run("CREATE " + rest);
}

void CopyWriter::Run(const std::string& sql) {
  if (sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) Fail();
}

void CopyWriter::Fail() {
  const int code = sqlite3_errcode(database_.get());
  if (code == SQLITE_INTERRUPT) throw interruption_.Reason("Open");
  if (code == SQLITE_NOMEM) {
    throw platform::Error("Open", "内存不足，无法读取桌面数据库文件", code, platform::ErrorKind::kMemory);
  }
  throw CannotWriteCopy("Open",
                        "无法写入临时文件“" + path_ + "”，请检查磁盘空间和权限：" + sqlite3_errmsg(database_.get()),
                        code, platform::ErrorKind::kInputOutput);
}

std::string SourceOfCopy(const std::string& path) {
  sqlite3* opened = nullptr;
  sqlite3_stmt* statement = nullptr;
  std::string source;
  if (sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr) == SQLITE_OK &&
      sqlite3_prepare_v2(opened, "SELECT path FROM stockbook_source", -1, &statement, nullptr) == SQLITE_OK &&
      sqlite3_step(statement) == SQLITE_ROW && sqlite3_column_type(statement, 0) == SQLITE_TEXT) {
    source = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
  }
  sqlite3_finalize(statement);
  sqlite3_close_v2(opened);
  return source;
}

}  // namespace stockbook::databases
