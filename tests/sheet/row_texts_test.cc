// SPDX-License-Identifier: MIT
#include "sheet/contents/row_texts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "stockbook/columns/column_builder.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

// More records than are read at once, with rows inserted before, between and after them, one hidden and one removed.
TEST(RowTexts, AreThoseThatTheCellsShow) {
  constexpr int kRecords = 700;
  columns::ColumnBuilder names;
  columns::ColumnBuilder amounts;
  for (int record = 0; record < kRecords; ++record) {
    if (record % 5 == 0) {
      names.AppendNull();
    } else if (record % 5 == 1) {
      names.AppendText("");
    } else
      names.AppendText("货 " + std::to_string(record % 7));
    amounts.AppendMoney(base::Money::FromUnits(record * 12345));
  }
  GridSheet sheet;
  sheet.SetRows(1);
  sheet.SetCols(1);
  std::vector<columns::Column> loaded;
  loaded.push_back(names.Finish());
  loaded.push_back(amounts.Finish());
  sheet.LoadColumns(std::move(loaded), 1);
  sheet.SetColFormat(2, "#,##0.00");
  for (const int row : {1, 300, 301, sheet.Rows()}) {
    sheet.AddItem("", row);
    sheet.SetTextMatrix(row, 1, "合计");
    sheet.SetTextMatrix(row, 2, "1\n2");
  }
  sheet.SetTextMatrix(40, 2, "1234.5");
  sheet.SetRowHidden(50, true);
  sheet.RemoveItem(260);
  const std::vector<int> columns = {2, 1};
  int row = 1;
  RowTexts(sheet, columns).ForEachRow(1, sheet.Rows(), [&](std::span<const std::string_view> texts) {
    EXPECT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0], sheet.DisplayText(row, 2)) << row;
    EXPECT_EQ(texts[1], sheet.DisplayText(row, 1)) << row;
    for (const std::string_view text : texts) {
      const std::string with_slack(text.data(), text.size() + RowTexts::kSlack);
      EXPECT_TRUE(with_slack.starts_with(text));
    }
    ++row;
    return true;
  });
  EXPECT_EQ(row, sheet.Rows());
  RowTexts(sheet, columns).ForEachRow(250, 252, [&](std::span<const std::string_view> texts) {
    EXPECT_EQ(texts[1], sheet.DisplayText(row - sheet.Rows() + 250, 1));
    ++row;
    return true;
  });
  EXPECT_EQ(row, sheet.Rows() + 2);
  for (const int last : {1, 5, 290, 299, 300, 301, 302, 600}) {
    int taken = 0;
    EXPECT_EQ(RowTexts(sheet, columns).ForEachRow(1, sheet.Rows(), [&](auto) { return ++taken < last; }), last + 1);
    EXPECT_EQ(taken, last);
  }
}

}  // namespace
}  // namespace stockbook::sheet
