// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <memory>
#include <optional>

#include "journal/subject_keys.h"
#include "platform/connection.h"
#include "qt/stockbook_widget.h"
#include "stockbook/command/journal_options.h"
#include "stockbook/window/column_memory.h"
#include "stockbook/window/journal_desk.h"

namespace stockbook::app {

// The journal in the window: loads it, restores what the user has done to the columns, returns to the place in it when
// it is the same one again, and puts the old one back where another one cannot be loaded.
class ShownJournal : public QObject {
  Q_OBJECT

 public:
  explicit ShownJournal(qt::StockbookWidget& stockbook);

  // From now on journals are read from there.
  void SetConnection(std::shared_ptr<platform::Connection> connection);
  platform::Connection* connection() const { return connection_.get(); }
  // Does nothing without a connection and inside of a load.
  LoadReport Load(const JournalOptions& options);
  bool IsLoading() const { return loading_; }
  // The options of the journal in the grid.
  const std::optional<JournalOptions>& options() const { return shown_; }

 private:
  void TakeLayout();
  bool PutBackShown(const LoadReport& failed, const journal::SubjectKeys& keys);
  void GoToFirstCell();

  qt::StockbookWidget& stockbook_;
  std::shared_ptr<platform::Connection> connection_;
  bool loading_ = false;
  bool laid_out_ = false;  // the load laid the columns out
  std::optional<JournalOptions> shown_;
  ColumnMemory columns_;
};

}  // namespace stockbook::app
