// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "databases/dialect/postgres_emitter.h"
#include "databases/dialect/translation.h"

namespace stockbook::bench {

inline std::string BillsTable(const std::string& name) {
  return "CREATE TABLE " + name +
         R"(("BillID" bigint PRIMARY KEY, "AccPeriod" text, "BillDate" timestamp, 年份 bigint, 月份 bigint, 日子 bigint,
         单据类型 text, 单据编号 text, 类型 text, 说明 text, "dpID" bigint, "ksID" bigint, "pjID" bigint, 录入员 text,
         录入日期 timestamp, 审核员 text, 审核日期 timestamp);)";
}

inline std::string LinesTable(const std::string& name) {
  return "CREATE TABLE " + name +
         R"(("RecID" bigint PRIMARY KEY, "BillID" bigint, "pdID" bigint, "dpID" bigint, "ksID" bigint, "pjID" bigint,
         "OtherID" bigint, 数量 double precision, "Qty2" double precision, 除税单价 double precision,
         除税金额 numeric(19,4), 税率 double precision, 税额 numeric(19,4), 单价 double precision, 金额 numeric(19,4),
         经手人 text, 交接人 text, 包装 text, 货位 text, 期限 text, "SerialNo" text, "ProductDate" timestamp);)";
}

// Bills of five lines each over a year, half of them receipts.
inline std::string Fill(const std::string& bills, const std::string& lines, int64_t count) {
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

// What makes an inventory on a PostgreSQL server, with that many lines of product 1.
inline std::string ServerInventory(int64_t lines) {
  return R"(CREATE TABLE "tqAccPeriod"("AccPeriod" text PRIMARY KEY); INSERT INTO "tqAccPeriod" VALUES ('2025-12');)" +
         BillsTable("入库目录") + BillsTable("出库目录") + LinesTable("入库记录") + LinesTable("出库记录") +
         R"(CREATE TABLE 仓库设置("dpID" bigint PRIMARY KEY, 仓库名称 text);
             CREATE TABLE 厂商资料("KSID" bigint PRIMARY KEY, 企业名称 text, "ClassCode" text);
             CREATE TABLE 客户资料("KSID" bigint PRIMARY KEY, 企业名称 text, "ClassCode" text);
             CREATE TABLE 项目设置(项目ID bigint PRIMARY KEY, 项目名称 text, 项目编号 text, "ClassCode" text);
             CREATE TABLE 商品设置("pdID" bigint PRIMARY KEY, 商品名称 text, 商品编号 text, 规格 text, 型号 text,
             计量单位 text, 计量2 text, "ClassCode" text);
             INSERT INTO 仓库设置 SELECT i, '仓库' || i FROM generate_series(1, 3) AS i;
             INSERT INTO 厂商资料 SELECT i, '厂商' || i, '01' FROM generate_series(1, 50) AS i;
             INSERT INTO 客户资料 SELECT i, '客户' || i, '01' FROM generate_series(1, 50) AS i;
             INSERT INTO 商品设置 VALUES (1, '螺栓', 'A1', 'M8', 'GB', '个', '箱', '01');)" +
         Fill("入库目录", "入库记录", lines / 2) + ";" + Fill("出库目录", "出库记录", lines / 2);
}

// A statement of the journal in the server's language, and the selects of its arms alone.
struct ServerStatements {
  std::string whole;
  std::vector<std::string> arms;
};

// Ends the process where the statement has no arms.
inline ServerStatements TranslatedForServer(const std::string& statement, const databases::TableFinder& find_table) {
  const databases::PostgresEmitter emitter;
  databases::Translation translation(statement, {databases::Dialect::kDesktop, emitter}, find_table);
  ServerStatements statements{translation.Whole().sql, {}};
  if (!translation.plan()) {
    std::fprintf(stderr, "The journal has no plan.\n");
    std::exit(1);
  }
  for (const auto& arm : translation.plan()->arms) statements.arms.push_back(arm.sql);
  return statements;
}

// Ends the process where the rows are not as many as the inventory has lines.
inline void CheckRows(size_t rows, size_t lines) {
  if (rows == lines) return;
  std::fprintf(stderr, "The journal has %zu rows instead of %zu.\n", rows, lines);
  std::exit(1);
}

}  // namespace stockbook::bench
