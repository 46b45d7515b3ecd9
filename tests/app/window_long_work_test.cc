// SPDX-License-Identifier: MIT
// Work that takes long, fails, is cancelled, or is overtaken by other programs, as the window shows it.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <mutex>
#include <utility>

#include "app/window_fixture.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

// A database whose statements can be stopped at: the chosen one of a load lasts until it is cancelled.
class StoppingDatabase : public platform::Connection {
 public:
  explicit StoppingDatabase(std::shared_ptr<platform::Connection> other) : other_(std::move(other)) {}

  // Counted from 0 from now on.
  void StopAt(int statement) {
    const std::lock_guard lock(mutex_);
    stop_at_ = statement;
    cancelled_ = false;
    stopped_ = false;
  }
  bool WasStopped() const {
    const std::lock_guard lock(mutex_);
    return stopped_;
  }

  std::string ConnectionString() const override { return other_->ConnectionString(); }
  platform::Recordset Execute(std::string_view statement, int options) override {
    std::unique_lock lock(mutex_);
    if (stop_at_-- == 0) {
      stopped_ = true;
      changed_.wait(lock, [this] { return cancelled_; });
      throw platform::Error("Execute", "语句已被取消", 0, platform::ErrorKind::kInterrupted);
    }
    lock.unlock();
    return other_->Execute(statement, options);
  }
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override { return other_->ReadAsOfOneMoment(); }
  void Cancel() override {
    {
      const std::lock_guard lock(mutex_);
      cancelled_ = true;
    }
    changed_.notify_all();
    other_->Cancel();
  }
  std::size_t RowsRead() const override { return other_->RowsRead(); }

 private:
  const std::shared_ptr<platform::Connection> other_;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  int stop_at_ = -1;
  bool cancelled_ = false;
  bool stopped_ = false;
};

class OnPaint : public QObject {
 public:
  OnPaint(QWidget& widget, std::function<void()> call) : call_(std::move(call)) { widget.installEventFilter(this); }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) call_();
    return false;
  }

 private:
  std::function<void()> call_;
};

class LongWork : public WindowTest {
 protected:
  void OpenFirst() {
    Open();
    ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  }
  LoadStrip& strip() { return window_->reading().strip(); }
  // Another program that changes the sample.
  void Execute(const std::string& sql) {
    sqlite3* writer = nullptr;
    ASSERT_EQ(sqlite3_open(PathOf("sample.db").c_str(), &writer), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(writer, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(writer);
    sqlite3_close(writer);
  }
  JournalOptions OtherProduct() {
    JournalOptions options = window_->bar().Options();
    options.key_id = 2;
    return options;
  }
  // Another program holds the sample, so that whatever is read next waits; `meanwhile` is called once it is told.
  void HoldAndThen(std::function<void(sqlite3*)> meanwhile) {
    ASSERT_EQ(sqlite3_open(PathOf("sample.db").c_str(), &holder_), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(holder_, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    window_->reading().loader().beside().SetGrace(std::chrono::milliseconds(0));
    QObject::connect(
        &window_->reading().loader().beside(), &qt::Beside::Began, window_.get(),
        [this, meanwhile] { meanwhile(holder_); },
        static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::SingleShotConnection));
  }
  static void LetGo(sqlite3* holder) { sqlite3_exec(holder, "ROLLBACK", nullptr, nullptr, nullptr); }
  ~LongWork() override { sqlite3_close(holder_); }
  std::string Cell(int row, const char* key) { return grid().TextMatrix(row, grid().ColIndex(key)); }

  sqlite3* holder_ = nullptr;
};

TEST_F(LongWork, AFailedLoadLeavesTheOldJournalAndABarThatTriesAgain) {
  OpenFirst();
  const int rows = grid().Rows();
  const std::string title = Title();
  Execute("ALTER TABLE 出库记录 RENAME TO 别处");
  EXPECT_FALSE(window_->LoadJournal(OtherProduct()).loaded);
  EXPECT_EQ(Title(), title);
  EXPECT_EQ(grid().Rows(), rows);
  EXPECT_EQ(window_->bar().Options().key_id, 1) << "what is chosen is what is shown";
  ASSERT_TRUE(strip().failure().isVisible());
  EXPECT_TRUE(strip().failure().Text().contains(QStringLiteral("出库记录"))) << strip().failure().Text().toStdString();
  strip().failure().action().click();
  EXPECT_TRUE(strip().failure().isVisible()) << "it fails again";
  Execute("ALTER TABLE 别处 RENAME TO 出库记录");
  strip().failure().action().click();
  EXPECT_FALSE(strip().failure().isVisible());
  EXPECT_EQ(stockbook().control().KeyID(), 2);
  EXPECT_NE(Title(), title);
}

TEST_F(LongWork, ACancelledLoadLeavesTheOldJournalAndNoBar) {
  OpenFirst();
  const int rows = grid().Rows();
  const std::string title = Title();
  window_->bar().SetOptions(OtherProduct());
  HoldAndThen([&](sqlite3*) { strip().work().findChild<QPushButton*>()->click(); });
  emit window_->bar().LoadWanted();
  EXPECT_EQ(Title(), title);
  EXPECT_EQ(grid().Rows(), rows);
  EXPECT_EQ(window_->bar().Options().key_id, 1);
  EXPECT_FALSE(strip().failure().isVisible());
  EXPECT_EQ(window_->message().Message().toStdString(), "已取消读取。");
  LetGo(holder_);
  EXPECT_TRUE(window_->LoadJournal(OtherProduct()).loaded);
}

TEST_F(LongWork, CancelIsObeyedAtEveryStageOfALoadAndTheOldJournalIsBack) {
  OpenFirst();
  const auto stopping = std::make_shared<StoppingDatabase>(OpenInventory(PathOf("sample.db")));
  const auto prepared = window_->reading().loader().Prepare(stopping);
  window_->journal().SetConnection(prepared);
  window_->reading().Use(prepared, DatabaseSource(PathOf("sample.db")), {});
  ASSERT_TRUE(window_->LoadJournal(OtherProduct()).loaded);
  const int rows = grid().Rows();
  const std::string title = Title();
  JournalOptions customers;
  customers.journal_type = 2;
  customers.key_id = 1;
  qt::Beside& beside = window_->reading().loader().beside();
  beside.SetGrace(std::chrono::milliseconds(0));
  QObject::connect(&beside, &qt::Beside::Ticked, window_.get(), [&] {
    if (stopping->WasStopped()) strip().work().findChild<QPushButton*>()->click();
  });
  constexpr int kStages = 10;
  int stages = 0;
  for (int stage = 0; stage < kStages; ++stage) {
    stopping->StopAt(stage);
    const LoadReport report = window_->LoadJournal(customers);
    const bool stopped = stopping->WasStopped();
    stopping->StopAt(-1);
    if (!stopped) continue;
    ++stages;
    EXPECT_FALSE(report.loaded) << stage;
    EXPECT_EQ(Title(), title) << stage;
    EXPECT_EQ(grid().Rows(), rows) << stage;
    EXPECT_EQ(window_->bar().Options().key_id, 2) << stage;
    EXPECT_FALSE(strip().failure().isVisible()) << stage;
  }
  EXPECT_GE(stages, 3);
  EXPECT_TRUE(window_->LoadJournal(customers).loaded);
}

TEST_F(LongWork, TheWindowIsPaintedWhileTheFirstJournalIsRead) {
  window_->OpenDatabase(PathOf("sample.db"));
  bool painted = false;
  OnPaint paints(*stockbook().viewport(), [&] {
    if (!std::exchange(painted, true)) LetGo(holder_);
  });
  HoldAndThen([](sqlite3*) {});
  QSignalSpy arrived(&window_->journal(), &ShownJournal::Arrived);
  window_->show();
  window_->LoadOnceRunning(std::nullopt);
  ASSERT_TRUE(arrived.wait(300'000)) << "nothing is painted, so that the database is never let go";
  EXPECT_TRUE(painted);
  EXPECT_GT(grid().Rows(), 20);
}

// To paint it a hundred times took longer than to load the journal of a sample.
TEST_F(LongWork, TheProgressIsPaintedNowAndThenAndNotAtEveryStep) {
  OpenFirst();
  QElapsedTimer clock;
  clock.start();
  int paints = 0;
  auto* bar = window_->statusBar()->findChild<QProgressBar*>();
  ASSERT_NE(bar, nullptr);
  OnPaint counted(*bar, [&] { ++paints; });
  constexpr int kSteps = 1000;
  for (int step = 0; step < kSteps; ++step) emit stockbook().Process(step % 100);
  constexpr int kPause = 50;
  EXPECT_LE(paints, 2 * (clock.elapsed() / kPause + 1))
      << "the bar paints itself when it changes, and when it is told to";
}

TEST_F(LongWork, TheOldJournalIsThereUntilTheNewOneHasBeenReadAndABarSaysSo) {
  OpenFirst();
  const int rows = grid().Rows();
  EXPECT_FALSE(strip().work().isVisible());
  bool told = false;
  HoldAndThen([&](sqlite3* holder) {
    told = strip().work().isVisible();
    EXPECT_EQ(grid().Rows(), rows);
    LetGo(holder);
  });
  EXPECT_TRUE(window_->LoadJournal(OtherProduct()).loaded);
  EXPECT_TRUE(told);
  EXPECT_FALSE(strip().work().isVisible());
  EXPECT_NE(grid().Rows(), rows);
}

TEST_F(LongWork, NoticesThatAnotherProgramChangedTheInventoryAndOffersToReload) {
  OpenFirst();
  strip().watch().LookNow();
  EXPECT_FALSE(strip().change().isVisible()) << "nobody has changed anything";
  const int rows = grid().Rows();
  Execute(
      "INSERT INTO 入库记录(BillID,pdID,dpID,数量,除税单价,除税金额) SELECT BillID,1,1,7,1,'7' FROM 入库目录 LIMIT 1");
  strip().watch().LookNow();
  ASSERT_TRUE(strip().change().isVisible());
  EXPECT_EQ(grid().Rows(), rows) << "nothing moves under the user's hands";
  strip().change().action().click();
  EXPECT_FALSE(strip().change().isVisible());
  EXPECT_EQ(grid().Rows(), rows + 1);
  strip().watch().LookNow();
  EXPECT_FALSE(strip().change().isVisible()) << "it is shown now";
}

TEST_F(LongWork, AChangeIsNoticedWithoutBeingAskedFor) {
  OpenFirst();
  strip().watch().SetPause(1, 1);
  QSignalSpy changed(&strip().watch(), &ChangeWatch::Changed);
  Execute("UPDATE 商品设置 SET 备注='别的' WHERE pdID=1");
  ASSERT_TRUE(changed.wait(300'000));
  EXPECT_TRUE(strip().change().isVisible());
}

TEST_F(LongWork, WhereThereIsNoFileTheNewestLinesTellAChange) {
  const auto connection = OpenInventory(PathOf("sample.db"));
  const InventoryMark mark;
  const std::string before = mark.Read(connection.get());
  EXPECT_FALSE(before.empty());
  EXPECT_EQ(mark.Read(connection.get()), before);
  Execute("INSERT INTO 出库记录(BillID,pdID,dpID,数量) SELECT BillID,1,1,7 FROM 出库目录 LIMIT 1");
  EXPECT_NE(mark.Read(connection.get()), before);
}

TEST_F(LongWork, AReloadStaysAtTheLineThatOthersPushedDown) {
  OpenFirst();
  int row = grid().Rows() - 1;
  while (row > 0 && Cell(row, keys::kRecID).empty()) --row;
  const std::string record = Cell(row, keys::kRecID);
  const std::string kind = Cell(row, keys::kBillName);
  grid().Select(row, grid().ColIndex(keys::kStoQty));
  grid().SetTopRow(row);
  const auto place = [&] {
    const sheet::Geometry geometry = stockbook().sheet().view().geometry();
    return geometry.CellRect(grid().Row(), grid().Col()).y;
  };
  const auto before = place();
  Execute(
      "INSERT INTO 入库记录(BillID,pdID,dpID,数量,除税单价,除税金额) SELECT BillID,1,1,7,1,'7' FROM 入库目录 ORDER BY "
      "BillDate LIMIT 1");
  emit window_->bar().LoadWanted();
  EXPECT_EQ(grid().Row(), row + 1);
  EXPECT_EQ(Cell(grid().Row(), keys::kRecID), record);
  EXPECT_EQ(Cell(grid().Row(), keys::kBillName), kind);
  EXPECT_EQ(grid().Col(), grid().ColIndex(keys::kStoQty));
  EXPECT_EQ(place(), before) << "at the same height";
}

TEST_F(LongWork, AnInventoryWithoutItsTablesIsToldWhichAreMissing) {
  OpenFirst();
  std::filesystem::copy_file(PathOf("sample.db"), PathOf("torn.db"));
  sqlite3* torn = nullptr;
  ASSERT_EQ(sqlite3_open(PathOf("torn.db").c_str(), &torn), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(torn, "DROP TABLE 入库记录; DROP TABLE 客户资料", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(torn);
  const std::string title = Title();
  try {
    window_->OpenDatabase(PathOf("torn.db"));
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_STREQ(error.what(), "“torn.db”缺少库存的表：入库记录、客户资料；请从备份恢复，或打开另一个库存。");
  }
  EXPECT_EQ(Title(), title);
  EXPECT_TRUE(window_->LoadJournal(OtherProduct()).loaded) << "the old inventory goes on";
}

TEST_F(LongWork, ADatabaseThatIsNoInventorySaysSo) {
  sqlite3* empty = nullptr;
  ASSERT_EQ(sqlite3_open(PathOf("other.db").c_str(), &empty), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(empty, "CREATE TABLE t(a)", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(empty);
  try {
    window_->OpenDatabase(PathOf("other.db"));
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_TRUE(std::string(error.what()).starts_with("“other.db”不是库存")) << error.what();
  }
}

TEST_F(LongWork, AFileThatIsNoneGetsADialogAndTheJournalStays) {
  OpenFirst();
  const std::string title = Title();
  window_->OpenFile(QString::fromStdString(Write("no.db", "this is no database, only some text")));
  QMessageBox* box = nullptr;
  for (QMessageBox* each : window_->findChildren<QMessageBox*>())
    if (each->isVisible()) box = each;
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->text().toStdString(), "打不开“no.db”。");
  EXPECT_FALSE(box->informativeText().isEmpty()) << "it says why";
  box->close();
  EXPECT_EQ(Title(), title);
  EXPECT_TRUE(window_->LoadJournal(OtherProduct()).loaded);
}

TEST_F(LongWork, ABarOfNoticesClosesByEscape) {
  OpenFirst();
  strip().failure().Tell(QStringLiteral("出了问题"), {QStringLiteral("重试(&R)"), [] {}});
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(&strip().failure(), &escape);
  EXPECT_FALSE(strip().failure().isVisible());
}

}  // namespace
}  // namespace stockbook::app
