// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::sheet {

// Measures texts as a canvas draws them, in device pixels. Texts are single lines without a line feed.
class STOCKBOOK_API TextMeasure {
 public:
  virtual ~TextMeasure() = default;

  // 0 for the empty text.
  virtual int TextWidth(const platform::Font& font, std::string_view line) = 0;
  // Of any line in the font, more than 0.
  virtual int LineHeight(const platform::Font& font) = 0;
};

}  // namespace stockbook::sheet
