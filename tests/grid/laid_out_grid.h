// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "grid/column_layout.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::grid {

// A grid with the columns of the layout, one caption row and one fixed column.
class LaidOutGrid : public ::testing::Test {
 protected:
  LaidOutGrid() { Format(); }

  void Format() { ColumnLayout(sheet_, settings_, hidden_).FormatColumns("BillNo"); }
  void Put(int row, const char* key, const char* text) { sheet_.SetTextMatrix(row, sheet_.ColIndex(key), text); }
  std::string Get(int row, const char* key) { return sheet_.TextMatrix(row, sheet_.ColIndex(key)); }
  bool Hidden(const char* key) { return sheet_.ColHidden(sheet_.ColIndex(key)); }

  sheet::GridSheet sheet_;
  LayoutSettings settings_;
  HiddenKeys hidden_;
};

}  // namespace stockbook::grid
