// SPDX-License-Identifier: MIT
// A journal that is loaded while its database goes away: the load ends with a message and false, in time, and the next
// one works.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "contract/back_end.h"
#include "contract/contract_statements.h"
#include "databases/faulty_storage.h"
#include "stockbook/databases/providers/open_connection.h"
#include "stockbook/platform/error.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"
#ifdef STOCKBOOK_TESTS_HAVE_LIBPQ
#include "contract/postgres_copy.h"
#include "stockbook/platform/connection.h"
#include "support/postgres_server.h"
#endif

namespace stockbook::testing {
namespace {

using databases::OpenConnection;

class LoadUnderFaults : public ::testing::Test {
 protected:
  LoadUnderFaults() {
    CreateInventory(file_);
    FillInventory(file_);
    AddMovements(file_);
    control().AddListener(&heard_);
  }
  ~LoadUnderFaults() override { control().SetConn(nullptr); }

  control::Stockbook& control() { return *fakes_.control; }
  bool Load() {
    heard_.lines.clear();
    return control().Load(1, 0, "");
  }
  int Rows() { return fakes_.fg.Rows(); }

  // A load during which `harm` is done, once, when the journal's statement is about to run: it must end with a message,
  // without a journal and within the time.
  void ExpectAFailureThatSays(const std::string& what, const std::function<void()>& harm) {
    bool done = false;
    heard_.on_hearing = [&](const std::string& line) {
      if (line != "Process 20" || done) return;
      done = true;
      harm();
    };
    EXPECT_FALSE(Load());
    heard_.on_hearing = nullptr;
    EXPECT_TRUE(done);
    bool told = false;
    for (const std::string& message : heard_.Of("Notify")) told = told || message.find(what) != std::string::npos;
    EXPECT_TRUE(told) << what << "\n" << ::testing::PrintToString(heard_.lines);
    EXPECT_EQ(heard_.LastOf("Process"), "-1");
  }
  void ExpectTheJournal() {
    EXPECT_TRUE(Load()) << ::testing::PrintToString(heard_.Of("Notify"));
    EXPECT_GT(Rows(), 900);
  }

  DatabaseFile file_;
  EventRecorder heard_;
  ControlOverFakes fakes_;
};

TEST_F(LoadUnderFaults, AFileThatIsLockedSaysSo) {
  control().SetConn(OpenConnection(file_.DesktopString() + ";Timeout=1"));
  ExpectTheJournal();
  file_.Run("BEGIN EXCLUSIVE");
  EXPECT_FALSE(Load());
  EXPECT_FALSE(heard_.Of("Notify").empty());
  file_.Run("COMMIT");
  ExpectTheJournal();
}

TEST_F(LoadUnderFaults, AFileThatIsCutOffSaysSo) {
  control().SetConn(OpenConnection(file_.DesktopString()));
  ExpectTheJournal();
  const auto size = std::filesystem::file_size(file_.path());
  const std::string copy = file_.path() + ".copy";
  std::filesystem::copy_file(file_.path(), copy);
  std::filesystem::resize_file(file_.path(), size / 3);
  EXPECT_FALSE(Load());
  EXPECT_FALSE(heard_.Of("Notify").empty());
  std::filesystem::copy_file(copy, file_.path(), std::filesystem::copy_options::overwrite_existing);
  ExpectTheJournal();
}

// What has been read before is in memory, hence a new connection.
TEST_F(LoadUnderFaults, AFileThatIsCutOffInTheMiddleSaysSo) {
  control().SetConn(OpenConnection(file_.DesktopString()));
  const std::string copy = file_.path() + ".copy";
  std::filesystem::copy_file(file_.path(), copy);
  ExpectAFailureThatSays("损坏",
                         [&] { std::filesystem::resize_file(file_.path(), std::filesystem::file_size(copy) / 3); });
  std::filesystem::copy_file(copy, file_.path(), std::filesystem::copy_options::overwrite_existing);
  ExpectTheJournal();
}

// A program that repairs or restores a database puts another file in its place.
TEST_F(LoadUnderFaults, AFileThatIsReplacedGivesOneOfTheTwoJournals) {
  control().SetConn(OpenConnection(file_.DesktopString()));
  ExpectTheJournal();
  const int rows = Rows();
  const std::string other = file_.path() + ".other";
  std::filesystem::copy_file(file_.path(), other);
  heard_.on_hearing = [&](const std::string& line) {
    if (line == "Process 20" && std::filesystem::exists(other)) std::filesystem::rename(other, file_.path());
  };
  EXPECT_TRUE(Load()) << ::testing::PrintToString(heard_.Of("Notify"));
  heard_.on_hearing = nullptr;
  EXPECT_FALSE(std::filesystem::exists(other));
  EXPECT_EQ(Rows(), rows);
  ExpectTheJournal();
  EXPECT_EQ(Rows(), rows);
}

TEST_F(LoadUnderFaults, AShareThatGoesAwaySaysSo) {
  FaultyStorage storage;
  control().SetConn(OpenConnection(file_.DesktopString()));
  ExpectAFailureThatSays("读", [&] { storage.Arm(Fault::kRefusedReads, 1); });
  EXPECT_FALSE(Load());  // still away
  EXPECT_FALSE(heard_.Of("Notify").empty());
  storage.Disarm();
  ExpectTheJournal();
  control().SetConn(nullptr);  // before the storage
}

// A desktop file is read once and its copy from then on; a change is noticed when a journal is loaded.
TEST_F(LoadUnderFaults, ADesktopFileThatIsCutOffReplacedOrGoneSaysSo) {
  const std::filesystem::path packed = std::filesystem::path(STOCKBOOK_SOURCE_DIR) / "../shared/data/inventory.mdb.xz";
  if (!std::filesystem::exists(packed)) GTEST_SKIP() << "The inventory is not here: " << packed;
  const auto built = databases::BuiltProviders();
  if (std::find(built.begin(), built.end(), "Stockbook.Desktop") == built.end()) GTEST_SKIP() << "built without libmdb";
  const std::string desktop = file_.path() + ".mdb";
  const std::string kept = desktop + ".kept";
  ASSERT_EQ(std::system(("xz -dkc '" + packed.string() + "' > '" + desktop + "'").c_str()), 0);
  std::filesystem::copy_file(desktop, kept);
  const auto load = [&] {
    heard_.lines.clear();
    try {
      control().SetConn(OpenConnection("Provider=Stockbook.Desktop;Cache=No;Data Source=" + desktop));
    } catch (const platform::Error& error) {
      heard_.lines.push_back(std::string("Notify ") + error.what());
      return false;
    }
    return Load();
  };
  ASSERT_TRUE(load()) << ::testing::PrintToString(heard_.Of("Notify"));
  const int rows = Rows();
  std::filesystem::resize_file(desktop, std::filesystem::file_size(desktop) / 3);
  EXPECT_FALSE(load());
  EXPECT_FALSE(heard_.Of("Notify").empty());
  std::filesystem::remove(desktop);
  EXPECT_FALSE(load());
  EXPECT_FALSE(heard_.Of("Notify").empty());
  std::filesystem::rename(kept, desktop);
  ASSERT_TRUE(load());
  EXPECT_EQ(Rows(), rows);
}

#ifdef STOCKBOOK_TESTS_HAVE_LIBPQ

// A server of their own, since they do it harm.
class LoadFromAServer : public LoadUnderFaults {
 protected:
  void SetUp() override {
    if (PostgresServer::ProgramFolder().empty()) GTEST_SKIP() << "no PostgreSQL server is installed";
    const auto built = databases::BuiltProviders();
    if (std::find(built.begin(), built.end(), "Postgres") == built.end()) GTEST_SKIP() << "built without PostgreSQL";
    server_ = std::make_unique<PostgresServer>(
        std::vector<std::string>{"max_connections=5", "superuser_reserved_connections=0"});
    server_->Run(PostgresCopyOf(file_));
    server_->Run("CHECKPOINT");  // or a server that is killed may forget it
    control().SetConn(OpenConnection(server_->ConnectionString("Timeout=5")));
    ExpectTheJournal();
    rows_ = Rows();
  }
  PostgresServer& server() { return *server_; }

  std::unique_ptr<PostgresServer> server_;
  int rows_ = 0;
};

TEST_F(LoadFromAServer, WhoseSessionIsEnded) {
  ExpectAFailureThatSays("服务器", [&] {
    server().Run(
        "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid <> pg_backend_pid() AND usename IS NOT NULL");
  });
  ExpectTheJournal();
  EXPECT_EQ(Rows(), rows_);
}

TEST_F(LoadFromAServer, ThatIsKilledAndStartedAgain) {
  ExpectAFailureThatSays("服务器", [&] { server().Kill(); });
  EXPECT_FALSE(Load());  // nobody there
  EXPECT_FALSE(heard_.Of("Notify").empty());
  server().Start();
  ExpectTheJournal();
  EXPECT_EQ(Rows(), rows_);
}

TEST_F(LoadFromAServer, ThatStandsStill) {
  const auto before = std::chrono::steady_clock::now();
  ExpectAFailureThatSays("时限", [&] { server().Pause(); });
  // Generous: the deadline is five seconds, and the machine may be busy.
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds{60});
  server().Resume();
  ExpectTheJournal();
  EXPECT_EQ(Rows(), rows_);
}

TEST_F(LoadFromAServer, ThatHasNoConnectionLeft) {
  std::vector<std::unique_ptr<platform::Connection>> others;
  try {
    for (int count = 0; count < 10; ++count) {
      others.push_back(OpenConnection(server().ConnectionString()));
      others.back()->Execute("SELECT AccPeriod FROM tqAccPeriod");
    }
    ADD_FAILURE() << "there was no end of connections";
  } catch (const platform::Error& error) {
    EXPECT_NE(std::string(error.what()).find("连接"), std::string::npos) << error.what();
  }
  ExpectTheJournal();  // by the connection that it has
  others.clear();
  ExpectTheJournal();
}

TEST_F(LoadFromAServer, WhoseTableSomebodyLocks) {
  std::thread locking(
      [&] { server().Run("BEGIN; LOCK TABLE \"入库记录\" IN ACCESS EXCLUSIVE MODE; SELECT pg_sleep(12); COMMIT"); });
  std::this_thread::sleep_for(std::chrono::seconds{1});
  EXPECT_FALSE(Load());
  EXPECT_FALSE(heard_.Of("Notify").empty());
  locking.join();
  ExpectTheJournal();
}

#endif

}  // namespace
}  // namespace stockbook::testing
