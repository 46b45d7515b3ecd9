// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::platform {

// The colours of a grid, under the names of the control's properties; kSheetBorder is the line around all cells.
enum class GridColour {
  kBackColor,
  kBackColorBkg,
  kBackColorFixed,
  kBackColorFrozen,
  kBackColorSel,
  kForeColor,
  kForeColorFixed,
  kForeColorFrozen,
  kForeColorSel,
  kGridColor,
  kGridColorFixed,
  kSheetBorder,
};

// The lines between cells: none, flat, sunken or raised, both ways or in one direction alone. The numbers are saved.
enum class GridLineStyle : int32_t {
  kNone = 0,
  kFlat = 1,
  kInset = 2,
  kRaised = 3,
  kFlatHorz = 4,
  kInsetHorz = 5,
  kRaisedHorz = 6,
  kFlatVert = 7
};

// Which scroll bars there may be. The numbers are saved.
enum class ScrollBarsSetting : int32_t { kNone = 0, kHorizontal = 1, kVertical = 2, kBoth = 3 };

// Colours, lines, bars and the font of a grid.
class STOCKBOOK_API GridAppearance {
 public:
  virtual ~GridAppearance() = default;

  // Both as 0x00BBGGRR. Cells with colours of their own keep them.
  virtual Colour ColourOf(GridColour which) const = 0;
  virtual void SetColour(GridColour which, Colour colour) = 0;
  // Both are between cells: GridLines in the body, GridLinesFixed between fixed cells.
  virtual GridLineStyle GridLines() const = 0;
  virtual void SetGridLines(GridLineStyle style) = 0;
  virtual GridLineStyle GridLinesFixed() const = 0;
  virtual void SetGridLinesFixed(GridLineStyle style) = 0;
  // Bars that are not allowed never show; the grid scrolls by keys and wheel all the same.
  virtual ScrollBarsSetting ScrollBars() const = 0;
  virtual void SetScrollBars(ScrollBarsSetting setting) = 0;
  // The font of all cells, but for those with a name of their own (SetCellFontName). No row or column gets another
  // size.
  virtual Font GridFont() const = 0;
  virtual void SetGridFont(const Font& font) = 0;
};

}  // namespace stockbook::platform
