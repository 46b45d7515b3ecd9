// SPDX-License-Identifier: MIT
// Sheet as platform::GridAppearance.
#include "stockbook/sheet/contents/sheet.h"

namespace stockbook::sheet {

using platform::Colour;
using platform::Font;
using platform::GridColour;
using platform::GridLineStyle;
using platform::ScrollBarsSetting;

void Sheet::SetAppearance(const Appearance& appearance) {
  appearance_ = appearance;
  LooksChanged();
}

void Sheet::SetColour(GridColour which, Colour colour) {
  appearance_.Of(which) = colour;
  LooksChanged();
}

void Sheet::SetGridLines(GridLineStyle style) {
  appearance_.grid_lines = style;
  LooksChanged();
}

void Sheet::SetGridLinesFixed(GridLineStyle style) {
  appearance_.grid_lines_fixed = style;
  LooksChanged();
}

void Sheet::SetScrollBars(ScrollBarsSetting setting) {
  appearance_.scroll_bars = setting;
  EverythingChanged();
}

void Sheet::SetGridFont(const Font& font) {
  appearance_.font = font;
  LooksChanged();
}

}  // namespace stockbook::sheet
