// SPDX-License-Identifier: MIT
// The copies that desktop files are read through: when they are made, who finds them, when they go; and that a
// connection follows its file, but not within a moment.
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <thread>

#include "desktop/desktop_fixture.h"

namespace stockbook::testing {
namespace {

using platform::ErrorKind;

constexpr const char* kNames = "Select name From t";

class DesktopCopies : public DesktopFixture {
 protected:
  // Copies that are nobody else's lie in the system's folder for them, where other tests have theirs at the same time.
  DesktopCopies() {
    if (const char* folder = std::getenv("TMPDIR")) before_ = folder;
    private_ = (std::filesystem::temp_directory_path() / "stockbook-copies-XXXXXX").string();
    if (mkdtemp(private_.data()) == nullptr) throw std::runtime_error("no folder for private copies");
    setenv("TMPDIR", private_.c_str(), 1);
  }
  ~DesktopCopies() override {
    if (before_) {
      setenv("TMPDIR", before_->c_str(), 1);
    } else {
      unsetenv("TMPDIR");
    }
    std::error_code ignored;
    std::filesystem::remove_all(private_, ignored);
  }

  static struct stat StatOf(const std::string& path) {
    struct stat found {};
    EXPECT_EQ(stat(path.c_str(), &found), 0) << path;
    return found;
  }
  void Change(const std::vector<std::u16string>& texts) const { Put(TwoColumns(texts)); }
  static std::vector<std::string> PrivateCopies() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
      const std::string name = entry.path().filename().string();
      if (name.starts_with("stockbook-desktop-")) names.push_back(entry.path().string());
    }
    return names;
  }
  // Writes into the copy itself, to see later who reads it.
  static void Mark(const std::string& copy) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(copy.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, "UPDATE t SET name = 'marked'", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
  }

 private:
  std::optional<std::string> before_;
  std::string private_;
};

TEST_F(DesktopCopies, AreFoundAgainWhileTheFileIsUnchanged) {
  Change({u"x"});
  EXPECT_EQ(Rows(*Open(file()), kNames), "x\n");
  ASSERT_EQ(Copies().size(), 1U);
  Mark(Copies()[0]);
  EXPECT_EQ(Rows(*Open(file()), kNames), "marked\n");
  // Also by a way around.
  ASSERT_EQ(symlink(file().c_str(), PathOf("link.mdb").c_str()), 0);
  EXPECT_EQ(Rows(*Open(PathOf("link.mdb")), kNames), "marked\n");
  EXPECT_EQ(Copies().size(), 1U);
}

TEST_F(DesktopCopies, AreForTheEyesOfTheirUserAlone) {
  Change({u"x"});
  Open(file());
  EXPECT_EQ(StatOf(PathOf("cache/stockbook")).st_mode & 0777, 0700U);
  EXPECT_EQ(StatOf(Copies().at(0)).st_mode & 0777, 0600U);
  ASSERT_EQ(chmod(PathOf("cache/stockbook").c_str(), 0755), 0);
  Open(file());
  EXPECT_EQ(StatOf(PathOf("cache/stockbook")).st_mode & 0777, 0700U);
}

TEST_F(DesktopCopies, OfAChangedFileAreMadeAnewAndTheOldOnesGo) {
  Change({u"x"});
  {
    const auto connection = Open(file());
    Change({u"y"});
    EXPECT_EQ(Rows(*connection, kNames), "y\n");
    Change({u"z", u"more"});
    EXPECT_EQ(Rows(*connection, kNames), "z\nmore\n");
  }
  // The one that was in use when the last one was made goes with the next.
  Change({u"last"});
  Open(file());
  EXPECT_EQ(Copies().size(), 1U);
}

TEST_F(DesktopCopies, DoNotChangeWithinAMoment) {
  Change({u"x"});
  const auto connection = Open(file());
  {
    const auto moment = connection->ReadAsOfOneMoment();
    ASSERT_NE(moment, nullptr);
    Change({u"y"});
    const auto nested = connection->ReadAsOfOneMoment();
    EXPECT_EQ(Rows(*connection, kNames), "x\n");
  }
  const auto moment = connection->ReadAsOfOneMoment();
  EXPECT_EQ(Rows(*connection, kNames), "y\n");
}

TEST_F(DesktopCopies, SurviveThatTheFileIsAwayForAWhile) {
  Change({u"x"});
  const auto connection = Open(file());
  std::filesystem::rename(file(), PathOf("away.mdb"));
  try {
    connection->Execute(kNames);
    FAIL() << "a journal of a file that is not there";
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.what(), "找不到数据库文件“" + file() + "”，请检查路径");
    EXPECT_EQ(error.kind(), ErrorKind::kInputOutput);
  }
  std::filesystem::rename(PathOf("away.mdb"), file());
  EXPECT_EQ(Rows(*connection, kNames), "x\n");
  std::filesystem::resize_file(file(), 9000);
  EXPECT_THROW(connection->Execute(kNames), platform::Error);
  Change({u"whole"});
  EXPECT_EQ(Rows(*connection, kNames), "whole\n");
}

TEST_F(DesktopCopies, OfFilesThatAreGoneAreClearedAwayWithTheNext) {
  for (const char* name : {"a.mdb", "b.mdb"}) Open(Write(name, TwoColumns({u"x"}).Bytes()));
  EXPECT_EQ(Copies().size(), 2U);
  std::filesystem::remove(PathOf("a.mdb"));
  // What a process that crashed left.
  Write("cache/stockbook/unfinished-abcdef", "half");
  Open(Write("c.mdb", TwoColumns({u"x"}).Bytes()));
  EXPECT_EQ(Copies().size(), 2U);
  EXPECT_FALSE(std::filesystem::exists(PathOf("cache/stockbook/unfinished-abcdef")));
}

TEST_F(DesktopCopies, InUseAreNotClearedAway) {
  const std::string path = Write("a.mdb", TwoColumns({u"x"}).Bytes());
  const auto connection = Open(path);
  const auto moment = connection->ReadAsOfOneMoment();
  std::filesystem::remove(path);
  Change({u"y"});
  Open(file());
  EXPECT_EQ(Copies().size(), 2U);
  EXPECT_EQ(Rows(*connection, kNames), "x\n");
}

TEST_F(DesktopCopies, OfOneConnectionGoWithIt) {
  Change({u"x"});
  const size_t before = PrivateCopies().size();
  {
    const auto connection = Open(file(), "Cache=No");
    EXPECT_EQ(Rows(*connection, kNames), "x\n");
    EXPECT_EQ(PrivateCopies().size(), before + 1);
    Change({u"y"});
    EXPECT_EQ(Rows(*connection, kNames), "y\n");
    EXPECT_EQ(PrivateCopies().size(), before + 1);
  }
  EXPECT_EQ(PrivateCopies().size(), before);
  EXPECT_TRUE(Copies().empty());
  EXPECT_NE(RefusalOf(Write("bad.mdb", TwoColumns({u"x"}).Bytes().substr(0, 9000)), "Cache=No").text, "");
  EXPECT_EQ(PrivateCopies().size(), before);
}

TEST_F(DesktopCopies, AreMadeElsewhereWhereTheCacheCannotBeWritten) {
  Change({u"x"});
  const size_t before = PrivateCopies().size();
  Write("cache", "in the way");
  {
    const auto connection = Open(file());
    EXPECT_EQ(Rows(*connection, kNames), "x\n");
    EXPECT_EQ(PrivateCopies().size(), before + 1);
  }
  EXPECT_EQ(PrivateCopies().size(), before);
  // A folder of somebody else's making: a link.
  std::filesystem::remove(PathOf("cache"));
  std::filesystem::create_directories(PathOf("elsewhere"));
  std::filesystem::create_directories(PathOf("cache"));
  std::filesystem::create_directory_symlink(PathOf("elsewhere"), PathOf("cache/stockbook"));
  EXPECT_EQ(Rows(*Open(file()), kNames), "x\n");
  EXPECT_TRUE(std::filesystem::is_empty(PathOf("elsewhere")));
}

TEST_F(DesktopCopies, ThatTheDiskHasSpoiledAreMadeAgain) {
  Change({u"x"});
  Open(file());
  std::ofstream(Copies().at(0), std::ios::binary | std::ios::trunc) << std::string(5000, 'x');
  EXPECT_EQ(Rows(*Open(file()), kNames), "x\n");
  EXPECT_EQ(Rows(*Open(file()), kNames), "x\n");
}

TEST_F(DesktopCopies, AreRightForProcessesAndThreadsThatOpenAtOnce) {
  Change({u"螺栓", u"螺母"});
  std::vector<pid_t> processes;
  for (int number = 0; number < 4; ++number) {
    const pid_t process = fork();
    if (process == 0) {
      bool right = false;
      try {
        right = Rows(*Open(file()), kNames) == "螺栓\n螺母\n";
      } catch (...) {
      }
      _exit(right ? 0 : 1);
    }
    processes.push_back(process);
  }
  for (const pid_t process : processes) {
    int status = 1;
    ASSERT_EQ(waitpid(process, &status, 0), process);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(Copies().size(), 1U);
  Change({u"垫圈"});
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([&] { EXPECT_EQ(Rows(*Open(file()), kNames), "垫圈\n"); });
  }
  for (std::thread& thread : threads) thread.join();
  Change({u"x"});
  Open(file());
  EXPECT_EQ(Copies().size(), 1U);
}

TEST_F(DesktopCopies, DecideNothingAboutTheDialect) {
  // The folder of the copies has "SQL" in its name, the connection string does not.
  setenv("XDG_CACHE_HOME", PathOf("SQL").c_str(), 1);
  Change({u"x"});
  const auto connection = Open(file());
  EXPECT_EQ(connection->ConnectionString(), "Provider=Stockbook.Desktop;Tables=*;;Data Source=" + file());
  EXPECT_EQ(Rows(*connection, "Select name & '/' & id As a From t"), "x/1\n");
  EXPECT_THROW(connection->Execute("Select name + '/' + CAST(id AS varchar(5)) As a From t"), platform::Error);
  EXPECT_EQ(Rows(*Open(file(), "Dialect=SQL"), "Select name + '/' + CAST(id AS varchar(5)) As a From t"), "x/1\n");
}

TEST_F(DesktopCopies, StopBeingMadeWhenTheTimeIsUp) {
  Change({u"x"});
  const auto refusal = RefusalOf(file(), "Timeout=0.000001");
  EXPECT_EQ(refusal.kind, ErrorKind::kInterrupted) << refusal.text;
  EXPECT_NE(refusal.text.find("Timeout"), std::string::npos);
  EXPECT_TRUE(Copies().empty());
}

TEST_F(DesktopCopies, LeaveTheFileAsItIs) {
  Change({u"x"});
  const std::string before = ReadAll(file());
  ASSERT_EQ(chmod(file().c_str(), 0400), 0);
  const auto state = StatOf(file());
  Rows(*Open(file()), kNames);
  EXPECT_EQ(ReadAll(file()), before);
  EXPECT_EQ(StatOf(file()).st_mtim.tv_nsec, state.st_mtim.tv_nsec);
  EXPECT_EQ(Files(), (std::vector<std::string>{"cache", "store.mdb"}));
}

}  // namespace
}  // namespace stockbook::testing
