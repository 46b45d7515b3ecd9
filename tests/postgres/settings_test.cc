// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "databases/postgres/postgres_errors.h"
#include "postgres/session_fixture.h"

namespace stockbook::databases {
namespace {

using Parameters = std::vector<std::pair<std::string, std::string>>;

TEST(PostgresSettings, GivesLibpqItsOwnNames) {
  const auto settings = ReadPostgresSettings(
      "Provider=Postgres;Server=db.shop;PORT=5433;Database=stock;User Id=clerk;Pwd=\"a;b\";SSLMode=require;"
      "application_name=till;Timeout=2.5;Schema=shop;Tables=价目表;Dialect=SQL");
  EXPECT_EQ(settings.parameters, (Parameters{{"host", "db.shop"},
                                             {"port", "5433"},
                                             {"dbname", "stock"},
                                             {"user", "clerk"},
                                             {"password", "a;b"},
                                             {"sslmode", "require"},
                                             {"application_name", "till"}}));
  EXPECT_EQ(settings.server, "db.shop:5433/stock");
  EXPECT_EQ(settings.schema, "shop");
  EXPECT_EQ(settings.time_limit, std::chrono::milliseconds{2500});
  EXPECT_TRUE(settings.tables.Contains("价目表"));
  EXPECT_FALSE(settings.tables.Contains("另一张表"));
}

TEST(PostgresSettings, ShowNoPassword) {
  const auto settings = ReadPostgresSettings("Provider=Postgres;Host=h;Password=SQL;sslpassword=x");
  EXPECT_EQ(settings.shown, "Provider=Postgres;Host=h");
}

TEST(PostgresSettings, TakeTheLastOfSeveral) {
  const auto settings = ReadPostgresSettings("Provider=Postgres;Host=a;Server=b");
  EXPECT_EQ(settings.parameters, (Parameters{{"host", "b"}}));
}

TEST(PostgresSettings, SayWhichOneMeansNothing) {
  const auto message = [](std::string_view text) {
    return std::string(ErrorOf([&] { ReadPostgresSettings(text); }).what());
  };
  EXPECT_EQ(message("Provider=Postgres;Hots=a"),
            "连接字符串的“Hots”不是 PostgreSQL 连接的设置，请改正它的名称或去掉它");
  EXPECT_EQ(message("Provider=Postgres;client_encoding=GBK"), "连接字符串不能规定“client_encoding”，请去掉它");
  EXPECT_EQ(message(std::string_view("Provider=Postgres;Host=a\0b", 26)),
            "连接字符串的“Host”含有空字符（NUL），请去掉它");
  EXPECT_EQ(message(std::string_view("Provider=Postgres;Schema=a\0b", 28)),
            "连接字符串的 Schema 含有空字符（NUL），请去掉它");
  EXPECT_NE(message("Provider=Postgres;Timeout=soon").find("Timeout"), std::string::npos);
  EXPECT_NE(message("Host=a").find("Provider"), std::string::npos);
}

TEST(PostgresErrors, FindTheStateThatLibpqWrites) {
  EXPECT_EQ(SqlStateIn("connection to server at \"h\", port 1 failed: FATAL:  28P01\n"), "28P01");
  EXPECT_EQ(SqlStateIn("connection failed: FATAL:  28000\nconnection failed: 致命错误:  53300"), "53300");
  EXPECT_EQ(SqlStateIn("connection refused"), "");
  EXPECT_EQ(SqlStateIn("FATAL:  no pg"), "");
}

TEST(PostgresErrors, TellThoseOfTheEngineFromThoseOfTheStatement) {
  using platform::ErrorKind;
  EXPECT_EQ(KindOfSqlState("42P01"), ErrorKind::kStatement);
  EXPECT_EQ(KindOfSqlState("22012"), ErrorKind::kStatement);
  EXPECT_EQ(KindOfSqlState("25006"), ErrorKind::kStatement);
  EXPECT_EQ(KindOfSqlState("40001"), ErrorKind::kBusy);
  EXPECT_EQ(KindOfSqlState("53300"), ErrorKind::kBusy);
  EXPECT_EQ(KindOfSqlState("53200"), ErrorKind::kMemory);
  EXPECT_EQ(KindOfSqlState("57014"), ErrorKind::kInterrupted);
  EXPECT_EQ(KindOfSqlState("57P01"), ErrorKind::kInputOutput);
  EXPECT_EQ(KindOfSqlState("XX001"), ErrorKind::kDamaged);
  EXPECT_EQ(KindOfSqlState(""), ErrorKind::kInputOutput);
}

using PostgresConnecting = PostgresTest;

TEST_F(PostgresConnecting, SaysWhatIsWrong) {
  const auto error = [&](const std::string& more) { return ErrorOf([&] { Connect(more); }); };
  struct Case {
    std::string more;
    std::string state;
    std::string reason;
  };
  for (const Case& wrong :
       {Case{"User=locked;Password=wrong", "28P01", "密码不对"}, Case{"User=locked", "28P01", "需要密码"},
        Case{"User=nobody_here", "28000", "服务器不接受这个用户"}, Case{"Database=nothing", "3D000", "没有这个数据库"},
        Case{"sslmode=require", "", "sslmode"}, Case{"sslmode=maybe", "", "sslmode"},
        Case{"Port=1", "", "请检查 Host、Port"}, Case{"Host=no.such.host.invalid", "", "请检查 Host、Port"},
        Case{"options='-c no_such_setting=1'", "42704", "options"},
        Case{"Schema=nowhere", "3F000", "中没有架构“nowhere”"}}) {
    const auto told = error(wrong.more);
    EXPECT_EQ(told.sql_state(), wrong.state) << wrong.more << told.what();
    EXPECT_NE(std::string(told.what()).find(wrong.reason), std::string::npos) << wrong.more << told.what();
    EXPECT_EQ(std::string(told.what()).find('\n'), std::string::npos) << wrong.more;
    EXPECT_EQ(std::string(told.what()).find("wrong"), std::string::npos) << told.what();
    EXPECT_EQ(told.operation(), "Open") << wrong.more;
    EXPECT_EQ(told.kind(), platform::ErrorKind::kInputOutput) << wrong.more;
  }
}

TEST_F(PostgresConnecting, AcceptsHostileTexts) {
  Connect("User=locked;Password='open; sesame';application_name=\"a'b\\c\"\" d\"");
  EXPECT_EQ(One("SELECT current_setting('application_name')", ValueClass::kText), "text:a'b\\c\" d");
  EXPECT_EQ(One("SELECT current_user", ValueClass::kText), "text:locked");
  server().Run(
      "DROP SCHEMA IF EXISTS \"we\"\"i'r\\d\" CASCADE; CREATE SCHEMA \"we\"\"i'r\\d\"; CREATE TABLE \"we\"\"i'r\\d\".t "
      "AS "
      "SELECT 7 AS a");
  Connect("Schema='we\"i''r\\d'");
  EXPECT_EQ(One("SELECT a FROM t", ValueClass::kAny), "int:7");
  const auto error = ErrorOf([&] { Connect("Schema=\"x'; SELECT 1; --\""); });
  EXPECT_EQ(error.sql_state(), "3F000");
}

TEST_F(PostgresConnecting, IsReadOnlyWhateverTheOptionsSay) {
  server().Run(
      "CREATE TABLE t (a int); CREATE FUNCTION f() RETURNS int LANGUAGE sql AS 'INSERT INTO t VALUES (3) "
      "RETURNING a'");
  Connect("options='-c default_transaction_read_only=off'");
  EXPECT_EQ(ErrorOf([&] { One("SELECT f()", ValueClass::kAny); }).sql_state(), "25006");
  EXPECT_EQ(server().Run("SELECT count(*) FROM t"), "0");
}

TEST_F(PostgresConnecting, SaysThatTheServerIsFullAndConnectsLater) {
  server().Run("ALTER ROLE locked CONNECTION LIMIT 1");
  const std::string locked = "User=locked;Password='open; sesame'";
  Connect(locked);
  PostgresSettings settings = ReadPostgresSettings(server().ConnectionString(locked));
  const Interruption::Running running(interruption());
  std::unique_ptr<PostgresSession> other;
  const auto full = ErrorOf([&] { other = std::make_unique<PostgresSession>(settings, interruption()); });
  server().Run("ALTER ROLE locked CONNECTION LIMIT -1");
  EXPECT_EQ(full.sql_state(), "53300");
  EXPECT_EQ(full.kind(), platform::ErrorKind::kBusy);
  other = std::make_unique<PostgresSession>(settings, interruption());
}

TEST_F(PostgresConnecting, EndsWhenItsTimeIsUpThoughTheServerIsSilent) {
  server().Pause();
  const auto error = ErrorOf([&] { Connect("Timeout=0.3"); });
  server().Resume();
  EXPECT_EQ(error.kind(), platform::ErrorKind::kInterrupted);
}

}  // namespace
}  // namespace stockbook::databases
