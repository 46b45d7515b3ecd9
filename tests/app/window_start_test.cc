// SPDX-License-Identifier: MIT
// What a start without a name opens.
#include <gtest/gtest.h>

#include <QFile>
#include <QPushButton>
#include <filesystem>
#include <memory>
#include <string>

#include "app/run_fixture.h"
#include "stockbook/window/last_inventory.h"

namespace stockbook::app {
namespace {

class StartWithoutAName : public RunTest {
 protected:
  void Start() {
    Begin();
    OpenLastInventory(*window_, [this] { return PathOf("sample.db"); });
    window_->show();
    Settle();
  }
  // Another inventory is opened, as a user does it, and the program ended.
  void OpenMine() {
    std::filesystem::copy_file(PathOf("sample.db"), PathOf("mine.db"));
    window_->OpenFile(QString::fromStdString(PathOf("mine.db")));
    window_->close();
  }
  NoticeBar& Notice() { return window_->reading().strip().replacement(); }
};

TEST_F(StartWithoutAName, OpensTheSampleAtFirst) {
  Start();
  EXPECT_TRUE(Title().ends_with("sample.db")) << Title();
  EXPECT_FALSE(Notice().isVisible());
}

TEST_F(StartWithoutAName, OpensTheInventoryThatWasOpenedLast) {
  Start();
  OpenMine();
  Start();
  EXPECT_TRUE(Title().ends_with("mine.db")) << Title();
  EXPECT_FALSE(Notice().isVisible());
}

TEST_F(StartWithoutAName, SaysThatTheLastInventoryHasGoneAndOpensTheSample) {
  Start();
  OpenMine();
  std::filesystem::rename(PathOf("mine.db"), PathOf("away.db"));
  for (int start = 0; start < 2; ++start) {
    Start();
    EXPECT_TRUE(Title().ends_with("sample.db")) << Title();
    ASSERT_TRUE(Notice().isVisible()) << "every time";
    EXPECT_TRUE(Notice().Text().contains(QString::fromStdString(PathOf("mine.db")))) << Notice().Text().toStdString();
    window_->close();
  }
  Start();
  std::filesystem::rename(PathOf("away.db"), PathOf("mine.db"));
  Notice().action().click();
  EXPECT_TRUE(Title().find("mine.db") != std::string::npos) << Title();
  EXPECT_FALSE(Notice().isVisible());
}

TEST_F(StartWithoutAName, SaysWhyTheLastInventoryCannotBeOpened) {
  Start();
  OpenMine();
  std::filesystem::remove(PathOf("mine.db"));
  QFile broken(QString::fromStdString(PathOf("mine.db")));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write("no inventory");
  broken.close();
  Start();
  EXPECT_TRUE(Title().ends_with("sample.db")) << Title();
  ASSERT_TRUE(Notice().isVisible());
  EXPECT_TRUE(Notice().Text().contains(QStringLiteral("打不开"))) << Notice().Text().toStdString();
}

TEST_F(StartWithoutAName, MakesTheSampleAgainWithoutANotice) {
  Start();
  window_->close();
  window_.reset();
  std::filesystem::remove(PathOf("sample.db"));
  Begin();
  OpenLastInventory(*window_, [this] {
    WriteSampleInventory(PathOf("sample.db"), {});
    return PathOf("sample.db");
  });
  window_->show();
  EXPECT_TRUE(Title().ends_with("sample.db")) << Title();
  EXPECT_FALSE(Notice().isVisible());
}

}  // namespace
}  // namespace stockbook::app
