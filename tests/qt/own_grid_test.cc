// SPDX-License-Identifier: MIT
// A widget without a host's view has a grid of its own.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <QWidget>

#include "qt/application.h"
#include "stockbook/platform/error.h"
#include "stockbook/qt/fonts.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::qt {
namespace {

class OwnGrid : public WithApplication {};

TEST_F(OwnGrid, IsShownByAWidgetThatIsMadeWithoutAView) {
  QWidget window;
  auto* const widget = new SheetWidget(&window);  // the window owns it
  EXPECT_EQ(widget->parentWidget(), &window);
  EXPECT_EQ(&widget->view(), &widget->grid().view());
  EXPECT_EQ(&widget->sheet(), &widget->grid());
  EXPECT_EQ(widget->grid().GridFont(), GridFontFor(widget->font()));
  widget->grid().SetRows(40);
  EXPECT_EQ(widget->sheet().Rows(), 40);
}

TEST_F(OwnGrid, CopiesToTheDesktopsClipboard) {
  SheetWidget widget;
  widget.grid().SetRows(5);
  widget.grid().SetCols(3);
  widget.grid().SetTextMatrix(1, 1, "a text of the grid");
  widget.grid().Select(1, 1);
  widget.resize(300, 200);
  widget.show();
  QTest::keyClick(&widget, Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(QApplication::clipboard()->text().contains("a text of the grid"));
}

TEST_F(OwnGrid, IsNotToBeHadFromAWidgetOverTheViewOfAHost) {
  sheet::GridSheet sheet;
  const SheetWidget widget(sheet.view());
  EXPECT_THROW(widget.grid(), platform::Error);
}

}  // namespace
}  // namespace stockbook::qt
