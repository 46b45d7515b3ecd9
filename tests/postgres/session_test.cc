// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "postgres/session_fixture.h"

namespace stockbook::databases {
namespace {

using platform::ErrorKind;
using PostgresSessions = PostgresTest;
using Transaction = PostgresSession::Transaction;

constexpr const char* kEndless = "SELECT count(*) FROM generate_series(1, 100000000000) AS a";

TEST_F(PostgresSessions, TellWhatTheServerRefuses) {
  const auto missing = ErrorOf([&] { One("SELECT * FROM nowhere", ValueClass::kAny); });
  EXPECT_EQ(missing.kind(), ErrorKind::kStatement);
  EXPECT_EQ(missing.sql_state(), "42P01");
  EXPECT_NE(missing.native_code(), 0);
  EXPECT_EQ(std::string(missing.what()), "找不到语句中的表，请检查语句和 Schema：relation \"nowhere\" does not exist");
  EXPECT_EQ(ErrorOf([&] { One("SELECT 1 +", ValueClass::kAny); }).sql_state(), "42601");
  EXPECT_EQ(One("SELECT 1", ValueClass::kAny), "int:1");
}

TEST_F(PostgresSessions, QuoteNoValueThatWasRead) {
  const auto error =
      ErrorOf([&] { One("SELECT ('secret' || i)::int FROM generate_series(1, 3) AS i", ValueClass::kAny); });
  EXPECT_EQ(error.sql_state(), "22P02");
  EXPECT_EQ(std::string(error.what()).find("secret"), std::string::npos);
  EXPECT_EQ(error.kind(), ErrorKind::kStatement);
}

TEST_F(PostgresSessions, ReadOnAfterAnErrorInTheMiddleOfTheRows) {
  const auto error =
      ErrorOf([&] { One("SELECT 1 / (5000 - i) FROM generate_series(1, 9000) AS i", ValueClass::kAny); });
  EXPECT_EQ(error.sql_state(), "22012");
  const auto wrong_count = ErrorOf([&] { Rows("SELECT i, i FROM generate_series(1, 9000) AS i", {ValueClass::kAny}); });
  EXPECT_EQ(wrong_count.kind(), ErrorKind::kDamaged);
  EXPECT_EQ(One("SELECT 2", ValueClass::kAny), "int:2");
}

TEST_F(PostgresSessions, RefuseEveryWayToWrite) {
  server().Run(
      "CREATE TABLE t (a int); INSERT INTO t VALUES (1); CREATE FUNCTION f() RETURNS int LANGUAGE sql AS "
      "'INSERT INTO t VALUES (3) RETURNING a'; CREATE SEQUENCE s");
  for (const char* sql :
       {"INSERT INTO t VALUES (2)", "DELETE FROM t", "SELECT 1; DELETE FROM t", "SELECT * INTO u FROM t",
        "WITH gone AS (DELETE FROM t RETURNING a) SELECT * FROM gone", "SELECT f()", "SELECT nextval('s')",
        "SELECT 1; COMMIT; DELETE FROM t", "CREATE TABLE u (a int)", "COPY t TO STDOUT", "SELECT 1; SELECT 2", "",
        "SELECT set_config('transaction_read_only', 'off', "
        "false), f()"}) {
    EXPECT_EQ(ErrorOf([&] { One(sql, ValueClass::kAny); }).kind(), ErrorKind::kStatement) << sql;
  }
  EXPECT_EQ(server().Run("SELECT count(*) FROM t"), "1");
  EXPECT_EQ(One("SELECT count(*) FROM t", ValueClass::kAny), "int:1");
  EXPECT_EQ(One("SELECT current_setting('default_transaction_read_only')", ValueClass::kAny), "text:on");
}

TEST_F(PostgresSessions, RefuseAStatementWithNul) {
  EXPECT_EQ(ErrorOf([&] { One(std::string_view("SELECT 1\0 -- ", 13), ValueClass::kAny); }).kind(),
            ErrorKind::kStatement);
}

TEST_F(PostgresSessions, SeeNoCommitLaterThanTheirMoment) {
  server().Run("CREATE TABLE t (a int); INSERT INTO t VALUES (1)");
  const Interruption::Running running(interruption());
  {
    const Transaction moment(session());
    server().Run("INSERT INTO t VALUES (2)");
    EXPECT_EQ(One("SELECT count(*) FROM t", ValueClass::kAny), "int:1");
    // Neither does an error end the moment.
    EXPECT_EQ(ErrorOf([&] { One("SELECT 1 / 0", ValueClass::kAny); }).sql_state(), "22012");
    EXPECT_EQ(One("SELECT count(*) FROM t", ValueClass::kAny), "int:1");
  }
  EXPECT_EQ(One("SELECT count(*) FROM t", ValueClass::kAny), "int:2");
}

TEST_F(PostgresSessions, EndAStatementThatIsCancelledAndKeepTheMoment) {
  server().Run("CREATE TABLE t (a int)");
  const Interruption::Running running(interruption());
  const Transaction moment(session());
  server().Run("INSERT INTO t VALUES (2)");
  {
    std::thread canceller([&] {
      while (server().Run("SELECT count(*) FROM pg_stat_activity WHERE query LIKE 'FETCH%' AND state = 'active'") ==
             "0") {
      }
      interruption().Cancel();
    });
    const auto error = ErrorOf([&] { One(kEndless, ValueClass::kAny); });
    canceller.join();
    EXPECT_EQ(error.kind(), ErrorKind::kInterrupted);
    EXPECT_STREQ(error.what(), "语句已被取消");
  }
  EXPECT_EQ(server().Run("SELECT count(*) FROM pg_stat_activity WHERE query LIKE 'FETCH%' AND state = 'active'"), "0");
}

TEST_F(PostgresSessions, ReadOnAfterACancel) {
  std::thread canceller([&] {
    while (server().Run("SELECT count(*) FROM pg_stat_activity WHERE query LIKE 'FETCH%' AND state = 'active'") ==
           "0") {
    }
    interruption().Cancel();
  });
  EXPECT_EQ(ErrorOf([&] { One(kEndless, ValueClass::kAny); }).kind(), ErrorKind::kInterrupted);
  canceller.join();
  const std::string backend = One("SELECT pg_backend_pid()", ValueClass::kAny);
  EXPECT_EQ(One("SELECT pg_backend_pid()", ValueClass::kAny), backend);
}

TEST_F(PostgresSessions, EndAStatementWhenItsTimeIsUp) {
  Connect("Timeout=0.3");
  const auto error = ErrorOf([&] { One(kEndless, ValueClass::kAny); });
  EXPECT_EQ(error.kind(), ErrorKind::kInterrupted);
  EXPECT_NE(std::string(error.what()).find("时限 0.3 秒"), std::string::npos);
  EXPECT_EQ(One("SELECT 1", ValueClass::kAny), "int:1");
}

TEST_F(PostgresSessions, GiveUpAServerThatStoppedAndConnectAgainWhenItGoesOn) {
  Connect("Timeout=0.5");
  const std::string before = One("SELECT pg_backend_pid()", ValueClass::kAny);
  server().Pause();
  const auto silent = ErrorOf([&] { One("SELECT 1", ValueClass::kAny); });
  const auto again = ErrorOf([&] { One("SELECT 1", ValueClass::kAny); });
  server().Resume();
  EXPECT_EQ(silent.kind(), ErrorKind::kInterrupted);
  EXPECT_EQ(again.kind(), ErrorKind::kInterrupted);
  Connect("Timeout=60");
  EXPECT_NE(One("SELECT pg_backend_pid()", ValueClass::kAny), before);
}

TEST_F(PostgresSessions, GiveUpAServerThatStopsInTheMiddleOfTheRows) {
  Connect("Timeout=1");
  std::thread stopper([&] {
    while (server().Run("SELECT count(*) FROM pg_stat_activity WHERE query LIKE 'FETCH%'") == "0") {
    }
    server().Pause();
  });
  const auto error =
      ErrorOf([&] { One("SELECT repeat('x', 50) FROM generate_series(1, 1000000000)", ValueClass::kText); });
  stopper.join();
  server().Resume();
  EXPECT_EQ(error.kind(), ErrorKind::kInterrupted);
}

TEST_F(PostgresSessions, SayThatTheConnectionIsLostAndConnectAgain) {
  const Interruption::Running running(interruption());
  {
    const Transaction moment(session());
    const std::string backend = One("SELECT pg_backend_pid()", ValueClass::kInteger).substr(4);
    server().Run("SELECT pg_terminate_backend(" + backend + ", 60000)");
    const auto ended = ErrorOf([&] { One("SELECT 1", ValueClass::kAny); });
    EXPECT_TRUE(ended.IsOfEngine());
    EXPECT_EQ(ended.kind(), ErrorKind::kInputOutput);
    // The moment is over, and nothing read now would belong to it.
    EXPECT_EQ(ErrorOf([&] { One("SELECT 1", ValueClass::kAny); }).kind(), ErrorKind::kInputOutput);
  }
  EXPECT_EQ(One("SELECT 1", ValueClass::kAny), "int:1");
}

TEST_F(PostgresSessions, SurviveARestartBetweenTwoMoments) {
  EXPECT_EQ(One("SELECT 1", ValueClass::kAny), "int:1");
  server().Kill();
  const auto gone = ErrorOf([&] { One("SELECT 1", ValueClass::kAny); });
  EXPECT_EQ(gone.kind(), ErrorKind::kInputOutput);
  EXPECT_NE(std::string(gone.what()).find("无法连接数据库服务器"), std::string::npos);
  server().Start();
  EXPECT_EQ(One("SELECT 2", ValueClass::kAny), "int:2");
}

TEST_F(PostgresSessions, SayThatTheServerWasKilledInTheMiddleOfTheRows) {
  std::thread killer([&] {
    while (server().Run("SELECT count(*) FROM pg_stat_activity WHERE query LIKE 'FETCH%'") == "0") {
    }
    server().Kill();
  });
  const auto error =
      ErrorOf([&] { One("SELECT repeat('x', 50) FROM generate_series(1, 1000000000)", ValueClass::kText); });
  killer.join();
  server().Start();
  EXPECT_EQ(error.kind(), ErrorKind::kInputOutput);
  EXPECT_EQ(One("SELECT 1", ValueClass::kAny), "int:1");
}

}  // namespace
}  // namespace stockbook::databases
