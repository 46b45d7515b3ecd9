// SPDX-License-Identifier: MIT
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/databases/sqlite/open_embedded.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "databases/database_file.h"
#include "databases/journal_statements.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::Database;
using databases::Dialect;
using databases::EmbeddedConnection;
using databases::OpenEmbedded;

std::string OpenError(const std::string& connection_string) {
  try {
    OpenEmbedded(connection_string);
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.operation(), "Open");
    return error.what();
  }
  return "opened";
}

std::string ExecuteError(platform::Connection& connection, const std::string& statement) {
  try {
    connection.Execute(statement);
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.operation(), "Execute");
    return error.what();
  }
  return "executed";
}

std::string FileWith(const std::string& bytes) {
  static int number = 0;
  const std::string path = (std::filesystem::temp_directory_path() /
                            ("stockbook-test-" + std::to_string(getpid()) + "-" + std::to_string(++number)))
                               .string();
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

TEST(OpenEmbedded, SaysWhatIsWrongWithTheFile) {
  EXPECT_EQ(OpenError("Provider=Stockbook.Embedded;Data Source=/no/such/file.db"),
            "找不到数据库文件“/no/such/file.db”");
  EXPECT_EQ(OpenError("Provider=Stockbook.Embedded;Data Source=/tmp"), "“/tmp”是文件夹，不是数据库文件");
  const std::string text = FileWith(std::string(5000, 'x'));
  EXPECT_EQ(OpenError("Provider=Stockbook.Embedded;Data Source=" + text), "文件“" + text + "”不是 SQLite 数据库");
  std::filesystem::remove(text);
}

// Opening a pipe would wait for a writer for ever.
TEST(OpenEmbedded, TellsNoPasswordAndTakesNoDialectFromIt) {
  const DatabaseFile file("CREATE TABLE 仓库设置(dpID INTEGER PRIMARY KEY, 仓库名称 TEXT)");
  const auto connection = OpenEmbedded("Data Source=" + file.path() + ";Password=SQL");
  EXPECT_EQ(connection->ConnectionString(), "Data Source=" + file.path());
  EXPECT_EQ(connection->Execute("SELECT Left('abc', 2) & 'd' AS t").FieldValue("t").Text(), "abd");
}

TEST(OpenEmbedded, RefusesWhatIsNoFileWithoutOpeningIt) {
  const std::string pipe = FileWith("");
  std::filesystem::remove(pipe);
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(OpenError("Data Source=" + pipe), "“" + pipe + "”是管道、设备或套接字，不是数据库文件");
  const std::string link = pipe + "-link";
  std::filesystem::create_symlink(pipe, link);
  EXPECT_EQ(OpenError("Data Source=" + link), "“" + link + "”是管道、设备或套接字，不是数据库文件");
  EXPECT_EQ(OpenError("Data Source=/dev/null"), "“/dev/null”是管道、设备或套接字，不是数据库文件");
  std::filesystem::remove(link);
  std::filesystem::remove(pipe);
}

// A copy of the file and its journal, taken while a writer was in the middle.
TEST(OpenEmbedded, SaysWhatToDoAboutAWriteThatWasCutOff) {
  DatabaseFile file;
  CreateInventory(file);
  FillInventory(file);
  file.Run("PRAGMA cache_size=1; BEGIN; UPDATE 入库记录 SET 经手人=printf('%.*c', 90000, 'x')");
  const std::string path = FileWith("");
  std::filesystem::copy_file(file.path(), path, std::filesystem::copy_options::overwrite_existing);
  std::filesystem::copy_file(file.path() + "-journal", path + "-journal");
  file.Run("ROLLBACK");
  try {
    OpenEmbedded("Data Source=" + path);
    ADD_FAILURE();
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.what(),
              "数据库“" + path + "”上次写入时中断，只读打开无法恢复，请让写入它的程序再打开一次，然后重试");
    EXPECT_EQ(error.kind(), platform::ErrorKind::kInputOutput);
  }
  std::filesystem::remove(path);
  std::filesystem::remove(path + "-journal");
}

// In a process that has not called SQLite before: SQLite takes settings no more once it has been.
TEST(OpenEmbedded, ChangesNoSettingOfTheWholeProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const std::string path = FileWith("");
  const auto counts = [&] {
    const auto connection = OpenEmbedded("Data Source=" + path);
    std::filesystem::remove(path);  // the child has a file of its own
    return sqlite3_memory_used() > 0;
  };
  EXPECT_EXIT(std::exit(counts() ? 0 : 1), ::testing::ExitedWithCode(0), "");
  std::filesystem::remove(path);
}

TEST(OpenEmbedded, SaysWhatIsWrongWithTheConnectionString) {
  EXPECT_EQ(OpenError("Provider=Stockbook.Embedded"), "连接字符串缺少 Data Source，请写明数据库文件");
  EXPECT_EQ(OpenError("Provider=Other;Data Source=x"), "不支持的 Provider“Other”，内置数据库为 Stockbook.Embedded");
}

TEST(OpenEmbedded, OpensAnEmptyFileAsADatabaseWithoutTables) {
  const std::string path = FileWith("");
  const auto connection = OpenEmbedded("Data Source=" + path);
  EXPECT_EQ(ExecuteError(*connection, "SELECT * FROM tqAccPeriod"),
            "数据库中没有名为“tqAccPeriod”的表（SQL 语句第 1 行第 15 个字符）");
  EXPECT_EQ(connection->Execute("SELECT 1 AS one").FieldValue("one").Text(), "1");
  std::filesystem::remove(path);
}

TEST(EmbeddedConnection, KeepsTheConnectionStringAsItWasGiven) {
  DatabaseFile file;
  const std::string text = " provider=Stockbook.Embedded ;Data Source='" + file.path() + "'";
  EXPECT_EQ(OpenEmbedded(text)->ConnectionString(), text);
}

TEST(EmbeddedConnection, NeverWrites) {
  DatabaseFile file;
  CreateInventory(file);
  const auto before = std::filesystem::last_write_time(file.path());
  const auto connection = OpenEmbedded(file.DesktopString());
  for (const char* statement :
       {"INSERT INTO tqAccPeriod VALUES ('x')", "Drop Table tqAccPeriod", "UPDATE tqAccPeriod SET AccPeriod='x'",
        "CREATE TABLE x(y)", "ATTACH ':memory:' AS x", "PRAGMA query_only=0", "VACUUM", "BEGIN",
        "SELECT 1; DROP TABLE tqAccPeriod", "SELECT load_extension('x')", "SELECT writefile('x','y')",
        "SELECT * INTO x FROM tqAccPeriod"}) {
    EXPECT_NE(ExecuteError(*connection, statement), "executed") << statement;
  }
  EXPECT_EQ(std::filesystem::last_write_time(file.path()), before);
}

// SQLite keeps the locks of such a database in a file beside it, and may leave an empty log.
TEST(EmbeddedConnection, ReadsADatabaseWithALogWithoutWritingToIt) {
  DatabaseFile file;
  CreateInventory(file);
  FillInventory(file);
  file.Run("PRAGMA journal_mode=WAL; PRAGMA wal_checkpoint(TRUNCATE)");
  const std::string path = FileWith("");
  std::filesystem::copy_file(file.path(), path, std::filesystem::copy_options::overwrite_existing);
  const auto bytes = [&] {
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
  };
  const std::string before = bytes();
  EXPECT_EQ(OpenEmbedded("Data Source=" + path)->Execute("SELECT * FROM 仓库设置").RecordCount(), 2U);
  EXPECT_TRUE(bytes() == before);
  std::error_code none;
  const auto logged = std::filesystem::file_size(path + "-wal", none);
  EXPECT_TRUE(none || logged == 0);
  for (const char* ending : {"", "-wal", "-shm"}) std::filesystem::remove(path + ending);
}

TEST(EmbeddedConnection, SeesWhatAnotherProgramChangesBetweenStatements) {
  DatabaseFile file;
  file.Run("CREATE TABLE a(x TEXT); INSERT INTO a VALUES ('1')");
  const auto connection = OpenEmbedded(file.DesktopString());
  const platform::Recordset before = connection->Execute("SELECT * FROM a");
  file.Run("ALTER TABLE a ADD COLUMN y MONEY; UPDATE a SET x='2', y=3; CREATE TABLE b(z)");
  EXPECT_EQ(RowText(before), "1");
  EXPECT_EQ(AllRows(connection->Execute("SELECT * FROM a")), std::vector<std::string>{"2|3"});
  EXPECT_EQ(connection->Execute("SELECT * FROM b").RecordCount(), 0U);
}

TEST(EmbeddedConnection, ReportsALockedFileAfterWaiting) {
  DatabaseFile file;
  CreateInventory(file);
  const auto connection = OpenEmbedded(file.DesktopString());
  file.Run("BEGIN EXCLUSIVE");
  EXPECT_EQ(ExecuteError(*connection, "SELECT * FROM tqAccPeriod"),
            "数据库“" + file.path() + "”正被其他程序独占，请稍后再试");
  file.Run("COMMIT");
  EXPECT_EQ(ExecuteError(*connection, "SELECT * FROM tqAccPeriod"), "executed");
}

TEST(EmbeddedConnection, ReportsADamagedFile) {
  std::string path;
  {
    DatabaseFile file;
    CreateInventory(file);
    FillInventory(file);
    path = FileWith("");
    std::filesystem::copy_file(file.path(), path, std::filesystem::copy_options::overwrite_existing);
  }
  {
    std::fstream bytes(path, std::ios::binary | std::ios::in | std::ios::out);
    bytes.seekp(4096);
    bytes << std::string(static_cast<size_t>(std::filesystem::file_size(path)) - 4096, '\xA5');
  }
  try {
    OpenEmbedded("Data Source=" + path)->Execute(MaterialJournal(Dialect::kDesktop, "1)", "2005-03"));
    ADD_FAILURE();
  } catch (const platform::Error& error) {
    EXPECT_TRUE(std::string(error.what()).starts_with("数据库文件“" + path + "”已损坏")) << error.what();
  }
  std::filesystem::remove(path);
}

TEST(EmbeddedConnection, ReadsViewsAndTablesWithoutRowNumbersAndGeneratedColumns) {
  DatabaseFile file;
  file.Run(
      "CREATE TABLE a(k INTEGER PRIMARY KEY, m MONEY, twice MONEY AS (m*2)) WITHOUT ROWID; INSERT INTO a VALUES "
      "(1,1.5),(2,2.5);"
      "CREATE VIEW v AS SELECT k, m FROM a; CREATE TABLE r(rowid TEXT, _rowid_ TEXT, oid TEXT); INSERT INTO r VALUES "
      "('b','x','y'),('a','z','w')");
  const auto connection = OpenEmbedded(file.DesktopString());
  EXPECT_EQ(AllRows(connection->Execute("SELECT * FROM a ORDER BY k DESC")),
            (std::vector<std::string>{"2|2.5|5", "1|1.5|3"}));
  EXPECT_EQ(AllRows(connection->Execute("SELECT -m FROM v WHERE k=1")), std::vector<std::string>{"-1.5"});
  EXPECT_EQ(AllRows(connection->Execute("SELECT rowid FROM r ORDER BY rowid")), (std::vector<std::string>{"a", "b"}));
}

TEST(EmbeddedConnection, NamesWhatTheDatabaseDoesNotHave) {
  DatabaseFile file;
  CreateInventory(file);
  const auto connection = OpenEmbedded(file.DesktopString());
  const auto refused = [&](const char* statement) { return ExecuteError(*connection, statement); };
  EXPECT_EQ(refused("SELECT *\nFROM 没有"), "数据库中没有名为“没有”的表（SQL 语句第 2 行第 6 个字符）");
  EXPECT_EQ(refused("SELECT 没有 FROM 仓库设置"), "没有名为“没有”的字段（SQL 语句第 1 行第 8 个字符）");
  EXPECT_EQ(refused("SELECT d.没有 FROM 仓库设置 AS d"), "表“d”中没有字段“没有”（SQL 语句第 1 行第 8 个字符）");
  EXPECT_EQ(refused("SELECT 仓库设置.dpID FROM 仓库设置 AS d"),
            "FROM 中没有名为“仓库设置”的表（SQL 语句第 1 行第 8 个字符）");
  EXPECT_EQ(refused("SELECT dpID FROM 仓库设置, 入库目录"),
            "字段“dpID”不止一个表中有，请写明表名（SQL 语句第 1 行第 8 个字符）");
  EXPECT_EQ(refused("SELECT a.dpID FROM 仓库设置 a, 仓库设置 a"),
            "表名“a”在 FROM 中出现了两次，请使用不同的别名（SQL 语句第 1 行第 8 个字符）");
  EXPECT_EQ(refused("SELECT 仓库名称, Count(*) FROM 仓库设置"),
            "这个字段既不在 GROUP BY 中，也不在聚合函数中（SQL 语句第 1 行第 8 个字符）");
  EXPECT_EQ(refused("SELECT 1 FROM 仓库设置 UNION SELECT 1, 2 FROM 仓库设置"),
            "UNION 两侧的字段数不同：1 与 2（SQL 语句第 1 行第 26 个字符）");
  EXPECT_EQ(refused("SELECT dpID FROM 仓库设置 UNION SELECT dpID FROM 仓库设置 ORDER BY 仓库名称"),
            "ORDER BY 的字段“仓库名称”不在结果中（SQL 语句第 1 行第 60 个字符）");
}

TEST(EmbeddedConnection, JoinsOnNothingButColumnsOfBothSidesInTheDesktopDialect) {
  DatabaseFile file;
  file.Run("CREATE TABLE a(i INTEGER, x INTEGER); CREATE TABLE b(i INTEGER, y INTEGER)");
  EmbeddedConnection desktop(file.DesktopString());
  EmbeddedConnection server(file.ServerString());
  for (const char* on : {"a.i=b.i And a.x=1", "a.i=1", "a.i=a.x", "a.i=b.i And Not a.x=b.y", "a.i+1=b.i",
                         "a.i=b.i Or b.y Is Null", "(a.i=b.i) And (b.y=2)"}) {
    const std::string statement = std::string("SELECT a.i FROM a LEFT JOIN b ON ") + on;
    EXPECT_TRUE(ExecuteError(desktop, statement).starts_with("JOIN expression not supported.")) << on;
    EXPECT_EQ(ExecuteError(server, statement), "executed") << on;
  }
  for (const char* on : {"a.i=b.i", "b.i=a.i And a.x<b.y", "(a.i=b.i Or a.x=b.y)", "i2=x2"}) {
    const std::string statement =
        std::string(
            "SELECT a.i FROM (SELECT i, x, x AS x2 FROM a) AS a INNER JOIN (SELECT i, y, i AS i2 FROM b) AS b ON ") +
        on;
    EXPECT_EQ(ExecuteError(desktop, statement), "executed") << on;
  }
}

TEST(EmbeddedConnection, FindsTheLinesOfOneProductAmongManyBillsWithoutReadingThemAll) {
  DatabaseFile file;
  CreateInventory(file);
  file.Run(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<5000) INSERT INTO "
      "入库目录(BillID,BillDate,单据编号,AccPeriod,ksID) SELECT i,'2005-01-01',i,'2005-01',1 FROM n;"
      "INSERT INTO 入库记录(RecID,BillID,pdID,数量) SELECT BillID, BillID, BillID%500, 1 FROM 入库目录; INSERT INTO "
      "厂商资料 VALUES (1,'a','01')");
  EmbeddedConnection connection(file.DesktopString());
  const auto rows = connection.Execute(MaterialJournal(Dialect::kDesktop, "7)", "2005-03"));
  EXPECT_EQ(rows.RecordCount(), 10U);
  EXPECT_EQ(rows.FieldValue("Enterprise").Text(), "a");
}

}  // namespace
}  // namespace stockbook::testing
