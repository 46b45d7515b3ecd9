// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QAccessible>
#include <string>
#include <vector>

#include "qt/application.h"
#include "qt/sheet/accessible_grid.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/view/view.h"
#include "support/fake_connection.h"
#include "support/journal_rows.h"
#include "support/sample_ledger.h"

namespace stockbook::qt {

using testing::SampleLedger;

inline constexpr int kPeriods = 3;
inline constexpr int kLines = 10;
inline constexpr int kGroup = kLines + 2;  // with the node above and the total below
inline constexpr int kFirstNode = 1;
inline constexpr int kFirstLine = 2;
// One column of the ledger is fixed and one hidden.
inline constexpr int kColumns = testing::kLedgerColumns - 2;
inline constexpr int kBill = 0;
inline constexpr int kRevQty = 3;

// A ledger in a window, examined only through the interface that a screen reader uses.
class AccessibleTable : public WithApplication {
 protected:
  explicit AccessibleTable(QAccessible::UpdateHandler tell = &QAccessible::updateAccessibility) {
    SampleLedger({kPeriods, kLines}).Fill(sheet_);
    view_ = std::make_unique<SheetWidget>(sheet_.view(), nullptr, tell);
    view_->resize(700, 300);
    view_->show();
    view_->activateWindow();
    view_->setFocus();
    QApplication::processEvents();
  }

  QAccessibleInterface* Grid() { return QAccessible::queryAccessibleInterface(view_.get()); }
  QAccessibleTableInterface* Table() { return Grid()->tableInterface(); }
  QAccessibleInterface* Cell(int row, int column) { return Table()->cellAt(row, column); }
  static std::string Name(const QAccessibleInterface* cell) { return cell->text(QAccessible::Name).toStdString(); }

  sheet::GridSheet sheet_;
  std::unique_ptr<SheetWidget> view_;
};

}  // namespace stockbook::qt
