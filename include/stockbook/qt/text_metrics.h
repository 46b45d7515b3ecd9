// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/base/api.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::qt {

// Measures in whole logical pixels of 15 twips, so that a row that fits one line fits it at every scale.
class STOCKBOOK_API QtTextMetrics : public platform::TextMetrics {
 public:
  // The height of a line in the font, a multiple of 15; whatever the text is.
  double TextHeightTwips(std::string_view text, const platform::Font& font) const override;
  // Always 15.
  double TwipsPerPixelY() const override;
};

}  // namespace stockbook::qt
