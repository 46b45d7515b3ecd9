// SPDX-License-Identifier: MIT
#include "com/window/sheet_surface.h"

#include <cstdlib>

#include "com/window/canvas.h"
#include "com/window/high_contrast.h"
#include "sheet/paint/painter.h"
#include "sheet/paint/snapshot.h"

namespace stockbook::com {

void SheetSurface::Move(const sheet::Rect& part, int dx, int dy) {
  if (part.IsEmpty()) return;
  if (std::abs(dx) >= part.width || std::abs(dy) >= part.height) {
    damage_.Add(part);
    return;
  }
  buffer_.Move(part, dx, dy);
  damage_.Move(part, dx, dy);
  if (dx != 0) damage_.Add({dx > 0 ? part.x : part.right() + dx, part.y, std::abs(dx), part.height});
  if (dy != 0) damage_.Add({part.x, dy > 0 ? part.y : part.bottom() + dy, part.width, std::abs(dy)});
}

void SheetSurface::Paint(const sheet::View& view, const std::optional<platform::Colour>& dimmed) {
  Fit(view);
  for (const sheet::Rect& piece : damage_.Take()) {
    GdiCanvas canvas(buffer_.dc(), fonts_, view.scale());
    canvas.SetPixels(buffer_.pixels());
    if (dimmed) canvas.DimToward(*dimmed);
    PaintSheet(view, piece, Medium::kScreen, canvas);
  }
}

void PaintSheet(const sheet::View& view, const sheet::Rect& area, Medium medium, GdiCanvas& canvas) {
  std::optional<sheet::Appearance> looks;
  if (medium == Medium::kScreen) looks = HighContrastLooks(view.sheet().appearance());
  sheet::Paint(looks ? sheet::Snapshot::Of(view, area, *looks) : sheet::Snapshot::Of(view, area), canvas);
}

}  // namespace stockbook::com
