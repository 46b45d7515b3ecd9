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

#include "platform/grid_types.h"
#include "qt/glyph_font.h"
#include "sheet/paint/rect.h"

namespace stockbook::qt {

// The pixels that a painter paints on, where they lie in memory as 32 bits each: windows, images and pixmaps of the
// raster engine do. Glyphs are laid straight onto them, which costs a fraction of a call of the painter for each one.
// It never leaves the painter's system clip. Valid while the painter is active.
class PixelTarget {
 public:
  // Nothing for devices whose pixels cannot be reached: printers, vector formats, other pixel formats.
  static std::optional<PixelTarget> Of(QPainter& painter, QPoint origin);
  // The image's own pixels, premultiplied; `origin` stands on it.
  static PixelTarget Of(QImage& image, QPoint origin);

  // Blends the glyph in the colour with its pen at (x, baseline), cut at `clip`; all in the sheet's pixels.
  void BlendGlyph(const GlyphFont& font, const Glyph& glyph, int x, int baseline, QRgb colour,
                  const sheet::Rect& clip) const;

 private:
  void BlendPart(const uint8_t* coverage, int coverage_stride, const QRect& part, QRgb colour) const;

  uint8_t* pixels_ = nullptr;
  ptrdiff_t stride_ = 0;        // bytes
  QPoint origin_;               // of the sheet on the device
  std::vector<QRect> visible_;  // what may be painted, on the device
};

}  // namespace stockbook::qt
