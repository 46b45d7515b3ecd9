// SPDX-License-Identifier: MIT
#include "com/window/text_metrics.h"

#include "sheet/geometry/scale.h"

namespace stockbook::com {

double GdiTextMetrics::TextHeightTwips(std::string_view /*text*/, const platform::Font& font) const {
  return fonts_.Find(font, 1.0).line_height() * sheet::kTwipsPerPixel;
}

double GdiTextMetrics::TwipsPerPixelY() const { return sheet::kTwipsPerPixel; }

}  // namespace stockbook::com
