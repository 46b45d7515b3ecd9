// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

#include "platform/text_metrics.h"

namespace stockbook::qt {

// A logical pixel is 15 twips (1440 / 96); the toolkit scales it to device pixels.
inline constexpr double kTwipsPerPixel = 15.0;

// The font in pixels of the scale: 1 for logical pixels, the device pixel ratio for device pixels. An empty name is the
// application's font.
QFont ToQFont(const platform::Font& font, double scale);

// The font that a grid starts with: the application's, unless it has no Chinese characters of its own and a face which
// has them is installed. One face for digits and characters keeps the lines even.
platform::Font DefaultGridFont();

}  // namespace stockbook::qt
