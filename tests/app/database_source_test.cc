// SPDX-License-Identifier: MIT
#include "stockbook/inventory/database_source.h"

#include <gtest/gtest.h>

#include "app/inventory_fixture.h"
#include "databases/connection_string.h"
#include "stockbook/platform/error.h"
#include "stockbook/sample/sample_inventory.h"

namespace stockbook::app {
namespace {

class DatabaseSourceTest : public InventoryTest {};

TEST_F(DatabaseSourceTest, IsAFileUnlessItLooksLikeAConnectionString) {
  for (const char* file : {"stock.db", "/a=b/stock.db", "folder/a=b.db", "", "库存.mdb"})
    EXPECT_FALSE(DatabaseSource::IsConnectionString(file)) << file;
  for (const char* text : {"Provider=Postgres;Host=/var/run", "Data Source=/a/b.db", "=", "Password=x"})
    EXPECT_TRUE(DatabaseSource::IsConnectionString(text)) << text;
}

TEST_F(DatabaseSourceTest, TakesAFileThatExistsForAFileWhateverItsName) {
  const std::string name = "Provider=x;Password=y.db";
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(std::filesystem::path(Write(name, "")).parent_path());
  EXPECT_FALSE(DatabaseSource::IsConnectionString(name));
  EXPECT_EQ(DatabaseSource(name).file(), name);
  std::filesystem::current_path(before);
}

TEST_F(DatabaseSourceTest, NamesAServerByDatabaseAndHost) {
  EXPECT_EQ(DatabaseSource("Provider=Postgres;Host=db.example.com;Database=stock;Password=x").name(),
            "stock@db.example.com");
  EXPECT_EQ(DatabaseSource("Provider=Odbc;DSN=shop;PWD=x").name(), "shop");
  EXPECT_EQ(DatabaseSource("Provider=Odbc;Driver=abc;PWD=x").name(), "Provider=Odbc;Driver=abc");
  EXPECT_EQ(DatabaseSource("Provider=Postgres;Host=h;Database=stock").file(), "");
  EXPECT_EQ(DatabaseSource("Provider=Stockbook.Embedded;Data Source=a;b=c").file(), "a");
}

TEST_F(DatabaseSourceTest, JoinsThePasswordToTheStringHoweverItIsWritten) {
  for (const char* password : {"plain", "semi;colon", "\"quoted\"", " blanks ", "it's", "{x}", "密码;Host=evil"}) {
    DatabaseSource source("Provider=Postgres;Host=h;Database=d");
    source.SetPassword(password);
    const databases::ConnectionString settings(source.ConnectionString());
    EXPECT_EQ(settings.Find("Password"), password);
    EXPECT_EQ(settings.Find("Host"), "h");
    EXPECT_EQ(settings.settings().size(), 4U);
    EXPECT_EQ(source.name().find(password), std::string::npos);
  }
  DatabaseSource odbc("Provider=Odbc;DSN=shop");
  odbc.SetPassword("x");
  EXPECT_EQ(databases::ConnectionString(odbc.ConnectionString()).Find("PWD"), "x");
}

TEST_F(DatabaseSourceTest, QuotesAFileThatLooksLikeSettings) {
  const std::string path = PathOf("a;Dialect=SQL;\"b\".db");
  WriteSampleInventory(path, {});
  const auto connection = OpenInventory(path);
  EXPECT_EQ(databases::ConnectionString(connection->ConnectionString()).Find("Data Source"), path);
}

TEST_F(DatabaseSourceTest, OpensAFileByItsConnectionString) {
  WriteSampleInventory(PathOf("sample.db"), {});
  const auto connection = OpenInventory("Provider=Stockbook.Embedded;Data Source=" + PathOf("sample.db"));
  EXPECT_GT(connection->Execute("SELECT pdID FROM 商品设置").RecordCount(), 0U);
}

TEST_F(DatabaseSourceTest, KnowsADesktopFileByItsContent) {
  using namespace std::string_literals;
  for (const std::string& signature : {"\0\1\0\0Standard Jet DB\0"s, "\0\1\0\0Standard ACE DB\0"s}) {
    const DatabaseSource source(Write("inventory.mdb", signature));
    EXPECT_EQ(databases::ConnectionString(source.ConnectionString()).Find("Provider"), "Stockbook.Desktop");
  }
  EXPECT_TRUE(DatabaseSource(PathOf("inventory.mdb")).TakesPassword());
  const DatabaseSource other(Write("other.mdb", "SQLite format 3"));
  EXPECT_EQ(databases::ConnectionString(other.ConnectionString()).Find("Provider"), "Stockbook.Embedded");
  EXPECT_FALSE(other.TakesPassword());
}

TEST_F(DatabaseSourceTest, TriesADesktopFileOfAnotherNameAsOne) {
  std::string page(4096, '\1');
  page.replace(0, 20, std::string("\0\1\0\0Standard Jet DB\0", 20));
  try {
    OpenInventory(Write("stock.db", page));
    ADD_FAILURE();
  } catch (const platform::Error& error) {
    EXPECT_EQ(std::string(error.what()).find("不是 SQLite 数据库"), std::string::npos) << error.what();
  }
}

TEST_F(DatabaseSourceTest, QuotesNothingOfAStringThatItCannotRead) {
  try {
    const DatabaseSource source("Provider=Postgres;Password=\"s3cret;Host=h");
    ADD_FAILURE();
  } catch (const platform::Error& error) {
    EXPECT_EQ(std::string(error.what()).find("s3cret"), std::string::npos) << error.what();
  }
}

TEST_F(DatabaseSourceTest, KnowsWhichArgumentsHoldAPassword) {
  EXPECT_TRUE(DatabaseSource::MayHavePassword("Provider=Postgres;PWD=x"));
  EXPECT_TRUE(DatabaseSource::MayHavePassword("Provider=Postgres;Password=\"open"));
  EXPECT_FALSE(DatabaseSource::MayHavePassword("Provider=Postgres;Host=h"));
  EXPECT_FALSE(DatabaseSource::MayHavePassword("/pwd=x/stock.db"));
}

}  // namespace
}  // namespace stockbook::app
