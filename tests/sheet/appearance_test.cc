// SPDX-License-Identifier: MIT
#include "stockbook/sheet/store/appearance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace stockbook::sheet {
namespace {

using platform::Colour;
using platform::GridColour;

// Relative luminance and contrast as defined by the web content accessibility guidelines (WCAG 2.1).
double Luminance(Colour colour) {
  const auto part = [&](int shift) {
    const double value = static_cast<double>(colour >> shift & 0xFFU) / 255.0;
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(0) + 0.7152 * part(8) + 0.0722 * part(16);
}

double Contrast(Colour a, Colour b) {
  const double lighter = std::max(Luminance(a), Luminance(b));
  const double darker = std::min(Luminance(a), Luminance(b));
  return (lighter + 0.05) / (darker + 0.05);
}

class Palette : public ::testing::TestWithParam<bool> {
 protected:
  Appearance looks_ = GetParam() ? Appearance::Dark() : Appearance();
};

TEST_P(Palette, TextsStandOutFromWhatTheyAreOn) {
  const std::vector<std::pair<Colour, Colour>> pairs = {
      {looks_.Of(GridColour::kForeColor), looks_.Of(GridColour::kBackColor)},
      {looks_.Of(GridColour::kForeColor), *looks_.node_back},
      {looks_.Of(GridColour::kForeColorFixed), looks_.Of(GridColour::kBackColorFixed)},
      {looks_.Of(GridColour::kForeColorFrozen), looks_.Of(GridColour::kBackColorFrozen)},
      {looks_.Of(GridColour::kForeColorSel), looks_.Of(GridColour::kBackColorSel)},
  };
  for (const auto& [fore, back] : pairs) EXPECT_GE(Contrast(fore, back), 7.0) << std::hex << fore << " on " << back;
}

TEST_P(Palette, NumbersBelowZeroAreReadOnEveryBackground) {
  for (const Colour back : {looks_.Of(GridColour::kBackColor), looks_.Of(GridColour::kBackColorFrozen),
                            looks_.Of(GridColour::kBackColorSel), *looks_.node_back}) {
    EXPECT_GE(Contrast(*looks_.negative_fore, back), 4.5) << std::hex << back;
  }
}

TEST_P(Palette, EdgesAndLinesAreSeenWithoutShouting) {
  const Colour back = looks_.Of(GridColour::kBackColor);
  EXPECT_GE(Contrast(looks_.accent, back), 3.0);
  const double lines = Contrast(looks_.Of(GridColour::kGridColor), back);
  EXPECT_GE(lines, 1.15);
  EXPECT_LE(lines, 1.8);
  EXPECT_GE(Contrast(looks_.Of(GridColour::kBackColorSel), back), 1.2);
}

INSTANTIATE_TEST_SUITE_P(Both, Palette, ::testing::Bool(),
                         [](const auto& palette) { return std::string(palette.param ? "Dark" : "Light"); });

}  // namespace
}  // namespace stockbook::sheet
