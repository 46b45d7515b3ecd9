// SPDX-License-Identifier: MIT
#include "databases/execution/interruption.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "databases/database_file.h"
#include "databases/dialect/sqlite_emitter.h"
#include "databases/dialect/translation.h"
#include "databases/journal_statements.h"
#include "databases/sqlite/catalog.h"
#include "databases/sqlite/embedded_connection.h"
#include "databases/sqlite/embedded_settings.h"
#include "databases/sqlite/functions.h"
#include "databases/sqlite/plan_executor.h"

namespace stockbook::testing {
namespace {

const databases::SqliteEmitter kInterruptionEmitter;

using databases::Dialect;
using databases::EmbeddedConnection;
using databases::Interruption;
using platform::ErrorKind;

// What the work throws; a statement's error "finished" if it throws nothing.
platform::Error ErrorOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const platform::Error& error) {
    return error;
  }
  return {"", "finished"};
}

class Interrupted : public ::testing::Test {
 protected:
  Interrupted() {
    CreateInventory(file_);
    FillInventory(file_);
    file_.Run(
        "WITH RECURSIVE n(i) AS (SELECT 1000 UNION ALL SELECT i+1 FROM n WHERE i<2999) INSERT INTO 厂商资料 SELECT i, "
        "'x', '03' FROM n");
  }
  std::string With(const std::string& settings) const { return file_.DesktopString() + ";" + settings; }

  DatabaseFile file_;
  const std::string endless_ =
      "SELECT Count(*) AS n FROM 厂商资料 a, 厂商资料 b, 厂商资料 c, 厂商资料 d WHERE a.KSID+b.KSID+c.KSID+d.KSID=-1";
};

TEST_F(Interrupted, AStatementThatNeverEndsEndsAtTheTimeLimit) {
  for (const auto& connection_string : {With("Timeout=0.2"), file_.ServerString() + ";Timeout=0.2"}) {
    EmbeddedConnection connection(connection_string);
    const auto error = ErrorOf([&] { connection.Execute(endless_); });
    EXPECT_EQ(error.kind(), ErrorKind::kInterrupted);
    EXPECT_STREQ(error.what(), "语句用时超过了连接字符串规定的时限 0.2 秒，请缩小查询的范围，或调大 Timeout");
    // It was the statement's own moment: the next one has its own time.
    EXPECT_EQ(connection.Execute("SELECT * FROM 仓库设置").RecordCount(), 2U);
  }
}

TEST_F(Interrupted, AStatementWithoutFunctionsEndsAtTheTimeLimitToo) {
  EmbeddedConnection connection(With("Timeout=0.2"));
  const auto error =
      ErrorOf([&] { connection.Execute("SELECT Count(*) AS n FROM 厂商资料 a, 厂商资料 b, 厂商资料 c, 厂商资料 d"); });
  EXPECT_EQ(error.kind(), ErrorKind::kInterrupted) << error.what();
}

TEST_F(Interrupted, SlowFunctionsEndAtTheTimeLimitToo) {
  EmbeddedConnection connection(With("Timeout=0.05"));
  const auto error = ErrorOf([&] {
    connection.Execute(
        "SELECT Count(*) AS n FROM 厂商资料 a, 厂商资料 b WHERE Len(Replace(Replace(Space(10),' ',Space(8000)) & "
        "a.KSID,'  ','x'))=b.KSID");
  });
  EXPECT_EQ(error.kind(), ErrorKind::kInterrupted) << error.what();
}

// Each level is read twice by the next, all before the first instruction.
TEST_F(Interrupted, CompilingViewsOfViewsEndsAtTheTimeLimitToo) {
  file_.Run("DROP TABLE 客户资料; CREATE VIEW v0 AS SELECT KSID FROM 厂商资料");
  const int levels = 13;
  for (int level = 1; level <= levels; ++level) {
    const std::string inner = "v" + std::to_string(level - 1);
    file_.Run("CREATE VIEW v" + std::to_string(level) + " AS SELECT a.KSID FROM " + inner + " a, " + inner + " b");
  }
  file_.Run("CREATE VIEW 客户资料 AS SELECT KSID FROM v" + std::to_string(levels));
  EmbeddedConnection connection(With("Timeout=0.01"));
  const auto error = ErrorOf([&] { connection.Execute("SELECT KSID FROM 客户资料"); });
  EXPECT_EQ(error.kind(), ErrorKind::kInterrupted) << error.what();
}

TEST_F(Interrupted, TheStatementsOfAMomentShareItsTime) {
  EmbeddedConnection connection(With("Timeout=0.3"));
  {
    const auto moment = connection.ReadAsOfOneMoment();
    EXPECT_EQ(connection.Execute("SELECT * FROM 仓库设置").RecordCount(), 2U);
    EXPECT_EQ(ErrorOf([&] { connection.Execute(endless_); }).kind(), ErrorKind::kInterrupted);
    const auto nested = connection.ReadAsOfOneMoment();
    EXPECT_EQ(ErrorOf([&] { connection.Execute("SELECT * FROM 仓库设置"); }).kind(), ErrorKind::kInterrupted);
  }
  const auto moment = connection.ReadAsOfOneMoment();
  EXPECT_EQ(connection.Execute("SELECT * FROM 仓库设置").RecordCount(), 2U);
}

TEST_F(Interrupted, TimeBetweenTheStatementsOfAMomentDoesNotCount) {
  EmbeddedConnection connection(With("Timeout=1"));
  const auto moment = connection.ReadAsOfOneMoment();
  std::this_thread::sleep_for(std::chrono::milliseconds(1500));
  EXPECT_EQ(connection.Execute("SELECT * FROM 仓库设置").RecordCount(), 2U);
}

TEST_F(Interrupted, WithoutALimitOnlyCancelEndsAStatement) {
  EmbeddedConnection connection(With("Timeout=0"));
  std::atomic<bool> ended = false;
  std::thread other([&] {
    // A cancel that comes before the statement runs does nothing, so it is repeated.
    for (; !ended; std::this_thread::sleep_for(std::chrono::milliseconds(1))) connection.Cancel();
  });
  const auto error = ErrorOf([&] { connection.Execute(endless_); });
  ended = true;
  other.join();
  EXPECT_EQ(error.kind(), ErrorKind::kInterrupted);
  EXPECT_STREQ(error.what(), "语句已被取消");
  EXPECT_EQ(connection.Execute("SELECT * FROM 仓库设置").RecordCount(), 2U);
}

TEST_F(Interrupted, ACancelWithNothingRunningIsForgotten) {
  EmbeddedConnection connection(With("Timeout=0"));
  connection.Cancel();
  EXPECT_EQ(connection.Execute(MaterialJournal(Dialect::kDesktop, "1)", "2005-03")).RecordCount(), 5U);
  const auto moment = connection.ReadAsOfOneMoment();
  connection.Cancel();
  EXPECT_EQ(connection.Execute("SELECT * FROM 仓库设置").RecordCount(), 2U);
}

TEST_F(Interrupted, CountsTheRowsThatAStatementReads) {
  EmbeddedConnection connection(file_.DesktopString());
  EXPECT_EQ(connection.RowsRead(), 0U);
  const size_t rows = connection.Execute("SELECT KSID, 企业名称 FROM 厂商资料").RecordCount();
  ASSERT_GE(rows, 2000U);
  // By the hundred, since nobody looks at each.
  EXPECT_GE(connection.RowsRead(), 1000U);
  EXPECT_LE(connection.RowsRead(), rows);
  connection.Execute("SELECT * FROM 仓库设置");
  EXPECT_LT(connection.RowsRead(), 1000U) << "each statement begins anew";
}

TEST_F(Interrupted, ACancelEndsTheWaitForALock) {
  EmbeddedConnection connection(With("Timeout=0"));
  file_.Run("BEGIN EXCLUSIVE");
  std::atomic<bool> ended = false;
  std::thread other([&] {
    for (; !ended; std::this_thread::sleep_for(std::chrono::milliseconds(1))) connection.Cancel();
  });
  EXPECT_EQ(ErrorOf([&] { connection.Execute("SELECT * FROM 仓库设置"); }).kind(), ErrorKind::kInterrupted);
  EXPECT_EQ(ErrorOf([&] { connection.ReadAsOfOneMoment(); }).kind(), ErrorKind::kInterrupted);
  ended = true;
  other.join();
  EXPECT_EQ(ErrorOf([&] { connection.Execute("SELECT * FROM 仓库设置"); }).kind(), ErrorKind::kBusy);
  file_.Run("COMMIT");
}

TEST_F(Interrupted, TheTimeLimitEndsTheWaitForALock) {
  EmbeddedConnection connection(With("Timeout=0.1"));
  file_.Run("BEGIN EXCLUSIVE");
  EXPECT_EQ(ErrorOf([&] { connection.Execute("SELECT * FROM 仓库设置"); }).kind(), ErrorKind::kBusy);
  file_.Run("COMMIT");
}

// A plan sorts and gathers without SQLite, so that SQLite cannot end it. The connection's own work is not asked when it
// is compiled, and a few rows take too few instructions to be asked.
TEST_F(Interrupted, APlanEndsOutsideOfSqliteToo) {
  const databases::Database database(file_.path(), databases::ReadableTables(), std::chrono::nanoseconds(1));
  databases::RegisterFunctions(database);
  databases::Catalog catalog(database);
  catalog.Refresh();
  auto translation = databases::Translation(MaterialJournal(Dialect::kDesktop, "1)", "2005-03"),
                                            {Dialect::kDesktop, kInterruptionEmitter},
                                            [&](std::string_view name) { return catalog.FindTable(name); });
  ASSERT_TRUE(translation.plan());
  for (const auto reading : {databases::ArmReading::kJoined, databases::ArmReading::kStepped}) {
    const Interruption::Running running(database.interruption());
    database.interruption().BeginMoment();
    std::this_thread::sleep_for(std::chrono::microseconds(1));
    const auto run = [&] { databases::ExecutePlan(database, *translation.plan(), translation.columns(), reading); };
    EXPECT_EQ(ErrorOf(run).kind(), ErrorKind::kInterrupted);
    const databases::Database::OwnWork own(database);
    EXPECT_EQ(ErrorOf(run).kind(), ErrorKind::kInterrupted);
  }
}

TEST(Interruption, AsksTheClockOnceEnoughWorkHasComeTogether) {
  Interruption interruption(std::chrono::nanoseconds(1));
  const Interruption::Running running(interruption);
  std::this_thread::sleep_for(std::chrono::microseconds(1));
  EXPECT_FALSE(interruption.IsDueAfter(1));
  EXPECT_TRUE(interruption.IsDueAfter(1'000'000));
  EXPECT_THROW(interruption.Check(), platform::Error);
}

TEST(Interruption, EndsTheWaitForALock) {
  Interruption unlimited(std::nullopt);
  const Interruption::Running waiting(unlimited);
  EXPECT_TRUE(unlimited.WaitForLock(0));
  unlimited.Cancel();
  EXPECT_FALSE(unlimited.WaitForLock(1));
  Interruption limited(std::chrono::nanoseconds(1));
  const Interruption::Running late(limited);
  std::this_thread::sleep_for(std::chrono::microseconds(1));
  EXPECT_FALSE(limited.WaitForLock(0));
}

TEST(Interruption, OfAnOuterStatementIsNotEndedByAnInnerOne) {
  Interruption interruption(std::nullopt);
  const Interruption::Running outer(interruption);
  interruption.Cancel();
  { const Interruption::Running inner(interruption); }
  EXPECT_TRUE(interruption.WasCancelled());
}

TEST(Interruption, CountsTheTextsOfAMoment) {
  Interruption interruption(std::nullopt);
  const Interruption::Running running(interruption);
  EXPECT_TRUE(interruption.MayMake(size_t{1} << 31));
  EXPECT_FALSE(interruption.MayMake(1));
  interruption.BeginMoment();
  EXPECT_TRUE(interruption.MayMake(1));
}

TEST_F(Interrupted, AStatementHasAnEnd) {
  EmbeddedConnection connection(With("Timeout=0"));
  const auto statement = [](size_t bytes) { return "SELECT 1 AS one" + std::string(bytes - 15, ' '); };
  EXPECT_EQ(connection.Execute(statement(8 << 20)).RecordCount(), 1U);
  const auto error = ErrorOf([&] { connection.Execute(statement((8 << 20) + 1)); });
  EXPECT_EQ(error.kind(), ErrorKind::kStatement);
  EXPECT_TRUE(std::string(error.what()).starts_with("语句太长")) << error.what();
}

TEST(EmbeddedSettings, LimitTheTimeUnlessItIsZero) {
  EXPECT_EQ(databases::ReadEmbeddedSettings("Data Source=x").time_limit, std::chrono::seconds(60));
  EXPECT_EQ(databases::ReadEmbeddedSettings("Data Source=x;Timeout=2").time_limit, std::chrono::seconds(2));
  EXPECT_EQ(databases::ReadEmbeddedSettings("Data Source=x;Timeout=0").time_limit, std::nullopt);
}

TEST(EmbeddedSettings, RefuseATimeLimitThatIsNone) {
  DatabaseFile file;
  for (const char* text : {"", "-1", "-0", "abc", "1e3", "1,000", "100000001", "9999999999999999999999", "1s", "0x10",
                           "nan", "inf", "1.5.5"}) {
    const auto error =
        ErrorOf([&] { EmbeddedConnection connection(file.DesktopString() + ";Timeout='" + text + "'"); });
    EXPECT_EQ(error.operation(), "Open") << text;
    EXPECT_TRUE(std::string(error.what()).starts_with("连接字符串的 Timeout“" + std::string(text) + "”不是时限"))
        << error.what();
  }
  for (const char* text : {"0", "0.0", "0.5", ".5", "60", "+3", "100000000", " 7 "})
    EmbeddedConnection(file.DesktopString() + ";timeout=" + text).Execute("SELECT 1 AS one");
}

}  // namespace
}  // namespace stockbook::testing
