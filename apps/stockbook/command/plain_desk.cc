// SPDX-License-Identifier: MIT
#include "stockbook/command/plain_desk.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::app {

double PlainDesk::TextHeightTwips(std::string_view /*text*/, const platform::Font& font) const {
  constexpr double kTwipsPerPoint = 20;
  return font.size_pt * kTwipsPerPoint;
}

}  // namespace stockbook::app
