// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "stockbook/base/api.h"

namespace stockbook::platform {

// A font as the grid names it; size in points.
struct Font {
  std::string name;
  double size_pt = 9.0;
  bool bold = false;
  bool italic = false;

  bool operator==(const Font&) const = default;
};

// Measures texts on the control's drawing surface.
class STOCKBOOK_API TextMetrics {
 public:
  virtual ~TextMetrics() = default;
  // Height of one line of the text in twips (1/1440 inch), without space between lines.
  virtual double TextHeightTwips(std::string_view text, const Font& font) const = 0;
  // Twips in a pixel of the surface: 15 where it has 96 to an inch.
  virtual double TwipsPerPixelY() const = 0;
};

}  // namespace stockbook::platform
