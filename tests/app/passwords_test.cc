// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "app/terminal_run.h"
#include "support/test_folder.h"

namespace stockbook::app {
namespace {

TEST(Passwords, AreNotInTheListOfPrograms) {
  const testing::TestFolder folder;
  // The program waits for the writer of the pipe with its arguments in the list.
  const std::string pipe = folder.PathOf("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  TerminalRun program({"copy", "Provider=Odbc;DSN=nobody;Password=s3cret", "Provider=Postgres;Host=127.0.0.1",
                       "--target-password-file", pipe});
  ASSERT_TRUE(program.WaitFor("A password in an argument can be seen")) << program.shown();
  const std::string listed = program.Listed();
  EXPECT_NE(listed.find("Provider=Postgres"), std::string::npos);
  EXPECT_EQ(listed.find("s3cret"), std::string::npos);
  EXPECT_EQ(listed.find("nobody"), std::string::npos);
  EXPECT_EQ(program.shown().find("s3cret"), std::string::npos);
}

}  // namespace
}  // namespace stockbook::app
