// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

#include "stockbook/base/api.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::qt {

// The font for a scale: 1 for logical pixels, the device pixel ratio for device pixels. An empty name stands for the
// application's font.
STOCKBOOK_API QFont ToQFont(const platform::Font& font, double scale);
// The height of a line of text, in the font's pixels.
STOCKBOOK_API int LineHeight(const QFont& font);

// The grid's font for a widget with this font: the same one, unless it has no Chinese characters and a face with them
// is installed. One face for digits and characters keeps the lines even.
STOCKBOOK_API platform::Font GridFontFor(const QFont& wanted);
// The font that a grid starts with: GridFontFor the application's font.
STOCKBOOK_API platform::Font DefaultGridFont();

}  // namespace stockbook::qt
