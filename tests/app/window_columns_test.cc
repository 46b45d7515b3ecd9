// SPDX-License-Identifier: MIT
// What the window adds to the control's columns: a way back, a limit of what is frozen, a list that stays open.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDropEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <algorithm>
#include <string>
#include <vector>

#include "app/window_fixture.h"
#include "sheet/paint/cell_tip.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/column_dialog.h"
#include "stockbook/window/journal_columns.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

class Columns : public WindowTest {
 protected:
  void OpenFirst() {
    window_->resize(1280, 800);
    Open();
    ASSERT_TRUE(window_->LoadFirstJournal().loaded);
    Settle();
  }
  int At(const char* key) { return grid().ColIndex(key); }
  JournalColumns& columns() { return window_->columns(); }
  // The share of the view that does not scroll.
  double PinnedShare() {
    const sheet::Geometry geometry = stockbook().sheet().view().geometry();
    return static_cast<double>(geometry.PinnedWidth()) / geometry.view().width;
  }
  QAction* Item(const QString& text) {
    for (QAction* action : window_->findChildren<QAction*>()) {
      if (action->text() == text) return action;
    }
    return nullptr;
  }
  ColumnDialog& Dialog() {
    window_->column_actions().OpenDialog();
    Settle();
    return *window_->column_actions().dialog();
  }
  static QTreeWidgetItem* RowOf(ColumnDialog& dialog, const QString& caption) {
    const QList<QTreeWidgetItem*> found = dialog.list().findItems(caption, Qt::MatchExactly);
    return found.isEmpty() ? nullptr : found.front();
  }
  static void Press(ColumnDialog& dialog, const QString& text) {
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
      if (button->text().startsWith(text)) return button->click();
    }
    FAIL() << text.toStdString();
  }
};

TEST_F(Columns, FrozenOnesNeverTakeMoreThanTwoThirdsOfTheView) {
  OpenFirst();
  QSignalSpy told(&columns(), &JournalColumns::Told);
  const int last = At(keys::kStoAcc);
  grid().SetFrozenCols(last);  // as the control's menu does it
  Settle();
  EXPECT_LE(PinnedShare(), 2.0 / 3);
  EXPECT_GT(grid().FrozenCols(), 0);
  EXPECT_LT(grid().FrozenCols(), last);
  EXPECT_EQ(told.size(), 1) << "it says why";
  const int wide = grid().FrozenCols();
  window_->resize(700, 800);
  Settle();
  EXPECT_LE(PinnedShare(), 2.0 / 3);
  EXPECT_LT(grid().FrozenCols(), wide);
  window_->resize(1280, 800);
  Settle();
  EXPECT_EQ(grid().FrozenCols(), wide) << "what was wanted is back as soon as there is room";
}

TEST_F(Columns, AWidenedFrozenColumnLetsGoOfTheOthers) {
  OpenFirst();
  columns().FreezeUpTo(At(keys::kBillKind));
  ASSERT_EQ(grid().FrozenCols(), At(keys::kBillKind));
  grid().SetColWidth(At(keys::kBillNo), 12000);  // 800 pixels
  Settle();
  EXPECT_LE(PinnedShare(), 2.0 / 3);
}

TEST_F(Columns, CanBeUnfrozenFromTheMenu) {
  OpenFirst();
  QAction* unfreeze = Item(QStringLiteral("取消冻结(&U)"));
  ASSERT_NE(unfreeze, nullptr);
  EXPECT_FALSE(unfreeze->isEnabled());
  grid().SetFrozenCols(At(keys::kBillNo));
  Settle();
  ASSERT_TRUE(unfreeze->isEnabled());
  unfreeze->trigger();
  EXPECT_EQ(grid().FrozenCols(), 0);
  EXPECT_FALSE(unfreeze->isEnabled());
}

TEST_F(Columns, TheLastChangesAreUndoneOneByOneAndDoneAgain) {
  OpenFirst();
  const ColumnArrangement first = columns().Now();
  EXPECT_FALSE(columns().CanUndo());
  grid().SetColWidth(At(keys::kExplain), 3333);
  Settle();
  grid().SetColHidden(At(keys::kBillKind), true);
  Settle();
  grid().SetColPosition(At(keys::kExplain), 1);
  Settle();
  columns().Undo();
  EXPECT_NE(At(keys::kExplain), 1);
  EXPECT_TRUE(grid().ColHidden(At(keys::kBillKind)));
  columns().Undo();
  EXPECT_FALSE(grid().ColHidden(At(keys::kBillKind)));
  EXPECT_EQ(grid().ColWidth(At(keys::kExplain)), 3333);
  columns().Undo();
  EXPECT_EQ(columns().Now(), first);
  EXPECT_FALSE(columns().CanUndo());
  columns().Redo();
  EXPECT_EQ(grid().ColWidth(At(keys::kExplain)), 3333);
  EXPECT_EQ(grid().OutlineCol(), At(keys::kBillNo));
}

TEST_F(Columns, TheDefaultLayoutCanBeUndoneToo) {
  OpenFirst();
  grid().SetColWidth(At(keys::kExplain), 3333);
  columns().FreezeUpTo(At(keys::kBillNo));
  const ColumnArrangement mine = columns().Now();
  Item(QStringLiteral("默认格式(&D)"))->trigger();
  EXPECT_EQ(grid().FrozenCols(), 0);
  EXPECT_NE(grid().ColWidth(At(keys::kExplain)), 3333);
  columns().Undo();
  EXPECT_EQ(columns().Now(), mine);
}

TEST_F(Columns, AReloadIsNoChangeToUndo) {
  OpenFirst();
  grid().SetColWidth(At(keys::kExplain), 3333);
  Settle();
  emit window_->bar().LoadWanted();
  Settle();
  EXPECT_EQ(grid().ColWidth(At(keys::kExplain)), 3333);
  ASSERT_TRUE(columns().CanUndo());
  columns().Undo();
  EXPECT_NE(grid().ColWidth(At(keys::kExplain)), 3333);
  EXPECT_FALSE(columns().CanUndo());
}

TEST_F(Columns, OfTheTreeCannotBeHidden) {
  OpenFirst();
  QSignalSpy told(&columns(), &JournalColumns::Told);
  columns().Hide(At(keys::kBillNo));
  EXPECT_FALSE(grid().ColHidden(At(keys::kBillNo)));
  EXPECT_EQ(told.size(), 1);
}

TEST_F(Columns, AreFittedToTheirContentsAtOnce) {
  OpenFirst();
  grid().SetColWidth(At(keys::kBillNo), 900);
  Settle();
  Item(QStringLiteral("列宽适应内容(&W)"))->trigger();
  const sheet::GridSheet& sheet = stockbook().sheet();
  EXPECT_GT(grid().ColWidth(At(keys::kBillNo)), 2000) << "the bill numbers are whole";
  EXPECT_LE(sheet.ColWidth(At(keys::kBillNo)), sheet.view().geometry().view().width * 15);
  columns().Undo();
  EXPECT_EQ(grid().ColWidth(At(keys::kBillNo)), 900) << "one change for all columns";
}

TEST_F(Columns, AllThatAreShownHaveRoomForTheirContentsAfterTheFit) {
  OpenFirst();
  std::vector<int> shown;
  for (int column = grid().FixedCols(); column < grid().Cols(); ++column) {
    if (!grid().ColHidden(column)) shown.push_back(column);
  }
  ASSERT_GT(shown.size(), 8U);
  const auto fit = [&](int width) {
    for (const int column : shown) grid().SetColWidth(column, width);
    Item(QStringLiteral("列宽适应内容(&W)"))->trigger();
  };
  fit(9000);
  std::vector<int> widths;
  for (const int column : shown) {
    widths.push_back(grid().ColWidth(column));
    EXPECT_LT(widths.back(), 9000) << grid().ColKey(column) << " needs less";
  }
  fit(300);
  sheet::GridSheet& sheet = stockbook().sheet();
  for (size_t at = 0; at < shown.size(); ++at) {
    EXPECT_EQ(grid().ColWidth(shown[at]), widths[at]) << "whatever it was before";
    sheet.SetLeftCol(shown[at]);
    const sheet::Geometry geometry = sheet.view().geometry();
    for (int row = 0; row < grid().Rows(); ++row) {
      const sheet::Rect cell = geometry.VisibleCellRect(row, shown[at]);
      if (cell.height < geometry.CellRect(row, shown[at]).height) continue;  // beyond the edge of the view
      const sheet::Point middle{cell.x + cell.width / 2, cell.y + cell.height / 2};
      EXPECT_EQ(sheet::CellTip::At(sheet.view(), *sheet.view().viewer()->Measure(), middle).text, "") << row;
    }
  }
  for (int column = grid().FixedCols(); column < grid().Cols(); ++column) {
    const bool was_shown = std::find(shown.begin(), shown.end(), column) != shown.end();
    EXPECT_EQ(grid().ColHidden(column), !was_shown);
  }
}

TEST_F(Columns, TheListFitsThemAll) {
  OpenFirst();
  Item(QStringLiteral("列宽适应内容(&W)"))->trigger();
  const int fitted = grid().ColWidth(At(keys::kBillNo));
  grid().SetColWidth(At(keys::kBillNo), 900);
  Press(Dialog(), QStringLiteral("适应内容"));
  EXPECT_EQ(grid().ColWidth(At(keys::kBillNo)), fitted);
}

TEST_F(Columns, TheListShowsAndHidesThem) {
  OpenFirst();
  ColumnDialog& dialog = Dialog();
  ASSERT_TRUE(dialog.isVisible());
  EXPECT_FALSE(dialog.isModal());
  QTreeWidgetItem* explain = RowOf(dialog, QStringLiteral("摘要"));
  ASSERT_NE(explain, nullptr);
  explain->setCheckState(0, Qt::Unchecked);
  Settle();
  EXPECT_TRUE(grid().ColHidden(At(keys::kExplain)));
  EXPECT_TRUE(dialog.isVisible()) << "it stays open";
  RowOf(dialog, QStringLiteral("摘要"))->setCheckState(0, Qt::Checked);
  Settle();
  EXPECT_FALSE(grid().ColHidden(At(keys::kExplain)));
  EXPECT_EQ(RowOf(dialog, QStringLiteral("税额")), nullptr) << "what is not allowed is not offered";
}

TEST_F(Columns, TheListSetsWidthsInPixels) {
  OpenFirst();
  ColumnDialog& dialog = Dialog();
  RowOf(dialog, QStringLiteral("摘要"))->setText(1, QStringLiteral("123"));
  Settle();
  EXPECT_EQ(grid().ColWidth(At(keys::kExplain)), 123 * 15);
  RowOf(dialog, QStringLiteral("摘要"))->setText(1, QStringLiteral("wide"));
  Settle();
  EXPECT_EQ(grid().ColWidth(At(keys::kExplain)), 123 * 15);
  EXPECT_EQ(RowOf(dialog, QStringLiteral("摘要"))->text(1).toStdString(), "123");
}

TEST_F(Columns, TheListMovesAndFreezesThemByItsButtons) {
  OpenFirst();
  ColumnDialog& dialog = Dialog();
  ASSERT_LT(At(keys::kBillKind), At(keys::kExplain));
  dialog.list().setCurrentItem(RowOf(dialog, QStringLiteral("摘要")));
  Press(dialog, QStringLiteral("上移"));
  Settle();
  EXPECT_GT(At(keys::kBillKind), At(keys::kExplain));
  EXPECT_EQ(dialog.list().currentItem()->text(0).toStdString(), "摘要") << "the row stays the current one";
  Press(dialog, QStringLiteral("冻结到此列"));
  EXPECT_EQ(grid().FrozenCols(), At(keys::kExplain));
  Press(dialog, QStringLiteral("取消冻结"));
  EXPECT_EQ(grid().FrozenCols(), 0);
  Press(dialog, QStringLiteral("撤销"));
  Press(dialog, QStringLiteral("撤销"));
  Press(dialog, QStringLiteral("撤销"));
  EXPECT_LT(At(keys::kBillKind), At(keys::kExplain));
}

TEST_F(Columns, OfTheSecondUnitHaveAsManyDecimalsAsThoseOfTheFirst) {
  Open();
  JournalOptions options;
  options.key_id = 1;
  options.allow_qty2 = true;
  ASSERT_TRUE(window_->LoadJournal(options).loaded);
  for (int row = grid().FixedRows(); row < grid().Rows(); ++row) {
    const std::string text = grid().DisplayText(row, At(keys::kQuantity2));
    if (text.empty() || text.find('\n') != std::string::npos) continue;
    EXPECT_EQ(text.size() - text.find('.'), 3U) << text;
  }
}

TEST_F(Columns, TheCaptionOfAPeriodIsAsHighAsItsOneLine) {
  OpenFirst();
  const int caption = grid().NextSubtotal(grid().FixedRows());
  const int total = grid().NextSubtotal(caption + 1);
  const int line = caption + 1;
  EXPECT_EQ(grid().RowHeight(caption), grid().RowHeight(line));
  EXPECT_EQ(grid().RowHeight(total), 2 * grid().RowHeight(line)) << "totals have two lines";
  Item(QStringLiteral("默认格式(&D)"))->trigger();
  EXPECT_EQ(grid().RowHeight(caption), grid().RowHeight(line));
}

TEST_F(Columns, TheRightButtonOnTheCornerOpensTheMenuOfTheLayout) {
  OpenFirst();
  QWidget* view = stockbook().viewport();
  const QPointF corner(2, 2);
  QMouseEvent press(QEvent::MouseButtonPress, corner, view->mapToGlobal(corner), Qt::RightButton, Qt::RightButton,
                    Qt::NoModifier);
  QApplication::sendEvent(view, &press);
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  EXPECT_TRUE(menu->actions().contains(Item(QStringLiteral("列设置(&C)..."))));
  menu->close();
}

TEST_F(Columns, TheRightButtonBesideThemOpensTheMenuOfTheLayout) {
  OpenFirst();
  columns().Hide(At(keys::kStoAcc));
  const sheet::GridSheet& sheet = stockbook().sheet();
  const int right = sheet.view().geometry().CellsRect().right();
  QWidget* view = stockbook().viewport();
  ASSERT_LT(right + 10, view->width());
  const int row = grid().Row();
  const QPointF beside(right + 10, view->height() / 2.0);
  QMouseEvent press(QEvent::MouseButtonPress, beside, view->mapToGlobal(beside), Qt::RightButton, Qt::RightButton,
                    Qt::NoModifier);
  QApplication::sendEvent(view, &press);
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  EXPECT_TRUE(menu->actions().contains(Item(QStringLiteral("列设置(&C)..."))));
  EXPECT_EQ(grid().Row(), row);
  menu->close();
}

}  // namespace
}  // namespace stockbook::app
