// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/picture.h"

namespace stockbook::platform {

// What the control tells the container that it stands in: changed properties, and what its frame shows.
class ControlSite {
 public:
  virtual ~ControlSite() = default;
  // A saved property changed, named by its key in the property bag.
  virtual void PropertyChanged(std::string_view key) = 0;
  // The caption band, the frames or the mark changed and want to be drawn anew.
  virtual void FrameChanged() = 0;
};

}  // namespace stockbook::platform
