// SPDX-License-Identifier: MIT
#include "stockbook/command/doctor_command.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "app/inventory_fixture.h"
#include "stockbook/sample/sample_inventory.h"

namespace stockbook::app {
namespace {

class DoctorTest : public InventoryTest {
 protected:
  DoctorTest() {
    SampleOptions options;
    options.lines = 400;
    options.periods = 4;
    WriteSampleInventory(Database(), options);
  }

  std::string Database() const { return PathOf("stock.db"); }
  Outcome Examine() const { return RunArguments({"doctor", Database()}); }
  // Changes the healthy inventory and expects what the doctor says then.
  void ExpectFinding(const std::string& sql, const std::string& headline, const std::string& example) const {
    const std::string kept = PathOf("kept.db");
    std::filesystem::copy_file(Database(), kept);
    Change(Database(), sql);
    const Outcome outcome = Examine();
    EXPECT_EQ(outcome.code, 1) << sql << "\n" << outcome.err;
    EXPECT_NE(outcome.out.find(headline), std::string::npos) << sql << "\n" << outcome.out;
    EXPECT_NE(outcome.out.find(example), std::string::npos) << sql << "\n" << outcome.out;
    std::filesystem::rename(kept, Database());
  }
};

TEST_F(DoctorTest, FindsNothingInAHealthyInventory) {
  const Outcome outcome = Examine();
  EXPECT_EQ(outcome.code, 0) << outcome.out;
  EXPECT_TRUE(outcome.out.starts_with("检查了“" + Database() + "”的 18 张表、")) << outcome.out;
  EXPECT_TRUE(outcome.out.ends_with("行：没有发现问题。\n")) << outcome.out;
  EXPECT_EQ(outcome.err, "");
}

TEST_F(DoctorTest, FindsNothingInAnImportedTable) {
  RunArguments({"import", "-", "-o", Database(), "--map", "product=p,date=d,quantity=q,partner=c,project=c"},
               "p,d,q,c\nA,2026-01-04,1,x\nB,2026-02-04,2,\nA,2026-03-05,-3,y\nA,2026-03-06,0,y\n");
  const Outcome outcome = Examine();
  EXPECT_EQ(outcome.code, 0) << outcome.out;
}

TEST_F(DoctorTest, NamesTablesAndColumnsThatAreMissing) {
  ExpectFinding("DROP TABLE 厂商分类", "厂商分类：表不存在或无法读取", "厂商分类");
  ExpectFinding("ALTER TABLE 商品设置 DROP COLUMN 别名", "商品设置：表中缺少列，共 1 处", "  别名\n");
  ExpectFinding("DROP INDEX 入库记录_pdID; ALTER TABLE 入库记录 DROP COLUMN pdID", "入库记录：表中缺少列", "  pdID\n");
}

TEST_F(DoctorTest, DoesWithoutAColumnThatNobodyReads) {
  Change(Database(), "ALTER TABLE tqSuppBalance DROP COLUMN SumIssAccount");
  EXPECT_EQ(Examine().code, 0) << Examine().out;
}

TEST_F(DoctorTest, NamesKeysThatAreNullOrGivenTwiceOrNoNumbers) {
  const std::string loose =
      "CREATE TABLE loose AS SELECT * FROM 仓库设置; DROP TABLE 仓库设置;"
      "ALTER TABLE loose RENAME TO 仓库设置;";
  ExpectFinding(loose + "INSERT INTO 仓库设置 VALUES(NULL, 'x')", "仓库设置.dpID：键为空，共 1 处", "行：键为空");
  ExpectFinding(loose + "INSERT INTO 仓库设置 VALUES(1, 'x')", "仓库设置.dpID：键重复，共 1 处",
                "dpID=1：第 1 行和第 ");
  ExpectFinding(loose + "INSERT INTO 仓库设置 VALUES('x', 'x')", "仓库设置.dpID：键不是整数", "dpID=x");
  ExpectFinding("INSERT INTO tqAccPeriod SELECT min(AccPeriod) FROM tqAccPeriod", "tqAccPeriod.AccPeriod：键重复",
                "AccPeriod=");
}

TEST_F(DoctorTest, NamesReferencesThatLeadNowhere) {
  ExpectFinding("UPDATE 入库记录 SET BillID=990001 WHERE RecID=1", "入库记录.BillID：引用的记录不存在，共 1 处",
                "  RecID=1：BillID=990001 在 入库目录 中不存在");
  ExpectFinding("UPDATE 出库记录 SET BillID=NULL WHERE RecID=2", "出库记录.BillID：没有必需的引用，共 1 处", "RecID=2");
  ExpectFinding("UPDATE 出库记录 SET pdID=990002 WHERE RecID=1", "出库记录.pdID：引用的记录不存在",
                "在 商品设置 中不存在");
  ExpectFinding("UPDATE 入库记录 SET dpID=99 WHERE RecID=1", "入库记录.dpID：引用的记录不存在", "在 仓库设置 中不存在");
  ExpectFinding("UPDATE 出库目录 SET ksID=9999 WHERE BillID=(SELECT min(BillID) FROM 出库目录)",
                "出库目录.ksID：引用的记录不存在", "在 客户资料 中不存在");
  ExpectFinding("UPDATE 入库目录 SET pjID=9999 WHERE BillID=(SELECT min(BillID) FROM 入库目录)",
                "入库目录.pjID：引用的记录不存在", "在 项目设置 中不存在");
  ExpectFinding("UPDATE 出库记录 SET OtherID=990003 WHERE RecID=1", "出库记录.OtherID：引用的记录不存在",
                "OtherID=990003 在 入库记录 中不存在");
  ExpectFinding("UPDATE 出库记录 SET OtherID=-990003 WHERE RecID=1", "出库记录.OtherID：引用的记录不存在",
                "OtherID=-990003 在 仓库余额表 中不存在");
  ExpectFinding("UPDATE 入库目录 SET AccPeriod='1999-01' WHERE BillID=(SELECT min(BillID) FROM 入库目录)",
                "入库目录.AccPeriod：会计期间不在 tqAccPeriod 中", "：会计期间 1999-01");
}

TEST_F(DoctorTest, NamesPeriodsOfAnotherForm) {
  ExpectFinding("INSERT INTO tqAccPeriod VALUES('2099-1')",
                "tqAccPeriod.AccPeriod：会计期间的写法与其他期间不同，共 1 处",
                "AccPeriod=2099-1：多数期间的写法是 9999-99");
}

TEST_F(DoctorTest, NamesPeriodsWhoseTextsAreInAnotherOrderThanTheirDates) {
  std::string sql;
  for (const char* table : {"tqAccPeriod", "入库目录", "出库目录", "仓库余额表"})
    sql +=
        std::string("UPDATE ") + table + " SET AccPeriod = substr(AccPeriod, 6, 2) || '-' || substr(AccPeriod, 1, 4);";
  sql += "UPDATE 入库目录 SET BillDate='1998-01-01' WHERE AccPeriod=(SELECT max(AccPeriod) FROM 入库目录)";
  ExpectFinding(sql, "tqAccPeriod.AccPeriod：会计期间按文本的先后与日期的先后不符", "单据日期是否在会计期间内：未检查");
}

TEST_F(DoctorTest, NamesDatesThatAreNoneOrOutsideOfTheirPeriod) {
  ExpectFinding("UPDATE 入库目录 SET BillDate=NULL WHERE BillID=(SELECT min(BillID) FROM 入库目录)",
                "入库目录.BillDate：单据没有日期，或日期无法识别，共 1 处", "：日期为空");
  ExpectFinding("UPDATE 出库目录 SET BillDate='31.12.' WHERE BillID=(SELECT min(BillID) FROM 出库目录)",
                "出库目录.BillDate：日期无法识别，共 1 处", "“31.12.”");
  ExpectFinding("UPDATE 出库记录 SET ProductDate='soon' WHERE RecID=3", "出库记录.ProductDate：日期无法识别",
                "RecID=3");
  ExpectFinding(
      "UPDATE 入库目录 SET BillDate='1999-05-06', 年份=1999, 月份=5, 日子=6 WHERE BillID=(SELECT min(BillID) FROM "
      "入库目录)",
      "入库目录.BillDate：单据日期不在所记的会计期间内，共 1 处", "日期 1999-05-06，会计期间 ");
  ExpectFinding("UPDATE 入库目录 SET 日子=32 WHERE BillID=(SELECT min(BillID) FROM 入库目录)",
                "入库目录：年份、月份、日子与单据日期不符，共 1 处", "、32\n");
}

TEST_F(DoctorTest, NamesNumbersThatAreNoneAndQuantitiesBelowZero) {
  ExpectFinding("UPDATE 入库记录 SET 除税金额='viel' WHERE RecID=1", "入库记录.除税金额：不是数，共 1 处", "“viel”");
  ExpectFinding("UPDATE 入库记录 SET 单价='x' WHERE RecID=1", "入库记录.单价：不是数", "单价 为“x”");
  ExpectFinding("UPDATE 入库记录 SET 税率=9e999 WHERE RecID=1", "入库记录.税率：不是数", "RecID=1");
  ExpectFinding("UPDATE 入库记录 SET 数量=NULL WHERE RecID=1", "入库记录.数量：不是数", "数量为空");
  ExpectFinding("UPDATE 出库记录 SET 数量=-数量 WHERE RecID=1", "出库记录.数量：数量为负，共 1 处", "数量为 -");
}

TEST_F(DoctorTest, NamesClassesThatAreUnknownOrGivenTwice) {
  ExpectFinding("UPDATE 商品设置 SET ClassCode='ZZ' WHERE pdID=1", "商品设置.ClassCode：分类编码不在分类表中，共 1 处",
                "pdID=1：ClassCode=ZZ 在 商品分类 中不存在");
  ExpectFinding("INSERT INTO 客户分类 SELECT ClassCode, 'x' FROM 客户分类 LIMIT 1",
                "客户分类.ClassCode：分类编码重复或为空，共 1 处", "第 1 行和第 ");
}

TEST_F(DoctorTest, ComparesBalancesWithTheLines) {
  const std::string row = "WHERE ID=(SELECT max(ID) FROM 仓库余额表)";
  ExpectFinding("UPDATE 仓库余额表 SET TotalRevQuantity=TotalRevQuantity+1 " + row,
                "仓库余额表.TotalRevQuantity：余额表的本期合计与单据不符，共 1 处", "，单据合计 ");
  ExpectFinding("UPDATE 仓库余额表 SET TotalIssAccount=CAST(TotalIssAccount+0.0001 AS TEXT) " + row,
                "仓库余额表.TotalIssAccount：余额表的本期合计与单据不符，共 1 处", "表中 ");
  ExpectFinding("UPDATE tqCustBalance SET SumIssQuantity=SumIssQuantity+1 WHERE rowid=1",
                "tqCustBalance.SumIssQuantity：余额表的本期合计与单据不符，共 1 处", "ksID=");
  ExpectFinding("UPDATE tqSuppBalance SET SumIssQuantity=3 WHERE rowid=1",
                "tqSuppBalance.SumIssQuantity：余额表的本期合计与单据不符，共 1 处", "表中 3，单据合计 0");
  ExpectFinding(
      "DELETE FROM tqProjBalance WHERE rowid=(SELECT max(rowid) FROM tqProjBalance WHERE bnPeriod>(SELECT "
      "min(bnPeriod) FROM tqProjBalance))",
      "tqProjBalance：有单据而没有余额行，共 1 处", "余额表没有这一行");
  ExpectFinding("INSERT INTO tqSuppBalance SELECT * FROM tqSuppBalance WHERE rowid=1",
                "tqSuppBalance：同一期间的余额有多行，共 1 处", "第 1 行和第 ");
}

TEST_F(DoctorTest, ComparesOpeningStocksWithWhatThePeriodBeforeLeft) {
  ExpectFinding(
      "UPDATE 仓库余额表 SET 上期库存数量=上期库存数量+5 WHERE ID=(SELECT max(late.ID) FROM 仓库余额表 AS late JOIN "
      "仓库余额表 AS early "
      "ON early.DpID=late.DpID AND early.PdID=late.PdID AND early.AccPeriod<late.AccPeriod WHERE "
      "late.AccPeriod=(SELECT max(AccPeriod) FROM 仓库余额表))",
      "仓库余额表.上期库存数量：期初与上期结存不符，共 1 处", " 结存 ");
  ExpectFinding(
      "UPDATE tqProjBalance SET LastAccount='7' WHERE rowid=(SELECT max(rowid) FROM tqProjBalance WHERE "
      "bnPeriod>(SELECT min(bnPeriod) FROM tqProjBalance))",
      "tqProjBalance.LastAccount：期初与上期结存不符，共 1 处", "期初 7");
}

TEST_F(DoctorTest, ComparesTheOpeningOfTheInitialPeriodWithNothing) {
  Change(Database(), "UPDATE 仓库余额表 SET 上期库存单价=上期库存单价+1 WHERE ID=1");
  EXPECT_EQ(Examine().code, 0);
}

TEST_F(DoctorTest, NamesIndexesThatAreMissing) {
  ExpectFinding("DROP INDEX 出库记录_BillID", "出库记录.BillID：缺少索引，共 1 处",
                "CREATE INDEX 名称 ON 出库记录(BillID)");
  ExpectFinding("DROP INDEX 仓库余额表_PdID; CREATE INDEX partly ON 仓库余额表(PdID) WHERE PdID > 1",
                "仓库余额表.PdID：缺少索引", "ON 仓库余额表(PdID, AccPeriod)");
}

TEST_F(DoctorTest, ListsTwentyExamplesAndCountsAll) {
  Change(Database(), "UPDATE 入库记录 SET 经手人='x'; UPDATE 出库记录 SET 数量=-1 WHERE RecID<=50");
  const Outcome outcome = Examine();
  EXPECT_NE(outcome.out.find("出库记录.数量：数量为负，共 50 处"), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("  RecID=20：数量为 -1\n  其余 30 处从略\n"), std::string::npos) << outcome.out;
}

TEST_F(DoctorTest, WritesOneJsonDocument) {
  EXPECT_NE(RunArguments({"doctor", Database(), "--json"}).out.find("\"healthy\":true"), std::string::npos);
  Change(Database(), "UPDATE 出库记录 SET 数量=-1 WHERE RecID=7");
  const Outcome outcome = RunArguments({"doctor", "--json", Database()});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(outcome.out.starts_with("{\"version\":1,\"database\":\"" + Database() +
                                      "\",\"healthy\":false,\"tables\":[{\"name\":\"入库目录\",\"rows\":"))
      << outcome.out;
  EXPECT_NE(outcome.out.find("{\"kind\":\"quantity-negative\",\"table\":\"出库记录\",\"column\":\"数量\",\"count\":1,"),
            std::string::npos);
  EXPECT_NE(outcome.out.find("\"examples\":[{\"key\":\"RecID=7\",\"detail\":\"数量为 -1\"}]"), std::string::npos);
  EXPECT_TRUE(outcome.out.ends_with("],\"unchecked\":[]}\n"));
}

TEST_F(DoctorTest, ExitsWithTwoForWhatItCannotRead) {
  EXPECT_EQ(RunArguments({"doctor"}).code, 2);
  EXPECT_EQ(RunArguments({"doctor", Database(), "more"}).code, 2);
  const Outcome none = RunArguments({"doctor", PathOf("none.db")});
  EXPECT_EQ(none.code, 2);
  EXPECT_TRUE(none.err.starts_with("stockbook doctor: ")) << none.err;
  EXPECT_EQ(RunArguments({"doctor", Write("text.db", "This is no database, but long enough to be one.")}).code, 2);
  EXPECT_EQ(RunArguments({"doctor", "Provider=Nobody;Host=x"}).code, 2);
}

TEST_F(DoctorTest, ChangesNothing) {
  const std::string before = ReadAll(Database());
  Examine();
  EXPECT_EQ(ReadAll(Database()), before);
  EXPECT_EQ(Files(), std::vector<std::string>{"stock.db"});
}

}  // namespace
}  // namespace stockbook::app
