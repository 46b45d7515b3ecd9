// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_types.h"

namespace stockbook::platform {

// What a bulk operation changes of a grid while it runs: whether it redraws, the tag that names the operation, and the
// mouse pointer.
class STOCKBOOK_API GridBusy {
 public:
  virtual ~GridBusy() = default;

  // True unless set. While it is off, the grid shows what it showed; when it is on again, everything is painted anew.
  virtual bool Redraw() const = 0;
  virtual void SetRedraw(bool on) = 0;
  // "" unless set; the control handles no change of row while there is one.
  virtual std::string Tag() const = 0;
  virtual void SetTag(std::string_view tag) = 0;
  // kDefault unless set. Over the grid alone, and until it is set again.
  virtual MousePointer Pointer() const = 0;
  virtual void SetPointer(MousePointer pointer) = 0;
};

}  // namespace stockbook::platform
