// SPDX-License-Identifier: MIT
#include "stockbook/command/journal_export.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "stockbook/columns/column_builder.h"

namespace stockbook::app {
namespace {

constexpr int kLines = 40'000;  // several parts for two threads, and a rest

// Total rows between the lines; a remark that some lines have makes `bytes` of text of each.
void FillSheet(sheet::GridSheet& sheet, size_t bytes) {
  columns::ColumnBuilder numbers;
  columns::ColumnBuilder remarks;
  const std::string remark(bytes, 'r');
  for (int line = 0; line < kLines; ++line) {
    numbers.AppendInteger(line);
    if (line % 3 == 0) {
      remarks.AppendNull();
    } else {
      remarks.AppendText(line % 3 == 1 ? remark : "a \"b\", c");
    }
  }
  sheet.SetRows(1);
  sheet.SetCols(1);
  std::vector<columns::Column> loaded;
  loaded.push_back(numbers.Finish());
  loaded.push_back(remarks.Finish());
  sheet.LoadColumns(std::move(loaded), 1);
  sheet.SetTextMatrix(0, 1, "号");
  sheet.SetTextMatrix(0, 2, "备注,");
  for (const int row : {1, 5000, 8193, 8194, 16385, 30000}) {
    sheet.AddItem("", row);
    sheet.SetTextMatrix(row, 2, "合计\n=1");
  }
}

std::string Quoted(const std::string& text) {
  if (text.find_first_of(",\"\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? "\"\"" : std::string(1, c);
  return quoted + "\"";
}

// Cell by cell, as the window shows them.
std::string Expected(const sheet::GridSheet& sheet) {
  std::string text = ",号,\"备注,\"\n";
  for (int row = 1; row < sheet.Rows(); ++row)
    text +=
        sheet.DisplayText(row, 0) + "," + sheet.DisplayText(row, 1) + "," + Quoted(sheet.DisplayText(row, 2)) + "\n";
  return text;
}

TEST(JournalExport, WritesLongJournalsInTheirOrder) {
  sheet::GridSheet sheet;
  FillSheet(sheet, 5);
  std::ostringstream out;
  WriteSeparated(sheet, ExportColumns::kAll, ',', out);
  EXPECT_TRUE(out.str() == Expected(sheet));
}

// A part holds some megabytes, and ten of these parts would be more.
TEST(JournalExport, WritesLongTextsThatDoNotFitIntoAPart) {
  sheet::GridSheet sheet;
  FillSheet(sheet, 3000);
  std::ostringstream out;
  WriteSeparated(sheet, ExportColumns::kAll, ',', out);
  EXPECT_TRUE(out.str() == Expected(sheet));
}

TEST(JournalExport, LeavesOutRowsThatAreHiddenAndKeepsClosedPeriods) {
  sheet::GridSheet sheet;
  FillSheet(sheet, 5);
  const std::string all = Expected(sheet);
  sheet.SetIsSubtotal(8193, true);
  for (int row = 8194; row < 8200; ++row) sheet.SetRowOutlineLevel(row, 1);
  sheet.SetIsCollapsed(8193, true);
  ASSERT_TRUE(sheet.RowHidden(8195));
  sheet.SetRowsHidden(1, 101, true);
  sheet.SetRowsHidden(sheet.Rows() - 50, sheet.Rows(), true);
  std::ostringstream out;
  WriteSeparated(sheet, ExportColumns::kAll, ',', out);
  std::string expected = ",号,\"备注,\"\n";
  for (int row = 101; row < sheet.Rows() - 50; ++row)
    expected +=
        sheet.DisplayText(row, 0) + "," + sheet.DisplayText(row, 1) + "," + Quoted(sheet.DisplayText(row, 2)) + "\n";
  EXPECT_TRUE(out.str() == expected);
  EXPECT_LT(out.str().size(), all.size());
}

}  // namespace
}  // namespace stockbook::app
