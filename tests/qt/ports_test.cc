// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMenu>
#include <QTimer>
#include <cmath>
#include <functional>

#include "qt/application.h"
#include "qt/menu.h"
#include "stockbook/qt/clipboard.h"
#include "stockbook/qt/fonts.h"
#include "stockbook/qt/text_metrics.h"

namespace stockbook::qt {
namespace {

using Ports = WithApplication;

platform::MenuItem Item(const std::string& name, const std::string& caption) {
  platform::MenuItem item;
  item.name = name;
  item.caption = caption;
  return item;
}

platform::MenuItem SomeMenu() {
  platform::MenuItem separator;
  separator.separator = true;
  platform::MenuItem disabled = Item("mnuHiddenCol", "隐藏列(&H)");
  disabled.enabled = false;
  platform::MenuItem gone = Item("mnuDefault", "gone");
  gone.visible = false;
  platform::MenuItem field = Item("mnuField", "入库/出库\n数量");
  field.index = 7;
  field.checkable = true;
  field.checked = true;
  platform::MenuItem fields = Item("mnuFields", "字段显示(&l)");
  fields.items = {field};
  platform::MenuItem menu = Item("mnuHeader", "HeaderMenu");
  menu.items = {Item("mnuFrozen", "冻结列(&Z)"), separator, disabled, gone, fields};
  return menu;
}

// Opens the menu and passes it to `act`.
platform::MenuChoice PopUp(const std::function<void(QMenu&)>& act) {
  QtMenu menu(nullptr);
  QTimer::singleShot(0, [&] { act(*qobject_cast<QMenu*>(QApplication::activePopupWidget())); });
  return menu.PopUp(SomeMenu());
}

TEST_F(Ports, AMenuShowsItsItemsAndTellsTheChoice) {
  const platform::MenuChoice choice = PopUp([](QMenu& menu) {
    ASSERT_EQ(menu.actions().size(), 4);
    EXPECT_EQ(menu.actions()[0]->text().toStdString(), "冻结列(&Z)");
    EXPECT_TRUE(menu.actions()[1]->isSeparator());
    EXPECT_FALSE(menu.actions()[2]->isEnabled());
    menu.setActiveAction(menu.actions()[0]);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(&menu, &enter);
  });
  EXPECT_EQ(choice.name, "mnuFrozen");
  EXPECT_EQ(choice.index, 0);
}

TEST_F(Ports, AMenuTellsAChoiceFromItsSubmenu) {
  const platform::MenuChoice choice = PopUp([](QMenu& menu) {
    QMenu* fields = menu.actions()[3]->menu();
    ASSERT_NE(fields, nullptr);
    EXPECT_EQ(fields->actions()[0]->text().toStdString(), "入库/出库 数量");
    EXPECT_TRUE(fields->actions()[0]->isChecked());
    menu.setActiveAction(menu.actions()[3]);
    fields->setActiveAction(fields->actions()[0]);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(fields, &enter);
    menu.close();
  });
  EXPECT_EQ(choice.name, "mnuField");
  EXPECT_EQ(choice.index, 7);
}

TEST_F(Ports, AMenuThatIsClosedTellsNoChoice) {
  EXPECT_EQ(PopUp([](QMenu& menu) { menu.close(); }).name, "");
}

TEST_F(Ports, TheClipboardHoldsPlainText) {
  QtClipboard clipboard;
  clipboard.SetText("单据\t数量\r\nRK1\t1.00");
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "单据\t数量\r\nRK1\t1.00");
  clipboard.Clear();
  EXPECT_TRUE(QApplication::clipboard()->text().isEmpty());
}

TEST_F(Ports, TextIsMeasuredInWholePixelsOfFifteenTwips) {
  const QtTextMetrics metrics;
  const platform::Font font = DefaultGridFont();
  EXPECT_EQ(metrics.TwipsPerPixelY(), 15);
  const double height = metrics.TextHeightTwips("Tallomere", font);
  EXPECT_GT(height, 150);
  EXPECT_EQ(std::fmod(height, 15.0), 0);
  platform::Font large = font;
  large.size_pt = font.size_pt * 2;
  EXPECT_GT(metrics.TextHeightTwips("Tallomere", large), height * 1.7);
}

TEST_F(Ports, TheFirstGridFontHasChineseCharacters) {
  EXPECT_TRUE(QFontMetrics(ToQFont(DefaultGridFont(), 1)).inFontUcs4(U'库'));
}

}  // namespace
}  // namespace stockbook::qt
