// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "sheet/input/keyboard.h"
#include "sheet/input/mouse.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/sheet/view/viewer.h"

namespace stockbook::sheet::test {

// A viewer that keeps up with nothing.
class IdleViewer : public SheetViewer {
 public:
  void Damaged(const Rect& /*area*/) override {}
  void ScrollChanged() override {}
  void CursorChanged(Cursor /*cursor*/) override {}
};

// A sheet with keyboard and mouse: columns of 100 pixels after a fixed one of 30, rows of 20, and a view of 430 by 220
// pixels, which shows four columns and ten rows below the captions.
class SheetInView : public ::testing::Test {
 protected:
  explicit SheetInView(std::vector<columns::Column> columns) {
    sheet.LoadColumns(std::move(columns), 1);
    sheet.SetColWidth(0, 450);
    for (int column = 1; column < sheet.Cols(); ++column) sheet.SetColWidth(column, 1500);
    sheet.view().SetSize({430, 220}, 1.0);
  }

  GridSheet sheet;
  Keyboard keyboard{sheet.view()};
  Mouse mouse{sheet.view()};
};

}  // namespace stockbook::sheet::test
