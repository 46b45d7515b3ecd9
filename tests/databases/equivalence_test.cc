// SPDX-License-Identifier: MIT
// The rows found table by table must equal those that SQLite finds for the whole
// statement, in the same order.
#include <gtest/gtest.h>

#include <initializer_list>
#include <random>

#include "databases/database_file.h"
#include "databases/dialect/sqlite_emitter.h"
#include "databases/dialect/translation.h"
#include "databases/execution/row_sorter.h"
#include "databases/journal_statements.h"
#include "databases/sqlite/arm_join.h"
#include "databases/sqlite/embedded_connection.h"
#include "databases/sqlite/functions.h"
#include "databases/sqlite/plan_executor.h"

namespace stockbook::testing {
namespace {

const databases::SqliteEmitter kEquivalenceEmitter;

using databases::Dialect;
using databases::EmbeddedConnection;
using databases::Strategy;

// How malformed the data are. Extreme ones are hostile, have infinities, the least amount and keys and numbers in every
// spelling, and masters of which the lines want a few only.
enum class Data { kPlain, kHoles, kHostile, kExtreme };

class RandomInventory {
 public:
  RandomInventory(unsigned seed, Data data, const InventoryTypes& types) : random_(seed), data_(data) {
    CreateInventory(file_, types);
    file_.Run("BEGIN");
    Masters();
    Bills("入库目录", "入库记录");
    Bills("出库目录", "出库记录");
    if (Number(2) == 0)
      file_.Run("CREATE INDEX by_product_in ON 入库记录(pdID); CREATE INDEX by_partner ON 入库记录(ksID)");
    file_.Run("COMMIT");
  }
  DatabaseFile& file() { return file_; }

 private:
  int Number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  bool Hole() { return data_ != Data::kPlain && Number(6) == 0; }
  bool Trap() { return data_ >= Data::kHostile && Number(12) == 0; }
  bool Extreme() { return data_ == Data::kExtreme && Number(20) == 0; }
  std::string OneOf(std::initializer_list<const char*> values) {
    return values.begin()[Number(static_cast<int>(values.size()))];
  }

  std::string Key(int most) {
    if (Extreme())
      return OneOf({"'0002'", "'2 '", "' 2'", "'2e0'", "'2.0'", "2.0", "'+2'", "x'32'", "-1", "'A'", "'a'"});
    if (Hole()) return "NULL";
    if (Trap()) return Number(2) == 0 ? "'x'" : "2.5";
    return std::to_string(Number(most) + 1);
  }
  std::string Quantity() {
    if (Extreme())
      return OneOf({"9e999", "-9e999", "'1,234.5'", "' 7 '", "1e300", "x'31'", "'-0'", "-0.0", "5e-324",
                    "9223372036854775807", "'1e999'"});
    if (Hole()) return "NULL";
    if (Trap()) return Number(2) == 0 ? "'many'" : "'1,5'";
    return Number(3) == 0 ? std::to_string(Number(5)) : std::to_string(Number(40)) + "." + std::to_string(Number(10));
  }
  std::string Amount() {
    if (Extreme())
      return OneOf({"'922337203685477.5807'", "9e999", "1e30", "'1,234.50'", "' 5 '", "x'35'", "'1e2'", "12.34565",
                    "9223372036854775807", Number(4) == 0 ? "'-922337203685477.5808'" : "'-1,000'"});
    if (Hole()) return "NULL";
    if (Trap()) return Number(2) == 0 ? "'none'" : "'99999999999999999999'";
    const std::string digits = std::to_string(Number(3)) + "." + std::to_string(Number(100));
    return Number(2) == 0 ? digits : "'" + digits + (Number(3) == 0 ? "0" : "") + "'";
  }
  std::string Date() {
    if (Hole()) return "NULL";
    if (Trap()) return Number(2) == 0 ? "'someday'" : "20050101";
    const std::string day = "2005-0" + std::to_string(Number(3) + 1) + "-0" + std::to_string(Number(3) + 1);
    return "'" + day + (Number(5) == 0 ? " 08:0" + std::to_string(Number(3)) + ":00" : "") + "'";
  }
  std::string Word() {
    static constexpr const char* kWords[] = {"'a'",
                                             "'A'",
                                             "''",
                                             "'采购'",
                                             "'采购入库'",
                                             "'采购入库单甲'",
                                             "'longer than eight bytes 1'",
                                             "'longer than eight bytes 2'"};
    if (Hole()) return "NULL";
    if (Trap()) return Number(2) == 0 ? "CAST(x'41ff00' AS TEXT)" : "x'4142'";
    return kWords[Number(8)];
  }

  void Masters() {
    // In malformed files a key may occur twice or not be a number.
    const int most = data_ == Data::kHostile ? 3 : 0;
    for (int key = 1; key <= 4; ++key) {
      file_.Run("INSERT INTO 仓库设置 VALUES (" + std::to_string(key) + "," + Word() + ")");
      file_.Run("INSERT INTO 厂商资料 VALUES (" + std::to_string(key) + "," + Word() + ",'01')");
      file_.Run("INSERT INTO 客户资料 VALUES (" + std::to_string(key) + "," + Word() + ",'01')");
      file_.Run("INSERT INTO 项目设置 VALUES (" + std::to_string(key) + "," + Word() + "," + Word() + ",'01')");
      file_.Run("INSERT INTO 商品设置(pdID,商品名称,规格) VALUES (" + std::to_string(key) + "," + Word() + "," +
                Word() + ")");
    }
    if (most > 0 && Number(2) == 0) file_.Run("INSERT OR IGNORE INTO 仓库设置 VALUES (2,'again')");
    if (data_ == Data::kExtreme) MoreMasters();
  }

  void MoreMasters() {
    const std::string numbers = "WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n WHERE i < 200) ";
    for (const char* table : {"厂商资料", "客户资料"})
      file_.Run(numbers + "INSERT INTO " + table + " SELECT i, 'name' || i, '01' FROM n");
    file_.Run(numbers + "INSERT INTO 仓库设置 SELECT i, 'name' || i FROM n");
    file_.Run(numbers + "INSERT INTO 项目设置 SELECT i, 'name' || i, 'no', '01' FROM n");
    for (const char* table : {"入库目录", "出库目录"})
      file_.Run(numbers + "INSERT INTO " + table +
                "(BillID, AccPeriod, BillDate) SELECT i, '2005-01', '2005-01-01' FROM n");
  }

  void Bills(const std::string& directory, const std::string& records) {
    const int bills = Number(12);
    for (int bill = 1; bill <= bills; ++bill) {
      file_.Run("INSERT OR IGNORE INTO " + directory + " VALUES (" + std::to_string(bill) + ",'2005-0" +
                std::to_string(Number(4) + 1) + "'," + Date() + ",2005,1,1," + Word() + "," + Word() + "," + Word() +
                "," + Word() + "," + Key(5) + "," + Key(5) + "," + Key(5) + "," + Word() + "," + Date() + "," + Word() +
                "," + Date() + ")");
    }
    const int lines = Number(60);
    std::vector<int> numbers(static_cast<size_t>(lines));
    for (int line = 0; line < lines; ++line) numbers[static_cast<size_t>(line)] = 2 * line + 1;
    std::shuffle(numbers.begin(), numbers.end(), random_);
    for (const int number : numbers) {
      file_.Run("INSERT INTO " + records + " VALUES (" + std::to_string(number) + "," + Key(14) + "," +
                std::to_string(Number(2) + 1) + "," + Key(5) + "," + Key(5) + "," + Key(5) + ",0," + Quantity() + "," +
                Quantity() + "," + Amount() + "," + Amount() + "," + Quantity() + "," + Amount() + "," + Amount() +
                "," + Amount() + "," + Word() + "," + Word() + "," + Word() + "," + Word() + "," + Word() + "," +
                Word() + "," + Date() + ")");
    }
  }

  std::mt19937 random_;
  Data data_;
  DatabaseFile file_;
};

std::vector<std::string> Statements() {
  return {
      MaterialJournal(Dialect::kDesktop, "1)", "2005-03"),
      MaterialJournal(Dialect::kDesktop, "1) And Recs.dpID=2", "2005-03"),
      ProjectJournal(Dialect::kDesktop, "1", "2005-03"),
      ProjectJournal(Dialect::kDesktop, "1 And Recs.pjID in (1,2)", "2005-02"),
      SupplierJournal(Dialect::kDesktop, " Where Recs.ksID in (3,1)", "2005-03"),
      SupplierJournal(Dialect::kDesktop, " Where (Recs.ksID = 2) And Recs.pdID=1", "2005-03"),
      CustomerJournal(Dialect::kDesktop, " Where Recs.pdID>0", "2005-09"),
      // Duplicate rows, ties everywhere, keys in descending order, money and texts as keys.
      "SELECT dpID, 除税金额, 经手人 FROM 入库记录 UNION SELECT dpID, 除税金额, 经手人 FROM 出库记录",
      "SELECT * FROM (SELECT dpID, 除税金额, 经手人 FROM 入库记录 UNION SELECT ksID, 0, 货位 FROM 出库记录) AS u ORDER "
      "BY u.除税金额 DESC, 经手人",
      "SELECT 数量, 'x' AS k, -除税金额 AS m FROM 入库记录 UNION SELECT 0, 经手人, 1.5 FROM 出库记录 ORDER BY k DESC, "
      "数量",
      "SELECT r.RecID, d.单据类型 & d.单据编号 AS n FROM 入库记录 AS r INNER JOIN 入库目录 AS d ON r.BillID=d.BillID "
      "ORDER BY n DESC, r.除税单价",
      "SELECT r.RecID, s.仓库名称 & '!' AS n FROM 入库记录 AS r LEFT JOIN 仓库设置 AS s ON r.dpID=s.dpID ORDER BY n",
      "SELECT r.RecID, s.仓库名称 FROM 入库记录 AS r LEFT JOIN 仓库设置 AS s ON r.dpID=s.dpID WHERE s.仓库名称 IS NULL "
      "ORDER BY r.货位",
      "SELECT r.RecID, o.RecID AS other FROM 入库记录 AS r INNER JOIN 出库记录 AS o ON r.dpID=o.dpID ORDER BY r.数量",
      "SELECT r.RecID FROM 入库记录 AS r RIGHT JOIN 仓库设置 AS s ON r.dpID=s.dpID ORDER BY s.仓库名称",
      "SELECT TOP 3 * FROM 入库记录 ORDER BY 数量 DESC",
      "SELECT 货位, Sum(除税金额) AS s, Count(*) AS n FROM 入库记录 GROUP BY 货位 ORDER BY 货位",
  };
}

std::string Outcome(const std::string& connection, Strategy strategy, const std::string& statement) {
  try {
    const auto rows = ExactRows(EmbeddedConnection(connection, strategy).Execute(statement));
    std::string text;
    for (const std::string& row : rows) text += row + "\n";
    return text;
  } catch (const platform::Error& error) {
    return std::string("error: ") + error.what();
  }
}

void ExpectTheSameRows(unsigned first_seed, unsigned seeds, Data data, const InventoryTypes& types,
                       size_t least_bytes = 10000) {
  size_t bytes = 0;
  size_t failures = 0;
  for (unsigned seed = first_seed; seed < first_seed + seeds; ++seed) {
    RandomInventory inventory(seed, data, types);
    for (const std::string& statement : Statements()) {
      const std::string connection = inventory.file().DesktopString();
      const std::string reference = Outcome(connection, Strategy::kStatement, statement);
      bytes += reference.size();
      // Only a sum may fail, and only for an amount that Money cannot hold.
      const bool beyond_money =
          reference.starts_with("error: 金额超出范围") && statement.find("Sum(") != std::string::npos;
      failures += reference.starts_with("error") && !beyond_money && data != Data::kExtreme ? 1U : 0U;
      EXPECT_EQ(Outcome(connection, Strategy::kFastest, statement), reference) << "seed " << seed << "\n" << statement;
      EXPECT_EQ(Outcome(connection, Strategy::kArms, statement), reference) << "seed " << seed << "\n" << statement;
    }
  }
  EXPECT_EQ(failures, 0U);
  EXPECT_GT(bytes, size_t{seeds} * least_bytes);  // there was something to compare
}

TEST(Equivalence, HoldsForPlainData) { ExpectTheSameRows(1, 12, Data::kPlain, {}); }

TEST(Equivalence, HoldsWithNullsEverywhere) { ExpectTheSameRows(100, 12, Data::kHoles, {}); }

TEST(Equivalence, HoldsForHostileData) { ExpectTheSameRows(200, 16, Data::kHostile, {}); }

TEST(Equivalence, HoldsForInfinitiesAndTheLeastAmount) { ExpectTheSameRows(240, 20, Data::kExtreme, {}); }

TEST(Equivalence, HoldsForKeysOfEveryType) {
  unsigned seed = 600;
  for (const char* type : {"", "INTEGER", "TEXT PRIMARY KEY", "TEXT", "REAL UNIQUE", "NUMBER", "BLOB PRIMARY KEY"}) {
    InventoryTypes types;
    types.master_key = type;
    // Where a key is spelled in a way that joins with nothing, less is left to compare.
    ExpectTheSameRows(seed, 3, Data::kHoles, types, 3000);
    ExpectTheSameRows(seed + 10, 3, Data::kExtreme, types, 3000);
    seed += 20;
  }
}

TEST(Equivalence, HoldsForMoneyStoredAsNumbers) {
  InventoryTypes types;
  types.money = "CURRENCY";
  types.quantity = "DECIMAL(18,4)";
  types.date = "DATETIME";
  ExpectTheSameRows(300, 8, Data::kHoles, types);
  ExpectTheSameRows(320, 8, Data::kHostile, types);
}

TEST(Equivalence, HoldsWithoutDeclaredTypesAndKeys) {
  InventoryTypes types;
  types.money = "";
  types.quantity = "";
  types.date = "";
  types.master_key = "";
  ExpectTheSameRows(400, 8, Data::kPlain, types);
  ExpectTheSameRows(420, 8, Data::kHostile, types);
}

TEST(Equivalence, HoldsForTextsThatCompareWithoutCase) {
  InventoryTypes types;
  types.master_key = "TEXT COLLATE NOCASE";
  ExpectTheSameRows(500, 4, Data::kPlain, types);
}

TEST(Equivalence, HoldsInAFileOfSixteenBitTexts) {
  DatabaseFile file;
  file.Run("PRAGMA encoding='UTF-16le'");
  CreateInventory(file);
  FillInventory(file);
  for (const std::string& statement : Statements()) {
    EXPECT_EQ(Outcome(file.DesktopString(), Strategy::kFastest, statement),
              Outcome(file.DesktopString(), Strategy::kStatement, statement));
  }
}

databases::Translation Translated(const std::string& statement, databases::Catalog& catalog) {
  return databases::Translation(statement, {Dialect::kDesktop, kEquivalenceEmitter},
                                [&](std::string_view name) { return catalog.FindTable(name); });
}

// Both arms of the journal are read table by table and not in one of the slower ways.
TEST(JoinedReading, CoversTheArmsOfEveryJournal) {
  DatabaseFile file;
  CreateInventory(file);
  FillInventory(file);
  databases::Database database(file.path());
  RegisterFunctions(database);
  databases::Catalog catalog(database);
  catalog.Refresh();
  for (const std::string& statement :
       {MaterialJournal(Dialect::kDesktop, "1)", "2005-03"), ProjectJournal(Dialect::kDesktop, "1", "2005-03"),
        SupplierJournal(Dialect::kDesktop, " Where Recs.ksID in (5,6)", "2005-03"),
        CustomerJournal(Dialect::kDesktop, " Where Recs.ksID=7", "2005-03")}) {
    auto translation = Translated(statement, catalog);
    ASSERT_TRUE(translation.plan().has_value());
    std::vector<databases::ColumnSink> sinks(translation.plan()->arms[0].outputs.size());
    for (const auto& arm : translation.plan()->arms) EXPECT_NO_THROW(JoinArm(database, arm, sinks));
  }
}

TEST(JoinedReading, RefusesAMasterTableWithAKeyTwice) {
  DatabaseFile file;
  InventoryTypes types;
  types.master_key = "INTEGER";
  CreateInventory(file, types);
  FillInventory(file);
  file.Run("INSERT INTO 仓库设置 VALUES (1,'总库二')");
  databases::Database database(file.path());
  RegisterFunctions(database);
  databases::Catalog catalog(database);
  catalog.Refresh();
  auto translation = Translated(MaterialJournal(Dialect::kDesktop, "1)", "2005-03"), catalog);
  std::vector<databases::ColumnSink> sinks(translation.plan()->arms[0].outputs.size());
  EXPECT_THROW(JoinArm(database, translation.plan()->arms[0], sinks), databases::NotCovered);
  // The line in that depot is then listed once for each of its rows, as by a join.
  EXPECT_EQ(EmbeddedConnection(file.DesktopString())
                .Execute(MaterialJournal(Dialect::kDesktop, "1)", "2005-03"))
                .RecordCount(),
            8U);
}

// Every order key, at the sizes where the sorter switches algorithms.
TEST(RowSorter, OrdersManyRowsAsSqliteDoes) {
  DatabaseFile file;
  CreateInventory(file);
  file.Run(
      "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i<9000) INSERT INTO "
      "入库目录(BillID,BillDate,单据类型,单据编号,AccPeriod)"
      " SELECT i, date('2001-01-01', '+' || (i*7919%700) || ' days'), CASE i%5 WHEN 0 THEN NULL ELSE 'type' || (i%3) "
      "END, 'no' || (i*31%977), '2001' FROM n;"
      "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i<20000) INSERT INTO "
      "入库记录(RecID,BillID,pdID,数量,除税金额,经手人)"
      " SELECT i, i%9001, 1, (i*17%23)/4.0, (i%11) || '.5', CASE i%7 WHEN 0 THEN NULL ELSE printf('%032d', i%40) END "
      "FROM n;"
      "INSERT INTO 出库目录 SELECT * FROM 入库目录 WHERE BillID%2=0; INSERT INTO 出库记录 SELECT * FROM 入库记录 WHERE "
      "RecID%3=0;");
  for (const std::string& statement :
       {MaterialJournal(Dialect::kDesktop, "1)", "2005"), ProjectJournal(Dialect::kDesktop, "1", "2005"),
        SupplierJournal(Dialect::kDesktop, " Where Recs.pdID=1", "2005"),
        std::string("SELECT * FROM (SELECT 数量, 除税金额, 经手人 FROM 入库记录 UNION SELECT 数量, 除税金额, 经手人 "
                    "FROM 出库记录) AS u ORDER BY 经手人 DESC, 数量 DESC")}) {
    EXPECT_EQ(Outcome(file.DesktopString(), Strategy::kFastest, statement),
              Outcome(file.DesktopString(), Strategy::kStatement, statement));
  }
}

}  // namespace
}  // namespace stockbook::testing
