// SPDX-License-Identifier: MIT
#include "stockbook/qt/text_metrics.h"

#include "sheet/geometry/scale.h"
#include "stockbook/qt/fonts.h"

namespace stockbook::qt {

using sheet::kTwipsPerPixel;

double QtTextMetrics::TextHeightTwips(std::string_view /*text*/, const platform::Font& font) const {
  return LineHeight(ToQFont(font, 1.0)) * kTwipsPerPixel;
}

double QtTextMetrics::TwipsPerPixelY() const { return kTwipsPerPixel; }

}  // namespace stockbook::qt
