// SPDX-License-Identifier: MIT
// Another program posts while journals are loaded from the same file. It moves pieces from the opening balance to a
// line, so that every whole state of the file has the same last stock, and no two of them go together.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

#include "databases/database_file.h"
#include "databases/sqlite/embedded_connection.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"

namespace stockbook::scenarios {
namespace {

constexpr const char* kLastStock = "19.5";
constexpr int kLoads = 25;

enum class Moments { kOffered, kNone };

// Lets another program post before every statement.
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

  // Moves the pieces by one transaction. A writer that is held off gives up at once and tries again the next time.
  void Post() {
    constexpr const char* kMove =
        "BEGIN IMMEDIATE; UPDATE 仓库余额表 SET 上期库存数量=上期库存数量-1000000 WHERE ID=55;"
        "UPDATE 入库记录 SET 数量=数量+1000000 WHERE RecID=100; COMMIT;";
    if (sqlite3_exec(file_.handle(), kMove, nullptr, nullptr, nullptr) == SQLITE_OK) {
      ++posted_;
    } else {
      ++held_off_;
      sqlite3_exec(file_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
  }

  // How many of the loads end with the right stock.
  int RightLoads(Moments moments) {
    control().SetConn(std::make_shared<InterruptedConnection>(databases::OpenEmbedded(file_.DesktopString()), moments,
                                                              [this] { Post(); }));
    int right = 0;
    for (int load = 0; load < kLoads; ++load) {
      Post();
      EXPECT_TRUE(control().Load(1, 0));
      const int row = fakes_.fg.RowOfRecord(fakes_.fg.RecordCount() - 1);
      if (fakes_.fg.TextMatrix(row, fakes_.fg.ColIndex("StoQty")) == kLastStock) ++right;
    }
    return right;
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

INSTANTIATE_TEST_SUITE_P(Journals, BesideAWriter, ::testing::Values("DELETE", "WAL"));

}  // namespace
}  // namespace stockbook::scenarios
