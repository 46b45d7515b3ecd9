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
  // Progress of a load in percent, 0 to 100, then -1 at its end, also of one that failed or was cancelled; from 40 on
  // once for every line.
  virtual void Process(int16_t /*Indicator*/) {}
  // A load has laid all rows and totals; heights of rows that are set here stay. One that failed or was cancelled does
  // not raise it.
  virtual void AfterLoaded() {}
  // The columns were laid out anew: order, widths, formats and hidden columns are those of the layout again, and
  // columns that a host added are gone.
  virtual void AfterFormatted() {}
  // Before "Load", which Cancel = true cancels; the other commands, "Bill", "Find", "Refresh", "SetDefaultFormat" and
  // "AfterFieldShow", do not read Cancel.
  virtual void CommandExecute(const std::string& /*CommandName*/, bool& /*Cancel*/) {}
  // A message for the user; the control shows none itself. Empty where a row that became the current one has nothing to
  // say.
  virtual void Notify(const std::string& /*Msg*/) {}
  // The current cell is in another row, by the user or a setter; not raised by what a load does.
  virtual void AfterRowChanged() {}
  // A button was released and more than a cell is selected; MouseUp follows.
  virtual void AfterRangeSelected() {}
  // A button was released: its code (1 left, 2 right, 4 middle), the sum of 1 (Shift), 2 (Ctrl) and 4 (Alt), and the
  // place in twips from the grid's top left corner. What is written is seen by the listeners after it alone.
  virtual void MouseUp(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*X*/, float& /*Y*/) {}
  // A hit of Find as "text |row", the row being the grid's, between "#BEGIN#" and "#END#".
  virtual void FindMsg(const std::string& /*rMsg*/) {}
};

}  // namespace stockbook::interaction
