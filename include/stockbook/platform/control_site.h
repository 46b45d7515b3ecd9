// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/picture.h"

namespace stockbook::platform {

// What the control reports to its container: changed properties, and what its frame shows.
class STOCKBOOK_API ControlSite {
 public:
  virtual ~ControlSite() = default;
  // A saved property changed, named by its key in the property bag.
  virtual void PropertyChanged(std::string_view key) = 0;
  // The caption band, the frames or the mark changed and must be redrawn.
  virtual void FrameChanged() = 0;
};

}  // namespace stockbook::platform
