// SPDX-License-Identifier: MIT
// What the window does on screens that are too low for all it can show: 1024 by 600 pixels at twice the size, and at
// one and a half times.
#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QTest>
#include <algorithm>

#include "app/screen_fixture.h"
#include "stockbook/window/folding_row.h"
#include "stockbook/window/hit_list.h"

namespace stockbook::app {
namespace {

class LowestScreen : public ScreenTest {
 protected:
  LowestScreen() : ScreenTest({512, 300}) {}

  void ShowPart(int part, bool shown) {
    switch (part) {
      case 0:
        shown ? window_->find_bar().Open() : window_->find_bar().hide();
        window_->find_bar().hits().setVisible(shown);
        break;
      case 1:
        window_->views().plot().setVisible(shown);
        break;
      default:
        window_->views().periods().setVisible(shown);
    }
    Settle();
  }
  bool ShowsARow() {
    const auto& geometry = stockbook().sheet().view().geometry();
    const int row = geometry.TopRow();
    return geometry.VisibleCellRect(row, 1).height == geometry.CellRect(row, 1).height;
  }
  bool StatusIsInSight() {
    const QStatusBar& status = *window_->statusBar();
    return status.geometry().bottom() < window_->height() && window_->height() <= window_->screen()->size().height();
  }
};

TEST_F(LowestScreen, HoldsTheWindowWhateverOpens) {
  OpenJournal();
  const QSize size = window_->size();
  for (const int part : {0, 1, 2}) {
    ShowPart(part, true);
    EXPECT_EQ(window_->size(), size) << part;
    EXPECT_TRUE(StatusIsInSight()) << part;
    EXPECT_TRUE(ShowsARow()) << part << ": " << stockbook().viewport()->height() << " below "
                             << stockbook().sheet().view().geometry().PinnedHeight();
    ShowPart(part, false);
    EXPECT_EQ(window_->size(), size) << part;
    EXPECT_TRUE(window_->bar().isVisible()) << part;
  }
}

TEST_F(LowestScreen, ClosesWhatWasOpenedEarlierWhereThereIsNoRoomForBoth) {
  OpenJournal();
  const QSize size = window_->size();
  window_->views().range_bar().Open();
  for (const int part : {2, 1, 0}) {
    ShowPart(part, true);
    EXPECT_EQ(window_->size(), size);
    EXPECT_TRUE(StatusIsInSight());
    EXPECT_TRUE(ShowsARow()) << part;
  }
  EXPECT_TRUE(window_->find_bar().isVisible());
  EXPECT_FALSE(window_->views().plot().isVisible());
  EXPECT_FALSE(window_->views().periods().isVisible());
  ShowPart(1, true);
  EXPECT_TRUE(window_->views().plot().isVisible());
  EXPECT_FALSE(window_->find_bar().isVisible());
}

TEST_F(LowestScreen, IsFilledByTheWindowAtItsFirstStart) {
  QSettings settings(QString::fromStdString(PathOf("settings.ini")), QSettings::IniFormat);
  window_->Remember(settings);
  EXPECT_TRUE(window_->isMaximized());
  window_.reset();
}

TEST_F(LowestScreen, HasItsMenusInOneColumnThatScrolls) {
  OpenJournal();
  for (const QAction* top : window_->menuBar()->actions()) {
    QMenu* menu = top->menu();
    menu->popup(window_->mapToGlobal(QPoint(0, 20)));
    Settle();
    EXPECT_LE(menu->height(), 300);
    const int left = menu->actionGeometry(menu->actions().first()).left();
    for (QAction* action : menu->actions()) {
      if (!action->isVisible()) continue;
      EXPECT_EQ(menu->actionGeometry(action).left(), left) << action->text().toStdString();
    }
    menu->hide();
  }
}

TEST_F(LowestScreen, KeepsTheButtonsOfAFoldedBarTogether) {
  OpenJournal();
  window_->find_bar().Open();
  Settle();
  FoldingRow& row = *window_->find_bar().findChild<FoldingRow*>();
  ASSERT_TRUE(row.IsFolded());
  for (int at = 1; at < 6; ++at) {
    const QRect left = row.tail().itemAt(at - 1)->geometry();
    EXPECT_LE(row.tail().itemAt(at)->geometry().left() - left.right(), row.tail().spacing() + 1) << at;
    EXPECT_LE(left.width(), row.tail().itemAt(at - 1)->sizeHint().width()) << at;
  }
}

TEST_F(LowestScreen, TellsHowManyWereFoundWhole) {
  OpenJournal();
  window_->find_bar().Open();
  QTest::keyClicks(window_->find_bar().findChild<QLineEdit*>(), QStringLiteral("2025"));
  QTest::keyClick(window_->find_bar().findChild<QLineEdit*>(), Qt::Key_Return);
  Settle();
  EXPECT_TRUE(window_->find_bar().findChild<FoldingRow*>()->IsFolded());
  const auto labels = window_->find_bar().findChildren<QLabel*>();
  const auto count = std::find_if(labels.begin(), labels.end(),
                                  [](const QLabel* label) { return label->text().startsWith(QStringLiteral("第")); });
  ASSERT_NE(count, labels.end());
  EXPECT_GE((*count)->width(), (*count)->sizeHint().width());
  const QString told = (*count)->text();
  for (int width = 700; width <= 900; width += 20) {
    window_->resize(width, 288);
    Settle();
    EXPECT_EQ((*count)->text(), told);
    EXPECT_GE((*count)->width(), (*count)->sizeHint().width()) << width;
  }
}

TEST_F(LowestScreen, LetsTheBarGiveWayUntilThereIsRoomForIt) {
  OpenJournal();
  EXPECT_TRUE(window_->bar().isVisible());
  ShowPart(1, true);
  EXPECT_FALSE(window_->bar().isVisible());
  EXPECT_FALSE(window_->views().plot().view().plot_layout().frames.empty()) << "the plot has room to be drawn";
  window_->resize(512, 500);
  Settle();
  EXPECT_TRUE(window_->bar().isVisible());
  window_->resize(512, 288);
  Settle();
  EXPECT_FALSE(window_->bar().isVisible());
  ShowPart(1, false);
  EXPECT_TRUE(window_->bar().isVisible());
}

class FlatScreen : public ScreenTest {
 protected:
  FlatScreen() : ScreenTest({1024, 552}) {}
};

TEST_F(FlatScreen, ShowsARowWithEverythingOpen) {
  OpenJournal();
  window_->views().range_bar().Open();
  window_->views().plot().show();
  window_->views().periods().show();
  window_->find_bar().Open();
  window_->find_bar().hits().show();
  Settle();
  const auto& geometry = stockbook().sheet().view().geometry();
  const int row = geometry.TopRow();
  EXPECT_EQ(geometry.VisibleCellRect(row, 1).height, geometry.CellRect(row, 1).height);
  EXPECT_TRUE(window_->views().plot().isVisible());
  EXPECT_TRUE(window_->bar().isVisible());
}

class LowScreen : public ScreenTest {
 protected:
  LowScreen() : ScreenTest({683, 400}) {}
};

TEST_F(LowScreen, ShowsRowsAboveTheListOfHits) {
  OpenJournal();
  window_->find_bar().Open();
  window_->find_bar().hits().show();
  Settle();
  const auto& geometry = stockbook().sheet().view().geometry();
  EXPECT_GE(geometry.BottomRow() - geometry.TopRow() + 1, 3);
  EXPECT_GE(window_->find_bar().hits().viewport()->height(), 40);
}

TEST_F(LowScreen, KeepsTheCurrentRowInSightWhenAPanelOpens) {
  OpenJournal();
  auto& view = stockbook().sheet().view();
  const auto last_in_sight = [&] {
    const int row = view.geometry().BottomRow();
    stockbook().sheet().Select(row, 1);
    Settle();
    return row;
  };
  view.ScrollTo({0, 200});
  int row = last_in_sight();
  ASSERT_TRUE(view.geometry().RowIsVisible(row));
  window_->views().plot().show();
  Settle();
  EXPECT_TRUE(view.geometry().RowIsVisible(row)) << "below the plot";
  EXPECT_LE(row, view.geometry().BottomRow());
  window_->views().plot().hide();
  Settle();
  row = last_in_sight();
  window_->find_bar().Open();
  window_->find_bar().hits().show();
  Settle();
  EXPECT_LE(row, view.geometry().BottomRow()) << "below the hits";
  EXPECT_GE(row, view.geometry().TopRow());
}

// Whoever has scrolled away from the current row stays where he is.
TEST_F(LowScreen, DoesNotScrollToARowThatWasOutOfSight) {
  OpenJournal();
  auto& view = stockbook().sheet().view();
  stockbook().sheet().Select(2, 1);
  view.ScrollTo({0, 1000});
  Settle();
  const int top = view.geometry().TopRow();
  window_->views().plot().show();
  Settle();
  EXPECT_EQ(view.geometry().TopRow(), top);
}

}  // namespace
}  // namespace stockbook::app
