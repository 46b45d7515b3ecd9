// SPDX-License-Identifier: MIT
// What the start of the program does not wait for.
#include <gtest/gtest.h>
#include <link.h>

#include <QCompleter>
#include <QDateTime>
#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "app/window_fixture.h"
#include "stockbook/databases/providers/open_connection.h"
#include "stockbook/platform/error.h"
#include "stockbook/plot/plot_drawing.h"

namespace stockbook::app {
namespace {

using QuickStart = WindowTest;

TEST_F(QuickStart, BuildsAPanelOnlyWhenItIsShown) {
  Open();
  PlotPanel& plot = window_->views().plot();
  PeriodPanel& periods = window_->views().periods();
  ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  Settle();
  EXPECT_EQ(plot.findChild<PlotView*>(), nullptr);
  EXPECT_EQ(periods.findChild<QTableView*>(), nullptr);
  plot.show();
  periods.show();
  Settle();
  EXPECT_NE(plot.findChild<PlotView*>(), nullptr);
  EXPECT_FALSE(plot.view().plot().steps.empty());
  ASSERT_NE(periods.findChild<QTableView*>(), nullptr);
  EXPECT_GT(periods.view().model()->rowCount(), 0);
}

TEST_F(QuickStart, MakesTheSearchOfAChooserForTheFirstWord) {
  Open();
  auto* chooser = window_->bar().findChild<SubjectChooser*>();
  ASSERT_NE(chooser, nullptr);
  EXPECT_EQ(chooser->findChild<WordFilter*>(), nullptr);
  chooser->setFocus();
  chooser->lineEdit()->selectAll();
  QTest::keyClicks(chooser->lineEdit(), QStringLiteral("M8"));
  auto* found = chooser->findChild<WordFilter*>();
  ASSERT_NE(found, nullptr);
  EXPECT_GT(found->rowCount(), 0);
  EXPECT_LT(found->rowCount(), chooser->count());
  EXPECT_EQ(chooser->completer()->model(), found);
}

TEST_F(QuickStart, DoesNotWriteSettingsThatAreAsTheyWere) {
  const QString file = QString::fromStdString(PathOf("kept.ini"));
  QSettings settings(file, QSettings::IniFormat);
  WindowMemory memory(settings);
  memory.SetInventory("one");
  const auto keep = [&] {
    memory.SetOfWindow(QStringLiteral("recent"), QStringList{QStringLiteral("/a.db"), QStringLiteral("/b.db")});
    memory.SetLastSubject(JournalOptions());
    settings.sync();
  };
  keep();
  ASSERT_TRUE(QFile::exists(file));
  const QDateTime long_ago(QDate(2001, 2, 3), QTime(4, 5));
  {
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadWrite));
    ASSERT_TRUE(written.setFileTime(long_ago, QFileDevice::FileModificationTime));
  }
  keep();
  EXPECT_EQ(QFileInfo(file).lastModified(), long_ago);
  memory.SetOfWindow(QStringLiteral("zoom"), 120);
  settings.sync();
  EXPECT_NE(QFileInfo(file).lastModified(), long_ago);
}

#ifdef __linux__
bool HasLoaded(const char* library) {
  const auto look = [](dl_phdr_info* loaded, size_t /*size*/, void* name) {
    return static_cast<int>(std::strstr(loaded->dlpi_name, static_cast<const char*>(name)) != nullptr);
  };
  return dl_iterate_phdr(look, const_cast<char*>(library)) != 0;
}

// In a process of its own, in which no other test has drawn a plot.
TEST(QuickStartDeathTest, LoadsTheLibrariesOfPlotsWithTheFirstPlot) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        const bool early = HasLoaded("libplplot") || HasLoaded("libcairo");
        const bool late = !CanDrawPlots() || (HasLoaded("libplplot") && HasLoaded("libcairo"));
        std::exit(early || !late ? 1 : 0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST(QuickStartDeathTest, LoadsTheLibraryOfADatabaseWithTheFirstOfItsKind) {
  const std::vector<std::string> built = databases::BuiltProviders();
  if (std::find(built.begin(), built.end(), "Odbc") == built.end()) GTEST_SKIP() << "built without ODBC";
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        const bool early = HasLoaded("libodbc.") || HasLoaded("libmdb");
        try {
          databases::OpenConnection("Provider=Odbc;DSN=that nobody has set up");
        } catch (const platform::Error&) {
        }
        std::exit(early || !HasLoaded("libodbc.") ? 1 : 0);
      },
      ::testing::ExitedWithCode(0), "");
}
#endif

}  // namespace
}  // namespace stockbook::app
