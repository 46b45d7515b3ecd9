// SPDX-License-Identifier: MIT
// Another program posts while journals are loaded from the same file. It moves pieces from the opening balance to a
// line, so that every whole state of the file has the same last stock, and no two of them go together.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <utility>

#include "databases/database_file.h"
#include "stockbook/databases/sqlite/open_embedded.h"
#include "stockbook/platform/connection.h"
#include "stockbook/platform/error.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"

namespace stockbook::scenarios {
namespace {

constexpr const char* kLastStock = "19.5";
constexpr int kLoads = 25;

enum class Moments { kOffered, kNone };

// Moves the pieces by one transaction.
constexpr const char* kMove =
    "BEGIN IMMEDIATE; UPDATE 仓库余额表 SET 上期库存数量=上期库存数量-1000000 WHERE ID=55;"
    "UPDATE 入库记录 SET 数量=数量+1000000 WHERE RecID=100; COMMIT;";

// Another program that posts again as soon as it has posted, for as long as it lives. Should somebody wait for it to
// pause, it gives up after minutes.
class RestlessWriter {
 public:
  explicit RestlessWriter(const std::string& path) : thread_([this, path] { Post(path); }) {}
  ~RestlessWriter() {
    ended_ = true;
    thread_.join();
  }
  RestlessWriter(const RestlessWriter&) = delete;
  RestlessWriter& operator=(const RestlessWriter&) = delete;

  int64_t Posted() const { return posted_; }
  bool HasGivenUp() const { return gave_up_; }
  // Until it has posted once more. False if it gives up.
  bool Await(int64_t posted) const {
    while (Posted() <= posted && !HasGivenUp()) std::this_thread::yield();
    return !HasGivenUp();
  }

 private:
  void Post(const std::string& path) {
    sqlite3* writer = nullptr;
    sqlite3_open(path.c_str(), &writer);
    sqlite3_exec(writer, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr);
    const auto until = std::chrono::steady_clock::now() + std::chrono::minutes(5);
    while (!ended_ && !gave_up_) {
      if (sqlite3_exec(writer, kMove, nullptr, nullptr, nullptr) == SQLITE_OK) {
        ++posted_;
      } else {
        sqlite3_exec(writer, "ROLLBACK", nullptr, nullptr, nullptr);
      }
      gave_up_ = std::chrono::steady_clock::now() > until;
    }
    sqlite3_close(writer);
  }

  std::atomic<int64_t> posted_ = 0;
  std::atomic<bool> ended_ = false;
  std::atomic<bool> gave_up_ = false;
  std::thread thread_;
};

// Lets another program post before every statement and every moment.
class InterruptedConnection : public platform::Connection {
 public:
  InterruptedConnection(std::shared_ptr<platform::Connection> real, Moments moments, std::function<void()> post)
      : real_(std::move(real)), moments_(moments), post_(std::move(post)) {}
  std::string ConnectionString() const override { return real_->ConnectionString(); }
  platform::Recordset Execute(std::string_view statement, int options) override {
    post_();
    return real_->Execute(statement, options);
  }
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override {
    post_();
    return moments_ == Moments::kOffered ? real_->ReadAsOfOneMoment() : nullptr;
  }

 private:
  std::shared_ptr<platform::Connection> real_;
  Moments moments_;
  std::function<void()> post_;
};

class BesideAWriter : public ::testing::TestWithParam<const char*> {
 protected:
  BesideAWriter() {
    testing::CreateInventory(file_);
    testing::FillInventory(file_);
    file_.Run(std::string("PRAGMA journal_mode=") + GetParam());
  }

  // A writer that is held off gives up at once and tries again the next time.
  void Post() {
    if (sqlite3_exec(file_.handle(), kMove, nullptr, nullptr, nullptr) == SQLITE_OK) {
      ++posted_;
    } else {
      ++held_off_;
      sqlite3_exec(file_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
  }

  std::string LastStock() {
    const int row = fakes_.fg.RowOfRecord(fakes_.fg.RecordCount() - 1);
    return fakes_.fg.TextMatrix(row, fakes_.fg.ColIndex("StoQty"));
  }
  // How many of the loads end with the right stock.
  int RightLoads(Moments moments) {
    control().SetConn(std::make_shared<InterruptedConnection>(databases::OpenEmbedded(file_.DesktopString()), moments,
                                                              [this] { Post(); }));
    int right = 0;
    for (int load = 0; load < kLoads; ++load) {
      Post();
      EXPECT_TRUE(control().Load(1, 0));
      if (LastStock() == kLastStock) ++right;
    }
    return right;
  }
  // Opens the file and loads, each within so many seconds; returns what was told instead of a journal.
  std::string LoadWithin(const std::string& seconds) {
    testing::EventRecorder heard;
    control().AddListener(&heard);
    std::string told;
    try {
      control().SetConn(databases::OpenEmbedded(file_.DesktopString() + ";Timeout=" + seconds));
      if (!control().Load(1, 0)) told = heard.LastOf("Notify");
      EXPECT_EQ(heard.LastOf("Process"), "-1");
    } catch (const platform::Error& error) {
      told = error.what();
    }
    control().RemoveListener(&heard);
    return told;
  }
  control::Stockbook& control() { return *fakes_.control; }
  bool IsRollback() const { return GetParam() != std::string("WAL"); }

  testing::DatabaseFile file_;
  testing::ControlOverFakes fakes_;
  int posted_ = 0;
  int held_off_ = 0;
};

TEST_P(BesideAWriter, EveryLoadEndsWithTheRightStock) {
  EXPECT_EQ(RightLoads(Moments::kOffered), kLoads);
  EXPECT_GE(posted_, kLoads);
  EXPECT_EQ(held_off_ > 0, IsRollback()) << "a moment holds off writers in rollback mode only";
}

TEST_P(BesideAWriter, LoadsWithoutMomentsAreWrongWhichIsWhatTheyAreFor) {
  EXPECT_EQ(RightLoads(Moments::kNone), 0);
  EXPECT_EQ(held_off_, 0);
}

TEST_P(BesideAWriter, ABusyDatabaseKeepsTheJournalThatIsShown) {
  ASSERT_EQ(RightLoads(Moments::kOffered), kLoads);
  testing::EventRecorder heard;
  control().AddListener(&heard);
  const int rows = control().Rows();
  const std::string caption = control().Caption();
  control().SetConn(databases::OpenEmbedded(file_.DesktopString()));
  file_.Run("BEGIN EXCLUSIVE");
  const bool loaded = control().Load(2, 1);
  EXPECT_EQ(loaded, !IsRollback()) << "readers beside a log never wait";
  if (!loaded) {
    EXPECT_NE(heard.LastOf("Notify").find("独占"), std::string::npos) << heard.LastOf("Notify");
    EXPECT_EQ(control().KeyID(), 1);
    EXPECT_EQ(control().Rows(), rows);
    EXPECT_EQ(control().Caption(), caption);
  }
  file_.Run("ROLLBACK");
  control().RemoveListener(&heard);
}

// Each load ends while the writer goes on; how long the longest takes is written down, not judged.
TEST_P(BesideAWriter, EveryLoadEndsThoughTheWriterNeverPauses) {
  using Clock = std::chrono::steady_clock;
  int right = 0;
  int refused = 0;
  Clock::duration longest{};
  const RestlessWriter writer(file_.path());
  for (int load = 0; load < kLoads; ++load) {
    ASSERT_TRUE(writer.Await(writer.Posted()));
    const auto start = Clock::now();
    const std::string told = LoadWithin("0.5");
    longest = std::max(longest, Clock::now() - start);
    if (told.empty()) {
      EXPECT_EQ(LastStock(), kLastStock);
      ++right;
    } else {
      EXPECT_TRUE(told.find("独占") != std::string::npos || told.find("时限") != std::string::npos) << told;
      ++refused;
    }
    ASSERT_TRUE(writer.Await(writer.Posted())) << "the load waited until the writer paused";
  }
  EXPECT_EQ(right + refused, kLoads);
  RecordProperty("right", right);
  RecordProperty("longest_ms",
                 static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(longest).count()));
}

INSTANTIATE_TEST_SUITE_P(Journals, BesideAWriter, ::testing::Values("DELETE", "WAL"));

}  // namespace
}  // namespace stockbook::scenarios
