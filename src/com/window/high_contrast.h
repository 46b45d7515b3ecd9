// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "stockbook/sheet/store/appearance.h"

namespace stockbook::com {

// Whether the user has asked the system for it.
bool IsHighContrast();

// The looks for a user who has asked the system for high contrast: the system's colours in the place of those that
// nobody has chosen. Nothing for everybody else.
std::optional<sheet::Appearance> HighContrastLooks(const sheet::Appearance& looks);

// The system's colours as a sheet's.
sheet::Palette SystemPalette();

}  // namespace stockbook::com
