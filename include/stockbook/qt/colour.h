// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_types.h"

namespace stockbook::qt {

// The toolkit's colour for 0x00BBGGRR, which the control uses. Colours are opaque.
STOCKBOOK_API QColor ToQColor(platform::Colour colour);
// The control's colour for one of the toolkit, whose transparency is dropped.
STOCKBOOK_API platform::Colour FromQColor(const QColor& colour);

// Halfway to the other colour, which shows that something is disabled.
STOCKBOOK_API QColor Dimmed(const QColor& colour, const QColor& toward);

// Whether light text is easier to read on it than dark text: a grey of 128 of 255 or less.
STOCKBOOK_API bool IsDark(const QColor& colour);

}  // namespace stockbook::qt
