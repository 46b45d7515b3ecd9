// SPDX-License-Identifier: MIT
// The stock journal of one product from a PostgreSQL server on the loopback interface into columns, as a ratio of what
// libpq in single-row mode takes to read every value: of the same statement as it is left to the server where nothing
// else is known, and of the selects of its arms alone, which is the least that anybody could read. `postgres_bench
// [LINES [ROUNDS]]`, by default 1,000,000 and 3; elapsed time, the least of the rounds counts.
#include <benchmark/benchmark.h>
#include <libpq-fe.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "child_process.h"
#include "databases/postgres/postgres_catalog.h"
#include "journal/query_builder.h"
#include "server_journal.h"
#include "stockbook/databases/postgres/postgres_connection.h"
#include "support/postgres_server.h"

namespace {

using namespace stockbook;
using bench::ElapsedSeconds;
using databases::Interruption;
using databases::PostgresSession;

bench::ServerStatements TranslatedFor(const testing::PostgresServer& server, const std::string& statement) {
  Interruption interruption(std::nullopt);
  const Interruption::Running running(interruption);
  PostgresSession session(databases::ReadPostgresSettings(server.ConnectionString()), interruption);
  const PostgresSession::Transaction transaction(session);
  databases::PostgresCatalog catalog(session);
  catalog.Refresh();
  return bench::TranslatedForServer(statement, [&](std::string_view name) { return catalog.FindTable(name); });
}

// Reads every value of the statements, one after the other, and keeps nothing; the rows are counted.
size_t ReadRowByRow(PGconn* connection, const std::vector<std::string>& statements, int binary) {
  size_t rows = 0;
  size_t sum = 0;
  for (const std::string& sql : statements) {
    PQsendQueryParams(connection, sql.c_str(), 0, nullptr, nullptr, nullptr, nullptr, binary);
    PQsetSingleRowMode(connection);
    while (PGresult* row = PQgetResult(connection)) {
      if (PQresultStatus(row) == PGRES_SINGLE_TUPLE) {
        ++rows;
        for (int column = 0; column < PQnfields(row); ++column) {
          if (PQgetisnull(row, 0, column) != 0) continue;
          sum += static_cast<size_t>(PQgetlength(row, 0, column)) + static_cast<size_t>(*PQgetvalue(row, 0, column));
        }
      } else if (PQresultStatus(row) != PGRES_TUPLES_OK) {
        std::fprintf(stderr, "%s\n", PQresultErrorMessage(row));
        std::exit(1);
      }
      PQclear(row);
    }
  }
  benchmark::DoNotOptimize(sum);
  return rows;
}

double RowByRowSeconds(const testing::PostgresServer& server, const std::vector<std::string>& statements, int binary,
                       size_t lines) {
  const std::string where = "host=127.0.0.1 user=tester dbname=postgres port=" + std::to_string(server.port());
  const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(PQconnectdb(where.c_str()), PQfinish);
  PQclear(PQexec(connection.get(), "SET jit = off"));
  const double start = ElapsedSeconds();
  bench::CheckRows(ReadRowByRow(connection.get(), statements, binary), lines);
  return ElapsedSeconds() - start;
}

double ColumnSeconds(const testing::PostgresServer& server, const std::string& statement, size_t lines) {
  const auto connection = databases::OpenPostgres(server.ConnectionString("Timeout=0"));
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
    return 0;
  }
  const testing::PostgresServer server({"shared_buffers=512MB", "work_mem=256MB"});
  server.Run(bench::ServerInventory(lines));
  const std::string statement =
      journal::QueryBuilder(databases::OpenPostgres(server.ConnectionString()).get(), base::MaterialJournal, {1, 0, ""})
          .Build();
  const bench::ServerStatements translated = TranslatedFor(server, statement);
  const auto count = static_cast<size_t>(lines);
  double columns = 1e9;
  double whole = 1e9;
  double arms = 1e9;
  double arms_in_text = 1e9;
  for (int round = 0; round < rounds; ++round) {
    columns = std::min(columns, ColumnSeconds(server, statement, count));
    arms = std::min(arms, RowByRowSeconds(server, translated.arms, 1, count));
    arms_in_text = std::min(arms_in_text, RowByRowSeconds(server, translated.arms, 0, count));
    whole = std::min(whole, RowByRowSeconds(server, {translated.whole}, 1, count));
  }
  std::printf("%lld lines of one product, least of %d rounds, elapsed\n", static_cast<long long>(lines), rounds);
  std::printf("into columns %.3f s; row by row the statement %.3f s, its arms %.3f s, in text %.3f s\n", columns, whole,
              arms, arms_in_text);
  std::printf("into columns, in order / row by row, the statement        %8.3f x  (at most 1.10 x)\n", columns / whole);
  std::printf("into columns, in order / row by row, its arms alone        %8.3f x\n", columns / arms);
}
