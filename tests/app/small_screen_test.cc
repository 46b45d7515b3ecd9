// SPDX-License-Identifier: MIT
// What has to fit on a screen of 1024 by 600 pixels, or on one of 1366 by 768 at one and a half times the size.
#include <gtest/gtest.h>

#include <QDockWidget>
#include <QHeaderView>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <fstream>

#include "app/window_fixture.h"
#include "stockbook/window/folding_row.h"
#include "stockbook/window/hit_list.h"
#include "stockbook/window/host_translator.h"
#include "stockbook/window/import_dialog.h"
#include "stockbook/window/screen_fit.h"
#include "stockbook/window/subject_chooser.h"

namespace stockbook::app {
namespace {

constexpr int kLowestScreen = 768 * 2 / 3;
constexpr int kNarrowestScreen = 1366 * 2 / 3;
constexpr int kFrameAndTaskBar = 40;

using SmallScreen = WindowTest;

TEST_F(SmallScreen, HasRoomForAllBarsAndPanelsAtOnce) {
  Open();
  ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  window_->views().range_bar().Open();
  window_->find_bar().Open();
  window_->find_bar().hits().show();
  window_->views().periods().show();
  window_->views().plot().show();
  Settle();
  EXPECT_LE(window_->minimumSizeHint().height(), kLowestScreen - kFrameAndTaskBar);
  EXPECT_LE(window_->minimumSizeHint().width(), kNarrowestScreen);
}

// 1024 by 600 pixels at twice the size.
TEST_F(SmallScreen, FoldsItsBarsInsteadOfGrowingBeyondTheScreen) {
  for (const HostLanguage language : {HostLanguage::kChinese, HostLanguage::kEnglish}) {
    session_.Speak(language);
    window_ = std::make_unique<MainWindow>();
    Open();
    window_->resize(kNarrowestScreen, kLowestScreen);
    window_->views().range_bar().Open();
    window_->find_bar().Open();
    window_->views().periods().show();
    window_->views().plot().show();
    Settle();
    const FoldingRow& row = *window_->find_bar().findChild<FoldingRow*>();
    EXPECT_FALSE(row.IsFolded());
    EXPECT_LE(window_->minimumSizeHint().width(), 512);
    window_->resize(512, kLowestScreen);
    Settle();
    EXPECT_EQ(window_->width(), 512);
    EXPECT_TRUE(row.IsFolded());
    window_->resize(kNarrowestScreen, kLowestScreen);
    Settle();
    EXPECT_FALSE(row.IsFolded());
  }
}

TEST_F(SmallScreen, HasRoomForTheImportInEnglish) {
  if (!HostTranslator().LoadEnglish()) GTEST_SKIP() << "this program was built without its English texts";
  session_.Speak(HostLanguage::kEnglish);
  const std::string table = PathOf("table.csv");
  std::ofstream(table) << "date,product,quantity\n2025-01-02,P1,3\n";
  ImportDialog dialog(table);
  EXPECT_LE(dialog.minimumSizeHint().width(), kNarrowestScreen * 9 / 10);
  EXPECT_LE(dialog.minimumSizeHint().height(), kLowestScreen * 9 / 10);
}

TEST_F(SmallScreen, ShowsWhatWasFoundBesideItsBill) {
  Open();
  ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  HitList& hits = window_->find_bar().hits();
  window_->find_bar().Open();
  hits.show();
  window_->resize(kNarrowestScreen, kLowestScreen);
  Settle();
  const QHeaderView& header = *hits.horizontalHeader();
  EXPECT_LE(header.length(), hits.viewport()->width());
  EXPECT_GE(header.sectionSize(2), header.sectionSize(1));
}

TEST_F(SmallScreen, LeavesMostOfTheWindowToTheJournalWhenAPanelOpens) {
  Open();
  ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  window_->resize(1008, 620);
  Settle();
  JournalViews& views = window_->views();
  for (QDockWidget* panel : {static_cast<QDockWidget*>(&views.plot()), static_cast<QDockWidget*>(&views.periods())}) {
    panel->show();
    Settle();
    EXPECT_LE(panel->height(), window_->height() * 2 / 5 + 1);
    EXPECT_GT(stockbook().viewport()->height(), 160);
    panel->hide();
    Settle();
  }
  views.plot().show();
  Settle();
  const int height = views.plot().height();
  views.periods().show();
  Settle();
  EXPECT_EQ(views.plot().height(), height) << "the second panel takes its place beside the first";
}

// The boxes give way to a menu first.
TEST_F(SmallScreen, LeavesChoosersReadable) {
  Open();
  window_->resize(kNarrowestScreen - kFrameAndTaskBar, kLowestScreen);
  Settle();
  const SubjectChooser& product = *window_->bar().findChild<SubjectChooser*>();
  EXPECT_GE(product.width(), product.fontMetrics().horizontalAdvance(QStringLiteral("010101-01 六角螺栓 M8×30 GB")));
}

TEST_F(SmallScreen, HoldsDialogsThatWantMore) {
  QWidget dialog;
  ResizeWithinScreen(dialog, {300, 200});
  EXPECT_EQ(dialog.size(), QSize(300, 200));
  ResizeWithinScreen(dialog, {30000, 20000});
  EXPECT_LT(dialog.width(), dialog.screen()->availableSize().width());
  EXPECT_LT(dialog.height(), dialog.screen()->availableSize().height());
}

TEST_F(SmallScreen, ScrollsDialogsThatNeedMore) {
  QWidget dialog;
  auto* part = new QWidget;
  part->setMinimumSize(300, 200);
  (new QVBoxLayout(&dialog))->addWidget(part);
  ScrollBeyondScreen(dialog);
  EXPECT_EQ(dialog.findChild<QScrollArea*>(), nullptr);
  part->setMinimumSize(30000, 20000);
  ScrollBeyondScreen(dialog);
  ASSERT_NE(dialog.findChild<QScrollArea*>(), nullptr);
  dialog.show();
  Settle();
  EXPECT_LT(dialog.width(), dialog.screen()->availableSize().width());
  EXPECT_LT(dialog.height(), dialog.screen()->availableSize().height());
  EXPECT_EQ(part->size(), QSize(30000, 20000));
}

}  // namespace
}  // namespace stockbook::app
