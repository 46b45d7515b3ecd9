// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/journal_rows.h"

namespace stockbook::testing {

// Ten receipts and issues in two periods. Loaded, row 1 is the opening row, row 2 the node of 2004-03, rows 3 to 8 its
// lines, row 9 their total, row 10 the node of 2004-04, rows 11 to 14 its lines and row 15 their total. The line at row
// r has the bill 1000 + r and the record 80 + r; the one at row 5 is from the opening stock, the one at row 6 from a
// receipt, and the one at row 7 has no bill.
inline std::shared_ptr<FakeConnection> SmallJournal() {
  std::vector<JournalLine> lines;
  for (int row = 3; row <= 14; ++row) {
    if (row == 9 || row == 10) continue;
    JournalLine line;
    line.period = row < 9 ? "2004-03" : "2004-04";
    line.bill_no = (row % 2 == 0 ? "出库单 " : "入库单 ") + std::to_string(row);
    line.flag = row % 2 == 0 ? 1 : 0;
    line.quantity = row;
    line.amount = std::to_string(row * 10);
    line.bill_name = row % 2 == 0 ? "出库单" : "入库单";
    line.bill_id = row == 7 ? 0 : 1000 + row;
    line.rec_id = 80 + row;
    line.other_id = row == 5 ? -3 : row == 6 ? 83 : 0;
    lines.push_back(line);
  }
  auto connection = std::make_shared<FakeConnection>();
  AnswerJournal(*connection, lines);
  connection->Answer("SELECT 仓库余额表.*", {"仓库名称", "年份", "月份"}, {{Text("总库"), Whole(2005), Whole(1)}});
  connection->Answer(
      "SELECT d.BillID", {"BillID", "BillDate", "BillName", "BillNo", "DepotName"},
      {{Whole(1), base::Value(*base::Date::Parse("2005-03-08")), Text("采购入库"), Text("12"), Text("总库")}});
  return connection;
}

}  // namespace stockbook::testing
