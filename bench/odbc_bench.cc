// SPDX-License-Identifier: MIT
// The stock journal of one product from a PostgreSQL server on the loopback interface through its ODBC driver into
// columns, as a ratio of what the same driver takes to hand over every value by SQLGetData: of the same statement as it
// is left to the server where nothing else is known, and of the selects of its arms alone. `odbc_bench [LINES
// [ROUNDS]]`, by default 1,000,000 and 3; elapsed time, the least of the rounds counts.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "child_process.h"
#include "databases/odbc/odbc_catalog.h"
#include "databases/odbc/odbc_session.h"
#include "journal/query_builder.h"
#include "server_journal.h"
#include "stockbook/databases/odbc/odbc_connection.h"
#include "support/postgres_server.h"

namespace {

using namespace stockbook;
using bench::ElapsedSeconds;
using databases::Interruption;

std::string ThroughDriver(const testing::PostgresServer& server) {
  return "Provider=Odbc;Driver=psqlodbcw.so;Server=127.0.0.1;Port=" + std::to_string(server.port()) +
         ";Database=postgres;UID=tester;Timeout=0";
}

bench::ServerStatements TranslatedFor(const std::string& connection_string, const std::string& statement) {
  Interruption interruption(std::nullopt);
  const Interruption::Running running(interruption);
  databases::OdbcSession session(databases::ReadOdbcSettings(connection_string), interruption);
  databases::OdbcCatalog catalog("");
  return bench::TranslatedForServer(statement,
                                    [&](std::string_view name) { return &catalog.Find(session, name)->schema; });
}

SQLSMALLINT ValueType(SQLSMALLINT sql_type) {
  switch (sql_type) {
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return SQL_C_SBIGINT;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return SQL_C_DOUBLE;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
      return SQL_C_TYPE_TIMESTAMP;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      return SQL_C_CHAR;
    default:
      return SQL_C_WCHAR;
  }
}

// Reads every value in the type that it is in, one after the other, and keeps nothing.
size_t ReadValueByValue(const databases::OdbcStatement& statement, const std::string& sql) {
  statement.Check(statement.Execute(sql));
  SQLSMALLINT columns = 0;
  SQLNumResultCols(statement.handle(), &columns);
  std::vector<SQLSMALLINT> types;
  for (SQLUSMALLINT column = 1; column <= static_cast<SQLUSMALLINT>(columns); ++column) {
    SQLLEN type = 0;
    SQLColAttribute(statement.handle(), column, SQL_DESC_CONCISE_TYPE, nullptr, 0, nullptr, &type);
    types.push_back(ValueType(static_cast<SQLSMALLINT>(type)));
  }
  std::array<char, 1024> value{};
  size_t sum = 0;
  size_t rows = 0;
  for (; SQL_SUCCEEDED(SQLFetch(statement.handle())); ++rows) {
    for (size_t column = 0; column < types.size(); ++column) {
      SQLLEN length = 0;
      SQLGetData(statement.handle(), static_cast<SQLUSMALLINT>(column + 1), types[column], value.data(), value.size(),
                 &length);
      sum += static_cast<size_t>(length) + static_cast<size_t>(value[0]);
    }
  }
  benchmark::DoNotOptimize(sum);
  return rows;
}

double ValueByValueSeconds(const std::string& connection_string, const std::vector<std::string>& statements,
                           size_t lines) {
  const auto link = std::make_shared<databases::OdbcLink>(databases::ReadOdbcSettings(connection_string));
  const double start = ElapsedSeconds();
  size_t rows = 0;
  for (const std::string& sql : statements) rows += ReadValueByValue(databases::OdbcStatement(link), sql);
  const double seconds = ElapsedSeconds() - start;
  bench::CheckRows(rows, lines);
  return seconds;
}

double ColumnSeconds(const std::string& connection_string, const std::string& statement, size_t lines) {
  const auto connection = databases::OpenOdbc(connection_string);
  const double start = ElapsedSeconds();
  const platform::Recordset rows = connection->Execute(statement);
  const double seconds = ElapsedSeconds() - start;
  bench::CheckRows(rows.RecordCount(), lines);
  return seconds;
}

}  // namespace

int main(int argc, char** argv) {
  const int64_t lines = argc > 1 ? std::atoll(argv[1]) : 1000000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 3;
  if (testing::PostgresServer::ProgramFolder().empty()) {
    std::fprintf(stderr, "There is no PostgreSQL server here: install the package postgresql.\n");
    return 1;
  }
  const testing::PostgresServer server({"shared_buffers=512MB", "work_mem=256MB"});
  server.Run(bench::ServerInventory(lines));
  const std::string where = ThroughDriver(server);
  const std::string statement =
      journal::QueryBuilder(databases::OpenOdbc(where).get(), base::MaterialJournal, {1, 0, ""}).Build();
  const bench::ServerStatements translated = TranslatedFor(where, statement);
  const auto count = static_cast<size_t>(lines);
  double columns = 1e9;
  double whole = 1e9;
  double arms = 1e9;
  for (int round = 0; round < rounds; ++round) {
    columns = std::min(columns, ColumnSeconds(where, statement, count));
    arms = std::min(arms, ValueByValueSeconds(where, translated.arms, count));
    whole = std::min(whole, ValueByValueSeconds(where, {translated.whole}, count));
  }
  std::printf("%lld lines of one product, least of %d rounds, elapsed\n", static_cast<long long>(lines), rounds);
  std::printf("into columns %.3f s; value by value the statement %.3f s, its arms %.3f s\n", columns, whole, arms);
  std::printf("into columns, in order / value by value, the statement    %8.3f x  (at most 0.50 x)\n", columns / whole);
  std::printf("into columns, in order / value by value, its arms alone   %8.3f x\n", columns / arms);
}
