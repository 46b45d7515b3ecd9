// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "qt/sheet/accessible_news.h"
#include "qt/sheet/canvas.h"
#include "sheet/input/keyboard.h"
#include "sheet/input/mouse.h"
#include "sheet/view/bar_scale.h"
#include "sheet/view/pixel_moves.h"
#include "stockbook/qt/clipboard.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::qt {

// What a SheetWidget consists of.
struct SheetWidget::Parts {
  Parts(SheetWidget& widget, QAccessible::UpdateHandler tell) : news(widget, tell) {}

  QtClipboard clipboard;                      // of the grid of its own
  std::unique_ptr<sheet::GridSheet> grid;     // of its own
  std::unique_ptr<sheet::GridSheet> nothing;  // instead of a sheet that has gone
  std::optional<sheet::Mouse> mouse;
  std::optional<sheet::Keyboard> keyboard;
  AccessibleNews news;
  GlyphFonts fonts;
  sheet::BarScale x_scale;
  sheet::BarScale y_scale;
  sheet::PixelMoves pixel_moves;
};

}  // namespace stockbook::qt
