// SPDX-License-Identifier: MIT
// KeyTypes of every type and spelling, in masters far larger than what is wanted of them: each plan finds the rows that
// SQL written by hand finds.
#include <gtest/gtest.h>

#include <algorithm>

#include "databases/journal_statements.h"
#include "databases/plain_query.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;

// How the tables declare the keys, and how a key is spelled in the bills and masters, as SQL over the number i.
struct KeyTypes {
  std::string of_masters;
  std::string of_lines;
  std::string spelled;
};

std::string Table(const std::string& name, const std::string& columns) {
  return "CREATE TABLE " + name + "(" + columns + ");";
}

// 90 masters and bills, of which the lines of a side want a few.
class KeyedInventory {
 public:
  explicit KeyedInventory(const KeyTypes& keys) {
    const std::string key = keys.of_masters;
    const std::string line = keys.of_lines;
    file_.Run("BEGIN;" + Table("tqAccPeriod", "AccPeriod TEXT") + Table("仓库设置", "dpID " + key + ", 仓库名称 TEXT") +
              Table("厂商资料", "KSID " + key + ", 企业名称 TEXT, ClassCode TEXT") +
              Table("客户资料", "KSID " + key + ", 企业名称 TEXT, ClassCode TEXT") +
              Table("项目设置", "项目ID " + key + ", 项目名称 TEXT, 项目编号 TEXT, ClassCode TEXT") +
              Table("商品设置",
                    "pdID " + key + ", 商品名称 TEXT, 商品编号 TEXT, 计量单位 TEXT, 计量2 TEXT, 规格 TEXT, 型号 TEXT"));
    for (const char* side : {"入库", "出库"}) AddSide(side, key, line, keys.spelled);
    const std::string numbers = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 90) ";
    const std::string spelled = keys.spelled;
    file_.Run(numbers + "INSERT INTO 仓库设置 SELECT " + spelled + ", '库' || i FROM n;" + numbers +
              "INSERT INTO 厂商资料 SELECT " + spelled + ", '供方' || i, '01' FROM n;" + numbers +
              "INSERT INTO 客户资料 SELECT " + spelled + ", '客户' || i, '01' FROM n;" + numbers +
              "INSERT INTO 项目设置 SELECT " + spelled + ", '项目' || i, 'X' || i, '01' FROM n;" + numbers +
              "INSERT INTO 商品设置(pdID, 商品名称) SELECT " + spelled + ", '品' || i FROM n;");
    for (const char* side : {"入库", "出库"}) {
      file_.Run(numbers + "INSERT INTO " + side + "目录(BillID, AccPeriod, BillDate, 单据类型, 说明, ksID, pjID)" +
                " SELECT " + spelled + ", '2005-01', '2005-01-0' || (i % 9 + 1), '单', i, i % 30, i % 40 FROM n;");
    }
    file_.Run("COMMIT");
  }
  DatabaseFile& file() { return file_; }

 private:
  void AddSide(const std::string& side, const std::string& key, const std::string& line, const std::string& spelled) {
    file_.Run(
        Table(side + "目录", "BillID " + key + ", AccPeriod TEXT, BillDate DATE, 单据类型 TEXT, 单据编号 TEXT," +
                                 "类型 TEXT, 说明 TEXT, dpID " + line + ", ksID " + line + ", pjID " + line +
                                 ", 录入员 TEXT, 录入日期 DATE, 审核员 TEXT, 审核日期 DATE") +
        Table(side + "记录", "RecID INTEGER PRIMARY KEY, BillID " + line + ", pdID INTEGER, dpID " + line + ", ksID " +
                                 line + ", pjID " + line +
                                 ", OtherID INTEGER, 数量 REAL, Qty2 REAL, 除税单价 REAL, 除税金额 MONEY TEXT," +
                                 " 税率 REAL, 税额 MONEY TEXT, 单价 REAL, 金额 MONEY TEXT, 经手人 TEXT," +
                                 " 交接人 TEXT, 包装 TEXT, 货位 TEXT, 期限 TEXT, SerialNo TEXT, ProductDate DATE"));
    // Lines whose keys are whole numbers, and some whose keys are spelled like those of the masters.
    const std::string numbers = "WITH RECURSIVE n(i) AS (SELECT 5 UNION ALL SELECT i + 5 FROM n WHERE i < 50) ";
    const std::string mixed = "CASE i % 4 WHEN 0 THEN " + spelled + " ELSE i END";
    file_.Run(numbers + "INSERT INTO " + side + "记录(RecID, BillID, pdID, dpID, ksID, pjID, 数量, 除税金额)" +
              " SELECT i, i, 1, i + 30, i, i, 1, '2.5' FROM n;");
    file_.Run(numbers + "INSERT INTO " + side + "记录(RecID, BillID, pdID, dpID, ksID, pjID, 数量, 除税金额)" +
              " SELECT 1000 + i, " + mixed + ", 2, " + mixed + ", i, i, 1, '2.5' FROM n;");
  }

  DatabaseFile file_;
};

// One side of the journal of a product, joined by hand.
std::string ByHand(const std::string& side, const std::string& partners, int product) {
  return "SELECT r.RecID, b.说明, d.仓库名称, k.企业名称, p.项目名称 FROM " + side + "记录 r JOIN " + side +
         "目录 b ON r.BillID = b.BillID LEFT JOIN 仓库设置 d ON r.dpID = d.dpID LEFT JOIN " + partners +
         " k ON b.ksID = k.KSID LEFT JOIN 项目设置 p ON b.pjID = p.项目ID WHERE r.pdID = " + std::to_string(product) +
         " AND b.AccPeriod <= '2005-03'";
}

std::vector<std::string> Sorted(std::vector<std::string> rows) {
  std::sort(rows.begin(), rows.end());
  return rows;
}

std::vector<std::string> JournalRows(KeyedInventory& inventory, const std::string& journal) {
  std::vector<std::string> rows = RowsOfEveryPlan(inventory.file().DesktopString(), journal,
                                                  {"RecID", "Explain", "Depot", "Enterprise", "Project"});
  return Sorted(std::move(rows));
}

class KeysOf : public ::testing::TestWithParam<KeyTypes> {};

TEST_P(KeysOf, EveryTypeAndSpellingFindTheRowsThatSqliteFinds) {
  KeyedInventory inventory(GetParam());
  for (const int product : {1, 2}) {
    const std::string key = std::to_string(product);
    const std::vector<std::string> receipts = PlainRows(inventory.file(), ByHand("入库", "厂商资料", product));
    std::vector<std::string> both = PlainRows(inventory.file(), ByHand("出库", "客户资料", product));
    const std::string of_product = " Where Recs.pdID=" + key;
    EXPECT_EQ(JournalRows(inventory, SupplierJournal(Dialect::kDesktop, of_product, "2005-03")), Sorted(receipts));
    EXPECT_EQ(JournalRows(inventory, CustomerJournal(Dialect::kDesktop, of_product, "2005-03")), Sorted(both));
    both.insert(both.end(), receipts.begin(), receipts.end());
    EXPECT_EQ(JournalRows(inventory, MaterialJournal(Dialect::kDesktop, key + ")", "2005-03")), Sorted(both));
    EXPECT_EQ(JournalRows(inventory, ProjectJournal(Dialect::kDesktop, key, "2005-03")), Sorted(both));
  }
}

TEST(PaddedKeys, OfBillsAndMastersAreFoundByTheNumbersOfTheLines) {
  KeyedInventory inventory({"TEXT PRIMARY KEY", "INTEGER", "printf('%06d', i)"});
  const std::vector<std::string> rows =
      JournalRows(inventory, SupplierJournal(Dialect::kDesktop, " Where Recs.pdID=1", "2005-03"));
  ASSERT_EQ(rows.size(), 10U);
  EXPECT_EQ(rows[1], "15|15|库45|供方15|项目15");
}

std::vector<KeyTypes> AllKeys() {
  std::vector<KeyTypes> all;
  const std::vector<std::string> spellings = {
      "i",
      "printf('%06d', i)",
      "CAST(i AS TEXT)",
      "'+' || i",
      "' ' || i",
      "i || ' '",
      "i || '.0'",
      "i || 'e0'",
      "CAST(i AS REAL)",
      "-i",
      "CAST(i || '' AS BLOB)",
      "CASE i % 3 WHEN 0 THEN i WHEN 1 THEN printf('%05d', i) ELSE i || '.0' END"};
  for (const std::string masters : {"INTEGER", "TEXT PRIMARY KEY", "TEXT UNIQUE COLLATE NOCASE", "PRIMARY KEY",
                                    "BLOB UNIQUE", "REAL UNIQUE", "NUMBER PRIMARY KEY", "INT UNIQUE"}) {
    for (const std::string lines : {"INTEGER", "TEXT", ""}) {
      for (const std::string& spelled : spellings) all.push_back({masters, lines, spelled});
    }
  }
  for (const std::string lines : {"INTEGER", "TEXT", "", "REAL"}) {
    all.push_back({"INTEGER PRIMARY KEY", lines, "i"});
    all.push_back({"INTEGER PRIMARY KEY", lines, "-i"});
  }
  return all;
}

std::string NameOf(const ::testing::TestParamInfo<KeyTypes>& one) {
  std::string name = std::to_string(one.index) + "_" + one.param.of_masters + "_" + one.param.of_lines + "_";
  name += one.param.spelled;
  for (char& c : name) c = std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Inventories, KeysOf, ::testing::ValuesIn(AllKeys()), NameOf);

}  // namespace
}  // namespace stockbook::testing
