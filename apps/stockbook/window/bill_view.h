// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <cstddef>
#include <utility>
#include <vector>

#include "journal/restricted_amounts.h"
#include "stockbook/inventory/inventory_bill.h"

namespace stockbook::app {

// One bill as it is shown and printed: what is said of it as a whole, and its lines with the columns that are not empty
// and their totals. Numbers look as in the journal.
struct BillView {
  struct Column {
    QString caption;
    bool is_number = false;
  };
  struct Line {
    BillLine record;
    std::vector<QString> texts;  // one a column
  };

  QString kind;
  QString number;
  // Date, partner, depot, and who entered and audited it, each with its label.
  std::vector<std::pair<QString, QString>> facts;
  std::vector<Column> columns;
  std::vector<Line> lines;
  // A row of texts, one a column, for all lines; for a transfer one for the issues and one for the receipts.
  std::vector<std::vector<QString>> totals;
  // Of columns and totals, as in the journal.
  journal::AmountTexts amounts = journal::AmountTexts::kShown;
};

BillView ViewOfBill(const InventoryBill& bill, journal::AmountTexts amounts);

}  // namespace stockbook::app
