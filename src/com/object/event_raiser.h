// SPDX-License-Identifier: MIT
#pragma once

#include "com/object/connection_point.h"
#include "stockbook/control/stockbook.h"

namespace stockbook::com {

// Raises the control's events to the listeners of a connection point, by the numbers of the event interface. Arguments
// by reference are written back, through one listener after the other. What a listener returns does not matter. While
// the form has events frozen none is raised, as forms ask for it.
class EventRaiser final : public interaction::EventListener {
 public:
  explicit EventRaiser(ConnectionPoint& sinks) : sinks_(sinks) {}
  // Nested: as often thawed as frozen.
  void Freeze() { ++frozen_; }
  void Thaw() { frozen_ -= frozen_ > 0 ? 1 : 0; }

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
  // Arguments from the last to the first, as IDispatch has them.
  void Raise(DISPID event, VARIANTARG* arguments, UINT count);
  void RaiseText(DISPID event, const std::string& text);

  ConnectionPoint& sinks_;
  int frozen_ = 0;
};

}  // namespace stockbook::com
