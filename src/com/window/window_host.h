// SPDX-License-Identifier: MIT
#pragma once

#include <unknwn.h>

#include "com/automation/com_ptr.h"

namespace stockbook::com {

enum class Focus { kGained, kLost };

// What a control's windows ask of the object that shows them.
class WindowHost {
 public:
  virtual ~WindowHost() = default;
  // Keeps everything that the windows borrow alive while one of them handles a message, during which a host may drop
  // the object.
  virtual ComPtr<IUnknown> Pin() = 0;
  // The keyboard focus came to one of the windows, or left for another's.
  virtual void FocusChanged(Focus focus) = 0;
  // The system's colours or fonts may be others now.
  virtual void SystemChanged() {}
};

}  // namespace stockbook::com
