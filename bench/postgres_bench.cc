// SPDX-License-Identifier: MIT
// The stock journal of one product from a PostgreSQL server on the loopback interface into columns, as a ratio of what
// libpq in single-row mode takes to read every value: of the same statement as it is left to the server where nothing
// else is known, and of the selects of its arms alone, which is the least that anybody could read. `postgres_bench
// [LINES [ROUNDS]]`, by default 1,000,000 and 3; elapsed time, the least of the rounds counts.
#include <benchmark/benchmark.h>
#include <libpq-fe.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "databases/dialect/postgres_emitter.h"
#include "databases/dialect/translation.h"
#include "databases/postgres/postgres_catalog.h"
#include "databases/postgres/postgres_connection.h"
#include "journal/query_builder.h"
#include "support/postgres_server.h"

namespace {

using namespace stockbook;
using databases::Interruption;
using databases::PostgresSession;

double Seconds() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

std::string BillsTable(const std::string& name) {
  return "CREATE TABLE " + name +
         R"(("BillID" bigint PRIMARY KEY, "AccPeriod" text, "BillDate" timestamp, 年份 bigint, 月份 bigint, 日子 bigint,
         单据类型 text, 单据编号 text, 类型 text, 说明 text, "dpID" bigint, "ksID" bigint, "pjID" bigint, 录入员 text,
         录入日期 timestamp, 审核员 text, 审核日期 timestamp);)";
}

std::string LinesTable(const std::string& name) {
  return "CREATE TABLE " + name +
         R"(("RecID" bigint PRIMARY KEY, "BillID" bigint, "pdID" bigint, "dpID" bigint, "ksID" bigint, "pjID" bigint,
         "OtherID" bigint, 数量 double precision, "Qty2" double precision, 除税单价 double precision,
         除税金额 numeric(19,4), 税率 double precision, 税额 numeric(19,4), 单价 double precision, 金额 numeric(19,4),
         经手人 text, 交接人 text, 包装 text, 货位 text, 期限 text, "SerialNo" text, "ProductDate" timestamp);)";
}

// Bills of five lines each over a year, half of them receipts.
std::string Fill(const std::string& bills, const std::string& lines, int64_t count) {
  const std::string last = std::to_string(count);
  return "INSERT INTO " + bills +
         " SELECT i, to_char(d, 'YYYY-MM'), d, 2025, 1, 1, '单据', 'NO' || lpad(i::text, 8, '0'), '类型', NULL,"
         " 1 + i % 3, 1 + i % 50, NULL, '张三', d, NULL, NULL FROM (SELECT i, TIMESTAMP '2025-01-01' + ((i - 1) * 365 "
         "/ (" +
         last + " / 5)) * INTERVAL '1 day' AS d FROM generate_series(1, " + last + " / 5) AS i) AS t;" +
         "INSERT INTO " + lines +
         " SELECT i, 1 + (i - 1) / 5, 1, 1 + i % 3, 1 + i % 50, NULL, 0, 1 + i % 97, 10 + i % 13, 0.25 * (i % 400),"
         " 0.25 * (i % 400) * (1 + i % 97), 0.13, 0.0325 * (i % 400), 0.2825 * (i % 400), 0.2825 * (i % 400) * (1 + i "
         "% 97),"
         " '李四', '王五', '箱', 'A-' || i % 40, NULL, NULL, NULL FROM generate_series(1, " +
         last + ") AS i;" + "CREATE INDEX ON " + lines + "(\"pdID\"); CREATE INDEX ON " + lines +
         "(\"BillID\"); ANALYZE " + bills + "; ANALYZE " + lines;
}

void MakeInventory(const testing::PostgresServer& server, int64_t lines) {
  server.Run(BillsTable("入库目录") + BillsTable("出库目录") + LinesTable("入库记录") + LinesTable("出库记录") +
             R"(CREATE TABLE "tqAccPeriod"("AccPeriod" text PRIMARY KEY); INSERT INTO "tqAccPeriod" VALUES ('2025-12');
             CREATE TABLE 仓库设置("dpID" bigint PRIMARY KEY, 仓库名称 text);
             CREATE TABLE 厂商资料("KSID" bigint PRIMARY KEY, 企业名称 text, "ClassCode" text);
             CREATE TABLE 客户资料("KSID" bigint PRIMARY KEY, 企业名称 text, "ClassCode" text);
             CREATE TABLE 项目设置(项目ID bigint PRIMARY KEY, 项目名称 text, 项目编号 text, "ClassCode" text);
             CREATE TABLE 商品设置("pdID" bigint PRIMARY KEY, 商品名称 text, 商品编号 text, 规格 text, 型号 text,
             计量单位 text, 计量2 text, "ClassCode" text);
             INSERT INTO 仓库设置 SELECT i, '仓库' || i FROM generate_series(1, 3) AS i;
             INSERT INTO 厂商资料 SELECT i, '厂商' || i, '01' FROM generate_series(1, 50) AS i;
             INSERT INTO 客户资料 SELECT i, '客户' || i, '01' FROM generate_series(1, 50) AS i;
             INSERT INTO 商品设置 VALUES (1, '螺栓', 'A1', 'M8', 'GB', '个', '箱', '01'))");
  server.Run(Fill("入库目录", "入库记录", lines / 2));
  server.Run(Fill("出库目录", "出库记录", lines / 2));
}

struct Statements {
  std::string whole;
  std::vector<std::string> arms;
};

Statements TranslatedFor(const testing::PostgresServer& server, const std::string& statement) {
  Interruption interruption(std::nullopt);
  const Interruption::Running running(interruption);
  PostgresSession session(databases::ReadPostgresSettings(server.ConnectionString()), interruption);
  const PostgresSession::Transaction transaction(session);
  databases::PostgresCatalog catalog(session);
  catalog.Refresh();
  const databases::PostgresEmitter emitter;
  databases::Translation translation(statement, {databases::Dialect::kDesktop, emitter},
                                     [&](std::string_view name) { return catalog.FindTable(name); });
  Statements statements{translation.Whole().sql, {}};
  if (!translation.plan()) {
    std::fprintf(stderr, "The journal has no plan.\n");
    std::exit(1);
  }
  for (const auto& arm : translation.plan()->arms) statements.arms.push_back(arm.sql);
  return statements;
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

double RowByRowSeconds(const testing::PostgresServer& server, const std::vector<std::string>& statements, int binary) {
  const std::string where = "host=127.0.0.1 user=tester dbname=postgres port=" + std::to_string(server.port());
  const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(PQconnectdb(where.c_str()), PQfinish);
  PQclear(PQexec(connection.get(), "SET jit = off"));
  const double start = Seconds();
  ReadRowByRow(connection.get(), statements, binary);
  return Seconds() - start;
}

double ColumnSeconds(const testing::PostgresServer& server, const std::string& statement, size_t lines) {
  const auto connection = databases::OpenPostgres(server.ConnectionString("Timeout=0"));
  const double start = Seconds();
  const platform::Recordset rows = connection->Execute(statement);
  const double seconds = Seconds() - start;
  if (rows.RecordCount() != lines) {
    std::fprintf(stderr, "The journal has %zu rows.\n", rows.RecordCount());
    std::exit(1);
  }
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
  MakeInventory(server, lines);
  const std::string statement =
      journal::QueryBuilder(databases::OpenPostgres(server.ConnectionString()).get(), base::MaterialJournal, {1, 0, ""})
          .Build();
  const Statements translated = TranslatedFor(server, statement);
  double columns = 1e9;
  double whole = 1e9;
  double arms = 1e9;
  double arms_in_text = 1e9;
  for (int round = 0; round < rounds; ++round) {
    columns = std::min(columns, ColumnSeconds(server, statement, static_cast<size_t>(lines)));
    arms = std::min(arms, RowByRowSeconds(server, translated.arms, 1));
    arms_in_text = std::min(arms_in_text, RowByRowSeconds(server, translated.arms, 0));
    whole = std::min(whole, RowByRowSeconds(server, {translated.whole}, 1));
  }
  std::printf("%lld lines of one product, least of %d rounds, elapsed\n", static_cast<long long>(lines), rounds);
  std::printf("into columns %.3f s; row by row the statement %.3f s, its arms %.3f s, in text %.3f s\n", columns, whole,
              arms, arms_in_text);
  std::printf("into columns, in order / row by row, the statement        %8.3f x  (at most 1.10 x)\n", columns / whole);
  std::printf("into columns, in order / row by row, its arms alone        %8.3f x\n", columns / arms);
}
