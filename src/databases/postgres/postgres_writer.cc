// SPDX-License-Identifier: MIT
#include "databases/postgres/postgres_writer.h"

#include <charconv>
#include <string>
#include <vector>

#include "base/number.h"
#include "base/text.h"
#include "databases/postgres/client_library.h"
#include "databases/postgres/postgres_errors.h"
#include "databases/postgres/postgres_settings.h"
#include "stockbook/base/date.h"
#include "stockbook/base/money.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

struct WriterFreer {
  void operator()(PGresult* result) const { PQclear(result); }
  void operator()(PGconn* connection) const { PQfinish(connection); }
  void operator()(char* text) const { PQfreemem(text); }
};
using WriterResult = std::unique_ptr<PGresult, WriterFreer>;

std::string QuotedIdentifier(std::string_view name) { return "\"" + base::ReplaceAll(name, "\"", "\"\"") + "\""; }

std::string_view ServerTypeOf(StoredType type) {
  switch (type) {
    case StoredType::kWhole:
      return "bigint";
    case StoredType::kNumber:
      return "double precision";
    case StoredType::kMoney:
      return "numeric(19,4)";
    case StoredType::kDate:
      return "timestamp";
    case StoredType::kText:
      break;
  }
  return "text";
}

// A text as a line of COPY has it.
void AppendCopyText(std::string_view text, std::string& line) {
  for (const char c : text) {
    if (c == '\\') {
      line += "\\\\";
    } else if (c == '\n') {
      line += "\\n";
    } else if (c == '\r') {
      line += "\\r";
    } else if (c == '\t') {
      line += "\\t";
    } else {
      line += c;
    }
  }
}

void AppendCopyValue(StoredType type, const base::Value& value, std::string& line) {
  if (value.IsNull()) {
    line += "\\N";
  } else if (type == StoredType::kMoney) {
    line += value.AsMoney().value_or(base::Money()).Text();
  } else if (type == StoredType::kWhole) {
    line += std::to_string(value.AsInteger().value_or(0));
  } else if (type == StoredType::kNumber) {
    // The shortest digits that read as the same double.
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, StoredDouble(value)).ptr;
    line.append(digits, end);
  } else {
    AppendCopyText(value.Text(), line);
  }
}

void AppendRead(StoredType type, std::string_view text, columns::ColumnBuilder& builder) {
  if (type == StoredType::kText) return builder.AppendText(base::CleanUtf8(text));
  if (type == StoredType::kMoney) {
    if (const auto money = base::Money::Parse(text)) return builder.AppendMoney(*money);
  } else if (type == StoredType::kDate) {
    if (const auto date = base::Date::Parse(text)) return builder.AppendDate(*date);
  } else if (type == StoredType::kWhole) {
    if (const auto whole = base::ParseInteger(text)) return builder.AppendInteger(*whole);
  } else {
    double number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc())
      return builder.AppendDouble(number);
  }
  // Whoever compares will find that it differs.
  builder.AppendText(base::CleanUtf8(text));
}

class PostgresWriter : public TableWriter {
 public:
  PostgresWriter(const PostgresSettings& settings, Existing existing) : existing_(existing) {
    Connect(settings);
    Run("BEGIN ISOLATION LEVEL READ COMMITTED READ WRITE");
    // Nobody waits for ever for a table that another program holds.
    Run("SET LOCAL lock_timeout = '30s'; SET LOCAL DateStyle = 'ISO, YMD'; SET LOCAL extra_float_digits = 1");
    if (!settings.schema.empty()) Run("SET LOCAL search_path TO " + QuotedIdentifier(settings.schema));
  }

  void Create(const StoredTable& table) override;
  void Write(const StoredTable& table, std::span<const columns::Column> columns, size_t first, size_t count) override;
  void Seal(std::span<const StoredIndex> indexes) override;
  std::vector<columns::Column> ReadBack(const StoredTable& table) override;
  void Commit() override { Run("COMMIT"); }

 private:
  void Connect(const PostgresSettings& settings);
  void Run(const std::string& statements) { Ask(statements, PGRES_COMMAND_OK); }
  WriterResult Ask(const std::string& statement, ExecStatusType expected);
  void Put(const std::string& lines);
  [[noreturn]] void Fail(const PGresult* result) const;
  bool Exists(const std::string& table);

  const Existing existing_;
  std::unique_ptr<PGconn, WriterFreer> handle_;
  std::vector<std::string> tables_;
};

void PostgresWriter::Connect(const PostgresSettings& settings) {
  // libpq takes the last of two, so what stands first is what a host may change.
  std::vector<const char*> keys{"fallback_application_name", "connect_timeout", "tcp_user_timeout"};
  std::vector<const char*> values{"Stockbook", "30", "120000"};
  for (const auto& [key, value] : settings.parameters) {
    keys.push_back(key.c_str());
    values.push_back(value.c_str());
  }
  keys.insert(keys.end(), {"client_encoding", nullptr});
  values.insert(values.end(), {"UTF8", nullptr});
  handle_.reset(PQconnectdbParams(keys.data(), values.data(), 0));
  if (!handle_) throw platform::Error("Open", "内存不足，无法连接数据库", 0, platform::ErrorKind::kMemory);
  PQsetNoticeProcessor(
      handle_.get(), [](void*, const char*) {}, nullptr);
  if (PQstatus(handle_.get()) == CONNECTION_OK) return;
  const std::string message = PQerrorMessage(handle_.get());
  const bool needs_password = PQconnectionNeedsPassword(handle_.get()) != 0;
  throw ErrorOfConnecting(settings.server, needs_password ? "28P01" : SqlStateIn(message), message);
}

void PostgresWriter::Fail(const PGresult* result) const {
  const char* state = result == nullptr ? nullptr : PQresultErrorField(result, PG_DIAG_SQLSTATE);
  const char* detail = result == nullptr ? nullptr : PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
  if (state != nullptr && std::string_view(state) == "55P03")
    throw platform::Error("copy", "目标库的表正被其他程序使用，没有写入任何内容，请关闭那些程序后重试", 0,
                          platform::ErrorKind::kBusy, state);
  if (state != nullptr)
    throw platform::Error("copy",
                          "目标服务器拒绝写入，没有写入任何内容：" +
                              base::OneLine(base::CleanUtf8(detail == nullptr ? state : detail), " "),
                          0, KindOfSqlState(state), state);
  throw platform::Error("copy", "与目标服务器的连接已断开，没有写入任何内容，请检查网络后重试", 0,
                        platform::ErrorKind::kInputOutput);
}

WriterResult PostgresWriter::Ask(const std::string& statement, ExecStatusType expected) {
  WriterResult result(PQexec(handle_.get(), statement.c_str()));
  if (PQresultStatus(result.get()) != expected) Fail(result.get());
  return result;
}

bool PostgresWriter::Exists(const std::string& table) {
  const std::string name = QuotedIdentifier(table);
  const std::unique_ptr<char, WriterFreer> literal(PQescapeLiteral(handle_.get(), name.data(), name.size()));
  if (!literal) Fail(nullptr);
  const WriterResult found = Ask("SELECT to_regclass(" + std::string(literal.get()) + ") IS NOT NULL", PGRES_TUPLES_OK);
  return std::string_view(PQgetvalue(found.get(), 0, 0)) == "t";
}

void PostgresWriter::Create(const StoredTable& table) {
  for (const StoredColumn& column : table.columns) {
    if (column.mixed)
      throw platform::Error(
          "copy", "表“" + table.name + "”的列“" + column.name +
                      "”中混有数和文本，服务器无法保存，没有写入任何内容，请先用 stockbook doctor 检查并改正");
  }
  if (existing_ == Existing::kReplaced) {
    Run("DROP TABLE IF EXISTS " + QuotedIdentifier(table.name));
  } else if (Exists(table.name)) {
    throw platform::Error("copy", "目标库已有表“" + table.name + "”，没有写入任何内容；要替换请加 --replace");
  }
  std::string sql = "CREATE TABLE " + QuotedIdentifier(table.name) + " (";
  for (const StoredColumn& column : table.columns) {
    if (sql.back() != '(') sql += ", ";
    sql.append(QuotedIdentifier(column.name)).append(" ").append(ServerTypeOf(column.type));
    if (column.name == table.key) sql += " PRIMARY KEY";
  }
  Run(sql + ")");
  tables_.push_back(table.name);
}

void PostgresWriter::Put(const std::string& lines) {
  if (PQputCopyData(handle_.get(), lines.data(), static_cast<int>(lines.size())) != 1) Fail(nullptr);
}

void PostgresWriter::Write(const StoredTable& table, std::span<const columns::Column> columns, size_t first,
                           size_t count) {
  constexpr size_t kBufferBytes = size_t{1} << 20;
  Ask("COPY " + QuotedIdentifier(table.name) + " FROM STDIN", PGRES_COPY_IN);
  std::string lines;
  for (size_t row = first; row < first + count; ++row) {
    for (size_t index = 0; index < columns.size(); ++index) {
      if (index > 0) lines += '\t';
      AppendCopyValue(table.columns[index].type, columns[index].At(row), lines);
    }
    lines += '\n';
    if (lines.size() < kBufferBytes) continue;
    Put(lines);
    lines.clear();
  }
  Put(lines);
  if (PQputCopyEnd(handle_.get(), nullptr) != 1) Fail(nullptr);
  const WriterResult done(PQgetResult(handle_.get()));
  const ExecStatusType status = PQresultStatus(done.get());
  while (const WriterResult rest{PQgetResult(handle_.get())}) {
  }
  if (status != PGRES_COMMAND_OK) Fail(done.get());
}

void PostgresWriter::Seal(std::span<const StoredIndex> indexes) {
  for (const StoredIndex& index : indexes) {
    std::string sql = "CREATE INDEX " + QuotedIdentifier(index.name) + " ON " + QuotedIdentifier(index.table) + " (";
    for (const std::string& column : index.columns)
      sql.append(sql.back() == '(' ? "" : ", ").append(QuotedIdentifier(column));
    Run(sql + ")");
  }
  // The planner knows the tables before anybody asks.
  for (const std::string& table : tables_) Run("ANALYZE " + QuotedIdentifier(table));
}

std::vector<columns::Column> PostgresWriter::ReadBack(const StoredTable& table) {
  // Rows without a key stand where they were written, since nobody else has written into the table.
  const std::string order = table.key.empty() ? "ctid" : QuotedIdentifier(table.key);
  Run("DECLARE stored NO SCROLL CURSOR FOR SELECT * FROM " + QuotedIdentifier(table.name) + " ORDER BY " + order);
  std::vector<columns::ColumnBuilder> builders(table.columns.size());
  for (;;) {
    const WriterResult rows = Ask("FETCH 20000 FROM stored", PGRES_TUPLES_OK);
    if (static_cast<size_t>(PQnfields(rows.get())) != builders.size()) return {};
    const int count = PQntuples(rows.get());
    for (int row = 0; row < count; ++row) {
      for (size_t index = 0; index < builders.size(); ++index) {
        const auto column = static_cast<int>(index);
        if (PQgetisnull(rows.get(), row, column) != 0) {
          builders[index].AppendNull();
        } else {
          const auto size = static_cast<size_t>(PQgetlength(rows.get(), row, column));
          AppendRead(table.columns[index].type, {PQgetvalue(rows.get(), row, column), size}, builders[index]);
        }
      }
    }
    if (count == 0) break;
  }
  Run("CLOSE stored");
  std::vector<columns::Column> columns;
  for (columns::ColumnBuilder& builder : builders) columns.push_back(builder.Finish());
  return columns;
}

}  // namespace

std::unique_ptr<TableWriter> OpenPostgresWriter(std::string_view connection_string, Existing existing) {
  return std::make_unique<PostgresWriter>(ReadPostgresSettings(connection_string), existing);
}

}  // namespace stockbook::databases
