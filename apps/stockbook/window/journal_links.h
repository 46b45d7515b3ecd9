// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <functional>

#include "stockbook/window/shown_journal.h"
#include "stockbook/window/window_menus.h"

namespace stockbook::app {

// The ways from the current row to another one: from one side of a transfer to the other, from an issue to the receipt
// that it was drawn from, and to the journals of the row's product, partner and project. Where the journal does not
// have the other row, that of the product in all depots is loaded.
class JournalLinks : public QObject {
  Q_OBJECT

 public:
  using LoadJournal = std::function<LoadReport(const JournalOptions&)>;

  JournalLinks(qt::StockbookWidget& stockbook, ShownJournal& journal, WindowMenus& menus, LoadJournal load);

  void GoToSource();
  void GoToOtherSide();
  void GoToProduct();
  void GoToPartner();
  void GoToProject();

 signals:
  // Why there is nowhere to go.
  void Told(const QString& message);

 private:
  // A line of the journal, as it is found again.
  struct Line {
    int64_t record = 0;  // RecID; 0 is any
    int64_t flag = 0;    // 0 a receipt, 1 an issue
    int64_t product = 0;
    std::string bill_name;  // "" is any
    std::string bill_no;
    std::string quantity;
  };

  std::string CurrentText(const char* key) const;
  int64_t CurrentNumber(const char* key) const;
  int Find(const Line& wanted) const;
  void GoTo(const Line& wanted, const QString& missing);
  // False, with a message of its own, if it could not be loaded.
  bool Load(int journal_type, int64_t key, int64_t second);

  qt::StockbookWidget& stockbook_;
  ShownJournal& journal_;
  LoadJournal load_;
};

}  // namespace stockbook::app
