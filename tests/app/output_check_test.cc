// SPDX-License-Identifier: MIT
#include "stockbook/command/output_check.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "stockbook/command/command_line.h"
#include "support/test_folder.h"

namespace stockbook::app {
namespace {

namespace fs = std::filesystem;

class OutputCheck : public ::testing::Test, protected testing::TestFolder {
 protected:
  const std::string magic_{"SQLite format 3\0and more", 24};
  const std::string stock_ = Write("stock.db", magic_);
};

TEST_F(OutputCheck, RefusesTheInputWhateverItIsCalled) {
  const std::string table = Write("table.csv", "p,d,q\n");
  fs::create_symlink(table, PathOf("link.csv"));
  fs::create_hard_link(table, PathOf("second.csv"));
  fs::create_directory(PathOf("folder"));
  for (const std::string name : {"table.csv", "link.csv", "second.csv", "folder/../table.csv"}) {
    EXPECT_THROW(CheckOutput(PathOf(name), table, Replaces::kAnyInventory), UsageError) << name;
    EXPECT_THROW(CheckOutput(table, PathOf(name), Replaces::kNoInventory), UsageError) << name;
  }
}

TEST_F(OutputCheck, RefusesAnyDatabaseWhereNoneIsMeant) {
  fs::create_symlink(stock_, PathOf("journal.csv"));
  EXPECT_THROW(CheckOutput(stock_, {}, Replaces::kNoInventory), UsageError);
  EXPECT_THROW(CheckOutput(PathOf("journal.csv"), PathOf("other.db"), Replaces::kNoInventory), UsageError);
  EXPECT_NO_THROW(CheckOutput(stock_, PathOf("table.csv"), Replaces::kAnyInventory));
  EXPECT_NO_THROW(CheckOutput(Write("short", "SQLite format 3"), stock_, Replaces::kNoInventory));
}

TEST_F(OutputCheck, RefusesTheJournalsOfADatabase) {
  Write("stock.db-wal", "pages");
  fs::create_symlink(stock_, PathOf("link.db"));
  fs::create_hard_link(PathOf("stock.db-wal"), PathOf("pages.csv"));
  fs::create_symlink(PathOf("stock.db-wal"), PathOf("pages.txt"));
  for (const std::string name : {"stock.db-wal", "stock.db-journal", "stock.db-shm", "pages.csv", "pages.txt"})
    EXPECT_THROW(CheckOutput(PathOf(name), PathOf("link.db"), Replaces::kNoInventory), UsageError) << name;
  EXPECT_THROW(CheckOutput(PathOf("stock.db-journal"), {}, Replaces::kAnyInventory), UsageError);
  EXPECT_NO_THROW(CheckOutput(PathOf("none.db-wal"), stock_, Replaces::kNoInventory));
}

TEST_F(OutputCheck, LetsOrdinaryOutputsPass) {
  EXPECT_NO_THROW(CheckOutput("-", stock_, Replaces::kNoInventory));
  EXPECT_NO_THROW(CheckOutput(PathOf("new.csv"), stock_, Replaces::kNoInventory));
  EXPECT_NO_THROW(CheckOutput(Write("old.csv", "a,b\n"), stock_, Replaces::kNoInventory));
  EXPECT_NO_THROW(CheckOutput(PathOf("missing/new.csv"), stock_, Replaces::kNoInventory));
}

}  // namespace
}  // namespace stockbook::app
