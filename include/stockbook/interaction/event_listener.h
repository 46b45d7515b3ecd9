// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "stockbook/base/api.h"

namespace stockbook::interaction {

// The nine events of the control, in the order of its event interface. A host derives from it and overrides the events
// it wants. The receiver may write arguments passed by reference.
class STOCKBOOK_API EventListener {
 public:
  virtual ~EventListener() = default;
  // Progress while loading, 0 to 100; -1 ends it.
  virtual void Process(int16_t /*Indicator*/) {}
  // A load has laid all rows and totals.
  virtual void AfterLoaded() {}
  // The columns were laid out anew.
  virtual void AfterFormatted() {}
  // Before a named command. Only "Load" reads Cancel.
  virtual void CommandExecute(const std::string& /*CommandName*/, bool& /*Cancel*/) {}
  // A message for the user; the control shows none itself.
  virtual void Notify(const std::string& /*Msg*/) {}
  // The current cell is in another row.
  virtual void AfterRowChanged() {}
  // A button was released and more than a cell is selected.
  virtual void AfterRangeSelected() {}
  // A button was released: its code, the sum of 1 (Shift), 2 (Ctrl) and 4 (Alt), and the place in twips.
  virtual void MouseUp(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*X*/, float& /*Y*/) {}
  // A hit of Find as "text |row", between "#BEGIN#" and "#END#".
  virtual void FindMsg(const std::string& /*rMsg*/) {}
};

}  // namespace stockbook::interaction
