// SPDX-License-Identifier: MIT
#include "stockbook/sheet/store/appearance.h"

namespace stockbook::sheet {

using platform::Colour;
using platform::GridColour;

Palette::Palette() {
  Of(GridColour::kBackColor) = 0x00FFFFFF;
  Of(GridColour::kBackColorBkg) = 0x00F7F5F3;
  Of(GridColour::kBackColorFixed) = 0x00F3F0ED;
  Of(GridColour::kBackColorFrozen) = 0x00FDFAF8;
  Of(GridColour::kBackColorSel) = 0x00FAE2CC;
  Of(GridColour::kForeColor) = 0x0028231F;
  Of(GridColour::kForeColorFixed) = 0x00564C44;
  Of(GridColour::kForeColorFrozen) = 0x0028231F;
  Of(GridColour::kForeColorSel) = 0x00281810;
  Of(GridColour::kGridColor) = 0x00E9E5E1;
  Of(GridColour::kGridColorFixed) = 0x00D6D0CB;
  Of(GridColour::kSheetBorder) = 0x00CCC4BE;
}

Palette Palette::Dark() {
  Palette dark;
  dark.Of(GridColour::kBackColor) = 0x00221F1E;
  dark.Of(GridColour::kBackColorBkg) = 0x001B1918;
  dark.Of(GridColour::kBackColorFixed) = 0x00312D2B;
  dark.Of(GridColour::kBackColorFrozen) = 0x00282423;
  dark.Of(GridColour::kBackColorSel) = 0x00573D24;
  dark.Of(GridColour::kForeColor) = 0x00E6E2DF;
  dark.Of(GridColour::kForeColorFixed) = 0x00D2CBC5;
  dark.Of(GridColour::kForeColorFrozen) = 0x00E6E2DF;
  dark.Of(GridColour::kForeColorSel) = 0x00FFFAF5;
  dark.Of(GridColour::kGridColor) = 0x003A3634;
  dark.Of(GridColour::kGridColorFixed) = 0x00504B48;
  dark.Of(GridColour::kSheetBorder) = 0x00575250;
  dark.node_back = 0x00302927;
  dark.negative_fore = 0x008A8FFF;
  dark.light = 0x00625C59;
  dark.accent = 0x00F0A860;
  return dark;
}

Colour Palette::BackOf(CellPart part) const {
  if (part == CellPart::kFixed) return Of(GridColour::kBackColorFixed);
  return Of(part == CellPart::kFrozen ? GridColour::kBackColorFrozen : GridColour::kBackColor);
}

Colour Palette::NodeBackOf(CellPart part) const {
  return node_back && part != CellPart::kFixed ? *node_back : BackOf(part);
}

Colour Palette::ForeOf(CellPart part) const {
  if (part == CellPart::kFixed) return Of(GridColour::kForeColorFixed);
  return Of(part == CellPart::kFrozen ? GridColour::kForeColorFrozen : GridColour::kForeColor);
}

void Palette::Turn(const Palette& from, const Palette& to) {
  const auto turn = [](auto& value, const auto& old_value, const auto& new_value) {
    if (value == old_value) value = new_value;
  };
  for (size_t index = 0; index < kColours; ++index) turn(colours[index], from.colours[index], to.colours[index]);
  turn(node_back, from.node_back, to.node_back);
  turn(negative_fore, from.negative_fore, to.negative_fore);
  turn(light, from.light, to.light);
  turn(accent, from.accent, to.accent);
}

Appearance Appearance::Dark() {
  Appearance dark;
  dark.palette() = Palette::Dark();
  return dark;
}

}  // namespace stockbook::sheet
