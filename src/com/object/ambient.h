// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleidl.h>

#include <optional>

#include "com/automation/com_ptr.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::com {

// What a form tells its controls of itself. A form that does not tell something, or fails, leaves it open.
struct Ambient {
  std::optional<platform::Font> font;
  std::optional<platform::Colour> back_colour;
  bool user_mode = true;  // the program runs; otherwise the form is being designed
  LCID locale = LOCALE_USER_DEFAULT;

  static Ambient Of(const ComPtr<IOleClientSite>& site);
};

}  // namespace stockbook::com
