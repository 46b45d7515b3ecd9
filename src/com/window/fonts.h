// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include "stockbook/platform/text_metrics.h"

namespace stockbook::com {

// The system's description of a font; `scale` is device pixels per pixel of 1/96 inch. An empty name stands for the
// system's own font.
LOGFONTW LogFontOf(const platform::Font& font, double scale);

// The font in which the system writes its messages.
platform::Font SystemFont();
// The grid's font for a host with this font: the same one, unless it has no Chinese characters and a face with them is
// installed. One face for digits and characters keeps the lines even.
platform::Font GridFontFor(const platform::Font& wanted);
// The font that a grid starts with: GridFontFor the system's font.
platform::Font DefaultGridFont();

}  // namespace stockbook::com
