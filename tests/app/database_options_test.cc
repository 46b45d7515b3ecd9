// SPDX-License-Identifier: MIT
#include "stockbook/command/database_options.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "app/inventory_fixture.h"
#include "databases/connection_string.h"
#include "stockbook/command/sql_command.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

namespace fs = std::filesystem;

constexpr const char* kServer = "Provider=Postgres;Host=h;Database=d";

class PasswordTest : public InventoryTest {
 protected:
  ~PasswordTest() override { unsetenv("STOCKBOOK_PASSWORD"); }

  std::string PasswordFile(const std::string& text, fs::perms mode = fs::perms::owner_read) const {
    const std::string path = Write("password", text);
    fs::permissions(path, mode);
    return path;
  }
  DatabaseSource Read(const std::vector<std::string>& arguments) {
    const std::array<Option, 1> options{kPasswordFileOption};
    const CommandLine line(arguments, options);
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    Terminal terminal{in, out, err};
    DatabaseSource source = ReadSource(line, line.Positional(0, "DB"), "export", terminal);
    warning_ = err.str();
    return source;
  }
  std::optional<std::string> PasswordOf(const std::vector<std::string>& arguments) {
    return databases::ConnectionString(Read(arguments).ConnectionString()).Find("Password");
  }
  std::string FileError(const std::string& path) const {
    try {
      return "read: " + ReadPasswordFile(path);
    } catch (const platform::Error& error) {
      return error.what();
    }
  }
  std::string warning_;
};

TEST_F(PasswordTest, ComesFromAFileOfOneLine) {
  EXPECT_EQ(PasswordOf({kServer, "--password-file", PasswordFile("s3cret;\n")}), "s3cret;");
  EXPECT_EQ(warning_, "");
}

TEST_F(PasswordTest, ComesFromNoFileThatOthersMayRead) {
  for (const fs::perms mode : {fs::perms::group_read, fs::perms::others_read, fs::perms::others_write}) {
    const std::string path = PasswordFile("s3cret", fs::perms::owner_read | mode);
    EXPECT_EQ(FileError(path), "密码文件“" + path + "”其他用户也能读写，请先用 chmod 600 收回权限，并更换密码");
    fs::remove(path);
  }
}

TEST_F(PasswordTest, SaysWhatIsWrongWithItsFileWithoutShowingIt) {
  const std::string none = PathOf("none");
  EXPECT_TRUE(FileError(none).starts_with("密码文件“" + none + "”无法打开")) << FileError(none);
  EXPECT_NE(FileError(fs::path(none).parent_path().string()).find("是文件夹"), std::string::npos);
  for (const char* text : {"", "\n", "\r\n"}) {
    const std::string path = PasswordFile(text);
    EXPECT_NE(FileError(path).find("是空的"), std::string::npos);
    fs::remove(path);
  }
  for (const std::string& text : {std::string("s3cret\nsecond"), std::string(5000, 's')}) {
    const std::string path = PasswordFile(text);
    EXPECT_NE(FileError(path).find("不是一行密码"), std::string::npos);
    EXPECT_EQ(FileError(path).find("s3cret"), std::string::npos);
    fs::remove(path);
  }
}

TEST_F(PasswordTest, ComesFromTheEnvironmentUnlessThereIsAFile) {
  setenv("STOCKBOOK_PASSWORD", "from the environment", 1);
  EXPECT_EQ(PasswordOf({kServer}), "from the environment");
  EXPECT_EQ(PasswordOf({kServer, "--password-file", PasswordFile("from a file")}), "from a file");
  EXPECT_EQ(PasswordOf({"stock.db"}), std::nullopt);
  EXPECT_EQ(PasswordOf({"Provider=Stockbook.Embedded;Data Source=x"}), std::nullopt);
}

TEST_F(PasswordTest, InAnArgumentIsTakenWithAWarningThatDoesNotRepeatIt) {
  setenv("STOCKBOOK_PASSWORD", "other", 1);
  EXPECT_EQ(PasswordOf({std::string(kServer) + ";Password=s3cret"}), "s3cret");
  EXPECT_TRUE(warning_.starts_with("stockbook export: A password in an argument can be seen")) << warning_;
  EXPECT_EQ(warning_.find("s3cret"), std::string::npos);
  EXPECT_EQ(std::count(warning_.begin(), warning_.end(), '\n'), 1);
}

TEST_F(PasswordTest, InTwoPlacesIsRefused) {
  EXPECT_THROW(Read({std::string(kServer) + ";PWD=s3cret", "--password-file", PasswordFile("x")}), UsageError);
}

TEST_F(PasswordTest, IsRefusedForAFile) {
  EXPECT_THROW(Read({"stock.db", "--password-file", PasswordFile("x")}), UsageError);
}

TEST_F(PasswordTest, IsNotRepeatedInAnErrorAboutTheArguments) {
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream err;
  Terminal terminal{in, out, err};
  const std::array commands{SqlCommand()};
  EXPECT_EQ(RunProgram(commands, {"sql", "stock.db", "Provider=Postgres;Password=s3cret"}, terminal), 2);
  EXPECT_NE(err.str().find("'Provider=...' is one too many"), std::string::npos) << err.str();
  EXPECT_EQ(err.str().find("s3cret"), std::string::npos);
}

TEST(SqlCommand, LeavesTheDialectToAConnectionString) {
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream err;
  Terminal terminal{in, out, err};
  const std::array commands{SqlCommand()};
  EXPECT_EQ(
      RunProgram(commands, {"sql", "Data Source=x", "--journal=material", "--product=1", "--dialect=server"}, terminal),
      2);
  EXPECT_NE(err.str().find("--dialect is for files"), std::string::npos) << err.str();
}

}  // namespace
}  // namespace stockbook::app
