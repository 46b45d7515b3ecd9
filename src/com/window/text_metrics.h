// SPDX-License-Identifier: MIT
#pragma once

#include "com/window/gdi_font.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::com {

// Measures in whole pixels of 1/96 inch, 15 twips each, so that a row that fits one line fits it at every scale.
class GdiTextMetrics : public platform::TextMetrics {
 public:
  double TextHeightTwips(std::string_view text, const platform::Font& font) const override;
  double TwipsPerPixelY() const override;

 private:
  mutable GdiFonts fonts_;
};

}  // namespace stockbook::com
