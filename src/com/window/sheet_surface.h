// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <optional>

#include "com/window/back_buffer.h"
#include "com/window/damage.h"
#include "com/window/gdi_font.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::com {

// A view's pixels in memory: what is damaged is painted when they are shown, and scrolling moves the rest.
class SheetSurface {
 public:
  GdiFonts& fonts() { return fonts_; }

  void AddDamage(const sheet::Rect& area) { damage_.Add(area); }
  // Moves what remains visible, with its damage; what comes into view is damaged.
  void Move(const sheet::Rect& part, int dx, int dy);
  // Gives it the view's size; new pixels are white.
  void Fit(const sheet::View& view) { buffer_.Resize(view.size()); }
  // Makes what is damaged of the view good. Colours are blended halfway to `dimmed`, if there is one.
  void Paint(const sheet::View& view, const std::optional<platform::Colour>& dimmed);
  // Shows what there is, damaged or not.
  void Show(HDC to, const sheet::Rect& area) const { buffer_.Show(to, area, {area.x, area.y}); }

 private:
  GdiFonts fonts_;
  BackBuffer buffer_;
  Damage damage_;
};

// What a sheet is painted on: only a screen is turned to high contrast, whose background may be black.
enum class Medium { kScreen, kPaper };

// Paints an area of the view, in the system's own colours where the user has asked for high contrast.
void PaintSheet(const sheet::View& view, const sheet::Rect& area, Medium medium, GdiCanvas& canvas);

}  // namespace stockbook::com
