// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPainter>
#include <QPoint>
#include <QRect>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "qt/sheet/glyph_font.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/sheet/geometry/rect.h"

namespace stockbook::qt {

// Direct access to the pixels under a painter, if they are 32-bit values in memory, as those of windows, images and
// pixmaps of the raster engine are. Glyphs are blended straight onto them, at a fraction of the cost of a painter call
// each. Never writes outside the painter's system clip. Valid while the painter is active.
class PixelTarget {
 public:
  // Nothing for devices without such pixels: printers, vector formats, other pixel formats.
  static std::optional<PixelTarget> Of(QPainter& painter, QPoint origin);
  // The pixels of the image, premultiplied; `origin` is the sheet's origin on the image.
  static PixelTarget Of(QImage& image, QPoint origin);

  // Blends the glyph in the colour with its pen position at (x, baseline), clipped to `clip`; all in the sheet's
  // pixels.
  void BlendGlyph(const GlyphFont& font, const Glyph& glyph, int x, int baseline, QRgb colour,
                  const sheet::Rect& clip) const;

 private:
  void BlendPart(const uint8_t* coverage, int coverage_stride, const QRect& part, QRgb colour) const;

  uint8_t* pixels_ = nullptr;
  ptrdiff_t stride_ = 0;        // bytes
  QPoint origin_;               // the sheet's origin on the device
  std::vector<QRect> visible_;  // where painting is allowed, on the device
};

}  // namespace stockbook::qt
