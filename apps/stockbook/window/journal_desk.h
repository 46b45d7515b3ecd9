// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "control/stockbook.h"
#include "platform/connection.h"
#include "qt/clipboard.h"
#include "qt/images.h"
#include "qt/menu.h"
#include "qt/text_metrics.h"
#include "sheet/sheet.h"
#include "stockbook/command/journal_options.h"

namespace stockbook::app {

// The SQL that the control sends.
enum class SqlDialect { kDesktop, kServer };

// Opens the inventory, read only. Throws platform::Error when there is no such file or it is none.
std::shared_ptr<platform::Connection> OpenInventory(const std::string& path, SqlDialect dialect = SqlDialect::kDesktop);

// What a load said on its way.
struct LoadReport {
  bool loaded = false;
  std::vector<std::string> notify;
  std::vector<int> process;  // a value that repeats stands once
};

// Sets the control as the options say and loads the journal. `connection` stays with the control.
LoadReport LoadJournal(control::Stockbook& control, std::shared_ptr<platform::Connection> connection,
                       const JournalOptions& options);

// The error text of a load that failed: the last message that is not one of the load's own; "" for none.
std::string LoadError(const LoadReport& report);

// The control over a sheet without a window, for commands that only want the rows. It needs a running application of
// the toolkit (GuiSession) to measure texts.
class JournalDesk : private platform::ControlSite {
 public:
  JournalDesk();

  control::Stockbook& control() { return control_; }
  sheet::Sheet& sheet() { return fg_; }

 private:
  void PropertyChanged(std::string_view) override {}
  void FrameChanged() override {}
  control::Surroundings Surroundings();

  sheet::Sheet fg_;
  sheet::Sheet fg1_;
  qt::QtTextMetrics text_metrics_;
  qt::QtImages images_;
  qt::QtMenu menu_{nullptr};
  qt::QtClipboard clipboard_;
  control::Stockbook control_;
};

}  // namespace stockbook::app
