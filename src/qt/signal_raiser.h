// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "stockbook/control/stockbook.h"

namespace stockbook::qt {

class StockbookWidget;

// Raises the control's events as the signals of a widget, as long as there is one.
class SignalRaiser : public interaction::EventListener {
 public:
  explicit SignalRaiser(StockbookWidget& widget) : widget_(&widget) {}
  void Silence() { widget_ = nullptr; }

  void Process(int16_t Indicator) override;
  void AfterLoaded() override;
  void AfterFormatted() override;
  void CommandExecute(const std::string& CommandName, bool& Cancel) override;
  void Notify(const std::string& Msg) override;
  void AfterRowChanged() override;
  void AfterRangeSelected() override;
  void MouseUp(int16_t& Button, int16_t& Shift, float& X, float& Y) override;
  void FindMsg(const std::string& rMsg) override;

 private:
  // Calls with the widget; its parts outlive the call whatever the slots do.
  template <typename Call>
  void Raise(Call call);

  StockbookWidget* widget_;
};

}  // namespace stockbook::qt
