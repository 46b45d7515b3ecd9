// SPDX-License-Identifier: MIT
#ifdef STOCKBOOK_TESTS_HAVE_LIBPQ

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "app/inventory_fixture.h"
#include "app/terminal_run.h"
#include "stockbook/inventory/inventory_schema.h"
#include "stockbook/sample/sample_inventory.h"
#include "support/postgres_server.h"

namespace stockbook::app {
namespace {

// An inventory in a file, and a database of its own on the server of the tests.
class ServerCopyTest : public InventoryTest {
 protected:
  void SetUp() override {
    if (testing::SharedPostgresServer() == nullptr) GTEST_SKIP() << "no server to test with";
    SampleOptions options;
    options.lines = 300;
    options.periods = 3;
    WriteSampleInventory(Source(), options);
    server().Run("DROP DATABASE IF EXISTS shop WITH (FORCE)");
    server().Run("CREATE DATABASE shop");
  }

  static testing::PostgresServer& server() { return *testing::SharedPostgresServer(); }
  std::string Source() const { return PathOf("source.db"); }
  static std::string Shop(const std::string& more = {}) { return server().ConnectionString("Database=shop;" + more); }
  Outcome Copy(std::vector<std::string> more = {}) const {
    more.insert(more.begin(), {"copy", Source(), Shop()});
    return RunArguments(more);
  }
  // As `locked`, who has a password.
  static std::string LockedShop() { return Shop("User=locked"); }
  static void LetLockedIn() { server().Run("GRANT pg_read_all_data TO locked"); }
  std::vector<std::string> Export(const std::string& database, const std::string& file) const {
    return {"export", database, "--journal", "material", "--product", "1", "--format", "ndjson", "-o", PathOf(file)};
  }
  std::string Exported(const std::string& file) const { return ReadAll(PathOf(file)); }
};

TEST_F(ServerCopyTest, CopiesToTheServerAndBackWithoutADifference) {
  const Outcome there = Copy();
  EXPECT_EQ(there.code, 0) << there.err;
  EXPECT_NE(there.out.find("，全部相同。\n"), std::string::npos) << there.out;
  const Outcome back = RunArguments({"copy", Shop(), PathOf("back.db")});
  EXPECT_EQ(back.code, 0) << back.err;
  const OpenedInventory before(Source());
  const OpenedInventory after(PathOf("back.db"));
  for (size_t index = 0; index < kTableCount; ++index) {
    const std::string select = "SELECT * FROM " + std::string(InventoryTableOf(static_cast<TableName>(index)).name);
    EXPECT_EQ(after.Lines(select), before.Lines(select)) << select;
  }
}

TEST_F(ServerCopyTest, IsHealthyOnTheServerToo) {
  Copy();
  const Outcome outcome = RunArguments({"doctor", Shop()});
  EXPECT_EQ(outcome.code, 0) << outcome.out << outcome.err;
  EXPECT_NE(outcome.out.find("索引：未检查"), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("没有发现问题"), std::string::npos) << outcome.out;
}

TEST_F(ServerCopyTest, ReplacesTheTablesOfAnInventoryOnlyWhenToldTo) {
  EXPECT_EQ(Copy().code, 0);
  const Outcome refused = Copy();
  EXPECT_EQ(refused.code, 1);
  EXPECT_NE(refused.err.find("目标库已有表“入库目录”，没有写入任何内容；要替换请加 --replace"), std::string::npos)
      << refused.err;
  EXPECT_EQ(Copy({"--replace"}).code, 0);
}

TEST_F(ServerCopyTest, ShowsTheSameJournalAsTheFile) {
  Copy();
  TerminalRun file(Export(Source(), "file.ndjson"));
  EXPECT_EQ(file.Wait(), 0) << file.shown();
  TerminalRun shop(Export(Shop(), "server.ndjson"));
  EXPECT_EQ(shop.Wait(), 0) << shop.shown();
  EXPECT_EQ(Exported("server.ndjson"), Exported("file.ndjson"));
  EXPECT_GT(Exported("file.ndjson").size(), 10000U);
}

TEST_F(ServerCopyTest, AsksForThePasswordOnTheTerminalWithoutShowingIt) {
  Copy();
  LetLockedIn();
  TerminalRun program(Export(LockedShop(), "server.ndjson"));
  ASSERT_TRUE(program.WaitFor("“shop@127.0.0.1”的密码：")) << program.shown();
  program.Type("open; sesame\n");
  EXPECT_EQ(program.Wait(), 0) << program.shown();
  EXPECT_EQ(program.shown().find("sesame"), std::string::npos) << program.shown();
  EXPECT_GT(Exported("server.ndjson").size(), 10000U);
}

TEST_F(ServerCopyTest, AsksAgainAfterAWrongPasswordAndGivesUpAtLast) {
  TerminalRun program(Export(LockedShop(), "server.ndjson"));
  for (int attempt = 1; attempt <= 3; ++attempt) {
    std::string prompts;
    for (int shown = 0; shown < attempt; ++shown)
      prompts += "“shop@127.0.0.1”的密码：" + std::string(shown + 1 < attempt ? "\r\n" : "");
    ASSERT_TRUE(program.WaitFor(prompts)) << program.shown();
    program.Type("wrong-word\n");
  }
  EXPECT_EQ(program.Wait(), 1);
  EXPECT_NE(program.shown().find("密码不对"), std::string::npos) << program.shown();
  EXPECT_EQ(program.shown().find("wrong-word"), std::string::npos) << program.shown();
  EXPECT_FALSE(std::filesystem::exists(PathOf("server.ndjson")));
}

TEST_F(ServerCopyTest, EndsWhenAskedToWhileItAsks) {
  TerminalRun program(Export(LockedShop(), "server.ndjson"));
  ASSERT_TRUE(program.WaitFor("的密码：")) << program.shown();
  program.Type("half\x03");
  program.Type("\n");
  EXPECT_EQ(program.Wait(), 1);
  EXPECT_NE(program.shown().find("需要密码"), std::string::npos) << program.shown();
}

TEST_F(ServerCopyTest, TakesThePasswordFromAFileOrTheEnvironment) {
  Copy();
  LetLockedIn();
  const std::string file = Write("password", "open; sesame\n");
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  EXPECT_EQ(RunArguments({"doctor", LockedShop(), "--password-file", file}).code, 0);
  setenv("STOCKBOOK_PASSWORD", "open; sesame", 1);
  EXPECT_EQ(RunArguments({"doctor", LockedShop()}).code, 0);
  setenv("STOCKBOOK_PASSWORD", "SQL", 1);
  const Outcome wrong = RunArguments({"doctor", LockedShop()});
  unsetenv("STOCKBOOK_PASSWORD");
  EXPECT_EQ(wrong.code, 2);
  EXPECT_NE(wrong.err.find("密码不对"), std::string::npos) << wrong.err;
}

TEST_F(ServerCopyTest, GivesTheTargetThePasswordThatAFileDoesNotNeed) {
  server().Run("ALTER DATABASE shop OWNER TO locked");
  setenv("STOCKBOOK_PASSWORD", "open; sesame", 1);
  const Outcome outcome = RunArguments({"copy", Source(), LockedShop()});
  unsetenv("STOCKBOOK_PASSWORD");
  // In the schema that everybody may look into, a role that is not its owner may not make tables.
  EXPECT_EQ(outcome.err.find("密码"), std::string::npos) << outcome.err;
}

}  // namespace
}  // namespace stockbook::app

#endif
