// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QObject>
#include <functional>
#include <optional>
#include <vector>

#include "stockbook/window/reading_place.h"
#include "stockbook/window/shown_journal.h"
#include "stockbook/window/window_menus.h"

namespace stockbook::app {

// The journals that were shown one after the other, each with the place in it, to go back to and forward again.
class JournalHistory : public QObject {
  Q_OBJECT

 public:
  using LoadJournal = std::function<LoadReport(const JournalOptions&)>;

  // `load` shows another journal.
  JournalHistory(qt::StockbookWidget& stockbook, ShownJournal& journal, WindowMenus& menus, LoadJournal load);

  void Back() { Go(back_, forward_); }
  void Forward() { Go(forward_, back_); }
  // Another inventory has other journals.
  void Clear();

 private:
  struct Stop {
    JournalOptions options;
    ReadingPlace place;
  };

  void Leave();
  void Arrive(bool loaded);
  void Go(std::vector<Stop>& from, std::vector<Stop>& to);
  void Follow();

  qt::StockbookWidget& stockbook_;
  ShownJournal& journal_;
  LoadJournal load_;
  std::optional<Stop> left_;  // by the present load
  std::vector<Stop> back_;
  std::vector<Stop> forward_;
  bool going_ = false;
  QAction* back_item_;
  QAction* forward_item_;
};

}  // namespace stockbook::app
