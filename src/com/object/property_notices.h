// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "com/automation/com_ptr.h"
#include "com/object/connection_point.h"
#include "stockbook/platform/control_site.h"

namespace stockbook::com {

// Asks the listeners for property changes before one is made, and tells them afterwards. Costs nothing while there are
// none.
class PropertyNotices final : public platform::ControlSite {
 public:
  // `described` numbers the properties.
  PropertyNotices(ConnectionPoint& sinks, ComPtr<ITypeInfo> described)
      : sinks_(sinks), described_(std::move(described)) {}

  // Throws AutomationError where a listener refuses the change.
  void ExpectMayChange(std::string_view property);

  // platform::ControlSite
  void PropertyChanged(std::string_view key) override;
  void FrameChanged() override {}

 private:
  DISPID IdOf(std::string_view property) const;

  ConnectionPoint& sinks_;
  ComPtr<ITypeInfo> described_;
};

}  // namespace stockbook::com
