// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "qt/menu.h"
#include "stockbook/command/journal_options.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/inventory/database_source.h"
#include "stockbook/platform/connection.h"
#include "stockbook/platform/control_site.h"
#include "stockbook/platform/text_metrics.h"
#include "stockbook/qt/clipboard.h"
#include "stockbook/qt/images.h"
#include "stockbook/qt/text_metrics.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {

// The messages and the progress of a load.
struct LoadReport {
  bool loaded = false;
  std::vector<std::string> notify;
  std::vector<int> process;  // without immediate repetitions
  bool cancelled = false;    // the user stopped it while it read
};

// Sets what the options say, except for the product, which a load takes, without loading.
void SetUpJournal(control::Stockbook& control, const JournalOptions& options);

// What a host does in a load; each may be missing.
struct LoadSteps {
  std::function<void()> pause;    // whenever the progress is another one, and between the steps after the rows
  std::function<void()> arrange;  // the columns, when the rows are there and before names are composed
};

// Sets up the control from the options and loads the journal, with the names of products composed from the columns that
// are hidden. The control keeps `connection`. What a step throws ends the load like an error.
LoadReport LoadJournal(control::Stockbook& control, std::shared_ptr<platform::Connection> connection,
                       const JournalOptions& options, const LoadSteps& steps = {});

// The error text of a load that failed: its last message, since no host cancels it; "" if there is none.
std::string LoadError(const LoadReport& report);

// What a loaded journal had to do without, such as a balance that could not be read: the messages after 已读入 (read).
std::vector<std::string> LoadProblems(const LoadReport& report);

// Composes the names of products from what is hidden of Model, Standard and Measure.
void ComposeNames(control::Stockbook& control);

// The control over a sheet without a window, for commands that only need the rows. It needs a running toolkit
// application (GuiSession) to measure texts.
class JournalDesk : private platform::ControlSite {
 public:
  JournalDesk();

  control::Stockbook& control() { return control_; }
  sheet::GridSheet& sheet() { return fg_; }

 private:
  void PropertyChanged(std::string_view) override {}
  void FrameChanged() override {}
  control::Surroundings Surroundings();

  sheet::GridSheet fg_;
  sheet::GridSheet fg1_;
  qt::QtTextMetrics text_metrics_;
  qt::QtImages images_;
  qt::QtMenu menu_{nullptr};
  qt::QtClipboard clipboard_;
  control::Stockbook control_;
};

}  // namespace stockbook::app
