// SPDX-License-Identifier: MIT
// The grid engine on its own, without the stock journal and without a database: a cash book of 100,000 lines grouped by
// month. `grid_only` opens it in a window; `grid_only --picture FILE` writes one picture of it and exits.
#include <QApplication>
#include <cstdio>
#include <string>
#include <vector>

#include "stockbook/columns/column.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/sheet/grid_sheet.h"

namespace sb = stockbook;

enum { kLine, kMonth, kDate, kText, kIn, kOut, kBalance, kColumns };

std::vector<sb::columns::Column> MakeCashBook(int lines) {
  static const char* const kTexts[] = {"Sales over the counter", "Rent", "Wages", "Screws and bolts", "Postage"};
  std::vector<sb::columns::ColumnBuilder> book(kColumns);
  int64_t balance = 500 * 10000;  // money is counted in ten-thousandths
  for (int line = 0; line < lines; ++line) {
    const int day = static_cast<int>(int64_t{line} * 36 * 28 / lines);
    char date[48];
    std::snprintf(date, sizeof date, "%d-%02d-%02d", 2023 + day / 336, day / 28 % 12 + 1, day % 28 + 1);
    const int text = line * 7 % 5;
    const int64_t amount = (line * 7919LL % 90000 + 100) * (text == 0 ? 340 : -100);
    balance += amount;
    book[kLine].AppendInteger(line + 1);
    book[kMonth].AppendText(std::string(date, 7));
    book[kDate].AppendText(date);
    book[kText].AppendText(kTexts[text]);
    amount > 0 ? book[kIn].AppendMoney(sb::base::Money::FromUnits(amount)) : book[kIn].AppendNull();
    amount < 0 ? book[kOut].AppendMoney(sb::base::Money::FromUnits(-amount)) : book[kOut].AppendNull();
    book[kBalance].AppendMoney(sb::base::Money::FromUnits(balance));
  }
  std::vector<sb::columns::Column> columns;
  for (sb::columns::ColumnBuilder& column : book) columns.push_back(column.Finish());
  return columns;
}

void Fill(sb::sheet::GridSheet& sheet) {
  const struct {
    const char* caption;
    int width_px;
  } looks[] = {{"", 56}, {"Month", 80}, {"Date", 130}, {"Text", 220}, {"In", 110}, {"Out", 110}, {"Balance", 120}};
  sheet.LoadColumns(MakeCashBook(100000), 0);
  for (int column = 0; column < kColumns; ++column) {
    sheet.SetTextMatrix(0, column, looks[column].caption);
    sheet.SetColWidth(column, looks[column].width_px * 15);  // twips
    if (column >= kIn) sheet.SetColFormat(column, "#,##0.00");
  }
  sheet.SetColHidden(kMonth, true);
  sheet.SetOutlineCol(kDate);
  sheet.GroupBy(kMonth, kDate, "%s");
  sheet.SetFrozenCols(kDate);  // up to and including this column
  sheet.Select(1, kDate);
}

int main(int count, char** arguments) {
  const QApplication application(count, arguments);
  sb::qt::SheetWidget view;
  Fill(view.grid());
  view.setWindowTitle("Cash book");
  view.resize(780, 480);
  view.show();
  QApplication::processEvents();
  if (count == 3 && std::string(arguments[1]) == "--picture") return view.grab().save(arguments[2]) ? 0 : 1;
  return QApplication::exec();
}
