// SPDX-License-Identifier: MIT
#include "qt/text_metrics.h"

#include <QFontMetricsF>
#include <cmath>

#include "qt/fonts.h"
#include "qt/text.h"
#include "sheet/geometry/scale.h"

namespace stockbook::qt {

using sheet::kTwipsPerPixel;

double QtTextMetrics::TextHeightTwips(std::string_view /*text*/, const platform::Font& font) const {
  return LineHeight(ToQFont(font, 1.0)) * kTwipsPerPixel;
}

double QtTextMetrics::TextWidthTwips(std::string_view text, const platform::Font& font) const {
  return std::ceil(QFontMetricsF(ToQFont(font, 1.0)).horizontalAdvance(ToQString(text))) * kTwipsPerPixel;
}

double QtTextMetrics::TwipsPerPixelY() const { return kTwipsPerPixel; }

}  // namespace stockbook::qt
