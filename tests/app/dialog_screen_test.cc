// SPDX-License-Identifier: MIT
// Dialogs on screens that are too low for some of them: 1024 by 600 pixels at twice the size, and at one and a half
// times.
#include <gtest/gtest.h>

#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <fstream>
#include <functional>
#include <set>

#include "app/screen_fixture.h"
#include "stockbook/paper/page_setup_dialog.h"
#include "stockbook/window/import_dialog.h"
#include "stockbook/window/row_sight.h"

namespace stockbook::app {
namespace {

class DialogsOnTheLowestScreen : public ScreenTest {
 protected:
  DialogsOnTheLowestScreen() : ScreenTest({512, 300}) {}
};

// Of a dialog that has just opened.
void ExpectAllInReach(const QDialog& dialog) {
  const std::string name = dialog.windowTitle().toStdString();
  const QRect screen = dialog.screen()->availableGeometry();
  EXPECT_TRUE(screen.contains(dialog.frameGeometry()))
      << name << ": " << dialog.frameGeometry().right() << ' ' << dialog.frameGeometry().bottom();
  for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
    if (!button->isVisible()) continue;
    const QRect place(button->mapTo(&dialog, QPoint()), button->size());
    EXPECT_TRUE(dialog.rect().contains(place)) << name << ": " << button->text().toStdString();
    EXPECT_FALSE(button->visibleRegion().isEmpty()) << name << ": " << button->text().toStdString();
  }
}

void ForEachAction(const QMenu& menu, const std::function<void(QAction&)>& call) {
  for (QAction* action : menu.actions()) {
    if (action->menu() != nullptr) {
      ForEachAction(*action->menu(), call);
    } else {
      call(*action);
    }
  }
}

TEST_F(DialogsOnTheLowestScreen, HasEveryDialogOfTheMenusInReach) {
  OpenJournal();
  BringIntoSight(stockbook().sheet(), 4, 1);
  std::set<std::string> seen;
  // Some of them return only when they are closed.
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible()) return;
    ExpectAllInReach(*dialog);
    seen.insert(dialog->windowTitle().toStdString());
    dialog->reject();
  });
  look.start(0);
  for (const QAction* top : window_->menuBar()->actions()) {
    ForEachAction(*top->menu(), [](QAction& action) {
      if (!action.text().endsWith(QLatin1String("..."))) return;
      action.trigger();
      for (int pass = 0; pass < 4; ++pass) Settle();
    });
  }
  for (const char* title : {"打开数据库", "导入表格", "打印预览", "页面设置", "导出台账", "统计", "快捷键与版本"})
    EXPECT_TRUE(seen.contains(title)) << title;
}

TEST_F(DialogsOnTheLowestScreen, ShowsTheTitlesOfMessages) {
  QMessageBox box(QMessageBox::Warning, QStringLiteral("没有完成这件事"), QStringLiteral("短。"), QMessageBox::Ok);
  box.show();
  Settle();
  const QString title = box.windowTitle() + QStringLiteral(" — ") + QApplication::applicationDisplayName();
  EXPECT_GT(box.width(), box.fontMetrics().horizontalAdvance(title) + 120);
  EXPECT_LT(box.width(), box.screen()->availableSize().width());
}

TEST_F(DialogsOnTheLowestScreen, KeepsButtonsInSightWhereTheRestScrolls) {
  PageSetupDialog dialog({});
  dialog.show();
  Settle();
  const auto* area = dialog.findChild<QScrollArea*>();
  ASSERT_NE(area, nullptr);
  EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
  for (const QPushButton* button : dialog.findChildren<QPushButton*>()) EXPECT_FALSE(area->isAncestorOf(button));
}

class DialogsOnALowScreen : public ScreenTest {
 protected:
  DialogsOnALowScreen() : ScreenTest({683, 400}) {}
};

TEST_F(DialogsOnALowScreen, HasTheButtonsOfTheImportInSight) {
  const std::string table = PathOf("table.csv");
  std::ofstream(table) << "date,product,quantity\n2025-01-02,P1,3\n";
  ImportDialog dialog(table);
  dialog.show();
  Settle();
  ExpectAllInReach(dialog);
}

}  // namespace
}  // namespace stockbook::app
