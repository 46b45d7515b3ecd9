// SPDX-License-Identifier: MIT
// What every connection keeps, whatever database is under it. What the rows have to be says the embedded database's
// plain way, by which SQLite itself runs the statement.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <utility>

#include "base/text.h"
#include "contract/back_end.h"
#include "contract/contract_statements.h"
#include "contract/plain_inventory.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;
using databases::EmbeddedConnection;
using databases::Strategy;
using platform::Error;
using platform::ErrorKind;

#ifdef STOCKBOOK_SANITIZED
constexpr size_t kManyRows = 20'000;
#else
constexpr size_t kManyRows = 1'000'000;
#endif

// The rows with their types, or "error" where the statement is refused.
std::vector<std::string> OutcomeOn(platform::Connection& connection, const std::string& statement) {
  try {
    return ExactRows(connection.Execute(statement));
  } catch (const Error& error) {
    if (error.IsOfEngine()) throw;
    return {"error"};
  }
}

class ConnectionContract : public ::testing::TestWithParam<std::string> {
 protected:
  // False, and the test is skipped, where this machine has no such database.
  bool Make() {
    std::string missing;
    back_end_ = MakeBackEnd(GetParam(), file_, missing);
    if (back_end_ == nullptr) Skip(missing);
    return back_end_ != nullptr;
  }
  std::unique_ptr<platform::Connection> Open(Dialect dialect = Dialect::kDesktop, const std::string& more = {}) const {
    return back_end_->Open(back_end_->ConnectionString(dialect) + more);
  }

  DatabaseFile file_;
  std::unique_ptr<BackEnd> back_end_;

 private:
  static void Skip(const std::string& why) { GTEST_SKIP() << why; }
};

class InventoryContract : public ConnectionContract {
 protected:
  void SetUp() override {
    if (FillAsKept(GetParam(), file_)) return;
    InventoryTypes types;
    // Own objects have prices that are numbers.
    if (IsOfRows(GetParam())) types.price = "REAL";
    CreateInventory(file_, types);
    FillInventory(file_);
    AddMovements(file_);
    if (GetParam() == "Rows") LetItSayWhatObjectsSay(file_.path());
  }
  std::vector<std::string> CountOf(const std::string& table) const {
    return AllRows(EmbeddedConnection(file_.DesktopString()).Execute("SELECT Count(*) FROM " + table));
  }
};

TEST_P(InventoryContract, EveryStatementOfTheControlGivesTheSameRowsInBothDialects) {
  if (!Make()) return;
  for (const Dialect dialect : {Dialect::kDesktop, Dialect::kServer}) {
    const auto connection = Open(dialect);
    EmbeddedConnection reference(dialect == Dialect::kServer ? file_.ServerString() : file_.DesktopString(),
                                 Strategy::kStatement);
    size_t rows = 0;
    for (const std::string& statement : ControlStatements(dialect)) {
      const auto expected = OutcomeOn(reference, statement);
      rows += expected.size();
      EXPECT_EQ(OutcomeOn(*connection, statement), expected) << connection->ConnectionString() << "\n" << statement;
    }
    EXPECT_GT(rows, GetParam().ends_with("Desktop") ? 100U : 1000U);  // there was something to compare
  }
}

TEST_P(InventoryContract, ClassCodesReadAndChangeNothingElse) {
  file_.Run("CREATE TABLE 用户(名称 TEXT, 口令 TEXT); INSERT INTO 用户 VALUES ('admin','geheim')");
  if (!Make()) return;
  std::string string = back_end_->ConnectionString(Dialect::kDesktop);
  const size_t all = string.find(";Tables=*");
  ASSERT_NE(all, std::string::npos);
  const auto connection = back_end_->Open(string.erase(all, std::string(";Tables=*").size()));
  for (const std::string& statement : StatementsWithAttacks()) {
    try {
      for (const std::string& row : AllRows(connection->Execute(statement)))
        EXPECT_EQ(row.find("geheim"), std::string::npos) << statement;
    } catch (const Error& error) {
      EXPECT_FALSE(std::string(error.what()).empty());
    }
  }
  EXPECT_EQ(AllRows(connection->Execute("SELECT Count(*) FROM 厂商资料")), CountOf("厂商资料"));
}

TEST_P(InventoryContract, AStatementThatChangesDataIsRefused) {
  if (!Make()) return;
  const auto connection = Open();
  for (const char* statement :
       {"DELETE FROM 厂商资料", "UPDATE 厂商资料 SET ClassCode='9'", "INSERT INTO 厂商资料 VALUES (77,'x','01')",
        "DROP TABLE 厂商资料", "SELECT * INTO 另表 FROM 厂商资料", "SELECT 1; DELETE FROM 厂商资料",
        "Drop Table tqTemp"}) {
    EXPECT_THROW(connection->Execute(statement), Error) << statement;
  }
  EXPECT_EQ(AllRows(connection->Execute("SELECT Count(*) FROM 厂商资料")), CountOf("厂商资料"));
}

TEST_P(InventoryContract, FieldsAreFoundByNameWithoutCaseAndByIndex) {
  if (!Make()) return;
  auto rows = Open()->Execute("SELECT KSID, 企业名称 FROM 厂商资料 WHERE ksid=5");
  ASSERT_EQ(rows.RecordCount(), 1U);
  ASSERT_EQ(rows.FieldCount(), 2U);
  EXPECT_EQ(rows.FieldValue("ksid").Text(), "5");
  EXPECT_FALSE(rows.FieldValue(1).Text().empty());
  EXPECT_THROW(rows.FieldValue("no such"), Error);
  rows.Close();
  EXPECT_TRUE(rows.AtEnd());
  EXPECT_THROW(rows.FieldValue(0), Error);
}

TEST_P(InventoryContract, TwoResultsLiveAtOnceAndOutliveTheConnection) {
  if (!Make()) return;
  auto connection = Open();
  auto suppliers = connection->Execute("SELECT KSID FROM 厂商资料 ORDER BY KSID");
  auto depots = connection->Execute("SELECT dpID FROM 仓库设置 ORDER BY dpID");
  suppliers.MoveNext();
  connection.reset();
  EXPECT_GT(suppliers.FieldValue(0).AsInteger().value_or(0), 1);
  EXPECT_EQ(depots.FieldValue(0).Text(), "1");
}

TEST_P(InventoryContract, ABadStatementIsAnErrorOfTheStatementWithItsPlace) {
  if (!Make()) return;
  const auto connection = Open();
  for (const char* statement : {"SELECT 没有 FROM 厂商资料", "SELECT * FROM 没有", "SELEC 1", "SELECT 1 +", ""}) {
    try {
      connection->Execute(statement);
      ADD_FAILURE() << statement;
    } catch (const Error& error) {
      EXPECT_EQ(error.kind(), ErrorKind::kStatement) << error.what();
      EXPECT_NE(std::string(error.what()).find("第 1 行"), std::string::npos) << error.what();
    }
  }
  EXPECT_EQ(AllRows(connection->Execute("SELECT Count(*) FROM 厂商资料")), CountOf("厂商资料"));  // and it goes on
}

TEST_P(InventoryContract, AMomentSeesNothingThatIsPostedMeanwhile) {
  if (!Make()) return;
  const auto connection = Open();
  {
    const auto moment = connection->ReadAsOfOneMoment();
    if (moment == nullptr) GTEST_SKIP() << "this connection has no moments";
    const size_t before = connection->Execute("SELECT * FROM 客户资料").RecordCount();
    // An embedded database holds its writers off for as long.
    const bool by_server = GetParam().starts_with("Postgres");
    if (by_server) back_end_->Change("INSERT INTO 客户资料 VALUES (99,'新客户','01')");
    EXPECT_EQ(connection->Execute("SELECT * FROM 客户资料").RecordCount(), before);
  }
  const size_t before = connection->Execute("SELECT * FROM 客户资料").RecordCount();
  if (!back_end_->Change("INSERT INTO 客户资料 VALUES (98,'新客户','01')")) return;
  EXPECT_EQ(connection->Execute("SELECT * FROM 客户资料").RecordCount(), before + 1);
}

TEST_P(InventoryContract, PartnerJournalsRunInTheServerDialectWhereItsAmpersandJoins) {
  if (!Make()) return;
  const bool by_setting = GetParam() == "Embedded" || IsOfRows(GetParam());
  if (!by_setting && !GetParam().ends_with("ByOdbc")) GTEST_SKIP() << "this connection has no such option";
  std::string string = back_end_->ConnectionString(Dialect::kServer);
  const size_t refused = string.find("AmpersandJoins=0;");
  if (refused != std::string::npos) string.erase(refused, std::string("AmpersandJoins=0;").size());
  const auto connection = back_end_->Open(by_setting ? string + ";AmpersandJoins=1" : string);
  const auto desktop = Open();
  size_t rows = 0;
  for (const auto& [server, other] : PartnerJournals()) {
    const auto found = connection->Execute(server);
    rows += found.RecordCount();
    EXPECT_EQ(found.RecordCount(), desktop->Execute(other).RecordCount()) << server;
  }
  EXPECT_GT(rows, 300U);
}

class RowsContract : public InventoryContract {};

TEST_P(RowsContract, WhatNoInventoryHasIsRefusedWithASentence) {
  if (!Make()) return;
  const auto connection = Open();
  const std::pair<const char*, const char*> refused[] = {
      {"SELECT * FROM v ORDER BY k", "v"},
      {"SELECT Count(*) FROM many AS a, many AS b", "many"},
      {"SELECT r.RecID FROM 入库记录 AS r, none AS n", "none"},
      {"SELECT * FROM 用户", "用户"},
      {"SELECT name FROM sqlite_master", "sqlite_master"},
      {"SELECT * FROM pragma_table_list", "pragma_table_list"},
      {"SELECT 拼音 FROM 商品设置", "拼音"},
      {"SELECT load_extension('x') FROM 仓库设置", "load_extension"},
      {"PRAGMA table_info(入库记录)", "第 1 行"},
      {"ATTACH 'other.db' AS other", "第 1 行"},
  };
  for (const auto& [statement, words] : refused) {
    try {
      const auto rows = connection->Execute(statement);
      ADD_FAILURE() << statement << " gave " << rows.RecordCount() << " rows";
    } catch (const Error& error) {
      EXPECT_EQ(error.kind(), ErrorKind::kStatement) << statement << "\n" << error.what();
      EXPECT_NE(std::string(error.what()).find(words), std::string::npos) << statement << "\n" << error.what();
    }
  }
  EXPECT_EQ(AllRows(connection->Execute("SELECT Count(*) FROM 入库记录")), CountOf("入库记录"));  // and it goes on
}

class ValueContract : public ConnectionContract {
 protected:
  void SetUp() override {
    file_.Run(
        "CREATE TABLE v(k INTEGER PRIMARY KEY, i INTEGER, r REAL, m MONEY TEXT, t TEXT, d DATETIME);"
        "INSERT INTO v VALUES (1, NULL, NULL, NULL, NULL, NULL),"
        " (2, 0, 0, '0', '', '1899-12-30'), (3, 5, 0.1, '12345678901234.5678', '中文 “引号”''s \\ %', '2005-03-08'),"
        " (4, -9007199254740993, -1.5e-7, '-0.0001', 'A' || char(10) || 'b', '2005-03-08 23:59:59'),"
        " (5, 9223372036854775807, 1e15, '922337203685477.5807', '😀', '9999-12-31'),"
        " (6, 1, 1e300, '-922337203685477.5807', ' blanks ', '1752-01-01 00:00:01');"
        "CREATE TABLE none(k INTEGER PRIMARY KEY, m MONEY TEXT, t TEXT)");
  }
};

TEST_P(ValueContract, EveryTypeComesExactly) {
  if (!Make()) return;
  const auto connection = Open();
  EmbeddedConnection reference(file_.DesktopString(), Strategy::kStatement);
  for (const char* statement :
       {"SELECT * FROM v ORDER BY k", "SELECT k, -i, -r, -m FROM v WHERE k>1 ORDER BY k",
        "SELECT k & '|' & i & '|' & m & '|' & t & '|' & d FROM v WHERE k<5 ORDER BY k",
        "SELECT k FROM v WHERE m=-0.0001", "SELECT k FROM v WHERE d>=#2005-03-08# ORDER BY d DESC",
        "SELECT k FROM v WHERE t='a' & Chr(10) & 'B'", "SELECT k FROM v WHERE t IS NULL",
        "SELECT Sum(m), Count(*), Count(m), Max(d), Min(t) FROM v WHERE k<5",
        "SELECT k, IIf(i>0, m, 0) FROM v WHERE k>1 ORDER BY m"}) {
    EXPECT_EQ(OutcomeOn(*connection, statement), OutcomeOn(reference, statement)) << statement;
  }
}

TEST_P(ValueContract, NoRowsHaveTheirFieldsAllTheSame) {
  if (!Make()) return;
  const auto rows = Open()->Execute("SELECT * FROM none");
  EXPECT_EQ(rows.RecordCount(), 0U);
  EXPECT_EQ(rows.FieldCount(), 3U);
  EXPECT_TRUE(rows.AtEnd());
}

class ManyRowsContract : public ConnectionContract {
 protected:
  void SetUp() override {
    file_.Run("CREATE TABLE many(k INTEGER PRIMARY KEY, r REAL, t TEXT)");
    if (!Make()) return;
    const bool server = GetParam().starts_with("Postgres");
    const std::string rows = std::to_string(kManyRows);
    back_end_->Change(server
                          ? "INSERT INTO many SELECT n, n * 0.5, 'row ' || n FROM generate_series(1, " + rows + ") AS n"
                          : "WITH RECURSIVE s(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM s WHERE n < " + rows +
                                ") INSERT INTO many SELECT n, n * 0.5, 'row ' || n FROM s");
  }
};

TEST_P(ManyRowsContract, AMillionRowsComeWhole) {
  if (back_end_ == nullptr) return;
  const auto connection = Open();
  auto rows = connection->Execute("SELECT * FROM many ORDER BY k DESC");
  ASSERT_EQ(rows.RecordCount(), kManyRows);
  // Engines count by the hundred.
  EXPECT_GE(connection->RowsRead(), kManyRows - 10'000) << "whoever waits is told how far it is";
  EXPECT_EQ(rows.FieldValue(0).Text(), std::to_string(kManyRows));
  const auto fields = rows.TakeAll();
  EXPECT_EQ(fields[2].column.At(kManyRows - 1).Text(), "row 1");
  EXPECT_EQ(fields[1].column.At(kManyRows - 3).Text(), "1.5");
}

// Every pair of rows: nobody waits for that.
constexpr const char* kEndless = "SELECT Count(*) FROM many AS a, many AS b, many AS c WHERE a.r + b.r + c.r < 0";

TEST_P(ManyRowsContract, ADeadlineEndsAStatementAndTheNextOneRuns) {
  if (back_end_ == nullptr) return;
  const auto connection = Open(Dialect::kDesktop, ";Timeout=1.5");
  try {
    connection->Execute(kEndless);
    ADD_FAILURE() << "it ended";
  } catch (const Error& error) {
    EXPECT_EQ(error.kind(), ErrorKind::kInterrupted) << error.what();
  }
  EXPECT_EQ(connection->Execute("SELECT k FROM many WHERE k=7").RecordCount(), 1U);
}

TEST_P(ManyRowsContract, CancelEndsAStatementFromAnotherThread) {
  if (back_end_ == nullptr) return;
  const auto connection = Open(Dialect::kDesktop, ";Timeout=120");
  std::atomic<bool> ended = false;
  std::thread other([&] {
    while (!ended) {
      std::this_thread::sleep_for(std::chrono::milliseconds{20});
      connection->Cancel();
    }
  });
  try {
    connection->Execute(kEndless);
    ADD_FAILURE() << "it ended";
  } catch (const Error& error) {
    EXPECT_EQ(error.kind(), ErrorKind::kInterrupted) << error.what();
  }
  ended = true;
  other.join();
  EXPECT_EQ(connection->Execute("SELECT k FROM many WHERE k=7").RecordCount(), 1U);
}

const auto kEveryKind = ::testing::ValuesIn(BackEndKinds());
std::string KindName(const ::testing::TestParamInfo<std::string>& info) { return info.param; }
INSTANTIATE_TEST_SUITE_P(On, InventoryContract, ::testing::ValuesIn(InventoryKinds()), KindName);
INSTANTIATE_TEST_SUITE_P(On, RowsContract, ::testing::Values("Rows", "RowColumns"), KindName);
INSTANTIATE_TEST_SUITE_P(On, ValueContract, kEveryKind, KindName);
INSTANTIATE_TEST_SUITE_P(On, ManyRowsContract, kEveryKind, KindName);

}  // namespace
}  // namespace stockbook::testing
