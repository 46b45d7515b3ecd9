// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "platform/grid_appearance.h"
#include "platform/grid_outline.h"
#include "platform/grid_types.h"
#include "platform/picture.h"
#include "platform/text_metrics.h"
#include "sheet/store/cell_style.h"

namespace stockbook::sheet {

// The part of the sheet that a cell is in, which decides its colours where none are set.
enum class CellPart { kBody, kFrozen, kFixed };

// Colours, lines, font and outline looks of a sheet, with the colours of a light ledger to begin with. A plain value.
// Texts stand out from what they are on by 7 to 1 at the least in both palettes, numbers below zero by 4.5 to 1.
struct Appearance {
  static constexpr size_t kColours = static_cast<size_t>(platform::GridColour::kSheetBorder) + 1;

  std::array<platform::Colour, kColours> colours{};
  platform::GridLineStyle grid_lines = platform::GridLineStyle::kFlat;
  platform::GridLineStyle grid_lines_fixed = platform::GridLineStyle::kFlat;
  platform::ScrollBarsSetting scroll_bars = platform::ScrollBarsSetting::kBoth;
  platform::Font font;
  platform::OutlineBarStyle outline_bar = platform::OutlineBarStyle::kComplete;
  platform::PictureRef node_open;
  platform::PictureRef node_closed;
  // Of nodes and totals, where no colour is set on the cell; nothing: that of the body.
  std::optional<platform::Colour> node_back = 0x00FAF5F0;
  // Of numbers below zero, where no colour is set on the cell; nothing: that of all others.
  std::optional<platform::Colour> negative_fore = 0x002D1EBE;
  platform::Colour light = 0x00FFFFFF;   // the lit side of inset and raised lines
  platform::Colour accent = 0x00B5651D;  // frame of the current cell, edge of the frozen columns

  // A light ledger.
  Appearance();
  // The same with the colours for a dark desktop.
  static Appearance Dark();

  platform::Colour Of(platform::GridColour which) const { return colours[static_cast<size_t>(which)]; }
  platform::Colour& Of(platform::GridColour which) { return colours[static_cast<size_t>(which)]; }
  // The colours of a cell on which none are set.
  platform::Colour BackOf(CellPart part, bool node) const;
  platform::Colour ForeOf(CellPart part) const;
};

}  // namespace stockbook::sheet
