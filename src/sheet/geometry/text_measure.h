// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/text_metrics.h"

namespace stockbook::sheet {

// How large texts come out, in device pixels: what a canvas draws them with. Texts are lines without a line feed.
class TextMeasure {
 public:
  virtual ~TextMeasure() = default;

  virtual int TextWidth(const platform::Font& font, std::string_view line) = 0;
  virtual int LineHeight(const platform::Font& font) = 0;
};

}  // namespace stockbook::sheet
