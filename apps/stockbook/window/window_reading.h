// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "stockbook/command/journal_options.h"
#include "stockbook/inventory/database_source.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/window/bill_trail.h"
#include "stockbook/window/journal_loader.h"
#include "stockbook/window/load_strip.h"
#include "stockbook/window/shown_journal.h"
#include "stockbook/window/window_menus.h"

namespace stockbook::app {

// All that a window reads of an inventory, beside the interface: journals, and the whole bills of their lines. Its
// strip says what is being read, what failed and what others have changed. Becomes the loader of the journal in the
// window.
class WindowReading : public QObject {
  Q_OBJECT

 public:
  // What it needs of the window. `load` also shows the options in the chooser.
  struct Host {
    QWidget& window;
    qt::StockbookWidget& stockbook;
    ShownJournal& journal;
    WindowMenus& menus;
    std::function<LoadReport(const JournalOptions&)> load;
  };
  explicit WindowReading(const Host& host);

  // An inventory that can be read beside the interface. Throws platform::Error if it cannot be opened, or lacks tables.
  // Opening may take its time, too: a server is far away, a desktop file is copied.
  std::shared_ptr<PrefetchedConnection> Open(DatabaseSource& source, const AskPassword& ask);
  // From now on this one is read, which was opened last, from `source`. Where another file takes the place of its own
  // the next load opens that one, and asks again.
  void Use(const std::shared_ptr<PrefetchedConnection>& opened, const DatabaseSource& source, const AskPassword& ask);
  // In a dialog, since a line at the foot of the window is easily overlooked.
  void TellThatItCannotBeOpened(const QString& path, const QString& reason);

  LoadStrip& strip() { return *strip_; }
  JournalLoader& loader() { return loader_; }
  BillTrail& trail() { return *trail_; }

 signals:
  void Told(const QString& message);
  // What is read is another file of the same name.
  void Replaced();

 protected:
  // The user comes back to the window.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Attempt {
    JournalOptions options;
    LoadReport report;
  };

  std::shared_ptr<platform::Connection> OpenBeside(DatabaseSource& source, const AskPassword& ask);
  LoadReport Load(const JournalOptions& options, const std::function<void()>& arrange);
  void OpenAnewIfReplaced();
  void TellOutcome();

  Host host_;
  JournalLoader loader_;
  LoadStrip* strip_;  // owned by the window's layout
  BillTrail* trail_;
  std::shared_ptr<PrefetchedConnection> used_;
  DatabaseSource source_;  // of what is used
  AskPassword ask_;
  std::string identity_;            // of its file
  std::string opening_;             // of the file that was opened last
  std::optional<Attempt> attempt_;  // the first of the load that goes on: another one puts the old journal back
};

}  // namespace stockbook::app
