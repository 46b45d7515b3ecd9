// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>
#include <optional>

#include "stockbook/command/journal_options.h"
#include "stockbook/inventory/inventory_bill.h"
#include "stockbook/platform/connection.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/window/bill_dialog.h"
#include "stockbook/window/journal_desk.h"
#include "stockbook/window/notice_bar.h"
#include "stockbook/window/reading_place.h"

namespace stockbook::app {

// The way from a line of a journal to its whole bill, from a line of that to the journal of its product, and back. The
// bill is read from the inventory, so that it is whole whatever the journal shows of it. A bar leads back to the bill
// and to the journal from which it was opened, at the place that was left.
class BillTrail : public QObject {
  Q_OBJECT

 public:
  // What it needs of the window.
  struct Host {
    qt::StockbookWidget& stockbook;
    NoticeBar& bar;
    std::function<std::optional<JournalOptions>()> shown;  // the journal in the grid
    std::function<LoadReport(const JournalOptions&)> load;
    std::function<platform::Connection*()> connection;
  };
  explicit BillTrail(Host host, QWidget* window);

  // The bill of the current row; tells if there is none, or if it cannot be read.
  void Show();
  // To the bill that the last journal was opened from, if there is one.
  void GoBack();
  // Another inventory has other bills.
  void Forget();
  bool CanGoBack() const { return came_from_.has_value(); }

 signals:
  void Told(const QString& message);

 private:
  struct Origin {
    JournalOptions journal;
    ReadingPlace place;
    BillSide side;
    int32_t bill_id;
    QString number;
    int line;
  };

  BillSide SideOf(int row) const;
  // The bill as it is in the inventory now; nothing, and told, where there is none or it cannot be read.
  std::optional<InventoryBill> Read(BillSide side, int32_t bill_id);
  void Open(const InventoryBill& bill, int line);
  void FollowLine(int line);
  int FindLine(const BillView& bill, const BillLine& line) const;

  Host host_;
  QWidget* window_;
  QPointer<BillDialog> dialog_;
  BillSide shown_side_ = BillSide::kReceipt;  // of the bill in the dialog
  int32_t shown_id_ = 0;
  std::optional<Origin> came_from_;
};

}  // namespace stockbook::app
