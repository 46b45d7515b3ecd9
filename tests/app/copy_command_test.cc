// SPDX-License-Identifier: MIT
#include "stockbook/command/copy_command.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "app/inventory_fixture.h"
#include "stockbook/inventory/inventory_schema.h"
#include "stockbook/sample/sample_inventory.h"

namespace stockbook::app {
namespace {

class CopyTest : public InventoryTest {
 protected:
  CopyTest() {
    SampleOptions options;
    options.lines = 300;
    options.periods = 3;
    WriteSampleInventory(Source(), options);
  }

  std::string Source() const { return PathOf("source.db"); }
  std::string Target() const { return PathOf("target.db"); }
  Outcome Copy(std::vector<std::string> more = {}) const {
    more.insert(more.begin(), {"copy", Source(), Target()});
    return RunArguments(more);
  }
  std::vector<std::string> RowsOf(const std::string& path, std::string_view table) const {
    return OpenedInventory(path).Lines("SELECT * FROM " + std::string(table));
  }
  // Changes the source and expects that nothing of it is copied.
  void ExpectRefusal(const std::string& sql, const std::string& sentence) const {
    Change(Source(), sql);
    const Outcome outcome = Copy();
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.err.find(sentence), std::string::npos) << outcome.err;
    EXPECT_EQ(Files(), std::vector<std::string>{"source.db"});
  }
};

TEST_F(CopyTest, CopiesEveryRowOfEveryTableInItsOrder) {
  const Outcome outcome = Copy();
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  for (size_t index = 0; index < kTableCount; ++index) {
    const std::string_view table = InventoryTableOf(static_cast<TableName>(index)).name;
    EXPECT_EQ(RowsOf(Target(), table), RowsOf(Source(), table)) << table;
  }
  const std::string schema = "SELECT name FROM sqlite_master WHERE name NOT LIKE 'sqlite_%' ORDER BY 1";
  EXPECT_EQ(OpenedInventory(Target()).Lines(schema), OpenedInventory(Source()).Lines(schema));
  EXPECT_EQ(OpenedInventory(Target()).One("PRAGMA integrity_check"), "ok");
  EXPECT_EQ(RunArguments({"doctor", Target()}).code, 0);
}

TEST_F(CopyTest, SaysWhatItHasVerified) {
  const Outcome outcome = Copy();
  EXPECT_NE(outcome.out.find("已复制到“" + Target() + "”：18 张表、"), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("核对行数、合计与校验和，全部相同。\n"), std::string::npos) << outcome.out;
  const OpenedInventory source(Source());
  EXPECT_NE(outcome.out.find("  出库记录：" + source.One("SELECT count(*) FROM 出库记录") + " 行，数量合计 "),
            std::string::npos);
}

TEST_F(CopyTest, KeepsAmountsDatesNullsAndEmptyTextsAsTheyAre) {
  Change(Source(),
         "UPDATE 入库记录 SET 除税金额='922337203685477.5807', 税额='-0.0001', 金额=NULL, 经手人='', 交接人=NULL, "
         "SerialNo='007', 数量=0.1, Qty2=-0.0, 单价=1e300, 除税单价=9e999, ProductDate='2026-02-28 23:59:58', "
         "包装='二箱''“;|' "
         "WHERE RecID=1");
  EXPECT_EQ(Copy().code, 0);
  const std::string row =
      "SELECT 除税金额, 税额, 金额 IS NULL, 经手人 = '', 交接人 IS NULL, SerialNo, typeof(SerialNo), 数量, Qty2, 单价, "
      "除税单价, "
      "ProductDate, 包装 FROM 入库记录 WHERE RecID=1";
  EXPECT_EQ(OpenedInventory(Target()).Lines(row), OpenedInventory(Source()).Lines(row));
  EXPECT_EQ(OpenedInventory(Target()).One("SELECT 除税金额 FROM 入库记录 WHERE RecID=1"), "922337203685477.5807");
}

TEST_F(CopyTest, CopiesColumnsThatAnInventoryNeedNotHave) {
  Change(Source(),
         "ALTER TABLE 商品设置 ADD COLUMN 图片 TEXT; ALTER TABLE 商品设置 ADD COLUMN 顺序 INTEGER; "
         "ALTER TABLE 商品设置 ADD COLUMN \"数 \"\"2\" REAL; UPDATE 商品设置 SET 图片='a.png', 顺序=pdID*10, \"数 "
         "\"\"2\"=0.5");
  const Outcome outcome = Copy();
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_EQ(RowsOf(Target(), "商品设置"), RowsOf(Source(), "商品设置"));
  EXPECT_NE(outcome.out.find("商品设置 中库存账以外的列，也已复制：图片、顺序、数 \"2\n"), std::string::npos)
      << outcome.out;
  EXPECT_EQ(OpenedInventory(Target()).One("SELECT DISTINCT typeof(顺序) FROM 商品设置"), "integer");
}

TEST_F(CopyTest, MakesColumnsThatTheSourceLacks) {
  Change(Source(), "ALTER TABLE 商品设置 DROP COLUMN 别名");
  const Outcome outcome = Copy();
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.out.find("商品设置 中源库没有的列，已建为空列：别名\n"), std::string::npos) << outcome.out;
  EXPECT_EQ(OpenedInventory(Target()).One("SELECT count(别名) FROM 商品设置"), "0");
}

TEST_F(CopyTest, KeepsNumbersThatTheUsualTypeWouldRound) {
  Change(Source(),
         "CREATE TABLE loose(RecID INTEGER PRIMARY KEY, BillID, pdID, dpID, ksID, pjID, OtherID, 数量, Qty2, 除税单价, "
         "除税金额 REAL, 税率, 税额, 单价, 金额, 经手人, 交接人, 包装, 货位, 期限, SerialNo, ProductDate);"
         "INSERT INTO loose SELECT * FROM 入库记录; DROP TABLE 入库记录; ALTER TABLE loose RENAME TO 入库记录;"
         "UPDATE 入库记录 SET 除税金额=1.0/3 WHERE RecID=1");
  const Outcome outcome = Copy();
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_EQ(OpenedInventory(Target()).One("SELECT 除税金额=1.0/3 FROM 入库记录 WHERE RecID=1"), "1");
}

TEST_F(CopyTest, KeepsTextsAmongNumbers) {
  Change(Source(), "UPDATE 入库记录 SET 除税金额='未定', 数量='若干' WHERE RecID=1");
  const Outcome outcome = Copy();
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_EQ(RowsOf(Target(), "入库记录"), RowsOf(Source(), "入库记录"));
}

TEST_F(CopyTest, ReadsRowsInTheOrderOfTheirKeysHoweverTheyAreStored) {
  Change(Source(),
         "CREATE TABLE loose AS SELECT * FROM 客户资料 ORDER BY KSID DESC; DROP TABLE 客户资料;"
         "ALTER TABLE loose RENAME TO 客户资料");
  EXPECT_EQ(Copy().code, 0);
  EXPECT_EQ(RowsOf(Target(), "客户资料"),
            OpenedInventory(Source()).Lines("SELECT * FROM 客户资料 ORDER BY CAST(KSID AS INTEGER)"));
}

TEST_F(CopyTest, RefusesATableThatIsMissing) {
  ExpectRefusal("DROP TABLE 项目分类", "源库的表“项目分类”无法读取，没有复制任何内容");
}

TEST_F(CopyTest, RefusesDatesThatAConnectionWouldReadAsNull) {
  ExpectRefusal("UPDATE 入库记录 SET ProductDate='明年' WHERE RecID=2",
                "源库的表“入库记录”中 RecID=2 的 ProductDate 为“明年”，不是日期，没有复制任何内容");
}

TEST_F(CopyTest, RefusesKeysThatAreNone) {
  ExpectRefusal(
      "CREATE TABLE loose AS SELECT * FROM 仓库设置; DROP TABLE 仓库设置; ALTER TABLE loose RENAME TO 仓库设置;"
      "INSERT INTO 仓库设置 VALUES(1, 'again')",
      "源库的表“仓库设置”有重复、为空或不是整数的 dpID（1）");
  ExpectRefusal("UPDATE 仓库设置 SET dpID=NULL WHERE 仓库名称='again'", "不是整数的 dpID（空）");
  ExpectRefusal("UPDATE 仓库设置 SET dpID='x' WHERE 仓库名称='again'", "不是整数的 dpID");
}

TEST_F(CopyTest, ReplacesATargetOnlyWhenToldTo) {
  Write("target.db", "precious");
  const Outcome refused = Copy();
  EXPECT_EQ(refused.code, 2);
  EXPECT_NE(refused.err.find("exists; give --replace"), std::string::npos) << refused.err;
  EXPECT_EQ(ReadAll(Target()), "precious");
  EXPECT_EQ(Copy({"--replace"}).code, 0);
  EXPECT_EQ(RowsOf(Target(), "仓库设置"), RowsOf(Source(), "仓库设置"));
}

TEST_F(CopyTest, LeavesTheTargetAsItIsWhenTheSourceFails) {
  Write("target.db", "precious");
  Change(Source(), "DROP TABLE tqAccPeriod");
  EXPECT_EQ(Copy({"--replace"}).code, 1);
  EXPECT_EQ(ReadAll(Target()), "precious");
  EXPECT_EQ(Files(), (std::vector<std::string>{"source.db", "target.db"}));
}

TEST_F(CopyTest, RefusesTargetsThatItCannotWrite) {
  EXPECT_EQ(RunArguments({"copy", Source()}).code, 2);
  EXPECT_EQ(RunArguments({"copy", Source(), "-"}).code, 2);
  EXPECT_EQ(RunArguments({"copy", Source(), Source(), "--replace"}).code, 2);
  EXPECT_EQ(RunArguments({"copy", Source(), PathOf("x.mdb")}).code, 2);
  EXPECT_EQ(RunArguments({"copy", Source(), PathOf("no/such/folder.db")}).code, 1);
  const Outcome odbc = RunArguments({"copy", Source(), "Provider=Odbc;DSN=x"});
  EXPECT_EQ(odbc.code, 1);
  EXPECT_NE(odbc.err.find("不能写入 Provider“Odbc”的数据库"), std::string::npos) << odbc.err;
  EXPECT_EQ(Files(), std::vector<std::string>{"source.db"});
}

TEST_F(CopyTest, TakesConnectionStringsForFilesToo) {
  EXPECT_EQ(RunArguments({"copy", "Provider=Stockbook.Embedded;Data Source=" + Source(),
                          "Provider=Stockbook.Embedded;Data Source=" + Target()})
                .code,
            0);
  EXPECT_EQ(RowsOf(Target(), "出库记录"), RowsOf(Source(), "出库记录"));
}

TEST_F(CopyTest, CopiesAnInventoryWithoutRows) {
  std::string sql;
  for (size_t index = 0; index < kTableCount; ++index)
    sql += "DELETE FROM " + std::string(InventoryTableOf(static_cast<TableName>(index)).name) + ";";
  Change(Source(), sql);
  EXPECT_EQ(Copy().code, 0);
  EXPECT_EQ(OpenedInventory(Target()).One("SELECT count(*) FROM 入库记录"), "0");
}

}  // namespace
}  // namespace stockbook::app
