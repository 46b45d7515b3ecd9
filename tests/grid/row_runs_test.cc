// SPDX-License-Identifier: MIT
#include "grid/row_runs.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "stockbook/columns/column_builder.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::grid {
namespace {

void LoadRecords(sheet::GridSheet& sheet, int count) {
  columns::ColumnBuilder column;
  for (int record = 0; record < count; ++record) column.AppendInteger(record);
  std::vector<columns::Column> columns;
  columns.push_back(column.Finish());
  sheet.LoadColumns(std::move(columns), 1);
}

// "first record+count" of each run, "-" for an inserted row.
std::string RunsOf(const sheet::GridSheet& sheet) {
  std::string runs;
  int row = sheet.FixedRows();
  for (RowRun run = RowRunAt(sheet, row); run.count > 0; run = RowRunAt(sheet, run.End())) {
    EXPECT_EQ(run.row, row);
    row = run.End();
    runs += (runs.empty() ? "" : " ") +
            (run.IsInserted() ? "-" : std::to_string(run.record) + "+" + std::to_string(run.count));
  }
  EXPECT_EQ(row, sheet.Rows());
  return runs;
}

TEST(RowRuns, AreOneRunOfRecordsWhereNothingWasInserted) {
  sheet::GridSheet sheet;
  LoadRecords(sheet, 1000);
  EXPECT_EQ(RunsOf(sheet), "0+1000");
}

TEST(RowRuns, AreNoneInAGridWithoutDataRows) {
  sheet::GridSheet sheet;
  EXPECT_EQ(RunsOf(sheet), "");
  EXPECT_EQ(RowRunAt(sheet, -1).count, 0);
  EXPECT_EQ(RowRunAt(sheet, 99).count, 0);
}

TEST(RowRuns, GiveEveryInsertedRowByItself) {
  sheet::GridSheet sheet;
  LoadRecords(sheet, 10);
  sheet.AddItem("total", sheet.Rows());
  sheet.AddItem("below", 5);
  sheet.AddItem("above", 5);
  sheet.AddItem("opening", 1);
  EXPECT_EQ(RunsOf(sheet), "- 0+4 - - 4+6 -");
}

TEST(RowRuns, EndWhereARecordWasTakenOut) {
  sheet::GridSheet sheet;
  LoadRecords(sheet, 10);
  sheet.RemoveItem(4);
  EXPECT_EQ(RunsOf(sheet), "0+3 4+6");
  sheet.RemoveItem(1);
  sheet.RemoveItem(sheet.Rows() - 1);
  EXPECT_EQ(RunsOf(sheet), "1+2 4+5");
}

TEST(RowRuns, BeginInTheMiddleOfARunToo) {
  sheet::GridSheet sheet;
  LoadRecords(sheet, 10);
  sheet.AddItem("total", 8);
  const RowRun run = RowRunAt(sheet, 3);
  EXPECT_EQ(run.record, 2);
  EXPECT_EQ(run.count, 5);
}

TEST(RowRuns, CoverEveryRowAfterAnyInsertionsAndRemovals) {
  std::mt19937 random(7);
  for (int round = 0; round < 50; ++round) {
    sheet::GridSheet sheet;
    LoadRecords(sheet, 40);
    for (int step = 0; step < 25; ++step) {
      const int row = 1 + static_cast<int>(random() % static_cast<unsigned>(sheet.Rows() - 1));
      if (random() % 2 == 0) {
        sheet.AddItem("x", row);
      } else if (sheet.Rows() > 2) {
        sheet.RemoveItem(row);
      }
    }
    for (RowRun run = RowRunAt(sheet, 1); run.count > 0; run = RowRunAt(sheet, run.End())) {
      for (int at = 0; at < run.count; ++at) {
        ASSERT_EQ(sheet.RecordOfRow(run.row + at), run.IsInserted() ? -1 : run.record + at);
      }
      const bool follows = run.record >= 0 && sheet.RecordOfRow(run.End()) == run.record + run.count;
      EXPECT_FALSE(follows) << "the run could be longer";
    }
  }
}

TEST(UneditedColumn, IsTheLoadedOneUntilACellIsWritten) {
  sheet::GridSheet sheet;
  LoadRecords(sheet, 3);
  sheet.AddItem("inserted", 1);
  EXPECT_EQ(UneditedColumn(sheet, 0), nullptr) << "nothing was loaded there";
  ASSERT_NE(UneditedColumn(sheet, 1), nullptr);
  EXPECT_EQ(UneditedColumn(sheet, 1)->Text(2), "2");
  sheet.SetTextMatrix(1, 1, "of no record");
  EXPECT_NE(UneditedColumn(sheet, 1), nullptr);
  sheet.SetTextMatrix(3, 1, "other");
  EXPECT_EQ(UneditedColumn(sheet, 1), nullptr);
  EXPECT_EQ(UneditedColumn(sheet, 99), nullptr);
}

}  // namespace
}  // namespace stockbook::grid
