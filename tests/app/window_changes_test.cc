// SPDX-License-Identifier: MIT
// What the window makes of an inventory that others replace, delete or change while it is open.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <filesystem>
#include <functional>

#include "app/window_fixture.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/window/bill_dialog.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

class Changes : public WindowTest {
 protected:
  void OpenFirst() {
    Open();
    ASSERT_TRUE(window_->LoadFirstJournal().loaded);
    Settle();
  }
  LoadStrip& strip() { return window_->reading().strip(); }
  qt::Beside& beside() { return window_->reading().loader().beside(); }
  std::string Cell(int row, const char* key) { return grid().TextMatrix(row, grid().ColIndex(key)); }
  std::string Message() { return window_->message().Message().toStdString(); }
  // Every statement handles events, and the first one does `meanwhile`.
  void AtTheFirstStatement(std::function<void()> meanwhile) {
    beside().SetGrace(std::chrono::milliseconds(0));
    QObject::connect(
        &beside(), &qt::Beside::Began, window_.get(), [meanwhile] { meanwhile(); },
        static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::SingleShotConnection));
  }
  // Another sample takes the name of the one that is open, as a restored copy does.
  void Replace() {
    SampleOptions other;
    other.lines = 900;
    other.seed = 7;
    WriteSampleInventory(PathOf("new.db"), other);
    std::filesystem::rename(PathOf("new.db"), PathOf("sample.db"));
  }
  QAction* Item(const QKeySequence& key) {
    for (QAction* action : window_->findChildren<QAction*>()) {
      if (action->shortcut() == key) return action;
    }
    return nullptr;
  }
  static JournalRange March() {
    return JournalRange::Of({RangeBound::OfPeriod({2025, 3}), RangeBound::OfPeriod({2025, 3})});
  }
};

TEST_F(Changes, AFileThatTookThePlaceOfTheInventoryIsWhatAReloadShows) {
  OpenFirst();
  Replace();
  MainWindow fresh;
  fresh.OpenDatabase(PathOf("sample.db"));
  ASSERT_TRUE(fresh.LoadJournal(window_->bar().Options()).loaded);
  const platform::Grid& wanted = fresh.stockbook().Grid();
  ASSERT_NE(grid().Rows(), wanted.Rows());
  strip().watch().LookNow();
  ASSERT_TRUE(strip().change().isVisible());
  strip().change().action().click();
  EXPECT_FALSE(strip().change().isVisible());
  ASSERT_EQ(grid().Rows(), wanted.Rows());
  const int stock = grid().ColIndex(keys::kStoQty);
  for (int row = 0; row < grid().Rows(); ++row) EXPECT_EQ(grid().TextMatrix(row, stock), wanted.TextMatrix(row, stock));
  strip().watch().LookNow();
  EXPECT_FALSE(strip().change().isVisible());
}

TEST_F(Changes, AnInventoryThatWasDeletedIsNotReadOnAsIfItWereThere) {
  OpenFirst();
  const int rows = grid().Rows();
  const std::string title = Title();
  std::filesystem::rename(PathOf("sample.db"), PathOf("away.db"));
  emit window_->bar().LoadWanted();
  EXPECT_TRUE(strip().failure().isVisible());
  EXPECT_EQ(grid().Rows(), rows) << "the old journal stays in sight";
  EXPECT_EQ(Title(), title);
  std::filesystem::rename(PathOf("away.db"), PathOf("sample.db"));
  strip().failure().action().click();
  EXPECT_FALSE(strip().failure().isVisible());
  EXPECT_EQ(grid().Rows(), rows);
}

// Both offer the same, and the one that failed is the nearer.
TEST_F(Changes, AFailedReloadAfterAChangeIsToldByOneBar) {
  OpenFirst();
  Change(PathOf("sample.db"), "UPDATE 商品设置 SET 备注='别的' WHERE pdID=1");
  strip().watch().LookNow();
  ASSERT_TRUE(strip().change().isVisible());
  std::filesystem::rename(PathOf("sample.db"), PathOf("away.db"));
  strip().change().action().click();
  EXPECT_TRUE(strip().failure().isVisible());
  EXPECT_FALSE(strip().change().isVisible());
  std::filesystem::rename(PathOf("away.db"), PathOf("sample.db"));
  Change(PathOf("sample.db"), "UPDATE 商品设置 SET 备注='再改' WHERE pdID=1");
  strip().watch().LookNow();
  EXPECT_FALSE(strip().change().isVisible()) << "nor by a second one that comes later";
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(&strip().failure(), &escape);
  EXPECT_TRUE(strip().change().isVisible()) << "who closes the one still learns of the other";
  strip().change().action().click();
  EXPECT_FALSE(strip().change().isVisible());
  EXPECT_FALSE(strip().failure().isVisible());
}

TEST_F(Changes, AChangeThatTheUserHasClosedIsNotToldAgainByAFailure) {
  OpenFirst();
  Change(PathOf("sample.db"), "UPDATE 商品设置 SET 备注='别的' WHERE pdID=1");
  strip().watch().LookNow();
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(&strip().change(), &escape);
  std::filesystem::rename(PathOf("sample.db"), PathOf("away.db"));
  emit window_->bar().LoadWanted();
  ASSERT_TRUE(strip().failure().isVisible());
  QApplication::sendEvent(&strip().failure(), &escape);
  EXPECT_FALSE(strip().change().isVisible());
}

TEST_F(Changes, AFileWithoutTablesInThePlaceOfTheInventoryLeavesTheJournal) {
  OpenFirst();
  const int rows = grid().Rows();
  sqlite3* empty = nullptr;
  ASSERT_EQ(sqlite3_open(PathOf("empty.db").c_str(), &empty), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(empty, "CREATE TABLE t(a)", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(empty);
  std::filesystem::rename(PathOf("empty.db"), PathOf("sample.db"));
  emit window_->bar().LoadWanted();
  EXPECT_TRUE(strip().failure().Text().contains(QStringLiteral("不是库存"))) << strip().failure().Text().toStdString();
  EXPECT_EQ(grid().Rows(), rows);
}

TEST_F(Changes, AReloadThatIsOfferedKeepsTheRangeThatWasChosenSinceTheLoad) {
  OpenFirst();
  window_->views().ShowRange(March());
  Change(PathOf("sample.db"), "UPDATE 商品设置 SET 备注='别的' WHERE pdID=1");
  strip().watch().LookNow();
  strip().change().action().click();
  EXPECT_EQ(window_->views().range(), March());
}

TEST_F(Changes, TheWayBackLeadsToTheRangeThatWasLeft) {
  OpenFirst();
  window_->views().ShowRange(March());
  JournalOptions second;
  second.key_id = 2;
  window_->LoadJournal(second);
  EXPECT_TRUE(window_->views().range().IsAll());
  Item(QKeySequence(Qt::ALT | Qt::Key_Left))->trigger();
  EXPECT_EQ(window_->views().range(), March());
}

TEST_F(Changes, AReloadInARangeStaysAtItsLine) {
  OpenFirst();
  window_->views().ShowRange(March());
  int row = grid().Rows() - 1;
  while (row > 0 && (grid().RecordOfRow(row) < 0 || grid().RowHidden(row))) --row;
  grid().Select(row, grid().ColIndex(keys::kStoQty));
  grid().SetTopRow(row);
  Settle();
  const auto place = [&] { return stockbook().sheet().view().geometry().CellRect(grid().Row(), grid().Col()).y; };
  const auto before = place();
  const std::string record = Cell(row, keys::kRecID);
  emit window_->bar().LoadWanted();
  Settle();
  EXPECT_EQ(Cell(grid().Row(), keys::kRecID), record);
  EXPECT_EQ(place(), before);
  EXPECT_EQ(window_->views().range(), March());
}

TEST_F(Changes, ALinesPlaceOutsideTheRangeIsNoReasonToShowAllAfterALoad) {
  OpenFirst();
  grid().Select(grid().Rows() - 2, grid().ColIndex(keys::kStoQty));
  JournalOptions part = window_->bar().Options();
  part.range = March();
  beside().SetGrace(std::chrono::milliseconds(0));
  window_->LoadJournal(part);
  Settle();
  EXPECT_EQ(window_->views().range(), March());
}

TEST_F(Changes, AnotherInventoryWhoseFirstJournalIsCancelledShowsNoLinesOfTheOldOne) {
  OpenFirst();
  std::filesystem::copy_file(PathOf("sample.db"), PathOf("other.db"));
  window_->OpenDatabase(PathOf("other.db"));
  EXPECT_EQ(Title(), "other.db");
  sqlite3* holder = nullptr;
  ASSERT_EQ(sqlite3_open(PathOf("other.db").c_str(), &holder), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(holder, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  AtTheFirstStatement([this] { beside().Cancel(); });
  JournalOptions options;
  options.key_id = 2;
  EXPECT_FALSE(window_->LoadJournal(options).loaded);
  sqlite3_close(holder);
  EXPECT_EQ(Title(), "other.db");
  EXPECT_EQ(grid().RecordCount(), 0U);
  EXPECT_EQ(stockbook().control().Caption(), "");
  EXPECT_TRUE(window_->LoadJournal(options).loaded);
  EXPECT_GT(grid().RecordCount(), 0U);
}

TEST_F(Changes, OpeningThatIsCancelledLeavesTheOldInventory) {
  OpenFirst();
  const std::string title = Title();
  std::filesystem::copy_file(PathOf("sample.db"), PathOf("other.db"));
  // Held, so that it cannot have been read before it is cancelled.
  sqlite3* holder = nullptr;
  ASSERT_EQ(sqlite3_open(PathOf("other.db").c_str(), &holder), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(holder, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  AtTheFirstStatement([this] { beside().Cancel(); });
  window_->OpenFile(QString::fromStdString(PathOf("other.db")));
  sqlite3_close(holder);
  EXPECT_EQ(Title(), title);
  EXPECT_EQ(Message(), "已取消打开。");
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "whoever cancelled knows";
}

TEST_F(Changes, AWayThatIsCancelledSaysNothingOfLinesThatAreMissing) {
  Open();
  JournalOptions customer;
  customer.journal_type = 2;
  customer.dp_id = 3;
  ASSERT_TRUE(window_->LoadJournal(customer).loaded);
  int issue = grid().FixedRows();
  while (issue < grid().Rows() && grid().ValueMatrix(issue, grid().ColIndex(keys::kOtherID)) <= 0) ++issue;
  ASSERT_LT(issue, grid().Rows());
  grid().Select(issue, grid().ColIndex(keys::kBillNo));
  Settle();
  sqlite3* holder = nullptr;
  ASSERT_EQ(sqlite3_open(PathOf("sample.db").c_str(), &holder), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(holder, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  AtTheFirstStatement([this] { beside().Cancel(); });
  window_->links().GoToSource();
  sqlite3_close(holder);
  EXPECT_EQ(Message().find("台账中没有"), std::string::npos) << Message();
}

// Keys and mouse do not get through then, but readers for the blind and scripts do.
TEST_F(Changes, CommandsAreRefusedDuringALoad) {
  OpenFirst();
  JournalOptions second = window_->bar().Options();
  second.key_id = 2;
  ASSERT_TRUE(window_->LoadJournal(second).loaded);
  const int rows = grid().Rows();
  const std::string title = Title();
  Item(QKeySequence(Qt::ALT | Qt::Key_Left))->trigger();
  ASSERT_NE(Title(), title);
  beside().SetGrace(std::chrono::milliseconds(0));
  int statements = 0;
  QObject::connect(&beside(), &qt::Beside::Began, window_.get(), [&] {
    ++statements;
    for (QAction* action : window_->findChildren<QAction*>()) {
      if (action->menu() == nullptr && action->shortcut() != QKeySequence(Qt::CTRL | Qt::Key_Q)) action->trigger();
    }
    window_->views().range_bar().Choose(RangePreset::kNewestPeriod);
    emit window_->bar().LoadWanted();
    window_->LoadJournal({});
    window_->OpenFile(QString::fromStdString(PathOf("sample.db")));
    window_->find_bar().Next();
    Settle();
  });
  // A statement may be over before the window hears of it.
  for (int load = 0; load < 100 && statements == 0; ++load) EXPECT_TRUE(window_->LoadJournal(second).loaded);
  QObject::disconnect(&beside(), &qt::Beside::Began, window_.get(), nullptr);
  Settle();
  EXPECT_GT(statements, 0);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(Title(), title);
  EXPECT_EQ(grid().Rows(), rows);
  EXPECT_EQ(window_->bar().Options().key_id, 2);
  EXPECT_TRUE(window_->views().range().IsAll());
  second.key_id = 3;
  EXPECT_TRUE(window_->LoadJournal(second).loaded) << "afterwards all is as it was";
}

TEST_F(Changes, ABillThatWasDeletedMeanwhileIsNotReturnedTo) {
  OpenFirst();
  int row = grid().FixedRows();
  while (stockbook().BillID(row) <= 0) ++row;
  grid().Select(row, grid().ColIndex(keys::kBillNo));
  window_->reading().trail().Show();
  auto* dialog = window_->findChild<BillDialog*>();
  ASSERT_NE(dialog, nullptr);
  emit dialog->JournalWanted(0);
  Settle();
  ASSERT_TRUE(window_->reading().trail().CanGoBack());
  Change(PathOf("sample.db"), "DELETE FROM 入库目录; DELETE FROM 出库目录");
  window_->reading().trail().GoBack();
  Settle();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(Message(), "库存中已经没有这张单据，请重新载入台账（F5）。");
}

}  // namespace
}  // namespace stockbook::app
