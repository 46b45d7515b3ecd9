// SPDX-License-Identifier: MIT
// The connection's Execute of the material journal, compared with SQLite's own interface
// and default settings stepping the same statement once and reading every value, on the same file in the same run. The
// results are ratios: the counters `of_sqlite` (Execute / stepping) and `of_tenth` (1,000,000 lines / 100,000 lines).
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include "databases/sqlite/embedded_connection.h"
#include "journal/query_builder.h"
#include "sqlite_stepping.h"

namespace {

using stockbook::bench::CpuSeconds;

void Run(sqlite3* database, const std::string& sql) {
  char* message = nullptr;
  if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, &message) == SQLITE_OK) return;
  std::fprintf(stderr, "%s\n", message);
  std::exit(1);
}

std::string DirectoryTable(const std::string& name) {
  return "CREATE TABLE " + name +
         "(BillID INTEGER PRIMARY KEY, AccPeriod TEXT, BillDate DATE, 年份 INTEGER, 月份 INTEGER, 日子 INTEGER,"
         "单据类型 TEXT, 单据编号 TEXT, 类型 TEXT, 说明 TEXT, dpID INTEGER, ksID INTEGER, pjID INTEGER, 录入员 TEXT, "
         "录入日期 DATE,"
         "审核员 TEXT, 审核日期 DATE);";
}

std::string RecordTable(const std::string& name) {
  return "CREATE TABLE " + name +
         "(RecID INTEGER PRIMARY KEY, BillID INTEGER, pdID INTEGER, dpID INTEGER, ksID INTEGER, pjID INTEGER,"
         "OtherID INTEGER, 数量 REAL, Qty2 REAL, 除税单价 MONEY TEXT, 除税金额 MONEY TEXT, 税率 REAL, 税额 MONEY TEXT, "
         "单价 MONEY TEXT,"
         "金额 MONEY TEXT, 经手人 TEXT, 交接人 TEXT, 包装 TEXT, 货位 TEXT, 期限 TEXT, SerialNo TEXT, ProductDate "
         "DATE);";
}

// `lines` lines of product 1, half of them receipts, three to a bill, over five years of days.
std::string Fill(const std::string& directory, const std::string& records, const std::string& kind, long lines) {
  const std::string bills = std::to_string(lines / 6);
  const std::string count = std::to_string(lines / 2);
  return "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i+1<" + bills + ") INSERT INTO " +
         directory + " SELECT i+1, strftime('%Y-%m', d), d, 0, 0, 0, '" + kind + "', printf('%06d', i*7919%" + bills +
         "), '普通', CASE i%9 WHEN 0 THEN '月结' END,"
         " i%3+1, i%40+1, i%15+1, '录入'||(i%4), d, CASE i%2 WHEN 0 THEN '审核'||(i%3) END, CASE i%2 WHEN 0 THEN "
         "date(d,'+1 day') END"
         " FROM (SELECT i, date('2000-01-01', '+'||(i*1826/" +
         bills +
         ")||' days') AS d FROM n);"
         "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i+1<" +
         count + ") INSERT INTO " + records + " SELECT i+1, i%" + bills +
         "+1, 1, i%4+1, i%40+1, i%15+1, 0, 1+i%97, (1+i%97)*10, printf('%.2f', 1+i%50/100.0),"
         " printf('%.4f', (1+i%97)*(1+i%50/100.0)), 0.17, printf('%.2f', (1+i%97)*0.17), printf('%.2f', "
         "1.17+i%50/100.0),"
         " printf('%.2f', (1+i%97)*1.17), '经手'||(i%12), '交接'||(i%7), '纸箱', 'A-'||(i%60), '2006-12', "
         "'SN'||(i%5000),"
         " CASE i%5 WHEN 0 THEN '1999-12-01' END FROM n;";
}

void Create(const std::string& path, long lines) {
  std::filesystem::remove(path);
  sqlite3* database = nullptr;
  sqlite3_open(path.c_str(), &database);
  Run(database, "PRAGMA synchronous=OFF; PRAGMA journal_mode=OFF; BEGIN");
  Run(database,
      DirectoryTable("入库目录") + DirectoryTable("出库目录") + RecordTable("入库记录") + RecordTable("出库记录"));
  Run(database,
      "CREATE TABLE 仓库设置(dpID INTEGER PRIMARY KEY, 仓库名称 TEXT); CREATE TABLE 项目设置(项目ID INTEGER PRIMARY "
      "KEY, 项目名称"
      " TEXT, 项目编号 TEXT, ClassCode TEXT); CREATE TABLE 厂商资料(KSID INTEGER PRIMARY KEY, 企业名称 TEXT, ClassCode "
      "TEXT);"
      "CREATE TABLE 客户资料(KSID INTEGER PRIMARY KEY, 企业名称 TEXT, ClassCode TEXT);");
  Run(database,
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<40) INSERT INTO 厂商资料 SELECT "
      "i,'厂商'||i,'01' FROM n;"
      "INSERT INTO 客户资料 SELECT KSID,'客户'||KSID,'01' FROM 厂商资料; INSERT INTO 仓库设置 VALUES "
      "(1,'总库'),(2,'二库'),(3,'三库');"
      "INSERT INTO 项目设置 SELECT KSID,'项目'||KSID,'P'||KSID,'01' FROM 厂商资料 WHERE KSID<15");
  Run(database, "CREATE TABLE tqAccPeriod(AccPeriod TEXT); INSERT INTO tqAccPeriod VALUES ('2000-01'),('2004-12')");
  Run(database, Fill("入库目录", "入库记录", "采购入库", lines) + Fill("出库目录", "出库记录", "销售出库", lines));
  Run(database, "CREATE INDEX 入库记录_pdID ON 入库记录(pdID); CREATE INDEX 出库记录_pdID ON 出库记录(pdID); COMMIT");
  sqlite3_close(database);
}

std::string FileOf(long lines) {
  return (std::filesystem::temp_directory_path() / ("stockbook-connection-bench-" + std::to_string(lines) + ".db"))
      .string();
}

std::string Journal(stockbook::databases::EmbeddedConnection& connection) {
  return stockbook::journal::QueryBuilder(&connection, stockbook::base::MaterialJournal, {1, 0, {}}).Build();
}

void ExecuteMaterialJournal(benchmark::State& state) {
  const long lines = state.range(0);
  const std::string path = FileOf(lines);
  Create(path, lines);
  const std::string connection_string = "Provider=Stockbook.Embedded;Data Source=" + path;
  std::string statement;
  {
    stockbook::databases::EmbeddedConnection connection(connection_string);
    statement = Journal(connection);
  }
  const double stepping = stockbook::bench::StepSeconds(path, stockbook::bench::PlainSql(statement));
  double executing = 0;
  for (auto _ : state) {
    const double start = CpuSeconds();
    stockbook::databases::EmbeddedConnection connection(connection_string);
    const auto rows = connection.Execute(statement);
    executing = CpuSeconds() - start;
    if (rows.RecordCount() != static_cast<size_t>(lines)) state.SkipWithError("lines are missing");
  }
  static std::map<long, double> seconds_by_lines;
  seconds_by_lines[lines] = executing;
  state.counters["of_sqlite"] = executing / stepping;
  if (seconds_by_lines.count(lines / 10) != 0) state.counters["of_tenth"] = executing / seconds_by_lines[lines / 10];
  std::filesystem::remove(path);
}
BENCHMARK(ExecuteMaterialJournal)->Arg(99996)->Arg(999960)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
