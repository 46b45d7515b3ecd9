// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "stockbook/command/journal_options.h"
#include "stockbook/platform/connection.h"
#include "stockbook/qt/beside.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/window/journal_desk.h"
#include "stockbook/window/prefetched_connection.h"

namespace stockbook::app {

// Loads journals into a control that shows one already. The rows are read beside the interface and before the control
// is asked to load, so that the old journal stays in sight until the new one is there. The control then gets what was
// read, as of the moment at which it was; meanwhile the widget keeps the picture of the old journal, and whenever the
// load tells another progress the windows go on and Cancel is heard. Whoever asks for a load keeps the old journal and
// puts it back if the new one was not loaded.
class JournalLoader {
 public:
  explicit JournalLoader(qt::StockbookWidget& stockbook);

  // The connection to an inventory that was opened, so that it reads beside the interface.
  std::shared_ptr<PrefetchedConnection> Prepare(std::shared_ptr<platform::Connection> opened) const;
  // From now on journals are read from this inventory.
  void Use(std::shared_ptr<PrefetchedConnection> prepared) { connection_ = std::move(prepared); }

  // As app::LoadJournal; but a load that was cancelled, at whatever moment, is not loaded and its report says so. Where
  // the rows cannot be read the control is left unchanged, and the report has the error.
  // Without an inventory nothing happens.
  LoadReport Load(const JournalOptions& options, const std::function<void()>& arrange);

  // What reads beside the interface, for a bar that shows how far it is.
  qt::Beside& beside() { return *beside_; }

 private:
  LoadReport HandOver(const std::shared_ptr<PrefetchedConnection>& connection, const JournalOptions& options,
                      const std::function<void()>& arrange);
  // A load that the user gave up says so and nothing else.
  LoadReport TellCancelled(LoadReport report) const;
  // The statement that the control will send.
  std::string StatementOf(const JournalOptions& options) const;

  qt::StockbookWidget& stockbook_;
  std::shared_ptr<qt::Beside> beside_;
  std::shared_ptr<PrefetchedConnection> connection_;
};

}  // namespace stockbook::app
