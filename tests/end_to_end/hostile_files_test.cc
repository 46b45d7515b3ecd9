// SPDX-License-Identifier: MIT
// Files that are not an inventory, or not quite one, opened by the library and by the
// program.
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <functional>

#include "end_to_end/fixture.h"
#include "end_to_end/inventory_maker.h"
#include "end_to_end/journal_comparison.h"
#include "stockbook/platform/error.h"

namespace stockbook::end_to_end {
namespace {

class HostileFiles : public EndToEnd {
 protected:
  void MakeGood(const std::string& sql = {}) {
    std::filesystem::remove(database_);
    InventoryMaker maker(database_, Declared::kWithoutKeys);
    maker.AddMasters();
    maker.AddReceipt(1, "2025-01-05", {{"数量", "5"}, {"除税金额", "'10'"}});
    maker.AddIssue(2, "2025-02-06", {{"数量", "1"}, {"除税金额", "'2'"}});
    maker.Run(sql);
  }
  app::JournalOptions JournalOf(int type) const { return {type, 1, 1, "", true, true, false}; }
  // The error of a load as one line of text; "" if it succeeded.
  std::string ErrorOf(int type) {
    try {
      const app::LoadReport report = Load(database_, JournalOf(type));
      if (report.loaded) return {};
      EXPECT_NE(app::LoadError(report), "");
      EXPECT_EQ(report.process.back(), -1);
      return app::LoadError(report);
    } catch (const platform::Error& error) {
      return error.what();
    }
  }
  // Every command that reads an inventory must end with exit code 1, one line on stderr, and write nothing.
  void ExpectEveryCommandToFail() {
    for (const std::string command : {"export", "render", "sql"}) {
      std::vector<std::string> arguments{command, database_, "--journal", "material", "--product", "1"};
      const bool writes = command != "sql";
      if (writes) arguments.insert(arguments.end(), {"-o", PathOf("target")});
      const std::vector<std::string> before = Files();
      const Outcome outcome = Program(arguments);
      EXPECT_EQ(outcome.code, 1) << command << ": " << outcome.err;
      EXPECT_EQ(outcome.out, "") << command;
      EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << command << ": " << outcome.err;
      EXPECT_TRUE(outcome.err.starts_with("stockbook " + command + ": ")) << command << ": " << outcome.err;
      EXPECT_EQ(Files(), before) << command;
    }
  }

  std::string database_ = PathOf("inventory.db");
};

TEST_F(HostileFiles, WithoutATableOfTheJournalGiveAMessageThatNamesIt) {
  for (const char* table : {"入库目录", "入库记录", "仓库设置", "厂商资料", "项目设置"}) {
    MakeGood(std::string("DROP TABLE ") + table);
    for (int type : {0, 1, 3})
      EXPECT_NE(ErrorOf(type).find(table), std::string::npos) << table << " " << type << ": " << ErrorOf(type);
  }
  MakeGood("DROP TABLE 客户资料");
  for (int type : {0, 2, 3}) EXPECT_NE(ErrorOf(type).find("客户资料"), std::string::npos) << type;
}

TEST_F(HostileFiles, WithoutAColumnOfTheJournalGiveAMessageThatNamesIt) {
  for (const auto& [table, column] : {std::pair{"入库记录", "数量"},
                                      {"入库记录", "除税金额"},
                                      {"入库目录", "BillDate"},
                                      {"入库目录", "AccPeriod"},
                                      {"仓库设置", "仓库名称"}}) {
    MakeGood(std::string("ALTER TABLE ") + table + " DROP COLUMN " + column);
    for (int type : {0, 1, 3})
      EXPECT_NE(ErrorOf(type).find(column), std::string::npos) << column << " " << type << ": " << ErrorOf(type);
  }
}

TEST_F(HostileFiles, WithoutABalanceTableShowTheLinesAndOpenWithZero) {
  const char* tables[] = {"仓库余额表", "tqSuppBalance", "tqCustBalance", "tqProjBalance"};
  for (int type = 0; type < 4; ++type) {
    MakeGood(std::string("DROP TABLE ") + tables[type]);
    EXPECT_EQ(ErrorOf(type), "");
    const sheet::GridSheet& grid = desk().sheet();
    EXPECT_TRUE(grid.TextMatrix(1, grid.ColIndex("BillNo")).ends_with("期初"));
    EXPECT_EQ(grid.TextMatrix(1, grid.ColIndex("StoQty")), "0");
    EXPECT_GT(grid.Rows(), 3);
  }
}

TEST_F(HostileFiles, ThatAreEmptyOrNoDatabaseGiveAMessage) {
  const std::string sample = [&] {
    MakeGood();
    return ReadAll(database_);
  }();
  const std::pair<const char*, std::string> files[] = {
      {"empty", ""},
      {"text", "no database at all\n"},
      {"header", sample.substr(0, 100)},
      {"page", sample.substr(0, 4096)},
      {"zeros", std::string(8192, '\0')},
  };
  for (const auto& [name, bytes] : files) {
    SCOPED_TRACE(name);
    Write("inventory.db", bytes);
    for (int type = 0; type < 4; ++type) EXPECT_NE(ErrorOf(type), "");
    ExpectEveryCommandToFail();
  }
  std::filesystem::remove(database_);
  EXPECT_NE(ErrorOf(0), "");
  ExpectEveryCommandToFail();
  std::filesystem::create_directory(database_);
  EXPECT_NE(ErrorOf(0), "");
  ExpectEveryCommandToFail();
}

TEST_F(HostileFiles, ThatAreDamagedAnywhereNeverCrashALoad) {
  MakeGood();
  const std::string sample = ReadAll(database_);
  for (size_t at = 0; at < sample.size(); at += 1021) {
    std::string damaged = sample;
    for (size_t byte = at; byte < std::min(at + 64, damaged.size()); ++byte)
      damaged[byte] = static_cast<char>(~damaged[byte]);
    Write("inventory.db", damaged);
    ErrorOf(static_cast<int>(at % 4));
  }
  MakeGood();
  EXPECT_TRUE(ShowsWhatTheTablesGive(database_, BaseTables(database_), JournalOf(0)));
}

TEST_F(HostileFiles, ThatAWriterHoldsGiveAMessageAndCanBeReadAfterwards) {
  MakeGood();
  sqlite3* writer = nullptr;
  ASSERT_EQ(sqlite3_open(database_.c_str(), &writer), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(writer, "BEGIN EXCLUSIVE; DELETE FROM 入库记录", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_NE(ErrorOf(0).find("正被其他程序独占"), std::string::npos) << ErrorOf(0);
  const Outcome outcome =
      Program({"export", database_, "--journal", "material", "--product", "1", "-o", PathOf("target")});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  EXPECT_FALSE(std::filesystem::exists(PathOf("target")));
  sqlite3_exec(writer, "ROLLBACK", nullptr, nullptr, nullptr);
  sqlite3_close(writer);
  EXPECT_TRUE(ShowsWhatTheTablesGive(database_, BaseTables(database_), JournalOf(0)));
}

TEST_F(HostileFiles, ThatTheProgramCannotLoadLeaveTheTargetAsItWas) {
  MakeGood("UPDATE 入库记录 SET 除税金额 = '99999999999999999999'");
  Write("target", "as it was");
  for (const char* command : {"export", "render"}) {
    const Outcome outcome =
        Program({command, database_, "--journal", "material", "--product", "1", "-o", PathOf("target")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.err.find("金额超出范围"), std::string::npos) << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_EQ(ReadAll(PathOf("target")), "as it was");
    EXPECT_EQ(Files(), (std::vector<std::string>{"inventory.db", "target"}));
  }
}

}  // namespace
}  // namespace stockbook::end_to_end
