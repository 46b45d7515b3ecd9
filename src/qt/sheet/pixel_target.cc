// SPDX-License-Identifier: MIT
#include "qt/sheet/pixel_target.h"

#include <QPaintEngine>
#include <QRegion>

#include "qt/sheet/rectangle.h"

namespace stockbook::qt {
namespace {

// below * (1 - alpha) + above * alpha for two channels of a mask at a time; alpha is 1..256.
uint32_t Mix(uint32_t below, uint32_t above, uint32_t alpha) {
  const uint32_t keep = 256 - alpha;
  const uint32_t odd = ((below & 0x00FF00FFu) * keep + (above & 0x00FF00FFu) * alpha) >> 8 & 0x00FF00FFu;
  const uint32_t even = ((below >> 8 & 0x00FF00FFu) * keep + (above >> 8 & 0x00FF00FFu) * alpha) & 0xFF00FF00u;
  return odd | even;
}

}  // namespace

std::optional<PixelTarget> PixelTarget::Of(QPainter& painter, QPoint origin) {
  QPaintEngine* engine = painter.paintEngine();
  if (engine == nullptr || engine->type() != QPaintEngine::Raster) return std::nullopt;
  // Not bits(): the engine paints on the image itself, and changes to a detached copy would be lost.
  const auto* image = dynamic_cast<const QImage*>(engine->paintDevice());
  if (image == nullptr || image->isNull()) return std::nullopt;
  if (image->format() != QImage::Format_RGB32 && image->format() != QImage::Format_ARGB32_Premultiplied)
    return std::nullopt;
  PixelTarget target;
  target.pixels_ = const_cast<uint8_t*>(image->constBits());
  target.stride_ = image->bytesPerLine();
  target.origin_ = origin;
  const QRect whole(0, 0, image->width(), image->height());
  const QRegion system_clip = engine->systemClip();
  const QRegion visible = system_clip.isEmpty() ? QRegion(whole) : system_clip.intersected(whole);
  target.visible_.assign(visible.begin(), visible.end());
  return target;
}

PixelTarget PixelTarget::Of(QImage& image, QPoint origin) {
  PixelTarget target;
  target.pixels_ = image.bits();
  target.stride_ = image.bytesPerLine();
  target.origin_ = origin;
  target.visible_.assign(1, image.rect());
  return target;
}

void PixelTarget::BlendGlyph(const GlyphFont& font, const Glyph& glyph, int x, int baseline, QRgb colour,
                             const sheet::Rect& clip) const {
  const QRect place(QPoint(x + glyph.left, baseline + glyph.top) + origin_, QSize(glyph.width, glyph.height));
  const QRect cut = place.intersected(ToQRect(clip).translated(origin_));
  const uint8_t* coverage = font.Coverage(glyph);
  for (const QRect& rect : visible_) {
    const QRect part = cut.intersected(rect);
    if (part.isEmpty()) continue;
    BlendPart(coverage + (part.top() - place.top()) * glyph.width + (part.left() - place.left()), glyph.width, part,
              colour);
  }
}

void PixelTarget::BlendPart(const uint8_t* coverage, int coverage_stride, const QRect& part, QRgb colour) const {
  const int width = part.width();
  for (int y = part.top(); y <= part.bottom(); ++y, coverage += coverage_stride) {
    auto* line = reinterpret_cast<uint32_t*>(pixels_ + y * stride_) + part.left();
    for (int x = 0; x < width; ++x) {
      const uint32_t alpha = coverage[x];
      if (alpha == 0) continue;
      line[x] = alpha == 255 ? colour : Mix(line[x], colour, alpha + 1);
    }
  }
}

}  // namespace stockbook::qt
