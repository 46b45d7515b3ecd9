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
  // A saved property has another value than before. Called after PropertyChanged, and once after reading a bag.
  virtual void AppearanceChanged() {}
  // The connection, a key, a text, a format, a right or a row height of the journal is another than before: set, or
  // found by a load, which tells it at its end. What it throws is dropped.
  virtual void JournalChanged() {}
};

}  // namespace stockbook::platform
