// SPDX-License-Identifier: MIT
// The smallest program with a grid, as docs/grid.md prints it.
#include <QApplication>
#include <string>
#include <utility>
#include <vector>

#include "stockbook/columns/column_builder.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/sheet/grid_sheet.h"

int main(int count, char** arguments) {
  const QApplication application(count, arguments);
  std::vector<stockbook::columns::ColumnBuilder> book(3);
  for (int line = 0; line < 100000; ++line) {
    book[0].AppendInteger(line + 1);
    book[1].AppendText("2026-0" + std::to_string(line / 20000 + 1));
    book[2].AppendDouble(line * 7919 % 100000 / 100.0);
  }
  std::vector<stockbook::columns::Column> columns;
  for (auto& column : book) columns.push_back(column.Finish());

  stockbook::qt::SheetWidget widget;
  stockbook::sheet::GridSheet& grid = widget.grid();
  grid.LoadColumns(std::move(columns), 0);  // typed columns, taken over by moving
  grid.SetTextMatrix(0, 1, "Month");        // row 0 is the caption
  grid.SetTextMatrix(0, 2, "Amount");
  grid.SetColFormat(2, "#,##0.00");
  grid.SetColWidth(2, 1800);  // twips: 15 are a pixel
  grid.GroupBy(1, 1, "%s");   // a node above every run of equal months
  grid.SetOutlineCol(1);
  widget.show();
  return QApplication::exec();
}
