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

  virtual bool Redraw() const = 0;
  virtual void SetRedraw(bool on) = 0;
  virtual std::string Tag() const = 0;
  virtual void SetTag(std::string_view tag) = 0;
  virtual MousePointer Pointer() const = 0;
  virtual void SetPointer(MousePointer pointer) = 0;
};

}  // namespace stockbook::platform
