// SPDX-License-Identifier: MIT
#include "contract/contract_statements.h"

#include "databases/journal_statements.h"

namespace stockbook::testing {

using databases::Dialect;

void AddMovements(DatabaseFile& file) {
  file.Run(R"(
    WITH RECURSIVE s(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM s WHERE n < 300)
    INSERT INTO 入库目录 SELECT 1000 + n, '2005-0' || (1 + n % 3), date('2005-01-01', (n % 80) || ' days'), 2005,
      CAST(strftime('%m', '2005-01-01', (n % 80) || ' days') AS INTEGER),
      CAST(strftime('%d', '2005-01-01', (n % 80) || ' days') AS INTEGER), CASE n % 3 WHEN 0 THEN '采购入库' ELSE '入库单' END, 'No' || (n % 40), '采购',
      CASE n % 7 WHEN 0 THEN NULL ELSE '说明' || (n % 5) END, 1 + n % 2, 5 + n % 2, CASE n % 4 WHEN 0 THEN NULL ELSE 3 END,
      '张三', date('2005-01-01', (n % 90) || ' days'), CASE n % 2 WHEN 0 THEN '李四' END, NULL FROM s;
    INSERT INTO 出库目录 SELECT BillID + 1000, AccPeriod, BillDate, 年份, 月份, 日子, '销售单', 单据编号, 类型, 说明, dpID,
      7 + BillID % 2, pjID, 录入员, 录入日期, 审核员, 审核日期 FROM 入库目录 WHERE BillID > 1000;
    WITH RECURSIVE s(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM s WHERE n < 1500)
    INSERT INTO 入库记录 SELECT 1000 + n, 1000 + 1 + n % 300, 1 + n % 3, 1 + n % 2, 5 + n % 2, 3 + n % 2, 0, (n % 17) * 0.25,
      n % 9, 1.25 + n % 4, CAST((n % 17) * 31 AS TEXT) || '.' || printf('%04d', n * 7 % 10000), 0.17,
      CAST(n % 5 AS TEXT) || '.5', 1.5, CAST(n AS TEXT), '张三', CASE n % 2 WHEN 0 THEN '李四' END, '盒', 'A-' || (n % 6), NULL,
      'S' || n, CASE n % 3 WHEN 0 THEN '2004-12-01' END FROM s;
    INSERT INTO 出库记录 SELECT RecID + 2000, BillID + 1000, pdID, dpID, 7 + RecID % 2, pjID, RecID, 数量, Qty2, 除税单价,
      除税金额, 税率, 税额, 单价, 金额, 经手人, 交接人, 包装, 货位, 期限, SerialNo, ProductDate FROM 入库记录 WHERE RecID > 1000;
  )");
}

std::vector<std::string> ControlStatements(Dialect dialect) {
  const std::string period = "2005-03";
  std::vector<std::string> statements = {
      MaterialJournal(dialect, "1)", period),
      MaterialJournal(dialect, "2) And Recs.dpID=2", "2005-02"),
      MaterialJournal(dialect, "99)", period),
      SupplierJournal(dialect, " Where (Recs.ksID = 5)", period),
      SupplierJournal(dialect, " Where Recs.ksID in (5,6) And Recs.pdID=1", period),
      SupplierJournal(dialect, " And Recs.pdID=1", period),
      CustomerJournal(dialect, " Where (Recs.ksID = 7) And Recs.pdID=3", period),
      CustomerJournal(dialect, "", period),
      ProjectJournal(dialect, "1", period),
      ProjectJournal(dialect, "2 And Recs.pjID in (3,4)", period),
      DepotBalance("1", "", "2004-12"),
      DepotBalance("1", "AND bn.DpID=1 ", "2004-12"),
      PartnerBalance("tqSuppBalance", " Where bn.ksID=5", "2004-12"),
      PartnerBalance("tqSuppBalance", " Where bn.ksID in (5,6) And bn.pdID=1", "2004-12"),
      PartnerBalance("tqCustBalance", " And bn.pdID=1", "2004-12"),
      PartnerBalance("tqCustBalance", "", "2004-12"),
      ProjectBalance("1", " And bn.pjID=3"),
      "Select * From tqAccPeriod Order by AccPeriod",
      "Select Top 1 * From tqAccPeriod Order by AccPeriod DESC",
      "Select * From 厂商资料 Where ClassCode like '01%'",
      "Select * From 客户资料 Where ClassCode like '%'",
      "Select 项目ID As pjID From 项目设置 Where ClassCode='01'",
      "Select ksID From 厂商资料 Where Left(ClassCode,2) = '01'",
      "Select ksID From 客户资料 Where Left(ClassCode,4)='0101'",
      "Select * From 厂商资料 Where ksID=5",
      "SELECT pd.pdID, pd.商品名称, pd.商品编号, pd.计量单位,pd.计量2, pd.计价方法, pd.进位方法, pd.最低库存, "
      "pd.最高库存, pd.输入简码, pd.KSID, pd.默认单价, pd.普通税率, pd.增值税率, pd.购进单价, pd.普购税率, "
      "pd.增购税率, "
      "pd.ClassCode, pd.单位数量, pd.存放位置, pd.商品条码, pd.生产厂家, pd.备注, pd.别名, pd.颜色, pd.重量, pd.定义, "
      "pd.规格, pd.型号 FROM 商品设置 AS pd Where pdID=2",
      "SELECT * FROM 仓库设置 Where dpID=2",
      "SELECT * FROM 项目设置 Where 项目ID=3",
      "SELECT * FROM 项目分类 Where ClassCode='0101'",
      "Select ClassCode From 厂商资料 Where ksID=6",
      "Select ClassCode From 项目设置 Where pjID=3",
      "Select * From 项目分类 Where ClassCode='01' Union Select * From 项目分类 Where ClassCode='0101'",
      "SELECT 仓库余额表.*, 仓库设置.仓库名称, * FROM 仓库余额表 LEFT JOIN 仓库设置 ON 仓库余额表.DpID = "
      "仓库设置.dpID  Where ID=1",
      "SELECT d.BillID, CDate(d.年份 & '-' & d.月份 & '-' & d.日子) AS BillDate, d.单据类型 AS BillName, d.单据编号 AS "
      "BillNo, 仓库设置.仓库名称 AS DepotName FROM (入库目录 AS d INNER JOIN 入库记录 AS r ON d.BillID = r.BillID) "
      "LEFT "
      "JOIN 仓库设置 ON r.dpID = 仓库设置.dpID Where r.RecID=100",
  };
  return statements;
}

std::vector<std::pair<std::string, std::string>> PartnerJournals() {
  std::vector<std::pair<std::string, std::string>> pairs(3);
  for (const Dialect dialect : {Dialect::kServer, Dialect::kDesktop}) {
    const std::string journals[] = {SupplierJournal(dialect, " Where (Recs.ksID = 5)", "2005-03"),
                                    CustomerJournal(dialect, " Where (Recs.ksID = 7)", "2005-03"),
                                    ProjectJournal(dialect, "1", "2005-03")};
    for (size_t index = 0; index < pairs.size(); ++index)
      (dialect == Dialect::kServer ? pairs[index].first : pairs[index].second) = journals[index];
  }
  return pairs;
}

std::vector<std::string> StatementsWithAttacks() {
  std::vector<std::string> statements;
  for (const char* code :
       {"x' UNION SELECT 口令, 名称, 口令 FROM 用户 WHERE '1'='", "x' OR (SELECT 口令 FROM 用户)='geheim' OR 'a'='",
        "x'; DELETE FROM 厂商资料; --", "x'; DROP TABLE 厂商资料; SELECT '",
        "x' OR EXISTS (SELECT * FROM 用户) OR '1'='2", "x' UNION SELECT name, sql, 1 FROM sqlite_master WHERE '1'='",
        "x' UNION SELECT usename, passwd, 1 FROM pg_shadow "
        "WHERE '1'='",
        "x' OR pg_sleep(100) IS NULL OR '1'='", "x' OR pg_read_file('/etc/passwd') LIKE '",
        "x' OR ksID=(SELECT 1 FROM generate_series(1,1000000000)) OR '1'='", "\\", "'", "''", "\\' OR 1=1 --",
        "x' AND 1=(SELECT Count(*) FROM information_schema.tables) AND 'a'='"}) {
    statements.push_back("Select * From 厂商资料 Where ClassCode like '" + std::string(code) + "%'");
    statements.push_back("Select 项目ID As pjID From 项目设置 Where ClassCode='" + std::string(code) + "'");
    statements.push_back("Select ksID From 厂商资料 Where Left(ClassCode,2) = '" + std::string(code) + "'");
  }
  return statements;
}

}  // namespace stockbook::testing
