// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "stockbook/platform/grid_appearance.h"
#include "stockbook/platform/grid_outline.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/platform/picture.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::sheet {

// The part of the sheet that a cell is in. It determines the colours of cells without colours of their own.
enum class CellPart { kBody, kFrozen, kFixed };

// The colours of a sheet: those of the port and a few more. By default those of a light ledger. A plain value. In both
// palettes the contrast of texts is at least 7:1, that of negative numbers 4.5:1.
struct Palette {
  // How many colours the port has.
  static constexpr size_t kColours = static_cast<size_t>(platform::GridColour::kSheetBorder) + 1;

  std::array<platform::Colour, kColours> colours{};
  // For nodes and totals without a colour of their own; if empty, that of the body.
  std::optional<platform::Colour> node_back = 0x00FAF5F0;
  // For negative numbers in cells without a colour of their own; if empty, that of other texts.
  std::optional<platform::Colour> negative_fore = 0x002D1EBE;
  platform::Colour light = 0x00FFFFFF;   // the lit side of inset and raised lines
  platform::Colour accent = 0x00B5651D;  // frame of the current cell, edge of the frozen columns

  // Those of a light ledger.
  Palette();
  // The colours for a dark desktop.
  static Palette Dark();

  // Both as 0x00BBGGRR.
  platform::Colour Of(platform::GridColour which) const { return colours[static_cast<size_t>(which)]; }
  platform::Colour& Of(platform::GridColour which) { return colours[static_cast<size_t>(which)]; }
  // These are the colours of a cell without colours of its own; NodeBackOf of one in a node or total, which is that of
  // BackOf where it is fixed.
  platform::Colour BackOf(CellPart part) const;
  platform::Colour NodeBackOf(CellPart part) const;
  platform::Colour ForeOf(CellPart part) const;
  // Replaces each colour that equals the one in `from` by the one in `to`.
  void Turn(const Palette& from, const Palette& to);
};

// Everything about the looks of a sheet. A plain value.
struct Appearance : Palette {
  platform::GridLineStyle grid_lines = platform::GridLineStyle::kFlat;
  platform::GridLineStyle grid_lines_fixed = platform::GridLineStyle::kFlat;
  platform::ScrollBarsSetting scroll_bars = platform::ScrollBarsSetting::kBoth;
  platform::Font font{.name = "Noto Sans CJK SC"};
  platform::OutlineBarStyle outline_bar = platform::OutlineBarStyle::kComplete;
  platform::PictureRef node_open;
  platform::PictureRef node_closed;

  // With the dark palette.
  static Appearance Dark();

  // Both are the colours alone, to be compared or replaced.
  Palette& palette() { return *this; }
  const Palette& palette() const { return *this; }
};

}  // namespace stockbook::sheet
