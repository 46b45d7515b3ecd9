// SPDX-License-Identifier: MIT
// The window on an inventory at a server, which wants a password.
#ifdef STOCKBOOK_TESTS_HAVE_LIBPQ

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/window_fixture.h"
#include "stockbook/platform/error.h"
#include "support/postgres_server.h"

namespace stockbook::app {
namespace {

class WindowOnAServer : public WindowTest {
 protected:
  void SetUp() override {
    if (testing::SharedPostgresServer() == nullptr) GTEST_SKIP() << "no server to test with";
    server().Run("DROP DATABASE IF EXISTS desk WITH (FORCE)");
    server().Run("CREATE DATABASE desk");
    const Outcome copied = RunArguments({"copy", PathOf("sample.db"), server().ConnectionString("Database=desk;")});
    ASSERT_EQ(copied.code, 0) << copied.err;
    server().Run("GRANT pg_read_all_data TO locked");
  }

  static testing::PostgresServer& server() { return *testing::SharedPostgresServer(); }
  static DatabaseSource LockedDesk() { return DatabaseSource(server().ConnectionString("Database=desk;User=locked")); }
  // Gives the answers one after the other, and nothing when they are used up.
  AskPassword Answering(std::vector<std::string> answers) {
    return [this, answers](const std::string& database) -> std::optional<std::string> {
      EXPECT_EQ(database, "desk@127.0.0.1");
      return asked_ < answers.size() ? std::optional(answers[asked_++]) : std::nullopt;
    };
  }

  size_t asked_ = 0;
};

TEST_F(WindowOnAServer, AsksUntilThePasswordIsRight) {
  window_->OpenDatabase(LockedDesk(), Answering({"wrong", "open; sesame", "not needed"}));
  EXPECT_EQ(asked_, 2U);
  EXPECT_TRUE(window_->LoadFirstJournal().loaded);
  EXPECT_GT(grid().Rows(), 20);
}

TEST_F(WindowOnAServer, GivesUpAfterThreeWrongPasswords) {
  EXPECT_THROW(window_->OpenDatabase(LockedDesk(), Answering({"a", "b", "c", "d"})), platform::Error);
  EXPECT_EQ(asked_, 3U);
}

TEST_F(WindowOnAServer, OpensNothingWhenTheUserGivesNoPassword) {
  EXPECT_THROW(window_->OpenDatabase(LockedDesk(), Answering({})), platform::Error);
  EXPECT_EQ(stockbook().control().Conn(), nullptr);
}

}  // namespace
}  // namespace stockbook::app

#endif
