// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_desk.h"

#include <filesystem>

#include "base/text.h"
#include "databases/sqlite/embedded_connection.h"
#include "platform/error.h"
#include "qt/fonts.h"

namespace stockbook::app {
namespace {

// Records the control's messages during one load.
class Recorder : public interaction::EventListener {
 public:
  Recorder(control::Stockbook& control, LoadReport& report) : control_(control), report_(report) {
    control_.AddListener(this);
  }
  ~Recorder() override { control_.RemoveListener(this); }
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  void Process(int16_t Indicator) override {
    if (report_.process.empty() || report_.process.back() != Indicator) report_.process.push_back(Indicator);
  }
  void Notify(const std::string& Msg) override { report_.notify.push_back(Msg); }

 private:
  control::Stockbook& control_;
  LoadReport& report_;
};

}  // namespace

std::shared_ptr<platform::Connection> OpenInventory(const std::string& path, SqlDialect dialect) {
  // In quotes, because a path may contain semicolons.
  return databases::OpenEmbedded(std::string("Provider=Stockbook.Embedded;") +
                                 (dialect == SqlDialect::kServer ? "Dialect=SQL;" : "") + "Data Source=\"" +
                                 base::ReplaceAll(path, "\"", "\"\"") + "\"");
}

LoadReport LoadJournal(control::Stockbook& control, std::shared_ptr<platform::Connection> connection,
                       const JournalOptions& options) {
  control.SetConn(std::move(connection));
  control.SetAllowQty2(options.allow_qty2);
  control.SetAllowInv(options.allow_inv);
  control.SetAccRestrict(options.acc_restrict ? "True" : "False");
  control.SetJournalType(static_cast<base::tqJournalTypeContants>(options.journal_type));
  // A load completes a missing code and keeps it; clear it so that the next load starts without one.
  control.SetdpCode(options.dp_code);
  LoadReport report;
  const Recorder recorder(control, report);
  try {
    // Load does not accept negative keys; the control's properties do.
    control.SetdpID(options.dp_id);
    if (options.key_id < 0) control.SetKeyID(options.key_id);
    report.loaded = control.Load(options.key_id, options.dp_id);
  } catch (const platform::Error& error) {
    report.notify.emplace_back(error.what());
  }
  return report;
}

std::string LoadError(const LoadReport& report) {
  return report.loaded || report.notify.empty() ? "" : report.notify.back();
}

JournalDesk::JournalDesk() : control_(Surroundings()) {}

control::Surroundings JournalDesk::Surroundings() {
  fg_.SetGridFont(qt::DefaultGridFont());
  return {fg_, fg1_, text_metrics_, images_, menu_, clipboard_, *this};
}

}  // namespace stockbook::app
