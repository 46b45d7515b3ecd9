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

namespace stockbook::sheet {

// The part of the sheet that a cell is in, which decides its colours where none are set.
enum class CellPart { kBody, kFrozen, kFixed };

// The colours of a sheet: those of the port and a few more, of a light ledger to begin with. A plain value. Texts stand
// out from what they are on by 7 to 1 at least in both palettes, numbers below zero by 4.5 to 1.
struct Palette {
  static constexpr size_t kColours = static_cast<size_t>(platform::GridColour::kSheetBorder) + 1;

  std::array<platform::Colour, kColours> colours{};
  // Of nodes and totals, where no colour is set on the cell; nothing: that of the body.
  std::optional<platform::Colour> node_back = 0x00FAF5F0;
  // Of numbers below zero, where no colour is set on the cell; nothing: that of all others.
  std::optional<platform::Colour> negative_fore = 0x002D1EBE;
  platform::Colour light = 0x00FFFFFF;   // the lit side of inset and raised lines
  platform::Colour accent = 0x00B5651D;  // frame of the current cell, edge of the frozen columns

  Palette();
  // For a dark desktop.
  static Palette Dark();

  platform::Colour Of(platform::GridColour which) const { return colours[static_cast<size_t>(which)]; }
  platform::Colour& Of(platform::GridColour which) { return colours[static_cast<size_t>(which)]; }
  // The colours of a cell on which none are set.
  platform::Colour BackOf(CellPart part, bool node) const;
  platform::Colour ForeOf(CellPart part) const;
  // Each colour that is as in `from` becomes as in `to`; the others stay.
  void Turn(const Palette& from, const Palette& to);
};

// All looks of a sheet. A plain value.
struct Appearance : Palette {
  platform::GridLineStyle grid_lines = platform::GridLineStyle::kFlat;
  platform::GridLineStyle grid_lines_fixed = platform::GridLineStyle::kFlat;
  platform::ScrollBarsSetting scroll_bars = platform::ScrollBarsSetting::kBoth;
  platform::Font font{.name = "Noto Sans CJK SC"};
  platform::OutlineBarStyle outline_bar = platform::OutlineBarStyle::kComplete;
  platform::PictureRef node_open;
  platform::PictureRef node_closed;

  // In the colours for a dark desktop.
  static Appearance Dark();

  Palette& palette() { return *this; }
  const Palette& palette() const { return *this; }
};

}  // namespace stockbook::sheet
