// SPDX-License-Identifier: MIT
#include "interaction/row_clamp.h"

#include <algorithm>
#include <cmath>

namespace stockbook::interaction {
namespace {

constexpr const char* kSampleText = "Tallomere";
constexpr int kMarginPixels = 2;
constexpr double kLeastCaptionLines = 1.5;
constexpr int kLeastNodeLines = 2;
constexpr int kMostLines = 3;

}  // namespace

ClampedHeight ClampRowHeight(platform::GridRows& grid, const platform::TextMetrics& metrics, const platform::Font& font,
                             int row) {
  const auto line = static_cast<int>(
      std::nearbyint(metrics.TextHeightTwips(kSampleText, font) + kMarginPixels * metrics.TwipsPerPixelY()));
  ClampedHeight clamped;
  int least = line;
  if (row == 0) {
    clamped.kind = ResizedRow::kCaption;
    least = static_cast<int>(std::nearbyint(kLeastCaptionLines * line));
  } else if (grid.IsSubtotal(row)) {
    clamped.kind = ResizedRow::kNode;
    least = kLeastNodeLines * line;
  }
  clamped.twips = std::clamp(grid.RowHeight(row), least, std::max(least, kMostLines * line));
  if (clamped.twips != grid.RowHeight(row)) grid.SetRowHeight(row, clamped.twips);
  return clamped;
}

}  // namespace stockbook::interaction
