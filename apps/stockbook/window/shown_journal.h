// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "stockbook/command/journal_options.h"
#include "stockbook/platform/connection.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/window/column_memory.h"
#include "stockbook/window/journal_columns.h"
#include "stockbook/window/journal_desk.h"

namespace stockbook::app {

// Whether the two are of the same subject, whatever they show of it.
bool IsSameJournal(const JournalOptions& left, const JournalOptions& right);

// The journal in the window: loads it, restores what the user has done to the columns, and returns to the place in it
// when it is the same one again. Where another one is not loaded the old one is as it was, with its place and its
// folds. Each journal type has columns of its own.
class ShownJournal : public QObject {
  Q_OBJECT

 public:
  ShownJournal(qt::StockbookWidget& stockbook, JournalColumns& columns);

  // From now on journals are read from there, and none is shown.
  void SetConnection(std::shared_ptr<platform::Connection> connection);
  platform::Connection* connection() const { return connection_.get(); }
  // What reads a journal into the control; unless another one is set, app::LoadJournal.
  // It calls the other one when the rows are there; a load may still fail or be cancelled after it.
  using Loader = std::function<LoadReport(const JournalOptions&, const std::function<void()>& arrange)>;
  void SetLoader(Loader loader) { loader_ = std::move(loader); }
  // Does nothing without a connection and inside of a load.
  LoadReport Load(const JournalOptions& options);
  bool IsLoading() const { return loading_; }
  // The options of the journal in the grid.
  const std::optional<JournalOptions>& options() const { return shown_; }
  // What is shown of it now.
  void SetRange(const JournalRange& range) {
    if (shown_.has_value()) shown_->range = range;
  }

  // What the user has changed of the columns of a journal type, up to now.
  ColumnChanges ChangesOf(int journal_type);
  // For the journals of the type that are loaded from now on.
  void SetChanges(int journal_type, ColumnChanges changes);

 signals:
  // The journal in the grid is about to be replaced or loaded again; there may be none.
  void Leaving();
  // A load is over; options() says what is in the grid now.
  void Arrived(bool loaded);

 private:
  void ShowNone();
  void TakeLayout();
  void LearnColumns();
  void ArrangeColumns();
  void GoToFirstCell();

  qt::StockbookWidget& stockbook_;
  std::shared_ptr<platform::Connection> connection_;
  Loader loader_;
  bool loading_ = false;
  bool laid_out_ = false;  // the load laid the columns out
  std::optional<JournalOptions> shown_;
  JournalColumns& columns_;
  std::map<int, ColumnMemory> memories_;  // by journal type
};

}  // namespace stockbook::app
