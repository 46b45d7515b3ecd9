// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_desk.h"

#include <algorithm>

#include "stockbook/base/column_keys.h"
#include "stockbook/base/value.h"
#include "stockbook/heading/journal_heading.h"
#include "stockbook/interaction/event_listener.h"
#include "stockbook/platform/error.h"
#include "stockbook/qt/fonts.h"

namespace stockbook::app {
namespace {

// Records the control's messages during one load, and pauses.
class Recorder : public interaction::EventListener {
 public:
  Recorder(control::Stockbook& control, LoadReport& report, const std::function<void()>& pause)
      : control_(control), report_(report), pause_(pause) {
    control_.AddListener(this);
  }
  ~Recorder() override { control_.RemoveListener(this); }
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  void Process(int16_t Indicator) override {
    if (!report_.process.empty() && report_.process.back() == Indicator) return;
    report_.process.push_back(Indicator);
    if (pause_) pause_();
  }
  void Notify(const std::string& Msg) override { report_.notify.push_back(Msg); }

 private:
  control::Stockbook& control_;
  LoadReport& report_;
  const std::function<void()>& pause_;
};

// In the words of the choosers, while the control's own ones are those of bills.
void NamePartners(control::Stockbook& control) {
  control.SetSupplierTitle("供应商");
  control.SetCustomerTitle("客户");
}

// The control's header of a partner journal names the partners alone.
void NameProduct(control::Stockbook& control, platform::Connection& connection, const JournalOptions& options) {
  const std::string product = ProductOfPartnerJournal(connection, options);
  if (!product.empty()) control.SetCaption(control.Caption() + " [" + product + "]");
}

}  // namespace

void SetUpJournal(control::Stockbook& control, const JournalOptions& options) {
  NamePartners(control);
  control.SetAllowQty2(options.allow_qty2);
  control.SetAllowInv(options.allow_inv);
  control.SetAccRestrict(options.acc_restrict ? "True" : "False");
  control.SetJournalType(static_cast<base::tqJournalTypeContants>(options.journal_type));
  // A load completes a missing code and keeps it; clear it so that the next load starts without one.
  control.SetdpCode(options.dp_code);
  control.SetdpID(options.dp_id);
}

LoadReport LoadJournal(control::Stockbook& control, std::shared_ptr<platform::Connection> connection,
                       const JournalOptions& options, const LoadSteps& steps) {
  control.SetConn(std::move(connection));
  LoadReport report;
  const Recorder recorder(control, report, steps.pause);
  const auto call = [](const std::function<void()>& step) {
    if (step) step();
  };
  try {
    SetUpJournal(control, options);
    // Load does not accept negative keys; the control's properties do.
    if (options.key_id < 0) control.SetKeyID(options.key_id);
    report.loaded = control.Load(options.key_id, options.dp_id);
    if (!report.loaded) return report;
    call(steps.arrange);
    call(steps.pause);
    ComposeNames(control);
    call(steps.pause);
    NameProduct(control, *control.Conn(), options);
    call(steps.pause);
  } catch (const platform::Error& error) {
    report.notify.emplace_back(error.what());
  }
  return report;
}

std::string LoadError(const LoadReport& report) {
  return report.loaded || report.notify.empty() ? "" : report.notify.back();
}

std::vector<std::string> LoadProblems(const LoadReport& report) {
  constexpr const char* kRead = "已读入：";
  const auto read = std::find_if(report.notify.begin(), report.notify.end(),
                                 [](const std::string& message) { return message.starts_with(kRead); });
  if (!report.loaded || read == report.notify.end()) return {};
  return {read + 1, report.notify.end()};
}

void ComposeNames(control::Stockbook& control) {
  std::vector<base::Value> column{base::Value(std::string(base::keys::kModel))};
  control.DoCommand("ColChanged", column);
}

JournalDesk::JournalDesk() : control_(Surroundings()) {}

control::Surroundings JournalDesk::Surroundings() {
  fg_.SetGridFont(qt::DefaultGridFont());
  return {fg_, fg1_, text_metrics_, images_, menu_, clipboard_, *this};
}

}  // namespace stockbook::app
